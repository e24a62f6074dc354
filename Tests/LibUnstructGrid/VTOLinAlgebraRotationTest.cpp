#include "LibUnstructGrid/VTOLinAlgebraMatrix4.h"

#include "Tests/LibUnstructGrid/VectorSupport.h"
#include "Tests/Support/AssertStopper.h"

#include <numbers>

using orvtest::assertsUntil;
using orvtest::failedIn;
using orvtest::matrixOf;
using orvtest::near;
using orvtest::PortableRandom;
using orvtest::randomVector;

namespace {

const std::string source = "LibUnstructGrid/VTOLinAlgebraRotation";

VTMatrix4 rotationMatrix(const VTVector4& quat) {
    VTMatrix4 m(9.0);
    m.SetFromRotationQuat(quat);
    return m;
}

VTMatrix4 deprecatedMatrix(const VTVector4& quat) {
    VTMatrix4 m(9.0);
    m.SetFromRotQuat_Deprecated(quat);
    return m;
}

VTVector4 rotationQuat(const VTMatrix4& m) {
    VTVector4 quat(9, 9, 9, 9);
    m.GetRotationQuat(&quat);
    return quat;
}

VTVector4 deprecatedQuat(const VTMatrix4& m) {
    VTVector4 quat(9, 9, 9, 9);
    m.GetRotQuat_Deprecated(&quat);
    return quat;
}

// (1, 2, 3, 4) has the squared length 30, so s is 1/15: v[0] = 1 - (4 + 9) / 15, v[1] = (2 + 12) / 15 and so on.
TEST(MatrixRotation, QuaternionGivesTheNineElements) {
    const VTMatrix4 expected = matrixOf(
        {2 / 15., 14 / 15., -5 / 15., 0, -10 / 15., 5 / 15., 10 / 15., 0, 11 / 15., 2 / 15., 10 / 15., 0, 0, 0, 0, 1});
    EXPECT_TRUE(near(rotationMatrix({1, 2, 3, 4}), expected, 1e-15));
    EXPECT_TRUE(near(deprecatedMatrix({1, 2, 3, 4}), expected.GetTransposed(), 1e-15));
}

TEST(MatrixRotation, ZeroQuaternionGivesTheIdentity) {
    VTMatrix4 identity;
    identity.LoadIdentity();
    EXPECT_EQ(rotationMatrix({0, 0, 0, 0}), identity);
    EXPECT_EQ(deprecatedMatrix({0, 0, 0, 0}), identity);
    EXPECT_EQ(rotationQuat(identity), VTVector4(0, 0, 0, 1));
    EXPECT_EQ(deprecatedQuat(identity), VTVector4(0, 0, 0, 1));
}

TEST(MatrixRotation, TurnsRightHanded) {
    const double half = std::sqrt(0.5);
    VTVector v = VT_XAXIS_VEC;
    v.TransformPoint(rotationMatrix({0, 0, half, half}));
    EXPECT_TRUE(near(v, VT_YAXIS_VEC, 1e-15));
    v = VT_XAXIS_VEC;
    v.TransformPoint(deprecatedMatrix({0, 0, half, half}));
    EXPECT_TRUE(near(v, VT_NEG_YAXIS_VEC, 1e-15));
}

TEST(MatrixRotation, UnitQuaternionsComeBack) {
    PortableRandom random(51);
    for (int i = 0; i < 300; ++i) {
        VTVector4 q(random.real(-1, 1), random.real(-1, 1), random.real(-1, 1), random.real(0.05, 1));
        const double length = std::sqrt(q.x * q.x + q.y * q.y + q.z * q.z + q.w * q.w);
        q.Set(q.x / length, q.y / length, q.z / length, q.w / length);
        // Below a trace of 0 the largest part, not w, comes out positive.
        const VTVector4 back = rotationQuat(rotationMatrix(q));
        const double sign = back.x * q.x + back.y * q.y + back.z * q.z + back.w * q.w < 0 ? -1 : 1;
        ASSERT_TRUE(near(VTVector4(sign * back.x, sign * back.y, sign * back.z, sign * back.w), q, 1e-12));
        ASSERT_TRUE(near(deprecatedQuat(deprecatedMatrix(q)), q, 1e-10));
        // The pairs mixed give the opposite rotation.
        ASSERT_TRUE(near(deprecatedQuat(rotationMatrix(q)), VTVector4(-q.x, -q.y, -q.z, q.w), 1e-10));
    }
}

// Half turns about the axes have the trace -1 and w = 0. By the trace alone there would be a division by zero.
TEST(MatrixRotation, HalfTurnsGoByTheLargestDiagonal) {
    for (const VTVector4& q : {VTVector4(1, 0, 0, 0), VTVector4(0, 1, 0, 0), VTVector4(0, 0, 1, 0)}) {
        EXPECT_EQ(rotationQuat(rotationMatrix(q)), q);
        EXPECT_EQ(deprecatedQuat(deprecatedMatrix(q)), q);
    }
}

// More than a third of a turn: the trace is below 0, one branch for each largest diagonal, with all parts checked.
TEST(MatrixRotation, LargestDiagonalBranchesGiveEveryPart) {
    for (int largest = 0; largest < 3; ++largest) {
        double parts[] = {0.2, 0.3, 0.1, -0.25};
        parts[largest] = std::sqrt(1 - (0.04 + 0.09 + 0.01 + 0.0625 - parts[largest] * parts[largest]));
        const VTVector4 q(parts[0], parts[1], parts[2], parts[3]);
        EXPECT_TRUE(near(rotationQuat(rotationMatrix(q)), q, 1e-14)) << largest;
    }
}

// A trace between -1 and 1e-8: here the two ways differ. The first goes by the largest diagonal, which makes x
// positive; the other still by the trace, which makes w positive.
TEST(MatrixRotation, TheTwoWaysSwitchAtDifferentTraces) {
    const VTVector4 q(std::sqrt(0.91), 0, 0, -0.3);
    EXPECT_TRUE(near(rotationQuat(rotationMatrix(q)), q, 1e-14));
    EXPECT_TRUE(near(deprecatedQuat(deprecatedMatrix(q)), VTVector4(-q.x, 0, 0, 0.3), 1e-14));
}

// Diagonals that tell on which side of 1e-8 the trace lies: with a skew part of (1, 0, 0) the first way gives x =
// 0.5 / sqrt(1 + t), the second one s / 4 for the largest diagonal.
TEST(MatrixRotation, TraceLimitIsTheFloatOfOneHundredMillionth) {
    VTMatrix4 m(0.0);
    m.v[6] = 1;
    m.v[5] = 1e-8f;
    EXPECT_NEAR(m.v[5], 9.99999993922529e-9, 1e-23);
    const double s = 2 * std::sqrt(1 + m.v[5]);
    EXPECT_EQ(rotationQuat(m), VTVector4(0, 0.25 * s, 1 / s, 0)) << "at the limit: by the largest diagonal, v[5]";
    m.v[5] = 1e-8;
    const double k = 0.5 / std::sqrt(1 + 1e-8);
    EXPECT_EQ(rotationQuat(m), VTVector4(k, 0, 0, 0.25 / k)) << "above it: by the trace";
}

// With a NaN neither trace nor root is above 0. The deprecated way asks whether the root is below 1e-60 instead.
TEST(MatrixRotation, NotANumberGivesTheStartValueInOneWayOnly) {
    const VTMatrix4 m(std::nan(""));
    EXPECT_EQ(rotationQuat(m), VTVector4(0, 0, 0, 1));
    EXPECT_TRUE(std::isnan(deprecatedQuat(m).w));
}

TEST(MatrixRotation, EqualDiagonalsPreferTheFirst) {
    // Trace 0, all diagonals equal: v[0] is taken, s = 2, and v[1] + v[4] = 4 gives y = 2.
    VTMatrix4 m(0.0);
    m.v[1] = 3;
    m.v[4] = 1;
    m.v[2] = 6;
    m.v[6] = 8;
    m.v[9] = 4;
    EXPECT_EQ(rotationQuat(m), VTVector4(0.5, 2, 3, 2));
    // v[5] and v[10] equal and above v[0]: v[5]. s = 2 sqrt(1 + 1 - (-2) - 1) = 2 sqrt(3).
    m.v[0] = -2;
    m.v[5] = m.v[10] = 1;
    const double s = 2 * std::sqrt(3.0);
    EXPECT_TRUE(near(rotationQuat(m), VTVector4(4 / s, s / 4, 12 / s, -6 / s), 1e-15));
    // v[10] above v[0] alone.
    m.v[0] = -1;
    m.v[5] = -1;
    m.v[10] = 1;
    const double s10 = 2 * std::sqrt(4.0);
    EXPECT_TRUE(near(rotationQuat(m), VTVector4(6 / s10, 12 / s10, s10 / 4, 2 / s10), 1e-15));
}

TEST(MatrixRotation, AssertsItsTarget) {
    const VTMatrix4 m;
    EXPECT_EQ(assertsUntil(1, [&] { m.GetRotationQuat(nullptr); }), failedIn(source, {"pRotQuat"}));
    EXPECT_EQ(assertsUntil(1, [&] { m.GetRotQuat_Deprecated(nullptr); }), failedIn(source, {"pRotQuat"}));
}

TEST(MatrixRotation, RotateActsAfterTheMatrix) {
    const double quarter = std::numbers::pi / 2;
    VTMatrix4 m;
    m.LoadIdentity();
    m.Translate(1, 0, 0);
    m.RotateAxisAngle(VTVector(0, 0, 3), quarter);
    VTVector p = VT_ZERO_VEC;
    p.TransformPoint(m);
    EXPECT_TRUE(near(p, VT_YAXIS_VEC, 1e-15)) << "moved to (1, 0, 0) and then turned";
    VTMatrix4 same;
    same.LoadIdentity();
    same.Translate(1, 0, 0);
    same.RotateAxisAngle(0, 0, 3, quarter);
    EXPECT_EQ(same, m);

    VTMatrix4 opposite;
    opposite.LoadIdentity();
    opposite.Translate(1, 0, 0);
    opposite.Rotate_Deprecated(VTVector(0, 0, 3), quarter);
    p = VT_ZERO_VEC;
    p.TransformPoint(opposite);
    EXPECT_TRUE(near(p, VT_NEG_YAXIS_VEC, 1e-15));
    same.LoadIdentity();
    same.Translate(1, 0, 0);
    same.Rotate_Deprecated(0, 0, 3, quarter);
    EXPECT_EQ(same, opposite);
}

TEST(MatrixRotation, AgreesWithTheRotationOfVectors) {
    PortableRandom random(52);
    for (int i = 0; i < 200; ++i) {
        const VTVector axis = randomVector(random, 3);
        const double angle = random.real(-7, 7);
        const VTVector v = randomVector(random, 5);
        VTMatrix4 m;
        m.LoadIdentity();
        m.RotateAxisAngle(axis, angle);
        VTVector byMatrix = v;
        byMatrix.TransformVector(m);
        VTVector byVector = v;
        byVector.RotateVector(axis, angle);
        ASSERT_TRUE(near(byMatrix, byVector, 1e-12));
    }
}

} // namespace
