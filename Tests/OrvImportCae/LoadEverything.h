#pragma once

#include "OrvUnstructGrid/DataResult.h"
#include "OrvUnstructGrid/DataResultGroup.h"
#include "OrvUnstructGrid/DataSourceLazy.h"
#include "OrvUnstructGrid/DataStateSpec.h"
#include "OrvUnstructGrid/Error.h"

#include <cstddef>

namespace orvtest {

/// What came out of a data source.
struct Everything {
    std::size_t states = 0;
    std::size_t loads = 0; ///< Results in states that loaded.
    std::size_t values = 0;
    std::size_t failures = 0; ///< Results in states that did not.
};

/// Loads every result of every state, one at a time. `failed` gets state, result and error of each that fails.
template <class Failed>
Everything loadEverything(orv::ug::DataSourceLazy& source, Failed failed) {
    using namespace orv::ug;
    Everything sum;
    // No values but those just loaded.
    source.setResultByteBudget(0);
    for (const StateInfo& state : source.directory()->stateInfos()) {
        ++sum.states;
        for (const ResultType type : {SCALAR, VECTOR, DISPLACEMENT, SYMMETRIC_TENSOR}) {
            for (const ResultInfo& info : source.directory()->resultInfos(type)) {
                if (!source.directory()->hasResult(state.id(), info)) {
                    continue;
                }
                Error error;
                DataStateSpec spec;
                spec.setResultIds({info});
                if (!source.loadDataState(state.id(), spec, &error)) {
                    ++sum.failures;
                    failed(state, info, error);
                    continue;
                }
                ++sum.loads;
                DataState* loaded = source.state(source.stateIndex(state.id()));
                const DataResult* result = loaded->results(loaded->geometry(0))->find(info);
                for (std::size_t p = 0; p < result->partCount(); ++p) {
                    sum.values += result->values(p)->itemCount() * result->values(p)->dimension();
                }
            }
        }
    }
    return sum;
}

} // namespace orvtest
