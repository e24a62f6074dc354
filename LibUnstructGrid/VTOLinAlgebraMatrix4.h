#pragma once

#include "LibCore/rvfExport.h"
#include "LibUnstructGrid/VTOMathConstants.h"

class VTVector;
class VTVector4;

/// An affine transformation: sixteen doubles in the one array `v`.
///
/// Element j of array row i is v[4 i + j]. A point is multiplied from the left as a row, so
///
///     x' = v[0] x + v[4] y + v[ 8] z + v[12]
///     y' = v[1] x + v[5] y + v[ 9] z + v[13]
///     z' = v[2] x + v[6] y + v[10] z + v[14]
///
/// The translation stands at 12, 13, 14, and the array rows 0, 1, 2 hold the images of the x, y and z axes. Read as
/// columns, this is the usual column-major storage of a matrix that acts on column vectors.
class ORV_API VTMatrix4 {
public:
    double v[16];

    /// All zero.
    constexpr VTMatrix4() : v{} {}

    /// The one value in all sixteen elements. VTMatrix4(1) is not the identity; see LoadIdentity().
    explicit constexpr VTMatrix4(double fValue)
        : v{fValue, fValue, fValue, fValue, fValue, fValue, fValue, fValue,
            fValue, fValue, fValue, fValue, fValue, fValue, fValue, fValue} {}

    VTMatrix4(const VTMatrix4&) = default;

    /// Asserts that the source is another matrix.
    VTMatrix4& operator=(const VTMatrix4& m);
    void Set(const VTMatrix4& m);

    /// The four elements of an array row. Any index beyond 0 to 3 is asserted and then gives row 0.
    double* operator[](int i);
    const double* operator[](int i) const;

    /// The sixteen elements in storage order.
    const double* operator~() const {
        return v;
    }

    VTMatrix4& operator+=(const VTMatrix4& m);
    VTMatrix4& operator-=(const VTMatrix4& m);
    VTMatrix4& operator*=(double fS);

    /// This matrix becomes VTMatrixMultiply(*this, m): `m` acts first.
    VTMatrix4& operator*=(const VTMatrix4& m);

    /// Asserts a divisor other than 0, and then divides all the same.
    VTMatrix4& operator/=(double fS);

    VTMatrix4 operator+() const;
    VTMatrix4 operator-() const;

    /// Exact.
    bool operator==(const VTMatrix4& m) const;
    bool operator!=(const VTMatrix4& m) const;

    void SetZero();
    void SetAllElements(double fValue);
    void LoadIdentity();

    /// Whether the diagonal is 1 within the relative VT_DOUBLE_TOLERANCE and all else below 1e-60 in magnitude.
    bool IsIdentity() const;

    void SetUndefined();

    /// Looks at element 0 alone: undefined when that is not below VT_UNDEFINED_DOUBLE_LIMIT.
    bool IsUndefined() const {
        return VTIsUndefined(v[0]);
    }

    /// Sixteen doubles in storage order. Assert the pointer.
    void SetFromArray(const double* pfM);
    void GetAsArray(double* pfM) const;

    /// Moves what the matrix gives: the translation acts after it.
    void Translate(const VTVector& offset);
    void Translate(double fX, double fY, double fZ);

    /// Moves what the matrix gets: the translation acts before it.
    void TranslatePost(double fX, double fY, double fZ);

    /// Scales what the matrix gives: the scale acts after it.
    void Scale(double fX, double fY, double fZ);

    /// Turns what the matrix gives: the rotation acts after it. Right-handed, in radians, about an axis of any length;
    /// a zero axis turns nothing.
    void RotateAxisAngle(double fX, double fY, double fZ, double fAngle);
    void RotateAxisAngle(const VTVector& axis, double fAngle);

    /// The same with the opposite sense of rotation.
    void Rotate_Deprecated(double fX, double fY, double fZ, double fAngle);
    void Rotate_Deprecated(const VTVector& axis, double fAngle);

    /// The rotation of a quaternion of any length; the identity for (0, 0, 0, 0).
    void SetFromRotationQuat(const VTVector4& quat);

    /// The transposed matrix, that is the opposite rotation.
    void SetFromRotQuat_Deprecated(const VTVector4& quat);

    /// The unit quaternion of a rotation matrix, as SetFromRotationQuat() takes it. Quaternions q and -q are the same
    /// rotation; of the two the one with the positive w comes out, or with a positive largest part where the trace is
    /// not above 1e-8. A NaN on the diagonal gives (0, 0, 0, 1). Asserts the pointer.
    void GetRotationQuat(VTVector4* pRotQuat) const;

