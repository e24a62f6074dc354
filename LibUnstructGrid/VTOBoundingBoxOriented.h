#pragma once

#include "LibCore/rvfExport.h"
#include "LibUnstructGrid/VTOBoundingBoxAligned.h"
#include "LibUnstructGrid/VTOPlane.h"

class VTVectorArray;

/// A box along three axes of its own: a center, a basis and an extent. A value.
///
/// The extent holds half-sizes: a side lies at center plus or minus extent times axis. The basis vectors have to be at
/// right angles. They may have any length, which then counts as part of the size, but many operations are only right
/// for unit vectors and say so; Normalize() brings them to that. An extent may be negative for a while, and then the
/// vertices and sides of that axis change places, until Reorient() turns it around. VTOBoundingBox.h shows the numbers
/// of vertices and sides; minimum and maximum are meant along the basis.
///
/// The planes of the sides and the bounds along the axes of the model are computed when they are asked for after a
/// change. What asks for them is not const, and must not run on one box in two threads.
class ORV_API VTOrientedBoundingBox {
public:
    /// Center and extent zero, the axes of the model for a basis, and no known vertices of minimum and maximum.
    VTOrientedBoundingBox();
    VTOrientedBoundingBox(const VTOrientedBoundingBox& other) = default;
    VTOrientedBoundingBox& operator=(const VTOrientedBoundingBox& other) = default;

    void SetCenter(double fX, double fY, double fZ);
    /// Half-sizes along the basis.
    void SetExtent(double fX, double fY, double fZ);
    void SetBasis(const VTVector& xAxis, const VTVector& yAxis, const VTVector& zAxis);

    /// Has planes and bounds computed anew when they are next asked for.
    void FlagDirty();

    /// The x, y and z axes as they are stored: three vectors.
    const VTVector* GetBasis() const {
        return m_basis;
    }

    const VTVector& GetCenter() const {
        return m_center;
    }

    /// The box between two points along the axes of the model. Where the minimum is above the maximum the box is turned
    /// around, and the vertices of the two points are kept in mind: see SetVertexNumbersFromPoints().
    void SetFromMinMax(const VTVector& minimum, const VTVector& maximum);
    void SetFromMinMax(const VTBox& box);

    /// Keeps in mind which vertices a minimum and a maximum point stand at, for GetMinMax(). On an axis where the
    /// maximum does not exceed the minimum the two stand at each other's side. Nothing that moves the box later changes
    /// the numbers.
    void SetVertexNumbersFromPoints(const VTVector& minimum, const VTVector& maximum);

    /// Makes negative extents positive, with the basis as it is, and returns the number that a vertex has afterwards:
    /// the place in space stays, its number changes. -1 for a vertex outside 0 to 7.
    int Reorient(int iVertex);

    /// The points at the vertices of minimum and maximum, if these are known, or else, and always with the flag, the
    /// bounds along the axes of the model. The points of the vertices need not be in order. Either pointer may be null.
    void GetMinMax(VTVector* pMin, VTVector* pMax, bool bForceBounds);
    /// The same into minimum and maximum of a box, which thus may come out invalid.
    void GetMinMax(VTBox* pBox, bool bForceBounds);

    /// Computes planes and bounds after a change; otherwise nothing. Everything that needs them calls this.
    void CalcPlanesAndMinMax();

    /// Writes the eight vertices in the order of their numbers, and unless these are null the four vertices of each
    /// side, 24 indexes in all, and the six outward normals, which are basis vectors as stored and not normalised:
    ///
    ///     0: 0 3 2 1    1: 4 5 6 7    2: 0 1 5 4    3: 2 3 7 6    4: 3 0 4 7    5: 1 2 6 5
    void GetFaceSet(VTVector* pPoints, int* piFaces, VTVector* pNormals) const;

    /// Moves the center as a point and the basis as vectors. The extent stays, so that a scale ends up in the length of
    /// the basis.
    void Transform(const VTMatrix4& matrix);

    /// Moves the center by so many times each basis vector.
    void MoveCenterAlongBasis(double fX, double fY, double fZ);

