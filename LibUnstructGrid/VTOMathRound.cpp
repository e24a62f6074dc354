#include "LibUnstructGrid/VTOMathRound.h"

#include "LibUnstructGrid/VTOMathCompare.h"

#include <cmath>

namespace {

constexpr double squareLimit = 1e-18;

} // namespace

int VTFloatDIV(float fA, float fB) {
    return VTFeqZero(fB) ? VT_UNDEFINED_INT : static_cast<int>(fA / fB);
}

int VTSquared(int iA, bool bKeepSign) {
    const unsigned int uiSquare = static_cast<unsigned int>(iA) * static_cast<unsigned int>(iA);
    return static_cast<int>(bKeepSign && iA < 0 ? 0u - uiSquare : uiSquare);
}

float VTSquared(float fA, bool bKeepSign) {
    if (std::fabs(static_cast<double>(fA)) < squareLimit) {
        return 0.0f;
    }
    return bKeepSign && fA < 0.0f ? -(fA * fA) : fA * fA;
}

double VTSquared(double fA, bool bKeepSign) {
    if (std::fabs(fA) < squareLimit) {
        return 0.0;
    }
    return bKeepSign && fA < 0.0 ? -(fA * fA) : fA * fA;
}

unsigned int VTPow2(unsigned int n) {
    return 1u << (n % 32u);
}

unsigned int VTRoundUpPow2(unsigned int n) {
    if (n == 0) {
        return 1;
    }
    const double fLog = VTLog2(n);
    const auto uiWhole = static_cast<unsigned int>(fLog);
    return VTPow2(fLog == uiWhole ? uiWhole : uiWhole + 1);
}

double VTLog2(double fX) {
    return std::log(fX) / 0.6931471805599453;
}

float VTRound(float fX) {
    return static_cast<float>(VTRound(static_cast<double>(fX)));
}

double VTRound(double fX) {
    return fX < 0.0 ? std::ceil(fX - 0.5) : std::floor(fX + 0.5);
}

float VTRound(float fX, int iDecimals) {
    return static_cast<float>(VTRound(static_cast<double>(fX), iDecimals));
}

double VTRound(double fX, int iDecimals) {
    const double fTenfold = fX * std::pow(10.0, iDecimals + 1);
    return std::trunc((fTenfold + (fX < 0.0 ? -5.0 : 5.0)) / 10.0) / std::pow(10.0, iDecimals);
}

double VTRoundToDigits(double fValue, int iDigits) {
    if (VTFeqZero(fValue)) {
        return 0.0;
    }
    if (!std::isfinite(fValue)) {
        return fValue;
    }
    double fMantissa = std::fabs(fValue);
    int iExponent = 0;
    if (fMantissa > 1.0) {
        for (; fMantissa > 1.0; fMantissa /= 10.0) {
            ++iExponent;
        }
    } else {
        for (; fMantissa < 0.1; fMantissa *= 10.0) {
            --iExponent;
        }
    }
    const double fScale = std::pow(10.0, iDigits);
    const double fRounded = std::pow(10.0, iExponent) * std::floor(fMantissa * fScale + 0.5) / fScale;
    return fValue < 0.0 ? -fRounded : fRounded;
}
