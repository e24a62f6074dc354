#include "LibUnstructGrid/VTOBaseTypes2D.h"

#include "LibUnstructGrid/VTOMathConstants.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

const float fNaN = std::numeric_limits<float>::quiet_NaN();

TEST(VTIntCoord2D, SetsAndCompares) {
    VTIntCoord2D coord;
    EXPECT_TRUE(coord.IsZero());
    coord.Set(3, 7);
    EXPECT_EQ(coord.x, 3);
    EXPECT_EQ(coord.y, 7);
    EXPECT_EQ(coord, VTIntCoord2D(3, 7));
    EXPECT_NE(coord, VTIntCoord2D(3, 8));
    EXPECT_NE(coord, VTIntCoord2D(4, 7));
}

TEST(VTIntCoord2D, IsZeroNeedsBothComponents) {
    EXPECT_FALSE(VTIntCoord2D(0, 1).IsZero());
    EXPECT_FALSE(VTIntCoord2D(1, 0).IsZero());
}

TEST(VTIntCoord2D, IsUndefinedWithEitherComponent) {
    VTIntCoord2D coord(1, 2);
    EXPECT_FALSE(coord.IsUndefined());
    coord.SetUndefined();
    EXPECT_EQ(coord, VTIntCoord2D(VT_UNDEFINED_INT, VT_UNDEFINED_INT));
    EXPECT_TRUE(coord.IsUndefined());
    EXPECT_TRUE(VTIntCoord2D(1, VT_UNDEFINED_INT).IsUndefined());
    EXPECT_TRUE(VTIntCoord2D(VT_UNDEFINED_INT, 1).IsUndefined());
}

TEST(VTIntSize2D, SetsAndCompares) {
    VTIntSize2D size;
    EXPECT_TRUE(size.IsZero());
    size.Set(3, 7);
    EXPECT_EQ(size.w, 3);
    EXPECT_EQ(size.h, 7);
    EXPECT_EQ(size, VTIntSize2D(3, 7));
    EXPECT_NE(size, VTIntSize2D(3, 8));
    EXPECT_NE(size, VTIntSize2D(4, 7));
    EXPECT_FALSE(VTIntSize2D(0, 1).IsZero());
    EXPECT_FALSE(VTIntSize2D(1, 0).IsZero());
}

TEST(VTIntSize2D, IsUndefinedWithEitherComponent) {
    VTIntSize2D size(1, 2);
    EXPECT_FALSE(size.IsUndefined());
    size.SetUndefined();
    EXPECT_EQ(size, VTIntSize2D(VT_UNDEFINED_INT, VT_UNDEFINED_INT));
    EXPECT_TRUE(VTIntSize2D(1, VT_UNDEFINED_INT).IsUndefined());
    EXPECT_TRUE(VTIntSize2D(VT_UNDEFINED_INT, 1).IsUndefined());
}

TEST(VTIntSize2D, ScaleFitInsideKeepsTheAspectAndTouchesTheBounds) {
    const struct {
        VTIntSize2D size;
        VTIntSize2D bounds;
        VTIntSize2D expected;
    } rows[] = {
        {{100, 50}, {10, 10}, {10, 5}}, // At full height 20 wide, which is too wide.
        {{50, 100}, {10, 10}, {5, 10}},
        {{10, 5}, {100, 100}, {100, 50}}, // It also grows.
        {{20, 10}, {20, 10}, {20, 10}},
        {{3, 2}, {10, 10}, {10, 6}}, // 10 * 2 / 3 is 6.67.
        {{2, 3}, {10, 10}, {6, 10}},
        {{3, 2}, {4, 3}, {4, 3}}, // 3 * 3 / 2 is 4.5, which fits once it is cut.
        {{100, 50}, {0, 0}, {100, 50}},
        {{0, 0}, {10, 10}, {0, 0}},
        {{100, 0}, {10, 10}, {100, 0}},
        {{0, 50}, {10, 10}, {0, 50}},
        {{2000000, 1000000}, {500000, 500000}, {500000, 250000}}, // The products need more than an int.
    };
    for (const auto& row : rows) {
        VTIntSize2D size = row.size;
        size.ScaleFitInside(row.bounds);
        EXPECT_EQ(size, row.expected) << row.size.w << " x " << row.size.h << " became " << size.w << " x " << size.h;
    }
}

