#pragma once

#include "OrvApp/OrvApp.h"

#include <optional>

namespace orvapp {

/// The point of what a model shows that is nearest to another one.
struct SurfaceSnap {
    orv::ug::HitItem item; ///< As if it had been picked; its coordinate is the point.
    double distance;       ///< From the other point.
};

/// Looks at every triangle that the model shows in its current state; of tubes and spheres, at their axes and centres.
/// Nothing when nothing is shown. Throws CommandError when it cannot be shown.
std::optional<SurfaceSnap> snapToSurface(orv::ug::UnstructGridModel& model, const orv::Vec3d& point);

/// The diagonal of the box about all that the model shows; 0 for nothing. As updateShapes() has left it.
double shownDiagonal(const orv::ug::UnstructGridModel& model);

} // namespace orvapp
