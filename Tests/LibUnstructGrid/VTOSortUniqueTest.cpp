#include "LibUnstructGrid/VTOSortUnique.h"

#include "Tests/LibUnstructGrid/PortableRandom.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <cstdlib>
#include <numeric>
#include <set>
#include <vector>

using orvtest::PortableRandom;

namespace {

std::vector<std::vector<int>> rows(const VTSortGroup* groups, int count) {
    std::vector<std::vector<int>> list;
    for (int i = 0; i < count; ++i) {
        list.push_back({groups[i].iKey, groups[i].iFirst, groups[i].iLast});
    }
    return list;
}

TEST(FindUnique, GivesDistinctValuesAscending) {
    const int values[] = {5, -2, 5, 9, -2};
    int unique[5] = {0, 0, 0, 77, 77};
    EXPECT_EQ(VTFindUnique(values, 5, unique), 3);
    EXPECT_THAT(unique, testing::ElementsAre(-2, 5, 9, 77, 77));
    EXPECT_EQ(VTFindUnique(values, 5, nullptr), 3);
    EXPECT_EQ(VTFindUnique(values, 0, unique), 0);
    EXPECT_EQ(VTFindUnique(nullptr, 0, nullptr), 0);
}

// 200 is where the scratch list is full, 201 and 401 where it has to grow.
TEST(FindUnique, GrowsItsListByTwoHundred) {
    for (int distinct : {199, 200, 201, 400, 401, 1000}) {
        std::vector<int> values;
        for (int i = 0; i < distinct; ++i) {
            values.push_back((i * 7919) % distinct);
            values.push_back(values.back());
        }
        const std::set<int> expected(values.begin(), values.end());
        std::vector<int> unique(expected.size());
        EXPECT_EQ(VTFindUnique(values.data(), static_cast<int>(values.size()), unique.data()),
                  static_cast<int>(expected.size()));
        EXPECT_EQ(unique, std::vector<int>(expected.begin(), expected.end()));
    }
}

TEST(FindUniqueDeathTest, AnswersMinusOneWithoutMemory) {
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "the sanitizer's own memory goes beyond any limit";
#else
    EXPECT_EXIT(
        {
            // Ascending values are appended, so a million of them take no time; their list needs 4 MB in one piece.
            std::vector<int> values(1 << 20);
            std::iota(values.begin(), values.end(), 0);
            rlimit limit;
            limit.rlim_cur = limit.rlim_max = 1 << 20;
            setrlimit(RLIMIT_AS, &limit);
            std::_Exit(VTFindUnique(values.data(), 1 << 20, nullptr) == -1 ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
#endif
}

TEST(FindUniqueSorted, KeepsWhatDiffersFromItsPredecessor) {
    const int sorted[] = {1, 1, 2, 5, 5, 5};
    int unique[6] = {0, 0, 0, 77, 77, 77};
    EXPECT_EQ(VTFindUniqueSorted(sorted, 6, unique), 3);
    EXPECT_THAT(unique, testing::ElementsAre(1, 2, 5, 77, 77, 77));
    EXPECT_EQ(VTFindUniqueSorted(sorted, 6, nullptr), 3);
    EXPECT_EQ(VTFindUniqueSorted(sorted, 1, unique), 1);
    EXPECT_EQ(VTFindUniqueSorted(nullptr, 0, unique), 0);
    const int unsorted[] = {2, 1, 1, 2};
    EXPECT_EQ(VTFindUniqueSorted(unsorted, 4, unique), 3);
    EXPECT_EQ(unique[2], 2);
}

TEST(FindUniqueIndexSorted, GivesKeysAlongTheIndexes) {
    const int keys[] = {5, 1, 5, 2, 1};
    const int indexes[] = {1, 4, 3, 0, 2};
    int unique[5] = {0, 0, 0, 77, 77};
    EXPECT_EQ(VTFindUniqueIndexSorted(keys, indexes, 5, unique), 3);
    EXPECT_THAT(unique, testing::ElementsAre(1, 2, 5, 77, 77));
    EXPECT_EQ(VTFindUniqueIndexSorted(keys, indexes, 5, nullptr), 3);
    EXPECT_EQ(VTFindUniqueIndexSorted(nullptr, nullptr, 0, unique), 0);
}

TEST(FindGroups, TellsRunsOfEqualKeys) {
    const int sorted[] = {1, 1, 2, 5, 5, 5};
    VTSortGroup groups[6] = {};
    ASSERT_EQ(VTFindGroups(sorted, 6, groups), 3);
    EXPECT_EQ(rows(groups, 3), (std::vector<std::vector<int>>{{1, 0, 1}, {2, 2, 2}, {5, 3, 5}}));
    ASSERT_EQ(VTFindGroups(sorted, 1, groups), 1);
    EXPECT_EQ(rows(groups, 1), (std::vector<std::vector<int>>{{1, 0, 0}}));
}

TEST(FindGroups, KeysMayComeBack) {
    const int keys[] = {0, 3, 0};
    VTSortGroup groups[3] = {};
    ASSERT_EQ(VTFindGroups(keys, 3, groups), 3);
    EXPECT_EQ(rows(groups, 3), (std::vector<std::vector<int>>{{0, 0, 0}, {3, 1, 1}, {0, 2, 2}}));
}

TEST(FindIndexGroups, PositionsAreThoseOfTheWalk) {
    const int keys[] = {5, 1, 5, 2, 1};
    const int indexes[] = {1, 4, 3, 0, 2};
    VTSortGroup groups[5] = {};
    ASSERT_EQ(VTFindIndexGroups(keys, indexes, 5, groups), 3);
    EXPECT_EQ(rows(groups, 3), (std::vector<std::vector<int>>{{1, 0, 1}, {2, 2, 2}, {5, 3, 4}}));
    ASSERT_EQ(VTFindIndexGroups(keys, nullptr, 5, groups), 5) << "without indexes the keys themselves";
    EXPECT_EQ(rows(groups, 1), (std::vector<std::vector<int>>{{5, 0, 0}}));
}

TEST(FindIndexGroups, NoItemsWriteNothing) {
    VTSortGroup group = {7, 8, 9};
    EXPECT_EQ(VTFindGroups(nullptr, 0, &group), 0);
    EXPECT_EQ(VTFindIndexGroups(nullptr, nullptr, 0, &group), 0);
    EXPECT_EQ(rows(&group, 1), (std::vector<std::vector<int>>{{7, 8, 9}}));
}

} // namespace
