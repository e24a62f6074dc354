#pragma once

#include "OrvVisualization/PictureRays_p.h"
#include "OrvVisualization/PictureScene_p.h"

namespace orv::vis {

/// A point of a face.
struct FacePoint {
    const Shape* shape = nullptr; ///< Null for none.
    std::size_t face = 0;
    std::size_t triangle = 0;
    Vec3d point;
    Vec3d normal;
};

/// From the middle of a line, in pixels.
inline constexpr double lineHalfWidth = 0.55;
/// Faces this wide, in pixels, have no line, and those that wide one of full strength.
inline constexpr double narrowFace = 2.5;
inline constexpr double wideFace = 12.0;

/// How much of a point of a face is covered by the lines along the edges of elements, from 0 to 1. Lines become paler
/// where the face across them is only a few pixels wide, and vanish before they would cover it.
///
/// Each face draws its half of a line, the part that is on the face; so what is hidden never shows.
/// @param steps at the point
/// @param raysPerSide along each side of a pixel that is divided; the border of a line is as soft as one of these parts
///        is wide
double lineCoverage(const FacePoint& place, const PixelSteps& steps, int raysPerSide);

/// The same for a point in the plane of the triangle, but outside: what the other halves of its lines cover of it,
/// where no face goes on.
double outerLineCoverage(const FacePoint& place, const PixelSteps& steps, int raysPerSide);

} // namespace orv::vis
