#include "OrvImportMed/MedReader.h"

#include "OrvCore/Defines.h"
#include "OrvImportMed/MedValues.h"
#include "OrvUnstructGrid/DataResultGroup.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <new>
#include <set>
#include <tuple>

namespace orv::imp::cae {
namespace {

bool hasMapping(const MedStep& step, ug::ResultMapping mapping) {
    return std::any_of(step.chunks.begin(), step.chunks.end(),
                       [mapping](const MedChunk& chunk) { return chunk.mapping == mapping; });
}

bool hasMapping(const MedField& field, ug::ResultMapping mapping) {
    return std::any_of(field.steps.begin(), field.steps.end(),
                       [mapping](const MedStep& step) { return hasMapping(step, mapping); });
}

std::string numberText(double value) {
    char text[32];
    const std::to_chars_result end = std::to_chars(text, text + sizeof text, value, std::chars_format::general, 7);
    return std::string(text, end.ptr);
}

bool isFrequency(const std::vector<MedField>& fields) {
    return std::any_of(fields.begin(), fields.end(), [](const MedField& field) {
        return field.timeUnit == "Hz" || field.timeUnit == "HZ" || field.timeUnit == "hz";
    });
}

} // namespace

bool MedReader::open(const Str& filename, CaeContents* contents, ug::Error* error) {
    const MedSilence silence;
    try {
        return m_file.open(filename.toStdString(), error) && read(contents, error);
    } catch (const std::bad_alloc&) {
        return ug::fail(error, filename + ": there is not enough memory for what it says to hold");
    }
}

void MedReader::adoptGeometry(const PtrRef<ug::DataGeometry>& geometry) {
    m_geometry = geometry;
}

bool MedReader::readResult(const ug::ResultInfo& info, int stateId, const ug::ResultInfo& intoInfo,
                           ug::DataState* state, std::vector<Str>*, ug::Error* error) {
    const auto found =
        std::find_if(m_results.begin(), m_results.end(), [&info](const Result& result) { return result.info == info; });
    const MedStep* step = found == m_results.end() ? nullptr : findStep(*found, stateId);
    if (!step) {
        return ug::fail(error, Str(m_file.name() + " has no such values"));
    }
    const MedSilence silence;
    try {
        return m_file.checkUnchanged(error) && readValues(*found, *step, intoInfo, state, error);
    } catch (const std::bad_alloc&) {
        return ug::fail(error, Str(m_file.name() + ": there is not enough memory for its values"));
    }
}

bool MedReader::read(CaeContents* contents, ug::Error* error) {
    std::vector<std::string> warnings;
    m_geometry = PtrRef<ug::DataGeometry>(new ug::DataGeometry);
    if (!readMedMeshes(m_file, &m_meshes, m_geometry.get(), &warnings, error) ||
        !readMedFields(m_file, m_meshes.meshes, &m_fields, &warnings, error)) {
        return false;
    }
    makeResults();
    contents->title = Str(m_meshes.meshes.front().name);
    contents->geometry = m_geometry;
    contents->parts = m_meshes.infos;
    describeResults(contents);
    describeStates(contents);
    contents->warnings.assign(warnings.begin(), warnings.end());
    return true;
}

void MedReader::makeResults() {
    std::map<ug::ResultType, int> ids;
    for (std::size_t i = 0; i < m_fields.size(); ++i) {
        const std::vector<MedColumns> gathered = gatherMedComponents(m_fields[i].name, m_fields[i].components);
        for (const ug::ResultMapping mapping : {ug::PER_NODE, ug::PER_ELEMENT, ug::PER_ELEMENT_NODE}) {
            if (!hasMapping(m_fields[i], mapping)) {
                continue;
            }
            for (const MedColumns& columns : gathered) {
                const ug::ResultInfo info(columns.type, ++ids[columns.type], Str(columns.name), mapping);
                m_results.push_back({info, i, columns.columns});
            }
        }
    }
}

void MedReader::describeResults(CaeContents* contents) const {
    for (const Result& result : m_results) {
        contents->results.push_back(result.info);
    }
}

MedReader::StateKey MedReader::keyOf(const MedStep& step) {
    return {step.number, step.iteration, step.time};
}

std::vector<MedReader::StateKey> MedReader::gatherStates() const {
    std::vector<StateKey> keys;
    for (const MedField& field : m_fields) {
        for (const MedStep& step : field.steps) {
            if (!step.chunks.empty()) {
                keys.push_back(keyOf(step));
            }
        }
    }
    std::sort(keys.begin(), keys.end(), [](const StateKey& a, const StateKey& b) {
        return std::tie(a.number, a.iteration, a.time) < std::tie(b.number, b.iteration, b.time);
    });
    keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
    return keys;
}

void MedReader::describeStates(CaeContents* contents) {
    m_states = gatherStates();
    const bool isModal = isFrequency(m_fields);
    const auto type = isModal ? ug::StateInfo::FREQUENCY : ug::StateInfo::TIME;
    std::set<std::string> names;
    std::vector<ug::StateInfo> infos;
    for (std::size_t i = 0; i < m_states.size(); ++i) {
        const StateKey& key = m_states[i];
        const bool isDated = key.number != MED_NO_DT;
        std::string name = isDated ? "Step " + std::to_string(key.number) : "Without step";
        if (key.iteration != MED_NO_IT && key.iteration != key.number) {
            name += ", iteration " + std::to_string(key.iteration);
        }
        if (isDated) {
            name += (isModal ? ", frequency " : ", time ") + numberText(key.time);
        }
        if (!names.insert(name).second) {
            name += " (state " + std::to_string(i + 1) + ")";
        }
        infos.emplace_back(int(i) + 1, Str(name), type, isDated ? key.time : UNDEFINED_DOUBLE);
        CaeContents::State state{infos.back(), {}};
        for (std::size_t r = 0; r < m_results.size(); ++r) {
            if (findStep(m_results[r], int(i) + 1)) {
                state.results.push_back(r);
            }
        }
        contents->states.push_back(std::move(state));
    }
    if (m_states.empty()) {
        infos.emplace_back(1, "Mesh", ug::StateInfo::TIME, UNDEFINED_DOUBLE);
        contents->states.push_back({infos.back(), {}});
    }
    contents->stateGroups = groupStates(infos);
}

const MedStep* MedReader::findStep(const Result& result, int stateId) const {
    if (stateId < 1 || std::size_t(stateId) > m_states.size()) {
        return nullptr;
    }
    for (const MedStep& step : m_fields[result.field].steps) {
        if (keyOf(step) == m_states[std::size_t(stateId) - 1] && hasMapping(step, result.info.resultMapping())) {
            return &step;
        }
    }
    return nullptr;
}

bool MedReader::readValues(const Result& result, const MedStep& step, const ug::ResultInfo& intoInfo,
                           ug::DataState* state, ug::Error* error) const {
    const ug::ResultMapping mapping = result.info.resultMapping();
    std::vector<std::size_t> itemCounts;
    for (std::size_t i = 0; i < m_geometry->partCount(); ++i) {
        itemCounts.push_back(m_geometry->part(i)->itemCount(mapping));
    }
    ug::DataResult* values = state->results(m_geometry.get())->findOrAdd(intoInfo);
    if (!readMedValues(m_file, m_meshes, m_fields[result.field], step, mapping, result.columns, itemCounts, values,
                       progress(), error)) {
        return false;
    }
    updateRanges(values);
    return true;
}

} // namespace orv::imp::cae
