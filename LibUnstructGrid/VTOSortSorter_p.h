#pragma once

#include "LibCore/rvfAssert.h"
#include "LibUnstructGrid/VTOSortSorter.h"

#include <concepts>
#include <utility>

// The stages of the sorts, for the sources that bring a key type into being.

namespace vt::internal {

/// The distance of the last position from the first from which on a range is partitioned: 33 items or more.
constexpr int iPartitionSpan = 32;

/// The middle of two positions, truncated towards zero, also where their sum does not fit an int.
inline int middle(int iStart, int iStop) {
    return static_cast<int>((static_cast<long long>(iStart) + iStop) / 2);
}

struct SearchResult {
    int iFound = -1;
    int iInsertion = 0;
    bool bRanEmpty = false; ///< The search ended in a range without items.
};

/// Bisects the inclusive range. `equalsAt` and `isBelow` compare the wanted value with the item at a position.
template <typename EqualsAt, typename IsBelow>
SearchResult searchRange(int iStart, int iStop, EqualsAt equalsAt, IsBelow isBelow) {
    while (iStart < iStop) {
        const int iMiddle = middle(iStart, iStop);
        if (equalsAt(iMiddle)) {
            return {iMiddle, iMiddle, false};
        }
        if (isBelow(iMiddle)) {
            iStop = iMiddle - 1;
        } else {
            iStart = iMiddle + 1;
        }
    }
    if (iStop < iStart) {
        return {-1, iStart, true};
    }
    if (equalsAt(iStart)) {
        return {iStart, iStart, false};
    }
    return {-1, isBelow(iStart) ? iStart : iStart + 1, false};
}

/// The partition of VTIntQuickSortRecursive(): as partition(), but around the median of the first, the middle and the
/// last item. No virtual call per item.
int partitionInts(int* piKeys, int iLeft, int iRight);

/// Writes 0, 1, 2, ... Asserts a list and at least one entry.
void VTInitIndexArray(int* piArray, int iNumElmts);

/// Fills the index list with the identity and sorts it.
template <typename T>
void sortIndexes(VTSorterTemplate<T>& sorter, const T* pKeys, int* piIndices, int iNumItems) {
    VTInitIndexArray(piIndices, iNumItems);
    sorter.QSortIdx(pKeys, piIndices, iNumItems);
}

/// Hoare's partition: scans from both ends, the right one first, and exchanges what stops them.
template <typename T, typename ItemAt, typename Exchange>
int partition(const VTSorterTemplate<T>& sorter, int iLeft, int iRight, const T pivot, ItemAt itemAt,
              Exchange exchange) {
    int i = iLeft - 1;
    int j = iRight + 1;
    while (true) {
        do {
            --j;
        } while (sorter.CompGT(itemAt(j), pivot));
        do {
            ++i;
        } while (sorter.CompLT(itemAt(i), pivot));
        if (i >= j) {
            return j;
        }
        exchange(i, j);
    }
}

/// Passes of exchanges between neighbours, until one changes nothing.
template <typename T, typename ItemAt, typename Exchange>
void bubble(const VTSorterTemplate<T>& sorter, int iLeft, int iRight, ItemAt itemAt, Exchange exchange) {
    bool bExchanged = true;
    for (int iTop = iRight; bExchanged && iTop > iLeft; --iTop) {
        bExchanged = false;
        for (int i = iLeft; i < iTop; ++i) {
            if (sorter.CompGT(itemAt(i), itemAt(i + 1))) {
                exchange(i, i + 1);
                bExchanged = true;
            }
        }
    }
}

} // namespace vt::internal

template <typename T>
bool VTSorterTemplate<T>::CompGT(const T& a, const T& b) const {
    return a > b;
}

template <typename T>
bool VTSorterTemplate<T>::CompLT(const T& a, const T& b) const {
    return a < b;
}

template <typename T>
bool VTSorterTemplate<T>::CompEQ(const T& a, const T& b) const {
    return a == b;
}

template <typename T>
void VTSorterTemplate<T>::QSort(T* pData, int iNumItems) {
    RVF_ASSERT(pData);
    RVF_ASSERT(iNumItems > 0);
    Ground();
    m_pData = pData;
    QuickSortRecursive(0, iNumItems - 1);
    Ground();
}

template <typename T>
void VTSorterTemplate<T>::InsertionSort(T* pData, int iNumItems) {
    RVF_ASSERT(pData);
    RVF_ASSERT(iNumItems > 0);
    Ground();
    m_pData = pData;
    InsertionSortSubArray(0, iNumItems - 1);
    Ground();
}

template <typename T>
void VTSorterTemplate<T>::BubbleSort(T* pData, int iNumItems) {
    RVF_ASSERT(pData);
    RVF_ASSERT(iNumItems > 0);
    Ground();
    m_pData = pData;
    BubbleSortSubArray(0, iNumItems - 1);
    Ground();
}

