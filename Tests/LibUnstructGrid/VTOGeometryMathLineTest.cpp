#include "LibUnstructGrid/VTOGeometryMathLine.h"

#include "Tests/LibUnstructGrid/VectorSupport.h"

using orvtest::near;
using orvtest::PortableRandom;
using orvtest::randomVector;

namespace {

const VTVector untouched(7, 7, 7);

TEST(PointOnLineSegment, EndsAndWhatIsBetween) {
    struct Row {
        VTVector a;
        VTVector b;
        VTVector p;
        bool on;
    };
    const Row rows[] = {
        {{1, 1, 1}, {3, 5, 7}, {1, 1, 1}, true},
        {{1, 1, 1}, {3, 5, 7}, {3, 5, 7}, true},
        {{1, 1, 1}, {3, 5, 7}, {2, 3, 4}, true},
        {{1, 1, 1}, {3, 5, 7}, {4, 7, 10}, false},
        {{1, 1, 1}, {3, 5, 7}, {0, -1, -2}, false},
        {{1, 1, 1}, {3, 5, 7}, {2, 3, 4.1}, false},
        {{1, 1, 1}, {1, 5, 1}, {1, 3, 1}, true}, // along one axis
        {{1, 1, 1}, {1, 5, 1}, {1, 6, 1}, false},
        {{1, 1, 1}, {1, 1, 5}, {1, 1, 3}, true},
        {{1, 1, 1}, {1, 1, 5}, {1, 1, 0}, false},
        {{1, 1, 1}, {1, 1, 1}, {1, 1, 1}, true}, // no length
        {{1, 1, 1}, {1, 1, 1}, {1, 1, 2}, false},
        // The ends by a relative 1e-12.
        {{0, 0, 0}, {1, 1, 1}, {1 + 9e-13, 1 + 9e-13, 1 + 9e-13}, true},
        {{0, 0, 0}, {1, 1, 1}, {1 + 1.1e-12, 1 + 1.1e-12, 1 + 1.1e-12}, false},
        {{1, 1, 1}, {2, 2, 2}, {1 - 9e-13, 1 - 9e-13, 1 - 9e-13}, true},
        {{1, 1, 1}, {2, 2, 2}, {1 - 1.1e-12, 1 - 1.1e-12, 1 - 1.1e-12}, false},
        // The line by the same.
        {{0, 0, 0}, {2, 2, 0}, {1, 1 + 9e-13, 0}, true},
        {{0, 0, 0}, {2, 2, 0}, {1, 1 + 1.1e-12, 0}, false},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(VTPointOnLineSegment(row.a, row.b, row.p), row.on)
            << testing::PrintToString(row.b) << ' ' << testing::PrintToString(row.p);
    }
}

TEST(PointOnLineSegment, ReadsTheFirstComponentThatIsNotZero) {
    // By the y, of which p has half; by the x it would be at 0.
    EXPECT_TRUE(VTPointOnLineSegment({0, 0, 0}, {0.9e-60, 1, 0}, {0, 0.5, 0}));
    EXPECT_TRUE(VTPointOnLineSegment({0, 0, 0}, {0.9e-60, 0.9e-60, 1}, {0, 0, 0.5}));
    // Half way along 1.1e-60, and along 0.9e-60, which has no component to read. p is unequal to both ends.
    EXPECT_TRUE(VTPointOnLineSegment({1e-60, 0, 0}, {2.1e-60, 0, 0}, {1.5e-60, 0, 0}));
    EXPECT_FALSE(VTPointOnLineSegment({1e-60, 0, 0}, {1.9e-60, 0, 0}, {1.5e-60, 0, 0}));
}

/// The result of a search for the closest approach.
struct Approach {
    bool found = false;
    VTVector first = untouched;
    VTVector second = untouched;
    double s = 77;
    double t = 77;

    void expect(const VTVector& expectedFirst, const VTVector& expectedSecond, double expectedS,
                double expectedT) const {
        EXPECT_TRUE(found);
        EXPECT_TRUE(near(first, expectedFirst, 1e-14));
        EXPECT_TRUE(near(second, expectedSecond, 1e-14));
        EXPECT_NEAR(s, expectedS, 1e-14);
        EXPECT_NEAR(t, expectedT, 1e-14);
    }

