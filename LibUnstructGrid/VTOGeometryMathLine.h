#pragma once

#include "LibCore/rvfExport.h"

class VTVector;

// Lines and segments.

/// Whether a point lies on the segment from a to b, the ends included.
///
/// An end is known by VTVectorsEqual(). A point between them must make p - a VTVectorsParallell() to b - a, and so lie
/// on the line to 1e-12 of itself on each axis. Where on the segment it lies is read from the first component of b - a
/// that is not below 1e-60 in magnitude; a segment without any, or without a length, has no points but its ends.
ORV_API bool VTPointOnLineSegment(const VTVector& a, const VTVector& b, const VTVector& p);

/// The closest approach of two infinite lines: one through l0 and l1, the other along a ray. Despite the name nothing
/// is clamped.
///
/// The points are l0 + s (l1 - l0) and origin + t dir; `pdS` and `pdT` may be null. False when all components of dir,
/// or of l1 - l0, are below the float 1e-30 in magnitude, or when their product of squared lengths and squared sine of
/// the angle between them is below it, as for parallel lines. What one computes of parallel lines is seldom exactly 0,
/// and so those of large coordinates meet somewhere far away.
ORV_API bool VTLineRayIntersect(const VTVector& l0, const VTVector& l1, const VTVector& origin, const VTVector& dir,
                                VTVector* pLinePoint, VTVector* pRayPoint, double* pdS, double* pdT);

/// The same for the lines through a0 and a1 and through b0 and b1.
ORV_API bool VTLineLineIntersect(const VTVector& a0, const VTVector& a1, const VTVector& b0, const VTVector& b1,
                                 VTVector* pPointA, VTVector* pPointB, double* pdS, double* pdT);

/// Whether a ray passes a segment, its ends included, by less than `dThickness`, at any t, negative ones included.
///
/// With a `dRadiusScale` above 0 the thickness grows by that much per length from the origin to the closest approach.
/// `*pPoint` is the closest point of the segment, not of the ray, and may be null. `*pdT`, which may not, is that of
/// the closest approach less the thickness over the length of dir, so about where the ray enters a tube of that radius.
ORV_API bool VTRayThickLineIntersect(const VTVector& l0, const VTVector& l1, double dThickness, const VTVector& origin,
                                     const VTVector& dir, double dRadiusScale, VTVector* pPoint, double* pdT);
