#include "Tools/ExpressionError.h"

#include <gtest/gtest.h>

using orvapp::ExpressionError;

namespace {

std::string excerptOf(const std::string& expression, std::size_t at) {
    return ExpressionError(expression, at, "wrong").excerpt();
}

/// 0123456789 again and again.
std::string digits(std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        text += char('0' + i % 10);
    }
    return text;
}

} // namespace

TEST(ExpressionError, TellsTheColumn) {
    EXPECT_STREQ(ExpressionError("A+B", 2, "wrong").what(), "column 3 of the expression: wrong");
    EXPECT_STREQ(ExpressionError("\xC3\xA4+B", 3, "wrong").what(), "column 3 of the expression: wrong");
    EXPECT_STREQ(ExpressionError("", 0, "wrong").what(), "column 1 of the expression: wrong");
}

TEST(ExpressionError, PutsACaretUnderThePlace) {
    EXPECT_EQ(excerptOf("A+B", 0), "  A+B\n  ^\n");
    EXPECT_EQ(excerptOf("A+B", 2), "  A+B\n    ^\n");
    EXPECT_EQ(excerptOf("A+B", 3), "  A+B\n     ^\n");
    EXPECT_EQ(excerptOf("", 0), "");
    EXPECT_EQ(excerptOf("\xC3\xA4+\xE2\x82\xAC?", 6), "  \xC3\xA4+\xE2\x82\xAC?\n     ^\n");
}

TEST(ExpressionError, ControlCharactersDoNotMoveTheCaret) {
    EXPECT_EQ(excerptOf("A\t\x1B\xC2\x9B+", 5), "  A???+\n      ^\n");
    EXPECT_EQ(excerptOf("A\n+ B", 4), "  A?+ B\n      ^\n");
}

TEST(ExpressionError, ShowsALongExpressionWhole) {
    EXPECT_EQ(excerptOf(digits(70), 69), "  " + digits(70) + "\n" + std::string(71, ' ') + "^\n");
}

TEST(ExpressionError, ShowsWhatIsNearThePlaceOfALongerOne) {
    const std::string text = digits(200);
    // 70 columns: from the beginning, 35 in front of the place, and up to the end.
    EXPECT_EQ(excerptOf(text, 35), "  " + text.substr(0, 70) + "...\n" + std::string(37, ' ') + "^\n");
    EXPECT_EQ(excerptOf(text, 36), "  ..." + text.substr(1, 70) + "...\n" + std::string(40, ' ') + "^\n");
    EXPECT_EQ(excerptOf(text, 164), "  ..." + text.substr(129, 70) + "...\n" + std::string(40, ' ') + "^\n");
    EXPECT_EQ(excerptOf(text, 165), "  ..." + text.substr(130, 70) + "\n" + std::string(40, ' ') + "^\n");
    EXPECT_EQ(excerptOf(text, 200), "  ..." + text.substr(130, 70) + "\n" + std::string(75, ' ') + "^\n");
}
