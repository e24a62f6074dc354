#pragma once

#include "LibUnstructGrid/VTOArrayBase.h"
#include "LibUnstructGrid/VTOMathConstants.h"

/// An array of ints, and the pattern of all other arrays.
///
/// Undefined items are those equal to VT_UNDEFINED_INT. Only operations with a flag for it look for them.
class ORV_API VTIntArray : public VTArray {
public:
    VTIntArray() = default;
    VTIntArray(const VTIntArray& other);
    ~VTIntArray() override;

    /// Takes over the other's items, capacity (the slots behind the items are copied too) and growth step; frees this
    /// array when the other has no buffer. Asserts "!m_bSharedData", "this != &other". An array assigned to itself
    /// keeps its buffer, but its count becomes its capacity.
    VTIntArray& operator=(const VTIntArray& other);

    /// Exact, item by item.
    bool operator==(const VTIntArray& other) const;

    /// A literal list in an array of growth step 9. The first item is taken as it is, each further one unless it is
    /// VT_UNDEFINED_INT.
    static VTIntArray Make(int iItem0, int iItem1 = VT_UNDEFINED_INT, int iItem2 = VT_UNDEFINED_INT,
                           int iItem3 = VT_UNDEFINED_INT, int iItem4 = VT_UNDEFINED_INT, int iItem5 = VT_UNDEFINED_INT,
                           int iItem6 = VT_UNDEFINED_INT, int iItem7 = VT_UNDEFINED_INT);

    void Alloc(int iNumItems, int iGrowBy, bool bSetNumItems) override;
    void Realloc(int iNewSize, int iGrowBy, bool bSetNumItems) override;
    void Free() override;

    /// Asserts "iIndex >= 0", "iIndex < m_iNumItems".
    int& Get(int iIndex) {
        RVF_ASSERT(iIndex >= 0);
        RVF_ASSERT(iIndex < m_iNumItems);
        return m_piData[iIndex];
    }

    /// Asserts "iIndex >= 0", "iIndex < m_iNumItems".
    const int& Get(int iIndex) const {
        RVF_ASSERT(iIndex >= 0);
        RVF_ASSERT(iIndex < m_iNumItems);
        return m_piData[iIndex];
    }

    /// Like Get().
    int& operator[](int iIndex) {
        return Get(iIndex);
    }

    /// Like Get().
    const int& operator[](int iIndex) const {
        return Get(iIndex);
    }

    /// Asserts "iIndex >= 0", "iIndex < m_iNumItems".
    void Set(int iIndex, int iValue) {
        RVF_ASSERT(iIndex >= 0);
        RVF_ASSERT(iIndex < m_iNumItems);
        m_piData[iIndex] = iValue;
    }

    /// The buffer, or null.
    int* GetDataPtr() {
        return m_piData;
    }

    /// The buffer, or null.
    const int* GetDataPtr() const {
        return m_piData;
    }

    /// The place of an item. Asserts "iIndex >= 0 && iIndex < m_iNumItems".
    int* GetDataPtr(int iIndex) {
        RVF_ASSERT(iIndex >= 0 && iIndex < m_iNumItems);
        return m_piData + iIndex;
    }

    /// The place of an item. Asserts "iIndex >= 0 && iIndex < m_iNumItems".
    const int* GetDataPtr(int iIndex) const {
        RVF_ASSERT(iIndex >= 0 && iIndex < m_iNumItems);
        return m_piData + iIndex;
    }

    /// Takes over a buffer that was made with `new int[]` and is full of items. Asserts "pData", "iNumItems > 0".
    void SetDataPtr(int* pData, int iNumItems);
    /// Borrows a buffer full of items. Asserts "pData", "iNumItems > 0".
    void SetSharedDataPtr(int* pData, int iNumItems);
    /// Gives the buffer away and leaves the array without one. What was borrowed goes on counting as borrowed: the
    /// array refuses to allocate until Free().
    int* StealData();

    /// Writes every slot of the buffer, not just the items.
    void SetAllItems(int iValue);
    /// Writes every slot of the buffer, not just the items.
    void SetAllItemsZero();
    /// Writes `iStartValue` and its successors. The count grows to `iNumItems` and never shrinks. Asserts
    /// "m_iNumAllocated >= iNumItems" once it has made the room.
    void AssignConsecutive(int iNumItems, int iStartValue);
    /// A negative count means up to the last item. Asserts "iStartIndex >= 0 && iStartIndex < m_iNumItems"; a count
    /// that runs past the items is not checked.
    void SetRange(int iStartIndex, int iNumItems, int iValue);

