#include "LibUnstructGrid/VTOBaseTypesColor.h"

#include "LibUnstructGrid/VTOBaseTypesColor_p.h"
#include "Tests/Support/AssertRecorder.h"
#include "Tests/Support/AssertStopper.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using orvtest::AssertRecorder;
using orvtest::assertsUntil;
using orvtest::failedIn;

const std::string unit = "LibUnstructGrid/VTOBaseTypesColor";
const float fNaN = std::numeric_limits<float>::quiet_NaN();

void expectNear(const VTRGBColor& color, float fRed, float fGreen, float fBlue) {
    EXPECT_NEAR(color.r, fRed, 1e-6f);
    EXPECT_NEAR(color.g, fGreen, 1e-6f);
    EXPECT_NEAR(color.b, fBlue, 1e-6f);
}

struct Triple {
    float a = -7;
    float b = -7;
    float c = -7;
};

Triple hsvOf(const VTRGBColor& color) {
    Triple hsv;
    color.GetAsHSV(&hsv.a, &hsv.b, &hsv.c);
    return hsv;
}

Triple hslOf(const VTRGBColor& color) {
    Triple hsl;
    color.GetAsHSL(&hsl.a, &hsl.b, &hsl.c);
    return hsl;
}

TEST(VTByteColor, IsBlackAtFirst) {
    EXPECT_EQ(VTByteColor(), VTByteColor(0, 0, 0));
    VTByteColor color;
    color.Set(1, 2, 3);
    EXPECT_EQ(color.r, 1);
    EXPECT_EQ(color.g, 2);
    EXPECT_EQ(color.b, 3);
    EXPECT_NE(color, VTByteColor(1, 2, 4));
}

// 254.96 / 255 of full red: rounded to one decimal 255.0, truncated 254. Half of 255 is 127.5, which one decimal keeps.
TEST(VTByteColor, RoundsFromThreeFloatsAndTruncatesFromFour) {
    const float fAlmost = 254.96f / 255;
    EXPECT_EQ(VTByteColor(VTRGBColor(fAlmost, 0, 0.5f)), VTByteColor(255, 0, 127));
    EXPECT_EQ(VTByteColor(VTRGBAColor(fAlmost, 0, 0.5f, 0.3f)), VTByteColor(254, 0, 127));
    VTByteColor color;
    color.SetFromFloat(fAlmost, 0, 0.5f);
    EXPECT_EQ(color, VTByteColor(254, 0, 127));
    EXPECT_EQ(VTByteColor(VTRGBColor(254.94f / 255, 1, 1)), VTByteColor(254, 255, 255)); // 254.9 is below 255.
}

TEST(VTByteColor, ComesBackFromFloats) {
    for (int i = 0; i < 256; ++i) {
        const auto ub = static_cast<unsigned char>(i);
        const VTByteColor color(ub, static_cast<unsigned char>(255 - i), 7);
        EXPECT_EQ(VTByteColor(VTRGBColor(color)), color) << i;
    }
}

TEST(VTByteColor, IsEqualWithinATolerance) {
    const VTByteColor color(10, 20, 30);
    EXPECT_TRUE(color.IsEqual(VTByteColor(10, 20, 30), 0));
    EXPECT_FALSE(color.IsEqual(VTByteColor(10, 20, 31), 0));
    EXPECT_TRUE(color.IsEqual(VTByteColor(12, 18, 32), 2));
    EXPECT_FALSE(color.IsEqual(VTByteColor(13, 20, 30), 2));
    EXPECT_FALSE(color.IsEqual(VTByteColor(10, 17, 30), 2));
    EXPECT_FALSE(color.IsEqual(VTByteColor(10, 20, 33), 2));
}

TEST(VTByteColor, InvertsAndScales) {
    VTByteColor color(0, 100, 255);
    color.Invert();
    EXPECT_EQ(color, VTByteColor(255, 155, 0));
    color.Set(101, 200, 3);
    color.Scale(1.5f);
    EXPECT_EQ(color, VTByteColor(151, 255, 4)); // 151.5 and 4.5 truncated, 300 clamped.
    color.Scale(-1);
    EXPECT_EQ(color, VTByteColor(0, 0, 0));
}

