#include "OrvImportCae/FrdNumber.h"

#include "OrvCore/Defines.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>

namespace orv::imp::cae {
namespace {

// Longer than any number that a column or a header field holds.
constexpr std::size_t LONGEST_NUMBER = 64;

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c;
}

std::string_view withoutBlanks(const char* begin, const char* end) {
    while (begin < end && *begin == ' ') {
        ++begin;
    }
    while (end > begin && end[-1] == ' ') {
        --end;
    }
    return {begin, std::size_t(end - begin)};
}

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

// The end of the number that begins at `begin`, when the next one may follow at once.
const char* endOfTouchingReal(const char* begin, const char* end) {
    const char* at = begin;
    if (at < end && (*at == '-' || *at == '+')) {
        ++at;
    }
    while (at < end && (isDigit(*at) || *at == '.')) {
        ++at;
    }
    const char* exponent = at;
    const bool hasLetter = exponent < end && (lower(*exponent) == 'e' || lower(*exponent) == 'd');
    exponent += hasLetter;
    if (exponent < end && (*exponent == '-' || *exponent == '+')) {
        ++exponent;
    }
    const char* digits = exponent;
    while (digits < end && isDigit(*digits)) {
        ++digits;
    }
    if (digits < end && *digits == '.' && digits > exponent) {
        --digits; // This digit stands ahead of the next number's point.
    }
    return digits > exponent ? digits : at;
}

// The end of NaN or Inf.
const char* endOfWord(const char* begin, const char* end) {
    const bool hasSign = begin < end && (*begin == '-' || *begin == '+');
    return std::find_if_not(begin + hasSign, end, [](char c) { return lower(c) >= 'a' && lower(c) <= 'z'; });
}

} // namespace

bool readFrdReal(const char* begin, const char* end, double* value) {
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

// Most of what gets here is noise, numbers too small for the quick way but of the usual shape, which the library reads
// as it stands.
bool internal::readUnusualFrdValue(const char* text, double* value) {
    const char* end = text + FRD_VALUE_WIDTH;
    const bool isUnsigned = *text == ' ' || *text == '-';
    double size = 0.0;
    if (isUnsigned && isDigit(text[1])) {
        const std::from_chars_result result = std::from_chars(text + 1, end, size);
        if (result.ec == std::errc() && result.ptr == end) {
            *value = *text == '-' ? -size : size;
            return true;
        }
    }
    return readFrdReal(text, end, value);
}

bool internal::readUnusualFrdId(const char* begin, const char* end, int* id) {
    std::int64_t value = 0;
    if (!readFrdInteger(begin, end, &value) || value < 0 || value > std::numeric_limits<int>::max()) {
        return false;
    }
    *id = int(value);
    return true;
}

bool readFrdTouchingReals(const char* begin, const char* end, std::size_t count, double* values) {
    const char* at = begin;
    for (std::size_t i = 0; i < count; ++i) {
        while (at < end && *at == ' ') {
            ++at;
        }
        const char* numberEnd = endOfTouchingReal(at, end);
        const bool isNumber = numberEnd > at && (isDigit(numberEnd[-1]) || numberEnd[-1] == '.');
        numberEnd = isNumber ? numberEnd : endOfWord(at, end);
        if (numberEnd == at || !readFrdReal(at, numberEnd, &values[i])) {
            return false;
        }
        at = numberEnd;
    }
    return withoutBlanks(at, end).empty();
}

bool readFrdInteger(const char* begin, const char* end, std::int64_t* value) {
    const std::string_view text = withoutBlanks(begin, end);
    std::int64_t number = 0;
    const std::from_chars_result result = std::from_chars(text.data(), text.data() + text.size(), number);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size()) {
        return false;
    }
    *value = number;
    return true;
}

} // namespace orv::imp::cae
