#pragma once

#include "LibCore/rvfExport.h"

class VTVector;
class VTVectorArray;

// Where rays and lines meet spheres.

/// The near hit of a ray on a sphere. Its t may be negative: from inside the sphere, and for a sphere behind the
/// origin, which is hit all the same. A tangent ray hits.
///
/// With a `dRadiusScale` above 0 the radius grows by that much per length from the origin to the centre, so that what
/// is far away is as easy to hit. `pPoint` may be null; `pdT` may not. A direction of length 0 hits from inside, and
/// then t is not divided by it and counts in the model's length unit.
ORV_API bool VTRaySphereIntersect(const VTVector& center, double radius, const VTVector& origin, const VTVector& dir,
                                  double dRadiusScale, VTVector* pPoint, double* pdT);

/// The number of points, 0 to 2, that the infinite line through two points has in common with a sphere.
///
/// `pPoints` is freed first and gets the two points, first the one farther along from p1 to p2. It may be null for a
/// line that is known to give fewer. A tangent line gives 1 and stores nothing: the array stays empty. So does the same
/// point twice; two points that differ by less than 1e-18 on every axis make no line, and points that come out of them
/// are infinite or NaN.
ORV_API int VTLineSphereIntersect(const VTVector& p1, const VTVector& p2, const VTVector& center, double radius,
                                  VTVectorArray* pPoints);
