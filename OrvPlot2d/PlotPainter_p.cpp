#include "OrvPlot2d/PlotPainter_p.h"

#include "OrvPlot2d/CurveStyle_p.h"
#include "OrvPlot2d/PlotLayout_p.h"
#include "OrvVisualization/Font.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace orv::plt {
namespace {

// In units of the picture.
constexpr double CURVE_WIDTH = 2.0;
constexpr double THINNEST_CURVE = 1.5; ///< In pixels: wider than the frame.
constexpr double MARKER_RADIUS = 3.5;
constexpr double TICK_LENGTH = 5.0;
constexpr double MINOR_TICK_LENGTH = 2.5;

constexpr double INK = 0.13;
constexpr double GRID_GREY = 0.86;
constexpr double LEGEND_BORDER_GREY = 0.7;

class Painter {
public:
    Painter(cairo_t* cairo, const PlotLayout& layout, const vis::Font& font)
        : m_cairo(cairo), m_layout(layout), m_font(font), m_thin(std::max(1.0, std::round(layout.unit))) {}

    void paint() {
        setGrey(1.0);
        cairo_paint(m_cairo);
        paintGrid();
        paintFrame();
        for (std::size_t i = 0; i < m_layout.curves.size(); ++i) {
            paintLines(m_layout.curves[i], styleOf(i));
            paintMarkers(m_layout.curves[i], styleOf(i));
        }
        paintLegend();
        setGrey(INK);
        for (const PlacedText& text : m_layout.texts) {
            paintText(text);
        }
    }

private:
    void setGrey(double grey) {
        cairo_set_source_rgb(m_cairo, grey, grey, grey);
    }

    void setColour(const CurveStyle& style) {
        cairo_set_source_rgb(m_cairo, style.red / 255.0, style.green / 255.0, style.blue / 255.0);
    }

    /// Thin lines lie on whole pixels, where they are sharp.
    double sharp(double place) const {
        return std::floor(place) + std::fmod(m_thin, 2.0) / 2.0;
    }

    void strokeThin(double grey) {
        setGrey(grey);
        cairo_set_line_width(m_cairo, m_thin);
        cairo_stroke(m_cairo);
    }

    void addVertical(double x, double from, double to) {
        cairo_move_to(m_cairo, sharp(x), sharp(from));
        cairo_line_to(m_cairo, sharp(x), sharp(to));
    }

    void addHorizontal(double y, double from, double to) {
        cairo_move_to(m_cairo, sharp(from), sharp(y));
        cairo_line_to(m_cairo, sharp(to), sharp(y));
    }

    void paintGrid() {
        const Rect& frame = m_layout.frame;
        for (const double x : m_layout.xTicks) {
            addVertical(x, frame.top, frame.bottom);
        }
        for (const double y : m_layout.yTicks) {
            addHorizontal(y, frame.left, frame.right);
        }
        strokeThin(GRID_GREY);
    }

    void paintFrame() {
        const Rect& frame = m_layout.frame;
        addTicks(m_layout.xTicks, m_layout.yTicks, TICK_LENGTH);
        addTicks(m_layout.xMinorTicks, m_layout.yMinorTicks, MINOR_TICK_LENGTH);
        cairo_rectangle(m_cairo, sharp(frame.left), sharp(frame.top), sharp(frame.right) - sharp(frame.left),
                        sharp(frame.bottom) - sharp(frame.top));
        strokeThin(INK);
    }

    void addTicks(const std::vector<double>& xTicks, const std::vector<double>& yTicks, double length) {
        const Rect& frame = m_layout.frame;
        for (const double x : xTicks) {
            addVertical(x, frame.bottom, frame.bottom + length * m_layout.unit);
        }
        for (const double y : yTicks) {
            addHorizontal(y, frame.left - length * m_layout.unit, frame.left);
        }
    }

    void setCurvePen(const CurveStyle& style) {
        const double width = std::max(CURVE_WIDTH * m_layout.unit, THINNEST_CURVE);
        std::vector<double> dashes = style.dashes;
        for (double& dash : dashes) {
            dash *= width;
        }
        setColour(style);
        cairo_set_line_width(m_cairo, width);
        cairo_set_line_join(m_cairo, CAIRO_LINE_JOIN_ROUND);
        cairo_set_dash(m_cairo, dashes.data(), int(dashes.size()), 0.0);
    }

    /// All lines of a curve are one path.
    void paintLines(const CurveLines& lines, const CurveStyle& style) {
        if (lines.lineCount() == 0) {
            return;
        }
        cairo_save(m_cairo);
        setCurvePen(style);
        for (std::size_t i = 0; i < lines.lineCount(); ++i) {
            cairo_new_sub_path(m_cairo);
            for (const Point& point : lines.line(i)) {
                cairo_line_to(m_cairo, point.x, point.y);
            }
        }
        cairo_stroke(m_cairo);
        cairo_restore(m_cairo);
    }

