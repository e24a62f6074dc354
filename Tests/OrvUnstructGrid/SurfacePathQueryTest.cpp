#include "OrvUnstructGrid/SurfacePathQuery.h"

#include "OrvUnstructGrid/CuttingPlane.h"
#include "Tests/OrvUnstructGrid/PathCurves.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <random>

using namespace orv::ug;
using orv::UNDEFINED_DOUBLE;
using orv::UNDEFINED_SIZE_T;
using orv::Vec3d;
using orvtest::Curve;
using orvtest::curveOf;
using orvtest::expectLinear;
using orvtest::expectPath;
using orvtest::lengthOf;
using orvtest::linear;
using orvtest::Mesh;
using orvtest::PathModel;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr auto NODE = SurfacePathQuery::NODE;
constexpr auto ELEMENT = SurfacePathQuery::ELEMENT;
constexpr auto COORDINATE = SurfacePathQuery::COORDINATE;

TEST(SurfacePathQueryTest, PointTypesHaveTheNumbersThatCallersCast) {
    EXPECT_EQ(static_cast<int>(NODE), 0);
    EXPECT_EQ(static_cast<int>(ELEMENT), 1);
    EXPECT_EQ(static_cast<int>(COORDINATE), 2);
}

// --- On a plane ------------------------------------------------------------------------------------------------------

TEST(SurfacePathQueryTest, APathOverAPlateIsStraight) {
    PathModel plate({orvtest::plate(2, 1)});
    // From the middle of the left side of one square to the middle of the right side of the next. The diagonals go up
    // from the first corners; y = 0.5 meets them at x = 0.5 and 1.5, and the common side at x = 1.
    const std::vector<HitItem> items = {PathModel::coordinate(0, 0, {0, 0.5, 0}),
                                        PathModel::coordinate(0, 1, {2, 0.5, 0})};
    expectPath(plate.path(COORDINATE, items), {{0, 0.5, 0}, {0.5, 0.5, 0}, {1, 0.5, 0}, {1.5, 0.5, 0}, {2, 0.5, 0}});
}

TEST(SurfacePathQueryTest, NodesElementsAndCoordinatesArePoints) {
    PathModel plate({orvtest::plate(3, 3)});
    expectPath(plate.path(NODE, {PathModel::node(0, 5), PathModel::node(0, 10)}), {{1, 1, 0}, {2, 2, 0}});
    // Along the diagonals of the squares from the first corner to the third, through their common nodes.
    expectPath(plate.path(ELEMENT, {PathModel::element(0, 0), PathModel::element(0, 8)}),
               {{0.5, 0.5, 0}, {1, 1, 0}, {2, 2, 0}, {2.5, 2.5, 0}});
    expectPath(plate.path(COORDINATE,
                          {PathModel::coordinate(0, 0, {0.75, 0.25, 0}), PathModel::coordinate(0, 0, {0.75, 0.5, 0})}),
               {{0.75, 0.25, 0}, {0.75, 0.5, 0}});
}

TEST(SurfacePathQueryTest, APathAcrossAPlateHasTheLengthAndTheValuesOfALine) {
    PathModel plate({orvtest::plate(10, 7)});
    const std::vector<HitItem> items = {PathModel::coordinate(0, 0, {0.1, 0.2, 0}),
                                        PathModel::coordinate(0, 69, {9.7, 6.9, 0})};
    const std::vector<Vec3d> path = plate.path(COORDINATE, items);
    EXPECT_NEAR(lengthOf(path), std::hypot(9.6, 6.7), 1e-9);
    // 9 + 6 sides of squares, and the diagonals x - y = c for whole c from 0 (behind the start, at -0.1) to 2.
    EXPECT_EQ(path.size(), 2u + 9 + 6 + 3);
    expectLinear(plate, COORDINATE, items);
}

TEST(SurfacePathQueryTest, APlateFarFromTheOriginOrTiltedIsAsGood) {
    const auto tilt = [](const Vec3d& p) {
        // Orthonormal columns.
        return Vec3d(1e5, -2e5, 3e5) + Vec3d(2, -1, 2) * (p.x() / 3) + Vec3d(2, 2, -1) * (p.y() / 3);
    };
    PathModel plate({orvtest::plate(10, 10).mapped(tilt)});
    // A diagonal, exactly through nodes and along sides: none of the 9 nodes between is there twice.
    const std::vector<Vec3d> path = plate.path(NODE, {PathModel::node(0, 0), PathModel::node(0, 120)});
    EXPECT_EQ(path.size(), 11u);
    EXPECT_NEAR(lengthOf(path), std::sqrt(200.0), 1e-9);
    // Across the diagonals of the squares and through nodes again.
    const std::vector<Vec3d> across = plate.path(NODE, {PathModel::node(0, 10), PathModel::node(0, 110)});
    EXPECT_EQ(across.size(), 21u);
    EXPECT_NEAR(lengthOf(across), std::sqrt(200.0), 1e-9);
    // Along the free side, which the surface is on one side of only, whichever it is.
    for (const auto& [from, to] : {std::pair(0, 10), std::pair(110, 120), std::pair(0, 110), std::pair(10, 120)}) {
        EXPECT_EQ(plate.path(NODE, {PathModel::node(0, from), PathModel::node(0, to)}).size(), 11u) << from;
    }
}

