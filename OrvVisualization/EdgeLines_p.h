#pragma once

#include "OrvVisualization/PictureRays_p.h"
#include "OrvVisualization/PictureScene_p.h"

namespace orv::vis {

/// How lines are drawn.
struct LineStyle {
    /// From the middle of a line, in pixels.
    double halfWidth;
    /// Along each side of a pixel that is divided; the border of a line is as soft as one of these parts is wide.
    int raysPerSide;
};

/// How much of a point of a surface is covered by the lines along the edges of elements, from 0 to 1.
///
/// Since a line is part of the surface that a ray met, nothing that is hidden ever shows. Each face draws its half of a
/// line. Lines become paler where the face across them is only a few pixels wide, and vanish before they would cover
/// it.
/// @param steps at the point
double lineCoverage(const SeenPoint& seen, const PixelSteps& steps, const LineStyle& style);

/// Faces this wide, in pixels, have no line, and those that wide one of full strength.
inline constexpr double narrowFace = 2.5;
inline constexpr double wideFace = 12.0;

} // namespace orv::vis
