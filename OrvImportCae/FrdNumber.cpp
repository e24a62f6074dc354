#include "OrvImportCae/FrdNumber.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace orv::imp::cae {

using internal::isDigit;
using internal::lower;
using internal::withoutBlanks;

namespace {

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
    return readCaeReal(text, end, value);
}

bool internal::readUnusualFrdId(const char* begin, const char* end, int* id) {
    std::int64_t value = 0;
    if (!readCaeInteger(begin, end, &value) || value < 0 || value > std::numeric_limits<int>::max()) {
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
        if (numberEnd == at || !readCaeReal(at, numberEnd, &values[i])) {
            return false;
        }
        at = numberEnd;
    }
    return withoutBlanks(at, end).empty();
}

} // namespace orv::imp::cae
