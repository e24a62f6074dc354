#include "OrvUnstructGrid/DataSourceZTF.h"

#include "OrvUnstructGrid/Error.h"
#include "OrvUnstructGrid/ZtfReader_p.h"

#include <algorithm>
#include <utility>

namespace orv::ug {

DataSourceZTF::DataSourceZTF(int id) : DataSourceLazy(id) {}

DataSourceZTF::~DataSourceZTF() = default;

bool DataSourceZTF::openFile(const Str& filename, Error* error) {
    if (m_file) {
        return fail(error,
                    "cannot open \"" + filename + "\": this data source holds \"" + m_file->name() + "\" already");
    }
    auto file = std::make_unique<ZtfFile>(filename);
    auto contents = std::make_unique<ZtfContents>();
    if (!file->openText(error) || !readZtfContents(*file, contents.get(), error)) {
        return false;
    }
    m_file = std::move(file);
    m_contents = std::move(contents);
    install(filename);
    return true;
}

bool DataSourceZTF::readResult(const ResultInfo& info, DataState* state, Error* error) {
    if (!m_file->checkUnchanged(error)) {
        return false;
    }
    const std::vector<ZtfField>& fields = m_contents->states[stateIndex(state->id())].fields;
    const auto field = std::find_if(fields.begin(), fields.end(), [&](const ZtfField& candidate) {
        return m_contents->results[candidate.result] == info;
    });
    // Parts without values in the file become undefined.
    completeParts(info, state);
    ZtfLines lines(*m_file, error);
    for (const ZtfValues& stored : field->values) {
        DataResult* result = state->results(state->geometry(stored.geometryIndex))->find(info);
        DataPartValues* values = result->values(stored.partIndex);
        if (!readZtfValues(lines, stored.place, {values->values(), values->dimension() * values->itemCount()})) {
            return false;
        }
        if (auto* scalar = dynamic_cast<DataResultScalar*>(result)) {
            scalar->part(stored.partIndex)->updateMinMax();
        }
    }
    return true;
}

void DataSourceZTF::install(const Str& filename) {
    directory()->setSimulationInfo(SimulationInfo(filename, m_contents->title));
    for (const std::size_t geometry : m_contents->geometriesPerState()) {
        directory()->addGeometryPartInfos(m_contents->geometries[geometry].parts);
    }
    for (const ResultInfo& info : m_contents->results) {
        directory()->addResultInfo(info);
    }
    for (const ZtfState& state : m_contents->states) {
        std::vector<PtrRef<DataGeometry>> geometries;
        for (const std::size_t geometry : state.geometries) {
            geometries.push_back(m_contents->geometries[geometry].geometry);
        }
        addState(state.info, std::move(geometries));
        for (const ZtfField& field : state.fields) {
            directory()->setHasResult(state.info.id(), m_contents->results[field.result]);
        }
    }
    for (const StateGroupInfo& group : m_contents->stateGroups) {
        directory()->addStateGroupInfo(group);
    }
}

} // namespace orv::ug
