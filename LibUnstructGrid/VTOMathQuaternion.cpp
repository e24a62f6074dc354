#include "LibUnstructGrid/VTOMathQuaternion.h"

#include "LibUnstructGrid/VTOLinAlgebraVector.h"
#include "LibUnstructGrid/VTOLinAlgebraVector4.h"
#include "LibUnstructGrid/VTOMathCompare.h"

#include <cmath>

void VTAxisToQuat(VTVector axis, double fAngle, VTVector4* pQuat) {
    axis.Normalize();
    const double fSin = std::sin(fAngle / 2.0);
    pQuat->Set(axis.x * fSin, axis.y * fSin, axis.z * fSin, std::cos(fAngle / 2.0));
}

void VTAxisToQuat(double fX, double fY, double fZ, double fAngle, VTVector4* pQuat) {
    VTAxisToQuat(VTVector(fX, fY, fZ), fAngle, pQuat);
}

void VTQuatToAxis(const VTVector4& quat, VTVector* pAxis, double* pfAngle) {
    const double fSin = std::sqrt(1.0 - quat.w * quat.w);
    // A multiplication where a division would give the unit axis: callers have always had the scaled one.
    const double fScale = std::fabs(fSin) < 0.0005 ? 1.0 : fSin;
    *pfAngle = 2.0 * std::acos(quat.w);
    pAxis->Set(quat.x * fScale, quat.y * fScale, quat.z * fScale);
}

void VTNormalizeQuat(VTVector4* pQuat) {
    const double fLength =
        std::sqrt(pQuat->x * pQuat->x + pQuat->y * pQuat->y + pQuat->z * pQuat->z + pQuat->w * pQuat->w);
    if (VTFeqZero(fLength)) {
        return;
    }
    pQuat->Set(pQuat->x / fLength, pQuat->y / fLength, pQuat->z / fLength, pQuat->w / fLength);
}

void VTMultiplyQuats(const VTVector4& a, const VTVector4& b, VTVector4* pOut) {
    *pOut = VTVector4(a.w * b.x + a.x * b.w + a.y * b.z - a.z * b.y, a.w * b.y + a.y * b.w + a.z * b.x - a.x * b.z,
                      a.w * b.z + a.z * b.w + a.x * b.y - a.y * b.x, a.w * b.w - a.x * b.x - a.y * b.y - a.z * b.z);
    VTNormalizeQuat(pOut);
}
