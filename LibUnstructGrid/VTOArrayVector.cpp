#include "LibUnstructGrid/VTOArrayVector.h"

#include "LibUnstructGrid/VTOArray_p.h"
#include "LibUnstructGrid/VTOArrayFloat.h"
#include "LibUnstructGrid/VTOLinAlgebra.h"
#include "LibUnstructGrid/VTOSort.h"

#include <algorithm>

VTVectorArray::VTVectorArray(const VTVectorArray& other) : VTArray() {
    *this = other;
}

VTVectorArray::~VTVectorArray() {
    VTVectorArray::Free();
}

VTVectorArray& VTVectorArray::operator=(const VTVectorArray& other) {
    RVF_ASSERT(!m_bSharedData);
    RVF_ASSERT(this != &other);
    VTArrayBuffer::assign(this, &m_pData, other, other.m_pData);
    return *this;
}

bool VTVectorArray::operator==(const VTVectorArray& other) const {
    if (m_iNumItems != other.m_iNumItems) {
        return false;
    }
    for (int i = 0; i < m_iNumItems; ++i) {
        if (m_pData[i] != other.m_pData[i]) {
            return false;
        }
    }
    return true;
}

VTVectorArray VTVectorArray::Make(VTVector value) {
    VTVectorArray aValues;
    aValues.AddGrow(value);
    return aValues;
}

void VTVectorArray::Alloc(int iNumItems, int iGrowBy, bool bSetNumItems) {
    RVF_ASSERT(iNumItems > 0);
    RVF_ASSERT(!m_bSharedData);
    VTArrayBuffer::alloc(this, &m_pData, iNumItems, iGrowBy, bSetNumItems);
}

void VTVectorArray::Realloc(int iNewSize, int iGrowBy, bool bSetNumItems) {
    RVF_ASSERT((iNewSize > 0) || (iNewSize == -1));
    RVF_ASSERT(!m_bSharedData);
    m_iGrowBy = iGrowBy;
    // Before -1 is resolved: fitting a full array moves it all the same.
    if (iNewSize != m_iNumAllocated) {
        VTArrayBuffer::move(this, &m_pData, iNewSize < 0 ? m_iNumItems : iNewSize);
    }
    if (bSetNumItems) {
        m_iNumItems = m_iNumAllocated;
    }
}

void VTVectorArray::Free() {
    VTArrayBuffer::free(this, &m_pData);
}

void VTVectorArray::SetDataPtr(VTVector* pData, int iNumItems) {
    RVF_ASSERT(pData);
    RVF_ASSERT(iNumItems > 0);
    VTArrayBuffer::take(this, &m_pData, pData, iNumItems);
}

void VTVectorArray::SetSharedDataPtr(VTVector* pData, int iNumItems) {
    SetDataPtr(pData, iNumItems);
    m_bSharedData = true;
}

VTVector* VTVectorArray::StealData() {
    return VTArrayBuffer::steal(this, &m_pData);
}

void VTVectorArray::SetAllItems(const VTVector& value) {
    VTArrayLoops::fill(m_pData, m_iNumAllocated, VTVector(value));
}

void VTVectorArray::SetAllItemsZero() {
    if (m_pData) {
        VTArrayLoops::fill(m_pData, m_iNumAllocated, VT_ZERO_VEC);
    }
}

void VTVectorArray::SetRange(int iStartIndex, int iNumItems, const VTVector& value) {
    RVF_ASSERT(iStartIndex >= 0 && iStartIndex < m_iNumItems);
    VTArrayLoops::fill(m_pData + iStartIndex, iNumItems < 0 ? m_iNumItems - iStartIndex : iNumItems, VTVector(value));
}

