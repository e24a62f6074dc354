#include "Tools/DisplayText.h"

#include "OrvCore/Defines.h"
#include "Tools/NumberText.h"

#include <algorithm>
#include <cmath>

namespace orvapp {

namespace {

bool isContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

bool isControl(char byte) {
    const auto code = static_cast<unsigned char>(byte);
    return code < 0x20 || code == 0x7F;
}

/// The C1 controls U+0080 to U+009F are C2 80 to C2 9F in UTF-8; terminals obey them like an escape sequence.
bool isLatinControl(std::string_view utf8, std::size_t i) {
    return utf8[i] == '\xC2' && i + 1 < utf8.size() && static_cast<unsigned char>(utf8[i + 1]) < 0xA0;
}

/// The byte at which a column begins; the size of the text when it has fewer.
std::size_t columnBegin(std::string_view utf8, std::size_t column) {
    std::size_t i = 0;
    for (; i < utf8.size() && (column > 0 || isContinuation(utf8[i])); ++i) {
        column -= isContinuation(utf8[i]) ? 0 : 1;
    }
    return i;
}

} // namespace

std::size_t columnCount(std::string_view utf8) {
    return utf8.size() - std::size_t(std::count_if(utf8.begin(), utf8.end(), isContinuation));
}

std::string_view columnRange(std::string_view utf8, std::size_t first, std::size_t count) {
    utf8.remove_prefix(columnBegin(utf8, first));
    return utf8.substr(0, columnBegin(utf8, count));
}

std::string shortened(std::string_view utf8, std::size_t columns) {
    return columnCount(utf8) <= columns ? std::string(utf8) : std::string(columnRange(utf8, 0, columns - 3)) + "...";
}

std::string printable(std::string_view utf8) {
    std::string text;
    text.reserve(utf8.size());
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        if (isLatinControl(utf8, i)) {
            text += '?';
            ++i;
        } else {
            text += isControl(utf8[i]) ? '?' : utf8[i];
        }
    }
    return text;
}

std::string briefNumber(double value) {
    if (value == orv::UNDEFINED_DOUBLE || std::isnan(value)) {
        return "-";
    }
    return roundedNumber(value, 6);
}

std::string exactNumber(double value) {
    return value == orv::UNDEFINED_DOUBLE ? "-" : shortestNumber(value);
}

std::string counted(std::size_t count, std::string_view singular) {
    return std::to_string(count) + ' ' + std::string(singular) + (count == 1 ? "" : "s");
}

} // namespace orvapp
