#include "OrvPlot2d/AxisScale_p.h"

#include "OrvCore/Defines.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

using namespace orv::plt;

namespace {

using Texts = std::vector<std::wstring>;

constexpr double NEAR_NOTHING = std::numeric_limits<double>::denorm_min();

AxisScale linear(double minimum, double maximum, int steps) {
    return AxisScale({}, {minimum, maximum}, steps);
}

AxisScale fixedLinear(double minimum, double maximum, int steps) {
    return AxisScale({"", false, AxisRange{minimum, maximum}}, {}, steps);
}

AxisScale logarithmic(double minimum, double maximum, int steps) {
    return AxisScale({"", true, std::nullopt}, {minimum, maximum}, steps);
}

AxisScale fixedLogarithmic(double minimum, double maximum, int steps) {
    return AxisScale({"", true, AxisRange{minimum, maximum}}, {1.0, 1e6}, steps);
}

Texts labelsOf(const AxisScale& scale) {
    Texts labels;
    for (const Tick& tick : scale.ticks()) {
        labels.push_back(tick.label);
    }
    return labels;
}

/// Reads a label of a linear axis, times its factor.
double numberIn(std::wstring label, const std::wstring& factor) {
    std::string text = label.front() == L'\u2212' ? "-" : "";
    for (const wchar_t c : label.substr(text.size())) {
        text += char(c);
    }
    std::string power;
    for (const wchar_t c : factor.substr(std::min<std::size_t>(3, factor.size()))) {
        const std::wstring raised = L"\u2070\u00B9\u00B2\u00B3\u2074\u2075\u2076\u2077\u2078\u2079";
        power += c == L'\u207B' ? '-' : char('0' + raised.find(c));
    }
    return std::stod(text + (power.empty() ? "" : "e" + power));
}

TEST(ValueRange, TakesInNumbers) {
    ValueRange range;
    EXPECT_TRUE(range.isEmpty());
    range.add(3.0);
    EXPECT_FALSE(range.isEmpty());
    range.add(-1.0);
    range.add(2.0);
    EXPECT_EQ(range.minimum, -1.0);
    EXPECT_EQ(range.maximum, 3.0);
}

TEST(HasPlace, WhatIsFiniteAndDefinedHas) {
    EXPECT_TRUE(hasPlace(-1.0, false));
    EXPECT_TRUE(hasPlace(0.0, false));
    EXPECT_TRUE(hasPlace(-std::numeric_limits<double>::max(), false));
    EXPECT_FALSE(hasPlace(orv::UNDEFINED_DOUBLE, false));
    EXPECT_FALSE(hasPlace(std::nan(""), false));
    EXPECT_FALSE(hasPlace(INFINITY, false));
    EXPECT_FALSE(hasPlace(-INFINITY, false));
}

TEST(HasPlace, OnALogarithmicAxisOnlyWhatIsPositive) {
    EXPECT_TRUE(hasPlace(NEAR_NOTHING, true));
    EXPECT_FALSE(hasPlace(0.0, true));
    EXPECT_FALSE(hasPlace(-1.0, true));
    EXPECT_FALSE(hasPlace(orv::UNDEFINED_DOUBLE, true));
}

struct LinearCase {
    double minimum, maximum;
    int steps;
    double first, last; ///< Where the axis begins and ends.
    Texts labels;
    std::wstring factor;
};

// The finest of the steps 1, 2, 2.5, 5 times powers of ten of which at most `steps` fit between the ends. The ends are
// the next multiples, outward, of a fifth of the step (a quarter of it for steps of 2).
const LinearCase LINEAR_CASES[] = {
    {0, 10, 10, 0, 10, {L"0", L"1", L"2", L"3", L"4", L"5", L"6", L"7", L"8", L"9", L"10"}, L""},
    {0, 10, 9, 0, 10, {L"0", L"2", L"4", L"6", L"8", L"10"}, L""},
    {0, 10, 4, 0, 10, {L"0.0", L"2.5", L"5.0", L"7.5", L"10.0"}, L""},
    {0, 10, 3, 0, 10, {L"0", L"5", L"10"}, L""},
    // Steps of 1 end at 10.4, steps of 2 at 10.5.
    {0, 10.3, 10, 0, 10.4, {L"0", L"1", L"2", L"3", L"4", L"5", L"6", L"7", L"8", L"9", L"10"}, L""},
    {0, 10.3, 8, 0, 10.5, {L"0", L"2", L"4", L"6", L"8", L"10"}, L""},
    {-2.37, 2.91, 8, -2.4, 3, {L"\u22122", L"\u22121", L"0", L"1", L"2", L"3"}, L""},
    {0.1, 0.3, 4, 0.1, 0.3, {L"0.10", L"0.15", L"0.20", L"0.25", L"0.30"}, L""},
    // Rounding does not add a step: 0.3 / 0.1 is a little below 3.
    {0.3, 0.7, 4, 0.3, 0.7, {L"0.3", L"0.4", L"0.5", L"0.6", L"0.7"}, L""},
    // Below 2, the steps are 2.
    {-1, 1, 0, -1, 1, {L"\u22121", L"0", L"1"}, L""},
    // Six characters and more are divided by a power of 1000 when that spares at least two of them.
    {0, 50000, 5, 0, 50000, {L"0", L"10000", L"20000", L"30000", L"40000", L"50000"}, L""},
    {0, 500000, 5, 0, 500000, {L"0", L"100", L"200", L"300", L"400", L"500"}, L"\u00D710\u00B3"},
    {-20000, 0, 4, -20000, 0, {L"\u221220", L"\u221215", L"\u221210", L"\u22125", L"0"}, L"\u00D710\u00B3"},
    {0, 2.1e8, 5, 0, 2.1e8, {L"0", L"50", L"100", L"150", L"200"}, L"\u00D710\u2076"},
    {0, 0.004, 4, 0, 0.004, {L"0.000", L"0.001", L"0.002", L"0.003", L"0.004"}, L""},
    {0, 0.0004, 4, 0, 0.0004, {L"0", L"100", L"200", L"300", L"400"}, L"\u00D710\u207B\u2076"},
    {0, 1e9, 2, 0, 1e9, {L"0.0", L"0.5", L"1.0"}, L"\u00D710\u2079"},
    {1234567,
     1234569,
     4,
     1234567,
     1234569,
     {L"1234567.0", L"1234567.5", L"1234568.0", L"1234568.5", L"1234569.0"},
     L""},
    // Equal numbers are amid a tenth of themselves, zero amid one.
    {5, 5, 10, 4.5, 5.5, {L"4.5", L"4.6", L"4.7", L"4.8", L"4.9", L"5.0", L"5.1", L"5.2", L"5.3", L"5.4", L"5.5"}, L""},
    {-5, -5, 2, -5.5, -4.5, {L"\u22125.5", L"\u22125.0", L"\u22124.5"}, L""},
    {0, 0, 4, -1, 1, {L"\u22121.0", L"\u22120.5", L"0.0", L"0.5", L"1.0"}, L""},
    // Differences of less than 1e-11 are noise, greater ones are not.
    {1, 1.0000000000000007, 2, 0.9, 1.1, {L"0.9", L"1.0", L"1.1"}, L""},
    {1, 1.000000000005, 2, 0.9, 1.1, {L"0.9", L"1.0", L"1.1"}, L""},
    {1, 1.00000000002, 2, 1, 1.00000000002, {L"1.00000000000", L"1.00000000001", L"1.00000000002"}, L""},
    // Near the limits: steps of 1e308 have small ones of 0.2e308; those of 5e-325 small ones of 1e-325.
    {1e300, 3e300, 2, 1e300, 3e300, {L"1", L"2", L"3"}, L"\u00D710\u00B3\u2070\u2070"},
    {1e-300, 3e-300, 2, 1e-300, 3e-300, {L"1", L"2", L"3"}, L"\u00D710\u207B\u00B3\u2070\u2070"},
    {-1e300, 1e300, 2, -1e300, 1e300, {L"\u22121", L"0", L"1"}, L"\u00D710\u00B3\u2070\u2070"},
};

TEST(AxisScale, LinearAxesHaveRoundTicks) {
    for (const LinearCase& test : LINEAR_CASES) {
        SCOPED_TRACE(testing::Message() << test.minimum << " to " << test.maximum << " in " << test.steps);
        const AxisScale scale = linear(test.minimum, test.maximum, test.steps);
        EXPECT_EQ(labelsOf(scale), test.labels);
        EXPECT_EQ(scale.factor(), test.factor);
        EXPECT_NEAR(scale.position(test.first), 0.0, 1e-9);
        EXPECT_NEAR(scale.position(test.last), 1.0, 1e-9);
        for (const Tick& tick : scale.ticks()) {
            EXPECT_NEAR(scale.position(numberIn(tick.label, scale.factor())), tick.position, 1e-6);
        }
    }
}

TEST(AxisScale, LinearAxesReachAsFarAsDoublesDo) {
    // Steps of 1e308 end at 1.8e308, which is no double.
    const AxisScale huge = linear(-1.7e308, 1.7e308, 4);
    EXPECT_EQ(labelsOf(huge), (Texts{L"\u2212100", L"0", L"100"}));
    EXPECT_EQ(huge.factor(), L"\u00D710\u00B3\u2070\u2076");
    EXPECT_NEAR(huge.position(1.7e308), 3.5 / 3.6, 1e-12);
    // The smallest double is 4.94e-324; steps of 0.5e-324 end at 5e-324.
    const AxisScale tiny = linear(0.0, NEAR_NOTHING, 10);
    EXPECT_EQ(labelsOf(tiny).front(), L"0.0");
    EXPECT_EQ(labelsOf(tiny).back(), L"5.0");
    EXPECT_EQ(tiny.factor(), L"\u00D710\u207B\u00B3\u00B2\u2074");
    EXPECT_NEAR(tiny.position(NEAR_NOTHING), 0.988, 1e-3);
}

TEST(AxisScale, WithoutDataALinearAxisIsFromZeroToOne) {
    EXPECT_EQ(labelsOf(AxisScale({}, {}, 2)), (Texts{L"0.0", L"0.5", L"1.0"}));
}

TEST(AxisScale, FixedLinearAxesEndWhereTheyAreTold) {
    const AxisScale scale = fixedLinear(0.3, 0.9, 2);
    EXPECT_EQ(labelsOf(scale), (Texts{L"0.4", L"0.6", L"0.8"}));
    EXPECT_NEAR(scale.ticks()[0].position, 1.0 / 6.0, 1e-12);
    EXPECT_NEAR(scale.ticks()[2].position, 5.0 / 6.0, 1e-12);
    EXPECT_EQ(scale.position(0.3), 0.0);
    EXPECT_EQ(scale.position(0.9), 1.0);
    EXPECT_NEAR(scale.position(1.5), 2.0, 1e-12);
}

TEST(AxisScale, FixedLinearAxesNarrowerThanNoiseAreWidened) {
    EXPECT_EQ(labelsOf(fixedLinear(1.0, 1.0000000000000002, 2)), (Texts{L"0.9", L"1.0", L"1.1"}));
}

TEST(AxisScale, SmallTicksDivideSteps) {
    // Steps of 5 in fives, from 1 on; 5 and 10 are labelled and the ends are not marked.
    const AxisScale scale = fixedLinear(1.0, 11.0, 2);
    const std::vector<double> expected = {0.1, 0.2, 0.3, 0.5, 0.6, 0.7, 0.8};
    ASSERT_EQ(scale.minorTicks().size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_NEAR(scale.minorTicks()[i], expected[i], 1e-12);
    }
    EXPECT_EQ(linear(0, 10, 10).minorTicks().size(), 40u); // 4 in each of 10 steps of 1
    EXPECT_EQ(linear(0, 10, 5).minorTicks().size(), 15u);  // 3 in each of 5 steps of 2
    EXPECT_EQ(linear(0, 10, 4).minorTicks().size(), 16u);  // 4 in each of 4 steps of 2.5
}

TEST(AxisScale, NumbersWithoutPlaceHaveNone) {
    EXPECT_TRUE(std::isnan(linear(0, 1, 4).position(orv::UNDEFINED_DOUBLE)));
    EXPECT_TRUE(std::isnan(linear(0, 1, 4).position(std::nan(""))));
    EXPECT_TRUE(std::isnan(logarithmic(1, 10, 4).position(0.0)));
    EXPECT_TRUE(std::isnan(logarithmic(1, 10, 4).position(-1.0)));
}

/// Any linear axis encloses its data, has two labels at least and no more than allowed, and each label tells the truth.
TEST(AxisScale, HoldsForAnyRange) {
    std::mt19937 random(7);
    auto real = [&] { return double(random()) / 4294967296.0; };
    for (int round = 0; round < 20000; ++round) {
        const double size = std::pow(10.0, real() * 500.0 - 250.0);
        const double middle = (real() * 2.0 - 1.0) * size;
        const double width = std::pow(10.0, -12.0 * real()) * size;
        const int steps = 2 + int(random() % 12);
        const AxisScale scale = linear(middle - width, middle + width, steps);
        SCOPED_TRACE(testing::Message() << middle << " +- " << width << " in " << steps);
        // The numbers themselves are rounded to 2e-16 of their size, and widths go down to 1e-11 of it.
        ASSERT_GE(scale.position(middle - width), -1e-4);
        ASSERT_LE(scale.position(middle + width), 1.0 + 1e-4);
        ASSERT_GE(scale.ticks().size(), 2u);
        ASSERT_LE(scale.ticks().size(), std::size_t(steps) + 1);
        for (std::size_t i = 0; i < scale.ticks().size(); ++i) {
            const Tick& tick = scale.ticks()[i];
            ASSERT_NEAR(scale.position(numberIn(tick.label, scale.factor())), tick.position, 1e-3);
            if (i > 0) {
                ASSERT_GT(tick.position, scale.ticks()[i - 1].position);
                ASSERT_NE(tick.label, scale.ticks()[i - 1].label);
            }
        }
    }
}

struct LogarithmicCase {
    double minimum, maximum;
    int steps;
    double first, last;
    Texts labels;
    std::size_t minorTicks;
};

// Up to three decades: the marks 1, 2, 5 around the data if at most `steps` steps are between them, with small ticks at
// 3, 4, 6, 7, 8, 9. Otherwise powers of ten: all, with eight small ticks each, or each second, third, fifth ...
const LogarithmicCase LOGARITHMIC_CASES[] = {
    {3, 40, 8, 2, 50, {L"2", L"5", L"10", L"20", L"50"}, 8}, // 3 4 6 7 8 9 30 40
    {1, 1000, 9, 1, 1000, {L"1", L"2", L"5", L"10", L"20", L"50", L"100", L"200", L"500", L"1000"}, 18},
    {1, 1000, 8, 1, 1000, {L"1", L"10", L"100", L"1000"}, 24},
    {0.002, 7, 8, 0.001, 10, {L"0.001", L"0.01", L"0.1", L"1", L"10"}, 32},
    {2e-6, 3e-6, 8, 2e-6, 5e-6, {L"2\u00D710\u207B\u2076", L"5\u00D710\u207B\u2076"}, 2},
    // Written out from 0.001 to below 100000.
    {1, 10000, 4, 1, 10000, {L"1", L"10", L"100", L"1000", L"10000"}, 32},
    {1, 100000, 5, 1, 100000, {L"10\u2070", L"10\u00B9", L"10\u00B2", L"10\u00B3", L"10\u2074", L"10\u2075"}, 40},
    {1e-4,
     1,
     4,
     1e-4,
     1,
     {L"10\u207B\u2074", L"10\u207B\u00B3", L"10\u207B\u00B2", L"10\u207B\u00B9", L"10\u2070"},
     32},
    // 15 decades in 8 steps: each second; small ticks at the odd powers but the last, which is the end.
    {1e-10,
     1e5,
     8,
     1e-10,
     1e5,
     {L"10\u207B\u00B9\u2070", L"10\u207B\u2078", L"10\u207B\u2076", L"10\u207B\u2074", L"10\u207B\u00B2", L"10\u2070",
      L"10\u00B2", L"10\u2074"},
     7},
    // 0 and 5 are marked, though 11 decades are more than two times five.
    {1e-3, 1e8, 2, 1e-3, 1e8, {L"10\u2070", L"10\u2075"}, 8},
    // Equal numbers: the marks around them, both neighbours for one that is a mark.
    {99, 99, 8, 50, 100, {L"50", L"100"}, 4},
    {1, 1, 8, 0.5, 2, {L"0.5", L"1", L"2"}, 4},
    // Rounding does not add a mark: log10(0.001) is no whole number everywhere.
    {0.001, 0.002, 8, 0.001, 0.002, {L"0.001", L"0.002"}, 0},
};

TEST(AxisScale, LogarithmicAxesHaveRoundTicks) {
    for (const LogarithmicCase& test : LOGARITHMIC_CASES) {
        SCOPED_TRACE(testing::Message() << test.minimum << " to " << test.maximum << " in " << test.steps);
        const AxisScale scale = logarithmic(test.minimum, test.maximum, test.steps);
        EXPECT_EQ(labelsOf(scale), test.labels);
        EXPECT_EQ(scale.factor(), L"");
        EXPECT_EQ(scale.minorTicks().size(), test.minorTicks);
        EXPECT_TRUE(std::is_sorted(scale.minorTicks().begin(), scale.minorTicks().end()));
        EXPECT_NEAR(scale.position(test.first), 0.0, 1e-9);
        EXPECT_NEAR(scale.position(test.last), 1.0, 1e-9);
        // Half the length is the geometric mean.
        EXPECT_NEAR(scale.position(std::sqrt(test.first) * std::sqrt(test.last)), 0.5, 1e-9);
    }
}

TEST(AxisScale, LogarithmicTicksLieAtTheirNumbers) {
    const AxisScale scale = logarithmic(3, 40, 8);
    const double numbers[] = {2, 5, 10, 20, 50};
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_NEAR(scale.ticks()[i].position, scale.position(numbers[i]), 1e-12);
    }
}

