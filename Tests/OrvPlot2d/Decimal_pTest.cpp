#include "OrvPlot2d/Decimal_p.h"

#include <gtest/gtest.h>

using namespace orv::plt;

namespace {

TEST(Decimal, IsTheNearestDouble) {
    EXPECT_EQ(toDouble({3, -1}), 0.3);
    EXPECT_EQ(toDouble({-25, 2}), -2500.0);
    EXPECT_EQ(toDouble({7, 22}), 7e22);
    EXPECT_EQ(toDouble({123456789, -300}), 1.23456789e-292);
    EXPECT_EQ(toDouble({0, 5}), 0.0);
}

TEST(Decimal, IsWrittenWithAsManyDecimalsAsItHas) {
    EXPECT_EQ(plainText({250, -2}), L"2.50");
    EXPECT_EQ(plainText({25, -2}), L"0.25");
    EXPECT_EQ(plainText({5, -3}), L"0.005");
    EXPECT_EQ(plainText({25, 0}), L"25");
    EXPECT_EQ(plainText({25, 3}), L"25000");
    EXPECT_EQ(plainText({12345678901, -4}), L"1234567.8901");
}

TEST(Decimal, ZeroIsWrittenLikeItsNeighbours) {
    EXPECT_EQ(plainText({0, -2}), L"0.00");
    EXPECT_EQ(plainText({0, 0}), L"0");
    EXPECT_EQ(plainText({0, 6}), L"0");
}

TEST(Decimal, HasTheTypographicMinus) {
    EXPECT_EQ(plainText({-5, -1}), L"\u22120.5");
    EXPECT_EQ(plainText({-5, 1}), L"\u221250");
}

TEST(Decimal, PowersOfTenHaveRaisedExponents) {
    EXPECT_EQ(powerOfTenText(0), L"10\u2070");
    EXPECT_EQ(powerOfTenText(6), L"10\u2076");
    EXPECT_EQ(powerOfTenText(-123), L"10\u207B\u00B9\u00B2\u00B3");
    EXPECT_EQ(powerOfTenText(45), L"10\u2074\u2075");
    EXPECT_EQ(powerOfTenText(789), L"10\u2077\u2078\u2079");
}

} // namespace
