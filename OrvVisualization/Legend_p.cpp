#include "OrvVisualization/Legend_p.h"

#include "OrvVisualization/ColorMap.h"
#include "OrvVisualization/Font.h"
#include "OrvVisualization/Image.h"
#include "OrvVisualization/LegendScale_p.h"
#include "OrvVisualization/Painter_p.h"
#include "OrvVisualization/TextLines_p.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace orv::vis {
namespace {

constexpr double MINIMUM_TEXT_SIZE = 10.0;
constexpr double TITLE_LINES = 3.0;
constexpr double TITLE_SHARE = 0.15; ///< Of the picture's height, but one line at least.
constexpr double PANE_OPACITY = 0.7;

// In units of the text size.
constexpr double MARGIN = 0.6;
constexpr double BAR_WIDTH = 1.4;
constexpr double TICK_LENGTH = 0.35;
constexpr double GAP = 0.5;

struct Rectangle {
    double left = 0.0;
    double top = 0.0;
    double right = 0.0;
    double bottom = 0.0;
};

/// Where everything goes, in whole pixels where borders are to be sharp.
struct Layout {
    double textSize = 0.0;
    double line = 0.0; ///< From one baseline to the next.
    double left = 0.0;
    std::vector<Str> title;
    std::vector<LegendTick> ticks;
    double numbersRight = 0.0;
    bool hasBar = false;
    Rectangle bar;
    Rectangle undefined; ///< The box of their colour.
    Rectangle titlePane;
    Rectangle barPane;
};

const Str UNDEFINED_WORD = "undefined";

double textSizeFor(int imageWidth, int imageHeight) {
    return std::max(MINIMUM_TEXT_SIZE, std::min(imageHeight * 0.022, imageWidth * 0.03));
}

double widest(const Font& font, const std::vector<Str>& texts, double size) {
    double width = 0.0;
    for (const Str& text : texts) {
        width = std::max(width, font.width(text, size));
    }
    return width;
}

std::vector<Str> textsOf(const std::vector<LegendTick>& ticks) {
    std::vector<Str> texts;
    for (const LegendTick& tick : ticks) {
        texts.push_back(tick.text);
    }
    return texts;
}

Layout layOut(const Font& font, const ColorMap& map, const LegendContent& content, int imageWidth, int imageHeight) {
    Layout layout;
    const double size = textSizeFor(imageWidth, imageHeight);
    layout.textSize = size;
    layout.line = font.lineHeight(size);
    const double lines = std::clamp(TITLE_SHARE * imageHeight / layout.line, 1.0, TITLE_LINES);
    layout.title = textLines(font, content.title, size, imageWidth * 0.4, std::size_t(lines));
    layout.hasBar = content.minimum <= content.maximum;

    const double margin = std::round(MARGIN * size);
    layout.left = 2 * margin;
    double top = margin;
    if (!layout.title.empty()) {
        layout.titlePane = {margin, margin, std::ceil(layout.left + widest(font, layout.title, size)) + margin,
                            std::round(2.4 * margin + layout.line * double(layout.title.size()))};
        top = layout.titlePane.bottom;
    }
    const double barRight = layout.left + std::round(BAR_WIDTH * size);
    const double textLeft = barRight + (TICK_LENGTH + GAP) * size;
    double right = 0.0;
    double bottom = top;
    if (layout.hasBar) {
        // The numbers at the ends reach half a line beyond the bar.
        const double barTop = std::round(top + layout.line * 0.7);
        const double room = imageHeight - barTop - layout.line * (content.hasUndefined ? 2.2 : 0.7) - 2 * margin;
        const double height = std::round(std::min(imageHeight * 0.5, room));
        layout.bar = {layout.left, barTop, barRight, barTop + height};
        const double linesApart = map.bandCount() > 0 ? 1.1 : 1.5;
        layout.ticks =
            legendTicks(content.minimum, content.maximum, map.bandCount(), linesApart * layout.line / height);
        layout.numbersRight = textLeft + widest(font, textsOf(layout.ticks), size);
        right = layout.numbersRight;
        bottom = std::round(layout.bar.bottom + layout.line * 0.7);
    }
    if (content.hasUndefined) {
        const double boxTop = std::round(bottom + layout.line * 0.25);
        layout.undefined = {layout.left, boxTop, barRight, std::round(boxTop + layout.line)};
        right = std::max(right, textLeft + font.width(UNDEFINED_WORD, size));
        bottom = layout.undefined.bottom + margin;
    }
    if (right > 0.0) {
        layout.barPane = {margin, top, std::ceil(right) + margin, bottom};
    }
    return layout;
}

bool hasRoom(int imageWidth, int imageHeight) {
    return imageWidth >= LEGEND_MINIMUM_WIDTH && imageHeight >= LEGEND_MINIMUM_HEIGHT;
}

/// How far a picture is brighter than middle grey in a rectangle of whole pixels in it; summed up.
double brightness(const Image& image, const Rectangle& where) {
    double sum = 0.0;
    for (int y = int(where.top); y < int(where.bottom); ++y) {
        for (int x = int(where.left); x < int(where.right); ++x) {
            const rvf::Color3ub color = image.color(x, y);
            sum += 0.30 * color.r() + 0.59 * color.g() + 0.11 * color.b() - 127.5;
        }
    }
    return sum;
}

class LegendDrawing {
public:
    LegendDrawing(const Font& font, const ColorMap& map, const Layout& layout, Image* image)
        : m_font(font), m_map(map), m_layout(layout), m_painter(image) {
        const bool isOnBright = brightness(*image, layout.titlePane) + brightness(*image, layout.barPane) >= 0.0;
        m_pane = isOnBright ? rvf::Color3::WHITE : rvf::Color3::BLACK;
        m_ink = isOnBright ? rvf::Color3::BLACK : rvf::Color3::WHITE;
    }

