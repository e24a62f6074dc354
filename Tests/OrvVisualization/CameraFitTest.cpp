#include "OrvVisualization/CameraFit_p.h"

#include "Tests/OrvVisualization/ShapesModel.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace {

using orv::Vec3d;
using orv::vis::Camera;
using orv::vis::fitCamera;
using orv::vis::Shape;
using orvtest::Mesh;

/// A cloud of points, longer than it is wide.
Mesh cloud(const Vec3d& center, double radius) {
    std::mt19937 engine(7);
    auto random = [&engine] { return engine() / 4294967296.0 - 0.5; };
    Mesh mesh;
    mesh.kind = Shape::SPHERES;
    mesh.radius = radius;
    for (std::uint32_t i = 0; i < 200; ++i) {
        const Vec3d point = center + Vec3d(8 * random(), 3 * random(), 2 * random());
        mesh.coordinates.insert(mesh.coordinates.end(), {point.x(), point.y(), point.z()});
        mesh.corners.push_back(i);
    }
    return mesh;
}

bool fit(const Mesh& mesh, double aspect, Camera* camera, double leftRoom = 0.0) {
    const Shape shape = mesh.shape();
    const Shape* shapes[] = {&shape};
    return fitCamera(shapes, aspect, leftRoom, camera);
}

/// How far from the middle of the picture, 1 being its border, the outermost point is on each side.
struct Reach {
    double left = 0.0;
    double right = 0.0;
    double top = 0.0;
    double bottom = 0.0;
};

Reach reachOf(const Mesh& mesh, const Camera& camera, double aspect) {
    constexpr int height = 1000;
    const int width = int(height * aspect);
    Reach reach;
    for (std::size_t i = 0; i < mesh.coordinates.size(); i += 3) {
        const double* p = &mesh.coordinates[i];
        double x = 0;
        double y = 0;
        EXPECT_TRUE(camera.project({p[0], p[1], p[2]}, width, height, &x, &y, nullptr));
        reach.left = std::max(reach.left, 1 - 2 * x / width);
        reach.right = std::max(reach.right, 2 * x / width - 1);
        reach.top = std::max(reach.top, 1 - 2 * y / height);
        reach.bottom = std::max(reach.bottom, 2 * y / height - 1);
    }
    return reach;
}

/// From all sides, in both projections. Points count as small balls, so up to a hundredth of the picture is left.
TEST(CameraFit, TouchesTheMarginOnTwoSides) {
    constexpr double margin = 1 / 1.05;
    for (const double offset : {0.0, 1e6}) {
        const Mesh mesh = cloud({offset, -offset, 3}, 0.0);
        for (const double aspect : {0.5, 1.0, 2.0}) {
            for (const Vec3d& toEye : {Vec3d(1, -1, 1), Vec3d(0, -1, 0), Vec3d(-3, 0.2, 0.1), Vec3d(0, 0, -1)}) {
                for (const bool isParallel : {false, true}) {
                    Camera camera;
                    camera.setFromLookAt(toEye, {0, 0, 0}, {0.1, 0.3, 1});
                    if (isParallel) {
                        camera.setParallel(1);
                    }
                    Vec3d eye;
                    Vec3d target;
                    Vec3d up;
                    camera.toLookAt(&eye, &target, &up);
                    const Vec3d sight = (target - eye) / (target - eye).length();

                    ASSERT_TRUE(fit(mesh, aspect, &camera));
                    const Reach reach = reachOf(mesh, camera, aspect);
                    const double across = std::min(reach.left, reach.right);
                    const double upwards = std::min(reach.top, reach.bottom);
                    EXPECT_LT(std::max({reach.left, reach.right, reach.top, reach.bottom}), margin);
                    EXPECT_GT(std::max(across, upwards), margin - 0.02) << aspect << ' ' << isParallel;
                    EXPECT_EQ(camera.isParallel(), isParallel);

                    Vec3d newUp;
                    camera.toLookAt(&eye, &target, &newUp);
                    EXPECT_LT((up - newUp).length(), 1e-9) << "turned";
                    EXPECT_LT((sight - (target - eye) / (target - eye).length()).length(), 1e-9) << "turned";
                }
            }
        }
    }
}

// A fifth at the left stays free, so what is wide goes from -1 + 2/5 to 1, less the margin.
TEST(CameraFit, LeavesRoomAtTheLeft) {
    constexpr double margin = 1 / 1.05;
    for (const bool isParallel : {false, true}) {
        Camera camera;
        camera.setFromLookAt({0, -1, 0}, {0, 0, 0}, {0, 0, 1});
        if (isParallel) {
            camera.setParallel(1);
        }
        const Mesh mesh = cloud({5, 6, 7}, 0.0);
        ASSERT_TRUE(fit(mesh, 1.0, &camera, 0.2));
        const Reach reach = reachOf(mesh, camera, 1.0);
        EXPECT_NEAR(reach.left, 0.6 * margin, 0.01);
        EXPECT_LT(reach.left, 0.6 * margin);
        EXPECT_NEAR(reach.right, margin, 0.01);
        EXPECT_LT(reach.right, margin);
        EXPECT_NEAR(reach.top, reach.bottom, 0.05);
    }
}

