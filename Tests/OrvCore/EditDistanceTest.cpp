#include "OrvCore/EditDistance.h"

#include <gtest/gtest.h>

using orv::editDistance;

namespace {

struct Pair {
    const char* a;
    const char* b;
    std::size_t distance;
};

class EditDistance : public testing::TestWithParam<Pair> {};

TEST_P(EditDistance, CountsTheSlipsInBothDirections) {
    const auto& [a, b, distance] = GetParam();
    EXPECT_EQ(editDistance(a, b), distance);
    EXPECT_EQ(editDistance(b, a), distance);
}

INSTANTIATE_TEST_SUITE_P(Each, EditDistance,
                         testing::Values(Pair{"", "", 0}, Pair{"stress", "stress", 0}, //
                                         Pair{"", "abc", 3},                           // Three to insert.
                                         Pair{"stress", "stresses", 2},                // Two to insert.
                                         Pair{"stress", "stres", 1},                   // One to delete.
                                         Pair{"stress", "stness", 1},                  // One to replace.
                                         Pair{"frd", "fdr", 1},                        // One pair to swap.
                                         Pair{"ab", "ba", 1},                          // At the beginning, too.
                                         Pair{"ca", "abc", 3},         // The swapped pair may not be parted again.
                                         Pair{"kitten", "sitting", 3}, // k-s, e-i, g.
                                         Pair{"Stress", "stress", 1},  // Letters of another size are others.
                                         Pair{"abcd", "badc", 2}));    // Two pairs.

} // namespace
