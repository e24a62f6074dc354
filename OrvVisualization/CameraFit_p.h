#pragma once

#include "OrvVisualization/Camera.h"
#include "OrvVisualization/PictureScene_p.h"

namespace orv::vis {

/// Moves the camera so that all shapes just fit into the picture, with a margin of a twentieth, without turning it.
///
/// Exact: in perspective the eye goes to where two opposite sides of what the camera sees touch the shapes.
/// @param aspect width by height of the picture
/// @return false, and nothing changes, when there is nothing to fit or the aspect is not above 0 and finite
bool fitCamera(std::span<const Shape* const> shapes, double aspect, Camera* camera);

} // namespace orv::vis
