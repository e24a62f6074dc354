#pragma once

#include "Tools/ValuesSelection.h"

#include <functional>
#include <span>
#include <vector>

namespace orvapp {

/// The values of one part in one state.
struct PartValues {
    const orv::ug::StateInfo& state;
    const FilePart& part;
    std::span<const int> ids;       ///< The solver's numbers, one for each item.
    std::span<const double> values; ///< Item after item.
};

/// Visits the selected values, state after state and part after part, under a progress bar. Values of one state at a
/// time are in memory. Parts without values are passed over. Throws CommandError, and what `visit` throws.
void walkValues(const ResultFile& file, const ValuesSelection& selection,
                const std::function<void(const PartValues&)>& visit);

} // namespace orvapp
