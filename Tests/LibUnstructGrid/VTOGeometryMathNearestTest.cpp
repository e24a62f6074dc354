#include "LibUnstructGrid/VTOGeometryMathNearest.h"

#include "Tests/LibUnstructGrid/VectorSupport.h"
#include "Tests/Support/AssertStopper.h"

#include <vector>

using orvtest::AssertRecorder;
using orvtest::failedIn;
using orvtest::PortableRandom;
using orvtest::randomVector;

namespace {

TEST(FindClosestNode, GivesIndexOrPosition) {
    const VTVector nodes[] = {{0, 0, 0}, {5, 0, 0}, {0, 5, 0}, {9, 9, 9}};
    const int connectivity[] = {3, 2, 1};
    EXPECT_EQ(VTFindClosestNode(connectivity, 3, nodes, {4, 1, 0}), 1);
    EXPECT_EQ(VTFindClosestNode(connectivity, 3, nodes, {0, 1, 0}), 2) << "node 0 is not in the list";
    EXPECT_EQ(VTFindClosestNode(nodes, 4, {0, 1, 0}), 0);
    EXPECT_EQ(VTFindClosestNode(nodes, 4, {8, 8, 8}), 3);
    EXPECT_EQ(VTFindClosestNode(nodes, 3, {8, 9, 8}), 2) << "of the first three";
    EXPECT_EQ(VTFindClosestNode(connectivity, 0, nodes, {0, 0, 0}), -1);
    EXPECT_EQ(VTFindClosestNode(nodes, 0, {0, 0, 0}), -1);
}

TEST(FindClosestNode, FirstOfEqualsWins) {
    const VTVector nodes[] = {{5, 0, 0}, {-5, 0, 0}, {0, 5, 0}};
    const int connectivity[] = {2, 0, 1};
    EXPECT_EQ(VTFindClosestNode(connectivity, 3, nodes, {0, 0, 0}), 2);
    EXPECT_EQ(VTFindClosestNode(nodes, 3, {0, 0, 0}), 0);
}

// Squared distances on either side of the float 1e30, which is 1.000000015e30.
TEST(FindClosestNode, SeesNoFartherThanTheFloat) {
    const int connectivity[] = {0};
    const VTVector inside(std::sqrt(1.00000001e30), 0, 0);
    EXPECT_EQ(VTFindClosestNode(&inside, 1, {0, 0, 0}), 0);
    EXPECT_EQ(VTFindClosestNode(connectivity, 1, &inside, {0, 0, 0}), 0);
    const VTVector outside(std::sqrt(1.00000002e30), 0, 0);
    EXPECT_EQ(VTFindClosestNode(&outside, 1, {0, 0, 0}), -1);
    EXPECT_EQ(VTFindClosestNode(connectivity, 1, &outside, {0, 0, 0}), -1);
}

TEST(FindClosestNode, NoOtherIsCloser) {
    PortableRandom random(121);
    std::vector<VTVector> nodes;
    for (int i = 0; i < 100; ++i) {
        nodes.push_back(randomVector(random, 10));
    }
    for (int i = 0; i < 50; ++i) {
        const VTVector point = randomVector(random, 10);
        const int closest = VTFindClosestNode(nodes.data(), 100, point);
        for (const VTVector& node : nodes) {
            ASSERT_LE(VTPointDist(point, nodes[closest]), VTPointDist(point, node));
        }
    }
}

TEST(FindClosestEdge, GivesThePositionOfItsFirstNode) {
    const VTVector nodes[] = {{0, 4, 0}, {0, 0, 0}, {4, 0, 0}, {4, 4, 0}};
    const int connectivity[] = {1, 2, 3, 0};
    EXPECT_EQ(VTFindClosestEdge(connectivity, 4, nodes, {2, 0.5, 0}), 0);
    EXPECT_EQ(VTFindClosestEdge(connectivity, 4, nodes, {3.5, 2, 0}), 1);
    EXPECT_EQ(VTFindClosestEdge(connectivity, 4, nodes, {2, 3.5, 0}), 2);
    EXPECT_EQ(VTFindClosestEdge(connectivity, 4, nodes, {0.5, 2, 0}), 3);
    // The triangle 1 2 3 closes from (4, 4) to (0, 0).
    EXPECT_EQ(VTFindClosestEdge(connectivity, 3, nodes, {1.9, 2, 0}), 2);
    EXPECT_EQ(VTFindClosestEdge(connectivity, 3, nodes, {2, 0.5, 0}), 0);
}

TEST(FindClosestEdge, TwoNodesMakeOneEdge) {
    const VTVector nodes[] = {{0, 0, 0}, {4, 0, 0}};
    const int connectivity[] = {0, 1};
    EXPECT_EQ(VTFindClosestEdge(connectivity, 2, nodes, {2, 2, 0}), 0);
}

TEST(FindClosestEdge, OfEqualsTheClosingEdgeWinsAndThenTheFirst) {
    const VTVector nodes[] = {{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 4, 0}};
    const int connectivity[] = {0, 1, 2, 3};
    EXPECT_EQ(VTFindClosestEdge(connectivity, 4, nodes, {2, 2, 0}), 3);
    EXPECT_EQ(VTFindClosestEdge(connectivity, 4, nodes, {3, 1, 0}), 0) << "as near to edge 1";
}

// The edge at the top ends 90 away from the point, but its line passes it by 1.
TEST(FindClosestEdge, EdgesCountAsInfiniteLines) {
    const VTVector nodes[] = {{98, 10, 0}, {98, -3, 0}, {100, -3, 0}, {91, 1, 0}, {90, 1, 0}};
    const int connectivity[] = {0, 1, 2, 3, 4};
    EXPECT_EQ(VTFindClosestEdge(connectivity, 5, nodes, {0, 0, 0}), 3);
}

TEST(FindClosestEdge, AssertsTwoNodes) {
    AssertRecorder recorder;
    const VTVector node(1, 2, 3);
    const int connectivity[] = {0};
    EXPECT_EQ(VTFindClosestEdge(connectivity, 1, &node, {0, 0, 0}), 0);
    EXPECT_EQ(recorder.take(), failedIn("LibUnstructGrid/VTOGeometryMathNearest", {"iNumNodes >= 2"}));
    const int pair[] = {0, 0};
    EXPECT_EQ(VTFindClosestEdge(pair, 2, &node, {0, 0, 0}), 0);
    EXPECT_TRUE(recorder.take().empty());
}

} // namespace
