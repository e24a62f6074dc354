#pragma once

#include "LibCore/rvfExport.h"
#include "LibUnstructGrid/VTOLinAlgebraMatrix4.h"

#include <cmath>

/// A point or a direction in three floats, for arrays that have to be small.
class ORV_API VTVectorFloat {
public:
    float x;
    float y;
    float z;

    /// The components are not initialised.
    VTVectorFloat() = default;
    constexpr VTVectorFloat(float fX, float fY, float fZ) : x(fX), y(fY), z(fZ) {}

    void Set(float fX, float fY, float fZ) {
        x = fX;
        y = fY;
        z = fZ;
    }

    float Length() const {
        return std::sqrt(x * x + y * y + z * z);
    }

    /// As VTVector::TransformPoint(), but all in float: each element of the matrix is narrowed first.
    void TransformPoint(const VTMatrix4& matrix) {
        const auto m = [&matrix](int iElement) { return static_cast<float>(matrix.v[iElement]); };
        Set(m(0) * x + m(4) * y + m(8) * z + m(12), m(1) * x + m(5) * y + m(9) * z + m(13),
            m(2) * x + m(6) * y + m(10) * z + m(14));
    }
};
