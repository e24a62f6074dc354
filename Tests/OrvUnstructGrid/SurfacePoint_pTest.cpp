#include "OrvUnstructGrid/SurfacePoint_p.h"

#include "Tests/OrvUnstructGrid/SurfaceTopologyModels.h"

#include <gmock/gmock.h>

#include <cmath>
#include <random>

using namespace orv::ug;
using orv::Vec3d;
using orvtest::Mesh;
using orvtest::TopologyParts;
using testing::ElementsAre;
using testing::SizeIs;

namespace {

void expectNear(const Vec3d& actual, const Vec3d& expected) {
    EXPECT_NEAR((actual - expected).length(), 0.0, 1e-12) << actual.x() << ", " << actual.y() << ", " << actual.z();
}

class PlatePointTest : public testing::Test {
protected:
    SurfacePoint nearest(const Vec3d& point) {
        const auto found = nearestPoint(topology, topology.piecesOfElement(0, 0), point);
        return found ? *found : SurfacePoint();
    }

    TopologyParts parts{{orvtest::plate(2, 2)}};
    SurfaceTopology topology{parts.parts()};
};

TEST_F(PlatePointTest, InsideATriangleThereIsNoOther) {
    const SurfacePoint point = nearest({0.75, 0.25, 3});
    expectNear(point.point, {0.75, 0.25, 0});
    EXPECT_THAT(point.pieces, ElementsAre(SurfacePiece{0, 0}));
    expectNear(point.normal, {0, 0, 1});
    EXPECT_TRUE(point.isOnShell);
}

TEST_F(PlatePointTest, OnASideThereAreTwo) {
    EXPECT_THAT(nearest({0.5, 0.5, 0}).pieces, ElementsAre(SurfacePiece{0, 0}, SurfacePiece{0, 1}));
    // The right side is one of the next square's second triangle.
    EXPECT_THAT(nearest({1, 0.25, 0}).pieces, ElementsAre(SurfacePiece{0, 0}, SurfacePiece{0, 3}));
    EXPECT_THAT(nearest({0.25, -4, 0}).pieces, ElementsAre(SurfacePiece{0, 0}));
    expectNear(nearest({0.25, -4, 0}).point, {0.25, 0, 0});
}

TEST_F(PlatePointTest, AtACornerThereAreAllAround) {
    EXPECT_THAT(nearest({1, 1, 0}).pieces, SizeIs(6)); // One of the four squares has its diagonal there, and another.
    EXPECT_THAT(nearest({9, 9, 0}).pieces, SizeIs(6));
    EXPECT_EQ(nearest({9, 9, 0}).point, Vec3d(1, 1, 0));
}

TEST_F(PlatePointTest, RoundingsAreNoDistance) {
    const SurfacePoint atCorner = nearest({1 - 1e-11, 1 - 1e-12, 1e-9});
    EXPECT_EQ(atCorner.point, Vec3d(1, 1, 0));
    EXPECT_THAT(atCorner.pieces, SizeIs(6));
    const SurfacePoint atSide = nearest({1 - 1e-11, 0.25, 0});
    EXPECT_EQ(atSide.point.x(), 1.0);
    EXPECT_THAT(atSide.pieces, SizeIs(2));
    EXPECT_THAT(nearest({1 - 1e-9, 0.25, 0}).pieces, SizeIs(1));
}

TEST_F(PlatePointTest, NothingIsNearToNothing) {
    EXPECT_FALSE(nearestPoint(topology, {}, {0, 0, 0}));
    EXPECT_FALSE(nearestPoint(topology, topology.piecesOfElement(0, 0), {std::nan(""), 0, 0}));
    EXPECT_FALSE(nearestPoint(topology, topology.piecesOfElement(0, 0), orv::UNDEFINED_VECTOR));
}

TEST(SurfacePointTest, TheNearestPointIsNearerThanAnyOther) {
    // Random triangles and points; whatever way the triangle's points are searched, none is nearer.
    std::mt19937 engine(11);
    auto random = [&engine] { return engine() / 4294967296.0; };
    auto randomPoint = [&random] { return Vec3d(random() * 2 - 0.5, random() * 2 - 0.5, random() * 2 - 0.5); };
    for (int i = 0; i < 200; ++i) {
        Mesh mesh;
        mesh.nodes = {randomPoint(), randomPoint(), randomPoint()};
        mesh.addElement(TRIANGLE, {0, 1, 2});
        const TopologyParts parts({mesh});
        const SurfaceTopology topology(parts.parts());
        const Vec3d point = randomPoint();
        const auto found = nearestPoint(topology, topology.piecesOfElement(0, 0), point);
        ASSERT_TRUE(found);
        const double distance = (found->point - point).length();
        const std::array<double, 3> weights = weightsAt(topology, {0, 0}, point);
        expectNear(mesh.nodes[0] * weights[0] + mesh.nodes[1] * weights[1] + mesh.nodes[2] * weights[2], found->point);
        for (int a = 0; a <= 20; ++a) {
            for (int b = 0; a + b <= 20; ++b) {
                const Vec3d other = mesh.nodes[0] + (mesh.nodes[1] - mesh.nodes[0]) * (a / 20.0) +
                                    (mesh.nodes[2] - mesh.nodes[0]) * (b / 20.0);
                EXPECT_GE((other - point).length(), distance - 1e-12);
            }
        }
    }
}

TEST(SurfacePointTest, ATubeIsALine) {
    Mesh mesh;
    mesh.nodes = {{0, 0, 0}, {4, 0, 0}, {4, 3, 0}};
    mesh.addElement(BEAM, {0, 1});
    mesh.addElement(BEAM, {1, 2});
    const TopologyParts parts({mesh});
    const SurfaceTopology topology(parts.parts());
    const auto inside = nearestPoint(topology, topology.piecesOfElement(0, 0), {1, 2, 3});
    ASSERT_TRUE(inside);
    expectNear(inside->point, {1, 0, 0});
    EXPECT_THAT(inside->pieces, ElementsAre(SurfacePiece{0, 0}));
    EXPECT_EQ(inside->normal, Vec3d());
    EXPECT_FALSE(inside->isOnShell);
    EXPECT_THAT(weightsAt(topology, {0, 0}, {1, 2, 3}), ElementsAre(0.75, 0.25, 0.0));
    const auto end = nearestPoint(topology, topology.piecesOfElement(0, 0), {5, 0, 0});
    ASSERT_TRUE(end);
    EXPECT_EQ(end->point, Vec3d(4, 0, 0));
    EXPECT_THAT(end->pieces, SizeIs(2));
}

TEST(SurfacePointTest, NormalsOfABoxAreMeansByAngles) {
    const TopologyParts parts({orvtest::block(2, 2, 2)});
    const SurfaceTopology topology(parts.parts());
    const auto normalAt = [&topology](Vertex vertex) { return pointAtVertex(topology, vertex)->normal; };
    // The middle of the top, of an edge and a corner, however many triangles there are on each side.
    expectNear(normalAt(22), {0, 0, 1});
    expectNear(normalAt(23), Vec3d(1, 0, 1) / std::sqrt(2.0));
    expectNear(normalAt(19), Vec3d(0, -1, 1) / std::sqrt(2.0));
    expectNear(normalAt(26), Vec3d(1, 1, 1) / std::sqrt(3.0));
    expectNear(normalAt(0), Vec3d(-1, -1, -1) / std::sqrt(3.0));
    EXPECT_FALSE(pointAtVertex(topology, 26)->isOnShell);
    EXPECT_FALSE(pointAtVertex(topology, 13)); // Inside.
    // Between two nodes of an edge.
    const auto onEdge = nearestPoint(topology, topology.piecesOfElement(0, 7), {2.0, 1.3, 2.0});
    ASSERT_TRUE(onEdge);
    expectNear(onEdge->normal, Vec3d(1, 0, 1) / std::sqrt(2.0));
}

TEST(SurfacePointTest, ShellsThatAreTurnedCountAsOne) {
    Mesh mesh = orvtest::plate(2, 2);
    std::swap(mesh.connectivity[5], mesh.connectivity[7]);
    std::swap(mesh.connectivity[9], mesh.connectivity[11]);
    const TopologyParts parts({mesh});
    expectNear(pointAtVertex(SurfaceTopology(parts.parts()), 4)->normal, {0, 0, 1});
}

TEST(SurfacePointTest, ShellsOnAVolumeFollowIt) {
    // A skin on the top, turned down.
    Mesh mesh = orvtest::block(1, 1, 1);
    mesh.addElement(QUADRILATERAL, {4, 6, 7, 5});
    const TopologyParts parts({mesh});
    const SurfaceTopology topology(parts.parts());
    const auto corner = pointAtVertex(topology, 7);
    expectNear(corner->normal, Vec3d(1, 1, 2) / std::sqrt(6.0));
    EXPECT_FALSE(corner->isOnShell);
    const auto inside = nearestPoint(topology, topology.piecesOfElement(0, 1), {0.7, 0.4, 1});
    expectNear(inside->normal, {0, 0, -1});
    EXPECT_TRUE(inside->isOnShell);
}

TEST(SurfacePointTest, NormalsThatCancelOutAreNone) {
    // A tetrahedron that is flat: at its first node the two sides of 45 degrees are on the one below of 90.
    Mesh mesh;
    mesh.nodes = {{0, 0, 0}, {2, 0, 0}, {0, 2, 0}, {1, 1, 0}};
    mesh.addElement(TETRAHEDRON, {0, 1, 2, 3});
    const TopologyParts parts({mesh});
    EXPECT_EQ(pointAtVertex(SurfaceTopology(parts.parts()), 0)->normal, Vec3d());
}

TEST(SurfacePointTest, WithoutAnAreaThereIsNoNormal) {
    Mesh mesh;
    mesh.nodes = {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {2, 0, 0}};
    mesh.addElement(TRIANGLE, {0, 1, 2});
    mesh.addElement(TRIANGLE, {1, 2, 3});
    const TopologyParts parts({mesh});
    const SurfaceTopology topology(parts.parts());
    EXPECT_EQ(pointAtVertex(topology, 1)->normal, Vec3d());
    const auto inside = nearestPoint(topology, topology.piecesOfElement(0, 0), {0.5, 1, 0});
    ASSERT_TRUE(inside);
    expectNear(inside->point, {0.5, 0, 0});
}

} // namespace
