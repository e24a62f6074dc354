#include "OrvPlot2d/PlotLayout_p.h"

#include "OrvPlot2d/AxisScale_p.h"
#include "OrvPlot2d/OverlayPlot.h"
#include "OrvVisualization/Font.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>

namespace orv::plt {
namespace {

// In units of the picture.
constexpr double TEXT_SIZE = 14.0;
constexpr double TITLE_SIZE = 17.0;
constexpr double PADDING = 10.0;
constexpr double GAP = 5.0;
constexpr double TICK_LENGTH = 5.0;
constexpr double COLUMN_WIDTH = 0.5; ///< Finer than a curve's line: no peak looks different.
constexpr double CLEARANCE = 4.0;    ///< Between a curve and the legend.
constexpr double CLOSEST_TICKS = 3.0;

constexpr double SMALLEST_TEXT = 8.0; ///< In pixels.

constexpr double ROOM = 0.01; ///< Above and below the curves, in heights of what they fill.

struct Margins {
    double left = 0.0;
    double top = 0.0;
    double right = 0.0;
    double bottom = 0.0;

    /// @return whether any of them had to grow
    bool growTo(const Margins& needed) {
        const Margins before = *this;
        left = std::max(left, std::ceil(needed.left));
        top = std::max(top, std::ceil(needed.top));
        right = std::max(right, std::ceil(needed.right));
        bottom = std::max(bottom, std::ceil(needed.bottom));
        return left > before.left || top > before.top || right > before.right || bottom > before.bottom;
    }
};

struct Extents {
    ValueRange x;
    ValueRange y;
};

/// Of all points that are drawn unless a range cuts them off.
Extents extentsOf(const OverlayPlot& plot) {
    const AxisSettings& axes = *plot.axisSettings();
    Extents extents;
    for (std::size_t c = 0; c < plot.curveCount(); ++c) {
        const Curve& curve = *plot.curve(c);
        for (std::size_t i = 0; i < curve.pointCount(); ++i) {
            const double x = curve.x()[i];
            const double y = curve.y()[i];
            if (hasPlace(x, axes.xAxis().isLogarithmic) && hasPlace(y, axes.yAxis().isLogarithmic)) {
                extents.x.add(x);
                extents.y.add(y);
            }
        }
    }
    return extents;
}

/// With room for the ends of curves, so that they do not run along the frame; but zero is a good place to end.
ValueRange withRoom(const ValueRange& range) {
    const double room = range.maximum * ROOM - range.minimum * ROOM;
    const double limit = std::numeric_limits<double>::max();
    const double lowest = range.minimum >= 0.0 ? 0.0 : -limit;
    const double highest = range.maximum <= 0.0 ? 0.0 : limit;
    return {std::max(range.minimum, lowest + room) - room, std::min(range.maximum, highest - room) + room};
}

/// The names for the legend. A single curve needs none when the axis says what it is.
std::vector<Str> namesFor(const OverlayPlot& plot) {
    std::vector<Str> names;
    const bool isTold = plot.curveCount() == 1 && !tidy(plot.axisSettings()->yAxis().title).isEmpty();
    for (std::size_t c = 0; c < plot.curveCount() && !isTold; ++c) {
        const Str name = tidy(plot.curve(c)->name());
        names.push_back(name.isEmpty() ? Str("Curve %1").arg(int(c + 1)) : name);
    }
    return names;
}

enum class Side { NONE, RIGHT, BELOW };

/// Places everything around a frame, and lets the margins grow until all of it has room.
class LayoutMaker {
public:
    LayoutMaker(const OverlayPlot& plot, const vis::Font& font, double width, double height)
        : m_plot(plot), m_font(font), m_extents(extentsOf(plot)) {
        const bool hasRoom = !plot.axisSettings()->yAxis().isLogarithmic && !m_extents.y.isEmpty();
        m_yRange = hasRoom ? withRoom(m_extents.y) : m_extents.y;
        m_layout.width = width;
        m_layout.height = height;
        m_layout.unit = std::max(std::min(width / 800.0, height / 600.0), SMALLEST_TEXT / TEXT_SIZE);
    }

