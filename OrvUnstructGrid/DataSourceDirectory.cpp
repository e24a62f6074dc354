#include "OrvUnstructGrid/DataSourceDirectory.h"

#include "LibCore/rvfAssert.h"
#include "OrvCore/Defines.h"
#include "OrvUnstructGrid/DataSource.h"
#include "OrvUnstructGrid/ResultWalk_p.h"

#include <algorithm>

namespace orv::ug {

DataSourceDirectory::DataSourceDirectory(DataSource* owner) : m_owner(owner) {}

DataSourceDirectory::~DataSourceDirectory() = default;

std::vector<StateInfo> DataSourceDirectory::stateInfos() const {
    return m_states;
}

std::size_t DataSourceDirectory::stateCount() const {
    return m_states.size();
}

StateInfo DataSourceDirectory::stateInfo(std::size_t index) const {
    return index < m_states.size() ? m_states[index] : StateInfo();
}

StateInfo DataSourceDirectory::findStateInfo(int stateId) const {
    return stateInfo(stateIndex(stateId));
}

std::size_t DataSourceDirectory::stateIndex(int stateId) const {
    const auto found = m_stateIndexes.find(stateId);
    return found != m_stateIndexes.end() ? found->second : UNDEFINED_SIZE_T;
}

std::vector<StateGroupInfo> DataSourceDirectory::stateGroupInfos() const {
    return m_stateGroups;
}

std::size_t DataSourceDirectory::geometryCountPerState() const {
    return m_parts.size();
}

std::vector<PartInfo> DataSourceDirectory::partInfos(std::size_t geometryIndex) const {
    return geometryIndex < m_parts.size() ? m_parts[geometryIndex] : std::vector<PartInfo>();
}

PartInfo DataSourceDirectory::findPartInfo(std::size_t geometryIndex, int partId) const {
    if (geometryIndex >= m_parts.size()) {
        return PartInfo();
    }
    const std::vector<PartInfo>& parts = m_parts[geometryIndex];
    const auto found =
        std::find_if(parts.begin(), parts.end(), [partId](const PartInfo& part) { return part.id() == partId; });
    return found != parts.end() ? *found : PartInfo();
}

SimulationInfo DataSourceDirectory::simulationInfo() const {
    return m_simulationInfo;
}

std::vector<Str> DataSourceDirectory::warnings() const {
    return m_warnings;
}

std::vector<ResultInfo> DataSourceDirectory::scalarResultInfos() const {
    return resultInfos(SCALAR);
}

std::vector<ResultInfo> DataSourceDirectory::vectorResultInfos() const {
    return resultInfos(VECTOR);
}

std::vector<ResultInfo> DataSourceDirectory::displacementResultInfos() const {
    return resultInfos(DISPLACEMENT);
}

std::vector<ResultInfo> DataSourceDirectory::symmetricTensorResultInfos() const {
    return resultInfos(SYMMETRIC_TENSOR);
}

std::vector<ResultInfo> DataSourceDirectory::resultInfos(ResultType type) const {
    std::vector<ResultInfo> infos;
    if (isResultType(type)) {
        const std::vector<ResultEntry>& entries = m_results[type - 1];
        infos.reserve(entries.size());
        for (const ResultEntry& entry : entries) {
            infos.push_back(entry.info);
        }
    }
    return infos;
}

ResultInfo DataSourceDirectory::findResultInfo(ResultType type, int resultId) const {
    const ResultEntry* entry = findEntry(type, resultId);
    return entry ? entry->info : ResultInfo();
}

ResultInfo DataSourceDirectory::findScalarResultInfo(int resultId) const {
    return findResultInfo(SCALAR, resultId);
}

bool DataSourceDirectory::hasResult(int stateId, ResultInfo info) const {
    const std::size_t index = stateIndex(stateId);
    if (index == UNDEFINED_SIZE_T) {
        return false;
    }
    auto hasValues = [this, index](const ResultInfo& result) {
        const ResultEntry* entry = findEntry(result.type(), result.id());
        return entry && index < entry->hasValues.size() && entry->hasValues[index];
    };
    if (!info.isCustom()) {
        return hasValues(info);
    }
    return isRegistered(info) && ResultWalk().walk(
                                     info, [](const ResultInfo& result) { return result.isCustom(); },
                                     [&](const ResultInfo& result) { return result.isCustom() || hasValues(result); });
}

std::vector<ResultInfo> DataSourceDirectory::customResultBaseDependencies(ResultInfo info) const {
    std::vector<ResultInfo> dependencies;
    auto isPassedOver = [&](const ResultInfo& result) {
        return result == info || (result.isCustom() && !isRegistered(result));
    };
    auto report = [&](const ResultInfo& result) {
        if (!isPassedOver(result)) {
            dependencies.push_back(result.isCustom() ? findResultInfo(result.type(), result.id()) : result);
        }
        return true;
    };
    if (info.isCustom()) {
        ResultWalk().walk(info, isPassedOver, report);
    }
    return dependencies;
}

void DataSourceDirectory::setCustomResultInfo(ResultInfo info) {
    if (!info.isCustom() || !isResultType(info.type())) {
        return;
    }
    std::vector<ResultEntry>& entries = m_results[info.type() - 1];
    if (isRegistered(info)) {
        entries[m_resultIndexes[{info.type(), info.id()}]].info = info;
    } else {
        insertEntry(entries.size(), info);
    }
}

void DataSourceDirectory::removeCustomResultInfo(ResultInfo info) {
    if (!info.isCustom() || !isRegistered(info)) {
        return;
    }
    const auto found = m_resultIndexes.find({info.type(), info.id()});
    const std::size_t position = found->second;
    m_resultIndexes.erase(found);
    m_results[info.type() - 1].erase(m_results[info.type() - 1].begin() + static_cast<std::ptrdiff_t>(position));
    indexEntriesFrom(info.type(), position);
    if (m_owner) {
        m_owner->dropResult(info);
    }
}

void DataSourceDirectory::setSimulationInfo(const SimulationInfo& info) {
    m_simulationInfo = info;
}

void DataSourceDirectory::addWarning(const Str& warning) {
    m_warnings.push_back(warning);
}

void DataSourceDirectory::addStateInfo(const StateInfo& info) {
    const bool isNew = findStateInfo(info.id()).id() == -1;
    RVF_ASSERT(findStateInfo(info.id()).id() == -1);
    RVF_ASSERT(info.id() >= 0);
    if (isNew && info.id() >= 0) {
        m_stateIndexes[info.id()] = m_states.size();
        m_states.push_back(info);
    }
}

void DataSourceDirectory::addStateGroupInfo(const StateGroupInfo& info) {
    m_stateGroups.push_back(info);
}

void DataSourceDirectory::setStateGroupInfos(std::vector<StateGroupInfo> infos) {
    m_stateGroups = std::move(infos);
}

void DataSourceDirectory::addGeometryPartInfos(std::vector<PartInfo> parts) {
    m_parts.push_back(std::move(parts));
}

void DataSourceDirectory::addPartInfo(std::size_t geometryIndex, const PartInfo& info) {
    RVF_ASSERT(geometryIndex < geometryCountPerState());
    if (geometryIndex < geometryCountPerState()) {
        m_parts[geometryIndex].push_back(info);
    }
}

void DataSourceDirectory::addResultInfo(const ResultInfo& info) {
    const bool isNew = !findEntry(info.type(), info.id());
    RVF_ASSERT(info.isValid() && !info.isCustom());
    RVF_ASSERT(isResultType(info.type()));
    RVF_ASSERT(!findResultInfo(info.type(), info.id()).isValid());
    if (!info.isValid() || info.isCustom() || !isResultType(info.type()) || !isNew) {
        return;
    }
    const std::vector<ResultEntry>& entries = m_results[info.type() - 1];
    const auto firstCustom = std::partition_point(entries.begin(), entries.end(),
                                                  [](const ResultEntry& entry) { return !entry.info.isCustom(); });
    insertEntry(static_cast<std::size_t>(firstCustom - entries.begin()), info);
}

void DataSourceDirectory::setHasResult(int stateId, const ResultInfo& info) {
    const std::size_t state = stateIndex(stateId);
    const auto result = m_resultIndexes.find({info.type(), info.id()});
    const bool stateIsKnown = state != UNDEFINED_SIZE_T;
    const bool resultIsKnown = result != m_resultIndexes.end() && !info.isCustom();
    RVF_ASSERT(stateIsKnown);
    RVF_ASSERT(resultIsKnown);
    if (!stateIsKnown || !resultIsKnown) {
        return;
    }
    std::vector<bool>& hasValues = m_results[info.type() - 1][result->second].hasValues;
    if (state >= hasValues.size()) {
        hasValues.resize(m_states.size());
    }
    hasValues[state] = true;
}

const DataSourceDirectory::ResultEntry* DataSourceDirectory::findEntry(ResultType type, int resultId) const {
    const auto found = m_resultIndexes.find({type, resultId});
    return found != m_resultIndexes.end() ? &m_results[type - 1][found->second] : nullptr;
}

bool DataSourceDirectory::isRegistered(const ResultInfo& info) const {
    const ResultEntry* entry = findEntry(info.type(), info.id());
    return entry && entry->info == info;
}

void DataSourceDirectory::insertEntry(std::size_t position, const ResultInfo& info) {
    std::vector<ResultEntry>& entries = m_results[info.type() - 1];
    entries.insert(entries.begin() + static_cast<std::ptrdiff_t>(position), {info, {}});
    indexEntriesFrom(info.type(), position);
}

void DataSourceDirectory::indexEntriesFrom(ResultType type, std::size_t position) {
    const std::vector<ResultEntry>& entries = m_results[type - 1];
    for (; position < entries.size(); ++position) {
        m_resultIndexes[{type, entries[position].info.id()}] = position;
    }
}

} // namespace orv::ug