    /// The counterpart of SetFromRotQuat_Deprecated(). The positive w comes out down to a trace of -1, where little is
    /// left to divide by: close to a half turn digits are lost. A NaN on the diagonal gives NaN. Asserts the pointer.
    void GetRotQuat_Deprecated(VTVector4* pRotQuat) const;

    /// The images of the axes, without a translation.
    void SetFromAxes(const VTVector& xAxis, const VTVector& yAxis, const VTVector& zAxis);

    /// The reverse. Each pointer may be null.
    void GetAsAxes(VTVector* pXAxis, VTVector* pYAxis, VTVector* pZAxis) const;

    /// VTVector::TransformVector() then takes the components of a vector in frame 2 to those in frame 1; array row i is
    /// axis i of frame 2 in frame 1. A frame is given by its x and y axes, of any length and at right angles; its z
    /// axis is their cross product.
    void SetToCoordSysTransformation(const VTVector& x1, const VTVector& y1, const VTVector& x2, const VTVector& y2);

    /// A block of the matrix, read as columns: `iOrigCol` selects an array row and `iOrigRow` an element in it. The
    /// source holds the block column by column: element (c, r) is pfSub[c iNumRows + r]. Assert the pointer and that
    /// the block lies inside; a block that does not is written beyond the matrix all the same.
    void SetSubMatrix(const double* pfSub, int iOrigCol, int iOrigRow, int iNumCols, int iNumRows);
    void SetSubMatrix(double fValue, int iOrigCol, int iOrigRow, int iNumCols, int iNumRows);
    void GetSubMatrix(double* pfSub, int iOrigCol, int iOrigRow, int iNumCols, int iNumRows) const;

    void Transpose();
    VTMatrix4 GetTransposed() const;

    /// False, with the matrix as it stands, when the determinant is below 1e-60 in magnitude. This is no measure of how
    /// well the inversion works: a uniform scale of 1e-20 is refused.
    bool Invert();

    /// All zero when there is no inverse.
    VTMatrix4 GetInverse() const;

    double Determinant() const;
};

ORV_API VTMatrix4 operator+(const VTMatrix4& a, const VTMatrix4& b);
ORV_API VTMatrix4 operator-(const VTMatrix4& a, const VTMatrix4& b);
ORV_API VTMatrix4 operator*(const VTMatrix4& m, double fS);
ORV_API VTMatrix4 operator*(double fS, const VTMatrix4& m);
ORV_API VTMatrix4 operator/(const VTMatrix4& m, double fS);

/// `b` acts first, then `a`.
ORV_API VTMatrix4 operator*(const VTMatrix4& a, const VTMatrix4& b);

/// The same into `pM`, which may be either factor: element [i][j] is the sum over k of a[k][j] b[i][k], so a point goes
/// through `b` first and then through `a`. Asserts the pointer.
ORV_API void VTMatrixMultiply(const VTMatrix4& a, const VTMatrix4& b, VTMatrix4* pM);

/// Element by element: exactly, or by VTFeq() with VT_DOUBLE_TOLERANCE.
ORV_API bool VTMatrixEqual(const VTMatrix4& a, const VTMatrix4& b, bool bExact);

/// See VTMatrix4::Invert(). `pOut` may be the source; it stays untouched when there is no inverse. Asserts the pointer.
ORV_API bool VTMatrixInverse(const VTMatrix4& m, VTMatrix4* pOut);

/// The transposed matrix of cofactors. `pOut` may be the source. Asserts the pointer.
ORV_API void VTMatrixAdjoint(const VTMatrix4& m, VTMatrix4* pOut);

/// Determinants, given row by row.
inline double VTDet2x2(double a, double b, double c, double d) {
    return a * d - b * c;
}

inline double VTDet3x3(double a1, double a2, double a3, double b1, double b2, double b3, double c1, double c2,
                       double c3) {
    return a1 * VTDet2x2(b2, b3, c2, c3) - a2 * VTDet2x2(b1, b3, c1, c3) + a3 * VTDet2x2(b1, b2, c1, c2);
}

/// VT_UNDEFINED_DOUBLE in every element.
constexpr VTMatrix4 VT_UNDEFINED_MATRIX4(VT_UNDEFINED_DOUBLE);
