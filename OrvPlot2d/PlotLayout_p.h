#pragma once

#include "OrvPlot2d/CurveLines_p.h"
#include "OrvPlot2d/Legend_p.h"
#include "OrvPlot2d/PlotGeometry_p.h"
#include "OrvPlot2d/PlotText_p.h"

#include <vector>

namespace orv::plt {

class OverlayPlot;

/// Everything on the picture of a plot, with its place.
///
/// The size of text, lines and gaps follows the picture's size, so that a large picture is a finer one of the same
/// looks, but no text is smaller than can be read. No two texts overlap, and none leaves the picture.
struct PlotLayout {
    double width = 0.0;
    double height = 0.0;
    double unit = 1.0; ///< The width of a thin line; 1 on a picture of 800 x 600.
    Rect frame;        ///< Around the curves.

    std::vector<double> xTicks; ///< Where they are in the picture.
    std::vector<double> xMinorTicks;
    std::vector<double> yTicks;
    std::vector<double> yMinorTicks;

    std::vector<PlacedText> texts; ///< All but those of the legend.
    std::vector<CurveLines> curves;
    Legend legend; ///< Empty when there is none.
};

/// Lays out a plot. The legend goes where it touches no curve: into the frame, right of it or, with long names, below.
PlotLayout layOut(const OverlayPlot& plot, const vis::Font& font, double width, double height);

} // namespace orv::plt
