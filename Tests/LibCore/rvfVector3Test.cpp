#include "LibCore/rvfVector3.h"

#include <gtest/gtest.h>

#include <limits>
#include <type_traits>

using Vector = rvf::Vector3<double>;
using VectorFloat = rvf::Vector3<float>;

namespace {

static_assert(!std::is_convertible_v<Vector, VectorFloat>, "narrowing has to be asked for");
static_assert(!std::is_convertible_v<VectorFloat, Vector>);

TEST(Vector3, StartsAtZero) {
    EXPECT_EQ(Vector(), Vector(0, 0, 0));
}

TEST(Vector3, GivesItsComponents) {
    Vector v(1, 2, 3);
    EXPECT_EQ(v.x(), 1.0);
    EXPECT_EQ(v.y(), 2.0);
    EXPECT_EQ(v.z(), 3.0);
    for (size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(v[i], double(i + 1));
        EXPECT_EQ(v.ptr()[i], double(i + 1));
    }
}

TEST(Vector3, TakesItsComponents) {
    Vector v;
    v.set(1, 2, 3);
    EXPECT_EQ(v, Vector(1, 2, 3));
    v.x() = 4;
    v.y() = 5;
    v.z() = 6;
    EXPECT_EQ(v, Vector(4, 5, 6));
    v[1] = 7;
    EXPECT_EQ(v, Vector(4, 7, 6));
}

TEST(Vector3, ConvertsBetweenFloatAndDouble) {
    EXPECT_EQ(Vector(VectorFloat(0.1f, 2, 3)), Vector(double(0.1f), 2, 3));
    EXPECT_EQ(VectorFloat(Vector(0.1, 2, 3)), VectorFloat(0.1f, 2, 3));
}

TEST(Vector3, Calculates) {
    Vector a(1, 2, 3);
    Vector b(10, 20, 40);
    EXPECT_EQ(a + b, Vector(11, 22, 43));
    EXPECT_EQ(b - a, Vector(9, 18, 37));
    EXPECT_EQ(-a, Vector(-1, -2, -3));
    EXPECT_EQ(a * 2, Vector(2, 4, 6));
    EXPECT_EQ(2 * a, Vector(2, 4, 6));
    EXPECT_EQ(b / 10, Vector(1, 2, 4));
    EXPECT_EQ(a * b, 170.0); // 10 + 40 + 120
}

TEST(Vector3, CrossProductIsRightHanded) {
    EXPECT_EQ(Vector(1, 0, 0) ^ Vector(0, 1, 0), Vector(0, 0, 1));
    // (2*6 - 3*5, 3*4 - 1*6, 1*5 - 2*4)
    EXPECT_EQ(Vector(1, 2, 3) ^ Vector(4, 5, 6), Vector(-3, 6, -3));
}

TEST(Vector3, LengthAndNormalize) {
    Vector v(2, 3, 6);
    EXPECT_EQ(v.length(), 7.0);
    EXPECT_TRUE(v.normalize());
    EXPECT_DOUBLE_EQ(v.x(), 2.0 / 7.0);
    EXPECT_DOUBLE_EQ(v.y(), 3.0 / 7.0);
    EXPECT_DOUBLE_EQ(v.z(), 6.0 / 7.0);
}

TEST(Vector3, ZeroIsNotNormalized) {
    Vector v;
    EXPECT_FALSE(v.normalize());
    EXPECT_EQ(v, Vector());
    Vector undefined(std::numeric_limits<double>::quiet_NaN(), 1, 1);
    EXPECT_FALSE(undefined.normalize());
    EXPECT_EQ(undefined.y(), 1.0);
}

TEST(Vector3, IsZeroAndEqualityAreExact) {
    EXPECT_TRUE(Vector().isZero());
    EXPECT_TRUE(Vector(-0.0, 0, 0).isZero());
    EXPECT_FALSE(Vector(0, 0, 1e-300).isZero());
    EXPECT_TRUE(Vector(1, 2, 3) != Vector(1, 2, 3.0000000001));
    EXPECT_FALSE(Vector(1, 2, 3) == Vector(0, 2, 3));
    EXPECT_FALSE(Vector(1, 2, 3) == Vector(1, 0, 3));
}

} // namespace
