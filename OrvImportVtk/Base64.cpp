#include "OrvImportVtk/Base64.h"

#include <array>
#include <cstdint>
#include <string_view>

namespace orv::imp::cae {
namespace {

constexpr std::uint32_t NO_CHARACTER = 1U << 31;

// For each character its six bits.
constexpr std::array<std::uint32_t, 256> BITS = [] {
    constexpr std::string_view ALPHABET = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::array<std::uint32_t, 256> bits = {};
    bits.fill(NO_CHARACTER);
    for (std::uint32_t i = 0; i < ALPHABET.size(); ++i) {
        bits[std::size_t(ALPHABET[i])] = i;
    }
    return bits;
}();

std::uint32_t bitsOf(char character) {
    return BITS[static_cast<unsigned char>(character)];
}

} // namespace

bool decodeBase64(const char* text, std::size_t count, unsigned char* bytes) {
    std::uint32_t seen = 0;
    for (const unsigned char* end = bytes + count / 3 * 3; bytes != end; text += 4, bytes += 3) {
        const std::uint32_t a = bitsOf(text[0]);
        const std::uint32_t b = bitsOf(text[1]);
        const std::uint32_t c = bitsOf(text[2]);
        const std::uint32_t d = bitsOf(text[3]);
        const std::uint32_t all = a << 18 | b << 12 | c << 6 | d;
        seen |= a | b | c | d;
        bytes[0] = static_cast<unsigned char>(all >> 16);
        bytes[1] = static_cast<unsigned char>(all >> 8);
        bytes[2] = static_cast<unsigned char>(all);
    }
    if (count % 3 != 0) {
        const std::uint32_t a = bitsOf(text[0]);
        const std::uint32_t b = bitsOf(text[1]);
        const std::uint32_t c = count % 3 == 2 ? bitsOf(text[2]) : 0;
        seen |= a | b | c;
        bytes[0] = static_cast<unsigned char>(a << 2 | b >> 4);
        if (count % 3 == 2) {
            bytes[1] = static_cast<unsigned char>(b << 4 | c >> 2);
        }
    }
    return (seen & NO_CHARACTER) == 0;
}

} // namespace orv::imp::cae
