#include "OrvVisualization/Camera.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace {

using orv::Ray;
using orv::Vec3d;
using orv::vis::Camera;
using orv::vis::StandardView;

constexpr double infinity = std::numeric_limits<double>::infinity();

struct LookAt {
    Vec3d eye;
    Vec3d point;
    Vec3d up;
};

LookAt lookAtOf(const Camera& camera) {
    LookAt lookAt;
    camera.toLookAt(&lookAt.eye, &lookAt.point, &lookAt.up);
    return lookAt;
}

void expectNear(const Vec3d& actual, const Vec3d& expected, double tolerance = 1e-14) {
    EXPECT_NEAR(actual.x(), expected.x(), tolerance);
    EXPECT_NEAR(actual.y(), expected.y(), tolerance);
    EXPECT_NEAR(actual.z(), expected.z(), tolerance);
}

TEST(Camera, IsBornAboveTheOriginInPerspective) {
    const Camera camera;
    const LookAt lookAt = lookAtOf(camera);
    EXPECT_EQ(lookAt.eye, Vec3d(0, 0, 1));
    EXPECT_EQ(lookAt.point, Vec3d(0, 0, 0));
    EXPECT_EQ(lookAt.up, Vec3d(0, 1, 0));
    EXPECT_FALSE(camera.isParallel());
    EXPECT_EQ(camera.angle(), 30.0);
    EXPECT_EQ(camera.height(), 1.0);
}

TEST(Camera, LookAtTakesNullPointers) {
    Camera().toLookAt(nullptr, nullptr, nullptr);
}

/// Whether all corners of what one camera shows at a depth before it are in the picture of another.
void expectSees(const Camera& camera, const Camera& other, int width, int height) {
    for (const double x : {0.0, double(width)}) {
        for (const double y : {0.0, double(height)}) {
            for (const double distance : {0.5, 7.0}) {
                const Ray ray = other.rayThrough(x, y, width, height);
                double seenX = 0.0;
                double seenY = 0.0;
                ASSERT_TRUE(
                    camera.project(ray.origin() + ray.direction() * distance, width, height, &seenX, &seenY, nullptr));
                EXPECT_GE(seenX, -1e-9);
                EXPECT_LE(seenX, width + 1e-9);
                EXPECT_GE(seenY, -1e-9);
                EXPECT_LE(seenY, height + 1e-9);
            }
        }
    }
}

TEST(Camera, IncludesWhatAnotherOneSees) {
    for (const bool isParallel : {false, true}) {
        for (const Vec3d& shift :
             {Vec3d(3, 0, 0), Vec3d(0, -2, 0), Vec3d(1, 2, -4), Vec3d(-1, 0.1, 5), Vec3d(0, 0, 0)}) {
            Camera one;
            ASSERT_TRUE(one.setFromLookAt({1, 2, 3}, {4, 0, 1}, {0, 0, 1}));
            Camera two;
            ASSERT_TRUE(two.setFromLookAt(Vec3d(1, 2, 3) + shift, Vec3d(4, 0, 1) + shift, {0, 0, 1}));
            if (isParallel) {
                ASSERT_TRUE(one.setParallel(2.0));
                ASSERT_TRUE(two.setParallel(3.0));
            }
            Camera both = one;
            ASSERT_TRUE(both.include(two, 1.5));
            expectSees(both, one, 300, 200);
            expectSees(both, two, 300, 200);
            expectNear(both.rayThrough(150, 100, 300, 200).direction(), one.rayThrough(150, 100, 300, 200).direction());
        }
    }
}

// Two eyes 2 apart across the line of sight: with a tangent of 1 and a square picture the new one is 1 behind, in
// their middle. In parallel, pictures of a height of 2, 3 apart upwards, are together 5 high.
TEST(Camera, GoesBackNoFartherThanItMust) {
    Camera one;
    ASSERT_TRUE(one.setPerspective(90));
    ASSERT_TRUE(one.setFromLookAt({0, 0, 0}, {0, 0, -5}, {0, 1, 0}));
    Camera two = one;
    ASSERT_TRUE(two.setFromLookAt({2, 0, 0}, {2, 0, -5}, {0, 1, 0}));
    ASSERT_TRUE(one.include(two, 1.0));
    expectNear(lookAtOf(one).eye, {1, 0, 1}, 1e-12);
    expectNear(lookAtOf(one).point, {1, 0, -4}, 1e-12);
    Camera low;
    ASSERT_TRUE(low.setParallel(2));
    Camera high;
    ASSERT_TRUE(high.setParallel(2));
    ASSERT_TRUE(high.setFromLookAt({0, 3, 9}, {0, 3, 0}, {0, 1, 0}));
    ASSERT_TRUE(low.include(high, 1.0));
    EXPECT_DOUBLE_EQ(low.height(), 5.0);
    expectNear(lookAtOf(low).eye, {0, 1.5, 9}, 1e-12); // as far back as the other one
}