void VTVectorArray::CopyData(const VTVector* pData, int iNumItems, int iStartDstIndex) {
    RVF_ASSERT(pData);
    RVF_ASSERT(iNumItems >= 0);
    RVF_ASSERT(iStartDstIndex >= 0);
    if (iNumItems >= 1 && iStartDstIndex == 0 && iNumItems == m_iNumItems) {
        RVF_ASSERT(m_pData && pData);
        RVF_ASSERT(m_iNumAllocated >= iNumItems);
        VTArrayLoops::copyBlock(pData, iNumItems, m_pData);
        return;
    }
    if (iStartDstIndex + iNumItems > m_iNumAllocated) {
        Realloc(iStartDstIndex + iNumItems, m_iGrowBy, false);
    }
    VTArrayLoops::copy(pData, iNumItems, m_pData + iStartDstIndex);
    m_iNumItems = std::max(m_iNumItems, iStartDstIndex + iNumItems);
}

void VTVectorArray::CopyData(const VTVectorArray& aValues, int iNumItemsToCopy, int iStartDstIndex,
                             int iStartSrcIndex) {
    RVF_ASSERT(iNumItemsToCopy >= -1);
    RVF_ASSERT(iNumItemsToCopy <= aValues.GetNumItems() - iStartSrcIndex);
    RVF_ASSERT(iStartDstIndex >= 0);
    RVF_ASSERT(iStartSrcIndex >= 0);
    RVF_ASSERT(iStartSrcIndex < aValues.GetNumItems());
    if (iNumItemsToCopy == -1) {
        iNumItemsToCopy = aValues.GetNumItems() - iStartSrcIndex;
    }
    RVF_ASSERT(iNumItemsToCopy >= 0 && iNumItemsToCopy <= aValues.GetNumItems());
    const VTVector* pSrcData = aValues.m_pData + iStartSrcIndex;
    RVF_ASSERT(pSrcData);
    CopyData(pSrcData, iNumItemsToCopy, iStartDstIndex);
}

void VTVectorArray::CopyData(const float* pfData, int iNumItems, int iStartDstIndex) {
    RVF_ASSERT(pfData);
    RVF_ASSERT(iNumItems >= 0);
    RVF_ASSERT(iStartDstIndex >= 0);
    CopyTriples(pfData, iNumItems, iStartDstIndex);
}

void VTVectorArray::CopyData(const double* pfData, int iNumItems, int iStartDstIndex) {
    RVF_ASSERT(pfData);
    RVF_ASSERT(iNumItems >= 0);
    RVF_ASSERT(iStartDstIndex >= 0);
    CopyTriples(pfData, iNumItems, iStartDstIndex);
}

template <typename Real>
void VTVectorArray::CopyTriples(const Real* pfData, int iNumItems, int iStartDstIndex) {
    if (iStartDstIndex + iNumItems > m_iNumAllocated) {
        Realloc(iStartDstIndex + iNumItems, m_iGrowBy, false);
    }
    VTVector* pTarget = m_pData + iStartDstIndex;
    for (int i = 0; i < iNumItems; ++i) {
        pTarget[i].Set(pfData[3 * i], pfData[3 * i + 1], pfData[3 * i + 2]);
    }
    m_iNumItems = std::max(m_iNumItems, iStartDstIndex + iNumItems);
}

void VTVectorArray::CopyComponent(int iComponent, const VTFloatArray& afValues, int iNumItemsToCopy, int iStartDstIndex,
                                  int iStartSrcIndex) {
    RVF_ASSERT(iComponent == 0 || iComponent == 1 || iComponent == 2);
    RVF_ASSERT(iNumItemsToCopy >= -1);
    RVF_ASSERT(iNumItemsToCopy <= afValues.GetNumItems() - iStartSrcIndex);
    RVF_ASSERT(iStartDstIndex >= 0);
    RVF_ASSERT(iStartDstIndex < m_iNumItems);
    RVF_ASSERT(iStartSrcIndex >= 0);
    RVF_ASSERT(iStartSrcIndex < afValues.GetNumItems());
    if (iNumItemsToCopy == -1) {
        iNumItemsToCopy = afValues.GetNumItems() - iStartSrcIndex;
    }
    RVF_ASSERT(iNumItemsToCopy >= 0 && iNumItemsToCopy <= afValues.GetNumItems());
    const float* pSrcData = afValues.GetDataPtr() + iStartSrcIndex;
    RVF_ASSERT(pSrcData);
    const int iNumItems = std::min(iNumItemsToCopy, m_iNumItems - iStartDstIndex);
    for (int i = 0; i < iNumItems; ++i) {
        m_pData[iStartDstIndex + i][iComponent] = pSrcData[i];
    }
}

