#include "OrvCore/Str.h"

#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <sstream>

using orv::Str;

namespace {

std::vector<std::string> utf8(const std::vector<Str>& texts) {
    std::vector<std::string> list;
    for (const Str& text : texts) {
        list.push_back(text.toStdString());
    }
    return list;
}

TEST(Str, StartsEmpty) {
    Str empty;
    EXPECT_TRUE(empty.isEmpty());
    EXPECT_EQ(empty.size(), 0u);
    EXPECT_EQ(std::wstring(empty.c_str()), L"");
    EXPECT_EQ(empty.toStdString(), "");
}

TEST(Str, NullGivesTheEmptyText) {
    EXPECT_TRUE(Str(static_cast<const char*>(nullptr)).isEmpty());
    EXPECT_TRUE(Str(static_cast<const wchar_t*>(nullptr)).isEmpty());
}

TEST(Str, NarrowTextIsUtf8) {
    EXPECT_EQ(Str("\xE2\x82\xACz").toStdWString(), L"\u20ACz");
    EXPECT_EQ(Str(std::string("\xF0\x9F\x98\x80")).toStdWString(), L"\U0001F600");
    EXPECT_EQ(Str("\xE2\x82\xACz").size(), 2u);
    EXPECT_EQ(Str(L"\u20ACz").toStdString(), "\xE2\x82\xACz");
    EXPECT_EQ(Str(std::string("a\0b", 3)).size(), 3u);
    EXPECT_EQ(Str(std::wstring(L"a\0b", 3)).toStdString(), std::string("a\0b", 3));
}

TEST(Str, InvalidTextBecomesTheReplacementCharacter) {
    EXPECT_EQ(Str("a\xFFz").toStdWString(), L"a\uFFFDz");
    EXPECT_EQ(Str(std::string("\xE2\x82")).toStdWString(), L"\uFFFD");
    EXPECT_EQ(Str(std::wstring{L'a', wchar_t(0xD800), wchar_t(0x110000)}).toStdString(), "a\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(Str, WideTextIsTakenAsItStands) {
    EXPECT_EQ(std::wstring(Str(L"a\u00E4").c_str()), L"a\u00E4");
    EXPECT_EQ(Str(std::wstring{wchar_t(0xD800)}).toStdWString(), std::wstring{wchar_t(0xD800)});
}

TEST(Str, CopiesAreIndependent) {
    Str text = "abc";
    Str copy = text;
    copy += "d";
    EXPECT_EQ(text.toStdString(), "abc");
    EXPECT_EQ(copy.toStdString(), "abcd");
    text = copy;
    EXPECT_EQ(text.toStdString(), "abcd");
    text = "literal";
    EXPECT_EQ(text.toStdString(), "literal");
}

TEST(Str, Joins) {
    Str text = "a";
    text += "b";
    text += text;
    EXPECT_EQ(text.toStdString(), "abab");
    EXPECT_EQ((Str("a") + Str("b")).toStdString(), "ab");
    EXPECT_EQ(("x" + Str("y")).toStdString(), "xy");
    EXPECT_EQ((Str("x") + "y").toStdString(), "xy");
    EXPECT_EQ((Str("x") + L"\u20AC").toStdString(), "x\xE2\x82\xAC");
}

TEST(Str, ComparesExactly) {
    EXPECT_TRUE(Str("abc") == Str(L"abc"));
    EXPECT_FALSE(Str("abc") == Str("Abc"));
    EXPECT_FALSE(Str("abc") == Str("abcd"));
    EXPECT_TRUE(Str("abc") == "abc");
    EXPECT_TRUE("abc" == Str("abc"));
    EXPECT_TRUE(Str("abc") != "abd");
    EXPECT_FALSE(Str("abc") != "abc");
}

TEST(Str, OrdersByCodePoints) {
    EXPECT_TRUE(Str("a") < Str("b"));
    EXPECT_TRUE(Str("Z") < Str("a"));
    EXPECT_TRUE(Str("a") < Str("aa"));
    EXPECT_TRUE(Str() < Str("a"));
    EXPECT_TRUE(Str("z") < Str(L"\u00E4"));
    EXPECT_FALSE(Str("a") < Str("a"));
    EXPECT_FALSE(Str("b") < Str("a"));
    std::map<Str, int> byName{{"b", 1}, {"a", 2}};
    EXPECT_EQ(byName.begin()->second, 2);
}

TEST(Str, Finds) {
    Str text = "abcabc";
    EXPECT_EQ(text.find("bc", 0), 1u);
    EXPECT_EQ(text.find("bc"), 1u);
    EXPECT_EQ(text.find("bc", 1), 1u);
    EXPECT_EQ(text.find("bc", 2), 4u);
    EXPECT_EQ(text.find("bc", 5), Str::npos);
    EXPECT_EQ(text.find("BC"), Str::npos);
    EXPECT_EQ(text.find("a", 100), Str::npos);
    EXPECT_EQ(text.find("a", Str::npos), Str::npos);
    EXPECT_EQ(text.find("", 6), 6u);
    EXPECT_EQ(text.find("", 7), Str::npos);
    EXPECT_EQ(Str().find("a"), Str::npos);
}

TEST(Str, CutsPieces) {
    Str text = "abcdef";
    EXPECT_EQ(text.subStr(2, 3).toStdString(), "cde");
    EXPECT_EQ(text.subStr(2, Str::npos).toStdString(), "cdef");
    EXPECT_EQ(text.subStr(2).toStdString(), "cdef");
    EXPECT_EQ(text.subStr(4, 100).toStdString(), "ef");
    EXPECT_EQ(text.subStr(2, 0).toStdString(), "");
    EXPECT_EQ(text.subStr(6, 1).toStdString(), "");
    EXPECT_EQ(text.subStr(7, 1).toStdString(), "");
    EXPECT_EQ(text.subStr(Str::npos, Str::npos).toStdString(), "");
}

TEST(Str, ReplacesEveryOccurrenceInPlace) {
    Str text = "a\\b\\c";
    text.replace("\\", "/");
    EXPECT_EQ(text.toStdString(), "a/b/c");
    text.replace("/", "//");
    EXPECT_EQ(text.toStdString(), "a//b//c");
    text.replace("//", "");
    EXPECT_EQ(text.toStdString(), "abc");
    text.replace("", "x");
    EXPECT_EQ(text.toStdString(), "abc");
    text.replace("missing", "x");
    EXPECT_EQ(text.toStdString(), "abc");
}

TEST(Str, Splits) {
    using List = std::vector<std::string>;
    EXPECT_EQ(utf8(Str("file.ztfx|3").split("|")), (List{"file.ztfx", "3"}));
    EXPECT_EQ(utf8(Str("a,,b").split(",")), (List{"a", "", "b"}));
    EXPECT_EQ(utf8(Str(",a,").split(",")), (List{"", "a", ""}));
    EXPECT_EQ(utf8(Str("a").split(",")), (List{"a"}));
    EXPECT_EQ(utf8(Str("").split(",")), (List{""}));
    EXPECT_EQ(utf8(Str("a::b:c").split("::")), (List{"a", "b:c"}));
    EXPECT_EQ(utf8(Str("a,b").split("")), (List{"a,b"}));
}

struct IntCase {
    const char* text;
    int expected; ///< With 42 as the default.
};

class StrToInt : public testing::TestWithParam<IntCase> {};

TEST_P(StrToInt, ReadsTheWholeText) {
    EXPECT_EQ(Str(GetParam().text).toInt(42), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Numbers, StrToInt,
                         testing::Values(IntCase{"0", 0}, IntCase{"7", 7}, IntCase{"-7", -7}, IntCase{"+7", 7},
                                         IntCase{"007", 7}, IntCase{" 7 ", 7}, IntCase{"\t\r\n-7\v\f", -7},
                                         IntCase{"2147483647", 2147483647},
                                         IntCase{"-2147483648", std::numeric_limits<int>::min()}));

INSTANTIATE_TEST_SUITE_P(NoNumbers, StrToInt,
                         testing::Values(IntCase{"", 42}, IntCase{" ", 42}, IntCase{"-", 42}, IntCase{"+", 42},
                                         IntCase{"+-7", 42}, IntCase{"- 7", 42}, IntCase{"7x", 42}, IntCase{"x7", 42},
                                         IntCase{"7 8", 42}, IntCase{"7.0", 42}, IntCase{"1e3", 42},
                                         IntCase{"0x10", 42}, IntCase{"2147483648", 42}, IntCase{"-2147483649", 42},
                                         IntCase{"99999999999999999999999999999999", 42},
                                         IntCase{"\xD9\xA1", 42})); // An Arabic digit one.

TEST(Str, ToLower) {
    EXPECT_EQ(Str("ZTFX.vtu 09_[`@").toLower().toStdString(), "ztfx.vtu 09_[`@");
    EXPECT_EQ(Str(L"\u00C0\u00D6\u00D7\u00D8\u00DE\u00DF").toLower().toStdWString(),
              L"\u00E0\u00F6\u00D7\u00F8\u00FE\u00DF");
    EXPECT_EQ(Str(L"\u0391\u03A1\u03A3\u03AB\u03C2").toLower().toStdWString(), L"\u03B1\u03C1\u03C3\u03CB\u03C2");
    EXPECT_EQ(Str(L"\u0400\u040F\u0410\u042F").toLower().toStdWString(), L"\u0450\u045F\u0430\u044F");
    EXPECT_EQ(Str(L"\U0001F600").toLower().toStdWString(), L"\U0001F600");
    Str text = "ABC";
    text.toLower();
    EXPECT_EQ(text.toStdString(), "ABC");
}

TEST(Str, MatchesWildcards) {
    EXPECT_TRUE(Str("Stress").matches("Stress"));
    EXPECT_TRUE(Str("Stress XX").matches("Stress ??"));
    EXPECT_TRUE(Str("Part 7").matches("Part [0-9]*"));
    EXPECT_FALSE(Str("Stress XX").matches("Stress"));
    EXPECT_FALSE(Str("Stress").matches("stress"));
}

TEST(Str, ArgReplacesTheLowestPlaceholder) {
    EXPECT_EQ(Str("%1 of %2").arg(Str("a"), 0, ' ').toStdString(), "a of %2");
    EXPECT_EQ(Str("%2 of %1").arg("a").arg("b").toStdString(), "b of a");
    EXPECT_EQ(Str("%1-%1").arg("a").toStdString(), "a-a");
    EXPECT_EQ(Str("%0%1").arg("a").toStdString(), "a%1");
    EXPECT_EQ(Str("%10%9").arg("a").toStdString(), "%10a");
    EXPECT_EQ(Str("none").arg("a").toStdString(), "none");
    EXPECT_EQ(Str("%1 %2").arg("%2").toStdString(), "%2 %2");
    EXPECT_EQ(Str("%1 %2").arg("%2").arg("x").toStdString(), "x x");
}

TEST(Str, ArgDoesNotChangeTheText) {
    Str text = "%1";
    text.arg("a");
    EXPECT_EQ(text.toStdString(), "%1");
}

TEST(Str, ArgFillsUp) {
    EXPECT_EQ(Str("[%1]").arg("ab", 4).toStdString(), "[  ab]");
    EXPECT_EQ(Str("[%1]").arg("ab", -4, '.').toStdString(), "[ab..]");
    EXPECT_EQ(Str("[%1]").arg("abc", 2, '.').toStdString(), "[abc]");
}

TEST(Str, ArgWritesIntegers) {
    EXPECT_EQ(Str("%1").arg(42).toStdString(), "42");
    EXPECT_EQ(Str("situation_%1").arg(1, 3, '0').toStdString(), "situation_001");
    EXPECT_EQ(Str("situation_%1").arg(1000, 3, '0').toStdString(), "situation_1000");
    EXPECT_EQ(Str("%1").arg(-7, 4, '0').toStdString(), "-007");
    EXPECT_EQ(Str("%1|").arg(7, -3).toStdString(), "7  |");
    EXPECT_EQ(Str("%1").arg(std::numeric_limits<int>::min()).toStdString(), "-2147483648");
}

TEST(Str, ArgWritesDoubles) {
    EXPECT_EQ(Str("%1").arg(2.5, 0, 'g', -1, ' ').toStdString(), "2.5");
    EXPECT_EQ(Str("%1").arg(2.5).toStdString(), "2.5");
    EXPECT_EQ(Str("%1").arg(3.0).toStdString(), "3");
    EXPECT_EQ(Str("%1").arg(1234567.0).toStdString(), "1.23457e+06");
    EXPECT_EQ(Str("%1").arg(2.5, 0, 'f').toStdString(), "2.500000");
    EXPECT_EQ(Str("%1").arg(12345.0, 0, 'E', 2).toStdString(), "1.23E+04");
    EXPECT_EQ(Str("%1").arg(2.5, 6, 'f', 1, '0').toStdString(), "0002.5");
    EXPECT_EQ(Str("%1").arg(-2.5, 6, 'f', 1, '0').toStdString(), "-002.5");
    EXPECT_EQ(Str("%1|").arg(2.5, -5).toStdString(), "2.5  |");
    EXPECT_EQ(Str("%1").arg(2.5, 0, '?').toStdString(), "2.5");
}

TEST(Str, StreamsAsUtf8) {
    std::ostringstream out;
    out << Str(L"a\u20AC");
    EXPECT_EQ(out.str(), "a\xE2\x82\xAC");
}

} // namespace
