#pragma once

#include "LibCore/rvfExport.h"

class VTMatrix4;

/// Four doubles: a homogeneous point, the coefficients of a plane, or a quaternion with its scalar part w last.
class ORV_API VTVector4 {
public:
    double x;
    double y;
    double z;
    double w;

    /// The components are not initialised.
    VTVector4() = default;
    constexpr VTVector4(double fX, double fY, double fZ, double fW) : x(fX), y(fY), z(fZ), w(fW) {}

    void Set(double fX, double fY, double fZ, double fW) {
        x = fX;
        y = fY;
        z = fZ;
        w = fW;
    }

    /// Exact.
    bool operator==(const VTVector4& other) const {
        return x == other.x && y == other.y && z == other.z && w == other.w;
    }

    bool operator!=(const VTVector4& other) const {
        return !(*this == other);
    }

    /// Takes x, y and z as a point, that is with a w of 1 whatever w is, and transforms it. The w that comes out is
    /// v[3] x + v[7] y + v[11] z + v[15].
    void TransformPoint(const VTMatrix4& matrix);
};
