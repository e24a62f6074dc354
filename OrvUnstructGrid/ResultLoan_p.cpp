#include "OrvUnstructGrid/ResultLoan_p.h"

#include "OrvUnstructGrid/DataSource.h"
#include "OrvUnstructGrid/DataSourceInterface.h"
#include "OrvUnstructGrid/DataStateSpec.h"
#include "OrvUnstructGrid/Error.h"
#include "OrvUnstructGrid/ErrorTexts_p.h"

namespace orv::ug {

ResultLoan::ResultLoan(DataSource* source, DataState* state) : m_source(source), m_state(state) {
    for (std::size_t g = 0; g < state->geometryCount(); ++g) {
        for (const DataResult* result : state->results(state->geometry(g))->all()) {
            m_loadedBefore.insert({result->type(), result->resultId()});
        }
    }
}

ResultLoan::~ResultLoan() {
    giveBack();
}

bool ResultLoan::take(const ResultInfo& info, Error* error) {
    giveBack();
    if (m_state->hasLoaded(info)) {
        return true;
    }
    auto* source = dynamic_cast<DataSourceInterface*>(m_source);
    if (!source) {
        return fail(error, failedReadText(*m_source->directory(), m_state->id(), info));
    }
    DataStateSpec spec;
    spec.setResultIds({info});
    return source->loadDataState(m_state->id(), spec, error);
}

void ResultLoan::giveBack() {
    for (std::size_t g = 0; g < m_state->geometryCount(); ++g) {
        DataResultGroup* group = m_state->results(m_state->geometry(g));
        for (const DataResult* result : group->all()) {
            if (!m_loadedBefore.contains({result->type(), result->resultId()})) {
                group->remove(result->type(), result->resultId());
            }
        }
    }
    // A load of nothing makes the source count anew what the state holds.
    if (auto* source = dynamic_cast<DataSourceInterface*>(m_source)) {
        source->loadDataState(m_state->id(), DataStateSpec(), nullptr);
    }
}

} // namespace orv::ug