/// Turns by orthonormal columns, by which coordinates do not come out by themselves.
Vec3d tilted(const Vec3d& p) {
    return Vec3d(2, -1, 2) * (p.x() / 3) + Vec3d(2, 2, -1) * (p.y() / 3) + Vec3d(-1, 2, 2) * (p.z() / 3);
}

TEST(SurfacePathQueryTest, NodesOnTheWayAreThereOnce) {
    // Rows and columns that are not evenly spaced.
    PathModel plate({orvtest::plate(10, 10).mapped([](const Vec3d& p) {
        return tilted({std::pow(p.x(), 3) / 7 - 0.1, std::pow(p.y() + 0.3, 2) / 11, 0.7});
    })});
    for (std::size_t i = 0; i <= 10; ++i) {
        EXPECT_EQ(plate.path(NODE, {PathModel::node(0, 11 * i), PathModel::node(0, 11 * i + 10)}).size(), 11u) << i;
        EXPECT_EQ(plate.path(NODE, {PathModel::node(0, i), PathModel::node(0, 110 + i)}).size(), 11u) << i;
    }
    // A box whose bottom is a little to the side, so that the leg from the middle of its top to that of its bottom is
    // almost along the normals: over both edges, through nodes all the way.
    PathModel box({orvtest::block(2, 2, 1).mapped(
        [](const Vec3d& p) { return tilted(p.z() == 0 ? p + Vec3d(1e-3, 0, 0) : p); })});
    EXPECT_EQ(box.path(NODE, {PathModel::node(0, 13), PathModel::node(0, 4)}).size(), 4u);
}

TEST(SurfacePathQueryTest, ThePathBackIsTheSame) {
    // Around a hole there are many shortest ways.
    PathModel plate({orvtest::plate(6, 6, {14, 15, 20, 21}).mapped(tilted)});
    PathModel box({orvtest::block(3, 3, 3).mapped(tilted)});
    for (const PathModel* model : {&plate, &box}) {
        for (std::size_t i = 0; i < 7; ++i) {
            const std::vector<HitItem> items = {PathModel::node(0, 7 * i), PathModel::node(0, 48 - 5 * i),
                                                PathModel::node(0, 6)};
            const std::vector<HitItem> reversed(items.rbegin(), items.rend());
            std::vector<Vec3d> back = model->path(NODE, reversed);
            std::reverse(back.begin(), back.end());
            EXPECT_EQ(model->path(NODE, items), back);
        }
    }
}

TEST(SurfacePathQueryTest, LegsFollowOneAnother) {
    PathModel plate({orvtest::plate(2, 2)});
    const std::vector<HitItem> items = {PathModel::node(0, 0), PathModel::node(0, 4), PathModel::node(0, 4),
                                        PathModel::node(0, 7), PathModel::node(0, 4)};
    expectPath(plate.path(NODE, items), {{0, 0, 0}, {1, 1, 0}, {1, 2, 0}, {1, 1, 0}});
    const Curve curve = curveOf(plate, NODE, items, plate.addField(linear));
    EXPECT_THAT(curve.x, ElementsAre(0.0, std::sqrt(2.0), std::sqrt(2.0) + 1, std::sqrt(2.0) + 2));
    EXPECT_THAT(curve.y, ElementsAre(4.0, 5.0, 3.0, 5.0));
}

TEST(SurfacePathQueryTest, AQuadraticFaceIsSplitThroughItsMidSideNodes) {
    Mesh mesh;
    mesh.nodes = {{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}, {1, 0, 0.5}, {2, 1, 0.5}, {1, 2, 0.5}, {0, 1, 0.5}};
    mesh.addElement(QUADRILATERAL_8, {0, 1, 2, 3, 4, 5, 6, 7});
    PathModel model({mesh});
    // The middle triangles are at the height of the mid-side nodes, so the way between opposite ones is straight, over
    // the diagonal between the other two.
    expectPath(model.path(NODE, {PathModel::node(0, 4), PathModel::node(0, 6)}), {{1, 0, 0.5}, {1, 2, 0.5}});
    expectPath(model.path(NODE, {PathModel::node(0, 7), PathModel::node(0, 5)}),
               {{0, 1, 0.5}, {1, 1, 0.5}, {2, 1, 0.5}});
    // From corner to corner: up to half of the side between two mid-side nodes, across, and down again.
    expectPath(model.path(NODE, {PathModel::node(0, 0), PathModel::node(0, 2)}),
               {{0, 0, 0}, {0.5, 0.5, 0.5}, {1, 1, 0.5}, {1.5, 1.5, 0.5}, {2, 2, 0}});
    expectLinear(model, NODE, {PathModel::node(0, 0), PathModel::node(0, 2)});
}

// --- Around bodies ---------------------------------------------------------------------------------------------------

