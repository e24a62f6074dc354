#include "OrvUnstructGrid/CuttingPlane.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using orv::Vec3d;
using orv::ug::CuttingPlane;

namespace {

TEST(CuttingPlane, IsThroughTheOriginAtFirst) {
    const CuttingPlane plane;
    EXPECT_EQ(plane.point(), Vec3d(0, 0, 0));
    EXPECT_EQ(plane.normal(), Vec3d(0, 0, 1));
    EXPECT_EQ(plane.mapScalarResultId(), -1);
    EXPECT_TRUE(plane.isVisible());
}

TEST(CuttingPlane, KeepsWhatIsSet) {
    CuttingPlane plane;
    EXPECT_TRUE(plane.setPlane({1, 2, 3}, {0, -4, 3}));
    EXPECT_EQ(plane.point(), Vec3d(1, 2, 3));
    EXPECT_NEAR((plane.normal() - Vec3d(0, -0.8, 0.6)).length(), 0.0, 1e-15);
    plane.setMapScalarResultId(4);
    EXPECT_EQ(plane.mapScalarResultId(), 4);
    plane.setVisible(false);
    EXPECT_FALSE(plane.isVisible());
}

TEST(CuttingPlane, TakesNormalsOfAnyLength) {
    CuttingPlane plane;
    for (double length : {1e-300, 1.0, 1e308}) {
        EXPECT_TRUE(plane.setPlane({0, 0, 0}, {length, 0, -length}));
        EXPECT_NEAR((plane.normal() - Vec3d(1, 0, -1) / std::sqrt(2.0)).length(), 0.0, 1e-15);
    }
}

TEST(CuttingPlane, KeepsTheNormalThatItGave) {
    for (int i = 1; i <= 1000; ++i) {
        CuttingPlane plane;
        ASSERT_TRUE(plane.setPlane({}, {i * 0.7, 1.0 / i, i * i * 0.3}));
        const Vec3d normal = plane.normal();
        EXPECT_NEAR(normal * normal, 1.0, 1e-14);
        ASSERT_TRUE(plane.setPlane({}, normal));
        EXPECT_EQ(plane.normal(), normal);
    }
}

TEST(CuttingPlane, RefusesWhatIsNoPlane) {
    const double infinity = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    CuttingPlane plane;
    plane.setPlane({1, 2, 3}, {1, 0, 0});
    EXPECT_FALSE(plane.setPlane({4, 5, 6}, {0, 0, 0}));
    EXPECT_FALSE(plane.setPlane({4, 5, 6}, {0, nan, 1}));
    EXPECT_FALSE(plane.setPlane({4, 5, 6}, {0, infinity, 1}));
    EXPECT_FALSE(plane.setPlane({4, infinity, 6}, {0, 0, 1}));
    EXPECT_FALSE(plane.setPlane({nan, 5, 6}, {0, 0, 1}));
    EXPECT_EQ(plane.point(), Vec3d(1, 2, 3));
    EXPECT_EQ(plane.normal(), Vec3d(1, 0, 0));
}

} // namespace
