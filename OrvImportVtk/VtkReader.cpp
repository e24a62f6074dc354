#include "OrvImportVtk/VtkReader.h"

#include "OrvCore/Defines.h"
#include "OrvImportVtk/VtkArrays.h"
#include "OrvImportVtk/VtkMessages.h"
#include "OrvImportVtk/VtkPieces.h"
#include "OrvUnstructGrid/DataResultGroup.h"

#include <SMP/Common/vtkSMPToolsAPI.h>
#include <vtkCellData.h>
#include <vtkDataArray.h>
#include <vtkDataObject.h>
#include <vtkDataSet.h>
#include <vtkPointData.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <utility>

namespace orv::imp::cae {
namespace {

/// VTK takes itself apart when the process ends, and the catalogues let go of what is open only after that. This goes
/// before both, as the module is loaded behind VTK's libraries.
class LivingReaders {
public:
    ~LivingReaders() {
        for (VtkReader* reader : m_readers) {
            reader->letGo();
        }
    }

    void add(VtkReader* reader) {
        m_readers.insert(reader);
    }

    void remove(VtkReader* reader) {
        m_readers.erase(reader);
    }

private:
    std::set<VtkReader*> m_readers;
};

LivingReaders livingReaders;

std::string nameOfFile(const std::string& path) {
    return path.substr(path.find_last_of('/') + 1); // npos + 1 is 0.
}

vtkDataArray* findArray(vtkDataSet* mesh, const CaeArray& array) {
    vtkDataSetAttributes* attributes = array.mapping == ug::PER_NODE
                                           ? static_cast<vtkDataSetAttributes*>(mesh->GetPointData())
                                           : static_cast<vtkDataSetAttributes*>(mesh->GetCellData());
    vtkDataArray* found = attributes->GetArray(array.name.c_str());
    return found && found->GetNumberOfComponents() == array.componentCount ? found : nullptr;
}

} // namespace

VtkReader::VtkReader(std::unique_ptr<VtkSource> source)
    : m_source(std::move(source)), m_self(std::make_shared<VtkReader*>(this)) {
    livingReaders.add(this);
}

VtkReader::~VtkReader() {
    *m_self = nullptr;
    if (m_source) {
        livingReaders.remove(this);
    }
}

void VtkReader::letGo() {
    m_output = {};
    m_source.reset();
}

void VtkReader::setProgress(ug::ProgressMeter* progress) {
    CaeReader::setProgress(progress);
    m_source->setProgress(progress);
}

bool VtkReader::open(const Str& filename, CaeContents* contents, ug::Error* error) {
    m_filename = filename.toStdString();
    vtk::detail::smp::vtkSMPToolsAPI::GetInstance().SetBackend("Sequential");
    const VtkMessages messages;
    ug::Error reason;
    if (!m_source->open(m_filename, &m_contents, &reason) || !findParts(&reason)) {
        const Str text = reason.isEmpty() ? Str(messages.errors()) : reason.message();
        return ug::fail(error, Str(m_filename + ": ") + text);
    }
    contents->title = Str(m_contents.title);
    makeMeshes(contents);
    describeResults(contents);
    describeSteps(contents);
    for (const std::string& warning : m_contents.warnings) {
        contents->warnings.push_back(Str(m_filename + ": " + warning));
    }
    contents->warnings.insert(contents->warnings.end(), m_lateWarnings.begin(), m_lateWarnings.end());
    m_lateWarnings.clear();
    return true;
}

// Meshes of their own that change from step to step stay with their states.
void VtkReader::adoptGeometry(const PtrRef<ug::DataGeometry>& geometry) {
    if (m_meshes.size() == 1) {
        m_meshes[0].geometry = geometry;
    }
}

void VtkReader::beginLoad(const std::vector<ug::ResultInfo>& infos, int stateId) {
    m_isLoading = true;
    m_loadStep = std::size_t(stateId - 1);
    for (const ug::ResultInfo& info : infos) {
        for (const CaeComponent& component : findField(info).components) {
            m_loadArrays.insert(component.array);
        }
    }
}

void VtkReader::endLoad() {
    m_isLoading = false;
    m_loadArrays.clear();
    drop();
}

bool VtkReader::readResult(const ug::ResultInfo& info, int stateId, const ug::ResultInfo& intoInfo,
                           ug::DataState* state, std::vector<Str>* warnings, ug::Error* error) {
    const std::size_t step = std::size_t(stateId - 1);
    const CaeField& field = findField(info);
    std::vector<std::size_t> arrays;
    for (const CaeComponent& component : field.components) {
        arrays.push_back(component.array);
    }
    if (!fetch(step, arrays, error)) {
        return false;
    }
    const Mesh& mesh = meshOf(step);
    ug::DataResult* result = state->results(mesh.geometry.get())->findOrAdd(intoInfo);
    for (std::size_t i = 0; i < m_partNames.size(); ++i) {
        if (vtkDataSet* piece = m_output.pieces[i]) {
            ug::DataPartValues* values = result->values(i);
            values->allocate(mesh.geometry->part(i)->itemCount(field.mapping));
            tellAsymmetry(field, piece);
            if (!copyField(field, mesh.maps[i], piece, values, error)) {
                return false;
            }
        }
    }
    updateRanges(result);
    warnings->insert(warnings->end(), m_lateWarnings.begin(), m_lateWarnings.end());
    m_lateWarnings.clear();
    if (!m_isLoading) {
        drop();
    }
    return true;
}

bool VtkReader::readScalars(const ug::ResultInfo& info, int stateId, const ug::ScalarPlace& place,
                            std::span<double> values) {
    const CaeField& field = findField(info);
    const std::size_t array = field.components[0].array;
    const std::size_t step = std::size_t(stateId - 1);
    const std::vector<std::int64_t>& cells = meshOf(step).maps[place.partIndex].elementCells;
    if (!m_source || m_contents.arrays[array].componentCount != 1) {
        return false;
    }
    const VtkMessages messages;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const std::size_t item = place.firstItem + i;
        const bool isCell = field.mapping == ug::PER_ELEMENT && !cells.empty();
        if (!m_source->readNumber(step, array, place.partIndex, isCell ? std::size_t(cells[item]) : item, &values[i])) {
            return false;
        }
        values[i] = std::isnan(values[i]) ? UNDEFINED_DOUBLE : values[i];
    }
    return true;
}

