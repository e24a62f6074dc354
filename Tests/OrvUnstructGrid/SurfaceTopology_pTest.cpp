#include "OrvUnstructGrid/SurfaceTopology_p.h"

#include "Tests/OrvUnstructGrid/SurfaceTopologyModels.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <set>

using namespace orv::ug;
using orv::Vec3d;
using orvtest::Mesh;
using orvtest::movedBy;
using orvtest::TopologyParts;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

std::vector<SurfacePiece> piecesAt(const SurfaceTopology& topology, Vertex vertex) {
    std::vector<SurfacePiece> pieces;
    topology.forPiecesAt(vertex, [&pieces](SurfacePiece piece) { pieces.push_back(piece); });
    EXPECT_TRUE(std::is_sorted(pieces.begin(), pieces.end()));
    return pieces;
}

std::vector<Vertex> cornersOf(const SurfaceTopology& topology, SurfacePiece piece) {
    const PieceCorners corners = topology.corners(piece);
    return {corners.begin(), corners.end()};
}

/// All triangles that are to be met at some node of some part.
std::set<SurfacePiece> allPieces(const SurfaceTopology& topology) {
    std::set<SurfacePiece> pieces;
    for (std::uint32_t part = 0; part < topology.parts().size(); ++part) {
        for (std::uint32_t node = 0; node < topology.parts()[part].data->nodes()->nodeCount(); ++node) {
            for (const SurfacePiece piece : piecesAt(topology, topology.vertexOf(part, node))) {
                pieces.insert(piece);
            }
        }
    }
    return pieces;
}

TEST(SurfaceTopologyTest, VerticesAreNodesCountedThroughAllParts) {
    const Mesh square = orvtest::plate(1, 1);
    const TopologyParts parts({square, movedBy(square, {5, 0, 0})});
    const SurfaceTopology topology(parts.parts());
    EXPECT_EQ(topology.vertexOf(0, 3), 3u);
    EXPECT_EQ(topology.vertexOf(1, 0), 4u);
    EXPECT_EQ(topology.point(3), Vec3d(1, 1, 0));
    EXPECT_EQ(topology.point(5), Vec3d(6, 0, 0));
    EXPECT_THAT(piecesAt(topology, 4), ElementsAre(SurfacePiece{1, 0}, SurfacePiece{1, 1}));
}

TEST(SurfaceTopologyTest, NodesThatAreJoinedAreOneVertex) {
    const Mesh square = orvtest::plate(1, 1);
    const TopologyParts parts({square, movedBy(square, {1, 0, 0})});
    const SurfaceTopology topology(parts.parts());
    EXPECT_EQ(topology.vertexOf(1, 0), 1u);
    EXPECT_EQ(topology.vertexOf(1, 1), 5u);
    // Each square is split from its first corner to its third.
    EXPECT_THAT(piecesAt(topology, 1), ElementsAre(SurfacePiece{0, 0}, SurfacePiece{1, 0}, SurfacePiece{1, 1}));
    EXPECT_THAT(cornersOf(topology, {1, 0}), ElementsAre(1, 5, 7));
}

TEST(SurfaceTopologyTest, APieceKnowsItsElement) {
    Mesh mesh = orvtest::plate(2, 1);
    mesh.addElement(BEAM, {0, 5});
    mesh.addElement(BEAM, {5, 3});
    const TopologyParts parts({mesh});
    const SurfaceTopology topology(parts.parts());
    EXPECT_EQ(topology.element({0, 1}), 0u);
    EXPECT_EQ(topology.element({0, 2}), 1u);
    EXPECT_TRUE(topology.isTriangle({0, 3}));
    EXPECT_FALSE(topology.isTriangle({0, 4}));
    EXPECT_EQ(topology.element({0, 4}), 2u);
    EXPECT_EQ(topology.element({0, 5}), 3u);
    EXPECT_THAT(cornersOf(topology, {0, 5}), ElementsAre(5, 3));
    EXPECT_THAT(topology.piecesOfElement(0, 1), ElementsAre(SurfacePiece{0, 2}, SurfacePiece{0, 3}));
    EXPECT_THAT(topology.piecesOfElement(0, 3), ElementsAre(SurfacePiece{0, 5}));
    EXPECT_THAT(topology.piecesOfElement(0, 4), IsEmpty());
    EXPECT_THAT(piecesAt(topology, 5),
                ElementsAre(SurfacePiece{0, 2}, SurfacePiece{0, 3}, SurfacePiece{0, 4}, SurfacePiece{0, 5}));
}

