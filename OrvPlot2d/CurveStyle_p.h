#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace orv::plt {

/// How a curve differs from the others.
struct CurveStyle {
    enum class Marker { CIRCLE, SQUARE, DIAMOND, TRIANGLE };

    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    std::vector<double> dashes; ///< Lengths of strokes and gaps in turn, in widths of the line; empty for a solid line.
    Marker marker = Marker::CIRCLE; ///< For lone points.
};

/// The style of the curve that was added as number `index`.
///
/// Six colours go from dark to light in steps that a grey print keeps apart, and people with any of the common colour
/// blindnesses too; each has a dash pattern of its own besides. Curve 7 has the first colour again, with the second
/// pattern, and so on: 36 styles before one returns.
CurveStyle styleOf(std::size_t index);

} // namespace orv::plt
