#include "OrvImportCae/CaeIds.h"

#include <gtest/gtest.h>

#include <vector>

using namespace orv::imp::cae;

namespace {

constexpr std::uint32_t NONE = CaeIds::NONE;

TEST(CaeIds, FindsAscendingNumbers) {
    const CaeIds ids({2, 5, 9, 100});
    EXPECT_TRUE(ids.isAscending());
    EXPECT_EQ(ids.find(2, NONE), 0u);
    EXPECT_EQ(ids.find(100, NONE), 3u);
    EXPECT_EQ(ids.find(5, 1), 1u);
    EXPECT_EQ(ids.find(5, 3), 1u);
    EXPECT_EQ(ids.find(1, 0), NONE);
    EXPECT_EQ(ids.find(6, 1), NONE);
    EXPECT_EQ(ids.find(101, 4), NONE);
    EXPECT_EQ(ids.firstDuplicate(), NONE);
}

TEST(CaeIds, FindsNumbersInAnyOrder) {
    const CaeIds ids({7, 3, 100, 4});
    EXPECT_FALSE(ids.isAscending());
    EXPECT_EQ(ids.find(7, NONE), 0u);
    EXPECT_EQ(ids.find(3, NONE), 1u);
    EXPECT_EQ(ids.find(100, 0), 2u);
    EXPECT_EQ(ids.find(4, NONE), 3u);
    EXPECT_EQ(ids.find(5, NONE), NONE);
    EXPECT_EQ(ids.find(101, NONE), NONE);
    EXPECT_EQ(ids.firstDuplicate(), NONE);
}

TEST(CaeIds, HasNothingToFindWithoutNumbers) {
    EXPECT_EQ(CaeIds().find(1, 0), NONE);
    EXPECT_EQ(CaeIds().firstDuplicate(), NONE);
    EXPECT_TRUE(CaeIds().isAscending());
}

TEST(CaeIds, TellsTheFirstDuplicateInTheOrderOfTheFile) {
    EXPECT_EQ(CaeIds({1, 2, 2, 3}).firstDuplicate(), 2u);
    // 9 comes back at index 3, ahead of the smaller 4 at index 4.
    EXPECT_EQ(CaeIds({4, 9, 5, 9, 4}).firstDuplicate(), 3u);
}

TEST(CaeIds, TellsDuplicatesInAnyList) {
    EXPECT_EQ(firstDuplicateId({}), NONE);
    EXPECT_EQ(firstDuplicateId(std::vector<int>{1, 2, 3}), NONE);
    EXPECT_EQ(firstDuplicateId(std::vector<int>{3, 1, 2}), NONE);
    EXPECT_EQ(firstDuplicateId(std::vector<int>{3, 1, 3}), 2u);
}

} // namespace
