#include "OrvImportCae/CaeNumber.h"

#include "OrvCore/Defines.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <string_view>

namespace orv::imp::cae {

using internal::isDigit;
using internal::lower;
using internal::withoutBlanks;

namespace {

// Longer than any number that a column or a header field holds.
constexpr std::size_t LONGEST_NUMBER = 64;

bool equalsIgnoringCase(std::string_view text, std::string_view small) {
    return std::equal(text.begin(), text.end(), small.begin(), small.end(),
                      [](char a, char b) { return lower(a) == b; });
}

bool readSpecial(std::string_view unsignedText, double* value) {
    if (equalsIgnoringCase(unsignedText, "nan")) {
        *value = std::numeric_limits<double>::quiet_NaN();
        return true;
    }
    if (equalsIgnoringCase(unsignedText, "inf") || equalsIgnoringCase(unsignedText, "infinity")) {
        *value = std::numeric_limits<double>::infinity();
        return true;
    }
    return false;
}

// What from_chars does not say about a number out of range: whether it is too large or too small.
double outOfRange(std::string_view number) {
    const std::size_t exponent = number.find('e');
    const bool isSmall = exponent != std::string_view::npos && number[exponent + 1] == '-';
    return isSmall ? 0.0 : std::numeric_limits<double>::infinity();
}

// Digits, a point, and an exponent with a small "e" and without a plus sign, which is what from_chars understands.
std::size_t spellForLibrary(std::string_view text, char* spelled) {
    std::size_t count = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = lower(text[i]);
        const bool isSign = c == '+' || c == '-';
        const bool followsLetter = count > 0 && spelled[count - 1] == 'e';
        if (isSign && !followsLetter) {
            spelled[count++] = 'e';
        }
        if (c != '+') {
            spelled[count++] = c == 'd' ? 'e' : c;
        }
    }
    return count;
}

} // namespace

std::string_view internal::withoutBlanks(const char* begin, const char* end) {
    while (begin < end && *begin == ' ') {
        ++begin;
    }
    while (end > begin && end[-1] == ' ') {
        --end;
    }
    return {begin, std::size_t(end - begin)};
}

bool readCaeReal(const char* begin, const char* end, double* value) {
    std::string_view text = withoutBlanks(begin, end);
    if (text.empty()) {
        *value = UNDEFINED_DOUBLE;
        return true;
    }
    const bool isNegative = text[0] == '-';
    if (isNegative || text[0] == '+') {
        text.remove_prefix(1);
    }
    double size = 0.0;
    if (text.empty() || text.size() > LONGEST_NUMBER) {
        return false;
    }
    if (isDigit(text[0]) || text[0] == '.') {
        char spelled[2 * LONGEST_NUMBER];
        const std::size_t count = spellForLibrary(text, spelled);
        const std::from_chars_result result = std::from_chars(spelled, spelled + count, size);
        if (result.ptr != spelled + count) {
            return false;
        }
        if (result.ec == std::errc::result_out_of_range) {
            size = outOfRange({spelled, count});
        } else if (result.ec != std::errc()) {
            return false;
        }
    } else if (!readSpecial(text, &size)) {
        return false;
    }
    *value = isNegative ? -size : size;
    return true;
}

bool readCaeInteger(const char* begin, const char* end, std::int64_t* value) {
    const std::string_view text = withoutBlanks(begin, end);
    std::int64_t number = 0;
    const std::from_chars_result result = std::from_chars(text.data(), text.data() + text.size(), number);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size()) {
        return false;
    }
    *value = number;
    return true;
}

std::string caeNumberText(double number) {
    std::array<char, 32> text;
    return std::string(text.data(), std::to_chars(text.data(), text.data() + text.size(), number).ptr);
}

} // namespace orv::imp::cae
