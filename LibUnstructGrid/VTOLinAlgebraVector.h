#pragma once

#include "LibCore/rvfExport.h"
#include "LibUnstructGrid/VTOLinAlgebraMatrix4.h"
#include "LibUnstructGrid/VTOMathConstants.h"

#include <cmath>

class VTVector4;

/// A point or a direction in space: three doubles, in the length unit of the model.
///
/// Comparison is exact unless a name says otherwise. Lengths below 1e-30, that is squared lengths below 1e-60, count as
/// no length at all.
class ORV_API VTVector {
public:
    double x;
    double y;
    double z;

    /// The components are not initialised.
    VTVector() = default;
    constexpr VTVector(double fX, double fY, double fZ) : x(fX), y(fY), z(fZ) {}

    void Set(double fX, double fY, double fZ) {
        x = fX;
        y = fY;
        z = fZ;
    }

    bool operator==(const VTVector& other) const {
        return x == other.x && y == other.y && z == other.z;
    }

    bool operator!=(const VTVector& other) const {
        return !(*this == other);
    }

    /// Component 0, 1 or 2. The index is not checked.
    double& operator[](int iIndex) {
        return iIndex == 0 ? x : (iIndex == 1 ? y : z);
    }

    double operator[](int iIndex) const {
        return iIndex == 0 ? x : (iIndex == 1 ? y : z);
    }

    /// With `bExact` whether all components are 0; otherwise whether each is below 1e-60 in magnitude. The latter is
    /// far stricter than Normalize(), which compares the squared length with the same number: (1e-31, 0, 0) is not zero
    /// here and yet cannot be normalised.
    bool IsZero(bool bExact) const;

    double Length() const {
        return std::sqrt(L2Norm());
    }

    /// The squared length.
    double L2Norm() const {
        return x * x + y * y + z * z;
    }

    /// Scales to length 1 when the squared length exceeds 1e-60. Otherwise the vector becomes zero and the answer is
    /// false.
    bool Normalize() {
        const double fL2Norm = L2Norm();
        if (!(fL2Norm > 1e-60)) {
            SetZero();
            return false;
        }
        *this /= std::sqrt(fL2Norm);
        return true;
    }

    /// A normalised copy; zero when there is no length.
    VTVector GetNormalized() const {
        VTVector normalized = *this;
        normalized.Normalize();
        return normalized;
    }

    /// Scales to the length. A vector whose squared length is below 1e-60, or a length of 0, gives the zero vector, and
    /// the answer then tells whether 0 was asked for. Asserts a length of at least 0.
    bool SetLength(double fLength);

    /// Rounds each component by VTRound().
    void Round();

    /// The largest component by sign, not by magnitude; of equal ones the first. Its index goes to `piIndex`, which may
    /// be null.
    double MaxComponent(int* piIndex) const;

    /// The index of the component of the largest magnitude; of equal ones the first.
    int FindClosestAxis() const {
        const int iAxis = std::fabs(y) > std::fabs(x) ? 1 : 0;
        return std::fabs(z) > std::fabs((*this)[iAxis]) ? 2 : iAxis;
    }

    void SetUndefined();

    /// True when any component is above VT_UNDEFINED_DOUBLE_LIMIT. A NaN component counts as defined, unlike in
    /// VTIsUndefined().
    bool IsUndefined() const {
        return x > VT_UNDEFINED_DOUBLE_LIMIT || y > VT_UNDEFINED_DOUBLE_LIMIT || z > VT_UNDEFINED_DOUBLE_LIMIT;
    }

    void SetZero() {
        Set(0.0, 0.0, 0.0);
    }

    void Add(const VTVector& other) {
        Add(other.x, other.y, other.z);
    }

    void Add(double fX, double fY, double fZ) {
        x += fX;
        y += fY;
        z += fZ;
    }

    void Subtract(const VTVector& other) {
        Add(-other.x, -other.y, -other.z);
    }

    VTVector& operator+=(const VTVector& other) {
        Add(other);
        return *this;
    }

    VTVector& operator-=(const VTVector& other) {
        Subtract(other);
        return *this;
    }

    VTVector& operator*=(double fScale) {
        Set(x * fScale, y * fScale, z * fScale);
        return *this;
    }

    VTVector& operator/=(double fDivisor) {
        Set(x / fDivisor, y / fDivisor, z / fDivisor);
        return *this;
    }

    VTVector operator-() const {
        return VTVector(-x, -y, -z);
    }

    /// Rotation, scale and translation. No division by w: the matrix is taken as affine.
    void TransformPoint(const VTMatrix4& matrix) {
        const double* v = matrix.v;
        Set(v[0] * x + v[4] * y + v[8] * z + v[12], v[1] * x + v[5] * y + v[9] * z + v[13],
            v[2] * x + v[6] * y + v[10] * z + v[14]);
    }