TEST(CameraFit, WhatDoesNotNeedTheRoomStaysInTheMiddle) {
    for (const bool isParallel : {false, true}) {
        Camera camera;
        camera.setFromLookAt({0, -1, 0}, {0, 0, 0}, {0, 0, 1});
        if (isParallel) {
            camera.setParallel(1);
        }
        Camera other = camera;
        const Mesh mesh = cloud({5, 6, 7}, 0.0);
        ASSERT_TRUE(fit(mesh, 8.0, &camera, 0.1));
        ASSERT_TRUE(fit(mesh, 8.0, &other));
        Vec3d eye;
        Vec3d otherEye;
        camera.toLookAt(&eye, nullptr, nullptr);
        other.toLookAt(&otherEye, nullptr, nullptr);
        EXPECT_LT((eye - otherEye).length(), 1e-12);
    }
}

// Seen by the angle a under which a ball of radius r just fits, the eye is r / sin(a) away; the margin is on tan(a).
TEST(CameraFit, BallsCountWithTheirRadius) {
    Mesh ball;
    ball.kind = Shape::SPHERES;
    ball.radius = 2.0;
    ball.coordinates = {5, 6, 7};
    ball.corners = {0};
    Camera camera;
    camera.setFromLookAt({0, 0, 1}, {0, 0, 0}, {0, 1, 0});
    camera.setPerspective(60);
    ASSERT_TRUE(fit(ball, 1.0, &camera));
    Vec3d eye;
    Vec3d target;
    camera.toLookAt(&eye, &target, nullptr);
    const double distance = 2.0 / std::sin(std::atan(std::tan(M_PI / 6) / 1.05));
    EXPECT_LT((eye - Vec3d(5, 6, 7 + distance)).length(), 1e-12);
    EXPECT_LT((target - Vec3d(5, 6, 7)).length(), 1e-12);

    camera.setParallel(1);
    ASSERT_TRUE(fit(ball, 0.5, &camera));
    EXPECT_DOUBLE_EQ(camera.height(), 1.05 * 4.0 / 0.5);
}

// A line along the line of sight still leaves room for the eye before it.
TEST(CameraFit, ALineSeenFromItsEnd) {
    Mesh line;
    line.kind = Shape::SPHERES;
    line.coordinates = {0, 0, 0, 0, 0, 10};
    line.corners = {0, 1};
    for (const bool isParallel : {false, true}) {
        Camera camera;
        camera.setFromLookAt({0, 0, 1}, {0, 0, 0}, {0, 1, 0});
        if (isParallel) {
            camera.setParallel(1);
        }
        ASSERT_TRUE(fit(line, 1.0, &camera));
        Vec3d eye;
        camera.toLookAt(&eye, nullptr, nullptr);
        EXPECT_GT(eye.z(), 10.0);
    }
}

TEST(CameraFit, PointsThatAreNotDrawnDoNotCount) {
    Mesh mesh = cloud({0, 0, 0}, 0.0);
    Camera expected;
    ASSERT_TRUE(fit(mesh, 1.5, &expected));
    mesh.coordinates.insert(mesh.coordinates.end(), {1e3, 0, 0}); // No corner.
    const std::size_t last = mesh.coordinates.size() / 3;
    for (const double bad : {std::numeric_limits<double>::quiet_NaN(), 1e100, orv::UNDEFINED_DOUBLE}) {
        mesh.corners.push_back(std::uint32_t(mesh.coordinates.size() / 3));
        mesh.coordinates.insert(mesh.coordinates.end(), {0, bad, 0});
    }
    ASSERT_EQ(mesh.corners.back(), last + 2);
    Camera camera;
    ASSERT_TRUE(fit(mesh, 1.5, &camera));
    Vec3d eye;
    Vec3d expectedEye;
    camera.toLookAt(&eye, nullptr, nullptr);
    expected.toLookAt(&expectedEye, nullptr, nullptr);
    EXPECT_EQ(eye, expectedEye);
}

TEST(CameraFit, WhatCannotBeFittedChangesNothing) {
    Mesh point;
    point.kind = Shape::SPHERES;
    point.coordinates = {5, 5, 5};
    point.corners = {0};
    Camera camera;
    EXPECT_FALSE(fit(point, 1.0, &camera)) << "a point without a size";
    EXPECT_FALSE(fit(Mesh(), 1.0, &camera));
    EXPECT_FALSE(fitCamera({}, 1.0, 0.0, &camera));
    for (const double aspect :
         {0.0, -1.0, std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
        EXPECT_FALSE(fit(cloud({0, 0, 0}, 1.0), aspect, &camera)) << aspect;
    }
    Vec3d eye;
    camera.toLookAt(&eye, nullptr, nullptr);
    EXPECT_EQ(eye, Vec3d(0, 0, 1));
}

} // namespace
