#pragma once

#include "LibCore/rvfColor3.h"
#include "OrvCore/Str.h"
#include "OrvVisualization/Outline.h"

namespace orv::vis {

class Font;
class Image;

/// Draws on a picture, with smooth borders, over what is there. Lengths are in pixels; the corner of the picture is
/// (0, 0) and the first pixel's middle (0.5, 0.5). What is outside of the picture is cut off.
class Painter {
public:
    /// @param image has to outlive the painter
    explicit Painter(Image* image);

    /// By the non-zero rule.
    /// @param opacity from 0, nothing, to 1
    void fill(const Outline& outline, const rvf::Color3f& color, double opacity = 1.0);

    void fillRectangle(double left, double top, double right, double bottom, const rvf::Color3f& color,
                       double opacity = 1.0);

    /// The border of a rectangle, of which the line's middle is on the given sides.
    void drawRectangle(double left, double top, double right, double bottom, double lineWidth,
                       const rvf::Color3f& color, double opacity = 1.0);

    /// With flat ends; nothing when both ends are one point.
    void drawLine(const OutlinePoint& begin, const OutlinePoint& end, double lineWidth, const rvf::Color3f& color,
                  double opacity = 1.0);

    /// @param x, baseline where the pen begins
    void drawText(const Font& font, const Str& text, double size, double x, double baseline, const rvf::Color3f& color,
                  double opacity = 1.0);

private:
    Image* m_image;
};

} // namespace orv::vis
