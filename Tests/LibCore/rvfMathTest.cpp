#include "LibCore/rvfMath.h"

#include "Tests/Support/AssertRecorder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

using orvtest::AssertRecorder;
using orvtest::FailedAssert;
using rvf::Math;

namespace {

const double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
const double INFINITE = std::numeric_limits<double>::infinity();

TEST(Math, WrapsTheCLibraryInDouble) {
    EXPECT_EQ(Math::cos(0.5), std::cos(0.5));
    EXPECT_EQ(Math::acos(0.5), std::acos(0.5));
    EXPECT_EQ(Math::sin(0.5), std::sin(0.5));
    EXPECT_EQ(Math::asin(0.5), std::asin(0.5));
    EXPECT_EQ(Math::tan(0.5), std::tan(0.5));
    EXPECT_EQ(Math::atan(0.5), std::atan(0.5));
    EXPECT_EQ(Math::sqrt(2.25), 1.5);
    EXPECT_EQ(Math::floor(-1.5), -2.0);
    EXPECT_EQ(Math::ceil(-1.5), -1.0);
    EXPECT_EQ(Math::fmod(-7.5, 2.0), -1.5);
    EXPECT_EQ(Math::log10(1000.0), 3.0);
}

TEST(Math, WrapsTheCLibraryInFloat) {
    EXPECT_EQ(Math::cos(0.5f), std::cos(0.5f));
    EXPECT_EQ(Math::acos(0.5f), std::acos(0.5f));
    EXPECT_EQ(Math::sin(0.5f), std::sin(0.5f));
    EXPECT_EQ(Math::asin(0.5f), std::asin(0.5f));
    EXPECT_EQ(Math::tan(0.5f), std::tan(0.5f));
    EXPECT_EQ(Math::atan(0.5f), std::atan(0.5f));
    EXPECT_EQ(Math::sqrt(2.25f), 1.5f);
    EXPECT_EQ(Math::floor(-1.5f), -2.0f);
    EXPECT_EQ(Math::ceil(-1.5f), -1.0f);
    EXPECT_EQ(Math::fmod(-7.5f, 2.0f), -1.5f);
    EXPECT_EQ(Math::log10(1000.0f), 3.0f);
    static_assert(std::is_same_v<decltype(Math::sqrt(2.0f)), float>);
    static_assert(std::is_same_v<decltype(Math::sqrt(2.0)), double>);
}

TEST(Math, ConvertsAngles) {
    EXPECT_EQ(Math::toRadians(180.0), 3.141592653589793);
    EXPECT_EQ(Math::toRadians(180.0f), 3.1415927f);
    EXPECT_EQ(Math::toDegrees(3.141592653589793), 180.0);
    EXPECT_EQ(Math::toDegrees(3.1415927f), 180.0f);
    EXPECT_DOUBLE_EQ(Math::toRadians(-90.0), -1.5707963267948966);
    EXPECT_FLOAT_EQ(Math::toDegrees(0.7853982f), 45.0f);
}

TEST(Math, RoundsHalvesUpwards) {
    const std::pair<double, double> cases[] = {{2.5, 3.0},   {-2.5, -2.0}, {2.4, 2.0}, {-2.6, -3.0},
                                               {-0.5, -0.0}, {0.5, 1.0},   {7.0, 7.0}, {-2.4, -2.0}};
    for (const auto& [value, rounded] : cases) {
        EXPECT_EQ(Math::round(value), rounded) << value;
        EXPECT_EQ(Math::round(static_cast<float>(value)), static_cast<float>(rounded)) << value;
    }
}

TEST(Math, IsPow2) {
    for (unsigned int value : {1u, 2u, 4u, 1024u, 0x80000000u}) {
        EXPECT_TRUE(Math::isPow2(value)) << value;
    }
    for (unsigned int value : {0u, 3u, 6u, 0x80000001u, 0xFFFFFFFFu}) {
        EXPECT_FALSE(Math::isPow2(value)) << value;
    }
}

TEST(Math, RoundUpPow2) {
    const std::pair<unsigned int, unsigned int> cases[] = {{0, 1},
                                                           {1, 1},
                                                           {2, 2},
                                                           {3, 4},
                                                           {5, 8},
                                                           {8, 8},
                                                           {9, 16},
                                                           {0x7FFFFFFF, 0x80000000},
                                                           {0x80000000, 0x80000000},
                                                           {0x80000001, 0},
                                                           {0xFFFFFFFF, 0}};
    for (const auto& [value, power] : cases) {
        EXPECT_EQ(Math::roundUpPow2(value), power) << value;
    }
}

TEST(Math, IsUndefinedFromALimitOn) {
    EXPECT_TRUE(Math::isUndefined(1e308));
    EXPECT_TRUE(Math::isUndefined(std::numeric_limits<double>::max()));
    EXPECT_TRUE(Math::isUndefined(INFINITE));
    EXPECT_TRUE(Math::isUndefined(NOT_A_NUMBER));
    EXPECT_FALSE(Math::isUndefined(std::nextafter(1e308, 0.0)));
    EXPECT_FALSE(Math::isUndefined(-INFINITE));
    EXPECT_FALSE(Math::isUndefined(0.0));
    EXPECT_TRUE(Math::isUndefined(2.99e38f));
    EXPECT_TRUE(Math::isUndefined(std::numeric_limits<float>::max()));
    EXPECT_TRUE(Math::isUndefined(std::numeric_limits<float>::quiet_NaN()));
    EXPECT_FALSE(Math::isUndefined(std::nextafter(2.99e38f, 0.0f)));
    EXPECT_FALSE(Math::isUndefined(-3.4e38f));
    // A missing float that was widened is no missing double.
    EXPECT_FALSE(Math::isUndefined(static_cast<double>(std::numeric_limits<float>::max())));
}

TEST(Math, ValueInRangeIncludesBothEnds) {
    EXPECT_TRUE(Math::valueInRange(1, 1, 3));
    EXPECT_TRUE(Math::valueInRange(3, 1, 3));
    EXPECT_FALSE(Math::valueInRange(0, 1, 3));
    EXPECT_FALSE(Math::valueInRange(4, 1, 3));
    EXPECT_TRUE(Math::valueInRange(0.5f, 0.5f, 0.5f));
    EXPECT_FALSE(Math::valueInRange(NOT_A_NUMBER, 0.0, 1.0));
}

TEST(Math, ValueInRangeAssertsItsLimits) {
    AssertRecorder recorder;
    EXPECT_FALSE(Math::valueInRange(2, 3, 1));
    EXPECT_EQ(recorder.take(), (std::vector<FailedAssert>{{"LibCore/rvfMath", "minVal <= maxVal", std::nullopt}}));
    Math::valueInRange(2, 3, 3);
    EXPECT_TRUE(recorder.take().empty());
}

struct AlmostEqualCase {
    double a;
    double b;
    bool equal;
};

TEST(Math, AreAlmostEqual) {
    const AlmostEqualCase cases[] = {
        // Both within the absolute limit.
        {0.0, 0.0, true},
        {1e-13, 0.0, true},
        {1e-12, -1e-12, true},
        // One beyond it, the other 0: the quotient is not asked.
        {2e-12, 0.0, false},
        {1.1e-12, 0.0, false},
        // By the quotient of the smaller and the larger.
        {1.0, 1.0, true},
        {1.0, 1.0 + 5e-13, true},
        {1.0, 1.0 + 2e-12, false},
        {1e20, 1e20 * (1.0 - 5e-13), true},
        {1e20, 1e20 * (1.0 - 2e-12), false},
        {1e-11, 1.0000000000005e-11, true},
        {1e-11, 1.1e-11, false},
        {0.999999999999, 1.0, true},
        {std::nextafter(0.999999999999, 0.0), 1.0, false},
        {1.0, -1.0, false},
        {-3.0, -3.0, true},
        {2e-12, 1e-13, false},
        // An infinity by itself gives no quotient.
        {INFINITE, INFINITE, false},
        {INFINITE, 1.0, false},
        // A NaN that becomes the larger operand is "not above 0".
        {NOT_A_NUMBER, 5.0, false},
        {NOT_A_NUMBER, 0.0, true},
        {5.0, NOT_A_NUMBER, true},
        {0.0, NOT_A_NUMBER, true},
    };
    for (const AlmostEqualCase& c : cases) {
        EXPECT_EQ(Math::areAlmostEqual(c.a, c.b), c.equal) << c.a << " and " << c.b;
        if (!std::isnan(c.a) && !std::isnan(c.b)) {
            EXPECT_EQ(Math::areAlmostEqual(c.b, c.a), c.equal) << c.b << " and " << c.a;
        }
    }
}

TEST(Math, CrcOfKnownTexts) {
    EXPECT_EQ(Math::crc("123456789", 9), 0xCBF43926u);
    EXPECT_EQ(Math::crc("", 0), 0u);
    EXPECT_EQ(Math::crc(nullptr, 0), 0u);
    // Published values of the same checksum.
    EXPECT_EQ(Math::crc("a", 1), 0xE8B7BE43u);
    EXPECT_EQ(Math::crc("The quick brown fox jumps over the lazy dog", 43), 0x414FA339u);
    const std::vector<unsigned char> zeros(32, 0);
    EXPECT_EQ(Math::crc(zeros.data(), zeros.size()), 0x190A55ADu);
}

// Bit by bit, as the polynomial says.
unsigned int slowCrc(const unsigned char* bytes, size_t size) {
    unsigned int remainder = 0xFFFFFFFF;
    for (size_t i = 0; i < size; ++i) {
        remainder ^= bytes[i];
        for (int bit = 0; bit < 8; ++bit) {
            remainder = (remainder >> 1) ^ ((remainder & 1) != 0 ? 0xEDB88320u : 0u);
        }
    }
    return remainder ^ 0xFFFFFFFF;
}

TEST(Math, CrcOfEveryLengthAndPlace) {
    std::vector<unsigned char> bytes(200);
    unsigned int state = 1;
    for (unsigned char& byte : bytes) {
        state = state * 1664525u + 1013904223u;
        byte = static_cast<unsigned char>(state >> 24);
    }
    for (size_t start = 0; start < 17; ++start) {
        for (size_t size = 0; start + size <= bytes.size(); ++size) {
            ASSERT_EQ(Math::crc(bytes.data() + start, size), slowCrc(bytes.data() + start, size))
                << start << ' ' << size;
        }
    }
}

} // namespace
