// Opening a file and loading one result of one state beside VTK's own reader doing just that.
// Files of 125,000 hexahedra with four arrays, as VTK's writers make them, and cases as OpenFOAM does.

#include "OrvImportCae/DataSourceCae.h"
#include "OrvUnstructGrid/DataSourceDirectory.h"
#include "OrvUnstructGrid/DataStateSpec.h"

#include "Benchmarks/Claims.h"
#include "Benchmarks/FoamCaseWriter.h"
#include "Benchmarks/TecplotWriter.h"
#include "Benchmarks/VtkHdfWriter.h"

#include <vtkCellArray.h>
#include <vtkCellData.h>
#include <vtkCGNSReader.h>
#include <vtkDataArraySelection.h>
#include <vtkDataSetReader.h>
#include <vtkDoubleArray.h>
#include <vtkEnSightWriter.h>
#include <vtkExodusIIReader.h>
#include <vtkExodusIIWriter.h>
#include <vtkGenericEnSightReader.h>
#include <vtkHDFReader.h>
#include <vtkIntArray.h>
#include <vtkMultiBlockDataSet.h>
#include <vtkNew.h>
#include <vtkOpenFOAMReader.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkTecplotReader.h>
#include <vtkUnstructuredGrid.h>
#include <vtkUnstructuredGridWriter.h>
#include <vtkXMLPUnstructuredGridReader.h>
#include <vtkXMLUnstructuredGridReader.h>
#include <vtkXMLUnstructuredGridWriter.h>

#include <vtk_cgns.h>

// clang-format off
#include VTK_CGNS(cgnslib.h)
// clang-format on

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <malloc.h>

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

// Neither packed nor as text.
std::string writeRaw(const std::string& path, vtkUnstructuredGrid* grid) {
    vtkNew<vtkXMLUnstructuredGridWriter> writer;
    writer->SetFileName(path.c_str());
    writer->SetInputData(grid);
    writer->SetCompressorTypeToNone();
    writer->EncodeAppendedDataOff();
    writer->Write();
    return path;
}

// Two pieces, which are the same file.
std::string writePieces(const std::string& path, const std::string& piece) {
    std::ofstream file(path);
    file << R"(<VTKFile type="PUnstructuredGrid" version="0.1" byte_order="LittleEndian" header_type="UInt32">
<PUnstructuredGrid GhostLevel="0"><PPointData>)";
    for (int a = 0; a < 4; ++a) {
        file << "<PDataArray type=\"Float64\" Name=\"a" << a << "\"/>";
    }
    file << R"(</PPointData><PPoints><PDataArray type="Float64" NumberOfComponents="3"/></PPoints>)";
    for (int p = 0; p < 2; ++p) {
        file << "<Piece Source=\"" << piece << "\"/>";
    }
    file << "</PUnstructuredGrid></VTKFile>";
    return path;
}

std::string writeLegacy(const std::string& path, int form, vtkUnstructuredGrid* grid) {
    vtkNew<vtkUnstructuredGridWriter> writer;
    writer->SetFileName(path.c_str());
    writer->SetInputData(grid);
    writer->SetFileType(form);
    writer->Write();
    return path;
}

// In one part, by the array that the writer wants for that.
std::string writeEnSight(const std::string& path, vtkUnstructuredGrid* grid) {
    vtkNew<vtkUnstructuredGrid> copy;
    copy->ShallowCopy(grid);
    vtkNew<vtkIntArray> parts;
    parts->SetName("BlockId");
    parts->SetNumberOfValues(grid->GetNumberOfCells());
    parts->Fill(1);
    copy->GetCellData()->AddArray(parts);
    vtkNew<vtkEnSightWriter> writer;
    writer->SetFileName(path.c_str());
    writer->SetInputData(copy);
    writer->Write();
    writer->WriteCaseFile(1);
    std::fflush(nullptr); // The writer leaves the case file open.
    return path + ".0.case";
}

void check(int status) {
    if (status != CG_OK) {
        std::abort();
    }
}

