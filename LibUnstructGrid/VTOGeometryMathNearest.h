#pragma once

#include "LibCore/rvfExport.h"

class VTVector;

// The item of a list that is nearest to a point, by a walk along the list.

/// The node of a connectivity list that is nearest to a point, as an index into `pNodes`; of equal ones the first in
/// the list. The search starts from a squared distance of 1e30, so that a node 1e15 or more away is not found: -1 when
/// there is none nearer.
ORV_API int VTFindClosestNode(const int* piConn, int iNumNodes, const VTVector* pNodes, const VTVector& point);

/// The same among all nodes of an array.
ORV_API int VTFindClosestNode(const VTVector* pNodes, int iNumNodes, const VTVector& point);

/// The edge of a polygon that is nearest to a point, as the position of its first node in the list: i for the edge from
/// i to i + 1 and the last position for the edge that closes the polygon. Edges count as infinite lines, by
/// VTLinePointL2Dist(): one that merely points at the point can win. Of equal ones the closing edge wins, then the
/// first. Two nodes make one edge, 0. Asserts at least 2 nodes.
ORV_API int VTFindClosestEdge(const int* piConn, int iNumNodes, const VTVector* pNodes, const VTVector& point);
