#include "OrvCore/Wildcard_p.h"

#include <gtest/gtest.h>

#include <string>

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

// These end at all only because no star but the last is tried again.
TEST(Wildcard, ManyStarsOverALongTextEnd) {
    std::wstring text(100000, L'a');
    std::wstring pattern;
    for (int i = 0; i < 1000; ++i) {
        pattern += L"*a";
    }
    EXPECT_TRUE(Wildcard(pattern).matches(text));
    EXPECT_FALSE(Wildcard(pattern + L"*b").matches(text));
    EXPECT_FALSE(Wildcard(pattern + L"[!a]").matches(text));
}

// Quadratic time would take minutes here.
TEST(Wildcard, ManyOpenBracketsEnd) {
    std::wstring brackets(1000000, L'[');
    EXPECT_TRUE(Wildcard(brackets).matches(brackets));
    EXPECT_FALSE(Wildcard(L"]" + brackets).matches(brackets));
}

} // namespace