    void paintMarkers(const CurveLines& lines, const CurveStyle& style) {
        for (const Point& point : lines.lonePoints) {
            addMarker(point, style.marker);
        }
        if (!lines.lonePoints.empty()) {
            setColour(style);
            cairo_fill(m_cairo);
        }
    }

    void addMarker(const Point& point, CurveStyle::Marker marker) {
        const double radius = MARKER_RADIUS * m_layout.unit;
        switch (marker) {
        case CurveStyle::Marker::CIRCLE:
            cairo_new_sub_path(m_cairo);
            cairo_arc(m_cairo, point.x, point.y, radius, 0.0, 2.0 * std::numbers::pi);
            break;
        case CurveStyle::Marker::SQUARE:
            addPolygon(point, {{-radius, -radius}, {radius, -radius}, {radius, radius}, {-radius, radius}});
            break;
        case CurveStyle::Marker::DIAMOND:
            addPolygon(point, {{0.0, -1.4 * radius}, {1.4 * radius, 0.0}, {0.0, 1.4 * radius}, {-1.4 * radius, 0.0}});
            break;
        case CurveStyle::Marker::TRIANGLE:
            addPolygon(point, {{0.0, -1.3 * radius}, {1.3 * radius, radius}, {-1.3 * radius, radius}});
            break;
        }
    }

    void addPolygon(const Point& center, std::initializer_list<Point> corners) {
        cairo_new_sub_path(m_cairo);
        for (const Point& corner : corners) {
            cairo_line_to(m_cairo, center.x + corner.x, center.y + corner.y);
        }
        cairo_close_path(m_cairo);
    }

    void paintLegend() {
        const Legend& legend = m_layout.legend;
        if (legend.isEmpty()) {
            return;
        }
        if (legend.box.overlaps(m_layout.frame)) {
            addBox(legend.box);
            setGrey(1.0);
            cairo_fill_preserve(m_cairo);
            strokeThin(LEGEND_BORDER_GREY);
        }
        for (const LegendKey& key : legend.keys) {
            paintKey(key);
        }
        setGrey(INK);
        for (const PlacedText& text : legend.texts) {
            paintText(text);
        }
    }

    /// As the curve is drawn: as a line, as lone points, or as both.
    void paintKey(const LegendKey& key) {
        const CurveLines& lines = m_layout.curves[key.curve];
        if (lines.lineCount() > 0 || lines.lonePoints.empty()) {
            paintLines({{key.from, key.to}, {0, 2}, {}}, styleOf(key.curve));
        }
        if (!lines.lonePoints.empty()) {
            paintMarkers({{}, {0}, {{(key.from.x + key.to.x) / 2.0, key.from.y}}}, styleOf(key.curve));
        }
    }

    void addBox(const Rect& box) {
        cairo_rectangle(m_cairo, sharp(box.left), sharp(box.top), sharp(box.right) - sharp(box.left),
                        sharp(box.bottom) - sharp(box.top));
    }

    void paintText(const PlacedText& text) {
        cairo_save(m_cairo);
        cairo_translate(m_cairo, text.start.x, text.start.y);
        if (text.isUpward) {
            cairo_rotate(m_cairo, -std::numbers::pi / 2.0);
        }
        for (const vis::OutlineStep& step : m_font.outline(text.text, text.size)) {
            addStep(step);
        }
        cairo_fill(m_cairo);
        cairo_restore(m_cairo);
    }

    void addStep(const vis::OutlineStep& step) {
        switch (step.kind) {
        case vis::OutlineStep::Kind::MOVE:
            cairo_move_to(m_cairo, step.end.x, step.end.y);
            break;
        case vis::OutlineStep::Kind::LINE:
            cairo_line_to(m_cairo, step.end.x, step.end.y);
            break;
        case vis::OutlineStep::Kind::CURVE:
            cairo_curve_to(m_cairo, step.control1.x, step.control1.y, step.control2.x, step.control2.y, step.end.x,
                           step.end.y);
            break;
        case vis::OutlineStep::Kind::CLOSE:
            cairo_close_path(m_cairo);
            break;
        }
    }

    cairo_t* m_cairo;
    const PlotLayout& m_layout;
    const vis::Font& m_font;
    double m_thin;
};

} // namespace

void paint(cairo_t* cairo, const PlotLayout& layout, const vis::Font& font) {
    Painter(cairo, layout, font).paint();
}

} // namespace orv::plt
