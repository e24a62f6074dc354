#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace orv::imp::cae {

static_assert(std::endian::native == std::endian::little, "digits are gathered from words of eight characters");

/// The characters of one value in a row of a text block, as `%12.5E` writes it.
inline constexpr std::size_t FRD_VALUE_WIDTH = 12;

/// Reads the number that fills a column, leading and trailing blanks allowed: bit-equal to `strtod`, in whatever
/// locale the process runs. Besides decimal numbers these are understood:
/// - an exponent without its letter, as Fortran writes when it has three digits: `1.5-105`,
/// - `D` for `E`,
/// - NaN and Inf, in any case,
/// - a blank column: UNDEFINED_DOUBLE.
/// @return false for anything else; `value` is then left alone
bool readFrdReal(const char* begin, const char* end, double* value);

/// Reads `count` numbers that stand one behind the other from `begin` on, with blanks between them or none, wherever
/// the columns are. Where numbers touch, `1.00000E+0001.00000E+000` say, a digit ahead of a decimal point begins the
/// next number. Rows are like that when a program wrote some of the exponents with three digits.
/// @return false when there are not exactly `count` numbers up to `end`
bool readFrdTouchingReals(const char* begin, const char* end, std::size_t count, double* values);

/// Reads the whole number that fills a column, leading and trailing blanks allowed.
/// @return false when there is none or it has no room in `value`, which is then left alone
bool readFrdInteger(const char* begin, const char* end, std::int64_t* value);

namespace internal {

inline constexpr std::uint64_t ALL_ZERO_DIGITS = 0x3030303030303030;

template <class Word>
inline Word loadWord(const char* text) {
    Word word;
    std::memcpy(&word, text, sizeof word);
    return word;
}

inline bool areEightDigits(std::uint64_t word) {
    return (((word + 0x4646464646464646) | (word - ALL_ZERO_DIGITS)) & 0x8080808080808080) == 0;
}

/// The number that eight digits are, the first one in the lowest byte. Pairs, then fours, then all eight are joined.
inline std::uint32_t eightDigits(std::uint64_t word) {
    word -= ALL_ZERO_DIGITS;
    word = word * 10 + (word >> 8);
    word = ((word & 0x000000FF000000FF) * (100 + (std::uint64_t(1000000) << 32)) +
            ((word >> 16) & 0x000000FF000000FF) * (1 + (std::uint64_t(10000) << 32))) >>
           32;
    return std::uint32_t(word);
}

/// The powers of ten that a double holds exactly.
inline constexpr int LARGEST_EXACT_POWER = 22;
inline constexpr double EXACT_POWERS[LARGEST_EXACT_POWER + 1] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                                 1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                                                 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

} // namespace internal

/// Reads a value of FRD_VALUE_WIDTH characters; the same answer as readFrdReal(), but quick for what `%12.5E` writes.
///
/// The six digits make a whole number and the power of ten is exact where it is small, so one division or
/// multiplication rounds once, as `strtod` does.
inline bool readFrdValue(const char* text, double* value) {
    using namespace internal;
    const std::uint64_t head = loadWord<std::uint64_t>(text);     // "-1.23456"
    const std::uint32_t tail = loadWord<std::uint32_t>(text + 8); // "E-07"
    // The point goes, the first digit moves up into its place, and two zeros stand in front.
    const std::uint64_t digits = (head & 0xFFFFFFFFFF000000) | ((head & 0xFF00) << 8) | 0x3030;
    const unsigned char sign = head & 0xFF;
    const unsigned char point = (head >> 16) & 0xFF;
    const unsigned char exponentSign = (tail >> 8) & 0xFF;
    const unsigned tens = ((tail >> 16) & 0xFF) - '0';
    const unsigned ones = (tail >> 24) - '0';
    const bool isUsual = areEightDigits(digits) & (point == '.') & ((sign == ' ') | (sign == '-')) &
                         ((tail & 0xFF) == 'E') & ((exponentSign == '+') | (exponentSign == '-')) & (tens < 10) &
                         (ones < 10);
    const int exponent = int(tens * 10 + ones);
    const int power = (exponentSign == '-' ? -exponent : exponent) - 5;
    if (!isUsual || power < -LARGEST_EXACT_POWER || power > LARGEST_EXACT_POWER) [[unlikely]] {
        return readFrdReal(text, text + FRD_VALUE_WIDTH, value);
    }
    const double mantissa = eightDigits(digits);
    const double size = power < 0 ? mantissa / EXACT_POWERS[-power] : mantissa * EXACT_POWERS[power];
    *value = sign == '-' ? -size : size;
    return true;
}

} // namespace orv::imp::cae
