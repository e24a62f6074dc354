#include "OrvCore/Wildcard_p.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <vector>

using orv::internal::Wildcard;

namespace {

struct WildcardCase {
    std::wstring text;
    std::wstring pattern;
    bool matches;
};

std::ostream& operator<<(std::ostream& out, const WildcardCase& row) {
    return out << std::string(row.text.begin(), row.text.end()) << " ~ "
               << std::string(row.pattern.begin(), row.pattern.end());
}

class WildcardTable : public testing::TestWithParam<WildcardCase> {};

TEST_P(WildcardTable, Matches) {
    EXPECT_EQ(Wildcard(GetParam().pattern).matches(GetParam().text), GetParam().matches);
}

using Row = WildcardCase;

INSTANTIATE_TEST_SUITE_P(PlainText, WildcardTable,
                         testing::Values(Row{L"", L"", true}, Row{L"a", L"", false}, Row{L"", L"a", false},
                                         Row{L"Stress", L"Stress", true}, Row{L"Stress", L"stress", false},
                                         Row{L"Stress", L"Stres", false}, Row{L"Stress", L"tress", false},
                                         Row{L"a.c", L"a.c", true}, Row{L"abc", L"a.c", false},
                                         Row{L"a\\b", L"a\\b", true}, Row{L"\u20AC", L"\u20AC", true}));

INSTANTIATE_TEST_SUITE_P(Stars, WildcardTable,
                         testing::Values(Row{L"", L"*", true}, Row{L"anything", L"*", true}, Row{L"", L"***", true},
                                         Row{L"Stress XX", L"Stress*", true}, Row{L"Stress", L"Stress*", true},
                                         Row{L"Stress XX", L"*XX", true}, Row{L"Stress XX", L"*XY", false},
                                         Row{L"abcabd", L"*ab*d", true}, Row{L"aab", L"*ab", true},
                                         Row{L"abab", L"*ab", true}, Row{L"aXbXc", L"a*X*c", true},
                                         Row{L"ac", L"a*b*c", false}, Row{L"a*c", L"a*c", true},
                                         Row{L"abc", L"*b", false}, Row{L"abc", L"**c", true}));

INSTANTIATE_TEST_SUITE_P(QuestionMarks, WildcardTable,
                         testing::Values(Row{L"a", L"?", true}, Row{L"", L"?", false}, Row{L"ab", L"?", false},
                                         Row{L"abc", L"a?c", true}, Row{L"ac", L"a?c", false},
                                         Row{L"abc", L"*?c", true}, Row{L"c", L"*?c", false},
                                         Row{L"\U0001F600", L"?", true}));

INSTANTIATE_TEST_SUITE_P(
    Lists, WildcardTable,
    testing::Values(Row{L"b", L"[abc]", true}, Row{L"d", L"[abc]", false}, Row{L"", L"[abc]", false},
                    Row{L"m", L"[a-z]", true}, Row{L"a", L"[a-z]", true}, Row{L"z", L"[a-z]", true},
                    Row{L"M", L"[a-z]", false}, Row{L"5", L"[a-z0-9]", true}, Row{L"-", L"[a-z0-9]", false},
                    Row{L"d", L"[!abc]", true}, Row{L"a", L"[!abc]", false}, Row{L"d", L"[^a-c]", true},
                    Row{L"b", L"[^a-c]", false}, Row{L"!", L"[a!]", true}, Row{L"^", L"[a^]", true},
                    Row{L"m", L"[z-a]", false}, Row{L"z", L"[z-a]", false}, Row{L"a1b", L"a[0-9]b", true},
                    Row{L"Part 12", L"Part [0-9][0-9]", true}, Row{L"Part 1", L"Part [0-9][0-9]", false},
                    Row{L"xb", L"*[ab]", true}, Row{L"xc", L"*[ab]", false}));

INSTANTIATE_TEST_SUITE_P(SpecialMembers, WildcardTable,
                         testing::Values(Row{L"]", L"[]]", true}, Row{L"a", L"[]a]", true}, Row{L"]", L"[!]]", false},
                                         Row{L"a", L"[!]]", true}, Row{L"-", L"[-a]", true}, Row{L"-", L"[a-]", true},
                                         Row{L"b", L"[a-]", false}, Row{L"*", L"[*]", true}, Row{L"a", L"[*]", false},
                                         Row{L"?", L"[?]", true}, Row{L"[", L"[[]", true}, Row{L"x]", L"x]", true}));

INSTANTIATE_TEST_SUITE_P(UnclosedLists, WildcardTable,
                         testing::Values(Row{L"[", L"[", true}, Row{L"[ab", L"[ab", true}, Row{L"a", L"[ab", false},
                                         Row{L"[]", L"[]", true}, Row{L"]", L"[]", false}, Row{L"[!]", L"[!]", true},
                                         Row{L"[!", L"[!", true}, Row{L"a[", L"?[", true}, Row{L"[xyz", L"[*", true},
                                         Row{L"a[b", L"[a][b", true}));

TEST(Wildcard, MatchesOftenWithOnePattern) {
    Wildcard pattern(L"*.vtu");
    EXPECT_TRUE(pattern.matches(L"a.vtu"));
    EXPECT_FALSE(pattern.matches(L"a.vtk"));
    EXPECT_TRUE(pattern.matches(L".vtu"));
}

std::string ascii(std::wstring_view text) {
    return std::string(text.begin(), text.end());
}

/// Reads the dialect character by character and tries every length of every star.
bool naiveMatches(std::wstring_view text, std::wstring_view pattern) {
    if (pattern.empty()) {
        return text.empty();
    }
    if (pattern[0] == L'*') {
        return naiveMatches(text, pattern.substr(1)) || (!text.empty() && naiveMatches(text.substr(1), pattern));
    }
    if (text.empty()) {
        return false;
    }
    size_t first = 1;
    bool isNegated = pattern.size() > 1 && (pattern[1] == L'!' || pattern[1] == L'^');
    first += isNegated ? 1 : 0;
    size_t closing = pattern[0] == L'[' ? pattern.find(L']', first + 1) : pattern.npos;
    if (closing == pattern.npos) {
        return (pattern[0] == L'?' || pattern[0] == text[0]) && naiveMatches(text.substr(1), pattern.substr(1));
    }
    bool isMember = false;
    for (size_t i = first; i < closing; ++i) {
        if (i + 2 < closing && pattern[i + 1] == L'-') {
            isMember = isMember || (pattern[i] <= text[0] && text[0] <= pattern[i + 2]);
            i += 2;
        } else {
            isMember = isMember || pattern[i] == text[0];
        }
    }
    return isMember != isNegated && naiveMatches(text.substr(1), pattern.substr(closing + 1));
}

/// Texts put together at random. The engine's numbers are the same everywhere, unlike the standard distributions'.
class RandomText {
public:
    explicit RandomText(std::uint32_t seed) : m_engine(seed) {}

