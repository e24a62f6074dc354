#include "LibUnstructGrid/VTOGeometryMathPolygon.h"

#include "Tests/LibUnstructGrid/VectorSupport.h"

#include <algorithm>
#include <vector>

using orvtest::near;
using orvtest::PortableRandom;
using orvtest::randomVector;

namespace {

const VTVector untouched(7, 7, 7);

/// A point at (u, v) in the plane across the axis, at a height along it.
VTVector across(int axis, double u, double v, double height) {
    VTVector point;
    point[axis] = height;
    point[(axis + 1) % 3] = u;
    point[(axis + 2) % 3] = v;
    return point;
}

VTVector axisVector(int axis) {
    return across(axis, 0, 0, 1);
}

struct Hit {
    VTVector point = untouched;
    double t = 77;

    void expect(const VTVector& expectedPoint, double expectedT) const {
        EXPECT_TRUE(near(point, expectedPoint, 1e-14));
        EXPECT_NEAR(t, expectedT, 1e-14);
    }

    void expectUntouched() const {
        EXPECT_EQ(point, untouched);
        EXPECT_EQ(t, 77);
    }
};

TEST(PlaneRayIntersect, GivesPointAndParameter) {
    Hit hit;
    // (0 0 2) . (0 0 4) = 8; (2 * 3 - 2 * 1) / 8 = 0.5
    EXPECT_TRUE(VTPlaneRayIntersect({0, 0, 2}, {5, 5, 3}, {1, 2, 1}, {0, 0, 4}, &hit.point, &hit.t));
    hit.expect({1, 2, 3}, 0.5);
    EXPECT_TRUE(VTPlaneRayIntersect({0, 0, 2}, {5, 5, 3}, {1, 2, 1}, {1, -1, 1}, &hit.point, &hit.t));
    hit.expect({3, 0, 3}, 2);
    EXPECT_TRUE(VTPlaneRayIntersect({0, 0, 2}, {5, 5, 3}, {1, 2, 1}, {0, 0, -1}, &hit.point, &hit.t));
    hit.expect({1, 2, 3}, -2);
}

TEST(PlaneRayIntersect, NeedsNoOutputs) {
    Hit hit;
    EXPECT_TRUE(VTPlaneRayIntersect({0, 0, 2}, {5, 5, 3}, {1, 2, 1}, {0, 0, 4}, &hit.point, nullptr));
    EXPECT_TRUE(VTPlaneRayIntersect({0, 0, 2}, {5, 5, 3}, {1, 2, 1}, {0, 0, 4}, nullptr, &hit.t));
    hit.expect({1, 2, 3}, 0.5);
    EXPECT_TRUE(VTPlaneRayIntersect({0, 0, 2}, {5, 5, 3}, {1, 2, 1}, {0, 0, 4}, nullptr, nullptr));
}

TEST(PlaneRayIntersect, MissesAlongThePlane) {
    Hit hit;
    EXPECT_FALSE(VTPlaneRayIntersect(VT_ZAXIS_VEC, {5, 5, 3}, {1, 2, 1}, {1, 1, 0}, &hit.point, &hit.t));
    EXPECT_FALSE(VTPlaneRayIntersect(VT_ZAXIS_VEC, {5, 5, 3}, {1, 2, 1}, {1, 1, 0.9e-60}, &hit.point, &hit.t));
    EXPECT_FALSE(VTPlaneRayIntersect(VT_ZAXIS_VEC, {5, 5, 3}, {1, 2, 1}, {1, 1, -0.9e-60}, &hit.point, &hit.t));
    hit.expectUntouched();
    EXPECT_TRUE(VTPlaneRayIntersect(VT_ZAXIS_VEC, {5, 5, 3}, {1, 2, 1}, {1, 1, 1.1e-60}, &hit.point, &hit.t));
    EXPECT_DOUBLE_EQ(hit.t, 2 / 1.1e-60);
    EXPECT_TRUE(VTPlaneRayIntersect(VT_ZAXIS_VEC, {5, 5, 3}, {1, 2, 1}, {1, 1, -1.1e-60}, &hit.point, &hit.t));
    EXPECT_DOUBLE_EQ(hit.t, -2 / 1.1e-60);
}

TEST(PlanesEqual, ComparesOffsetsAndNormals) {
    struct Row {
        VTVector point1;
        VTVector normal1;
        VTVector point2;
        VTVector normal2;
        bool equal;
    };
    const Row rows[] = {
        {{0, 0, 3}, {0, 0, 1}, {5, 6, 3}, {0, 0, -2}, true},
        {{0, 0, 3}, {0, 0, 1}, {5, 6, 4}, {0, 0, 1}, false},
        {{0, 0, 0}, {1, 0, 0}, {0, 0, 0}, {0, 1, 0}, false},
        {{0, 0, 0.9e-60}, {0, 0, 1}, {0, 0, 0}, {0, 0, 1}, true},
        {{0, 0, 1.1e-60}, {0, 0, 1}, {0, 0, 0}, {0, 0, 1}, false},
        // The second normal measures the offset: 1e-11 times 1e-50 is nothing.
        {{0, 0, 1e-11}, {0, 0, 1}, {0, 0, 0}, {0, 0, 1e-50}, true},
        {{0, 0, 1e-11}, {0, 0, 1e-50}, {0, 0, 0}, {0, 0, 1}, false},
        // A zero vector is parallel to any, but only zero to it.
        {{0, 0, 3}, {0, 0, 0}, {0, 0, 3}, {0, 0, 1}, true},
        {{0, 0, 3}, {0, 0, 1}, {0, 0, 3}, {0, 0, 0}, false},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(VTPlanesEqual(row.point1, row.normal1, row.point2, row.normal2), row.equal)
            << testing::PrintToString(row.point1) << ' ' << testing::PrintToString(row.normal1);
    }
}

/// Both forms, which must agree, and the polygon the other way round.
bool isInside(const VTVector& normal, std::vector<VTVector> nodes, const VTVector& point) {
    const int count = static_cast<int>(nodes.size());
    const bool inside = VTPointInPolygonFast(normal, nodes.data(), count, point);
    std::vector<int> connectivity;
    for (int i = 0; i < count; ++i) {
        connectivity.push_back(2 * i + 1);
    }
    std::vector<VTVector> spread(2 * nodes.size() + 1, VTVector(1e3, -1e3, 1e3));
    for (int i = 0; i < count; ++i) {
        spread[2 * i + 1] = nodes[i];
    }
    EXPECT_EQ(VTPointInIndexedPolygonFast(normal, spread.data(), connectivity.data(), count, point), inside);
    std::reverse(nodes.begin(), nodes.end());
    EXPECT_EQ(VTPointInPolygonFast(normal, nodes.data(), count, point), inside);
    return inside;
}

// An L from 0 to 4: its notch is above 2 in u and v. The height of the point takes no part.
TEST(PointInPolygon, LooksAlongTheClosestAxis) {
    struct Row {
        double u, v;
        bool inside;
    };
    const Row rows[] = {{1, 1, true},   {3, 1, true},   {1, 3, true},    {3, 3, false},     {-1, 1, false},
                        {5, 1, false},  {1, -1, false}, {1, 5, false},   {2.1, 2.1, false}, {1.9, 1.9, true},
                        {1.9, 3, true}, {3, 1.9, true}, {2.1, 3, false}, {3, 2.1, false}};
    for (int axis = 0; axis < 3; ++axis) {
        const std::vector<VTVector> nodes = {across(axis, 0, 0, 10), across(axis, 4, 0, 10), across(axis, 4, 2, 10),
                                             across(axis, 2, 2, 10), across(axis, 2, 4, 10), across(axis, 0, 4, 10)};
        for (const Row& row : rows) {
            const VTVector tilt(0.1, 0.2, 0.3);
            for (const double length : {5.0, -5.0}) {
                EXPECT_EQ(isInside(length * axisVector(axis) + tilt, nodes, across(axis, row.u, row.v, -20)),
                          row.inside)
                    << axis << ": " << row.u << ", " << row.v;
            }
        }
    }
}

TEST(PointInPolygon, LooksAlongTheFirstOfEqualAxes) {
    // A square across x, seen edge on along the others.
    const std::vector<VTVector> nodes = {{0, 0, 0}, {0, 4, 0}, {0, 4, 4}, {0, 0, 4}};
    EXPECT_TRUE(isInside({1, 1, 1}, nodes, {9, 1, 1}));
    EXPECT_FALSE(isInside({0, 1, 1}, nodes, {9, 1, 1}));
    EXPECT_TRUE(isInside({-1, 1, 0}, nodes, {9, 1, 1}));
}

// Nodes and crossings count when they are at or above the point: of each axis the border at the upper end is inside.
TEST(PointInPolygon, BorderBelongsToWhatLiesBelow) {
    struct Row {
        double u, v;
        bool inside;
    };
    const Row square[] = {{0, 2, false}, {4, 2, true},  {2, 0, false}, {2, 4, true},
                          {0, 0, false}, {4, 0, false}, {0, 4, false}, {4, 4, true}};
    for (const Row& row : square) {
        EXPECT_EQ(isInside(VT_ZAXIS_VEC, {{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 4, 0}}, {row.u, row.v, 0}), row.inside)
            << row.u << ", " << row.v;
    }
    // Only at the corner on the right an edge comes from below and ends at the point itself.
    const Row diamond[] = {{4, 2, true}, {2, 0, false}, {0, 2, false}, {2, 4, false}};
    for (const Row& row : diamond) {
        EXPECT_EQ(isInside(VT_ZAXIS_VEC, {{2, 0, 0}, {4, 2, 0}, {2, 4, 0}, {0, 2, 0}}, {row.u, row.v, 0}), row.inside)
            << row.u << ", " << row.v;
    }
    // The diagonal of that square, from either triangle, and just beside it.
    const std::vector<VTVector> lower = {{0, 0, 0}, {4, 0, 0}, {0, 4, 0}};
    const std::vector<VTVector> upper = {{4, 4, 0}, {0, 4, 0}, {4, 0, 0}};
    const Row diagonal[] = {{2, 2, true}, {1, 3, true}, {3, 1, true}, {1.99, 2, true}, {2.01, 2, false}};
    for (const Row& row : diagonal) {
        EXPECT_EQ(isInside(VT_ZAXIS_VEC, lower, {row.u, row.v, 0}), row.inside) << row.u << ", " << row.v;
        EXPECT_EQ(isInside(VT_ZAXIS_VEC, upper, {row.u, row.v, 0}), !row.inside) << row.u << ", " << row.v;
    }
}

TEST(PointInPolygon, NothingIsInsideWithoutArea) {
    const VTVector nodes[] = {{0, 0, 0}, {4, 4, 0}};
    EXPECT_FALSE(VTPointInPolygonFast(VT_ZAXIS_VEC, nullptr, 0, {0, 0, 0}));
    EXPECT_FALSE(VTPointInIndexedPolygonFast(VT_ZAXIS_VEC, nullptr, nullptr, 0, {0, 0, 0}));
    EXPECT_FALSE(VTPointInPolygonFast(VT_ZAXIS_VEC, nodes, 1, {0, 0, 0}));
    EXPECT_FALSE(VTPointInPolygonFast(VT_ZAXIS_VEC, nodes, 2, {1, 2, 0}));
}

// The independent test: the point is on the same side of all three edges.
TEST(PointInPolygon, AgreesWithTheSidesOfTriangles) {
    PortableRandom random(111);
    int inside = 0;
    for (int i = 0; i < 1000; ++i) {
        const std::vector<VTVector> nodes = {randomVector(random, 5), randomVector(random, 5), randomVector(random, 5)};
        const VTVector point = randomVector(random, 3);
        const int axis = i % 3;
        int left = 0;
        for (int k = 0; k < 3; ++k) {
            left += ((nodes[(k + 1) % 3] - nodes[k]) ^ (point - nodes[k]))[axis] > 0;
        }
        ASSERT_EQ(isInside(axisVector(axis), nodes, point), left == 0 || left == 3);
        inside += left == 0 || left == 3;
    }
    EXPECT_GT(inside, 100);
}

/// The triangle by its nodes and through indexes, which must agree.
bool meetsTriangle(const VTVector (&nodes)[3], const VTVector& normal, const VTVector& origin, const VTVector& dir,
                   Hit* hit) {
    const bool met = VTRayTriangleIntersect(nodes, normal, origin, dir, &hit->point, &hit->t);
    const VTVector spread[] = {nodes[2], untouched, nodes[0], untouched, nodes[1]};
    const int connectivity[] = {2, 4, 0};
    Hit indexed;
    EXPECT_EQ(VTRayIndexedTriangleIntersect(spread, connectivity, normal, origin, dir, &indexed.point, &indexed.t),
              met);
    EXPECT_EQ(indexed.point, hit->point);
    EXPECT_EQ(indexed.t, hit->t);
    return met;
}

TEST(RayTriangleIntersect, HitsInFrontAndInside) {
    const VTVector nodes[] = {{0, 0, 3}, {4, 0, 3}, {0, 4, 3}};
    const VTVector normal(0, 0, -2);
    Hit hit;
    EXPECT_TRUE(meetsTriangle(nodes, normal, {1, 1, -1}, {0, 0, 2}, &hit));
    hit.expect({1, 1, 3}, 2);
    EXPECT_TRUE(meetsTriangle(nodes, normal, {1, 2, 3}, {0, 0, 2}, &hit)) << "from the plane itself";
    hit.expect({1, 2, 3}, 0);
    EXPECT_TRUE(meetsTriangle(nodes, normal, {3, 3, 4}, {-2, -2, -1}, &hit));
    hit.expect({1, 1, 3}, 1);
}

TEST(RayTriangleIntersect, MissesAsideBehindAndAlong) {
    const VTVector nodes[] = {{0, 0, 3}, {4, 0, 3}, {0, 4, 3}};
    Hit hit;
    EXPECT_FALSE(meetsTriangle(nodes, VT_ZAXIS_VEC, {3, 3, 0}, {0, 0, 1}, &hit));
    EXPECT_FALSE(meetsTriangle(nodes, VT_ZAXIS_VEC, {1, 1, 0}, {0, 0, -1}, &hit)) << "behind";
    EXPECT_FALSE(meetsTriangle(nodes, VT_ZAXIS_VEC, {1, 1, 3}, {1, 0, 0}, &hit));
    hit.expectUntouched();
}

// The last node stands up: by the normal that is given the plane is that of the first node.
TEST(RayTriangleIntersect, PlaneGoesThroughTheFirstNode) {
    const VTVector nodes[] = {{0, 0, 0}, {4, 0, 1}, {0, 4, 2}};
    Hit hit;
    EXPECT_TRUE(meetsTriangle(nodes, VT_ZAXIS_VEC, {1, 1, 10}, {0, 0, -1}, &hit));
    hit.expect({1, 1, 0}, 10);
}

TEST(RayIndexedPolygonIntersect, WalksTheFan) {
    // A pentagon around the middle (0, 0), with the triangles (0 1 2), (0 2 3), (0 3 4) of its fan.
    const VTVector nodes[] = {untouched, {0, -4, 1}, {4, -1, 1}, {3, 4, 1}, {-3, 4, 1}, {-4, -1, 1}};
    const int connectivity[] = {1, 2, 3, 4, 5};
    const VTVector centers[] = {{3, 0, 1}, {0, 2, 1}, {-3, 0, 1}};
    for (const VTVector& center : centers) {
        Hit hit;
        EXPECT_TRUE(VTRayIndexedPolygonIntersect(nodes, connectivity, 5, center - VTVector(0, 0, 5), {0, 0, 2},
                                                 &hit.point, &hit.t));
        hit.expect(center, 2.5);
    }
    Hit hit;
    EXPECT_FALSE(VTRayIndexedPolygonIntersect(nodes, connectivity, 5, {4, 3, 0}, {0, 0, 1}, &hit.point, &hit.t));
    EXPECT_FALSE(VTRayIndexedPolygonIntersect(nodes, connectivity, 5, {0, 0, 2}, {0, 0, 1}, &hit.point, &hit.t));
    for (const int count : {-1, 0, 1, 2}) {
        EXPECT_FALSE(
            VTRayIndexedPolygonIntersect(nodes, connectivity, count, {3, 0, 0}, {0, 0, 1}, &hit.point, &hit.t));
    }
    EXPECT_FALSE(VTRayIndexedPolygonIntersect(nodes, connectivity, 4, {-3, 0, 0}, {0, 0, 1}, &hit.point, &hit.t))
        << "without the last triangle";
    hit.expectUntouched();
    EXPECT_TRUE(VTRayIndexedPolygonIntersect(nodes, connectivity, 3, {3, 0, 0}, {0, 0, 1}, &hit.point, &hit.t));
}

// A quadrilateral folded back over itself: seen from above, the second triangle is nearer.
TEST(RayIndexedPolygonIntersect, FirstHitOfTheFanWins) {
    const VTVector nodes[] = {{0, 0, 0}, {4, 0, 0}, {0, 4, 0}, {4, 1, 4}};
    const int connectivity[] = {0, 1, 2, 3};
    Hit hit;
    EXPECT_TRUE(VTRayIndexedPolygonIntersect(nodes, connectivity, 4, {1, 1, 10}, {0, 0, -1}, &hit.point, &hit.t));
    hit.expect({1, 1, 0}, 10);
    const int others[] = {0, 2, 3};
    EXPECT_TRUE(VTRayIndexedPolygonIntersect(nodes, others, 3, {1, 1, 10}, {0, 0, -1}, &hit.point, &hit.t));
    hit.expect({1, 1, 1}, 9);
}

// Sides of 1e-7 give a normal of 1e-14 and its square of 1e-28, which is none; sides of 1e-6 give 1e-24, which is one.
TEST(RayIndexedPolygonIntersect, SkipsDegenerateTriangles) {
    for (const bool degenerate : {true, false}) {
        const double side = degenerate ? 1e-7 : 1e-6;
        const VTVector nodes[] = {{0, 0, 0}, {side, 0, 0}, {0, side, 0}};
        const int connectivity[] = {0, 1, 2};
        Hit hit;
        EXPECT_EQ(VTRayIndexedPolygonIntersect(nodes, connectivity, 3, {side / 4, side / 4, 1}, {0, 0, -1}, &hit.point,
                                               &hit.t),
                  !degenerate);
    }
    // Behind a first triangle without area the fan goes on.
    const VTVector nodes[] = {{0, 0, 0}, {2, 0, 0}, {4, 0, 0}, {4, 4, 0}};
    const int connectivity[] = {0, 1, 2, 3};
    Hit hit;
    EXPECT_TRUE(VTRayIndexedPolygonIntersect(nodes, connectivity, 4, {3, 1, 1}, {0, 0, -1}, &hit.point, &hit.t));
    hit.expect({3, 1, 0}, 1);
}

TEST(RayDiscIntersect, BorderBelongsToTheDisc) {
    const VTVector center(1, 1, 2);
    Hit hit;
    EXPECT_TRUE(VTRayDiscIntersect(center, {0, 0, 3}, 5, {4, 5, 0}, {0, 0, 4}, &hit.point, &hit.t));
    hit.expect({4, 5, 2}, 0.5);
    EXPECT_TRUE(VTRayDiscIntersect(center, {0, 0, 3}, 5, {1, 1, 9}, {0, 0, 1}, &hit.point, &hit.t));
    hit.expect({1, 1, 2}, -7);
    hit = Hit();
    EXPECT_FALSE(VTRayDiscIntersect(center, {0, 0, 3}, 5, {4, 5 + 1e-9, 0}, {0, 0, 4}, &hit.point, &hit.t));
    EXPECT_FALSE(VTRayDiscIntersect(center, {0, 0, 3}, 5, {1, 1, 2}, {1, 0, 0}, &hit.point, &hit.t)) << "along it";
    hit.expectUntouched();
}

struct EdgeHit {
    bool met = false;
    VTVector point = untouched;
    int node1 = 77;
    int node2 = 77;

