#include "OrvVisualization/Font.h"

#include "OrvVisualization/Font_p.h"

namespace orv::vis {
namespace {

constexpr double NORMAL_SIZE = 12.0;

/// Calls place(glyph, x) for each character, where x is the pen's place in units of the font.
/// @return the pen's place behind the last one
template <class Place>
double layOut(const FontPrivate& font, const Str& text, Place place) {
    double x = 0.0;
    unsigned previous = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const unsigned index = font.indexOf(text.c_str()[i]);
        if (i > 0) {
            x += font.kerning(previous, index);
        }
        const FontPrivate::Glyph& glyph = font.glyph(index);
        place(glyph, x);
        x += glyph.advance;
        previous = index;
    }
    return x;
}

} // namespace

PtrRef<Font> Font::createNormalFont() {
    static const PtrRef<Font> font(new Font);
    return font;
}

Font::Font() {
    m_private.reset(new FontPrivate);
}

Font::~Font() = default;

double Font::normalSize() const {
    return NORMAL_SIZE;
}

double Font::ascent(double size) const {
    return m_private->ascent() * (size / m_private->unitsPerSize());
}

double Font::descent(double size) const {
    return m_private->descent() * (size / m_private->unitsPerSize());
}

double Font::lineHeight(double size) const {
    return m_private->lineHeight() * (size / m_private->unitsPerSize());
}

double Font::width(const Str& text, double size) const {
    const double units = layOut(*m_private.operator->(), text, [](const FontPrivate::Glyph&, double) {});
    return units * (size / m_private->unitsPerSize());
}

Outline Font::outline(const Str& text, double size, double x, double y) const {
    const double scale = size / m_private->unitsPerSize();
    Outline outline;
    layOut(*m_private.operator->(), text, [&](const FontPrivate::Glyph& glyph, double pen) {
        auto placed = [&](const OutlinePoint& point) {
            return OutlinePoint{x + (pen + point.x) * scale, y + point.y * scale};
        };
        for (const OutlineStep& step : glyph.outline) {
            outline.push_back({step.kind, placed(step.end), placed(step.control1), placed(step.control2)});
        }
    });
    return outline;
}

} // namespace orv::vis
