#include "LibUnstructGrid/VTOPlane.h"

#include "LibUnstructGrid/VTOArrayVector.h"
#include "Tests/LibUnstructGrid/VectorSupport.h"
#include "Tests/Support/AssertStopper.h"

#include <limits>
#include <numbers>

using orvtest::assertsUntil;
using orvtest::failedIn;
using orvtest::near;
using orvtest::PortableRandom;
using orvtest::randomVector;

namespace {

const VTVector untouched(7, 7, 7);

void expectCoefficients(const VTPlane& plane, double a, double b, double c, double d, double tolerance = 0) {
    EXPECT_NEAR(plane.a, a, tolerance);
    EXPECT_NEAR(plane.b, b, tolerance);
    EXPECT_NEAR(plane.c, c, tolerance);
    EXPECT_NEAR(plane.d, d, tolerance);
}

VTPlane randomPlane(PortableRandom& random) {
    VTPlane plane;
    const VTVector point = randomVector(random, 5);
    plane.SetFromPointAndNormal(point, randomVector(random, 1));
    return plane;
}

VTVectorArray arrayOf(std::initializer_list<VTVector> points) {
    VTVectorArray array;
    for (const VTVector& point : points) {
        array.AddGrow(point);
    }
    return array;
}

TEST(Plane, HoldsFourDoubles) {
    const VTPlane plane(1, 2, 3, 4);
    EXPECT_EQ(plane.a, 1);
    EXPECT_EQ(plane.b, 2);
    EXPECT_EQ(plane.c, 3);
    EXPECT_EQ(plane.d, 4);
    EXPECT_EQ(sizeof(VTPlane), 4 * sizeof(double));
    expectCoefficients(VTPlane(), 0, 0, 0, 0);
    expectCoefficients(VT_XY_PLANE, 0, 0, 1, 0);
    expectCoefficients(VT_YZ_PLANE, 1, 0, 0, 0);
    expectCoefficients(VT_XZ_PLANE, 0, 1, 0, 0);
}

TEST(Plane, IsValidWithAnyPartOfANormal) {
    EXPECT_FALSE(VTPlane().IsValid());
    EXPECT_FALSE(VTPlane(0, 0, 0, 1).IsValid());
    EXPECT_TRUE(VTPlane(1e-300, 0, 0, 0).IsValid()) << "only an exact 0 is none";
    EXPECT_TRUE(VTPlane(0, -1, 0, 0).IsValid());
    EXPECT_TRUE(VTPlane(0, 0, 1, 0).IsValid());
}

// A small first coefficient hardly changes the length of the normal, so that it differs alone.
TEST(Plane, EqualityIsThatOfTheNormalisedCoefficients) {
    struct Row {
        VTPlane plane1;
        VTPlane plane2;
        bool equal;
    };
    const Row rows[] = {
        {{1, 0, 0, 1}, {2, 0, 0, 2}, true},
        {{1, 0, 0, 1}, {1, 0, 0, 2}, false},
        {{1, 0, 0, 1}, {-1, 0, 0, -1}, false},
        {{1, 2, 2, 3}, {-1, 2, 2, 3}, false},
        {{1, 2, 2, 3}, {1, -2, 2, 3}, false},
        {{1, 2, 2, 3}, {1, 2, -2, 3}, false},
        {{1, 2, 2, 3}, {1, 2, 2, -3}, false},
        {{1e-3, 1, 0, 1}, {1e-3 * (1 + 9e-13), 1, 0, 1}, true},
        {{1e-3, 1, 0, 1}, {1e-3 * (1 + 1.1e-12), 1, 0, 1}, false},
        {{0, 1e-3, 1, 1}, {0, 1e-3 * (1 + 9e-13), 1, 1}, true},
        {{0, 1e-3, 1, 1}, {0, 1e-3 * (1 + 1.1e-12), 1, 1}, false},
        {{1, 0, 1e-3, 1}, {1, 0, 1e-3 * (1 + 9e-13), 1}, true},
        {{1, 0, 1e-3, 1}, {1, 0, 1e-3 * (1 + 1.1e-12), 1}, false},
        {{1, 0, 0, 1}, {1, 0, 0, 1 + 9e-13}, true},
        {{1, 0, 0, 1}, {1, 0, 0, 1 + 1.1e-12}, false},
        {{1, 0, 0, 0}, {1, 0, 0, 1e-17}, false}, // relative
        {{0, 0, 0, 0}, {0, 0, 0, 0}, true},
        {{0, 0, 0, 1}, {0, 0, 0, 2}, false}, // nothing to divide by
    };
    for (const Row& row : rows) {
        const VTPlane& plane1 = row.plane1;
        const VTPlane& plane2 = row.plane2;
        EXPECT_EQ(plane1 == plane2, row.equal) << plane1.a << ' ' << plane1.b << ' ' << plane1.c << ' ' << plane1.d;
        EXPECT_EQ(plane2 == plane1, row.equal);
        EXPECT_EQ(plane1 != plane2, !row.equal);
    }
}

TEST(Plane, EqualityLeavesThePlanes) {
    const VTPlane plane1(2, 0, 0, 2);
    const VTPlane plane2(4, 0, 0, 4);
    EXPECT_TRUE(plane1 == plane2);
    expectCoefficients(plane1, 2, 0, 0, 2);
    expectCoefficients(plane2, 4, 0, 0, 4);
}

TEST(Plane, NormalizeDividesAllFour) {
    VTPlane plane(1, 2, -2, 6);
    plane.Normalize();
    expectCoefficients(plane, 1.0 / 3, 2.0 / 3, -2.0 / 3, 2);
    plane = VTPlane(0, 0, 0, 6);
    plane.Normalize();
    expectCoefficients(plane, 0, 0, 0, 6);
    // Far below what VTVector::Normalize() takes, but above 0.
    plane = VTPlane(0, 1e-100, 0, 2e-100);
    plane.Normalize();
    expectCoefficients(plane, 0, 1, 0, 2);
}

TEST(Plane, FlipNegatesAllFour) {
    VTPlane plane(1, 2, 3, 4);
    plane.Flip();
    expectCoefficients(plane, -1, -2, -3, -4);
    EXPECT_FALSE(plane == VTPlane(1, 2, 3, 4));
}

TEST(Plane, NormalIsNormalised) {
    VTVector normal = untouched;
    EXPECT_TRUE(VTPlane(0, 3, -4, 9).GetNormal(&normal));
    EXPECT_EQ(normal, VTVector(0, 0.6, -0.8));
    EXPECT_FALSE(VTPlane(0, 0, 0, 9).GetNormal(&normal));
    EXPECT_EQ(normal, VT_ZERO_VEC);
    EXPECT_TRUE(VTPlane(0, 0, 1.1e-30, 9).GetNormal(&normal));
    EXPECT_EQ(normal, VT_ZAXIS_VEC);
    EXPECT_FALSE(VTPlane(0, 0, 0.9e-30, 9).GetNormal(&normal));
    EXPECT_EQ(normal, VT_ZERO_VEC);
}

TEST(Plane, PointIsTheNearestToTheOrigin) {
    VTVector point = untouched;
    VTPlane(0, 3, -4, -10).GetPoint(&point);
    EXPECT_TRUE(near(point, VTVector(0, 1.2, -1.6), 1e-15));
    VTPlane(0, 0, 2, 6).GetPoint(&point);
    EXPECT_EQ(point, VTVector(0, 0, -3));
    VTPlane(0, 0, 0, 9).GetPoint(&point);
    EXPECT_EQ(point, VT_ZERO_VEC) << "no normal";
}

TEST(Plane, DistancesAreSignedAndDivideByTheLength) {
    const VTPlane plane(0, 3, -4, -10);
    EXPECT_EQ(plane.GetDistanceToOrigin(), 2);
    EXPECT_EQ(VTPlane(0, 3, -4, 10).GetDistanceToOrigin(), -2);
    // 3 * 2 - 4 * (-4) - 10 = 12
    EXPECT_EQ(plane.GetDistance(VTVector(100, 2, -4)), 2.4);
    EXPECT_EQ(plane.GetDistance(VT_ZERO_VEC), -2);
    EXPECT_EQ(plane.GetDistanceSignOnly(VTVector(100, 2, -4)), 12);
    EXPECT_EQ(VTPlane(1, 10, 100, 1000).GetDistanceSignOnly(VTVector(2, 3, 4)), 2 + 30 + 400 + 1000);
    EXPECT_EQ(VTPlane(1, 2, 2, 3).GetDistance(VTVector(1, 1, 1)), 8.0 / 3);
}

TEST(Plane, DistancesOfADegeneratePlaneAreUndefined) {
    const double max = std::numeric_limits<double>::max();
    EXPECT_EQ(VTPlane().GetDistance(VT_UNIT_VEC), max);
    EXPECT_EQ(VTPlane().GetDistanceToOrigin(), max);
    EXPECT_EQ(VTPlane(0, 0, 0, 5).GetDistance(VT_UNIT_VEC), max);
    EXPECT_EQ(VTPlane(0, 0, 0, 5).GetDistanceToOrigin(), max);
    EXPECT_EQ(VTPlane().GetDistanceSignOnly(VT_UNIT_VEC), 0);
    // A length is a length when it is above 0, though too small for VTVector::Normalize().
    EXPECT_DOUBLE_EQ(VTPlane(0, 0, 1e-100, -5e-100).GetDistanceToOrigin(), 5);
    EXPECT_DOUBLE_EQ(VTPlane(0, 0, 1e-100, -5e-100).GetDistance(VTVector(0, 0, 7)), 2);
}

TEST(Plane, FromPointAndNormal) {
    VTPlane plane;
    plane.SetFromPointAndNormal(VTVector(1, 2, 3), VTVector(0, 3, -4));
    // -(0.6 * 2 - 0.8 * 3) = 1.2
    expectCoefficients(plane, 0, 0.6, -0.8, 1.2, 1e-15);
    plane.SetFromPointAndNormal(VTVector(1, 2, 3), VTVector(1.1e-30, 0, 0));
    expectCoefficients(plane, 1, 0, 0, -1);
    plane.SetFromPointAndNormal(VTVector(1, 2, 3), VTVector(0.9e-30, 0, 0));
    expectCoefficients(plane, 0, 0, 0, 0);
}

TEST(Plane, FromPointsKeepsTheLengthOfTheCrossProduct) {
    VTPlane plane;
    // (2, 0, 0) x (0, 3, 0) = (0, 0, 6)
    plane.SetFromPoints(VTVector(1, 1, 4), VTVector(3, 1, 4), VTVector(1, 4, 4));
    expectCoefficients(plane, 0, 0, 6, -24);
    plane.SetFromPoints(VTVector(1, 1, 4), VTVector(1, 4, 4), VTVector(3, 1, 4));
    expectCoefficients(plane, 0, 0, -6, 24);
    plane.SetFromPoints(VT_XAXIS_VEC, VT_YAXIS_VEC, VT_ZAXIS_VEC);
    expectCoefficients(plane, 1, 1, 1, -1);
}

TEST(Plane, FromPointsOnOneLineIsNotValid) {
    VTPlane plane(1, 2, 3, 4);
    plane.SetFromPoints(VTVector(1, 2, 3), VTVector(2, 4, 6), VTVector(3, 6, 9));
    EXPECT_FALSE(plane.IsValid());
    expectCoefficients(plane, 0, 0, 0, 0);
}

TEST(Plane, FromPolygon) {
    VTPlane plane;
    EXPECT_TRUE(plane.SetFromPolygon(arrayOf({{0, 0, 2}, {4, 0, 2}, {4, 3, 2}, {0, 3, 2}})));
    expectCoefficients(plane, 0, 0, 1, -2);
    EXPECT_TRUE(plane.SetFromPolygon(arrayOf({{0, 3, 2}, {4, 3, 2}, {4, 0, 2}, {0, 0, 2}})));
    expectCoefficients(plane, 0, 0, -1, 2);
    const double third = 1 / std::sqrt(3.0);
    EXPECT_TRUE(plane.SetFromPolygon(arrayOf({VT_XAXIS_VEC, VT_YAXIS_VEC, VT_ZAXIS_VEC})));
    expectCoefficients(plane, third, third, third, -third, 1e-15);
}

// A quadrilateral whose corners lie by turns at z = 0 and z = 1: the sums of Newell give (0, 0, 2) by hand, and the
// average of the points lies at z = 0.5.
TEST(Plane, FromPolygonGoesThroughTheAverageOfAWarpedOne) {
    VTPlane plane;
    EXPECT_TRUE(plane.SetFromPolygon(arrayOf({{0, 0, 0}, {1, 0, 1}, {1, 1, 0}, {0, 1, 1}})));
    expectCoefficients(plane, 0, 0, 1, -0.5);
}

// An L of area 3, whose first three points turn left and whose fourth turns right.
TEST(Plane, FromPolygonTakesAConcaveOne) {
    VTPlane plane;
    EXPECT_TRUE(plane.SetFromPolygon(arrayOf({{1, 1, 5}, {1, 2, 5}, {0, 2, 5}, {0, 0, 5}, {2, 0, 5}, {2, 1, 5}})));
    expectCoefficients(plane, 0, 0, 1, -5);
}

TEST(Plane, FromPolygonOfTrianglesAgreesWithFromPoints) {
    PortableRandom random(101);
    for (int i = 0; i < 200; ++i) {
        const VTVector p[] = {randomVector(random, 5), randomVector(random, 5), randomVector(random, 5)};
        VTPlane expected;
        expected.SetFromPoints(p[0], p[1], p[2]);
        expected.Normalize();
        VTPlane plane;
        ASSERT_TRUE(plane.SetFromPolygon(arrayOf({p[0], p[1], p[2]})));
        expectCoefficients(plane, expected.a, expected.b, expected.c, expected.d, 1e-11);
    }
}

TEST(Plane, FromPolygonWithoutANormalIsAllZero) {
    const VTVector point(1.1, 2.2, 3.3);
    for (const VTVectorArray& points : {arrayOf({}), arrayOf({point}), arrayOf({point, VT_UNIT_VEC}),
                                        arrayOf({point, point, point}), arrayOf({{0, 0, 0}, {1, 2, 3}, {2, 4, 6}})}) {
        VTPlane plane(1, 2, 3, 4);
        EXPECT_FALSE(plane.SetFromPolygon(points)) << points.GetNumItems();
        expectCoefficients(plane, 0, 0, 0, 0);
    }
}

// The square has a normal of length 2e-32, whose square of 4e-64 VTVector::Normalize() refuses.
TEST(Plane, FromPolygonTakesAnyLengthAboveZero) {
    for (int axis = 0; axis < 3; ++axis) {
        VTVector u = VT_ZERO_VEC;
        VTVector v = VT_ZERO_VEC;
        u[(axis + 1) % 3] = 1e-16;
        v[(axis + 2) % 3] = 1e-16;
        VTPlane plane;
        EXPECT_TRUE(plane.SetFromPolygon(arrayOf({VT_ZERO_VEC, u, u + v, v})));
        expectCoefficients(plane, axis == 0, axis == 1, axis == 2, 0);
    }
}

TEST(Plane, TransformMovesAndNormalises) {
    VTPlane plane(0, 0, 2, -6);
    VTMatrix4 matrix;
    matrix.LoadIdentity();
    matrix.Translate(100, 200, 4);
    plane.Transform(matrix);
    expectCoefficients(plane, 0, 0, 1, -7);
    matrix.LoadIdentity();
    matrix.Scale(2, 2, 2);
    plane.Transform(matrix);
    expectCoefficients(plane, 0, 0, 1, -14);
    matrix.LoadIdentity();
    matrix.RotateAxisAngle(VT_XAXIS_VEC, std::numbers::pi / 2);
    plane.Transform(matrix);
    expectCoefficients(plane, 0, -1, 0, -14, 1e-14);
}

TEST(Plane, TransformKeepsPointsInThePlane) {
    PortableRandom random(102);
    for (int i = 0; i < 100; ++i) {
        VTPlane plane = randomPlane(random);
        VTVector point;
        plane.ProjectPoint(randomVector(random, 5), &point);
        VTMatrix4 matrix;
        matrix.LoadIdentity();
        matrix.RotateAxisAngle(randomVector(random, 1), random.real(-3, 3));
        matrix.Scale(3, 3, 3);
        matrix.Translate(randomVector(random, 5));
        plane.Transform(matrix);
        point.TransformPoint(matrix);
        ASSERT_NEAR(plane.GetDistance(point), 0, 1e-12);
    }
}

// The x component of the normal (1, 1, 0) doubles, where that of the true plane would halve.
TEST(Plane, TransformTiltsUnderAnUnequalScale) {
    VTPlane plane(1, 1, 0, 0);
    VTMatrix4 matrix;
    matrix.LoadIdentity();
    matrix.Scale(2, 1, 1);
    plane.Transform(matrix);
    expectCoefficients(plane, 2 / std::sqrt(5.0), 1 / std::sqrt(5.0), 0, 0, 1e-15);
}

TEST(Plane, DefaultOrientation) {
    struct Row {
        VTPlane plane;
        VTVector orientation;
    };
    const Row rows[] = {
        {VT_YZ_PLANE, VT_YAXIS_VEC},       {{-3, 0, 0, 1}, VT_YAXIS_VEC},
        {VT_XY_PLANE, VT_XAXIS_VEC},       {VT_XZ_PLANE, VT_XAXIS_VEC},
        {{1, 1, 0, 4}, {0.5, -0.5, 0}}, // what is left of the x axis, not normalised
        {{1, 0, 1, 4}, {0.5, 0, -0.5}},    {{1, 0.9e-60, 0.9e-60, 0}, VT_YAXIS_VEC},
        {{1, 1.1e-60, 0, 0}, VT_ZERO_VEC},                               // projected, and too short to be normalised
        {{1, 0, 1.1e-60, 0}, VT_ZERO_VEC}, {{0, 0, 0, 0}, VT_YAXIS_VEC}, // by its b and c
    };
    for (const Row& row : rows) {
        VTVector orientation = untouched;
        EXPECT_TRUE(row.plane.GetDefaultOrientation(&orientation));
        EXPECT_TRUE(near(orientation, row.orientation, 1e-15)) << row.plane.b << ' ' << row.plane.c;
    }
    VTVector orientation = untouched;
    EXPECT_FALSE(VTPlane(0, 1e-50, 0, 0).GetDefaultOrientation(&orientation)) << "no normal to project along";
    EXPECT_EQ(orientation, untouched);
}

TEST(Plane, ProjectsVectors) {
    VTVector projected = untouched;
    const VTPlane plane(0, 0, -5, 3);
    EXPECT_TRUE(plane.ProjectVector(VTVector(1, 2, 3), &projected));
    EXPECT_TRUE(near(projected, VTVector(1, 2, 0), 1e-15)) << "neither d nor the length of the normal takes part";
    VTVector same(1, 2, 3);
    EXPECT_TRUE(plane.ProjectVector(same, &same));
    EXPECT_TRUE(near(same, VTVector(1, 2, 0), 1e-15));
    projected = untouched;
    EXPECT_FALSE(plane.ProjectVector(VTVector(0, 0, 3), &projected));
    EXPECT_FALSE(plane.ProjectVector(VT_ZERO_VEC, &projected));
    EXPECT_FALSE(VTPlane().ProjectVector(VTVector(1, 2, 3), &projected));
    EXPECT_EQ(projected, untouched);
}

TEST(Plane, ProjectsVectorsDownToALength) {
    VTVector projected = untouched;
    EXPECT_FALSE(VT_XY_PLANE.ProjectVector(VTVector(0.9e-60, 0, 1), &projected));
    EXPECT_EQ(projected, untouched);
    EXPECT_TRUE(VT_XY_PLANE.ProjectVector(VTVector(1.1e-60, 0, 1), &projected));
    EXPECT_EQ(projected, VT_ZERO_VEC) << "too short to be normalised";
    EXPECT_TRUE(VT_XY_PLANE.ProjectVector(VTVector(1.1e-30, 0, 1), &projected));
    EXPECT_EQ(projected, VTVector(1.1e-30, 0, 0));
}

TEST(Plane, ProjectsPoints) {
    VTVector projected = untouched;
    const VTPlane plane(0, 0, 2, -8);
    EXPECT_TRUE(plane.ProjectPoint(VTVector(1, 2, 9), &projected));
    EXPECT_TRUE(near(projected, VTVector(1, 2, 4), 1e-15));
    VTVector same(1, 2, -9);
    EXPECT_TRUE(plane.ProjectPoint(same, &same));
    EXPECT_TRUE(near(same, VTVector(1, 2, 4), 1e-15));
    // The plane's own point, and one above it.
    EXPECT_FALSE(plane.ProjectPoint(VTVector(0, 0, 4), &projected));
    EXPECT_EQ(projected, VTVector(0, 0, 4));
    projected = untouched;
    EXPECT_FALSE(plane.ProjectPoint(VTVector(0, 0, 5), &projected));
    EXPECT_EQ(projected, VTVector(0, 0, 4));
    EXPECT_FALSE(VTPlane().ProjectPoint(VTVector(1, 2, 3), &projected));
    EXPECT_EQ(projected, VT_ZERO_VEC);
}

TEST(Plane, ProjectedPointIsTheNearest) {
    PortableRandom random(103);
    for (int i = 0; i < 200; ++i) {
        const VTPlane plane = randomPlane(random);
        const VTVector point = randomVector(random, 10);
        VTVector normal;
        plane.GetNormal(&normal);
        VTVector projected;
        ASSERT_TRUE(plane.ProjectPoint(point, &projected));
        ASSERT_TRUE(near(projected, point - plane.GetDistance(point) * normal, 1e-12));
    }
}

// x = 1 and y = 3 meet in (1, 3, any z), and so on: each of the three solutions, with the signs of every term.
TEST(Plane, IntersectionLiesOnACoordinatePlane) {
    struct Row {
        VTPlane plane1;
        VTPlane plane2;
        VTVector point;
        VTVector direction;
    };
    const Row rows[] = {
        {{1, 0, 0, -1}, {0, 1, 0, -3}, {1, 3, 0}, VT_ZAXIS_VEC},
        {{0, 1, 0, -3}, {1, 0, 0, -1}, {1, 3, 0}, VT_NEG_ZAXIS_VEC},
        {{1, 0, 0, -1}, {0, 0, 1, -3}, {1, 0, 3}, VT_NEG_YAXIS_VEC},
        {{0, 0, 1, -3}, {1, 0, 0, -1}, {1, 0, 3}, VT_YAXIS_VEC},
        {{0, 1, 0, -1}, {0, 0, 1, -3}, {0, 1, 3}, VT_XAXIS_VEC},
        {{0, 0, 1, -3}, {0, 1, 0, -1}, {0, 1, 3}, VT_NEG_XAXIS_VEC},
    };
    for (const Row& row : rows) {
        VTVector point = untouched;
        VTVector direction = untouched;
        EXPECT_TRUE(row.plane1.Intersect(row.plane2, &point, &direction));
        EXPECT_EQ(point, row.point);
        EXPECT_EQ(direction, row.direction);
        point = untouched;
        EXPECT_TRUE(row.plane1.Intersect(row.plane2, &point, nullptr)) << "the direction may be null";
        EXPECT_EQ(point, row.point);
    }
}

// The common direction is (0, -s, s), (s, 0, -s) and (-s, s, 0), with s the square root of a half.
TEST(Plane, IntersectionWithEqualComponentsGoesByTheEarlierAxis) {
    const double s = std::sqrt(0.5);
    const VTPlane across[] = {VTPlane(0, s, s, -1), VTPlane(s, 0, s, -1), VTPlane(s, s, 0, -1)};
    const VTPlane along[] = {VTPlane(1, 0, 0, -2), VTPlane(0, 1, 0, -2), VTPlane(0, 0, 1, -2)};
    const int zeroAxis[] = {1, 0, 0};
    for (int i = 0; i < 3; ++i) {
        VTVector point = untouched;
        EXPECT_TRUE(along[i].Intersect(across[i], &point, nullptr));
        EXPECT_EQ(point[zeroAxis[i]], 0) << i;
        EXPECT_NEAR(along[i].GetDistance(point), 0, 1e-15);
        EXPECT_NEAR(across[i].GetDistance(point), 0, 1e-15);
    }
}

TEST(Plane, IntersectionOfNormalisedPlanesLiesOnBoth) {
    PortableRandom random(104);
    for (int i = 0; i < 300; ++i) {
        const VTPlane plane1 = randomPlane(random);
        const VTPlane plane2 = randomPlane(random);
        VTVector point;
        VTVector direction;
        ASSERT_TRUE(plane1.Intersect(plane2, &point, &direction));
        ASSERT_NEAR(plane1.GetDistance(point), 0, 1e-11);
        ASSERT_NEAR(plane2.GetDistance(point), 0, 1e-11);
        ASSERT_NEAR(direction.Length(), 1, 1e-14);
        ASSERT_EQ(point[direction.FindClosestAxis()], 0);
        const VTVector cross = VTVector(plane1.a, plane1.b, plane1.c) ^ VTVector(plane2.a, plane2.b, plane2.c);
        ASSERT_TRUE(near(direction, cross / cross.Length(), 1e-13));
    }
}

// The coefficients 2, -2 of x = 1 go into the formulas as they are, while the divisor 1 comes from unit normals:
// x = -b2 d1 = 2 and y = -a1 d2 = 6, where the planes meet in (1, 3).
TEST(Plane, IntersectionMixesUnitNormalsWithStoredCoefficients) {
    VTVector point = untouched;
    VTVector direction = untouched;
    EXPECT_TRUE(VTPlane(2, 0, 0, -2).Intersect(VTPlane(0, 1, 0, -3), &point, &direction));
    EXPECT_EQ(point, VTVector(2, 6, 0));
    EXPECT_EQ(direction, VT_ZAXIS_VEC);
}

// Each of the two products in a formula has a coefficient of either plane: twice the one and three times the other make
// six times the point.
TEST(Plane, IntersectionScalesWithTheCoefficients) {
    PortableRandom random(105);
    for (int i = 0; i < 300; ++i) {
        const VTPlane plane1 = randomPlane(random);
        const VTPlane plane2 = randomPlane(random);
        VTVector point;
        VTVector scaledPoint;
        VTVector direction;
        VTVector scaledDirection;
        ASSERT_TRUE(plane1.Intersect(plane2, &point, &direction));
        ASSERT_TRUE(VTPlane(2 * plane1.a, 2 * plane1.b, 2 * plane1.c, 2 * plane1.d)
                        .Intersect(VTPlane(3 * plane2.a, 3 * plane2.b, 3 * plane2.c, 3 * plane2.d), &scaledPoint,
                                   &scaledDirection));
        ASSERT_TRUE(near(scaledPoint / 6, point, 1e-10));
        ASSERT_TRUE(near(scaledDirection, direction, 1e-14));
    }
}

// Beside an axis a second normal that is off by e gives a common direction of length e along each axis in turn.
TEST(Plane, IntersectionOfNearlyParallelPlanesEndsAtALimit) {
    for (const bool inside : {true, false}) {
        const double e = inside ? 1.01e-30 : 0.99e-30;
        const VTPlane pairs[][2] = {{VTPlane(1, 0, 0, 1), VTPlane(1, e, 0, 1)},
                                    {VTPlane(0, 0, 1, 1), VTPlane(e, 0, 1, 1)},
                                    {VTPlane(0, 1, 0, 1), VTPlane(0, 1, e, 1)}};
        const VTVector axes[] = {VT_ZAXIS_VEC, VT_YAXIS_VEC, VT_XAXIS_VEC};
        for (int i = 0; i < 3; ++i) {
            VTVector point = untouched;
            VTVector direction = untouched;
            EXPECT_EQ(pairs[i][0].Intersect(pairs[i][1], &point, &direction), inside);
            EXPECT_EQ(direction, inside ? axes[i] : untouched) << i;
            EXPECT_EQ(point == untouched, !inside);
        }
    }
}

TEST(Plane, IntersectionOfParallelOrDegeneratePlanesWritesNothing) {
    VTVector point = untouched;
    VTVector direction = untouched;
    EXPECT_FALSE(VTPlane(1, 2, 3, 4).Intersect(VTPlane(1, 2, 3, 5), &point, &direction));
    EXPECT_FALSE(VT_XY_PLANE.Intersect(VTPlane(0, 0, -2, 5), &point, &direction));
    EXPECT_FALSE(VTPlane().Intersect(VT_XY_PLANE, &point, &direction));
    EXPECT_FALSE(VT_XY_PLANE.Intersect(VTPlane(), &point, &direction));
    EXPECT_EQ(point, untouched);
    EXPECT_EQ(direction, untouched);
}

TEST(Plane, EvaluateIsAboveZeroInFront) {
    EXPECT_EQ(VTPlane::Evaluate(VTVector(0, 0, 2), VTVector(1, 1, 1), VTVector(5, 5, 4)), 6);
    EXPECT_EQ(VTPlane::Evaluate(VTVector(1, 10, 100), VTVector(1, 1, 1), VTVector(0, 3, 5)), -1 + 20 + 400);
}

TEST(Plane, AssertsItsOutputs) {
    const std::string source = "LibUnstructGrid/VTOPlane";
    const VTPlane plane = VT_XY_PLANE;
    EXPECT_EQ(assertsUntil(1, [&] { plane.GetNormal(nullptr); }), failedIn(source, {"pNormal"}));
    EXPECT_EQ(assertsUntil(1, [&] { plane.GetPoint(nullptr); }), failedIn(source, {"pPoint"}));
    EXPECT_EQ(assertsUntil(1, [&] { plane.GetDefaultOrientation(nullptr); }), failedIn(source, {"pOrientation"}));
    EXPECT_EQ(assertsUntil(1, [&] { plane.ProjectVector(VT_UNIT_VEC, nullptr); }), failedIn(source, {"pProjected"}));
    EXPECT_EQ(assertsUntil(1, [&] { plane.ProjectPoint(VT_UNIT_VEC, nullptr); }), failedIn(source, {"pProjected"}));
}

} // namespace
