#include "LibUnstructGrid/VTOGeometryMathCylinder.h"

#include "LibUnstructGrid/VTOPlane.h"
#include "Tests/LibUnstructGrid/VectorSupport.h"

using orvtest::near;
using orvtest::PortableRandom;
using orvtest::randomVector;

namespace {

const VTVector untouched(7, 7, 7);

// The float 1e30.
constexpr double infinite = 1.0000000150474662e30;

struct Interval {
    bool met = false;
    double in = 77;
    double out = 77;
    int surfIn = 77;
    int surfOut = 77;

    void expect(double expectedIn, double expectedOut) const {
        EXPECT_TRUE(met);
        expectValues(expectedIn, expectedOut);
    }

    void expectMiss() const {
        EXPECT_FALSE(met);
        expectValues(77, 77);
    }

    void expectValues(double expectedIn, double expectedOut) const {
        EXPECT_NEAR(in, expectedIn, 1e-14);
        EXPECT_NEAR(out, expectedOut, 1e-14);
    }

    void expectSurfaces(int expectedIn, int expectedOut) const {
        EXPECT_EQ(surfIn, expectedIn);
        EXPECT_EQ(surfOut, expectedOut);
    }
};

/// The cylinder of radius 2 around the line x = y = 1.
Interval meetsEndless(const VTVector& origin, const VTVector& dir) {
    Interval interval;
    interval.met = VTRayInfCylinderIntersect(origin, dir, {1, 1, 7}, VT_ZAXIS_VEC, 2, &interval.in, &interval.out);
    return interval;
}

TEST(RayInfCylinderIntersect, GivesTheIntervalInside) {
    meetsEndless({-9, 1, 0}, {2, 0, 0}).expect(4, 6);
    meetsEndless({-9, 1, 0}, {2, 0, 5}).expect(4, 6);
    meetsEndless({11, 1, 0}, {2, 0, 0}).expect(-6, -4);
    meetsEndless({1, 1, 50}, {0, 4, 9}).expect(-0.5, 0.5);
    // 1.2 off the axis, where the half chord is 1.6.
    meetsEndless({-9, 2.2, 0}, {2, 0, 0}).expect(4.2, 5.8);
    meetsEndless({-9, -0.2, 0}, {2, 0, 0}).expect(4.2, 5.8);
}

TEST(RayInfCylinderIntersect, SurfaceBelongsToIt) {
    meetsEndless({-9, 3, 0}, {2, 0, 0}).expect(5, 5);
    meetsEndless({-9, -1, 0}, {2, 0, 0}).expect(5, 5);
    meetsEndless({-9, 3 + 1e-9, 0}, {2, 0, 0}).expectMiss();
    meetsEndless({-9, -1 - 1e-9, 0}, {2, 0, 0}).expectMiss();
}

TEST(RayInfCylinderIntersect, AlongTheAxisHasNoEnds) {
    for (const double z : {3.0, -3.0}) {
        for (const VTVector& origin : {VTVector(1, 1, 0), VTVector(2, 2, 90), VTVector(3, 1, 0)}) {
            const Interval inside = meetsEndless(origin, {0, 0, z});
            EXPECT_TRUE(inside.met);
            EXPECT_EQ(inside.in, -infinite);
            EXPECT_EQ(inside.out, infinite);
        }
        const Interval outside = meetsEndless({3 + 1e-9, 1, 0}, {0, 0, z});
        EXPECT_FALSE(outside.met);
        EXPECT_EQ(outside.in, -infinite);
        EXPECT_EQ(outside.out, infinite);
    }
}

// All that the length of the axis scales is divided by, so that it matters along the axis alone.
TEST(RayInfCylinderIntersect, TakesTheDirectionAcrossAnAxisOfAnyLength) {
    Interval interval;
    EXPECT_TRUE(
        VTRayInfCylinderIntersect({-9, 2.2, 0}, {2, 0, 0}, {1, 1, 7}, {0, 0, 3}, 2, &interval.in, &interval.out));
    interval.expectValues(4.2, 5.8);
}

// Only a cross product of exactly 0 is along the axis.
TEST(RayInfCylinderIntersect, AlmostAlongTheAxisHasEnds) {
    const Interval interval = meetsEndless({1, 1, 0}, {1e-100, 0, 1});
    EXPECT_TRUE(interval.met);
    EXPECT_DOUBLE_EQ(interval.in, -2e100);
    EXPECT_DOUBLE_EQ(interval.out, 2e100);
}

TEST(RayInfCylinderIntersect, EndsLieOnTheSurface) {
    PortableRandom random(151);
    int hits = 0;
    for (int i = 0; i < 300; ++i) {
        const VTVector base = randomVector(random, 5);
        const VTVector axis = randomVector(random, 1).GetNormalized();
        const VTVector origin = randomVector(random, 5);
        const VTVector dir = randomVector(random, 2);
        const VTVector across = dir ^ axis;
        if (across.Length() < 0.1) {
            continue;
        }
        Interval interval;
        const bool met = VTRayInfCylinderIntersect(origin, dir, base, axis, 3, &interval.in, &interval.out);
        // The distance of two skew lines.
        ASSERT_EQ(met, std::fabs((origin - base) * across) / across.Length() <= 3);
        if (met) {
            ++hits;
            ASSERT_LT(interval.in, interval.out);
            for (const double t : {interval.in, interval.out}) {
                ASSERT_NEAR(((origin + t * dir - base) ^ axis).Length(), 3, 1e-9);
            }
        }
    }
    EXPECT_GT(hits, 50);
}

/// What lies above z = 0 and below z = 10, of a ray through (0, 0, z).
Interval clipSlab(double z, const VTVector& dir, double in, double out) {
    Interval interval;
    interval.met = VTClipInfObjWithBoundingPlanes({0, 0, z}, dir, VTPlane(0, 0, -1, 0), VTPlane(0, 0, 1, -10), in, out,
                                                  &interval.in, &interval.out, &interval.surfIn, &interval.surfOut);
    return interval;
}

TEST(ClipInfObjWithBoundingPlanes, CutsAtBothPlanes) {
    struct Row {
        double z;
        double dirZ;
        double in, out;
        double expectedIn, expectedOut;
        int surfIn, surfOut;
    };
    const Row rows[] = {
        {-5, 1, -100, 100, 5, 15, 1, 2},
        {15, -1, -100, 100, 5, 15, 2, 1},
        {-5, 2, -100, 100, 2.5, 7.5, 1, 2},
        {5, 1, -100, 100, -5, 5, 1, 2},
        // Enters or leaves through the solid's own surface.
        {-5, 1, 7, 100, 7, 15, 0, 2},
        {-5, 1, -100, 12, 5, 12, 1, 0},
        {-5, 1, 7, 12, 7, 12, 0, 0},
        // A plane at the very end of the interval does not cut.
        {-5, 1, -100, 5, -100, 5, 0, 0},
        {-5, 1, 5, 100, 5, 15, 0, 2},
        {-5, 1, 15, 100, 15, 100, 0, 0},
        {-5, 1, 7, 15, 7, 15, 0, 0},
    };
    for (const Row& row : rows) {
        const Interval interval = clipSlab(row.z, {3, 0, row.dirZ}, row.in, row.out);
        interval.expect(row.expectedIn, row.expectedOut);
        interval.expectSurfaces(row.surfIn, row.surfOut);
    }
}

TEST(ClipInfObjWithBoundingPlanes, LengthOfTheNormalsDoesNotMatter) {
    Interval interval;
    EXPECT_TRUE(VTClipInfObjWithBoundingPlanes({0, 0, -5}, {0, 0, 1}, VTPlane(0, 0, -3, 0), VTPlane(0, 0, 4, -40), -100,
                                               100, &interval.in, &interval.out, &interval.surfIn, &interval.surfOut));
    interval.expectValues(5, 15);
}

TEST(ClipInfObjWithBoundingPlanes, LeavesNothingOutside) {
    // The interval ends before the ray enters, or starts after it has left, by either plane.
    for (const Interval& interval : {clipSlab(-5, {0, 0, 1}, -100, 4.9), clipSlab(-5, {0, 0, 1}, 15.1, 100),
                                     clipSlab(15, {0, 0, -1}, -100, 4.9), clipSlab(15, {0, 0, -1}, 15.1, 100)}) {
        interval.expectMiss();
        interval.expectSurfaces(0, 0);
    }
}

TEST(ClipInfObjWithBoundingPlanes, AlongThePlanes) {
    const Interval inside = clipSlab(5, {1, 0, 0}, 3, 4);
    inside.expect(3, 4);
    inside.expectSurfaces(0, 0);
    clipSlab(1e-300, {1, 0, 0}, 3, 4).expect(3, 4);
    for (const double z : {0.0, -1.0, 10.0, 11.0}) {
        const Interval outside = clipSlab(z, {1, 0, 0}, 3, 4);
        outside.expectMiss();
        outside.expectSurfaces(0, 0);
    }
    // Only a slope of exactly 0 is along a plane.
    const Interval steep = clipSlab(-5, {1, 0, 1e-300}, -1e305, 1e305);
    EXPECT_TRUE(steep.met);
    EXPECT_DOUBLE_EQ(steep.in, 5e300);
    EXPECT_DOUBLE_EQ(steep.out, 15e300);
}

// An empty interval is written all the same.
TEST(ClipInfObjWithBoundingPlanes, OutMustExceedIn) {
    const Interval empty = clipSlab(5, {1, 0, 0}, 4, 4);
    EXPECT_FALSE(empty.met);
    empty.expectValues(4, 4);
    const Interval reversed = clipSlab(5, {1, 0, 0}, 4, 3);
    EXPECT_FALSE(reversed.met);
    reversed.expectValues(4, 3);
}

// The ray enters at z = 3, t = 8, and would have to leave at z = 2, t = 7. The cut by the first plane is told.
TEST(ClipInfObjWithBoundingPlanes, SecondPlaneSeesWhatTheFirstHasLeft) {
    Interval interval;
    EXPECT_FALSE(VTClipInfObjWithBoundingPlanes({0, 0, -5}, {0, 0, 1}, VTPlane(0, 0, -1, 3), VTPlane(0, 0, 1, -2), -100,
                                                100, &interval.in, &interval.out, &interval.surfIn, &interval.surfOut));
    interval.expectMiss();
    interval.expectSurfaces(1, 0);
    // The other way round it leaves at t = 7 first, and would enter at 8.
    EXPECT_FALSE(VTClipInfObjWithBoundingPlanes({0, 0, -5}, {0, 0, 1}, VTPlane(0, 0, 1, -2), VTPlane(0, 0, -1, 3), -100,
                                                100, &interval.in, &interval.out, &interval.surfIn, &interval.surfOut));
    interval.expectMiss();
    interval.expectSurfaces(0, 1);
}

struct Hit {
    bool met = false;
    VTVector point = untouched;
    double t = 77;

