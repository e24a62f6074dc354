#include "LibUnstructGrid/VTOString.h"

#include "Tests/LibUnstructGrid/VTOStringSupport.h"

#include <gtest/gtest.h>

using orvtest::AssertRecorder;
using orvtest::failedIn;
using orvtest::ScopedLocale;
using orvtest::text;

namespace {

std::vector<orvtest::FailedAssert> failed(std::initializer_list<const char*> expressions) {
    return failedIn("VTOStringEdit", expressions);
}

struct RangeCase {
    int first;
    int second;
    const wchar_t* found;
};

TEST(VTOStringEdit, GetSubStringIncludesBothEnds) {
    const VTString sText(L"abcdef");
    const RangeCase cases[] = {{0, 0, L"a"}, {1, 3, L"bcd"}, {0, 5, L"abcdef"}, {2, -1, L"cdef"}, {5, -7, L"f"},
                               {-1, 3, L""}, {6, -1, L""},   {6, 6, L""},       {3, 2, L""},      {2, 6, L""}};
    for (const RangeCase& c : cases) {
        EXPECT_EQ(text(sText.GetSubString(c.first, c.second)), c.found) << c.first << ' ' << c.second;
        EXPECT_FALSE(sText.GetSubString(c.first, c.second).IsNull());
    }
    EXPECT_TRUE(VTString().GetSubString(0, -1) == VTString(L""));
}

TEST(VTOStringEdit, MidTakesACount) {
    const VTString sText(L"abcdef");
    const RangeCase cases[] = {{0, 2, L"ab"}, {3, 2, L"de"},         {4, 10, L"ef"}, {2, -1, L"cdef"},
                               {1, 0, L""},   {5, 2147483647, L"f"}, {6, 1, L""},    {-1, 2, L""}};
    for (const RangeCase& c : cases) {
        EXPECT_EQ(text(sText.Mid(c.first, c.second)), c.found) << c.first << ' ' << c.second;
        EXPECT_FALSE(sText.Mid(c.first, c.second).IsNull());
    }
    EXPECT_TRUE(VTString().Mid(0, 1) == VTString(L""));
}

TEST(VTOStringEdit, PiecesHaveExactBuffers) {
    VTString sText(L"ab cdef");
    EXPECT_EQ(sText.Mid(4, 10).GetBufferLength(), 4);
    EXPECT_EQ(sText.Mid(4, -1).GetBufferLength(), 4);
    EXPECT_EQ(sText.GetSubString(1, 3).GetBufferLength(), 4);
    EXPECT_EQ(sText.GetFirstWord().GetBufferLength(), 3);
    EXPECT_EQ(sText.GetFirstToken(L'd').GetBufferLength(), 5);
}

TEST(VTOStringEdit, LeftAndRight) {
    const VTString sText(L"abcdef");
    EXPECT_EQ(text(sText.Left(2)), L"ab");
    EXPECT_EQ(text(sText.Left(0)), L"");
    EXPECT_EQ(text(sText.Left(9)), L"abcdef");
    EXPECT_EQ(text(sText.Left(-1)), L"abcdef");
    EXPECT_EQ(text(sText.Right(2)), L"ef");
    EXPECT_EQ(text(sText.Right(0)), L"");
    EXPECT_EQ(text(sText.Right(9)), L"abcdef");
    EXPECT_EQ(text(sText.Right(-1)), L"");
    EXPECT_EQ(text(VTString().Left(2)), L"");
    EXPECT_EQ(text(VTString().Right(2)), L"");
}

TEST(VTOStringEdit, TruncAtAPosition) {
    AssertRecorder recorder;
    VTString sText(L"abcdef");
    sText.Trunc(6);
    EXPECT_EQ(text(sText), L"abcdef");
    sText.Trunc(2);
    EXPECT_EQ(text(sText), L"ab");
    EXPECT_EQ(sText.Length(), 2);
    EXPECT_TRUE(recorder.take().empty());
    sText.Trunc(-1);
    EXPECT_EQ(recorder.take(), failedIn("VTOString", {"iPos >= 0"}));
    EXPECT_EQ(text(sText), L"ab");
}

TEST(VTOStringEdit, TruncAtACharacter) {
    VTString sText(L"a.b.c");
    EXPECT_FALSE(sText.Trunc(L'x', 0, true));
    EXPECT_EQ(text(sText), L"a.b.c");
    EXPECT_TRUE(sText.Trunc(L'.', -1, false));
    EXPECT_EQ(text(sText), L"a.b");
    EXPECT_FALSE(sText.Trunc(L'B', 0, true));
    EXPECT_TRUE(sText.Trunc('.', 0, true));
    EXPECT_EQ(text(sText), L"a");
    EXPECT_FALSE(sText.Trunc('.', 0, true));
    EXPECT_TRUE(sText.Trunc(L'a'));
    EXPECT_TRUE(sText.IsEmpty());
}

TEST(VTOStringEdit, TruncAtAText) {
    VTString sText(L"one--two--three");
    EXPECT_TRUE(sText.Trunc(VTString(L"--"), 4, true));
    EXPECT_EQ(text(sText), L"one--two");
    EXPECT_FALSE(sText.Trunc(VTString(L"ONE"), 0, true));
    EXPECT_TRUE(sText.Trunc(VTString(L"--"), -1, false));
    EXPECT_EQ(text(sText), L"one");
    EXPECT_FALSE(sText.Trunc(VTString(L"--")));
    EXPECT_EQ(text(sText), L"one");
}

TEST(VTOStringEdit, CaseOfAllCharacters) {
    for (const char* szLocale : orvtest::BOTH_LOCALES) {
        ScopedLocale locale(szLocale);
        ASSERT_TRUE(locale.isSet());
        VTString sText(L"aZ9 \u00E5\u00C5\u03B1");
        sText.ToUpper();
        EXPECT_EQ(text(sText), L"AZ9 \u00E5\u00C5\u03B1") << szLocale;
        EXPECT_EQ(text(sText.AsLower()), L"az9 \u00E5\u00C5\u03B1") << szLocale;
        sText.ToLower();
        EXPECT_EQ(text(sText), L"az9 \u00E5\u00C5\u03B1") << szLocale;
        EXPECT_EQ(text(sText.AsUpper()), L"AZ9 \u00E5\u00C5\u03B1") << szLocale;
        EXPECT_EQ(text(sText), L"az9 \u00E5\u00C5\u03B1") << szLocale;
    }
}

TEST(VTOStringEdit, CaseOfNegativeAndLargeCharactersStays) {
    VTString sText(L"ab");
    sText.SetAt(0, static_cast<wchar_t>(-159)); // 'a' - 256
    sText.SetAt(1, static_cast<wchar_t>(256 + L'a'));
    EXPECT_EQ(text(sText.AsUpper()), text(sText));
    EXPECT_EQ(text(sText.AsLower()), text(sText));
}

TEST(VTOStringEdit, CaseOfANullStringLeavesItNull) {
    VTString sNull;
    sNull.ToLower();
    sNull.ToUpper();
    sNull.Capitalize();
    sNull.DeCaptitalize();
    EXPECT_TRUE(sNull.IsNull());
    EXPECT_TRUE(sNull.AsLower().IsNull());
    EXPECT_TRUE(sNull.AsUpper().IsNull());
}

TEST(VTOStringEdit, CapitalizeGoesByBlanks) {
    VTString sText(L"max vON mises\tsTRESS,x  yZ");
    sText.Capitalize();
    EXPECT_EQ(text(sText), L"Max Von Mises\tstress,x  Yz");
}

TEST(VTOStringEdit, DeCaptitalizeCapitalizesTheFirst) {
    VTString sText(L"mAX Von Mises");
    sText.DeCaptitalize();
    EXPECT_EQ(text(sText), L"Max von mises");
    VTString sEmpty(L"");
    sEmpty.DeCaptitalize();
    EXPECT_EQ(text(sEmpty), L"");
}

TEST(VTOStringEdit, TrimsWhiteSpace) {
    const wchar_t* szText = L" \t\r\n\v\f a b \n";
    VTString sLeft(szText);
    EXPECT_TRUE(sLeft.TrimLeft(false));
    EXPECT_EQ(text(sLeft), L"a b \n");
    EXPECT_EQ(sLeft.Length(), 5);
    EXPECT_FALSE(sLeft.TrimLeft(false));
    VTString sRight(szText);
    EXPECT_TRUE(sRight.TrimRight(false));
    EXPECT_EQ(text(sRight), L" \t\r\n\v\f a b");
    EXPECT_EQ(sRight.Length(), 10);
    EXPECT_FALSE(sRight.TrimRight(false));
    VTString sBoth(szText);
    EXPECT_TRUE(sBoth.Trim(false));
    EXPECT_EQ(text(sBoth), L"a b");
    EXPECT_FALSE(sBoth.Trim(false));
    EXPECT_EQ(text(VTString(szText).AsTrimmed()), L"a b");
}

TEST(VTOStringEdit, TrimAnswersForEitherEnd) {
    EXPECT_TRUE(VTString(L" a").Trim(false));
    EXPECT_TRUE(VTString(L"a ").Trim(false));
}

TEST(VTOStringEdit, TrimsATextOfWhiteSpaceAway) {
    VTString sText(L" \t ");
    sText.Trim(false);
    EXPECT_FALSE(sText.IsNull());
    EXPECT_EQ(sText.Length(), 0);
    VTString sRight(L"  ");
    sRight.TrimRight(false);
    EXPECT_TRUE(sRight.IsEmpty());
}

TEST(VTOStringEdit, TrimsControlCharactersOnRequest) {
    VTString sText(L" \x01\x7F"
                   L"a\x02 \x03");
    sText.Trim(false);
    EXPECT_EQ(text(sText), L"\x01\x7F"
                           L"a\x02 \x03");
    sText.TrimLeft(true);
    EXPECT_EQ(text(sText), L"a\x02 \x03");
    sText.TrimRight(true);
    EXPECT_EQ(text(sText), L"a");
}

TEST(VTOStringEdit, TrimFollowsTheLocale) {
    // The em space is white space, and U+0080 a control character, where the locale knows them.
    const VTString sText(L"\u2003\u0080a\u0080\u2003");
    {
        ScopedLocale locale("C.UTF-8");
        ASSERT_TRUE(locale.isSet());
        EXPECT_EQ(text(sText.AsTrimmed()), L"\u0080a\u0080");
        VTString sAll(sText);
        sAll.Trim(true);
        EXPECT_EQ(text(sAll), L"a");
    }
    ScopedLocale locale("C");
    VTString sAll(sText);
    EXPECT_FALSE(sAll.Trim(true));
    EXPECT_EQ(text(sAll), text(sText));
}

TEST(VTOStringEdit, NegativeCharacterStopsTheTrim) {
    const wchar_t acText[] = {L' ', static_cast<wchar_t>(-2), L' ', static_cast<wchar_t>(-3), L' ', L'\0'};
    VTString sText(acText);
    sText.Trim(true);
    EXPECT_EQ(text(sText), std::wstring(acText + 1, 3));
}

TEST(VTOStringEdit, TrimOfANullStringGivesTheFlag) {
    VTString sNull;
    EXPECT_FALSE(sNull.TrimLeft(false));
    EXPECT_TRUE(sNull.TrimLeft(true));
    EXPECT_FALSE(sNull.TrimRight(false));
    EXPECT_TRUE(sNull.TrimRight(true));
    EXPECT_FALSE(sNull.Trim(false));
    EXPECT_TRUE(sNull.Trim(true));
    EXPECT_TRUE(sNull.IsNull());
    EXPECT_TRUE(sNull.AsTrimmed().IsNull());
}

TEST(VTOStringEdit, StripCharacterCounts) {
    VTString sText(L"\"a\"\"b\"");
    EXPECT_EQ(sText.StripCharacter(L'"'), 4);
    EXPECT_EQ(text(sText), L"ab");
    EXPECT_EQ(sText.Length(), 2);
    EXPECT_EQ(sText.StripCharacter(L'"'), 0);
    EXPECT_EQ(sText.StripCharacter(L'A'), 0);
    EXPECT_EQ(text(sText), L"ab");
    VTString sAll(L"xxx");
    EXPECT_EQ(sAll.StripCharacter(L'x'), 3);
    EXPECT_TRUE(sAll.IsEmpty());
    EXPECT_EQ(VTString().StripCharacter(L'x'), 0);
}

TEST(VTOStringEdit, StripCharacterAssertsItsCharacter) {
    AssertRecorder recorder;
    VTString sText(L"abc");
    EXPECT_EQ(sText.StripCharacter(L'\0'), 0);
    EXPECT_EQ(recorder.take(), failed({"cChr != '\\0'"}));
    EXPECT_EQ(text(sText), L"abc");
}

TEST(VTOStringEdit, Nicify) {
    VTString sText(L"\n  a \t\t b\tc  d\n e\t");
    sText.Nicify();
    EXPECT_EQ(text(sText), L"a b c d\n e");
    EXPECT_EQ(sText.Length(), 10);
    VTString sBlank(L" \t ");
    sBlank.Nicify();
    EXPECT_TRUE(sBlank == VTString(L""));
    VTString sNull;
    sNull.Nicify();
    EXPECT_TRUE(sNull.IsNull());
}

TEST(VTOStringEdit, ReplacesTexts) {
    VTString sText(L"aXbxc");
    EXPECT_EQ(sText.Replace(VTString(L"x"), VTString(L"--"), 0, true), 1);
    EXPECT_EQ(text(sText), L"aXb--c");
    EXPECT_EQ(sText.Length(), 6);
    EXPECT_EQ(sText.GetBufferLength(), 7);
    EXPECT_EQ(sText.Replace(VTString(L"x"), VTString(), 0, false), 1);
    EXPECT_EQ(text(sText), L"ab--c");
    // From the front, and not inside what has been put in.
    VTString sRun(L"aaaaa");
    EXPECT_EQ(sRun.Replace(L"aa", L"aaa"), 2);
    EXPECT_EQ(text(sRun), L"aaaaaaa");
}

TEST(VTOStringEdit, ReplacesUpToACount) {
    VTString sText(L"a.b.c.d");
    EXPECT_EQ(sText.Replace(L".", L"::", 2, true), 2);
    EXPECT_EQ(text(sText), L"a::b::c.d");
    EXPECT_EQ(sText.Replace(L"::", L".", 9, true), 2);
    EXPECT_EQ(text(sText), L"a.b.c.d");
}

TEST(VTOStringEdit, ReplaceOfNothingChangesNothing) {
    VTString sText(L"abc");
    sText.SetBufferLength(20);
    EXPECT_EQ(sText.Replace(L"x", L"y"), 0);
    EXPECT_EQ(sText.Replace(L"", L"y"), 0);
    EXPECT_EQ(text(sText), L"abc");
    EXPECT_EQ(sText.GetBufferLength(), 20);
    VTString sNull;
    EXPECT_EQ(sNull.Replace(L"x", L"y"), 0);
    EXPECT_TRUE(sNull.IsNull());
}

// Counting a forgotten length anew at every hit would take minutes.
TEST(VTOStringEdit, ReplacesManyHitsWithAForgottenLength) {
    const int iLength = 2000000;
    VTString sText;
    sText.Pad(iLength, L'a');
    sText.GetBuffer();
    EXPECT_EQ(sText.Replace(L"a", L"b"), iLength);
    EXPECT_EQ(sText.Length(), iLength);
    EXPECT_EQ(sText.FindAll(L'b'), iLength);
}

TEST(VTOStringEdit, ReplacesItselfByItself) {
    VTString sText(L"ab");
    EXPECT_EQ(sText.Replace(sText, sText), 1);
    EXPECT_EQ(text(sText), L"ab");
}

TEST(VTOStringEdit, ReplacesCharacters) {
    VTString sText(L"aXbxcx");
    sText.SetBufferLength(20);
    EXPECT_EQ(sText.Replace(L'x', L'-', 0, true), 2);
    EXPECT_EQ(text(sText), L"aXb-c-");
    EXPECT_EQ(sText.Replace(L'x', L'+', 0, false), 1);
    EXPECT_EQ(text(sText), L"a+b-c-");
    EXPECT_EQ(sText.Replace(L'-', L'_', 1, true), 1);
    EXPECT_EQ(text(sText), L"a+b_c-");
    EXPECT_EQ(sText.Replace(L'q', L'_'), 0);
    EXPECT_EQ(sText.GetBufferLength(), 20);
    EXPECT_EQ(VTString().Replace(L'a', L'b'), 0);
}

TEST(VTOStringEdit, ReplaceByTheTerminatorCuts) {
    VTString sText(L"a.b.c");
    EXPECT_EQ(sText.Replace(L'.', L'\0'), 2);
    EXPECT_EQ(text(sText), L"a");
    EXPECT_EQ(sText.Length(), 1);
}

TEST(VTOStringEdit, QuotesEachEndOnce) {
    const std::pair<const wchar_t*, const wchar_t*> cases[] = {
        {L"abc", L"'abc'"}, {L"'abc", L"'abc'"}, {L"abc'", L"'abc'"}, {L"'abc'", L"'abc'"}, {L"'", L"'"}, {L"", L"''"}};
    for (const auto& [szText, szQuoted] : cases) {
        VTString sText(szText);
        sText.Quote(L'\'');
        EXPECT_EQ(text(sText), szQuoted);
        EXPECT_EQ(sText.Length(), static_cast<int>(text(szQuoted).size()));
    }
    VTString sNull;
    sNull.Quote();
    EXPECT_EQ(text(sNull), L"\"\"");
}

struct UnquoteCase {
    const wchar_t* text;
    bool requireEnd;
    bool result;
    const wchar_t* after;
};

TEST(VTOStringEdit, Unquote) {
    const UnquoteCase cases[] = {
        {L"'abc'", false, true, L"abc"},
        {L"'abc'", true, true, L"abc"},
        {L" \x01'a b' \t", true, true, L"a b"},
        {L"' a '", true, true, L" a "},
        // Without an end the opening quote comes off in any case.
        {L"'abc", false, true, L"abc"},
        {L"'abc", true, false, L"abc"},
        {L" 'abc ", true, false, L"abc"},
        {L"'", false, true, L""},
        {L"'", true, false, L""},
        {L"''", true, true, L""},
        // Without a start all stays, the white space too.
        {L" abc' ", false, false, L" abc' "},
        {L"  ", false, false, L"  "},
        {L"", false, false, L""},
    };
    for (const UnquoteCase& c : cases) {
        VTString sText(c.text);
        EXPECT_EQ(sText.Unquote(L'\'', c.requireEnd), c.result) << text(c.text) << c.requireEnd;
        EXPECT_EQ(text(sText), c.after) << c.requireEnd;
    }
    VTString sNull;
    EXPECT_FALSE(sNull.Unquote());
    EXPECT_TRUE(sNull.IsNull());
}

struct PadCase {
    const wchar_t* text;
    int length;
    bool atEnd;
    bool truncate;
    const wchar_t* after;
};

TEST(VTOStringEdit, Pad) {
    const PadCase cases[] = {
        {L"abc", 5, true, true, L"abc**"},    {L"abc", 5, false, false, L"**abc"}, {L"abc", 3, true, true, L"abc"},
        {L"abcde", 2, true, false, L"abcde"}, {L"abcde", 2, true, true, L"abc"},   {L"abcde", 4, false, true, L"abcde"},
        {L"abcde", 0, true, true, L"a"},      {L"", 2, true, true, L"**"},         {L"", 0, true, true, L""},
    };
    for (const PadCase& c : cases) {
        VTString sText(c.text);
        EXPECT_TRUE(sText.Pad(c.length, L'*', c.atEnd, c.truncate));
        EXPECT_EQ(text(sText), c.after) << c.length << c.atEnd << c.truncate;
        EXPECT_EQ(sText.Length(), static_cast<int>(text(c.after).size()));
    }
    VTString sNull;
    EXPECT_TRUE(sNull.Pad(0));
    EXPECT_TRUE(sNull.IsNull());
    EXPECT_TRUE(sNull.Pad(2));
    EXPECT_EQ(text(sNull), L"  ");
}

TEST(VTOStringEdit, PadAssertsItsArguments) {
    AssertRecorder recorder;
    VTString sText(L"abc");
    EXPECT_TRUE(sText.Pad(-1, L'*', true, false));
    EXPECT_EQ(recorder.take(), failed({"iLength >= 0"}));
    EXPECT_EQ(text(sText), L"abc");
    // A fill of terminators is no fill.
    EXPECT_TRUE(sText.Pad(5, L'\0', true, false));
    EXPECT_EQ(recorder.take(), failed({"sPadString.Length() + iCurrLength == iLength"}));
    EXPECT_EQ(text(sText), L"abc");
    EXPECT_TRUE(sText.Pad(-1, L'*', true, true));
    EXPECT_EQ(recorder.take(), failed({"iLength >= 0"}));
    EXPECT_EQ(text(sText), L"");
}

TEST(VTOStringEdit, EditingKeepsTheCursor) {
    auto restAfter = [](auto edit) {
        VTString sText(L"one two");
        sText.GetFirstWord();
        edit(sText);
        return text(sText.GetRest());
    };
    EXPECT_EQ(restAfter([](VTString& s) { s.ToUpper(); }), L"TWO");
    EXPECT_EQ(restAfter([](VTString& s) { s.Trim(true); }), L"two");
    EXPECT_EQ(restAfter([](VTString& s) { s.Trunc(6); }), L"tw");
    EXPECT_EQ(restAfter([](VTString& s) { s.Replace(L"two", L"four"); }), L"four");
    EXPECT_EQ(restAfter([](VTString& s) { s.Replace(L't', L'T'); }), L"Two");
    EXPECT_EQ(restAfter([](VTString& s) { s.Pad(9, L'.', true, false); }), L"two..");
    EXPECT_EQ(restAfter([](VTString& s) { s.Pad(9, L'.', false, false); }), L"e two");
    EXPECT_EQ(restAfter([](VTString& s) { s.Quote(); }), L" two\"");
    EXPECT_EQ(restAfter([](VTString& s) { s.Unquote(L'o', false); }), L"w");
    EXPECT_EQ(restAfter([](VTString& s) { s.StripCharacter(L'n'); }), L"wo");
    EXPECT_EQ(restAfter([](VTString& s) { s.Nicify(); }), L"two");
    EXPECT_EQ(restAfter([](VTString& s) { s.TrimBuffer(); }), L"two");
    EXPECT_EQ(restAfter([](VTString& s) { s.SetBufferLength(20); }), L"two");
    EXPECT_EQ(restAfter([](VTString& s) { s.SetAt(6, L'p'); }), L"twp");
}

} // namespace
