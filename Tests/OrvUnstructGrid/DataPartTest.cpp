#include "OrvUnstructGrid/DataPart.h"

#include <gtest/gtest.h>

using namespace orv::ug;

namespace {

TEST(DataPart, IsEmptyAtFirst) {
    DataPart part(7);
    EXPECT_EQ(part.partId(), 7);
    EXPECT_EQ(part.nodes()->nodeCount(), 0u);
    EXPECT_EQ(part.elements()->elementCount(), 0u);
    EXPECT_TRUE(part.isConsistent());
    EXPECT_EQ(part.byteCount(), part.elements()->byteCount());
}

TEST(DataPart, IsInconsistentWhenAnElementNamesAMissingNode) {
    DataPart part(1);
    part.nodes()->set({0, 0, 0, 1, 0, 0}, {});
    part.elements()->set({BEAM}, {0, 1}, {});
    EXPECT_TRUE(part.isConsistent());
    part.elements()->set({BEAM}, {0, 2}, {});
    EXPECT_FALSE(part.isConsistent());
}

TEST(DataPart, IsInconsistentWithElementsAndNoNodes) {
    DataPart part(1);
    part.elements()->set({POINT}, {0}, {});
    EXPECT_FALSE(part.isConsistent());
}

TEST(DataPart, CountsItemsByMapping) {
    DataPart part(1);
    part.nodes()->set(std::vector<double>(3 * 5), {});
    part.elements()->set({TETRAHEDRON, BEAM}, {0, 1, 2, 3, 3, 4}, {});
    EXPECT_EQ(part.itemCount(PER_NODE), 5u);
    EXPECT_EQ(part.itemCount(PER_ELEMENT), 2u);
    EXPECT_EQ(part.itemCount(PER_ELEMENT_NODE), 6u);
    EXPECT_EQ(part.itemCount(PER_ELEMENT_SURFACE), 4u);
    EXPECT_EQ(part.itemCount(UNKNOWN_MAPPING), 0u);
    EXPECT_EQ(part.byteCount(), part.nodes()->byteCount() + part.elements()->byteCount());
}

} // namespace
