#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/Str.h"

#include <string>

namespace orv::plt {

class OverlayPlot;

/// Writes plots as pictures, and as tables for other programs.
class ORV_API PlotWriter {
public:
    static constexpr int DEFAULT_WIDTH = 800;
    static constexpr int DEFAULT_HEIGHT = 600;

    /// Writes a plot to a file in the format that the end of its name says, in small letters or capitals:
    ///
    /// | end  | format |
    /// |------|--------|
    /// | .svg | picture of lines, for web pages; `width` and `height` are pixels, of which an inch has 96 |
    /// | .png | picture of `width` x `height` pixels |
    /// | .pdf | picture of lines, for print, as large on paper as the SVG |
    /// | .csv | the numbers as UTF-8 text; the size does not matter |
    ///
    /// The axes have round ticks and, unless AxisSettings says otherwise, enclose all curves. Text and lines grow with
    /// the picture: one of 1600 x 1200 is the one of 800 x 600 with finer pixels. Long titles are wrapped and then cut
    /// with an ellipsis. Characters that the font lacks are boxes.
    ///
    /// Curves have different colours, which a grey print keeps apart, and dash patterns. The legend covers no curve; a
    /// single curve has none when the y axis has a title. Points with an undefined, infinite or missing number are
    /// gaps, and so are numbers up to zero on a logarithmic axis: these are left out without a further word. A point
    /// with gaps on both sides is a marker. Points closer together than the picture shows are thinned out in pictures,
    /// in a way that keeps all peaks.
    ///
    /// In CSV a line with names comes first, then one line for each point. Curves with the same x values share their
    /// column; otherwise each has two columns, x and y. Numbers read back as the same value; undefined ones are empty.
    ///
    /// The same plot gives the same bytes: no dates and no names of machines are written. The file takes the place of
    /// an older one when all of it is on the disk; until then that one stays as it is, whatever happens.
    ///
    /// @param plot asserts "plot"; nothing is written behind the failed assertion
    /// @param width from 200 to 10000
    /// @param height from 150 to 10000
    /// @param reason told when nothing could be written; may be null
    /// @return false when the name ends otherwise, the size is not one of these, or the disk refuses
    static bool write(const OverlayPlot* plot, const Str& filename, int width, int height, Str* reason);

    /// What write() writes to a .csv file, for those who have no file to write to. Asserts "plot"; empty behind the
    /// failed assertion.
    static std::string csv(const OverlayPlot* plot);
};

} // namespace orv::plt
