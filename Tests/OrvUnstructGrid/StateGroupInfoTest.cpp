#include "OrvUnstructGrid/StateGroupInfo.h"

#include "Tests/Support/AssertRecorder.h"

#include <gtest/gtest.h>

using namespace orv::ug;
using orvtest::AssertRecorder;
using orvtest::FailedAssert;

namespace {

TEST(StateGroupInfo, IsUndefinedByDefault) {
    EXPECT_EQ(StateGroupInfo().stateCount(), 0u);
    EXPECT_FALSE(StateGroupInfo().hasStateId(-1));
}

TEST(StateGroupInfo, KeepsItsStatesInOrder) {
    const StateGroupInfo group({4, 2});
    EXPECT_EQ(group.stateCount(), 2u);
    EXPECT_EQ(group.stateId(0), 4);
    EXPECT_EQ(group.stateId(1), 2);
    EXPECT_TRUE(group.hasStateId(2));
    EXPECT_FALSE(group.hasStateId(3));
}

TEST(StateGroupInfo, IndexBeyondTheEndIsUndefined) {
    AssertRecorder recorder;
    EXPECT_EQ(StateGroupInfo({4}).stateId(1), -1);
    EXPECT_EQ(recorder.take(),
              (std::vector<FailedAssert>{{"OrvUnstructGrid/StateGroupInfo", "index < stateCount()", {}}}));
}

} // namespace
