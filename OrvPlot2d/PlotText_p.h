#pragma once

#include "OrvCore/Str.h"
#include "OrvPlot2d/PlotGeometry_p.h"

#include <vector>

namespace orv::vis {
class Font;
}

namespace orv::plt {

/// One line of text with its place on the picture.
struct PlacedText {
    Str text;
    double size = 0.0;
    Point start;           ///< The pen's first place, on the baseline.
    bool isUpward = false; ///< Written from bottom to top instead of from left to right.
    Rect box;              ///< What lines of this font and size need, whichever letters are in it.
};

/// A line that is written from left to right and begins at the box's top left corner.
PlacedText placeText(const vis::Font& font, const Str& text, double size, const Point& topLeft);

/// A line that is written from bottom to top and begins at the box's bottom left corner.
PlacedText placeUpward(const vis::Font& font, const Str& text, double size, const Point& bottomLeft);

/// In one line, without blanks at its ends: line ends and other control characters become blanks. Beyond some thousand
/// characters, which no picture shows, the text is cut.
Str tidy(const Str& text);

/// At most `maximumWidth` wide, with an ellipsis in the middle if need be: names that begin alike often differ at their
/// ends. Empty when even the ellipsis is too wide.
Str shortenMiddle(const vis::Font& font, const Str& text, double size, double maximumWidth);

/// The tidy text in lines of at most `maximumWidth`; what goes beyond the last line allowed is cut with an ellipsis. No
/// line for the empty text, nor where not even one character fits.
std::vector<Str> wrap(const vis::Font& font, const Str& text, double size, double maximumWidth,
                      std::size_t maximumLines);

} // namespace orv::plt
