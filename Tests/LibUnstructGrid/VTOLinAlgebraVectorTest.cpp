#include "LibUnstructGrid/VTOLinAlgebraVector.h"

#include "Tests/LibUnstructGrid/VectorSupport.h"
#include "Tests/Support/AssertStopper.h"

#include <limits>
#include <numbers>
#include <type_traits>

using orvtest::AssertRecorder;
using orvtest::countingMatrix;
using orvtest::failedIn;
using orvtest::near;
using orvtest::PortableRandom;
using orvtest::randomVector;

namespace {

constexpr double inf = std::numeric_limits<double>::infinity();
const double nan = std::nan("");

// What VTVectorGetAngle() takes for pi: the float nearest to it.
constexpr double floatPi = 3.1415927410125732;

TEST(Vector, HoldsThreeDoubles) {
    VTVector v(1, 2, 3);
    EXPECT_EQ(v.x, 1);
    EXPECT_EQ(v.y, 2);
    EXPECT_EQ(v.z, 3);
    EXPECT_EQ(sizeof(VTVector), 3 * sizeof(double));
    EXPECT_TRUE(std::is_trivially_default_constructible_v<VTVector>) << "components are not initialised";
    v.Set(4, 5, 6);
    const VTVector copy(v);
    EXPECT_EQ(copy, VTVector(4, 5, 6));
    v = VTVector(7, 8, 9);
    EXPECT_EQ(v, VTVector(7, 8, 9));
    v.SetZero();
    EXPECT_EQ(v, VT_ZERO_VEC);
}

TEST(Vector, ConstantsHaveTheirValues) {
    const double max = std::numeric_limits<double>::max();
    EXPECT_EQ(VT_ZERO_VEC, VTVector(0, 0, 0));
    EXPECT_EQ(VT_UNIT_VEC, VTVector(1, 1, 1));
    EXPECT_EQ(VT_XAXIS_VEC, VTVector(1, 0, 0));
    EXPECT_EQ(VT_YAXIS_VEC, VTVector(0, 1, 0));
    EXPECT_EQ(VT_ZAXIS_VEC, VTVector(0, 0, 1));
    EXPECT_EQ(VT_NEG_XAXIS_VEC, VTVector(-1, 0, 0));
    EXPECT_EQ(VT_NEG_YAXIS_VEC, VTVector(0, -1, 0));
    EXPECT_EQ(VT_NEG_ZAXIS_VEC, VTVector(0, 0, -1));
    EXPECT_EQ(VT_UNDEFINED_VECTOR, VTVector(max, max, max));
}

TEST(Vector, EqualityIsExact) {
    const VTVector v(1, 2, 3);
    const double next = std::nextafter(1.0, 2.0);
    EXPECT_TRUE(v == VTVector(1, 2, 3));
    EXPECT_FALSE(v != VTVector(1, 2, 3));
    for (const VTVector& other : {VTVector(next, 2, 3), VTVector(1, 2 * next, 3), VTVector(1, 2, 3 * next)}) {
        EXPECT_FALSE(v == other);
        EXPECT_TRUE(v != other);
    }
}

TEST(Vector, IndexSelectsAComponent) {
    VTVector v(1, 2, 3);
    const VTVector& constant = v;
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(constant[i], i + 1);
        v[i] = 10 * i;
    }
    EXPECT_EQ(v, VTVector(0, 10, 20));
}

TEST(Vector, IsZeroKnowsAnExactAndATolerantForm) {
    EXPECT_TRUE(VT_ZERO_VEC.IsZero(true));
    EXPECT_TRUE(VT_ZERO_VEC.IsZero(false));
    for (int i = 0; i < 3; ++i) {
        VTVector v = VT_ZERO_VEC;
        v[i] = 9.9e-61;
        EXPECT_FALSE(v.IsZero(true));
        EXPECT_TRUE(v.IsZero(false));
        v[i] = -1.1e-60;
        EXPECT_FALSE(v.IsZero(false));
    }
}

TEST(Vector, MeasuresItself) {
    EXPECT_EQ(VTVector(2, 3, 6).Length(), 7);
    EXPECT_EQ(VTVector(2, -3, 6).L2Norm(), 49);
    EXPECT_EQ(VTPointDist(VTVector(1, 1, 1), VTVector(3, 4, 7)), 7);
    EXPECT_EQ(VTPointL2Dist(VTVector(3, 4, 7), VTVector(1, 1, 1)), 49);
}

