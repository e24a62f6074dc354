#include "LibUnstructGrid/VTOGeometryMathNormal.h"

#include "Tests/LibUnstructGrid/VectorSupport.h"

#include <vector>

using orvtest::near;

namespace {

const VTVector untouched(7, 7, 7);

/// The normal of three nodes, themselves and through indexes, which must agree.
bool triangleNormal(const VTVector& p0, const VTVector& p1, const VTVector& p2, bool normalize, VTVector* normal) {
    const bool found = VTComputeTriangleNormal(p0, p1, p2, normal, normalize);
    const VTVector nodes[] = {p2, untouched, p0, p1};
    const int connectivity[] = {2, 3, 0};
    VTVector indexed = untouched;
    EXPECT_EQ(VTComputeTriangleNormal(connectivity, nodes, &indexed, normalize), found);
    EXPECT_EQ(indexed, *normal);
    return found;
}

TEST(ComputeTriangleNormal, IsTheCrossProductOfTwoSides) {
    VTVector normal = untouched;
    EXPECT_TRUE(triangleNormal({1, 1, 1}, {3, 1, 1}, {1, 4, 1}, false, &normal));
    EXPECT_EQ(normal, VTVector(0, 0, 6));
    EXPECT_TRUE(triangleNormal({1, 1, 1}, {1, 4, 1}, {3, 1, 1}, false, &normal));
    EXPECT_EQ(normal, VTVector(0, 0, -6));
    EXPECT_TRUE(triangleNormal(VT_XAXIS_VEC, VT_YAXIS_VEC, VT_ZAXIS_VEC, false, &normal));
    EXPECT_EQ(normal, VTVector(1, 1, 1));
    EXPECT_TRUE(triangleNormal({1, 1, 1}, {1, 4, 1}, {3, 1, 1}, true, &normal));
    EXPECT_EQ(normal, VTVector(0, 0, -1));
}

TEST(ComputeTriangleNormal, OfADegenerateTriangleIsTheZAxis) {
    for (const bool normalize : {true, false}) {
        VTVector normal = untouched;
        EXPECT_FALSE(triangleNormal({0, 0, 0}, {1, 2, 3}, {2, 4, 6}, normalize, &normal));
        EXPECT_EQ(normal, VT_ZAXIS_VEC);
        EXPECT_FALSE(triangleNormal({1, 2, 3}, {1, 2, 3}, {1, 2, 3}, normalize, &normal));
        EXPECT_EQ(normal, VT_ZAXIS_VEC);
        EXPECT_FALSE(triangleNormal({std::nan(""), 0, 0}, {1, 0, 0}, {0, 1, 0}, normalize, &normal));
        EXPECT_EQ(normal, VT_ZAXIS_VEC);
    }
}

// The squared length of (length, 0, 0) on either side of the float 1e-25, which is 1.0000000195e-25.
TEST(ComputeTriangleNormal, LimitIsTheFloat) {
    VTVector normal = untouched;
    const double below = std::sqrt(1.000000015e-25);
    EXPECT_FALSE(triangleNormal({0, 0, 0}, {0, below, 0}, {0, 0, 1}, false, &normal));
    EXPECT_EQ(normal, VT_ZAXIS_VEC);
    const double above = std::sqrt(1.000000025e-25);
    EXPECT_TRUE(triangleNormal({0, 0, 0}, {0, above, 0}, {0, 0, 1}, false, &normal));
    EXPECT_EQ(normal, VTVector(above, 0, 0));
    EXPECT_TRUE(triangleNormal({0, 0, 0}, {0, above, 0}, {0, 0, 1}, true, &normal));
    EXPECT_EQ(normal, VT_XAXIS_VEC);
}

/// The normal of a polygon of all nodes in order, without a list and with one that goes through other nodes.
VTVector polygonNormal(const std::vector<VTVector>& nodes) {
    VTVector normal = untouched;
    const int count = static_cast<int>(nodes.size());
    VTComputePolygonNormal(nullptr, count, nodes.data(), &normal);
    std::vector<VTVector> reversed(nodes.rbegin(), nodes.rend());
    std::vector<int> connectivity;
    for (int i = 0; i < count; ++i) {
        connectivity.push_back(count - 1 - i);
    }
    VTVector indexed = untouched;
    VTComputePolygonNormal(connectivity.data(), count, reversed.data(), &indexed);
    EXPECT_EQ(indexed, normal);
    return normal;
}

TEST(ComputePolygonNormal, NeedsThreeNodes) {
    EXPECT_EQ(polygonNormal({}), VT_ZAXIS_VEC);
    EXPECT_EQ(polygonNormal({{1, 2, 3}}), VT_ZAXIS_VEC);
    EXPECT_EQ(polygonNormal({{1, 2, 3}, {0, 0, 5}}), VT_ZAXIS_VEC);
    EXPECT_EQ(polygonNormal({{1, 1, 1}, {1, 3, 1}, {1, 1, 4}}), VT_XAXIS_VEC);
    EXPECT_EQ(polygonNormal({{1, 1, 1}, {1, 1, 4}, {1, 3, 1}}), VT_NEG_XAXIS_VEC);
    EXPECT_EQ(polygonNormal({{0, 0, 0}, {1, 2, 3}, {2, 4, 6}}), VT_ZAXIS_VEC) << "on one line";
}

// Around node 0 in the origin: (0 1 2) has the normal (0, 0, 1), (0 2 3) has (3, 0, 0), and (0 3 4) is (0, 0, 3) x the
// last node.
TEST(ComputePolygonNormal, LargestTriangleOfTheFanWins) {
    const std::vector<VTVector> fan = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 3}};
    EXPECT_EQ(polygonNormal(fan), VT_XAXIS_VEC);
    std::vector<VTVector> five = fan;
    five.push_back({0.5, 0, 0}); // (0, 1.5, 0)
    EXPECT_EQ(polygonNormal(five), VT_XAXIS_VEC);
    five.back() = {2, 0, 0}; // (0, 6, 0)
    EXPECT_EQ(polygonNormal(five), VT_YAXIS_VEC);
    five[1] = {100, 0, 0}; // (0, 0, 100)
    EXPECT_EQ(polygonNormal(five), VT_ZAXIS_VEC);
    // (1, 0, 0) and (0, 1, 0) are equally large.
    EXPECT_EQ(polygonNormal({{0, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 0}}), VT_XAXIS_VEC);
}

