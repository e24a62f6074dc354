#include "OrvPlot2d/PlotWriter.h"

#include "LibCore/rvfAssert.h"
#include "OrvCore/FileReplacement_p.h"
#include "OrvPlot2d/OverlayPlot.h"
#include "OrvPlot2d/PlotCsv_p.h"
#include "OrvPlot2d/PlotLayout_p.h"
#include "OrvPlot2d/PlotPainter_p.h"
#include "OrvVisualization/Font.h"

#include <cairo-pdf.h>
#include <cairo-svg.h>

#include <memory>
#include <new>
#include <string>

namespace orv::plt {
namespace {

constexpr int SMALLEST_WIDTH = 200;
constexpr int SMALLEST_HEIGHT = 150;
constexpr int LARGEST = 10000;

/// Points of 1/72 inch in a pixel of 1/96 inch.
constexpr double POINTS_PER_PIXEL = 0.75;

using Surface = std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)>;

bool failToWrite(const Str& filename, const Str& why, Str* reason) {
    if (reason) {
        *reason = "cannot write \"" + filename + "\": " + why;
    }
    return false;
}

/// Exceptions must not pass through Cairo.
cairo_status_t append(void* text, const unsigned char* bytes, unsigned int count) noexcept {
    try {
        static_cast<std::string*>(text)->append(reinterpret_cast<const char*>(bytes), count);
        return CAIRO_STATUS_SUCCESS;
    } catch (const std::bad_alloc&) {
        return CAIRO_STATUS_NO_MEMORY;
    }
}

cairo_status_t paintOn(cairo_surface_t* surface, const OverlayPlot& plot, int width, int height, double scale) {
    const std::unique_ptr<cairo_t, decltype(&cairo_destroy)> cairo(cairo_create(surface), cairo_destroy);
    cairo_scale(cairo.get(), scale, scale);
    const PtrRef<vis::Font> font = plot.font() ? PtrRef<vis::Font>(plot.font()) : vis::Font::createNormalFont();
    paint(cairo.get(), layOut(plot, *font, width, height), *font);
    return cairo_status(cairo.get());
}

/// Ends the surface; what has been drawn is written then at the latest.
cairo_status_t finish(const Surface& surface, cairo_status_t status) {
    cairo_surface_finish(surface.get());
    return status == CAIRO_STATUS_SUCCESS ? cairo_surface_status(surface.get()) : status;
}

/// Cairo numbers the surfaces of a process; the picture is to be the same each time.
void removeSurfaceNumber(std::string* svg) {
    const std::string start = "<g id=\"surface";
    const std::size_t at = svg->find(start);
    if (at != std::string::npos) {
        const std::size_t digits = at + start.size();
        svg->erase(digits, svg->find('"', digits) - digits);
    }
}

cairo_status_t makeSvg(const OverlayPlot& plot, int width, int height, std::string* bytes) {
    const Surface surface(cairo_svg_surface_create_for_stream(append, bytes, width, height), cairo_surface_destroy);
    cairo_svg_surface_set_document_unit(surface.get(), CAIRO_SVG_UNIT_PX);
    const cairo_status_t status = finish(surface, paintOn(surface.get(), plot, width, height, 1.0));
    removeSurfaceNumber(bytes);
    return status;
}

cairo_status_t makePdf(const OverlayPlot& plot, int width, int height, std::string* bytes) {
    const Surface surface(
        cairo_pdf_surface_create_for_stream(append, bytes, width * POINTS_PER_PIXEL, height * POINTS_PER_PIXEL),
        cairo_surface_destroy);
    // Otherwise it is the time of writing.
    cairo_pdf_surface_set_metadata(surface.get(), CAIRO_PDF_METADATA_CREATE_DATE, "");
    return finish(surface, paintOn(surface.get(), plot, width, height, POINTS_PER_PIXEL));
}

cairo_status_t makePng(const OverlayPlot& plot, int width, int height, std::string* bytes) {
    const Surface surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height), cairo_surface_destroy);
    const cairo_status_t status = paintOn(surface.get(), plot, width, height, 1.0);
    return status == CAIRO_STATUS_SUCCESS ? cairo_surface_write_to_png_stream(surface.get(), append, bytes) : status;
}

cairo_status_t makeCsv(const OverlayPlot& plot, int, int, std::string* bytes) {
    *bytes = csvOf(plot);
    return CAIRO_STATUS_SUCCESS;
}

struct Format {
    const char* extension;
    bool isPicture;
    cairo_status_t (*make)(const OverlayPlot& plot, int width, int height, std::string* bytes);
};

constexpr Format FORMATS[] = {
    {".svg", true, makeSvg}, {".png", true, makePng}, {".pdf", true, makePdf}, {".csv", false, makeCsv}};
constexpr const char* KNOWN_EXTENSIONS = "\".svg\", \".png\", \".pdf\" or \".csv\"";

bool endsWith(const Str& text, const Str& end) {
    return text.size() >= end.size() && text.subStr(text.size() - end.size()) == end;
}

const Format* formatFor(const Str& filename) {
    for (const Format& format : FORMATS) {
        if (endsWith(filename.toLower(), format.extension)) {
            return &format;
        }
    }
    return nullptr;
}

bool isPossible(int width, int height) {
    return width >= SMALLEST_WIDTH && width <= LARGEST && height >= SMALLEST_HEIGHT && height <= LARGEST;
}

bool save(const std::string& bytes, const Str& filename, Str* reason) {
    FileReplacement file;
    if (!file.open(filename, reason)) {
        return false;
    }
    file.write(bytes);
    return file.commit(reason);
}

} // namespace

bool PlotWriter::write(const OverlayPlot* plot, const Str& filename, int width, int height, Str* reason) {
    RVF_ASSERT(plot);
    if (!plot) {
        return failToWrite(filename, "there is no plot", reason);
    }
    const Format* format = formatFor(filename);
    if (!format) {
        return failToWrite(filename, Str("plots are written to names that end with ") + KNOWN_EXTENSIONS, reason);
    }
    if (format->isPicture && !isPossible(width, height)) {
        const Str size = Str("a picture of %1 x %2 pixels is not between %3 x %4 and %5 x %5");
        return failToWrite(filename, size.arg(width).arg(height).arg(SMALLEST_WIDTH).arg(SMALLEST_HEIGHT).arg(LARGEST),
                           reason);
    }
    std::string bytes;
    const cairo_status_t status = format->make(*plot, width, height, &bytes);
    if (status != CAIRO_STATUS_SUCCESS) {
        return failToWrite(filename, cairo_status_to_string(status), reason);
    }
    return save(bytes, filename, reason);
}

std::string PlotWriter::csv(const OverlayPlot* plot) {
    RVF_ASSERT(plot);
    return plot ? csvOf(*plot) : std::string();
}

} // namespace orv::plt
