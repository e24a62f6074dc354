#include "OrvVisualization/TextLines_p.h"

#include "OrvVisualization/Font.h"

#include <algorithm>
#include <string>

namespace orv::vis {
namespace {

/// How many of the first characters fit, at least 1.
std::size_t fittingLength(const Font& font, const Str& text, double size, double width) {
    std::size_t low = 1;
    std::size_t high = std::max<std::size_t>(text.size(), 1);
    while (low < high) {
        const std::size_t middle = (low + high + 1) / 2;
        if (font.width(text.subStr(0, middle), size) <= width) {
            low = middle;
        } else {
            high = middle - 1;
        }
    }
    return low;
}

bool canBreakBehind(wchar_t character) {
    return std::wstring(L" (),;:/*+-_.").find(character) != std::wstring::npos;
}

/// The last place to break within a length, or the length when there is none.
std::size_t breakWithin(const Str& text, std::size_t length) {
    for (std::size_t i = length; i > 0; --i) {
        if (canBreakBehind(text.c_str()[i - 1])) {
            return i;
        }
    }
    return length;
}

Str withoutBlanksAtTheEnds(const Str& text) {
    const std::wstring characters = text.toStdWString();
    const std::size_t first = characters.find_first_not_of(L' ');
    const std::size_t last = characters.find_last_not_of(L' ');
    return first == std::wstring::npos ? Str() : text.subStr(first, last - first + 1);
}

Str shortened(const Font& font, const Str& text, double size, double width) {
    const Str dots(L"\x2026");
    const double left = width - font.width(dots, size);
    return withoutBlanksAtTheEnds(text.subStr(0, fittingLength(font, text, size, left))) + dots;
}

} // namespace

std::vector<Str> textLines(const Font& font, const Str& text, double size, double width, std::size_t lineCount) {
    std::vector<Str> lines;
    Str rest = withoutBlanksAtTheEnds(text);
    while (font.width(rest, size) > width && lines.size() + 1 < lineCount && rest.size() > 1) {
        const std::size_t length = breakWithin(rest, fittingLength(font, rest, size, width));
        lines.push_back(withoutBlanksAtTheEnds(rest.subStr(0, length)));
        rest = withoutBlanksAtTheEnds(rest.subStr(length));
    }
    if (!rest.isEmpty()) {
        lines.push_back(font.width(rest, size) > width && rest.size() > 1 ? shortened(font, rest, size, width) : rest);
    }
    return lines;
}

} // namespace orv::vis
