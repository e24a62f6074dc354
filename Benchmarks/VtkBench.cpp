// Opening a file and loading one result of one state, through the module, beside VTK's own reader doing just that.
// Files of 125,000 hexahedra with four arrays, as VTK's writers make them.

#include "OrvImportCae/DataSourceCae.h"
#include "OrvUnstructGrid/DataSourceDirectory.h"
#include "OrvUnstructGrid/DataStateSpec.h"

#include "Benchmarks/Claims.h"

#include <vtkDataArraySelection.h>
#include <vtkDoubleArray.h>
#include <vtkExodusIIReader.h>
#include <vtkExodusIIWriter.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkUnstructuredGrid.h>
#include <vtkXMLUnstructuredGridReader.h>
#include <vtkXMLUnstructuredGridWriter.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <string>

using namespace orv;

namespace {

constexpr vtkIdType SIDE = 50;
constexpr const char* WANTED = "a2";

vtkIdType nodeAt(vtkIdType x, vtkIdType y, vtkIdType z) {
    return (z * (SIDE + 1) + y) * (SIDE + 1) + x;
}

vtkSmartPointer<vtkUnstructuredGrid> makeBlock() {
    auto grid = vtkSmartPointer<vtkUnstructuredGrid>::New();
    vtkNew<vtkPoints> points;
    points->SetDataTypeToDouble();
    for (vtkIdType z = 0; z <= SIDE; ++z) {
        for (vtkIdType y = 0; y <= SIDE; ++y) {
            for (vtkIdType x = 0; x <= SIDE; ++x) {
                points->InsertNextPoint(double(x), double(y) + std::sin(0.1 * double(x)), double(z));
                if (x < SIDE && y < SIDE && z < SIDE) {
                    const vtkIdType nodes[] = {nodeAt(x, y, z),
                                               nodeAt(x + 1, y, z),
                                               nodeAt(x + 1, y + 1, z),
                                               nodeAt(x, y + 1, z),
                                               nodeAt(x, y, z + 1),
                                               nodeAt(x + 1, y, z + 1),
                                               nodeAt(x + 1, y + 1, z + 1),
                                               nodeAt(x, y + 1, z + 1)};
                    grid->InsertNextCell(VTK_HEXAHEDRON, 8, nodes);
                }
            }
        }
    }
    grid->SetPoints(points);
    for (int a = 0; a < 4; ++a) {
        vtkNew<vtkDoubleArray> array;
        array->SetName(("a" + std::to_string(a)).c_str());
        for (vtkIdType i = 0; i < points->GetNumberOfPoints(); ++i) {
            array->InsertNextValue(std::sin(double(i * (a + 1))));
        }
        grid->GetPointData()->AddArray(array);
    }
    return grid;
}

template <class Writer>
std::string write(const std::string& path, vtkUnstructuredGrid* grid) {
    vtkNew<Writer> writer;
    writer->SetFileName(path.c_str());
    writer->SetInputData(grid);
    writer->Write();
    return path;
}

void openAndLoad(const std::string& path) {
    const PtrRef<imp::cae::DataSourceCae> source(new imp::cae::DataSourceCae(1));
    bool isLoaded = source->openFiles({Str(path)}, nullptr);
    for (const ug::ResultInfo& info : source->directory()->scalarResultInfos()) {
        if (info.name() == Str(WANTED)) {
            ug::DataStateSpec spec;
            spec.setResultIds({info});
            isLoaded = isLoaded && source->loadDataState(1, spec, nullptr);
        }
    }
    if (!isLoaded) {
        std::abort();
    }
}

void readXml(const std::string& path) {
    vtkNew<vtkXMLUnstructuredGridReader> reader;
    reader->SetFileName(path.c_str());
    reader->UpdateInformation();
    reader->GetPointDataArraySelection()->DisableAllArrays();
    reader->GetPointDataArraySelection()->EnableArray(WANTED);
    reader->Update();
    benchmark::DoNotOptimize(reader->GetOutput());
}

void readExodus(const std::string& path) {
    vtkNew<vtkExodusIIReader> reader;
    reader->SetFileName(path.c_str());
    reader->UpdateInformation();
    reader->SetObjectArrayStatus(vtkExodusIIReader::NODAL, WANTED, 1);
    reader->Update();
    benchmark::DoNotOptimize(reader->GetOutput());
}

} // namespace

int main(int argc, char** argv) {
    const std::string folder = std::filesystem::temp_directory_path() / "orv-vtk-bench";
    std::filesystem::create_directories(folder);
    const vtkSmartPointer<vtkUnstructuredGrid> grid = makeBlock();
    const std::string xml = write<vtkXMLUnstructuredGridWriter>(folder + "/block.vtu", grid);
    const std::string exodus = write<vtkExodusIIWriter>(folder + "/block.ex2", grid);
    const auto nothing = [] {};
    orvbench::Claims claims(7);
    claims.add("open and load .vtu", 1.1, {nothing, [&] { openAndLoad(xml); }}, {nothing, [&] { readXml(xml); }});
    claims.add("open and load .ex2", 1.1, {nothing, [&] { openAndLoad(exodus); }},
               {nothing, [&] { readExodus(exodus); }});
    const int result = claims.run(argc, argv);
    std::filesystem::remove_all(folder);
    return result;
}
