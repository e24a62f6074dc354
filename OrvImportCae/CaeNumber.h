#pragma once

#include "LibCore/rvfExport.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace orv::imp::cae {

/// Reads the number that fills a column, leading and trailing blanks allowed: bit-equal to `strtod`, in whatever
/// locale the process runs. Besides decimal numbers these are understood:
/// - an exponent without its letter, as Fortran writes when it has three digits: `1.5-105`,
/// - `D` for `E`,
/// - NaN and Inf, in any case,
/// - a blank column: UNDEFINED_DOUBLE.
/// @return false for anything else; `value` is then left alone
ORV_API bool readCaeReal(const char* begin, const char* end, double* value);

/// Reads the whole number that fills a column, leading and trailing blanks allowed.
/// @return false when there is none or it has no room in `value`, which is then left alone
ORV_API bool readCaeInteger(const char* begin, const char* end, std::int64_t* value);

/// The fewest digits that are read as the same number.
std::string caeNumberText(double number);

namespace internal {

inline bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

inline char lower(char c) {
    return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c;
}

/// The text without blanks at its ends.
std::string_view withoutBlanks(const char* begin, const char* end);

} // namespace internal

} // namespace orv::imp::cae
