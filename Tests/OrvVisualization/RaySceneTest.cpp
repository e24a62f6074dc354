#include "OrvVisualization/RayScene.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>
#include <random>
#include <vector>

namespace {

using orv::Ray;
using orv::UNDEFINED_SIZE_T;
using orv::Vec3d;
using orv::vis::RayHit;
using orv::vis::RayScene;

Ray rayFrom(const Vec3d& origin, const Vec3d& direction) {
    Ray ray;
    ray.setOrigin(origin);
    ray.setDirection(direction);
    return ray;
}

std::optional<RayHit> shoot(const RayScene& scene, const Ray& ray) {
    RayHit hit;
    return scene.intersect(ray, &hit) ? std::optional(hit) : std::nullopt;
}

/// Points and triangles.
struct Mesh {
    std::vector<double> coordinates;
    std::vector<std::uint32_t> corners;

    Vec3d point(std::size_t corner) const {
        const std::size_t at = std::size_t(corners[corner]) * 3;
        return {coordinates[at], coordinates[at + 1], coordinates[at + 2]};
    }
};

/// A square of two triangles at a height, from 0 to 2 in x and y.
Mesh square(double z) {
    return {{0, 0, z, 2, 0, z, 2, 2, z, 0, 2, z}, {0, 1, 2, 0, 2, 3}};
}

/// A ball of triangles with `rings` rings of twice as many points.
Mesh ball(const Vec3d& center, double radius, std::uint32_t rings) {
    Mesh mesh;
    const std::uint32_t around = 2 * rings;
    for (std::uint32_t ring = 0; ring <= rings; ++ring) {
        const double polar = M_PI * ring / rings;
        for (std::uint32_t i = 0; i < around; ++i) {
            const double angle = 2.0 * M_PI * i / around;
            mesh.coordinates.push_back(center.x() + radius * std::sin(polar) * std::cos(angle));
            mesh.coordinates.push_back(center.y() + radius * std::sin(polar) * std::sin(angle));
            mesh.coordinates.push_back(center.z() + radius * std::cos(polar));
        }
    }
    for (std::uint32_t ring = 0; ring < rings; ++ring) {
        for (std::uint32_t i = 0; i < around; ++i) {
            const std::uint32_t a = ring * around + i;
            const std::uint32_t b = ring * around + (i + 1) % around;
            mesh.corners.insert(mesh.corners.end(), {a, a + around, b, b, a + around, b + around});
        }
    }
    return mesh;
}

/// The distance to the plane of the first triangle that a ray meets well inside, by solving three equations in long
/// double; infinity when there is none. Sets `isDoubtful` when a ray passes an edge too closely to be sure.
long double nearestByEquations(const Mesh& mesh, const Ray& ray, bool* isDoubtful) {
    auto dot = [](const long double* a, const long double* b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; };
    auto cross = [](const long double* a, const long double* b, long double* c) {
        c[0] = a[1] * b[2] - a[2] * b[1];
        c[1] = a[2] * b[0] - a[0] * b[2];
        c[2] = a[0] * b[1] - a[1] * b[0];
    };
    long double nearest = std::numeric_limits<long double>::infinity();
    for (std::size_t t = 0; t < mesh.corners.size(); t += 3) {
        long double side1[3];
        long double side2[3];
        long double from[3];
        long double direction[3];
        for (std::size_t i = 0; i < 3; ++i) {
            side1[i] = (long double)(mesh.point(t + 1)[i]) - mesh.point(t)[i];
            side2[i] = (long double)(mesh.point(t + 2)[i]) - mesh.point(t)[i];
            from[i] = (long double)(ray.origin()[i]) - mesh.point(t)[i];
            direction[i] = ray.direction()[i];
        }
        long double p[3];
        long double q[3];
        cross(direction, side2, p);
        cross(from, side1, q);
        const long double determinant = dot(side1, p);
        if (std::abs(determinant) < 1e-14L) {
            continue;
        }
        const long double u = dot(from, p) / determinant;
        const long double v = dot(direction, q) / determinant;
        const long double distance = dot(side2, q) / determinant;
        const long double inside = std::min({u, v, 1.0L - u - v});
        *isDoubtful = *isDoubtful || std::abs(inside) < 1e-7L || std::abs(distance) < 1e-9L;
        if (inside >= 0.0L && distance >= 0.0L) {
            nearest = std::min(nearest, distance);
        }
    }
    return nearest;
}

TEST(RayScene, TellsEverythingAboutAHit) {
    const Mesh mesh = square(1.0);
    RayScene scene;
    EXPECT_EQ(scene.addFaces(mesh.coordinates, mesh.corners, {}), 0u);
    ASSERT_TRUE(scene.commit(nullptr));
    const auto hit = shoot(scene, rayFrom({0.5, 1, 5}, {0, 0, -2}));
    ASSERT_TRUE(hit);
    EXPECT_EQ(hit->mesh, 0u);
    EXPECT_EQ(hit->primitive, 1u);
    EXPECT_EQ(hit->triangle, 1u);
    EXPECT_DOUBLE_EQ(hit->distance, 2.0);
    EXPECT_EQ(hit->point, Vec3d(0.5, 1, 1));
    EXPECT_EQ(hit->normal, Vec3d(0, 0, 1));
    // (0.5, 1) = 1/2 (0,0) + 1/4 (2,2) + 1/4 (0,2)
    EXPECT_DOUBLE_EQ(hit->weights[0], 0.5);
    EXPECT_DOUBLE_EQ(hit->weights[1], 0.25);
    EXPECT_DOUBLE_EQ(hit->weights[2], 0.25);
}

TEST(RayScene, AFaceOfSeveralTrianglesIsOnePrimitive) {
    const Mesh mesh = square(1.0);
    const std::vector<std::uint32_t> faceOffsets = {0, 2};
    RayScene scene;
    scene.addFaces(mesh.coordinates, mesh.corners, faceOffsets);
    ASSERT_TRUE(scene.commit(nullptr));
    const auto hit = shoot(scene, rayFrom({0.5, 1, 5}, {0, 0, -2}));
    ASSERT_TRUE(hit);
    EXPECT_EQ(hit->primitive, 0u);
    EXPECT_EQ(hit->triangle, 1u);
}

TEST(RayScene, TheNearestOfSeveralMeshesIsMet) {
    const Mesh low = square(1.0);
    const Mesh high = square(2.0);
    RayScene scene;
    scene.addFaces(low.coordinates, low.corners, {});
    EXPECT_EQ(scene.addFaces(high.coordinates, high.corners, {}), 1u);
    ASSERT_TRUE(scene.commit(nullptr));
    EXPECT_EQ(shoot(scene, rayFrom({0.5, 1, 5}, {0, 0, -1}))->mesh, 1u);
    EXPECT_EQ(shoot(scene, rayFrom({0.5, 1, -5}, {0, 0, 1}))->mesh, 0u);
    EXPECT_EQ(shoot(scene, rayFrom({0.5, 1, 1.5}, {0, 0, -1}))->mesh, 0u) << "from between the two";
}

TEST(RayScene, AtOneDistanceWhatWasAddedFirstIsMet) {
    const Mesh mesh = square(1.0);
    RayScene scene;
    scene.addFaces(mesh.coordinates, mesh.corners, {});
    scene.addFaces(mesh.coordinates, mesh.corners, {});
    ASSERT_TRUE(scene.commit(nullptr));
    const auto hit = shoot(scene, rayFrom({1, 1, 5}, {0, 0, -1})); // On the edge of both triangles.
    ASSERT_TRUE(hit);
    EXPECT_EQ(hit->mesh, 0u);
    EXPECT_EQ(hit->triangle, 0u);
}

TEST(RayScene, TubesAndSpheresAreMetWithTheirNormals) {
    const std::vector<double> coordinates = {0, 0, 0, 4, 0, 0, 0, 5, 0};
    const std::vector<std::uint32_t> ends = {0, 1};
    const std::vector<std::uint32_t> points = {2};
    RayScene scene;
    scene.addTubes(coordinates, ends, 0.5);
    scene.addSpheres(coordinates, points, 1.0);
    ASSERT_TRUE(scene.commit(nullptr));

    const auto tube = shoot(scene, rayFrom({1, 0, 5}, {0, 0, -1}));
    ASSERT_TRUE(tube);
    EXPECT_EQ(tube->mesh, 0u);
    EXPECT_EQ(tube->primitive, 0u);
    EXPECT_EQ(tube->triangle, UNDEFINED_SIZE_T);
    EXPECT_EQ(tube->point, Vec3d(1, 0, 0.5));
    EXPECT_EQ(tube->normal, Vec3d(0, 0, 1));
    EXPECT_DOUBLE_EQ(tube->weights[0], 0.75);
    EXPECT_DOUBLE_EQ(tube->weights[1], 0.25);

    const auto sphere = shoot(scene, rayFrom({-9, 5, 0}, {1, 0, 0}));
    ASSERT_TRUE(sphere);
    EXPECT_EQ(sphere->mesh, 1u);
    EXPECT_EQ(sphere->point, Vec3d(-1, 5, 0));
    EXPECT_EQ(sphere->normal, Vec3d(-1, 0, 0));
    EXPECT_EQ(sphere->weights[0], 1.0);
}

TEST(RayScene, NothingIsMetWithoutCommitDirectionOrMesh) {
    const Mesh mesh = square(1.0);
    RayScene scene;
    scene.addFaces(mesh.coordinates, mesh.corners, {});
    RayHit hit;
    hit.distance = 7.0;
    EXPECT_FALSE(scene.intersect(rayFrom({1, 1, 5}, {0, 0, -1}), &hit));
    ASSERT_TRUE(scene.commit(nullptr));
    EXPECT_FALSE(scene.intersect(rayFrom({1, 1, 5}, {0, 0, 0}), &hit));
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(scene.intersect(rayFrom({1, 1, 5}, {0, 0, nan}), &hit));
    EXPECT_FALSE(scene.intersect(rayFrom({nan, 1, 5}, {0, 0, -1}), &hit));
    EXPECT_EQ(hit.distance, 7.0) << "written without a hit";

    RayScene empty;
    ASSERT_TRUE(empty.commit(nullptr));
    EXPECT_FALSE(empty.intersect(rayFrom({1, 1, 5}, {0, 0, -1}), &hit));
}

TEST(RayScene, PrimitivesWithBadCoordinatesAreLeftOut) {
    for (const double bad : {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
                             orv::UNDEFINED_DOUBLE, -1e100}) {
        Mesh mesh = square(1.0);
        mesh.coordinates[1 * 3 + 2] = bad; // Of the first triangle alone.
        RayScene scene;
        scene.addFaces(mesh.coordinates, mesh.corners, {});
        ASSERT_TRUE(scene.commit(nullptr));
        EXPECT_FALSE(shoot(scene, rayFrom({1.5, 0.5, 5}, {0, 0, -1}))) << bad;
        EXPECT_TRUE(shoot(scene, rayFrom({0.5, 1.5, 5}, {0, 0, -1}))) << bad;
    }
}

// The eye is a million sizes away, where a float has steps of a sixteenth of the square.
TEST(RayScene, IsMetFromFarAway) {
    const Mesh mesh = square(1.0);
    RayScene scene;
    scene.addFaces(mesh.coordinates, mesh.corners, {});
    ASSERT_TRUE(scene.commit(nullptr));
    const Vec3d eye(3e5, -7e5, 1e6);
    for (const double x : {1e-4, 0.7, 2.0 - 1e-4}) {
        const Vec3d target(x, 1.0, 1.0);
        const auto hit = shoot(scene, rayFrom(eye, target - eye));
        ASSERT_TRUE(hit) << x;
        EXPECT_NEAR(hit->distance, 1.0, 1e-12);
        EXPECT_LT((hit->point - target).length(), 1e-8);
    }
    EXPECT_FALSE(shoot(scene, rayFrom(eye, Vec3d(-1e-4, 1.0, 1.0) - eye)));
    EXPECT_FALSE(shoot(scene, rayFrom(eye, Vec3d(2.0 + 1e-4, 1.0, 1.0) - eye)));
}

// Sizes beyond what floats can hold.
TEST(RayScene, AnySizeOfModelWill) {
    for (const double size : {1e-60, 1.0, 1e60}) {
        Mesh mesh = square(1.0);
        for (double& x : mesh.coordinates) {
            x *= size;
        }
        RayScene scene;
        scene.addFaces(mesh.coordinates, mesh.corners, {});
        ASSERT_TRUE(scene.commit(nullptr));
        const auto hit = shoot(scene, rayFrom({0.5 * size, size, 5 * size}, {0, 0, -1}));
        ASSERT_TRUE(hit) << size;
        EXPECT_NEAR(hit->distance / size, 4.0, 1e-14) << size;
    }
}

TEST(RayScene, AgreesWithEquationsInLongDouble) {
    std::mt19937 random(21);
    std::normal_distribution<double> position;
    for (const double offset : {0.0, 1e6}) {
        const Mesh mesh = ball({offset, -offset, 0.5}, 1.0, 12);
        RayScene scene;
        scene.addFaces(mesh.coordinates, mesh.corners, {});
        ASSERT_TRUE(scene.commit(nullptr));
        int metCount = 0;
        int doubtfulCount = 0;
        for (int i = 0; i < 4000; ++i) {
            auto point = [&] {
                return Vec3d(offset + position(random), position(random) - offset, 0.5 + position(random));
            };
            const Vec3d eye = point();
            const Ray ray = rayFrom(eye, point() - eye);
            bool isDoubtful = false;
            const long double expected = nearestByEquations(mesh, ray, &isDoubtful);
            if (isDoubtful) {
                ++doubtfulCount;
                continue;
            }
            const auto hit = shoot(scene, ray);
            ASSERT_EQ(hit.has_value(), std::isfinite(expected)) << "ray " << i << ", offset " << offset;
            if (hit) {
                ++metCount;
                EXPECT_NEAR(hit->distance, double(expected), 1e-8 * (1.0 + double(expected)));
            }
        }
        EXPECT_GT(metCount, 1000);
        EXPECT_LT(doubtfulCount, 40);
    }
}

// A convex ball: a point is seen from the eye when it looks that way by more than the bend of the rings.
TEST(RayScene, EveryVisibleCornerIsMetAtThatCorner) {
    std::mt19937 random(22);
    std::normal_distribution<double> position;
    for (const double offset : {0.0, 1e6}) {
        const Vec3d center(offset, offset, -offset);
        const Mesh mesh = ball(center, 1.0, 24);
        RayScene scene;
        scene.addFaces(mesh.coordinates, mesh.corners, {});
        ASSERT_TRUE(scene.commit(nullptr));
        int visibleCount = 0;
        for (int view = 0; view < 20; ++view) {
            const Vec3d toEye(position(random), position(random), position(random));
            const Vec3d eye = center + toEye * (4.0 / toEye.length());
            for (std::size_t p = 0; p < mesh.coordinates.size(); p += 3) {
                const Vec3d corner(mesh.coordinates[p], mesh.coordinates[p + 1], mesh.coordinates[p + 2]);
                if ((corner - center) * (eye - corner) < 0.3) {
                    continue;
                }
                ++visibleCount;
                const auto hit = shoot(scene, rayFrom(eye, corner - eye));
                ASSERT_TRUE(hit);
                EXPECT_LT((hit->point - corner).length(), 1e-8);
                EXPECT_GT(std::max({hit->weights[0], hit->weights[1], hit->weights[2]}), 1.0 - 1e-6);
            }
        }
        EXPECT_GT(visibleCount, 5000);
    }
}

} // namespace
