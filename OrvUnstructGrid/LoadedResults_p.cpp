#include "OrvUnstructGrid/LoadedResults_p.h"

#include "OrvUnstructGrid/DataSource.h"
#include "OrvUnstructGrid/DataSourceInterface.h"
#include "OrvUnstructGrid/DataStateSpec.h"

namespace orv::ug {

bool loadResults(DataSource* source, DataState* state, std::vector<ResultInfo> results, Error* error) {
    const DataSourceDirectory& directory = *source->directory();
    std::erase_if(results, [&](const ResultInfo& info) {
        return state->hasLoaded(info) || !directory.hasResult(state->id(), info);
    });
    auto* loader = dynamic_cast<DataSourceInterface*>(source);
    if (results.empty() || !loader) {
        return true;
    }
    DataStateSpec spec;
    spec.setResultIds(results);
    return loader->loadDataState(state->id(), spec, error);
}

std::span<const double> loadedValues(const DataState& state, const ResultInfo& info, std::size_t geometryIndex,
                                     std::size_t partIndex) {
    const DataGeometry* geometry = state.geometry(geometryIndex);
    const DataResult* result = state.results(geometry)->find(info);
    const DataPartValues* values = result ? result->values(partIndex) : nullptr;
    const std::size_t count = geometry->part(partIndex)->itemCount(info.resultMapping());
    return values && values->itemCount() == count ? values->span() : std::span<const double>();
}

} // namespace orv::ug
