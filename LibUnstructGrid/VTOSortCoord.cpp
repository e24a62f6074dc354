#include "LibUnstructGrid/VTOBaseTypes2D.h"
#include "LibUnstructGrid/VTOSortFunctions.h"
#include "LibUnstructGrid/VTOSortSorter_p.h"

namespace {

/// What settles the order of two coordinates: their y, or their x.
bool decidesY(const VTIntCoord2D& a, const VTIntCoord2D& b, bool bYFirst) {
    return bYFirst ? a.y != b.y : a.x == b.x;
}

} // namespace

template <>
bool VTSorterTemplate<VTIntCoord2D>::CompGT(const VTIntCoord2D& a, const VTIntCoord2D& b) const {
    return decidesY(a, b, m_aiSortOrder[0] != 0) ? a.y > b.y : a.x > b.x;
}

template <>
bool VTSorterTemplate<VTIntCoord2D>::CompLT(const VTIntCoord2D& a, const VTIntCoord2D& b) const {
    return decidesY(a, b, m_aiSortOrder[0] != 0) ? a.y < b.y : a.x < b.x;
}

template class VTSorterTemplate<VTIntCoord2D>;

void VTIntCoord2DIndexQSort(const VTIntCoord2D* pKeys, int* piIndices, int iNumItems, bool bXFirst) {
    RVF_ASSERT(pKeys);
    RVF_ASSERT(piIndices);
    if (iNumItems < 1) {
        return;
    }
    VTSorterTemplate<VTIntCoord2D> sorter;
    if (bXFirst) {
        sorter.SetSortOrder(0, 1, 2);
    } else {
        sorter.SetSortOrder(1, 0, 2);
    }
    vt::internal::sortIndexes(sorter, pKeys, piIndices, iNumItems);
}