// The names of the parts, from the first mesh when nothing else tells them.
bool VtkReader::findParts(ug::Error* error) {
    m_partNames = m_contents.parts;
    if (!m_partNames.empty()) {
        return true;
    }
    const vtkSmartPointer<vtkDataObject> output = m_source->read(0, {}, error);
    if (!output) {
        return false;
    }
    for (const VtkPiece& piece : piecesOf(output)) {
        m_partNames.push_back(piece.name);
    }
    m_source->release();
    return !m_partNames.empty() || ug::fail(error, "has no mesh");
}

void VtkReader::makeMeshes(CaeContents* contents) {
    for (std::size_t i = 0; i < m_partNames.size(); ++i) {
        const std::string& name = m_partNames[i];
        contents->parts.emplace_back(int(i) + 1, Str(name.empty() ? nameOfFile(m_filename) : name));
    }
    for (std::size_t m = 0; m < (m_contents.hasOneMesh ? 1 : m_contents.steps.size()); ++m) {
        const PtrRef<ug::DataGeometry> geometry(new ug::DataGeometry);
        for (std::size_t p = 0; p < m_partNames.size(); ++p) {
            geometry->addPart(int(p) + 1)
                ->readLater([self = m_self, m, p](ug::DataNodes* nodes, ug::DataElements* elements, ug::Error* error) {
                    return *self ? (*self)->readPart(m, p, nodes, elements, error)
                                 : ug::fail(error, "the data source has been closed");
                });
        }
        m_meshes.push_back({m, geometry, std::vector<VtkPartMap>(m_partNames.size()), {}});
    }
    contents->geometry = m_meshes[0].geometry;
}

void VtkReader::describeResults(CaeContents* contents) {
    m_fields = makeCaeFields(m_contents.arrays, &m_contents.warnings);
    std::map<ug::ResultType, int> ids;
    for (const CaeField& field : m_fields) {
        m_results.emplace_back(field.type, ++ids[field.type], Str(field.name), field.mapping);
    }
    contents->results = m_results;
}

void VtkReader::describeSteps(CaeContents* contents) const {
    for (std::size_t s = 0; s < m_contents.steps.size(); ++s) {
        CaeContents::State state{m_contents.steps[s], {}, m_meshes.size() == 1 ? nullptr : m_meshes[s].geometry};
        for (std::size_t f = 0; f < m_fields.size(); ++f) {
            const std::vector<std::size_t>& steps = m_contents.arrays[m_fields[f].components[0].array].steps;
            if (steps.empty() || std::binary_search(steps.begin(), steps.end(), s)) {
                state.results.push_back(f);
            }
        }
        contents->states.push_back(std::move(state));
    }
    contents->stateGroups = groupStates(m_contents.steps);
}

// Outside a load the other parts are read along, as they come from the file all together.
bool VtkReader::readPart(std::size_t mesh, std::size_t part, ug::DataNodes* nodes, ug::DataElements* elements,
                         ug::Error* error) {
    const bool isFirst = !m_isLoading && !m_output.object;
    const std::size_t step = m_isLoading && m_meshes.size() == 1 ? m_loadStep : m_meshes[mesh].step;
    const bool isRead = fetchMesh(step, error) && fillPart(mesh, part, nodes, elements, error);
    if (isFirst) {
        if (isRead) {
            m_meshes[mesh].geometry->read(nullptr);
        }
        drop();
    }
    return isRead;
}

