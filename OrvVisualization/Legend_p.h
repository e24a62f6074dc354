#pragma once

#include "OrvCore/Str.h"

namespace orv::vis {

class ColorMap;
class Image;

/// What a legend tells besides colours.
struct LegendContent {
    Str title;
    double minimum = 0.0; ///< Of the picture's range, both ends finite; without defined values above the maximum.
    double maximum = 0.0;
    bool hasUndefined = false; ///< Whether undefined values are shown.
};

/// The narrowest and the lowest picture that has room for a legend.
constexpr int LEGEND_MINIMUM_WIDTH = 200;
constexpr int LEGEND_MINIMUM_HEIGHT = 120;

/// How far the legend reaches into a picture of this size from the left, with its pane; 0 when there is none.
double legendWidth(const ColorMap& map, const LegendContent& content, int imageWidth, int imageHeight);

/// Draws the legend of a picture into its upper left corner: the title, a bar of the colours with numbers beside it,
/// and the colour of undefined values when there are any. It stands on a pane that takes the picture's brightness
/// there, so that it can be read before everything. Sizes follow the picture's; smaller pictures than the least stay
/// without.
void drawLegend(const ColorMap& map, const LegendContent& content, Image* image);

} // namespace orv::vis
