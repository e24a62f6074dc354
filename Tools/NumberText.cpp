#include "Tools/NumberText.h"

#include <charconv>
#include <cmath>

namespace orvapp {

std::string shortestNumber(double value) {
    if (std::isnan(value)) {
        return "nan";
    }
    char digits[32];
    return {digits, std::to_chars(digits, digits + sizeof digits, value).ptr};
}

std::string roundedNumber(double value, int significantDigits) {
    if (std::isnan(value)) {
        return "nan";
    }
    char digits[64];
    const auto end =
        std::to_chars(digits, digits + sizeof digits, value, std::chars_format::general, significantDigits).ptr;
    return {digits, end};
}

} // namespace orvapp
