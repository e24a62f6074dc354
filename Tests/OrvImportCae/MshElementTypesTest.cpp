#include "OrvImportCae/MshElementTypes.h"

#include <gtest/gtest.h>

#include <set>

using namespace orv;
using namespace orv::imp::cae;

namespace {

TEST(MshElementTypes, EachTypeOfOursHasAnOrderWithoutRepetition) {
    for (std::uint8_t i = 0; i < ug::ELEMENT_TYPE_COUNT; ++i) {
        const std::uint8_t* order = mshNodeOrder(ug::ElementType(i));
        const std::size_t count = ug::elementTypeInfo(ug::ElementType(i)).nodeCount;
        const std::set<std::uint8_t> nodes(order, order + count);
        EXPECT_EQ(nodes.size(), count);
        EXPECT_EQ(*nodes.rbegin(), count - 1);
    }
}

TEST(MshElementTypes, ExtraNodesStandBehind) {
    for (const std::int64_t number : {10, 12, 13, 14}) {
        const MshElementType* type = findMshElementType(number);
        EXPECT_GT(type->nodeCount, ug::elementTypeInfo(type->type).nodeCount);
        EXPECT_EQ(type->order, mshNodeOrder(type->type));
    }
}

TEST(MshElementTypes, HigherOrdersArePassedOverAndOthersUnknown) {
    EXPECT_FALSE(findMshElementType(26)->isKnown); // A line of third order.
    EXPECT_EQ(findMshElementType(26)->nodeCount, 4);
    for (std::int64_t number = -1; number < 200; ++number) {
        if (const MshElementType* type = findMshElementType(number)) {
            EXPECT_EQ(type->number, number);
            EXPECT_LE(type->nodeCount, MSH_MOST_NODES);
        }
    }
    EXPECT_EQ(findMshElementType(0), nullptr);
    EXPECT_EQ(findMshElementType(1000), nullptr);
}

} // namespace
