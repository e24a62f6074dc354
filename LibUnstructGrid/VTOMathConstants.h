#pragma once

#include <limits>

/// Relative tolerances of VTFeq(). A double and a "real" (the value type of results) share theirs.
constexpr float VT_FLOAT_TOLERANCE = 1e-6f;
constexpr double VT_DOUBLE_TOLERANCE = 1e-12;
constexpr double VT_REAL_TOLERANCE = 1e-12;

/// Missing values as they are written: 0x7FFFFFFF and the largest finite float and double.
constexpr int VT_UNDEFINED_INT = 0x7FFFFFFF;
constexpr float VT_UNDEFINED_FLOAT = std::numeric_limits<float>::max();
constexpr double VT_UNDEFINED_DOUBLE = std::numeric_limits<double>::max();

/// Missing values as they are read: whatever is not below the limit, so that a value that lost digits on its way
/// through a text file is still recognised.
constexpr float VT_UNDEFINED_FLOAT_LIMIT = 2.99e38f;
constexpr double VT_UNDEFINED_DOUBLE_LIMIT = 1e308;

/// True when the value is not below the limit, so a NaN is undefined here. VTVector::IsUndefined() asks for a component
/// above the limit, and there a NaN is defined.
inline bool VTIsUndefined(float value) {
    return !(value < VT_UNDEFINED_FLOAT_LIMIT);
}

inline bool VTIsUndefined(double value) {
    return !(value < VT_UNDEFINED_DOUBLE_LIMIT);
}
