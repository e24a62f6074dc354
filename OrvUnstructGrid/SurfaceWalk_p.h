#pragma once

#include "OrvUnstructGrid/PathSamples_p.h"
#include "OrvUnstructGrid/SurfacePoint_p.h"

#include <vector>

namespace orv::ug {

/// The shortest way from one point to another along the cut of the surface with a plane, of the planes that
/// SurfacePathQuery tells about.
///
/// A vertex in the plane, to within roundings, counts as above it. So a triangle is cut in two of its sides or not at
/// all, wherever the plane goes, and cuts hang together: nothing depends on what is computed of single triangles.
/// @return empty when there is no way, no plane, or when the points are the same
std::vector<PathSegment> surfaceWalk(const SurfaceTopology& topology, const SurfacePoint& from, const SurfacePoint& to);

} // namespace orv::ug
