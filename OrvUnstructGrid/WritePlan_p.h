#pragma once

#include "OrvUnstructGrid/ResultInfo.h"
#include "OrvUnstructGrid/StateInfo.h"

#include <cstddef>
#include <vector>

namespace orv::ug {

class DataSourceDirectory;
class Error;
struct WriteSelection;

/// A selection made explicit.
struct WritePlan {
    std::vector<StateInfo> states;               ///< In the order of the directory.
    std::vector<ResultInfo> results;             ///< Under their names in the directory, and in its order.
    std::vector<std::vector<std::size_t>> parts; ///< For each geometry the indexes of the parts, ascending.
};

/// False with a text when the selection names a state, a result or a part that the directory does not have.
bool makeWritePlan(const WriteSelection& selection, const DataSourceDirectory& directory, WritePlan* plan,
                   Error* error);

} // namespace orv::ug
