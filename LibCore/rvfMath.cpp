#include "LibCore/rvfMath.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <numbers>

namespace rvf {
namespace {

// Sixteen bytes are taken at a time, each through a table of its own: table k tells what a byte makes of the remainder
// when k more bytes follow it. Table 0 alone is the plain form.
constexpr std::size_t SLICES = 16;
using CrcTables = std::array<std::array<std::uint32_t, 256>, SLICES>;

constexpr CrcTables makeCrcTables() {
    constexpr std::uint32_t polynomial = 0xEDB88320;
    CrcTables tables = {};
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        std::uint32_t remainder = byte;
        for (int bit = 0; bit < 8; ++bit) {
            remainder = (remainder >> 1) ^ ((remainder & 1) != 0 ? polynomial : 0);
        }
        tables[0][byte] = remainder;
    }
    for (std::size_t slice = 1; slice < SLICES; ++slice) {
        for (std::size_t byte = 0; byte < 256; ++byte) {
            const std::uint32_t before = tables[slice - 1][byte];
            tables[slice][byte] = (before >> 8) ^ tables[0][before & 0xFF];
        }
    }
    return tables;
}

constexpr CrcTables CRC_TABLES = makeCrcTables();

std::uint32_t littleEndian(const unsigned char* bytes) {
    return std::uint32_t(bytes[0]) | std::uint32_t(bytes[1]) << 8 | std::uint32_t(bytes[2]) << 16 |
           std::uint32_t(bytes[3]) << 24;
}

// The part of four bytes, the last of which has `following` bytes of the sixteen behind it.
std::uint32_t slice(std::uint32_t word, std::size_t following) {
    return CRC_TABLES[following + 3][word & 0xFF] ^ CRC_TABLES[following + 2][(word >> 8) & 0xFF] ^
           CRC_TABLES[following + 1][(word >> 16) & 0xFF] ^ CRC_TABLES[following][word >> 24];
}

} // namespace

double Math::toRadians(double degrees) {
    return std::numbers::pi * degrees / 180.0;
}

float Math::toRadians(float degrees) {
    return std::numbers::pi_v<float> * degrees / 180.0f;
}

double Math::toDegrees(double radians) {
    return 180.0 * radians / std::numbers::pi;
}

float Math::toDegrees(float radians) {
    return 180.0f * radians / std::numbers::pi_v<float>;
}

double Math::round(double x) {
    return std::floor(x + 0.5);
}

float Math::round(float x) {
    return std::floor(x + 0.5f);
}

bool Math::isPow2(unsigned int x) {
    return std::has_single_bit(x);
}

unsigned int Math::roundUpPow2(unsigned int x) {
    return x > 0x80000000u ? 0 : std::bit_ceil(x);
}

bool Math::isUndefined(double x) {
    return !(x < 1e308);
}

bool Math::isUndefined(float x) {
    return !(x < 2.99e38f);
}

bool Math::areAlmostEqual(double a, double b) {
    constexpr double absoluteLimit = 1e-12;
    const double magnitudeA = std::fabs(a);
    const double magnitudeB = std::fabs(b);
    if (magnitudeA <= absoluteLimit && magnitudeB <= absoluteLimit) {
        return true;
    }
    const double larger = magnitudeA > magnitudeB ? a : b;
    const double smaller = magnitudeA > magnitudeB ? b : a;
    if (!(std::fabs(larger) > 0.0)) {
        return true;
    }
    if (smaller == 0.0) {
        return std::fabs(larger) < absoluteLimit;
    }
    const double quotient = smaller / larger;
    return quotient >= 0.999999999999 && quotient <= 1.000000000001;
}

unsigned int Math::crc(const void* data, unsigned long size) {
    const unsigned char* bytes = static_cast<const unsigned char*>(data);
    std::uint32_t remainder = 0xFFFFFFFF;
    for (; size >= SLICES; size -= SLICES, bytes += SLICES) {
        remainder = slice(littleEndian(bytes) ^ remainder, 12) ^ slice(littleEndian(bytes + 4), 8) ^
                    slice(littleEndian(bytes + 8), 4) ^ slice(littleEndian(bytes + 12), 0);
    }
    for (; size > 0; --size, ++bytes) {
        remainder = (remainder >> 8) ^ CRC_TABLES[0][(remainder ^ *bytes) & 0xFF];
    }
    return ~remainder;
}

} // namespace rvf
