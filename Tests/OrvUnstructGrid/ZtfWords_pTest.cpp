#include "OrvUnstructGrid/ZtfWords_p.h"

#include "OrvCore/Defines.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <random>

using namespace orv::ug;
using orv::Str;
using orv::UNDEFINED_DOUBLE;

namespace {

constexpr double INFINITE = std::numeric_limits<double>::infinity();
constexpr double MAX = std::numeric_limits<double>::max();
constexpr std::uint64_t NO_NUMBER = 0x123456;

/// The bits of the number, NO_NUMBER when it is none.
std::uint64_t bitsOf(const std::string& word) {
    double value = std::bit_cast<double>(NO_NUMBER);
    const bool isRead = readZtfNumber(word, &value);
    EXPECT_EQ(isRead, std::bit_cast<std::uint64_t>(value) != NO_NUMBER) << word;
    return std::bit_cast<std::uint64_t>(value);
}

std::uint64_t bitsOf(double value) {
    return std::bit_cast<std::uint64_t>(value);
}

std::string written(double value) {
    std::string text = "x";
    writeZtfNumber(value, &text);
    return text.substr(1);
}

TEST(ZtfNumber, IsReadInAnyNotationOfC) {
    const std::pair<const char*, double> CASES[] = {
        {"0", 0.0},
        {"-0", -0.0},
        {"007", 7.0},
        {"+12", 12.0},
        {"1.5", 1.5},
        {".5", 0.5},
        {"-.5", -0.5},
        {"5.", 5.0},
        {"1e3", 1000.0},
        {"1E+03", 1000.0},
        {"1.e-2", 0.01},
        {"0x10", 16.0},
        {"0X1F", 31.0},
        {"0x1.8p1", 3.0},
        {"-0X1.8P-1", -0.75},
        {"0x.8", 0.5},
        {"0xap0", 10.0},
        {"inf", INFINITE},
        {"-INF", -INFINITE},
        {"+Infinity", INFINITE},
        {"1.7976931348623157e+308", UNDEFINED_DOUBLE},
        {"4.9e-324", std::numeric_limits<double>::denorm_min()},
        {"undefined", UNDEFINED_DOUBLE},
        {"Undefined", UNDEFINED_DOUBLE},
    };
    for (const auto& [word, value] : CASES) {
        EXPECT_EQ(bitsOf(word), bitsOf(value)) << word;
    }
    EXPECT_EQ(bitsOf("nan"), 0x7FF8000000000000u);
    EXPECT_EQ(bitsOf("-NaN"), 0xFFF8000000000000u);
    EXPECT_EQ(bitsOf("nan(0x1)"), 0x7FF0000000000001u);
    EXPECT_EQ(bitsOf("-nan(0xfffffffffffff)"), 0xFFFFFFFFFFFFFFFFu);
}

TEST(ZtfNumber, IsNothingElse) {
    for (const char* word : {"",          "+",          "-",        ".",      "e5",      "1e",
                             "1e+",       "--1",        "+-1",      "-+1",    "1x",      "x1",
                             "1 ",        " 1",         "1,5",      "0x",     "0xg",     "0x-1",
                             "-0x+1",     "1d5",        "1.5f",     "1e999",  "-1e999",  "1e-999",
                             "infinite",  "nan()",      "nan(0x0)", "nan(1)", "nan(0x1", "nan(0x10000000000000)",
                             "nan(0x-1)", "-undefined", "undefine", "nano",   "?"}) {
        EXPECT_EQ(bitsOf(word), NO_NUMBER) << word;
    }
}

TEST(ZtfNumber, IsWrittenAsShortAsCanBe) {
    EXPECT_EQ(written(0.1), "0.1");
    EXPECT_EQ(written(-0.0), "-0");
    EXPECT_EQ(written(1e22), "1e+22");
    EXPECT_EQ(written(1.0 / 3.0), "0.3333333333333333");
    EXPECT_EQ(written(UNDEFINED_DOUBLE), "undefined");
    EXPECT_EQ(written(-UNDEFINED_DOUBLE), "-1.7976931348623157e+308");
    EXPECT_EQ(written(INFINITE), "inf");
    EXPECT_EQ(written(-INFINITE), "-inf");
    EXPECT_EQ(written(std::bit_cast<double>(0x7FF8000000000000u)), "nan");
    EXPECT_EQ(written(std::bit_cast<double>(0xFFF8000000000000u)), "-nan");
    EXPECT_EQ(written(std::bit_cast<double>(0x7FF800000000002Au)), "nan(0x800000000002a)");
}

TEST(ZtfNumber, ReadsBackBitByBit) {
    std::mt19937_64 random(1);
    for (int i = 0; i < 100000; ++i) {
        const double value = std::bit_cast<double>(std::uint64_t(random()));
        ASSERT_EQ(bitsOf(written(value)), bitsOf(value)) << written(value);
    }
}

TEST(ZtfInteger, LiesWithinItsBounds) {
    long long value = 5;
    EXPECT_TRUE(readZtfInteger("12", 0, 12, &value));
    EXPECT_EQ(value, 12);
    EXPECT_TRUE(readZtfInteger("+3", 3, 12, &value));
    EXPECT_EQ(value, 3);
    EXPECT_TRUE(readZtfInteger("-7", -7, 0, &value));
    EXPECT_EQ(value, -7);
    for (const char* word : {"13", "-1", "", "+", "+-3", "3.0", "3x", "0x3", "99999999999999999999", " 3"}) {
        EXPECT_FALSE(readZtfInteger(word, 0, 12, &value)) << word;
    }
    EXPECT_EQ(value, -7);
}

TEST(ZtfText, IsQuoted) {
    EXPECT_EQ(quotedZtfText(""), "\"\"");
    EXPECT_EQ(quotedZtfText("a b, #c"), "\"a b, #c\"");
    EXPECT_EQ(quotedZtfText("a\"b\\c"), "\"a\\u{22}b\\\\c\"");
    EXPECT_EQ(quotedZtfText("a\nb\tc\x7F"), "\"a\\u{a}b\\u{9}c\\u{7f}\"");
    EXPECT_EQ(quotedZtfText(L"\u00E4\u6C34\U0001F600"), "\"\u00E4\u6C34\U0001F600\"");
    EXPECT_EQ(quotedZtfText(L"\u0085\u2028\u2029"), "\"\\u{85}\\u{2028}\\u{2029}\"");
    EXPECT_EQ(quotedZtfText(Str(std::wstring(1, wchar_t(0xDC00)) + wchar_t(-1))), "\"\\u{dc00}\\u{ffffffff}\"");
    EXPECT_EQ(quotedZtfText(Str(std::wstring(1, L'\0'))), "\"\\u{0}\"");
}

TEST(ZtfText, IsReadBack) {
    const auto read = [](const Str& quoted) {
        Str text = "refused";
        const bool isRead = readZtfText(quoted, &text);
        EXPECT_EQ(isRead, !(text == "refused"));
        return text;
    };
    EXPECT_EQ(read(""), "");
    EXPECT_EQ(read("a\\\\b"), "a\\b");
    EXPECT_EQ(read("\\u{41}\\u{00042}\\u{1F600}"), L"AB\U0001F600");
    EXPECT_EQ(read("\\\\u{41}"), "\\u{41}");
    for (const char* bad : {"\\", "a\\", "\\n", "\\u", "\\u41", "\\u{", "\\u{41", "\\u{}", "\\u{x}", "\\u{-1}",
                            "\\u{ 41}", "\\u{100000000}", "\\U{41}"}) {
        EXPECT_EQ(read(bad), "refused") << bad;
    }
}

} // namespace
