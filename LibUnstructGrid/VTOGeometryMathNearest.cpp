#include "LibUnstructGrid/VTOGeometryMathNearest.h"

#include "LibCore/rvfAssert.h"
#include "LibUnstructGrid/VTOLinAlgebraVector.h"
#include "LibUnstructGrid/VTOMathVector.h"

namespace {

/// The squared distance from which on nodes are out of sight. It has always been a float.
constexpr double farthest = 1e30f;

template <typename IndexAt>
int closestNode(int iNumNodes, const VTVector* pNodes, const VTVector& point, IndexAt indexAt) {
    int iClosest = -1;
    double fClosest = farthest;
    for (int i = 0; i < iNumNodes; ++i) {
        const int iNode = indexAt(i);
        const double fL2Dist = VTPointL2Dist(point, pNodes[iNode]);
        if (fL2Dist < fClosest) {
            fClosest = fL2Dist;
            iClosest = iNode;
        }
    }
    return iClosest;
}

} // namespace

int VTFindClosestNode(const int* piConn, int iNumNodes, const VTVector* pNodes, const VTVector& point) {
    return closestNode(iNumNodes, pNodes, point, [piConn](int i) { return piConn[i]; });
}

int VTFindClosestNode(const VTVector* pNodes, int iNumNodes, const VTVector& point) {
    return closestNode(iNumNodes, pNodes, point, [](int i) { return i; });
}

int VTFindClosestEdge(const int* piConn, int iNumNodes, const VTVector* pNodes, const VTVector& point) {
    RVF_ASSERT(iNumNodes >= 2);
    if (iNumNodes == 2) {
        return 0;
    }
    int iClosest = iNumNodes - 1;
    double fClosest = VTLinePointL2Dist(pNodes[piConn[iNumNodes - 1]], pNodes[piConn[0]], point);
    for (int i = 0; i + 1 < iNumNodes; ++i) {
        const double fL2Dist = VTLinePointL2Dist(pNodes[piConn[i]], pNodes[piConn[i + 1]], point);
        if (fL2Dist < fClosest) {
            fClosest = fL2Dist;
            iClosest = i;
        }
    }
    return iClosest;
}
