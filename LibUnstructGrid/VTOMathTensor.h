#pragma once

#include "LibCore/rvfAssert.h"
#include "LibCore/rvfExport.h"
#include "LibUnstructGrid/VTOMathConstants.h"

#include <cmath>

class VTVector;

// Symmetric tensors, such as stresses, as flat lists of doubles. `iDim` is their length:
//
//   3   xx, yy, xy                  a plane state
//   6   xx, yy, zz, xy, yz, zx      the matrix (xx xy zx; xy yy yz; zx yz zz)
//
// `pfData` and an `iDim` of 3 or 6 are asserted; any other `iDim` is then taken for 6 as far as reading goes. A
// component that VTIsUndefined() makes every result undefined.

namespace vt::internal {

// Without a branch per component: nearly all tensors are defined.
template <int Count>
bool anyUndefined(const double* pfData) {
    bool bAny = false;
    for (int i = 0; i < Count; ++i) {
        bAny |= VTIsUndefined(pfData[i]);
    }
    return bAny;
}

inline bool hasUndefined(const double* pfData, int iDim) {
    return iDim == 3 ? anyUndefined<3>(pfData) : anyUndefined<6>(pfData);
}

/// What is under the root of the von Mises stress: a sum of squares in disguise, but for rounding.
inline double vonMisesSquare2D(const double* d) {
    return d[0] * d[0] + d[1] * d[1] - d[0] * d[1] + 3.0 * d[2] * d[2];
}

inline double vonMisesSquare3D(const double* d) {
    return d[0] * d[0] + d[1] * d[1] + d[2] * d[2] - (d[0] * d[1] + d[1] * d[2] + d[0] * d[2]) +
           3.0 * (d[3] * d[3] + d[4] * d[4] + d[5] * d[5]);
}

} // namespace vt::internal

/// The equivalent stress after von Mises, never negative: sqrt(xx^2 + yy^2 - xx yy + 3 xy^2) of a plane state. Where
/// rounding makes the radicand of a nearly hydrostatic state negative the result is 0. VT_UNDEFINED_DOUBLE when a
/// component is undefined.
inline double VTComputeVonMises(const double* pfData, int iDim) {
    RVF_ASSERT(pfData);
    RVF_ASSERT((iDim == 3) || (iDim == 6));
    if (vt::internal::hasUndefined(pfData, iDim)) {
        return VT_UNDEFINED_DOUBLE;
    }
    const double fSquare = iDim == 3 ? vt::internal::vonMisesSquare2D(pfData) : vt::internal::vonMisesSquare3D(pfData);
    return fSquare < 0.0 ? 0.0 : std::sqrt(fSquare);
}

/// Principal values, in descending order but for the plane states told below, and, where wanted, principal directions;
/// returns principal value number `iPrinc`, 0 to 2, or 0 and 1 for a plane state, which is asserted.
///
/// `pdPrincipals` and `pVectors` may be null. They need room for three entries also for a plane state, since an
/// undefined component writes VT_UNDEFINED_DOUBLE and VT_UNDEFINED_VECTOR to all three; otherwise a plane state writes
/// two values and two vectors. A tensor with all components below 1e-60 in magnitude has values 0 and zero vectors.
///
/// The values come from the trigonometric solution of the cubic with its angles at the precision of a float: the second
/// and the third value are off by up to about 1e-7 of the deviatoric part, and so may be the descending order of two
/// equal values.
///
/// A plane state, also one of six components whose zz, yz and zx are exactly 0, has one root that stands for the stress
/// out of the plane. The root of the smallest magnitude is taken for it and dropped, or set to 0; the two others are in
/// descending order, and of six components the 0 comes last whatever their signs. Where an in-plane value is nearly 0
/// itself the choice is a matter of rounding.
///
/// The directions of a plane state are those of VTEigen2D(), whose order is its own. Of six components each direction
/// belongs to its value and is of unit length, but its sense is free, the three need not form a right-handed frame, and
/// for a repeated value the direction may be zero.
ORV_API double VTComputePrincipalsPrivate(const double* pfData, int iDim, int iPrinc, double* pdPrincipals,
                                          VTVector* pVectors);

/// The above for a plane state and for six components; return the first principal value.
ORV_API double VTComputePrincipals2D(const double* pfData, double* pdPrincipals, VTVector* pVectors);
ORV_API double VTComputePrincipals3D(const double* pfData, double* pdPrincipals, VTVector* pVectors);

/// One principal value alone.
ORV_API double VTComputePrincipal(const double* pfData, int iDim, int iPrinc);
