// Walks compared with a cut through all triangles.

#include "OrvUnstructGrid/SurfaceWalk_p.h"

#include "Tests/OrvUnstructGrid/SurfaceCuts.h"
#include "Tests/OrvUnstructGrid/SurfaceTopologyModels.h"

#include <gmock/gmock.h>

#include <cmath>
#include <random>

using namespace orv::ug;
using orv::Vec3d;
using orvtest::arcsOf;
using orvtest::CutArcs;
using orvtest::Mesh;
using orvtest::TopologyParts;
using orvtest::trianglesOf;
using testing::IsEmpty;

namespace {

constexpr double pi = 3.14159265358979323846;

class Random {
public:
    explicit Random(unsigned int seed) : m_engine(seed) {}

    double number() {
        return m_engine() / 4294967296.0;
    }

    std::size_t index(std::size_t count) {
        return m_engine() % count;
    }

    /// Of length 1.
    Vec3d direction() {
        for (;;) {
            const Vec3d v(number() - 0.5, number() - 0.5, number() - 0.5);
            if (v.length() > 0.1 && v.length() < 0.5) {
                return v / v.length();
            }
        }
    }

private:
    std::mt19937 m_engine;
};

/// Tetrahedra from the origin to the faces of the convex hull of points on a sphere: planes through three points that
/// have all others behind.
Mesh randomHull(Random* random, std::size_t pointCount) {
    Mesh mesh;
    mesh.nodes.emplace_back();
    for (std::size_t i = 0; i < pointCount; ++i) {
        mesh.nodes.push_back(random->direction());
    }
    for (std::uint32_t a = 1; a < mesh.nodes.size(); ++a) {
        for (std::uint32_t b = 1; b < mesh.nodes.size(); ++b) {
            for (std::uint32_t c = b + 1; c < mesh.nodes.size(); ++c) {
                if (a >= b) {
                    continue;
                }
                const Vec3d origin = mesh.nodes[a];
                const Vec3d normal = (mesh.nodes[b] - origin) ^ (mesh.nodes[c] - origin);
                std::size_t before = 0;
                for (const Vec3d& node : mesh.nodes) {
                    before += (node - origin) * normal > 1e-12;
                }
                if (before == 0) {
                    mesh.addElement(TETRAHEDRON, {a, c, b, 0});
                } else if (before + 3 == mesh.nodes.size()) {
                    mesh.addElement(TETRAHEDRON, {a, b, c, 0});
                }
            }
        }
    }
    return mesh;
}

/// Wedges around the z axis from 0 to the height.
Mesh cylinder(std::uint32_t sectors, std::uint32_t layers) {
    Mesh mesh;
    for (std::uint32_t layer = 0; layer <= layers; ++layer) {
        const std::uint32_t axis = layer * (sectors + 1);
        mesh.nodes.emplace_back(0, 0, layer);
        for (std::uint32_t i = 0; i < sectors; ++i) {
            const double angle = 2 * pi * i / sectors;
            mesh.nodes.emplace_back(std::cos(angle), std::sin(angle), layer);
            const std::uint32_t next = (i + 1) % sectors;
            if (layer < layers) {
                const std::uint32_t up = sectors + 1;
                mesh.addElement(
                    WEDGE, {axis, axis + 1 + i, axis + 1 + next, axis + up, axis + up + 1 + i, axis + up + 1 + next});
            }
        }
    }
    return mesh;
}

double lengthOf(const std::vector<PathSegment>& segments) {
    double length = 0;
    for (const PathSegment& segment : segments) {
        length += segment.length();
    }
    return length;
}

/// What holds of every walk: from end to end without a jump, in the plane, each part of it in a triangle of its own and
/// where that says it is.
void expectGoodWalk(const SurfaceTopology& topology, const std::vector<PathSegment>& walk, const SurfacePoint& from,
                    const SurfacePoint& to) {
    ASSERT_FALSE(walk.empty());
    EXPECT_EQ(walk.front().begin, from.point);
    EXPECT_EQ(walk.back().end, to.point);
    EXPECT_GE(lengthOf(walk), (to.point - from.point).length() - 1e-12);
    std::set<SurfacePiece> entered;
    for (std::size_t i = 0; i < walk.size(); ++i) {
        if (i > 0) {
            EXPECT_EQ(walk[i - 1].end, walk[i].begin);
        }
        const DataPart& part = *topology.parts()[walk[i].partIndex].data;
        const auto mean = [&part](const NodeMean& nodes) {
            Vec3d sum;
            for (std::size_t t = 0; t < NodeMean::MAX_TERMS; ++t) {
                sum += part.nodes()->node(part.elements()->connectivity()[nodes.places[t]]) * nodes.weights[t];
            }
            return sum;
        };
        EXPECT_NEAR((mean(walk[i].atBegin) - walk[i].begin).length(), 0.0, 1e-9);
        EXPECT_NEAR((mean(walk[i].atEnd) - walk[i].end).length(), 0.0, 1e-9);
        if (walk[i].length() > 1e-9) {
            const auto middle = nearestPoint(
                topology, topology.piecesOfElement(static_cast<std::uint32_t>(walk[i].partIndex), walk[i].element),
                (walk[i].begin + walk[i].end) * 0.5);
            ASSERT_TRUE(middle);
            EXPECT_NEAR((middle->point - (walk[i].begin + walk[i].end) * 0.5).length(), 0.0, 1e-9);
            if (middle->pieces.size() == 1) {
                EXPECT_TRUE(entered.insert(middle->pieces[0]).second);
            }
        }
    }
}

void expectReversed(const std::vector<PathSegment>& walk, std::vector<PathSegment> back, double tolerance) {
    reversePath(&back);
    ASSERT_EQ(walk.size(), back.size());
    for (std::size_t i = 0; i < walk.size(); ++i) {
        EXPECT_NEAR((walk[i].begin - back[i].begin).length(), 0.0, tolerance);
        EXPECT_NEAR((walk[i].end - back[i].end).length(), 0.0, tolerance);
        EXPECT_EQ(walk[i].element, back[i].element);
    }
}

/// Walks between random points of a convex body's triangles, all of which are the shorter arc of the cut.
void expectShorterArcs(const Mesh& mesh, Random* random, int walkCount) {
    const TopologyParts parts({mesh});
    const SurfaceTopology topology(parts.parts());
    const std::vector<orvtest::CutTriangle> triangles = trianglesOf(topology);
    auto randomPoint = [&](const orvtest::CutTriangle& triangle) {
        double a = random->number();
        double b = random->number();
        if (a + b > 1) {
            a = 1 - a;
            b = 1 - b;
        }
        const auto& c = triangle.corners;
        return *nearestPoint(topology, {&triangle.piece, 1}, c[0] + (c[1] - c[0]) * a + (c[2] - c[0]) * b);
    };
    for (int i = 0; i < walkCount; ++i) {
        const orvtest::CutTriangle& first = triangles[random->index(triangles.size())];
        const orvtest::CutTriangle& second = triangles[random->index(triangles.size())];
        const SurfacePoint from = randomPoint(first);
        const SurfacePoint to = randomPoint(second);
        const Vec3d mean = first.normal() + second.normal();
        const Vec3d normal = (to.point - from.point) ^ mean;
        if (normal.length() < 1e-3 * (to.point - from.point).length()) {
            continue; // Hardly a plane.
        }
        const std::vector<PathSegment> walk = surfaceWalk(topology, from, to);
        expectGoodWalk(topology, walk, from, to);
        const CutArcs arcs = arcsOf(triangles, from.point, to.point, mean);
        EXPECT_NEAR(lengthOf(walk), std::min(arcs.first, arcs.second), 1e-9);
        expectReversed(walk, surfaceWalk(topology, to, from), 1e-9);
    }
}

TEST(SurfaceWalkTest, OnConvexBodiesTheShorterArcOfTheCutIsWalked) {
    Random random(1);
    for (int body = 0; body < 40; ++body) {
        expectShorterArcs(randomHull(&random, 5 + random.index(20)), &random, 20);
    }
}

TEST(SurfaceWalkTest, OnACylinderTheShorterArcOfTheCutIsWalked) {
    Random random(2);
    expectShorterArcs(cylinder(24, 8), &random, 100);
    expectShorterArcs(cylinder(3, 1), &random, 50);
}

TEST(SurfaceWalkTest, OnABlockTheShorterArcOfTheCutIsWalked) {
    Random random(3);
    expectShorterArcs(orvtest::block(6, 4, 3), &random, 200);
    // Long slivers, far from the origin.
    expectShorterArcs(orvtest::block(6, 4, 3).mapped([](const Vec3d& p) {
        return Vec3d(100 + p.x(), 100 + 0.01 * p.y() + p.x(), 100 + p.z() - 3 * p.y());
    }),
                      &random, 200);
}

TEST(SurfaceWalkTest, AroundACylinderTheLengthIsThatOfTheFacets) {
    // In the plane z = 0.5 from the middle of one facet to that of the fifth on: five facets of width 2 sin(pi / 24),
    // but half of the first and the last.
    const TopologyParts parts({cylinder(24, 1)});
    const SurfaceTopology topology(parts.parts());
    const auto middleOf = [&topology](std::uint32_t sector) {
        const double angle = 2 * pi * (sector + 0.5) / 24;
        const double radius = std::cos(pi / 24);
        return *nearestPoint(topology, topology.piecesOfElement(0, sector),
                             {radius * std::cos(angle), radius * std::sin(angle), 0.5});
    };
    EXPECT_NEAR(lengthOf(surfaceWalk(topology, middleOf(1), middleOf(6))), 5 * 2 * std::sin(pi / 24), 1e-9);
    // More than half round: 9 facets the other way.
    EXPECT_NEAR(lengthOf(surfaceWalk(topology, middleOf(1), middleOf(16))), 9 * 2 * std::sin(pi / 24), 1e-9);
}

TEST(SurfaceWalkTest, ThroughNodesAndAlongSidesNothingStalls) {
    // Between all nodes of a regular block: every walk goes through nodes or along sides, none is broken, and each is
    // the same back.
    const TopologyParts parts({orvtest::block(2, 2, 2)});
    const SurfaceTopology topology(parts.parts());
    for (Vertex a = 0; a < 27; ++a) {
        for (Vertex b = 0; b < 27; ++b) {
            if (a == b || a == 13 || b == 13) {
                continue; // Inside.
            }
            const SurfacePoint from = *pointAtVertex(topology, a);
            const SurfacePoint to = *pointAtVertex(topology, b);
            expectGoodWalk(topology, surfaceWalk(topology, from, to), from, to);
        }
    }
}

TEST(SurfaceWalkTest, RandomNodesOfAHullAreReached) {
    Random random(4);
    for (int body = 0; body < 20; ++body) {
        const Mesh mesh = randomHull(&random, 30);
        const TopologyParts parts({mesh});
        const SurfaceTopology topology(parts.parts());
        for (int i = 0; i < 20; ++i) {
            const auto from = pointAtVertex(topology, static_cast<Vertex>(1 + random.index(30)));
            const auto to = pointAtVertex(topology, static_cast<Vertex>(1 + random.index(30)));
            if (from && to && !(from->point == to->point)) {
                const std::vector<PathSegment> walk = surfaceWalk(topology, *from, *to);
                expectGoodWalk(topology, walk, *from, *to);
                const CutArcs arcs = arcsOf(trianglesOf(topology), from->point, to->point, from->normal + to->normal);
                EXPECT_NEAR(lengthOf(walk), std::min(arcs.first, arcs.second), 1e-9);
            }
        }
    }
}

TEST(SurfaceWalkTest, AFreeEdgeInThePlaneIsFollowedOnEitherSide) {
    // An L of which the leg along x has its edge at y = 1, and the other one nothing there but the sides that are cut:
    // along them it would be farther. And the same turned over, so that the surface is on the other side of the edge.
    Mesh mesh;
    mesh.nodes = {{-1, 0, 0}, {0, 0, 0}, {0, 2, 0}, {-1, 2, 0}, {1, 0, 0}, {1, 1, 0}, {1, 2, 0}, {2, 0, 0}, {2, 1, 0}};
    mesh.addElement(QUADRILATERAL, {0, 1, 2, 3});
    mesh.addElement(TRIANGLE, {1, 4, 5});
    mesh.addElement(TRIANGLE, {1, 5, 2});
    mesh.addElement(TRIANGLE, {5, 6, 2});
    mesh.addElement(QUADRILATERAL, {4, 7, 8, 5});
    for (const double side : {1.0, -1.0}) {
        const TopologyParts parts({mesh.mapped([side](const Vec3d& p) { return Vec3d(p.x(), side * p.y(), p.z()); })});
        const SurfaceTopology topology(parts.parts());
        const auto from = nearestPoint(topology, topology.piecesOfElement(0, 0), {-0.9, side, 0});
        EXPECT_NEAR(lengthOf(surfaceWalk(topology, *from, *pointAtVertex(topology, 8))), 2.9, 1e-12);
        EXPECT_NEAR(lengthOf(surfaceWalk(topology, *pointAtVertex(topology, 8), *from)), 2.9, 1e-12);
    }
}

TEST(SurfaceWalkTest, WithoutANormalThereIsNoPlane) {
    Mesh mesh;
    mesh.nodes = {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {1, 1, 0}};
    mesh.addElement(BEAM, {0, 1});
    mesh.addElement(TRIANGLE, {1, 2, 3});
    const TopologyParts parts({mesh});
    const SurfaceTopology topology(parts.parts());
    EXPECT_THAT(surfaceWalk(topology, *pointAtVertex(topology, 0), *pointAtVertex(topology, 2)), IsEmpty());
    EXPECT_THAT(surfaceWalk(topology, *pointAtVertex(topology, 2), *pointAtVertex(topology, 0)), IsEmpty());
    EXPECT_THAT(surfaceWalk(topology, *pointAtVertex(topology, 2), *pointAtVertex(topology, 2)), IsEmpty());
    EXPECT_FALSE(surfaceWalk(topology, *pointAtVertex(topology, 1), *pointAtVertex(topology, 2)).empty());
}

} // namespace
