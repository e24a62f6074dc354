#include "LibCore/rvfAtomicCounter.h"

#include <gtest/gtest.h>

#include <thread>

using rvf::AtomicCounter;

namespace {

TEST(AtomicCounter, StartsWithItsValue) {
    EXPECT_EQ(int(AtomicCounter(5)), 5);
}

TEST(AtomicCounter, StepsGiveTheNewValue) {
    AtomicCounter counter(1);
    EXPECT_EQ(++counter, 2);
    EXPECT_EQ(--counter, 1);
    EXPECT_EQ(--counter, 0);
    EXPECT_EQ(--counter, -1);
    EXPECT_EQ(int(counter), -1);
}

TEST(AtomicCounter, CopiesCountOnTheirOwn) {
    AtomicCounter counter(3);
    AtomicCounter copy = counter;
    ++copy;
    EXPECT_EQ(int(copy), 4);
    EXPECT_EQ(int(counter), 3);
    counter = copy;
    EXPECT_EQ(int(counter), 4);
}

TEST(AtomicCounter, LosesNoStepBetweenThreads) {
    AtomicCounter counter(0);
    auto count = [&counter] {
        for (int i = 0; i < 50000; ++i) {
            ++counter;
        }
    };
    std::thread other(count);
    count();
    other.join();
    EXPECT_EQ(int(counter), 100000);
}

} // namespace
