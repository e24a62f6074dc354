#include "LibUnstructGrid/VTOArrayVectorFloat.h"

#include "LibUnstructGrid/VTOArray_p.h"
#include "LibUnstructGrid/VTOArrayVector.h"
#include "LibUnstructGrid/VTOLinAlgebra.h"

#include <algorithm>
#include <utility>

VTVectorFloatArray::VTVectorFloatArray(const VTVectorFloatArray& other) : VTArray() {
    *this = other;
}

VTVectorFloatArray::VTVectorFloatArray(const VTVectorArray& aValues) {
    if (aValues.GetNumItems() > 0) {
        CopyData(aValues, -1, 0, 0);
    }
}

VTVectorFloatArray::~VTVectorFloatArray() {
    VTVectorFloatArray::Free();
}

VTVectorFloatArray& VTVectorFloatArray::operator=(const VTVectorFloatArray& other) {
    RVF_ASSERT(!m_bSharedData);
    RVF_ASSERT(this != &other);
    VTArrayBuffer::assign(this, &m_pData, other, other.m_pData);
    return *this;
}

bool VTVectorFloatArray::operator==(const VTVectorFloatArray& other) const {
    return m_iNumItems == other.m_iNumItems && std::equal(m_pData, m_pData + m_iNumItems, other.m_pData,
                                                          [](const VTVectorFloat& a, const VTVectorFloat& b) {
                                                              return a.x == b.x && a.y == b.y && a.z == b.z;
                                                          });
}

void VTVectorFloatArray::Alloc(int iNumItems, int iGrowBy, bool bSetNumItems) {
    RVF_ASSERT(iNumItems > 0);
    RVF_ASSERT(!m_bSharedData);
    VTArrayBuffer::alloc(this, &m_pData, iNumItems, iGrowBy, bSetNumItems);
}

void VTVectorFloatArray::Realloc(int iNewSize, int iGrowBy, bool bSetNumItems) {
    RVF_ASSERT((iNewSize > 0) || (iNewSize == -1));
    RVF_ASSERT(!m_bSharedData);
    VTArrayBuffer::realloc(this, &m_pData, iNewSize, iGrowBy, bSetNumItems);
}

void VTVectorFloatArray::Free() {
    VTArrayBuffer::free(this, &m_pData);
}

void VTVectorFloatArray::SetDataPtr(VTVectorFloat* pData, int iNumItems) {
    RVF_ASSERT(pData);
    RVF_ASSERT(iNumItems > 0);
    VTArrayBuffer::take(this, &m_pData, pData, iNumItems);
}

void VTVectorFloatArray::SetSharedDataPtr(VTVectorFloat* pData, int iNumItems) {
    SetDataPtr(pData, iNumItems);
    m_bSharedData = true;
}

VTVectorFloat* VTVectorFloatArray::StealData() {
    return VTArrayBuffer::steal(this, &m_pData);
}

void VTVectorFloatArray::SetAllItems(const VTVectorFloat& value) {
    VTArrayLoops::fill(m_pData, m_iNumAllocated, VTVectorFloat(value));
}

void VTVectorFloatArray::SetAllItemsZero() {
    if (m_pData) {
        VTArrayLoops::fill(m_pData, m_iNumAllocated, VTVectorFloat(0, 0, 0));
    }
}

void VTVectorFloatArray::SetRange(int iStartIndex, int iNumItems, const VTVectorFloat& value) {
    RVF_ASSERT(iStartIndex >= 0 && iStartIndex < m_iNumItems);
    VTArrayLoops::fill(m_pData + iStartIndex, iNumItems < 0 ? m_iNumItems - iStartIndex : iNumItems,
                       VTVectorFloat(value));
}

