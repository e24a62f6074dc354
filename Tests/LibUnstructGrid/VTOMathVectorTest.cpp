#include "LibUnstructGrid/VTOMathVector.h"

#include "Tests/LibUnstructGrid/VectorSupport.h"
#include "Tests/Support/AssertStopper.h"

using orvtest::assertsUntil;
using orvtest::failedIn;
using orvtest::near;
using orvtest::PortableRandom;
using orvtest::randomVector;

namespace {

// cosine and sine of 3, 4, 5: no rotation needs more.
TEST(MathRotate, TurnsByCosineAndSine) {
    VTVector v(1, 10, 100);
    VTRotateX(&v, 0.6, 0.8);
    EXPECT_TRUE(near(v, VTVector(1, 6 - 80, 8 + 60), 1e-13));
    v.Set(1, 10, 100);
    VTRotateY(&v, 0.6, 0.8);
    EXPECT_TRUE(near(v, VTVector(0.6 + 80, 10, -0.8 + 60), 1e-13));
    v.Set(1, 10, 100);
    VTRotateZ(&v, 0.6, 0.8);
    EXPECT_TRUE(near(v, VTVector(0.6 - 8, 0.8 + 6, 100), 1e-13));
}

TEST(MathRotate, IgnoresANullVector) {
    VTRotateX(nullptr, 0.6, 0.8);
    VTRotateY(nullptr, 0.6, 0.8);
    VTRotateZ(nullptr, 0.6, 0.8);
}

TEST(LinePointDist, MeasuresToTheInfiniteLine) {
    const VTVector start(1, 1, 0);
    const VTVector end(3, 1, 0);
    EXPECT_EQ(VTLinePointL2Dist(start, end, VTVector(2, 4, 4)), 25);
    EXPECT_EQ(VTLinePointDist(start, end, VTVector(2, 4, 4)), 5);
    EXPECT_EQ(VTLinePointDist(start, end, VTVector(-100, 4, 4)), 5) << "not clamped to the segment";
    EXPECT_EQ(VTLinePointDist(start, end, VTVector(100, 1, 0)), 0);
    EXPECT_EQ(VTLinePointL2Dist(start, start, VTVector(1, 4, 4)), 25) << "no line: the start";
    EXPECT_EQ(VTLinePointDist(start, start, VTVector(1, 4, 4)), 5);
    // Only an exact zero makes a point of the line; along a line this short the distance still counts across it.
    EXPECT_NEAR(VTLinePointDist(VT_ZERO_VEC, VTVector(1e-100, 0, 0), VTVector(7, 3, 4)), 5, 1e-12);
}

TEST(LinePointDist, AgreesWithTheCrossProduct) {
    PortableRandom random(71);
    for (int i = 0; i < 200; ++i) {
        const VTVector start = randomVector(random, 5);
        const VTVector end = randomVector(random, 5);
        const VTVector point = randomVector(random, 5);
        const double expected = ((end - start) ^ (point - start)).Length() / (end - start).Length();
        ASSERT_NEAR(VTLinePointDist(start, end, point), expected, 1e-11);
    }
}

void expectTransforms(const VTVector* from, const VTVector* to, double tolerance) {
    VTMatrix4 m(9.0);
    const VTVector fromPoint(1, 2, 3);
    const VTVector toPoint(-4, 5, 6);
    EXPECT_TRUE(VTGetCoordSystemTransformation(from, to, &fromPoint, &toPoint, &m));
    for (int i = 0; i < 2; ++i) {
        VTVector axis = from[i];
        axis.TransformVector(m);
        EXPECT_TRUE(near(axis, to[i], tolerance)) << i;
    }
    VTVector third = from[0] ^ from[1];
    third.TransformVector(m);
    EXPECT_TRUE(near(third, to[0] ^ to[1], tolerance));
    VTVector point = fromPoint;
    point.TransformPoint(m);
    EXPECT_TRUE(near(point, toPoint, 1e-12)) << "whatever the turn lacks, the point arrives";
}

TEST(CoordSystemTransformation, TakesBaseToBase) {
    PortableRandom random(72);
    for (int i = 0; i < 100; ++i) {
        VTVector bases[2][2];
        for (auto& base : bases) {
            base[0] = randomVector(random, 1).GetNormalized();
            base[1] = (base[0] ^ randomVector(random, 1)).GetNormalized();
        }
        expectTransforms(bases[0], bases[1], 1e-11);
    }
}

TEST(CoordSystemTransformation, QuarterAndHalfTurns) {
    const VTVector global[] = {VT_XAXIS_VEC, VT_YAXIS_VEC};
    const VTVector aboutZ[] = {VT_YAXIS_VEC, VT_NEG_XAXIS_VEC};
    const VTVector cyclic[] = {VT_YAXIS_VEC, VT_ZAXIS_VEC};
    expectTransforms(global, global, 0);
    expectTransforms(global, aboutZ, 1e-15);
    expectTransforms(global, cyclic, 1e-15);
    // Opposite first axes have no cross product: the turn goes about the second new axis, by the float's pi, which is
    // 8.7e-8 more than a half turn.
    const VTVector flipped[] = {VT_NEG_XAXIS_VEC, VT_YAXIS_VEC};
    expectTransforms(global, flipped, 1e-7);
    const VTVector bothFlipped[] = {VT_NEG_XAXIS_VEC, VT_NEG_YAXIS_VEC};
    expectTransforms(global, bothFlipped, 2e-7);
    const VTVector secondFlipped[] = {VT_XAXIS_VEC, VT_NEG_YAXIS_VEC};
    expectTransforms(global, secondFlipped, 1e-7);
}

// Turning by the float's pi about y, exactly: cos and sin of 3.1415927410125732.
TEST(CoordSystemTransformation, HalfTurnIsThatOfTheFloatPi) {
    const VTVector global[] = {VT_XAXIS_VEC, VT_YAXIS_VEC};
    const VTVector flipped[] = {VT_NEG_XAXIS_VEC, VT_YAXIS_VEC};
    VTMatrix4 m;
    VTGetCoordSystemTransformation(global, flipped, nullptr, nullptr, &m);
    VTVector x = VT_XAXIS_VEC;
    x.TransformVector(m);
    VTVector expected = VT_XAXIS_VEC;
    expected.RotateVectorY(3.1415927410125732);
    EXPECT_TRUE(near(x, expected, 1e-15));
    EXPECT_GT(std::fabs(x.z), 8e-8);
}

// The cosine of 1e-3 is above 0.999999, so the angle counts as 0.
TEST(CoordSystemTransformation, SmallTurnsAreLeftOut) {
    const VTVector global[] = {VT_XAXIS_VEC, VT_YAXIS_VEC};
    const VTVector slight[] = {VTVector(std::cos(1e-3), std::sin(1e-3), 0),
                               VTVector(-std::sin(1e-3), std::cos(1e-3), 0)};
    VTMatrix4 m;
    VTGetCoordSystemTransformation(global, slight, nullptr, nullptr, &m);
    EXPECT_TRUE(m.IsIdentity());
}

TEST(CoordSystemTransformation, MovesOnlyWithBothPoints) {
    const VTVector global[] = {VT_XAXIS_VEC, VT_YAXIS_VEC};
    const VTVector aboutZ[] = {VT_YAXIS_VEC, VT_NEG_XAXIS_VEC};
    const VTVector point(1, 2, 3);
    for (bool first : {true, false}) {
        VTMatrix4 m(9.0);
        VTGetCoordSystemTransformation(global, aboutZ, first ? &point : nullptr, first ? nullptr : &point, &m);
        VTVector origin = VT_ZERO_VEC;
        origin.TransformPoint(m);
        EXPECT_EQ(origin, VT_ZERO_VEC);
    }
}

TEST(CoordSystemTransformation, AssertsBasesAndMatrix) {
    const std::string source = "LibUnstructGrid/VTOMathVector";
    const VTVector base[] = {VT_XAXIS_VEC, VT_YAXIS_VEC};
    VTMatrix4 m;
    EXPECT_EQ(assertsUntil(2, [&] { VTGetCoordSystemTransformation(nullptr, base, nullptr, nullptr, nullptr); }),
              failedIn(source, {"pOrgB && pNewB", "pM"}));
    EXPECT_EQ(assertsUntil(1, [&] { VTGetCoordSystemTransformation(base, nullptr, nullptr, nullptr, &m); }),
              failedIn(source, {"pOrgB && pNewB"}));
    EXPECT_EQ(assertsUntil(1, [&] { VTGetCoordSystemTransformation(base, base, nullptr, nullptr, nullptr); }),
              failedIn(source, {"pM"}));
}

} // namespace
