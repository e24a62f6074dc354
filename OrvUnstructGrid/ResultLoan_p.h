#pragma once

#include "OrvUnstructGrid/ResultInfo.h"

#include <set>
#include <utility>

namespace orv::ug {

class DataSource;
class DataState;
class Error;

/// Results of a state that are loaded for a while. What was loaded before stays.
class ResultLoan {
public:
    /// @param state one of the source's
    ResultLoan(DataSource* source, DataState* state);

    /// Gives back.
    ~ResultLoan();

    ResultLoan(const ResultLoan&) = delete;
    ResultLoan& operator=(const ResultLoan&) = delete;

    /// Loads a result. What had been taken before goes.
    bool take(const ResultInfo& info, Error* error);
    /// Drops what was taken, and what it was computed from.
    void giveBack();

private:
    using ResultKey = std::pair<ResultType, int>;

    DataSource* m_source;
    DataState* m_state;
    std::set<ResultKey> m_loadedBefore;
};

} // namespace orv::ug
