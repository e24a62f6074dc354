#pragma once

#include <string>

namespace orvapp {

/// The fewest digits that read back as the same value, with a '.' in every locale; "nan", "inf", "-inf".
std::string shortestNumber(double value);

/// So many significant digits at most, without trailing zeros, with a '.' in every locale.
std::string roundedNumber(double value, int significantDigits);

} // namespace orvapp