    /// @param outside a legend that is not inside the frame
    PlotLayout make(const Legend& outside, Side side) {
        Margins margins;
        m_layout.legend = outside;
        m_side = side;
        // Each round can only take from the frame, and what stands around it hardly depends on the frame's size.
        for (int round = 0; round < 8; ++round) {
            if (!margins.growTo(placeAround(margins))) {
                break;
            }
        }
        for (std::size_t c = 0; c < m_plot.curveCount(); ++c) {
            m_layout.curves.push_back(
                linesOf(*m_plot.curve(c), *m_xScale, *m_yScale, m_layout.frame, COLUMN_WIDTH * m_layout.unit));
        }
        return std::move(m_layout);
    }

private:
    double textSize() const {
        return TEXT_SIZE * m_layout.unit;
    }

    double lineHeight() const {
        return m_font.lineHeight(textSize());
    }

    double units(double length) const {
        return length * m_layout.unit;
    }

    /// @return the margins that would have sufficed
    Margins placeAround(const Margins& margins) {
        Rect& frame = m_layout.frame;
        frame = {margins.left, margins.top, std::max(m_layout.width - margins.right, margins.left + 1.0),
                 std::max(m_layout.height - margins.bottom, margins.top + 1.0)};
        m_layout.texts.clear();
        chooseScales();
        Margins needed;
        const double titleBottom = placeTitle();
        needed.top = titleBottom + std::max(lineHeight() / 2.0, placeYFactor());
        const double yLabelWidth = placeYLabels();
        const Rect xLabels = placeXLabels();
        needed.left = placeYTitle(yLabelWidth, titleBottom);
        needed.left = std::max(needed.left, units(PADDING) + frame.left - xLabels.left);
        needed.right = units(PADDING) + std::max(0.0, xLabels.right - frame.right);
        needed.bottom = placeXTitle(xLabels) + units(PADDING);
        placeLegend(&needed);
        return needed;
    }

    void chooseScales() {
        const Rect& frame = m_layout.frame;
        const AxisSettings& axes = *m_plot.axisSettings();
        const int ySteps = int(std::clamp(frame.height() / (2.8 * lineHeight()), 2.0, 8.0));
        m_yScale.emplace(axes.yAxis(), m_yRange, ySteps);
        int xSteps = int(std::clamp(frame.width() / (4.5 * textSize()), 2.0, 10.0));
        do {
            m_xScale.emplace(axes.xAxis(), m_extents.x, xSteps);
        } while (--xSteps >= 2 && !xLabelsFit());
        m_layout.xTicks = along(positionsOf(m_xScale->ticks()), frame.left, frame.right);
        m_layout.xMinorTicks = unlessCrowded(along(m_xScale->minorTicks(), frame.left, frame.right));
        m_layout.yTicks = along(positionsOf(m_yScale->ticks()), frame.bottom, frame.top);
        m_layout.yMinorTicks = unlessCrowded(along(m_yScale->minorTicks(), frame.bottom, frame.top));
    }

    bool xLabelsFit() const {
        const std::vector<Tick>& ticks = m_xScale->ticks();
        for (std::size_t i = 1; i < ticks.size(); ++i) {
            const double distance = (ticks[i].position - ticks[i - 1].position) * m_layout.frame.width();
            const double widths =
                m_font.width(ticks[i - 1].label, textSize()) + m_font.width(ticks[i].label, textSize());
            if (distance < widths / 2.0 + textSize()) {
                return false;
            }
        }
        return true;
    }

    static std::vector<double> positionsOf(const std::vector<Tick>& ticks) {
        std::vector<double> positions;
        for (const Tick& tick : ticks) {
            positions.push_back(tick.position);
        }
        return positions;
    }

    static std::vector<double> along(std::vector<double> positions, double start, double end) {
        for (double& position : positions) {
            position = start + position * (end - start);
        }
        return positions;
    }

    /// None at all when they would be crowded.
    std::vector<double> unlessCrowded(std::vector<double> places) const {
        for (std::size_t i = 1; i < places.size(); ++i) {
            if (std::abs(places[i] - places[i - 1]) < units(CLOSEST_TICKS)) {
                return {};
            }
        }
        return places;
    }

    /// Up to two lines, one on a low picture.
    std::size_t titleLines() const {
        return m_layout.height < 18.0 * lineHeight() ? 1 : 2;
    }

