#include "LibCore/rvfUtf8.h"

#include <cstdint>

namespace rvf::internal {
namespace {

/// The first byte of a sequence: how many bytes follow, its share of the value, and the range of the second byte. The
/// range of the second byte alone keeps overlong forms, surrogates and too large values out.
struct Lead {
    int following = -1; ///< -1 for a byte that begins no character.
    uint32_t bits = 0;
    uint8_t low = 0x80;
    uint8_t high = 0xBF;
};

Lead leadOf(uint8_t byte) {
    if (byte < 0x80) {
        return {0, byte};
    }
    if (byte >= 0xC2 && byte <= 0xDF) {
        return {1, byte & 0x1Fu};
    }
    if (byte >= 0xE0 && byte <= 0xEF) {
        return {2, byte & 0x0Fu, uint8_t(byte == 0xE0 ? 0xA0 : 0x80), uint8_t(byte == 0xED ? 0x9F : 0xBF)};
    }
    if (byte >= 0xF0 && byte <= 0xF4) {
        return {3, byte & 0x07u, uint8_t(byte == 0xF0 ? 0x90 : 0x80), uint8_t(byte == 0xF4 ? 0x8F : 0xBF)};
    }
    return {};
}

/// Reads one character at `position` and steps over what it has used, which is one byte at least.
wchar_t decodeOne(std::string_view bytes, size_t& position) {
    Lead lead = leadOf(uint8_t(bytes[position++]));
    if (lead.following < 0) {
        return REPLACEMENT_CHARACTER;
    }
    uint32_t value = lead.bits;
    for (int i = 0; i < lead.following; ++i) {
        uint8_t byte = position < bytes.size() ? uint8_t(bytes[position]) : 0;
        if (byte < lead.low || byte > lead.high) {
            return REPLACEMENT_CHARACTER;
        }
        value = value << 6 | (byte & 0x3Fu);
        lead.low = 0x80;
        lead.high = 0xBF;
        ++position;
    }
    return wchar_t(value);
}

bool isCodePoint(uint32_t value) {
    return value <= 0x10FFFF && (value < 0xD800 || value > 0xDFFF);
}

void appendEncoded(std::string& bytes, uint32_t value) {
    auto tail = [value](int shift) { return char(0x80 | (value >> shift & 0x3F)); };
    if (value < 0x80) {
        bytes += char(value);
    } else if (value < 0x800) {
        bytes += {char(0xC0 | value >> 6), tail(0)};
    } else if (value < 0x10000) {
        bytes += {char(0xE0 | value >> 12), tail(6), tail(0)};
    } else {
        bytes += {char(0xF0 | value >> 18), tail(12), tail(6), tail(0)};
    }
}

} // namespace

std::wstring decodeUtf8(std::string_view bytes) {
    std::wstring text;
    text.reserve(bytes.size());
    for (size_t position = 0; position < bytes.size();) {
        text += decodeOne(bytes, position);
    }
    return text;
}

std::string encodeUtf8(std::wstring_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (wchar_t character : text) {
        uint32_t value = uint32_t(character);
        appendEncoded(bytes, isCodePoint(value) ? value : uint32_t(REPLACEMENT_CHARACTER));
    }
    return bytes;
}

} // namespace rvf::internal