    /// Copies items to `iStartDstIndex` and on. The array grows when it must, to exactly the size it needs, and the
    /// items must not be its own then; the count never shrinks. Asserts "pData", "iNumItems >= 0",
    /// "iStartDstIndex >= 0", and "m_piData && pData", "m_iNumAllocated >= iNumItems" when all items are replaced.
    void CopyData(const int* pData, int iNumItems, int iStartDstIndex = 0);
    /// The same from `iStartSrcIndex` of an array; a count of -1 means up to its last item. Asserts
    /// "iNumItemsToCopy >= -1", "iNumItemsToCopy <= aiValues.GetNumItems() - iStartSrcIndex", "iStartDstIndex >= 0",
    /// "iStartSrcIndex >= 0", "iStartSrcIndex < aiValues.GetNumItems()", then
    /// "iNumItemsToCopy >= 0 && iNumItemsToCopy <= aiValues.GetNumItems()" and "pSrcData".
    void CopyData(const VTIntArray& aiValues, int iNumItemsToCopy = -1, int iStartDstIndex = 0, int iStartSrcIndex = 0);
    /// Makes the other array hold a range of this one; a negative count means up to the last item. Asserts
    /// "(iStartIndex >= 0) || (iStartIndex < m_iNumItems)", which no start can fail, and "paiValues"; a range beyond
    /// the items is only noticed item by item.
    void GetRange(VTIntArray* paiValues, int iStartIndex, int iNumItems) const;

    /// Asserts "m_iNumItems < m_iNumAllocated". Never grows.
    void Add(int iValue) {
        RVF_ASSERT(m_iNumItems < m_iNumAllocated);
        m_piData[m_iNumItems++] = iValue;
    }

    /// Asserts "(m_iNumItems + aiValues.GetNumItems()) <= m_iNumAllocated". Never grows.
    void Add(const VTIntArray& aiValues);
    /// Asserts "piValues", "iNumItems >= 0", "(m_iNumItems + iNumItems) <= m_iNumAllocated". Never grows.
    void Add(const int* piValues, int iNumItems);
    /// Asserts "!m_bSharedData".
    void AddGrow(int iValue);
    /// Asserts "!m_bSharedData".
    void AddGrow(const VTIntArray& aiValues);
    /// The values must not be in this array. Asserts "!m_bSharedData" and what Add() asserts.
    void AddGrow(const int* piValues, int iNumItems);
    /// Makes the array long enough for the index and sets the item. Slots skipped over become items and keep whatever
    /// the memory held. Asserts "!m_bSharedData".
    void SetAtGrow(int iIndex, int iValue);
    /// Drops the first item, moves the others one place to the front and writes the value last: a sliding window.
    /// Asserts "GetNumItems() > 0".
    void AddKeepNumItems(int iValue);

    // In all that follows the flag pointer, which may be null, takes whether anything was added; of an array, whether
    // any of its items was.

    /// Adds what Find() does not find. Never grows.
    void AddUnique(int iValue, bool* pbAdded = nullptr);
    void AddUnique(const VTIntArray& aiValues, bool* pbAdded = nullptr);
    /// Asserts "!m_bSharedData".
    void AddUniqueGrow(int iValue, bool* pbAdded = nullptr);
    /// Asserts "!m_bSharedData".
    void AddUniqueGrow(const VTIntArray& aiValues, bool* pbAdded = nullptr);

    /// Adds to sorted items, at a place that keeps them sorted; equal items are kept. Asserts
    /// "m_iNumItems < m_iNumAllocated".
    void AddSorted(int iValue);
    void AddSorted(const VTIntArray& aiValues);
    /// Asserts "iInsertionIndex >= 0", "iInsertionIndex <= m_iNumItems".
    void AddSortedGrow(int iValue);
    void AddSortedGrow(const VTIntArray& aiValues);
    /// Adds to sorted items unless the value is there. Asserts "m_iNumItems < m_iNumAllocated", even for a value that
    /// is there, and for one that is not "iInsertionIndex >= 0", "iInsertionIndex <= m_iNumItems".
    void AddSortedUnique(int iValue, bool* pbAdded = nullptr);
    void AddSortedUnique(const VTIntArray& aiValues, bool* pbAdded = nullptr);
    /// Adds to sorted items unless the value is there. `piIndex` takes the place of the new item and is left alone when
    /// the value was there already. Asserts "!m_bSharedData", and for a value that is not there
    /// "iInsertionIndex >= 0", "iInsertionIndex <= m_iNumItems".
    void AddSortedUniqueGrow(int iValue, bool* pbAdded = nullptr, int* piIndex = nullptr);
    void AddSortedUniqueGrow(const VTIntArray& aiValues, bool* pbAdded = nullptr);

    /// Grows when full. Asserts "(iIndex >= 0) && (iIndex <= m_iNumItems)", "m_iNumItems <= m_iNumAllocated".
    void Insert(int iIndex, int iValue);
    /// Inserts another array, which must not be this one. In front of items it grows already when the sum of the
    /// counts reaches the capacity. Asserts "(iStartIndex >= 0) && (iStartIndex <= m_iNumItems)".
    void Insert(int iStartIndex, const VTIntArray& aiValues);

    /// -1 means up to the last item. The capacity stays. Asserts "iStartIndex >= 0", "iNumItems >= 0",
    /// "iStartIndex + iNumItems <= GetNumItems()".
    void Delete(int iStartIndex, int iNumItems);
    /// Removes all items of a value, keeps the order of the others, and returns whether there were any.
    bool DeleteByValue(int iValue);
    /// The same for every item of another array, which must not be this one.
    bool DeleteByValue(const VTIntArray& aiValues);
    /// Leaves one of each value. The array is sorted first, and so ends up sorted even without duplicates. With the
    /// flag it is taken as it is, and only adjacent repeats go. When any went, the growth step is -1 afterwards and the
    /// capacity the former count.
    void RemoveDuplicates(bool bAlreadySorted);

