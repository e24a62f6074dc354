#include "LibUnstructGrid/VTOMathVector.h"

#include "LibCore/rvfAssert.h"
#include "LibUnstructGrid/VTOLinAlgebra.h"
#include "LibUnstructGrid/VTOMathCompare.h"
#include "LibUnstructGrid/VTOMathQuaternion.h"

#include <cmath>

namespace {

/// The quaternion, in the sense of SetFromRotQuat_Deprecated(), of the shortest turn from one vector to another. Where
/// they lie on one line `spareAxis` is turned about. False when there is nothing to turn.
bool turnBetween(const VTVector& from, const VTVector& to, const VTVector& spareAxis, VTVector4* pQuat) {
    const double fAngle = VTVectorGetAngle(from, to, false);
    if (VTFeqZero(fAngle)) {
        return false;
    }
    const VTVector axis = from ^ to;
    VTAxisToQuat(axis.IsZero(true) ? spareAxis : axis, -fAngle, pQuat);
    return true;
}

} // namespace

void VTRotateX(VTVector* pVector, double fCos, double fSin) {
    if (pVector) {
        pVector->Set(pVector->x, pVector->y * fCos - pVector->z * fSin, pVector->y * fSin + pVector->z * fCos);
    }
}

void VTRotateY(VTVector* pVector, double fCos, double fSin) {
    if (pVector) {
        pVector->Set(pVector->x * fCos + pVector->z * fSin, pVector->y, -pVector->x * fSin + pVector->z * fCos);
    }
}

void VTRotateZ(VTVector* pVector, double fCos, double fSin) {
    if (pVector) {
        pVector->Set(pVector->x * fCos - pVector->y * fSin, pVector->x * fSin + pVector->y * fCos, pVector->z);
    }
}

double VTLinePointL2Dist(const VTVector& start, const VTVector& end, const VTVector& point) {
    const VTVector direction = end - start;
    if (direction.IsZero(true)) {
        return VTPointL2Dist(start, point);
    }
    const double t = ((point - start) * direction) / (direction * direction);
    return VTPointL2Dist(start + t * direction, point);
}

double VTLinePointDist(const VTVector& start, const VTVector& end, const VTVector& point) {
    return std::sqrt(VTLinePointL2Dist(start, end, point));
}

bool VTGetCoordSystemTransformation(const VTVector* pOrgB, const VTVector* pNewB, const VTVector* pOrgP,
                                    const VTVector* pNewP, VTMatrix4* pM) {
    RVF_ASSERT(pOrgB && pNewB);
    RVF_ASSERT(pM);
    VTVector4 quat(0.0, 0.0, 0.0, 1.0);
    turnBetween(pOrgB[0], pNewB[0], pNewB[1], &quat);
    pM->SetFromRotQuat_Deprecated(quat);

    VTVector turned = pOrgB[1];
    turned.TransformVector(*pM);
    VTVector4 second;
    if (turnBetween(turned, pNewB[1], pNewB[0], &second)) {
        VTMultiplyQuats(quat, second, &quat);
    }
    pM->SetFromRotQuat_Deprecated(quat);

    if (pOrgP && pNewP) {
        VTVector moved = *pOrgP;
        moved.TransformPoint(*pM);
        pM->Translate(*pNewP - moved);
    }
    return true;
}
