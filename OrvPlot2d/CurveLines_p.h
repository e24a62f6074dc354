#pragma once

#include "OrvPlot2d/PlotGeometry_p.h"

#include <cstddef>
#include <span>
#include <vector>

namespace orv::plt {

class AxisScale;
class Curve;

/// What is drawn of a curve.
struct CurveLines {
    std::vector<Point> points;        ///< Of all lines, one line behind the other.
    std::vector<std::size_t> offsets; ///< Where each line begins in `points`, and the number of points as one more.
    std::vector<Point> lonePoints;    ///< Points with gaps on both sides, which a line would not show.

    std::size_t lineCount() const;
    std::span<const Point> line(std::size_t index) const;
};

/// The lines of a curve within `frame`. Points that have no place on an axis are gaps; what leaves the frame is cut off
/// at its border.
///
/// Of the points that follow each other within one column of the picture only the first, the lowest, the highest and
/// the last stay, so that millions of points make a small picture and no peak is lost. A line not longer and higher
/// than a column is one lone point.
CurveLines linesOf(const Curve& curve, const AxisScale& xScale, const AxisScale& yScale, const Rect& frame,
                   double columnWidth);

/// Whether anything of a curve, thickened by `margin`, lies in a rectangle.
bool touches(const CurveLines& lines, const Rect& rect, double margin);

} // namespace orv::plt