bool VtkReader::fillPart(std::size_t mesh, std::size_t part, ug::DataNodes* nodes, ug::DataElements* elements,
                         ug::Error* error) {
    vtkDataSet* piece = m_output.pieces[part];
    if (!piece) {
        return true;
    }
    const VtkMessages messages;
    VtkUnknownCells unknown;
    ug::Error reason;
    if (!fillVtkPart(piece, nodes, elements, &m_meshes[mesh].maps[part], &unknown, &reason)) {
        return ug::fail(error, Str(m_filename + ": ") + reason.message());
    }
    for (const auto& [cellType, count] : unknown) {
        if (m_meshes[mesh].told.insert({part, cellType}).second) { // The mesh may be read again.
            m_lateWarnings.push_back(Str(m_filename + ": " + std::to_string(count) + " cells of " +
                                         vtkCellTypeText(cellType) + " are left out"));
        }
    }
    return true;
}

// A part that could not be read stays so, and values that cannot be read are not to take it along: they are told when
// they are to be copied.
bool VtkReader::fetchMesh(std::size_t step, ug::Error* error) {
    if (!m_loadArrays.empty() && fetch(step, {}, nullptr)) {
        return true;
    }
    m_loadArrays.clear();
    return fetch(step, {}, error);
}

// During a load all that the load is about.
bool VtkReader::fetch(std::size_t step, std::span<const std::size_t> arrays, ug::Error* error) {
    if (m_output.object && m_output.step == step &&
        std::all_of(arrays.begin(), arrays.end(), [this](std::size_t a) { return m_output.arrays.contains(a); })) {
        return true;
    }
    if (!m_source) {
        return ug::fail(error, Str(m_filename + " has been closed"));
    }
    std::set<std::size_t> all(arrays.begin(), arrays.end());
    if (m_isLoading && step == m_loadStep) {
        all.insert(m_loadArrays.begin(), m_loadArrays.end());
    }
    const std::vector<std::size_t> wanted(all.begin(), all.end());
    const VtkMessages messages;
    ug::Error reason;
    const vtkSmartPointer<vtkDataObject> output = m_source->read(step, wanted, &reason);
    if (!output || messages.hasErrors()) {
        drop();
        return ug::fail(error, Str(m_filename + ": ") + (reason.isEmpty() ? Str(messages.errors()) : reason.message()));
    }
    m_output = {output, step, std::move(all), std::vector<vtkDataSet*>(m_partNames.size(), nullptr)};
    for (const VtkPiece& piece : piecesOf(output)) {
        const auto part = std::find(m_partNames.begin(), m_partNames.end(), piece.name);
        if (part != m_partNames.end()) {
            m_output.pieces[std::size_t(part - m_partNames.begin())] = piece.data;
        } else if (m_told.insert(piece.name).second) {
            m_lateWarnings.push_back(
                Str(m_filename + ": part '" + piece.name + "' is left out: it was not there when the file was opened"));
        }
    }
    return true;
}

void VtkReader::drop() {
    if (m_output.object) {
        m_output = {};
        m_source->release();
    }
}

bool VtkReader::copyField(const CaeField& field, const VtkPartMap& map, vtkDataSet* piece, ug::DataPartValues* values,
                          ug::Error* error) {
    const bool isPerNode = field.mapping == ug::PER_NODE;
    const std::size_t expected = isPerNode ? map.pointCount : map.cellCount;
    const std::span<const std::int64_t> source =
        isPerNode ? std::span<const std::int64_t>() : std::span<const std::int64_t>(map.elementCells);
    const std::size_t dimension = field.components.size();
    for (std::size_t c = 0; c < dimension;) {
        std::vector<std::uint8_t> components; // That come from the same array.
        const std::size_t first = c;
        for (; c < dimension && field.components[c].array == field.components[first].array; ++c) {
            components.push_back(field.components[c].index);
        }
        vtkDataArray* array = findArray(piece, m_contents.arrays[field.components[first].array]);
        if (!array) {
            values->fillUndefined();
            return true;
        }
        if (std::size_t(array->GetNumberOfTuples()) != expected) {
            return ug::fail(error, Str(m_filename + ": array '" + field.name + "' has " +
                                       std::to_string(array->GetNumberOfTuples()) + " items, expected " +
                                       std::to_string(expected)));
        }
        const std::span<double> all(values->values(), values->itemCount() * dimension);
        if (!all.empty()) {
            copyVtkItems(array, source, components, dimension, all.subspan(first));
        }
    }
    return true;
}

void VtkReader::tellAsymmetry(const CaeField& field, vtkDataSet* piece) {
    const CaeArray& array = m_contents.arrays[field.components[0].array];
    vtkDataArray* values = array.componentCount == 9 ? findArray(piece, array) : nullptr;
    if (values && !isSymmetric(values) && m_told.insert(array.name).second) {
        m_lateWarnings.push_back(Str(m_filename + ": the tensor '" + array.name +
                                     "' is not symmetric; of XY and YX, YZ and ZY, XZ and ZX the first is kept"));
    }
}

const VtkReader::Mesh& VtkReader::meshOf(std::size_t step) const {
    return m_meshes[m_meshes.size() == 1 ? 0 : step];
}

const CaeField& VtkReader::findField(const ug::ResultInfo& info) const {
    const auto found = std::find(m_results.begin(), m_results.end(), info);
    return m_fields[std::size_t(found - m_results.begin())];
}

} // namespace orv::imp::cae