TEST(Camera, IncludesItselfWithoutMoving) {
    Camera camera;
    const Camera same = camera;
    ASSERT_TRUE(camera.include(same, 2.0));
    EXPECT_EQ(lookAtOf(camera).eye, lookAtOf(same).eye);
    EXPECT_EQ(lookAtOf(camera).point, lookAtOf(same).point);
}

TEST(Camera, IncludesNoneThatLooksElsewhere) {
    Camera turned;
    ASSERT_TRUE(turned.setFromLookAt({0, 0, 1}, {0.1, 0, 0}, {0, 1, 0}));
    Camera rolled;
    ASSERT_TRUE(rolled.setFromLookAt({0, 0, 1}, {0, 0, 0}, {0.1, 1, 0}));
    Camera wider;
    ASSERT_TRUE(wider.setPerspective(40));
    Camera parallel;
    ASSERT_TRUE(parallel.setParallel(1));
    Camera camera;
    for (const Camera& other : {turned, rolled, wider, parallel}) {
        EXPECT_FALSE(camera.include(other, 1.0));
    }
    EXPECT_FALSE(camera.include(Camera(), 0.0));
    EXPECT_FALSE(camera.include(Camera(), infinity));
    EXPECT_EQ(lookAtOf(camera).eye, Vec3d(0, 0, 1));
}

TEST(Camera, UpIsMadeUpright) {
    Camera camera;
    ASSERT_TRUE(camera.setFromLookAt({1, 2, 3}, {1, 2, 13}, {0, 5, 7}));
    const LookAt lookAt = lookAtOf(camera);
    EXPECT_EQ(lookAt.eye, Vec3d(1, 2, 3));
    EXPECT_EQ(lookAt.point, Vec3d(1, 2, 13));
    EXPECT_EQ(lookAt.up, Vec3d(0, 1, 0));
}

// Along z, x and y are equally good; the first is taken. Along (1, 2, 3) x is least along it.
TEST(Camera, AnUpAlongTheLineOfSightIsReplaced) {
    Camera camera;
    for (const Vec3d up : {Vec3d(0, 0, 0), Vec3d(0, 0, -2), Vec3d(0, 0, 1e-30)}) {
        ASSERT_TRUE(camera.setFromLookAt({0, 0, 0}, {0, 0, 1}, up));
        EXPECT_EQ(lookAtOf(camera).up, Vec3d(1, 0, 0));
    }
    ASSERT_TRUE(camera.setFromLookAt({0, 0, 0}, {1, 2, 3}, {1, 2, 3}));
    const Vec3d up = lookAtOf(camera).up;
    EXPECT_NEAR(up * Vec3d(1, 2, 3), 0.0, 1e-15);
    EXPECT_GT(up.x(), 0.9);
}

// So a camera can be kept as numbers. A ball far away leaves few digits for the line of sight, and an `up` near it few
// for what is upright.
TEST(Camera, WhatItGaveComesBackBitByBit) {
    std::mt19937 random(4711);
    const auto number = [&random](double size) {
        return (static_cast<double>(random()) / static_cast<double>(std::mt19937::max()) - 0.5) * size;
    };
    for (int i = 0; i < 1000; ++i) {
        const Vec3d eye(number(10), number(10), number(10));
        const Vec3d point(number(10), number(10), number(10));
        const Vec3d aside(number(1e-6), number(1e-6), number(1e-6));
        Camera camera;
        ASSERT_TRUE(camera.setFromLookAt(eye, point, i % 2 == 0 ? aside : point - eye + aside));
        if (i % 3 == 0) {
            ASSERT_TRUE(camera.fitBall({number(1e7), number(1e7), number(1e7)}, 0.1, 1.5));
        }
        const LookAt lookAt = lookAtOf(camera);
        EXPECT_NEAR(lookAt.up * lookAt.up, 1.0, 1e-14);
        const Vec3d sight = lookAt.point - lookAt.eye;
        EXPECT_NEAR(lookAt.up * sight / sight.length(), 0.0, 1e-14);
        ASSERT_TRUE(camera.setFromLookAt(lookAt.eye, lookAt.point, lookAt.up));
        EXPECT_EQ(lookAtOf(camera).eye, lookAt.eye);
        EXPECT_EQ(lookAtOf(camera).point, lookAt.point);
        EXPECT_EQ(lookAtOf(camera).up, lookAt.up);
    }
}

