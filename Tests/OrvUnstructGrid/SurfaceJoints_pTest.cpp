#include "OrvUnstructGrid/SurfaceJoints_p.h"

#include "Tests/OrvUnstructGrid/SurfaceTopologyModels.h"

#include <gmock/gmock.h>

#include <cmath>
#include <random>

using namespace orv::ug;
using orv::Vec3d;
using orvtest::Mesh;
using orvtest::movedBy;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

namespace {

/// The members of each joint, in the numbers that the vertices have when parts are counted through.
std::vector<std::vector<Vertex>> joined(const std::vector<Mesh>& meshes) {
    const orvtest::TopologyParts parts(meshes);
    std::vector<Vertex> firstVertices = {0};
    for (const Mesh& mesh : meshes) {
        firstVertices.push_back(firstVertices.back() + static_cast<Vertex>(mesh.nodes.size()));
    }
    const SurfaceJoints joints = joinParts(parts.parts(), firstVertices);
    std::vector<std::vector<Vertex>> all;
    for (std::uint32_t joint = 0; joint + 1 < joints.offsets.size(); ++joint) {
        const auto members = joints.membersOf(joint);
        all.emplace_back(members.begin(), members.end());
        for (const Vertex member : members) {
            EXPECT_EQ(joints.joints.at(member), joint);
        }
    }
    EXPECT_EQ(joints.joints.size(), joints.members.size());
    return all;
}

TEST(SurfaceJointsTest, NodesAtTheSamePlaceAreJoined) {
    // Nodes 0 to 3 of a square, 4 to 7 of the next and 8 to 11 of the one above both, from x = 1 on.
    const Mesh square = orvtest::plate(1, 1);
    EXPECT_THAT(joined({square, movedBy(square, {1, 0, 0}), movedBy(square, {1, 1, 0})}),
                UnorderedElementsAre(ElementsAre(1, 4), ElementsAre(3, 6, 8), ElementsAre(7, 9)));
}

TEST(SurfaceJointsTest, OnePartHasNoJoints) {
    Mesh twice = orvtest::plate(1, 1);
    twice.nodes.insert(twice.nodes.end(), twice.nodes.begin(), twice.nodes.begin() + 4);
    twice.addElement(QUADRILATERAL, {4, 5, 6, 7});
    twice.addElement(QUADRILATERAL, {0, 1, 3, 2});
    EXPECT_TRUE(joined({twice}).empty());
    EXPECT_TRUE(joined({}).empty());
    // Two nodes of a part at one place do not come together by another part's either: that joins the first one only.
    EXPECT_THAT(joined({twice, movedBy(orvtest::plate(1, 1), {1, 0, 0})}),
                UnorderedElementsAre(ElementsAre(1, 8), ElementsAre(3, 10)));
    EXPECT_THAT(joined({movedBy(orvtest::plate(1, 1), {1, 0, 0}), twice}),
                UnorderedElementsAre(ElementsAre(0, 5), ElementsAre(2, 7)));
}

TEST(SurfaceJointsTest, NearIsAMillionthOfTheDiagonal) {
    // Two squares make a box of 2 by 1: its diagonal is sqrt(5) = 2.236.
    const Mesh square = orvtest::plate(1, 1);
    EXPECT_EQ(joined({square, movedBy(square, {1 + 2.2e-6, 0, 0})}).size(), 2u);
    EXPECT_EQ(joined({square, movedBy(square, {1 - 2.2e-6, 0, 0})}).size(), 2u);
    EXPECT_EQ(joined({square, movedBy(square, {1 + 2.3e-6, 0, 0})}).size(), 0u);
    EXPECT_EQ(joined({square, movedBy(square, {1, 2.3e-6, 0})}).size(), 0u);
}

TEST(SurfaceJointsTest, NodesThatAreNotOnTheSurfaceAreNotJoined) {
    Mesh withLooseNodes = orvtest::plate(1, 1);
    withLooseNodes.nodes.emplace_back(2, 0, 0);
    EXPECT_THAT(joined({withLooseNodes, movedBy(orvtest::plate(1, 1), {1, 0, 0})}),
                UnorderedElementsAre(ElementsAre(1, 5), ElementsAre(3, 7)));
}

TEST(SurfaceJointsTest, NodesThatAreNowhereAreNotJoined) {
    Mesh broken = orvtest::plate(1, 1);
    broken.nodes[1][0] = std::nan("");
    Mesh other = movedBy(orvtest::plate(1, 1), {1, 0, 0});
    other.nodes[0][0] = std::nan("");
    EXPECT_THAT(joined({broken, other}), UnorderedElementsAre(ElementsAre(3, 6)));
    for (Vec3d& node : other.nodes) {
        node[2] = std::nan("");
    }
    EXPECT_TRUE(joined({broken, other}).empty());
}

TEST(SurfaceJointsTest, PartsInAPointHaveNoSize) {
    const Mesh point = orvtest::plate(1, 1).mapped([](const Vec3d&) { return Vec3d(1, 1, 1); });
    EXPECT_TRUE(joined({point, point}).empty());
}

TEST(SurfaceJointsTest, ManyNodesAreJoinedAsASearchThroughAllPairsDoes) {
    // Random points of two parts, so that some are in each other's cells, half of them within what is near.
    std::mt19937 engine(7);
    auto random = [&engine] { return engine() / 4294967296.0; };
    Mesh first = movedBy(orvtest::plate(40, 20), {0, 0, 0});
    Mesh second;
    const double diagonal = std::hypot(40.0, 20.0);
    for (const Vec3d& node : first.nodes) {
        const double distance = 2e-6 * diagonal * random();
        const double angle = 6.28 * random();
        second.nodes.push_back(node + Vec3d(std::cos(angle), std::sin(angle), 0) * distance);
    }
    second.types = first.types;
    second.connectivity = first.connectivity;
    Vec3d lower = first.nodes[0];
    Vec3d upper = lower;
    for (const Mesh* mesh : {&first, &second}) {
        for (const Vec3d& node : mesh->nodes) {
            for (std::size_t i = 0; i < 3; ++i) {
                lower[i] = std::min(lower[i], node[i]);
                upper[i] = std::max(upper[i], node[i]);
            }
        }
    }
    const auto count = static_cast<Vertex>(first.nodes.size());
    std::vector<std::vector<Vertex>> expected;
    for (Vertex i = 0; i < count; ++i) {
        if ((first.nodes[i] - second.nodes[i]).length() <= 1e-6 * (upper - lower).length()) {
            expected.push_back({i, count + i});
        }
    }
    EXPECT_GT(expected.size(), 300u);
    EXPECT_LT(expected.size(), 600u);
    EXPECT_THAT(joined({first, second}), testing::UnorderedElementsAreArray(expected));
}

} // namespace
