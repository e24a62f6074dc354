#include "OrvPlot2d/CurveStyle_p.h"

#include <iterator>

namespace orv::plt {
namespace {

struct Colour {
    std::uint8_t red, green, blue;
};

// CIE lightness 15, 35, 46, 55, 64, 75.
constexpr Colour COLOURS[] = {{0x10, 0x1F, 0x5C}, {0xA0, 0x18, 0x30}, {0x1F, 0x6F, 0xB5},
                              {0xD3, 0x61, 0x1C}, {0x35, 0xAD, 0x86}, {0xE3, 0xB1, 0x00}};
constexpr std::size_t COLOUR_COUNT = std::size(COLOURS);

const std::vector<double>& dashesOf(std::size_t pattern) {
    static const std::vector<double> patterns[COLOUR_COUNT] = {{},         {6.0, 2.5}, {6.0, 2.0, 1.5, 2.0},
                                                               {2.5, 2.0}, {1.2, 1.6}, {9.0, 2.0, 1.5, 2.0, 1.5, 2.0}};
    return patterns[pattern];
}

} // namespace

CurveStyle styleOf(std::size_t index) {
    const Colour& colour = COLOURS[index % COLOUR_COUNT];
    const std::size_t pattern = (index + index / COLOUR_COUNT) % COLOUR_COUNT;
    return {colour.red, colour.green, colour.blue, dashesOf(pattern), CurveStyle::Marker(index % 4)};
}

} // namespace orv::plt
