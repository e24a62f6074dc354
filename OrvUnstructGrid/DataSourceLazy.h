#pragma once

#include "LibCore/rvfExport.h"
#include "OrvUnstructGrid/DataSource.h"
#include "OrvUnstructGrid/DataSourceInterface.h"

#include <cstddef>
#include <vector>

namespace orv::ug {

/// The base of the data sources that know their structure from the start and get values when they are named.
///
/// A subclass fills the directory and the states when it opens, and reads one result of one state at a time in
/// readResult(). This class settles what to read and to compute, in which order, and what to drop.
class ORV_API DataSourceLazy : public DataSource, public DataSourceInterface {
public:
    explicit DataSourceLazy(int id);
    ~DataSourceLazy() override;

    /// Refuses, with a text, a state or a result that the directory does not know (a custom result must be registered
    /// first) and a result without values in that state. Intermediate results of a nested expression are dropped
    /// when the result that needed them is there.
    bool loadDataState(int stateId, const DataStateSpec& spec, Error* error) final;

    /// The bytes of values that states may hold together; 1 GiB until set. When a load goes beyond it, values are
    /// dropped state by state, the longest unused first, but never those of the state just loaded nor those of a
    /// state that is current in a model. So whoever holds a pointer to values across a change of state asks anew.
    void setResultByteBudget(std::size_t bytes);
    std::size_t resultByteBudget() const;

protected:
    /// Reads one of the file's results into the state's result groups, all parts of all geometries. The state has the
    /// result by the directory and it is not loaded yet. False with a text when that fails; the caller clears up.
    virtual bool readResult(const ResultInfo& info, DataState* state, Error* error) = 0;

    /// Whether values that readResult() brought can be dropped and read again.
    virtual bool canReadAgain() const;

private:
    bool loadOne(const ResultInfo& info, DataState* state, Error* error);
    bool planLoad(const ResultInfo& info, const DataState& state, std::vector<ResultInfo>* order, Error* error) const;
    void dropBeyondBudget(int loadedStateId);

    std::size_t m_budget = std::size_t(1) << 30;
    std::vector<int> m_recentStates; ///< The ids of states that have been loaded into, the latest last.
};

} // namespace orv::ug