    void expectNone() const {
        EXPECT_FALSE(found);
        EXPECT_EQ(first, untouched);
        EXPECT_EQ(second, untouched);
        EXPECT_EQ(s, 77);
        EXPECT_EQ(t, 77);
    }
};

Approach lineRay(const VTVector& l0, const VTVector& l1, const VTVector& origin, const VTVector& dir) {
    Approach approach;
    approach.found =
        VTLineRayIntersect(l0, l1, origin, dir, &approach.first, &approach.second, &approach.s, &approach.t);
    return approach;
}

TEST(LineRayIntersect, GivesTheClosestApproach) {
    lineRay({0, 0, 0}, {2, 0, 0}, {1, -3, 4}, {0, 3, 0}).expect({1, 0, 0}, {1, 0, 4}, 0.5, 1);
    // Nothing is clamped: beyond the line's points, and behind the ray.
    lineRay({0, 0, 0}, {2, 0, 0}, {5, 3, 4}, {0, 3, 0}).expect({5, 0, 0}, {5, 0, 4}, 2.5, -1);
    // Oblique ones that meet in (3, 3, 3).
    lineRay({1, 1, 1}, {2, 2, 2}, {3, 0, 3}, {0, 1, 0}).expect({3, 3, 3}, {3, 3, 3}, 2, 3);
}

TEST(LineRayIntersect, ParametersAreOptional) {
    Approach approach;
    EXPECT_TRUE(VTLineRayIntersect({0, 0, 0}, {2, 0, 0}, {1, -3, 4}, {0, 3, 0}, &approach.first, &approach.second,
                                   nullptr, &approach.t));
    EXPECT_TRUE(VTLineRayIntersect({0, 0, 0}, {2, 0, 0}, {1, -3, 4}, {0, 3, 0}, &approach.first, &approach.second,
                                   &approach.s, nullptr));
    approach.found = true;
    approach.expect({1, 0, 0}, {1, 0, 4}, 0.5, 1);
}

TEST(LineRayIntersect, ShortestConnectionIsAcrossBoth) {
    PortableRandom random(141);
    for (int i = 0; i < 300; ++i) {
        const VTVector l0 = randomVector(random, 5);
        const VTVector l1 = randomVector(random, 5);
        const VTVector origin = randomVector(random, 5);
        const VTVector dir = randomVector(random, 5);
        if (((l1 - l0) ^ dir).Length() < 1) {
            continue;
        }
        const Approach approach = lineRay(l0, l1, origin, dir);
        ASSERT_TRUE(approach.found);
        ASSERT_NEAR((approach.second - approach.first) * dir, 0, 1e-9);
        ASSERT_NEAR((approach.second - approach.first) * (l1 - l0), 0, 1e-9);
        ASSERT_TRUE(near(approach.first, l0 + approach.s * (l1 - l0), 1e-9));
        ASSERT_TRUE(near(approach.second, origin + approach.t * dir, 1e-9));
    }
}

TEST(LineRayIntersect, ParallelLinesHaveNone) {
    lineRay({0, 0, 0}, {2, 0, 0}, {1, -3, 4}, {5, 0, 0}).expectNone();
    lineRay({1, 2, 3}, {1, 2, 3}, {1, -3, 4}, {5, 0, 0}).expectNone();
    lineRay({1, 2, 3}, {2, 2, 3}, {1, -3, 4}, {0, 0, 0}).expectNone();
    // Rounding makes the product of squares less than the square of the product, by 2.2e-16.
    lineRay({0, 0, 0}, {0.3, 0.2, 0.5}, {1, 0, 0}, {3 * 0.3, 3 * 0.2, 3 * 0.5}).expectNone();
}

// One direction just below or just above the float 1e-30, 1.00000000317e-30, and another at right angles to it that is
// long enough for the product of squares.
TEST(LineRayIntersect, ComponentLimitIsTheFloat) {
    for (int axis = 0; axis < 3; ++axis) {
        for (const double sign : {1.0, -1.0}) {
            VTVector below = VT_ZERO_VEC;
            VTVector above = VT_ZERO_VEC;
            VTVector across = VT_ZERO_VEC;
            below[axis] = sign * 1.000000002e-30;
            above[axis] = sign * 1.000000004e-30;
            across[(axis + 1) % 3] = 1e20;
            EXPECT_FALSE(lineRay(VT_ZERO_VEC, across, VT_ZERO_VEC, below).found) << axis;
            EXPECT_TRUE(lineRay(VT_ZERO_VEC, across, VT_ZERO_VEC, above).found) << axis;
            EXPECT_FALSE(lineRay(VT_ZERO_VEC, below, VT_ZERO_VEC, across).found) << axis;
            EXPECT_TRUE(lineRay(VT_ZERO_VEC, above, VT_ZERO_VEC, across).found) << axis;
        }
    }
}

TEST(LineRayIntersect, DenominatorLimitIsTheFloat) {
    const VTVector below(std::sqrt(1.000000002e-30), 0, 0);
    const VTVector above(std::sqrt(1.000000004e-30), 0, 0);
    EXPECT_FALSE(lineRay(VT_ZERO_VEC, VT_YAXIS_VEC, VT_ZERO_VEC, below).found);
    EXPECT_TRUE(lineRay(VT_ZERO_VEC, VT_YAXIS_VEC, VT_ZERO_VEC, above).found);
}

TEST(LineLineIntersect, TakesTwoPointsOfEach) {
    Approach approach;
    approach.found = VTLineLineIntersect({0, 0, 0}, {2, 0, 0}, {1, -3, 4}, {1, 0, 4}, &approach.first, &approach.second,
                                         &approach.s, &approach.t);
    approach.expect({1, 0, 0}, {1, 0, 4}, 0.5, 1);
    EXPECT_TRUE(VTLineLineIntersect({0, 0, 0}, {2, 0, 0}, {1, -3, 4}, {1, 0, 4}, &approach.first, &approach.second,
                                    nullptr, nullptr));
    approach = Approach();
    approach.found = VTLineLineIntersect({0, 0, 0}, {2, 0, 0}, {1, -3, 4}, {1, -3, 4}, &approach.first,
                                         &approach.second, &approach.s, &approach.t);
    approach.expectNone();
}

struct TubeHit {
    bool met = false;
    VTVector point = untouched;
    double t = 77;

