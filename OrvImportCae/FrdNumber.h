#pragma once

#include "OrvImportCae/CaeNumber.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace orv::imp::cae {

static_assert(std::endian::native == std::endian::little, "digits are gathered from words of eight characters");

/// The characters of one value in a row of a text block, as `%12.5E` writes it.
inline constexpr std::size_t FRD_VALUE_WIDTH = 12;

/// Reads `count` numbers that stand one behind the other from `begin` on, with blanks between them or none, wherever
/// the columns are. Where numbers touch, `1.00000E+0001.00000E+000` say, a digit ahead of a decimal point begins the
/// next number. Rows are like that when a program wrote some of the exponents with three digits.
/// @return false when there are not exactly `count` numbers up to `end`
bool readFrdTouchingReals(const char* begin, const char* end, std::size_t count, double* values);

/// The characters of a node's or element's number in rows with long numbers.
inline constexpr std::size_t FRD_LONG_ID_WIDTH = 10;

namespace internal {

template <class Word>
inline Word loadWord(const char* text) {
    Word word;
    std::memcpy(&word, text, sizeof word);
    return word;
}

/// Whether what is left of eight characters, less '0' each, are the values of digits.
inline bool areEightValues(std::uint64_t word, std::uint64_t values) {
    return (((word + 0x4646464646464646) | values) & 0x8080808080808080) == 0;
}

/// The number that eight values of digits make, the first one in the lowest byte. Pairs, then fours, then all eight are
/// joined.
inline std::uint32_t joinEightValues(std::uint64_t values) {
    constexpr std::uint64_t EVERY_FOURTH = 0x000000FF000000FF;
    values = values * 10 + (values >> 8);
    return std::uint32_t(((values & EVERY_FOURTH) * (100 + (std::uint64_t(1000000) << 32)) +
                          ((values >> 16) & EVERY_FOURTH) * (1 + (std::uint64_t(10000) << 32))) >>
                         32);
}

/// What a number of six digits, 123456 for 1.23456, is to be multiplied with and then divided by. One of them is 1 in
/// size, the other one a power of ten that a double holds exactly, so there is one rounding, as in `strtod`.
struct FrdScale {
    double factor;
    double divisor;
};

/// Larger exponents take powers of ten that are not exact.
inline constexpr int LARGEST_QUICK_EXPONENT = 17;

/// By sign, sign of the exponent, and exponent.
inline constexpr auto FRD_SCALES = [] {
    std::array<std::array<std::array<FrdScale, LARGEST_QUICK_EXPONENT + 1>, 2>, 2> scales = {};
    for (int isNegative = 0; isNegative < 2; ++isNegative) {
        for (int isSmall = 0; isSmall < 2; ++isSmall) {
            for (int exponent = 0; exponent <= LARGEST_QUICK_EXPONENT; ++exponent) {
                FrdScale scale = {isNegative ? -1.0 : 1.0, 1.0};
                const int power = (isSmall ? -exponent : exponent) - 5;
                for (int i = 0; i < power; ++i) {
                    scale.factor *= 10.0;
                }
                for (int i = 0; i < -power; ++i) {
                    scale.divisor *= 10.0;
                }
                scales[std::size_t(isNegative)][std::size_t(isSmall)][std::size_t(exponent)] = scale;
            }
        }
    }
    return scales;
}();

/// What readFrdValue() leaves over.
bool readUnusualFrdValue(const char* text, double* value);

/// What readFrdLongId() leaves over.
bool readUnusualFrdId(const char* begin, const char* end, int* id);

} // namespace internal

/// Reads the number of a node or element, 0 to 2147483647, that fills FRD_LONG_ID_WIDTH characters. Quick for at most
/// eight digits with blanks in front.
inline bool readFrdLongId(const char* text, int* id) {
    using namespace internal;
    const std::uint64_t word = loadWord<std::uint64_t>(text + 2);
    // All ones in the bytes that may be blanks; digits have this bit.
    const std::uint64_t blanks = ((~word & 0x1010101010101010) >> 4) * 0xFF;
    const std::uint64_t digits = word | (blanks & 0x3030303030303030);
    const std::uint64_t values = digits - 0x3030303030303030;
    const bool areBlanks = ((word ^ 0x2020202020202020) & blanks) == 0;
    const bool areInFront = (blanks & (blanks + 1)) == 0 && blanks != ~std::uint64_t(0);
    const bool isShort = loadWord<std::uint16_t>(text) == 0x2020;
    if (!(areBlanks & areInFront & isShort & areEightValues(digits, values))) [[unlikely]] {
        return readUnusualFrdId(text, text + FRD_LONG_ID_WIDTH, id);
    }
    *id = int(joinEightValues(values));
    return true;
}

/// The same for any width.
inline bool readFrdId(const char* text, std::size_t width, int* id) {
    return width == FRD_LONG_ID_WIDTH ? readFrdLongId(text, id) : internal::readUnusualFrdId(text, text + width, id);
}

/// Reads a value of FRD_VALUE_WIDTH characters; the same answer as readCaeReal(), but quick for what `%12.5E` writes,
/// "-1.23456E+07". Signs and exponents come in any order in a file, so there are no branches on them.
inline bool readFrdValue(const char* text, double* value) {
    using namespace internal;
    const std::uint64_t head = loadWord<std::uint64_t>(text);     // "-1.23456"
    const std::uint32_t tail = loadWord<std::uint32_t>(text + 8); // "E+07"
    // The digits of the exponent, then the six of the number: the first of them moves into the place of the point.
    const std::uint64_t digits = (head & 0xFFFFFFFFFF000000) | ((head & 0xFF00) << 8) | (tail >> 16);
    const std::uint64_t values = digits - 0x3030303030303030;
    // One bit tells blank from minus, another one plus from minus; then the other characters must be what they should.
    const std::uint32_t isNegative = head & 1;
    const std::uint32_t isSmall = (tail >> 10) & 1;
    const std::uint32_t headFrame = ' ' + ('.' << 16) + isNegative * ('-' - ' ');
    const std::uint32_t tailFrame = 'E' + ('+' << 8) + isSmall * (('-' - '+') << 8);
    const std::uint32_t strangers = ((head & 0xFF00FF) ^ headFrame) | ((tail & 0xFFFF) ^ tailFrame);
    const std::uint32_t exponent = std::uint32_t(values & 0xFF) * 10 + std::uint32_t((values >> 8) & 0xFF);
    if (strangers != 0 || !areEightValues(digits, values) || exponent > LARGEST_QUICK_EXPONENT) [[unlikely]] {
        return readUnusualFrdValue(text, value);
    }
    const FrdScale& scale = FRD_SCALES[isNegative][isSmall][exponent];
    *value = double(joinEightValues(values & ~std::uint64_t(0xFFFF))) * scale.factor / scale.divisor;
    return true;
}

} // namespace orv::imp::cae
