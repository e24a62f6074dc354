#include "LibUnstructGrid/VTOGeometryMathSphere.h"

#include "LibUnstructGrid/VTOArrayVector.h"
#include "Tests/LibUnstructGrid/VectorSupport.h"

using orvtest::near;
using orvtest::PortableRandom;
using orvtest::randomVector;

namespace {

const VTVector untouched(7, 7, 7);

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

Hit meetsSphere(const VTVector& center, double radius, const VTVector& origin, const VTVector& dir,
                double radiusScale = 0) {
    Hit hit;
    hit.met = VTRaySphereIntersect(center, radius, origin, dir, radiusScale, &hit.point, &hit.t);
    return hit;
}

TEST(RaySphereIntersect, GivesTheNearHit) {
    meetsSphere({11, 1, 1}, 2, {1, 1, 1}, {4, 0, 0}).expect({9, 1, 1}, 2);
    // The half chord at a distance of 3 is 4.
    meetsSphere({10, 3, 0}, 5, {0, 0, 0}, {1, 0, 0}).expect({6, 0, 0}, 6);
    meetsSphere({10, 0, 0}, 2, {0, 0, 0}, {0, 1, 0}).expectMiss();
}

TEST(RaySphereIntersect, HitsBehindTheOriginToo) {
    meetsSphere({1, 0, 0}, 2, {0, 0, 0}, {1, 0, 0}).expect({-1, 0, 0}, -1);
    meetsSphere({-10, 0, 0}, 2, {0, 0, 0}, {2, 0, 0}).expect({-12, 0, 0}, -6);
}

TEST(RaySphereIntersect, TangentHits) {
    meetsSphere({10, 2, 0}, 2, {0, 0, 0}, {1, 0, 0}).expect({10, 0, 0}, 10);
    meetsSphere({10, 2, 0}, 2 - 1e-9, {0, 0, 0}, {1, 0, 0}).expectMiss();
}

// The centre is 10 away and 6 off the ray: a tenth of 10 makes the radius 5 a 6.
TEST(RaySphereIntersect, RadiusGrowsWithTheDistance) {
    meetsSphere({8, 6, 0}, 5, {0, 0, 0}, {2, 0, 0}).expectMiss();
    meetsSphere({8, 6, 0}, 5, {0, 0, 0}, {2, 0, 0}, 0.1).expect({8, 0, 0}, 4);
    meetsSphere({8, 6, 0}, 6, {0, 0, 0}, {2, 0, 0}, -0.1).expect({8, 0, 0}, 4);
}

TEST(RaySphereIntersect, PointIsOptional) {
    double t = 77;
    EXPECT_TRUE(VTRaySphereIntersect({11, 1, 1}, 2, {1, 1, 1}, {4, 0, 0}, 0, nullptr, &t));
    EXPECT_EQ(t, 2);
}

// Without a direction the hit is taken for one at -sqrt(2^2 - 1^2) along nothing.
TEST(RaySphereIntersect, WithoutADirection) {
    const double root = std::sqrt(3.0);
    meetsSphere({1, 0, 0}, 2, {0, 0, 0}, {0, 0, 0}).expect({0, 0, 0}, -root);
    meetsSphere({3, 0, 0}, 2, {0, 0, 0}, {0, 0, 0}).expectMiss();
    // A length that cannot be normalised is still one to divide by.
    const Hit hit = meetsSphere({1, 0, 0}, 2, {0, 0, 0}, {1e-40, 0, 0});
    EXPECT_TRUE(hit.met);
    EXPECT_DOUBLE_EQ(hit.t, -root / 1e-40);
}

TEST(RaySphereIntersect, HitsLieOnTheSphere) {
    PortableRandom random(131);
    int hits = 0;
    for (int i = 0; i < 300; ++i) {
        const VTVector center = randomVector(random, 5);
        const VTVector origin = randomVector(random, 5);
        const VTVector dir = randomVector(random, 2);
        const Hit hit = meetsSphere(center, 3, origin, dir);
        const VTVector nearest = origin + (dir * (center - origin)) / dir.L2Norm() * dir;
        ASSERT_EQ(hit.met, VTPointDist(nearest, center) < 3);
        if (hit.met) {
            ++hits;
            ASSERT_NEAR(VTPointDist(hit.point, center), 3, 1e-12);
            ASSERT_TRUE(near(hit.point, origin + hit.t * dir, 1e-12));
            ASSERT_LT((hit.point - center) * dir, 0) << "the near one";
        }
    }
    EXPECT_GT(hits, 50);
}

VTVectorArray filledArray() {
    VTVectorArray array;
    array.AddGrow(untouched);
    return array;
}

TEST(LineSphereIntersect, GivesBothPointsTheFartherFirst) {
    VTVectorArray points = filledArray();
    EXPECT_EQ(VTLineSphereIntersect({-4, 1, 1}, {-2, 1, 1}, {1, 1, 1}, 2, &points), 2);
    ASSERT_EQ(points.GetNumItems(), 2);
    EXPECT_TRUE(near(points[0], {3, 1, 1}, 1e-14));
    EXPECT_TRUE(near(points[1], {-1, 1, 1}, 1e-14));
    EXPECT_EQ(VTLineSphereIntersect({-2, 1, 1}, {-4, 1, 1}, {1, 1, 1}, 2, &points), 2);
    ASSERT_EQ(points.GetNumItems(), 2);
    EXPECT_TRUE(near(points[0], {-1, 1, 1}, 1e-14)) << "farther along the line as given";
}

// a = 4, b = -20, c = 29 - 4 = 25: b^2 - 4 a c is exactly 0.
TEST(LineSphereIntersect, TangentStoresNothing) {
    VTVectorArray points = filledArray();
    EXPECT_EQ(VTLineSphereIntersect({-5, 2, 0}, {-3, 2, 0}, {0, 0, 0}, 2, &points), 1);
    EXPECT_EQ(points.GetNumItems(), 0);
    EXPECT_EQ(VTLineSphereIntersect({-5, 2, 0}, {-3, 2, 0}, {0, 0, 0}, 2, nullptr), 1);
}

TEST(LineSphereIntersect, MissEmptiesTheArray) {
    VTVectorArray points = filledArray();
    EXPECT_EQ(VTLineSphereIntersect({-5, 2.1, 0}, {-3, 2.1, 0}, {0, 0, 0}, 2, &points), 0);
    EXPECT_EQ(points.GetNumItems(), 0);
    EXPECT_EQ(VTLineSphereIntersect({-5, 2.1, 0}, {-3, 2.1, 0}, {0, 0, 0}, 2, nullptr), 0);
}

// Differences below 1e-18 have no square: both coefficients of the equation are 0, and so is its discriminant.
TEST(LineSphereIntersect, TwoPointsMustDiffer) {
    VTVectorArray points = filledArray();
    EXPECT_EQ(VTLineSphereIntersect({1, 2, 3}, {1, 2, 3}, {1, 2, 3}, 2, &points), 1);
    for (int axis = 0; axis < 3; ++axis) {
        VTVector second = VT_ZERO_VEC;
        second[axis] = 0.9e-18;
        EXPECT_EQ(VTLineSphereIntersect({0, 0, 0}, second, {0, 0, 0}, 2, &points), 1);
        EXPECT_EQ(points.GetNumItems(), 0);
        second[axis] = 1.1e-18;
        EXPECT_EQ(VTLineSphereIntersect({0, 0, 0}, second, {0, 0, 0}, 2, &points), 2);
        ASSERT_EQ(points.GetNumItems(), 2);
        EXPECT_NEAR(points[0][axis], 2, 1e-14);
        EXPECT_NEAR(points[1][axis], -2, 1e-14);
    }
}

TEST(LineSphereIntersect, PointsLieOnLineAndSphere) {
    PortableRandom random(132);
    int hits = 0;
    for (int i = 0; i < 300; ++i) {
        const VTVector center = randomVector(random, 5);
        const VTVector p1 = randomVector(random, 5);
        const VTVector p2 = randomVector(random, 5);
        VTVectorArray points;
        const int count = VTLineSphereIntersect(p1, p2, center, 3, &points);
        const double distance = ((p2 - p1) ^ (center - p1)).Length() / (p2 - p1).Length();
        ASSERT_EQ(count, distance < 3 ? 2 : 0);
        ASSERT_EQ(points.GetNumItems(), count);
        for (int k = 0; k < count; ++k) {
            ++hits;
            ASSERT_NEAR(VTPointDist(points[k], center), 3, 1e-10);
            ASSERT_NEAR(((p2 - p1) ^ (points[k] - p1)).Length(), 0, 1e-9);
        }
    }
    EXPECT_GT(hits, 100);
}

} // namespace
