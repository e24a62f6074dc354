#pragma once

#include "OrvPlot2d/PlotGeometry_p.h"

#include <ostream>

namespace orv::plt {

inline void PrintTo(const Point& point, std::ostream* out) {
    *out << "(" << point.x << ", " << point.y << ")";
}

inline void PrintTo(const Rect& rect, std::ostream* out) {
    *out << "[" << rect.left << " to " << rect.right << ", " << rect.top << " to " << rect.bottom << "]";
}

} // namespace orv::plt
