#pragma once

#include "LibCore/rvfExport.h"
#include "LibUnstructGrid/VTOBaseTypesRange.h"
#include "LibUnstructGrid/VTOLinAlgebraVector.h"

class VTIntArray;
class VTMatrix4;
class VTPlane;
class VTVector4;
class VTVectorArray;

/// A box along the axes of the model, from a minimum to a maximum: a value.
///
/// A new box is the single point at the origin, which is valid and takes part in every Add(). Call Reset() first when a
/// box is to be collected from points. An invalid box is left alone by Transform() and told by PlaneMinMaxDist(); all
/// else uses its numbers as they stand. VTOBoundingBox.h shows the numbers of vertices and sides.
class ORV_API VTBox {
public:
    /// A mark for the caller. Every constructor, the copying one too, sets it; an assignment takes it over from the
    /// other box; no operation reads it.
    bool bMark;
    VTVector min;
    VTVector max;

    /// Minimum and maximum at the origin, which is a valid box.
    VTBox();
    /// Taken as given: a minimum above the maximum makes the box invalid.
    VTBox(const VTVector& minimum, const VTVector& maximum);
    VTBox(double fMinX, double fMinY, double fMinZ, double fMaxX, double fMaxY, double fMaxZ);
    VTBox(const VTBox& other);
    VTBox& operator=(const VTBox& other) = default;

    /// Exact, and without the mark.
    bool operator==(const VTBox& other) const;

    /// Whether the minimum is not above the maximum on any axis. A NaN is above nothing.
    bool IsValid() const;

    /// The box of a full size around a center.
    void BoxFromPointAndExtent(const VTVector& center, const VTVector& size);

    /// The full size, maximum less minimum.
    VTVector Extent() const {
        return max - min;
    }

    VTVector Center() const {
        return min + Extent() / 2.0;
    }

    /// Half the length of the diagonal.
    double Radius() const {
        return Extent().Length() / 2.0;
    }

    /// The largest component of Extent().
    double LargestExtent() const;

    /// 0 or 1 when that axis is strictly longer than both others, otherwise 2: with x and y equal and longer than z the
    /// answer is z.
    int LargestExtentAxis() const;

    /// Moves each side outwards by the full extent times the factor of its axis, so that the size becomes 1 + 2 s times
    /// what it was. A factor of 0, not of 1, leaves the box alone. VTOrientedBoundingBox::ScaleExtent() simply
    /// multiplies.
    void ScaleExtent(double fX, double fY, double fZ);

    /// Moves each side outwards by the distance.
    void Expand(double fDistance);

    /// Makes the box invalid, so that the first point added becomes minimum and maximum: 1e30 for every component of
    /// the minimum and -1e30 of the maximum, as floats widened, 1.0000000150474662e30. A coordinate beyond these cannot
    /// move the bound that starts on its own side.
    void Reset();

    /// Minimum and maximum at the origin.
    void SetZero();

    /// Extends the box to the point and returns whether that changed it. A component that is NaN changes nothing.
    bool Add(const VTVector& point);

    /// Extends the minimum to the other's minimum and the maximum to the other's maximum, and returns whether that
    /// changed the box. The other is not asked whether it is valid; a reset one changes nothing.
    bool Add(const VTBox& box);

    /// Extends the box to each point and returns whether any of them changed it. Assert "pPoints", "piIndices" and for
    /// each index "(aiIndices[i] >= 0) && (aiIndices[i] < aPoints.GetNumItems())" or, where the number of points is not
    /// known, "piIndices[i] >= 0".
    bool Add(const VTVectorArray& aPoints);
    bool Add(const VTVector* pPoints, int iNumPoints);
    bool Add(const VTVectorArray& aPoints, const VTIntArray& aiIndices);
    bool Add(const VTVector* pPoints, const int* piIndices, int iNumIndices);

    /// Becomes the bounds of its eight corners, transformed as points. An invalid box stays as it is.
    void Transform(const VTMatrix4& matrix);

    /// Writes eight corners around the bottom and then the top: (min, min, min), (max, min, min), (max, max, min),
    /// (min, max, min), and the same four at the maximum z. These are not the vertex numbers. Asserts "pCornerPoints".
    void GetCornerPoints(VTVector* pCornerPoints) const;