void VTVectorArray::GetRange(VTVectorArray* paValues, int iStartIndex, int iNumItems) const {
    RVF_ASSERT((iStartIndex >= 0) || (iStartIndex < m_iNumItems));
    RVF_ASSERT(paValues);
    if (iNumItems < 0) {
        iNumItems = m_iNumItems - iStartIndex;
    }
    paValues->Alloc(iNumItems, -1, true);
    for (int i = 0; i < iNumItems; ++i) {
        paValues->Set(i, Get(iStartIndex + i));
    }
}

void VTVectorArray::Add(const VTVectorArray& aValues) {
    RVF_ASSERT((m_iNumItems + aValues.GetNumItems()) <= m_iNumAllocated);
    VTArrayLoops::copy(aValues.m_pData, aValues.m_iNumItems, m_pData + m_iNumItems);
    m_iNumItems += aValues.m_iNumItems;
}

void VTVectorArray::Add(const VTVector* pValues, int iNumItems) {
    RVF_ASSERT(pValues);
    RVF_ASSERT(iNumItems >= 0);
    RVF_ASSERT((m_iNumItems + iNumItems) <= m_iNumAllocated);
    VTArrayLoops::copy(pValues, iNumItems, m_pData + m_iNumItems);
    m_iNumItems += iNumItems;
}

void VTVectorArray::AddGrow(const VTVector& value) {
    SetAtGrow(m_iNumItems, value);
}

void VTVectorArray::AddGrow(const VTVectorArray& aValues) {
    RVF_ASSERT(!m_bSharedData);
    const int iNewNumItems = m_iNumItems + aValues.m_iNumItems;
    if (iNewNumItems > m_iNumAllocated) {
        Realloc(iNewNumItems + GetGrowBy(), m_iGrowBy, false);
    }
    Add(aValues);
}

void VTVectorArray::AddGrow(const VTVector* pValues, int iNumItems) {
    RVF_ASSERT(!m_bSharedData);
    const int iNewNumItems = m_iNumItems + iNumItems;
    if (iNewNumItems > m_iNumAllocated) {
        Realloc(iNewNumItems + GetGrowBy(), m_iGrowBy, false);
    }
    Add(pValues, iNumItems);
}

void VTVectorArray::SetAtGrow(int iIndex, const VTVector& value) {
    RVF_ASSERT(!m_bSharedData);
    const VTVector copy(value); // It may be an item of this array.
    if (iIndex >= m_iNumAllocated) {
        Realloc(iIndex + GetGrowBy(), m_iGrowBy, false);
    }
    m_iNumItems = std::max(m_iNumItems, iIndex + 1);
    Set(iIndex, copy);
}

void VTVectorArray::AddKeepNumItems(const VTVector& value) {
    RVF_ASSERT(GetNumItems() > 0);
    const VTVector copy(value); // It may be an item of this array.
    VTArrayLoops::closeGap(m_pData, m_iNumItems, 0, 1);
    m_pData[m_iNumItems - 1] = copy;
}

void VTVectorArray::Insert(int iIndex, const VTVector& value) {
    RVF_ASSERT((iIndex >= 0) && (iIndex <= m_iNumItems));
    RVF_ASSERT(m_iNumItems <= m_iNumAllocated);
    if (iIndex == m_iNumItems) {
        AddGrow(value);
        return;
    }
    const VTVector copy(value); // It may be an item of this array.
    if (m_iNumItems == m_iNumAllocated) {
        Realloc(m_iNumItems + GetGrowBy(), m_iGrowBy, false);
    }
    VTArrayLoops::openGap(m_pData, m_iNumItems, iIndex, 1);
    m_pData[iIndex] = copy;
    ++m_iNumItems;
}

