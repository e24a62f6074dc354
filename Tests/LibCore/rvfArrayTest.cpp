#include "LibCore/rvfArray.h"

#include "LibCore/rvfRef.h"
#include "LibCore/rvfVector3.h"

#include <gtest/gtest.h>

using rvf::Array;

namespace {

TEST(Array, StartsEmpty) {
    EXPECT_EQ(Array<float>().size(), 0u);
}

TEST(Array, NewItemsAreZero) {
    Array<double> values(3);
    ASSERT_EQ(values.size(), 3u);
    for (size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(values[i], 0.0);
    }
    Array<rvf::Vector3<float>> vectors(1);
    EXPECT_EQ(vectors[0], rvf::Vector3<float>(0, 0, 0));
}

TEST(Array, ResizeKeepsWhatStays) {
    Array<int> values(2);
    values[0] = 7;
    values[1] = 8;
    values.resize(3);
    ASSERT_EQ(values.size(), 3u);
    EXPECT_EQ(values[0], 7);
    EXPECT_EQ(values[1], 8);
    EXPECT_EQ(values[2], 0);
    values.resize(1);
    ASSERT_EQ(values.size(), 1u);
    EXPECT_EQ(values[0], 7);
}

TEST(Array, ItemsAreContiguous) {
    Array<int> values(4);
    values.ptr()[3] = 9;
    EXPECT_EQ(values[3], 9);
    const Array<int>& constant = values;
    EXPECT_EQ(&constant[3], constant.ptr() + 3);
}

TEST(Array, CopiesAreIndependent) {
    Array<int> values(1);
    Array<int> copy = values;
    copy[0] = 5;
    EXPECT_EQ(values[0], 0);
}

TEST(Array, CanBeShared) {
    rvf::ref<Array<int>> first = new Array<int>(2);
    rvf::ref<Array<int>> second = first;
    (*second)[1] = 4;
    EXPECT_EQ((*first)[1], 4);
    EXPECT_EQ(first->refCount(), 2);
}

} // namespace
