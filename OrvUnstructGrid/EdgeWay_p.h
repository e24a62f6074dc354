#pragma once

#include "OrvUnstructGrid/PathSamples_p.h"
#include "OrvUnstructGrid/SurfacePoint_p.h"

#include <vector>

namespace orv::ug {

/// The shortest way from one point to another along sides of triangles and along tubes. A point inside a triangle is
/// left, and reached, straight from a corner of it; from one to another in the same triangle the way is straight.
/// @return empty when there is no way, or when the points are the same
std::vector<PathSegment> edgeWay(const SurfaceTopology& topology, const SurfacePoint& from, const SurfacePoint& to);

} // namespace orv::ug
