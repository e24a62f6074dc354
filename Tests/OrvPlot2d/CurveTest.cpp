#include "OrvPlot2d/Curve.h"

#include "OrvCore/Defines.h"
#include "Tests/Support/AssertRecorder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using orv::UNDEFINED_DOUBLE;
using orv::plt::Curve;
using orvtest::AssertRecorder;
using orvtest::FailedAssert;

using Numbers = std::vector<double>;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

const FailedAssert unequalLists{"OrvPlot2d/Curve", "x.size() == y.size()", std::nullopt};

TEST(Curve, KeepsItsNameAndPoints) {
    const Curve curve("DISP", {0, 2, 1}, {10, UNDEFINED_DOUBLE, 30});
    EXPECT_EQ(curve.name(), "DISP");
    EXPECT_EQ(curve.pointCount(), 3u);
    EXPECT_EQ(curve.x(), (Numbers{0, 2, 1}));
    EXPECT_EQ(curve.y(), (Numbers{10, UNDEFINED_DOUBLE, 30}));
}

TEST(Curve, CanBeRenamed) {
    Curve curve("DISP", {0}, {10});
    curve.setName("node 7");
    EXPECT_EQ(curve.name(), "node 7");
    EXPECT_EQ(curve.y(), Numbers{10});
}

TEST(Curve, MayBeEmpty) {
    AssertRecorder asserts;
    const Curve curve("", {}, {});
    EXPECT_EQ(curve.pointCount(), 0u);
    EXPECT_EQ(asserts.take(), std::vector<FailedAssert>());
}

TEST(Curve, ListsOfUnequalLengthAreCutToTheShorterOne) {
    AssertRecorder asserts;
    const Curve longX("", {0, 1, 2}, {5});
    EXPECT_EQ(asserts.take(), std::vector<FailedAssert>{unequalLists});
    EXPECT_EQ(longX.pointCount(), 1u);
    EXPECT_EQ(longX.x(), Numbers{0});
    EXPECT_EQ(longX.y(), Numbers{5});

    const Curve longY("", {0, 1}, {5, 6, 7});
    EXPECT_EQ(asserts.take(), std::vector<FailedAssert>{unequalLists});
    EXPECT_EQ(longY.pointCount(), 2u);
    EXPECT_EQ(longY.x(), (Numbers{0, 1}));
    EXPECT_EQ(longY.y(), (Numbers{5, 6}));
}

TEST(Curve, WhatIsNoPointIsAGap) {
    for (const double value : {UNDEFINED_DOUBLE, infinity, -infinity, notANumber}) {
        const Curve curve("", {value, 1, 2}, {0, value, 0});
        EXPECT_TRUE(curve.isGap(0)) << value;
        EXPECT_TRUE(curve.isGap(1)) << value;
        EXPECT_FALSE(curve.isGap(2)) << value;
    }
}

TEST(Curve, LargeNumbersAreNoGaps) {
    const Curve curve("", {-UNDEFINED_DOUBLE}, {std::nextafter(UNDEFINED_DOUBLE, 0.0)});
    EXPECT_FALSE(curve.isGap(0));
}

TEST(Curve, BehindTheEndThereIsAGap) {
    AssertRecorder asserts;
    const Curve curve("", {1}, {1});
    EXPECT_TRUE(curve.isGap(1));
    EXPECT_EQ(asserts.take(), (std::vector<FailedAssert>{{"OrvPlot2d/Curve", "index < pointCount()", std::nullopt}}));
}

} // namespace
