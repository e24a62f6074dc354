#pragma once

struct VTRGBColor;

// What the colours forward to.

bool VTHSVToRGB(float fHue, float fSaturation, float fValue, VTRGBColor* pRGB);
void VTRGBToHSV(const VTRGBColor& color, float* pfHue, float* pfSaturation, float* pfValue);
bool VTHSLToRGB(float fHue, float fSaturation, float fLightness, VTRGBColor* pRGB);
void VTRGBToHSL(const VTRGBColor& color, float* pfHue, float* pfSaturation, float* pfLightness);