TEST(SurfacePathQueryTest, APathGoesOverTheEdgeOfABox) {
    PathModel box({orvtest::block(2, 2, 2)});
    // From the top to the side x = 2. The mean normal is (1, 0, 1): with the leg (1, 1.2, -1) the plane is
    // 1.2 (x - 1) - 2 (y - 0.3) - 1.2 (z - 2) = 0, which meets the edge x = z = 2 at y = 0.9. Both straight parts are
    // (1, 0.6) on their faces.
    const std::vector<HitItem> items = {PathModel::coordinate(0, 5, {1, 0.3, 2}),
                                        PathModel::coordinate(0, 3, {2, 1.5, 1})};
    const std::vector<Vec3d> path = box.path(COORDINATE, items);
    EXPECT_NEAR(lengthOf(path), 2 * std::sqrt(1.36), 1e-9);
    EXPECT_TRUE(
        std::any_of(path.begin(), path.end(), [](const Vec3d& p) { return (p - Vec3d(2, 0.9, 2)).length() < 1e-12; }));
    expectLinear(box, COORDINATE, items);
}

TEST(SurfacePathQueryTest, TheShorterWayRoundABoxIsTaken) {
    PathModel box({orvtest::block(2, 2, 2)});
    // Between opposite sides, whose normals cancel out: their difference is along x, so all is in the plane z = 1. By
    // y = 2 it is 1 + 2 + 0.5, by y = 0 1 + 2 + 1.5.
    const std::vector<HitItem> items = {PathModel::coordinate(0, 1, {2, 1, 1}),
                                        PathModel::coordinate(0, 2, {0, 1.5, 1})};
    const std::vector<Vec3d> path = box.path(COORDINATE, items);
    EXPECT_NEAR(lengthOf(path), 3.5, 1e-9);
    for (const Vec3d& point : path) {
        EXPECT_EQ(point.z(), 1.0);
        EXPECT_GE(point.y(), 1.0);
    }
}

TEST(SurfacePathQueryTest, FromTopToBottomTheNearestSideIsTaken) {
    PathModel box({orvtest::block(4, 2, 1)});
    // The nodes in the middle of the top and of the bottom: neither the mean of the normals nor their difference makes
    // a plane. Along x it is 2 + 1 + 2, along y 1 + 1 + 1.
    const std::vector<Vec3d> path = box.path(NODE, {PathModel::node(0, 22), PathModel::node(0, 7)});
    ASSERT_FALSE(path.empty());
    EXPECT_EQ(path.front(), Vec3d(2, 1, 1));
    EXPECT_EQ(path.back(), Vec3d(2, 1, 0));
    EXPECT_NEAR(lengthOf(path), 3.0, 1e-9);
}

TEST(SurfacePathQueryTest, NodesAtEdgesAndCornersHaveTheMeanNormal) {
    PathModel box({orvtest::block(2, 2, 2)});
    // Along the edge from corner to corner: both normals are means of three and point away from the body.
    expectPath(box.path(NODE, {PathModel::node(0, 18), PathModel::node(0, 20)}), {{0, 0, 2}, {1, 0, 2}, {2, 0, 2}});
    // From a corner over the top to the opposite corner of it.
    EXPECT_NEAR(lengthOf(box.path(NODE, {PathModel::node(0, 18), PathModel::node(0, 26)})), std::sqrt(8.0), 1e-9);
}

TEST(SurfacePathQueryTest, ANodeInsideIsOnNoPath) {
    PathModel box({orvtest::block(2, 2, 2)});
    EXPECT_THAT(box.path(NODE, {PathModel::node(0, 13), PathModel::node(0, 14)}), IsEmpty());
    EXPECT_THAT(box.path(NODE, {PathModel::node(0, 14), PathModel::node(0, 13)}), IsEmpty());
}

TEST(SurfacePathQueryTest, TheCentreOfAVolumeIsThatOfItsPickedFace) {
    PathModel box({orvtest::block(2, 1, 1)});
    // Surface 5 of a hexahedron is its top.
    ASSERT_THAT(std::vector<int>(elementSurface(HEXAHEDRON, 5).begin(), elementSurface(HEXAHEDRON, 5).end()),
                testing::UnorderedElementsAre(4, 5, 6, 7));
    expectPath(box.path(ELEMENT, {PathModel::element(0, 0, 5), PathModel::element(0, 1, 5)}),
               {{0.5, 0.5, 1}, {1, 0.5, 1}, {1.5, 0.5, 1}});
    // The faces between both are not outside: the one nearest to the coordinate is taken, or without one the first.
    std::size_t between = UNDEFINED_SIZE_T;
    for (std::size_t s = 0; s < 6; ++s) {
        const auto nodes = elementSurface(HEXAHEDRON, s);
        const std::vector<int> corners(nodes.begin(), nodes.end());
        if (testing::Value(corners, testing::UnorderedElementsAre(1, 2, 5, 6))) {
            between = s;
        }
    }
    HitItem first = PathModel::element(0, 0, between);
    first.setCoordinate({0.9, 0.3, 0.9});
    HitItem second = PathModel::element(0, 1, UNDEFINED_SIZE_T);
    second.setCoordinate({1.5, 0.9, 1.5});
    expectPath(box.path(ELEMENT, {first, second}), {{0.5, 0.5, 1}, {1, 0.5, 1}, {1.5, 0.5, 1}});
}