TEST(Vector, NormalizeNeedsASquaredLengthAboveItsLimit) {
    VTVector v(3, 0, -4);
    EXPECT_TRUE(v.Normalize());
    EXPECT_EQ(v, VTVector(0.6, 0, -0.8));
    v.SetZero();
    EXPECT_FALSE(v.Normalize());
    EXPECT_EQ(v, VT_ZERO_VEC);
    // 1e-31 squared is 1e-62, below the limit, though the vector is not zero by IsZero().
    v.Set(1e-31, 0, 0);
    EXPECT_FALSE(v.IsZero(false));
    EXPECT_FALSE(v.Normalize());
    EXPECT_EQ(v, VT_ZERO_VEC);
    v.Set(0, 1.1e-30, 0);
    EXPECT_TRUE(v.Normalize());
    EXPECT_EQ(v, VT_YAXIS_VEC);
    v.Set(nan, 1, 1);
    EXPECT_FALSE(v.Normalize());
    EXPECT_EQ(v, VT_ZERO_VEC);
}

TEST(Vector, GetNormalizedLeavesTheVector) {
    const VTVector v(0, 0, -2);
    EXPECT_EQ(v.GetNormalized(), VT_NEG_ZAXIS_VEC);
    EXPECT_EQ(v, VTVector(0, 0, -2));
    EXPECT_EQ(VTVector(1e-31, 0, 0).GetNormalized(), VT_ZERO_VEC);
}

TEST(Vector, SetLengthScales) {
    AssertRecorder recorder;
    VTVector v(3, 0, 4);
    EXPECT_TRUE(v.SetLength(10));
    EXPECT_EQ(v, VTVector(6, 0, 8));
    EXPECT_TRUE(v.SetLength(0)) << "0 was asked for";
    EXPECT_EQ(v, VT_ZERO_VEC);
    EXPECT_FALSE(v.SetLength(1)) << "there is nothing to scale";
    EXPECT_EQ(v, VT_ZERO_VEC);
    EXPECT_TRUE(v.SetLength(0));
    v.Set(1e-31, 0, 0);
    EXPECT_FALSE(v.SetLength(1));
    EXPECT_EQ(v, VT_ZERO_VEC);
    EXPECT_TRUE(recorder.take().empty());

    v.Set(3, 0, 4);
    EXPECT_TRUE(v.SetLength(-5));
    EXPECT_EQ(v, VTVector(-3, 0, -4));
    EXPECT_EQ(recorder.take(), failedIn("LibUnstructGrid/VTOLinAlgebraVector", {"fLength >= 0"}));
}

TEST(Vector, RoundsHalvesAwayFromZero) {
    VTVector v(2.5, -2.5, 0.4);
    v.Round();
    EXPECT_EQ(v, VTVector(3, -3, 0));
}

TEST(Vector, FindsItsLargestComponent) {
    struct Row {
        VTVector v;
        int maxIndex;
        int closestAxis;
    };
    const Row rows[] = {{{1, 2, 3}, 2, 2},  {{3, 2, 1}, 0, 0}, {{1, 3, 2}, 1, 1},
                        {{-5, 1, 0}, 1, 0}, {{2, 2, 1}, 0, 0}, {{1, 2, 2}, 1, 1},
                        {{-2, 2, 0}, 1, 0}, {{0, 0, 0}, 0, 0}, {{-3, -2, -1}, 2, 0}};
    for (const Row& row : rows) {
        int index = -7;
        EXPECT_EQ(row.v.MaxComponent(&index), row.v[row.maxIndex]);
        EXPECT_EQ(index, row.maxIndex) << testing::PrintToString(row.v);
        EXPECT_EQ(row.v.MaxComponent(nullptr), row.v[row.maxIndex]);
        EXPECT_EQ(row.v.FindClosestAxis(), row.closestAxis) << testing::PrintToString(row.v);
    }
}

TEST(Vector, IsUndefinedWithAComponentAboveTheLimit) {
    VTVector v(1, 2, 3);
    EXPECT_FALSE(v.IsUndefined());
    v.SetUndefined();
    EXPECT_EQ(v, VT_UNDEFINED_VECTOR);
    EXPECT_TRUE(v.IsUndefined());
    for (int i = 0; i < 3; ++i) {
        v = VT_ZERO_VEC;
        v[i] = 1e308;
        EXPECT_FALSE(v.IsUndefined()) << "at the limit";
        v[i] = std::nextafter(1e308, inf);
        EXPECT_TRUE(v.IsUndefined());
        v[i] = -inf;
        EXPECT_FALSE(v.IsUndefined());
        v[i] = nan;
        EXPECT_FALSE(v.IsUndefined()) << "a NaN is defined, unlike with VTIsUndefined()";
    }
}

