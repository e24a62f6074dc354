#include "LibUnstructGrid/VTOLinAlgebraVector.h"
#include "LibUnstructGrid/VTOSortFunctions.h"
#include "LibUnstructGrid/VTOSortSorter_p.h"

template <>
bool VTSorterTemplate<VTVector>::CompGT(const VTVector& a, const VTVector& b) const {
    for (int iComponent : m_aiSortOrder) {
        if (a[iComponent] != b[iComponent]) {
            return a[iComponent] > b[iComponent];
        }
    }
    return false;
}

template <>
bool VTSorterTemplate<VTVector>::CompLT(const VTVector& a, const VTVector& b) const {
    for (int iComponent : m_aiSortOrder) {
        if (a[iComponent] != b[iComponent]) {
            return a[iComponent] < b[iComponent];
        }
    }
    return false;
}

template class VTSorterTemplate<VTVector>;

void VTVectorIndexQSort(const VTVector* pKeys, int* piIndices, int iNumItems, const int* piSortOrder) {
    RVF_ASSERT(pKeys);
    RVF_ASSERT(piIndices);
    RVF_ASSERT(piSortOrder);
    if (iNumItems < 1) {
        return;
    }
    VTSorterTemplate<VTVector> sorter;
    sorter.SetSortOrder(piSortOrder[0], piSortOrder[1], piSortOrder[2]);
    vt::internal::sortIndexes(sorter, pKeys, piIndices, iNumItems);
}
