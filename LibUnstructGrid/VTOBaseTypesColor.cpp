#include "LibUnstructGrid/VTOBaseTypesColor.h"

#include "LibCore/rvfAssert.h"
#include "LibUnstructGrid/VTOBaseTypesColor_p.h"
#include "LibUnstructGrid/VTOMath.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace {

constexpr float FULL_CIRCLE = 360; // Degrees.

// Through int, since a float beyond the bytes has no byte.
unsigned char truncateToByte(float fValue) {
    return static_cast<unsigned char>(static_cast<int>(fValue));
}

unsigned char roundToByte(float fChannel) {
    return truncateToByte(VTRound(fChannel * 255, 1));
}

unsigned char scaleByte(unsigned char ubChannel, float fFactor) {
    return truncateToByte(std::clamp(static_cast<float>(ubChannel) * fFactor, 0.0f, 255.0f));
}

float byteToFloat(unsigned char ubChannel) {
    return static_cast<float>(ubChannel / 255.0);
}

bool isChannel(float fValue) {
    return fValue >= 0 && fValue <= 1;
}

float VTHueToRGBValue(float fM1, float fM2, float fHue) {
    if (fHue > FULL_CIRCLE) {
        fHue -= FULL_CIRCLE;
    } else if (fHue < 0) {
        fHue += FULL_CIRCLE;
    }
    if (fHue < 60) {
        return fM1 + (fM2 - fM1) * fHue / 60;
    }
    if (fHue < 180) {
        return fM2;
    }
    if (fHue < 240) {
        return fM1 + (fM2 - fM1) * (240 - fHue) / 60;
    }
    return fM1;
}

void setIfWanted(float* pfTarget, float fValue) {
    if (pfTarget) {
        *pfTarget = fValue;
    }
}

} // namespace

bool VTHSVToRGB(float fHue, float fSaturation, float fValue, VTRGBColor* pRGB) {
    RVF_ASSERT(pRGB);
    const float s = std::clamp(fSaturation, 0.0f, 1.0f);
    const float v = std::clamp(fValue, 0.0f, 1.0f);
    if (s == 0) {
        pRGB->Set(v, v, v);
        return true;
    }
    if (!std::isfinite(fHue) || fHue < 0) {
        return false;
    }
    const float h = std::fmod(fHue, FULL_CIRCLE) / 60;
    const int i = static_cast<int>(h);
    const float f = h - static_cast<float>(i);
    const float p = v * (1 - s);
    const float q = v * (1 - s * f);
    const float t = v * (1 - s * (1 - f));
    const VTRGBColor sectors[] = {{v, t, p}, {q, v, p}, {p, v, t}, {p, q, v}, {t, p, v}, {v, p, q}};
    *pRGB = sectors[i];
    return true;
}

void VTRGBToHSV(const VTRGBColor& color, float* pfHue, float* pfSaturation, float* pfValue) {
    const float fMax = std::max({color.r, color.g, color.b});
    const float fDelta = fMax - std::min({color.r, color.g, color.b});
    const float fSaturation = fMax == 0 ? 0 : fDelta / fMax;
    float fHue = -1;
    if (fSaturation != 0) {
        RVF_ASSERT(fDelta > 0);
        if (color.r == fMax) {
            fHue = (color.g - color.b) / fDelta;
        } else if (color.g == fMax) {
            fHue = 2 + (color.b - color.r) / fDelta;
        } else if (color.b == fMax) {
            fHue = 4 + (color.r - color.g) / fDelta;
        }
        fHue *= 60;
        if (fHue < 0) {
            fHue += FULL_CIRCLE;
        }
    }
    setIfWanted(pfHue, fHue);
    setIfWanted(pfSaturation, fSaturation);
    setIfWanted(pfValue, fMax);
}

bool VTHSLToRGB(float fHue, float fSaturation, float fLightness, VTRGBColor* pRGB) {
    RVF_ASSERT(pRGB);
    const float s = std::clamp(fSaturation, 0.0f, 1.0f);
    const float l = std::clamp(fLightness, 0.0f, 1.0f);
    if (s == 0) {
        pRGB->Set(l, l, l);
        return true;
    }
    if (!(fHue >= -FULL_CIRCLE && fHue <= FULL_CIRCLE)) {
        return false;
    }
    const float fM2 = l <= 0.5f ? l * (1 + s) : l + s - l * s;
    const float fM1 = 2 * l - fM2;
    pRGB->Set(VTHueToRGBValue(fM1, fM2, fHue + 120), VTHueToRGBValue(fM1, fM2, fHue),
              VTHueToRGBValue(fM1, fM2, fHue - 120));
    return true;
}

