#pragma once

#include "LibCore/rvfExport.h"

#include <memory>

class VTIntArray;

/// A search index over a list of ints that stays as it is.
///
/// The index follows no change of the list: IndexSort() brings it up to date. It is written on the first search, so
/// that even searches want one thread at a time.
class ORV_API VTSortedIntArray {
public:
    /// Borrows the array.
    explicit VTSortedIntArray(const VTIntArray* paiArray);
    /// Borrows the buffer. Asserts "pData", "iNumItems > 0".
    VTSortedIntArray(const int* piData, int iNumItems);
    ~VTSortedIntArray();

    VTSortedIntArray(const VTSortedIntArray&) = delete;
    VTSortedIntArray& operator=(const VTSortedIntArray&) = delete;

    /// Makes the index anew, with a slot for each slot of the array; none for an array of no capacity. Asserts
    /// "m_paiArray".
    void IndexSort();

    /// The place of a value in the array, not in the index, or -1. Of equal items any one may be found. Makes the index
    /// when there is none. Asserts "m_paiArray".
    int IndexBinSearch(int iValue);

private:
    const VTIntArray* m_paiArray;
    std::unique_ptr<int[]> m_piSortedIndices;
    std::unique_ptr<VTIntArray> m_paiOwnArray;
};
