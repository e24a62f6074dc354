#include "OrvPlot2d/AxisSettings.h"

#include "Tests/Support/AssertRecorder.h"

#include <gtest/gtest.h>

#include <limits>

using orv::Str;
using orv::plt::Axis;
using orv::plt::AxisRange;
using orv::plt::AxisSettings;
using orvtest::AssertRecorder;
using orvtest::FailedAssert;

namespace {

constexpr double largest = std::numeric_limits<double>::max();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

const FailedAssert endlessRange{"OrvPlot2d/AxisSettings", "std::isfinite(range.maximum - range.minimum)", std::nullopt};
const FailedAssert emptyRange{"OrvPlot2d/AxisSettings", "range.minimum < range.maximum", std::nullopt};

/// What is set on one axis must not show on the other.
void expectUntouched(const Axis& axis) {
    EXPECT_EQ(axis.title, Str());
    EXPECT_FALSE(axis.isLogarithmic);
    EXPECT_EQ(axis.range, std::nullopt);
}

TEST(AxisSettings, StartLinearAndAutomatic) {
    const AxisSettings settings;
    expectUntouched(settings.xAxis());
    expectUntouched(settings.yAxis());
}

TEST(AxisSettings, TheXAxisHasItsOwn) {
    AxisSettings settings;
    settings.setXAxisTitle("Time");
    settings.setXAxisLogarithmic(true);
    settings.setXAxisRange({1, 1000});
    EXPECT_EQ(settings.xAxis().title, "Time");
    EXPECT_TRUE(settings.xAxis().isLogarithmic);
    EXPECT_EQ(settings.xAxis().range, (AxisRange{1, 1000}));
    expectUntouched(settings.yAxis());
}

TEST(AxisSettings, TheYAxisHasItsOwn) {
    AxisSettings settings;
    settings.setYAxisTitle("Stress");
    settings.setYAxisLogarithmic(true);
    settings.setYAxisRange({-5, 5});
    EXPECT_EQ(settings.yAxis().title, "Stress");
    EXPECT_TRUE(settings.yAxis().isLogarithmic);
    EXPECT_EQ(settings.yAxis().range, (AxisRange{-5, 5}));
    expectUntouched(settings.xAxis());
}

TEST(AxisSettings, ChoicesCanBeTakenBack) {
    AxisSettings settings;
    settings.setXAxisTitle("Time");
    settings.setXAxisTitle("");
    settings.setXAxisLogarithmic(true);
    settings.setXAxisLogarithmic(false);
    settings.setXAxisRange({1, 2});
    settings.setXAxisRangeAutomatic();
    expectUntouched(settings.xAxis());

    settings.setYAxisLogarithmic(true);
    settings.setYAxisLogarithmic(false);
    settings.setYAxisRange({1, 2});
    settings.setYAxisRangeAutomatic();
    expectUntouched(settings.yAxis());
}

TEST(AxisSettings, RangesThatAreNoneAreRefused) {
    const struct {
        AxisRange range;
        std::vector<FailedAssert> failed;
    } rows[] = {
        {{2, 2}, {emptyRange}},
        {{3, 2}, {emptyRange}},
        {{0, infinity}, {endlessRange}},
        {{-infinity, 0}, {endlessRange}},
        {{-largest, largest}, {endlessRange}},
        {{notANumber, 1}, {endlessRange, emptyRange}},
        {{0, notANumber}, {endlessRange, emptyRange}},
    };
    AssertRecorder asserts;
    for (const auto& row : rows) {
        AxisSettings settings;
        settings.setXAxisRange({1, 4});
        settings.setXAxisRange(row.range);
        EXPECT_EQ(asserts.take(), row.failed);
        EXPECT_EQ(settings.xAxis().range, (AxisRange{1, 4}));

        settings.setYAxisRange(row.range);
        EXPECT_EQ(asserts.take(), row.failed);
        EXPECT_EQ(settings.yAxis().range, std::nullopt);
    }
}

} // namespace
