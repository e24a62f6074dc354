#pragma once

#include "OrvPlot2d/PlotText_p.h"

#include <cstddef>
#include <vector>

namespace orv::plt {

/// The line that stands before a curve's name.
struct LegendKey {
    Point from;
    Point to;
    std::size_t curve = 0;
};

/// The names of the curves in rows and columns, one column after the other.
struct Legend {
    Rect box; ///< Its top left corner is (0, 0) until place() has been called.
    std::vector<LegendKey> keys;
    std::vector<PlacedText> texts; ///< One for each key and, when curves are left out, one that says how many.
    std::size_t curveCount = 0;    ///< Those that are left out included.
    std::size_t wholeNames = 0;    ///< How many names stand there unshortened.

    bool isEmpty() const;
    /// Neither is a curve left out nor a name shortened.
    bool isComplete() const;
    void place(const Point& topLeft);
};

/// What a legend may be like.
struct LegendRoom {
    double width = 0.0;
    double height = 0.0;
    bool isFlat = false; ///< Columns side by side are tried first, instead of rows.
};

/// Names that do not fit are shortened, and curves for which there is no room are left out and counted in the last
/// place. There is always at least one place.
Legend makeLegend(const vis::Font& font, const std::vector<Str>& names, double size, const LegendRoom& room);

} // namespace orv::plt
