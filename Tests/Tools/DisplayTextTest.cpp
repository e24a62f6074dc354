#include "Tools/DisplayText.h"

#include "OrvCore/Defines.h"

#include <gtest/gtest.h>

#include <limits>

using namespace orvapp;

TEST(DisplayText, CountsCodePoints) {
    EXPECT_EQ(columnCount(""), 0u);
    EXPECT_EQ(columnCount("STEEL"), 5u);
    EXPECT_EQ(columnCount("Stäbchen"), 8u);
    EXPECT_EQ(columnCount("\xE9\x8B\xBC"), 1u);     // a character of three bytes
    EXPECT_EQ(columnCount("\xF0\x9F\x94\xA9"), 1u); // and one of four
}

TEST(DisplayText, CutsAtCodePoints) {
    const std::string text = "a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x94\xA9z"; // characters of 1, 2, 3, 4 and 1 bytes
    EXPECT_EQ(columnRange(text, 0, 5), text);
    EXPECT_EQ(columnRange(text, 0, 2), "a\xC3\xA4");
    EXPECT_EQ(columnRange(text, 1, 2), "\xC3\xA4\xE2\x82\xAC");
    EXPECT_EQ(columnRange(text, 3, 9), "\xF0\x9F\x94\xA9z");
    EXPECT_EQ(columnRange(text, 5, 1), "");
    EXPECT_EQ(columnRange(text, 9, 1), "");
    EXPECT_EQ(columnRange(text, 2, 0), "");
}

TEST(DisplayText, Shortens) {
    EXPECT_EQ(shortened("abcdef", 6), "abcdef");
    EXPECT_EQ(shortened("abcdefg", 6), "abc...");
    EXPECT_EQ(shortened("\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4", 4), "\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4");
    EXPECT_EQ(shortened("\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4z", 4), "\xC3\xA4...");
    EXPECT_EQ(shortened("", 3), "");
}

TEST(DisplayText, ReplacesControlCharacters) {
    EXPECT_EQ(printable("A\tB\nC\x7F"), "A?B?C?");
    EXPECT_EQ(printable("\x1B[2J"), "?[2J");
    EXPECT_EQ(printable("a\xC2\x9Bm"), "a?m"); // U+009B starts a terminal sequence too
    EXPECT_EQ(printable("a\xC2\xA0m"), "a\xC2\xA0m");
    EXPECT_EQ(printable("\xC2"), "\xC2"); // cut off
}

TEST(DisplayText, RoundsForTables) {
    EXPECT_EQ(briefNumber(0.123456789), "0.123457");
    EXPECT_EQ(briefNumber(-1234567.0), "-1.23457e+06");
    EXPECT_EQ(briefNumber(250.0), "250");
    EXPECT_EQ(briefNumber(0.0), "0");
    EXPECT_EQ(briefNumber(orv::UNDEFINED_DOUBLE), "-");
    EXPECT_EQ(briefNumber(std::numeric_limits<double>::quiet_NaN()), "-");
}

TEST(DisplayText, KeepsAllDigitsWhereAsked) {
    EXPECT_EQ(exactNumber(13096.03106), "13096.03106");
    EXPECT_EQ(exactNumber(orv::UNDEFINED_DOUBLE), "-");
}

TEST(DisplayText, Counts) {
    EXPECT_EQ(counted(0, "state"), "0 states");
    EXPECT_EQ(counted(1, "state"), "1 state");
    EXPECT_EQ(counted(2, "state"), "2 states");
}