    void expect(const VTVector& expectedPoint, double expectedT) const {
        EXPECT_TRUE(met);
        EXPECT_TRUE(near(point, expectedPoint, 1e-14));
        EXPECT_NEAR(t, expectedT, 1e-14);
    }

    void expectMiss() const {
        EXPECT_FALSE(met);
        EXPECT_EQ(point, untouched);
        EXPECT_EQ(t, 77);
    }
};

/// The segment from (0, 0, 0) to (4, 0, 0).
TubeHit meetsTube(double thickness, const VTVector& origin, const VTVector& dir, double radiusScale = 0) {
    TubeHit hit;
    hit.met = VTRayThickLineIntersect({0, 0, 0}, {4, 0, 0}, thickness, origin, dir, radiusScale, &hit.point, &hit.t);
    return hit;
}

// The closest approach is at t = 2.5; 0.5 / 2 is taken off.
TEST(RayThickLineIntersect, GivesTheSegmentsPointAndAnEarlierParameter) {
    meetsTube(0.5, {2, -5, 0.25}, {0, 2, 0}).expect({2, 0, 0}, 2.25);
    meetsTube(0.5, {2, 5, 0.25}, {0, 2, 0}).expect({2, 0, 0}, -2.75);
    double t = 77;
    EXPECT_TRUE(VTRayThickLineIntersect({0, 0, 0}, {4, 0, 0}, 0.5, {2, -5, 0.25}, {0, 2, 0}, 0, nullptr, &t));
    EXPECT_EQ(t, 2.25);
}

TEST(RayThickLineIntersect, DistanceIsStrictlyBelowTheThickness) {
    meetsTube(0.5, {2, -5, 0.5}, {0, 2, 0}).expectMiss();
    meetsTube(0.5, {2, -5, 0.5 - 1e-9}, {0, 2, 0}).expect({2, 0, 0}, 2.25);
    meetsTube(0.5, {2, -5, -0.5}, {0, 2, 0}).expectMiss();
    meetsTube(0, {2, -5, 0}, {0, 2, 0}).expectMiss();
}

TEST(RayThickLineIntersect, EndsBelongToTheSegment) {
    meetsTube(0.5, {0, -5, 0}, {0, 2, 0}).expect({0, 0, 0}, 2.25);
    meetsTube(0.5, {4, -5, 0}, {0, 2, 0}).expect({4, 0, 0}, 2.25);
    meetsTube(0.5, {-1e-9, -5, 0}, {0, 2, 0}).expectMiss();
    meetsTube(0.5, {4 + 1e-8, -5, 0}, {0, 2, 0}).expectMiss();
    meetsTube(0.5, {2, -5, 0}, {1, 0, 0}).expectMiss(); // parallel
}

// 0.1 times a way of 5 makes the thickness 1.
TEST(RayThickLineIntersect, ThicknessGrowsAlongTheRay) {
    meetsTube(0.5, {2, -5, 0.75}, {0, 2, 0}).expectMiss();
    meetsTube(0.5, {2, -5, 0.75}, {0, 2, 0}, 0.1).expect({2, 0, 0}, 2);
    meetsTube(0.5, {2, -5, 1}, {0, 2, 0}, 0.1).expectMiss();
    meetsTube(0.5, {2, -5, 0.25}, {0, 2, 0}, -0.1).expect({2, 0, 0}, 2.25);
    // Behind the origin it shrinks: 0.5 - 0.05 * 5.
    meetsTube(0.5, {2, 5, 0.25}, {0, 2, 0}, 0.05).expectMiss();
    meetsTube(0.5, {2, 5, 0.125}, {0, 2, 0}, 0.05).expect({2, 0, 0}, -2.625);
}

} // namespace