// Even positions in the plane across x or y, odd ones far off it.
TEST(ComputePolygonNormal, SixAndEightNodesUseTheEvenPositions) {
    const VTVector off(50, 60, 70);
    EXPECT_EQ(polygonNormal({{0, 0, 0}, off, {0, 1, 0}, 2 * off, {0, 0, 1}, {90, 0, 0}}), VT_XAXIS_VEC);
    // (0 4 6) is (0, 0, 1) x the sixth: (0, 0.5, 0) and (0, 3, 0).
    EXPECT_EQ(polygonNormal({{0, 0, 0}, off, {0, 1, 0}, -off, {0, 0, 1}, {90, 0, 0}, {0.5, 0, 0}, {0, 90, 0}}),
              VT_XAXIS_VEC);
    EXPECT_EQ(polygonNormal({{0, 0, 0}, off, {0, 1, 0}, -off, {0, 0, 1}, {90, 0, 0}, {3, 0, 0}, {0, 90, 0}}),
              VT_YAXIS_VEC);
    // Seven and nine are plain fans, whose last triangle, (0, 0, 1) x (9, 0, 0), is the largest.
    const VTVector near0(0, 0.1, 0);
    EXPECT_EQ(polygonNormal({{0, 0, 0}, near0, near0, near0, {0, 0.1, 0.1}, {0, 0, 1}, {9, 0, 0}}), VT_YAXIS_VEC);
    EXPECT_EQ(polygonNormal({{0, 0, 0}, near0, near0, near0, near0, near0, {0, 0.1, 0.1}, {0, 0, 1}, {9, 0, 0}}),
              VT_YAXIS_VEC);
}

// Far below what VTVector::Normalize() takes.
TEST(ComputePolygonNormal, LimitIsTheSquaredLength) {
    const double above = std::sqrt(1.1e-80);
    EXPECT_TRUE(near(polygonNormal({{0, 0, 0}, {0, above, 0}, {0, 0, 1}}), VT_XAXIS_VEC, 1e-15));
    const double below = std::sqrt(0.9e-80);
    EXPECT_EQ(polygonNormal({{0, 0, 0}, {0, below, 0}, {0, 0, 1}}), VT_ZAXIS_VEC);
}

TEST(GetPolyCenteroid, IsTheAverage) {
    const VTVector nodes[] = {{1, 10, 100}, {3, 20, 300}, {8, 60, 500}, {900, 900, 900}};
    const int connectivity[] = {2, 0, 1};
    VTVector center = untouched;
    VTGetPolyCenteroid(connectivity, 3, nodes, &center, nullptr);
    EXPECT_EQ(center, VTVector(4, 30, 300));
    // 2 and 0 lead to 1 and 0.
    const int map[] = {0, 2, 1};
    VTGetPolyCenteroid(connectivity, 2, nodes, &center, map);
    EXPECT_EQ(center, VTVector(2, 15, 200));
    VTGetPolyCenteroid(connectivity, 0, nodes, &center, nullptr);
    EXPECT_TRUE(std::isnan(center.x) && std::isnan(center.y) && std::isnan(center.z));
}

} // namespace
