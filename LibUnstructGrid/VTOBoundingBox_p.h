#pragma once

#include "LibUnstructGrid/VTOLinAlgebraVector.h"

#include <bit>

/// What the two boxes have in common: the numbering of the vertices and the way to the closest point.
namespace VTBoxes {

/// The vertices at the minimum and at the maximum of x, y and z, as masks with bit n for vertex n.
inline constexpr unsigned int lowVertices[3] = {153, 15, 204};
inline constexpr unsigned int highVertices[3] = {102, 240, 51};

constexpr bool isHigh(int iVertex, int iAxis) {
    return (highVertices[iAxis] >> iVertex & 1u) != 0;
}

/// The vertex of a mask, or -1 when it is not exactly one.
constexpr int vertexOf(unsigned int uiMask) {
    return std::has_single_bit(uiMask) ? std::countr_zero(uiMask) : -1;
}

/// Moves a point into the box around the origin with these half-sizes. Returns the square of the way.
inline double clampToHalfSizes(const VTVector& halfSizes, VTVector* pPoint) {
    double fL2Dist = 0.0;
    for (int i = 0; i < 3; ++i) {
        double& fCoord = (*pPoint)[i];
        const double fHalf = halfSizes[i];
        if (fCoord < -fHalf) {
            fL2Dist += (fCoord + fHalf) * (fCoord + fHalf);
            fCoord = -fHalf;
        } else if (fCoord > fHalf) {
            fL2Dist += (fCoord - fHalf) * (fCoord - fHalf);
            fCoord = fHalf;
        }
    }
    return fL2Dist;
}

} // namespace VTBoxes
