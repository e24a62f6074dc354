#include "OrvUnstructGrid/Error.h"

#include <gtest/gtest.h>

using namespace orv::ug;

namespace {

TEST(Error, IsEmptyUntilFilled) {
    Error error;
    EXPECT_TRUE(error.isEmpty());
    EXPECT_EQ(error.message(), "");
    error.setMessage("first");
    error.setMessage("second");
    EXPECT_FALSE(error.isEmpty());
    EXPECT_EQ(error.message(), "second");
    error.clear();
    EXPECT_TRUE(error.isEmpty());
}

TEST(Error, FailFillsItAndIsFalse) {
    Error error;
    EXPECT_FALSE(fail(&error, "why"));
    EXPECT_EQ(error.message(), "why");
    EXPECT_FALSE(fail(nullptr, "nobody wants to know"));
}

} // namespace