// By the library itself, as VTK has no writer.
std::string writeCgns(const std::string& path, vtkUnstructuredGrid* grid) {
    int file = 0;
    int base = 0;
    int zone = 0;
    int index = 0;
    const cgsize_t sizes[] = {grid->GetNumberOfPoints(), grid->GetNumberOfCells(), 0};
    check(cg_set_file_type(CG_FILE_HDF5));
    check(cg_open(path.c_str(), CG_MODE_WRITE, &file));
    check(cg_base_write(file, "Base", 3, 3, &base));
    check(cg_zone_write(file, base, "Block", sizes, CGNS_ENUMV(Unstructured), &zone));
    for (const char axis : {'X', 'Y', 'Z'}) {
        std::vector<double> places;
        for (vtkIdType i = 0; i < grid->GetNumberOfPoints(); ++i) {
            places.push_back(grid->GetPoint(i)[axis - 'X']);
        }
        check(cg_coord_write(file, base, zone, CGNS_ENUMV(RealDouble), (std::string("Coordinate") + axis).c_str(),
                             places.data(), &index));
    }
    std::vector<cgsize_t> nodes;
    for (vtkIdType cell = 0; cell < grid->GetNumberOfCells(); ++cell) {
        vtkIdType count = 0;
        const vtkIdType* points = nullptr;
        grid->GetCells()->GetCellAtId(cell, count, points);
        for (vtkIdType i = 0; i < count; ++i) {
            nodes.push_back(points[i] + 1);
        }
    }
    check(cg_section_write(file, base, zone, "Cells", CGNS_ENUMV(HEXA_8), 1, sizes[1], 0, nodes.data(), &index));
    check(cg_sol_write(file, base, zone, "Values", CGNS_ENUMV(Vertex), &index));
    for (int a = 0; a < grid->GetPointData()->GetNumberOfArrays(); ++a) {
        vtkDataArray* array = grid->GetPointData()->GetArray(a);
        check(cg_field_write(file, base, zone, 1, CGNS_ENUMV(RealDouble), array->GetName(), array->GetVoidPointer(0),
                             &index));
    }
    check(cg_close(file));
    return path;
}

// EnSight's writer adds to the names of arrays what they belong to.
void openAndLoad(const std::string& path) {
    const PtrRef<imp::cae::DataSourceCae> source(new imp::cae::DataSourceCae(1));
    bool isLoaded = false;
    if (source->openFiles({Str(path)}, nullptr)) {
        for (const ug::ResultInfo& info : source->directory()->scalarResultInfos()) {
            if (info.name().toStdString().starts_with(WANTED)) {
                ug::DataStateSpec spec;
                spec.setResultIds({info});
                isLoaded = source->loadDataState(1, spec, nullptr);
            }
        }
    }
    if (!isLoaded) {
        std::abort();
    }
}

template <class Reader>
void readXml(const std::string& path) {
    vtkNew<Reader> reader;
    reader->SetFileName(path.c_str());
    reader->UpdateInformation();
    reader->GetPointDataArraySelection()->DisableAllArrays();
    reader->GetPointDataArraySelection()->EnableArray(WANTED);
    reader->Update();
    benchmark::DoNotOptimize(reader->GetOutput());
}

// It reads all that there is in its array's section.
void readLegacy(const std::string& path) {
    vtkNew<vtkDataSetReader> reader;
    reader->SetFileName(path.c_str());
    reader->ReadAllScalarsOn();
    reader->ReadAllFieldsOn();
    reader->Update();
    benchmark::DoNotOptimize(reader->GetOutput());
}

