#pragma once

#include "LibCore/rvfExport.h"

/// a / b without its fraction, or VT_UNDEFINED_INT when b is below 1e-30 in magnitude. The quotient must fit an int.
ORV_API int VTFloatDIV(float fA, float fB);

/// The square, negated for a negative value when the sign is to be kept. An int wraps around beyond 46340.
ORV_API int VTSquared(int iA, bool bKeepSign);

/// The same; a magnitude below 1e-18 gives exactly 0, for a float as well, whose own square would still be a number.
ORV_API float VTSquared(float fA, bool bKeepSign);
ORV_API double VTSquared(double fA, bool bKeepSign);

/// 2 to the power n modulo 32: VTPow2(32) is 1.
ORV_API unsigned int VTPow2(unsigned int n);

/// The least power of two that is not below n; 1 for 0.
///
/// It goes by the logarithm, and where that is not exact, at 2^29 and 2^31, a power of two does not return itself: the
/// next one comes back. Whatever would be 2^32 is 1.
ORV_API unsigned int VTRoundUpPow2(unsigned int n);

/// The logarithm to base 2, to within rounding: VTLog2(536870912.0) is not quite 29.
ORV_API double VTLog2(double fX);

/// -1 for a negative value, otherwise 1: also for 0, -0 and NaN.
inline float VTSign(float fX) {
    return fX < 0.0f ? -1.0f : 1.0f;
}

inline double VTSign(double fX) {
    return fX < 0.0 ? -1.0 : 1.0;
}

/// Rounds to a whole number, halves away from zero.
ORV_API float VTRound(float fX);
ORV_API double VTRound(double fX);

/// Rounds to a number of decimals, halves away from zero: VTRound(1.25, 1) is 1.3. Negative decimals round to tens,
/// hundreds and so on. Computed in double.
ORV_API float VTRound(float fX, int iDecimals);
ORV_API double VTRound(double fX, int iDecimals);

/// Rounds to a number of significant digits, halves away from zero: 1234 to 2 digits is 1200. A value below 1e-60 in
/// magnitude gives 0. An infinity and a NaN come back as they are. A value that is too large to be multiplied by 10 to
/// the power of `iDigits`, and in any case one above 1e308, gives an infinity or a NaN.
ORV_API double VTRoundToDigits(double fValue, int iDigits);
