#include "OrvImportCae/FrdElementTypes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <vector>

using namespace orv;
using namespace orv::imp::cae;

namespace {

TEST(FrdElementTypes, EachHasTheNodesOfOurs) {
    for (std::int64_t number = 1; number <= 12; ++number) {
        const FrdElementType* type = findFrdElementType(number);
        ASSERT_NE(type, nullptr) << number;
        EXPECT_EQ(type->number, number);
        EXPECT_EQ(type->nodeCount, ug::elementTypeInfo(type->type).nodeCount) << number;
        // Every node once.
        std::vector<std::uint8_t> order(type->order, type->order + type->nodeCount);
        std::sort(order.begin(), order.end());
        std::vector<std::uint8_t> expected(type->nodeCount);
        std::iota(expected.begin(), expected.end(), std::uint8_t(0));
        EXPECT_EQ(order, expected) << number;
    }
}

TEST(FrdElementTypes, AreNumberedAsInTheFormat) {
    EXPECT_EQ(findFrdElementType(1)->type, ug::HEXAHEDRON);
    EXPECT_EQ(findFrdElementType(2)->type, ug::WEDGE);
    EXPECT_EQ(findFrdElementType(3)->type, ug::TETRAHEDRON);
    EXPECT_EQ(findFrdElementType(4)->type, ug::HEXAHEDRON_20);
    EXPECT_EQ(findFrdElementType(5)->type, ug::WEDGE_15);
    EXPECT_EQ(findFrdElementType(6)->type, ug::TETRAHEDRON_10);
    EXPECT_EQ(findFrdElementType(7)->type, ug::TRIANGLE);
    EXPECT_EQ(findFrdElementType(8)->type, ug::TRIANGLE_6);
    EXPECT_EQ(findFrdElementType(9)->type, ug::QUADRILATERAL);
    EXPECT_EQ(findFrdElementType(10)->type, ug::QUADRILATERAL_8);
    EXPECT_EQ(findFrdElementType(11)->type, ug::BEAM);
    EXPECT_EQ(findFrdElementType(12)->type, ug::BEAM_3);
}

TEST(FrdElementTypes, KnowsNoOthers) {
    for (const std::int64_t number : {-1, 0, 13, 99}) {
        EXPECT_EQ(findFrdElementType(number), nullptr) << number;
    }
}

} // namespace
