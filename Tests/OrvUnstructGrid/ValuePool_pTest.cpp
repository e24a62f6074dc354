#include "OrvUnstructGrid/ValuePool_p.h"

#include <gtest/gtest.h>

#include <vector>

using orv::ug::ValuePool;

namespace {

constexpr std::size_t large = ValuePool::smallestCount;

TEST(ValuePool, IsOneForTheProcess) {
    EXPECT_EQ(&ValuePool::instance(), &ValuePool::instance());
}

TEST(ValuePool, KeepsABlockForTheNextOfItsSize) {
    ValuePool pool;
    double* first = pool.take(large);
    first[large - 1] = 1;
    pool.giveBack(first, large);
    EXPECT_EQ(pool.byteCount(), large * sizeof(double));

    double* other = pool.take(large + 1);
    EXPECT_NE(other, first);
    EXPECT_EQ(pool.byteCount(), large * sizeof(double));
    EXPECT_EQ(pool.take(large), first);
    EXPECT_EQ(pool.byteCount(), 0u);

    pool.giveBack(other, large + 1);
    pool.giveBack(first, large);
}

TEST(ValuePool, GivesTheLatestFirst) {
    ValuePool pool;
    double* first = pool.take(large);
    double* second = pool.take(large);
    pool.giveBack(first, large);
    pool.giveBack(second, large);
    EXPECT_EQ(pool.take(large), second);
    EXPECT_EQ(pool.take(large), first);
    pool.giveBack(first, large);
    pool.giveBack(second, large);
}

TEST(ValuePool, DoesNotKeepSmallBlocks) {
    ValuePool pool;
    pool.giveBack(pool.take(large - 1), large - 1);
    EXPECT_EQ(pool.byteCount(), 0u);
}

TEST(ValuePool, LetsTheLongestKeptGoBeyondItsLimit) {
    constexpr std::size_t quarter = ValuePool::byteLimit / sizeof(double) / 4;
    ValuePool pool;
    std::vector<double*> blocks;
    for (std::size_t i = 0; i < 5; ++i) {
        blocks.push_back(pool.take(quarter - i));
    }
    // Four of them and no more: the fifth makes the first go.
    for (std::size_t i = 0; i < 5; ++i) {
        pool.giveBack(blocks[i], quarter - i);
    }
    EXPECT_EQ(pool.byteCount(), (4 * quarter - 1 - 2 - 3 - 4) * sizeof(double));
    for (std::size_t i : {1u, 4u}) {
        EXPECT_EQ(pool.take(quarter - i), blocks[i]);
        pool.giveBack(blocks[i], quarter - i);
    }
}

TEST(ValuePool, DoesNotKeepWhatIsBeyondItsLimitAlone) {
    constexpr std::size_t tooLarge = ValuePool::byteLimit / sizeof(double) + 1;
    ValuePool pool;
    pool.giveBack(pool.take(tooLarge - 1), tooLarge - 1);
    EXPECT_EQ(pool.byteCount(), ValuePool::byteLimit);
    pool.giveBack(pool.take(tooLarge), tooLarge);
    EXPECT_EQ(pool.byteCount(), 0u);
}

TEST(ValuePool, HasRoomForAsManyBlocksAsFit) {
    ValuePool pool;
    const std::size_t fitting = ValuePool::byteLimit / (large * sizeof(double));
    std::vector<double*> blocks;
    for (std::size_t i = 0; i <= fitting; ++i) {
        blocks.push_back(pool.take(large));
    }
    for (double* block : blocks) {
        pool.giveBack(block, large);
    }
    EXPECT_EQ(pool.byteCount(), ValuePool::byteLimit);
}

} // namespace
