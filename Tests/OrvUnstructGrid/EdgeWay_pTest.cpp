#include "OrvUnstructGrid/EdgeWay_p.h"

#include "Tests/OrvUnstructGrid/SurfaceTopologyModels.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>
#include <random>

using namespace orv::ug;
using orv::Vec3d;
using orvtest::Mesh;
using orvtest::TopologyParts;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

double lengthOf(const std::vector<PathSegment>& segments) {
    double length = 0;
    for (const PathSegment& segment : segments) {
        length += segment.length();
    }
    return length;
}

/// The lengths of the shortest ways from a node along the sides of triangles, by relaxing all of them until nothing
/// changes.
std::vector<double> shortestLengths(const Mesh& mesh, const PartSurface& surface, std::size_t from) {
    std::vector<double> lengths(mesh.nodes.size(), std::numeric_limits<double>::infinity());
    lengths[from] = 0;
    for (bool hasChanged = true; hasChanged;) {
        hasChanged = false;
        for (std::size_t i = 0; i < surface.corners.size(); ++i) {
            const std::uint32_t a = surface.corners[i];
            const std::uint32_t b = surface.corners[i % 3 == 2 ? i - 2 : i + 1];
            const double side = (mesh.nodes[a] - mesh.nodes[b]).length();
            for (const auto& [near, far] : {std::pair(a, b), std::pair(b, a)}) {
                if (lengths[near] + side < lengths[far]) {
                    lengths[far] = lengths[near] + side;
                    hasChanged = true;
                }
            }
        }
    }
    return lengths;
}

TEST(EdgeWayTest, NoWayAlongSidesIsShorter) {
    // A bumpy plate with holes, from one node to all others.
    std::mt19937 engine(5);
    auto random = [&engine] { return engine() / 4294967296.0; };
    std::set<std::uint32_t> holes;
    for (int i = 0; i < 40; ++i) {
        holes.insert(engine() % 144);
    }
    const Mesh mesh = orvtest::plate(12, 12, holes).mapped([&random](const Vec3d& p) {
        return p + Vec3d(random() * 0.4, random() * 0.4, random() * 2);
    });
    const TopologyParts parts({mesh});
    const SurfaceTopology topology(parts.parts());
    const auto start = pointAtVertex(topology, 70);
    ASSERT_TRUE(start);
    const std::vector<double> expected = shortestLengths(mesh, *topology.parts()[0].surface, 70);
    std::size_t found = 0;
    for (Vertex vertex = 0; vertex < mesh.nodes.size(); ++vertex) {
        const auto end = pointAtVertex(topology, vertex);
        if (!end || vertex == 70) {
            continue;
        }
        const std::vector<PathSegment> way = edgeWay(topology, *start, *end);
        if (std::isinf(expected[vertex])) {
            EXPECT_THAT(way, IsEmpty());
            continue;
        }
        ASSERT_FALSE(way.empty());
        EXPECT_NEAR(lengthOf(way), expected[vertex], 1e-9);
        EXPECT_EQ(way.front().begin, start->point);
        EXPECT_EQ(way.back().end, end->point);
        for (std::size_t i = 1; i < way.size(); ++i) {
            EXPECT_EQ(way[i - 1].end, way[i].begin);
        }
        ++found;
    }
    EXPECT_GT(found, 100u);
}

TEST(EdgeWayTest, APointInsideATriangleIsLeftByACorner) {
    const TopologyParts parts({orvtest::plate(3, 1)});
    const SurfaceTopology topology(parts.parts());
    const auto from = nearestPoint(topology, topology.piecesOfElement(0, 0), {0.5, 0.25, 0});
    const auto to = nearestPoint(topology, topology.piecesOfElement(0, 2), {2.5, 0.25, 0});
    // By (1, 0) and (2, 0); the last triangle is the lower one at (2, 0).
    EXPECT_NEAR(lengthOf(edgeWay(topology, *from, *to)), 2 * std::hypot(0.5, 0.25) + 1, 1e-12);
    const auto beside = nearestPoint(topology, topology.piecesOfElement(0, 0), {0.75, 0.5, 0});
    const std::vector<PathSegment> inside = edgeWay(topology, *from, *beside);
    ASSERT_EQ(inside.size(), 1u);
    EXPECT_NEAR(inside[0].length(), std::hypot(0.25, 0.25), 1e-12);
    EXPECT_THAT(edgeWay(topology, *from, *from), IsEmpty());
}

TEST(EdgeWayTest, AlongASideTheFirstElementCounts) {
    const TopologyParts parts({orvtest::plate(1, 2), orvtest::movedBy(orvtest::plate(1, 2), {1, 0, 0})});
    const SurfaceTopology topology(parts.parts());
    // Between both parts, from (1, 0) to (1, 2).
    const std::vector<PathSegment> way = edgeWay(topology, *pointAtVertex(topology, 1), *pointAtVertex(topology, 5));
    ASSERT_EQ(way.size(), 2u);
    EXPECT_EQ(way[0].partIndex, 0u);
    EXPECT_EQ(way[0].element, 0u);
    EXPECT_EQ(way[1].partIndex, 0u);
    EXPECT_EQ(way[1].element, 1u);
    // Each end is one node of the element: the second and the third of each square.
    EXPECT_THAT(way[0].atBegin.places[0], 1u);
    EXPECT_THAT(way[0].atEnd.places[0], 2u);
    EXPECT_THAT(way[1].atBegin.places[0], 5u);
    EXPECT_THAT(way[1].atEnd.places[0], 6u);
    for (const PathSegment& segment : way) {
        EXPECT_THAT(segment.atBegin.weights, ElementsAre(1, 0, 0, 0, 0, 0));
        EXPECT_THAT(segment.atEnd.weights, ElementsAre(1, 0, 0, 0, 0, 0));
    }
}

} // namespace