    /// One below the other, centred about x as far as the borders allow.
    void placeCentered(const std::vector<Str>& lines, double size, double x, double top, double right) {
        double widest = 0.0;
        for (const Str& line : lines) {
            widest = std::max(widest, m_font.width(line, size));
        }
        const double center = std::max(units(PADDING) + widest / 2.0, std::min(x, right - widest / 2.0));
        for (const Str& line : lines) {
            m_layout.texts.push_back(placeText(m_font, line, size, {center - m_font.width(line, size) / 2.0, top}));
            top += m_font.lineHeight(size);
        }
    }

    /// @return how far down it reaches, with the gap behind it
    double placeTitle() {
        const double size = units(TITLE_SIZE);
        const double right = m_layout.width - units(PADDING);
        const std::vector<Str> lines = wrap(m_font, m_plot.title(), size, right - units(PADDING), titleLines());
        placeCentered(lines, size, m_layout.frame.center().x, units(PADDING), right);
        const double gap = lines.empty() ? 0.0 : units(GAP);
        return units(PADDING) + double(lines.size()) * m_font.lineHeight(size) + gap;
    }

    /// Over the axis.
    /// @return how much height it takes
    double placeYFactor() {
        if (m_yScale->factor().empty()) {
            return 0.0;
        }
        const double height = lineHeight() + units(GAP);
        m_layout.texts.push_back(
            placeText(m_font, m_yScale->factor(), textSize(), {m_layout.frame.left, m_layout.frame.top - height}));
        return height;
    }

    /// @return the width of the widest
    double placeYLabels() {
        double widest = 0.0;
        const double right = m_layout.frame.left - units(TICK_LENGTH + GAP);
        for (std::size_t i = 0; i < m_layout.yTicks.size(); ++i) {
            const Str label = m_yScale->ticks()[i].label;
            const double width = m_font.width(label, textSize());
            m_layout.texts.push_back(
                placeText(m_font, label, textSize(), {right - width, m_layout.yTicks[i] - lineHeight() / 2.0}));
            widest = std::max(widest, width);
        }
        return widest;
    }

    /// Leaves out what would run into the label before it.
    /// @return what they take
    Rect placeXLabels() {
        const Rect& frame = m_layout.frame;
        const double top = frame.bottom + units(TICK_LENGTH + GAP);
        Rect taken = {frame.right, top, frame.left, top + lineHeight()};
        double free = -m_layout.width;
        for (std::size_t i = 0; i < m_layout.xTicks.size(); ++i) {
            const Str label = m_xScale->ticks()[i].label;
            const double left = m_layout.xTicks[i] - m_font.width(label, textSize()) / 2.0;
            if (left >= free) {
                m_layout.texts.push_back(placeText(m_font, label, textSize(), {left, top}));
                const Rect& box = m_layout.texts.back().box;
                taken.left = std::min(taken.left, box.left);
                taken.right = std::max(taken.right, box.right);
                free = box.right + textSize() / 2.0;
            }
        }
        return taken;
    }

    /// Left of the labels, from bottom to top, between the plot's title and the labels of the other axis.
    /// @return how much width all that is left of the frame takes
    double placeYTitle(double labelWidth, double top) {
        const Rect& frame = m_layout.frame;
        const double bottom = frame.bottom + units(TICK_LENGTH + GAP);
        const std::vector<Str> lines =
            wrap(m_font, m_plot.axisSettings()->yAxis().title, textSize(), bottom - top, titleLines());
        const double labels = labelWidth + units(TICK_LENGTH + GAP);
        const double titles = lines.empty() ? 0.0 : double(lines.size()) * lineHeight() + units(GAP);
        double left = frame.left - labels - titles;
        for (const Str& line : lines) {
            const double width = m_font.width(line, textSize());
            const double start = std::max(top + width, std::min(frame.center().y + width / 2.0, bottom));
            m_layout.texts.push_back(placeUpward(m_font, line, textSize(), {left, start}));
            left += lineHeight();
        }
        return units(PADDING) + titles + labels;
    }

