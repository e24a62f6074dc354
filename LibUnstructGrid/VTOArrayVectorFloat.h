#pragma once

#include "LibUnstructGrid/VTOArrayBase.h"
#include "LibUnstructGrid/VTOLinAlgebraVectorFloat.h"

class VTMatrix4;
class VTVectorArray;

/// An array of vectors of floats, for what has to be small.
///
/// Works like VTIntArray where nothing else is told, and lacks all that adds, inserts, deletes or searches.
class ORV_API VTVectorFloatArray : public VTArray {
public:
    VTVectorFloatArray() = default;
    VTVectorFloatArray(const VTVectorFloatArray& other);
    /// Narrows each component; what is undefined as a double is mapped to nothing, and becomes an infinity.
    explicit VTVectorFloatArray(const VTVectorArray& aValues);
    ~VTVectorFloatArray() override;

    /// As in VTIntArray: takes over items, spare slots, capacity and growth step. Asserts "!m_bSharedData",
    /// "this != &other".
    VTVectorFloatArray& operator=(const VTVectorFloatArray& other);

    /// Exact, component by component.
    bool operator==(const VTVectorFloatArray& other) const;

    void Alloc(int iNumItems, int iGrowBy, bool bSetNumItems) override;
    void Realloc(int iNewSize, int iGrowBy, bool bSetNumItems) override;
    void Free() override;

    /// Asserts "iIndex >= 0", "iIndex < m_iNumItems".
    VTVectorFloat& Get(int iIndex) {
        RVF_ASSERT(iIndex >= 0);
        RVF_ASSERT(iIndex < m_iNumItems);
        return m_pData[iIndex];
    }

    /// Asserts "iIndex >= 0", "iIndex < m_iNumItems".
    const VTVectorFloat& Get(int iIndex) const {
        RVF_ASSERT(iIndex >= 0);
        RVF_ASSERT(iIndex < m_iNumItems);
        return m_pData[iIndex];
    }

    /// Like Get().
    VTVectorFloat& operator[](int iIndex) {
        return Get(iIndex);
    }

    /// Like Get().
    const VTVectorFloat& operator[](int iIndex) const {
        return Get(iIndex);
    }

    /// Asserts "iIndex >= 0", "iIndex < m_iNumItems".
    void Set(int iIndex, const VTVectorFloat& value) {
        RVF_ASSERT(iIndex >= 0);
        RVF_ASSERT(iIndex < m_iNumItems);
        m_pData[iIndex] = value;
    }

    /// Asserts "iIndex >= 0", "iIndex < m_iNumItems".
    void Set(int iIndex, float fX, float fY, float fZ) {
        Set(iIndex, VTVectorFloat(fX, fY, fZ));
    }

    /// The buffer, or null.
    VTVectorFloat* GetDataPtr() {
        return m_pData;
    }

    /// The buffer, or null.
    const VTVectorFloat* GetDataPtr() const {
        return m_pData;
    }

    /// The place of an item. Asserts "iIndex >= 0 && iIndex < m_iNumItems".
    VTVectorFloat* GetDataPtr(int iIndex) {
        RVF_ASSERT(iIndex >= 0 && iIndex < m_iNumItems);
        return m_pData + iIndex;
    }

    /// The place of an item. Asserts "iIndex >= 0 && iIndex < m_iNumItems".
    const VTVectorFloat* GetDataPtr(int iIndex) const {
        RVF_ASSERT(iIndex >= 0 && iIndex < m_iNumItems);
        return m_pData + iIndex;
    }

    /// Takes over a buffer that was made with `new VTVectorFloat[]` and is full of items. Asserts "pData",
    /// "iNumItems > 0".
    void SetDataPtr(VTVectorFloat* pData, int iNumItems);
    /// Borrows a buffer full of items. Asserts "pData", "iNumItems > 0".
    void SetSharedDataPtr(VTVectorFloat* pData, int iNumItems);
    /// As in VTIntArray: what was borrowed goes on counting as borrowed until Free().
    VTVectorFloat* StealData();

    /// Writes every slot of the buffer, not just the items.
    void SetAllItems(const VTVectorFloat& value);
    /// Writes every slot of the buffer, not just the items.
    void SetAllItemsZero();
    /// A negative count means up to the last item. Asserts "iStartIndex >= 0 && iStartIndex < m_iNumItems"; a count
    /// that runs past the items is not checked.
    void SetRange(int iStartIndex, int iNumItems, const VTVectorFloat& value);

    /// As in VTIntArray. Asserts "pData", "iNumItems >= 0", "iStartDstIndex >= 0", and "m_pData && pData",
    /// "m_iNumAllocated >= iNumItems" when all items are replaced.
    void CopyData(const VTVectorFloat* pData, int iNumItems, int iStartDstIndex = 0);
    /// As in VTIntArray; a count of -1 means up to the last item of the source. Asserts "iNumItemsToCopy >= -1",
    /// "iNumItemsToCopy <= aValues.GetNumItems() - iStartSrcIndex", "iStartDstIndex >= 0", "iStartSrcIndex >= 0",
    /// "iStartSrcIndex < aValues.GetNumItems()", then
    /// "iNumItemsToCopy >= 0 && iNumItemsToCopy <= aValues.GetNumItems()" and "pSrcData".
    void CopyData(const VTVectorFloatArray& aValues, int iNumItemsToCopy = -1, int iStartDstIndex = 0,
                  int iStartSrcIndex = 0);
    /// The same from doubles, narrowed: an undefined component becomes an infinity.
    void CopyData(const VTVectorArray& aValues, int iNumItemsToCopy = -1, int iStartDstIndex = 0,
                  int iStartSrcIndex = 0);
    /// Copies packed x, y, z triples, narrowed; the count is that of vectors. Asserts "pfData", "iNumItems >= 0",
    /// "iStartDstIndex >= 0".
    void CopyData(const double* pfData, int iNumItems, int iStartDstIndex = 0);
    /// Copies packed x, y, z triples; the count is that of vectors. Asserts "pfData", "iNumItems >= 0",
    /// "iStartDstIndex >= 0".
    void CopyData(const float* pfData, int iNumItems, int iStartDstIndex = 0);
    /// As in VTIntArray; a negative count means up to the last item. Asserts
    /// "(iStartIndex >= 0) || (iStartIndex < m_iNumItems)", which no start can fail, and "paValues".
    void GetRange(VTVectorFloatArray* paValues, int iStartIndex, int iNumItems) const;

    /// Applies VTVectorFloat::TransformPoint() to a range of items; a count below 1 means up to the last one. Asserts
    /// "iEndIdx < m_iNumItems".
    void TransformPoints(const VTMatrix4& matrix, int iStartIdx = 0, int iNumItems = -1);

    /// Asserts "m_pData", also for an array without a buffer, where there is nothing to do.
    void Reverse();
    /// Asserts "(iIndexA >= 0) && (iIndexA < m_iNumItems)", "(iIndexB >= 0) && (iIndexB < m_iNumItems)".
    void Swap(int iIndexA, int iIndexB);
    /// Reverses the items from the start to the stop index, both included; a negative stop means the last item. Asserts
    /// "(iStartIndex >= 0) && (iStartIndex < m_iNumItems)", "(iStopIndex > iStartIndex) && (iStopIndex < m_iNumItems)".
    void SwapArrayRange(int iStartIndex, int iStopIndex);

protected:
    VTVectorFloat* m_pData = nullptr;

private:
    VTVectorFloat* MakeRoom(int iNumItems, int iStartDstIndex);
};
