#pragma once

#include "LibCore/rvfExport.h"
#include "LibUnstructGrid/VTOLinAlgebraVector.h"
#include "LibUnstructGrid/VTOMathConstants.h"

class VTMatrix4;
class VTVectorArray;

/// The plane a x + b y + c z + d = 0.
///
/// The normal (a, b, c) may have any length; a plane without one is degenerate, and so is the default plane. Two limits
/// tell whether there is a normal. Normalize(), the distances and SetFromPolygon() ask for a length above 0, while
/// GetNormal(), and with it GetPoint(), Transform(), SetFromPointAndNormal(), the projections and Intersect(), take a
/// normal shorter than 1e-30 for none, as VTVector::Normalize() does.
class ORV_API VTPlane {
public:
    double a;
    double b;
    double c;
    double d;

    /// All zero, which is not valid.
    constexpr VTPlane() : VTPlane(0.0, 0.0, 0.0, 0.0) {}
    constexpr VTPlane(double fA, double fB, double fC, double fD) : a(fA), b(fB), c(fC), d(fD) {}

    /// Normalises copies of both and compares the coefficients by VTFeq() with VT_DOUBLE_TOLERANCE. So the length of
    /// the normal does not matter, but its sense does. The comparison is relative: a coefficient of 0 and one of 1e-17
    /// differ.
    bool operator==(const VTPlane& other) const;

    /// Divides all four by the length of the normal when that is above 0; otherwise nothing.
    void Normalize();

    /// Turns the normal around: negates all four.
    void Flip() {
        *this = VTPlane(-a, -b, -c, -d);
    }

    /// Whether any of a, b and c is not exactly 0.
    bool IsValid() const {
        return a != 0.0 || b != 0.0 || c != 0.0;
    }

    /// Moves the plane: its normal goes as a vector, the point nearest the origin as a point, and the normal comes out
    /// normalised. Right for rotations, translations and scales that are the same in all directions; any other scale
    /// tilts the normal.
    void Transform(const VTMatrix4& matrix);

    /// The unit normal. Zero, and false, when the normal is shorter than 1e-30. Asserts the pointer.
    bool GetNormal(VTVector* pNormal) const;

    /// The point of the plane nearest the origin; the origin for a degenerate plane. Asserts the pointer.
    void GetPoint(VTVector* pPoint) const;

    /// How far the plane lies from the origin along its normal: -d / length, so negative when the origin is in front.
    /// VT_UNDEFINED_DOUBLE when the length is not above 0.
    double GetDistanceToOrigin() const {
        const double fLength = NormalLength();
        return fLength > 0.0 ? -d / fLength : VT_UNDEFINED_DOUBLE;
    }

    /// The plane through a point. The normal may have any length and is stored normalised; one shorter than 1e-30 gives
    /// a plane of zeros, with no error told.
    void SetFromPointAndNormal(const VTVector& point, const VTVector& normal);

    /// The plane through three points, which run counter-clockwise seen from the front. The normal is stored as the
    /// cross product is, of twice the area of the triangle. Points on one line give a plane that is not valid, with no
    /// error told.
    void SetFromPoints(const VTVector& p1, const VTVector& p2, const VTVector& p3);

    /// The plane that fits a closed polygon: its unit normal by Newell's method, through the average of its points. The
    /// polygon need be neither plane nor convex. False, with all coefficients 0, when the normal has no length, as for
    /// fewer than three points or points on one line.
    bool SetFromPolygon(const VTVectorArray& aPoints);

    /// The distance of a point; negative behind the plane. VT_UNDEFINED_DOUBLE when the length of the normal is not
    /// above 0.
    double GetDistance(const VTVector& point) const {
        const double fLength = NormalLength();
        return fLength > 0.0 ? GetDistanceSignOnly(point) / fLength : VT_UNDEFINED_DOUBLE;
    }

    /// a x + b y + c z + d, which is the distance times the length of the normal. Only its sign tells something when
    /// the plane is not normalised.
    double GetDistanceSignOnly(const VTVector& point) const {
        return a * point.x + b * point.y + c * point.z + d;
    }

    /// A direction in the plane to start from: the y axis for a plane across the x axis, that is with b and c below
    /// 1e-60 in magnitude, and otherwise the x axis projected on the plane, which is shorter than 1. False, with the
    /// output left, when ProjectVector() is. Asserts the pointer.
    bool GetDefaultOrientation(VTVector* pOrientation) const;

    /// The part of a vector along the plane. False, with the output left, when it is shorter than 1e-60, as for a
    /// vector along the normal or a degenerate plane. Between that and 1e-30 the output is zero and the answer true.
    /// Asserts the pointer, which may be the vector's.
    bool ProjectVector(const VTVector& vector, VTVector* pProjected) const;

    /// The point of the plane below a point. False when ProjectVector() of the way to it from GetPoint() is: the output
    /// is GetPoint() then, which is right also for a point above that very place. Asserts the pointer, which may be the
    /// point's.
    bool ProjectPoint(const VTVector& point, VTVector* pProjected) const;

    /// The line that two planes have in common: a point, and the unit direction n1 x n2 of the unit normals.
    ///
    /// Both planes must be normalised: the point is computed from the coefficients as they are stored and a direction
    /// of unit normals, and for planes that are not normalised it lies on neither. It is the point where the line
    /// crosses the coordinate plane that it is most across: z = 0 when the direction's z is the largest, else y = 0
    /// when its y exceeds its x, else x = 0.
    ///
    /// False, with nothing written, for planes so nearly parallel that the square of the largest component of n1 x n2
    /// is below 1e-60, and for degenerate ones. `pPoint` must be given, and is not checked; `pDirection` may be null.
    bool Intersect(const VTPlane& other, VTVector* pPoint, VTVector* pDirection) const;

    /// The dot product of a normal and p2 - p1: above 0 when p2 is in front of the plane through p1.
    static double Evaluate(const VTVector& normal, const VTVector& p1, const VTVector& p2) {
        return normal * (p2 - p1);
    }

private:
    double NormalLength() const {
        return VTVector(a, b, c).Length();
    }
};

constexpr VTPlane VT_XY_PLANE(0.0, 0.0, 1.0, 0.0);
constexpr VTPlane VT_YZ_PLANE(1.0, 0.0, 0.0, 0.0);
constexpr VTPlane VT_XZ_PLANE(0.0, 1.0, 0.0, 0.0);
