#include "LibUnstructGrid/VTOArrayString.h"

#include "Tests/LibUnstructGrid/VTOArrayTestSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <malloc.h>
#include <memory>

namespace {

using namespace vtarraytest;
using orvtest::AssertRecorder;
using orvtest::assertsUntil;
using orvtest::FailedAssert;
using orvtest::failedIn;
using Numbers = std::vector<int>;
using Texts = std::vector<std::wstring>;

const std::string unit = "LibUnstructGrid/VTOArrayString";

std::vector<FailedAssert> failed(std::vector<std::string> expressions) {
    return failedIn(unit, std::move(expressions));
}

VTStringArray made(const Texts& texts) {
    VTStringArray array;
    for (const std::wstring& text : texts) {
        array.AddGrow(VTString(text.c_str()));
    }
    return array;
}

std::wstring textOf(const VTString& sText) {
    return sText.IsNull() ? L"(null)" : ~sText;
}

Texts textsOf(const VTStringArray& array) {
    Texts texts;
    for (int i = 0; i < array.GetNumItems(); ++i) {
        texts.push_back(textOf(array[i]));
    }
    return texts;
}

VTString repeated(wchar_t cChr, int iCount) {
    return VTString(std::wstring(static_cast<std::size_t>(iCount), cChr).c_str());
}

TEST(VTStringArray, NewSlotsHoldNullStrings) {
    VTStringArray array;
    array.Alloc(2, -1, true);
    EXPECT_EQ(textsOf(array), (Texts{L"(null)", L"(null)"}));
    array.Realloc(3, -1, true);
    EXPECT_TRUE(array[2].IsNull());
}

TEST(VTStringArray, ComparesTextsAndKnowsNullFromEmpty) {
    EXPECT_TRUE(made({L"a", L"b"}) == made({L"a", L"b"}));
    EXPECT_FALSE(made({L"a", L"b"}) == made({L"a", L"B"}));
    VTStringArray null;
    null.Alloc(1, -1, true);
    EXPECT_FALSE(null == made({L""}));
}

TEST(VTStringArray, AssignmentChecksSelfBeforeOwnership) {
    Full<VTStringArray> owner({1, 2});
    Shared<VTStringArray> shared(&owner);
    const VTStringArray& same = shared;
    EXPECT_EQ(assertsUntil(2, [&] { static_cast<VTStringArray&>(shared) = same; }),
              failed({"this != &other", "!m_bSharedData"}));
}

TEST(VTStringArray, CopiesTakeCapacityUnusedSlotsAndGrowthStep) {
    Full<VTStringArray> source({1, 2, 3});
    source.SetNumItems(2);
    source.Realloc(3, 7, false);
    VTStringArray copy(source);
    EXPECT_EQ(copy.GetNumAllocated(), 3);
    EXPECT_EQ(copy.GetNumItems(), 2);
    EXPECT_EQ(copy.GetGrowBy(), 7);
    copy.SetNumItems(3);
    EXPECT_EQ(textsOf(copy), (Texts{L"1", L"2", L"3"}));
}

TEST(VTStringArray, CopyDataChecksPointerCountAndPlace) {
    VTStringArray array;
    EXPECT_EQ(assertsUntil(3, [&] { array.CopyData(nullptr, -1, -1); }),
              failed({"pData", "iNumItems >= 0", "iStartDstIndex >= 0"}));
}

TEST(VTStringArray, DeleteTellsHowManyWentAndLeavesTheTextsBehindTheEnd) {
    VTStringArray array = made({L"a", L"b", L"c", L"d"});
    EXPECT_EQ(array.Delete(1, 2), 2);
    EXPECT_EQ(textsOf(array), (Texts{L"a", L"d"}));
    array.SetNumItems(4);
    EXPECT_EQ(textsOf(array), (Texts{L"a", L"d", L"c", L"d"}));
    EXPECT_EQ(array.Delete(1, -1), 3);
    EXPECT_EQ(textsOf(array), (Texts{L"a"}));
    EXPECT_EQ(array.Delete(1, -1), 0);
}

TEST(VTStringArray, RemoveDuplicatesSorts) {
    VTStringArray array = made({L"b", L"a", L"b", L"B"});
    array.Realloc(9, 7, false);
    array.RemoveDuplicates(false);
    EXPECT_EQ(textsOf(array), (Texts{L"B", L"a", L"b"})); // With case: B comes before a, and is not b.
    EXPECT_EQ(array.GetNumAllocated(), 9);                // The same room.
    VTStringArray unique = made({L"b", L"a"});
    unique.RemoveDuplicates(false);
    EXPECT_EQ(textsOf(unique), (Texts{L"a", L"b"}));
}

TEST(VTStringArray, RemoveDuplicatesOfWhatIsCalledSortedTakesAdjacentRepeatsOnly) {
    VTStringArray array = made({L"b", L"b", L"a", L"b"});
    array.RemoveDuplicates(true);
    EXPECT_EQ(textsOf(array), (Texts{L"b", L"a", L"b"}));
    AssertRecorder recorder;
    VTStringArray().RemoveDuplicates(false);
    VTStringArray single = made({L"a"});
    single.RemoveDuplicates(false);
    EXPECT_EQ(textsOf(single), (Texts{L"a"}));
    EXPECT_TRUE(recorder.take().empty());
}

TEST(VTStringArray, JoinsWithSeparators) {
    const struct {
        Texts texts;
        std::wstring expected;
    } rows[] = {{{}, L""},
                {{L"one"}, L"one"},
                {{L"one", L"two"}, L"one, two"},
                {{L"one", L"", L"three"}, L"one, , three"},
                {{L"", L""}, L", "},
                {{L""}, L""}};
    for (const auto& row : rows) {
        EXPECT_EQ(textOf(made(row.texts).GetAsString(L", ")), row.expected);
        EXPECT_EQ(textOf(made(row.texts).Concatenate(L", ")), row.expected);
    }
    VTStringArray nulls;
    nulls.Alloc(2, -1, true);
    EXPECT_EQ(textOf(nulls.GetAsString(L"-")), L"-");
    EXPECT_EQ(textOf(nulls.Concatenate(L"-")), L"-");
    EXPECT_EQ(textOf(made({L"a", L"b"}).GetAsString(VTString())), L"ab");
}

TEST(VTStringArray, GetAsStringReservesExactlyWhatItNeeds) {
    const VTStringArray array = made({L"one", L"two", L"three"});
    EXPECT_EQ(array.GetAsString(L", ").GetBufferLength(), 3 + 2 + 3 + 2 + 5 + 1);
    EXPECT_EQ(array.GetAsString(L", ").Length(), 15);
}

// With truncation a text that is too long keeps one character more than its width.
TEST(VTStringArray, ConcatenateFixedWidthMakesColumns) {
    const VTStringArray array = made({L"ab", L"abcdefgh", L"c", L"d"});
    const Full<VTIntArray> widths({4, 5, 0});
    EXPECT_EQ(textOf(array.ConcatenateFixedWidth(widths, L"|", L'.', true, false)), L"ab..|abcdefgh|c|d");
    EXPECT_EQ(textOf(array.ConcatenateFixedWidth(widths, L"|", L'.', false, true)), L"..ab|abcdef|c|d");
    EXPECT_EQ(textOf(array.ConcatenateFixedWidth(Full<VTIntArray>({-1, 9}), L"", L'.', true, true)), L"ababcdefgh.cd");
    EXPECT_EQ(textOf(VTStringArray().ConcatenateFixedWidth(widths, L"|", L'.', true, true)), L"");
    EXPECT_EQ(textOf(made({L"a"}).ConcatenateFixedWidth(VTIntArray(), L"|", L'.', true, true)), L"a");
}

TEST(VTStringArray, SetFromStringSplits) {
    const struct {
        const wchar_t* szText;
        bool bTrim;
        bool bAddBlank;
        Texts expected;
    } rows[] = {
        {L"a,,b", false, false, {L"a", L"b"}},
        {L"a,,b", false, true, {L"a", L"", L"b"}},
        {L"a, ,b", false, true, {L"a", L" ", L"b"}},
        {L"a, ,b", true, true, {L"a", L"", L"b"}},
        {L" a , b ", false, false, {L" a ", L" b "}},
        {L" a , b ", true, false, {L"a", L"b"}},
        {L",a,", false, true, {L"", L"a"}}, // Nothing is read behind the last separator.
        {L"a, ", false, true, {L"a"}},      // A last blank piece ends the walk.
        {L"a,\n,", false, true, {L"a", L"\n"}},
        {L"", false, true, {}},
        {L" ", false, true, {}},
        {L"abc", false, false, {L"abc"}},
        {L"a,\f", true, false, {L"a"}}, // White space for Trim, though not blank: gone before it is looked at.
    };
    for (const auto& row : rows) {
        VTStringArray array;
        array.SetFromString(row.szText, L",", row.bTrim, row.bAddBlank);
        EXPECT_EQ(textsOf(array), row.expected) << VTString(row.szText).ShortChar();
    }
}

TEST(VTStringArray, SetFromStringAddsToWhatIsThere) {
    VTStringArray array = made({L"x"});
    array.SetFromString(L"a<>b", L"<>", false, false);
    EXPECT_EQ(textsOf(array), (Texts{L"x", L"a", L"b"}));
    array.SetFromQuotedString(L"c,d", L',', false, false);
    EXPECT_EQ(textsOf(array), (Texts{L"x", L"a", L"b", L"c", L"d"}));
}

TEST(VTStringArray, SetFromQuotedStringKeepsSeparatorsInQuotes) {
    const struct {
        const wchar_t* szText;
        bool bTrim;
        bool bAddBlank;
        Texts expected;
    } rows[] = {
        {L"a,\"b,c\",d", false, false, {L"a", L"b,c", L"d"}},
        {L"\" b \",c", false, false, {L" b ", L"c"}},
        {L"\" b \",c", true, false, {L"b", L"c"}}, // The quotes come off before the trimming.
        {L"a,\"b", false, false, {L"a", L"b"}},    // A closing quote is not asked for.
        {L"a,\"\",b", false, false, {L"a", L"b"}},
        {L"a,\"\",b", false, true, {L"a", L"", L"b"}},
        {L"a,,b", false, true, {L"a", L"", L"b"}},
        {L"a,\"\"", false, true, {L"a", L""}}, // Not blank until its quotes are off.
        {L"a, ", false, true, {L"a"}},
    };
    for (const auto& row : rows) {
        VTStringArray array;
        array.SetFromQuotedString(row.szText, L',', row.bTrim, row.bAddBlank);
        EXPECT_EQ(textsOf(array), row.expected) << VTString(row.szText).ShortChar();
    }
}

TEST(VTStringArray, FindComparesWholeTexts) {
    const VTStringArray array = made({L"One", L"two", L"one", L"ones"});
    EXPECT_EQ(array.Find(L"one", 0, true), 2);
    EXPECT_EQ(array.Find(L"one", 0, false), 0);
    EXPECT_EQ(array.Find(L"one", 1, false), 2);
    EXPECT_EQ(array.Find(L"one", 3, false), -1);
    EXPECT_EQ(array.Find(L"on", 0, false), -1);
    EXPECT_EQ(VTStringArray().Find(L"", 0, true), -1);
}

TEST(VTStringArray, FindSubstringTellsItemAndPlace) {
    const VTStringArray array = made({L"alpha", L"Beta", L"gamma beta"});
    int iPlace = -7;
    EXPECT_EQ(array.FindSubstring(L"beta", 0, true, &iPlace), 2);
    EXPECT_EQ(iPlace, 6);
    EXPECT_EQ(array.FindSubstring(L"beta", 0, false, &iPlace), 1);
    EXPECT_EQ(iPlace, 0);
    EXPECT_EQ(array.FindSubstring(L"beta", 2, false, nullptr), 2);
    EXPECT_EQ(array.FindSubstring(L"delta", 0, false, &iPlace), -1);
    EXPECT_EQ(iPlace, -1);
    iPlace = -7;
    EXPECT_EQ(VTStringArray().FindSubstring(L"a", 0, true, &iPlace), -1);
    EXPECT_EQ(iPlace, -1);
}

TEST(VTStringArray, FindSubstringReportsNullStringsAndGoesOn) {
    AssertRecorder recorder;
    VTStringArray array;
    array.Alloc(3, -1, true);
    array.Set(1, L"");
    array.Set(2, L"abc");
    EXPECT_EQ(array.FindSubstring(L"b", 0, true, nullptr), 2);
    EXPECT_EQ(recorder.take(), failed({"m_psData[i] != NULL"}));
}

TEST(VTStringArray, FindSubstringBestMatchTakesTheEarliestPlace) {
    const struct {
        Texts texts;
        int iBest;
        int iCount;
    } rows[] = {
        {{L"xxab", L"", L"b", L"ABx"}, 3, 1},
        {{L"abx", L"b", L"x", L"Ab"}, 0, 2},
        {{L"xab", L"xxab", L"yab", L"zab"}, 0, 3},
        {{L"xxab", L"xab", L"xxab", L"yab", L"ab"}, 4, 1}, // Each better place starts the count anew.
        {{L"b", L"a"}, -1, 0},
        {{}, -1, 0},
    };
    for (const auto& row : rows) {
        int iCount = -7;
        EXPECT_EQ(made(row.texts).FindSubstringBestMatch(L"ab", &iCount), row.iBest);
        EXPECT_EQ(iCount, row.iCount);
        EXPECT_EQ(made(row.texts).FindSubstringBestMatch(L"ab", nullptr), row.iBest);
    }
}

// The middle of 0 to 5 is 2, of 3 to 5 is 4.
TEST(VTStringArray, BinSearchHalves) {
    const VTStringArray array = made({L"a", L"ba", L"bb", L"bb", L"bc", L"c"});
    const struct {
        const wchar_t* szValue;
        int iCharCount;
        int iFound;
    } rows[] = {{L"a", -1, 0},  {L"bb", -1, 2}, {L"c", -1, 5},   {L"b", -1, -1},
                {L"d", -1, -1}, {L"b", 1, 2},   {L"bcxx", 2, 4}, {L"", -1, -1}};
    for (const auto& row : rows) {
        EXPECT_EQ(array.BinSearch(row.szValue, row.iCharCount, 0, -1), row.iFound) << VTString(row.szValue).ShortChar();
    }
    EXPECT_EQ(array.BinSearch(L"a", -1, 1, 5), -1);
    EXPECT_EQ(array.BinSearch(L"c", -1, 0, 4), -1);
    EXPECT_EQ(array.BinSearch(L"bb", -1, 3, 3), 3);
}

TEST(VTStringArray, BinSearchChecksItsArguments) {
    AssertRecorder recorder;
    EXPECT_EQ(VTStringArray().BinSearch(L"a", -9, 9, -9), -1);
    EXPECT_TRUE(recorder.take().empty());
    const VTStringArray array = made({L"a", L"b"});
    const std::string start = "iStartIndex >= 0 && iStartIndex < m_iNumItems";
    const std::string stop = "iStopIndex >= 0 && iStopIndex < m_iNumItems";
    const std::string order = "iStopIndex >= iStartIndex";
    EXPECT_EQ(assertsUntil(4, [&] { array.BinSearch(L"a", -2, 2, -2); }),
              failed({"iCharCount >= -1", start, stop, order}));
    EXPECT_EQ(assertsUntil(1, [&] { array.BinSearch(L"a", -1, -1, 1); }), failed({start}));
    EXPECT_EQ(assertsUntil(1, [&] { array.BinSearch(L"a", -1, 0, 2); }), failed({stop}));
    EXPECT_EQ(assertsUntil(1, [&] { array.BinSearch(L"a", -1, 1, 0); }), failed({order}));
    VTStringArray noBuffer;
    assertsUntil(0, [&] { noBuffer.SetNumItems(1); });
    EXPECT_EQ(assertsUntil(1, [&] { noBuffer.BinSearch(L"a", -1, 0, -1); }), failed({"m_psData"}));
}

TEST(VTStringArray, BinSearchAllMatchesWidensTheHit) {
    const VTStringArray array = made({L"a", L"ba", L"bb", L"bb", L"bc", L"c"});
    const struct {
        const wchar_t* szValue;
        int iCharCount;
        int iStart;
        int iStop;
        int iFirst;
        int iCount;
    } rows[] = {{L"bb", -1, 0, -1, 2, 2}, {L"b", 1, 0, -1, 1, 4},   {L"b", 1, 2, 3, 2, 2}, {L"a", -1, 0, -1, 0, 1},
                {L"c", -1, 0, -1, 5, 1},  {L"d", -1, 0, -1, -1, 0}, {L"x", 0, 0, -1, 0, 6}};
    for (const auto& row : rows) {
        int iCount = -7;
        EXPECT_EQ(array.BinSearchAllMatches(row.szValue, row.iCharCount, row.iStart, row.iStop, &iCount), row.iFirst);
        EXPECT_EQ(iCount, row.iCount) << VTString(row.szValue).ShortChar();
        EXPECT_EQ(array.BinSearchAllMatches(row.szValue, row.iCharCount, row.iStart, row.iStop, nullptr), row.iFirst);
    }
    int iCount = -7;
    EXPECT_EQ(VTStringArray().BinSearchAllMatches(L"a", -1, 9, -9, &iCount), -1);
    EXPECT_EQ(iCount, 0);
    EXPECT_EQ(assertsUntil(1, [&] { array.BinSearchAllMatches(L"a", -1, 6, 6, nullptr); }),
              failed({"iStartIndex >= 0 && iStartIndex < m_iNumItems"}));
}

TEST(VTStringArray, SortsByCharacterCode) {
    VTStringArray array = made({L"b", L"a", L"", L"B", L"ab"});
    array.Sort(true);
    EXPECT_EQ(textsOf(array), (Texts{L"", L"B", L"a", L"ab", L"b"}));
    array.Sort(false);
    EXPECT_EQ(textsOf(array), (Texts{L"", L"B", L"a", L"ab", L"b"}));
    AssertRecorder recorder;
    VTStringArray().Sort(true);
    EXPECT_TRUE(recorder.take().empty());
}

TEST(VTStringArray, SortMatchesTheStandardLibrary) {
    Texts texts;
    for (int i = 0; i < 300; ++i) {
        texts.push_back(std::to_wstring(i * 7919 % 1009));
    }
    VTStringArray array = made(texts);
    array.Sort(false);
    std::sort(texts.begin(), texts.end());
    EXPECT_EQ(textsOf(array), texts);
}

TEST(VTStringArray, IsSortedAsksForABuffer) {
    AssertRecorder recorder;
    EXPECT_TRUE(VTStringArray().IsSorted());
    EXPECT_EQ(recorder.take(), failed({"m_psData"}));
    EXPECT_TRUE(made({L"a", L"a", L"b"}).IsSorted());
    EXPECT_FALSE(made({L"a", L"b", L"a"}).IsSorted());
    EXPECT_TRUE(recorder.take().empty());
}

// 36 equal texts end up in reverse when they are sorted; with the check they are left alone.
TEST(VTStringArray, GetSortedIndex) {
    const VTStringArray array = made({L"c", L"a", L"b"});
    const std::unique_ptr<int[]> piIndices(array.GetSortedIndex(true));
    EXPECT_EQ(Numbers(piIndices.get(), piIndices.get() + 3), (Numbers{1, 2, 0}));
    const VTStringArray equal = made(Texts(36, L"x"));
    Numbers identity;
    for (int i = 0; i < 36; ++i) {
        identity.push_back(i);
    }
    const std::unique_ptr<int[]> piLooked(equal.GetSortedIndex(true));
    EXPECT_EQ(Numbers(piLooked.get(), piLooked.get() + 36), identity);
    const std::unique_ptr<int[]> piSorted(equal.GetSortedIndex(false));
    EXPECT_EQ(Numbers(piSorted.get(), piSorted.get() + 36), Numbers(identity.rbegin(), identity.rend()));
}

TEST(VTStringArray, GetSortedIndexHasAPlaceForEachSlot) {
    AssertRecorder recorder;
    Roomy<VTStringArray> array({3, 1}, 1000);
    const std::unique_ptr<int[]> piIndices(array.GetSortedIndex(false));
    EXPECT_GE(malloc_usable_size(piIndices.get()), 1000 * sizeof(int));
    EXPECT_TRUE(recorder.take().empty());
    EXPECT_EQ(VTStringArray().GetSortedIndex(false), nullptr);
    EXPECT_EQ(recorder.take(), failed({"m_psData"}));
}

TEST(VTStringArray, TakesLongTexts) {
    VTStringArray array;
    array.AddGrow(repeated(L'a', 100000));
    array.AddGrow(repeated(L'b', 100000));
    EXPECT_EQ(array.GetAsString(L"").Length(), 200000);
}

} // namespace
