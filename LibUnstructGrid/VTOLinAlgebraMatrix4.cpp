#include "LibUnstructGrid/VTOLinAlgebraMatrix4.h"

#include "LibCore/rvfAssert.h"
#include "LibUnstructGrid/VTOLinAlgebraVector.h"
#include "LibUnstructGrid/VTOMathCompare.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace {

void setRow(double* pfRow, double fX, double fY, double fZ, double fW) {
    pfRow[0] = fX;
    pfRow[1] = fY;
    pfRow[2] = fZ;
    pfRow[3] = fW;
}

/// The determinant without one array row and one element of each other row.
double minorOf(const double (&v)[16], int iSkipRow, int iSkipElement) {
    double sub[9];
    int iNext = 0;
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < 4; ++j) {
            if (i != iSkipRow && j != iSkipElement) {
                sub[iNext++] = v[4 * i + j];
            }
        }
    }
    return VTDet3x3(sub[0], sub[1], sub[2], sub[3], sub[4], sub[5], sub[6], sub[7], sub[8]);
}

double cofactorOf(const double (&v)[16], int iRow, int iElement) {
    const double fMinor = minorOf(v, iRow, iElement);
    return (iRow + iElement) % 2 == 0 ? fMinor : -fMinor;
}

} // namespace

VTMatrix4& VTMatrix4::operator=(const VTMatrix4& m) {
    Set(m);
    return *this;
}

// The language no longer compares arrays, so the text of the test is spelled out.
void VTMatrix4::Set(const VTMatrix4& m) {
    if (this == &m) {
        rvf::Assert::handleFailedAssert(RVF_SOURCE_PATH, __LINE__, "v != m.v", nullptr);
    }
    std::memmove(v, m.v, sizeof(v));
}

double* VTMatrix4::operator[](int i) {
    RVF_ASSERT(i >= 0 && i < 4);
    return v + (i >= 0 && i < 4 ? 4 * i : 0);
}

const double* VTMatrix4::operator[](int i) const {
    RVF_ASSERT(i >= 0 && i < 4);
    return v + (i >= 0 && i < 4 ? 4 * i : 0);
}

VTMatrix4& VTMatrix4::operator+=(const VTMatrix4& m) {
    for (int i = 0; i < 16; ++i) {
        v[i] += m.v[i];
    }
    return *this;
}

VTMatrix4& VTMatrix4::operator-=(const VTMatrix4& m) {
    for (int i = 0; i < 16; ++i) {
        v[i] -= m.v[i];
    }
    return *this;
}

VTMatrix4& VTMatrix4::operator*=(double fS) {
    for (double& fElement : v) {
        fElement *= fS;
    }
    return *this;
}

VTMatrix4& VTMatrix4::operator*=(const VTMatrix4& m) {
    VTMatrixMultiply(*this, m, this);
    return *this;
}

VTMatrix4& VTMatrix4::operator/=(double fS) {
    RVF_ASSERT(fS != 0.0f);
    for (double& fElement : v) {
        fElement /= fS;
    }
    return *this;
}

VTMatrix4 VTMatrix4::operator+() const {
    return *this;
}

VTMatrix4 VTMatrix4::operator-() const {
    VTMatrix4 negated;
    for (int i = 0; i < 16; ++i) {
        negated.v[i] = -v[i];
    }
    return negated;
}

bool VTMatrix4::operator==(const VTMatrix4& m) const {
    return VTMatrixEqual(*this, m, true);
}

bool VTMatrix4::operator!=(const VTMatrix4& m) const {
    return !VTMatrixEqual(*this, m, true);
}

void VTMatrix4::SetZero() {
    SetAllElements(0.0);
}

void VTMatrix4::SetAllElements(double fValue) {
    std::fill(v, v + 16, fValue);
}

void VTMatrix4::LoadIdentity() {
    SetZero();
    for (int i = 0; i < 4; ++i) {
        v[5 * i] = 1.0;
    }
}

bool VTMatrix4::IsIdentity() const {
    for (int i = 0; i < 16; ++i) {
        const bool bOnDiagonal = i % 5 == 0;
        if (bOnDiagonal ? !VTFeq(v[i], 1.0, VT_DOUBLE_TOLERANCE) : !VTFeqZero(v[i])) {
            return false;
        }
    }
    return true;
}

void VTMatrix4::SetUndefined() {
    SetAllElements(VT_UNDEFINED_DOUBLE);
}