TEST(VTFloatCoord2D, SetsAndComparesExactly) {
    VTFloatCoord2D coord;
    EXPECT_EQ(coord, VTFloatCoord2D(0, 0));
    coord.Set(3, 7);
    EXPECT_EQ(coord.x, 3.0f);
    EXPECT_EQ(coord.y, 7.0f);
    EXPECT_NE(coord, VTFloatCoord2D(3, std::nextafter(7.0f, 8.0f)));
    EXPECT_NE(coord, VTFloatCoord2D(std::nextafter(3.0f, 4.0f), 7));
}

TEST(VTFloatSize2D, SetsAndComparesExactly) {
    VTFloatSize2D size;
    EXPECT_EQ(size, VTFloatSize2D(0, 0));
    size.Set(3, 7);
    EXPECT_EQ(size.w, 3.0f);
    EXPECT_EQ(size.h, 7.0f);
    EXPECT_NE(size, VTFloatSize2D(3, std::nextafter(7.0f, 8.0f)));
    EXPECT_NE(size, VTFloatSize2D(std::nextafter(3.0f, 4.0f), 7));
}

// A float just below the undefined one is above the limit, and yet defined in a coordinate and in a size.
TEST(VTFloatCoordAndSize, UndefinedIsExactlyTheUndefinedFloat) {
    const float fAboveLimit = std::nextafter(VT_UNDEFINED_FLOAT, 0.0f);
    VTFloatCoord2D coord;
    VTFloatSize2D size;
    EXPECT_FALSE(coord.IsUndefined());
    EXPECT_FALSE(size.IsUndefined());
    coord.SetUndefined();
    size.SetUndefined();
    EXPECT_EQ(coord, VTFloatCoord2D(VT_UNDEFINED_FLOAT, VT_UNDEFINED_FLOAT));
    EXPECT_EQ(size, VTFloatSize2D(VT_UNDEFINED_FLOAT, VT_UNDEFINED_FLOAT));
    EXPECT_TRUE(VTFloatCoord2D(VT_UNDEFINED_FLOAT, 0).IsUndefined());
    EXPECT_TRUE(VTFloatCoord2D(0, VT_UNDEFINED_FLOAT).IsUndefined());
    EXPECT_TRUE(VTFloatSize2D(VT_UNDEFINED_FLOAT, 0).IsUndefined());
    EXPECT_TRUE(VTFloatSize2D(0, VT_UNDEFINED_FLOAT).IsUndefined());
    EXPECT_FALSE(VTFloatCoord2D(fAboveLimit, fAboveLimit).IsUndefined());
    EXPECT_FALSE(VTFloatSize2D(fAboveLimit, fAboveLimit).IsUndefined());
}

TEST(VTFloatRect, UndefinedIsAnyFieldAboveTheLimit) {
    const float fAboveLimit = std::nextafter(VT_UNDEFINED_FLOAT_LIMIT, VT_UNDEFINED_FLOAT);
    EXPECT_FALSE(VTFloatRect(VT_UNDEFINED_FLOAT_LIMIT, VT_UNDEFINED_FLOAT_LIMIT, VT_UNDEFINED_FLOAT_LIMIT,
                             VT_UNDEFINED_FLOAT_LIMIT)
                     .IsUndefined());
    EXPECT_TRUE(VTFloatRect(fAboveLimit, 0, 0, 0).IsUndefined());
    EXPECT_TRUE(VTFloatRect(0, fAboveLimit, 0, 0).IsUndefined());
    EXPECT_TRUE(VTFloatRect(0, 0, fAboveLimit, 0).IsUndefined());
    EXPECT_TRUE(VTFloatRect(0, 0, 0, fAboveLimit).IsUndefined());
    VTFloatRect rect;
    rect.SetUndefined();
    EXPECT_EQ(rect, VTFloatRect(VT_UNDEFINED_FLOAT, VT_UNDEFINED_FLOAT, VT_UNDEFINED_FLOAT, VT_UNDEFINED_FLOAT));
}

TEST(VTIntRect, HoldsLeftBottomRightTop) {
    VTIntRect rect;
    EXPECT_TRUE(rect.IsZero());
    rect.Set(1, 2, 11, 22);
    EXPECT_EQ(rect.left, 1);
    EXPECT_EQ(rect.bottom, 2);
    EXPECT_EQ(rect.right, 11);
    EXPECT_EQ(rect.top, 22);
    EXPECT_EQ(rect.Width(), 10);
    EXPECT_EQ(rect.Height(), 20);
    EXPECT_EQ(rect.Size(), VTIntSize2D(10, 20));
    EXPECT_NE(rect, VTIntRect(1, 2, 11, 23));
    rect.SetZero();
    EXPECT_EQ(rect, VTIntRect(0, 0, 0, 0));
}

