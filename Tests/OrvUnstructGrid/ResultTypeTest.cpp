#include "OrvUnstructGrid/ResultType.h"

#include <gtest/gtest.h>

using namespace orv::ug;

namespace {

TEST(ResultType, TypesHaveTheirNumbersAndDoublesPerItem) {
    struct Row {
        ResultType type;
        int number;
        std::size_t doubles;
    };
    for (const Row& row : {Row{NO_RESULT_TYPE, 0, 0}, Row{SCALAR, 1, 1}, Row{VECTOR, 2, 3}, Row{DISPLACEMENT, 3, 3},
                           Row{SYMMETRIC_TENSOR, 4, 6}}) {
        EXPECT_EQ(row.type, row.number);
        EXPECT_EQ(doublesPerItem(row.type), row.doubles);
        EXPECT_EQ(isResultType(row.type), row.number > 0);
    }
    EXPECT_EQ(doublesPerItem(static_cast<ResultType>(5)), 0u);
    EXPECT_FALSE(isResultType(static_cast<ResultType>(5)));
}

TEST(ResultType, MappingsHaveTheirNumbers) {
    EXPECT_EQ(PER_NODE, 1);
    EXPECT_EQ(PER_ELEMENT, 2);
    EXPECT_EQ(PER_ELEMENT_NODE, 3);
    EXPECT_EQ(PER_ELEMENT_SURFACE, 4);
    EXPECT_EQ(UNKNOWN_MAPPING, 99);
}

} // namespace