TEST(SurfacePathQueryTest, TheCentreOfAWarpedShellIsOnIt) {
    Mesh mesh;
    mesh.nodes = {{0, 0, 0}, {1, 0, 1}, {1, 1, 0}, {0, 1, 1}, {2, 0, 0}, {2, 1, 0}};
    mesh.addElement(QUADRILATERAL, {0, 1, 2, 3});
    mesh.addElement(TRIANGLE, {1, 4, 2});
    PathModel model({mesh});
    // The average of the corners is (0.5, 0.5, 0.5), above the middle of the diagonal from the first to the third.
    const std::vector<Vec3d> path = model.path(ELEMENT, {PathModel::element(0, 0), PathModel::element(0, 1)});
    ASSERT_FALSE(path.empty());
    // Nearest on either triangle, which slope by the same angle; the first is met first. The triangle (0, 1, 2) is in
    // the plane x - y - z = 0, and (0.5, 0.5, 0.5) is moved by 0.5/3 (1, -1, -1).
    EXPECT_NEAR((path.front() - Vec3d(2.0 / 3, 1.0 / 3, 1.0 / 3)).length(), 0.0, 1e-12);
}

TEST(SurfacePathQueryTest, ShellsMayBeTurnedEitherWay) {
    // A dome, and the same with its last square seen from below.
    const Mesh dome = orvtest::plate(6, 6).mapped(
        [](const Vec3d& p) { return Vec3d(p.x(), p.y(), 0.1 * p.x() * (6 - p.x()) + 0.05 * p.y() * (7 - p.y())); });
    Mesh turned = dome;
    std::swap(turned.connectivity[4 * 35 + 1], turned.connectivity[4 * 35 + 3]);
    const std::vector<HitItem> items = {PathModel::element(0, 1), PathModel::element(0, 35)};
    const std::vector<Vec3d> path = PathModel({dome}).path(ELEMENT, items);
    const std::vector<Vec3d> onTurned = PathModel({turned}).path(ELEMENT, items);
    EXPECT_GT(path.size(), 10u);
    // But for the middle of the last square, which is another one when it is split the other way.
    EXPECT_NEAR(lengthOf(onTurned), lengthOf(path), 0.05);
    ASSERT_GT(onTurned.size(), 5u);
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_NEAR((onTurned[i] - path[i]).length(), 0.0, 0.05);
    }
}

TEST(SurfacePathQueryTest, ATubeOfShellsIsWalkedByItsMeanNormal) {
    // Sixteen flat strips around the x axis, open along the lowest one.
    Mesh mesh = orvtest::plate(1, 16).mapped([](const Vec3d& p) {
        const double angle = 3.14159265358979323846 * (p.y() - 8) / 8.5;
        return Vec3d(p.x(), std::sin(angle), std::cos(angle));
    });
    PathModel model({mesh});
    // From strip 2 to strip 13, the normals of which are more than 90 degrees apart: over the strips between, whose
    // width is 2 sin(180 / 17 degrees).
    const std::vector<Vec3d> path = model.path(ELEMENT, {PathModel::element(0, 2), PathModel::element(0, 13)});
    EXPECT_NEAR(lengthOf(path), 11 * 2 * std::sin(3.14159265358979323846 / 17), 1e-9);
    expectLinear(model, ELEMENT, {PathModel::element(0, 2), PathModel::element(0, 13)});
}

// --- Where the walk breaks -------------------------------------------------------------------------------------------

TEST(SurfacePathQueryTest, AHoleIsPassedAlongSides) {
    // The middle square is missing.
    PathModel plate({orvtest::plate(3, 3, {4})});
    // From (0, 3) to (3, 0), against the diagonals: 3 sides along x and 3 along y.
    EXPECT_NEAR(lengthOf(plate.path(NODE, {PathModel::node(0, 12), PathModel::node(0, 3)})), 6.0, 1e-12);
    // From (0, 0) to (3, 3): up one diagonal, two sides around the hole, and the other diagonal.
    EXPECT_NEAR(lengthOf(plate.path(NODE, {PathModel::node(0, 0), PathModel::node(0, 15)})), 2 * std::sqrt(2.0) + 2,
                1e-12);
    expectLinear(plate, NODE, {PathModel::node(0, 0), PathModel::node(0, 15)});
}

TEST(SurfacePathQueryTest, AroundAHolePointsInsideTrianglesAreLeftByACorner) {
    PathModel plate({orvtest::plate(3, 1, {1})});
    // Nothing but the two squares at the ends, which have no common nodes: no way.
    const std::vector<HitItem> apart = {PathModel::element(0, 0), PathModel::element(0, 1)};
    EXPECT_THAT(plate.path(ELEMENT, apart), IsEmpty());
    // With a row of squares beside the hole.
    PathModel bridge({orvtest::plate(3, 2, {1})});
    const std::vector<HitItem> items = {PathModel::coordinate(0, 0, {0.75, 0.25, 0}),
                                        PathModel::coordinate(0, 1, {2.25, 0.5, 0})};
    // Elements 0, 1 are those at the lower ends. By the corners (1, 1) and (2, 1), which are those of the triangles
    // that the points are in.
    expectPath(bridge.path(COORDINATE, items), {{0.75, 0.25, 0}, {1, 1, 0}, {2, 1, 0}, {2.25, 0.5, 0}});
    expectLinear(bridge, COORDINATE, items);
}

