#include "LibUnstructGrid/VTOLinAlgebraVector.h"

#include "LibCore/rvfAssert.h"
#include "LibUnstructGrid/VTOLinAlgebraVector4.h"
#include "LibUnstructGrid/VTOMathCompare.h"
#include "LibUnstructGrid/VTOMathQuaternion.h"
#include "LibUnstructGrid/VTOMathRound.h"
#include "LibUnstructGrid/VTOMathVector.h"

namespace {

constexpr double zeroLimit = 1e-60;

// Constants of VTVectorGetAngle(), kept as the floats they have always been.
constexpr double almostOne = 0.999999f;
constexpr double floatPi = 3.14159265f;

} // namespace

bool VTVector::IsZero(bool bExact) const {
    if (bExact) {
        return x == 0.0 && y == 0.0 && z == 0.0;
    }
    return VTFeqZero(x) && VTFeqZero(y) && VTFeqZero(z);
}

bool VTVector::SetLength(double fLength) {
    RVF_ASSERT(fLength >= 0);
    const double fL2Norm = L2Norm();
    if (fL2Norm < zeroLimit || fLength == 0.0) {
        SetZero();
        return fLength == 0.0;
    }
    *this *= fLength / std::sqrt(fL2Norm);
    return true;
}

void VTVector::Round() {
    Set(VTRound(x), VTRound(y), VTRound(z));
}

double VTVector::MaxComponent(int* piIndex) const {
    int iMax = 0;
    for (int i = 1; i < 3; ++i) {
        if ((*this)[i] > (*this)[iMax]) {
            iMax = i;
        }
    }
    if (piIndex) {
        *piIndex = iMax;
    }
    return (*this)[iMax];
}

void VTVector::SetUndefined() {
    *this = VT_UNDEFINED_VECTOR;
}

void VTVector::RotateVectorX(double fAngle) {
    VTRotateX(this, std::cos(fAngle), std::sin(fAngle));
}

void VTVector::RotateVectorY(double fAngle) {
    VTRotateY(this, std::cos(fAngle), std::sin(fAngle));
}

void VTVector::RotateVectorZ(double fAngle) {
    VTRotateZ(this, std::cos(fAngle), std::sin(fAngle));
}

// Rodrigues' rotation formula, v cos(a) + (k x v) sin(a) + k (k . v) (1 - cos(a)).
void VTVector::RotateVector(VTVector axis, double fAngle) {
    if (!axis.Normalize()) {
        return;
    }
    const double fCos = std::cos(fAngle);
    *this = fCos * *this + std::sin(fAngle) * (axis ^ *this) + (1.0 - fCos) * (axis * *this) * axis;
}

void VTVector::RotateVector(const VTVector4& quat) {
    VTVector axis;
    double fAngle = 0.0;
    VTQuatToAxis(quat, &axis, &fAngle);
    RotateVector(axis, fAngle);
}

bool VTVector::ProjectVectorOntoPlane(const VTVector& normal) {
    VTVector direction = (normal ^ *this) ^ normal;
    if (direction.Length() < zeroLimit) {
        return false;
    }
    direction.Normalize();
    *this = (*this * direction) * direction;
    return true;
}

VTVector VTVector::GetPerpendicularVector() const {
    if (z != 0.0) {
        return VTVector(1.0, 0.0, -x / z);
    }
    if (y != 0.0) {
        return VTVector(1.0, -x / y, 0.0);
    }
    return VT_YAXIS_VEC;
}

bool VTVectorsEqual(const VTVector& a, const VTVector& b) {
    return VTFeq(a.x, b.x, VT_DOUBLE_TOLERANCE) && VTFeq(a.y, b.y, VT_DOUBLE_TOLERANCE) &&
           VTFeq(a.z, b.z, VT_DOUBLE_TOLERANCE);
}

bool VTVectorsParallell(const VTVector& a, const VTVector& b) {
    double fRatio = 0.0;
    for (int i = 0; i < 3; ++i) {
        if (!VTFeqZero(b[i])) {
            fRatio = a[i] / b[i];
            break;
        }
        if (!VTFeqZero(a[i])) {
            return false;
        }
    }
    return VTVectorsEqual(b * fRatio, a);
}

double VTVectorGetAngle(const VTVector& a, const VTVector& b, bool bDegrees) {
    const double fLengths = std::sqrt(a.L2Norm() * b.L2Norm());
    if (std::fabs(fLengths) < zeroLimit) {
        return 0.0;
    }
    const double fCos = (a * b) / fLengths;
    double fAngle = 0.0;
    if (fCos < -almostOne) {
        fAngle = floatPi;
    } else if (!(fCos > almostOne)) {
        fAngle = std::acos(fCos);
    }
    return bDegrees ? 180.0 * fAngle / floatPi : fAngle;
}
