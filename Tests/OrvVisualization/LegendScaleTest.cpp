#include "OrvVisualization/LegendScale_p.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <ostream>
#include <set>
#include <string>

using namespace orv;
using namespace orv::vis;
using testing::ElementsAre;

namespace {

std::vector<std::string> textsOf(const std::vector<LegendTick>& ticks) {
    std::vector<std::string> texts;
    for (const LegendTick& tick : ticks) {
        texts.push_back(tick.text.toStdString());
    }
    return texts;
}

std::vector<std::string> textsFor(double minimum, double maximum, double closest = 0.2, std::size_t bands = 0) {
    return textsOf(legendTicks(minimum, maximum, bands, closest));
}

TEST(LegendScale, HasRoundNumbersBetweenTheEnds) {
    // A fifth of 355.25 is 71, so every 100th number; 300 is 0.156 below the end, which is too near.
    const std::vector<LegendTick> ticks = legendTicks(0.0, 355.25, 0, 0.2);
    EXPECT_EQ(textsOf(ticks), (std::vector<std::string>{"0.0", "100.0", "200.0", "355.2"}));
    EXPECT_EQ(ticks[0].fraction, 0.0);
    EXPECT_DOUBLE_EQ(ticks[1].fraction, 100 / 355.25);
    EXPECT_DOUBLE_EQ(ticks[2].fraction, 200 / 355.25);
    EXPECT_EQ(ticks[3].fraction, 1.0);
}

TEST(LegendScale, StepsAreOneTwoOrFive) {
    EXPECT_THAT(textsFor(0, 10, 0.1),
                ElementsAre("0.00", "1.00", "2.00", "3.00", "4.00", "5.00", "6.00", "7.00", "8.00", "9.00", "10.00"));
    EXPECT_THAT(textsFor(0, 10, 0.15), ElementsAre("0.00", "2.00", "4.00", "6.00", "8.00", "10.00"));
    EXPECT_THAT(textsFor(0, 10, 0.3), ElementsAre("0.00", "5.00", "10.00"));
    EXPECT_THAT(textsFor(0, 10, 0.6), ElementsAre("0.00", "10.00"));
}

TEST(LegendScale, GoesThroughZeroWithoutASign) {
    EXPECT_THAT(textsFor(-40, 120), ElementsAre("-40.0", "0.0", "50.0", "120.0"));
    EXPECT_THAT(textsFor(-0.0, 1, 0.6), ElementsAre("0.000", "1.000"));
    EXPECT_THAT(textsFor(-1e-9, 1, 0.6), ElementsAre("0.000", "1.000"));
    EXPECT_THAT(textsFor(-3, -1, 0.6), ElementsAre("-3.000", "-1.000"));
}

TEST(LegendScale, TellsAThousandthOfTheRange) {
    EXPECT_THAT(textsFor(0, 1, 0.6), ElementsAre("0.000", "1.000"));
    EXPECT_THAT(textsFor(0, 0.9, 0.6), ElementsAre("0.0000", "0.9000"));
    EXPECT_THAT(textsFor(0, 1001, 0.6), ElementsAre("0", "1001"));
    EXPECT_THAT(textsFor(0, 999999, 0.6), ElementsAre("0", "999999"));
    EXPECT_THAT(textsFor(1000.0001, 1000.0002, 0.6), ElementsAre("1000.00010000", "1000.00020000"));
}

TEST(LegendScale, LargeAndSmallNumbersHaveOneExponent) {
    EXPECT_THAT(textsFor(0, 1e6, 0.6), ElementsAre("0.000e6", "1.000e6"));
    EXPECT_THAT(textsFor(-1234567.8, 98765432.1, 0.6), ElementsAre("-1.23e6", "98.77e6"));
    EXPECT_THAT(textsFor(0, 1e9, 0.6), ElementsAre("0.000e9", "1.000e9"));
    EXPECT_THAT(textsFor(0, 0.01, 0.6), ElementsAre("0.00000", "0.01000"));
    EXPECT_THAT(textsFor(0, 0.0099, 0.6), ElementsAre("0.000e-3", "9.900e-3"));
    EXPECT_THAT(textsFor(1.2e-5, 3.4e-3, 0.6), ElementsAre("0.012e-3", "3.400e-3"));
    EXPECT_THAT(textsFor(-2.5e-7, 0, 0.6), ElementsAre("-250.0e-9", "0.0e-9"));
}

TEST(LegendScale, ReachesAsFarAsNumbersDo) {
    EXPECT_THAT(textsFor(-1.7e308, 1.7e308, 0.6), ElementsAre("-170.0e306", "170.0e306"));
    EXPECT_THAT(textsFor(0, 5e-320, 0.6), ElementsAre("0.00e-321", "50.00e-321"));
}

TEST(LegendScale, NeighboursAmongDoublesAreTold) {
    for (double low : {1.0, 1000.0, 3e-5, -7e9}) {
        const double high = std::nextafter(low, std::numeric_limits<double>::infinity());
        const std::vector<std::string> texts = textsFor(low, high, 0.1);
        EXPECT_NE(texts.front(), texts.back()) << low;
        EXPECT_EQ(std::set<std::string>(texts.begin(), texts.end()).size(), texts.size()) << low;
    }
}

TEST(LegendScale, OneNumberStandsInTheMiddle) {
    const std::vector<LegendTick> ticks = legendTicks(7.5, 7.5, 0, 0.1);
    ASSERT_EQ(ticks.size(), 1U);
    EXPECT_EQ(ticks[0].fraction, 0.5);
    EXPECT_EQ(ticks[0].text, "7.500");
    EXPECT_THAT(textsFor(0, 0), ElementsAre("0"));
    EXPECT_THAT(textsFor(-2e7, -2e7), ElementsAre("-20.00e6"));
    EXPECT_THAT(textsFor(5, 5, 0.1, 9), ElementsAre("5.000"));
}

TEST(LegendScale, BandsHaveNumbersAtTheirBorders) {
    const std::vector<LegendTick> ticks = legendTicks(0, 10, 4, 0.2);
    EXPECT_EQ(textsOf(ticks), (std::vector<std::string>{"0.00", "2.50", "5.00", "7.50", "10.00"}));
    EXPECT_EQ(ticks[1].fraction, 0.25);
    EXPECT_EQ(ticks[3].fraction, 0.75);
}

TEST(LegendScale, ManyBandsHaveNumbersAtEveryFewBorders) {
    EXPECT_THAT(textsFor(0, 9, 0.2, 9), ElementsAre("0.000", "3.000", "6.000", "9.000"));
    // 7 has no divisor but 1 and itself.
    EXPECT_THAT(textsFor(0, 7, 0.2, 7), ElementsAre("0.000", "7.000"));
    EXPECT_THAT(textsFor(0, 7, 0.1, 1), ElementsAre("0.000", "7.000"));
}

} // namespace
