#pragma once

#include "OrvCore/Str.h"

#include <cstddef>
#include <string>

namespace orv::ug {

class Error;
class Situation;

// A situation as the text of an XML file, see Docs/formats.md.

/// In bytes. Neither longer texts nor those with more tags are written, as they would not be read.
inline constexpr std::size_t LONGEST_SITUATION_XML = std::size_t(32) << 20;
inline constexpr std::size_t MOST_SITUATION_TAGS = 1000000;
/// Of elements in one another.
inline constexpr int DEEPEST_SITUATION_XML = 64;

/// @param path the file that the text is for, for texts of failures
bool writeSituationXml(const Situation& situation, const Str& path, std::string* text, Error* error);

/// @param text changed
/// @return false when something is wrong with the text; the situation is then as it was
bool readSituationXml(std::string& text, const Str& path, Situation* situation, Error* error);

} // namespace orv::ug
