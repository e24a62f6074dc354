#pragma once

#include "LibUnstructGrid/VTOArrayBase.h"
#include "LibUnstructGrid/VTOBaseTypesRange.h"

class VTIntArray;

/// An array of floats.
///
/// Works like VTIntArray where nothing else is told, and lacks its sorted and unique adds and its set operations. An
/// item is undefined above VT_UNDEFINED_FLOAT_LIMIT; the operations differ on a NaN, see there.
class ORV_API VTFloatArray : public VTArray {
public:
    VTFloatArray() = default;
    VTFloatArray(const VTFloatArray& other);
    ~VTFloatArray() override;

    /// As in VTIntArray: takes over items, spare slots, capacity and growth step. Asserts "!m_bSharedData",
    /// "this != &other".
    VTFloatArray& operator=(const VTFloatArray& other);

    /// Item by item with VTFeq() and VT_FLOAT_TOLERANCE, so not exact, and a NaN equals anything.
    bool operator==(const VTFloatArray& other) const;

    void Alloc(int iNumItems, int iGrowBy, bool bSetNumItems) override;
    void Realloc(int iNewSize, int iGrowBy, bool bSetNumItems) override;
    void Free() override;

    /// Asserts "iIndex >= 0", "iIndex < m_iNumItems".
    float& Get(int iIndex) {
        RVF_ASSERT(iIndex >= 0);
        RVF_ASSERT(iIndex < m_iNumItems);
        return m_pfData[iIndex];
    }

    /// Asserts "iIndex >= 0", "iIndex < m_iNumItems".
    const float& Get(int iIndex) const {
        RVF_ASSERT(iIndex >= 0);
        RVF_ASSERT(iIndex < m_iNumItems);
        return m_pfData[iIndex];
    }

    /// Like Get().
    float& operator[](int iIndex) {
        return Get(iIndex);
    }

    /// Like Get().
    const float& operator[](int iIndex) const {
        return Get(iIndex);
    }

    /// Asserts "iIndex >= 0", "iIndex < m_iNumItems".
    void Set(int iIndex, float fValue) {
        RVF_ASSERT(iIndex >= 0);
        RVF_ASSERT(iIndex < m_iNumItems);
        m_pfData[iIndex] = fValue;
    }

    /// The buffer, or null.
    float* GetDataPtr() {
        return m_pfData;
    }

    /// The buffer, or null.
    const float* GetDataPtr() const {
        return m_pfData;
    }

    /// The place of an item. Asserts "iIndex >= 0 && iIndex < m_iNumItems".
    float* GetDataPtr(int iIndex) {
        RVF_ASSERT(iIndex >= 0 && iIndex < m_iNumItems);
        return m_pfData + iIndex;
    }

    /// The place of an item. Asserts "iIndex >= 0 && iIndex < m_iNumItems".
    const float* GetDataPtr(int iIndex) const {
        RVF_ASSERT(iIndex >= 0 && iIndex < m_iNumItems);
        return m_pfData + iIndex;
    }

    /// Takes over a buffer that was made with `new float[]` and is full of items. Asserts "pData", "iNumItems > 0".
    void SetDataPtr(float* pData, int iNumItems);
    /// Borrows a buffer full of items. Asserts "pData", "iNumItems > 0".
    void SetSharedDataPtr(float* pData, int iNumItems);
    /// As in VTIntArray: what was borrowed goes on counting as borrowed until Free().
    float* StealData();

    /// Writes every slot of the buffer, not just the items. Asserts "m_pfData", which VTIntArray does not.
    void SetAllItems(float fValue);
    /// Writes every slot of the buffer, not just the items.
    void SetAllItemsZero();