TEST(SurfacePathQueryTest, OneLegWithoutAWayIsNoPath) {
    PathModel plate({orvtest::plate(3, 1, {1})});
    EXPECT_THAT(plate.path(ELEMENT, {PathModel::element(0, 0), PathModel::element(0, 0), PathModel::element(0, 1)}),
                IsEmpty());
    EXPECT_THAT(plate.path(NODE, {PathModel::node(0, 0), PathModel::node(0, 1), PathModel::node(0, 2)}), IsEmpty());
}

TEST(SurfacePathQueryTest, BeamsAreFollowed) {
    Mesh mesh = orvtest::plate(1, 1);
    mesh.nodes.insert(mesh.nodes.end(), {{1, 2, 0}, {1, 3, 0}, {3, 3, 0}, {2, 3, 0}, {2, 3, 5}});
    mesh.addElement(BEAM, {2, 4}); // Node 2 is at (0, 1).
    mesh.addElement(BEAM, {3, 4}); // Node 3 is at (1, 1).
    mesh.addElement(BEAM, {4, 5});
    mesh.addElement(BEAM_3, {5, 6, 7}); // Node 7 is its middle.
    PathModel model({mesh});
    expectPath(model.path(NODE, {PathModel::node(0, 1), PathModel::node(0, 6)}),
               {{1, 0, 0}, {1, 1, 0}, {1, 2, 0}, {1, 3, 0}, {2, 3, 0}, {3, 3, 0}});
    expectPath(model.path(ELEMENT, {PathModel::element(0, 3), PathModel::element(0, 4)}),
               {{1, 2.5, 0}, {1, 3, 0}, {2, 3, 0}});
    expectPath(model.path(COORDINATE,
                          {PathModel::coordinate(0, 4, {2.5, 3.1, 0}), PathModel::coordinate(0, 4, {1.5, 2.9, 0.1})}),
               {{2.5, 3, 0}, {2, 3, 0}, {1.5, 3, 0}});
    expectPath(
        model.path(COORDINATE, {PathModel::coordinate(0, 3, {1, 2.25, 0}), PathModel::coordinate(0, 3, {1, 2.75, 0})}),
        {{1, 2.25, 0}, {1, 2.75, 0}});
    expectLinear(model, NODE, {PathModel::node(0, 1), PathModel::node(0, 6)});
    // A node that only is there.
    EXPECT_THAT(model.path(NODE, {PathModel::node(0, 1), PathModel::node(0, 8)}), IsEmpty());
}

TEST(SurfacePathQueryTest, AtAJunctionTheWayThatLeadsOnIsFound) {
    // A floor of two squares, and a wall on the line between them.
    Mesh mesh = orvtest::plate(2, 1);
    mesh.nodes.insert(mesh.nodes.end(), {{1, 0, 1}, {1, 1, 1}});
    mesh.addElement(QUADRILATERAL, {1, 4, 7, 6});
    PathModel model({mesh});
    // Over the floor, in spite of the wall.
    expectPath(model.path(ELEMENT, {PathModel::element(0, 0), PathModel::element(0, 1)}),
               {{0.5, 0.5, 0}, {1, 0.5, 0}, {1.5, 0.5, 0}});
    // Up the wall from both sides.
    expectPath(model.path(ELEMENT, {PathModel::element(0, 0), PathModel::element(0, 2)}),
               {{0.5, 0.5, 0}, {1, 0.5, 0}, {1, 0.5, 0.5}});
    expectPath(model.path(ELEMENT, {PathModel::element(0, 1), PathModel::element(0, 2)}),
               {{1.5, 0.5, 0}, {1, 0.5, 0}, {1, 0.5, 0.5}});
}

TEST(SurfacePathQueryTest, TrianglesWithoutAnAreaAreNoHindrance) {
    // Two squares with slivers on the line between them: nodes 6 and 7 are on it.
    Mesh mesh;
    mesh.nodes = {{0, 0, 0}, {1, 0, 0}, {1, 2, 0}, {0, 2, 0}, {2, 0, 0}, {2, 2, 0}, {1, 1, 0}, {1, 1, 0}};
    mesh.addElement(QUADRILATERAL, {0, 1, 2, 3});
    mesh.addElement(TRIANGLE, {1, 6, 2}); // All on one line.
    mesh.addElement(TRIANGLE, {6, 7, 2}); // Two of them at the same place.
    mesh.addElement(TRIANGLE, {1, 7, 6});
    mesh.addElement(TRIANGLE, {1, 4, 7});
    mesh.addElement(TRIANGLE, {4, 5, 7});
    mesh.addElement(TRIANGLE, {5, 2, 7});
    PathModel model({mesh});
    const std::vector<HitItem> items = {PathModel::coordinate(0, 0, {0.25, 0.25, 0}),
                                        PathModel::coordinate(0, 5, {1.75, 1.0, 0})};
    EXPECT_NEAR(lengthOf(model.path(COORDINATE, items)), std::hypot(1.5, 0.75), 1e-9);
    const std::vector<HitItem> through = {PathModel::coordinate(0, 0, {0.25, 1, 0}),
                                          PathModel::coordinate(0, 5, {1.75, 1.0, 0})};
    EXPECT_NEAR(lengthOf(model.path(COORDINATE, through)), 1.5, 1e-9);
    // Where there is no area there is no normal: along the sides by (1, 2).
    expectPath(model.path(NODE, {PathModel::node(0, 6), PathModel::node(0, 3)}), {{1, 1, 0}, {1, 2, 0}, {0, 2, 0}});
}

