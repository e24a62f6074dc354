#pragma once

#include "OrvUnstructGrid/SituationSelection.h"

namespace orv {
class PropertySetCollection;
}

namespace orv::ug {

// A selection as a property set, an array for each field of its items.

/// In place of an earlier one.
void putSelection(const SituationSelection& selection, PropertySetCollection* collection);
/// Without items and with the other fields as in a new selection when there is none, or when its arrays do not go
/// together or have numbers that are none of a hit item.
SituationSelection selectionIn(const PropertySetCollection& collection);

} // namespace orv::ug
