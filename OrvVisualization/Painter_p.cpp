#include "OrvVisualization/Painter_p.h"

#include "OrvVisualization/Coverage_p.h"
#include "OrvVisualization/Font.h"
#include "OrvVisualization/Image.h"

#include <cmath>
#include <cstdint>
#include <initializer_list>

namespace orv::vis {
namespace {

/// Of two channels of sRGB. Their power of 1.5 is mixed: with that of light, which is 2.2, dark letters on bright
/// ground would look thin, and with 1 bright ones on dark ground.
std::uint8_t mix(std::uint8_t below, float above, float weight) {
    const float channel = float(below) / 255.0F;
    const float belowPower = channel * std::sqrt(channel);
    const float abovePower = above * std::sqrt(above);
    const float power = belowPower + (abovePower - belowPower) * weight;
    return std::uint8_t(std::cbrt(power * power) * 255.0F + 0.5F);
}

/// Lays a colour over a pixel.
void blend(std::uint8_t* pixel, bool hasAlpha, const rvf::Color3f& color, float weight) {
    float weightOfColor = weight;
    if (hasAlpha) {
        const float alpha = weight + float(pixel[3]) / 255.0F * (1.0F - weight);
        weightOfColor = alpha > 0.0F ? weight / alpha : 0.0F;
        pixel[3] = std::uint8_t(alpha * 255.0F + 0.5F);
    }
    for (int i = 0; i < 3; ++i) {
        pixel[i] = mix(pixel[i], color.ptr()[i], weightOfColor);
    }
}

Outline polygon(std::initializer_list<OutlinePoint> corners) {
    Outline outline;
    for (const OutlinePoint& corner : corners) {
        outline.push_back({outline.empty() ? OutlineStep::Kind::MOVE : OutlineStep::Kind::LINE, corner, {}, {}});
    }
    outline.push_back({OutlineStep::Kind::CLOSE, {}, {}, {}});
    return outline;
}

} // namespace

Painter::Painter(Image* image) : m_image(image) {}

void Painter::fill(const Outline& outline, const rvf::Color3f& color, double opacity) {
    const bool hasAlpha = m_image->format() == Image::Format::RGBA;
    const std::size_t step = std::size_t(m_image->channelCount());
    const Coverage coverage(outline, m_image->width(), m_image->height());
    coverage.forEachPixel([&](int x, int y, float share) {
        if (share > 0.0F) {
            blend(m_image->row(y) + std::size_t(x) * step, hasAlpha, color, share * float(opacity));
        }
    });
}

void Painter::fillRectangle(double left, double top, double right, double bottom, const rvf::Color3f& color,
                            double opacity) {
    fill(polygon({{left, top}, {right, top}, {right, bottom}, {left, bottom}}), color, opacity);
}

void Painter::drawRectangle(double left, double top, double right, double bottom, double lineWidth,
                            const rvf::Color3f& color, double opacity) {
    const double half = lineWidth / 2;
    Outline border = polygon({{left - half, top - half},
                              {right + half, top - half},
                              {right + half, bottom + half},
                              {left - half, bottom + half}});
    const Outline hole = polygon({{left + half, top + half},
                                  {left + half, bottom - half},
                                  {right - half, bottom - half},
                                  {right - half, top + half}});
    border.insert(border.end(), hole.begin(), hole.end());
    fill(border, color, opacity);
}

void Painter::drawLine(const OutlinePoint& begin, const OutlinePoint& end, double lineWidth, const rvf::Color3f& color,
                       double opacity) {
    const double length = std::hypot(end.x - begin.x, end.y - begin.y);
    if (length > 0.0) {
        const double x = -(end.y - begin.y) / length * lineWidth / 2;
        const double y = (end.x - begin.x) / length * lineWidth / 2;
        fill(polygon({{begin.x + x, begin.y + y},
                      {begin.x - x, begin.y - y},
                      {end.x - x, end.y - y},
                      {end.x + x, end.y + y}}),
             color, opacity);
    }
}

void Painter::drawText(const Font& font, const Str& text, double size, double x, double baseline,
                       const rvf::Color3f& color, double opacity) {
    fill(font.outline(text, size, x, baseline), color, opacity);
}

} // namespace orv::vis
