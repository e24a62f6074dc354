#include "OrvPlot2d/Decimal_p.h"

#include <algorithm>
#include <charconv>

namespace orv::plt {
namespace {

constexpr wchar_t MINUS = L'\u2212';
constexpr wchar_t RAISED_MINUS = L'\u207B';
constexpr wchar_t RAISED_DIGITS[] = L"\u2070\u00B9\u00B2\u00B3\u2074\u2075\u2076\u2077\u2078\u2079";

} // namespace

double toDouble(const Decimal& number) {
    const std::string text = std::to_string(number.digits) + 'e' + std::to_string(number.exponent);
    double value = 0.0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

std::wstring plainText(const Decimal& number) {
    std::wstring text = std::to_wstring(number.digits < 0 ? -number.digits : number.digits);
    if (number.exponent > 0 && number.digits != 0) {
        text.append(std::size_t(number.exponent), L'0');
    }
    if (number.exponent < 0) {
        const std::size_t decimals = std::size_t(-number.exponent);
        text.insert(0, decimals + 1 - std::min(decimals + 1, text.size()), L'0');
        text.insert(text.size() - decimals, 1, L'.');
    }
    return number.digits < 0 ? MINUS + text : text;
}

std::wstring powerOfTenText(int exponent) {
    std::wstring text = L"10";
    if (exponent < 0) {
        text += RAISED_MINUS;
    }
    for (const char digit : std::to_string(exponent < 0 ? -exponent : exponent)) {
        text += RAISED_DIGITS[digit - '0'];
    }
    return text;
}

} // namespace orv::plt