    /// Below the labels, with the factor in the right corner.
    /// @return how much height all that is below the frame takes
    double placeXTitle(const Rect& labels) {
        const Rect& frame = m_layout.frame;
        const double top = labels.bottom + units(GAP);
        double right = m_layout.width - units(PADDING);
        std::size_t lineCount = 0;
        if (!m_xScale->factor().empty()) {
            const double width = m_font.width(m_xScale->factor(), textSize());
            m_layout.texts.push_back(placeText(m_font, m_xScale->factor(), textSize(), {frame.right - width, top}));
            right = frame.right - width - textSize();
            lineCount = 1;
        }
        const std::vector<Str> lines =
            wrap(m_font, m_plot.axisSettings()->xAxis().title, textSize(), right - units(PADDING), titleLines());
        placeCentered(lines, textSize(), frame.center().x, top, right);
        lineCount = std::max(lineCount, lines.size());
        const double titles = lineCount == 0 ? 0.0 : units(GAP) + double(lineCount) * lineHeight();
        return labels.bottom - frame.bottom + titles;
    }

    void placeLegend(Margins* needed) {
        Legend& legend = m_layout.legend;
        const Rect& frame = m_layout.frame;
        if (m_side == Side::RIGHT) {
            legend.place({frame.right + units(2.0 * GAP), frame.top});
            needed->right = std::max(needed->right, units(PADDING + 2.0 * GAP) + legend.box.width());
        } else if (m_side == Side::BELOW) {
            const double left = std::min(frame.left, m_layout.width - units(PADDING) - legend.box.width());
            legend.place({left, m_layout.height - units(PADDING) - legend.box.height()});
            needed->bottom += legend.box.height() + units(GAP);
        }
    }

    const OverlayPlot& m_plot;
    const vis::Font& m_font;
    Extents m_extents;
    ValueRange m_yRange;
    Side m_side = Side::NONE;
    std::optional<AxisScale> m_xScale;
    std::optional<AxisScale> m_yScale;
    PlotLayout m_layout;
};

/// Moves the legend to a corner, or else to the middle of a border, where it touches no curve.
bool placeInside(const PlotLayout& layout, Legend* legend) {
    const double gap = 2.0 * GAP * layout.unit;
    const Rect inner = {layout.frame.left + gap, layout.frame.top + gap, layout.frame.right - gap - legend->box.width(),
                        layout.frame.bottom - gap - legend->box.height()};
    const Point middle = inner.center();
    const std::array<Point, 8> places = {{{inner.right, inner.top},
                                          {inner.left, inner.top},
                                          {inner.right, inner.bottom},
                                          {inner.left, inner.bottom},
                                          {inner.right, middle.y},
                                          {inner.left, middle.y},
                                          {middle.x, inner.top},
                                          {middle.x, inner.bottom}}};
    for (const Point& place : places) {
        legend->place(place);
        const bool isFree = std::none_of(layout.curves.begin(), layout.curves.end(), [&](const CurveLines& lines) {
            return touches(lines, legend->box, CLEARANCE * layout.unit);
        });
        if (isFree) {
            return true;
        }
    }
    return false;
}

/// Names that are whole count more than room for the curves. Of legends that are complete, the one at the right is what
/// readers expect; when it takes more than a quarter of the width, the one that takes less is better.
bool isRightBetter(const Legend& right, const Legend& below, double width, double height) {
    if (right.wholeNames != below.wholeNames) {
        return right.wholeNames > below.wholeNames;
    }
    const double share = right.box.width() / width;
    return share <= 0.25 || share <= below.box.height() / height;
}

} // namespace

PlotLayout layOut(const OverlayPlot& plot, const vis::Font& font, double width, double height) {
    PlotLayout layout = LayoutMaker(plot, font, width, height).make({}, Side::NONE);
    const std::vector<Str> names = namesFor(plot);
    if (names.empty()) {
        return layout;
    }
    const double size = TEXT_SIZE * layout.unit;
    Legend inside = makeLegend(font, names, size, {layout.frame.width() / 2.0, layout.frame.height() / 2.0});
    if (inside.isComplete() && placeInside(layout, &inside)) {
        layout.legend = inside;
        return layout;
    }
    // The title of the x axis may need a further line beside a legend.
    const double rightHeight = layout.frame.height() - font.lineHeight(size);
    const Legend right = makeLegend(font, names, size, {0.4 * width, rightHeight});
    const Legend below = makeLegend(font, names, size, {width - 2.0 * PADDING * layout.unit, 0.3 * height, true});
    return isRightBetter(right, below, width, height) ? LayoutMaker(plot, font, width, height).make(right, Side::RIGHT)
                                                      : LayoutMaker(plot, font, width, height).make(below, Side::BELOW);
}

} // namespace orv::plt
