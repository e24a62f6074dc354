#pragma once

#include <string>
#include <string_view>

/// UTF-8 in and out of wide text with one code point per character. Not installed: String and orv::Str are the doors.
namespace rvf::internal {

/// What stands in for text that is not valid: the replacement character.
inline constexpr wchar_t REPLACEMENT_CHARACTER = 0xFFFD;

/// Reads UTF-8. Each longest run of bytes that could have begun a character and does not finish one becomes one
/// REPLACEMENT_CHARACTER, as does any other stray byte: overlong forms, surrogates and values above U+10FFFF are not
/// valid. Never fails.
std::wstring decodeUtf8(std::string_view bytes);

/// Writes UTF-8. Surrogates and values outside U+0000 to U+10FFFF become REPLACEMENT_CHARACTER. Never fails.
std::string encodeUtf8(std::wstring_view text);

} // namespace rvf::internal
