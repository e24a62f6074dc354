#include "LibUnstructGrid/VTOSortFunctions.h"

#include "LibUnstructGrid/VTOSortSorter_p.h"

namespace vt::internal {
namespace {

int medianOfThree(int a, int b, int c) {
    if (a < b) {
        return b < c ? b : (a < c ? c : a);
    }
    return a < c ? a : (b < c ? c : b);
}

} // namespace

int partitionInts(int* piKeys, int iLeft, int iRight) {
    const int iPivot = medianOfThree(piKeys[iLeft], piKeys[middle(iLeft, iRight)], piKeys[iRight]);
    int i = iLeft - 1;
    int j = iRight + 1;
    while (true) {
        do {
            --j;
        } while (piKeys[j] > iPivot);
        do {
            ++i;
        } while (piKeys[i] < iPivot);
        if (i >= j) {
            return j;
        }
        std::swap(piKeys[i], piKeys[j]);
    }
}

void VTInitIndexArray(int* piArray, int iNumElmts) {
    RVF_ASSERT(piArray);
    RVF_ASSERT(iNumElmts > 0);
    for (int i = 0; i < iNumElmts; ++i) {
        piArray[i] = i;
    }
}

} // namespace vt::internal

template class VTSorterTemplate<int>;
template class VTSorterTemplate<float>;
template class VTSorterTemplate<double>;
template class VTSorterTemplate<long long>;

namespace {

// Bounded by the start of the buffer alone: what precedes the range ends each walk just as well.
void insertionSortInts(int* piKeys, int iLeft, int iRight) {
    for (int iPos = iLeft + 1; iPos <= iRight; ++iPos) {
        const int iTaken = piKeys[iPos];
        if (!(piKeys[iPos - 1] > iTaken)) {
            continue; // In sorted stretches nothing is written.
        }
        int j = iPos;
        do {
            piKeys[j] = piKeys[j - 1];
            --j;
        } while (j > 0 && piKeys[j - 1] > iTaken);
        piKeys[j] = iTaken;
    }
}

} // namespace

void VTIntBubbleSort(int* piArray, int iNumItems) {
    RVF_ASSERT(piArray);
    if (iNumItems < 1) {
        return;
    }
    VTSorterTemplate<int> sorter;
    sorter.BubbleSort(piArray, iNumItems);
}

void VTIntInsertionSort(int* piArray, int iNumItems) {
    RVF_ASSERT(piArray);
    if (iNumItems < 1) {
        return;
    }
    VTSorterTemplate<int> sorter;
    sorter.InsertionSort(piArray, iNumItems);
}

void VTFloatBubbleSort(float* pfArray, int iNumItems) {
    RVF_ASSERT(pfArray);
    if (iNumItems < 1) {
        return;
    }
    VTSorterTemplate<float> sorter;
    sorter.BubbleSort(pfArray, iNumItems);
}

void VTFloatInsertionSort(float* pfArray, int iNumItems) {
    RVF_ASSERT(pfArray);
    if (iNumItems < 1) {
        return;
    }
    VTSorterTemplate<float> sorter;
    sorter.InsertionSort(pfArray, iNumItems);
}

void VTIntQSort(int* piKeys, int iNumItems) {
    RVF_ASSERT(piKeys);
    if (iNumItems < 1) {
        return;
    }
    VTIntQuickSortRecursive(piKeys, 0, iNumItems - 1);
}

void VTIntQuickSortRecursive(int* piKeys, int iLeft, int iRight) {
    if (iLeft >= iRight) {
        return;
    }
    if (iRight - iLeft >= vt::internal::iPartitionSpan) {
        const int iSplit = vt::internal::partitionInts(piKeys, iLeft, iRight);
        VTIntQuickSortRecursive(piKeys, iLeft, iSplit);
        VTIntQuickSortRecursive(piKeys, iSplit + 1, iRight);
    } else {
        insertionSortInts(piKeys, iLeft, iRight);
    }
}

void VTInt64QSort(long long* piKeys, int iNumItems) {
    RVF_ASSERT(piKeys);
    if (iNumItems < 1) {
        return;
    }
    VTSorterTemplate<long long> sorter;
    sorter.QSort(piKeys, iNumItems);
}

void VTQSort(float* pfKeys, int iNumItems) {
    RVF_ASSERT(pfKeys);
    if (iNumItems < 1) {
        return;
    }
    VTSorterTemplate<float> sorter;
    sorter.QSort(pfKeys, iNumItems);
}

void VTQSort(double* pdKeys, int iNumItems) {
    RVF_ASSERT(pdKeys);
    if (iNumItems < 1) {
        return;
    }
    VTSorterTemplate<double> sorter;
    sorter.QSort(pdKeys, iNumItems);
}

void VTIntIndexQSort(const int* piKeys, int* piIndices, int iNumItems) {
    RVF_ASSERT(piKeys);
    RVF_ASSERT(piIndices);
    if (iNumItems < 1) {
        return;
    }
    VTSorterTemplate<int> sorter;
    vt::internal::sortIndexes(sorter, piKeys, piIndices, iNumItems);
}

void VTIndexQSort(const float* pfKeys, int* piIndices, int iNumItems) {
    RVF_ASSERT(pfKeys);
    RVF_ASSERT(piIndices);
    if (iNumItems < 1) {
        return;
    }
    VTSorterTemplate<float> sorter;
    vt::internal::sortIndexes(sorter, pfKeys, piIndices, iNumItems);
}

void VTIndexQSort(const double* pdKeys, int* piIndices, int iNumItems) {
    RVF_ASSERT(pdKeys);
    RVF_ASSERT(piIndices);
    if (iNumItems < 1) {
        return;
    }
    VTSorterTemplate<double> sorter;
    vt::internal::sortIndexes(sorter, pdKeys, piIndices, iNumItems);
}
