#include "LibCore/rvfTextFormat.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <string_view>

namespace rvf::internal {
namespace {

constexpr int DEFAULT_PRECISION = 6;
constexpr int NO_NUMBER = 100; // Above every number of two digits.

std::chars_format notationOf(char format) {
    switch (format) {
    case 'e':
    case 'E':
        return std::chars_format::scientific;
    case 'f':
    case 'F':
        return std::chars_format::fixed;
    default:
        return std::chars_format::general;
    }
}

bool isDigit(wchar_t character) {
    return character >= L'0' && character <= L'9';
}

struct Placeholder {
    size_t begin = std::wstring::npos;
    size_t end = std::wstring::npos;
    int number = NO_NUMBER;
};

/// The first placeholder at or behind `start`; one with NO_NUMBER when there is none.
Placeholder nextPlaceholder(const std::wstring& text, size_t start) {
    for (size_t begin = text.find(L'%', start); begin != std::wstring::npos; begin = text.find(L'%', begin + 1)) {
        size_t end = begin + 1;
        int number = 0;
        while (end < text.size() && end < begin + 3 && isDigit(text[end])) {
            number = number * 10 + (text[end] - L'0');
            ++end;
        }
        if (end > begin + 1) {
            return {begin, end, number};
        }
    }
    return {};
}

int lowestNumber(const std::wstring& text) {
    int lowest = NO_NUMBER;
    for (Placeholder found = nextPlaceholder(text, 0); found.number != NO_NUMBER;
         found = nextPlaceholder(text, found.end)) {
        lowest = std::min(lowest, found.number);
    }
    return lowest;
}

size_t missingCharacters(const std::wstring& text, int fieldWidth) {
    size_t width = size_t(std::llabs(fieldWidth));
    return width > text.size() ? width - text.size() : 0;
}

} // namespace

std::wstring formatNumber(double value, char format, int precision) {
    int digits = precision < 0 ? DEFAULT_PRECISION : precision;
    // The longest fixed text has a sign, 309 digits and a point in front of its decimals.
    std::string text(size_t(digits) + 320, '\0');
    std::to_chars_result result =
        std::to_chars(text.data(), text.data() + text.size(), value, notationOf(format), digits);
    text.resize(size_t(result.ptr - text.data()));
    if (std::string_view("EFG").find(format) != std::string_view::npos) {
        // Letters are ASCII here; the C library's own toupper would ask the locale.
        std::transform(text.begin(), text.end(), text.begin(),
                       [](char c) { return c >= 'a' && c <= 'z' ? char(c - 'a' + 'A') : c; });
    }
    return std::wstring(text.begin(), text.end());
}

std::wstring padText(const std::wstring& text, int fieldWidth, wchar_t fillChar) {
    std::wstring padding(missingCharacters(text, fieldWidth), fillChar);
    return fieldWidth < 0 ? text + padding : padding + text;
}

std::wstring padNumber(const std::wstring& number, int fieldWidth, wchar_t fillChar) {
    bool zerosBehindSign = fillChar == L'0' && fieldWidth > 0 && !number.empty() && number[0] == L'-';
    if (!zerosBehindSign) {
        return padText(number, fieldWidth, fillChar);
    }
    return L"-" + padText(number.substr(1), fieldWidth - 1, fillChar);
}

std::wstring replaceLowestPlaceholder(const std::wstring& text, const std::wstring& value) {
    int lowest = lowestNumber(text);
    if (lowest == NO_NUMBER) {
        return text;
    }
    std::wstring result;
    size_t copied = 0;
    for (Placeholder found = nextPlaceholder(text, 0); found.number != NO_NUMBER;
         found = nextPlaceholder(text, found.end)) {
        if (found.number == lowest) {
            result.append(text, copied, found.begin - copied).append(value);
            copied = found.end;
        }
    }
    return result.append(text, copied, std::wstring::npos);
}

std::wstring replaceAll(const std::wstring& text, const std::wstring& before, const std::wstring& after) {
    if (before.empty()) {
        return text;
    }
    std::wstring result;
    size_t copied = 0;
    for (size_t found = text.find(before); found != std::wstring::npos; found = text.find(before, copied)) {
        result.append(text, copied, found - copied).append(after);
        copied = found + before.size();
    }
    return result.append(text, copied, std::wstring::npos);
}

} // namespace rvf::internal
