#include "LibCore/rvfString.h"

#include <gtest/gtest.h>

#include <type_traits>

using rvf::String;

namespace {

std::string utf8(const String& text) {
    return text.toUtf8().ptr();
}

TEST(String, StartsEmpty) {
    String empty;
    EXPECT_TRUE(empty.isEmpty());
    EXPECT_EQ(empty.size(), 0u);
    EXPECT_EQ(std::wstring(empty.c_str()), L"");
}

TEST(String, NullGivesTheEmptyText) {
    EXPECT_TRUE(String(static_cast<const char*>(nullptr)).isEmpty());
    EXPECT_TRUE(String(static_cast<const wchar_t*>(nullptr)).isEmpty());
    EXPECT_TRUE(String::fromUtf8(nullptr).isEmpty());
}

TEST(String, NarrowTextIsWidenedByteByByte) {
    // The two bytes of a UTF-8 "a umlaut" are two characters here.
    EXPECT_EQ(std::wstring(String("\xC3\xA4").c_str()), (std::wstring{0xC3, 0xA4}));
    EXPECT_EQ(std::wstring(String(std::string("\xFFz")).c_str()), (std::wstring{0xFF, L'z'}));
    EXPECT_EQ(String(std::string("a\0b", 3)).size(), 3u);
}

TEST(String, WideTextIsTakenAsItStands) {
    EXPECT_EQ(std::wstring(String(L"\u20AC").c_str()), L"\u20AC");
    EXPECT_EQ(String(std::wstring(L"a\0b", 3)).size(), 3u);
    EXPECT_EQ(String(L"\U0001F600").size(), 1u);
}

TEST(String, Utf8IsReadAndWrittenByNameOnly) {
    String text = String::fromUtf8("\xE2\x82\xAC");
    EXPECT_EQ(std::wstring(text.c_str()), L"\u20AC");
    EXPECT_EQ(utf8(text), "\xE2\x82\xAC");
    EXPECT_EQ(utf8(String("\xC3")), "\xC3\x83");
    EXPECT_EQ(std::wstring(String::fromUtf8("a\xFF").c_str()), L"a\uFFFD");
    EXPECT_EQ(utf8(String(std::wstring{0xD800})), "\xEF\xBF\xBD");
    EXPECT_EQ(String(std::wstring(2, L'\0')).toUtf8().size(), 2u);
}

TEST(String, CopiesAreIndependent) {
    String text = "abc";
    String copy = text;
    copy[0] = L'x';
    EXPECT_EQ(utf8(text), "abc");
    EXPECT_EQ(utf8(copy), "xbc");
    text = copy;
    EXPECT_EQ(utf8(text), "xbc");
    text = "literal";
    EXPECT_EQ(utf8(text), "literal");
}

TEST(String, Joins) {
    String text = "a";
    text += "b";
    text += text;
    EXPECT_EQ(utf8(text), "abab");
    EXPECT_EQ(utf8(String("a") + String("b") + "c"), "abc");
    EXPECT_EQ(utf8("x" + String("y")), "xy");
}

TEST(String, ComparesExactly) {
    EXPECT_TRUE(String("abc") == String(L"abc"));
    EXPECT_FALSE(String("abc") == String("Abc"));
    EXPECT_FALSE(String("abc") == String("abcd"));
    EXPECT_TRUE(String("abc") != "abd");
    EXPECT_FALSE(String("abc") != "abc");
    EXPECT_TRUE("abc" == String("abc"));
}

TEST(String, IndexesCharacters) {
    const String text = "abc";
    EXPECT_EQ(text[0], L'a');
    EXPECT_EQ(text[2], L'c');
    EXPECT_EQ(text[3], L'\0');
}

TEST(String, Finds) {
    String text = "abcabc";
    EXPECT_EQ(text.find("bc"), 1u);
    EXPECT_EQ(text.find("bc", 1), 1u);
    EXPECT_EQ(text.find("bc", 2), 4u);
    EXPECT_EQ(text.find("bc", 5), String::npos);
    EXPECT_EQ(text.find("x"), String::npos);
    EXPECT_EQ(text.find("a", 100), String::npos);
    EXPECT_EQ(text.find("", 6), 6u);
    EXPECT_EQ(text.find("", 7), String::npos);
}

TEST(String, FindsFromTheEnd) {
    String text = "abcabc";
    EXPECT_EQ(text.findLast("bc"), 4u);
    EXPECT_EQ(text.findLast("bc", 4), 4u);
    EXPECT_EQ(text.findLast("bc", 3), 1u);
    EXPECT_EQ(text.findLast("bc", 0), String::npos);
    EXPECT_EQ(text.findLast("x"), String::npos);
    EXPECT_EQ(text.findLast(""), 6u);
    EXPECT_EQ(text.findLast("", 2), 2u);
    EXPECT_EQ(String().findLast("a"), String::npos);
}

TEST(String, TestsItsEnds) {
    String text = "abc";
    EXPECT_TRUE(text.startsWith("ab"));
    EXPECT_TRUE(text.startsWith(""));
    EXPECT_TRUE(text.startsWith("abc"));
    EXPECT_FALSE(text.startsWith("abcd"));
    EXPECT_FALSE(text.startsWith("Ab"));
    EXPECT_TRUE(text.endsWith("bc"));
    EXPECT_TRUE(text.endsWith(""));
    EXPECT_FALSE(text.endsWith("xabc"));
    EXPECT_FALSE(text.endsWith("b"));
}

TEST(String, CutsPieces) {
    String text = "abcdef";
    EXPECT_EQ(utf8(text.subString(2)), "cdef");
    EXPECT_EQ(utf8(text.subString(2, 3)), "cde");
    EXPECT_EQ(utf8(text.subString(2, 0)), "");
    EXPECT_EQ(utf8(text.subString(4, 100)), "ef");
    EXPECT_EQ(utf8(text.subString(0, String::npos)), "abcdef");
    EXPECT_EQ(utf8(text.subString(6)), "");
    EXPECT_EQ(utf8(text.subString(7)), "");
}

TEST(String, ReplacesEveryOccurrenceInPlace) {
    String text = "a\\b\\c";
    text.replace("\\", "/");
    EXPECT_EQ(utf8(text), "a/b/c");
    text.replace("/", "//");
    EXPECT_EQ(utf8(text), "a//b//c");
    text.replace("", "x");
    EXPECT_EQ(utf8(text), "a//b//c");
}

TEST(String, WritesNumbers) {
    EXPECT_EQ(utf8(String::number(2.5, 'g', -1)), "2.5");
    EXPECT_EQ(utf8(String::number(1234567)), "1.23457e+06");
    EXPECT_EQ(utf8(String::number(2.5, 'f', 2)), "2.50");
}

TEST(String, ArgReplacesTheLowestPlaceholder) {
    EXPECT_EQ(utf8(String("%1 of %2").arg(String("a"), 0, L' ')), "a of %2");
    EXPECT_EQ(utf8(String("%1 of %2").arg("a").arg("b")), "a of b");
    EXPECT_EQ(utf8(String("%1-%1").arg("a")), "a-a");
    EXPECT_EQ(utf8(String("none").arg("a")), "none");
    EXPECT_EQ(utf8(String("%1 %2").arg("%2").arg("x")), "x x");
}

TEST(String, ArgFillsUp) {
    EXPECT_EQ(utf8(String("[%1]").arg("ab", 4)), "[  ab]");
    EXPECT_EQ(utf8(String("[%1]").arg("ab", -4, L'.')), "[ab..]");
    EXPECT_EQ(utf8(String("[%1]").arg("ab", 3, L'\u00B7')), "[\xC2\xB7"
                                                            "ab]");
}

TEST(String, ArgWritesIntegers) {
    EXPECT_EQ(utf8(String("%1").arg(42, 0, L' ')), "42");
    EXPECT_EQ(utf8(String("%1").arg(-2147483647 - 1)), "-2147483648");
    EXPECT_EQ(utf8(String("%1").arg(7, 3, L'0')), "007");
    EXPECT_EQ(utf8(String("%1").arg(-7, 4, L'0')), "-007");
    EXPECT_EQ(utf8(String("%1").arg(1234, 3, L'0')), "1234");
    EXPECT_EQ(utf8(String("%1|").arg(7, -3)), "7  |");
}

} // namespace
