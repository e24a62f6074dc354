#include "LibCore/rvfCharArray.h"

#include <gtest/gtest.h>

using rvf::CharArray;

namespace {

TEST(CharArray, StartsAsTheEmptyText) {
    CharArray empty;
    EXPECT_STREQ(empty.ptr(), "");
    EXPECT_EQ(empty.size(), 0u);
}

TEST(CharArray, HoldsTheBytesWithAZeroBehind) {
    CharArray text(std::string("\xC3\xA4"));
    EXPECT_STREQ(text.ptr(), "\xC3\xA4");
    EXPECT_EQ(text.size(), 2u);
    EXPECT_EQ(text.ptr()[2], '\0');
}

TEST(CharArray, CountsZerosInside) {
    CharArray text(std::string("a\0b", 3));
    EXPECT_EQ(text.size(), 3u);
    EXPECT_STREQ(text.ptr(), "a");
}

TEST(CharArray, CopiesAreIndependent) {
    CharArray text(std::string("first"));
    CharArray copy = text;
    text = CharArray(std::string("second"));
    EXPECT_STREQ(copy.ptr(), "first");
}

} // namespace
