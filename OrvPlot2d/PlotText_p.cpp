#include "OrvPlot2d/PlotText_p.h"

#include "OrvVisualization/Font.h"
#include "OrvVisualization/TextLines_p.h"

#include <algorithm>

namespace orv::plt {
namespace {

constexpr std::size_t LONGEST_TEXT = 4000;

const Str ELLIPSIS(L"\u2026");

bool isBlank(wchar_t character) {
    return character <= L' ' || (character >= 0x7F && character <= 0xA0) || character == 0x2028 || character == 0x2029;
}

/// The greatest count up to `limit` for which `fits`, which holds for 0 and for all counts below one for which it does.
template <class Fits>
std::size_t greatest(std::size_t limit, Fits fits) {
    std::size_t low = 0;
    while (low < limit) {
        const std::size_t middle = low + (limit - low + 1) / 2;
        if (fits(middle)) {
            low = middle;
        } else {
            limit = middle - 1;
        }
    }
    return low;
}

Str trimmed(const Str& text) {
    std::size_t begin = 0;
    std::size_t end = text.size();
    while (begin < end && isBlank(text.c_str()[begin])) {
        ++begin;
    }
    while (end > begin && isBlank(text.c_str()[end - 1])) {
        --end;
    }
    return text.subStr(begin, end - begin);
}

} // namespace

PlacedText placeText(const vis::Font& font, const Str& text, double size, const Point& topLeft) {
    const double ascent = font.ascent(size);
    const Rect box = {topLeft.x, topLeft.y, topLeft.x + font.width(text, size),
                      topLeft.y + ascent + font.descent(size)};
    return {text, size, {topLeft.x, topLeft.y + ascent}, false, box};
}

PlacedText placeUpward(const vis::Font& font, const Str& text, double size, const Point& bottomLeft) {
    const double ascent = font.ascent(size);
    const Rect box = {bottomLeft.x, bottomLeft.y - font.width(text, size), bottomLeft.x + ascent + font.descent(size),
                      bottomLeft.y};
    return {text, size, {bottomLeft.x + ascent, bottomLeft.y}, true, box};
}

Str tidy(const Str& text) {
    std::wstring characters = text.subStr(0, LONGEST_TEXT).toStdWString();
    std::replace_if(characters.begin(), characters.end(), isBlank, L' ');
    return trimmed(Str(characters));
}

Str shortenMiddle(const vis::Font& font, const Str& text, double size, double maximumWidth) {
    if (font.width(text, size) <= maximumWidth) {
        return text;
    }
    auto cut = [&](std::size_t n) {
        return trimmed(text.subStr(0, n - n / 2)) + ELLIPSIS + trimmed(text.subStr(text.size() - n / 2));
    };
    const std::size_t kept =
        greatest(text.size(), [&](std::size_t n) { return font.width(cut(n), size) <= maximumWidth; });
    return font.width(cut(kept), size) <= maximumWidth ? cut(kept) : Str();
}

std::vector<Str> wrap(const vis::Font& font, const Str& text, double size, double maximumWidth,
                      std::size_t maximumLines) {
    std::vector<Str> lines = vis::textLines(font, tidy(text), size, maximumWidth, maximumLines);
    std::erase_if(lines, [&](const Str& line) { return font.width(line, size) > maximumWidth; });
    return lines;
}

} // namespace orv::plt
