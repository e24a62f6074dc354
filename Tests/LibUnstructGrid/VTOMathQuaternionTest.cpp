#include "LibUnstructGrid/VTOMathQuaternion.h"

#include "Tests/LibUnstructGrid/VectorSupport.h"

#include <numbers>

using orvtest::near;
using orvtest::PortableRandom;
using orvtest::randomVector;

namespace {

constexpr double pi = std::numbers::pi;

TEST(Quaternion, OfAnAxisOfAnyLength) {
    VTVector4 q;
    VTAxisToQuat(VTVector(0, 0, 5), pi / 2, &q);
    EXPECT_TRUE(near(q, VTVector4(0, 0, std::sqrt(0.5), std::sqrt(0.5)), 1e-15));
    VTVector4 same;
    VTAxisToQuat(0, 0, 5, pi / 2, &same);
    EXPECT_EQ(same, q);
    VTAxisToQuat(VTVector(2, 3, 6), pi, &q);
    EXPECT_TRUE(near(q, VTVector4(2 / 7., 3 / 7., 6 / 7., 0), 1e-15));
    VTAxisToQuat(VT_ZERO_VEC, pi / 2, &q);
    EXPECT_TRUE(near(q, VTVector4(0, 0, 0, std::sqrt(0.5)), 1e-15));
}

// (0, 0, 0.6, 0.8): the sine is 0.6, and z comes out as 0.36, not as 1.
TEST(Quaternion, AxisComesOutScaled) {
    VTVector axis;
    double angle = 0;
    VTQuatToAxis(VTVector4(0, 0, 0.6, 0.8), &axis, &angle);
    EXPECT_TRUE(near(axis, VTVector(0, 0, 0.36), 1e-15));
    EXPECT_EQ(angle, 2 * std::acos(0.8));
    VTQuatToAxis(VTVector4(0.6, 0, 0, -0.8), &axis, &angle);
    EXPECT_TRUE(near(axis, VTVector(0.36, 0, 0), 1e-15));
    EXPECT_EQ(angle, 2 * std::acos(-0.8));
}

TEST(Quaternion, AxisOfASmallTurnIsTheVectorPart) {
    VTVector axis;
    double angle = 0;
    VTQuatToAxis(VTVector4(0, 0, 0, 1), &axis, &angle);
    EXPECT_EQ(axis, VT_ZERO_VEC);
    EXPECT_EQ(angle, 0);
    // The root of 1 - w^2 is read off w alone, so the vector part may be anything here.
    VTQuatToAxis(VTVector4(1, 2, 3, std::sqrt(1 - 0.00049 * 0.00049)), &axis, &angle);
    EXPECT_EQ(axis, VTVector(1, 2, 3));
    VTQuatToAxis(VTVector4(1, 2, 3, std::sqrt(1 - 0.00051 * 0.00051)), &axis, &angle);
    EXPECT_TRUE(near(axis, VTVector(0.00051, 0.00102, 0.00153), 1e-12));
    VTQuatToAxis(VTVector4(0, 0, 0, 1.1), &axis, &angle);
    EXPECT_TRUE(std::isnan(angle));
}

TEST(Quaternion, NormalizesUnlessItIsZero) {
    VTVector4 q(2, -4, 5, 6);
    VTNormalizeQuat(&q);
    EXPECT_EQ(q, VTVector4(2 / 9., -4 / 9., 5 / 9., 6 / 9.));
    q.Set(0, 0, 0, 0);
    VTNormalizeQuat(&q);
    EXPECT_EQ(q, VTVector4(0, 0, 0, 0));
    q.Set(1e-61, 0, 0, 0);
    VTNormalizeQuat(&q);
    EXPECT_EQ(q.x, 1e-61);
    q.Set(1e-50, 0, 0, 0);
    VTNormalizeQuat(&q);
    EXPECT_EQ(q.x, 1);
}

// i j = k, j k = i, k i = j, i i = -1.
TEST(Quaternion, MultipliesAfterHamilton) {
    const VTVector4 i(1, 0, 0, 0);
    const VTVector4 j(0, 1, 0, 0);
    const VTVector4 k(0, 0, 1, 0);
    VTVector4 out;
    VTMultiplyQuats(i, j, &out);
    EXPECT_EQ(out, k);
    VTMultiplyQuats(j, k, &out);
    EXPECT_EQ(out, i);
    VTMultiplyQuats(k, i, &out);
    EXPECT_EQ(out, j);
    VTMultiplyQuats(j, i, &out);
    EXPECT_EQ(out, VTVector4(0, 0, -1, 0));
    VTMultiplyQuats(i, i, &out);
    EXPECT_EQ(out, VTVector4(0, 0, 0, -1));
}

// x = 4*5 + 1*8 + 2*7 - 3*6 = 24, y = 4*6 + 2*8 + 3*5 - 1*7 = 48, z = 4*7 + 3*8 + 1*6 - 2*5 = 48,
// w = 4*8 - 1*5 - 2*6 - 3*7 = -6; the length is sqrt(30) sqrt(174), that is sqrt(5220).
TEST(Quaternion, ProductIsNormalised) {
    VTVector4 a(1, 2, 3, 4);
    VTVector4 b(5, 6, 7, 8);
    const double length = std::sqrt(5220.0);
    const VTVector4 expected(24 / length, 48 / length, 48 / length, -6 / length);
    VTVector4 out;
    VTMultiplyQuats(a, b, &out);
    EXPECT_TRUE(near(out, expected, 1e-15));
    VTVector4 own = a;
    VTMultiplyQuats(own, b, &own);
    EXPECT_EQ(own, out);
    VTMultiplyQuats(a, b, &b);
    EXPECT_EQ(b, out);
    VTMultiplyQuats(a, VTVector4(0, 0, 0, 0), &out);
    EXPECT_EQ(out, VTVector4(0, 0, 0, 0));
}

TEST(Quaternion, ProductTurnsBySecondThenFirst) {
    PortableRandom random(81);
    for (int n = 0; n < 100; ++n) {
        VTVector4 a;
        VTVector4 b;
        VTAxisToQuat(randomVector(random, 1), random.real(-3, 3), &a);
        VTAxisToQuat(randomVector(random, 1), random.real(-3, 3), &b);
        VTVector4 both;
        VTMultiplyQuats(a, b, &both);
        const VTVector v = randomVector(random, 3);
        VTVector one = v;
        one.RotateVector(b);
        one.RotateVector(a);
        VTVector other = v;
        other.RotateVector(both);
        ASSERT_TRUE(near(one, other, 1e-9));
    }
}

} // namespace
