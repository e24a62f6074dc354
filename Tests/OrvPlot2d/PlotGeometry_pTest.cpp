#include "OrvPlot2d/PlotGeometry_p.h"

#include "Tests/OrvPlot2d/PrintGeometry.h"

#include <gtest/gtest.h>

using namespace orv::plt;

namespace {

const Rect RECT = {10.0, 20.0, 30.0, 60.0};

TEST(Rect, KnowsItsSize) {
    EXPECT_EQ(RECT.width(), 20.0);
    EXPECT_EQ(RECT.height(), 40.0);
    EXPECT_EQ(RECT.center(), (Point{20.0, 40.0}));
}

TEST(Rect, ContainsItsBorders) {
    EXPECT_TRUE(RECT.contains({10.0, 20.0}));
    EXPECT_TRUE(RECT.contains({30.0, 60.0}));
    EXPECT_FALSE(RECT.contains({9.9, 40.0}));
    EXPECT_FALSE(RECT.contains({30.1, 40.0}));
    EXPECT_FALSE(RECT.contains({20.0, 19.9}));
    EXPECT_FALSE(RECT.contains({20.0, 60.1}));
}

TEST(Rect, TouchingIsNotOverlapping) {
    EXPECT_TRUE(RECT.overlaps({29.0, 59.0, 40.0, 70.0}));
    EXPECT_TRUE(RECT.overlaps({15.0, 25.0, 16.0, 26.0}));
    EXPECT_FALSE(RECT.overlaps({30.0, 20.0, 40.0, 60.0}));
    EXPECT_FALSE(RECT.overlaps({0.0, 20.0, 10.0, 60.0}));
    EXPECT_FALSE(RECT.overlaps({10.0, 60.0, 30.0, 70.0}));
    EXPECT_FALSE(RECT.overlaps({10.0, 0.0, 30.0, 20.0}));
}

struct ClipCase {
    Point from, to;
    bool isLeft;
    Point clippedFrom, clippedTo;
};

const ClipCase CLIP_CASES[] = {
    {{12, 25}, {28, 55}, true, {12, 25}, {28, 55}},
    {{10, 20}, {30, 60}, true, {10, 20}, {30, 60}},
    {{0, 40}, {40, 40}, true, {10, 40}, {30, 40}},
    {{40, 40}, {0, 40}, true, {30, 40}, {10, 40}},
    {{20, 0}, {20, 100}, true, {20, 20}, {20, 60}},
    {{20, 40}, {40, 50}, true, {20, 40}, {30, 45}},
    {{0, 30}, {20, 40}, true, {10, 35}, {20, 40}},
    {{0, 0}, {5, 100}, false, {0, 0}, {5, 100}},
    {{0, 40}, {9, 40}, false, {0, 40}, {9, 40}},
    {{0, 29}, {29, 0}, false, {0, 29}, {29, 0}}, // passes the corner (10, 20)
    {{20, 40}, {20, 40}, true, {20, 40}, {20, 40}},
    {{5, 40}, {5, 40}, false, {5, 40}, {5, 40}},
};

TEST(ClipSegment, KeepsWhatIsInside) {
    for (const ClipCase& test : CLIP_CASES) {
        SCOPED_TRACE(testing::Message() << test.from.x << "," << test.from.y << " to " << test.to.x << ","
                                        << test.to.y);
        Point from = test.from;
        Point to = test.to;
        EXPECT_EQ(clipSegment(&from, &to, RECT), test.isLeft);
        EXPECT_NEAR(from.x, test.clippedFrom.x, 1e-12);
        EXPECT_NEAR(from.y, test.clippedFrom.y, 1e-12);
        EXPECT_NEAR(to.x, test.clippedTo.x, 1e-12);
        EXPECT_NEAR(to.y, test.clippedTo.y, 1e-12);
    }
}

TEST(ClipSegment, EndsInsideStayTheSameNumbers) {
    // 0.1 + 1 * (t - 0.1) is not t for many t.
    const Point inside = {10.1, 30.3};
    for (int i = 0; i < 100; ++i) {
        Point from = {20.0 + i * 0.1, 40.0 + i * 0.01};
        const Point before = from;
        Point to = inside;
        ASSERT_TRUE(clipSegment(&from, &to, RECT));
        ASSERT_EQ(from, before);
        ASSERT_EQ(to, inside);
    }
}

TEST(ClipSegment, IsExactHoweverFarTheOtherEndIs) {
    Point inside = {20.0, 40.0};
    Point far = {21.0, -1e150};
    ASSERT_TRUE(clipSegment(&inside, &far, RECT));
    EXPECT_EQ(far, (Point{20.0, 20.0}));
    // From the far end on, the inside is below the rounding of the length.
    far = {21.0, 1e150};
    ASSERT_TRUE(clipSegment(&far, &inside, RECT));
    EXPECT_EQ(far, (Point{20.0, 60.0}));
    EXPECT_EQ(inside, (Point{20.0, 40.0}));
}

} // namespace
