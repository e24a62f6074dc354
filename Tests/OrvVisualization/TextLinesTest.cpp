// Widths in units of the font, of 2048 for the size: a digit has 1303, a blank 651, a comma as a full stop 651.

#include "OrvVisualization/TextLines_p.h"

#include "OrvVisualization/Font.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace orv;
using namespace orv::vis;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr double UNITS = 2048.0;
constexpr double DIGIT = 1303.0;

const Font& font() {
    static const PtrRef<Font> theFont = Font::createNormalFont();
    return *theFont;
}

std::vector<Str> linesOf(const Str& text, double width, std::size_t count) {
    return textLines(font(), text, UNITS, width, count);
}

TEST(TextLines, WhatFitsIsOneLine) {
    EXPECT_THAT(linesOf("12345", 5 * DIGIT, 3), ElementsAre("12345"));
    EXPECT_THAT(linesOf("  12345  ", 5 * DIGIT, 3), ElementsAre("12345"));
    EXPECT_THAT(linesOf("", DIGIT, 3), IsEmpty());
    EXPECT_THAT(linesOf("   ", DIGIT, 3), IsEmpty());
}

TEST(TextLines, BreaksBehindBlanksAndSigns) {
    EXPECT_THAT(linesOf("123 456 789", 8 * DIGIT, 3), ElementsAre("123 456", "789"));
    EXPECT_THAT(linesOf("123,456,789", 5 * DIGIT, 3), ElementsAre("123,", "456,", "789"));
    EXPECT_THAT(linesOf("12(34)", 4 * DIGIT, 3), ElementsAre("12(", "34)"));
}

TEST(TextLines, BreaksAnywhereWhenItMust) {
    EXPECT_THAT(linesOf("12345678", 5 * DIGIT, 3), ElementsAre("12345", "678"));
}

TEST(TextLines, ShortensTheLastLine) {
    EXPECT_THAT(linesOf("123 456 789", 4 * DIGIT, 2), ElementsAre("123", Str(L"45\x2026")));
    EXPECT_THAT(linesOf("1234567890", 5 * DIGIT, 1), ElementsAre(Str(L"123\x2026")));
    EXPECT_THAT(linesOf("12 4567890", 5 * DIGIT, 1), ElementsAre(Str(L"12\x2026")));
}

TEST(TextLines, NoLineIsWiderThanAsked) {
    const Str text = "max(vonMises(STRESS), principal(STRESS, 1)) / 355 + a_long_name * another_long_name";
    for (double size = 3.0; size < 40.0; size += 0.7) {
        for (const Str& line : linesOf(text, size * DIGIT, 4)) {
            EXPECT_LE(font().width(line, UNITS), size * DIGIT) << line;
        }
        EXPECT_LE(linesOf(text, size * DIGIT, 4).size(), 4U);
    }
}

TEST(TextLines, ALineHasACharacterHoweverNarrow) {
    EXPECT_THAT(linesOf("12", 1.0, 3), ElementsAre("1", "2"));
    EXPECT_THAT(linesOf("1", 1.0, 1), ElementsAre("1"));
    EXPECT_THAT(linesOf("12", 1.0, 1), ElementsAre(Str(L"1\x2026")));
}

} // namespace