TEST(VTRGBColor, SetsAndConverts) {
    VTRGBColor color;
    EXPECT_EQ(color, VTRGBColor(0, 0, 0));
    color.Set(0.1f, 0.2f, 0.3f);
    EXPECT_EQ(color.r, 0.1f);
    EXPECT_EQ(color.g, 0.2f);
    EXPECT_EQ(color.b, 0.3f);
    EXPECT_NE(color, VTRGBColor(0.1f, 0.2f, 0.4f));
    const VTRGBColor converted(VTByteColor(51, 255, 1));
    EXPECT_EQ(converted, VTRGBColor(static_cast<float>(51 / 255.0), 1, static_cast<float>(1 / 255.0)));
}

TEST(VTRGBColor, CheckRangesIncludesTheBounds) {
    EXPECT_TRUE(VTRGBColor(0, 1, 0.5f).CheckRanges());
    EXPECT_FALSE(VTRGBColor(-0.01f, 1, 1).CheckRanges());
    EXPECT_FALSE(VTRGBColor(0, 1.01f, 1).CheckRanges());
    EXPECT_FALSE(VTRGBColor(0, 1, 1.01f).CheckRanges());
    EXPECT_FALSE(VTRGBColor(0, 1, fNaN).CheckRanges());
}

TEST(VTRGBColor, Inverts) {
    VTRGBColor color(0, 1, 0.25f);
    color.Invert();
    EXPECT_EQ(color, VTRGBColor(1, 0, 0.75f));
}

TEST(VTRGBColor, BrightnessWeighsTheChannels) {
    EXPECT_FLOAT_EQ(VTRGBColor(1, 0, 0).GetBrightness(), 0.2125f);
    EXPECT_FLOAT_EQ(VTRGBColor(0, 1, 0).GetBrightness(), 0.7154f);
    EXPECT_FLOAT_EQ(VTRGBColor(0, 0, 1).GetBrightness(), 0.0721f);
    EXPECT_FLOAT_EQ(VTRGBColor(0.5f, 0.5f, 0.5f).GetBrightness(), 0.5f);
}

TEST(VTRGBColor, ContrastIsBlackOnlyAboveHalfBrightness) {
    const VTRGBColor black(0, 0, 0);
    const VTRGBColor white(1, 1, 1);
    EXPECT_EQ(VTRGBColor(1, 1, 1).GetContrastColor(), black);
    EXPECT_EQ(VTRGBColor(0, 0, 0).GetContrastColor(), white);
    EXPECT_EQ(VTRGBColor(0.51f, 0.51f, 0.51f).GetContrastColor(), black);
    const VTRGBColor grey(0.5f, 0.5f, 0.5f);
    EXPECT_EQ(grey.GetContrastColor(), grey.GetBrightness() > 0.5f ? black : white);
    EXPECT_EQ(VTRGBColor(0.49f, 0.49f, 0.49f).GetContrastColor(), white);
}

TEST(VTRGBAColor, IsOpaqueBlackAtFirst) {
    EXPECT_EQ(VTRGBAColor(), VTRGBAColor(0, 0, 0, 1));
    VTRGBAColor color;
    color.Set(0.1f, 0.2f, 0.3f, 0.4f);
    EXPECT_EQ(color.r, 0.1f);
    EXPECT_EQ(color.g, 0.2f);
    EXPECT_EQ(color.b, 0.3f);
    EXPECT_EQ(color.a, 0.4f);
    EXPECT_NE(color, VTRGBAColor(0.1f, 0.2f, 0.3f, 0.5f));
}

TEST(VTRGBAColor, TakesBytesAndAnAlpha) {
    const float fFifth = static_cast<float>(51 / 255.0);
    EXPECT_EQ(VTRGBAColor(VTByteColor(51, 255, 0)), VTRGBAColor(fFifth, 1, 0, 1));
    EXPECT_EQ(VTRGBAColor(VTByteColor(51, 255, 0), 0.25f), VTRGBAColor(fFifth, 1, 0, 0.25f));
}

