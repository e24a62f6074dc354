#include "LibUnstructGrid/VTOGeometryMathPolygon.h"

#include "LibUnstructGrid/VTOGeometryMathNormal.h"

#include <algorithm>

namespace {

using Component = double VTVector::*;

constexpr Component components[] = {&VTVector::x, &VTVector::y, &VTVector::z};

/// Whether the edge, whose ends lie on different sides of the point in v, crosses the line through the point along u at
/// or above the point. The crossing itself is needed only where the ends lie on different sides in u too.
bool crossesAtOrAbove(const VTVector& start, const VTVector& end, const VTVector& point, Component u, Component v) {
    const bool bStartAbove = start.*u >= point.*u;
    const bool bEndAbove = end.*u >= point.*u;
    if (bStartAbove == bEndAbove) {
        return bStartAbove;
    }
    return end.*u - (end.*v - point.*v) * (start.*u - end.*u) / (start.*v - end.*v) >= point.*u;
}

/// `nodeAt` gives a reference to the node at a position of the polygon.
template <typename NodeAt>
bool isInside(const VTVector& normal, int iNumNodes, const VTVector& point, NodeAt nodeAt) {
    if (iNumNodes < 1) {
        return false;
    }
    const int iClosestAxis = normal.FindClosestAxis();
    const Component u = components[(iClosestAxis + 1) % 3];
    const Component v = components[(iClosestAxis + 2) % 3];
    bool bInside = false;
    const VTVector* pStart = &nodeAt(iNumNodes - 1);
    bool bStartAbove = pStart->*v >= point.*v;
    for (int i = 0; i < iNumNodes; ++i) {
        const VTVector* pEnd = &nodeAt(i);
        const bool bEndAbove = pEnd->*v >= point.*v;
        if (bStartAbove != bEndAbove && crossesAtOrAbove(*pStart, *pEnd, point, u, v)) {
            bInside = !bInside;
        }
        pStart = pEnd;
        bStartAbove = bEndAbove;
    }
    return bInside;
}

template <typename NodeAt>
bool meetsTriangle(const VTVector& normal, const VTVector& origin, const VTVector& dir, VTVector* pPoint, double* pdT,
                   NodeAt nodeAt) {
    VTVector hit;
    double t = 0.0;
    if (!VTPlaneRayIntersect(normal, nodeAt(0), origin, dir, &hit, &t) || !(t >= 0.0) ||
        !isInside(normal, 3, hit, nodeAt)) {
        return false;
    }
    *pPoint = hit;
    *pdT = t;
    return true;
}

} // namespace

bool VTPlanesEqual(const VTVector& point1, const VTVector& normal1, const VTVector& point2, const VTVector& normal2) {
    return VTFeqZero(point1 * normal2 - point2 * normal2) && VTVectorsParallell(normal1, normal2);
}

bool VTPointInPolygonFast(const VTVector& normal, const VTVector* pNodes, int iNumNodes, const VTVector& point) {
    return isInside(normal, iNumNodes, point, [pNodes](int i) -> const VTVector& { return pNodes[i]; });
}

bool VTPointInIndexedPolygonFast(const VTVector& normal, const VTVector* pNodes, const int* piConn, int iNumNodes,
                                 const VTVector& point) {
    return isInside(normal, iNumNodes, point, [=](int i) -> const VTVector& { return pNodes[piConn[i]]; });
}

bool VTRayTriangleIntersect(const VTVector* pTri, const VTVector& normal, const VTVector& origin, const VTVector& dir,
                            VTVector* pPoint, double* pdT) {
    return meetsTriangle(normal, origin, dir, pPoint, pdT, [pTri](int i) -> const VTVector& { return pTri[i]; });
}

bool VTRayIndexedTriangleIntersect(const VTVector* pNodes, const int* piTri, const VTVector& normal,
                                   const VTVector& origin, const VTVector& dir, VTVector* pPoint, double* pdT) {
    return meetsTriangle(normal, origin, dir, pPoint, pdT, [=](int i) -> const VTVector& { return pNodes[piTri[i]]; });
}

bool VTRayIndexedPolygonIntersect(const VTVector* pNodes, const int* piConn, int iNumNodes, const VTVector& origin,
                                  const VTVector& dir, VTVector* pPoint, double* pdT) {
    for (int i = 1; i + 1 < iNumNodes; ++i) {
        const int aiTri[] = {piConn[0], piConn[i], piConn[i + 1]};
        VTVector normal;
        if (VTComputeTriangleNormal(aiTri, pNodes, &normal, false) &&
            VTRayIndexedTriangleIntersect(pNodes, aiTri, normal, origin, dir, pPoint, pdT)) {
            return true;
        }
    }
    return false;
}

bool VTRayDiscIntersect(const VTVector& center, const VTVector& normal, double radius, const VTVector& origin,
                        const VTVector& dir, VTVector* pPoint, double* pdT) {
    VTVector hit;
    double t = 0.0;
    if (!VTPlaneRayIntersect(normal, center, origin, dir, &hit, &t) ||
        !(VTPointL2Dist(center, hit) <= radius * radius)) {
        return false;
    }
    *pPoint = hit;
    *pdT = t;
    return true;
}

bool VTIntersectPolygonEdge(VTVector origin, VTVector dir, VTVector sweep, const int* piConn, int iNumNodes,
                            const VTVector* pNodes, VTVector* pPoint, int* piNode1, int* piNode2) {
    if (!piConn || !pNodes || !pPoint || !piNode1 || !piNode2 || iNumNodes < 1) {
        return false;
    }
    double fBest = -1.0;
    for (int i = 0; i < iNumNodes; ++i) {
        const int iNext = (i + 1) % iNumNodes;
        const VTVector& a = pNodes[piConn[i]];
        const VTVector& b = pNodes[piConn[iNext]];
        const VTVector edge = b - a;
        VTVector hit;
        double t = 0.0;
        if (!VTPlaneRayIntersect((edge ^ sweep).GetNormalized(), a, origin, dir, &hit, &t) ||
            !(t > std::max(fBest, 0.0))) {
            continue;
        }
        const double fAlong = edge * (hit - a);
        if (fAlong < 0.0 || (a - b) * (hit - b) < 0.0) {
            continue;
        }
        fBest = t;
        *pPoint = a + edge * (fAlong / edge.L2Norm());
        *piNode1 = i;
        *piNode2 = iNext;
    }
    return fBest >= 0.0;
}
