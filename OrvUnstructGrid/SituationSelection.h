#pragma once

#include "OrvUnstructGrid/HitItem.h"

#include <vector>

namespace orv::ug {

/// What is selected in a view, as a Situation keeps it. A value.
struct SituationSelection {
    std::vector<HitItem> items; ///< In the order of selecting.
    /// What may be selected, as the number of the application's own enumeration; 0 for anything.
    int itemType = 0;
    bool isMultiSelectionEnabled = false;
};

} // namespace orv::ug