    void expect(const VTVector& expectedPoint, int expectedNode1, int expectedNode2) const {
        EXPECT_TRUE(met);
        EXPECT_TRUE(near(point, expectedPoint, 1e-14));
        EXPECT_EQ(node1, expectedNode1);
        EXPECT_EQ(node2, expectedNode2);
    }

    void expectMiss() const {
        EXPECT_FALSE(met);
        EXPECT_EQ(point, untouched);
        EXPECT_EQ(node1, 77);
        EXPECT_EQ(node2, 77);
    }
};

EdgeHit meetsEdge(const VTVector& origin, const VTVector& dir, const VTVector& sweep,
                  const std::vector<VTVector>& nodes, const std::vector<int>& connectivity) {
    EdgeHit hit;
    hit.met = VTIntersectPolygonEdge(origin, dir, sweep, connectivity.data(), static_cast<int>(connectivity.size()),
                                     nodes.data(), &hit.point, &hit.node1, &hit.node2);
    return hit;
}

/// A square of side 4, named by the nodes 1 to 4, swept along z.
EdgeHit meetsSquare(const VTVector& origin, const VTVector& dir) {
    return meetsEdge(origin, dir, {0, 0, 3}, {untouched, {0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 4, 0}}, {1, 2, 3, 4});
}

// The rays pass 5 above the square: the hit goes to the edge along the sweep.
TEST(IntersectPolygonEdge, FarthestEdgeWins) {
    meetsSquare({2, -2, 5}, {0, 1, 0}).expect({2, 4, 0}, 2, 3);
    meetsSquare({2, 6, 5}, {0, -1, 0}).expect({2, 0, 0}, 0, 1);
    meetsSquare({-2, 1, 5}, {1, 0, 0}).expect({4, 1, 0}, 1, 2);
    meetsSquare({6, 1, 5}, {-1, 0, 0}).expect({0, 1, 0}, 3, 0);
    meetsSquare({2, 1, 5}, {0, 2, 0}).expect({2, 4, 0}, 2, 3);
}

TEST(IntersectPolygonEdge, CountsOnlyInFrontOfTheOrigin) {
    meetsSquare({2, 5, 0}, {0, 1, 0}).expectMiss();
    meetsSquare({2, 4, 0}, {0, 1, 0}).expectMiss(); // t is exactly 0
    meetsSquare({2, 4 - 1e-9, 0}, {0, 1, 0}).expect({2, 4, 0}, 2, 3);
}

TEST(IntersectPolygonEdge, EndsBelongToAnEdge) {
    meetsSquare({4, -1, 0}, {0, 1, 0}).expect({4, 4, 0}, 2, 3);
    meetsSquare({0, -1, 0}, {0, 1, 0}).expect({0, 4, 0}, 2, 3);
    meetsSquare({4 + 1e-9, -1, 0}, {0, 1, 0}).expectMiss();
    meetsSquare({-1e-9, -1, 0}, {0, 1, 0}).expectMiss();
    // Through two corners: edges 0 and 3 at the same near t, 1 and 2 at the same far one. The first of those wins.
    meetsSquare({-1, -1, 0}, {1, 1, 0}).expect({4, 4, 0}, 1, 2);
}

// The edge from (0, 0, 0) to (4, 2, 0), swept along y, is the plane z = 0. The hit (1, 5, 0) lies at
// (4 * 1 + 2 * 5) / 20 of it, and (1, 9, 0) beyond its end, at 22 / 20.
TEST(IntersectPolygonEdge, FootIsThePointOfTheEdgeNearestToTheHit) {
    const std::vector<VTVector> nodes = {{0, 0, 0}, {4, 2, 0}};
    meetsEdge({1, 5, 1}, {0, 0, -1}, {0, 1, 0}, nodes, {0, 1}).expect({2.8, 1.4, 0}, 0, 1);
    meetsEdge({1, 9, 1}, {0, 0, -1}, {0, 1, 0}, nodes, {0, 1}).expectMiss();
    meetsEdge({1, -5, 1}, {0, 0, -1}, {0, 1, 0}, nodes, {0, 1}).expectMiss();
}

TEST(IntersectPolygonEdge, SkipsEdgesWithoutAPlane) {
    const std::vector<VTVector> nodes = {{0, 0, 0}, {4, 0, 0}, {4, 0, 9}};
    // Node 1 is repeated, and the edge from it to node 2 lies along the sweep.
    meetsEdge({2, -1, 0}, {0, 1, 0}, {0, 0, 1}, nodes, {0, 1, 1}).expect({2, 0, 0}, 0, 1);
    meetsEdge({4, -1, 5}, {0, 1, 0}, {0, 0, 1}, nodes, {1, 2}).expectMiss();
    meetsEdge({2, -1, 0}, {0, 1, 0}, VT_ZERO_VEC, nodes, {0, 1, 2}).expectMiss();
    meetsEdge({0, -1, 0}, {0, 1, 0}, {0, 0, 1}, nodes, {0}).expectMiss();
}

TEST(IntersectPolygonEdge, NeedsListsAndOutputs) {
    const VTVector nodes[] = {{0, 0, 0}, {4, 0, 0}};
    const int connectivity[] = {0, 1};
    const VTVector origin(2, -1, 0);
    const VTVector dir(0, 1, 0);
    const VTVector sweep(0, 0, 1);
    EdgeHit hit;
    EXPECT_FALSE(VTIntersectPolygonEdge(origin, dir, sweep, nullptr, 2, nodes, &hit.point, &hit.node1, &hit.node2));
    EXPECT_FALSE(
        VTIntersectPolygonEdge(origin, dir, sweep, connectivity, 2, nullptr, &hit.point, &hit.node1, &hit.node2));
    EXPECT_FALSE(VTIntersectPolygonEdge(origin, dir, sweep, connectivity, 2, nodes, nullptr, &hit.node1, &hit.node2));
    EXPECT_FALSE(VTIntersectPolygonEdge(origin, dir, sweep, connectivity, 2, nodes, &hit.point, nullptr, &hit.node2));
    EXPECT_FALSE(VTIntersectPolygonEdge(origin, dir, sweep, connectivity, 2, nodes, &hit.point, &hit.node1, nullptr));
    for (const int count : {0, -1}) {
        EXPECT_FALSE(
            VTIntersectPolygonEdge(origin, dir, sweep, connectivity, count, nodes, &hit.point, &hit.node1, &hit.node2));
    }
    hit.expectMiss();
    EXPECT_TRUE(VTIntersectPolygonEdge(origin, dir, sweep, connectivity, 2, nodes, &hit.point, &hit.node1, &hit.node2));
}

} // namespace