TEST(Camera, ABallThatIsLostInItsDistanceDoesNotFit) {
    Camera camera;
    EXPECT_FALSE(camera.fitBall({0, 0, 1e20}, 1.0, 1.0));
    EXPECT_EQ(lookAtOf(camera).eye, Vec3d(0, 0, 1));
    EXPECT_EQ(lookAtOf(camera).point, Vec3d(0, 0, 0));
}

TEST(Camera, RefusedLooksChangeNothing) {
    Camera camera;
    EXPECT_FALSE(camera.setFromLookAt({1, 1, 1}, {1, 1, 1}, {0, 1, 0}));
    EXPECT_FALSE(camera.setFromLookAt({1, 1, infinity}, {1, 1, 1}, {0, 1, 0}));
    EXPECT_FALSE(camera.setFromLookAt({1, 1, 0}, {1, 1, 1}, {0, std::nan(""), 0}));
    EXPECT_EQ(lookAtOf(camera).eye, Vec3d(0, 0, 1));
}

TEST(Camera, RefusedProjectionsChangeNothing) {
    Camera camera;
    for (const double angle : {0.0, -1.0, 180.0, std::nan("")}) {
        EXPECT_FALSE(camera.setPerspective(angle));
    }
    for (const double height : {0.0, -1.0, infinity, std::nan("")}) {
        EXPECT_FALSE(camera.setParallel(height));
    }
    EXPECT_FALSE(camera.isParallel());
    EXPECT_EQ(camera.angle(), 30.0);
    EXPECT_EQ(camera.height(), 1.0);
}

// What is to the right and up in a picture, as axes of the model.
TEST(Camera, StandardViews) {
    const struct {
        StandardView view;
        Vec3d forward;
        Vec3d right;
        Vec3d up;
    } rows[] = {
        {StandardView::FRONT, {0, 1, 0}, {1, 0, 0}, {0, 0, 1}},
        {StandardView::BACK, {0, -1, 0}, {-1, 0, 0}, {0, 0, 1}},
        {StandardView::LEFT, {1, 0, 0}, {0, -1, 0}, {0, 0, 1}},
        {StandardView::RIGHT, {-1, 0, 0}, {0, 1, 0}, {0, 0, 1}},
        {StandardView::TOP, {0, 0, -1}, {1, 0, 0}, {0, 1, 0}},
        {StandardView::BOTTOM, {0, 0, 1}, {-1, 0, 0}, {0, 1, 0}},
        {StandardView::ISOMETRIC, Vec3d(-1, 1, -1) / std::sqrt(3.0), Vec3d(1, 1, 0) / std::sqrt(2.0),
         Vec3d(-1, 1, 2) / std::sqrt(6.0)},
    };
    for (const auto& row : rows) {
        Camera camera;
        ASSERT_TRUE(camera.setFromLookAt({0, 0, 7}, {0, 0, 0}, {0, 1, 0}));
        camera.setStandardView(row.view, {1, 2, 3});
        const LookAt lookAt = lookAtOf(camera);
        expectNear(lookAt.point, {1, 2, 3});
        expectNear(lookAt.eye, Vec3d(1, 2, 3) - row.forward * 7.0);
        expectNear(lookAt.up, row.up);
        double x = 0.0;
        double y = 0.0;
        ASSERT_TRUE(camera.project(Vec3d(1, 2, 3) + row.right, 100, 100, &x, &y, nullptr));
        EXPECT_GT(x, 60.0);
        EXPECT_NEAR(y, 50.0, 1e-9);
    }
}

