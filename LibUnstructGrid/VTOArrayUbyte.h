#pragma once

#include "LibUnstructGrid/VTOArrayBase.h"

/// An array of bytes, with operations for bit flags.
///
/// Works like VTIntArray where nothing else is told, and lacks all that searches, orders or sums. Bytes have no
/// undefined value.
class ORV_API VTUbyteArray : public VTArray {
public:
    VTUbyteArray() = default;
    VTUbyteArray(const VTUbyteArray& other);
    ~VTUbyteArray() override;

    /// As in VTIntArray: takes over items, spare slots, capacity and growth step. Asserts "!m_bSharedData",
    /// "this != &other".
    VTUbyteArray& operator=(const VTUbyteArray& other);

    /// Exact, item by item.
    bool operator==(const VTUbyteArray& other) const;

    void Alloc(int iNumItems, int iGrowBy, bool bSetNumItems) override;
    void Realloc(int iNewSize, int iGrowBy, bool bSetNumItems) override;
    void Free() override;

    /// Asserts "iIndex >= 0", "iIndex < m_iNumItems".
    unsigned char& Get(int iIndex) {
        RVF_ASSERT(iIndex >= 0);
        RVF_ASSERT(iIndex < m_iNumItems);
        return m_pubData[iIndex];
    }

    /// Asserts "iIndex >= 0", "iIndex < m_iNumItems".
    const unsigned char& Get(int iIndex) const {
        RVF_ASSERT(iIndex >= 0);
        RVF_ASSERT(iIndex < m_iNumItems);
        return m_pubData[iIndex];
    }

    /// Like Get().
    unsigned char& operator[](int iIndex) {
        return Get(iIndex);
    }

    /// Like Get().
    const unsigned char& operator[](int iIndex) const {
        return Get(iIndex);
    }

    /// Asserts "iIndex >= 0", "iIndex < m_iNumItems".
    void Set(int iIndex, unsigned char ubValue) {
        RVF_ASSERT(iIndex >= 0);
        RVF_ASSERT(iIndex < m_iNumItems);
        m_pubData[iIndex] = ubValue;
    }

    /// Copies nothing: it returns at once unless the count is exactly 0. Callers rely on that, and use CopyData() to
    /// copy. Asserts "(iIndex >= 0) && (iIndex <= m_iNumItems)".
    void Set(int iIndex, const unsigned char* pData, int iNumItems);

    /// The buffer, or null.
    unsigned char* GetDataPtr() {
        return m_pubData;
    }

    /// The buffer, or null.
    const unsigned char* GetDataPtr() const {
        return m_pubData;
    }

    /// The place of an item. Asserts "iIndex >= 0 && iIndex < m_iNumItems".
    unsigned char* GetDataPtr(int iIndex) {
        RVF_ASSERT(iIndex >= 0 && iIndex < m_iNumItems);
        return m_pubData + iIndex;
    }

    /// The place of an item. Asserts "iIndex >= 0 && iIndex < m_iNumItems".
    const unsigned char* GetDataPtr(int iIndex) const {
        RVF_ASSERT(iIndex >= 0 && iIndex < m_iNumItems);
        return m_pubData + iIndex;
    }

    /// Takes over a buffer that was made with `new unsigned char[]` and is full of items. Asserts "pData",
    /// "iNumItems > 0".
    void SetDataPtr(unsigned char* pData, int iNumItems);
    /// Borrows a buffer full of items. Asserts "pData", "iNumItems > 0".
    void SetSharedDataPtr(unsigned char* pData, int iNumItems);
    /// As in VTIntArray: what was borrowed goes on counting as borrowed until Free().
    unsigned char* StealData();

    /// Writes every slot of the buffer, not just the items.
    void SetAllItems(unsigned char ubValue);
    /// Writes every slot of the buffer, not just the items.
    void SetAllItemsZero();
    /// A negative count means up to the last item. Asserts "iStartIndex >= 0 && iStartIndex < m_iNumItems"; a count
    /// that runs past the items is not checked.
    void SetRange(int iStartIndex, int iNumItems, unsigned char ubValue);

