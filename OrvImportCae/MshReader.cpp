#include "OrvImportCae/MshReader.h"

#include "OrvUnstructGrid/DataResultGroup.h"

#include <string>
#include <utility>

namespace orv::imp::cae {
namespace {

// Makes room for the values of all parts, undefined so far, and tells where.
std::vector<double*> allocate(const ug::DataGeometry& geometry, ug::DataResult* result) {
    std::vector<double*> parts;
    for (std::size_t i = 0; i < geometry.partCount(); ++i) {
        result->values(i)->allocate(geometry.part(i)->itemCount(result->resultMapping()));
        result->values(i)->fillUndefined();
        parts.push_back(result->values(i)->values());
    }
    return parts;
}

std::string counted(std::size_t count, const std::string& one) {
    return count == 1 ? "one " + one : std::to_string(count) + " " + one + "s";
}

} // namespace

bool MshReader::open(const Str& filename, CaeContents* contents, ug::Error* error) {
    return m_file.open(filename.toStdString(), error) && readStructure(contents, error);
}

bool MshReader::openDescriptor(int descriptor, const Str& filename, CaeContents* contents, ug::Error* error) {
    return m_file.openDescriptor(descriptor, filename.toStdString(), error) && readStructure(contents, error);
}

void MshReader::adoptGeometry(const PtrRef<ug::DataGeometry>& geometry) {
    m_mesh.geometry = geometry;
}

bool MshReader::readStructure(CaeContents* contents, ug::Error* error) {
    m_file.tellProgress(progress(), 0, m_file.size());
    if (!readMshSections(&m_file, &m_sections, error)) {
        return false;
    }
    std::vector<std::string> warnings = m_sections.warnings;
    m_mesh = makeMshParts(&m_sections);
    if (m_mesh.infos.empty()) {
        warnings.push_back(m_file.name() + " has no elements, so there are no parts");
    }
    m_results = makeMshResults(m_file, m_sections, &warnings);
    m_isToldOf.resize(m_sections.data.size());
    describe(warnings, contents);
    return true;
}

void MshReader::describe(const std::vector<std::string>& warnings, CaeContents* contents) const {
    contents->geometry = m_mesh.geometry;
    contents->parts = m_mesh.infos;
    contents->results = m_results.infos;
    for (const MshState& state : m_results.states) {
        CaeContents::State described{state.info, {}};
        for (const auto& [result, sections] : state.sections) {
            described.results.push_back(result);
        }
        contents->states.push_back(std::move(described));
    }
    contents->warnings.assign(warnings.begin(), warnings.end());
}

bool MshReader::readResult(const ug::ResultInfo& info, int stateId, const ug::ResultInfo& intoInfo,
                           ug::DataState* state, std::vector<Str>* warnings, ug::Error* error) {
    const std::vector<std::size_t>* sections = findSections(stateId, info);
    if (!sections) {
        return ug::fail(error, Str(m_file.name() + " has no such values"));
    }
    if (!m_file.checkUnchanged(error)) {
        return false;
    }
    ug::DataResult* result = state->results(m_mesh.geometry.get())->findOrAdd(intoInfo);
    const std::vector<double*> parts = allocate(*m_mesh.geometry, result);
    for (std::size_t i = 0; i < sections->size(); ++i) {
        const std::size_t section = (*sections)[i];
        const double count = double(sections->size());
        const ug::ProgressMeter::Step step(progress(), double(i) / count, double(i + 1) / count);
        m_file.tellProgress(progress(), m_sections.data[section].begin, endOfValues(section));
        MshLeftOut leftOut;
        if (!readMshValues(m_file, m_sections.isBinary, m_sections.data[section], m_mesh, info.type(), parts, &leftOut,
                           error)) {
            return false;
        }
        tellLeftOut(section, leftOut, warnings);
    }
    updateRanges(result);
    return true;
}

const std::vector<std::size_t>* MshReader::findSections(int stateId, const ug::ResultInfo& info) const {
    // States and results are numbered from 1.
    const std::size_t stateIndex = std::size_t(stateId) - 1;
    if (stateIndex >= m_results.states.size()) {
        return nullptr;
    }
    const auto& sections = m_results.states[stateIndex].sections;
    const auto found = sections.find(std::size_t(info.id()) - 1);
    return found == sections.end() ? nullptr : &found->second;
}

bool MshReader::readScalars(const ug::ResultInfo& info, int stateId, const ug::ScalarPlace& place,
                            std::span<double> values) {
    const std::vector<std::size_t>* sections = findSections(stateId, info);
    if (!sections || sections->size() != 1 || !m_file.checkUnchanged(nullptr)) {
        return false;
    }
    const MshDataSection& section = m_sections.data[sections->front()];
    const bool isPerNode = section.mapping == ug::PER_NODE;
    const CaeIds& ids = isPerNode ? m_mesh.nodeIds : m_mesh.elementIds;
    if (section.mapping == ug::PER_ELEMENT_NODE || section.itemCount != std::int64_t(ids.ids().size())) {
        return false;
    }
    const ug::DataPart* part = m_mesh.geometry->part(place.partIndex);
    for (std::size_t i = 0; i < values.size(); ++i) {
        const std::size_t item = place.firstItem + i;
        const int id = isPerNode ? part->nodes()->nodeId(item) : part->elements()->elementId(item);
        const std::uint32_t row = ids.find(id, std::uint32_t(item));
        if (row == CaeIds::NONE || !readMshValueOfRow(m_file, m_sections.isBinary, section, row, id, &values[i])) {
            return false;
        }
    }
    return true;
}

// Where the next section of values begins, or else the file ends: near enough for a bar.
std::int64_t MshReader::endOfValues(std::size_t section) const {
    return section + 1 < m_sections.data.size() ? m_sections.data[section + 1].header : m_file.size();
}

void MshReader::tellLeftOut(std::size_t section, const MshLeftOut& leftOut, std::vector<Str>* warnings) {
    if (m_isToldOf[section] || leftOut.count + leftOut.asymmetricCount == 0) {
        return;
    }
    m_isToldOf[section] = true;
    const MshDataSection& data = m_sections.data[section];
    if (leftOut.count > 0) {
        const std::string kind = data.mapping == ug::PER_NODE ? "node" : "element";
        warnings->push_back(Str(m_file.place(leftOut.firstOffset) + ": values of " + counted(leftOut.count, kind) +
                                " that the mesh does not have are left out, the first, " + kind + " " +
                                std::to_string(leftOut.firstTag) + ", here"));
    }
    if (leftOut.asymmetricCount > 0) {
        warnings->push_back(Str(m_file.place(data.header) + ": " + quotedForPeople(data.name) + " has " +
                                counted(leftOut.asymmetricCount, "tensor") + " without symmetry, left undefined"));
    }
}

} // namespace orv::imp::cae
