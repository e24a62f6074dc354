#pragma once

#include "LibCore/rvfAssert.h"
#include "LibCore/rvfExport.h"

#include <cmath>

namespace rvf {

/// Small numeric functions, in double and in float, and a checksum.
class ORV_API Math {
public:
    /// @name The C library's functions; angles in radians.
    /// @{
    static double cos(double x) {
        return std::cos(x);
    }
    static float cos(float x) {
        return std::cos(x);
    }
    static double acos(double x) {
        return std::acos(x);
    }
    static float acos(float x) {
        return std::acos(x);
    }
    static double sin(double x) {
        return std::sin(x);
    }
    static float sin(float x) {
        return std::sin(x);
    }
    static double asin(double x) {
        return std::asin(x);
    }
    static float asin(float x) {
        return std::asin(x);
    }
    static double tan(double x) {
        return std::tan(x);
    }
    static float tan(float x) {
        return std::tan(x);
    }
    static double atan(double x) {
        return std::atan(x);
    }
    static float atan(float x) {
        return std::atan(x);
    }
    static double sqrt(double x) {
        return std::sqrt(x);
    }
    static float sqrt(float x) {
        return std::sqrt(x);
    }
    static double floor(double x) {
        return std::floor(x);
    }
    static float floor(float x) {
        return std::floor(x);
    }
    static double ceil(double x) {
        return std::ceil(x);
    }
    static float ceil(float x) {
        return std::ceil(x);
    }
    static double fmod(double x, double y) {
        return std::fmod(x, y);
    }
    static float fmod(float x, float y) {
        return std::fmod(x, y);
    }
    static double log10(double x) {
        return std::log10(x);
    }
    static float log10(float x) {
        return std::log10(x);
    }
    /// @}

    static double toRadians(double degrees);
    static float toRadians(float degrees);
    static double toDegrees(double radians);
    static float toDegrees(float radians);

    /// The nearest whole number; halves go upwards, also below zero: -2.5 gives -2. VTRound() rounds them away from
    /// zero.
    static double round(double x);
    static float round(float x);

    /// Whether exactly one bit is set; false for 0.
    static bool isPow2(unsigned int x);
    /// The smallest power of two that is not below `x`; 1 for 0, and 0 above 0x80000000, where there is none.
    static unsigned int roundUpPow2(unsigned int x);

    /// Whether a value stands for a missing one: not below 1e308, so NaN counts too.
    static bool isUndefined(double x);
    /// Whether a value stands for a missing one: not below 2.99e38, so NaN counts too.
    static bool isUndefined(float x);

    /// Whether `value` lies from `minVal` to `maxVal`, both included. Asserts "minVal <= maxVal".
    template <typename T>
    static bool valueInRange(T value, T minVal, T maxVal) {
        RVF_ASSERT(minVal <= maxVal);
        return minVal <= value && value <= maxVal;
    }

    /// Whether two numbers are the same up to 1e-12 of the larger one, or both at most 1e-12 in magnitude. VTFeq() has
    /// no such absolute limit. False with one NaN, unless that is `b` or the other number is 0: then true.
    static bool areAlmostEqual(double a, double b);

    /// The CRC-32 of a block of memory, as zip and PNG use it: reflected polynomial 0xEDB88320, start value and final
    /// inversion 0xFFFFFFFF. 0 for no bytes; 0xCBF43926 for the nine ASCII digits 1 to 9.
    static unsigned int crc(const void* data, unsigned long size);
};

} // namespace rvf
