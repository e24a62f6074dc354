#include "OrvImportVtk/FoamSource.h"

#include "OrvImportVtk/VtkPieces.h"

#include <vtkCellData.h>
#include <vtkDataArray.h>
#include <vtkDataObject.h>
#include <vtkDataSet.h>
#include <vtkOpenFOAMReader.h>
#include <vtkPointData.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <utility>

namespace orv::imp::cae {
namespace {

// The velocity is U, so the usual names do not hold.
constexpr const char* DISPLACEMENT_NAMES[] = {"D", "pointD", "pointDisplacement", "cellDisplacement"};

ug::ResultType typeOf(const FoamFieldFile& field) {
    switch (field.componentCount) {
    case 1:
        return ug::SCALAR;
    case 3:
        return std::find(std::begin(DISPLACEMENT_NAMES), std::end(DISPLACEMENT_NAMES), field.object) ==
                       std::end(DISPLACEMENT_NAMES)
                   ? ug::VECTOR
                   : ug::DISPLACEMENT;
    default:
        return ug::SYMMETRIC_TENSOR;
    }
}

bool isOf(const CaeArray& array, const FoamFieldFile& field) {
    return array.name == field.object && array.mapping == field.mapping && array.componentCount == field.componentCount;
}

// Tensors of six components from OpenFOAM's XX XY XZ YY YZ ZZ to VTK's order. VTK itself does that only with lists.
void reorder(vtkDataSet* mesh, const CaeArray& array) {
    vtkDataSetAttributes* attributes = array.mapping == ug::PER_NODE
                                           ? static_cast<vtkDataSetAttributes*>(mesh->GetPointData())
                                           : static_cast<vtkDataSetAttributes*>(mesh->GetCellData());
    vtkDataArray* tensors = attributes->GetArray(array.name.c_str());
    if (!tensors || tensors->GetNumberOfComponents() != 6) {
        return;
    }
    for (vtkIdType i = 0; i < tensors->GetNumberOfTuples(); ++i) {
        double item[6];
        tensors->GetTuple(i, item);
        std::swap(item[1], item[3]);
        std::swap(item[2], item[5]);
        tensors->SetTuple(i, item);
    }
}

} // namespace

FoamSource::FoamSource() = default;
FoamSource::~FoamSource() = default;

bool FoamSource::open(const std::string& filename, VtkContents* contents, ug::Error* error) {
    if (!std::ifstream(filename)) {
        return ug::fail(error, "cannot be opened");
    }
    const std::size_t slash = filename.find_last_of('/');
    if (!m_case.open(slash == std::string::npos ? "./" : filename.substr(0, slash + 1), error)) {
        return false;
    }
    for (const FoamRegion& region : m_case.regions()) {
        contents->parts.push_back(region.partPrefix + "internalMesh");
        for (const std::string& patch : region.patches) {
            contents->parts.push_back(region.partPrefix + "boundary/" + patch);
        }
    }
    listSteps(contents);
    listArrays(contents);
    contents->warnings = m_case.warnings();
    m_filename = filename;
    makeReader();
    return true;
}

// Which looks at nothing before the first read.
void FoamSource::makeReader() {
    m_reader = vtkSmartPointer<vtkOpenFOAMReader>::New();
    m_reader->SetFileName(m_filename.c_str());
    m_reader->CreateCellToPointOff();
    m_reader->CacheMeshOff();
    m_reader->DecomposePolyhedraOn();
    m_reader->CopyDataToCellZonesOff();
    for (const FoamRegion& region : m_case.regions()) {
        m_reader->SetPatchArrayStatus((region.selectionPrefix + "internalMesh").c_str(), 1);
        for (const std::string& patch : region.patches) {
            m_reader->SetPatchArrayStatus((region.selectionPrefix + "patch/" + patch).c_str(), 1);
        }
    }
    for (const std::string& cloud : m_case.clouds()) {
        m_reader->SetPatchArrayStatus(cloud.c_str(), 0);
    }
}

void FoamSource::listSteps(VtkContents* contents) {
    std::vector<double> values;
    for (std::size_t t = 0; t < m_case.times().size(); ++t) {
        const FoamTime& time = m_case.times()[t];
        const bool hasMesh = !time.newFaces.empty() || !time.newPoints.empty();
        if (!time.fields.empty() || hasMesh) {
            m_times.push_back(t);
            values.push_back(time.value);
            contents->hasOneMesh = contents->hasOneMesh && !hasMesh;
        }
    }
    contents->steps = m_times.empty() ? std::vector{vtkOnlyStep()} : vtkTimeSteps(values);
}

void FoamSource::listArrays(VtkContents* contents) {
    for (std::size_t step = 0; step < m_times.size(); ++step) {
        for (const FoamFieldFile& field : m_case.times()[m_times[step]].fields) {
            auto known = std::find_if(m_arrays.begin(), m_arrays.end(),
                                      [&](const CaeArray& array) { return isOf(array, field); });
            if (known == m_arrays.end()) {
                CaeArray array{field.object, field.mapping, field.componentCount};
                array.type = typeOf(field);
                known = m_arrays.insert(known, std::move(array));
            }
            if (known->steps.empty() || known->steps.back() != step) {
                known->steps.push_back(step);
            }
        }
    }
    contents->arrays = m_arrays;
}

vtkSmartPointer<vtkDataObject> FoamSource::read(std::size_t step, std::span<const std::size_t> arrays,
                                                ug::Error* error) {
    const FoamTime* time = m_times.empty() ? nullptr : &m_case.times()[m_times[step]];
    if (!m_case.checkMeshes(time ? m_times[step] : 0, error)) {
        return nullptr;
    }
    for (const CaeArray& array : m_arrays) {
        select(array, false);
    }
    std::vector<std::set<std::string>> uniform(arrays.size());
    for (std::size_t i = 0; i < arrays.size(); ++i) {
        if (!checkArray(m_arrays[arrays[i]], *time, &uniform[i], error)) {
            return nullptr;
        }
        select(m_arrays[arrays[i]], true);
    }
    m_reader->Modified();
    if (!updateVtk([&] { time ? void(m_reader->UpdateTimeStep(time->value)) : m_reader->Update(); }, error)) {
        makeReader(); // As the old one keeps what it could not finish.
        return nullptr;
    }
    vtkDataObject* output = m_reader->GetOutputDataObject(0);
    for (const VtkPiece& piece : piecesOf(output)) {
        for (std::size_t i = 0; i < arrays.size(); ++i) {
            if (uniform[i].contains(piece.name)) {
                reorder(piece.data, m_arrays[arrays[i]]);
            }
        }
    }
    return output;
}

void FoamSource::release() {
    m_reader->GetOutputDataObject(0)->ReleaseData();
}

void FoamSource::select(const CaeArray& array, bool isWanted) {
    if (array.mapping == ug::PER_NODE) {
        m_reader->SetPointArrayStatus(array.name.c_str(), isWanted);
    } else {
        m_reader->SetCellArrayStatus(array.name.c_str(), isWanted);
    }
}

// All files that hold it at that time, one for each region.
bool FoamSource::checkArray(const CaeArray& array, const FoamTime& time, std::set<std::string>* uniform,
                            ug::Error* error) const {
    return std::all_of(time.fields.begin(), time.fields.end(), [&](const FoamFieldFile& field) {
        return !isOf(array, field) || m_case.checkField(field, uniform, error);
    });
}

} // namespace orv::imp::cae
