#include "LibCore/rvfCodeLocation.h"

#include <gtest/gtest.h>

namespace {

TEST(CodeLocation, KeepsItsFourValues) {
    rvf::CodeLocation location("Folder/Unit", "bool orv::Type::name(int)", "name", 42);
    EXPECT_STREQ(location.file(), "Folder/Unit");
    EXPECT_STREQ(location.function(), "bool orv::Type::name(int)");
    EXPECT_STREQ(location.shortFunction(), "name");
    EXPECT_EQ(location.line(), 42);
}

} // namespace
