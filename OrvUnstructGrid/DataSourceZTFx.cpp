#include "OrvUnstructGrid/DataSourceZTFx.h"

#include "OrvUnstructGrid/Error.h"
#include "OrvUnstructGrid/ZtfxReader_p.h"

#include <algorithm>
#include <new>
#include <string>

namespace orv::ug {

DataSourceZTFx::DataSourceZTFx(int id) : DataSourceLazy(id) {}

DataSourceZTFx::~DataSourceZTFx() = default;

void DataSourceZTFx::setPassword(const Str& password) {
    m_password = password;
}

bool DataSourceZTFx::openCase(const Str& filename, std::size_t caseIndex, Error* error) {
    const auto findCase = [caseIndex](const std::vector<ZTFxCaseInfo>&) { return caseIndex; };
    return open(filename, "at index " + std::to_string(caseIndex), findCase, error);
}

bool DataSourceZTFx::openCaseById(const Str& filename, int caseId, Error* error) {
    const auto findCase = [caseId](const std::vector<ZTFxCaseInfo>& cases) {
        const auto found =
            std::find_if(cases.begin(), cases.end(), [caseId](const ZTFxCaseInfo& info) { return info.id == caseId; });
        return static_cast<std::size_t>(found - cases.begin());
    };
    return open(filename, "with id " + std::to_string(caseId), findCase, error);
}

const std::vector<ZTFxCaseInfo>& DataSourceZTFx::cases() const {
    return m_cases;
}

bool DataSourceZTFx::readResult(const ResultInfo& info, DataState* state, Error* error) {
    return m_reader->readField(stateIndex(state->id()), info, state, error);
}

bool DataSourceZTFx::readScalars(const ResultInfo& info, const DataState& state, const ScalarPlace& place,
                                 std::span<double> values) {
    return m_reader->readScalars(stateIndex(state.id()), info, state, place, values);
}

template <class FindCase>
bool DataSourceZTFx::open(const Str& filename, const Str& wanted, FindCase findCase, Error* error) {
    if (m_reader) {
        return fail(error, filename + ": this data source has a file open already, use another one");
    }
    const Str path = filename.subStr(0, filename.find("|"));
    try {
        auto reader = std::make_unique<ZtfxReader>(path);
        if (!reader->open(m_password, error)) {
            return false;
        }
        const std::size_t caseIndex = findCase(reader->cases());
        if (caseIndex >= reader->cases().size()) {
            return reader->failWithoutCase(wanted, error);
        }
        if (!reader->openCase(caseIndex, error)) {
            return false;
        }
        m_reader = std::move(reader);
    } catch (const std::bad_alloc&) {
        return fail(error, path + ": there is not enough memory for it");
    }
    install(filename);
    return true;
}

void DataSourceZTFx::install(const Str& filename) {
    const ZtfxCase& contents = m_reader->contents();
    m_cases = m_reader->cases();
    directory()->setSimulationInfo(SimulationInfo(filename, contents.info.simulation.title()));
    for (const Str& warning : contents.warnings) {
        directory()->addWarning(warning);
    }
    for (const std::vector<PartInfo>& parts : contents.geometries) {
        directory()->addGeometryPartInfos(parts);
    }
    for (const ResultInfo& result : contents.results) {
        directory()->addResultInfo(result);
    }
    for (std::size_t s = 0; s < contents.states.size(); ++s) {
        addState(contents.states[s].info, m_reader->geometries(s));
    }
    for (const ZtfxState& state : contents.states) {
        for (const ZtfxField& field : state.fields) {
            directory()->setHasResult(state.info.id(), contents.results[field.result]);
        }
    }
    for (const StateGroupInfo& group : contents.groups) {
        directory()->addStateGroupInfo(group);
    }
}

} // namespace orv::ug
