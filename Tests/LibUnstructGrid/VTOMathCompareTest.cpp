#include "LibUnstructGrid/VTOMathCompare.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

namespace {

constexpr float infFloat = std::numeric_limits<float>::infinity();
constexpr double inf = std::numeric_limits<double>::infinity();
const float nanFloat = std::nanf("");
const double nan = std::nan("");

TEST(MathConstants, HaveTheirValues) {
    EXPECT_EQ(VT_FLOAT_TOLERANCE, 1e-6f);
    EXPECT_EQ(VT_DOUBLE_TOLERANCE, 1e-12);
    EXPECT_EQ(VT_REAL_TOLERANCE, 1e-12);
    EXPECT_EQ(VT_UNDEFINED_INT, 0x7FFFFFFF);
    EXPECT_EQ(std::bit_cast<std::uint32_t>(VT_UNDEFINED_FLOAT), 0x7F7FFFFFu);
    EXPECT_EQ(std::bit_cast<std::uint64_t>(VT_UNDEFINED_DOUBLE), 0x7FEFFFFFFFFFFFFFu);
    EXPECT_EQ(std::bit_cast<std::uint32_t>(VT_UNDEFINED_FLOAT_LIMIT), 0x7F60F14Eu);
    EXPECT_EQ(VT_UNDEFINED_DOUBLE_LIMIT, 1e308);
}

TEST(IsUndefined, IsNotBelowTheLimit) {
    EXPECT_TRUE(VTIsUndefined(VT_UNDEFINED_FLOAT));
    EXPECT_TRUE(VTIsUndefined(VT_UNDEFINED_FLOAT_LIMIT));
    EXPECT_FALSE(VTIsUndefined(std::nextafter(VT_UNDEFINED_FLOAT_LIMIT, 0.0f)));
    EXPECT_TRUE(VTIsUndefined(infFloat));
    EXPECT_FALSE(VTIsUndefined(-infFloat));
    EXPECT_FALSE(VTIsUndefined(-VT_UNDEFINED_FLOAT));
    EXPECT_TRUE(VTIsUndefined(nanFloat));
    EXPECT_TRUE(VTIsUndefined(VT_UNDEFINED_DOUBLE));
    EXPECT_TRUE(VTIsUndefined(1e308));
    EXPECT_FALSE(VTIsUndefined(std::nextafter(1e308, 0.0)));
    EXPECT_TRUE(VTIsUndefined(inf));
    EXPECT_FALSE(VTIsUndefined(-inf));
    EXPECT_TRUE(VTIsUndefined(nan));
    // The undefined float is a plain number once it is widened.
    EXPECT_FALSE(VTIsUndefined(static_cast<double>(VT_UNDEFINED_FLOAT)));
}

TEST(FeqZero, HasALimitPerType) {
    EXPECT_TRUE(VTFeqZero(0.0f));
    EXPECT_TRUE(VTFeqZero(9.9e-31f));
    EXPECT_TRUE(VTFeqZero(-9.9e-31f));
    EXPECT_FALSE(VTFeqZero(1e-30f));
    EXPECT_FALSE(VTFeqZero(-1.1e-30f));
    EXPECT_FALSE(VTFeqZero(nanFloat));
    EXPECT_TRUE(VTFeqZero(0.0));
    EXPECT_TRUE(VTFeqZero(-9.9e-61));
    EXPECT_FALSE(VTFeqZero(1e-60));
    EXPECT_FALSE(VTFeqZero(-1e-60));
    EXPECT_FALSE(VTFeqZero(nan));
}

TEST(Feq, ComparesDoublesRelatively) {
    struct Row {
        double a;
        double b;
        bool equal;
    };
    const Row rows[] = {
        {1.0, 1.0 + 1e-13, true},
        {1.0, 1.0 + 1e-11, false},
        {1e100, 1e100 * (1 + 1e-13), true},
        {1e-100, 1e-100 * (1 + 1e-13), true},
        {1e-100, 1e-101, false}, // both below the zero limit, and yet different
        {0.0, 0.0, true},
        {0.0, -0.0, true},
        {0.0, 1e-61, true},
        {0.0, -1e-61, true},
        {0.0, 1e-60, false},
        {0.0, 1e-59, false},
        {1.0, -1.0, false},
        {1e-61, -1e-61, false}, // opposite sign, though both are as good as zero
        {-1.0, -1.0 - 1e-13, true},
        {inf, inf, true},
        {inf, -inf, true}, // their quotient is a NaN
        {inf, 1.0, false},
        {nan, 1.0, true},
        {nan, 0.0, true},
        {nan, nan, true},
        {nan, inf, true},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(VTFeq(row.a, row.b, VT_DOUBLE_TOLERANCE), row.equal) << row.a << ' ' << row.b;
        EXPECT_EQ(VTFeq(row.b, row.a, VT_DOUBLE_TOLERANCE), row.equal) << row.b << ' ' << row.a;
    }
}

TEST(Feq, ComparesFloatsRelatively) {
    struct Row {
        float a;
        float b;
        bool equal;
    };
    const Row rows[] = {
        {1.0f, 1.0f + 5e-7f, true}, {1.0f, 1.0f + 5e-6f, false}, {0.0f, 1e-31f, true},    {0.0f, 1e-29f, false},
        {1e-31f, 1e-35f, false},    {1e-31f, -1e-31f, false},    {3.5f, 3.5f, true},      {0.0f, -0.0f, true},
        {infFloat, infFloat, true}, {infFloat, -infFloat, true}, {infFloat, 1.0f, false}, {nanFloat, 1.0f, true},
        {nanFloat, 0.0f, true},     {nanFloat, nanFloat, true},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(VTFeq(row.a, row.b, VT_FLOAT_TOLERANCE), row.equal) << row.a << ' ' << row.b;
        EXPECT_EQ(VTFeq(row.b, row.a, VT_FLOAT_TOLERANCE), row.equal) << row.b << ' ' << row.a;
    }
    // Exact equality comes before all else, whatever the tolerance.
    EXPECT_TRUE(VTFeq(2.0f, 2.0f, -1.0f));
}

// The quotient of 1 and 1.25 is 0.8; with a tolerance of 0.2 the limit 1 - 0.2 is just that.
TEST(Feq, LimitsBelong) {
    EXPECT_TRUE(VTFeq(3.0, 4.0, 0.25));
    EXPECT_FALSE(VTFeq(3.0, 4.0, 0.2499));
    EXPECT_TRUE(VTFeq(3.0f, 4.0f, 0.25f));
    // The double form has no exact test first, so a negative tolerance separates a number from itself.
    EXPECT_FALSE(VTFeq(2.0, 2.0, -0.1));
}

TEST(FIsLess, OrdersOutsideTheTolerance) {
    struct Row {
        float a;
        float b;
        bool less;
        bool greater;
    };
    const Row rows[] = {{1.0f, 2.0f, true, false},          {2.0f, 1.0f, false, true},
                        {1.0f, 1.0f, false, false},         {1.0f, 1.0f + 5e-7f, false, false},
                        {1.0f + 5e-7f, 1.0f, false, false}, {1.0f, 1.0f + 5e-6f, true, false},
                        {0.0f, 1e-31f, false, false},       {0.0f, 1e-29f, true, false},
                        {nanFloat, 1.0f, false, false},     {1.0f, nanFloat, false, false}};
    for (const Row& row : rows) {
        EXPECT_EQ(VTFIsLess(row.a, row.b), row.less) << row.a << ' ' << row.b;
        EXPECT_EQ(VTFIsGreater(row.a, row.b), row.greater) << row.a << ' ' << row.b;
        EXPECT_EQ(VTFIsLessOrEqual(row.a, row.b), !row.greater) << row.a << ' ' << row.b;
        EXPECT_EQ(VTFIsGreaterOrEqual(row.a, row.b), !row.less) << row.a << ' ' << row.b;
    }
}

} // namespace
