#pragma once

#include "OrvCore/Str.h"

#include <cstddef>
#include <vector>

namespace orv::vis {

/// A number beside the bar of a legend.
struct LegendTick {
    double fraction = 0.0; ///< 0 at the lower end of the bar, 1 at the upper one.
    Str text;

    bool operator==(const LegendTick&) const = default;
};

/// The numbers that are written beside a bar for a range, from the lower end to the upper one: always both ends,
/// between them round numbers, and beside bands the borders of bands. All have the same number of digits behind the
/// point, and as many of them as it takes to tell a thousandth of the range; and one exponent, a multiple of three,
/// where numbers are of a million and more or below a hundredth.
///
/// A range that is one number has it once, in the middle.
///
/// @param minimum, maximum finite
/// @param bandCount 0 for a bar without bands
/// @param closest how near two numbers may come to each other, as a fraction of the bar; above 0
std::vector<LegendTick> legendTicks(double minimum, double maximum, std::size_t bandCount, double closest);

} // namespace orv::vis