void readEnSight(const std::string& path) {
    vtkNew<vtkGenericEnSightReader> reader;
    reader->SetCaseFileName(path.c_str());
    reader->UpdateInformation();
    reader->GetPointDataArraySelection()->DisableAllArrays();
    reader->GetPointDataArraySelection()->EnableArray((std::string(WANTED) + "_n").c_str());
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

// With its defaults, and the patches, which are parts of ours.
void readFoam(const std::string& path) {
    vtkNew<vtkOpenFOAMReader> reader;
    reader->SetFileName(path.c_str());
    reader->UpdateInformation();
    reader->EnableAllPatchArrays();
    reader->DisableAllCellArrays();
    reader->SetCellArrayStatus(WANTED, 1);
    reader->Update();
    benchmark::DoNotOptimize(reader->GetOutput());
}

void readCgns(const std::string& path) {
    vtkNew<vtkCGNSReader> reader;
    reader->SetFileName(path.c_str());
    reader->UpdateInformation();
    reader->SetPointArrayStatus(WANTED, 1);
    reader->Update();
    benchmark::DoNotOptimize(reader->GetOutput());
}

void readVtkHdf(const std::string& path) {
    vtkNew<vtkHDFReader> reader;
    reader->SetFileName(path.c_str());
    reader->UpdateInformation();
    reader->GetPointDataArraySelection()->DisableAllArrays();
    reader->GetPointDataArraySelection()->EnableArray(WANTED);
    reader->Update();
    benchmark::DoNotOptimize(reader->GetOutputDataObject(0));
}

void readTecplot(const std::string& path) {
    vtkNew<vtkTecplotReader> reader;
    reader->SetFileName(path.c_str());
    reader->UpdateInformation();
    for (int i = 0; i < reader->GetNumberOfDataArrays(); ++i) {
        const char* name = reader->GetDataArrayName(i);
        reader->SetDataArrayStatus(name, name == std::string(WANTED));
    }
    reader->Update();
    benchmark::DoNotOptimize(reader->GetOutput());
}

} // namespace

int main(int argc, char** argv) {
    const std::string folder = std::filesystem::temp_directory_path() / "orv-vtk-bench";
    std::filesystem::create_directories(folder);
    const vtkSmartPointer<vtkUnstructuredGrid> grid = makeBlock();
    const std::string xml = write<vtkXMLUnstructuredGridWriter>(folder + "/block.vtu", grid);
    const std::string raw = writeRaw(folder + "/raw.vtu", grid);
    const std::string exodus = write<vtkExodusIIWriter>(folder + "/block.ex2", grid);
    const std::string pieces = writePieces(folder + "/block.pvtu", "block.vtu");
    const std::string legacy = writeLegacy(folder + "/block.vtk", VTK_BINARY, grid);
    const std::string asciiLegacy = writeLegacy(folder + "/ascii.vtk", VTK_ASCII, grid);
    const std::string enSight = writeEnSight(folder + "/block", grid);
    const std::string foam = orvbench::FoamCaseWriter(folder + "/ascii", SIDE, false).write(grid);
    const std::string binaryFoam = orvbench::FoamCaseWriter(folder + "/binary", SIDE, true).write(grid);
    const std::string cgns = writeCgns(folder + "/block.cgns", grid);
    const std::string vtkHdf = orvbench::VtkHdfWriter(folder + "/block.vtkhdf").write(grid);
    const std::string tecplot = orvbench::writeTecplot(folder + "/block.tec", grid);
    orvbench::Claims claims(25);
    const auto add = [&](const char* name, const std::string& path, void (*read)(const std::string&)) {
        // As in a program that opens one file, and not with the memory that the other side happens to have left.
        const auto giveBack = [] { ::malloc_trim(0); };
        claims.add(name, 1.1, {giveBack, [path] { openAndLoad(path); }}, {giveBack, [=] { read(path); }});
    };
    add("open and load .vtu", xml, readXml<vtkXMLUnstructuredGridReader>);
    add("open and load .vtu, raw", raw, readXml<vtkXMLUnstructuredGridReader>);
    add("open and load .pvtu", pieces, readXml<vtkXMLPUnstructuredGridReader>);
    add("open and load .vtk, binary", legacy, readLegacy);
    add("open and load .vtk, ASCII", asciiLegacy, readLegacy);
    add("open and load .ex2", exodus, readExodus);
    add("open and load .case", enSight, readEnSight);
    add("open and load .foam, ASCII", foam, readFoam);
    add("open and load .foam, binary", binaryFoam, readFoam);
    add("open and load .cgns", cgns, readCgns);
    add("open and load .vtkhdf", vtkHdf, readVtkHdf);
    add("open and load .tec", tecplot, readTecplot);
    const int result = claims.run(argc, argv);
    std::filesystem::remove_all(folder);
    return result;
}
