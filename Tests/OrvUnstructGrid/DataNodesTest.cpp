#include "OrvUnstructGrid/DataNodes.h"

#include "OrvCore/Defines.h"
#include "Tests/Support/AssertRecorder.h"

#include <gtest/gtest.h>

using namespace orv::ug;
using orv::Vec3d;
using orvtest::AssertRecorder;
using orvtest::FailedAssert;

namespace {

const std::string here = "OrvUnstructGrid/DataNodes";

TEST(DataNodes, IsEmptyAtFirst) {
    const DataNodes nodes;
    EXPECT_EQ(nodes.nodeCount(), 0u);
    EXPECT_TRUE(nodes.coordinates().empty());
    EXPECT_EQ(nodes.byteCount(), 0u);
}

TEST(DataNodes, KeepsCoordinatesAndIds) {
    DataNodes nodes;
    nodes.set({1, 2, 3, 4, 5, 6}, {10, 7});
    EXPECT_EQ(nodes.nodeCount(), 2u);
    EXPECT_EQ(nodes.node(1), Vec3d(4, 5, 6));
    EXPECT_EQ(nodes.nodeId(0), 10);
    EXPECT_EQ(nodes.nodeId(1), 7);
    ASSERT_EQ(nodes.ids().size(), 2u);
    EXPECT_EQ(nodes.ids()[1], 7);
    EXPECT_EQ(nodes.coordinates()[3], 4.0);
    EXPECT_EQ(nodes.byteCount(), 6 * sizeof(double) + 2 * sizeof(int));
}

TEST(DataNodes, CountsFromOneWithoutIds) {
    DataNodes nodes;
    nodes.set({1, 2, 3, 4, 5, 6}, {});
    EXPECT_EQ(nodes.nodeId(0), 1);
    EXPECT_EQ(nodes.nodeId(1), 2);
    EXPECT_TRUE(nodes.ids().empty());
}

TEST(DataNodes, RefusesAnUnfinishedNode) {
    AssertRecorder recorder;
    DataNodes nodes;
    nodes.set({1, 2, 3}, {5});
    nodes.set({1, 2, 3, 4}, {});
    EXPECT_EQ(recorder.take(), (std::vector<FailedAssert>{{here, "coordinates.size() % 3 == 0", {}}}));
    EXPECT_EQ(nodes.nodeCount(), 1u);
    EXPECT_EQ(nodes.nodeId(0), 5);
}

TEST(DataNodes, RefusesIdsOfAnotherNumber) {
    AssertRecorder recorder;
    DataNodes nodes;
    nodes.set({1, 2, 3}, {5, 6});
    EXPECT_EQ(recorder.take(),
              (std::vector<FailedAssert>{{here, "ids.empty() || ids.size() * 3 == coordinates.size()", {}}}));
    EXPECT_EQ(nodes.nodeCount(), 0u);
}

TEST(DataNodes, IndexBeyondTheEndIsUndefined) {
    AssertRecorder recorder;
    DataNodes nodes;
    nodes.set({1, 2, 3}, {});
    const std::vector<FailedAssert> failed = {{here, "index < nodeCount()", {}}};
    EXPECT_EQ(nodes.node(1), orv::UNDEFINED_VECTOR);
    EXPECT_EQ(recorder.take(), failed);
    EXPECT_EQ(nodes.nodeId(orv::UNDEFINED_SIZE_T), -1);
    EXPECT_EQ(recorder.take(), failed);
}

} // namespace
