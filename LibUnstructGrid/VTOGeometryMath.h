#pragma once

/// Geometric queries on VTVector data, and the clean-up of polygon meshes. All functions are free of state.
///
/// A polygon is a connectivity list: indexes into an array of nodes, in order around it, the last one joined to the
/// first. A list of polygons is the concatenation of their connectivities beside a list of their vertex counts.
///
/// A ray is an origin and a direction of any length, and its parameter t counts in lengths of the direction: the point
/// at t is origin + t dir. What lies behind the origin, at a negative t, is a hit unless a function says otherwise.
///
/// Outputs must not be null and are written on success alone, unless a function says otherwise. The limits below which
/// something counts as nothing differ from function to function, and each tells its own.

#include "LibUnstructGrid/VTOGeometryMathCleanUp.h"
#include "LibUnstructGrid/VTOGeometryMathCylinder.h"
#include "LibUnstructGrid/VTOGeometryMathLine.h"
#include "LibUnstructGrid/VTOGeometryMathNearest.h"
#include "LibUnstructGrid/VTOGeometryMathNormal.h"
#include "LibUnstructGrid/VTOGeometryMathPolygon.h"
#include "LibUnstructGrid/VTOGeometryMathSphere.h"
