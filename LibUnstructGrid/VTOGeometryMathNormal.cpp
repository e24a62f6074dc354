#include "LibUnstructGrid/VTOGeometryMathNormal.h"

#include "LibUnstructGrid/VTOLinAlgebraVector.h"

#include <cmath>

namespace {

/// Squared lengths of normals that are none. The first has always been a float.
constexpr double degenerateTriangle = 1e-25f;
constexpr double degeneratePolygon = 1e-80;

} // namespace

bool VTComputeTriangleNormal(const VTVector& p0, const VTVector& p1, const VTVector& p2, VTVector* pNormal,
                             bool bNormalize) {
    *pNormal = (p1 - p0) ^ (p2 - p0);
    if (!(pNormal->L2Norm() > degenerateTriangle)) {
        *pNormal = VT_ZAXIS_VEC;
        return false;
    }
    if (bNormalize) {
        pNormal->Normalize();
    }
    return true;
}

bool VTComputeTriangleNormal(const int* piTri, const VTVector* pNodes, VTVector* pNormal, bool bNormalize) {
    return VTComputeTriangleNormal(pNodes[piTri[0]], pNodes[piTri[1]], pNodes[piTri[2]], pNormal, bNormalize);
}

void VTComputePolygonNormal(const int* piConn, int iNumNodes, const VTVector* pNodes, VTVector* pNormal) {
    const auto nodeAt = [=](int i) -> const VTVector& { return pNodes[piConn ? piConn[i] : i]; };
    const int iStep = iNumNodes == 6 || iNumNodes == 8 ? 2 : 1;
    VTVector largest = VT_ZERO_VEC;
    double fLargest = -1.0;
    for (int i = iStep; i + iStep < iNumNodes; i += iStep) {
        const VTVector normal = (nodeAt(i) - nodeAt(0)) ^ (nodeAt(i + iStep) - nodeAt(0));
        if (normal.L2Norm() > fLargest) {
            fLargest = normal.L2Norm();
            largest = normal;
        }
    }
    // Not by VTVector::Normalize(), whose limit is higher.
    *pNormal = fLargest > degeneratePolygon ? largest / std::sqrt(fLargest) : VT_ZAXIS_VEC;
}

void VTGetPolyCenteroid(const int* piConn, int iNumNodes, const VTVector* pNodes, VTVector* pCenter,
                        const int* piNodeMap) {
    VTVector sum = VT_ZERO_VEC;
    for (int i = 0; i < iNumNodes; ++i) {
        sum += pNodes[piNodeMap ? piNodeMap[piConn[i]] : piConn[i]];
    }
    *pCenter = sum / iNumNodes;
}
