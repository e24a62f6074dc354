#pragma once

#include <cstddef>

namespace orv::imp::cae {

/// How many characters stand for so many bytes, with those that fill up the last four.
constexpr std::size_t base64Length(std::size_t byteCount) {
    return (byteCount + 2) / 3 * 4;
}

/// Bytes from the begin of a text in base64, of which base64Length(count) characters must be there. What stands behind
/// the last byte is not looked at, whether it is more of the text or what fills it up.
/// @return false when a character is none of the alphabet; the bytes are anything then
bool decodeBase64(const char* text, std::size_t count, unsigned char* bytes);

} // namespace orv::imp::cae
