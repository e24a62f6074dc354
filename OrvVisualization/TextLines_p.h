#pragma once

#include "OrvCore/Str.h"

#include <cstddef>
#include <vector>

namespace orv::vis {

class Font;

/// A text in lines that are not wider than asked: broken behind blanks and signs where that is possible, anywhere
/// otherwise. What goes beyond the last line is left out, which three dots tell. A line has at least one character.
/// @param lineCount at least 1
std::vector<Str> textLines(const Font& font, const Str& text, double size, double width, std::size_t lineCount);

} // namespace orv::vis