TEST(SurfacePathQueryTest, NodesThatAreNowhereAreNotOnTheWay) {
    Mesh mesh = orvtest::plate(2, 2);
    mesh.nodes[1][2] = std::nan("");
    PathModel model({mesh});
    // Around the broken node, along the upper squares.
    EXPECT_NEAR(lengthOf(model.path(NODE, {PathModel::node(0, 3), PathModel::node(0, 5)})), 2.0, 1e-9);
    EXPECT_THAT(model.path(NODE, {PathModel::node(0, 1), PathModel::node(0, 5)}), IsEmpty());
    // Triangles without a shape are not there, nor are the sides between their other nodes: the second square's both
    // have the broken node, of the first's only one.
    EXPECT_NEAR(lengthOf(model.path(NODE, {PathModel::node(0, 0), PathModel::node(0, 4)})), std::sqrt(2.0), 1e-9);
    EXPECT_THAT(model.path(NODE, {PathModel::node(0, 5), PathModel::node(0, 2)}), IsEmpty());
    EXPECT_THAT(model.path(NODE, {PathModel::node(0, 0), PathModel::node(0, 2)}), IsEmpty());
}

// --- From part to part -----------------------------------------------------------------------------------------------

TEST(SurfacePathQueryTest, APathGoesFromPartToPartWhereTheyTouch) {
    const auto beside = [](const Vec3d& p) { return p + Vec3d(2, 0, 0); };
    PathModel two({orvtest::plate(2, 2), orvtest::plate(2, 2).mapped(beside)});
    const std::vector<HitItem> items = {PathModel::coordinate(0, 0, {0.5, 0.75, 0}),
                                        PathModel::coordinate(1, 3, {3.5, 1.25, 0})};
    EXPECT_NEAR(lengthOf(two.path(COORDINATE, items)), std::hypot(3.0, 0.5), 1e-9);
    expectLinear(two, COORDINATE, items);
    // Where one ends the value of the next part begins, at the same length.
    const Curve curve = curveOf(two, COORDINATE, items, two.addCounting(PER_ELEMENT));
    const auto next = std::find_if(curve.y.begin(), curve.y.end(), [](double y) { return y >= 1000; });
    ASSERT_NE(next, curve.y.end());
    const auto i = static_cast<std::size_t>(next - curve.y.begin());
    EXPECT_NEAR(curve.x[i], std::hypot(1.5, 0.25), 1e-9);
    EXPECT_EQ(curve.x[i - 1], curve.x[i]);
}

TEST(SurfacePathQueryTest, NoPathGoesBetweenBodiesThatTouch) {
    const auto beside = [](const Vec3d& p) { return p + Vec3d(1, 0, 0); };
    // The second one is one step higher, so its side is free above the first one's top.
    PathModel two({orvtest::block(1, 1, 1), orvtest::block(1, 1, 2).mapped(beside)});
    const std::vector<HitItem> items = {PathModel::element(0, 0, 5), PathModel::element(1, 1, 5)};
    // 0.5 to the step, up 1, and 0.5 on its top.
    EXPECT_NEAR(lengthOf(two.path(ELEMENT, items)), 2.0, 1e-9);
    // The face where both touch is no place to begin, and its middle is on nothing else.
    std::size_t touching = 0;
    for (std::size_t s = 0; s < 6; ++s) {
        HitItem probe = PathModel::element(0, 0, s);
        const std::vector<Vec3d> path = two.path(ELEMENT, {probe, PathModel::element(1, 1, 5)});
        ASSERT_FALSE(path.empty());
        touching += path.front() == Vec3d(1, 0.5, 0.5);
    }
    EXPECT_EQ(touching, 0u);
}

TEST(SurfacePathQueryTest, AGapBetweenPartsIsNotCrossed) {
    const auto beside = [](double gap) { return [gap](const Vec3d& p) { return p + Vec3d(2 + gap, 0, 0); }; };
    // The box about both is 4 and 2 long: its diagonal is 4.47, and 1e-6 of it counts as touching.
    PathModel near({orvtest::plate(2, 2), orvtest::plate(2, 2).mapped(beside(4e-6))});
    PathModel apart({orvtest::plate(2, 2), orvtest::plate(2, 2).mapped(beside(5e-6))});
    const std::vector<HitItem> items = {PathModel::element(0, 0), PathModel::element(1, 3)};
    EXPECT_FALSE(near.path(ELEMENT, items).empty());
    EXPECT_THAT(apart.path(ELEMENT, items), IsEmpty());
}

