#pragma once

#include "LibCore/rvfExport.h"

class VTMatrix4;
class VTVector;

/// Right-handed rotations about the coordinate axes by an angle given as its cosine and sine. A null vector is ignored.
ORV_API void VTRotateX(VTVector* pVector, double fCos, double fSin);
ORV_API void VTRotateY(VTVector* pVector, double fCos, double fSin);
ORV_API void VTRotateZ(VTVector* pVector, double fCos, double fSin);

/// The squared distance of a point to the infinite line through two points; to the start when both are the same.
ORV_API double VTLinePointL2Dist(const VTVector& start, const VTVector& end, const VTVector& point);

/// The distance to that line.
ORV_API double VTLinePointDist(const VTVector& start, const VTVector& end, const VTVector& point);

/// The rotation that takes one base to another, and optionally one point to another.
///
/// A base is an array of two orthonormal vectors: pOrgB[0] goes to pNewB[0] and pOrgB[1] to pNewB[1]. With both points
/// the translation that takes *pOrgP to *pNewP is added; either may be null. Asserts the bases and the matrix. Angles
/// come from VTVectorGetAngle(): a turn of less than about 1.4e-3 radians is left out, and a half turn goes beyond
/// the true one by 9e-8. Always true.
ORV_API bool VTGetCoordSystemTransformation(const VTVector* pOrgB, const VTVector* pNewB, const VTVector* pOrgP,
                                            const VTVector* pNewP, VTMatrix4* pM);
