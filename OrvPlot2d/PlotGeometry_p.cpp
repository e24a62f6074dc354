#include "OrvPlot2d/PlotGeometry_p.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace orv::plt {
namespace {

double distanceTo(const Point& point, const Point& from) {
    return std::max(std::abs(point.x - from.x), std::abs(point.y - from.y));
}

/// Narrows the stretch [begin, end] of `start` + t * `step` to what is between two borders.
bool narrow(double start, double step, double low, double high, double* begin, double* end) {
    if (step == 0.0) {
        return start >= low && start <= high;
    }
    const double a = (low - start) / step;
    const double b = (high - start) / step;
    *begin = std::max(*begin, std::min(a, b));
    *end = std::min(*end, std::max(a, b));
    return *begin <= *end;
}

} // namespace

double Rect::width() const {
    return right - left;
}

double Rect::height() const {
    return bottom - top;
}

Point Rect::center() const {
    return {(left + right) / 2.0, (top + bottom) / 2.0};
}

bool Rect::contains(const Point& point) const {
    return point.x >= left && point.x <= right && point.y >= top && point.y <= bottom;
}

bool Rect::overlaps(const Rect& other) const {
    return left < other.right && other.left < right && top < other.bottom && other.top < bottom;
}

bool clipSegment(Point* from, Point* to, const Rect& rect) {
    // Seen from the nearer end: from the far one, the rounding of t can be wider than the whole rectangle.
    if (distanceTo(*to, rect.center()) < distanceTo(*from, rect.center())) {
        return clipSegment(to, from, rect);
    }
    const Point start = *from;
    const Point step = {to->x - start.x, to->y - start.y};
    double begin = 0.0;
    double end = 1.0;
    if (!narrow(start.x, step.x, rect.left, rect.right, &begin, &end) ||
        !narrow(start.y, step.y, rect.top, rect.bottom, &begin, &end)) {
        return false;
    }
    auto at = [&](double t) {
        return Point{std::clamp(start.x + t * step.x, rect.left, rect.right),
                     std::clamp(start.y + t * step.y, rect.top, rect.bottom)};
    };
    // An end that is inside stays the very same number, so that the next segment is seen to go on from it.
    if (begin > 0.0) {
        *from = at(begin);
    }
    if (end < 1.0) {
        *to = at(end);
    }
    return true;
}

} // namespace orv::plt