TEST(AxisScale, LogarithmicAxesReachAsFarAsDoublesDo) {
    // From 1e-324 to 1e309: 633 decades in 8 steps, each hundredth.
    const AxisScale scale = logarithmic(NEAR_NOTHING, 1.7e308, 8);
    EXPECT_EQ(labelsOf(scale).size(), 7u);
    EXPECT_EQ(labelsOf(scale).front(), L"10\u207B\u00B3\u2070\u2070");
    EXPECT_EQ(labelsOf(scale).back(), L"10\u00B3\u2070\u2070");
    EXPECT_NEAR(scale.position(1.0), 324.0 / 633.0, 1e-9);
}

TEST(AxisScale, LogarithmicAxesHaveTwoLabelsAtLeast) {
    for (int decades = 1; decades <= 600; decades += decades < 40 ? 1 : 23) {
        for (int from = -300; from <= 300 - decades; from += 13) {
            for (const int steps : {2, 3, 8}) {
                const AxisScale scale = logarithmic(std::pow(10.0, from), std::pow(10.0, from + decades), steps);
                ASSERT_GE(scale.ticks().size(), 2u) << from << ", " << decades;
                ASSERT_LE(scale.ticks().size(), std::size_t(steps) + 1) << from << ", " << decades;
            }
        }
    }
}