    /// With the flag, checks first whether there is anything to do.
    void Sort(bool bCheckIfSorted);
    /// No item is greater than its successor.
    bool IsSorted() const;
    /// The indexes of the items in ascending order of their values: GetNumItems() of them, which the caller frees with
    /// delete[]; null without items. The order among equal values is not that of the array, unless the flag is set and
    /// the array is sorted, which gives the identity. Asserts "m_piData".
    int* GetSortedIndex(bool bCheckIfSorted) const;
    /// The values of this array without duplicates, ascending. Asserts "paiUniqueItems"; an array without items also
    /// fails the checks of Alloc() and Realloc() on the target.
    void GetUniqueItems(VTIntArray* paiUniqueItems) const;

    /// Walks from the start index up to the last item, or down to the first one. A start of -1 means the last item
    /// whatever the direction, so that a forward search from -1 looks at the last item only.
    int Find(int iValue, int iStartIndex = 0, bool bForward = true) const;
    /// Searches sorted items from the start to the stop index, of which -1 means the last item. Of equal items any one
    /// may be found. The insertion index, which may be null, takes the place where the value can go. On an array
    /// without items it becomes 0; otherwise asserts "iStartIndex >= 0 && iStartIndex < m_iNumItems",
    /// "iStopIndex >= 0 && iStopIndex < m_iNumItems", "iStopIndex >= iStartIndex".
    int BinSearch(int iValue, int iStartIndex = 0, int iStopIndex = -1, int* piInsertionIndex = nullptr) const;

    /// The extremes of a range; a count that is negative or runs past the end means up to the last item. Either pointer
    /// may be null. False, with nothing written, when there is nothing to look at. Asserts
    /// "iStartIndex >= 0 && iStartIndex < m_iNumItems".
    ///
    /// With the flag undefined items are skipped, and the maximum is never below -2147483646: items of the two
    /// smallest ints alone report that.
    bool FindMinMax(int* piMin, int* piMax, int iStartIndex = 0, int iNumItems = -1,
                    bool bIgnoreUndefined = false) const;
    /// A value at or above `iStartValue` that the array does not hold. In sorted items (with the flag, or through a
    /// sorted index without it) it is the first such value behind the start value.
    int FindUnusedValue(int iStartValue, bool bIsSorted) const;

    /// Adds to every item, with wrap-around. With the flag undefined items stay as they are.
    void Offset(int iOffset, bool bIgnoreUndefined = false);
    /// The sum of a range, which wraps around when it does not fit an int; a negative count means up to the last item.
    /// 0 without items. With the flag an undefined item makes the sum VT_UNDEFINED_INT. Asserts
    /// "iStartIndex >= 0 && iStartIndex < m_iNumItems".
    int Sum(int iStartIndex = 0, int iNumItems = -1, bool bCheckUndefined = false) const;
    /// Sum() divided by the count, or 0 for no items. Undefined items count as the numbers they are. Asserts
    /// "iStartIndex >= 0 && iStartIndex < m_iNumItems".
    float ComputeAverage(int iStartIndex = 0, int iNumItems = -1) const;

    /// Asserts "m_piData", also for an array without a buffer, where there is nothing to do.
    void Reverse();
    /// Asserts "(iIndexA >= 0) && (iIndexA < m_iNumItems)", "(iIndexB >= 0) && (iIndexB < m_iNumItems)".
    void Swap(int iIndexA, int iIndexB);
    /// Reverses the items from the start to the stop index, both included; a negative stop means the last item. Asserts
    /// "(iStartIndex >= 0) && (iStartIndex < m_iNumItems)", "(iStopIndex > iStartIndex) && (iStopIndex < m_iNumItems)".
    void SwapArrayRange(int iStartIndex, int iStopIndex);

    /// Renumbers the items, which are indexes from 0 to `iMaxIndex`, so that those in use run from 0 without gaps and
    /// keep their order: 7, 3, 7 becomes 1, 0, 1. The mapping takes old indexes to new ones and unused ones to -1. A
    /// maximum of -1 is looked for among the defined items. False without items or without a maximum. Asserts
    /// "paiMapping", "piNewMaxIndex", "m_piData", "iMaxIndex >= 0", and for each item
    /// "iIndex >= 0 && iIndex <= iMaxIndex" and "paiMapping->Get(iIndex) >= 0".
    bool CompactIndices(int iMaxIndex, VTIntArray* paiMapping, int* piNewMaxIndex);

    /// Adds what this array does not hold yet. Asserts "!m_bSharedData" when the other has items.
    void Union(const VTIntArray& other);
    /// Removes all that the other array, which must not be this one, holds.
    void Subtract(const VTIntArray& other);
    /// Removes all that the other array does not hold; order, duplicates and capacity stay. With an empty one the
    /// array is freed.
    void Intersect(const VTIntArray& other);

protected:
    int* m_piData = nullptr;
};