void VTVectorFloatArray::CopyData(const VTVectorFloat* pData, int iNumItems, int iStartDstIndex) {
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

void VTVectorFloatArray::CopyData(const VTVectorFloatArray& aValues, int iNumItemsToCopy, int iStartDstIndex,
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
    const VTVectorFloat* pSrcData = aValues.m_pData + iStartSrcIndex;
    RVF_ASSERT(pSrcData);
    CopyData(pSrcData, iNumItemsToCopy, iStartDstIndex);
}

void VTVectorFloatArray::CopyData(const VTVectorArray& aValues, int iNumItemsToCopy, int iStartDstIndex,
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
    const VTVector* pSrcData = aValues.GetDataPtr() + iStartSrcIndex;
    RVF_ASSERT(pSrcData);
    VTVectorFloat* pTarget = MakeRoom(iNumItemsToCopy, iStartDstIndex);
    for (int i = 0; i < iNumItemsToCopy; ++i) {
        pTarget[i].Set(static_cast<float>(pSrcData[i].x), static_cast<float>(pSrcData[i].y),
                       static_cast<float>(pSrcData[i].z));
    }
}

void VTVectorFloatArray::CopyData(const double* pfData, int iNumItems, int iStartDstIndex) {
    RVF_ASSERT(pfData);
    RVF_ASSERT(iNumItems >= 0);
    RVF_ASSERT(iStartDstIndex >= 0);
    VTVectorFloat* pTarget = MakeRoom(iNumItems, iStartDstIndex);
    for (int i = 0; i < iNumItems; ++i) {
        pTarget[i].Set(static_cast<float>(pfData[3 * i]), static_cast<float>(pfData[3 * i + 1]),
                       static_cast<float>(pfData[3 * i + 2]));
    }
}

void VTVectorFloatArray::CopyData(const float* pfData, int iNumItems, int iStartDstIndex) {
    RVF_ASSERT(pfData);
    RVF_ASSERT(iNumItems >= 0);
    RVF_ASSERT(iStartDstIndex >= 0);
    VTVectorFloat* pTarget = MakeRoom(iNumItems, iStartDstIndex);
    for (int i = 0; i < iNumItems; ++i) {
        pTarget[i].Set(pfData[3 * i], pfData[3 * i + 1], pfData[3 * i + 2]);
    }
}

// Makes items of the slots that are going to be written, and tells where they begin.
VTVectorFloat* VTVectorFloatArray::MakeRoom(int iNumItems, int iStartDstIndex) {
    if (iStartDstIndex + iNumItems > m_iNumAllocated) {
        Realloc(iStartDstIndex + iNumItems, m_iGrowBy, false);
    }
    m_iNumItems = std::max(m_iNumItems, iStartDstIndex + iNumItems);
    return m_pData + iStartDstIndex;
}

void VTVectorFloatArray::GetRange(VTVectorFloatArray* paValues, int iStartIndex, int iNumItems) const {
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

void VTVectorFloatArray::TransformPoints(const VTMatrix4& matrix, int iStartIdx, int iNumItems) {
    const int iEndIdx = iNumItems < 1 ? m_iNumItems - 1 : iStartIdx + iNumItems - 1;
    RVF_ASSERT(iEndIdx < m_iNumItems);
    const VTMatrix4 local(matrix); // No write to an item can change it, so that its elements stay in registers.
    for (int i = iStartIdx; i <= iEndIdx; ++i) {
        m_pData[i].TransformPoint(local);
    }
}

void VTVectorFloatArray::Reverse() {
    RVF_ASSERT(m_pData);
    VTArrayLoops::reverse(m_pData, m_iNumItems);
}

void VTVectorFloatArray::Swap(int iIndexA, int iIndexB) {
    RVF_ASSERT((iIndexA >= 0) && (iIndexA < m_iNumItems));
    RVF_ASSERT((iIndexB >= 0) && (iIndexB < m_iNumItems));
    std::swap(m_pData[iIndexA], m_pData[iIndexB]);
}

void VTVectorFloatArray::SwapArrayRange(int iStartIndex, int iStopIndex) {
    RVF_ASSERT((iStartIndex >= 0) && (iStartIndex < m_iNumItems));
    if (iStopIndex < 0) {
        iStopIndex = m_iNumItems - 1;
    }
    RVF_ASSERT((iStopIndex > iStartIndex) && (iStopIndex < m_iNumItems));
    VTArrayLoops::reverse(m_pData + iStartIndex, iStopIndex - iStartIndex + 1);
}
