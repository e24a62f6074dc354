#pragma once

#include <map>
#include <string>
#include <vector>

namespace orvapp {

/// What is told of a situation.
struct SituationRow {
    std::string place; ///< Where it is kept, as the commands take it.
    std::string name;
    std::string description;
    std::string file; ///< That the model was opened from.
    std::map<std::string, std::string> userData;
};

struct SituationsReport {
    std::vector<SituationRow> rows;
};

} // namespace orvapp
