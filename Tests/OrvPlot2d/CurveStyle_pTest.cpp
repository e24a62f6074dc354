#include "OrvPlot2d/CurveStyle_p.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <set>
#include <tuple>

using namespace orv::plt;

namespace {

using Triple = std::array<double, 3>;
using Matrix = std::array<Triple, 3>;

constexpr std::size_t COLOURS = 6;

/// From the numbers of a screen to amounts of light.
Triple lightOf(const CurveStyle& style) {
    auto light = [](double value) { return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4); };
    return {light(style.red / 255.0), light(style.green / 255.0), light(style.blue / 255.0)};
}

Triple product(const Matrix& matrix, const Triple& vector) {
    Triple result = {};
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            result[row] += matrix[row][column] * vector[column];
        }
    }
    return result;
}

/// CIE L*a*b* under daylight D65.
Triple labOf(const Triple& light) {
    const Triple xyz = product({{{0.4124, 0.3576, 0.1805}, {0.2126, 0.7152, 0.0722}, {0.0193, 0.1192, 0.9505}}}, light);
    auto f = [](double t) { return t > 0.008856 ? std::cbrt(t) : 7.787 * t + 16.0 / 116.0; };
    const double x = f(std::max(xyz[0], 0.0) / 0.9505);
    const double y = f(std::max(xyz[1], 0.0));
    const double z = f(std::max(xyz[2], 0.0) / 1.089);
    return {116.0 * y - 16.0, 500.0 * (x - y), 200.0 * (y - z)};
}

double distance(const Triple& a, const Triple& b) {
    return std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
}

// A difference of 2 can be seen in colours side by side; thin lines apart from each other need far more.
TEST(CurveStyle, ColoursGetLighterInStepsThatGreyPrintsKeep) {
    double before = 0.0;
    for (std::size_t i = 0; i < COLOURS; ++i) {
        const double lightness = labOf(lightOf(styleOf(i)))[0];
        EXPECT_GT(lightness, before + 8.0) << i;
        before = lightness;
    }
    EXPECT_LT(before, 80.0) << "hardly seen on white";
}

TEST(CurveStyle, ColoursStayApartForTheColourBlind) {
    // Machado, Oliveira and Fernandes, 2009, severity 1: normal sight, protanopia, deuteranopia, tritanopia.
    const Matrix sights[] = {
        {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}},
        {{{0.152286, 1.052583, -0.204868}, {0.114503, 0.786281, 0.099216}, {-0.003882, -0.048116, 1.051998}}},
        {{{0.367322, 0.860646, -0.227968}, {0.280085, 0.672501, 0.047413}, {-0.011820, 0.042940, 0.968881}}},
        {{{1.255528, -0.076749, -0.178779}, {-0.078411, 0.930809, 0.147602}, {0.004733, 0.691367, 0.303900}}}};
    for (const Matrix& sight : sights) {
        for (std::size_t i = 0; i < COLOURS; ++i) {
            for (std::size_t k = 0; k < i; ++k) {
                EXPECT_GT(
                    distance(labOf(product(sight, lightOf(styleOf(i)))), labOf(product(sight, lightOf(styleOf(k))))),
                    20.0)
                    << i << " and " << k;
            }
        }
    }
}

TEST(CurveStyle, ThirtySixStylesDiffer) {
    std::set<std::tuple<int, int, int, std::vector<double>>> styles;
    for (std::size_t i = 0; i < 36; ++i) {
        const CurveStyle style = styleOf(i);
        styles.insert({style.red, style.green, style.blue, style.dashes});
    }
    EXPECT_EQ(styles.size(), 36u);
    EXPECT_EQ(styleOf(36).dashes, styleOf(0).dashes);
    EXPECT_EQ(styleOf(36).red, styleOf(0).red);
}

TEST(CurveStyle, TheFirstSixHaveTheirOwnDashesAndTheFirstIsSolid) {
    std::set<std::vector<double>> dashes;
    for (std::size_t i = 0; i < COLOURS; ++i) {
        dashes.insert(styleOf(i).dashes);
    }
    EXPECT_EQ(dashes.size(), COLOURS);
    EXPECT_TRUE(styleOf(0).dashes.empty());
}

TEST(CurveStyle, FourMarkersTakeTurns) {
    EXPECT_EQ(styleOf(0).marker, CurveStyle::Marker::CIRCLE);
    EXPECT_EQ(styleOf(1).marker, CurveStyle::Marker::SQUARE);
    EXPECT_EQ(styleOf(2).marker, CurveStyle::Marker::DIAMOND);
    EXPECT_EQ(styleOf(3).marker, CurveStyle::Marker::TRIANGLE);
    EXPECT_EQ(styleOf(4).marker, CurveStyle::Marker::CIRCLE);
}

} // namespace