    /// Writes the eight vertices in the order of their numbers, and unless these are null the four vertices of each
    /// side, 24 indexes in all, and the six outward normals:
    ///
    ///     0: 0 3 2 1    1: 4 5 6 7    2: 0 1 5 4    3: 3 7 6 2    4: 0 4 7 3    5: 1 2 6 5
    void GetFaceSet(VTVector* pPoints, int* piFaces, VTVector* pNormals) const;

    /// A regular grid of points; see VTOrientedBoundingBox::GetPointsFromBox(). Asserts "pNodeArray".
    void GetPointsFromBox(int iNumX, int iNumY, int iNumZ, VTVectorArray* pNodeArray) const;

    /// The squared distance to the nearest vertex, which goes to `pClosest` unless that is null. Of vertices equally
    /// near the one of the lowest number.
    double FindClosestNode(const VTVector& point, VTVector* pClosest) const;

    /// Whether the point lies inside or on the sides, once each side has moved outwards by the tolerance.
    bool PointInBox(const VTVector& point, const double& fTolerance) const;

    /// Whether the boxes have a point in common; touching is enough.
    bool BoxIntersect(const VTBox& box) const;

    /// Tells how the box lies to a set of planes, as those of a view: -1 outside, 0 crossed, 1 inside.
    ///
    /// A plane (a, b, c, d) has its inside where a x + b y + c z - d is not negative: mind the sign of d, which is not
    /// that of VTPlane. The box is outside when it lies wholly beyond any one plane. A box outside that no single plane
    /// tells apart counts as crossed or inside. Only with the flag is a box looked at that is crossed by a plane;
    /// without it the answer for such a box is 1. There must be at least one plane, and they are looked at from the
    /// last to the first.
    int PlanesBoxIntersect(const VTVector4* pPlanes, int iNumPlanes, bool bCheckFullyInside) const;

    /// The range of the signed distances of the eight corners; invalid for an invalid box.
    VTRealRange PlaneMinMaxDist(const VTPlane& plane) const;

    /// The squared distance of a point to the solid box: 0 inside. The closest point, inside the point itself, goes to
    /// `pClosest` unless that is null.
    double GetPointL2Dist(const VTVector& point, VTVector* pClosest) const;

    /// The distance; otherwise like GetPointL2Dist().
    double GetPointDist(const VTVector& point, VTVector* pClosest) const;

    /// Where a ray enters the box, edges included. `pdDist` takes the distance in units of the direction's length, so
    /// that the point is origin + *pdDist dir; a ray that starts inside or on a side is at its point already, with
    /// distance 0. Either output may be null, and both are left alone when the answer is false. Allocates nothing.
    ///
    /// The method is that of A. Woo, "Fast Ray-Box Intersection", Graphics Gems, 1990.
    bool RayIntersect(const VTVector& origin, const VTVector& dir, double* pdDist, VTVector* pPoint) const;
};

// Of the sides that the origin lies beyond, only the one that is met last can be where the ray enters. An axis without
// such a side, or along which the ray does not run, has a distance of -1. Inline, and with a quotient on every axis,
// needed or not: ten million rays feel the call and the branch.
inline bool VTBox::RayIntersect(const VTVector& origin, const VTVector& dir, double* pdDist, VTVector* pPoint) const {
    VTVector hit;
    double fDistances[3];
    bool bInside = true;
    for (int i = 0; i < 3; ++i) {
        const bool bBelow = origin[i] < min[i];
        const bool bOutside = bBelow || origin[i] > max[i];
        hit[i] = bBelow ? min[i] : max[i];
        const double fQuotient = (hit[i] - origin[i]) / dir[i];
        fDistances[i] = bOutside && dir[i] != 0.0 ? fQuotient : -1.0;
        bInside = bInside && !bOutside;
    }
    double fDist = 0.0;
    if (bInside) {
        hit = origin;
    } else {
        int iHitAxis = fDistances[1] > fDistances[0] ? 1 : 0;
        iHitAxis = fDistances[2] > fDistances[iHitAxis] ? 2 : iHitAxis;
        fDist = fDistances[iHitAxis];
        if (fDist < 0.0) {
            return false;
        }
        for (int i = 0; i < 3; ++i) {
            if (i != iHitAxis) {
                hit[i] = origin[i] + fDist * dir[i];
                if (hit[i] < min[i] || hit[i] > max[i]) {
                    return false;
                }
            }
        }
    }
    if (pdDist) {
        *pdDist = fDist;
    }
    if (pPoint) {
        *pPoint = hit;
    }
    return true;
}
