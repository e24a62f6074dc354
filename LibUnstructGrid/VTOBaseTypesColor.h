#pragma once

#include "LibCore/rvfExport.h"

struct VTRGBAColor;
struct VTRGBColor;

/// A colour of three bytes. Black at first.
struct ORV_API VTByteColor {
    unsigned char r = 0;
    unsigned char g = 0;
    unsigned char b = 0;

    VTByteColor() = default;
    VTByteColor(unsigned char ubRed, unsigned char ubGreen, unsigned char ubBlue);

    /// Rounds each channel times 255 to one decimal and cuts the decimal off, so that a byte colour comes back from a
    /// float colour unchanged.
    explicit VTByteColor(const VTRGBColor& color);
    /// Truncates each channel times 255 without any rounding, unlike the constructor from VTRGBColor. Drops alpha.
    explicit VTByteColor(const VTRGBAColor& color);

    bool operator==(const VTByteColor&) const = default;
    void Set(unsigned char ubRed, unsigned char ubGreen, unsigned char ubBlue);
    /// Truncates each channel times 255.
    void SetFromFloat(float fRed, float fGreen, float fBlue);

    /// Whether no channel differs by more than the tolerance.
    bool IsEqual(const VTByteColor& other, int iTolerance) const;

    /// 255 minus each channel.
    void Invert();
    /// Multiplies each channel, clamps it to 0 to 255 and truncates it.
    void Scale(float fFactor);
};

/// A colour of three floats from 0 to 1. Black at first.
struct ORV_API VTRGBColor {
    float r = 0;
    float g = 0;
    float b = 0;

    VTRGBColor() = default;
    VTRGBColor(float fRed, float fGreen, float fBlue);
    explicit VTRGBColor(const VTByteColor& color);

    /// Exact.
    bool operator==(const VTRGBColor&) const = default;
    void Set(float fRed, float fGreen, float fBlue);

    /// Every channel lies from 0 to 1, both included.
    bool CheckRanges() const;
    /// 1 minus each channel.
    void Invert();

    /// 0.2125 r + 0.7154 g + 0.0721 b.
    float GetBrightness() const;
    /// Black on a brightness above 0.5, otherwise white.
    VTRGBColor GetContrastColor() const;

    /// Hue in degrees, taken modulo 360, and saturation and value, clamped to 0 to 1. Without saturation the hue is
    /// not looked at. False for a negative hue, which leaves the colour as it is.
    bool SetFromHSV(float fHue, float fSaturation, float fValue);
    /// Hue in degrees, or -1 for a colour without saturation. Any pointer may be null. Asserts "fDelta > 0" for
    /// channels that are not numbers.
    void GetAsHSV(float* pfHue, float* pfSaturation, float* pfValue) const;

    /// Hue in degrees, and saturation and lightness, clamped to 0 to 1. Without saturation the hue is not looked at.
    /// False for a hue outside -360 to 360, which leaves the colour as it is. A hue below -240 gives a negative blue.
    bool SetFromHSL(float fHue, float fSaturation, float fLightness);
    /// Hue in degrees, or 0 for grey. Any pointer may be null. The saturation is not the usual one of HSL: it is
    /// exactly 1 for every colour of a lightness up to 0.5, and (max - min) / (2 - (max - min)) above, so that
    /// SetFromHSL() does not bring the colour back in general.
    void GetAsHSL(float* pfHue, float* pfSaturation, float* pfLightness) const;
};

/// A colour of four floats from 0 to 1. Opaque black at first.
struct ORV_API VTRGBAColor {
    float r = 0;
    float g = 0;
    float b = 0;
    float a = 1;

    VTRGBAColor() = default;
    VTRGBAColor(float fRed, float fGreen, float fBlue, float fAlpha);
    explicit VTRGBAColor(const VTByteColor& color, float fAlpha = 1);

    /// Exact.
    bool operator==(const VTRGBAColor&) const = default;
    void Set(float fRed, float fGreen, float fBlue, float fAlpha);

    /// Every channel lies from 0 to 1, both included.
    bool CheckRanges() const;
    /// 1 minus each channel. Alpha is one of them: an opaque colour becomes a transparent one.
    void Invert();
};
