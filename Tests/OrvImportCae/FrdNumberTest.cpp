#include "OrvImportCae/FrdNumber.h"

#include "OrvCore/Defines.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>
#include <vector>

using namespace orv::imp::cae;

namespace {

constexpr double UNTOUCHED = 4711.0;

std::uint64_t bits(double value) {
    return std::bit_cast<std::uint64_t>(value);
}

double readReal(const std::string& text) {
    double value = UNTOUCHED;
    EXPECT_TRUE(readCaeReal(text.data(), text.data() + text.size(), &value)) << text;
    return value;
}

bool refusesReal(const std::string& text) {
    double value = UNTOUCHED;
    const bool isRead = readCaeReal(text.data(), text.data() + text.size(), &value);
    EXPECT_EQ(value, UNTOUCHED) << text;
    return !isRead;
}

// Both ways to read a column against strtod.
void expectAsStrtod(const char* text) {
    const double expected = std::strtod(text, nullptr);
    double quick = UNTOUCHED;
    ASSERT_TRUE(readFrdValue(text, &quick)) << text;
    ASSERT_EQ(bits(quick), bits(expected)) << text;
    ASSERT_EQ(bits(readReal(text)), bits(expected)) << text;
}

TEST(FrdNumber, ReadsEveryExponentAsStrtodDoes) {
    std::mt19937 random(20240607);
    for (int exponent = -99; exponent <= 99; ++exponent) {
        for (int i = 0; i < 200; ++i) {
            const unsigned digits = i == 0 ? 0 : random() % 1000000;
            char text[32];
            std::snprintf(text, sizeof text, "%c%u.%05uE%c%02d", random() % 2 ? '-' : ' ', digits / 100000,
                          digits % 100000, exponent < 0 ? '-' : '+', std::abs(exponent));
            ASSERT_EQ(std::string(text).size(), FRD_VALUE_WIDTH);
            expectAsStrtod(text);
        }
    }
}

TEST(FrdNumber, ReadsRandomBitsAsPrintfWritesThem) {
    std::mt19937_64 random(20240608);
    for (int i = 0; i < 20000; ++i) {
        const double value = std::bit_cast<double>(random());
        if (!std::isfinite(value)) {
            continue;
        }
        char text[64];
        // 17 digits name one double only, so it must come back.
        std::snprintf(text, sizeof text, "%.16E", value);
        ASSERT_EQ(bits(readReal(text)), bits(value)) << text;
        std::snprintf(text, sizeof text, "%12.5E", value);
        ASSERT_EQ(bits(readReal(text)), bits(std::strtod(text, nullptr))) << text;
    }
}

TEST(FrdNumber, ReadsColumnsThatAreNotUsual) {
    for (const char* text : {"           0", "         -12", "1.23456E+100", "1.23456E-300", "4.94066E-324",
                             "1.79769E+308", "       +1.5 ", "+1.23456E+00", " 1.23456e+00", " 123.456E-02",
                             "        .25 ", "         5. ", "-0.00000E+00", "1.000000000 ", "13096.031060",
                             "9.99999E+999", "1.00000E-999", " 0.0000E-999", "-2.2250E-308", "-9.9999E+400"}) {
        expectAsStrtod(text);
    }
}

TEST(FrdNumber, TakesAnExponentWithoutItsLetter) {
    EXPECT_EQ(readReal("1.5-105"), 1.5e-105);
    EXPECT_EQ(readReal("-1.50000-105"), -1.5e-105);
    EXPECT_EQ(readReal(" 1.50000+105"), 1.5e105);
    double value = UNTOUCHED;
    EXPECT_TRUE(readFrdValue(" 1.50000-105", &value));
    EXPECT_EQ(value, 1.5e-105);
}

TEST(FrdNumber, TakesTheLetterD) {
    EXPECT_EQ(readReal(" 1.50000D+02"), 150.0);
    EXPECT_EQ(readReal(" 1.50000d-02"), 0.015);
}

TEST(FrdNumber, TakesSpecialValues) {
    for (const char* text : {"nan", "         NaN", "NAN ", "-nan"}) {
        EXPECT_TRUE(std::isnan(readReal(text))) << text;
    }
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(readReal("         inf"), infinity);
    EXPECT_EQ(readReal("   -Infinity"), -infinity);
    EXPECT_EQ(readReal("        +INF"), infinity);
}

TEST(FrdNumber, BlankColumnsAreUndefined) {
    EXPECT_EQ(readReal("            "), orv::UNDEFINED_DOUBLE);
    EXPECT_EQ(readReal(""), orv::UNDEFINED_DOUBLE);
}

TEST(FrdNumber, RefusesWhatIsNoNumber) {
    for (const char* text : {"************", "abc", "1.5x", "1.5E", "1.5E+", "1.5-", "-", "+", ".", "1 2", "--1",
                             "1.2.3", "nano", "in", "0x10", "1,5", "E+05", "1.5E+05 3"}) {
        EXPECT_TRUE(refusesReal(text)) << text;
    }
    EXPECT_TRUE(refusesReal(std::string(65, '1')));
    EXPECT_TRUE(refusesReal(std::string("1.5\0", 4)));
}

TEST(FrdNumber, QuickWayRefusesWhatTheOtherRefuses) {
    // One character after the other is made wrong.
    const std::string good = "-1.23456E+07";
    for (std::size_t i = 0; i < good.size(); ++i) {
        for (const char wrong : {'x', '\0', '/', ':', '!', '\n', '\xB1'}) {
            std::string text = good;
            text[i] = wrong;
            double value = UNTOUCHED;
            EXPECT_FALSE(readFrdValue(text.data(), &value)) << text;
            EXPECT_EQ(value, UNTOUCHED) << text;
        }
    }
}

std::vector<double> touching(const std::string& text, std::size_t count) {
    std::vector<double> values(count, UNTOUCHED);
    EXPECT_TRUE(readFrdTouchingReals(text.data(), text.data() + text.size(), count, values.data())) << text;
    return values;
}

bool refusesTouching(const std::string& text, std::size_t count) {
    std::vector<double> values(count);
    return !readFrdTouchingReals(text.data(), text.data() + text.size(), count, values.data());
}

TEST(FrdNumber, DividesTouchingNumbers) {
    using Values = std::vector<double>;
    EXPECT_EQ(touching(" 1.00000E+000-1.00000E+0001.00000E+000", 3), (Values{1, -1, 1}));
    EXPECT_EQ(touching("1.00000E-1051.00000E+0022.50000E+000", 3), (Values{1e-105, 100, 2.5}));
    EXPECT_EQ(touching(" 1.50000-1051.50000E+00", 2), (Values{1.5e-105, 1.5}));
    // A sign alone does not make an exponent: here it begins the next number.
    EXPECT_EQ(touching(" 1.50000-1.05000E+00", 2), (Values{1.5, -1.05}));
    EXPECT_EQ(touching("-1.00000E+00-2.00000E+00  ", 2), (Values{-1, -2}));
    EXPECT_EQ(touching(" inf 1.00000E+000", 2), (Values{std::numeric_limits<double>::infinity(), 1}));
    EXPECT_TRUE(std::isnan(touching("         NaN-1.00000E+000", 2)[0]));
}

TEST(FrdNumber, RefusesAnotherCountOfTouchingNumbers) {
    EXPECT_TRUE(refusesTouching("1.00000E+000", 2));
    EXPECT_TRUE(refusesTouching("1.00000E+000 2.00000E+000", 1));
    EXPECT_TRUE(refusesTouching("1.00000E+000 x", 2));
    EXPECT_TRUE(refusesTouching("", 1));
    EXPECT_TRUE(refusesTouching("-", 1));
}

TEST(FrdNumber, ReadsNumbersOfNodes) {
    const auto read = [](const std::string& text) {
        int id = -1;
        const bool isRead = readFrdId(text.data(), text.size(), &id);
        EXPECT_EQ(isRead, id >= 0) << text;
        return id;
    };
    EXPECT_EQ(read("         0"), 0);
    EXPECT_EQ(read("         7"), 7);
    EXPECT_EQ(read("      4711"), 4711);
    EXPECT_EQ(read("  12345678"), 12345678);
    EXPECT_EQ(read(" 123456789"), 123456789);
    EXPECT_EQ(read("2147483647"), 2147483647);
    EXPECT_EQ(read("0000000012"), 12);
    EXPECT_EQ(read("12        "), 12);
    EXPECT_EQ(read("  12345   "), 12345);
    EXPECT_EQ(read("   12"), 12);
    EXPECT_EQ(read("99999"), 99999);
    for (const char* text : {"          ", "2147483648", "9999999999", "        -1", "      1 2 ", "      1 23",
                             "       12x", "      !234", "      12.0", "     ", "  1 2", "   -1"}) {
        EXPECT_EQ(read(text), -1) << text;
    }
    // One character after the other is made wrong.
    const std::string good = "  12345678";
    for (std::size_t i = 0; i < good.size(); ++i) {
        for (const char wrong : {'x', '\0', '/', ':', '!', '\n', '\xB1', '*', '-'}) {
            std::string text = good;
            text[i] = wrong;
            EXPECT_EQ(read(text), -1) << text;
        }
    }
}

TEST(FrdNumber, ReadsIntegers) {
    const auto read = [](const std::string& text) {
        std::int64_t value = 4711;
        const bool isRead = readCaeInteger(text.data(), text.data() + text.size(), &value);
        return std::pair(isRead, value);
    };
    EXPECT_EQ(read("        12"), std::pair(true, std::int64_t(12)));
    EXPECT_EQ(read("-7  "), std::pair(true, std::int64_t(-7)));
    EXPECT_EQ(read("9999999999"), std::pair(true, std::int64_t(9999999999)));
    for (const char* text : {"", "     ", "1 2", "12x", "1.0", "+3", "99999999999999999999", "***"}) {
        EXPECT_EQ(read(text), std::pair(false, std::int64_t(4711))) << text;
    }
}

} // namespace
