#pragma once

#include "OrvUnstructGrid/ResultInfo.h"
#include "OrvUnstructGrid/StateInfo.h"

#include <cstddef>
#include <map>
#include <utility>
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

/// The ids that results have in a file, by their types and ids in the directory.
using ResultIds = std::map<std::pair<ResultType, int>, int>;

/// Custom results get the lowest ids that others of their type leave free; others keep theirs.
ResultIds idsInFile(const std::vector<ResultInfo>& results);

} // namespace orv::ug
