#include "LibUnstructGrid/VTOArrayMatrix4.h"

#include "Tests/LibUnstructGrid/VTOArrayTestSupport.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using namespace vtarraytest;
using orvtest::AssertRecorder;
using orvtest::assertsUntil;
using orvtest::FailedAssert;
using orvtest::failedIn;
using Matrices = Full<VTMatrix4Array>;
using Numbers = std::vector<int>;

const std::string unit = "LibUnstructGrid/VTOArrayMatrix4";

std::vector<FailedAssert> failed(std::vector<std::string> expressions) {
    return failedIn(unit, std::move(expressions));
}

TEST(VTMatrix4Array, ComparesExactly) {
    const Matrices a({1});
    VTMatrix4Array b(a);
    EXPECT_TRUE(a == b);
    b[0].v[15] = std::nextafter(b[0].v[15], 9.0);
    EXPECT_FALSE(a == b);
}

TEST(VTMatrix4Array, SetAllIdentityWritesUnusedSlotsToo) {
    Matrices array({1, 2});
    array.SetNumItems(1);
    array.SetAllIdentity();
    EXPECT_EQ(array.GetNumItems(), 1);
    array.SetNumItems(2);
    EXPECT_TRUE(array[0].IsIdentity());
    EXPECT_TRUE(array[1].IsIdentity());
}

TEST(VTMatrix4Array, FindIsExact) {
    const Matrices array({1, 2, 1});
    EXPECT_EQ(array.Find(item<VTMatrix4Array>(2)), 1);
    EXPECT_EQ(array.Find(item<VTMatrix4Array>(1)), 0);
    EXPECT_EQ(array.Find(item<VTMatrix4Array>(3)), -1);
    VTMatrix4 close(item<VTMatrix4Array>(2));
    close.v[15] = std::nextafter(close.v[15], 9.0);
    EXPECT_EQ(array.Find(close), -1);
    EXPECT_EQ(VTMatrix4Array().Find(close), -1);
}

TEST(VTMatrix4Array, AddKeepNumItemsIsASlidingWindow) {
    AssertRecorder recorder;
    Matrices array({1, 2, 3});
    array.AddKeepNumItems(item<VTMatrix4Array>(4));
    EXPECT_EQ(numbers<VTMatrix4Array>(array), (Numbers{2, 3, 4}));
    array.AddKeepNumItems(array.Get(0));
    EXPECT_EQ(numbers<VTMatrix4Array>(array), (Numbers{3, 4, 2}));
    Matrices single({1});
    single.AddKeepNumItems(single.Get(0));
    EXPECT_EQ(numbers<VTMatrix4Array>(single), (Numbers{1}));
    EXPECT_TRUE(recorder.take().empty());
    EXPECT_EQ(assertsUntil(1, [] { VTMatrix4Array().AddKeepNumItems(VTMatrix4()); }), failed({"GetNumItems() > 0"}));
}

// A matrix asserts when it is assigned to itself; no operation of the array does that.
TEST(VTMatrix4Array, SetsAllItemsToOneOfThem) {
    AssertRecorder recorder;
    Matrices array({1, 2});
    array.SetAllItems(array.Get(0));
    EXPECT_EQ(numbers<VTMatrix4Array>(array), (Numbers{1, 1}));
    array.CopyData(array, 1, 0, 0);
    array.CopyData(array, -1, 0, 0);
    EXPECT_EQ(numbers<VTMatrix4Array>(array), (Numbers{1, 1}));
    EXPECT_TRUE(recorder.take().empty());
}

TEST(VTMatrix4Array, ReverseChecksForABufferFirst) {
    AssertRecorder recorder;
    VTMatrix4Array().Reverse();
    EXPECT_EQ(recorder.take(), failed({"m_pData"}));
}

TEST(VTMatrix4Array, AssignmentChecksOwnershipAndSelf) {
    Matrices owner({1, 2});
    Shared<VTMatrix4Array> shared(&owner);
    const VTMatrix4Array& same = shared;
    EXPECT_EQ(assertsUntil(2, [&] { static_cast<VTMatrix4Array&>(shared) = same; }),
              failed({"!m_bSharedData", "this != &other"}));
}

} // namespace
