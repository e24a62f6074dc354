#include "OrvImportCae/FrdReader.h"

#include "OrvUnstructGrid/DataResultGroup.h"

#include <algorithm>
#include <utility>

namespace orv::imp::cae {
namespace {

// Makes room for the values of all parts, and tells where.
std::vector<double*> allocate(const ug::DataGeometry& geometry, ug::DataResult* result) {
    std::vector<double*> parts;
    for (std::size_t i = 0; i < geometry.partCount(); ++i) {
        result->values(i)->allocate(geometry.part(i)->nodes()->nodeCount());
        parts.push_back(result->values(i)->values());
    }
    return parts;
}

} // namespace

bool FrdReader::open(const Str& filename, CaeContents* contents, ug::Error* error) {
    return m_file.open(filename.toStdString(), error) && readStructure(contents, error);
}

bool FrdReader::openDescriptor(int descriptor, const Str& filename, CaeContents* contents, ug::Error* error) {
    return m_file.openDescriptor(descriptor, filename.toStdString(), error) && readStructure(contents, error);
}

void FrdReader::adoptGeometry(const PtrRef<ug::DataGeometry>& geometry) {
    m_mesh.geometry = geometry;
}

bool FrdReader::readStructure(CaeContents* contents, ug::Error* error) {
    std::vector<std::string> warnings;
    if (!readIndex(error) || !readMesh(&warnings, error)) {
        return false;
    }
    m_results = makeFrdResults(m_file, m_index, &warnings);
    for (std::size_t i = 0; i < m_results.states.size(); ++i) {
        m_statesById[m_results.states[i].info.id()] = i;
    }
    warnings.insert(warnings.end(), m_index.warnings.begin(), m_index.warnings.end());
    describe(warnings, contents);
    return true;
}

// A few reads for each block, against all of the mesh.
bool FrdReader::readIndex(ug::Error* error) {
    const ug::ProgressMeter::Step step(progress(), 0.0, 0.1);
    m_file.tellProgress(progress(), 0, m_file.size());
    return readFrdIndex(m_file, &m_index, error);
}

bool FrdReader::readMesh(std::vector<std::string>* warnings, ug::Error* error) {
    const ug::ProgressMeter::Step step(progress(), 0.1, 1.0);
    m_file.tellProgress(progress(), m_index.nodes.begin, std::max(m_index.nodes.end, m_index.elements.end));
    return readFrdMesh(m_file, m_index, &m_mesh, warnings, error);
}

void FrdReader::describe(const std::vector<std::string>& warnings, CaeContents* contents) const {
    contents->title = Str(m_index.title);
    contents->geometry = m_mesh.geometry;
    contents->parts = m_mesh.parts;
    contents->results = m_results.infos;
    contents->stateGroups = m_results.stateGroups;
    for (const FrdState& state : m_results.states) {
        CaeContents::State described{state.info, {}};
        for (const std::uint32_t block : state.blocks) {
            for (const FrdColumns& columns : m_results.layouts[m_index.blocks[block].layout]) {
                described.results.push_back(columns.result);
            }
        }
        contents->states.push_back(std::move(described));
    }
    contents->warnings.assign(warnings.begin(), warnings.end());
}

bool FrdReader::readResult(const ug::ResultInfo& info, int stateId, const ug::ResultInfo& intoInfo,
                           ug::DataState* state, std::vector<Str>* warnings, ug::Error* error) {
    const FrdSource source = findSource(stateId, info);
    if (!source.block) {
        return ug::fail(error, Str(m_file.name() + " has no such values"));
    }
    if (!m_file.checkUnchanged(error)) {
        return false;
    }
    ug::DataResult* result = state->results(m_mesh.geometry.get())->findOrAdd(intoInfo);
    const std::vector<double*> parts = allocate(*m_mesh.geometry, result);
    const std::size_t storedCount = m_index.layouts[source.block->layout].components.size();
    FrdLeftOut leftOut;
    m_file.tellProgress(progress(), source.block->rows.begin, source.block->rows.end);
    if (!readFrdValues(m_file, source.block->rows, storedCount, source.columns->columns, m_mesh, parts, &leftOut,
                       error)) {
        return false;
    }
    tellLeftOut(*source.block, leftOut, warnings);
    updateRanges(result);
    return true;
}

bool FrdReader::readScalars(const ug::ResultInfo& info, int stateId, const ug::ScalarPlace& place,
                            std::span<double> values) {
    const FrdSource source = findSource(stateId, info);
    if (!source.block || !m_file.checkUnchanged(nullptr)) {
        return false;
    }
    const std::size_t storedCount = m_index.layouts[source.block->layout].components.size();
    const ug::DataNodes* nodes = m_mesh.geometry->part(place.partIndex)->nodes();
    for (std::size_t i = 0; i < values.size(); ++i) {
        const std::size_t node = place.firstItem + i;
        const std::uint32_t row = m_mesh.nodeIds.find(nodes->nodeId(node), std::uint32_t(node));
        if (!readFrdValueOfRow(m_file, source.block->rows, storedCount, source.columns->columns[0], row,
                               nodes->nodeId(node), &values[i])) {
            return false;
        }
    }
    return true;
}

FrdSource FrdReader::findSource(int stateId, const ug::ResultInfo& info) const {
    const auto found = m_statesById.find(stateId);
    if (found == m_statesById.end()) {
        return {};
    }
    for (const std::uint32_t number : m_results.states[found->second].blocks) {
        const FrdResultBlock& block = m_index.blocks[number];
        for (const FrdColumns& columns : m_results.layouts[block.layout]) {
            if (m_results.infos[columns.result] == info) {
                return {&block, &columns};
            }
        }
    }
    return {};
}

void FrdReader::tellLeftOut(const FrdResultBlock& block, const FrdLeftOut& leftOut, std::vector<Str>* warnings) {
    if (leftOut.count == 0 || !m_blocksToldOf.insert(&block).second) {
        return;
    }
    const std::string node = "node " + std::to_string(leftOut.firstNode);
    const std::string what = leftOut.count == 1
                                 ? "values of " + node + ", which the file does not have, are left out"
                                 : "values of " + std::to_string(leftOut.count) +
                                       " nodes that the file does not have are left out, the first, " + node + ", here";
    warnings->push_back(Str(m_file.place(leftOut.firstOffset) + ": " + what));
}

} // namespace orv::imp::cae
