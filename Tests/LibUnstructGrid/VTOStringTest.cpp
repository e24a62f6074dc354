#include "LibUnstructGrid/VTOString.h"

#include "LibCore/rvfString.h"
#include "Tests/LibUnstructGrid/VTOStringSupport.h"

#include <gtest/gtest.h>

#include <limits>

using orvtest::AssertRecorder;
using orvtest::failedIn;
using orvtest::ScopedLocale;
using orvtest::text;

namespace {

std::vector<orvtest::FailedAssert> failed(std::initializer_list<const char*> expressions) {
    return failedIn("VTOString", expressions);
}

TEST(VTOString, DefaultIsNull) {
    VTString sText;
    EXPECT_TRUE(sText.IsNull());
    EXPECT_TRUE(sText.IsEmpty());
    EXPECT_TRUE(sText.IsBlank());
    EXPECT_EQ(sText.Length(), 0);
    EXPECT_EQ(sText.GetBufferLength(), 0);
    EXPECT_EQ(sText.GetBuffer(), nullptr);
    EXPECT_EQ(~sText, VT_EMPTY_STRING);
    EXPECT_EQ(VT_EMPTY_STRING[0], L'\0');
}

TEST(VTOString, EmptyIsNotNull) {
    VTString sText(L"");
    EXPECT_FALSE(sText.IsNull());
    EXPECT_TRUE(sText.IsEmpty());
    EXPECT_EQ(sText.Length(), 0);
    EXPECT_EQ(sText.GetBufferLength(), 1);
    EXPECT_NE(~sText, VT_EMPTY_STRING);
}

TEST(VTOString, ComesFromWideTexts) {
    VTString sText(L"abc");
    EXPECT_EQ(text(sText), L"abc");
    EXPECT_EQ(sText.Length(), 3);
    EXPECT_EQ(sText.GetBufferLength(), 4);
    EXPECT_TRUE(VTString(static_cast<const wchar_t*>(nullptr)).IsNull());
}

TEST(VTOString, CopyHasTheCharactersAndNotTheCursor) {
    VTString sText(L"one two");
    sText.GetFirstWord();
    VTString sCopy(sText);
    EXPECT_EQ(text(sCopy.GetRest()), L"one two");
    EXPECT_EQ(text(sText.GetRest()), L"two");
    EXPECT_TRUE(VTString(VTString()).IsNull());
}

TEST(VTOString, CopyIsIndependentAndExact) {
    VTString sText(L"abc");
    sText.SetBufferLength(50);
    VTString sCopy(sText);
    sText.SetAt(0, L'x');
    EXPECT_EQ(text(sCopy), L"abc");
    EXPECT_EQ(sCopy.GetBufferLength(), 4);
}

TEST(VTOString, ComesFromNarrowTexts) {
    VTString sText("abc");
    EXPECT_EQ(text(sText), L"abc");
    EXPECT_EQ(sText.Length(), 3);
    EXPECT_EQ(sText.GetBufferLength(), 4);
    EXPECT_FALSE(VTString("").IsNull());
    EXPECT_TRUE(VTString("").IsEmpty());
    EXPECT_TRUE(VTString(static_cast<const char*>(nullptr)).IsNull());
}

TEST(VTOString, NarrowTextsFollowTheLocale) {
    {
        ScopedLocale locale("C.UTF-8");
        ASSERT_TRUE(locale.isSet());
        // U+00E5 is two bytes and U+1F600 four in UTF-8.
        EXPECT_EQ(text(VTString("\xC3\xA5-\xF0\x9F\x98\x80")), L"\u00E5-\U0001F600");
        EXPECT_TRUE(VTString("ab\xFF").IsNull());
        EXPECT_TRUE(VTString("ab\xC3").IsNull());
    }
    ScopedLocale locale("C");
    EXPECT_TRUE(VTString("\xC3\xA5").IsNull());
}

TEST(VTOString, ComesFromNumbers) {
    EXPECT_EQ(text(VTString(42)), L"42");
    EXPECT_EQ(text(VTString(-7)), L"-7");
    EXPECT_EQ(text(VTString(std::numeric_limits<int>::min())), L"-2147483648");
    EXPECT_EQ(VTString(42).Length(), 2);
    EXPECT_EQ(VTString(42).GetBufferLength(), 64);
    // Six significant digits.
    EXPECT_EQ(text(VTString(0.1f)), L"0.1");
    EXPECT_EQ(text(VTString(1234567.0f)), L"1.23457e+06");
    EXPECT_EQ(text(VTString(-2.5)), L"-2.5");
    EXPECT_EQ(text(VTString(3.14159265)), L"3.14159");
    EXPECT_EQ(text(VTString(1e100)), L"1e+100");
}

TEST(VTOString, ComesFromOneCharacter) {
    EXPECT_EQ(text(VTString(L'x')), L"x");
    EXPECT_EQ(VTString(L'x').Length(), 1);
    EXPECT_FALSE(VTString(L'\0').IsNull());
    EXPECT_TRUE(VTString(L'\0').IsEmpty());
    // A char is promoted to an int; 97 is the letter a.
    EXPECT_EQ(text(VTString('a')), L"97");
}

TEST(VTOString, ConvertsToAndFromTheCoresText) {
    const rvf::String coreText(L"\u00E5\U0001F600");
    EXPECT_EQ(text(VTString(coreText)), L"\u00E5\U0001F600");
    EXPECT_FALSE(VTString(rvf::String()).IsNull());
    const rvf::String back = VTString(L"\u00E5b");
    EXPECT_EQ(back, rvf::String(L"\u00E5b"));
    const rvf::String fromNull = VTString();
    EXPECT_TRUE(fromNull.isEmpty());
}

TEST(VTOString, AssignTakesAll) {
    VTString sText(L"old text");
    sText.Assign(L"new", -1);
    EXPECT_EQ(text(sText), L"new");
    EXPECT_EQ(sText.Length(), 3);
    EXPECT_EQ(sText.GetBufferLength(), 4);
    sText.Assign(L"longer", -5);
    EXPECT_EQ(text(sText), L"longer");
}

TEST(VTOString, AssignTakesACount) {
    VTString sText;
    sText.Assign(L"abcdef", 2);
    EXPECT_EQ(text(sText), L"ab");
    EXPECT_EQ(sText.Length(), 2);
    EXPECT_EQ(sText.GetBufferLength(), 3);
    sText.Assign(L"abcdef", 0);
    EXPECT_TRUE(sText.IsEmpty());
    EXPECT_FALSE(sText.IsNull());
    EXPECT_EQ(sText.GetBufferLength(), 1);
}

TEST(VTOString, AssignStopsAtATerminator) {
    VTString sText;
    sText.Assign(L"ab\0cd", 5);
    EXPECT_EQ(text(sText), L"ab");
    EXPECT_EQ(sText.Length(), 2);
    EXPECT_EQ(sText.GetBufferLength(), 6);
}

TEST(VTOString, AssignOfNullMakesNull) {
    VTString sText(L"abc");
    sText.Assign(nullptr, -1);
    EXPECT_TRUE(sText.IsNull());
    EXPECT_EQ(sText.GetBufferLength(), 0);
    EXPECT_EQ(sText.Length(), 0);
    sText.Assign(nullptr, 5);
    EXPECT_TRUE(sText.IsNull());
}

TEST(VTOString, AssignTakesAPieceOfItself) {
    VTString sText(L"abcdef");
    sText.Assign(~sText + 2, 3);
    EXPECT_EQ(text(sText), L"cde");
    sText.Assign(~sText, -1);
    EXPECT_EQ(text(sText), L"cde");
}

TEST(VTOString, AssignKeepsTheCursorAndTheOperatorDoesNot) {
    VTString sText(L"one two");
    sText.GetFirstWord();
    sText.Assign(L"abcdefg", -1);
    EXPECT_EQ(text(sText.GetRest()), L"efg");
    sText.GetFirstWord();
    sText = VTString(L"next text");
    EXPECT_EQ(text(sText.GetRest()), L"next text");
    sText = L"third text";
    EXPECT_EQ(text(sText.GetRest()), L"third text");
}

TEST(VTOString, OperatorAssigns) {
    VTString sText(L"abc");
    EXPECT_EQ(&(sText = VTString(L"longer")), &sText);
    EXPECT_EQ(text(sText), L"longer");
    EXPECT_EQ(&(sText = L"x"), &sText);
    EXPECT_EQ(text(sText), L"x");
    EXPECT_EQ(sText.GetBufferLength(), 2);
    sText = static_cast<const wchar_t*>(nullptr);
    EXPECT_TRUE(sText.IsNull());
    sText = VTString(L"again");
    sText = VTString();
    EXPECT_TRUE(sText.IsNull());
}

TEST(VTOString, AssigningToItselfCutsTheBuffer) {
    VTString sText(L"abc");
    sText.SetBufferLength(20);
    const VTString& sSame = sText;
    sText = sSame;
    EXPECT_EQ(text(sText), L"abc");
    EXPECT_EQ(sText.GetBufferLength(), 4);
}

TEST(VTOString, IsBlankKnowsFourCharacters) {
    for (const wchar_t* szText : {L"", L" ", L" \t\n\r ", L"\n"}) {
        EXPECT_TRUE(VTString(szText).IsBlank()) << text(szText).size();
    }
    for (const wchar_t* szText : {L"a", L"  a", L"\v", L" \f "}) {
        EXPECT_FALSE(VTString(szText).IsBlank()) << text(szText).size();
    }
}

TEST(VTOString, LengthIsForgottenWhereTheCallerMayChangeTheText) {
    VTString sText(L"abcdef");
    sText.GetBuffer()[3] = L'\0';
    const VTString& sConst = sText;
    EXPECT_EQ(sConst.Length(), 3);
    // The const form leaves the cache alone, so it sees the next change too.
    sText.GetBuffer()[2] = L'\0';
    EXPECT_EQ(sConst.Length(), 2);
    EXPECT_EQ(sText.Length(), 2);
    sText.SetAt(1, L'\0');
    EXPECT_EQ(sConst.Length(), 1);
}

TEST(VTOString, EqualTellsNullFromEmpty) {
    const VTString sNull;
    const VTString sEmpty("");
    EXPECT_FALSE(sNull == sEmpty);
    EXPECT_FALSE(sEmpty == sNull);
    EXPECT_TRUE(sNull != sEmpty);
    EXPECT_TRUE(sNull == VTString());
    EXPECT_FALSE(sNull != VTString());
    EXPECT_TRUE(sEmpty == VTString(L""));
    EXPECT_FALSE(sNull == VTString(L"a"));
}

TEST(VTOString, EqualComparesTexts) {
    EXPECT_TRUE(VTString(L"abc") == VTString(L"abc"));
    EXPECT_TRUE(VTString(L"abc") == L"abc");
    EXPECT_TRUE(VTString(L"abc") == "abc");
    EXPECT_FALSE(VTString(L"abc") == VTString(L"abC"));
    EXPECT_FALSE(VTString(L"abc") == VTString(L"ab"));
    EXPECT_TRUE(VTString(L"abc") != VTString(L"abd"));
    EXPECT_FALSE(VTString(L"abc") != VTString(L"abc"));
}

TEST(VTOString, OrderTakesNullForEmpty) {
    const VTString asOrdered[] = {VTString(), VTString(L""), VTString(L"A"), VTString(L"Ab"), VTString(L"a")};
    const int aiRank[] = {0, 0, 1, 2, 3};
    for (int i = 0; i < 5; ++i) {
        for (int j = 0; j < 5; ++j) {
            EXPECT_EQ(asOrdered[i] < asOrdered[j], aiRank[i] < aiRank[j]) << i << ' ' << j;
            EXPECT_EQ(asOrdered[i] > asOrdered[j], aiRank[i] > aiRank[j]) << i << ' ' << j;
        }
    }
}

int sign(int iValue) {
    return (iValue > 0) - (iValue < 0);
}

TEST(VTOString, CompareGoesByCharacterCode) {
    const VTString sText(L"abc");
    EXPECT_EQ(sText.Compare(L"abc"), 0);
    EXPECT_EQ(sign(sText.Compare(L"abd")), -1);
    EXPECT_EQ(sign(sText.Compare(L"ab")), 1);
    EXPECT_EQ(sign(sText.Compare(L"abcd")), -1);
    EXPECT_EQ(sign(sText.Compare(L"ABC")), 1);
}

TEST(VTOString, CompareOverACount) {
    const VTString sText(L"abc");
    EXPECT_EQ(sText.Compare(L"abX", 2), 0);
    EXPECT_EQ(sign(sText.Compare(L"abX", 3)), 1);
    EXPECT_EQ(sText.Compare(L"xyz", 0), 0);
    EXPECT_EQ(sText.Compare(L"abc", 10), 0);
    EXPECT_EQ(sign(sText.Compare(L"abcd", 10)), -1);
}

TEST(VTOString, CompareCountsNullBelowEmpty) {
    const VTString sNull;
    const VTString sEmpty(L"");
    for (int iCount : {-1, 0, 3}) {
        EXPECT_EQ(sNull.Compare(VTString(), iCount), 0);
        EXPECT_EQ(sEmpty.Compare(sNull, iCount), 1);
        EXPECT_EQ(sNull.Compare(sEmpty, iCount), -1);
        EXPECT_EQ(sNull.CompareNoCase(VTString(), iCount), 0);
        EXPECT_EQ(sEmpty.CompareNoCase(sNull, iCount), 1);
        EXPECT_EQ(sNull.CompareNoCase(sEmpty, iCount), -1);
    }
}

TEST(VTOString, CompareAssertsItsCount) {
    AssertRecorder recorder;
    VTString(L"a").Compare(L"a", -2);
    EXPECT_EQ(recorder.take(), failed({"iCharCount >= -1"}));
    VTString(L"a").CompareNoCase(L"a", -2);
    EXPECT_EQ(recorder.take(), failed({"iCharCount >= -1"}));
    VTString(L"a").Compare(L"a", -1);
    VTString(L"a").CompareNoCase(L"a", -1);
    EXPECT_TRUE(recorder.take().empty());
}

TEST(VTOString, CompareNoCaseGivesASign) {
    const VTString sText(L"aBc");
    EXPECT_EQ(sText.CompareNoCase(L"AbC"), 0);
    EXPECT_EQ(sText.CompareNoCase(L"abd"), -1);
    EXPECT_EQ(sText.CompareNoCase(L"abb"), 1);
    EXPECT_EQ(sText.CompareNoCase(L"AB"), 1);
    EXPECT_EQ(sText.CompareNoCase(L"ABCD"), -1);
    EXPECT_EQ(sText.CompareNoCase(L"ABX", 2), 0);
    EXPECT_EQ(sText.CompareNoCase(L"ABX", 3), -1);
    EXPECT_EQ(sText.CompareNoCase(L"xyz", 0), 0);
    EXPECT_EQ(sText.CompareNoCase(L"abc", 10), 0);
    // Upper case decides: the underscore, 95, lies between Z, 90, and a, 97.
    EXPECT_EQ(VTString(L"a").CompareNoCase(L"_"), -1);
}

TEST(VTOString, CaseEndsWithTheNarrowCharacters) {
    for (const char* szLocale : orvtest::BOTH_LOCALES) {
        ScopedLocale locale(szLocale);
        ASSERT_TRUE(locale.isSet());
        EXPECT_EQ(VTString(L"az").CompareNoCase(L"AZ"), 0);
        // Small and capital a with ring, alpha, and ya.
        EXPECT_EQ(VTString(L"\u00E5").CompareNoCase(L"\u00C5"), 1) << szLocale;
        EXPECT_EQ(VTString(L"\u03B1").CompareNoCase(L"\u0391"), 1) << szLocale;
        EXPECT_EQ(VTString(L"\u044F").Find(L'\u042F', 0, true, false), -1) << szLocale;
    }
}

TEST(VTOString, StartsWith) {
    const VTString sText(L"Part.vtf");
    EXPECT_TRUE(sText.StartsWith(L"Part"));
    EXPECT_TRUE(sText.StartsWith(L"Part.vtf"));
    EXPECT_FALSE(sText.StartsWith(L"part"));
    EXPECT_FALSE(sText.StartsWith(L"Part.vtfx"));
    EXPECT_TRUE(sText.StartsWithNoCase(L"pART"));
    EXPECT_FALSE(sText.StartsWithNoCase(L"pant"));
}

TEST(VTOString, StartsWithFollowsTheNullRule) {
    const VTString sNull;
    const VTString sEmpty(L"");
    const VTString sText(L"a");
    EXPECT_TRUE(sText.StartsWith(sEmpty));
    EXPECT_TRUE(sText.StartsWithNoCase(sEmpty));
    EXPECT_FALSE(sText.StartsWith(sNull));
    EXPECT_FALSE(sText.StartsWithNoCase(sNull));
    EXPECT_TRUE(sNull.StartsWith(sNull));
    EXPECT_TRUE(sNull.StartsWithNoCase(sNull));
    EXPECT_FALSE(sNull.StartsWith(sEmpty));
    EXPECT_FALSE(sNull.StartsWith(sText));
}

TEST(VTOString, Contains) {
    const VTString sText(L"Von Mises stress");
    EXPECT_TRUE(sText.Contains(L"Mises"));
    EXPECT_TRUE(sText.Contains(L"stress"));
    EXPECT_FALSE(sText.Contains(L"mises"));
    EXPECT_TRUE(sText.ContainsNoCase(L"MISES"));
    EXPECT_FALSE(sText.ContainsNoCase(L"tresca"));
    EXPECT_FALSE(sText.Contains(L""));
    EXPECT_FALSE(sText.ContainsNoCase(VTString()));
    EXPECT_FALSE(VTString().Contains(L"a"));
}

struct FindCase {
    const wchar_t* text;
    const wchar_t* what;
    int start;
    bool forward;
    bool caseSensitive;
    int found;
};

TEST(VTOString, FindText) {
    //                 0123456789
    const FindCase cases[] = {
        {L"abcABCabc", L"abc", 0, true, true, 0},
        {L"abcABCabc", L"abc", 1, true, true, 6},
        {L"abcABCabc", L"abc", 1, true, false, 3},
        {L"abcABCabc", L"aBc", 0, true, true, -1},
        {L"abcABCabc", L"abc", 5, false, true, 0},
        {L"abcABCabc", L"abc", 5, false, false, 3},
        {L"abcABCabc", L"abc", 6, false, true, 6},
        {L"abcABCabc", L"C", 0, true, true, 5},
        // From -1: the last place where it fits.
        {L"abcABCabc", L"abc", -1, true, true, 6},
        {L"abcABCabc", L"ABC", -1, true, true, -1},
        {L"abcABCabc", L"ABC", -1, true, false, 6},
        {L"abcABCabc", L"ABC", -1, false, true, 3},
        {L"abcABCabc", L"xyz", -1, false, true, -1},
        // Outside, and where it does not fit.
        {L"abc", L"c", 3, true, true, -1},
        {L"abc", L"c", 4, false, true, -1},
        {L"abc", L"a", -2, true, true, -1},
        {L"abc", L"a", -2, false, false, -1},
        {L"abc", L"bc", 2, true, true, -1},
        {L"abc", L"ab", 2, false, true, -1},
        {L"abc", L"ab", 2, false, false, -1},
        {L"abc", L"abcd", -1, true, true, -1},
        {L"abc", L"abcd", 0, true, false, -1},
        {L"abc", L"abc", 0, true, true, 0},
        // Empty on either side.
        {L"", L"a", 0, true, true, -1},
        {L"", L"", 0, true, true, -1},
        {L"abc", L"", 0, true, true, -1},
        {L"abc", L"", -1, false, true, -1},
    };
    for (const FindCase& c : cases) {
        EXPECT_EQ(VTString(c.text).Find(VTString(c.what), c.start, c.forward, c.caseSensitive), c.found)
            << text(c.text) << " " << text(c.what) << " " << c.start << c.forward << c.caseSensitive;
    }
    EXPECT_EQ(VTString().Find(VTString(L"a"), 0, true, true), -1);
    EXPECT_EQ(VTString(L"a").Find(VTString(), 0, true, true), -1);
    EXPECT_EQ(VTString(L"xaya").Find(VTString(L"a")), 1);
}

struct FindCharacterCase {
    const wchar_t* text;
    wchar_t what;
    int start;
    bool forward;
    bool caseSensitive;
    int found;
};

TEST(VTOString, FindCharacter) {
    const FindCharacterCase cases[] = {
        {L"aXbxa", L'x', 0, true, true, 3},    {L"aXbxa", L'x', 0, true, false, 1},
        {L"aXbxa", L'a', 1, true, true, 4},    {L"aXbxa", L'a', -1, true, true, 4},
        {L"aXbxa", L'x', -1, true, true, -1},  {L"aXbxa", L'x', -1, false, true, 3},
        {L"aXbxa", L'X', -1, false, true, 1},  {L"aXbxa", L'X', 2, false, false, 1},
        {L"aXbxa", L'a', 3, false, true, 0},   {L"aXbxa", L'q', 0, true, true, -1},
        {L"aXbxa", L'q', 4, false, false, -1}, {L"aXbxa", L'a', 5, true, true, -1},
        {L"aXbxa", L'a', -2, true, true, -1},  {L"aXbxa", L'a', 9, false, true, -1},
        {L"", L'a', -1, true, true, -1},       {L"", L'a', 0, false, false, -1},
    };
    for (const FindCharacterCase& c : cases) {
        EXPECT_EQ(VTString(c.text).Find(c.what, c.start, c.forward, c.caseSensitive), c.found)
            << text(c.text) << " " << static_cast<char>(c.what) << " " << c.start << c.forward << c.caseSensitive;
    }
    EXPECT_EQ(VTString().Find(L'a'), -1);
    EXPECT_EQ(VTString(L"xaya").Find(L'a'), 1);
}

TEST(VTOString, FindAllCounts) {
    const VTString sText(L"a-b-c-");
    EXPECT_EQ(sText.FindAll(L'-', 0, true), 3);
    EXPECT_EQ(sText.FindAll(L'-', 2, true), 2);
    EXPECT_EQ(sText.FindAll(L'-', 3, true), 2);
    EXPECT_EQ(sText.FindAll(L'-', 3, false), 2);
    EXPECT_EQ(sText.FindAll(L'-', 0, false), 0);
    EXPECT_EQ(sText.FindAll(L'-', -1, true), 1);
    EXPECT_EQ(sText.FindAll(L'-', -1, false), 3);
    EXPECT_EQ(sText.FindAll(L'A', 0, true), 0);
    EXPECT_EQ(sText.FindAll(L'-', 6, true), 0);
    EXPECT_EQ(sText.FindAll(L'-', -2, true), 0);
    EXPECT_EQ(VTString().FindAll(L'-', 0, true), 0);
    EXPECT_EQ(VTString(L"").FindAll(L'-', -1, true), 0);
}

TEST(VTOString, FindFirstNumber) {
    const std::pair<const wchar_t*, int> cases[] = {{L"", -1},    {L"abc", -1}, {L"7", 0},   {L"x12", 1}, {L"x-12", 1},
                                                    {L"x+12", 1}, {L"x.5", 2},  {L"-.5", 2}, {L"-5", 0},  {L"+5a6", 0},
                                                    {L"a-b1", 3}, {L"--3", 1},  {L"- 3", 2}, {L"-", -1}};
    for (const auto& [szText, iFound] : cases) {
        EXPECT_EQ(VTString(szText).FindFirstNumber(), iFound) << text(szText);
    }
    EXPECT_EQ(VTString().FindFirstNumber(), -1);
}

TEST(VTOString, ReadsCharactersAndTheTerminator) {
    AssertRecorder recorder;
    const VTString sText(L"abc");
    EXPECT_EQ(sText.GetAt(0), L'a');
    EXPECT_EQ(sText[2], L'c');
    EXPECT_EQ(sText.GetAt(3), L'\0');
    EXPECT_EQ(sText[3], L'\0');
    EXPECT_TRUE(recorder.take().empty());
}

TEST(VTOString, ReadingOutsideIsAsserted) {
    AssertRecorder recorder;
    VTString sText(L"abc");
    EXPECT_EQ(sText.GetAt(-1), L'\0');
    EXPECT_EQ(recorder.take(), failed({"iPos >= 0"}));
    EXPECT_EQ(sText[-1], L'\0');
    EXPECT_EQ(recorder.take(), failed({"iPos >= 0"}));
    EXPECT_EQ(sText.GetAt(4), L'\0');
    EXPECT_EQ(recorder.take(), failed({"iPos < m_iBufferLength", "iPos <= Length()"}));
    sText.SetBufferLength(8);
    EXPECT_EQ(sText[4], L'\0');
    EXPECT_EQ(recorder.take(), failed({"iPos <= Length()"}));
    EXPECT_EQ(VTString().GetAt(0), L'\0');
    EXPECT_EQ(recorder.take(), failed({"iPos < m_iBufferLength"}));
}

TEST(VTOString, WritesCharacters) {
    AssertRecorder recorder;
    VTString sText(L"abc");
    sText.SetAt(0, L'x');
    sText.SetAt(3, L'\0');
    EXPECT_EQ(text(sText), L"xbc");
    sText.SetAt(1, L'\0');
    EXPECT_EQ(text(sText), L"x");
    EXPECT_EQ(sText.Length(), 1);
    EXPECT_EQ(sText.GetBufferLength(), 4);
    EXPECT_TRUE(recorder.take().empty());
}

TEST(VTOString, WritingOutsideIsAssertedAndChangesNothing) {
    const char* szInside = "iPos < Length() || (cChr == '\\0' && iPos == Length())";
    AssertRecorder recorder;
    VTString sText(L"abc");
    sText.SetAt(-1, L'x');
    EXPECT_EQ(recorder.take(), failed({"iPos >= 0"}));
    sText.SetAt(4, L'x');
    EXPECT_EQ(recorder.take(), failed({"iPos < m_iBufferLength", szInside}));
    EXPECT_EQ(text(sText), L"abc");
    sText.SetBufferLength(8);
    sText.SetAt(3, L'd');
    EXPECT_EQ(recorder.take(), failed({szInside}));
    sText.UpdateStringLength();
    EXPECT_EQ(text(sText), L"abcd");
    sText.SetAt(5, L'\0');
    EXPECT_EQ(recorder.take(), failed({szInside}));
    VTString sNull;
    sNull.SetAt(0, L'\0');
    EXPECT_EQ(recorder.take(), failed({"iPos < m_iBufferLength"}));
    EXPECT_TRUE(sNull.IsNull());
}

TEST(VTOString, SetBufferLengthKeepsTheText) {
    VTString sText(L"abc");
    EXPECT_TRUE(sText.SetBufferLength(10));
    EXPECT_EQ(text(sText), L"abc");
    EXPECT_EQ(sText.GetBufferLength(), 10);
    EXPECT_EQ(sText.Length(), 3);
    EXPECT_EQ(sText.GetBuffer()[9], L'\0');
    EXPECT_TRUE(sText.SetBufferLength(10));
}

TEST(VTOString, SetBufferLengthCutsWithoutCounting) {
    VTString sText(L"abcdef");
    EXPECT_TRUE(sText.SetBufferLength(3));
    EXPECT_EQ(text(sText), L"ab");
    EXPECT_EQ(sText.GetBufferLength(), 3);
    EXPECT_EQ(sText.Length(), 6);
    sText.UpdateStringLength();
    EXPECT_EQ(sText.Length(), 2);
}

TEST(VTOString, SetBufferLengthOfANullStringMakesItEmpty) {
    VTString sText;
    EXPECT_TRUE(sText.SetBufferLength(5));
    EXPECT_FALSE(sText.IsNull());
    EXPECT_TRUE(sText.IsEmpty());
    EXPECT_EQ(sText.Length(), 0);
    EXPECT_EQ(sText.GetBufferLength(), 5);
}

TEST(VTOString, SetBufferLengthAssertsItsLength) {
    AssertRecorder recorder;
    VTString sText(L"abc");
    EXPECT_FALSE(sText.SetBufferLength(0));
    EXPECT_EQ(recorder.take(), failed({"iLength > 0"}));
    EXPECT_FALSE(sText.SetBufferLength(-3));
    EXPECT_EQ(recorder.take(), failed({"iLength > 0"}));
    EXPECT_EQ(text(sText), L"abc");
    EXPECT_EQ(sText.GetBufferLength(), 4);
    // The size it has already, and still asserted.
    VTString sNull;
    EXPECT_TRUE(sNull.SetBufferLength(0));
    EXPECT_EQ(recorder.take(), failed({"iLength > 0"}));
}

TEST(VTOString, TrimBuffer) {
    VTString sText(L"one two");
    sText.GetFirstWord();
    sText.SetBufferLength(30);
    sText.TrimBuffer();
    EXPECT_EQ(sText.GetBufferLength(), 8);
    EXPECT_EQ(text(sText.GetRest()), L"two");
    VTString sNull;
    sNull.TrimBuffer();
    EXPECT_TRUE(sNull.IsNull());
}

TEST(VTOString, ZeroTerminate) {
    VTString sText(L"abc");
    EXPECT_EQ(sText.ZeroTerminate(), 3);
    wchar_t* pBuffer = sText.GetBuffer();
    pBuffer[1] = L'\0';
    EXPECT_EQ(sText.ZeroTerminate(), 1);
    pBuffer[1] = L'b';
    pBuffer[3] = L'd';
    EXPECT_EQ(sText.ZeroTerminate(), 3);
    EXPECT_EQ(text(sText), L"abc");
    EXPECT_EQ(sText.Length(), 3);
    // The length follows a write through the old pointer.
    pBuffer[2] = L'\0';
    EXPECT_EQ(sText.ZeroTerminate(), 2);
    EXPECT_EQ(sText.Length(), 2);
    EXPECT_EQ(VTString().ZeroTerminate(), -1);
    EXPECT_EQ(VTString(L"").ZeroTerminate(), 0);
}

TEST(VTOString, ShortCharIsKeptUntilTheNextCall) {
    VTString sText(L"abc");
    const char* szFirst = sText.ShortChar();
    EXPECT_STREQ(szFirst, "abc");
    sText = L"xyz";
    EXPECT_STREQ(szFirst, "abc");
    EXPECT_STREQ(sText.ShortChar(), "xyz");
    EXPECT_STREQ(VTString(L"").ShortChar(), "");
    sText.Assign(nullptr);
    EXPECT_EQ(sText.ShortChar(), nullptr);
    EXPECT_EQ(VTString().ShortChar(), nullptr);
}

TEST(VTOString, ShortCharFollowsTheLocale) {
    const VTString sText(L"a\u00E5\U0001F600z");
    {
        ScopedLocale locale("C.UTF-8");
        ASSERT_TRUE(locale.isSet());
        EXPECT_STREQ(sText.ShortChar(), "a\xC3\xA5\xF0\x9F\x98\x80z");
    }
    ScopedLocale locale("C");
    EXPECT_STREQ(sText.ShortChar(), "a");
}

TEST(VTOString, GetShortCharNeedsOneByteMore) {
    const VTString sText(L"abcdef");
    char szBuffer[8] = "0123456";
    sText.GetShortChar(szBuffer, 4);
    EXPECT_EQ(std::string(szBuffer), "abcd");
    EXPECT_EQ(szBuffer[4], '\0');
    EXPECT_EQ(szBuffer[5], '5');
    VTString(L"x").GetShortChar(szBuffer, 6);
    EXPECT_EQ(std::string(szBuffer, 8), std::string("x\0\0\0\0\0\0\0", 8));
    VTString().GetShortChar(szBuffer, 3);
    EXPECT_STREQ(szBuffer, "");
    sText.GetShortChar(szBuffer, 0);
    EXPECT_STREQ(szBuffer, "");
}

TEST(VTOString, GetShortCharKeepsCharactersWhole) {
    ScopedLocale locale("C.UTF-8");
    ASSERT_TRUE(locale.isSet());
    char szBuffer[4];
    VTString(L"a\u00E5\u00E5").GetShortChar(szBuffer, 3);
    EXPECT_STREQ(szBuffer, "a\xC3\xA5");
    VTString(L"ab\u00E5").GetShortChar(szBuffer, 3);
    EXPECT_STREQ(szBuffer, "ab");
}

TEST(VTOString, GetShortCharAssertsItsBuffer) {
    AssertRecorder recorder;
    VTString(L"abc").GetShortChar(nullptr, 3);
    EXPECT_EQ(recorder.take(), failed({"pszString"}));
}

TEST(VTOString, AppendMakesAnExactBuffer) {
    VTString sText(L"one");
    EXPECT_EQ(&(sText += VTString(L" two")), &sText);
    EXPECT_EQ(text(sText), L"one two");
    EXPECT_EQ(sText.Length(), 7);
    EXPECT_EQ(sText.GetBufferLength(), 8);
    EXPECT_EQ(&(sText += L" three"), &sText);
    EXPECT_EQ(text(sText), L"one two three");
    EXPECT_EQ(sText.GetBufferLength(), 14);
}

TEST(VTOString, AppendStaysInPlaceWhereThereIsRoom) {
    VTString sText(L"ab");
    sText.SetBufferLength(6);
    const wchar_t* pBuffer = ~sText;
    sText += L"cde";
    EXPECT_EQ(~sText, pBuffer);
    EXPECT_EQ(text(sText), L"abcde");
    EXPECT_EQ(sText.Length(), 5);
    EXPECT_EQ(sText.GetBufferLength(), 6);
    sText += L"f";
    EXPECT_EQ(text(sText), L"abcdef");
    EXPECT_EQ(sText.GetBufferLength(), 7);
}

TEST(VTOString, AppendWithAForgottenLengthMakesAnExactBuffer) {
    VTString sText(L"ab");
    sText.SetBufferLength(20);
    sText.GetBuffer();
    sText += L"cd";
    EXPECT_EQ(text(sText), L"abcd");
    EXPECT_EQ(sText.GetBufferLength(), 5);
    EXPECT_EQ(sText.Length(), 4);
}

TEST(VTOString, AppendAfterTheBufferWasCut) {
    VTString sText(L"abcdef");
    sText.SetBufferLength(3);
    sText += L"x";
    EXPECT_EQ(text(sText), L"abx");
    EXPECT_EQ(sText.Length(), 3);
}

TEST(VTOString, AppendOfNothingChangesNothing) {
    VTString sText(L"abc");
    sText.SetBufferLength(10);
    sText.GetBuffer();
    sText += VTString();
    sText += L"";
    sText += static_cast<const wchar_t*>(nullptr);
    EXPECT_EQ(text(sText), L"abc");
    EXPECT_EQ(sText.GetBufferLength(), 10);
    VTString sNull;
    sNull += VTString(L"");
    EXPECT_TRUE(sNull.IsNull());
    sNull += L"x";
    EXPECT_EQ(text(sNull), L"x");
}

TEST(VTOString, AppendsItselfAndItsPieces) {
    VTString sText(L"abc");
    sText += sText;
    EXPECT_EQ(text(sText), L"abcabc");
    sText += ~sText + 4;
    EXPECT_EQ(text(sText), L"abcabcbc");
    sText.SetBufferLength(40);
    sText += ~sText + 6;
    EXPECT_EQ(text(sText), L"abcabcbcbc");
    sText.GetBuffer();
    sText += sText;
    EXPECT_EQ(text(sText), L"abcabcbcbcabcabcbcbc");
}

TEST(VTOString, AppendKeepsTheCursor) {
    VTString sText(L"one two");
    sText.GetFirstWord();
    sText += L" three";
    EXPECT_EQ(text(sText.GetRest()), L"two three");
}

TEST(VTOString, PlusJoins) {
    const VTString sJoined = VTString(L"ab") + VTString(L"cd");
    EXPECT_EQ(text(sJoined), L"abcd");
    EXPECT_EQ(sJoined.Length(), 4);
    EXPECT_EQ(sJoined.GetBufferLength(), 5);
    EXPECT_EQ(text(VTString(L"ab") + L"c"), L"abc");
    EXPECT_EQ(text(L"x" + VTString(L"y")), L"xy");
    EXPECT_EQ(text(VTString() + VTString(L"y")), L"y");
    EXPECT_EQ(text(VTString(L"y") + VTString()), L"y");
    EXPECT_FALSE((VTString() + VTString()).IsNull());
}

} // namespace
