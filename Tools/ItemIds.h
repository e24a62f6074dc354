#pragma once

#include "OrvUnstructGrid/ResultType.h"

#include <vector>

namespace orv::ug {
class DataPart;
}

namespace orvapp {

/// The solver's numbers of the items that a result of this mapping has on a part: of the nodes, or of the elements,
/// where an element with several items stands there as often. Empty for an unknown mapping.
std::vector<int> itemIds(const orv::ug::DataPart& part, orv::ug::ResultMapping mapping);

} // namespace orvapp
