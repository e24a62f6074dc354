#include "OrvPlot2d/CurveLines_p.h"

#include "OrvCore/Defines.h"
#include "OrvPlot2d/AxisScale_p.h"
#include "OrvPlot2d/Curve.h"
#include "Tests/OrvPlot2d/PrintGeometry.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace orv::plt;

namespace {

using Numbers = std::vector<double>;
using Lines = std::vector<std::vector<Point>>;

const double UNDEFINED = orv::UNDEFINED_DOUBLE;

/// (x, y) of a curve is at (10 x, 100 - 10 y) of the picture.
const Rect FRAME = {0.0, 0.0, 100.0, 100.0};
const AxisScale SCALE({"", false, AxisRange{0.0, 10.0}}, {}, 5);

CurveLines draw(const Numbers& x, const Numbers& y, double columnWidth = 0.5) {
    return linesOf(Curve("", x, y), SCALE, SCALE, FRAME, columnWidth);
}

Point rounded(const Point& point) {
    return {std::round(point.x * 1e4) / 1e4 + 0.0, std::round(point.y * 1e4) / 1e4 + 0.0};
}

Lines linesIn(const CurveLines& curve) {
    Lines lines;
    for (std::size_t i = 0; i < curve.lineCount(); ++i) {
        lines.emplace_back();
        for (const Point& point : curve.line(i)) {
            lines.back().push_back(rounded(point));
        }
    }
    return lines;
}

std::vector<Point> lonePointsIn(const CurveLines& curve) {
    std::vector<Point> points;
    for (const Point& point : curve.lonePoints) {
        points.push_back(rounded(point));
    }
    return points;
}

TEST(CurveLines, ALineGoesThroughAllPoints) {
    const CurveLines curve = draw({1, 2, 4}, {1, 3, 2});
    EXPECT_EQ(linesIn(curve), (Lines{{{10, 90}, {20, 70}, {40, 80}}}));
    EXPECT_TRUE(curve.lonePoints.empty());
}

TEST(CurveLines, XMayGoBack) {
    EXPECT_EQ(linesIn(draw({4, 1, 2}, {1, 3, 2})), (Lines{{{40, 90}, {10, 70}, {20, 80}}}));
}

TEST(CurveLines, NothingIsDrawnWithoutPoints) {
    const CurveLines curve = draw({}, {});
    EXPECT_EQ(curve.lineCount(), 0u);
    EXPECT_TRUE(curve.lonePoints.empty());
    EXPECT_EQ(draw({1, 2}, {UNDEFINED, UNDEFINED}).lineCount(), 0u);
}

TEST(CurveLines, GapsInterruptALine) {
    const Lines expected = {{{10, 90}, {20, 80}}, {{40, 60}, {50, 50}}};
    for (const double gap : {UNDEFINED, std::nan(""), double(INFINITY), -double(INFINITY)}) {
        EXPECT_EQ(linesIn(draw({1, 2, 3, 4, 5}, {1, 2, gap, 4, 5})), expected) << gap;
        EXPECT_EQ(linesIn(draw({1, 2, gap, 4, 5}, {1, 2, 3, 4, 5})), expected) << gap;
    }
}

TEST(CurveLines, GapsAtTheEndsAndInARowLeaveNothing) {
    const CurveLines curve = draw({1, 2, 3, 4, 5, 6, 7}, {UNDEFINED, UNDEFINED, 3, 4, UNDEFINED, UNDEFINED, UNDEFINED});
    EXPECT_EQ(linesIn(curve), (Lines{{{30, 70}, {40, 60}}}));
    EXPECT_TRUE(curve.lonePoints.empty());
}

TEST(CurveLines, NumbersUpToZeroAreGapsOnALogarithmicAxis) {
    const AxisScale logarithmic({"", true, AxisRange{1.0, 100.0}}, {}, 5);
    const CurveLines curve =
        linesOf(Curve("", {1, 2, 3, 4, 5, 6}, {1, 10, 0, 10, 100, -1}), SCALE, logarithmic, FRAME, 0.5);
    EXPECT_EQ(linesIn(curve), (Lines{{{10, 100}, {20, 50}}, {{40, 50}, {50, 0}}}));
}

TEST(CurveLines, APointBetweenGapsIsALonePoint) {
    const CurveLines curve = draw({1, 2, 3, 4, 5, 6, 7}, {1, UNDEFINED, 3, UNDEFINED, 5, 6, UNDEFINED});
    EXPECT_EQ(linesIn(curve), (Lines{{{50, 50}, {60, 40}}}));
    EXPECT_EQ(lonePointsIn(curve), (std::vector<Point>{{10, 90}, {30, 70}}));
}

TEST(CurveLines, PointsInOnePlaceAreALonePoint) {
    EXPECT_EQ(lonePointsIn(draw({1, 1, 1}, {2, 2, 2})), (std::vector<Point>{{10, 80}}));
    EXPECT_EQ(draw({1, 1, 1}, {2, 2, 2}).lineCount(), 0u);
    EXPECT_EQ(linesIn(draw({1, 1, 1}, {2, 2, 2.5})), (Lines{{{10, 80}, {10, 75}}}));
}

TEST(CurveLines, LonePointsOutsideAreNotDrawn) {
    EXPECT_TRUE(draw({11}, {5}).lonePoints.empty());
    EXPECT_TRUE(draw({5}, {-1}).lonePoints.empty());
    EXPECT_EQ(lonePointsIn(draw({10}, {0})), (std::vector<Point>{{100, 100}}));
}

TEST(CurveLines, LinesEndAtTheFrame) {
    // Leaves at the top, comes back, leaves at the right.
    EXPECT_EQ(linesIn(draw({1, 2, 3, 12}, {5, 15, 5, 5})),
              (Lines{{{10, 50}, {15, 0}}, {{25, 0}, {30, 50}, {100, 50}}}));
    EXPECT_EQ(linesIn(draw({-1, 11}, {5, 5})), (Lines{{{0, 50}, {100, 50}}}));
    EXPECT_TRUE(linesIn(draw({1, 2, 3}, {11, 15, 11})).empty());
}

TEST(CurveLines, LinesAlongTheFrameStay) {
    EXPECT_EQ(linesIn(draw({0, 10, 10}, {10, 10, 0})), (Lines{{{0, 0}, {100, 0}, {100, 100}}}));
}

TEST(CurveLines, RoundingCarriesNothingOutOfTheFrame) {
    EXPECT_EQ(linesIn(draw({-1e-4, 10.0001}, {10.0001, 10.0001})), (Lines{{{0, 0}, {100, 0}}}));
    EXPECT_TRUE(linesIn(draw({0, 10}, {10.002, 10.002})).empty());
}

TEST(CurveLines, PeaksBeyondAllBoundsGoStraightUp) {
    EXPECT_EQ(linesIn(draw({1, 2, 3}, {5, 1e308, 5})), (Lines{{{10, 50}, {10, 0}}, {{30, 0}, {30, 50}}}));
}

TEST(CurveLines, ColumnsKeepFirstLowestHighestAndLast) {
    // The column of one unit from 10 on has these seven points; y of the picture goes down.
    const CurveLines curve = draw({0, 1.01, 1.02, 1.03, 1.04, 1.05, 1.06, 1.07, 9}, {5, 4, 5, 9, 6, 1, 3, 4.5, 5}, 1.0);
    EXPECT_EQ(linesIn(curve), (Lines{{{0, 50}, {10.1, 60}, {10.3, 10}, {10.5, 90}, {10.7, 55}, {90, 50}}}));
    // The lowest before the highest.
    const CurveLines other = draw({0, 1.01, 1.02, 1.03, 1.04, 1.05, 9}, {5, 4, 1, 2, 9, 5, 5}, 1.0);
    EXPECT_EQ(linesIn(other), (Lines{{{0, 50}, {10.1, 60}, {10.2, 90}, {10.4, 10}, {10.5, 50}, {90, 50}}}));
}

TEST(CurveLines, ExtremesAtTheEndsOfAColumnStandOnce) {
    EXPECT_EQ(linesIn(draw({0, 1.01, 1.02, 1.03, 9}, {5, 1, 5, 9, 5}, 1.0)),
              (Lines{{{0, 50}, {10.1, 90}, {10.3, 10}, {90, 50}}}));
}

TEST(CurveLines, MillionsOfPointsBecomeFew) {
    const std::size_t count = 1000000;
    Numbers x(count);
    Numbers y(count);
    for (std::size_t i = 0; i < count; ++i) {
        x[i] = 10.0 * double(i) / double(count - 1);
        y[i] = 5.0 + std::sin(double(i)) * 0.5;
    }
    y[123456] = 9.5;
    y[765432] = 0.5;
    const CurveLines curve = draw(x, y);
    ASSERT_EQ(curve.lineCount(), 1u);
    EXPECT_LE(curve.points.size(), 4u * 201u); // 200 columns of half a unit, and the point on the right border
    EXPECT_GE(curve.points.size(), 3u * 200u);
    const auto byHeight = [](const Point& a, const Point& b) { return a.y < b.y; };
    const auto [highest, lowest] = std::minmax_element(curve.points.begin(), curve.points.end(), byHeight);
    EXPECT_NEAR(highest->y, 5.0, 1e-9);
    EXPECT_NEAR(highest->x, 12.3456, 1e-3);
    EXPECT_NEAR(lowest->y, 95.0, 1e-9);
    EXPECT_NEAR(lowest->x, 76.5432, 1e-3);
    EXPECT_NEAR(curve.points.front().x, 0.0, 1e-9);
    EXPECT_NEAR(curve.points.back().x, 100.0, 1e-9);
}

TEST(Touches, SeesLinesThatCrossWithoutAPointInside) {
    const CurveLines curve = draw({0, 10}, {0, 10});
    EXPECT_TRUE(touches(curve, {40, 40, 60, 60}, 0.0));
    EXPECT_FALSE(touches(curve, {60, 60, 90, 90}, 0.0));
    // From the corner (60, 60) the line is 20 away in x and y together.
    EXPECT_FALSE(touches(curve, {60, 60, 90, 90}, 9.9));
    EXPECT_TRUE(touches(curve, {60, 60, 90, 90}, 10.1));
}

TEST(Touches, SeesLonePoints) {
    const CurveLines curve = draw({5}, {5});
    EXPECT_TRUE(touches(curve, {40, 40, 60, 60}, 0.0));
    EXPECT_FALSE(touches(curve, {51, 51, 60, 60}, 0.9));
    EXPECT_TRUE(touches(curve, {51, 51, 60, 60}, 1.1));
    EXPECT_FALSE(touches(draw({}, {}), {0, 0, 100, 100}, 5.0));
}

} // namespace