    /// As in VTIntArray. Asserts "pData", "iNumItems >= 0", "iStartDstIndex >= 0", and "m_pfData && pData",
    /// "m_iNumAllocated >= iNumItems" when all items are replaced.
    void CopyData(const float* pData, int iNumItems, int iStartDstIndex = 0);
    /// As in VTIntArray; a count of -1 means up to the last item of the source. Asserts "iNumItemsToCopy >= -1",
    /// "iNumItemsToCopy <= afValues.GetNumItems() - iStartSrcIndex", "iStartDstIndex >= 0", "iStartSrcIndex >= 0",
    /// "iStartSrcIndex < afValues.GetNumItems()", then
    /// "iNumItemsToCopy >= 0 && iNumItemsToCopy <= afValues.GetNumItems()" and "pSrcData".
    void CopyData(const VTFloatArray& afValues, int iNumItemsToCopy = -1, int iStartDstIndex = 0,
                  int iStartSrcIndex = 0);

    /// Asserts "m_iNumItems < m_iNumAllocated". Never grows.
    void Add(float fValue) {
        RVF_ASSERT(m_iNumItems < m_iNumAllocated);
        m_pfData[m_iNumItems++] = fValue;
    }

    /// Asserts "(m_iNumItems + afValues.GetNumItems()) <= m_iNumAllocated". Never grows.
    void Add(const VTFloatArray& afValues);
    /// Asserts "pfValues", "iNumItems >= 0", "(m_iNumItems + iNumItems) <= m_iNumAllocated". Never grows.
    void Add(const float* pfValues, int iNumItems);
    /// Asserts "!m_bSharedData".
    void AddGrow(float fValue);
    /// Asserts "!m_bSharedData".
    void AddGrow(const VTFloatArray& afValues);
    /// The values must not be in this array. Asserts "!m_bSharedData" and what Add() asserts.
    void AddGrow(const float* pfValues, int iNumItems);
    /// Slots skipped over become items and keep whatever the memory held. Asserts "!m_bSharedData".
    void SetAtGrow(int iIndex, float fValue);
    /// Drops the first item and writes the value last. Asserts "GetNumItems() > 0".
    void AddKeepNumItems(float fValue);

    /// Grows when full. Asserts "(iIndex >= 0) && (iIndex <= m_iNumItems)", "m_iNumItems <= m_iNumAllocated".
    void Insert(int iIndex, float fValue);
    /// Inserts another array, which must not be this one. Asserts
    /// "(iStartIndex >= 0) && (iStartIndex <= m_iNumItems)".
    void Insert(int iStartIndex, const VTFloatArray& afValues);
    /// -1 means up to the last item. The capacity stays. Asserts "iStartIndex >= 0", "iNumItems >= 0",
    /// "iStartIndex + iNumItems <= GetNumItems()".
    void Delete(int iStartIndex, int iNumItems);

    /// With the flag, checks first whether there is anything to do.
    void Sort(bool bCheckIfSorted);
    /// No item is greater than its successor.
    bool IsSorted() const;
    /// The indexes of the items in ascending order of their values, for the caller to free with delete[]. The list has
    /// a place for each slot of this array (in VTIntArray: for each item), and only as many entries as there are items
    /// are written. Null without a buffer. Asserts "m_pfData".
    int* GetSortedIndex(bool bCheckIfSorted) const;
    /// The same into an array, of as many items as this one has; it is freed when there are none. Asserts "m_pfData",
    /// "paiSortedIndices".
    void GetSortedIndex(VTIntArray* paiSortedIndices, bool bCheckIfSorted) const;

