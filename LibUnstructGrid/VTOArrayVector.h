#pragma once

#include "LibUnstructGrid/VTOArrayBase.h"
#include "LibUnstructGrid/VTOLinAlgebraVector.h"

class VTFloatArray;
class VTMatrix4;

/// An array of vectors, such as node coordinates.
///
/// Works like VTIntArray where nothing else is told, and lacks what needs an order of items: the sorted and unique
/// adds, Sort, BinSearch, FindMinMax. Undefined items are those that VTVector::IsUndefined() accepts.
class ORV_API VTVectorArray : public VTArray {
public:
    VTVectorArray() = default;
    VTVectorArray(const VTVectorArray& other);
    ~VTVectorArray() override;

    /// As in VTIntArray: takes over items, spare slots, capacity and growth step. Asserts "!m_bSharedData",
    /// "this != &other".
    VTVectorArray& operator=(const VTVectorArray& other);

    /// Item by item with VTVector::operator!=, so exact.
    bool operator==(const VTVectorArray& other) const;

    /// An array of one item.
    static VTVectorArray Make(VTVector value);

    void Alloc(int iNumItems, int iGrowBy, bool bSetNumItems) override;
    /// As in VTIntArray, but an array that is full moves to a new buffer of the same size on -1.
    void Realloc(int iNewSize, int iGrowBy, bool bSetNumItems) override;
    void Free() override;

    /// Asserts "iIndex >= 0", "iIndex < m_iNumItems".
    VTVector& Get(int iIndex) {
        RVF_ASSERT(iIndex >= 0);
        RVF_ASSERT(iIndex < m_iNumItems);
        return m_pData[iIndex];
    }

    /// Asserts "iIndex >= 0", "iIndex < m_iNumItems".
    const VTVector& Get(int iIndex) const {
        RVF_ASSERT(iIndex >= 0);
        RVF_ASSERT(iIndex < m_iNumItems);
        return m_pData[iIndex];
    }

    /// Like Get().
    VTVector& operator[](int iIndex) {
        return Get(iIndex);
    }

    /// Like Get().
    const VTVector& operator[](int iIndex) const {
        return Get(iIndex);
    }

    /// Asserts "iIndex >= 0", "iIndex < m_iNumItems".
    void Set(int iIndex, const VTVector& value) {
        RVF_ASSERT(iIndex >= 0);
        RVF_ASSERT(iIndex < m_iNumItems);
        m_pData[iIndex] = value;
    }

    /// Asserts "iIndex >= 0", "iIndex < m_iNumItems".
    void Set(int iIndex, double fX, double fY, double fZ) {
        Set(iIndex, VTVector(fX, fY, fZ));
    }

    /// The buffer, or null.
    VTVector* GetDataPtr() {
        return m_pData;
    }

    /// The buffer, or null.
    const VTVector* GetDataPtr() const {
        return m_pData;
    }

    /// The place of an item. Asserts "iIndex >= 0 && iIndex < m_iNumItems".
    VTVector* GetDataPtr(int iIndex) {
        RVF_ASSERT(iIndex >= 0 && iIndex < m_iNumItems);
        return m_pData + iIndex;
    }

    /// The place of an item. Asserts "iIndex >= 0 && iIndex < m_iNumItems".
    const VTVector* GetDataPtr(int iIndex) const {
        RVF_ASSERT(iIndex >= 0 && iIndex < m_iNumItems);
        return m_pData + iIndex;
    }

    /// The place of the x of an item, with y and z behind it. Asserts "iIndex >= 0 && iIndex < m_iNumItems".
    double* GetRealPtr(int iIndex) {
        return &GetDataPtr(iIndex)->x;
    }

    /// The place of the x of an item, with y and z behind it. Asserts "iIndex >= 0 && iIndex < m_iNumItems".
    const double* GetRealPtr(int iIndex) const {
        return &GetDataPtr(iIndex)->x;
    }

    /// Takes over a buffer that was made with `new VTVector[]` and is full of items. Asserts "pData",
    /// "iNumItems > 0".
    void SetDataPtr(VTVector* pData, int iNumItems);
    /// Borrows a buffer full of items. Asserts "pData", "iNumItems > 0".
    void SetSharedDataPtr(VTVector* pData, int iNumItems);
    /// As in VTIntArray: what was borrowed goes on counting as borrowed until Free().
    VTVector* StealData();

