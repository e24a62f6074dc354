#include "LibUnstructGrid/VTOGeometryMathCleanUp.h"

#include "LibCore/rvfAssert.h"
#include "LibUnstructGrid/VTOLinAlgebraVector.h"
#include "LibUnstructGrid/VTOSortFunctions.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace {

template <typename AreEqual>
void removeDuplicatedNodes(int* piPolygons, int iNumConnects, const VTVector* pNodes, int iNumNodes,
                           const int* piSortOrder, AreEqual areEqual) {
    RVF_ASSERT(piPolygons && pNodes);
    RVF_ASSERT(iNumConnects >= 0 && iNumNodes >= 0);
    if (iNumConnects < 1 || iNumNodes < 1) {
        return;
    }
    const auto count = static_cast<std::size_t>(iNumNodes);
    std::vector<int> sorted(count);
    std::vector<int> remap(count, -1);
    VTVectorIndexQSort(pNodes, sorted.data(), iNumNodes, piSortOrder);
    for (std::size_t i = 1; i < count; ++i) {
        const int iEarlier = sorted[i - 1];
        const int iLater = sorted[i];
        if (areEqual(pNodes[iEarlier], pNodes[iLater])) {
            remap[iLater] = remap[iEarlier] != -1 ? remap[iEarlier] : iEarlier;
        }
    }
    for (int i = 0; i < iNumConnects; ++i) {
        if (remap[piPolygons[i]] != -1) {
            piPolygons[i] = remap[piPolygons[i]];
        }
    }
}

/// Stores each run of equal nodes as one, the last unless it goes on with the first around the end.
int dropRepeats(const int* piConn, int iNumConn, int* piRetConn) {
    int iNumRetConn = 0;
    int iCurrConn = piConn[0];
    for (int i = 1; i < iNumConn; ++i) {
        const int iConn = piConn[i];
        if (iConn != iCurrConn) {
            piRetConn[iNumRetConn++] = iCurrConn;
            iCurrConn = iConn;
        }
    }
    if (iNumRetConn == 0) {
        return 0;
    }
    RVF_ASSERT(iCurrConn != piRetConn[iNumRetConn - 1]);
    if (iCurrConn != piRetConn[0]) {
        piRetConn[iNumRetConn++] = iCurrConn;
    }
    return iNumRetConn;
}

} // namespace

void VTRemoveDuplicatedNodes(int* piPolygons, int iNumConnects, const VTVector* pNodes, int iNumNodes) {
    static constexpr int aiSortOrder[] = {0, 1, 2};
    removeDuplicatedNodes(piPolygons, iNumConnects, pNodes, iNumNodes, aiSortOrder, VTVectorsEqual);
}

void VTRemoveDuplicatedNodes(int* piPolygons, int iNumConnects, const VTVector* pNodes, int iNumNodes,
                             double dTolerance, const int* piSortOrder) {
    const double dSquaredTolerance = dTolerance * dTolerance;
    removeDuplicatedNodes(
        piPolygons, iNumConnects, pNodes, iNumNodes, piSortOrder,
        [=](const VTVector& a, const VTVector& b) { return VTPointL2Dist(a, b) < dSquaredTolerance; });
}

int VTCleanCollapsedPolygon(const int* piConn, int iNumConn, bool bRemoveRepeats, int* piRetConn) {
    RVF_ASSERT(piConn && piRetConn);
    RVF_ASSERT(iNumConn >= 0);
    if (iNumConn < 2) {
        return 0;
    }
    if (bRemoveRepeats) {
        return dropRepeats(piConn, iNumConn, piRetConn);
    }
    if (std::all_of(piConn, piConn + iNumConn, [first = piConn[0]](int iConn) { return iConn == first; })) {
        return 0;
    }
    std::memmove(piRetConn, piConn, static_cast<std::size_t>(iNumConn) * sizeof(int));
    return iNumConn;
}

bool VTCleanCollapsedPolygons(int* piConn, int iNumConnects, unsigned char* pubNumPolyVerts, int iNumPolygons,
                              bool bRemoveRepeats, int* piNumRetConnects, int* piNumRetPolygons) {
    RVF_ASSERT(piConn && pubNumPolyVerts);
    RVF_ASSERT(piNumRetConnects && piNumRetPolygons);
    RVF_ASSERT(iNumConnects >= 0 && iNumPolygons >= 0);
    int iNumRetConnects = 0;
    int iNumRetPolygons = 0;
    const int* piSource = piConn;
    for (int i = 0; i < iNumPolygons; ++i) {
        const int iNumSourceVerts = pubNumPolyVerts[i];
        const int iNumPolyVerts =
            VTCleanCollapsedPolygon(piSource, iNumSourceVerts, bRemoveRepeats, piConn + iNumRetConnects);
        piSource += iNumSourceVerts;
        if (iNumPolyVerts > 0) {
            RVF_ASSERT(iNumPolyVerts > 1 && iNumPolyVerts < 256);
            pubNumPolyVerts[iNumRetPolygons++] = static_cast<unsigned char>(iNumPolyVerts);
            iNumRetConnects += iNumPolyVerts;
        }
    }
    *piNumRetConnects = iNumRetConnects;
    *piNumRetPolygons = iNumRetPolygons;
    return iNumRetConnects != iNumConnects || iNumRetPolygons != iNumPolygons;
}
