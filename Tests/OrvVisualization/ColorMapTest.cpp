#include "OrvVisualization/ColorMap.h"

#include "OrvCore/Defines.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <ostream>
#include <set>
#include <tuple>

using namespace orv;
using namespace orv::vis;

namespace rvf {

void PrintTo(const Color3f& color, std::ostream* out) {
    *out << "(" << color.r() << " " << color.g() << " " << color.b() << ")";
}

} // namespace rvf

namespace {

using Kind = ColorMap::Kind;

const double INFINITE = std::numeric_limits<double>::infinity();

/// sRGB to relative luminance (IEC 61966-2-1).
double luminance(const rvf::Color3f& color) {
    auto linear = [](double c) { return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); };
    return 0.2126 * linear(color.r()) + 0.7152 * linear(color.g()) + 0.0722 * linear(color.b());
}

std::tuple<int, int, int> bytesOf(const rvf::Color3f& color) {
    return {color.rByte(), color.gByte(), color.bByte()};
}

std::size_t countColors(const ColorMap& map) {
    std::set<std::tuple<int, int, int>> colors;
    for (int i = 0; i <= 10000; ++i) {
        colors.insert(bytesOf(map.colorAt(i, 0, 10000)));
    }
    return colors.size();
}

TEST(ColorMap, IsViridisWithoutBandsAndWithTheRangeOfTheValues) {
    const ColorMap map;
    EXPECT_EQ(map.kind(), Kind::VIRIDIS);
    EXPECT_EQ(map.bandCount(), 0U);
    EXPECT_FALSE(map.hasFixedRange());
    EXPECT_EQ(map.minimum(), 0.0);
    EXPECT_EQ(map.maximum(), 0.0);
}

TEST(ColorMap, ViridisGoesThroughItsPublishedColors) {
    const ColorMap map;
    // The published list of 256 has (0.267004, 0.004874, 0.329415) first, (0.127568, 0.566949, 0.550556) as number 128
    // and (0.993248, 0.906157, 0.143936) last; here in bytes.
    EXPECT_EQ(bytesOf(map.colorAt(0.0, 0.0, 255.0)), std::make_tuple(0x44, 0x01, 0x54));
    EXPECT_EQ(bytesOf(map.colorAt(128.0, 0.0, 255.0)), std::make_tuple(0x21, 0x91, 0x8c));
    EXPECT_EQ(bytesOf(map.colorAt(255.0, 0.0, 255.0)), std::make_tuple(0xfd, 0xe7, 0x25));
}

TEST(ColorMap, ViridisGrowsLighterAllTheWay) {
    const ColorMap map;
    double darker = -1.0;
    // Neighbours may be the same, as the colours of the list are kept in bytes.
    for (int i = 0; i < 256; i += 3) {
        const double lighter = luminance(map.colorAt(i, 0.0, 255.0));
        EXPECT_GT(lighter, darker) << i;
        darker = lighter;
    }
}

TEST(ColorMap, RainbowGoesFromBlueToRed) {
    const ColorMap map(Kind::RAINBOW);
    EXPECT_EQ(map.colorAt(0.0, 0.0, 4.0), rvf::Color3f(0, 0, 1));
    EXPECT_EQ(map.colorAt(1.0, 0.0, 4.0), rvf::Color3f(0, 1, 1));
    EXPECT_EQ(map.colorAt(2.0, 0.0, 4.0), rvf::Color3f(0, 1, 0));
    EXPECT_EQ(map.colorAt(3.0, 0.0, 4.0), rvf::Color3f(1, 1, 0));
    EXPECT_EQ(map.colorAt(4.0, 0.0, 4.0), rvf::Color3f(1, 0, 0));
    EXPECT_EQ(map.colorAt(3.5, 0.0, 4.0), rvf::Color3f(1, 0.5F, 0));
}

TEST(ColorMap, KindCanBeChanged) {
    ColorMap map;
    map.setKind(Kind::RAINBOW);
    EXPECT_EQ(map.kind(), Kind::RAINBOW);
    EXPECT_EQ(map.colorAt(0.0, 0.0, 1.0), rvf::Color3f(0, 0, 1));
}

TEST(ColorMap, BandsAreEqualPiecesOfOneColor) {
    ColorMap map(Kind::RAINBOW);
    ASSERT_TRUE(map.setBandCount(5));
    EXPECT_EQ(map.bandCount(), 5U);
    EXPECT_EQ(countColors(map), 5U);
    EXPECT_EQ(map.colorAt(0.0, 0.0, 10.0), rvf::Color3f(0, 0, 1));
    EXPECT_EQ(map.colorAt(1.99, 0.0, 10.0), rvf::Color3f(0, 0, 1));
    EXPECT_EQ(map.colorAt(2.0, 0.0, 10.0), rvf::Color3f(0, 1, 1));
    EXPECT_EQ(map.colorAt(5.0, 0.0, 10.0), rvf::Color3f(0, 1, 0));
    EXPECT_EQ(map.colorAt(8.0, 0.0, 10.0), rvf::Color3f(1, 0, 0));
    EXPECT_EQ(map.colorAt(10.0, 0.0, 10.0), rvf::Color3f(1, 0, 0));
}

