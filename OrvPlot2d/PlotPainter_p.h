#pragma once

#include <cairo.h>

namespace orv::vis {
class Font;
}

namespace orv::plt {

struct PlotLayout;

/// Draws a plot that is laid out, on white. Text is drawn as filled shapes, so nothing depends on the fonts of the
/// machine that shows the picture.
void paint(cairo_t* cairo, const PlotLayout& layout, const vis::Font& font);

} // namespace orv::plt
