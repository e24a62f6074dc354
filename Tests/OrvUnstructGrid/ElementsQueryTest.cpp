#include "OrvUnstructGrid/ElementsQuery.h"

#include "OrvCore/Defines.h"
#include "Tests/OrvUnstructGrid/ReferenceElements.h"
#include "Tests/Support/AssertRecorder.h"

#include <gtest/gtest.h>

using namespace orv::ug;
using orv::Vec3d;
using orvtest::AssertRecorder;
using orvtest::FailedAssert;

namespace {

class ElementsQueryTest : public testing::Test {
protected:
    Vec3d centroid(std::size_t elementIndex) const {
        return ElementsQuery(part.elements(), part.nodes()).elementCentroid(elementIndex);
    }

    DataPart part{1};
};

TEST_F(ElementsQueryTest, TheCentroidIsTheAverageOfTheNodes) {
    orvtest::setNodes(&part, {{1, 2, 3}, {3, 2, 3}, {3, 6, 3}, {3, 6, 11}});
    orvtest::setElements(&part, {{POINT, {2}}, {BEAM, {0, 3}}, {TETRAHEDRON, {0, 1, 2, 3}}});
    EXPECT_EQ(centroid(0), Vec3d(3, 6, 3));
    EXPECT_EQ(centroid(1), Vec3d(2, 4, 7));
    EXPECT_EQ(centroid(2), Vec3d(2.5, 4, 5));
}

TEST_F(ElementsQueryTest, MidSideNodesAndRepeatedOnesCount) {
    orvtest::setNodes(&part, {{0, 0, 0}, {3, 0, 0}, {0, 3, 6}});
    orvtest::setElements(&part, {{BEAM_3, {0, 1, 2}}, {TRIANGLE, {1, 1, 2}}});
    EXPECT_EQ(centroid(0), Vec3d(1, 1, 2));
    EXPECT_EQ(centroid(1), Vec3d(2, 1, 2));
}

TEST_F(ElementsQueryTest, AnElementThatIsNotThereHasNone) {
    orvtest::fillWithReference(&part, TRIANGLE);
    AssertRecorder recorder;
    for (std::size_t index : {std::size_t(1), orv::UNDEFINED_SIZE_T}) {
        EXPECT_EQ(centroid(index), orv::UNDEFINED_VECTOR);
        EXPECT_EQ(recorder.take(),
                  (std::vector<FailedAssert>{
                      {"OrvUnstructGrid/ElementsQuery", "elementIndex < m_elements->elementCount()", std::nullopt}}));
    }
}

} // namespace