    /// Writes every slot of the buffer, not just the items.
    void SetAllItems(const VTVector& value);
    /// Writes every slot of the buffer, not just the items.
    void SetAllItemsZero();
    /// A negative count means up to the last item. Asserts "iStartIndex >= 0 && iStartIndex < m_iNumItems"; a count
    /// that runs past the items is not checked.
    void SetRange(int iStartIndex, int iNumItems, const VTVector& value);

    /// As in VTIntArray. Asserts "pData", "iNumItems >= 0", "iStartDstIndex >= 0", and "m_pData && pData",
    /// "m_iNumAllocated >= iNumItems" when all items are replaced.
    void CopyData(const VTVector* pData, int iNumItems, int iStartDstIndex = 0);
    /// As in VTIntArray; a count of -1 means up to the last item of the source. Asserts "iNumItemsToCopy >= -1",
    /// "iNumItemsToCopy <= aValues.GetNumItems() - iStartSrcIndex", "iStartDstIndex >= 0", "iStartSrcIndex >= 0",
    /// "iStartSrcIndex < aValues.GetNumItems()", then
    /// "iNumItemsToCopy >= 0 && iNumItemsToCopy <= aValues.GetNumItems()" and "pSrcData".
    void CopyData(const VTVectorArray& aValues, int iNumItemsToCopy = -1, int iStartDstIndex = 0,
                  int iStartSrcIndex = 0);
    /// Copies packed x, y, z triples; the count is that of vectors. Asserts "pfData", "iNumItems >= 0",
    /// "iStartDstIndex >= 0".
    void CopyData(const float* pfData, int iNumItems, int iStartDstIndex = 0);
    /// Copies packed x, y, z triples; the count is that of vectors. Asserts "pfData", "iNumItems >= 0",
    /// "iStartDstIndex >= 0".
    void CopyData(const double* pfData, int iNumItems, int iStartDstIndex = 0);
    /// Writes one component, 0, 1 or 2, of the items from `iStartDstIndex` on. A count that would run past the items is
    /// cut in silence: this array does not grow. Asserts "iComponent == 0 || iComponent == 1 || iComponent == 2",
    /// "iNumItemsToCopy >= -1", "iNumItemsToCopy <= afValues.GetNumItems() - iStartSrcIndex", "iStartDstIndex >= 0",
    /// "iStartDstIndex < m_iNumItems", "iStartSrcIndex >= 0", "iStartSrcIndex < afValues.GetNumItems()", then
    /// "iNumItemsToCopy >= 0 && iNumItemsToCopy <= afValues.GetNumItems()" and "pSrcData".
    void CopyComponent(int iComponent, const VTFloatArray& afValues, int iNumItemsToCopy = -1, int iStartDstIndex = 0,
                       int iStartSrcIndex = 0);
    /// As in VTIntArray; a negative count means up to the last item. Asserts
    /// "(iStartIndex >= 0) || (iStartIndex < m_iNumItems)", which no start can fail, and "paValues".
    void GetRange(VTVectorArray* paValues, int iStartIndex, int iNumItems) const;

    /// Asserts "m_iNumItems < m_iNumAllocated". Never grows.
    void Add(const VTVector& value) {
        RVF_ASSERT(m_iNumItems < m_iNumAllocated);
        m_pData[m_iNumItems++] = value;
    }

    /// Asserts "(m_iNumItems + aValues.GetNumItems()) <= m_iNumAllocated". Never grows.
    void Add(const VTVectorArray& aValues);
    /// Asserts "pValues", "iNumItems >= 0", "(m_iNumItems + iNumItems) <= m_iNumAllocated". Never grows.
    void Add(const VTVector* pValues, int iNumItems);
    /// Asserts "!m_bSharedData".
    void AddGrow(const VTVector& value);
    /// Asserts "!m_bSharedData".
    void AddGrow(const VTVectorArray& aValues);
    /// The values must not be in this array. Asserts "!m_bSharedData" and what Add() asserts.
    void AddGrow(const VTVector* pValues, int iNumItems);
    /// Slots skipped over become items and keep whatever the memory held. Asserts "!m_bSharedData".
    void SetAtGrow(int iIndex, const VTVector& value);
    /// Drops the first item and writes the value last. Asserts "GetNumItems() > 0".
    void AddKeepNumItems(const VTVector& value);