TEST(SurfacePathQueryTest, HiddenPartsAreNotThere) {
    const auto beside = [](double x) { return [x](const Vec3d& p) { return p + Vec3d(x, 0, 0); }; };
    PathModel row(
        {orvtest::plate(1, 1), orvtest::plate(1, 1).mapped(beside(1)), orvtest::plate(1, 1).mapped(beside(2))});
    const std::vector<HitItem> items = {PathModel::element(0, 0), PathModel::element(2, 0)};
    EXPECT_NEAR(lengthOf(row.path(ELEMENT, items)), 2.0, 1e-9);
    row.model->modelSpec().setPartVisible(0, 2, false);
    EXPECT_THAT(row.path(ELEMENT, items), IsEmpty());
    row.model->modelSpec().setPartVisible(0, 2, true);
    EXPECT_NEAR(lengthOf(row.path(ELEMENT, items)), 2.0, 1e-9);
    row.model->modelSpec().setPartVisible(0, 1, false);
    EXPECT_THAT(row.path(ELEMENT, items), IsEmpty());
    EXPECT_FALSE(row.path(ELEMENT, {PathModel::element(1, 0), PathModel::element(2, 0)}).empty());
}

// --- As it is shown --------------------------------------------------------------------------------------------------

class DisplacedPathTest : public testing::Test {
protected:
    DisplacedPathTest() {
        const ResultInfo info = plate.source->addResult(DISPLACEMENT, "up", PER_NODE);
        std::vector<double> values;
        for (std::size_t n = 0; n < 6; ++n) {
            values.insert(values.end(), {0, 0, plate.part(0).nodes()->node(n).x()}); // A slope.
        }
        EXPECT_TRUE(plate.source->setValues(1, info, 0, 0, values, nullptr));
        plate.model->modelSpec().setDisplacementResultId(info.id());
    }

    PathModel plate{{orvtest::plate(2, 1)}};
    const std::vector<HitItem> items = {PathModel::coordinate(0, 0, {0, 0.5, 0}),
                                        PathModel::coordinate(0, 1, {1.5, 0.5, 1.5})};
};

TEST_F(DisplacedPathTest, APathLiesOnTheShapeAsShown) {
    plate.model->modelSpec().setDisplaced(true);
    EXPECT_NEAR(lengthOf(plate.path(COORDINATE, items)), 1.5 * std::sqrt(2.0), 1e-9);
    expectPath(plate.path(ELEMENT, {PathModel::element(0, 0), PathModel::element(0, 1)}),
               {{0.5, 0.5, 0.5}, {1, 0.5, 1}, {1.5, 0.5, 1.5}});
    plate.model->modelSpec().setDisplacementScale(2);
    EXPECT_NEAR(lengthOf(plate.path(NODE, {PathModel::node(0, 0), PathModel::node(0, 2)})), 2 * std::sqrt(5.0), 1e-9);
}

TEST_F(DisplacedPathTest, ACoordinateThatIsOffTheShapeIsMovedToItsElement) {
    expectPath(plate.path(COORDINATE, items), {{0, 0.5, 0}, {0.5, 0.5, 0}, {1, 0.5, 0}, {1.5, 0.5, 0}});
}

TEST_F(DisplacedPathTest, ItemsOfAnotherStateAreLookedUpInTheCurrentOne) {
    plate.model->modelSpec().setDisplaced(true);
    plate.model->modelSpec().setStateId(2); // Which has no displacements; the items were picked in state 1.
    expectPath(plate.path(NODE, {PathModel::node(0, 0), PathModel::node(0, 2)}), {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}});
}

// --- Failures --------------------------------------------------------------------------------------------------------

TEST(SurfacePathQueryTest, WhatIsNotThereIsOnNoPath) {
    PathModel plate({orvtest::plate(2, 1)});
    const HitItem good = PathModel::node(0, 0);
    const auto fails = [&](SurfacePathQuery::PointType type, const HitItem& other) {
        HitItem first = type == NODE ? good : PathModel::coordinate(0, 0, {0.2, 0.2, 0});
        return plate.path(type, {first, other}).empty() && plate.path(type, {other, first}).empty();
    };
    EXPECT_TRUE(fails(NODE, HitItem()));
    EXPECT_TRUE(fails(ELEMENT, HitItem()));
    EXPECT_TRUE(fails(COORDINATE, HitItem()));
    EXPECT_TRUE(fails(NODE, PathModel::node(0, 6)));
    EXPECT_TRUE(fails(NODE, PathModel::node(0, UNDEFINED_SIZE_T)));
    EXPECT_TRUE(fails(NODE, PathModel::node(1, 0)));
    EXPECT_TRUE(fails(ELEMENT, PathModel::element(0, 2)));
    EXPECT_TRUE(fails(ELEMENT, PathModel::element(0, UNDEFINED_SIZE_T)));
    EXPECT_TRUE(fails(COORDINATE, PathModel::coordinate(0, 2, {1, 0, 0})));
    EXPECT_TRUE(fails(COORDINATE, PathModel::coordinate(0, 1, orv::UNDEFINED_VECTOR)));
    EXPECT_TRUE(fails(COORDINATE, PathModel::coordinate(0, 1, {std::nan(""), 0, 0})));
    HitItem elsewhere = PathModel::node(0, 1);
    elsewhere.setGeometryIndex(1);
    EXPECT_TRUE(fails(NODE, elsewhere));
    EXPECT_TRUE(fails(static_cast<SurfacePathQuery::PointType>(3), PathModel::node(0, 1)));
    EXPECT_FALSE(fails(NODE, PathModel::node(0, 5)));
}

