#include "OrvPlot2d/Legend_p.h"

#include "OrvVisualization/Font.h"

#include <algorithm>
#include <cmath>

namespace orv::plt {
namespace {

// All in sizes of the text.
constexpr double PADDING = 0.5;
constexpr double KEY_WIDTH = 2.8;
constexpr double KEY_GAP = 0.5;
constexpr double COLUMN_GAP = 1.2;
constexpr double ROW_HEIGHT = 1.3;

struct LegendGrid {
    std::size_t rows = 1;
    std::size_t columns = 1;
    double nameWidth = 0.0;
};

std::size_t countOf(double whole, double part) {
    return std::size_t(std::max(1.0, std::floor(whole / part + 1e-9)));
}

LegendGrid gridFor(std::size_t count, double longestName, double size, const LegendRoom& room) {
    const double innerWidth = room.width - 2.0 * PADDING * size;
    LegendGrid grid;
    grid.nameWidth = std::max(0.0, std::min(longestName, innerWidth - (KEY_WIDTH + KEY_GAP) * size));
    const double columnWidth = grid.nameWidth + (KEY_WIDTH + KEY_GAP + COLUMN_GAP) * size;
    const std::size_t mostColumns = std::min(count, countOf(innerWidth + COLUMN_GAP * size, columnWidth));
    const std::size_t mostRows = std::min(count, countOf(room.height - 2.0 * PADDING * size, ROW_HEIGHT * size));
    if (room.isFlat) {
        grid.rows = std::min(mostRows, (count + mostColumns - 1) / mostColumns);
        grid.columns = std::min(mostColumns, (count + grid.rows - 1) / grid.rows);
    } else {
        grid.columns = std::min(mostColumns, (count + mostRows - 1) / mostRows);
        grid.rows = std::min(mostRows, (count + grid.columns - 1) / grid.columns);
    }
    return grid;
}

void move(Point* point, const Point& by) {
    point->x += by.x;
    point->y += by.y;
}

void move(Rect* rect, const Point& by) {
    *rect = {rect->left + by.x, rect->top + by.y, rect->right + by.x, rect->bottom + by.y};
}

} // namespace

bool Legend::isEmpty() const {
    return texts.empty();
}

bool Legend::isComplete() const {
    return wholeNames == curveCount;
}

void Legend::place(const Point& topLeft) {
    const Point by = {topLeft.x - box.left, topLeft.y - box.top};
    move(&box, by);
    for (LegendKey& key : keys) {
        move(&key.from, by);
        move(&key.to, by);
    }
    for (PlacedText& text : texts) {
        move(&text.start, by);
        move(&text.box, by);
    }
}

Legend makeLegend(const vis::Font& font, const std::vector<Str>& names, double size, const LegendRoom& room) {
    Legend legend;
    if (names.empty()) {
        return legend;
    }
    legend.curveCount = names.size();
    double longestName = 0.0;
    for (const Str& name : names) {
        longestName = std::max(longestName, font.width(name, size));
    }
    const LegendGrid grid = gridFor(names.size(), longestName, size, room);
    const std::size_t places = grid.rows * grid.columns;
    const std::size_t shown = names.size() <= places ? names.size() : places - 1;
    const double columnWidth = grid.nameWidth + (KEY_WIDTH + KEY_GAP + COLUMN_GAP) * size;
    const double rowHeight = ROW_HEIGHT * size;
    const double textHeight = font.ascent(size) + font.descent(size);
    auto topLeftOf = [&](std::size_t place) {
        return Point{PADDING * size + double(place / grid.rows) * columnWidth,
                     PADDING * size + double(place % grid.rows) * rowHeight};
    };
    for (std::size_t i = 0; i < shown; ++i) {
        const Point at = topLeftOf(i);
        const double middle = at.y + rowHeight / 2.0;
        const Str name = shortenMiddle(font, names[i], size, grid.nameWidth);
        legend.keys.push_back({{at.x, middle}, {at.x + KEY_WIDTH * size, middle}, i});
        legend.texts.push_back(
            placeText(font, name, size, {at.x + (KEY_WIDTH + KEY_GAP) * size, middle - textHeight / 2.0}));
        legend.wholeNames += name == names[i] ? 1 : 0;
    }
    if (shown < names.size()) {
        const Point at = topLeftOf(shown);
        const Str text =
            shortenMiddle(font, Str("+ %1 more").arg(int(names.size() - shown)), size, columnWidth - COLUMN_GAP * size);
        legend.texts.push_back(placeText(font, text, size, {at.x, at.y + (rowHeight - textHeight) / 2.0}));
    }
    legend.box = {0.0, 0.0, 2.0 * PADDING * size + double(grid.columns) * columnWidth - COLUMN_GAP * size,
                  2.0 * PADDING * size + double(grid.rows) * rowHeight};
    return legend;
}

} // namespace orv::plt
