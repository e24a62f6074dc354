#pragma once

#include "LibUnstructGrid/VTOArrayInt.h"

/// An array of ints with a search index, which leaves the items in their order.
///
/// Alloc(), Realloc() and Free() drop the index, and so does every operation that goes through them. Writing items does
/// not: an index that no longer fits the items finds wrong places until IndexSort() or DeleteIndices().
class ORV_API VTIntIndexArray : public VTIntArray {
public:
    VTIntIndexArray() = default;
    /// Copies like the assignment, with its surprise.
    VTIntIndexArray(const VTIntIndexArray& other);
    ~VTIntIndexArray() override;

    /// Takes over the other's slots and its index, but neither its count nor its growth step: afterwards all slots
    /// count as items, also those behind the other's items, and the growth step is -1. The index goes on covering what
    /// it covered. Asserts "!m_bSharedData", "this != &other".
    VTIntIndexArray& operator=(const VTIntIndexArray& other);

    /// Drops the index, and then as in VTIntArray.
    void Alloc(int iNumItems, int iGrowBy, bool bSetNumItems) override;
    /// Drops the index, and then as in VTIntArray.
    void Realloc(int iNewSize, int iGrowBy, bool bSetNumItems) override;
    /// Drops the index, and then as in VTIntArray.
    void Free() override;

    /// Makes the index anew and returns whether there is one; there is none without items. Asserts "m_piData".
    bool IndexSort();

    /// The place of a value in the array, or -1. Of equal items any one may be found. Makes the index when there is
    /// none.
    int IndexBinSearch(int iValue);
    /// The same with the index as it stands; -1 without one, after asserting "m_piIndices".
    int IndexBinSearch(int iValue) const;

    void DeleteIndices();

private:
    int Search(int iValue) const;

    int* m_piIndices = nullptr;
    int m_iNumIndices = 0; // How many entries of the index have been written. There may be room for more.
};
