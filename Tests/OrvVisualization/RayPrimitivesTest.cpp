#include "OrvVisualization/RayPrimitives_p.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

namespace {

using orv::Ray;
using orv::Vec3d;
using orv::vis::RayTest;

struct TriangleHit {
    bool isMet = false;
    double t = -1.0;
    double weights[3] = {-1.0, -1.0, -1.0};
};

struct TubeHit {
    bool isMet = false;
    double t = -1.0;
    double position = -1.0;
};

Ray rayFrom(const Vec3d& origin, const Vec3d& direction) {
    Ray ray;
    ray.setOrigin(origin);
    ray.setDirection(direction);
    return ray;
}

TriangleHit meetTriangle(const Ray& ray, Vec3d a, Vec3d b, Vec3d c) {
    TriangleHit hit;
    hit.isMet = RayTest(ray).meetsTriangle(&a[0], &b[0], &c[0], &hit.t, hit.weights);
    return hit;
}

TubeHit meetTube(const Ray& ray, Vec3d a, Vec3d b, double radius) {
    TubeHit hit;
    hit.isMet = RayTest(ray).meetsTube(&a[0], &b[0], radius, &hit.t, &hit.position);
    return hit;
}

/// The triangle (0,0,0) (4,0,0) (0,2,0), seen from a point above it straight down.
TriangleHit lookDownAt(double x, double y) {
    return meetTriangle(rayFrom({x, y, 3}, {0, 0, -2}), {0, 0, 0}, {4, 0, 0}, {0, 2, 0});
}

TEST(RayTriangle, DistanceIsInUnitsOfTheDirection) {
    const TriangleHit hit = lookDownAt(1, 0.5);
    ASSERT_TRUE(hit.isMet);
    EXPECT_DOUBLE_EQ(hit.t, 1.5);
}

// (1, 0.5) = 1/2 (0,0) + 1/4 (4,0) + 1/4 (0,2).
TEST(RayTriangle, WeightsAreTheSharesOfTheCorners) {
    const TriangleHit hit = lookDownAt(1, 0.5);
    ASSERT_TRUE(hit.isMet);
    EXPECT_DOUBLE_EQ(hit.weights[0], 0.5);
    EXPECT_DOUBLE_EQ(hit.weights[1], 0.25);
    EXPECT_DOUBLE_EQ(hit.weights[2], 0.25);
}

TEST(RayTriangle, BothSidesAreMet) {
    EXPECT_TRUE(meetTriangle(rayFrom({1, 0.5, -3}, {0, 0, 1}), {0, 0, 0}, {4, 0, 0}, {0, 2, 0}).isMet);
    EXPECT_TRUE(meetTriangle(rayFrom({1, 0.5, -3}, {0, 0, 1}), {0, 0, 0}, {0, 2, 0}, {4, 0, 0}).isMet);
}

TEST(RayTriangle, WhatIsBehindIsNotMet) {
    EXPECT_FALSE(meetTriangle(rayFrom({1, 0.5, 3}, {0, 0, 1}), {0, 0, 0}, {4, 0, 0}, {0, 2, 0}).isMet);
}

TEST(RayTriangle, FromAPointOnItTheDistanceIsZero) {
    const TriangleHit hit = meetTriangle(rayFrom({1, 0.5, 0}, {0, 0, 1}), {0, 0, 0}, {4, 0, 0}, {0, 2, 0});
    ASSERT_TRUE(hit.isMet);
    EXPECT_EQ(hit.t, 0.0);
}

// 1e-9 beside an edge is far more than rounding.
TEST(RayTriangle, BesideAnEdgeIsNotMet) {
    EXPECT_FALSE(lookDownAt(1, -1e-9).isMet);
    EXPECT_FALSE(lookDownAt(-1e-9, 1).isMet);
    EXPECT_FALSE(lookDownAt(2 + 1e-9, 1 + 1e-9).isMet);
    EXPECT_TRUE(lookDownAt(1, 1e-9).isMet);
    EXPECT_TRUE(lookDownAt(1e-9, 1).isMet);
    EXPECT_TRUE(lookDownAt(2 - 1e-9, 1 - 1e-9).isMet);
}

TEST(RayTriangle, EdgeOnAndWithoutAreaAreNotMet) {
    EXPECT_FALSE(meetTriangle(rayFrom({-1, 0.5, 0}, {1, 0, 0}), {0, 0, 0}, {4, 0, 0}, {0, 2, 0}).isMet);
    EXPECT_FALSE(meetTriangle(rayFrom({1, 1, 3}, {0, 0, -1}), {0, 0, 0}, {1, 1, 0}, {2, 2, 0}).isMet);
    EXPECT_FALSE(meetTriangle(rayFrom({1, 1, 3}, {0, 0, -1}), {1, 1, 0}, {1, 1, 0}, {1, 1, 0}).isMet);
}

// The direction is rounded when it is computed, so the ray passes a corner at some 1e-16 of the distance.
TEST(RayTriangle, ARayAimedAtACornerMeetsIt) {
    std::mt19937 random(11);
    std::uniform_real_distribution<double> position(-1.0, 1.0);
    for (const double offset : {0.0, 1e6}) {
        for (const double far : {3.0, 1e6}) {
            for (int i = 0; i < 2000; ++i) {
                auto point = [&] { return Vec3d(position(random) + offset, position(random), position(random)); };
                const Vec3d corners[3] = {point(), point(), point()};
                const Vec3d away = (corners[1] - corners[0]) ^ (corners[2] - corners[0]);
                const Vec3d eye = corners[0] + away * (far / away.length()) + Vec3d(position(random), 0, 0);
                const Vec3d& target = corners[std::size_t(i) % 3];
                const TriangleHit hit = meetTriangle(rayFrom(eye, target - eye), corners[0], corners[1], corners[2]);
                ASSERT_TRUE(hit.isMet) << "offset " << offset << ", distance " << far << ", triangle " << i;
                EXPECT_NEAR(hit.t, 1.0, 1e-8);
            }
        }
    }
}

TEST(RayTriangle, WeightsNeverLeaveTheTriangle) {
    std::mt19937 random(12);
    std::uniform_real_distribution<double> position(-1.0, 1.0);
    auto point = [&] { return Vec3d(position(random), position(random), position(random)); };
    int metCount = 0;
    for (int i = 0; i < 200000; ++i) {
        const TriangleHit hit = meetTriangle(rayFrom(point() * 3.0, point()), point(), point(), point());
        if (hit.isMet) {
            ++metCount;
            EXPECT_GE(std::min({hit.weights[0], hit.weights[1], hit.weights[2]}), 0.0);
            EXPECT_NEAR(hit.weights[0] + hit.weights[1] + hit.weights[2], 1.0, 1e-15);
        }
    }
    EXPECT_GT(metCount, 500);
}

// A fan about a point: every ray into its inside meets at least one of the triangles, also along the spokes.
TEST(RayTriangle, NoRaySlipsBetweenNeighbours) {
    std::mt19937 random(13);
    std::uniform_real_distribution<double> share(0.0, 1.0);
    constexpr int count = 7;
    std::vector<Vec3d> rim;
    for (int i = 0; i < count; ++i) {
        const double angle = 2.0 * M_PI * i / count;
        rim.emplace_back(std::cos(angle) / 3.0 + 0.1, std::sin(angle) / 3.0, 0.1 * angle);
    }
    const Vec3d middle(0.1, 0.05, 0.3);
    for (int i = 0; i < 20000; ++i) {
        const Vec3d& end = rim[std::size_t(i % count)];
        const Vec3d target = middle + (end - middle) * share(random);
        const Vec3d eye(share(random), share(random), 5.0 + share(random));
        bool isMet = false;
        for (std::size_t k = 0; k < count; ++k) {
            isMet = isMet || meetTriangle(rayFrom(eye, target - eye), middle, rim[k], rim[(k + 1) % count]).isMet;
        }
        ASSERT_TRUE(isMet) << i;
    }
}

TEST(RayTube, IsMetAtItsWall) {
    const TubeHit hit = meetTube(rayFrom({1, 0, 5}, {0, 0, -2}), {0, 0, 0}, {4, 0, 0}, 0.5);
    ASSERT_TRUE(hit.isMet);
    EXPECT_DOUBLE_EQ(hit.t, 2.25); // (5 - 0.5) / 2
    EXPECT_DOUBLE_EQ(hit.position, 0.25);
}

TEST(RayTube, HasRoundEnds) {
    const TubeHit hit = meetTube(rayFrom({-3, 0, 0}, {1, 0, 0}), {0, 0, 0}, {4, 0, 0}, 0.5);
    ASSERT_TRUE(hit.isMet);
    EXPECT_DOUBLE_EQ(hit.t, 2.5);
    EXPECT_EQ(hit.position, 0.0);
    EXPECT_TRUE(meetTube(rayFrom({4.4, 0, 5}, {0, 0, -1}), {0, 0, 0}, {4, 0, 0}, 0.5).isMet);
    EXPECT_FALSE(meetTube(rayFrom({4.4, 0.4, 5}, {0, 0, -1}), {0, 0, 0}, {4, 0, 0}, 0.5).isMet);
}

TEST(RayTube, JustInsideAndJustBesideTheWall) {
    EXPECT_TRUE(meetTube(rayFrom({1, 0.5 - 1e-9, 5}, {0, 0, -1}), {0, 0, 0}, {4, 0, 0}, 0.5).isMet);
    EXPECT_FALSE(meetTube(rayFrom({1, 0.5 + 1e-9, 5}, {0, 0, -1}), {0, 0, 0}, {4, 0, 0}, 0.5).isMet);
}

TEST(RayTube, FromInsideTheWallIsMetOnTheWayOut) {
    const TubeHit hit = meetTube(rayFrom({1, 0, 0}, {0, 0, 1}), {0, 0, 0}, {4, 0, 0}, 0.5);
    ASSERT_TRUE(hit.isMet);
    EXPECT_DOUBLE_EQ(hit.t, 0.5);
}

TEST(RayTube, WhatIsBehindIsNotMet) {
    EXPECT_FALSE(meetTube(rayFrom({1, 0, 5}, {0, 0, 1}), {0, 0, 0}, {4, 0, 0}, 0.5).isMet);
}

TEST(RayTube, AlongTheAxisBesideTheWallIsNotMet) {
    EXPECT_FALSE(meetTube(rayFrom({-3, 0.6, 0}, {1, 0, 0}), {0, 0, 0}, {4, 0, 0}, 0.5).isMet);
}

TEST(RayTube, OfOnePointIsASphere) {
    const TubeHit hit = meetTube(rayFrom({2, 3, 9}, {0, 0, -1}), {2, 3, 4}, {2, 3, 4}, 2.0);
    ASSERT_TRUE(hit.isMet);
    EXPECT_DOUBLE_EQ(hit.t, 3.0);
    EXPECT_EQ(hit.position, 0.0);
    EXPECT_FALSE(meetTube(rayFrom({4.1, 3, 9}, {0, 0, -1}), {2, 3, 4}, {2, 3, 4}, 2.0).isMet);
}

// From a million away a tube of a tenth keeps its wall to better than 1e-6.
TEST(RayTube, IsMetFromFarAway) {
    const TubeHit hit = meetTube(rayFrom({1, 0, 1e6}, {0, 0, -1}), {0, 0, 0}, {4, 0, 0}, 0.1);
    ASSERT_TRUE(hit.isMet);
    EXPECT_NEAR(hit.t, 1e6 - 0.1, 1e-6);
}

} // namespace