// With 90 degrees the picture shows as much to each side as is the depth: 50 pixels for 10 at the depth of 10.
TEST(Camera, ProjectsInPerspective) {
    Camera camera;
    ASSERT_TRUE(camera.setFromLookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
    ASSERT_TRUE(camera.setPerspective(90.0));
    double x = 0.0;
    double y = 0.0;
    double depth = 0.0;
    ASSERT_TRUE(camera.project({4, 2, 0}, 200, 100, &x, &y, &depth));
    EXPECT_NEAR(x, 120.0, 1e-12);
    EXPECT_NEAR(y, 40.0, 1e-12);
    EXPECT_NEAR(depth, 10.0, 1e-12);
    EXPECT_NEAR(camera.pixelSize(10.0, 100), 0.2, 1e-15);
    x = -1.0;
    EXPECT_FALSE(camera.project({0, 0, 10}, 200, 100, &x, &y, nullptr)) << "the eye itself";
    EXPECT_FALSE(camera.project({0, 0, 11}, 200, 100, &x, &y, nullptr)) << "behind the eye";
    EXPECT_EQ(x, -1.0);
}

TEST(Camera, ProjectsInParallel) {
    Camera camera;
    ASSERT_TRUE(camera.setFromLookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
    ASSERT_TRUE(camera.setParallel(20.0));
    EXPECT_TRUE(camera.isParallel());
    for (const double z : {0.0, 5.0}) {
        double x = 0.0;
        double y = 0.0;
        ASSERT_TRUE(camera.project({4, 2, z}, 200, 100, &x, &y, nullptr));
        EXPECT_NEAR(x, 120.0, 1e-12);
        EXPECT_NEAR(y, 40.0, 1e-12);
    }
    EXPECT_NEAR(camera.pixelSize(3.0, 100), 0.2, 1e-15);
}

TEST(Camera, RaysGoThroughWhatIsProjectedThere) {
    std::mt19937 random(31);
    std::uniform_real_distribution<double> position(-1.0, 1.0);
    for (const bool isParallel : {false, true}) {
        Camera camera;
        ASSERT_TRUE(camera.setFromLookAt({5, 4, 3}, {0.2, 0.1, 0}, {0, 0, 1}));
        if (isParallel) {
            ASSERT_TRUE(camera.setParallel(3.0));
        }
        for (int i = 0; i < 200; ++i) {
            const Vec3d point(position(random), position(random), position(random));
            double x = 0.0;
            double y = 0.0;
            double depth = 0.0;
            ASSERT_TRUE(camera.project(point, 640, 480, &x, &y, &depth));
            const Ray ray = camera.rayThrough(x, y, 640, 480);
            EXPECT_NEAR(ray.direction().length(), 1.0, 1e-15);
            EXPECT_LT(((point - ray.origin()) ^ ray.direction()).length(), 1e-13);
        }
    }
}

// Every point of the ball is in the picture, and the outermost at 1/1.05 of the way to the nearer edge (in perspective
// the outline of a ball of 1.05 touches the edge, and that of the ball itself is only just inside).
TEST(Camera, ABallFits) {
    const Vec3d center(3, 4, 5);
    for (const bool isParallel : {false, true}) {
        for (const double aspect : {0.5, 1.0, 2.0}) {
            Camera camera;
            camera.setStandardView(StandardView::ISOMETRIC, {0, 0, 0});
            if (isParallel) {
                ASSERT_TRUE(camera.setParallel(1.0));
            }
            ASSERT_TRUE(camera.fitBall(center, 2.0, aspect));
            EXPECT_EQ(lookAtOf(camera).point, center);
            const int height = 1000;
            const int width = int(height * aspect);
            double farthest = 0.0;
            for (int i = 0; i < 20000; ++i) {
                const double polar = std::acos(1.0 - 2.0 * (i + 0.5) / 20000);
                const double angle = i * 2.39996322972865332; // The golden angle spreads points evenly.
                const Vec3d onBall(std::sin(polar) * std::cos(angle), std::sin(polar) * std::sin(angle),
                                   std::cos(polar));
                double x = 0.0;
                double y = 0.0;
                ASSERT_TRUE(camera.project(center + onBall * 2.0, width, height, &x, &y, nullptr));
                farthest = std::max(farthest, std::hypot(x - width / 2.0, y - height / 2.0));
            }
            const double room = std::min(width, height) / 2.0;
            EXPECT_LT(farthest, room);
            EXPECT_GT(farthest, 0.94 * room);
        }
    }
}

TEST(Camera, ARefusedFitChangesNothing) {
    Camera camera;
    EXPECT_FALSE(camera.fitBall({0, 0, 0}, 0.0, 1.0));
    EXPECT_FALSE(camera.fitBall({0, 0, 0}, infinity, 1.0));
    EXPECT_FALSE(camera.fitBall({0, 0, 0}, 1.0, 0.0));
    EXPECT_FALSE(camera.fitBall({0, std::nan(""), 0}, 1.0, 1.0));
    EXPECT_EQ(lookAtOf(camera).eye, Vec3d(0, 0, 1));
}

} // namespace
