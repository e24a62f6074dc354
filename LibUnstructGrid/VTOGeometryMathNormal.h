#pragma once

#include "LibCore/rvfExport.h"

class VTVector;

// Normals and centres of polygons.

/// The cross product (p1 - p0) x (p2 - p0), which is twice the area long and points to where the nodes run
/// counter-clockwise, or the unit vector along it with the flag. A degenerate triangle, whose cross product has a
/// squared length not above the float 1e-25, gives (0, 0, 1) and false: two sides of 5e-7 at right angles do already.
ORV_API bool VTComputeTriangleNormal(const VTVector& p0, const VTVector& p1, const VTVector& p2, VTVector* pNormal,
                                     bool bNormalize);

/// The same for the three nodes that `piTri` names.
ORV_API bool VTComputeTriangleNormal(const int* piTri, const VTVector* pNodes, VTVector* pNormal, bool bNormalize);

/// The unit normal of the largest triangle of the fan around the first node; of equal ones the first.
///
/// With exactly 6 or 8 nodes the even positions alone make the fan: 0, 2, 4 and 6 are the corners of a quadratic face,
/// those between them its mid-side nodes. A polygon that happens to have 6 or 8 corners is treated no differently.
///
/// (0, 0, 1) with fewer than 3 nodes, or when the squared length of the cross product is not above 1e-80. A null
/// `piConn` takes the first `iNumNodes` nodes in order.
ORV_API void VTComputePolygonNormal(const int* piConn, int iNumNodes, const VTVector* pNodes, VTVector* pNormal);

/// The average of the nodes, which is not the centre of area. Each index goes through `piNodeMap` when that is given:
/// node piNodeMap[piConn[i]] counts. Without nodes the centre is NaN.
ORV_API void VTGetPolyCenteroid(const int* piConn, int iNumNodes, const VTVector* pNodes, VTVector* pCenter,
                                const int* piNodeMap);
