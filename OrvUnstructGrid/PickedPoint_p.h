#pragma once

#include "OrvUnstructGrid/SurfacePathQuery.h"
#include "OrvUnstructGrid/SurfacePoint_p.h"

#include <optional>

namespace orv::ug {

/// What an item on a part stands for, see SurfacePathQuery::PointType.
/// @return nothing when that is not on the surface
std::optional<SurfacePoint> pickedPoint(const SurfaceTopology& topology, SurfacePathQuery::PointType type,
                                        const HitItem& item);

} // namespace orv::ug