    /// The first item that VTFeq() accepts with VT_FLOAT_TOLERANCE, or -1.
    int Find(float fValue) const;
    /// Searches sorted items from the start to the stop index, of which -1 means the last item. Without `bExact`, an
    /// item next to the insertion index will do that VTFeq() accepts with VT_FLOAT_TOLERANCE; its place is then the
    /// insertion index, too. The insertion index may be null; on an array without items it becomes 0. Asserts
    /// "m_pfData", "iStartIndex >= 0 && iStartIndex < m_iNumItems", "iStopIndex >= 0 && iStopIndex < m_iNumItems",
    /// "iStopIndex >= iStartIndex", "iInsertionIdx >= 0 && iInsertionIdx <= m_iNumItems".
    int BinSearch(float fValue, bool bExact, int iStartIndex = 0, int iStopIndex = -1,
                  int* piInsertionIndex = nullptr) const;
    /// Where a value lies among sorted items: the indexes before and after it, and how far it has come from the one to
    /// the other, from 0 to 1. An item that is met exactly stands before and after, with 0. Any pointer may be null.
    /// False, with -1, -1 and 0, for a value outside the items. Asserts that the items are in order and numbers.
    bool LocateValueInSortedArray(float fValue, int* piIdxBefore, int* piIdxAfter, float* pfT) const;

    /// The extremes of a range; a count that is negative or runs past the end means up to the last item. Either pointer
    /// may be null. False, with nothing written, when there is nothing to look at. Asserts
    /// "iStartIndex >= 0 && iStartIndex < m_iNumItems".
    ///
    /// With the flag items above VT_UNDEFINED_FLOAT_LIMIT are skipped, and the search starts from 1e30 and -1e30: where
    /// all items are above 1e30 that is reported as the minimum.
    bool FindMinMax(float* pfMin, float* pfMax, int iStartIndex = 0, int iNumItems = -1,
                    bool bIgnoreUndefined = false) const;
    /// The extremes of all items, undefined ones included, and where the first of each stands. Starts from the invalid
    /// range, so that items beyond 1e30 cannot be the minimum, nor those below -1e30 the maximum.
    VTFloatMinMax GetMinMax() const;

    /// Adds to every item. With the flag only to those below VT_UNDEFINED_FLOAT_LIMIT.
    void Offset(float fOffset, bool bIgnoreUndefined = false);
    /// Multiplies every item. With the flag only those below VT_UNDEFINED_FLOAT_LIMIT.
    void Scale(float fScale, bool bIgnoreUndefined = false);
    /// Makes every item scale * item + offset. With the flag only those below VT_UNDEFINED_FLOAT_LIMIT.
    void ScaleAndOffset(float fScale, float fOffset, bool bIgnoreUndefined = false);

    /// The sum of a range, in float; a negative count means up to the last item. 0 without items. With the flag an item
    /// that is not below VT_UNDEFINED_FLOAT_LIMIT, which here takes in a NaN, makes the sum VT_UNDEFINED_FLOAT. Asserts
    /// "iStartIndex >= 0 && iStartIndex < m_iNumItems".
    float Sum(int iStartIndex = 0, int iNumItems = -1, bool bCheckUndefined = false) const;
    /// Sum() divided by the count, or 0 for no items. Undefined items count as the numbers they are. Asserts
    /// "iStartIndex >= 0 && iStartIndex < m_iNumItems".
    float ComputeAverage(int iStartIndex = 0, int iNumItems = -1) const;

    /// Asserts "m_pfData", also for an array without a buffer, where there is nothing to do.
    void Reverse();

    /// Makes the items of this array a0 + (a1 - a0) * t. With `bIgnoreUndefined` an item of which either side is above
    /// VT_UNDEFINED_FLOAT_LIMIT becomes VT_UNDEFINED_FLOAT. With `bResize` this array takes the size of the sources,
    /// and is freed when they are empty. Asserts "afValues0.GetNumItems() == afValues1.GetNumItems()",
    /// "iNumItems >= 0", "iNumItems == GetNumItems()".
    void Interpolate(const VTFloatArray& afValues0, const VTFloatArray& afValues1, float fT, bool bIgnoreUndefined,
                     bool bResize);

protected:
    float* m_pfData = nullptr;

private:
    bool Bracket(float fValue, int* piIdxBefore, int* piIdxAfter, float* pfT) const;
    float GetFraction(float fValue, int iIdxBefore, int iIdxAfter) const;
};