    /// As in VTIntArray, but item by item in every case, and without a check of the pointer, the count or the index.
    void CopyData(const unsigned char* pData, int iNumItems, int iStartDstIndex = 0);
    /// As in VTIntArray; a count of -1 means up to the last item of the source. Asserts "iNumItemsToCopy >= -1",
    /// "iNumItemsToCopy <= aubValues.GetNumItems() - iStartSrcIndex", "iStartDstIndex >= 0", "iStartSrcIndex >= 0",
    /// "iStartSrcIndex < aubValues.GetNumItems()", then
    /// "iNumItemsToCopy >= 0 && iNumItemsToCopy <= aubValues.GetNumItems()" and "pSrcData".
    void CopyData(const VTUbyteArray& aubValues, int iNumItemsToCopy = -1, int iStartDstIndex = 0,
                  int iStartSrcIndex = 0);
    /// As in VTIntArray; a negative count means up to the last item. Asserts
    /// "(iStartIndex >= 0) || (iStartIndex < m_iNumItems)", which no start can fail, and "paubValues".
    void GetRange(VTUbyteArray* paubValues, int iStartIndex, int iNumItems) const;

    /// Asserts "m_iNumItems < m_iNumAllocated". Never grows.
    void Add(unsigned char ubValue) {
        RVF_ASSERT(m_iNumItems < m_iNumAllocated);
        m_pubData[m_iNumItems++] = ubValue;
    }

    /// Asserts "(m_iNumItems + aubValues.GetNumItems()) <= m_iNumAllocated". Never grows.
    void Add(const VTUbyteArray& aubValues);
    /// Asserts "pubValues", "iNumItems >= 0", "(m_iNumItems + iNumItems) <= m_iNumAllocated". Never grows.
    void Add(const unsigned char* pubValues, int iNumItems);
    /// Asserts "!m_bSharedData".
    void AddGrow(unsigned char ubValue);
    /// Asserts "!m_bSharedData".
    void AddGrow(const VTUbyteArray& aubValues);
    /// The values must not be in this array. Asserts "!m_bSharedData" and what Add() asserts.
    void AddGrow(const unsigned char* pubValues, int iNumItems);
    /// Slots skipped over become items and keep whatever the memory held. Asserts "!m_bSharedData".
    void SetAtGrow(int iIndex, unsigned char ubValue);
    /// Drops the first item and writes the value last. Asserts "GetNumItems() > 0".
    void AddKeepNumItems(unsigned char ubValue);

    /// Grows when full. Asserts "(iIndex >= 0) && (iIndex <= m_iNumItems)", "m_iNumItems <= m_iNumAllocated".
    void Insert(int iIndex, unsigned char ubValue);
    /// Inserts another array, which must not be this one. Asserts
    /// "(iStartIndex >= 0) && (iStartIndex <= m_iNumItems)".
    void Insert(int iStartIndex, const VTUbyteArray& aubValues);
    /// -1 means up to the last item. The capacity stays. Asserts "iStartIndex >= 0", "iNumItems >= 0",
    /// "iStartIndex + iNumItems <= GetNumItems()".
    void Delete(int iStartIndex, int iNumItems);
    /// Removes all items of a value, keeps the order of the others, and returns whether there were any.
    bool DeleteByValue(unsigned char ubValue);
    /// The same for every item of another array, which must not be this one.
    bool DeleteByValue(const VTUbyteArray& aubValues);

    /// Sets the flags in a range of items; a negative count means up to the last item. On an array without items a
    /// count of -1 does nothing; otherwise asserts "iStartIndex >= 0 && iStartIndex < m_iNumItems".
    void AddBitFlags(unsigned char ubFlags, int iStartIndex = 0, int iNumItems = -1);
    /// Clears the flags in a range of items; a negative count means up to the last item. On an array without items a
    /// count of -1 does nothing; otherwise asserts "iStartIndex >= 0 && iStartIndex < m_iNumItems".
    void RemoveBitFlags(unsigned char ubFlags, int iStartIndex = 0, int iNumItems = -1);
    /// The flags that any item of a range has; a negative count means up to the last item. 0 without items. Asserts
    /// "iStartIndex >= 0 && iStartIndex < m_iNumItems".
    unsigned char GetCombinedBitMask(int iStartIndex = 0, int iNumItems = -1) const;

    /// Asserts "m_pubData", also for an array without a buffer, where there is nothing to do.
    void Reverse();
    /// Asserts "(iIndexA >= 0) && (iIndexA < m_iNumItems)", "(iIndexB >= 0) && (iIndexB < m_iNumItems)".
    void Swap(int iIndexA, int iIndexB);
    /// Reverses the items from the start to the stop index, both included; a negative stop means the last item. Asserts
    /// "(iStartIndex >= 0) && (iStartIndex < m_iNumItems)", "(iStopIndex > iStartIndex) && (iStopIndex < m_iNumItems)".
    void SwapArrayRange(int iStartIndex, int iStopIndex);

protected:
    unsigned char* m_pubData = nullptr;
};
