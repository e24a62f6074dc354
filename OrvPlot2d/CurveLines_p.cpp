#include "OrvPlot2d/CurveLines_p.h"

#include "OrvPlot2d/AxisScale_p.h"
#include "OrvPlot2d/Curve.h"

#include <algorithm>
#include <cmath>

namespace orv::plt {
namespace {

/// No picture is so large; sums and products with it stay finite.
constexpr double FARTHEST = 1e150;

/// How far, in lengths of the axis, rounding may carry a number beyond the end that it is to lie on. It does so when an
/// axis is narrow and far from zero. Less than a picture shows.
constexpr double ROUNDING = 1e-4;

double withoutRounding(double position) {
    if (position < 0.0 && position > -ROUNDING) {
        return 0.0;
    }
    return position > 1.0 && position < 1.0 + ROUNDING ? 1.0 : position;
}

/// Collects points, thins them out, cuts them off at the frame.
class LineMaker {
public:
    LineMaker(const Rect& frame, double columnWidth) : m_frame(frame), m_columnWidth(columnWidth) {
        m_lines.offsets.push_back(0);
    }

    void add(const Point& point) {
        const double column = std::floor(point.x / m_columnWidth);
        if (m_columnPoints > 0 && column != m_column) {
            finishColumn();
        }
        if (m_columnPoints == 0) {
            m_column = column;
            m_first = m_lowest = m_highest = {point, 0};
        }
        m_last = {point, m_columnPoints};
        if (point.y > m_lowest.point.y) {
            m_lowest = m_last;
        }
        if (point.y < m_highest.point.y) {
            m_highest = m_last;
        }
        ++m_columnPoints;
        m_extent.add(point, m_hasPoints);
        m_hasPoints = true;
    }

    /// At a gap and at the end.
    void finishLine() {
        if (!m_hasPoints) {
            return;
        }
        if (m_extent.isWithin(m_columnWidth)) {
            m_columnPoints = 0;
            addLonePoint(m_first.point);
        } else {
            finishColumn();
            breakLine();
        }
        m_hasPoints = false;
        m_hasPrevious = false;
    }

    CurveLines take() {
        return std::move(m_lines);
    }

private:
    struct NumberedPoint {
        Point point;
        std::size_t number = 0;
    };

    struct Extent {
        Rect rect;

        void add(const Point& point, bool isFurther) {
            rect = isFurther ? Rect{std::min(rect.left, point.x), std::min(rect.top, point.y),
                                    std::max(rect.right, point.x), std::max(rect.bottom, point.y)}
                             : Rect{point.x, point.y, point.x, point.y};
        }

        bool isWithin(double size) const {
            return rect.width() < size && rect.height() < size;
        }
    };

    void finishColumn() {
        const bool lowestComesFirst = m_lowest.number < m_highest.number;
        const NumberedPoint kept[] = {m_first, lowestComesFirst ? m_lowest : m_highest,
                                      lowestComesFirst ? m_highest : m_lowest, m_last};
        for (std::size_t i = 0; i < 4; ++i) {
            if (i == 0 || kept[i].number != kept[i - 1].number) {
                lineTo(kept[i].point);
            }
        }
        m_columnPoints = 0;
    }

    void lineTo(const Point& point) {
        if (m_hasPrevious) {
            Point from = m_previous;
            Point to = point;
            if (clipSegment(&from, &to, m_frame)) {
                addSegment(from, to);
            }
        }
        m_previous = point;
        m_hasPrevious = true;
    }

    void addSegment(const Point& from, const Point& to) {
        std::vector<Point>& points = m_lines.points;
        const bool continues = points.size() > m_lines.offsets.back() && points.back() == from;
        if (!continues) {
            breakLine();
            points.push_back(from);
        }
        points.push_back(to);
    }

    void breakLine() {
        if (m_lines.points.size() > m_lines.offsets.back()) {
            m_lines.offsets.push_back(m_lines.points.size());
        }
    }

    void addLonePoint(const Point& point) {
        if (m_frame.contains(point)) {
            m_lines.lonePoints.push_back(point);
        }
    }

    Rect m_frame;
    double m_columnWidth;
    CurveLines m_lines;
    double m_column = 0.0;
    std::size_t m_columnPoints = 0;
    NumberedPoint m_first, m_lowest, m_highest, m_last;
    Extent m_extent;
    bool m_hasPoints = false;
    Point m_previous;
    bool m_hasPrevious = false;
};

} // namespace

std::size_t CurveLines::lineCount() const {
    return offsets.size() - 1;
}

std::span<const Point> CurveLines::line(std::size_t index) const {
    return std::span(points).subspan(offsets[index], offsets[index + 1] - offsets[index]);
}

CurveLines linesOf(const Curve& curve, const AxisScale& xScale, const AxisScale& yScale, const Rect& frame,
                   double columnWidth) {
    LineMaker maker(frame, columnWidth);
    for (std::size_t i = 0; i < curve.pointCount(); ++i) {
        const double x = withoutRounding(xScale.position(curve.x()[i]));
        const double y = withoutRounding(yScale.position(curve.y()[i]));
        if (std::isnan(x) || std::isnan(y)) {
            maker.finishLine();
        } else {
            maker.add({std::clamp(frame.left + x * frame.width(), -FARTHEST, FARTHEST),
                       std::clamp(frame.bottom - y * frame.height(), -FARTHEST, FARTHEST)});
        }
    }
    maker.finishLine();
    return maker.take();
}

bool touches(const CurveLines& lines, const Rect& rect, double margin) {
    const Rect wide = {rect.left - margin, rect.top - margin, rect.right + margin, rect.bottom + margin};
    for (std::size_t i = 0; i < lines.lineCount(); ++i) {
        const std::span<const Point> line = lines.line(i);
        for (std::size_t k = 1; k < line.size(); ++k) {
            Point from = line[k - 1];
            Point to = line[k];
            if (clipSegment(&from, &to, wide)) {
                return true;
            }
        }
    }
    return std::any_of(lines.lonePoints.begin(), lines.lonePoints.end(),
                       [&](const Point& point) { return wide.contains(point); });
}

} // namespace orv::plt
