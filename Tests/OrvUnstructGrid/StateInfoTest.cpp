#include "OrvUnstructGrid/StateInfo.h"

#include <gtest/gtest.h>

using namespace orv::ug;

namespace {

TEST(StateInfo, IsUndefinedByDefault) {
    const StateInfo info;
    EXPECT_EQ(info.id(), -1);
    EXPECT_EQ(info.name(), "");
    EXPECT_EQ(info.referenceType(), StateInfo::TIME);
    EXPECT_EQ(info.referenceValue(), orv::UNDEFINED_DOUBLE);
}

TEST(StateInfo, KeepsWhatItIsGiven) {
    const StateInfo info(4, "Mode 4", StateInfo::FREQUENCY, 12.5);
    EXPECT_EQ(info.id(), 4);
    EXPECT_EQ(info.name(), "Mode 4");
    EXPECT_EQ(info.referenceType(), StateInfo::FREQUENCY);
    EXPECT_EQ(info.referenceValue(), 12.5);
}

TEST(StateInfo, ReferenceTypesHaveTheirNumbers) {
    EXPECT_EQ(StateInfo::TIME, 0);
    EXPECT_EQ(StateInfo::FREQUENCY, 1);
    EXPECT_EQ(StateInfo::LOAD_CASE, 2);
}

} // namespace
