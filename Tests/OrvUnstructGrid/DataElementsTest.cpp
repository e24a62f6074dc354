#include "OrvUnstructGrid/DataElements.h"

#include "Tests/Support/AssertRecorder.h"

#include <gtest/gtest.h>

using namespace orv::ug;
using orvtest::AssertRecorder;
using orvtest::FailedAssert;

namespace {

const std::string here = "OrvUnstructGrid/DataElements";
const FailedAssert noMatch = {here, "connectivityMatchesTypes", {}};

/// A triangle, a beam and a tetrahedron, numbered 30, 10, 20.
DataElements threeElements() {
    DataElements elements;
    elements.set({TRIANGLE, BEAM, TETRAHEDRON}, {0, 1, 2, 2, 3, 0, 1, 2, 3}, {30, 10, 20});
    return elements;
}

TEST(DataElements, IsEmptyAtFirst) {
    const DataElements elements;
    EXPECT_EQ(elements.elementCount(), 0u);
    EXPECT_TRUE(elements.connectivity().empty());
    ASSERT_EQ(elements.offsets().size(), 1u);
    EXPECT_EQ(elements.offsets()[0], 0u);
    EXPECT_EQ(elements.surfaceCount(), 0u);
}

TEST(DataElements, GivesEachElementItsNodes) {
    const DataElements elements = threeElements();
    EXPECT_EQ(elements.elementCount(), 3u);
    EXPECT_EQ(elements.elementType(1), BEAM);
    EXPECT_EQ(elements.elementNodes(0), (std::vector<unsigned int>{0, 1, 2}));
    EXPECT_EQ(elements.elementNodes(1), (std::vector<unsigned int>{2, 3}));
    EXPECT_EQ(elements.elementNodes(2), (std::vector<unsigned int>{0, 1, 2, 3}));
    EXPECT_EQ(elements.nodeIndexes(1).data(), elements.connectivity().data() + 3);
    EXPECT_EQ(elements.nodeIndexes(1).size(), 2u);
    EXPECT_EQ(elements.types()[2], TETRAHEDRON);
    const std::vector<std::uint32_t> offsets(elements.offsets().begin(), elements.offsets().end());
    EXPECT_EQ(offsets, (std::vector<std::uint32_t>{0, 3, 5, 9}));
}

TEST(DataElements, CountsNodesAndSurfacesByType) {
    const DataElements elements = threeElements();
    EXPECT_EQ(elements.nodesPerElement(HEXAHEDRON_20), 20u);
    EXPECT_EQ(elements.surfacesPerElement(WEDGE), 5u);
    EXPECT_EQ(elements.surfaceCount(), 1u + 0u + 4u);
}

TEST(DataElements, KeepsIdsOrCountsFromOne) {
    EXPECT_EQ(threeElements().elementId(0), 30);
    EXPECT_EQ(threeElements().elementId(2), 20);
    DataElements elements = threeElements();
    ASSERT_EQ(elements.ids().size(), 3u);
    EXPECT_EQ(elements.ids()[1], 10);
    elements.set({POINT, POINT}, {0, 1}, {});
    EXPECT_EQ(elements.elementId(1), 2);
    EXPECT_TRUE(elements.ids().empty());
}

TEST(DataElements, CountsItsBytes) {
    EXPECT_EQ(threeElements().byteCount(), 3u * 1 + 9u * 4 + 4u * 4 + 3u * 4);
}

TEST(DataElements, RefusesAConnectivityThatDoesNotFit) {
    AssertRecorder recorder;
    DataElements elements = threeElements();
    elements.set({TRIANGLE}, {0, 1}, {});
    EXPECT_EQ(recorder.take(), (std::vector<FailedAssert>{noMatch}));
    elements.set({TRIANGLE}, {0, 1, 2, 3}, {});
    EXPECT_EQ(recorder.take(), (std::vector<FailedAssert>{noMatch}));
    EXPECT_EQ(elements.elementCount(), 3u);
}

TEST(DataElements, RefusesAnUnknownType) {
    AssertRecorder recorder;
    DataElements elements;
    elements.set({POINT, ELEMENT_TYPE_COUNT}, {0}, {});
    EXPECT_EQ(recorder.take(), (std::vector<FailedAssert>{noMatch}));
    EXPECT_EQ(elements.elementCount(), 0u);
}

TEST(DataElements, RefusesIdsOfAnotherNumber) {
    AssertRecorder recorder;
    DataElements elements;
    elements.set({POINT, POINT}, {0, 1}, {1});
    EXPECT_EQ(recorder.take(), (std::vector<FailedAssert>{{here, "ids.empty() || ids.size() == types.size()", {}}}));
    EXPECT_EQ(elements.elementCount(), 0u);
}

TEST(DataElements, RefusesMoreThanOffsetsCanCount) {
    // 20 nodes each: 214748365 elements pass 2^32 - 1 = 4294967295, as 214748364 would not have.
    const std::size_t tooMany = 214748365;
    AssertRecorder recorder;
    DataElements elements;
    elements.set(std::vector<ElementType>(tooMany, HEXAHEDRON_20), {}, {});
    EXPECT_EQ(recorder.take(), (std::vector<FailedAssert>{{here, "nodeTotal <= limit", {}}, noMatch}));
    elements.set(std::vector<ElementType>(tooMany - 1, HEXAHEDRON_20), {}, {});
    EXPECT_EQ(recorder.take(), (std::vector<FailedAssert>{noMatch}));
    EXPECT_EQ(elements.elementCount(), 0u);
}

TEST(DataElements, IndexBeyondTheEndIsUndefined) {
    AssertRecorder recorder;
    const DataElements elements = threeElements();
    const std::vector<FailedAssert> failed = {{here, "elementIndex < elementCount()", {}}};
    EXPECT_EQ(elements.elementType(3), POINT);
    EXPECT_EQ(recorder.take(), failed);
    EXPECT_TRUE(elements.elementNodes(3).empty());
    EXPECT_EQ(recorder.take(), failed);
    EXPECT_TRUE(elements.nodeIndexes(3).empty());
    EXPECT_EQ(recorder.take(), failed);
    EXPECT_EQ(elements.elementId(3), -1);
    EXPECT_EQ(recorder.take(), failed);
}

} // namespace
