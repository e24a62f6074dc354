#include "OrvVisualization/Coverage_p.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

using namespace orv::vis;

namespace {

using Kind = OutlineStep::Kind;

Outline polygon(const std::vector<OutlinePoint>& corners) {
    Outline outline;
    for (const OutlinePoint& corner : corners) {
        outline.push_back({outline.empty() ? Kind::MOVE : Kind::LINE, corner, {}, {}});
    }
    outline.push_back({Kind::CLOSE, {}, {}, {}});
    return outline;
}

/// A circle of four curves, which deviates by a fiftieth of a percent.
Outline circle(double x, double y, double r) {
    const double c = r * 0.5522847498;
    return {{Kind::MOVE, {x + r, y}, {}, {}},
            {Kind::CURVE, {x, y + r}, {x + r, y + c}, {x + c, y + r}},
            {Kind::CURVE, {x - r, y}, {x - c, y + r}, {x - r, y + c}},
            {Kind::CURVE, {x, y - r}, {x - r, y - c}, {x - c, y - r}},
            {Kind::CURVE, {x + r, y}, {x + c, y - r}, {x + r, y - c}},
            {Kind::CLOSE, {}, {}, {}}};
}

double areaOf(const Outline& outline, int width, int height) {
    double area = 0.0;
    Coverage(outline, width, height).forEachPixel([&](int, int, float share) { area += double(share); });
    return area;
}

/// The shares of all pixels, row by row.
std::vector<float> sharesOf(const Outline& outline, int width, int height) {
    std::vector<float> shares(std::size_t(width) * std::size_t(height));
    Coverage(outline, width, height).forEachPixel([&](int x, int y, float share) {
        shares[std::size_t(y) * std::size_t(width) + std::size_t(x)] = share;
    });
    return shares;
}

TEST(Coverage, RectanglesCoverTheirShareOfEachPixel) {
    // From 0.5 to 2.25 and from 1 to 1.75.
    const std::vector<float> shares = sharesOf(polygon({{0.5, 1}, {2.25, 1}, {2.25, 1.75}, {0.5, 1.75}}), 4, 3);
    const std::vector<float> expected = {0, 0, 0, 0, 0.375F, 0.75F, 0.1875F, 0, 0, 0, 0, 0};
    for (std::size_t i = 0; i < 12; ++i) {
        EXPECT_NEAR(shares[i], expected[i], 1e-6) << i;
    }
}

TEST(Coverage, SlantedBordersDividePixels) {
    // The lower left half of 2 x 2 pixels.
    const std::vector<float> shares = sharesOf(polygon({{0, 0}, {2, 2}, {0, 2}}), 2, 2);
    EXPECT_NEAR(shares[0], 0.5, 1e-6);
    EXPECT_NEAR(shares[1], 0.0, 1e-6);
    EXPECT_NEAR(shares[2], 1.0, 1e-6);
    EXPECT_NEAR(shares[3], 0.5, 1e-6);
    // A flat slope: y = x / 4 cuts four pixels of one row.
    const std::vector<float> flat = sharesOf(polygon({{0, 0}, {4, 1}, {0, 1}}), 4, 1);
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_NEAR(flat[i], 1.0 - (double(i) + 0.5) / 4, 1e-6) << i;
    }
}

TEST(Coverage, SenseOfRotationDoesNotMatter) {
    EXPECT_NEAR(areaOf(polygon({{1, 1}, {4, 2}, {3, 5}}), 8, 8), 5.0, 1e-5);
    EXPECT_NEAR(areaOf(polygon({{3, 5}, {4, 2}, {1, 1}}), 8, 8), 5.0, 1e-5);
}

TEST(Coverage, OverlapsCountOnceAndHolesAreEmpty) {
    Outline two = polygon({{1, 1}, {4, 1}, {4, 4}, {1, 4}});
    const Outline other = polygon({{2, 2}, {5, 2}, {5, 5}, {2, 5}});
    two.insert(two.end(), other.begin(), other.end());
    EXPECT_NEAR(areaOf(two, 8, 8), 9 + 9 - 4, 1e-5);
    Outline ring = polygon({{1, 1}, {7, 1}, {7, 7}, {1, 7}});
    const Outline hole = polygon({{2, 2}, {2, 5}, {5, 5}, {5, 2}});
    ring.insert(ring.end(), hole.begin(), hole.end());
    EXPECT_NEAR(areaOf(ring, 8, 8), 36 - 9, 1e-5);
}

TEST(Coverage, CirclesHaveTheirArea) {
    for (double radius : {0.7, 3.0, 40.0}) {
        const double area = M_PI * radius * radius;
        // Straight pieces stay within 0.02 of the curve.
        EXPECT_NEAR(areaOf(circle(50.3, 50.8, radius), 101, 101), area, 0.02 * 2 * M_PI * radius) << radius;
    }
}

TEST(Coverage, WhatIsOutsideIsCutOff) {
    // Shares of pixels inside are the same as those of a larger picture.
    const Outline slanted = polygon({{-10, -3}, {30, 2}, {25, 14}, {-8, 6}});
    Outline moved = slanted;
    for (OutlineStep& step : moved) {
        step.end.x += 20;
        step.end.y += 20;
    }
    const std::vector<float> small = sharesOf(slanted, 10, 10);
    const std::vector<float> large = sharesOf(moved, 60, 60);
    for (std::size_t y = 0; y < 10; ++y) {
        for (std::size_t x = 0; x < 10; ++x) {
            EXPECT_NEAR(small[y * 10 + x], large[(y + 20) * 60 + x + 20], 1e-5) << x << " " << y;
        }
    }
    EXPECT_EQ(areaOf(polygon({{-5, 1}, {-2, 1}, {-2, 3}}), 8, 8), 0.0);
    EXPECT_EQ(areaOf(polygon({{9, 1}, {12, 1}, {12, 3}}), 8, 8), 0.0);
    EXPECT_EQ(areaOf(polygon({{1, -9}, {5, -9}, {5, -3}}), 8, 8), 0.0);
    EXPECT_NEAR(areaOf(polygon({{-1e9, -1e9}, {1e9, -1e9}, {1e9, 1e9}, {-1e9, 1e9}}), 8, 8), 64.0, 1e-4);
}

TEST(Coverage, ImpossibleOutlinesCoverNothing) {
    const double infinite = std::numeric_limits<double>::infinity();
    EXPECT_EQ(areaOf({}, 8, 8), 0.0);
    EXPECT_EQ(areaOf(polygon({{1, 1}, {std::nan(""), 1}, {4, 4}}), 8, 8), 0.0);
    EXPECT_EQ(areaOf(polygon({{1, 1}, {infinite, 1}, {4, 4}}), 8, 8), 0.0);
    EXPECT_EQ(areaOf(polygon({{1, 1}, {4, 1}, {4, 1.1e9}}), 8, 8), 0.0);
    EXPECT_EQ(areaOf(polygon({{1, 1}, {4, 1}, {4, 4}}), 0, 0), 0.0);
}

} // namespace