TEST(VTIntRect, NormalizeOrdersBothPairs) {
    VTIntRect rect(11, 22, 1, 2);
    rect.Normalize();
    EXPECT_EQ(rect, VTIntRect(1, 2, 11, 22));
    rect.Normalize();
    EXPECT_EQ(rect, VTIntRect(1, 2, 11, 22));
    rect.Set(11, 2, 1, 22);
    rect.Normalize();
    EXPECT_EQ(rect, VTIntRect(1, 2, 11, 22));
}

TEST(VTIntRect, ZeroIsAllFieldsAndEmptyIsOneSide) {
    EXPECT_FALSE(VTIntRect(0, 0, 0, 1).IsZero());
    EXPECT_TRUE(VTIntRect(0, 0, 0, 1).IsEmpty());
    EXPECT_FALSE(VTIntRect(5, 0, 5, 0).IsZero());
    EXPECT_TRUE(VTIntRect(0, 3, 9, 3).IsEmpty());
    EXPECT_FALSE(VTIntRect(0, 0, 1, 1).IsEmpty());
    EXPECT_FALSE(VTIntRect(1, 1, 0, 0).IsEmpty());
}

TEST(VTFloatRect, HoldsLeftBottomRightTop) {
    VTFloatRect rect;
    EXPECT_EQ(rect, VTFloatRect(0, 0, 0, 0));
    rect.Set(1, 2, 11, 22);
    EXPECT_EQ(rect.left, 1);
    EXPECT_EQ(rect.bottom, 2);
    EXPECT_EQ(rect.right, 11);
    EXPECT_EQ(rect.top, 22);
    EXPECT_EQ(rect.Width(), 10);
    EXPECT_EQ(rect.Height(), 20);
    EXPECT_EQ(rect.Size(), VTFloatSize2D(10, 20));
    rect.SetZero();
    EXPECT_EQ(rect, VTFloatRect());
}

TEST(VTFloatRect, OffsetMovesAndInflateMovesEachSideOut) {
    VTFloatRect rect(1, 2, 11, 22);
    rect.Offset(100, -2);
    EXPECT_EQ(rect, VTFloatRect(101, 0, 111, 20));
    rect.Inflate(1, 5);
    EXPECT_EQ(rect, VTFloatRect(100, -5, 112, 25));
}

TEST(VTFloatRect, NormalizeOrdersBothPairs) {
    VTFloatRect rect(11, 22, 1, 2);
    rect.Normalize();
    EXPECT_EQ(rect, VTFloatRect(1, 2, 11, 22));
    rect.Set(1, 22, 11, 2);
    rect.Normalize();
    EXPECT_EQ(rect, VTFloatRect(1, 2, 11, 22));
    rect.Set(11, 2, 1, 22);
    rect.Normalize();
    EXPECT_EQ(rect, VTFloatRect(1, 2, 11, 22));
}

TEST(VTFloatRect, IntersectZeroesThePairWithoutExtent) {
    const struct {
        VTFloatRect other;
        bool bMeets;
        VTFloatRect expected;
    } rows[] = {
        {{5, 6, 20, 30}, true, {5, 6, 10, 20}},
        {{-5, -6, 3, 4}, true, {0, 0, 3, 4}},
        {{2, 3, 4, 5}, true, {2, 3, 4, 5}},
        {{10, 3, 20, 5}, false, {0, 3, 0, 5}}, // Touches at the right edge: no width.
        {{2, 20, 4, 30}, false, {2, 0, 4, 0}}, // Touches at the top.
        {{11, 21, 12, 22}, false, {0, 0, 0, 0}},
    };
    for (const auto& row : rows) {
        VTFloatRect rect(0, 0, 10, 20);
        EXPECT_EQ(rect.Intersect(row.other), row.bMeets);
        EXPECT_EQ(rect, row.expected) << row.other.left << " " << row.other.bottom;
    }
}

TEST(VTFloatRect, PointInRectIsHalfOpen) {
    const VTFloatRect rect(1, 2, 11, 22);
    EXPECT_TRUE(rect.PointInRect(5, 5));
    EXPECT_TRUE(rect.PointInRect(1, 5));
    EXPECT_TRUE(rect.PointInRect(5, 2));
    EXPECT_FALSE(rect.PointInRect(11, 5));
    EXPECT_FALSE(rect.PointInRect(5, 22));
    EXPECT_FALSE(rect.PointInRect(0.5f, 5));
    EXPECT_FALSE(rect.PointInRect(5, 1.5f));
    EXPECT_FALSE(rect.PointInRect(fNaN, 5));
}

} // namespace