TEST(Vector, AddsAndScales) {
    VTVector v(1, 2, 3);
    v.Add(VTVector(10, 20, 30));
    EXPECT_EQ(v, VTVector(11, 22, 33));
    v.Add(1, 1, 1);
    EXPECT_EQ(v, VTVector(12, 23, 34));
    v.Subtract(VTVector(2, 3, 4));
    EXPECT_EQ(v, VTVector(10, 20, 30));
    EXPECT_EQ(&(v += VTVector(1, 2, 3)), &v);
    EXPECT_EQ(v, VTVector(11, 22, 33));
    EXPECT_EQ(&(v -= VTVector(1, 2, 3)), &v);
    EXPECT_EQ(v, VTVector(10, 20, 30));
    EXPECT_EQ(&(v *= 2.0), &v);
    EXPECT_EQ(v, VTVector(20, 40, 60));
    EXPECT_EQ(&(v /= 4.0), &v);
    EXPECT_EQ(v, VTVector(5, 10, 15));
    EXPECT_EQ(-v, VTVector(-5, -10, -15));
}

TEST(Vector, FreeOperators) {
    const VTVector a(1, 2, 3);
    const VTVector b(4, 6, 9);
    EXPECT_EQ(a + b, VTVector(5, 8, 12));
    EXPECT_EQ(a - b, VTVector(-3, -4, -6));
    EXPECT_EQ(a * b, 43);
    // (2*9 - 3*6, 3*4 - 1*9, 1*6 - 2*4)
    EXPECT_EQ((a ^ b), VTVector(0, 3, -2));
    EXPECT_EQ((VT_XAXIS_VEC ^ VT_YAXIS_VEC), VT_ZAXIS_VEC);
    EXPECT_EQ(2.0 * a, VTVector(2, 4, 6));
    EXPECT_EQ(a * 2.0, VTVector(2, 4, 6));
    EXPECT_EQ(b / 2.0, VTVector(2, 3, 4.5));
    EXPECT_EQ((VTVector(1, 0, -1) / 0.0).x, inf) << "nothing is checked";
}

// Columns of 1..16 in storage order: x' = 1 x + 5 y + 9 z + 13 and so on; the fourth column takes no part.
TEST(Vector, TransformsAsPointOrAsDirection) {
    VTVector point(1, 10, 100);
    point.TransformPoint(countingMatrix());
    EXPECT_EQ(point, VTVector(1 + 50 + 900 + 13, 2 + 60 + 1000 + 14, 3 + 70 + 1100 + 15));
    VTVector direction(1, 10, 100);
    direction.TransformVector(countingMatrix());
    EXPECT_EQ(direction, VTVector(951, 1062, 1173));
}

TEST(Vector, QuarterTurnsAreRightHanded) {
    const double quarter = std::numbers::pi / 2;
    VTVector v = VT_YAXIS_VEC;
    v.RotateVectorX(quarter);
    EXPECT_TRUE(near(v, VT_ZAXIS_VEC, 1e-15));
    v.RotateVectorY(quarter);
    EXPECT_TRUE(near(v, VT_XAXIS_VEC, 1e-15));
    v.RotateVectorZ(quarter);
    EXPECT_TRUE(near(v, VT_YAXIS_VEC, 1e-15));
    v.RotateVector(VTVector(5, 0, 0), quarter);
    EXPECT_TRUE(near(v, VT_ZAXIS_VEC, 1e-15)) << "the axis may have any length";
    v.RotateVector(VT_ZERO_VEC, quarter);
    EXPECT_TRUE(near(v, VT_ZAXIS_VEC, 1e-15)) << "a zero axis turns nothing";
}

TEST(Vector, RotationsLeaveTheAxisComponent) {
    VTVector v(2, 3, 4);
    v.RotateVectorX(0.3);
    EXPECT_EQ(v.x, 2);
    v.Set(2, 3, 4);
    v.RotateVectorY(0.3);
    EXPECT_EQ(v.y, 3);
    v.Set(2, 3, 4);
    v.RotateVectorZ(0.3);
    EXPECT_EQ(v.z, 4);
}

