#pragma once

/// @page OrvVisualization OrvVisualization: pictures, and what a ray meets
///
/// Namespace `orv::vis`. Knows nothing of results and models: it is given points, triangles and colours.
///
/// - Camera says where a picture is taken from.
/// - Model is what can be shown: shapes with their values, and the scene that rays look into.
/// - View is what is looked at, a camera and the models that are shown, and draws pictures of it.
/// - ColorMap says what colours numbers have.
/// - Font and Outline give the shapes of letters.
/// - Image is a picture, and reads and writes PNG files.
/// - RayScene finds the first thing that a ray meets, for picking and for pictures alike.

#include "OrvVisualization/Camera.h"
#include "OrvVisualization/ColorMap.h"
#include "OrvVisualization/Font.h"
#include "OrvVisualization/Image.h"
#include "OrvVisualization/Model.h"
#include "OrvVisualization/Outline.h"
#include "OrvVisualization/RayScene.h"
#include "OrvVisualization/View.h"
