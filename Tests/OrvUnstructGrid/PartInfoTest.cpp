#include "OrvUnstructGrid/PartInfo.h"

#include <gtest/gtest.h>

using namespace orv::ug;

namespace {

TEST(PartInfo, IsUndefinedByDefault) {
    EXPECT_EQ(PartInfo().id(), -1);
    EXPECT_EQ(PartInfo().name(), "");
}

TEST(PartInfo, KeepsWhatItIsGiven) {
    const PartInfo info(3, "Roof");
    EXPECT_EQ(info.id(), 3);
    EXPECT_EQ(info.name(), "Roof");
}

} // namespace
