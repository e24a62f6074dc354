#include "LibUnstructGrid/VTOString.h"

#include "Tests/LibUnstructGrid/VTOStringSupport.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

using orvtest::AssertRecorder;
using orvtest::failedIn;
using orvtest::ScopedLocale;
using orvtest::text;

using Texts = std::vector<std::wstring>;

namespace {

std::vector<orvtest::FailedAssert> failed(std::initializer_list<const char*> expressions) {
    return failedIn("VTOStringParse", expressions);
}

// The first words as GetFirstWord() and GetNextWord() deliver them, empty ones too.
Texts words(const wchar_t* szText, int iCount) {
    VTString sText(szText);
    Texts found = {text(sText.GetFirstWord())};
    for (int i = 1; i < iCount; ++i) {
        found.push_back(text(sText.GetNextWord()));
    }
    return found;
}

TEST(VTOStringWords, EndAtBlankTabAndComma) {
    EXPECT_EQ(words(L"one two\tthree,four", 5), (Texts{L"one", L"two", L"three", L"four", L""}));
    EXPECT_EQ(words(L"  \t one", 2), (Texts{L"one", L""}));
    EXPECT_EQ(words(L"one   two  ", 3), (Texts{L"one", L"two", L""}));
}

TEST(VTOStringWords, CommasAreNotSkipped) {
    EXPECT_EQ(words(L"a,,b", 4), (Texts{L"a", L"", L"b", L""}));
    EXPECT_EQ(words(L"a ,b", 4), (Texts{L"a", L"", L"b", L""}));
    EXPECT_EQ(words(L"a, b", 3), (Texts{L"a", L"b", L""}));
    EXPECT_EQ(words(L",a", 3), (Texts{L"", L"a", L""}));
    EXPECT_EQ(words(L"a,", 3), (Texts{L"a", L"", L""}));
}

TEST(VTOStringWords, LineEndsAreCutFromTheEndOfAWordOnly) {
    EXPECT_EQ(words(L"one\r\n two\n", 3), (Texts{L"one", L"two", L""}));
    EXPECT_EQ(words(L"one\ntwo three", 2), (Texts{L"one\ntwo", L"three"}));
    EXPECT_EQ(words(L"\n\r\n x", 2), (Texts{L"", L"x"}));
}

TEST(VTOStringWords, OfEmptyAndNullTexts) {
    EXPECT_EQ(words(L"", 2), (Texts{L"", L""}));
    VTString sNull;
    EXPECT_TRUE(sNull.GetFirstWord() == VTString(L""));
    EXPECT_TRUE(sNull.GetNextWord() == VTString(L""));
    EXPECT_TRUE(sNull.GetRest() == VTString(L""));
}

TEST(VTOStringWords, CursorGoesPastOneSeparator) {
    VTString sText(L"one  two");
    sText.GetFirstWord();
    EXPECT_EQ(text(sText.GetRest()), L" two");
    // Also past the end: what is appended later lies one character further on.
    VTString sEnd(L"one");
    sEnd.GetFirstWord();
    sEnd += L",two";
    EXPECT_EQ(text(sEnd.GetRest()), L"two");
}

TEST(VTOStringWords, GetRestGoesToTheEnd) {
    VTString sText(L"one two three");
    sText.GetFirstWord();
    EXPECT_EQ(text(sText.GetRest()), L"two three");
    EXPECT_TRUE(sText.GetRest() == VTString(L""));
    EXPECT_EQ(text(sText.GetNextWord()), L"");
    EXPECT_EQ(text(sText.GetFirstWord()), L"one");
    // As a last word does, it takes a separator that is appended later.
    sText.GetRest();
    sText += L",four";
    EXPECT_EQ(text(sText.GetRest()), L"four");
}

TEST(VTOStringWords, GetWordCountsFromTheFirst) {
    VTString sText(L"one two three");
    EXPECT_EQ(text(sText.GetWord(2)), L"three");
    EXPECT_EQ(text(sText.GetWord(0)), L"one");
    EXPECT_EQ(text(sText.GetRest()), L"two three");
    EXPECT_EQ(text(sText.GetWord(3)), L"");
    EXPECT_EQ(text(sText.GetWord(99)), L"");
    EXPECT_EQ(text(sText.GetWord(-1)), L"one");
}

TEST(VTOStringWords, GetWordStopsAtAnEmptyWord) {
    VTString sText(L"a,,b");
    EXPECT_EQ(text(sText.GetWord(2)), L"");
    EXPECT_EQ(text(sText.GetRest()), L"b");
}

TEST(VTOStringWords, ShortenedTextEndsTheWalk) {
    VTString sText(L"one two three");
    sText.GetWord(1);
    sText.Trunc(3);
    EXPECT_EQ(text(sText.GetNextWord()), L"");
    EXPECT_EQ(text(sText.GetRest()), L"");
}

TEST(VTOStringWords, GetNumWords) {
    const std::pair<const wchar_t*, int> cases[] = {{L"", 0},       {L"  \t\n", 0}, {L"one", 1},   {L" one two ", 2},
                                                    {L"a,b\tc", 3}, {L"a,,b", 3},   {L",", 1},     {L",,", 2},
                                                    {L"a, b", 2},   {L"a\nb", 1},   {L"a \nb", 1}, {L"a,\n", 1}};
    for (const auto& [szText, iWords] : cases) {
        EXPECT_EQ(VTString(szText).GetNumWords(), iWords) << text(szText);
    }
    EXPECT_EQ(VTString().GetNumWords(), 0);
}

TEST(VTOStringWords, GetNumWordsCountsMoreThanTheWalk) {
    // The comma behind the comma counts, yet a walk that stops at an empty word has seen one.
    VTString sText(L"a,,");
    EXPECT_EQ(sText.GetNumWords(), 2);
    EXPECT_EQ(words(L"a,,", 3), (Texts{L"a", L"", L""}));
}

TEST(VTOStringWords, GetNumLines) {
    const std::pair<const wchar_t*, int> cases[] = {{L"", 0},   {L"a", 1},    {L"a\n", 1},   {L"a\nb", 2},
                                                    {L"\n", 1}, {L"\n\n", 2}, {L"a\r\n", 1}, {L"a\n\nb\n", 3}};
    for (const auto& [szText, iLines] : cases) {
        EXPECT_EQ(VTString(szText).GetNumLines(), iLines) << text(szText);
    }
    EXPECT_EQ(VTString().GetNumLines(), 0);
}

TEST(VTOStringWords, CountsNumbers) {
    VTString sText(L"1 2.5, -3,,x 4e2 .5 1d3 7\n");
    // 1, -3, 4e2 and 7 have no point.
    EXPECT_EQ(sText.GetNumInts(), 4);
    EXPECT_EQ(text(sText.GetRest()), L"");
    EXPECT_EQ(sText.GetNumFloats(), 6);
    EXPECT_EQ(text(sText.GetRest()), L"");
    EXPECT_EQ(VTString(L"").GetNumInts(), 0);
    EXPECT_EQ(VTString().GetNumFloats(), 0);
}

TEST(VTOStringWords, CountsNumbersFromTheStart) {
    VTString sText(L"1 2 3");
    sText.GetWord(1);
    EXPECT_EQ(sText.GetNumInts(), 3);
    sText.GetWord(1);
    EXPECT_EQ(sText.GetNumFloats(), 3);
}

struct Token {
    std::wstring text;
    bool isNull;
    bool more;