TEST(VTRGBAColor, ChecksAndInvertsAllFourChannels) {
    EXPECT_TRUE(VTRGBAColor(0, 1, 0.5f, 0).CheckRanges());
    EXPECT_FALSE(VTRGBAColor(-1, 1, 1, 1).CheckRanges());
    EXPECT_FALSE(VTRGBAColor(0, -1, 1, 1).CheckRanges());
    EXPECT_FALSE(VTRGBAColor(0, 1, 2, 1).CheckRanges());
    EXPECT_FALSE(VTRGBAColor(0, 1, 1, 2).CheckRanges());
    VTRGBAColor color(0, 1, 0.25f, 0.75f);
    color.Invert();
    EXPECT_EQ(color, VTRGBAColor(1, 0, 0.75f, 0.25f));
}

// The six sectors at saturation and value 1, at their starts and half way.
TEST(VTColorHSV, SetFromHSVWalksTheSectors) {
    const struct {
        float fHue;
        float r;
        float g;
        float b;
    } rows[] = {{0, 1, 0, 0},      {30, 1, 0.5f, 0},  {60, 1, 1, 0},     {90, 0.5f, 1, 0}, {120, 0, 1, 0},
                {150, 0, 1, 0.5f}, {180, 0, 1, 1},    {210, 0, 0.5f, 1}, {240, 0, 0, 1},   {270, 0.5f, 0, 1},
                {300, 1, 0, 1},    {330, 1, 0, 0.5f}, {360, 1, 0, 0},    {750, 1, 0.5f, 0}};
    for (const auto& row : rows) {
        VTRGBColor color;
        EXPECT_TRUE(color.SetFromHSV(row.fHue, 1, 1)) << row.fHue;
        expectNear(color, row.r, row.g, row.b);
    }
}

// With value 0.8 and saturation 0.5: p is 0.4, and a quarter into the first sector t is 0.8 (1 - 0.5 * 0.75) = 0.5.
TEST(VTColorHSV, SetFromHSVMixesSaturationAndValue) {
    VTRGBColor color;
    EXPECT_TRUE(color.SetFromHSV(15, 0.5f, 0.8f));
    expectNear(color, 0.8f, 0.5f, 0.4f);
    EXPECT_TRUE(color.SetFromHSV(75, 0.5f, 0.8f)); // q is 0.8 (1 - 0.5 * 0.25) = 0.7.
    expectNear(color, 0.7f, 0.8f, 0.4f);
}

TEST(VTColorHSV, SetFromHSVClampsSaturationAndValue) {
    VTRGBColor color;
    EXPECT_TRUE(color.SetFromHSV(0, 7, 7));
    EXPECT_EQ(color, VTRGBColor(1, 0, 0));
    EXPECT_TRUE(color.SetFromHSV(0, 1, -7));
    EXPECT_EQ(color, VTRGBColor(0, 0, 0));
}

TEST(VTColorHSV, SetFromHSVWithoutSaturationLooksAtNoHue) {
    for (float fHue : {-1.0f, 0.0f, 1e9f, fNaN}) {
        VTRGBColor color(0.1f, 0.2f, 0.3f);
        EXPECT_TRUE(color.SetFromHSV(fHue, 0, 0.5f));
        EXPECT_EQ(color, VTRGBColor(0.5f, 0.5f, 0.5f));
        EXPECT_TRUE(color.SetFromHSV(fHue, -1, 0.5f));
    }
}

TEST(VTColorHSV, SetFromHSVRefusesABadHue) {
    for (float fHue : {-1.0f, -0.001f, fNaN, std::numeric_limits<float>::infinity()}) {
        VTRGBColor color(0.1f, 0.2f, 0.3f);
        EXPECT_FALSE(color.SetFromHSV(fHue, 1, 1)) << fHue;
        EXPECT_EQ(color, VTRGBColor(0.1f, 0.2f, 0.3f)) << fHue;
    }
}

