#pragma once

#include "OrvUnstructGrid/ResultInfo.h"

#include <vector>

namespace orv::ug {

/// What of a data source goes into a file. An empty list means all that the directory has.
struct WriteSelection {
    /// Written in the order of the directory, each once, however they are named here.
    std::vector<int> stateIds;
    /// The results of the source's own file and registered custom ones, which are computed and become ordinary results
    /// of the new file. In the order of the directory, type after type.
    std::vector<ResultInfo> results;
    /// Each has effect in every geometry that has such a part. A geometry may end up without parts.
    std::vector<int> partIds;
};

} // namespace orv::ug