    bool operator==(const Token&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Token& token) {
    return out << testing::PrintToString(token.text) << (token.isNull ? " null" : "") << (token.more ? " more" : "");
}

const Token AT_END = {L"", true, false};

// Takes tokens until a null one, which ends the list.
template <class... Separator>
std::vector<Token> tokens(VTString sText, const Separator&... separator) {
    std::vector<Token> list;
    bool bMore = false;
    VTString sToken = sText.GetFirstToken(separator..., &bMore);
    list.push_back({text(sToken), sToken.IsNull(), bMore});
    while (!sToken.IsNull() && list.size() < 20) {
        bMore = !bMore;
        VTString sNext = sText.GetNextToken(separator..., &bMore);
        list.push_back({text(sNext), sNext.IsNull(), bMore});
        sToken = sNext;
    }
    return list;
}

TEST(VTOStringTokens, EndAtASeparator) {
    EXPECT_EQ(tokens(L"a,,b", L','),
              (std::vector<Token>{{L"a", false, true}, {L"", false, true}, {L"b", false, false}, AT_END}));
    EXPECT_EQ(tokens(L"a,", L','), (std::vector<Token>{{L"a", false, true}, AT_END}));
    EXPECT_EQ(tokens(L",", L','), (std::vector<Token>{{L"", false, true}, AT_END}));
    EXPECT_EQ(tokens(L" a b ", L','), (std::vector<Token>{{L" a b ", false, false}, AT_END}));
    EXPECT_EQ(tokens(L"axbXc", L'X'), (std::vector<Token>{{L"axb", false, true}, {L"c", false, false}, AT_END}));
    EXPECT_EQ(tokens(L"", L','), (std::vector<Token>{AT_END}));
    EXPECT_EQ(tokens(VTString(), L','), (std::vector<Token>{AT_END}));
}

TEST(VTOStringTokens, EndAtASeparatorText) {
    EXPECT_EQ(tokens(L"a, b,c, , ", VTString(L", ")),
              (std::vector<Token>{{L"a", false, true}, {L"b,c", false, true}, {L"", false, true}, AT_END}));
    EXPECT_EQ(tokens(L"axxxb", VTString(L"xx")),
              (std::vector<Token>{{L"a", false, true}, {L"xb", false, false}, AT_END}));
    EXPECT_EQ(tokens(L"", VTString(L"xx")), (std::vector<Token>{AT_END}));
}

TEST(VTOStringTokens, SeparatorTextMustNotBeEmpty) {
    AssertRecorder recorder;
    VTString sText(L"a b");
    bool bMore = true;
    EXPECT_EQ(text(sText.GetFirstToken(VTString(), &bMore)), L"a b");
    EXPECT_EQ(recorder.take(), failed({"iNumCharsInSeparator > 0"}));
    EXPECT_FALSE(bMore);
    VTString sEmpty(L"");
    EXPECT_TRUE(sEmpty.GetNextToken(VTString(L"")).IsNull());
    EXPECT_EQ(recorder.take(), failed({"iNumCharsInSeparator > 0"}));
}

TEST(VTOStringTokens, EscapedSeparatorsDoNotCount) {
    EXPECT_EQ(tokens(L"a,\"b,c\",d", L',', L'"', L'"'),
              (std::vector<Token>{{L"a", false, true}, {L"\"b,c\"", false, true}, {L"d", false, false}, AT_END}));
    EXPECT_EQ(tokens(L"f(a,b),g", L',', L'(', L')'),
              (std::vector<Token>{{L"f(a,b)", false, true}, {L"g", false, false}, AT_END}));
    // No nesting: the first closing bracket ends the escape.
    EXPECT_EQ(tokens(L"((a),b)", L',', L'(', L')'),
              (std::vector<Token>{{L"((a)", false, true}, {L"b)", false, false}, AT_END}));
    // An escape without an end goes on to the end of the text.
    EXPECT_EQ(tokens(L"a,\"b,c", L',', L'"', L'"'),
              (std::vector<Token>{{L"a", false, true}, {L"\"b,c", false, false}, AT_END}));
    // A closing character outside is content.
    EXPECT_EQ(tokens(L"a),b", L',', L'(', L')'),
              (std::vector<Token>{{L"a)", false, true}, {L"b", false, false}, AT_END}));
    EXPECT_EQ(tokens(L"", L',', L'"', L'"'), (std::vector<Token>{AT_END}));
}

TEST(VTOStringTokens, EscapesMustNotBeSeparators) {
    AssertRecorder recorder;
    VTString sText(L"a");
    sText.GetFirstToken(L',', L',', L'"');
    EXPECT_EQ(recorder.take(), failed({"cSeparator != cStartEscape"}));
    sText.GetFirstToken(L',', L'"', L',');
    EXPECT_EQ(recorder.take(), failed({"cSeparator != cEndEscape"}));
    sText.GetNumTokens(L',', L',', L'"');
    EXPECT_EQ(recorder.take(), failed({"cSeparator != cStartEscape"}));
    sText.GetNumTokens(L',', L'"', L',');
    EXPECT_EQ(recorder.take(), failed({"cSeparator != cEndEscape"}));
}

TEST(VTOStringTokens, NeedNoFlag) {
    VTString sText(L"a,b");
    EXPECT_EQ(text(sText.GetFirstToken(L',')), L"a");
    EXPECT_EQ(text(sText.GetNextToken(L',')), L"b");
    EXPECT_TRUE(sText.GetNextToken(L',').IsNull());
    EXPECT_EQ(text(sText.GetFirstToken(VTString(L","))), L"a");
    EXPECT_EQ(text(sText.GetNextToken(VTString(L","))), L"b");
    EXPECT_TRUE(sText.GetNextToken(VTString(L",")).IsNull());
    EXPECT_EQ(text(sText.GetFirstToken(L',', L'"', L'"')), L"a");
    EXPECT_EQ(text(sText.GetNextToken(L',', L'"', L'"')), L"b");
    EXPECT_TRUE(sText.GetNextToken(L',', L'"', L'"').IsNull());
}

TEST(VTOStringTokens, ShareTheCursorWithWords) {
    VTString sText(L"a b;c d");
    EXPECT_EQ(text(sText.GetFirstWord()), L"a");
    EXPECT_EQ(text(sText.GetNextToken(L';')), L"b");
    EXPECT_EQ(text(sText.GetNextWord()), L"c");
    EXPECT_EQ(text(sText.GetRest()), L"d");
}

TEST(VTOStringTokens, GetNumTokens) {
    const std::pair<const wchar_t*, int> cases[] = {
        {L"", 1},
        {L"a", 1},
        {L"a,b", 2},
        {L"a,,b", 2},
        {L"a,", 1},
        {L"a,,", 1},
        {L",a", 2},
        {L",", 1},
        {L",,", 1},
        // A control character behind the last separator is no content, a blank is.
        {L"a,\n", 1},
        {L"a, ", 2},
        // Any character between two separators parts them, a control character too.
        {L"a,\n,b", 3},
        {L"a,\"b,c\",d", 3},
        {L"a,\"b,c", 2},
        // Inside the escape all is content; the closing quote is the last content here.
        {L"a,\"\"", 2},
        // The closing quote parts the separators around an escape.
        {L"a,\",\",b", 3},
    };
    for (const auto& [szText, iTokens] : cases) {
        EXPECT_EQ(VTString(szText).GetNumTokens(L',', L'"', L'"'), iTokens) << text(szText);
    }
    EXPECT_EQ(VTString().GetNumTokens(L',', L'"', L'"'), 1);
    EXPECT_EQ(VTString(L"a,\"b,c\"").GetNumTokens(L','), 3);
}

TEST(VTOStringTokens, GetNumTokensFollowsTheLocale) {
    // U+0080 is a control character where the locale knows it.
    const VTString sText(L"a,\u0080");
    {
        ScopedLocale locale("C.UTF-8");
        ASSERT_TRUE(locale.isSet());
        EXPECT_EQ(sText.GetNumTokens(L',', L'"', L'"'), 1);
    }
    ScopedLocale locale("C");
    EXPECT_EQ(sText.GetNumTokens(L',', L'"', L'"'), 2);
}

TEST(VTOStringNumbers, AsInt) {
    const std::pair<const wchar_t*, int> cases[] = {{L"12", 12},
                                                    {L"-12", -12},
                                                    {L"+7", 7},
                                                    {L"  12  ", 12},
                                                    {L"12abc", 12},
                                                    {L"12.9", 12},
                                                    {L"", 99},
                                                    {L"   ", 99},
                                                    {L"abc", 99},
                                                    {L"a12", 99},
                                                    {L"-", 99},
                                                    {L"007", 7},
                                                    {L"1 2", 1},
                                                    {L"2147483647", 2147483647},
                                                    {L"-2147483648", -2147483647 - 1}};
    for (const auto& [szText, iValue] : cases) {
        EXPECT_EQ(VTString(szText).AsInt(99), iValue) << text(szText);
    }
    EXPECT_EQ(VTString().AsInt(99), 99);
    EXPECT_EQ(VTString(L"x").AsInt(), 0);
}

TEST(VTOStringNumbers, AsInt64) {
    EXPECT_EQ(VTString(L" 9223372036854775807x").AsInt64(-1), 9223372036854775807LL);
    EXPECT_EQ(VTString(L"-4294967296").AsInt64(-1), -4294967296LL);
    EXPECT_EQ(VTString(L"x").AsInt64(-1), -1);
    EXPECT_EQ(VTString(L"").AsInt64(-1), -1);
    EXPECT_EQ(VTString().AsInt64(-1), -1);
}

TEST(VTOStringNumbers, AsDouble) {
    const std::pair<const wchar_t*, double> cases[] = {
        {L"12", 12.0},  {L"-0.25", -0.25}, {L"1e3", 1000.0}, {L" \t1.5 \n", 1.5}, {L"12abc", 99.0},
        {L"1 2", 99.0}, {L"", 99.0},       {L"  ", 99.0},    {L"abc", 99.0},      {L".5", 0.5},
        {L"5.", 5.0},   {L"1d3", 99.0},    {L"0x10", 16.0}};
    for (const auto& [szText, dValue] : cases) {
        EXPECT_EQ(VTString(szText).AsDouble(99.0), dValue) << text(szText);
        EXPECT_EQ(VTString(szText).AsFloat(99.0f), static_cast<float>(dValue)) << text(szText);
    }
    EXPECT_EQ(VTString().AsDouble(99.0), 99.0);
    EXPECT_EQ(VTString().AsFloat(99.0f), 99.0f);
    EXPECT_EQ(VTString(L"0.1").AsDouble(), 0.1);
    EXPECT_EQ(VTString(L"0.1").AsFloat(), 0.1f);
    EXPECT_TRUE(std::isinf(VTString(L"inf").AsDouble()));
}

TEST(VTOStringNumbers, GetFirstFloat) {
    const std::tuple<const wchar_t*, int, float> cases[] = {
        {L"t = 2.5 s", 0, 2.5f}, {L"x-3", 0, -3.0f},   {L"x+3", 0, 3.0f},   {L"a.5b", 0, 0.5f}, {L"-.5", 0, -0.5f},
        {L"1e3x", 0, 1000.0f},   {L"2E-1", 0, 0.2f},   {L"2eggs", 0, 2.0f}, {L"2e+", 0, 2.0f},  {L"1.2.3", 0, 1.2f},
        {L".5.2", 0, 0.5f},      {L"5. end", 0, 5.0f}, {L"1 2 3", 1, 2.0f}, {L"-12", 1, 12.0f}, {L"a.5", 2, 5.0f},
        {L"12", 1, 2.0f},        {L"none", 0, 0.0f},   {L"", 0, 0.0f},      {L"1", 7, 0.0f},    {L"end -.", 0, 0.0f},
        {L"1", -3, 1.0f}};
    for (const auto& [szText, iStart, fValue] : cases) {
        EXPECT_EQ(VTString(szText).GetFirstFloat(iStart), fValue) << text(szText) << iStart;
    }
    EXPECT_EQ(VTString().GetFirstFloat(0), 0.0f);
}

TEST(VTOStringNumbers, AsBoolReadsTheFirstCharacter) {
    for (const wchar_t* szText : {L"1", L"True", L"Y", L"t", L"yes", L"10", L"tea"}) {
        EXPECT_TRUE(VTString(szText).AsBool(false)) << text(szText);
    }
    for (const wchar_t* szText : {L"0", L"False", L"N", L"f", L"no", L"01"}) {
        EXPECT_FALSE(VTString(szText).AsBool(true)) << text(szText);
    }
    for (const wchar_t* szText : {L"2", L" yes", L" no", L"", L"  ", L"\t\n", L"-1", L"on"}) {
        EXPECT_TRUE(VTString(szText).AsBool(true)) << text(szText);
        EXPECT_FALSE(VTString(szText).AsBool(false)) << text(szText);
    }
    EXPECT_TRUE(VTString().AsBool(true));
    EXPECT_FALSE(VTString().AsBool());
}

TEST(VTOStringNumbers, IsNumberLooksAtTheCharactersOnly) {
    for (const wchar_t* szText : {L"1", L"-1.5e+3", L"1e+-", L".", L"E", L"  12\t", L"\n7\r\n", L"  "}) {
        EXPECT_TRUE(VTString(szText).IsNumber(false)) << text(szText);
    }
    for (const wchar_t* szText : {L"", L"1 2", L"a", L"1d3", L"0x10", L"1,2", L"inf", L"1\n2"}) {
        EXPECT_FALSE(VTString(szText).IsNumber(false)) << text(szText);
    }
    EXPECT_TRUE(VTString(L"1d3").IsNumber(true));
    EXPECT_TRUE(VTString(L"1D-3").IsNumber(true));
    EXPECT_FALSE(VTString(L"1f3").IsNumber(true));
    EXPECT_FALSE(VTString().IsNumber(true));
}

TEST(VTOStringNumbers, IsNumberFollowsTheLocale) {
    const VTString sText(L"\u2003"
                         L"12");
    {
        ScopedLocale locale("C.UTF-8");
        ASSERT_TRUE(locale.isSet());
        EXPECT_TRUE(sText.IsNumber(false));
    }
    ScopedLocale locale("C");
    EXPECT_FALSE(sText.IsNumber(false));
}

} // namespace
