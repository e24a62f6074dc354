#pragma once

#include "LibUnstructGrid/VTOBoundingBox.h"
#include "Tests/LibUnstructGrid/VectorSupport.h"

#include <array>
#include <cmath>
#include <ostream>
#include <utility>

inline void PrintTo(const VTBox& box, std::ostream* out) {
    *out << testing::PrintToString(box.min) << " to " << testing::PrintToString(box.max);
}

inline void PrintTo(const VTPlane& plane, std::ostream* out) {
    *out << '(' << plane.a << ", " << plane.b << ", " << plane.c << ", " << plane.d << ')';
}

namespace orvtest {

/// The float 1e30, widened.
constexpr double floatE30 = 1.0000000150474662e30;

/// A valid box with room in it on every axis.
inline VTBox randomBox(PortableRandom& random, double size) {
    const VTVector a = randomVector(random, size);
    const VTVector b = randomVector(random, size);
    VTBox box(a, a);
    box.Add(b);
    box.Expand(0.01 * size);
    return box;
}

/// Three unit vectors at right angles, right-handed.
struct Basis {
    VTVector axes[3];
};

inline Basis randomBasis(PortableRandom& random) {
    Basis basis{{VT_XAXIS_VEC, VT_YAXIS_VEC, VT_ZAXIS_VEC}};
    const VTVector axis = randomVector(random, 1.0);
    const double angle = random.real(-3.0, 3.0);
    for (VTVector& v : basis.axes) {
        v.RotateVector(axis, angle);
    }
    return basis;
}

inline VTOrientedBoundingBox makeBox(const VTVector& center, const Basis& basis, const VTVector& extent) {
    VTOrientedBoundingBox box;
    box.SetCenter(center.x, center.y, center.z);
    box.SetBasis(basis.axes[0], basis.axes[1], basis.axes[2]);
    box.SetExtent(extent.x, extent.y, extent.z);
    return box;
}

/// A box with a unit basis and room in it.
inline VTOrientedBoundingBox randomOrientedBox(PortableRandom& random) {
    const Basis basis = randomBasis(random);
    const VTVector center = randomVector(random, 5);
    const double x = random.real(0.1, 3);
    const double y = random.real(0.1, 3);
    return makeBox(center, basis, VTVector(x, y, random.real(0.1, 3)));
}

inline std::array<VTVector, 8> verticesOf(const VTOrientedBoundingBox& box) {
    std::array<VTVector, 8> vertices;
    box.GetFaceSet(vertices.data(), nullptr, nullptr);
    return vertices;
}

/// The point at three fractions, each from 0 to 1, of the way from minimum to maximum.
inline VTVector pointAt(const VTBox& box, double x, double y, double z) {
    return VTVector(box.min.x + x * (box.max.x - box.min.x), box.min.y + y * (box.max.y - box.min.y),
                    box.min.z + z * (box.max.z - box.min.z));
}

/// Calls visit(x, y, z) for a grid of fractions from 0 to 1, both ends included.
template <class Visit>
void forGrid(int steps, Visit visit) {
    for (int i = 0; i <= steps; ++i) {
        for (int j = 0; j <= steps; ++j) {
            for (int k = 0; k <= steps; ++k) {
                visit(double(i) / steps, double(j) / steps, double(k) / steps);
            }
        }
    }
}

} // namespace orvtest
