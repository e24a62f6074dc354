#include "LibUnstructGrid/VTOGeometryMathSphere.h"

#include "LibUnstructGrid/VTOArrayVector.h"
#include "LibUnstructGrid/VTOMathRound.h"

#include <cmath>

bool VTRaySphereIntersect(const VTVector& center, double radius, const VTVector& origin, const VTVector& dir,
                          double dRadiusScale, VTVector* pPoint, double* pdT) {
    const VTVector unit = dir.GetNormalized();
    const VTVector toCenter = center - origin;
    if (dRadiusScale > 0.0) {
        radius += dRadiusScale * toCenter.Length();
    }
    const double fAlong = toCenter * unit;
    const double fHalfChord2 = radius * radius - (toCenter.L2Norm() - fAlong * fAlong);
    if (fHalfChord2 < 0.0) {
        return false;
    }
    const double t = fAlong - std::sqrt(fHalfChord2);
    if (pPoint) {
        *pPoint = origin + t * unit;
    }
    const double fLength = dir.Length();
    *pdT = fLength != 0.0 ? t / fLength : t;
    return true;
}

// |p1 + t (p2 - p1) - center|^2 = radius^2, as a t^2 + b t + c = 0.
int VTLineSphereIntersect(const VTVector& p1, const VTVector& p2, const VTVector& center, double radius,
                          VTVectorArray* pPoints) {
    if (pPoints) {
        pPoints->Free();
    }
    const VTVector along = p2 - p1;
    const double a = VTSquared(along.x, false) + VTSquared(along.y, false) + VTSquared(along.z, false);
    const double b = 2.0 * (along * (p1 - center));
    const double c = center.L2Norm() + p1.L2Norm() - 2.0 * (center * p1) - radius * radius;
    const double fDiscriminant = b * b - 4.0 * a * c;
    if (!(fDiscriminant > 0.0)) {
        return fDiscriminant == 0.0 ? 1 : 0;
    }
    const double fRoot = std::sqrt(fDiscriminant);
    pPoints->AddGrow(p1 + (-b + fRoot) / (2.0 * a) * along);
    pPoints->AddGrow(p1 + (-b - fRoot) / (2.0 * a) * along);
    return 2;
}
