#pragma once

#include "LibCore/rvfExport.h"

class VTPlane;
class VTVector;

// Where rays meet cylinders, after J. M. Cychosz and W. N. Waggenspack, "Intersecting a Ray with a Cylinder", Graphics
// Gems IV, 1994.

/// Where a ray enters and leaves a cylinder without ends, at any t, negative ones included. `axis` must be of unit
/// length; the cylinder's surface belongs to it.
///
/// A ray exactly along the axis has no such t: -1e30 and 1e30 (the float values) are written, also outside, where the
/// answer is false.
ORV_API bool VTRayInfCylinderIntersect(const VTVector& origin, const VTVector& dir, const VTVector& base,
                                       const VTVector& axis, double radius, double* pdIn, double* pdOut);

/// Cuts the interval from dIn to dOut of a ray, as of a solid without ends, at two planes. What lies in front of a
/// plane, or in it, is cut off.
///
/// `*piSurfIn` and `*piSurfOut` tell where the ray enters and leaves what is left: 0 through the solid's own surface, 1
/// through `bottom`, 2 through `top`. They are 0 at first and change as planes cut, also when the answer is false.
/// `*pdIn` and `*pdOut` are written unless a plane leaves nothing, and the answer is whether out exceeds in.
ORV_API bool VTClipInfObjWithBoundingPlanes(const VTVector& origin, const VTVector& dir, const VTPlane& bottom,
                                            const VTPlane& top, double dIn, double dOut, double* pdIn, double* pdOut,
                                            int* piSurfIn, int* piSurfOut);

/// Where a ray enters a solid cylinder that stands on `base` and ends at `top`, through its curved surface or an end.
/// The t is negative from inside, and for a cylinder behind the origin. A ray that touches it in one
/// point or runs in the plane of an end does not enter, one along the curved surface does. False when base and top are
/// the same. Both outputs may be null.
ORV_API bool VTRayCylinderIntersect(const VTVector& base, const VTVector& top, double radius, const VTVector& origin,
                                    const VTVector& dir, VTVector* pPoint, double* pdT);
