#include "LibCore/rvfAssert.h"
#include "LibUnstructGrid/VTOLinAlgebraMatrix4.h"
#include "LibUnstructGrid/VTOLinAlgebraVector.h"
#include "LibUnstructGrid/VTOLinAlgebraVector4.h"
#include "LibUnstructGrid/VTOMathCompare.h"
#include "LibUnstructGrid/VTOMathQuaternion.h"

#include <cmath>

namespace {

/// The nine elements of a rotation, row after row: what stands in the array rows 0, 1, 2.
void rotationOf(const VTVector4& quat, double (&r)[9]) {
    const double x = quat.x;
    const double y = quat.y;
    const double z = quat.z;
    const double w = quat.w;
    const double fNorm = x * x + y * y + z * z + w * w;
    const double s = fNorm > 0.0 ? 2.0 / fNorm : 0.0;
    r[0] = 1.0 - s * (y * y + z * z);
    r[1] = s * (x * y + w * z);
    r[2] = s * (x * z - w * y);
    r[3] = s * (x * y - w * z);
    r[4] = 1.0 - s * (x * x + z * z);
    r[5] = s * (y * z + w * x);
    r[6] = s * (x * z + w * y);
    r[7] = s * (y * z - w * x);
    r[8] = 1.0 - s * (x * x + y * y);
}

int largestDiagonal(const double (&v)[16]) {
    if (v[5] > v[0]) {
        return v[10] > v[5] ? 2 : 1;
    }
    return v[10] > v[0] ? 2 : 0;
}

double traceOf(const double (&v)[16]) {
    return v[0] + v[5] + v[10];
}

/// Four times the largest part of the quaternion; NaN where the matrix is no rotation.
double scaleOf(const double (&v)[16], int iLargest) {
    const double fOther = v[iLargest == 0 ? 5 : 0];
    const double fLast = v[iLargest == 2 ? 5 : 10];
    return 2.0 * std::sqrt(1.0 + v[5 * iLargest] - fOther - fLast);
}

/// The quaternion by its largest part, without its w.
void setLargestPart(const double (&v)[16], int iLargest, double fScale, VTVector4* pRotQuat) {
    const double fXY = (v[1] + v[4]) / fScale;
    const double fZX = (v[2] + v[8]) / fScale;
    const double fYZ = (v[6] + v[9]) / fScale;
    const double fOwn = 0.25 * fScale;
    switch (iLargest) {
    case 0:
        pRotQuat->Set(fOwn, fXY, fZX, 0.0);
        break;
    case 1:
        pRotQuat->Set(fXY, fOwn, fYZ, 0.0);
        break;
    default:
        pRotQuat->Set(fZX, fYZ, fOwn, 0.0);
        break;
    }
}

/// What tells the sense of the rotation about axis 0, 1 or 2.
double skewPart(const double (&v)[16], int iAxis) {
    switch (iAxis) {
    case 0:
        return v[6] - v[9];
    case 1:
        return v[8] - v[2];
    default:
        return v[1] - v[4];
    }
}

} // namespace

void VTMatrix4::RotateAxisAngle(double fX, double fY, double fZ, double fAngle) {
    VTVector4 quat;
    VTAxisToQuat(fX, fY, fZ, fAngle, &quat);
    VTMatrix4 rotation;
    rotation.SetFromRotationQuat(quat);
    VTMatrixMultiply(rotation, *this, this);
}

void VTMatrix4::RotateAxisAngle(const VTVector& axis, double fAngle) {
    RotateAxisAngle(axis.x, axis.y, axis.z, fAngle);
}

void VTMatrix4::Rotate_Deprecated(double fX, double fY, double fZ, double fAngle) {
    VTVector4 quat;
    VTAxisToQuat(fX, fY, fZ, fAngle, &quat);
    VTMatrix4 rotation;
    rotation.SetFromRotQuat_Deprecated(quat);
    VTMatrixMultiply(rotation, *this, this);
}

void VTMatrix4::Rotate_Deprecated(const VTVector& axis, double fAngle) {
    Rotate_Deprecated(axis.x, axis.y, axis.z, fAngle);
}

void VTMatrix4::SetFromRotationQuat(const VTVector4& quat) {
    double r[9];
    rotationOf(quat, r);
    LoadIdentity();
    for (int i = 0; i < 9; ++i) {
        v[4 * (i / 3) + i % 3] = r[i];
    }
}

void VTMatrix4::SetFromRotQuat_Deprecated(const VTVector4& quat) {
    double r[9];
    rotationOf(quat, r);
    LoadIdentity();
    for (int i = 0; i < 9; ++i) {
        v[4 * (i % 3) + i / 3] = r[i];
    }
}

void VTMatrix4::GetRotationQuat(VTVector4* pRotQuat) const {
    RVF_ASSERT(pRotQuat);
    constexpr double traceLimit = 1e-8f;
    pRotQuat->Set(0.0, 0.0, 0.0, 1.0);
    const double fTrace = traceOf(v);
    if (fTrace > traceLimit) {
        const double k = 0.5 / std::sqrt(1.0 + fTrace);
        pRotQuat->Set(skewPart(v, 0) * k, skewPart(v, 1) * k, skewPart(v, 2) * k, 0.25 / k);
        return;
    }
    const int iLargest = largestDiagonal(v);
    const double fScale = scaleOf(v, iLargest);
    if (fScale > 0.0) {
        setLargestPart(v, iLargest, fScale, pRotQuat);
        pRotQuat->w = skewPart(v, iLargest) / fScale;
    }
}

void VTMatrix4::GetRotQuat_Deprecated(VTVector4* pRotQuat) const {
    RVF_ASSERT(pRotQuat);
    pRotQuat->Set(0.0, 0.0, 0.0, 1.0);
    const double fTrace = traceOf(v);
    if (1.0 + fTrace > 0.0) {
        const double k = 0.5 / std::sqrt(1.0 + fTrace);
        pRotQuat->Set(-skewPart(v, 0) * k, -skewPart(v, 1) * k, -skewPart(v, 2) * k, 0.25 / k);
        return;
    }
    const int iLargest = largestDiagonal(v);
    const double fScale = scaleOf(v, iLargest);
    if (!VTFeqZero(fScale)) {
        setLargestPart(v, iLargest, fScale, pRotQuat);
        pRotQuat->w = -skewPart(v, iLargest) / fScale;
    }
}
