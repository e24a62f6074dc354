#pragma once

#include "LibCore/rvfExport.h"

#include <cstddef>
#include <string_view>

namespace orv {

/// The slips of the pen between two words, for "did you mean": the bytes to insert, delete, replace, or swap with
/// their neighbour to get from one to the other, each swapped pair being left alone then (restricted
/// Damerau-Levenshtein distance). The effort is the product of the lengths.
ORV_API std::size_t editDistance(std::string_view a, std::string_view b);

} // namespace orv
