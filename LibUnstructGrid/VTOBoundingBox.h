#pragma once

/// Boxes: VTBox along the axes of the model and VTOrientedBoundingBox along axes of its own.
///
/// Both number their vertices and sides alike, so that a number means the same in either:
///
///        7-----6
///       /|    /|      vertex    x    y    z        side   normal
///      4-----5 |         0     min  min  max         0      -y
///      | 3---|-2         1     max  min  max         1      +y
///      |/    |/          2     max  min  min         2      +z
///      0-----1           3     min  min  min         3      -z
///                        4     min  max  max         4      -x
///      y                 5     max  max  max         5      +x
///      |                 6     max  max  min
///      +-- x             7     min  max  min
///     /
///    z
///
/// The vertices of a side run counter-clockwise seen from outside. Sides 3 and 4 start with another vertex in the one
/// class than in the other; see GetFaceSet() of each.

#include "LibUnstructGrid/VTOBoundingBoxAligned.h"
#include "LibUnstructGrid/VTOBoundingBoxOriented.h"