    /// The same without the translation.
    void TransformVector(const VTMatrix4& matrix) {
        const double* v = matrix.v;
        Set(v[0] * x + v[4] * y + v[8] * z, v[1] * x + v[5] * y + v[9] * z, v[2] * x + v[6] * y + v[10] * z);
    }

    /// Right-handed rotations about the coordinate axes, in radians.
    void RotateVectorX(double fAngle);
    void RotateVectorY(double fAngle);
    void RotateVectorZ(double fAngle);

    /// Right-handed rotation about an axis of any length, in radians. A zero axis leaves the vector as it stands.
    void RotateVector(VTVector axis, double fAngle);

    /// Rotation by a unit quaternion.
    void RotateVector(const VTVector4& quat);

    /// Drops the part along the plane's normal, which need not be normalised. False, with the vector as it stands, when
    /// what would be left, times the squared length of the normal, is shorter than 1e-60. Between that and 1e-30 the
    /// vector becomes zero and the answer is true.
    bool ProjectVectorOntoPlane(const VTVector& normal);

    /// Some vector at right angles to this one, not normalised. (0, 1, 0) for the zero vector.
    VTVector GetPerpendicularVector() const;
};

inline VTVector operator+(const VTVector& a, const VTVector& b) {
    return VTVector(a.x + b.x, a.y + b.y, a.z + b.z);
}

inline VTVector operator-(const VTVector& a, const VTVector& b) {
    return VTVector(a.x - b.x, a.y - b.y, a.z - b.z);
}

/// The cross product. Mind the precedence of ^ in C++: it binds more weakly than + and ==.
inline VTVector operator^(const VTVector& a, const VTVector& b) {
    return VTVector(a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x);
}

/// The dot product.
inline double operator*(const VTVector& a, const VTVector& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

inline VTVector operator*(double fScale, const VTVector& a) {
    return VTVector(fScale * a.x, fScale * a.y, fScale * a.z);
}

inline VTVector operator*(const VTVector& a, double fScale) {
    return VTVector(a.x * fScale, a.y * fScale, a.z * fScale);
}

inline VTVector operator/(const VTVector& a, double fDivisor) {
    return VTVector(a.x / fDivisor, a.y / fDivisor, a.z / fDivisor);
}

/// The distance of two points.
inline double VTPointDist(const VTVector& a, const VTVector& b) {
    return (b - a).Length();
}

/// The squared distance of two points.
inline double VTPointL2Dist(const VTVector& a, const VTVector& b) {
    return (b - a).L2Norm();
}

/// Equality of each component by VTFeq() with VT_DOUBLE_TOLERANCE. It is relative: 0 and 1e-59 are unequal.
ORV_API bool VTVectorsEqual(const VTVector& a, const VTVector& b);

/// Whether `a` is a multiple of `b`, by the relative VTFeq(). Antiparallel vectors are parallel, a zero `a` is parallel
/// to any `b`, and a zero `b` only to a zero `a`.
ORV_API bool VTVectorsParallell(const VTVector& a, const VTVector& b);

/// The angle between two vectors, from 0 to pi or 180; 0 when either has no length.
///
/// Within about 1.4e-3 radians of 0 and of pi the angle snaps to the end of the range. Its pi is that of a float,
/// 3.1415927410125732, and so is the pi of the conversion to degrees: opposite vectors give exactly 180, while other
/// angles come out smaller than the true ones in the eighth digit.
ORV_API double VTVectorGetAngle(const VTVector& a, const VTVector& b, bool bDegrees);

constexpr VTVector VT_ZERO_VEC(0.0, 0.0, 0.0);
constexpr VTVector VT_UNIT_VEC(1.0, 1.0, 1.0);
constexpr VTVector VT_XAXIS_VEC(1.0, 0.0, 0.0);
constexpr VTVector VT_YAXIS_VEC(0.0, 1.0, 0.0);
constexpr VTVector VT_ZAXIS_VEC(0.0, 0.0, 1.0);
constexpr VTVector VT_NEG_XAXIS_VEC(-1.0, 0.0, 0.0);
constexpr VTVector VT_NEG_YAXIS_VEC(0.0, -1.0, 0.0);
constexpr VTVector VT_NEG_ZAXIS_VEC(0.0, 0.0, -1.0);

/// VT_UNDEFINED_DOUBLE in every component.
constexpr VTVector VT_UNDEFINED_VECTOR(VT_UNDEFINED_DOUBLE, VT_UNDEFINED_DOUBLE, VT_UNDEFINED_DOUBLE);
