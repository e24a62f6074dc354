#pragma once

#include "LibUnstructGrid/VTOArrayInt.h"
#include "LibUnstructGrid/VTOBaseTypesIdent.h"

/// An array of result ids: two parallel VTIntArray, for the result ids and for the section ids. Counts, capacities and
/// growth steps follow the rules of VTIntArray, whose checks each of the two makes again.
class ORV_API VTResultIDArray {
public:
    VTResultIDArray() = default;
    VTResultIDArray(const VTResultIDArray& other) = default;

    VTResultIDArray& operator=(const VTResultIDArray& other) = default;
    /// Exact, item by item.
    bool operator==(const VTResultIDArray& other) const;

    void Alloc(int iNumItems, int iGrowBy, bool bSetNumItems);
    void Realloc(int iNewSize, int iGrowBy, bool bSetNumItems);
    void Free();

    /// Asserts "m_aiResultIDs.GetNumItems() == m_aiSectionIDs.GetNumItems()".
    int GetNumItems() const;
    /// Asserts "m_aiResultIDs.GetNumAllocated() == m_aiSectionIDs.GetNumAllocated()".
    int GetNumAllocated() const;
    void SetNumItems(int iNumItems);

    /// By value, put together from the two arrays. Asserts "iIndex >= 0", "iIndex < GetNumItems()".
    VTResultID Get(int iIndex) const;
    /// Asserts "iIndex >= 0", "iIndex < GetNumItems()".
    void Set(int iIndex, const VTResultID& id);

    const VTIntArray& GetResultIDs() const;
    const VTIntArray& GetSectionIDs() const;

    /// Asserts "GetNumItems() < GetNumAllocated()". Never grows.
    void Add(const VTResultID& id);
    void AddGrow(const VTResultID& id);
    /// Adds what Find() does not find. Never grows. The flag, which may be null, takes whether it was added.
    void AddUnique(const VTResultID& id, bool* pbAdded = nullptr);
    /// The same for each item of an array. The flag becomes true when any was added; it is not cleared first, unlike in
    /// VTIntArray, so that several calls can share it.
    void AddUnique(const VTResultIDArray& aIDs, bool* pbAdded = nullptr);
    void AddUniqueGrow(const VTResultID& id, bool* pbAdded = nullptr);
    void AddUniqueGrow(const VTResultIDArray& aIDs, bool* pbAdded = nullptr);

    /// -1 means up to the last item. The capacity stays. Asserts "iStartIndex >= 0", "iNumItems >= 0",
    /// "iStartIndex + iNumItems <= GetNumItems()".
    void Delete(int iStartIndex, int iNumItems);
    /// Removes every entry of a negative result id.
    void DeleteNoResults();

    /// The first item from the start index on that has both ids, or -1.
    int Find(const VTResultID& id, int iStartIndex = 0) const;

    /// By result id, then by section id. With the flag, checks first whether there is anything to do.
    void Sort(bool bCheckIfSorted);
    /// By result id, then by section id; equal neighbours are sorted.
    bool IsSorted() const;

private:
    void SortByResultID();

    VTIntArray m_aiResultIDs;
    VTIntArray m_aiSectionIDs;
};
