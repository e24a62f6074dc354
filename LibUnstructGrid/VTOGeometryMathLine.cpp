#include "LibUnstructGrid/VTOGeometryMathLine.h"

#include "LibUnstructGrid/VTOLinAlgebraVector.h"
#include "LibUnstructGrid/VTOMathCompare.h"

#include <cmath>

namespace {

/// It has always been a float.
constexpr double shortLimit = 1e-30f;

bool isShort(const VTVector& v) {
    return std::fabs(v.x) < shortLimit && std::fabs(v.y) < shortLimit && std::fabs(v.z) < shortLimit;
}

} // namespace

bool VTPointOnLineSegment(const VTVector& a, const VTVector& b, const VTVector& p) {
    if (VTVectorsEqual(p, a) || VTVectorsEqual(p, b)) {
        return true;
    }
    const VTVector along = b - a;
    const VTVector offset = p - a;
    if (!VTVectorsParallell(offset, along)) {
        return false;
    }
    for (int i = 0; i < 3; ++i) {
        if (!VTFeqZero(along[i])) {
            const double t = offset[i] / along[i];
            return t > 0.0 && t < 1.0;
        }
    }
    return false;
}

bool VTLineRayIntersect(const VTVector& l0, const VTVector& l1, const VTVector& origin, const VTVector& dir,
                        VTVector* pLinePoint, VTVector* pRayPoint, double* pdS, double* pdT) {
    const VTVector along = l1 - l0;
    if (isShort(dir) || isShort(along)) {
        return false;
    }
    const VTVector offset = l0 - origin;
    const double d1 = offset * dir;
    const double d2 = dir * along;
    const double d3 = dir * dir;
    const double fDenominator = (along * along) * d3 - d2 * d2;
    if (fDenominator < shortLimit) {
        return false;
    }
    const double s = (d1 * d2 - (offset * along) * d3) / fDenominator;
    const double t = (d1 + d2 * s) / d3;
    *pLinePoint = l0 + s * along;
    *pRayPoint = origin + t * dir;
    if (pdS) {
        *pdS = s;
    }
    if (pdT) {
        *pdT = t;
    }
    return true;
}

bool VTLineLineIntersect(const VTVector& a0, const VTVector& a1, const VTVector& b0, const VTVector& b1,
                         VTVector* pPointA, VTVector* pPointB, double* pdS, double* pdT) {
    return VTLineRayIntersect(a0, a1, b0, b1 - b0, pPointA, pPointB, pdS, pdT);
}

bool VTRayThickLineIntersect(const VTVector& l0, const VTVector& l1, double dThickness, const VTVector& origin,
                             const VTVector& dir, double dRadiusScale, VTVector* pPoint, double* pdT) {
    VTVector linePoint;
    VTVector rayPoint;
    double s = 0.0;
    double t = 0.0;
    if (!VTLineRayIntersect(l0, l1, origin, dir, &linePoint, &rayPoint, &s, &t) || !(s >= 0.0 && s <= 1.0)) {
        return false;
    }
    const double fLength = dir.Length();
    if (dRadiusScale > 0.0) {
        dThickness += dRadiusScale * fLength * t;
    }
    if (!(VTPointDist(linePoint, rayPoint) < dThickness)) {
        return false;
    }
    if (pPoint) {
        *pPoint = linePoint;
    }
    *pdT = t - dThickness / fLength;
    return true;
}
