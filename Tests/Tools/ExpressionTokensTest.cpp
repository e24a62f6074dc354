#include "Tools/ExpressionTokens.h"

#include "Tools/ExpressionError.h"

#include <gmock/gmock.h>

using namespace orvapp;

namespace {

struct NumberRow {
    std::string text;
    std::string token;
    double value;
};

class NumberTokenTest : public testing::TestWithParam<NumberRow> {};

struct NameRow {
    std::string text;
    std::string token;
    ExpressionToken::Kind kind;
    std::string name;
};

class NameTokenTest : public testing::TestWithParam<NameRow> {};

std::string textOf(const std::string& text, const ExpressionToken& token) {
    return text.substr(token.begin, token.end - token.begin);
}

} // namespace

TEST_P(NumberTokenTest, IsReadAsFarAsItGoes) {
    const ExpressionToken token = nextToken(GetParam().text, 0);
    EXPECT_EQ(token.kind, ExpressionToken::NUMBER);
    EXPECT_EQ(textOf(GetParam().text, token), GetParam().token);
    EXPECT_EQ(token.number, GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(ExpressionTokens, NumberTokenTest,
                         testing::Values(NumberRow{"0", "0", 0}, NumberRow{"2.5", "2.5", 2.5},
                                         NumberRow{".5", ".5", 0.5}, NumberRow{"5.", "5.", 5},
                                         NumberRow{" 12 ", "12", 12}, NumberRow{"1e3", "1e3", 1000},
                                         NumberRow{"1E+3", "1E+3", 1000}, NumberRow{"1e-3", "1e-3", 0.001},
                                         NumberRow{"1e", "1", 1}, NumberRow{"1e+", "1", 1}, NumberRow{"1ex", "1", 1},
                                         NumberRow{"3DISP", "3", 3}, NumberRow{"3-1", "3", 3},
                                         NumberRow{"0x10", "0", 0}, NumberRow{"007", "007", 7}));

TEST_P(NameTokenTest, IsReadAsFarAsItGoes) {
    const ExpressionToken token = nextToken(GetParam().text, 0);
    EXPECT_EQ(token.kind, GetParam().kind);
    EXPECT_EQ(textOf(GetParam().text, token), GetParam().token);
    EXPECT_EQ(token.name, GetParam().name);
}

INSTANTIATE_TEST_SUITE_P(ExpressionTokens, NameTokenTest,
                         testing::Values(NameRow{"DISP+1", "DISP", ExpressionToken::WORD, "DISP"},
                                         NameRow{"_a1.b_2 c", "_a1.b_2", ExpressionToken::WORD, "_a1.b_2"},
                                         NameRow{"az.AZ09[", "az.AZ09", ExpressionToken::WORD, "az.AZ09"},
                                         NameRow{"\xC3\xA4\xF0\x9F\x94\xA9:", "\xC3\xA4\xF0\x9F\x94\xA9",
                                                 ExpressionToken::WORD, "\xC3\xA4\xF0\x9F\x94\xA9"},
                                         NameRow{"\"1st (%)\"+", "\"1st (%)\"", ExpressionToken::QUOTED, "1st (%)"},
                                         NameRow{"'it''s \"so\"'+", "'it''s \"so\"'", ExpressionToken::QUOTED,
                                                 "it's \"so\""},
                                         NameRow{"\"a\"\"b'c\"", "\"a\"\"b'c\"", ExpressionToken::QUOTED, "a\"b'c"},
                                         NameRow{"\"\"\"\"", "\"\"\"\"", ExpressionToken::QUOTED, "\""}));

TEST(ExpressionTokens, SignsStandAlone) {
    for (const char sign : std::string("+-*/^()[],:")) {
        const ExpressionToken token = nextToken(std::string(" ") + sign + sign, 0);
        EXPECT_EQ(token.kind, ExpressionToken::SIGN);
        EXPECT_EQ(token.sign, sign);
        EXPECT_EQ(token.begin, 1u);
        EXPECT_EQ(token.end, 2u);
    }
}

TEST(ExpressionTokens, AtTheEndThereIsTheEnd) {
    for (const std::string text : {"", "A", "A \t\r\n\v\f"}) {
        const ExpressionToken token = nextToken(text, text.empty() ? 0 : 1);
        EXPECT_EQ(token.kind, ExpressionToken::END);
        EXPECT_EQ(token.begin, text.size());
        EXPECT_EQ(token.end, text.size());
    }
}

TEST(ExpressionTokens, AllOtherCharactersAreRefused) {
    for (int code = 0; code < 0x80; ++code) {
        const std::string text(1, char(code));
        const bool isAllowed = text.find_first_of("+-*/^()[],:_ \t\n\v\f\r") != std::string::npos ||
                               (code >= '0' && code <= '9') || (code >= 'a' && code <= 'z') ||
                               (code >= 'A' && code <= 'Z');
        if (isAllowed) {
            EXPECT_NO_THROW(nextToken(text, 0)) << code;
        } else {
            EXPECT_THROW(nextToken(text, 0), ExpressionError) << code;
        }
    }
}

TEST(ExpressionTokens, AnEndlessNumberIsToldShortened) {
    try {
        nextToken(std::string(100, '1') + "..", 0);
        FAIL();
    } catch (const ExpressionError& error) {
        EXPECT_EQ(error.what(), "column 1 of the expression: \"" + std::string(37, '1') + "...\" is not a number");
    }
}

TEST(ExpressionTokens, NamesAreQuotedWhereNeeded) {
    EXPECT_EQ(quotedWhereNeeded("SDV.SDV1"), "SDV.SDV1");
    EXPECT_EQ(quotedWhereNeeded("_x"), "_x");
    EXPECT_EQ(quotedWhereNeeded("St\xC3\xA4"
                                "bchen"),
              "St\xC3\xA4"
              "bchen");
    EXPECT_EQ(quotedWhereNeeded("1st"), "\"1st\"");
    EXPECT_EQ(quotedWhereNeeded(".x"), "\".x\"");
    EXPECT_EQ(quotedWhereNeeded("STR(%)"), "\"STR(%)\"");
    EXPECT_EQ(quotedWhereNeeded("a\"b"), "\"a\"\"b\"");
    EXPECT_EQ(quotedWhereNeeded(""), "\"\"");
}