// The independent formulation: split into the parts along and across the axis, and turn the latter in its own plane.
TEST(Vector, RotationAboutAnAxisTurnsThePartAcrossIt) {
    PortableRandom random(31);
    for (int i = 0; i < 200; ++i) {
        const VTVector axis = randomVector(random, 3);
        const VTVector v = randomVector(random, 10);
        const double angle = random.real(-7, 7);
        const VTVector unit = axis.GetNormalized();
        const VTVector along = (v * unit) * unit;
        const VTVector across = v - along;
        const VTVector expected = along + std::cos(angle) * across + std::sin(angle) * (unit ^ across);
        VTVector turned = v;
        turned.RotateVector(axis, angle);
        ASSERT_TRUE(near(turned, expected, 1e-12));
        // The same by the quaternion (unit sin(a / 2), cos(a / 2)).
        const VTVector part = unit * std::sin(angle / 2);
        turned = v;
        turned.RotateVector(VTVector4(part.x, part.y, part.z, std::cos(angle / 2)));
        ASSERT_TRUE(near(turned, expected, 1e-10));
    }
}

TEST(Vector, ProjectsOntoAPlane) {
    VTVector v(1, 2, 3);
    EXPECT_TRUE(v.ProjectVectorOntoPlane(VTVector(0, 0, 5)));
    EXPECT_TRUE(near(v, VTVector(1, 2, 0), 1e-15));
    EXPECT_FALSE(v.ProjectVectorOntoPlane(v));
    EXPECT_TRUE(near(v, VTVector(1, 2, 0), 1e-15)) << "stays as it was";
    EXPECT_FALSE(v.ProjectVectorOntoPlane(VT_ZERO_VEC));
    v.SetZero();
    EXPECT_FALSE(v.ProjectVectorOntoPlane(VT_ZAXIS_VEC));
    // Long enough for the test of its length, too short to be normalised.
    v.Set(1e-40, 0, 0);
    EXPECT_TRUE(v.ProjectVectorOntoPlane(VT_ZAXIS_VEC));
    EXPECT_EQ(v, VT_ZERO_VEC);
}

TEST(Vector, ProjectionIsWhatIsLeftWithoutTheNormalPart) {
    PortableRandom random(32);
    for (int i = 0; i < 200; ++i) {
        const VTVector normal = randomVector(random, 3);
        VTVector v = randomVector(random, 10);
        const VTVector expected = v - (v * normal) / (normal * normal) * normal;
        ASSERT_TRUE(v.ProjectVectorOntoPlane(normal));
        ASSERT_TRUE(near(v, expected, 1e-12));
    }
}

TEST(Vector, PerpendicularVectorByTheLastNonZeroComponent) {
    EXPECT_EQ(VTVector(3, 5, 2).GetPerpendicularVector(), VTVector(1, 0, -1.5));
    EXPECT_EQ(VTVector(3, 2, 0).GetPerpendicularVector(), VTVector(1, -1.5, 0));
    EXPECT_EQ(VTVector(3, 0, 0).GetPerpendicularVector(), VTVector(0, 1, 0));
    EXPECT_EQ(VT_ZERO_VEC.GetPerpendicularVector(), VTVector(0, 1, 0));
}

TEST(VectorsEqual, IsRelativePerComponent) {
    const VTVector v(1, 1000, 1e-3);
    EXPECT_TRUE(VTVectorsEqual(v, VTVector(1 + 1e-13, 1000 + 1e-10, 1e-3 + 1e-16)));
    EXPECT_FALSE(VTVectorsEqual(v, VTVector(1 + 1e-11, 1000, 1e-3)));
    EXPECT_FALSE(VTVectorsEqual(v, VTVector(1, 1000 + 1e-8, 1e-3)));
    EXPECT_FALSE(VTVectorsEqual(v, VTVector(1, 1000, 1e-3 + 1e-14)));
    EXPECT_FALSE(VTVectorsEqual(VT_ZERO_VEC, VTVector(1e-59, 0, 0)));
    EXPECT_TRUE(VTVectorsEqual(VT_ZERO_VEC, VTVector(1e-61, 0, 0)));
}

