#pragma once

#include "LibCore/rvfArray.h"
#include "LibCore/rvfExport.h"
#include "LibCore/rvfMatrix4.h"
#include "LibCore/rvfObject.h"
#include "LibCore/rvfVector3.h"

namespace rvf {

/// The plane A x + B y + C z + D = 0. Its front is where the left side is above 0.
///
/// The coefficients are kept as given and never normalised, so the same plane has many forms, and `==` tells them
/// apart. VTPlane differs in both. A plane whose A, B and C are all exactly 0 is not valid; operations that need a
/// normal assert then, and divide by zero when they go on.
class ORV_API Plane : public Object {
public:
    /// Where something lies.
    enum Side {
        FRONT = 0, ///< Where the value of the equation is above 0.
        BACK = 1,  ///< Where it is below 0.
        ON = 2,    ///< In the plane.
        BOTH = 3   ///< Points on both sides.
    };

    /// All four coefficients 0, which is not valid.
    Plane();
    ~Plane() override;

    /// Stores the four, valid or not. Asserts "!(A == 0.0 && B == 0.0 && C == 0.0)".
    void set(double A, double B, double C, double D);

    double A() const;
    double B() const;
    double C() const;
    double D() const;

    /// Exact, coefficient by coefficient: twice the same plane on another scale is not equal.
    bool operator==(const Plane& other) const;

    /// Whether any of A, B and C is not exactly 0.
    bool isValid() const;

    /// Takes the normal as it is, and D = -(normal * point).
    /// @return false for a zero normal, with the plane as it was.
    bool setFromPointAndNormal(const Vector3<double>& point, const Vector3<double>& normal);
    /// Through three points that run counter-clockwise when seen from the front.
    /// @return false for points on one line, with the plane as it was.
    bool setFromPoints(const Vector3<double>& p1, const Vector3<double>& p2, const Vector3<double>& p3);

    /// A new plane, not valid when the setter of the same arguments answers false.
    static Plane fromPointAndNormal(const Vector3<double>& point, const Vector3<double>& normal);
    static Plane fromPoints(const Vector3<double>& p1, const Vector3<double>& p2, const Vector3<double>& p3);

    /// (A, B, C), of any length. Asserts "!normal.isZero()".
    Vector3<double> normal() const;
    /// The point of the plane that is nearest to the origin.
    Vector3<double> pointInPlane() const;
    /// The distance of the plane from the origin along its normal, -D / length; negative when the origin is in front.
    /// Asserts "factor > 0.0".
    double distanceToOrigin() const;
    /// The distance of the point from the plane; negative at the back. Asserts "factor > 0.0".
    double distance(const Vector3<double>& point) const;
    /// The value of the equation, A x + B y + C z + D, with its sign. The name says otherwise: nothing is squared.
    double distanceSquared(const Vector3<double>& point) const;

    /// Exchanges front and back: negates all four.
    void flip();
    /// Transforms the normal as a vector and a point of the plane as a point. Right for rotations, translations and
    /// equal scaling; an unequal scaling tilts the normal.
    /// @return false when the normal becomes zero, with the plane as it was.
    bool transform(const Matrix4<double>& matrix);

    /// The part of `vector` that is parallel to the plane. Asserts "projectedVector".
    /// @return false, with nothing written, when the vector is zero or at a right angle to the plane.
    bool projectVector(const Vector3<double>& vector, Vector3<double>* projectedVector) const;
    /// The point of the plane below `point`.
    Vector3<double> projectPoint(const Vector3<double>& point) const;

    /// A point and the unit direction of the line that two planes have in common; `direction` may be null. One
    /// coordinate of the point is 0. Asserts "point".
    /// @return false, with nothing written, for parallel planes. Nearly parallel ones are told by exact zeros alone.
    bool intersect(const Plane& other, Vector3<double>* point, Vector3<double>* direction) const;
    /// Where the segment from `a` to `b`, ends included, meets the plane; `intersection` may be null.
    /// @return false, with nothing written, when it does not; also for a segment in the plane.
    bool intersect(const Vector3<double>& a, const Vector3<double>& b, Vector3<double>* intersection) const;

    /// FRONT, BACK or ON. There is no tolerance.
    Side side(const Vector3<double>& point) const;
    /// The side of all points that are not ON, BOTH when they differ; ON when there are none, also without points.
    Side side(const Array<Vector3<double>>& points) const;

private:
    double m_A = 0.0;
    double m_B = 0.0;
    double m_C = 0.0;
    double m_D = 0.0;
};

} // namespace rvf
