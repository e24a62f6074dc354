#include "LibUnstructGrid/VTOSortSearch.h"

#include "LibUnstructGrid/VTOSortSorter_p.h"

#include <algorithm>

namespace {

template <typename T>
int findOccurrence(const T* pData, int iNumItems, T value, int iOccurrence) {
    int iSeen = 0;
    for (int i = 0; i < iNumItems; ++i) {
        if (pData[i] == value && ++iSeen == iOccurrence) {
            return i;
        }
    }
    return -1;
}

} // namespace

int VTBinarySearch(const int* piData, int iValue, int iStartIndex, int iStopIndex, int* piInsertionIndex) {
    vt::internal::SearchResult result;
    if (piData) {
        result = vt::internal::searchRange(
            iStartIndex, iStopIndex, [=](int i) { return piData[i] == iValue; },
            [=](int i) { return iValue < piData[i]; });
    }
    if (piInsertionIndex) {
        *piInsertionIndex = result.iInsertion;
    }
    return result.iFound;
}

int VTBinarySearch(const float* pfData, float fValue, int iStartIndex, int iStopIndex, int* piInsertionIndex) {
    RVF_ASSERT(pfData);
    RVF_ASSERT(iStartIndex >= 0);
    RVF_ASSERT(iStopIndex >= iStartIndex);
    VTSorterTemplate<float> sorter;
    return sorter.BinarySearch(pfData, fValue, iStartIndex, iStopIndex, piInsertionIndex);
}

int VTBinarySearch(const double* pdData, double fValue, int iStartIndex, int iStopIndex, int* piInsertionIndex) {
    RVF_ASSERT(pdData);
    RVF_ASSERT(iStartIndex >= 0);
    RVF_ASSERT(iStopIndex >= iStartIndex);
    VTSorterTemplate<double> sorter;
    return sorter.BinarySearch(pdData, fValue, iStartIndex, iStopIndex, piInsertionIndex);
}

int VTBinaryIndexSearch(const int* piKeys, const int* piIndices, int iValue, int iStartIndex, int iStopIndex,
                        int* piInsertionIndex) {
    if (!piKeys || !piIndices) {
        return -1;
    }
    const vt::internal::SearchResult result = vt::internal::searchRange(
        iStartIndex, iStopIndex, [=](int i) { return piKeys[piIndices[i]] == iValue; },
        [=](int i) { return iValue < piKeys[piIndices[i]]; });
    if (piInsertionIndex) {
        *piInsertionIndex = result.bRanEmpty ? 0 : result.iInsertion;
    }
    return result.iFound;
}

bool VTInsertIntInSortedList(int* piList, int iValue, int iNumEntriesInList, int iMaxEntriesInList, bool bUnique) {
    RVF_ASSERT(iNumEntriesInList < iMaxEntriesInList);
    RVF_ASSERT(iNumEntriesInList >= 0);
    if (iNumEntriesInList >= iMaxEntriesInList || iNumEntriesInList < 0) {
        return false;
    }
    int iPos = 0;
    if (iNumEntriesInList > 0) {
        const int iFound = VTBinarySearch(piList, iValue, 0, iNumEntriesInList - 1, &iPos);
        if (bUnique && iFound != -1) {
            return false;
        }
        std::copy_backward(piList + iPos, piList + iNumEntriesInList, piList + iNumEntriesInList + 1);
    }
    piList[iPos] = iValue;
    return true;
}

bool VTIsSorted(const int* piData, int iNumItems) {
    for (int i = 1; i < iNumItems; ++i) {
        if (piData[i - 1] > piData[i]) {
            return false;
        }
    }
    return true;
}

bool VTIsIndexSorted(const int* piKeys, const int* piIndices, int iNumItems) {
    for (int i = 1; i < iNumItems; ++i) {
        if (piKeys[piIndices[i - 1]] > piKeys[piIndices[i]]) {
            return false;
        }
    }
    return true;
}

int VTFind2Ints(int iValueA, int iValueB, const int* piPolygon, int iNumItems) {
    if (!piPolygon) {
        return -1;
    }
    for (int i = 0; i < iNumItems; ++i) {
        const int iFrom = piPolygon[i];
        const int iTo = piPolygon[i + 1 < iNumItems ? i + 1 : 0];
        if ((iFrom == iValueA && iTo == iValueB) || (iFrom == iValueB && iTo == iValueA)) {
            return i;
        }
    }
    return -1;
}

int VTFindInt(const int* piData, int iNumItems, int iValue, int iOccurrence) {
    return findOccurrence(piData, iNumItems, iValue, iOccurrence);
}

int VTFind(const unsigned char* pubData, int iNumItems, unsigned char ubValue, int iOccurrence) {
    return findOccurrence(pubData, iNumItems, ubValue, iOccurrence);
}
