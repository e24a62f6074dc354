#pragma once

#include "LibUnstructGrid/VTOArrayBase.h"
#include "LibUnstructGrid/VTOLinAlgebraMatrix4.h"

/// An array of transformations.
///
/// Works like VTIntArray where nothing else is told. It is made in its full size: nothing adds to it, inserts or
/// deletes, but AddKeepNumItems() moves it on.
class ORV_API VTMatrix4Array : public VTArray {
public:
    VTMatrix4Array() = default;
    VTMatrix4Array(const VTMatrix4Array& other);
    ~VTMatrix4Array() override;

    /// As in VTIntArray: takes over items, spare slots, capacity and growth step. Asserts "!m_bSharedData",
    /// "this != &other".
    VTMatrix4Array& operator=(const VTMatrix4Array& other);

    /// Item by item with VTMatrix4::operator==, so exact.
    bool operator==(const VTMatrix4Array& other) const;

    void Alloc(int iNumItems, int iGrowBy, bool bSetNumItems) override;
    void Realloc(int iNewSize, int iGrowBy, bool bSetNumItems) override;
    void Free() override;

    /// Asserts "iIndex >= 0", "iIndex < m_iNumItems".
    VTMatrix4& Get(int iIndex) {
        RVF_ASSERT(iIndex >= 0);
        RVF_ASSERT(iIndex < m_iNumItems);
        return m_pData[iIndex];
    }

    /// Asserts "iIndex >= 0", "iIndex < m_iNumItems".
    const VTMatrix4& Get(int iIndex) const {
        RVF_ASSERT(iIndex >= 0);
        RVF_ASSERT(iIndex < m_iNumItems);
        return m_pData[iIndex];
    }

    /// Like Get().
    VTMatrix4& operator[](int iIndex) {
        return Get(iIndex);
    }

    /// Like Get().
    const VTMatrix4& operator[](int iIndex) const {
        return Get(iIndex);
    }

    /// The value must not be the very item. Asserts "iIndex >= 0", "iIndex < m_iNumItems".
    void Set(int iIndex, const VTMatrix4& value) {
        RVF_ASSERT(iIndex >= 0);
        RVF_ASSERT(iIndex < m_iNumItems);
        m_pData[iIndex] = value;
    }

    /// The buffer, or null.
    VTMatrix4* GetDataPtr() {
        return m_pData;
    }

    /// The buffer, or null.
    const VTMatrix4* GetDataPtr() const {
        return m_pData;
    }

    /// The place of an item. Asserts "iIndex >= 0 && iIndex < m_iNumItems".
    VTMatrix4* GetDataPtr(int iIndex) {
        RVF_ASSERT(iIndex >= 0 && iIndex < m_iNumItems);
        return m_pData + iIndex;
    }

    /// The place of an item. Asserts "iIndex >= 0 && iIndex < m_iNumItems".
    const VTMatrix4* GetDataPtr(int iIndex) const {
        RVF_ASSERT(iIndex >= 0 && iIndex < m_iNumItems);
        return m_pData + iIndex;
    }

    /// Takes over a buffer that was made with `new VTMatrix4[]` and is full of items. Asserts "pData",
    /// "iNumItems > 0".
    void SetDataPtr(VTMatrix4* pData, int iNumItems);
    /// Borrows a buffer full of items. Asserts "pData", "iNumItems > 0".
    void SetSharedDataPtr(VTMatrix4* pData, int iNumItems);
    /// As in VTIntArray: what was borrowed goes on counting as borrowed until Free().
    VTMatrix4* StealData();

    /// Writes every slot of the buffer, not just the items.
    void SetAllItems(const VTMatrix4& value);
    /// Writes every slot of the buffer, not just the items.
    void SetAllItemsZero();
    /// Writes every slot of the buffer, not just the items.
    void SetAllIdentity();
    /// A negative count means up to the last item. Asserts "iStartIndex >= 0 && iStartIndex < m_iNumItems"; a count
    /// that runs past the items is not checked.
    void SetRange(int iStartIndex, int iNumItems, const VTMatrix4& value);

    /// As in VTIntArray. Asserts "pData", "iNumItems >= 0", "iStartDstIndex >= 0", and "m_pData && pData",
    /// "m_iNumAllocated >= iNumItems" when all items are replaced.
    void CopyData(const VTMatrix4* pData, int iNumItems, int iStartDstIndex = 0);
    /// As in VTIntArray; a count of -1 means up to the last item of the source. Asserts "iNumItemsToCopy >= -1",
    /// "iNumItemsToCopy <= aValues.GetNumItems() - iStartSrcIndex", "iStartDstIndex >= 0", "iStartSrcIndex >= 0",
    /// "iStartSrcIndex < aValues.GetNumItems()", then
    /// "iNumItemsToCopy >= 0 && iNumItemsToCopy <= aValues.GetNumItems()" and "pSrcData".
    void CopyData(const VTMatrix4Array& aValues, int iNumItemsToCopy = -1, int iStartDstIndex = 0,
                  int iStartSrcIndex = 0);
    /// As in VTIntArray; a negative count means up to the last item. Asserts
    /// "(iStartIndex >= 0) || (iStartIndex < m_iNumItems)", which no start can fail, and "paValues".
    void GetRange(VTMatrix4Array* paValues, int iStartIndex, int iNumItems) const;

    /// Drops the first item and writes the value last. Asserts "GetNumItems() > 0".
    void AddKeepNumItems(const VTMatrix4& value);
    /// The first item equal to the value by VTMatrix4::operator==, or -1.
    int Find(const VTMatrix4& value) const;

    /// Asserts "m_pData", also for an array without a buffer, where there is nothing to do.
    void Reverse();
    /// Asserts "(iIndexA >= 0) && (iIndexA < m_iNumItems)", "(iIndexB >= 0) && (iIndexB < m_iNumItems)".
    void Swap(int iIndexA, int iIndexB);
    /// Reverses the items from the start to the stop index, both included; a negative stop means the last item. Asserts
    /// "(iStartIndex >= 0) && (iStartIndex < m_iNumItems)", "(iStopIndex > iStartIndex) && (iStopIndex < m_iNumItems)".
    void SwapArrayRange(int iStartIndex, int iStopIndex);

protected:
    VTMatrix4* m_pData = nullptr;
};
