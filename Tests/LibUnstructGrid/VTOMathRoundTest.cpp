#include "LibUnstructGrid/VTOMathRound.h"

#include "LibUnstructGrid/VTOMathConstants.h"
#include "Tests/LibUnstructGrid/PortableRandom.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>

using orvtest::PortableRandom;

namespace {

constexpr double inf = std::numeric_limits<double>::infinity();

TEST(FloatDIV, TruncatesOrIsUndefined) {
    EXPECT_EQ(VTFloatDIV(7.0f, 2.0f), 3);
    EXPECT_EQ(VTFloatDIV(-7.0f, 2.0f), -3);
    EXPECT_EQ(VTFloatDIV(1.0f, 0.0f), VT_UNDEFINED_INT);
    EXPECT_EQ(VTFloatDIV(1.0f, -9e-31f), VT_UNDEFINED_INT);
    EXPECT_EQ(VTFloatDIV(2e-30f, 1e-30f), 2);
}

TEST(Squared, KeepsTheSignWhenAsked) {
    EXPECT_EQ(VTSquared(-3, false), 9);
    EXPECT_EQ(VTSquared(-3, true), -9);
    EXPECT_EQ(VTSquared(3, true), 9);
    EXPECT_EQ(VTSquared(0, true), 0);
    EXPECT_EQ(VTSquared(46340, false), 2147395600);
    // 46341^2 is 2147488281, which is 2^32 - 2147479015.
    EXPECT_EQ(VTSquared(46341, false), -2147479015);
    EXPECT_EQ(VTSquared(-1.5f, false), 2.25f);
    EXPECT_EQ(VTSquared(-1.5f, true), -2.25f);
    EXPECT_EQ(VTSquared(1.5f, true), 2.25f);
    EXPECT_EQ(VTSquared(-1.5, false), 2.25);
    EXPECT_EQ(VTSquared(-1.5, true), -2.25);
    EXPECT_EQ(VTSquared(1.5, true), 2.25);
}

TEST(Squared, SmallMagnitudesGiveZero) {
    EXPECT_EQ(VTSquared(0.99e-18, false), 0.0);
    EXPECT_EQ(VTSquared(-0.99e-18, true), 0.0);
    EXPECT_EQ(VTSquared(1e-18, false), 1e-18 * 1e-18);
    EXPECT_EQ(VTSquared(-1e-18, true), -(1e-18 * 1e-18));
    EXPECT_EQ(VTSquared(0.99e-18f, false), 0.0f);
    EXPECT_EQ(VTSquared(1.01e-18f, false), 1.01e-18f * 1.01e-18f);
    EXPECT_GT(VTSquared(1.01e-18f, false), 0.0f);
    EXPECT_TRUE(std::isnan(VTSquared(std::nan(""), false)));
}

TEST(Pow2, ShiftsModulo32) {
    for (unsigned int n = 0; n < 32; ++n) {
        EXPECT_EQ(VTPow2(n), static_cast<unsigned int>(std::ldexp(1.0, static_cast<int>(n))));
    }
    EXPECT_EQ(VTPow2(32), 1u);
    EXPECT_EQ(VTPow2(37), 32u);
}

TEST(RoundUpPow2, GoesByTheLogarithm) {
    const unsigned int rows[][2] = {{0, 1},
                                    {1, 1},
                                    {2, 2},
                                    {3, 4},
                                    {4, 4},
                                    {5, 8},
                                    {8, 8},
                                    {9, 16},
                                    {1000, 1024},
                                    {1024, 1024},
                                    {1025, 2048},
                                    {(1u << 28) + 1, 1u << 29},
                                    {(1u << 30) + 1, 1u << 31}};
    for (const auto& [n, expected] : rows) {
        EXPECT_EQ(VTRoundUpPow2(n), expected) << n;
    }
}

// ln(2^29) / ln(2) comes out as 29.000000000000004 and that of 2^31 as 31.000000000000004: so these two, alone among
// the powers, go up to the next one, and there is none above 2^31.
TEST(RoundUpPow2, TwoPowersDoNotReturnThemselves) {
    for (unsigned int n = 0; n < 32; ++n) {
        const unsigned int expected = n == 29 ? 1u << 30 : (n == 31 ? 1u : 1u << n);
        EXPECT_EQ(VTRoundUpPow2(1u << n), expected) << n;
    }
    EXPECT_EQ(VTRoundUpPow2((1u << 31) + 1), 1u);
}

TEST(Log2, IsTheQuotientOfTwoLogarithms) {
    EXPECT_EQ(VTLog2(1.0), 0.0);
    EXPECT_EQ(VTLog2(8.0), 3.0);
    EXPECT_NEAR(VTLog2(10.0), 3.321928094887362, 1e-15);
    EXPECT_GT(VTLog2(536870912.0), 29.0);
    EXPECT_EQ(VTLog2(0.0), -inf);
    EXPECT_TRUE(std::isnan(VTLog2(-1.0)));
}

TEST(Sign, OfZeroIsPositive) {
    EXPECT_EQ(VTSign(-2.5f), -1.0f);
    EXPECT_EQ(VTSign(2.5f), 1.0f);
    EXPECT_EQ(VTSign(0.0f), 1.0f);
    EXPECT_EQ(VTSign(-2.5), -1.0);
    EXPECT_EQ(VTSign(2.5), 1.0);
    EXPECT_EQ(VTSign(0.0), 1.0);
    EXPECT_EQ(VTSign(-0.0), 1.0);
}

TEST(Round, HalvesGoAwayFromZero) {
    const double rows[][2] = {{2.5, 3}, {-2.5, -3}, {0.5, 1}, {-0.5, -1}, {1.5, 2},     {2.4, 2},  {-2.4, -2},
                              {2.6, 3}, {-2.6, -3}, {0.0, 0}, {0.49, 0},  {1e15, 1e15}, {-7.0, -7}};
    for (const auto& [value, expected] : rows) {
        EXPECT_EQ(VTRound(value), expected) << value;
        EXPECT_EQ(VTRound(static_cast<float>(value)), static_cast<float>(expected)) << value;
    }
}

// 2^23 + 1 plus a half is a tie in float, and would go to 2^23 + 2.
TEST(Round, FloatsAreRoundedInDouble) {
    EXPECT_EQ(VTRound(8388609.0f), 8388609.0f);
    EXPECT_EQ(VTRound(-8388609.0f), -8388609.0f);
    // The float below a half: in float adding a half gives 1.
    EXPECT_EQ(VTRound(0.49999997f), 0.0f);
}

TEST(Round, ToDecimals) {
    struct Row {
        double value;
        int decimals;
        double expected;
    };
    const Row rows[] = {{1.25, 1, 1.3}, {-1.25, 1, -1.3},    {1.24, 1, 1.2},     {-1.24, 1, -1.2}, {2.5, 0, 3},
                        {-2.5, 0, -3},  {3.14159, 3, 3.142}, {0, 2, 0},          {15, -1, 20},     {-15, -1, -20},
                        {14, -1, 10},   {1250, -2, 1300},    {0.0625, 3, 0.063}, {7, 2, 7}};
    for (const Row& row : rows) {
        EXPECT_EQ(VTRound(row.value, row.decimals), row.expected) << row.value;
        EXPECT_EQ(VTRound(static_cast<float>(row.value), row.decimals), static_cast<float>(row.expected)) << row.value;
    }
}

// The float 16777215 times 100 is no float: in float the last digits would already be lost.
TEST(Round, FloatsToDecimalsAreRoundedInDouble) {
    EXPECT_EQ(VTRound(16777215.0f, 1), 16777215.0f);
}

TEST(RoundToDigits, KeepsSignificantDigits) {
    struct Row {
        double value;
        int digits;
        double expected;
    };
    const Row rows[] = {{1234.0, 2, 1200},    {-1234.0, 2, -1200}, {1250.0, 2, 1300}, {1.0, 3, 1},    {0.1, 1, 0.1},
                        {10.0, 1, 10},        {99.6, 2, 100},      {0.0, 2, 0},       {-9e-61, 2, 0}, {5.0, 0, 10},
                        {0.00625, 2, 0.0063}, {-0.5, 1, -0.5},     {0.1, 0, 0}};
    for (const Row& row : rows) {
        EXPECT_NEAR(VTRoundToDigits(row.value, row.digits), row.expected, std::fabs(row.expected) * 1e-14) << row.value;
    }
    EXPECT_EQ(VTRoundToDigits(1234.0, 2), 1200.0);
    EXPECT_EQ(VTRoundToDigits(inf, 3), inf);
    EXPECT_EQ(VTRoundToDigits(-inf, 3), -inf);
    // 10^308 times 99 is no number any more, and neither is 10^309.
    EXPECT_NEAR(VTRoundToDigits(9.87e305, 2), 9.9e305, 1e292);
    EXPECT_EQ(VTRoundToDigits(9.87e307, 2), inf);
    EXPECT_EQ(VTRoundToDigits(-1.5e308, 1), -inf);
    EXPECT_TRUE(std::isnan(VTRoundToDigits(std::nan(""), 3)));
}

// The C library's %e, for values that are no ties, over many magnitudes.
TEST(RoundToDigits, AgreesWithFormatting) {
    PortableRandom random(61);
    for (int i = 0; i < 500; ++i) {
        const double value = random.real(-1, 1) * std::pow(10.0, random.integer(-50, 50));
        const int digits = random.integer(1, 9);
        char text[64];
        std::snprintf(text, sizeof(text), "%.*e", digits - 1, value);
        const double expected = std::strtod(text, nullptr);
        ASSERT_NEAR(VTRoundToDigits(value, digits), expected, std::fabs(expected) * 1e-13) << value << ' ' << digits;
    }
}

} // namespace
