#include "LibUnstructGrid/VTOSortFunctions.h"
#include "LibUnstructGrid/VTOSortSorter_p.h"
#include "LibUnstructGrid/VTOString.h"

template class VTSorterTemplate<VTString>;

void VTStringQSort(VTString* psKeys, int iNumItems) {
    RVF_ASSERT(psKeys);
    if (iNumItems < 1) {
        return;
    }
    VTSorterTemplate<VTString> sorter;
    sorter.QSort(psKeys, iNumItems);
}

void VTStringIndexQSort(const VTString* psKeys, int* piIndices, int iNumItems) {
    RVF_ASSERT(psKeys);
    RVF_ASSERT(piIndices);
    if (iNumItems < 1) {
        return;
    }
    VTSorterTemplate<VTString> sorter;
    vt::internal::sortIndexes(sorter, psKeys, piIndices, iNumItems);
}
