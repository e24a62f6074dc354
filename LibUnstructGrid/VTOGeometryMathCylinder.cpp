#include "LibUnstructGrid/VTOGeometryMathCylinder.h"

#include "LibUnstructGrid/VTOPlane.h"

#include <cmath>

namespace {

/// The parameter of a hit that there is not. It has always been a float.
constexpr double infinite = 1e30f;

/// Cuts off what lies in front of a plane or in it. False when nothing is left.
bool clip(const VTVector& origin, const VTVector& dir, const VTPlane& plane, int iCode, double* pdIn, double* pdOut,
          int* piSurfIn, int* piSurfOut) {
    const double fSlope = VTVector(plane.a, plane.b, plane.c) * dir;
    const double fStart = plane.GetDistanceSignOnly(origin);
    if (fSlope == 0.0) {
        return fStart < 0.0;
    }
    const double t = -fStart / fSlope;
    const bool bCuts = t > *pdIn && t < *pdOut;
    if (fSlope >= 0.0) {
        if (bCuts) {
            *pdOut = t;
            *piSurfOut = iCode;
        }
        return !(*pdIn > t);
    }
    if (bCuts) {
        *pdIn = t;
        *piSurfIn = iCode;
    }
    return !(t > *pdOut);
}

} // namespace

bool VTRayInfCylinderIntersect(const VTVector& origin, const VTVector& dir, const VTVector& base, const VTVector& axis,
                               double radius, double* pdIn, double* pdOut) {
    const VTVector offset = origin - base;
    VTVector across = dir ^ axis;
    const double fLength = across.Length();
    if (fLength == 0.0) {
        *pdIn = -infinite;
        *pdOut = infinite;
        return (offset - (offset * axis) * axis).Length() <= radius;
    }
    across /= fLength;
    const double fDist = std::fabs(offset * across);
    if (!(fDist <= radius)) {
        return false;
    }
    const double t = -((offset ^ axis) * across) / fLength;
    const VTVector outward = (across ^ axis).GetNormalized();
    const double fHalf = std::fabs(std::sqrt(radius * radius - fDist * fDist) / (dir * outward));
    *pdIn = t - fHalf;
    *pdOut = t + fHalf;
    return true;
}

bool VTClipInfObjWithBoundingPlanes(const VTVector& origin, const VTVector& dir, const VTPlane& bottom,
                                    const VTPlane& top, double dIn, double dOut, double* pdIn, double* pdOut,
                                    int* piSurfIn, int* piSurfOut) {
    *piSurfIn = 0;
    *piSurfOut = 0;
    if (!clip(origin, dir, bottom, 1, &dIn, &dOut, piSurfIn, piSurfOut) ||
        !clip(origin, dir, top, 2, &dIn, &dOut, piSurfIn, piSurfOut)) {
        return false;
    }
    *pdIn = dIn;
    *pdOut = dOut;
    return dOut > dIn;
}

bool VTRayCylinderIntersect(const VTVector& base, const VTVector& top, double radius, const VTVector& origin,
                            const VTVector& dir, VTVector* pPoint, double* pdT) {
    const VTVector axis = (top - base).GetNormalized();
    double dIn = 0.0;
    double dOut = 0.0;
    if (!VTRayInfCylinderIntersect(origin, dir, base, axis, radius, &dIn, &dOut)) {
        return false;
    }
    const VTPlane bottomPlane(-axis.x, -axis.y, -axis.z, axis * base);
    const VTPlane topPlane(axis.x, axis.y, axis.z, -(axis * top));
    int iSurfIn = 0;
    int iSurfOut = 0;
    if (!VTClipInfObjWithBoundingPlanes(origin, dir, bottomPlane, topPlane, dIn, dOut, &dIn, &dOut, &iSurfIn,
                                        &iSurfOut)) {
        return false;
    }
    if (pdT) {
        *pdT = dIn;
    }
    if (pPoint) {
        *pPoint = origin + dIn * dir;
    }
    return true;
}
