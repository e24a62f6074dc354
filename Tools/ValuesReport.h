#pragma once

#include "Tools/Statistics.h"

#include <optional>
#include <string>
#include <vector>

namespace orvapp {

/// One component of the result on one part in one state.
struct ValuesRow {
    std::string state;
    std::string part;
    std::string component;
    Statistics statistics;
    std::optional<int> minAt; ///< The solver's number of the node or element with the smallest value.
    std::optional<int> maxAt;
};

/// What `orvapp values` tells.
struct ValuesReport {
    std::string result;
    std::string type;
    std::string mapping;
    std::string place; ///< Whose numbers minAt and maxAt are: "node" or "element".
    std::vector<ValuesRow> rows;
};

} // namespace orvapp
