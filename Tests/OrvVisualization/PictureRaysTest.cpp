#include "OrvVisualization/PictureRays_p.h"

#include <gtest/gtest.h>

namespace {

using orv::Ray;
using orv::Vec3d;
using orv::vis::Camera;
using orv::vis::PictureRays;
using orv::vis::PixelSteps;

constexpr int width = 400;
constexpr int height = 300;

Camera someCamera(bool isParallel) {
    Camera camera;
    camera.setFromLookAt({3, -4, 5}, {0.5, 0.25, 0}, {0, 0, 1});
    camera.setPerspective(40);
    if (isParallel) {
        camera.setParallel(6);
    }
    return camera;
}

/// Where a ray meets the plane through a point.
Vec3d meet(const Ray& ray, const Vec3d& point, const Vec3d& normal) {
    const double distance = ((point - ray.origin()) * normal) / (ray.direction() * normal);
    return ray.origin() + ray.direction() * distance;
}

TEST(PictureRays, AxesAreThoseOfThePicture) {
    Camera camera;
    camera.setFromLookAt({0, -5, 0}, {0, 0, 0}, {0, 0, 1});
    const PictureRays rays(camera, width, height);
    EXPECT_EQ(rays.width(), width);
    EXPECT_EQ(rays.height(), height);
    EXPECT_EQ(rays.forward(), Vec3d(0, 1, 0));
    EXPECT_EQ(rays.right(), Vec3d(1, 0, 0));
    EXPECT_EQ(rays.up(), Vec3d(0, 0, 1));
}

TEST(PictureRays, AreTheRaysOfTheCamera) {
    for (const bool isParallel : {false, true}) {
        const Camera camera = someCamera(isParallel);
        const Ray ray = PictureRays(camera, width, height).through(17.5, 210.25);
        const Ray expected = camera.rayThrough(17.5, 210.25, width, height);
        EXPECT_EQ(ray.origin(), expected.origin());
        EXPECT_EQ(ray.direction(), expected.direction());
    }
}

TEST(PictureRays, APixelIsAsLargeAsTheCameraSaysAtItsDepth) {
    Camera camera;
    camera.setFromLookAt({0, -5, 0}, {0, 0, 0}, {0, 0, 1});
    EXPECT_DOUBLE_EQ(PictureRays(camera, width, height).pixelSize({8, 2, 1}), camera.pixelSize(7, height));
    camera.setParallel(6);
    EXPECT_DOUBLE_EQ(PictureRays(camera, width, height).pixelSize({8, 2, 1}), 6.0 / height);
}

// Against a difference between two rays that are near to each other, whose own error is that share of a pixel.
TEST(PictureRays, StepsGoAlongTheSurface) {
    constexpr double x = 90;
    constexpr double y = 120;
    constexpr double nearby = 1e-5;
    const Vec3d normal(0.48, -0.6, 0.64);
    for (const bool isParallel : {false, true}) {
        const PictureRays rays(someCamera(isParallel), width, height);
        const Ray ray = rays.through(x, y);
        const Vec3d point = meet(ray, {0.1, 0.2, 0.3}, normal);
        const PixelSteps steps = rays.stepsOn(point, normal, ray.direction());
        const Vec3d right = (meet(rays.through(x + nearby, y), point, normal) - point) / nearby;
        const Vec3d up = (meet(rays.through(x, y - nearby), point, normal) - point) / nearby;
        EXPECT_LT((steps.right - right).length(), 1e-4 * right.length());
        EXPECT_LT((steps.up - up).length(), 1e-4 * up.length());
        EXPECT_NEAR(steps.right * normal, 0.0, 1e-12);
    }
}

} // namespace