template <typename T>
void VTSorterTemplate<T>::QSortIdx(const T* pKeys, int* piIndices, int iNumItems) {
    RVF_ASSERT(pKeys);
    RVF_ASSERT(piIndices);
    RVF_ASSERT(iNumItems > 0);
    Ground();
    m_pKeys = pKeys;
    m_piIndices = piIndices;
    QuickSortRecursive(0, iNumItems - 1);
    Ground();
}

template <typename T>
void VTSorterTemplate<T>::Ground() {
    m_pData = nullptr;
    m_pKeys = nullptr;
    m_piIndices = nullptr;
}

template <typename T>
void VTSorterTemplate<T>::QuickSortRecursive(int iLeft, int iRight) {
    if (iLeft >= iRight) {
        return;
    }
    if (iRight - iLeft >= vt::internal::iPartitionSpan) {
        const int iSplit = Partition(iLeft, iRight);
        QuickSortRecursive(iLeft, iSplit);
        QuickSortRecursive(iSplit + 1, iRight);
    } else if (m_piIndices) {
        InsertionSortIdxSubArray(iLeft, iRight);
    } else {
        InsertionSortSubArray(iLeft, iRight);
    }
}

template <typename T>
int VTSorterTemplate<T>::Partition(int iLeft, int iRight) {
    const int iMiddle = vt::internal::middle(iLeft, iRight);
    if (m_piIndices) {
        return vt::internal::partition<T>(
            *this, iLeft, iRight, m_pKeys[m_piIndices[iMiddle]],
            [this](int i) -> const T& { return m_pKeys[m_piIndices[i]]; }, [this](int i, int j) { ExchangeIdx(i, j); });
    }
    return vt::internal::partition<T>(
        *this, iLeft, iRight, m_pData[iMiddle], [this](int i) -> const T& { return m_pData[i]; },
        [this](int i, int j) { ExchangeVal(i, j); });
}

template <typename T>
void VTSorterTemplate<T>::InsertionSortSubArray(int iLeft, int iRight) {
    RVF_ASSERT(m_pData);
    for (int iPos = iLeft + 1; iPos <= iRight; ++iPos) {
        T taken = std::move(m_pData[iPos]);
        int j = iPos;
        while (j > iLeft && CompGT(m_pData[j - 1], taken)) {
            m_pData[j] = std::move(m_pData[j - 1]);
            --j;
        }
        m_pData[j] = std::move(taken);
    }
}

template <typename T>
void VTSorterTemplate<T>::InsertionSortIdxSubArray(int iLeft, int iRight) {
    RVF_ASSERT(m_pKeys);
    RVF_ASSERT(m_piIndices);
    for (int iPos = iLeft + 1; iPos <= iRight; ++iPos) {
        const int iTaken = m_piIndices[iPos];
        const T& key = m_pKeys[iTaken];
        int j = iPos;
        while (j > iLeft && CompGT(m_pKeys[m_piIndices[j - 1]], key)) {
            m_piIndices[j] = m_piIndices[j - 1];
            --j;
        }
        m_piIndices[j] = iTaken;
    }
}

template <typename T>
void VTSorterTemplate<T>::BubbleSortSubArray(int iLeft, int iRight) {
    if (m_piIndices) {
        RVF_ASSERT(m_pKeys);
        vt::internal::bubble<T>(
            *this, iLeft, iRight, [this](int i) -> const T& { return m_pKeys[m_piIndices[i]]; },
            [this](int i, int j) { ExchangeIdx(i, j); });
    } else {
        RVF_ASSERT(m_pData);
        vt::internal::bubble<T>(
            *this, iLeft, iRight, [this](int i) -> const T& { return m_pData[i]; },
            [this](int i, int j) { ExchangeVal(i, j); });
    }
}

template <typename T>
void VTSorterTemplate<T>::ExchangeVal(int iPosA, int iPosB) {
    std::swap(m_pData[iPosA], m_pData[iPosB]);
}

template <typename T>
void VTSorterTemplate<T>::ExchangeIdx(int iPosA, int iPosB) {
    std::swap(m_piIndices[iPosA], m_piIndices[iPosB]);
}

template <typename T>
int VTSorterTemplate<T>::BinarySearch(const T* pData, const T& value, int iStartIndex, int iStopIndex,
                                      int* piInsertionIndex) requires std::floating_point<T> {
    vt::internal::SearchResult result;
    if (pData) {
        result = vt::internal::searchRange(
            iStartIndex, iStopIndex, [&](int i) { return CompEQ(pData[i], value); },
            [&](int i) { return CompLT(value, pData[i]); });
    }
    if (piInsertionIndex) {
        *piInsertionIndex = result.iInsertion;
    }
    return result.iFound;
}
