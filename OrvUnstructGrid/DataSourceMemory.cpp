#include "OrvUnstructGrid/DataSourceMemory.h"

#include "LibCore/rvfAssert.h"
#include "OrvUnstructGrid/Error.h"
#include "OrvUnstructGrid/ErrorTexts_p.h"

#include <algorithm>

namespace orv::ug {
namespace {

Str number(std::size_t value) {
    return Str(std::to_string(value));
}

Str placeText(std::size_t geometryIndex, std::size_t partIndex) {
    return "part " + number(partIndex) + " of geometry " + number(geometryIndex);
}

int nextPartId(const DataGeometry& geometry) {
    int largest = 0;
    for (std::size_t i = 0; i < geometry.partCount(); ++i) {
        largest = std::max(largest, geometry.part(i)->partId());
    }
    return largest + 1;
}

} // namespace

DataSourceMemory::DataSourceMemory(int id) : DataSourceLazy(id) {}

void DataSourceMemory::setName(const Str& name) {
    directory()->setSimulationInfo(SimulationInfo(name));
}

DataGeometry* DataSourceMemory::addGeometry() {
    RVF_ASSERT(stateCount() == 0);
    if (stateCount() > 0) {
        return nullptr;
    }
    directory()->addGeometryPartInfos({});
    return m_geometries.emplace_back(new DataGeometry).get();
}

DataPart* DataSourceMemory::addPart(std::size_t geometryIndex, const Str& name) {
    const std::size_t geometryCount = m_geometries.size();
    RVF_ASSERT(geometryIndex < geometryCount);
    RVF_ASSERT(stateCount() == 0);
    if (geometryIndex >= geometryCount || stateCount() > 0) {
        return nullptr;
    }
    DataGeometry* geometry = m_geometries[geometryIndex].get();
    const int partId = nextPartId(*geometry);
    directory()->addPartInfo(geometryIndex, PartInfo(partId, name));
    return geometry->addPart(partId);
}

bool DataSourceMemory::addState(const StateInfo& info) {
    if (info.id() < 0 || directory()->findStateInfo(info.id()).id() >= 0) {
        return false;
    }
    return DataSource::addState(info, m_geometries);
}

ResultInfo DataSourceMemory::addResult(ResultType type, const Str& name, ResultMapping mapping) {
    if (!isResultType(type) || mapping == UNKNOWN_MAPPING) {
        return ResultInfo();
    }
    const std::vector<ResultInfo> earlier = directory()->resultInfos(type);
    const auto ownCount =
        std::count_if(earlier.begin(), earlier.end(), [](const ResultInfo& info) { return !info.isCustom(); });
    const ResultInfo info(type, static_cast<int>(ownCount) + 1, name, mapping);
    directory()->addResultInfo(info);
    return info;
}

bool DataSourceMemory::setValues(int stateId, const ResultInfo& info, std::size_t geometryIndex, std::size_t partIndex,
                                 std::span<const double> values, Error* error) {
    DataState* target = state(stateIndex(stateId));
    if (!target) {
        return fail(error, unknownStateText(*directory(), stateId));
    }
    if (info.isCustom() || !info.isValid() || !(directory()->findResultInfo(info.type(), info.id()) == info)) {
        return fail(error, "Result '" + info.name() + "' is not in " + sourceText(*directory()) +
                               ": make it with addResult()");
    }
    const DataPart* part = findPart(geometryIndex, partIndex, error);
    if (!part) {
        return false;
    }
    const std::size_t itemCount = part->itemCount(info.resultMapping());
    const std::size_t dimension = doublesPerItem(info.type());
    if (values.size() != itemCount * dimension) {
        return fail(error, "Result '" + info.name() + "' needs " + number(itemCount * dimension) + " values on " +
                               placeText(geometryIndex, partIndex) + " (" + number(itemCount) + " items of " +
                               number(dimension) + "), not " + number(values.size()));
    }
    dropValues(target);
    completeParts(info, target);
    DataResult* result = target->results(m_geometries[geometryIndex].get())->find(info);
    std::copy(values.begin(), values.end(), result->values(partIndex)->values());
    if (auto* scalar = dynamic_cast<DataResultScalar*>(result)) {
        scalar->part(partIndex)->updateMinMax();
    }
    directory()->setHasResult(stateId, info);
    return true;
}

// Values stay where setValues() puts them, so this is reached only when somebody has removed them from the state.
bool DataSourceMemory::readResult(const ResultInfo& info, DataState* state, Error* error) {
    return fail(error, "Result '" + info.name() + "' has been removed from " + stateText(*directory(), state->id()) +
                           ": set its values again");
}

bool DataSourceMemory::canReadAgain() const {
    return false;
}

const DataPart* DataSourceMemory::findPart(std::size_t geometryIndex, std::size_t partIndex, Error* error) const {
    if (geometryIndex >= m_geometries.size()) {
        fail(error, "There is no geometry with index " + number(geometryIndex) + " in " + sourceText(*directory()) +
                        ": it has " + number(m_geometries.size()));
        return nullptr;
    }
    const DataGeometry* geometry = m_geometries[geometryIndex].get();
    if (partIndex >= geometry->partCount()) {
        fail(error, "There is no " + placeText(geometryIndex, partIndex) + " in " + sourceText(*directory()) +
                        ": the geometry has " + number(geometry->partCount()) + " parts");
        return nullptr;
    }
    return geometry->part(partIndex);
}

} // namespace orv::ug