TEST(AxisScale, WithoutDataALogarithmicAxisIsFromOneToTen) {
    EXPECT_EQ(labelsOf(AxisScale({"", true, std::nullopt}, {}, 8)), (Texts{L"1", L"2", L"5", L"10"}));
}

TEST(AxisScale, FixedLogarithmicAxesEndWhereTheyAreTold) {
    const AxisScale scale = fixedLogarithmic(3.0, 60.0, 8);
    EXPECT_EQ(labelsOf(scale), (Texts{L"5", L"10", L"20", L"50"}));
    EXPECT_NEAR(scale.position(3.0), 0.0, 1e-12);
    EXPECT_NEAR(scale.position(60.0), 1.0, 1e-12);
    EXPECT_EQ(labelsOf(fixedLogarithmic(3.0, 6e6, 8)).front(), L"10\u00B9");
}

TEST(AxisScale, FixedLogarithmicAxesBetweenMarksHaveEqualSteps) {
    const AxisScale scale = fixedLogarithmic(3.0, 4.5, 5);
    EXPECT_EQ(labelsOf(scale), (Texts{L"3.0", L"3.5", L"4.0", L"4.5"}));
    EXPECT_NEAR(scale.ticks()[1].position, std::log(3.5 / 3.0) / std::log(1.5), 1e-12);
    const AxisScale large = fixedLogarithmic(3e7, 4.5e7, 5);
    EXPECT_EQ(labelsOf(large), (Texts{L"30", L"35", L"40", L"45"}));
    EXPECT_EQ(large.factor(), L"\u00D710\u2076");
    // Denormal numbers too: the range is 15 to 24 in units of the smallest, 4.94e-324.
    const AxisScale tiny = fixedLogarithmic(15 * NEAR_NOTHING, 24 * NEAR_NOTHING, 5);
    EXPECT_EQ(labelsOf(tiny), (Texts{L"80", L"90", L"100", L"110"}));
    EXPECT_EQ(tiny.factor(), L"\u00D710\u207B\u00B3\u00B2\u2074");
}

TEST(AxisScale, ALogarithmicAxisCannotUseARangeFromZero) {
    EXPECT_EQ(labelsOf(fixedLogarithmic(0.0, 5.0, 8)), labelsOf(logarithmic(1.0, 1e6, 8)));
    EXPECT_EQ(labelsOf(fixedLogarithmic(-1.0, 5.0, 8)), labelsOf(logarithmic(1.0, 1e6, 8)));
}

} // namespace
