#pragma once

#include "OrvVisualization/Camera.h"
#include "OrvVisualization/PictureScene_p.h"

namespace orv::vis {

/// Moves the camera so that all shapes just fit into the picture, with a margin of a twentieth, without turning it.
///
/// Exact: in perspective the eye goes to where two opposite sides of what the camera sees touch the shapes. They are in
/// the middle of the picture, unless that is wanted for something else.
/// @param aspect width by height of the picture
/// @param leftRoom the share of the picture, less than 1, that is to stay free at the left
/// @return false, and nothing changes, when there is nothing to fit or the aspect is not above 0 and finite
bool fitCamera(std::span<const Shape* const> shapes, double aspect, double leftRoom, Camera* camera);

} // namespace orv::vis
