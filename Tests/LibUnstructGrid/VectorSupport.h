#pragma once

#include "LibUnstructGrid/VTOLinAlgebra.h"
#include "Tests/LibUnstructGrid/PortableRandom.h"

#include <gtest/gtest.h>

#include <cmath>
#include <ostream>

inline void PrintTo(const VTVector& v, std::ostream* out) {
    *out << '(' << v.x << ", " << v.y << ", " << v.z << ')';
}

inline void PrintTo(const VTVector4& v, std::ostream* out) {
    *out << '(' << v.x << ", " << v.y << ", " << v.z << ", " << v.w << ')';
}

inline void PrintTo(const VTMatrix4& m, std::ostream* out) {
    for (int i = 0; i < 16; ++i) {
        *out << (i % 4 == 0 ? " | " : " ") << m.v[i];
    }
}

namespace orvtest {

inline testing::AssertionResult near(const VTVector& a, const VTVector& b, double tolerance) {
    if (std::fabs(a.x - b.x) <= tolerance && std::fabs(a.y - b.y) <= tolerance && std::fabs(a.z - b.z) <= tolerance) {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << testing::PrintToString(a) << " is not near " << testing::PrintToString(b);
}

inline testing::AssertionResult near(const VTVector4& a, const VTVector4& b, double tolerance) {
    if (near(VTVector(a.x, a.y, a.z), VTVector(b.x, b.y, b.z), tolerance) && std::fabs(a.w - b.w) <= tolerance) {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << testing::PrintToString(a) << " is not near " << testing::PrintToString(b);
}

inline testing::AssertionResult near(const VTMatrix4& a, const VTMatrix4& b, double tolerance) {
    for (int i = 0; i < 16; ++i) {
        if (!(std::fabs(a.v[i] - b.v[i]) <= tolerance)) {
            return testing::AssertionFailure()
                   << testing::PrintToString(a) << " is not near " << testing::PrintToString(b);
        }
    }
    return testing::AssertionSuccess();
}

inline VTMatrix4 matrixOf(std::initializer_list<double> elements) {
    VTMatrix4 m;
    m.SetFromArray(elements.begin());
    return m;
}

/// 1 to 16 in storage order.
inline VTMatrix4 countingMatrix() {
    return matrixOf({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16});
}

inline VTVector randomVector(PortableRandom& random, double size) {
    const double x = random.real(-size, size);
    const double y = random.real(-size, size);
    return VTVector(x, y, random.real(-size, size));
}

} // namespace orvtest
