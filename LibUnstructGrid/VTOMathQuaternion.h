#pragma once

#include "LibCore/rvfExport.h"

class VTVector;
class VTVector4;

// Quaternions are VTVector4 with the scalar part w last. Outputs must not be null. Angles are in radians.

/// The unit quaternion of a right-handed rotation. The axis may have any length; a zero axis gives (0, 0, 0,
/// cos(angle / 2)).
ORV_API void VTAxisToQuat(VTVector axis, double fAngle, VTVector4* pQuat);
ORV_API void VTAxisToQuat(double fX, double fY, double fZ, double fAngle, VTVector4* pQuat);

/// The axis and the angle, from 0 to 2 pi, of a unit quaternion.
///
/// The axis is not of unit length. It comes out scaled: the vector part times sqrt(1 - w^2), or the vector part as it
/// is where that root is below 0.0005. Normalise it, as VTVector::RotateVector() does. A w beyond -1 to 1 gives NaN.
ORV_API void VTQuatToAxis(const VTVector4& quat, VTVector* pAxis, double* pfAngle);

/// Scales to length 1. A length below 1e-60 leaves the quaternion as it is.
ORV_API void VTNormalizeQuat(VTVector4* pQuat);

/// The normalised Hamilton product a b: the rotation that does b first and then a. `pOut` may be either factor.
ORV_API void VTMultiplyQuats(const VTVector4& a, const VTVector4& b, VTVector4* pOut);