TEST(VTColorHSV, GetAsHSV) {
    const struct {
        VTRGBColor color;
        float fHue;
        float fSaturation;
        float fValue;
    } rows[] = {
        {{1, 0, 0}, 0, 1, 1},
        {{0, 1, 0}, 120, 1, 1},
        {{0, 0, 1}, 240, 1, 1},
        {{1, 0, 0.5f}, 330, 1, 1},             // 60 (0 - 0.5) = -30, and once around.
        {{0.8f, 0.5f, 0.4f}, 15, 0.5f, 0.8f},  // 60 (0.1 / 0.4); 0.4 / 0.8.
        {{0.4f, 0.8f, 0.5f}, 135, 0.5f, 0.8f}, // 60 (2 + 0.1 / 0.4).
        {{0.5f, 0.4f, 0.8f}, 255, 0.5f, 0.8f}, // 60 (4 + 0.1 / 0.4).
        {{1, 1, 0}, 60, 1, 1},                 // On a tie red goes first,
        {{0, 1, 1}, 180, 1, 1},                // and green before blue.
    };
    for (const auto& row : rows) {
        const Triple hsv = hsvOf(row.color);
        EXPECT_NEAR(hsv.a, row.fHue, 1e-3f);
        EXPECT_NEAR(hsv.b, row.fSaturation, 1e-6f);
        EXPECT_EQ(hsv.c, row.fValue);
    }
}

TEST(VTColorHSV, GreyHasAHueOfMinusOneWhichIsTakenBack) {
    for (float fGrey : {0.0f, 0.25f, 1.0f}) {
        const Triple hsv = hsvOf(VTRGBColor(fGrey, fGrey, fGrey));
        EXPECT_EQ(hsv.a, -1);
        EXPECT_EQ(hsv.b, 0);
        EXPECT_EQ(hsv.c, fGrey);
        VTRGBColor color;
        EXPECT_TRUE(color.SetFromHSV(hsv.a, hsv.b, hsv.c));
        EXPECT_EQ(color, VTRGBColor(fGrey, fGrey, fGrey));
    }
}

TEST(VTColorHSV, ComesBackFromHSV) {
    for (int i = 0; i < 6 * 6 * 6; ++i) {
        const VTRGBColor color(static_cast<float>(i % 6) / 5, static_cast<float>(i / 6 % 6) / 5,
                               static_cast<float>(i / 36) / 5);
        const Triple hsv = hsvOf(color);
        VTRGBColor back;
        ASSERT_TRUE(back.SetFromHSV(hsv.a, hsv.b, hsv.c));
        EXPECT_NEAR(back.r, color.r, 1e-5f);
        EXPECT_NEAR(back.g, color.g, 1e-5f);
        EXPECT_NEAR(back.b, color.b, 1e-5f);
    }
}

TEST(VTColorHSV, GetAsHSVChecksForNumbers) {
    AssertRecorder recorder;
    VTRGBColor(0.5f, 0.2f, 0.1f).GetAsHSV(nullptr, nullptr, nullptr);
    EXPECT_TRUE(recorder.take().empty());
    VTRGBColor(fNaN, 0.2f, 0.1f).GetAsHSV(nullptr, nullptr, nullptr);
    EXPECT_EQ(recorder.take(), failedIn(unit, {"fDelta > 0"}));
}

TEST(VTColor, ConversionsAskForATarget) {
    EXPECT_EQ(assertsUntil(1, [] { VTHSVToRGB(0, 1, 1, nullptr); }), failedIn(unit, {"pRGB"}));
    EXPECT_EQ(assertsUntil(1, [] { VTHSLToRGB(0, 1, 1, nullptr); }), failedIn(unit, {"pRGB"}));
}

TEST(VTColorHSL, SetFromHSL) {
    const struct {
        float fHue;
        float fSaturation;
        float fLightness;
        float r;
        float g;
        float b;
    } rows[] = {
        {0, 1, 0.5f, 1, 0, 0},
        {120, 1, 0.5f, 0, 1, 0},
        {240, 1, 0.5f, 0, 0, 1},
        {30, 1, 0.5f, 1, 0.5f, 0},
        {60, 1, 0.5f, 1, 1, 0},
        {90, 1, 0.5f, 0.5f, 1, 0},
        {300, 1, 0.5f, 1, 0, 1},
        {360, 1, 0.5f, 1, 0, 0},
        {-120, 1, 0.5f, 0, 0, 1},
        {-240, 1, 0.5f, 0, 1, 0},
        {-360, 1, 0.5f, 1, 0, -2},                // Blue stands at -480, and once around still at -120: -120 / 60.
        {0, 0.5f, 0.25f, 0.375f, 0.125f, 0.125f}, // m2 = 0.25 * 1.5, m1 = 0.5 - m2.
        {0, 0.5f, 0.75f, 0.875f, 0.625f, 0.625f}, // m2 = 0.75 + 0.5 - 0.375, m1 = 1.5 - m2.
        {0, 9, 9, 1, 1, 1},                       // Both are clamped.
        {0, 1, -9, 0, 0, 0},
    };
    for (const auto& row : rows) {
        VTRGBColor color;
        EXPECT_TRUE(color.SetFromHSL(row.fHue, row.fSaturation, row.fLightness));
        SCOPED_TRACE(row.fHue);
        expectNear(color, row.r, row.g, row.b);
    }
}