void VTMatrix4::SetFromArray(const double* pfM) {
    RVF_ASSERT(pfM);
    std::memmove(v, pfM, sizeof(v));
}

void VTMatrix4::GetAsArray(double* pfM) const {
    RVF_ASSERT(pfM);
    std::memmove(pfM, v, sizeof(v));
}

void VTMatrix4::Translate(const VTVector& offset) {
    Translate(offset.x, offset.y, offset.z);
}

void VTMatrix4::Translate(double fX, double fY, double fZ) {
    for (int i = 0; i < 16; i += 4) {
        v[i] += fX * v[i + 3];
        v[i + 1] += fY * v[i + 3];
        v[i + 2] += fZ * v[i + 3];
    }
}

void VTMatrix4::TranslatePost(double fX, double fY, double fZ) {
    for (int i = 0; i < 4; ++i) {
        v[12 + i] += fX * v[i] + fY * v[4 + i] + fZ * v[8 + i];
    }
}

void VTMatrix4::Scale(double fX, double fY, double fZ) {
    for (int i = 0; i < 16; i += 4) {
        v[i] *= fX;
        v[i + 1] *= fY;
        v[i + 2] *= fZ;
    }
}

void VTMatrix4::SetFromAxes(const VTVector& xAxis, const VTVector& yAxis, const VTVector& zAxis) {
    setRow(v, xAxis.x, xAxis.y, xAxis.z, 0.0);
    setRow(v + 4, yAxis.x, yAxis.y, yAxis.z, 0.0);
    setRow(v + 8, zAxis.x, zAxis.y, zAxis.z, 0.0);
    setRow(v + 12, 0.0, 0.0, 0.0, 1.0);
}

void VTMatrix4::GetAsAxes(VTVector* pXAxis, VTVector* pYAxis, VTVector* pZAxis) const {
    VTVector* const axes[] = {pXAxis, pYAxis, pZAxis};
    for (int i = 0; i < 3; ++i) {
        if (axes[i]) {
            axes[i]->Set(v[4 * i], v[4 * i + 1], v[4 * i + 2]);
        }
    }
}

void VTMatrix4::SetToCoordSysTransformation(const VTVector& x1, const VTVector& y1, const VTVector& x2,
                                            const VTVector& y2) {
    VTVector from[3] = {x1.GetNormalized(), y1.GetNormalized(), VT_ZERO_VEC};
    VTVector to[3] = {x2.GetNormalized(), y2.GetNormalized(), VT_ZERO_VEC};
    from[2] = (from[0] ^ from[1]).GetNormalized();
    to[2] = (to[0] ^ to[1]).GetNormalized();
    for (int i = 0; i < 3; ++i) {
        setRow(v + 4 * i, from[0] * to[i], from[1] * to[i], from[2] * to[i], 0.0);
    }
    setRow(v + 12, 0.0, 0.0, 0.0, 1.0);
}

void VTMatrix4::SetSubMatrix(const double* pfSub, int iOrigCol, int iOrigRow, int iNumCols, int iNumRows) {
    RVF_ASSERT(pfSub);
    RVF_ASSERT((iOrigCol >= 0) && (iOrigCol < 4));
    RVF_ASSERT((iOrigRow >= 0) && (iOrigRow < 4));
    RVF_ASSERT((iOrigCol + iNumCols) <= 4);
    RVF_ASSERT((iOrigRow + iNumRows) <= 4);
    for (int c = 0; c < iNumCols; ++c) {
        for (int r = 0; r < iNumRows; ++r) {
            v[iOrigRow + r + (iOrigCol + c) * 4] = pfSub[c * iNumRows + r];
        }
    }
}

void VTMatrix4::SetSubMatrix(double fValue, int iOrigCol, int iOrigRow, int iNumCols, int iNumRows) {
    RVF_ASSERT((iOrigCol >= 0) && (iOrigCol < 4));
    RVF_ASSERT((iOrigRow >= 0) && (iOrigRow < 4));
    RVF_ASSERT((iOrigCol + iNumCols) <= 4);
    RVF_ASSERT((iOrigRow + iNumRows) <= 4);
    for (int c = 0; c < iNumCols; ++c) {
        for (int r = 0; r < iNumRows; ++r) {
            v[iOrigRow + r + (iOrigCol + c) * 4] = fValue;
        }
    }
}

