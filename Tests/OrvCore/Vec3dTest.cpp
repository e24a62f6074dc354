#include "OrvCore/Vec3d.h"

#include <gtest/gtest.h>

using orv::Vec3d;

namespace {

TEST(Vec3d, StartsAtZero) {
    EXPECT_EQ(Vec3d(), Vec3d(0, 0, 0));
}

TEST(Vec3d, GivesItsComponents) {
    Vec3d v(1, 2, 3);
    EXPECT_EQ(v.x(), 1.0);
    EXPECT_EQ(v.y(), 2.0);
    EXPECT_EQ(v.z(), 3.0);
    const Vec3d& constant = v;
    for (size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(constant[i], double(i + 1));
    }
    v[1] = 7;
    EXPECT_EQ(v, Vec3d(1, 7, 3));
}

TEST(Vec3d, IsAValue) {
    Vec3d v(1, 2, 3);
    Vec3d copy = v;
    v = Vec3d(4, 5, 6);
    EXPECT_EQ(copy, Vec3d(1, 2, 3));
    EXPECT_EQ(v, Vec3d(4, 5, 6));
}

TEST(Vec3d, Calculates) {
    Vec3d a(1, 2, 3);
    Vec3d b(10, 20, 40);
    EXPECT_EQ(b - a, Vec3d(9, 18, 37));
    EXPECT_EQ(a + b, Vec3d(11, 22, 43));
    EXPECT_EQ(-a, Vec3d(-1, -2, -3));
    EXPECT_EQ(a * 2, Vec3d(2, 4, 6));
    EXPECT_EQ(2 * a, Vec3d(2, 4, 6));
    EXPECT_EQ(b / 10, Vec3d(1, 2, 4));
    EXPECT_EQ(a * b, 170.0); // 10 + 40 + 120
}

TEST(Vec3d, CalculatesInPlace) {
    Vec3d v(1, 2, 3);
    v += Vec3d(10, 10, 10);
    EXPECT_EQ(v, Vec3d(11, 12, 13));
    v -= Vec3d(1, 2, 3);
    EXPECT_EQ(v, Vec3d(10, 10, 10));
    v *= 0.5;
    EXPECT_EQ(v, Vec3d(5, 5, 5));
}

TEST(Vec3d, CrossProductIsRightHanded) {
    EXPECT_EQ(Vec3d(1, 0, 0) ^ Vec3d(0, 1, 0), Vec3d(0, 0, 1));
    // (2*6 - 3*5, 3*4 - 1*6, 1*5 - 2*4)
    EXPECT_EQ(Vec3d(1, 2, 3) ^ Vec3d(4, 5, 6), Vec3d(-3, 6, -3));
}

TEST(Vec3d, Length) {
    EXPECT_EQ(Vec3d(2, 3, 6).length(), 7.0);
    EXPECT_EQ(Vec3d().length(), 0.0);
}

TEST(Vec3d, EqualityIsExact) {
    EXPECT_TRUE(Vec3d(1, 2, 3) == Vec3d(1, 2, 3));
    EXPECT_TRUE(Vec3d(1, 2, 3) != Vec3d(1, 2, 3.0000000001));
    EXPECT_TRUE(Vec3d(1, 2, 3) != Vec3d(1, 0, 3));
    EXPECT_TRUE(Vec3d(1, 2, 3) != Vec3d(0, 2, 3));
}

} // namespace