    /// Multiplies the extent: a factor of 1 leaves the box alone, unlike in VTBox::ScaleExtent().
    void ScaleExtent(double fX, double fY, double fZ);

    /// Adds to the half-size on every axis. With a unit basis this is what VTBox::Expand() does.
    void Expand(double fDistance);

    /// Moves the length of the basis into the extent: the box stays where it is, its basis becomes unit vectors. A
    /// basis vector shorter than 1e-30 becomes zero.
    void Normalize();

    /// Drags a vertex to a new place while the opposite one stays. A locked axis keeps its size, so that the vertex
    /// goes only as far as the others allow. A vertex dragged beyond the opposite one turns the box inside out; the
    /// answer is the number that the dragged vertex has then. Right for a unit basis and an extent that is not zero: on
    /// an axis without size every vertex counts as one at the maximum. A vertex outside 0 to 7 comes back with nothing
    /// done.
    int Resize(int iVertex, const VTVector* pNewPos, bool bLockX, bool bLockY, bool bLockZ);

    /// The rotation from the other's basis to this basis, followed by the translation from the other's center to this
    /// center. So it takes the other box to this one only when the other is centered at the origin. Null stands for a
    /// new box. Right for unit bases; angles below about 1.4e-3 radians are left out, see
    /// VTGetCoordSystemTransformation(), which also asserts the matrix. Always true.
    bool GetTransformationMatrix(const VTOrientedBoundingBox* pOther, VTMatrix4* pM) const;

    /// The plane of a side, its unit normal outwards: points inside have a negative distance. `pPlanes`, which may be
    /// null, takes a copy. A side of -1 copies all six and returns the first; the others stand behind it. Null for any
    /// other number. The planes belong to the box and hold until its next change.
    const VTPlane* GetSidePlanes(int iSide, VTPlane* pPlanes);

    /// The middle of each side, six points. Right for a unit basis: the way from the center is the extent, whatever
    /// length the basis has. False for null.
    bool GetSideMidpoints(VTVector* pPoints);

    /// Fills an array with a regular grid from side to side, x running fastest and z slowest. An axis with one point
    /// has it in the middle. Former items go. Asserts "pNodeArray" and then, of the product of the counts,
    /// "iNumPoints > 0".
    void GetPointsFromBox(int iNumX, int iNumY, int iNumZ, VTVectorArray* pNodeArray) const;

    /// The first side that a ray meets, from outside or from inside. `pdDist` takes the distance in units of the
    /// direction's length, and 1e30, the float widened, when no side is met; the others are left alone then. Of sides
    /// equally near the first. `piVertex` takes the vertex of that side closest to the point, `piSide` the side. Any
    /// output may be null. Edges belong to some of their sides only, as VTPointInIndexedPolygonFast() has it.
    bool RayIntersect(const VTVector& origin, const VTVector& dir, double* pdDist, int* piVertex, int* piSide,
                      VTVector* pPoint) const;

    /// Whether two boxes have a point in common, by the fifteen axes that could separate them; touching is enough.
    /// Right for unit bases. There is no tolerance: rounding may part boxes that touch. Half-sizes are projected as in
    /// S. Gottschalk, M. C. Lin and D. Manocha, "OBBTree: A Hierarchical Structure for Rapid Interference Detection",
    /// SIGGRAPH 1996.
    bool BoxIntersect(const VTOrientedBoundingBox& other) const;

    /// Whether a point lies inside or on the sides. The point must also lie in the bounds along the axes of the model,
    /// widened by VT_REAL_TOLERANCE; the sides themselves have no tolerance.
    bool PointInBox(const VTVector& point);

    /// The squared distance of a point to the solid box: 0 inside. The closest point goes to `pClosest` unless that is
    /// null. Right for a unit basis.
    double GetPointL2Dist(const VTVector& point, VTVector* pClosest) const;

    /// The distance; otherwise like GetPointL2Dist().
    double GetPointDist(const VTVector& point, VTVector* pClosest) const;

private:
    VTVector m_center;
    VTVector m_basis[3];
    VTVector m_extent;
    VTPlane m_sidePlanes[6];
    VTBox m_bounds;
    int m_iMinVertex;
    int m_iMaxVertex;
    bool m_bDirty;
};
