#pragma once

#include "OrvCore/Vec3d.h"

#include <cstddef>
#include <limits>

namespace orv {

/// There is no index: the answer of a search that finds nothing, and a current index when nothing is current.
inline constexpr size_t UNDEFINED_SIZE_T = std::numeric_limits<size_t>::max();

/// There is no number: the largest finite double, 1.7976931348623157e+308. Only equality with it counts, so a NaN is a
/// defined number.
inline constexpr double UNDEFINED_DOUBLE = std::numeric_limits<double>::max();

/// There is no vector: UNDEFINED_DOUBLE in all three components.
inline constexpr Vec3d UNDEFINED_VECTOR(UNDEFINED_DOUBLE, UNDEFINED_DOUBLE, UNDEFINED_DOUBLE);

} // namespace orv
