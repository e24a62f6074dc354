#pragma once

#include "LibCore/rvfExport.h"
#include "LibUnstructGrid/VTOMathConstants.h"

#include <cmath>
#include <cstdlib>

/// No value at all: below 1e-30 in magnitude for a float, below 1e-60 for a double.
inline bool VTFeqZero(float fA) {
    return std::fabs(fA) < 1e-30f;
}

inline bool VTFeqZero(double fA) {
    return std::fabs(fA) < 1e-60;
}

namespace vt::internal {

template <typename T>
bool relativelyEqual(T a, T b, T tolerance) {
    const bool bFirstIsLarger = std::abs(a) > std::abs(b);
    const T larger = bFirstIsLarger ? a : b;
    const T smaller = bFirstIsLarger ? b : a;
    if (!(std::abs(larger) > T(0))) {
        return true;
    }
    if (smaller == T(0)) {
        return VTFeqZero(larger);
    }
    const T quotient = smaller / larger;
    return !(T(1) - tolerance > quotient) && !(quotient > T(1) + tolerance);
}

} // namespace vt::internal

/// Whether two numbers are equal but for a part of the larger one. The comparison is purely relative: 1e-31f equals 0
/// by VTFeqZero(), yet 1e-31f and 1e-35f differ. Finite numbers of opposite sign are never equal, -0 and 0 apart.
///
/// A NaN equals everything, and so does an infinity every other infinity, since their quotient is a NaN.
inline bool VTFeq(float fA, float fB, const float& fTolerance) {
    return fA == fB || vt::internal::relativelyEqual(fA, fB, fTolerance);
}

inline bool VTFeq(double fA, double fB, const double& fTolerance) {
    return vt::internal::relativelyEqual(fA, fB, fTolerance);
}

/// Order outside the tolerance VT_FLOAT_TOLERANCE of VTFeq(). A NaN is neither less nor greater, so it is less or
/// equal, and greater or equal, to everything.
inline bool VTFIsLess(float fA, float fB) {
    return !VTFeq(fA, fB, VT_FLOAT_TOLERANCE) && fA < fB;
}

inline bool VTFIsGreater(float fA, float fB) {
    return !VTFeq(fA, fB, VT_FLOAT_TOLERANCE) && fA > fB;
}

inline bool VTFIsLessOrEqual(float fA, float fB) {
    return !VTFIsGreater(fA, fB);
}

inline bool VTFIsGreaterOrEqual(float fA, float fB) {
    return !VTFIsLess(fA, fB);
}
