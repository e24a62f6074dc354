#pragma once

#include <vector>

namespace orv::vis {

/// A point of a drawing: x to the right, y down.
struct OutlinePoint {
    double x = 0.0;
    double y = 0.0;

    bool operator==(const OutlinePoint&) const = default;
};

/// One step of the pen along the border of what is filled.
struct OutlineStep {
    enum class Kind {
        MOVE,  ///< Begins a new closed line at `end`.
        LINE,  ///< Straight to `end`.
        CURVE, ///< A cubic Bezier curve to `end`; the two controls are written for this kind alone.
        CLOSE  ///< Straight to where the last MOVE was; no point is written.
    };

    Kind kind = Kind::MOVE;
    OutlinePoint end;
    OutlinePoint control1;
    OutlinePoint control2;

    bool operator==(const OutlineStep&) const = default;
};

/// Closed lines one behind the other: each a MOVE, any number of LINEs and CURVEs, and a CLOSE.
using Outline = std::vector<OutlineStep>;

} // namespace orv::vis