TEST(VTColorHSL, SetFromHSLWithoutSaturationLooksAtNoHue) {
    VTRGBColor color;
    EXPECT_TRUE(color.SetFromHSL(9999, 0, 0.25f));
    EXPECT_EQ(color, VTRGBColor(0.25f, 0.25f, 0.25f));
    EXPECT_TRUE(color.SetFromHSL(fNaN, -3, 0.5f));
    EXPECT_EQ(color, VTRGBColor(0.5f, 0.5f, 0.5f));
}

TEST(VTColorHSL, SetFromHSLRefusesABadHue) {
    for (float fHue : {std::nextafter(360.0f, 400.0f), std::nextafter(-360.0f, -400.0f), fNaN}) {
        VTRGBColor color(0.1f, 0.2f, 0.3f);
        EXPECT_FALSE(color.SetFromHSL(fHue, 1, 0.5f)) << fHue;
        EXPECT_EQ(color, VTRGBColor(0.1f, 0.2f, 0.3f)) << fHue;
    }
}

TEST(VTColorHSL, GetAsHSLOfGreyIsZero) {
    const Triple hsl = hslOf(VTRGBColor(0.25f, 0.25f, 0.25f));
    EXPECT_EQ(hsl.a, 0);
    EXPECT_EQ(hsl.b, 0);
    EXPECT_EQ(hsl.c, 0.25f);
}

// Up to a lightness of 0.5 the difference is divided by itself, above it by 2 minus itself. The sum of the channels,
// which HSL takes, would give 0.1 / 0.3 in the first row.
TEST(VTColorHSL, SaturationIsOneUpToHalfLightness) {
    const struct {
        VTRGBColor color;
        float fSaturation;
    } rows[] = {
        {{0.2f, 0.1f, 0.1f}, 1},
        {{0.5f, 0.25f, 0.25f}, 1},
        {{0.75f, 0.25f, 0.25f}, 1}, // A lightness of exactly 0.5.
        {{1, 0.25f, 0.25f}, 0.75f / 1.25f},
        {{1, 0.75f, 0.75f}, 0.25f / 1.75f},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(hslOf(row.color).b, row.fSaturation) << row.color.r << " " << row.color.g;
    }
}

TEST(VTColorHSL, GetAsHSLHue) {
    const struct {
        VTRGBColor color;
        float fHue;
    } rows[] = {
        {{1, 0, 0}, 360},                         // 60 (6 + 1 - 1), which is not above 360.
        {{1, 0.5f, 0}, 30},                       // 60 (6 + 1 - 0.5) = 390, and once around.
        {{1, 0, 0.5f}, 330},                      // 60 (6 + 0.5 - 1).
        {{0, 1, 0}, 120},    {{0.5f, 1, 0}, 90},  // 60 (2 + 0.5 - 1).
        {{0, 0, 1}, 240},    {{0.5f, 0, 1}, 270}, // 60 (4 + 1 - 0.5).
        {{1, 1, 0}, 60},                          // A tie: green is looked at after red, 60 (2 + 0 - 1),
        {{0, 1, 1}, 180},                         // and blue after green, 60 (4 + 0 - 1),
        {{1, 0, 1}, 300},                         // and after red, 60 (4 + 1 - 0).
    };
    for (const auto& row : rows) {
        EXPECT_FLOAT_EQ(hslOf(row.color).a, row.fHue) << row.color.r << " " << row.color.g << " " << row.color.b;
    }
    VTRGBColor(1, 0, 0).GetAsHSL(nullptr, nullptr, nullptr);
}

} // namespace