    void draw(const LegendContent& content) {
        drawTitle();
        drawPane(m_layout.barPane);
        if (m_layout.hasBar) {
            drawBar(content);
            drawTicks();
        }
        if (content.hasUndefined) {
            drawUndefined();
        }
    }

private:
    void drawPane(const Rectangle& pane) {
        m_painter.fillRectangle(pane.left, pane.top, pane.right, pane.bottom, m_pane, PANE_OPACITY);
    }

    void drawTitle() {
        if (m_layout.title.empty()) {
            return;
        }
        drawPane(m_layout.titlePane);
        double baseline = m_layout.titlePane.top + MARGIN * m_layout.textSize + m_font.ascent(m_layout.textSize);
        for (const Str& text : m_layout.title) {
            m_painter.drawText(m_font, text, m_layout.textSize, m_layout.left, baseline, m_ink);
            baseline += m_layout.line;
        }
    }

    void drawBar(const LegendContent& content) {
        const Rectangle& bar = m_layout.bar;
        const double height = bar.bottom - bar.top;
        for (double y = bar.top; y < bar.bottom; y += 1.0) {
            const rvf::Color3f color = content.minimum < content.maximum
                                           ? m_map.colorAtFraction((bar.bottom - y - 0.5) / height)
                                           : m_map.colorAt(content.minimum, content.minimum, content.maximum);
            m_painter.fillRectangle(bar.left, y, bar.right, y + 1.0, color);
        }
        drawFrame(bar);
    }

    void drawTicks() {
        const Rectangle& bar = m_layout.bar;
        for (const LegendTick& tick : m_layout.ticks) {
            const double y = bar.bottom - tick.fraction * (bar.bottom - bar.top);
            const double lineTop = std::round(y - lineWidth() / 2);
            m_painter.fillRectangle(bar.right, lineTop, std::round(bar.right + TICK_LENGTH * m_layout.textSize),
                                    lineTop + lineWidth(), m_ink);
            drawTextBeside(tick.text, m_layout.numbersRight - m_font.width(tick.text, m_layout.textSize), y);
        }
    }

    void drawUndefined() {
        const Rectangle& box = m_layout.undefined;
        m_painter.fillRectangle(box.left, box.top, box.right, box.bottom, m_map.undefinedColor());
        drawFrame(box);
        drawTextBeside(UNDEFINED_WORD, box.right + (TICK_LENGTH + GAP) * m_layout.textSize, (box.top + box.bottom) / 2);
    }

    /// Around the outside.
    void drawFrame(const Rectangle& where) {
        const double half = lineWidth() / 2;
        m_painter.drawRectangle(where.left - half, where.top - half, where.right + half, where.bottom + half,
                                lineWidth(), m_ink);
    }

    /// With digits, which are as high as capitals, centred at y.
    void drawTextBeside(const Str& text, double x, double y) {
        constexpr double CAPITAL_HEIGHT = 0.73;
        m_painter.drawText(m_font, text, m_layout.textSize, x, y + CAPITAL_HEIGHT / 2 * m_layout.textSize, m_ink);
    }

    double lineWidth() const {
        return std::max(1.0, std::round(m_layout.textSize / 16));
    }

    const Font& m_font;
    const ColorMap& m_map;
    const Layout& m_layout;
    Painter m_painter;
    rvf::Color3f m_pane;
    rvf::Color3f m_ink;
};

} // namespace

double legendWidth(const ColorMap& map, const LegendContent& content, int imageWidth, int imageHeight) {
    if (!hasRoom(imageWidth, imageHeight)) {
        return 0.0;
    }
    const Layout layout = layOut(*Font::createNormalFont(), map, content, imageWidth, imageHeight);
    return std::max(layout.titlePane.right, layout.barPane.right);
}

void drawLegend(const ColorMap& map, const LegendContent& content, Image* image) {
    if (!hasRoom(image->width(), image->height())) {
        return;
    }
    const PtrRef<Font> font = Font::createNormalFont();
    const Layout layout = layOut(*font, map, content, image->width(), image->height());
    LegendDrawing(*font, map, layout, image).draw(content);
}

} // namespace orv::vis