TEST(ColorMap, OneBandHasTheColorOfTheMiddle) {
    ColorMap map(Kind::RAINBOW);
    ASSERT_TRUE(map.setBandCount(1));
    EXPECT_EQ(map.colorAt(0.0, 0.0, 1.0), rvf::Color3f(0, 1, 0));
    EXPECT_EQ(map.colorAt(1.0, 0.0, 1.0), rvf::Color3f(0, 1, 0));
}

TEST(ColorMap, HasAsManyBandsAsBytes) {
    ColorMap map(Kind::RAINBOW);
    EXPECT_TRUE(map.setBandCount(ColorMap::MAXIMUM_BANDS));
    EXPECT_EQ(countColors(map), 256U);
    EXPECT_FALSE(map.setBandCount(ColorMap::MAXIMUM_BANDS + 1));
    EXPECT_EQ(map.bandCount(), 256U);
    EXPECT_TRUE(map.setBandCount(0));
    EXPECT_GT(countColors(map), 256U);
}

TEST(ColorMap, ValuesOutsideHaveTheColorsOfTheEnds) {
    const ColorMap map(Kind::RAINBOW);
    EXPECT_EQ(map.colorAt(-5.0, 0.0, 4.0), rvf::Color3f(0, 0, 1));
    EXPECT_EQ(map.colorAt(-INFINITE, 0.0, 4.0), rvf::Color3f(0, 0, 1));
    EXPECT_EQ(map.colorAt(9.0, 0.0, 4.0), rvf::Color3f(1, 0, 0));
    EXPECT_EQ(map.colorAt(INFINITE, 0.0, 4.0), rvf::Color3f(1, 0, 0));
    EXPECT_EQ(map.colorAtFraction(-0.1), rvf::Color3f(0, 0, 1));
    EXPECT_EQ(map.colorAtFraction(1.1), rvf::Color3f(1, 0, 0));
}

TEST(ColorMap, ARangeThatIsOneNumberHasItInTheMiddle) {
    const ColorMap map(Kind::RAINBOW);
    EXPECT_EQ(map.colorAt(7.0, 7.0, 7.0), rvf::Color3f(0, 1, 0));
    EXPECT_EQ(map.colorAt(6.0, 7.0, 7.0), rvf::Color3f(0, 0, 1));
    EXPECT_EQ(map.colorAt(8.0, 7.0, 7.0), rvf::Color3f(1, 0, 0));
}

TEST(ColorMap, RangesMayBeAsWideAsNumbersGo) {
    EXPECT_DOUBLE_EQ(ColorMap::fractionOf(0.0, -1.7e308, 1.7e308), 0.5);
    EXPECT_DOUBLE_EQ(ColorMap::fractionOf(0.85e308, -1.7e308, 1.7e308), 0.75);
    EXPECT_DOUBLE_EQ(ColorMap::fractionOf(2.5e-300, 0.0, 1e-299), 0.25);
}

TEST(ColorMap, UndefinedValuesHaveAColorOfTheirOwn) {
    ColorMap map(Kind::RAINBOW);
    const rvf::Color3f grey = map.undefinedColor();
    EXPECT_EQ(grey.r(), grey.g());
    EXPECT_EQ(grey.g(), grey.b());
    EXPECT_EQ(map.colorAt(UNDEFINED_DOUBLE, 0.0, 1.0), grey);
    EXPECT_EQ(map.colorAt(std::nan(""), 0.0, 1.0), grey);
    map.setUndefinedColor(rvf::Color3::PINK);
    EXPECT_EQ(map.colorAt(UNDEFINED_DOUBLE, 0.0, 1.0), rvf::Color3f(rvf::Color3::PINK));
    EXPECT_EQ(map.colorAt(-UNDEFINED_DOUBLE, 0.0, 1.0), rvf::Color3f(0, 0, 1));
}

TEST(ColorMap, ARangeCanBeFixedAndSetFree) {
    ColorMap map;
    ASSERT_TRUE(map.setFixedRange(-2.0, 355.0));
    EXPECT_TRUE(map.hasFixedRange());
    EXPECT_EQ(map.minimum(), -2.0);
    EXPECT_EQ(map.maximum(), 355.0);
    map.setAutomaticRange();
    EXPECT_FALSE(map.hasFixedRange());
    EXPECT_EQ(map.minimum(), 0.0);
    EXPECT_EQ(map.maximum(), 0.0);
}

TEST(ColorMap, ImpossibleRangesAreRefused) {
    const std::pair<double, double> refused[] = {
        {1.0, 1.0},       {2.0, 1.0},      {std::nan(""), 1.0},    {0.0, std::nan("")},
        {-INFINITE, 1.0}, {0.0, INFINITE}, {0.0, UNDEFINED_DOUBLE}};
    for (const auto& [minimum, maximum] : refused) {
        ColorMap map;
        ASSERT_TRUE(map.setFixedRange(3.0, 4.0));
        EXPECT_FALSE(map.setFixedRange(minimum, maximum)) << minimum << " " << maximum;
        EXPECT_EQ(map.minimum(), 3.0);
        EXPECT_EQ(map.maximum(), 4.0);
    }
}

TEST(ColorMap, AFixedRangeIsForTheCallerToHandOver) {
    ColorMap map(Kind::RAINBOW);
    ASSERT_TRUE(map.setFixedRange(0.0, 100.0));
    EXPECT_EQ(map.colorAt(4.0, 0.0, 4.0), rvf::Color3f(1, 0, 0));
}

} // namespace
