#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace orvapp {

/// The columns that a UTF-8 text takes on screen: its code points, each as one column.
std::size_t columnCount(std::string_view utf8);

/// What stands in `count` columns from column `first` on, counted from 0; less at the end of the text.
std::string_view columnRange(std::string_view utf8, std::size_t first, std::size_t count);

/// The text when it has at most so many columns, otherwise its beginning and "...", together so many. `columns` is 3 or
/// more.
std::string shortened(std::string_view utf8, std::size_t columns);

/// The text with a '?' for each control character, so that a name from a file can neither break a table nor steer the
/// terminal.
std::string printable(std::string_view utf8);

/// The value with at most six significant digits; "-" when it is undefined or not a number.
std::string briefNumber(double value);

/// The fewest digits that read back as the same value; "-" when it is undefined.
std::string exactNumber(double value);

/// A number of things in words: "1 state", "2 states".
std::string counted(std::size_t count, std::string_view singular);

} // namespace orvapp
