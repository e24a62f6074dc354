#pragma once

#include "OrvCore/Vec3d.h"
#include "Tools/PlotOptions.h"

#include <string>
#include <vector>

namespace orvapp {

struct LengthOptions {
    PlotOptions plot;                ///< The way stays on the parts that `values.part` selects.
    std::vector<orv::Vec3d> through; ///< Points of the way, near the surface, in the model's units.
    std::string state;               ///< Each of these states is a curve; empty for the last one that has the result.
    double tolerance = -1;           ///< How far from the surface points may be; below 0: a hundredth of the model.
};

/// `orvapp length`: a scalar along the surface through points, a curve for each state, as a picture, a table, CSV or
/// JSON. Throws CommandError, ExpressionError or OutputClosed.
void runLength(const LengthOptions& options);

} // namespace orvapp
