#pragma once

#include "LibCore/rvfExport.h"
#include "LibUnstructGrid/VTOLinAlgebraVector.h"
#include "LibUnstructGrid/VTOMathCompare.h"

// Planes, discs and polygons, and where rays meet them.

/// Where a ray meets the plane through a point, at any t, negative ones included. The normal may have any length. False
/// when normal . dir is below 1e-60 in magnitude, that is for a ray along the plane. Both outputs may be null.
inline bool VTPlaneRayIntersect(const VTVector& normal, const VTVector& planePoint, const VTVector& origin,
                                const VTVector& dir, VTVector* pPoint, double* pdT) {
    const double fSlope = normal * dir;
    if (VTFeqZero(fSlope)) {
        return false;
    }
    const double t = (normal * planePoint - normal * origin) / fSlope;
    if (pPoint) {
        *pPoint = origin + t * dir;
    }
    if (pdT) {
        *pdT = t;
    }
    return true;
}

/// Whether two planes, each given by a point and a normal of any length and sense, are the same: the normals are
/// VTVectorsParallell(), and point1 . normal2 and point2 . normal2 differ by less than 1e-60. The latter is hardly a
/// tolerance: points that are not exactly representable mostly tell planes apart.
ORV_API bool VTPlanesEqual(const VTVector& point1, const VTVector& normal1, const VTVector& point2,
                           const VTVector& normal2);

/// Whether a point is inside a polygon, seen along the coordinate axis that the normal is closest to.
///
/// The polygon may be concave, its nodes may run either way round, and the point need not lie in its plane. A border
/// belongs to the polygon that lies below it in the two axes looked at, so that of polygons that tile a surface one
/// claims each point, but for rounding. Two components of the nodes and of the point are read, and nothing is projected
/// or copied. Without nodes nothing is inside.
///
/// The method is the crossing test of E. Haines, "Point in Polygon Strategies", Graphics Gems IV, 1994.
ORV_API bool VTPointInPolygonFast(const VTVector& normal, const VTVector* pNodes, int iNumNodes, const VTVector& point);

/// The same for the nodes that a connectivity list names.
ORV_API bool VTPointInIndexedPolygonFast(const VTVector& normal, const VTVector* pNodes, const int* piConn,
                                         int iNumNodes, const VTVector& point);

/// Where a ray meets a triangle of three nodes, at a t of at least 0. The normal may have any length and is not
/// checked against the nodes. The border is that of VTPointInPolygonFast(), the limit that of VTPlaneRayIntersect().
ORV_API bool VTRayTriangleIntersect(const VTVector* pTri, const VTVector& normal, const VTVector& origin,
                                    const VTVector& dir, VTVector* pPoint, double* pdT);

/// The same for the three nodes that `piTri` names.
ORV_API bool VTRayIndexedTriangleIntersect(const VTVector* pNodes, const int* piTri, const VTVector& normal,
                                           const VTVector& origin, const VTVector& dir, VTVector* pPoint, double* pdT);

/// Where a ray meets the first triangle that it meets of the fan around the first node, at a t of at least 0. For a
/// polygon that is not plane this need not be the nearest hit. Triangles without a VTComputeTriangleNormal() are
/// skipped. False with fewer than 3 nodes.
ORV_API bool VTRayIndexedPolygonIntersect(const VTVector* pNodes, const int* piConn, int iNumNodes,
                                          const VTVector& origin, const VTVector& dir, VTVector* pPoint, double* pdT);

/// Where a ray meets a disc, at any t, negative ones included. The border belongs to the disc.
ORV_API bool VTRayDiscIntersect(const VTVector& center, const VTVector& normal, double radius, const VTVector& origin,
                                const VTVector& dir, VTVector* pPoint, double* pdT);

/// The farthest edge of a polygon that a ray meets in front of its origin, where each edge is swept both ways along
/// `sweep` to a strip without an end. A ray along the view that is swept along the screen's normal finds the edge that
/// it crosses on the screen.
///
/// Only a t above 0 counts, and of several edges the one with the largest t wins, not the nearest; of equal ones the
/// first. `*pPoint` is the foot of the hit on the edge, `*piNode1` and `*piNode2` are the positions of its ends in the
/// list, not node indexes: i and i + 1, or the last and 0. An edge along `sweep` or without a length is not met. False,
/// with nothing written, when any list or output is null, or without nodes.
ORV_API bool VTIntersectPolygonEdge(VTVector origin, VTVector dir, VTVector sweep, const int* piConn, int iNumNodes,
                                    const VTVector* pNodes, VTVector* pPoint, int* piNode1, int* piNode2);