TEST(VectorsParallell, ComparesRatios) {
    struct Row {
        VTVector a;
        VTVector b;
        bool parallel;
    };
    const Row rows[] = {
        {{1, 2, 3}, {-2, -4, -6}, true},
        {{1, 2, 3}, {2, 4, 6}, true},
        {{1, 0, 0}, {0, 1, 0}, false},
        {{1, 2, 3}, {2, 4, 6.00001}, false},
        {{0, 0, 4}, {0, 0, 1}, true},
        {{0, 4, 0}, {0, 1, 0}, true},
        {{0, 1e-61, 4}, {0, 0, 1}, true}, // no value before the ratio is known
        {{1e-59, 0, 4}, {0, 0, 1}, false},
        {{0, 2, 0}, {1e-61, 1, 0}, true},  // too small to make the ratio
        {{1, 0, 1e-59}, {1, 0, 0}, false}, // behind it the comparison is relative
        {{0, 0, 0}, {1, 2, 3}, true},      // zero is parallel to anything
        {{1, 2, 3}, {0, 0, 0}, false},     // but nothing else is parallel to zero
        {{0, 0, 0}, {0, 0, 0}, true},
        {{1, 2, 3 + 1e-13}, {1, 2, 3}, true},
        {{1, 2, 3 + 1e-11}, {1, 2, 3}, false},
        // The ratio is that of the first component: the others may differ from it by 1e-12 each, and from each other
        // by twice as much.
        {{1, 1 + 9e-13, 1 - 9e-13}, {1, 1, 1}, true},
        {{1 - 9e-13, 1, 1 + 9e-13}, {1, 1, 1}, false},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(VTVectorsParallell(row.a, row.b), row.parallel)
            << testing::PrintToString(row.a) << ' ' << testing::PrintToString(row.b);
    }
}

TEST(VectorGetAngle, SnapsToTheEndsOfItsRange) {
    const VTVector v(1, 2, 3);
    EXPECT_EQ(VTVectorGetAngle(v, v, false), 0);
    EXPECT_EQ(VTVectorGetAngle(v, v, true), 0);
    EXPECT_EQ(VTVectorGetAngle(v, -v, false), floatPi);
    EXPECT_EQ(VTVectorGetAngle(v, -v, true), 180);
    EXPECT_EQ(VTVectorGetAngle(v, VT_ZERO_VEC, true), 0);
    EXPECT_EQ(VTVectorGetAngle(VTVector(1e-31, 0, 0), VTVector(0, 1e-30, 0), false), 0) << "lengths below 1e-60";
    EXPECT_NEAR(VTVectorGetAngle(VTVector(1.1e-30, 0, 0), VTVector(0, 1e-30, 0), false), std::numbers::pi / 2, 1e-15);

    // Unit vectors whose cosine lies on either side of the float 0.999999, 0.99999898672103880.
    const auto atCosine = [](double cosine) { return VTVector(cosine, std::sqrt(1 - cosine * cosine), 0); };
    EXPECT_EQ(VTVectorGetAngle(VT_XAXIS_VEC, atCosine(0.9999989868), false), 0);
    EXPECT_NEAR(VTVectorGetAngle(VT_XAXIS_VEC, atCosine(0.9999989866), false), std::acos(0.9999989866), 1e-12);
    EXPECT_EQ(VTVectorGetAngle(VT_NEG_XAXIS_VEC, atCosine(0.9999989868), false), floatPi);
    EXPECT_NEAR(VTVectorGetAngle(VT_NEG_XAXIS_VEC, atCosine(0.9999989866), false), std::acos(-0.9999989866), 1e-12);
}

TEST(VectorGetAngle, DegreesGoByTheFloatPi) {
    EXPECT_EQ(VTVectorGetAngle(VT_XAXIS_VEC, VT_YAXIS_VEC, false), std::acos(0.0));
    const double degrees = 180.0 * std::acos(0.0) / floatPi;
    EXPECT_EQ(VTVectorGetAngle(VT_XAXIS_VEC, VT_YAXIS_VEC, true), degrees);
    EXPECT_LT(degrees, 90 - 1e-6);
}

TEST(VectorGetAngle, AgreesWithTheArcTangentOfCrossAndDot) {
    PortableRandom random(33);
    for (int i = 0; i < 300; ++i) {
        const VTVector a = randomVector(random, 5);
        const VTVector b = randomVector(random, 5);
        const double expected = std::atan2((a ^ b).Length(), a * b);
        ASSERT_NEAR(VTVectorGetAngle(a, b, false), expected, expected < 2e-3 || expected > 3.1395 ? 2e-3 : 1e-12);
    }
}

} // namespace