    std::wstring of(const std::vector<std::wstring>& choices, size_t maximumCount) {
        std::wstring text;
        for (size_t count = m_engine() % (maximumCount + 1); count > 0; --count) {
            text += choices[m_engine() % choices.size()];
        }
        return text;
    }

private:
    std::mt19937 m_engine;
};

/// Compares with the naive reference, and gives how many of the pairs matched.
int compareRandomly(int rounds, const std::vector<std::wstring>& letters, size_t textLength,
                    const std::vector<std::wstring>& parts, size_t partCount) {
    RandomText random(20240229);
    int matched = 0;
    for (int i = 0; i < rounds; ++i) {
        std::wstring text = random.of(letters, textLength);
        std::wstring pattern = random.of(parts, partCount);
        bool expected = naiveMatches(text, pattern);
        EXPECT_EQ(Wildcard(pattern).matches(text), expected) << ascii(text) << " ~ " << ascii(pattern);
        matched += expected ? 1 : 0;
    }
    return matched;
}

TEST(WildcardRandom, PlainPieces) {
    int matched = compareRandomly(20000, {L"a", L"b"}, 12, {L"a", L"b", L"ab", L"aa", L"*", L"*"}, 6);
    EXPECT_GT(matched, 1000);
    EXPECT_LT(matched, 19000);
}

TEST(WildcardRandom, PiecesWithQuestionMarksAndLists) {
    int matched = compareRandomly(
        20000, {L"a", L"b", L"c", L"-"}, 12,
        {L"a", L"b", L"?", L"[ab]", L"[!a]", L"[^b-c]", L"[b-]", L"[a-cb-b]", L"[c-a]", L"[!c-a]", L"*", L"*", L"*"},
        8);
    EXPECT_GT(matched, 1000);
    EXPECT_LT(matched, 19000);
}

TEST(WildcardRandom, AnyCharactersAsAPattern) {
    std::vector<std::wstring> all{L"a", L"b", L"*", L"?", L"[", L"]", L"!", L"^", L"-"};
    int matched = compareRandomly(50000, all, 5, all, 7);
    EXPECT_GT(matched, 1000);
    EXPECT_LT(matched, 49000);
}

// Pieces are taken 64 parts at a time; most of these have several such blocks.
TEST(WildcardRandom, LongPieces) {
    RandomText random(20240301);
    for (int i = 0; i < 1000; ++i) {
        std::wstring piece = random.of({L"a", L"aab", L"ab"}, 120);
        std::wstring text = random.of({L"a", L"b"}, 5) + piece + random.of({L"a", L"b"}, 5);
        // Every third character becomes a part that is not plain and still matches.
        std::wstring pattern = L"*";
        for (size_t k = 0; k < piece.size(); ++k) {
            pattern += k % 3 != 0 ? piece.substr(k, 1) : k % 2 == 0 ? L"?" : L"[" + piece.substr(k, 1) + L"x]";
        }
        ASSERT_TRUE(Wildcard(pattern + L"*").matches(text)) << ascii(text) << " ~ " << ascii(pattern);
        // One character that is not in the text, at any place.
        std::wstring spoilt = piece + L"[xy]" + random.of({L"?"}, 70);
        ASSERT_FALSE(Wildcard(L"*" + spoilt + L"*").matches(text + text)) << ascii(text) << " ~ " << ascii(spoilt);
    }
}

TEST(Wildcard, FindsAPieceOfEveryLengthAtEveryPlace) {
    for (size_t length : {1, 63, 64, 65, 127, 128, 129, 200}) {
        std::wstring piece(length - 1, L'?');
        for (size_t place : {0, 1, 63, 64, 65}) {
            std::wstring text = std::wstring(place + length - 1, L'a') + L"b";
            EXPECT_TRUE(Wildcard(L"*" + piece + L"[b]*").matches(text)) << length << ' ' << place;
            EXPECT_TRUE(Wildcard(L"*" + piece + L"[bc]*").matches(text + L"a")) << length << ' ' << place;
            EXPECT_FALSE(Wildcard(L"*?" + piece + L"[bc]*").matches(text.substr(place))) << length << ' ' << place;
            EXPECT_FALSE(Wildcard(L"*" + piece + L"[bc]?*").matches(text)) << length << ' ' << place;
        }
    }
}

TEST(Wildcard, ListsTakeCharactersOutsideUnicode) {
    std::wstring lowest(1, std::numeric_limits<wchar_t>::min());
    std::wstring highest(1, std::numeric_limits<wchar_t>::max());
    for (const std::wstring& text : {lowest, highest}) {
        EXPECT_TRUE(Wildcard(L"*?*").matches(text));
        EXPECT_TRUE(Wildcard(L"*[" + lowest + L"-" + highest + L"]*").matches(text));
        EXPECT_TRUE(Wildcard(L"*[x" + text + L"]*").matches(text));
        EXPECT_FALSE(Wildcard(L"*[!x" + text + L"]*").matches(text));
        EXPECT_TRUE(Wildcard(L"*[!x]*").matches(text));
    }
}

// Trying every place for a piece anew, or every length of every star, takes billions of steps in all of these.

TEST(WildcardHostile, ManyPieces) {
    std::wstring text(100000, L'a');
    for (const wchar_t* part : {L"*a", L"*[ab]", L"*a?"}) {
        std::wstring pattern;
        for (int i = 0; i < 20000; ++i) {
            pattern += part;
        }
        EXPECT_TRUE(Wildcard(pattern).matches(text));
        EXPECT_FALSE(Wildcard(pattern + L"*b").matches(text));
        EXPECT_FALSE(Wildcard(pattern + L"*b*").matches(text));
        EXPECT_FALSE(Wildcard(pattern + L"*[!a]*").matches(text));
    }
}

TEST(WildcardHostile, LongPlainPieces) {
    std::wstring text(1000000, L'a');
    std::wstring half(500000, L'a');
    EXPECT_FALSE(Wildcard(L"*" + half + L"b").matches(text));
    EXPECT_FALSE(Wildcard(L"*" + half + L"b*").matches(text));
    EXPECT_FALSE(Wildcard(L"*b" + half + L"*").matches(text));
    EXPECT_TRUE(Wildcard(L"*" + half + L"b*").matches(text + L"ba"));
    EXPECT_TRUE(Wildcard(L"*" + half + L"*" + half + L"*").matches(text));
    EXPECT_FALSE(Wildcard(L"*" + half + L"*a" + half + L"*").matches(text));
}

TEST(WildcardHostile, LongPiecesWithQuestionMarksAndLists) {
    std::wstring text(100000, L'a');
    std::wstring piece;
    for (int i = 0; i < 10000; ++i) {
        piece += L"a?[a-c][!x]a";
    }
    EXPECT_FALSE(Wildcard(L"*" + piece + L"b").matches(text));
    EXPECT_FALSE(Wildcard(L"*" + piece + L"b*").matches(text));
    EXPECT_TRUE(Wildcard(L"*" + piece + L"b*").matches(text + L"ba"));
}

TEST(WildcardHostile, LongLists) {
    std::wstring text(200000, L'a');
    std::wstring list;
    for (int i = 0; i < 200000; ++i) {
        list += wchar_t(0x10000 + i * 2);
    }
    EXPECT_FALSE(Wildcard(L"*[" + list + L"]*").matches(text));
    EXPECT_TRUE(Wildcard(L"*[" + list + L"]*").matches(text + list.back()));
    EXPECT_FALSE(Wildcard(L"*[!a" + list + L"]*").matches(text));
}

TEST(WildcardHostile, ManyOpenBrackets) {
    std::wstring brackets(1000000, L'[');
    EXPECT_TRUE(Wildcard(brackets).matches(brackets));
    EXPECT_FALSE(Wildcard(L"]" + brackets).matches(brackets));
}

} // namespace