void VTVectorArray::Insert(int iStartIndex, const VTVectorArray& aValues) {
    RVF_ASSERT((iStartIndex >= 0) && (iStartIndex <= m_iNumItems));
    if (iStartIndex == m_iNumItems) {
        AddGrow(aValues);
        return;
    }
    const int iNumValues = aValues.m_iNumItems;
    const int iNewNumItems = m_iNumItems + iNumValues;
    if (iNewNumItems >= m_iNumAllocated) {
        Realloc(iNewNumItems + GetGrowBy(), m_iGrowBy, false);
    }
    VTArrayLoops::openGap(m_pData, m_iNumItems, iStartIndex, iNumValues);
    VTArrayLoops::copy(aValues.m_pData, iNumValues, m_pData + iStartIndex);
    m_iNumItems = iNewNumItems;
}

void VTVectorArray::Delete(int iStartIndex, int iNumItems) {
    RVF_ASSERT(iStartIndex >= 0);
    if (iNumItems == -1) {
        iNumItems = m_iNumItems - iStartIndex;
    }
    RVF_ASSERT(iNumItems >= 0);
    RVF_ASSERT(iStartIndex + iNumItems <= GetNumItems());
    VTArrayLoops::closeGap(m_pData, m_iNumItems, iStartIndex, iNumItems);
    m_iNumItems -= iNumItems;
}

bool VTVectorArray::DeleteByValue(const VTVector& value) {
    const VTVector copy(value); // It may be an item of this array.
    const int iOldNumItems = m_iNumItems;
    m_iNumItems = VTArrayLoops::compact(m_pData, m_iNumItems, [&](const VTVector& item) { return item != copy; });
    return m_iNumItems != iOldNumItems;
}

bool VTVectorArray::DeleteByValue(const VTVectorArray& aValues) {
    bool bDeleted = false;
    for (int i = 0; i < aValues.m_iNumItems; ++i) {
        bDeleted = DeleteByValue(aValues.Get(i)) || bDeleted;
    }
    return bDeleted;
}

int* VTVectorArray::GetSortedIndex(const int* piSortOrder) const {
    RVF_ASSERT(m_pData);
    static constexpr int aiDefaultOrder[] = {0, 1, 2};
    int* piSortedIndices = VTArrayLoops::allocate<int>(m_iNumAllocated);
    if (piSortedIndices) {
        VTVectorIndexQSort(m_pData, piSortedIndices, m_iNumItems, piSortOrder ? piSortOrder : aiDefaultOrder);
    }
    return piSortedIndices;
}

int VTVectorArray::Find(const VTVector& value, bool bExact, int iStartIndex) const {
    if (!m_pData) {
        return -1;
    }
    for (int i = iStartIndex; i < m_iNumItems; ++i) {
        if (bExact ? m_pData[i] == value : VTVectorsEqual(m_pData[i], value)) {
            return i;
        }
    }
    return -1;
}

int VTVectorArray::FindUndefined(int iStartIndex) const {
    for (int i = iStartIndex; i < m_iNumItems; ++i) {
        if (m_pData[i].IsUndefined()) {
            return i;
        }
    }
    return -1;
}

void VTVectorArray::Offset(double fOffsetX, double fOffsetY, double fOffsetZ, bool bIgnoreUndefined) {
    for (int i = 0; i < m_iNumItems; ++i) {
        if (!bIgnoreUndefined || !m_pData[i].IsUndefined()) {
            m_pData[i].Add(fOffsetX, fOffsetY, fOffsetZ);
        }
    }
}

void VTVectorArray::Scale(double fScaleX, double fScaleY, double fScaleZ, bool bIgnoreUndefined) {
    for (int i = 0; i < m_iNumItems; ++i) {
        VTVector& item = m_pData[i];
        if (!bIgnoreUndefined || !item.IsUndefined()) {
            item.Set(item.x * fScaleX, item.y * fScaleY, item.z * fScaleZ);
        }
    }
}

void VTVectorArray::Scale(double fScale, bool bIgnoreUndefined) {
    Scale(fScale, fScale, fScale, bIgnoreUndefined);
}