void VTRGBToHSL(const VTRGBColor& color, float* pfHue, float* pfSaturation, float* pfLightness) {
    const float fMax = std::max({color.r, color.g, color.b});
    const float fMin = std::min({color.r, color.g, color.b});
    const float fLightness = (fMax + fMin) / 2;
    float fHue = 0;
    float fSaturation = 0;
    if (fMax != fMin) {
        // Both denominators come from the difference of the two, where HSL takes their sum.
        const float fDelta = fMax - fMin;
        fSaturation = fDelta / (fLightness <= 0.5f ? fDelta : 2 - fDelta);
        const float fRedDist = (fMax - color.r) / fDelta;
        const float fGreenDist = (fMax - color.g) / fDelta;
        const float fBlueDist = (fMax - color.b) / fDelta;
        // On a tie the later channel wins.
        if (color.r == fMax) {
            fHue = 60 * (6 + fBlueDist - fGreenDist);
        }
        if (color.g == fMax) {
            fHue = 60 * (2 + fRedDist - fBlueDist);
        }
        if (color.b == fMax) {
            fHue = 60 * (4 + fGreenDist - fRedDist);
        }
        if (fHue > FULL_CIRCLE) {
            fHue -= FULL_CIRCLE;
        } else if (fHue < 0) {
            fHue += FULL_CIRCLE;
        }
    }
    setIfWanted(pfHue, fHue);
    setIfWanted(pfSaturation, fSaturation);
    setIfWanted(pfLightness, fLightness);
}

VTByteColor::VTByteColor(unsigned char ubRed, unsigned char ubGreen, unsigned char ubBlue)
    : r(ubRed), g(ubGreen), b(ubBlue) {}

VTByteColor::VTByteColor(const VTRGBColor& color)
    : r(roundToByte(color.r)), g(roundToByte(color.g)), b(roundToByte(color.b)) {}

VTByteColor::VTByteColor(const VTRGBAColor& color) {
    SetFromFloat(color.r, color.g, color.b);
}

void VTByteColor::Set(unsigned char ubRed, unsigned char ubGreen, unsigned char ubBlue) {
    *this = VTByteColor(ubRed, ubGreen, ubBlue);
}

void VTByteColor::SetFromFloat(float fRed, float fGreen, float fBlue) {
    Set(truncateToByte(fRed * 255), truncateToByte(fGreen * 255), truncateToByte(fBlue * 255));
}

bool VTByteColor::IsEqual(const VTByteColor& other, int iTolerance) const {
    return std::abs(r - other.r) <= iTolerance && std::abs(g - other.g) <= iTolerance &&
           std::abs(b - other.b) <= iTolerance;
}

void VTByteColor::Invert() {
    Set(static_cast<unsigned char>(255 - r), static_cast<unsigned char>(255 - g), static_cast<unsigned char>(255 - b));
}

void VTByteColor::Scale(float fFactor) {
    Set(scaleByte(r, fFactor), scaleByte(g, fFactor), scaleByte(b, fFactor));
}

VTRGBColor::VTRGBColor(float fRed, float fGreen, float fBlue) : r(fRed), g(fGreen), b(fBlue) {}

VTRGBColor::VTRGBColor(const VTByteColor& color)
    : r(byteToFloat(color.r)), g(byteToFloat(color.g)), b(byteToFloat(color.b)) {}

void VTRGBColor::Set(float fRed, float fGreen, float fBlue) {
    *this = VTRGBColor(fRed, fGreen, fBlue);
}

bool VTRGBColor::CheckRanges() const {
    return isChannel(r) && isChannel(g) && isChannel(b);
}

void VTRGBColor::Invert() {
    Set(1 - r, 1 - g, 1 - b);
}

float VTRGBColor::GetBrightness() const {
    return static_cast<float>(0.2125 * r + 0.7154 * g + 0.0721 * b);
}

VTRGBColor VTRGBColor::GetContrastColor() const {
    return GetBrightness() > 0.5f ? VTRGBColor(0, 0, 0) : VTRGBColor(1, 1, 1);
}

bool VTRGBColor::SetFromHSV(float fHue, float fSaturation, float fValue) {
    return VTHSVToRGB(fHue, fSaturation, fValue, this);
}

void VTRGBColor::GetAsHSV(float* pfHue, float* pfSaturation, float* pfValue) const {
    VTRGBToHSV(*this, pfHue, pfSaturation, pfValue);
}

bool VTRGBColor::SetFromHSL(float fHue, float fSaturation, float fLightness) {
    return VTHSLToRGB(fHue, fSaturation, fLightness, this);
}

void VTRGBColor::GetAsHSL(float* pfHue, float* pfSaturation, float* pfLightness) const {
    VTRGBToHSL(*this, pfHue, pfSaturation, pfLightness);
}

VTRGBAColor::VTRGBAColor(float fRed, float fGreen, float fBlue, float fAlpha)
    : r(fRed), g(fGreen), b(fBlue), a(fAlpha) {}

VTRGBAColor::VTRGBAColor(const VTByteColor& color, float fAlpha)
    : r(byteToFloat(color.r)), g(byteToFloat(color.g)), b(byteToFloat(color.b)), a(fAlpha) {}

void VTRGBAColor::Set(float fRed, float fGreen, float fBlue, float fAlpha) {
    *this = VTRGBAColor(fRed, fGreen, fBlue, fAlpha);
}

bool VTRGBAColor::CheckRanges() const {
    return isChannel(r) && isChannel(g) && isChannel(b) && isChannel(a);
}

void VTRGBAColor::Invert() {
    Set(1 - r, 1 - g, 1 - b, 1 - a);
}