    void expect(const VTVector& expectedPoint, double expectedT) const {
        EXPECT_TRUE(met);
        EXPECT_TRUE(near(point, expectedPoint, 1e-13));
        EXPECT_NEAR(t, expectedT, 1e-13);
    }

    void expectMiss() const {
        EXPECT_FALSE(met);
        EXPECT_EQ(point, untouched);
        EXPECT_EQ(t, 77);
    }
};

/// The cylinder of radius 2 from (1, 1, 10) to (1, 1, 20).
Hit meetsSolid(const VTVector& origin, const VTVector& dir) {
    Hit hit;
    hit.met = VTRayCylinderIntersect({1, 1, 10}, {1, 1, 20}, 2, origin, dir, &hit.point, &hit.t);
    return hit;
}

TEST(RayCylinderIntersect, EntersThroughSideOrEnds) {
    meetsSolid({-9, 1, 15}, {2, 0, 0}).expect({-1, 1, 15}, 4);
    meetsSolid({2, 1, 0}, {0, 0, 5}).expect({2, 1, 10}, 2);
    meetsSolid({2, 1, 30}, {0, 0, -5}).expect({2, 1, 20}, 2);
    meetsSolid({-1, 1, 8}, {1, 0, 2}).expect({0, 1, 10}, 1);
    meetsSolid({-1, 1, 22}, {1, 0, -2}).expect({0, 1, 20}, 1);
}

TEST(RayCylinderIntersect, HitsFromInsideAndBehind) {
    meetsSolid({1, 1, 15}, {1, 0, 0}).expect({-1, 1, 15}, -2);
    meetsSolid({11, 1, 15}, {2, 0, 0}).expect({-1, 1, 15}, -6);
}

TEST(RayCylinderIntersect, Misses) {
    meetsSolid({-9, 1, 21}, {2, 0, 0}).expectMiss();
    meetsSolid({-9, 1, 9}, {2, 0, 0}).expectMiss();
    meetsSolid({-9, 4, 15}, {2, 0, 0}).expectMiss();
    meetsSolid({4, 1, 0}, {0, 0, 5}).expectMiss();
    meetsSolid({-9, 1, 15}, {1, 0, 2}).expectMiss(); // passes above
}

TEST(RayCylinderIntersect, TouchingIsNotEntering) {
    meetsSolid({-9, 3, 15}, {2, 0, 0}).expectMiss();
    EXPECT_TRUE(meetsSolid({-9, 3 - 1e-9, 15}, {2, 0, 0}).met);
    meetsSolid({-9, 1, 10}, {2, 0, 0}).expectMiss();
    meetsSolid({-9, 1, 20}, {2, 0, 0}).expectMiss();
    meetsSolid({-9, 1, 10.001}, {2, 0, 0}).expect({-1, 1, 10.001}, 4);
    meetsSolid({-9, 1, 19.999}, {2, 0, 0}).expect({-1, 1, 19.999}, 4);
    // The curved surface belongs to the cylinder.
    meetsSolid({3, 1, 0}, {0, 0, 5}).expect({3, 1, 10}, 2);
}

TEST(RayCylinderIntersect, OutputsAreOptional) {
    Hit hit;
    EXPECT_TRUE(VTRayCylinderIntersect({1, 1, 10}, {1, 1, 20}, 2, {-9, 1, 15}, {2, 0, 0}, &hit.point, nullptr));
    EXPECT_TRUE(VTRayCylinderIntersect({1, 1, 10}, {1, 1, 20}, 2, {-9, 1, 15}, {2, 0, 0}, nullptr, &hit.t));
    hit.met = true;
    hit.expect({-1, 1, 15}, 4);
}

TEST(RayCylinderIntersect, WithoutAHeightIsMissed) {
    Hit hit;
    EXPECT_FALSE(VTRayCylinderIntersect({1, 1, 1}, {1, 1, 1}, 2, {-9, 1, 1}, {2, 0, 0}, &hit.point, &hit.t));
    hit.expectMiss();
}

/// Whether a point is inside the solid cylinder, grown by a margin.
bool isInside(const VTVector& base, const VTVector& top, double radius, const VTVector& point, double margin) {
    const VTVector axis = (top - base) / (top - base).Length();
    const double height = (point - base) * axis;
    return ((point - base) ^ axis).Length() <= radius + margin && height >= -margin &&
           height <= (top - base).Length() + margin;
}

// What goes before the hit is outside, and what follows is inside.
TEST(RayCylinderIntersect, HitIsWhereTheInsideBegins) {
    PortableRandom random(152);
    int hits = 0;
    for (int i = 0; i < 500; ++i) {
        const VTVector base = randomVector(random, 3);
        const VTVector top = randomVector(random, 3);
        const VTVector origin = randomVector(random, 8);
        const VTVector dir = randomVector(random, 1) - origin;
        Hit hit;
        hit.met = VTRayCylinderIntersect(base, top, 1.5, origin, dir, &hit.point, &hit.t);
        if (hit.met) {
            ++hits;
            ASSERT_TRUE(near(hit.point, origin + hit.t * dir, 1e-12));
            ASSERT_TRUE(isInside(base, top, 1.5, hit.point, 1e-9));
            ASSERT_FALSE(isInside(base, top, 1.5, origin + (hit.t - 1e-6) * dir, -1e-9));
        }
        for (double t = -2; t <= 2; t += 0.01) {
            ASSERT_FALSE(isInside(base, top, 1.5, origin + t * dir, -1e-9) && (!hit.met || t < hit.t));
        }
    }
    EXPECT_GT(hits, 100);
}

} // namespace