TEST(SurfaceTopologyTest, TrianglesOfAVolumeKnowTheirSurface) {
    const TopologyParts parts({orvtest::block(2, 1, 1)});
    const SurfaceTopology topology(parts.parts());
    // Ten faces of two triangles; the one between both cubes is missing.
    std::set<int> surfaces;
    for (const SurfacePiece piece : topology.piecesOfElement(0, 0)) {
        surfaces.insert(topology.elementSurface(piece));
        EXPECT_EQ(topology.element(piece), 0u);
    }
    EXPECT_THAT(surfaces, SizeIs(5));
    EXPECT_THAT(allPieces(topology), SizeIs(20));
}

TEST(SurfaceTopologyTest, FacesWhereBodiesTouchAreInside) {
    // However the faces are split: the second cube is turned by a quarter about x.
    const Mesh cube = orvtest::block(1, 1, 1);
    const Mesh turned = cube.mapped([](const Vec3d& p) { return Vec3d(p.x() + 1, 1 - p.z(), p.y()); });
    const TopologyParts parts({cube, turned});
    const SurfaceTopology topology(parts.parts());
    EXPECT_THAT(allPieces(topology), SizeIs(20));
    EXPECT_THAT(topology.piecesOfElement(0, 0), SizeIs(10));
    EXPECT_THAT(topology.piecesOfElement(1, 0), SizeIs(10));
    for (const SurfacePiece piece : allPieces(topology)) {
        double x = 0;
        for (const Vertex corner : topology.corners(piece)) {
            x += topology.point(corner).x();
        }
        EXPECT_NE(x, 3.0); // All corners at x = 1.
    }
}

TEST(SurfaceTopologyTest, QuadraticFacesTouchByTheirCorners) {
    // A cube with and one without mid-side nodes.
    Mesh linear = orvtest::block(1, 1, 1);
    Mesh quadratic;
    quadratic.nodes = {{1, 0, 0}, {2, 0, 0}, {2, 1, 0}, {1, 1, 0}, {1, 0, 1}, {2, 0, 1}, {2, 1, 1}, {1, 1, 1}};
    std::vector<std::uint32_t> nodes(20);
    for (std::uint32_t i = 0; i < 20; ++i) {
        nodes[i] = i;
    }
    for (std::size_t e = 0; e < 12; ++e) {
        const auto edge = elementEdge(HEXAHEDRON_20, e);
        quadratic.nodes.push_back((quadratic.nodes[edge[0]] + quadratic.nodes[edge[1]]) * 0.5);
    }
    quadratic.addElement(HEXAHEDRON_20, nodes);
    const TopologyParts parts({linear, quadratic});
    const SurfaceTopology topology(parts.parts());
    EXPECT_THAT(topology.piecesOfElement(0, 0), SizeIs(10));
    EXPECT_THAT(topology.piecesOfElement(1, 0), SizeIs(30));
}

TEST(SurfaceTopologyTest, TheSameBodyTwiceIsNotInside) {
    const Mesh cube = orvtest::block(1, 1, 1);
    const TopologyParts parts({cube, cube});
    EXPECT_THAT(allPieces(SurfaceTopology(parts.parts())), SizeIs(24));
}

TEST(SurfaceTopologyTest, ShellsOnABodyAreOutside) {
    Mesh skin;
    skin.nodes = {{0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}};
    skin.addElement(QUADRILATERAL, {3, 2, 1, 0});
    const TopologyParts parts({orvtest::block(1, 1, 1), skin});
    EXPECT_THAT(allPieces(SurfaceTopology(parts.parts())), SizeIs(14));
}

TEST(SurfaceTopologyTest, FacesThatTouchInPartAreOutside) {
    const TopologyParts parts({orvtest::block(1, 1, 1), movedBy(orvtest::block(1, 1, 1), {1, 1, 0})});
    EXPECT_THAT(allPieces(SurfaceTopology(parts.parts())), SizeIs(24));
}

TEST(SurfaceTopologyTest, CollapsedFacesTouchToo) {
    // A wedge made of a hexahedron touches a wedge with its triangle at z = 1.
    const std::vector<std::uint32_t> collapsed[] = {{0, 1, 2, 2, 3, 4, 5, 5}, {0, 1, 2, 0, 3, 4, 5, 3}};
    Mesh wedge;
    wedge.nodes = {{0, 0, 1}, {1, 0, 1}, {0, 1, 1}, {0, 0, 2}, {1, 0, 2}, {0, 1, 2}};
    wedge.addElement(WEDGE, {0, 1, 2, 3, 4, 5});
    for (const std::vector<std::uint32_t>& nodes : collapsed) {
        Mesh hexahedron;
        hexahedron.nodes = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 1}, {0, 1, 1}};
        hexahedron.addElement(HEXAHEDRON, nodes);
        const TopologyParts parts({hexahedron, wedge});
        // Each has 8 triangles, one of which touches the other's.
        EXPECT_THAT(allPieces(SurfaceTopology(parts.parts())), SizeIs(14));
    }
}

} // namespace
