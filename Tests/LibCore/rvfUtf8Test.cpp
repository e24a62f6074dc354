#include "LibCore/rvfUtf8.h"

#include <gtest/gtest.h>

using rvf::internal::decodeUtf8;
using rvf::internal::encodeUtf8;

namespace {

constexpr wchar_t R = rvf::internal::REPLACEMENT_CHARACTER;

using Text = std::wstring;

struct Utf8Case {
    std::string bytes;
    std::wstring text;
};

class ValidUtf8 : public testing::TestWithParam<Utf8Case> {};

TEST_P(ValidUtf8, GoesBothWays) {
    EXPECT_EQ(decodeUtf8(GetParam().bytes), GetParam().text);
    EXPECT_EQ(encodeUtf8(GetParam().text), GetParam().bytes);
}

// The first and the last code point of each length, and those around the surrogates.
INSTANTIATE_TEST_SUITE_P(Borders, ValidUtf8,
                         testing::Values(Utf8Case{"", L""}, Utf8Case{std::string("\0", 1), Text(1, L'\0')},
                                         Utf8Case{"\x7F", Text{0x7F}}, Utf8Case{"\xC2\x80", Text{0x80}},
                                         Utf8Case{"\xDF\xBF", Text{0x7FF}}, Utf8Case{"\xE0\xA0\x80", Text{0x800}},
                                         Utf8Case{"\xED\x9F\xBF", Text{0xD7FF}}, Utf8Case{"\xEE\x80\x80", Text{0xE000}},
                                         Utf8Case{"\xEF\xBF\xBF", Text{0xFFFF}},
                                         Utf8Case{"\xF0\x90\x80\x80", Text{0x10000}},
                                         Utf8Case{"\xF4\x8F\xBF\xBF", Text{0x10FFFF}},
                                         Utf8Case{"a\xC3\xA4\xE2\x82\xACz", Text{L'a', 0xE4, 0x20AC, L'z'}}));

class InvalidUtf8 : public testing::TestWithParam<Utf8Case> {};

TEST_P(InvalidUtf8, BecomesReplacementCharacters) {
    EXPECT_EQ(decodeUtf8(GetParam().bytes), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    All, InvalidUtf8,
    testing::Values(Utf8Case{"\x80", Text{R}}, Utf8Case{"\xBF\x80", Text{R, R}}, Utf8Case{"\xFF\xFE", Text{R, R}},
                    Utf8Case{"\xC3", Text{R}}, Utf8Case{"\xC3z", Text{R, L'z'}}, Utf8Case{"\xE2\x82", Text{R}},
                    Utf8Case{"\xE2\x82z", Text{R, L'z'}}, Utf8Case{"\xF0\x9F\x98", Text{R}},
                    Utf8Case{"\xF0\x9F\x98\xC3\xA4", Text{R, 0xE4}},
                    // Overlong forms: a slash in two bytes, the first three- and four-byte ones below their range.
                    Utf8Case{"\xC0\xAF", Text{R, R}}, Utf8Case{"\xC1\xBF", Text{R, R}},
                    Utf8Case{"\xE0\x9F\xBF", Text{R, R, R}}, Utf8Case{"\xF0\x8F\xBF\xBF", Text{R, R, R, R}},
                    // A surrogate, and values above U+10FFFF.
                    Utf8Case{"\xED\xA0\x80", Text{R, R, R}}, Utf8Case{"\xF4\x90\x80\x80", Text{R, R, R, R}},
                    Utf8Case{"\xF5\x80\x80\x80", Text{R, R, R, R}},
                    // The example of the Unicode standard for replacing longest beginnings of a character.
                    Utf8Case{"a\xF1\x80\x80\xE1\x80\xC2"
                             "b\x80"
                             "c\x80\xBF"
                             "d",
                             Text{L'a', R, R, R, L'b', R, L'c', R, R, L'd'}}));

TEST(EncodeUtf8, WhatIsNoCodePointBecomesTheReplacementCharacter) {
    for (wchar_t value : {wchar_t(0xD800), wchar_t(0xDFFF), wchar_t(0x110000), wchar_t(0x7FFFFFFF), wchar_t(-1)}) {
        EXPECT_EQ(encodeUtf8(Text{L'a', value, L'z'}), "a\xEF\xBF\xBDz");
    }
}

TEST(Utf8, EveryCodePointComesBack) {
    Text text;
    for (int value = 0; value <= 0x10FFFF; value += value == 0xD7FF ? 0x801 : 1) {
        text += wchar_t(value);
    }
    EXPECT_EQ(text.size(), 0x110000u - 0x800u);
    EXPECT_TRUE(decodeUtf8(encodeUtf8(text)) == text);
}

TEST(DecodeUtf8, TakesEveryPairOfBytes) {
    for (int first = 0; first < 256; ++first) {
        for (int second = 0; second < 256; ++second) {
            Text text = decodeUtf8(std::string{char(first), char(second)});
            bool isOneCharacter =
                (first >= 0xC2 && second >= 0x80 && second <= 0xBF && first <= 0xDF) ||
                (first == 0xE0 && second >= 0xA0 && second <= 0xBF) ||
                (first == 0xED && second >= 0x80 && second <= 0x9F) ||
                (first == 0xF0 && second >= 0x90 && second <= 0xBF) ||
                (first == 0xF4 && second >= 0x80 && second <= 0x8F) ||
                (((first >= 0xE1 && first <= 0xEF && first != 0xED) || (first >= 0xF1 && first <= 0xF3)) &&
                 second >= 0x80 && second <= 0xBF);
            ASSERT_EQ(text.size(), isOneCharacter ? 1u : 2u) << first << ' ' << second;
        }
    }
}

} // namespace
