#include "LibCore/rvfTextFormat.h"

#include "Tests/Support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <limits>

using namespace rvf::internal;

namespace {

constexpr double INFINITE = std::numeric_limits<double>::infinity();

struct NumberCase {
    double value;
    char format;
    int precision;
    std::wstring expected;
};

class FormatNumber : public testing::TestWithParam<NumberCase> {};

TEST_P(FormatNumber, IsWhatPrintfWrites) {
    const NumberCase& row = GetParam();
    EXPECT_EQ(formatNumber(row.value, row.format, row.precision), row.expected);
}

// By the rules of printf: g has at most 6 significant digits and turns to an exponent from 1e6 and below 1e-4.
INSTANTIATE_TEST_SUITE_P(General, FormatNumber,
                         testing::Values(NumberCase{2.5, 'g', -1, L"2.5"}, NumberCase{0, 'g', -1, L"0"},
                                         NumberCase{-0.0, 'g', -1, L"-0"}, NumberCase{-12, 'g', -1, L"-12"},
                                         NumberCase{999999, 'g', -1, L"999999"}, NumberCase{1e6, 'g', -1, L"1e+06"},
                                         NumberCase{1234567, 'g', -1, L"1.23457e+06"},
                                         NumberCase{1e-4, 'g', -1, L"0.0001"}, NumberCase{1e-5, 'g', -1, L"1e-05"},
                                         NumberCase{1e10, 'G', -1, L"1E+10"}, NumberCase{3.14159, 'g', 3, L"3.14"},
                                         NumberCase{260, 'g', 0, L"3e+02"},
                                         NumberCase{0.1, 'g', 17, L"0.10000000000000001"},
                                         NumberCase{5e-324, 'g', -1, L"4.94066e-324"}));

INSTANTIATE_TEST_SUITE_P(Fixed, FormatNumber,
                         testing::Values(NumberCase{2.5, 'f', -1, L"2.500000"}, NumberCase{2.25, 'f', 2, L"2.25"},
                                         NumberCase{2.75, 'F', 0, L"3"},
                                         NumberCase{1e20, 'f', 0, L"100000000000000000000"},
                                         NumberCase{0.5, 'f', 400, L"0.5" + std::wstring(399, L'0')}));

INSTANTIATE_TEST_SUITE_P(Scientific, FormatNumber,
                         testing::Values(NumberCase{12345, 'e', -1, L"1.234500e+04"},
                                         NumberCase{12345, 'e', 2, L"1.23e+04"}, NumberCase{12345, 'E', 2, L"1.23E+04"},
                                         NumberCase{-1e-100, 'e', 0, L"-1e-100"}));

INSTANTIATE_TEST_SUITE_P(NoNumber, FormatNumber,
                         testing::Values(NumberCase{INFINITE, 'g', -1, L"inf"}, NumberCase{-INFINITE, 'f', -1, L"-inf"},
                                         NumberCase{INFINITE, 'E', -1, L"INF"},
                                         NumberCase{std::numeric_limits<double>::quiet_NaN(), 'g', -1, L"nan"}));

INSTANTIATE_TEST_SUITE_P(OtherFormats, FormatNumber,
                         testing::Values(NumberCase{1e10, 'x', -1, L"1e+10"}, NumberCase{2.5, '\0', -1, L"2.5"},
                                         NumberCase{2.5, 'd', -2, L"2.5"}));

TEST(FormatNumber, TheLargestNumberHasAllItsDigits) {
    std::wstring text = formatNumber(-std::numeric_limits<double>::max(), 'f', 1);
    EXPECT_EQ(text.size(), 312u); // A sign, 309 digits, a point and a zero.
    EXPECT_EQ(text.substr(0, 18), L"-17976931348623157");
    EXPECT_EQ(text.substr(310), L".0");
}

TEST(FormatNumber, TheDecimalPointIsAPointInEveryLocale) {
    // Few machines have a locale with a decimal comma; one made here will do.
    orvtest::ScratchFolder folder;
    const std::string compile = "localedef -i de_DE -f UTF-8 '" + folder / "de_DE.UTF-8'" + " 2>/dev/null";
    ASSERT_EQ(std::system(compile.c_str()), 0) << "Debian's package locales is missing";
    ASSERT_EQ(setenv("LOCPATH", folder.path().c_str(), 1), 0);
    ASSERT_TRUE(std::setlocale(LC_NUMERIC, "de_DE.UTF-8"));
    ASSERT_STREQ(std::localeconv()->decimal_point, ",");
    const std::wstring text = formatNumber(2.5, 'g', -1);
    std::setlocale(LC_NUMERIC, "C");
    EXPECT_EQ(text, L"2.5");
}

TEST(PadText, FillsInFrontOrBehind) {
    EXPECT_EQ(padText(L"ab", 0, L' '), L"ab");
    EXPECT_EQ(padText(L"ab", 4, L' '), L"  ab");
    EXPECT_EQ(padText(L"ab", -4, L'.'), L"ab..");
    EXPECT_EQ(padText(L"ab", 2, L'.'), L"ab");
    EXPECT_EQ(padText(L"abc", 2, L'.'), L"abc");
    EXPECT_EQ(padText(L"abc", -2, L'.'), L"abc");
    EXPECT_EQ(padText(L"", 2, L'.'), L"..");
    EXPECT_EQ(padText(L"-5", 4, L'0'), L"00-5");
}

TEST(PadNumber, ZerosStandBehindTheSign) {
    EXPECT_EQ(padNumber(L"7", 3, L'0'), L"007");
    EXPECT_EQ(padNumber(L"-5", 4, L'0'), L"-005");
    EXPECT_EQ(padNumber(L"-5", 2, L'0'), L"-5");
    EXPECT_EQ(padNumber(L"-5", 1, L'0'), L"-5");
    EXPECT_EQ(padNumber(L"-5", 4, L' '), L"  -5");
    EXPECT_EQ(padNumber(L"-5", -4, L'0'), L"-500");
    EXPECT_EQ(padNumber(L"", 2, L'0'), L"00");
}

struct PlaceholderCase {
    std::wstring text;
    std::wstring expected; ///< With "V" put in.
};

class ReplaceLowestPlaceholder : public testing::TestWithParam<PlaceholderCase> {};

TEST_P(ReplaceLowestPlaceholder, ReplacesAllOfTheLowestNumber) {
    EXPECT_EQ(replaceLowestPlaceholder(GetParam().text, L"V"), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(All, ReplaceLowestPlaceholder,
                         testing::Values(PlaceholderCase{L"", L""}, PlaceholderCase{L"none", L"none"},
                                         PlaceholderCase{L"%1", L"V"}, PlaceholderCase{L"a%1b", L"aVb"},
                                         PlaceholderCase{L"%1 %2", L"V %2"}, PlaceholderCase{L"%2 %1", L"%2 V"},
                                         PlaceholderCase{L"%1+%1", L"V+V"}, PlaceholderCase{L"%2%3%2", L"V%3V"},
                                         PlaceholderCase{L"%0 %1", L"V %1"}, PlaceholderCase{L"%10 %2", L"%10 V"},
                                         PlaceholderCase{L"%10", L"V"}, PlaceholderCase{L"%1 %10", L"V %10"},
                                         PlaceholderCase{L"%99", L"V"}, PlaceholderCase{L"%123", L"V3"},
                                         PlaceholderCase{L"%01 %1", L"V V"}, PlaceholderCase{L"100%", L"100%"},
                                         PlaceholderCase{L"%%1", L"%V"}, PlaceholderCase{L"% 1", L"% 1"},
                                         PlaceholderCase{L"%x %3", L"%x V"}, PlaceholderCase{L"%\u0661", L"%\u0661"}));

TEST(ReplaceLowestPlaceholder, DoesNotLookIntoTheValue) {
    EXPECT_EQ(replaceLowestPlaceholder(L"%1 %2 %1", L"%1%2"), L"%1%2 %2 %1%2");
}

TEST(ReplaceAll, ReplacesFromTheLeftWithoutLookingAgain) {
    EXPECT_EQ(replaceAll(L"aXbXc", L"X", L"--"), L"a--b--c");
    EXPECT_EQ(replaceAll(L"XX", L"X", L""), L"");
    EXPECT_EQ(replaceAll(L"aaa", L"aa", L"b"), L"ba");
    EXPECT_EQ(replaceAll(L"a", L"a", L"aa"), L"aa");
    EXPECT_EQ(replaceAll(L"abc", L"x", L"y"), L"abc");
    EXPECT_EQ(replaceAll(L"abc", L"", L"y"), L"abc");
    EXPECT_EQ(replaceAll(L"", L"x", L"y"), L"");
}

} // namespace