VTVector VTVectorArray::Sum(int iStartIndex, int iNumItems, bool bCheckUndefined) const {
    if (m_iNumItems == 0) {
        return VT_ZERO_VEC;
    }
    RVF_ASSERT(iStartIndex >= 0 && iStartIndex < m_iNumItems);
    if (iNumItems < 0) {
        iNumItems = m_iNumItems - iStartIndex;
    }
    VTVector sum(VT_ZERO_VEC);
    for (int i = iStartIndex; i < iStartIndex + iNumItems; ++i) {
        if (bCheckUndefined && m_pData[i].IsUndefined()) {
            return VT_UNDEFINED_VECTOR;
        }
        sum += m_pData[i];
    }
    return sum;
}

VTVector VTVectorArray::ComputeAverage(int iStartIndex, int iNumItems) const {
    if (m_iNumItems == 0) {
        return VT_ZERO_VEC;
    }
    if (iNumItems < 0) {
        iNumItems = m_iNumItems - iStartIndex;
    }
    if (iNumItems == 0) {
        return VT_ZERO_VEC;
    }
    RVF_ASSERT(iStartIndex >= 0 && iStartIndex < m_iNumItems);
    return Sum(iStartIndex, iNumItems, false) / static_cast<double>(iNumItems);
}

void VTVectorArray::TransformPoints(const VTMatrix4& matrix, int iStartIdx, int iNumItems) {
    const int iEndIdx = iNumItems < 1 ? m_iNumItems - 1 : iStartIdx + iNumItems - 1;
    RVF_ASSERT(iEndIdx < m_iNumItems);
    const VTMatrix4 local(matrix); // No write to an item can change it, so that its elements stay in registers.
    for (int i = iStartIdx; i <= iEndIdx; ++i) {
        m_pData[i].TransformPoint(local);
    }
}

void VTVectorArray::TransformVectors(const VTMatrix4& matrix, int iStartIdx, int iNumItems) {
    const int iEndIdx = iNumItems < 1 ? m_iNumItems - 1 : iStartIdx + iNumItems - 1;
    RVF_ASSERT(iEndIdx < m_iNumItems);
    const VTMatrix4 local(matrix);
    for (int i = iStartIdx; i <= iEndIdx; ++i) {
        m_pData[i].TransformVector(local);
    }
}

void VTVectorArray::Interpolate(const VTVectorArray& aValues0, const VTVectorArray& aValues1, double fT,
                                bool bIgnoreUndefined, bool bResize) {
    RVF_ASSERT(aValues0.GetNumItems() == aValues1.GetNumItems());
    const int iNumItems = aValues0.GetNumItems();
    RVF_ASSERT(iNumItems >= 0);
    if (bResize) {
        if (iNumItems == 0) {
            Free();
            return;
        }
        Realloc(iNumItems, -1, true);
    }
    RVF_ASSERT(iNumItems == GetNumItems());
    for (int i = 0; i < iNumItems; ++i) {
        const VTVector& value0 = aValues0.m_pData[i];
        const VTVector& value1 = aValues1.m_pData[i];
        if (bIgnoreUndefined && (value0.IsUndefined() || value1.IsUndefined())) {
            m_pData[i].SetUndefined();
        } else {
            m_pData[i] = value0 + (value1 - value0) * fT;
        }
    }
}

void VTVectorArray::Reverse() {
    if (m_iNumItems < 2) {
        return;
    }
    RVF_ASSERT(m_pData);
    VTArrayLoops::reverse(m_pData, m_iNumItems);
}

void VTVectorArray::Swap(int iIndexA, int iIndexB) {
    RVF_ASSERT((iIndexA >= 0) && (iIndexA < m_iNumItems));
    RVF_ASSERT((iIndexB >= 0) && (iIndexB < m_iNumItems));
    std::swap(m_pData[iIndexA], m_pData[iIndexB]);
}

void VTVectorArray::SwapArrayRange(int iStartIndex, int iStopIndex) {
    RVF_ASSERT((iStartIndex >= 0) && (iStartIndex < m_iNumItems));
    if (iStopIndex < 0) {
        iStopIndex = m_iNumItems - 1;
    }
    RVF_ASSERT((iStopIndex > iStartIndex) && (iStopIndex < m_iNumItems));
    VTArrayLoops::reverse(m_pData + iStartIndex, iStopIndex - iStartIndex + 1);
}