TEST(SurfacePathQueryTest, APathTakesTwoPointsAndALength) {
    PathModel plate({orvtest::plate(2, 1)});
    EXPECT_THAT(plate.path(NODE, {}), IsEmpty());
    EXPECT_THAT(plate.path(NODE, {PathModel::node(0, 0)}), IsEmpty());
    EXPECT_THAT(plate.path(NODE, {PathModel::node(0, 0), PathModel::node(0, 0)}), IsEmpty());
}

TEST(SurfacePathQueryTest, WithoutSomethingToShowThereIsNoPath) {
    PathModel plate({orvtest::plate(2, 1)});
    const std::vector<HitItem> items = {PathModel::node(0, 0), PathModel::node(0, 1)};
    std::vector<Vec3d> path;
    std::vector<double> x;
    std::vector<double> y;
    SurfacePathQuery good(plate.model.get(), 0, NODE, items);
    EXPECT_TRUE(good.generatePath(&path));
    EXPECT_FALSE(good.generatePath(nullptr));
    const ResultInfo info = plate.addField(linear);
    EXPECT_TRUE(good.getScalarResultValues(info.id(), &x, &y));
    EXPECT_FALSE(good.getScalarResultValues(info.id(), nullptr, &y));
    EXPECT_FALSE(good.getScalarResultValues(info.id(), &x, nullptr));
    SurfacePathQuery noModel(nullptr, 0, NODE, items);
    EXPECT_FALSE(noModel.generatePath(&path));
    EXPECT_FALSE(noModel.getScalarResultValues(1, &x, &y));
    SurfacePathQuery otherFrame(plate.model.get(), 1, NODE, items);
    EXPECT_FALSE(otherFrame.generatePath(&path));
    EXPECT_FALSE(otherFrame.getScalarResultValues(1, &x, &y));
    plate.model->modelSpec().setStateId(3);
    EXPECT_THAT(plate.path(NODE, items), IsEmpty());
    plate.model->setDataSource(nullptr);
    EXPECT_THAT(plate.path(NODE, items), IsEmpty());
}

TEST(SurfacePathQueryTest, WhateverTheMeshIsPathsAreWhole) {
    // Elements between nodes that are drawn by lot from a grid of 27 places, some of which are nowhere: all that can be
    // wrong with a mesh is wrong here. What there is of paths goes on from point to point and ends where it should.
    std::mt19937 engine(12);
    std::size_t pathCount = 0;
    for (int i = 0; i < 100; ++i) {
        std::vector<Mesh> meshes(1 + engine() % 3);
        for (Mesh& mesh : meshes) {
            for (int n = 0; n < 20; ++n) {
                mesh.nodes.emplace_back(engine() % 3, engine() % 3, engine() % 3);
            }
            mesh.nodes[engine() % 20][engine() % 3] = engine() % 2 ? std::nan("") : UNDEFINED_DOUBLE;
            for (int e = 0; e < 12; ++e) {
                const auto type = static_cast<ElementType>(engine() % ELEMENT_TYPE_COUNT);
                std::vector<std::uint32_t> nodes(elementTypeInfo(type).nodeCount);
                std::generate(nodes.begin(), nodes.end(), [&engine] { return engine() % 20; });
                mesh.addElement(type, nodes);
            }
        }
        PathModel model(meshes);
        const ResultInfo info = model.addCounting(static_cast<ResultMapping>(1 + engine() % 4));
        model.model->addCuttingPlane()->setPlane({1, 1, 1}, {double(engine() % 2), double(engine() % 2), 1});
        const auto randomItem = [&](bool onPlane) {
            const Vec3d point(engine() % 9 / 4.0, engine() % 9 / 4.0, engine() % 9 / 4.0);
            HitItem item = PathModel::coordinate(engine() % meshes.size(), engine() % 12, point);
            item.setNodeIndex(engine() % 20);
            item.setElementLocalSurfaceIndex(engine() % 6);
            return onPlane ? PathModel::onPlane(0, point) : item;
        };
        for (int j = 0; j < 40; ++j) {
            const bool onPlane = j % 4 == 3;
            const std::vector<HitItem> items = {randomItem(onPlane), randomItem(onPlane), randomItem(onPlane)};
            const auto type = static_cast<SurfacePathQuery::PointType>(j % 3);
            const std::vector<Vec3d> path = model.path(type, items);
            for (std::size_t p = 1; p < path.size(); ++p) {
                EXPECT_GT((path[p] - path[p - 1]).length(), 0.0);
                EXPECT_LT((path[p] - path[p - 1]).length(), 10.0);
            }
            const Curve curve = curveOf(model, type, items, info);
            EXPECT_TRUE(std::is_sorted(curve.x.begin(), curve.x.end()));
            if (!curve.x.empty()) {
                EXPECT_EQ(curve.x.front(), 0.0);
                EXPECT_NEAR(curve.x.back(), lengthOf(path), 1e-9);
            }
            pathCount += !path.empty();
        }
    }
    EXPECT_GT(pathCount, 300u);
}

} // namespace
