#include "OrvCore/Ray.h"

#include <gtest/gtest.h>

using orv::Ray;
using orv::Vec3d;

namespace {

TEST(Ray, StartsAtTheOriginWithoutADirection) {
    Ray ray;
    EXPECT_EQ(ray.origin(), Vec3d(0, 0, 0));
    EXPECT_EQ(ray.direction(), Vec3d(0, 0, 0));
}

TEST(Ray, KeepsOriginAndDirectionAsGiven) {
    Ray ray;
    ray.setOrigin(Vec3d(1, 2, 3));
    ray.setDirection(Vec3d(0, 0, -10));
    EXPECT_EQ(ray.origin(), Vec3d(1, 2, 3));
    EXPECT_EQ(ray.direction(), Vec3d(0, 0, -10));
}

} // namespace