void VTMatrix4::GetSubMatrix(double* pfSub, int iOrigCol, int iOrigRow, int iNumCols, int iNumRows) const {
    RVF_ASSERT(pfSub);
    RVF_ASSERT((iOrigCol >= 0) && (iOrigCol < 4));
    RVF_ASSERT((iOrigRow >= 0) && (iOrigRow < 4));
    RVF_ASSERT((iOrigCol + iNumCols) <= 4);
    RVF_ASSERT((iOrigRow + iNumRows) <= 4);
    for (int c = 0; c < iNumCols; ++c) {
        for (int r = 0; r < iNumRows; ++r) {
            pfSub[c * iNumRows + r] = v[iOrigRow + r + (iOrigCol + c) * 4];
        }
    }
}

void VTMatrix4::Transpose() {
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < i; ++j) {
            std::swap(v[4 * i + j], v[4 * j + i]);
        }
    }
}

VTMatrix4 VTMatrix4::GetTransposed() const {
    VTMatrix4 transposed(*this);
    transposed.Transpose();
    return transposed;
}

bool VTMatrix4::Invert() {
    return VTMatrixInverse(*this, this);
}

VTMatrix4 VTMatrix4::GetInverse() const {
    VTMatrix4 inverse(0.0);
    VTMatrixInverse(*this, &inverse);
    return inverse;
}

double VTMatrix4::Determinant() const {
    double fSum = 0.0;
    for (int j = 0; j < 4; ++j) {
        fSum += v[j] * cofactorOf(v, 0, j);
    }
    return fSum;
}

VTMatrix4 operator+(const VTMatrix4& a, const VTMatrix4& b) {
    VTMatrix4 sum(a);
    sum += b;
    return sum;
}

VTMatrix4 operator-(const VTMatrix4& a, const VTMatrix4& b) {
    VTMatrix4 difference(a);
    difference -= b;
    return difference;
}

VTMatrix4 operator*(const VTMatrix4& m, double fS) {
    VTMatrix4 scaled(m);
    scaled *= fS;
    return scaled;
}

VTMatrix4 operator*(double fS, const VTMatrix4& m) {
    return m * fS;
}

VTMatrix4 operator/(const VTMatrix4& m, double fS) {
    RVF_ASSERT(fS != 0.0f);
    VTMatrix4 quotient(m);
    for (double& fElement : quotient.v) {
        fElement /= fS;
    }
    return quotient;
}

VTMatrix4 operator*(const VTMatrix4& a, const VTMatrix4& b) {
    VTMatrix4 product;
    VTMatrixMultiply(a, b, &product);
    return product;
}

void VTMatrixMultiply(const VTMatrix4& a, const VTMatrix4& b, VTMatrix4* pM) {
    RVF_ASSERT(pM);
    if (pM == &a || pM == &b) {
        const VTMatrix4 first(a);
        const VTMatrix4 second(b);
        VTMatrixMultiply(first, second, pM);
        return;
    }
    for (int i = 0; i < 4; ++i) {
        const double* pfB = b.v + 4 * i;
        for (int j = 0; j < 4; ++j) {
            pM->v[4 * i + j] = a.v[j] * pfB[0] + a.v[4 + j] * pfB[1] + a.v[8 + j] * pfB[2] + a.v[12 + j] * pfB[3];
        }
    }
}

bool VTMatrixEqual(const VTMatrix4& a, const VTMatrix4& b, bool bExact) {
    for (int i = 0; i < 16; ++i) {
        if (bExact ? a.v[i] != b.v[i] : !VTFeq(a.v[i], b.v[i], VT_DOUBLE_TOLERANCE)) {
            return false;
        }
    }
    return true;
}

bool VTMatrixInverse(const VTMatrix4& m, VTMatrix4* pOut) {
    RVF_ASSERT(pOut);
    const double fDeterminant = m.Determinant();
    if (VTFeqZero(fDeterminant)) {
        return false;
    }
    VTMatrixAdjoint(m, pOut);
    *pOut /= fDeterminant;
    return true;
}

void VTMatrixAdjoint(const VTMatrix4& m, VTMatrix4* pOut) {
    RVF_ASSERT(pOut);
    double source[16];
    m.GetAsArray(source);
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < 4; ++j) {
            pOut->v[4 * j + i] = cofactorOf(source, i, j);
        }
    }
}
