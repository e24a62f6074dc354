#include "LibCore/rvfColor3.h"

#include "Tests/Support/AssertRecorder.h"

#include <gtest/gtest.h>

#include <limits>

using orvtest::AssertRecorder;
using orvtest::FailedAssert;
using rvf::Color3;
using rvf::Color3f;
using rvf::Color3ub;

namespace {

struct NamedColor {
    Color3::ColorIdent ident;
    int r, g, b;
};

// The place in the list is the number of the colour.
const NamedColor NAMED_COLORS[] = {
    {Color3::RED, 255, 0, 0},
    {Color3::GREEN, 0, 255, 0},
    {Color3::BLUE, 0, 0, 255},
    {Color3::YELLOW, 255, 255, 0},
    {Color3::CYAN, 0, 255, 255},
    {Color3::MAGENTA, 255, 0, 255},
    {Color3::WHITE, 255, 255, 255},
    {Color3::BLACK, 0, 0, 0},
    {Color3::LIGHT_GRAY, 192, 192, 192},
    {Color3::GRAY, 128, 128, 128},
    {Color3::DARK_GRAY, 64, 64, 64},
    {Color3::BROWN, 165, 42, 42},
    {Color3::CRIMSON, 220, 20, 60},
    {Color3::DARK_BLUE, 0, 0, 139},
    {Color3::DARK_YELLOW, 139, 139, 0},
    {Color3::DARK_CYAN, 0, 139, 139},
    {Color3::DARK_GREEN, 0, 100, 0},
    {Color3::DARK_MAGENTA, 139, 0, 139},
    {Color3::DARK_ORANGE, 255, 140, 0},
    {Color3::DARK_RED, 139, 0, 0},
    {Color3::DARK_VIOLET, 148, 0, 211},
    {Color3::DEEP_PINK, 255, 20, 147},
    {Color3::FOREST_GREEN, 34, 139, 34},
    {Color3::GOLD, 255, 215, 0},
    {Color3::GREEN_YELLOW, 173, 255, 47},
    {Color3::INDIGO, 75, 0, 130},
    {Color3::OLIVE, 128, 128, 0},
    {Color3::ORANGE, 255, 165, 0},
    {Color3::ORANGE_RED, 255, 69, 0},
    {Color3::ORCHID, 218, 112, 214},
    {Color3::PINK, 255, 192, 203},
    {Color3::PURPLE, 128, 0, 128},
    {Color3::SEA_GREEN, 46, 139, 87},
    {Color3::SKY_BLUE, 135, 206, 235},
    {Color3::VIOLET, 238, 130, 238},
    {Color3::YELLOW_GREEN, 154, 205, 50},
    {Color3::SLATE_TEAL, 81, 134, 148},
};

void expectBytes(const Color3ub& color, int r, int g, int b) {
    EXPECT_EQ(color.r(), r);
    EXPECT_EQ(color.g(), g);
    EXPECT_EQ(color.b(), b);
}

void expectFloats(const Color3f& color, float r, float g, float b) {
    EXPECT_EQ(color.r(), r);
    EXPECT_EQ(color.g(), g);
    EXPECT_EQ(color.b(), b);
}

TEST(Color3, NamedColorsHaveTheirNumbersAndBytes) {
    int number = 0;
    for (const NamedColor& named : NAMED_COLORS) {
        SCOPED_TRACE(number);
        EXPECT_EQ(named.ident, number++);
        expectBytes(Color3ub(named.ident), named.r, named.g, named.b);
        expectFloats(Color3f(named.ident), static_cast<float>(named.r) / 255.0f, static_cast<float>(named.g) / 255.0f,
                     static_cast<float>(named.b) / 255.0f);
    }
    EXPECT_EQ(number, 37);
}

TEST(Color3, UnknownIdentIsBlackAndAsserted) {
    AssertRecorder recorder;
    const std::vector<FailedAssert> failed = {{"LibCore/rvfColor3", std::nullopt, "Unknown ColorIdent"}};
    for (int number : {37, -1, 1000000}) {
        const auto unknown = static_cast<Color3::ColorIdent>(number);
        expectBytes(Color3ub(unknown), 0, 0, 0);
        EXPECT_EQ(recorder.take(), failed);
        expectFloats(Color3f(unknown), 0, 0, 0);
        EXPECT_EQ(recorder.take(), failed);
    }
}

TEST(Color3f, HoldsThreeFloats) {
    expectFloats(Color3f(), 0, 0, 0);
    Color3f color(0.1f, 0.2f, 0.3f);
    expectFloats(color, 0.1f, 0.2f, 0.3f);
    expectFloats(Color3f(color), 0.1f, 0.2f, 0.3f);
    color.r() = 0.4f;
    color.g() = 0.5f;
    color.b() = 0.6f;
    expectFloats(color, 0.4f, 0.5f, 0.6f);
    color.set(2.0f, -1.0f, 0.0f);
    expectFloats(color, 2.0f, -1.0f, 0.0f);
    EXPECT_EQ(color.ptr()[0], 2.0f);
    EXPECT_EQ(color.ptr()[1], -1.0f);
    EXPECT_EQ(color.ptr()[2], 0.0f);
}

TEST(Color3f, Assigns) {
    Color3f color;
    color = Color3f(0.1f, 0.2f, 0.3f);
    expectFloats(color, 0.1f, 0.2f, 0.3f);
    color = Color3::YELLOW;
    expectFloats(color, 1, 1, 0);
}

TEST(Color3f, ComparesExactly) {
    const Color3f color(0.1f, 0.2f, 0.3f);
    EXPECT_TRUE(color == Color3f(0.1f, 0.2f, 0.3f));
    EXPECT_FALSE(color != Color3f(0.1f, 0.2f, 0.3f));
    EXPECT_TRUE(color != Color3f(0.5f, 0.2f, 0.3f));
    EXPECT_TRUE(color != Color3f(0.1f, 0.5f, 0.3f));
    EXPECT_TRUE(color != Color3f(0.1f, 0.2f, 0.5f));
}

TEST(Color3f, ComesFromBytes) {
    expectFloats(Color3f::fromByteColor(0, 255, 51), 0.0f, 1.0f, 51.0f / 255.0f);
    expectFloats(Color3f(Color3ub(1, 2, 254)), 1.0f / 255.0f, 2.0f / 255.0f, 254.0f / 255.0f);
}

TEST(Color3f, IsValidFromZeroToOne) {
    EXPECT_TRUE(Color3f(0, 1, 0.5f).isValid());
    for (float outside : {-0.001f, 1.001f, std::numeric_limits<float>::quiet_NaN()}) {
        EXPECT_FALSE(Color3f(outside, 0, 0).isValid()) << outside;
        EXPECT_FALSE(Color3f(0, outside, 0).isValid()) << outside;
        EXPECT_FALSE(Color3f(0, 0, outside).isValid()) << outside;
    }
}

TEST(Color3f, BytesAreRoundedAndClamped) {
    const std::pair<float, int> cases[] = {{0.0f, 0},   {1.0f, 255}, {0.999f, 255}, {0.5f, 128}, {0.001f, 0},
                                           {0.002f, 1}, {-0.1f, 0},  {-50.0f, 0},   {1.5f, 255}, {1e30f, 255}};
    for (const auto& [channel, byte] : cases) {
        EXPECT_EQ(Color3f(channel, 0.2f, 0.2f).rByte(), byte) << channel;
        EXPECT_EQ(Color3f(0.2f, channel, 0.2f).gByte(), byte) << channel;
        EXPECT_EQ(Color3f(0.2f, 0.2f, channel).bByte(), byte) << channel;
    }
}

TEST(Color3ub, HoldsThreeBytes) {
    expectBytes(Color3ub(), 0, 0, 0);
    Color3ub color(1, 2, 3);
    expectBytes(color, 1, 2, 3);
    expectBytes(Color3ub(color), 1, 2, 3);
    color.r() = 4;
    color.g() = 5;
    color.b() = 6;
    expectBytes(color, 4, 5, 6);
    color.set(7, 8, 255);
    expectBytes(color, 7, 8, 255);
    EXPECT_EQ(color.ptr()[0], 7);
    EXPECT_EQ(color.ptr()[1], 8);
    EXPECT_EQ(color.ptr()[2], 255);
}

TEST(Color3ub, Assigns) {
    Color3ub color;
    color = Color3ub(1, 2, 3);
    expectBytes(color, 1, 2, 3);
    color = Color3::CRIMSON;
    expectBytes(color, 220, 20, 60);
}

TEST(Color3ub, Compares) {
    const Color3ub color(1, 2, 3);
    EXPECT_TRUE(color == Color3ub(1, 2, 3));
    EXPECT_FALSE(color != Color3ub(1, 2, 3));
    EXPECT_TRUE(color != Color3ub(9, 2, 3));
    EXPECT_TRUE(color != Color3ub(1, 9, 3));
    EXPECT_TRUE(color != Color3ub(1, 2, 9));
}

TEST(Color3ub, CutsFloatsOffAndDoesNotClamp) {
    // 0.999 * 255 = 254.745, 2 * 255 = 510 = 256 + 254, -0.1 * 255 = -25.5, and -25 + 256 = 231.
    expectBytes(Color3ub(Color3f(0.999f, 2.0f, -0.1f)), 254, 254, 231);
    expectBytes(Color3ub(Color3f(0.0f, 1.0f, 0.5f)), 0, 255, 127);
    // 100000 * 255 = 25500000 = 99609 * 256 + 96, and -96 + 256 = 160.
    expectBytes(Color3ub(Color3f(100000.0f, -100000.0f, -1.0f)), 96, 160, 1);
}

TEST(Color3ub, NumbersWithoutLowBitsGiveZero) {
    const float infinite = std::numeric_limits<float>::infinity();
    // All floats beyond 2^32 are multiples of 256.
    expectBytes(Color3ub(Color3f(1e30f, -1e30f, 3e38f)), 0, 0, 0);
    expectBytes(Color3ub(Color3f(infinite, -infinite, std::numeric_limits<float>::quiet_NaN())), 0, 0, 0);
}

} // namespace
