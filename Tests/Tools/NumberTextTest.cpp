#include "Tools/NumberText.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>

using namespace orvapp;

TEST(NumberText, ShortestReadsBackTheSame) {
    for (const double value : {0.1, 1.0 / 3.0, -2.59434, 6.02214076e23, 5e-324, 1e22, -0.0}) {
        const std::string text = shortestNumber(value);
        EXPECT_EQ(std::strtod(text.c_str(), nullptr), value) << text;
    }
    EXPECT_EQ(shortestNumber(0.1), "0.1");
    EXPECT_EQ(shortestNumber(2.0), "2");
}

TEST(NumberText, SaysWhatIsNoNumber) {
    EXPECT_EQ(shortestNumber(-std::numeric_limits<double>::quiet_NaN()), "nan");
    EXPECT_EQ(shortestNumber(std::numeric_limits<double>::infinity()), "inf");
    EXPECT_EQ(shortestNumber(-std::numeric_limits<double>::infinity()), "-inf");
    EXPECT_EQ(roundedNumber(std::numeric_limits<double>::quiet_NaN(), 3), "nan");
}

TEST(NumberText, Rounds) {
    EXPECT_EQ(roundedNumber(2.0 / 3.0, 3), "0.667");
    EXPECT_EQ(roundedNumber(1e-7, 6), "1e-07");
    EXPECT_EQ(roundedNumber(-std::numeric_limits<double>::max(), 6), "-1.79769e+308");
}
