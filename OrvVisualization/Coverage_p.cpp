#include "OrvVisualization/Coverage_p.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace orv::vis {
namespace {

constexpr double TOLERANCE = 0.02;
constexpr int MAXIMUM_PIECES = 100;

double secondDifference(const OutlinePoint& a, const OutlinePoint& b, const OutlinePoint& c) {
    return std::hypot(a.x - 2 * b.x + c.x, a.y - 2 * b.y + c.y);
}

/// A cubic curve deviates from n straight pieces by at most 6/8 of its largest second difference / n^2.
int pieceCount(const OutlinePoint& begin, const OutlineStep& curve) {
    const double bend = std::max(secondDifference(begin, curve.control1, curve.control2),
                                 secondDifference(curve.control1, curve.control2, curve.end));
    return int(std::clamp(std::ceil(std::sqrt(0.75 * bend / TOLERANCE)), 1.0, double(MAXIMUM_PIECES)));
}

OutlinePoint pointAt(const OutlinePoint& begin, const OutlineStep& curve, double t) {
    const double s = 1.0 - t;
    const double weights[] = {s * s * s, 3 * s * s * t, 3 * s * t * t, t * t * t};
    return {weights[0] * begin.x + weights[1] * curve.control1.x + weights[2] * curve.control2.x +
                weights[3] * curve.end.x,
            weights[0] * begin.y + weights[1] * curve.control1.y + weights[2] * curve.control2.y +
                weights[3] * curve.end.y};
}

int clampedPixel(double place, int size) {
    return int(std::clamp(place, 0.0, double(size)));
}

bool isDrawable(const OutlinePoint& point) {
    return std::abs(point.x) <= Coverage::MAXIMUM_COORDINATE && std::abs(point.y) <= Coverage::MAXIMUM_COORDINATE;
}

bool isDrawable(const Outline& outline) {
    return std::all_of(outline.begin(), outline.end(), [](const OutlineStep& step) {
        return isDrawable(step.end) && isDrawable(step.control1) && isDrawable(step.control2);
    });
}

} // namespace

Coverage::Coverage(const Outline& outline, int width, int height) {
    if (isDrawable(outline)) {
        setBounds(outline, width, height);
    }
    if (m_left < m_right && m_top < m_bottom) {
        m_stride = std::size_t(m_right - m_left) + 2;
        m_gains.resize(m_stride * std::size_t(m_bottom - m_top));
        addOutline(outline);
    }
}

int Coverage::left() const {
    return m_left;
}

int Coverage::top() const {
    return m_top;
}

int Coverage::right() const {
    return m_right;
}

int Coverage::bottom() const {
    return m_bottom;
}

void Coverage::setBounds(const Outline& outline, int width, int height) {
    constexpr double FAR = std::numeric_limits<double>::infinity();
    OutlinePoint low = {FAR, FAR};
    OutlinePoint high = {-FAR, -FAR};
    auto include = [&](const OutlinePoint& point) {
        low = {std::min(low.x, point.x), std::min(low.y, point.y)};
        high = {std::max(high.x, point.x), std::max(high.y, point.y)};
    };
    for (const OutlineStep& step : outline) {
        if (step.kind == OutlineStep::Kind::CURVE) {
            include(step.control1);
            include(step.control2);
        }
        if (step.kind != OutlineStep::Kind::CLOSE) {
            include(step.end);
        }
    }
    m_left = clampedPixel(std::floor(low.x), width);
    m_top = clampedPixel(std::floor(low.y), height);
    m_right = clampedPixel(std::ceil(high.x), width);
    m_bottom = clampedPixel(std::ceil(high.y), height);
}

void Coverage::addOutline(const Outline& outline) {
    OutlinePoint first;
    OutlinePoint pen;
    for (const OutlineStep& step : outline) {
        switch (step.kind) {
        case OutlineStep::Kind::MOVE:
            first = step.end;
            break;
        case OutlineStep::Kind::LINE:
            addLine(pen, step.end);
            break;
        case OutlineStep::Kind::CURVE:
            addCurve(pen, step);
            break;
        case OutlineStep::Kind::CLOSE:
            addLine(pen, first);
            break;
        }
        pen = step.kind == OutlineStep::Kind::CLOSE ? first : step.end;
    }
}

void Coverage::addCurve(const OutlinePoint& begin, const OutlineStep& curve) {
    const int pieces = pieceCount(begin, curve);
    OutlinePoint from = begin;
    for (int i = 1; i <= pieces; ++i) {
        const OutlinePoint to = i == pieces ? curve.end : pointAt(begin, curve, double(i) / pieces);
        addLine(from, to);
        from = to;
    }
}

void Coverage::addLine(const OutlinePoint& begin, const OutlinePoint& end) {
    if (begin.y == end.y) {
        return;
    }
    const double sense = begin.y < end.y ? 1.0 : -1.0;
    const OutlinePoint& upper = sense > 0 ? begin : end;
    const OutlinePoint& lower = sense > 0 ? end : begin;
    const double slope = (lower.x - upper.x) / (lower.y - upper.y);
    const double firstY = std::clamp(upper.y, double(m_top), double(m_bottom));
    const double lastY = std::clamp(lower.y, double(m_top), double(m_bottom));
    for (int y = int(std::floor(firstY)); y < lastY; ++y) {
        const double fromY = std::max(firstY, double(y));
        const double toY = std::min(lastY, y + 1.0);
        addInRow(m_gains.data() + std::size_t(y - m_top) * m_stride, upper.x + (fromY - upper.y) * slope,
                 upper.x + (toY - upper.y) * slope, sense * (toY - fromY));
    }
}

/// A straight piece within one row. What is left of the row belongs to its first pixel, what is right of it to none.
void Coverage::addInRow(float* row, double fromX, double toX, double height) {
    const double width = m_right - m_left;
    double low = std::min(fromX, toX) - m_left;
    double high = std::max(fromX, toX) - m_left;
    if (low < 0.0 && high > 0.0) {
        const double outside = height * -low / (high - low);
        row[0] += float(outside);
        height -= outside;
        low = 0.0;
    }
    if (low < width && high > width) {
        height *= (width - low) / (high - low);
        high = width;
    }
    low = std::clamp(low, 0.0, width);
    high = std::clamp(high, 0.0, width);
    const int first = int(low);
    const int last = int(high);
    if (first == last) {
        // The trapezoid between the piece and the pixel's right side; the rest is for all pixels behind.
        const double share = height * (1.0 - ((low + high) / 2 - first));
        row[first] += float(share);
        row[first + 1] += float(height - share);
        return;
    }
    const double perPixel = height / (high - low);
    // Of the height that is reached at a pixel's right side, what has been given so far.
    double given = 0.0;
    double covered = 0.0;
    for (int x = first; x <= last; ++x) {
        const double begin = std::max(low, double(x));
        const double end = std::min(high, x + 1.0);
        const double gained = perPixel * (end - begin);
        const double area = covered + gained * (x + 1.0 - (begin + end) / 2);
        row[x] += float(area - given);
        given = area;
        covered += gained;
    }
    row[last + 1] += float(height - given);
}

float Coverage::shareOf(float sum) {
    return std::min(std::abs(sum), 1.0F);
}

} // namespace orv::vis