    /// Grows when full. Asserts "(iIndex >= 0) && (iIndex <= m_iNumItems)", "m_iNumItems <= m_iNumAllocated".
    void Insert(int iIndex, const VTVector& value);
    /// Inserts another array, which must not be this one. Asserts
    /// "(iStartIndex >= 0) && (iStartIndex <= m_iNumItems)".
    void Insert(int iStartIndex, const VTVectorArray& aValues);
    /// -1 means up to the last item. The capacity stays. Asserts "iStartIndex >= 0", "iNumItems >= 0",
    /// "iStartIndex + iNumItems <= GetNumItems()".
    void Delete(int iStartIndex, int iNumItems);
    /// Removes all items equal to a value, exactly, keeps the order of the others, and returns whether there were any.
    bool DeleteByValue(const VTVector& value);
    /// The same for every item of another array, which must not be this one.
    bool DeleteByValue(const VTVectorArray& aValues);

    /// The indexes of the items in lexicographic order of their components, for the caller to free with delete[].
    /// `piSortOrder` lists the three components, the most significant first; null means 0, 1, 2. The list has a place
    /// for each slot of this array, and only as many entries as there are items are written. Null without a buffer.
    /// Asserts "m_pData".
    int* GetSortedIndex(const int* piSortOrder = nullptr) const;
    /// The first item from the start index on that equals the value, exactly or by VTVectorsEqual(). -1 for none.
    int Find(const VTVector& value, bool bExact, int iStartIndex = 0) const;
    /// The first item from the start index on that VTVector::IsUndefined() accepts, or -1.
    int FindUndefined(int iStartIndex = 0) const;

    /// Adds to every item. With the flag undefined items stay as they are.
    void Offset(double fOffsetX, double fOffsetY, double fOffsetZ, bool bIgnoreUndefined = false);
    /// Multiplies component by component. With the flag undefined items stay as they are.
    void Scale(double fScaleX, double fScaleY, double fScaleZ, bool bIgnoreUndefined = false);
    /// Multiplies every item. With the flag undefined items stay as they are.
    void Scale(double fScale, bool bIgnoreUndefined = false);
    /// The sum of a range; a negative count means up to the last item. VT_ZERO_VEC without items. With the flag an
    /// undefined item makes the sum VT_UNDEFINED_VECTOR. Asserts "iStartIndex >= 0 && iStartIndex < m_iNumItems".
    VTVector Sum(int iStartIndex = 0, int iNumItems = -1, bool bCheckUndefined = false) const;
    /// Sum() divided by the count, or VT_ZERO_VEC for no items. Undefined items count as the numbers they are. Asserts
    /// "iStartIndex >= 0 && iStartIndex < m_iNumItems".
    VTVector ComputeAverage(int iStartIndex = 0, int iNumItems = -1) const;

    /// Applies VTVector::TransformPoint() to a range of items; a count below 1 means up to the last one. Asserts
    /// "iEndIdx < m_iNumItems".
    void TransformPoints(const VTMatrix4& matrix, int iStartIdx = 0, int iNumItems = -1);
    /// The same with VTVector::TransformVector(), which leaves the translation out.
    void TransformVectors(const VTMatrix4& matrix, int iStartIdx = 0, int iNumItems = -1);

    /// Makes the items of this array a0 + (a1 - a0) * t. With `bIgnoreUndefined` an item of which either side is
    /// undefined becomes VT_UNDEFINED_VECTOR. With `bResize` this array takes the size of the sources, and is freed
    /// when they are empty. Asserts "aValues0.GetNumItems() == aValues1.GetNumItems()", "iNumItems >= 0", "iNumItems ==
    /// GetNumItems()".
    void Interpolate(const VTVectorArray& aValues0, const VTVectorArray& aValues1, double fT, bool bIgnoreUndefined,
                     bool bResize = false);

    /// With fewer than two items nothing happens; only then asserts "m_pData", where VTIntArray asserts first.
    void Reverse();
    /// Asserts "(iIndexA >= 0) && (iIndexA < m_iNumItems)", "(iIndexB >= 0) && (iIndexB < m_iNumItems)".
    void Swap(int iIndexA, int iIndexB);
    /// Reverses the items from the start to the stop index, both included; a negative stop means the last item. Asserts
    /// "(iStartIndex >= 0) && (iStartIndex < m_iNumItems)", "(iStopIndex > iStartIndex) && (iStopIndex < m_iNumItems)".
    void SwapArrayRange(int iStartIndex, int iStopIndex);

protected:
    VTVector* m_pData = nullptr;

private:
    template <typename Real>
    void CopyTriples(const Real* pfData, int iNumItems, int iStartDstIndex);
};
