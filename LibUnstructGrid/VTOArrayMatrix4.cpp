#include "LibUnstructGrid/VTOArrayMatrix4.h"

#include "LibUnstructGrid/VTOArray_p.h"
#include "LibUnstructGrid/VTOLinAlgebra.h"

#include <algorithm>
#include <utility>

VTMatrix4Array::VTMatrix4Array(const VTMatrix4Array& other) : VTArray() {
    *this = other;
}

VTMatrix4Array::~VTMatrix4Array() {
    VTMatrix4Array::Free();
}

VTMatrix4Array& VTMatrix4Array::operator=(const VTMatrix4Array& other) {
    RVF_ASSERT(!m_bSharedData);
    RVF_ASSERT(this != &other);
    VTArrayBuffer::assign(this, &m_pData, other, other.m_pData);
    return *this;
}

bool VTMatrix4Array::operator==(const VTMatrix4Array& other) const {
    return m_iNumItems == other.m_iNumItems && std::equal(m_pData, m_pData + m_iNumItems, other.m_pData);
}

void VTMatrix4Array::Alloc(int iNumItems, int iGrowBy, bool bSetNumItems) {
    RVF_ASSERT(iNumItems > 0);
    RVF_ASSERT(!m_bSharedData);
    VTArrayBuffer::alloc(this, &m_pData, iNumItems, iGrowBy, bSetNumItems);
}

void VTMatrix4Array::Realloc(int iNewSize, int iGrowBy, bool bSetNumItems) {
    RVF_ASSERT((iNewSize > 0) || (iNewSize == -1));
    RVF_ASSERT(!m_bSharedData);
    VTArrayBuffer::realloc(this, &m_pData, iNewSize, iGrowBy, bSetNumItems);
}

void VTMatrix4Array::Free() {
    VTArrayBuffer::free(this, &m_pData);
}

void VTMatrix4Array::SetDataPtr(VTMatrix4* pData, int iNumItems) {
    RVF_ASSERT(pData);
    RVF_ASSERT(iNumItems > 0);
    VTArrayBuffer::take(this, &m_pData, pData, iNumItems);
}

void VTMatrix4Array::SetSharedDataPtr(VTMatrix4* pData, int iNumItems) {
    SetDataPtr(pData, iNumItems);
    m_bSharedData = true;
}

VTMatrix4* VTMatrix4Array::StealData() {
    return VTArrayBuffer::steal(this, &m_pData);
}

void VTMatrix4Array::SetAllItems(const VTMatrix4& value) {
    VTArrayLoops::fill(m_pData, m_iNumAllocated, VTMatrix4(value));
}

void VTMatrix4Array::SetAllItemsZero() {
    if (m_pData) {
        VTArrayLoops::fill(m_pData, m_iNumAllocated, VTMatrix4(0.0));
    }
}

void VTMatrix4Array::SetAllIdentity() {
    VTMatrix4 identity;
    identity.LoadIdentity();
    SetAllItems(identity);
}

void VTMatrix4Array::SetRange(int iStartIndex, int iNumItems, const VTMatrix4& value) {
    RVF_ASSERT(iStartIndex >= 0 && iStartIndex < m_iNumItems);
    VTArrayLoops::fill(m_pData + iStartIndex, iNumItems < 0 ? m_iNumItems - iStartIndex : iNumItems, VTMatrix4(value));
}

void VTMatrix4Array::CopyData(const VTMatrix4* pData, int iNumItems, int iStartDstIndex) {
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
    VTArrayLoops::copyBlock(pData, iNumItems, m_pData + iStartDstIndex);
    m_iNumItems = std::max(m_iNumItems, iStartDstIndex + iNumItems);
}

void VTMatrix4Array::CopyData(const VTMatrix4Array& aValues, int iNumItemsToCopy, int iStartDstIndex,
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
    const VTMatrix4* pSrcData = aValues.m_pData + iStartSrcIndex;
    RVF_ASSERT(pSrcData);
    CopyData(pSrcData, iNumItemsToCopy, iStartDstIndex);
}

void VTMatrix4Array::GetRange(VTMatrix4Array* paValues, int iStartIndex, int iNumItems) const {
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

void VTMatrix4Array::AddKeepNumItems(const VTMatrix4& value) {
    RVF_ASSERT(GetNumItems() > 0);
    const VTMatrix4 copy(value); // It may be an item of this array.
    VTArrayLoops::copyBlock(m_pData + 1, m_iNumItems - 1, m_pData);
    m_pData[m_iNumItems - 1] = copy;
}

int VTMatrix4Array::Find(const VTMatrix4& value) const {
    for (int i = 0; i < m_iNumItems; ++i) {
        if (m_pData[i] == value) {
            return i;
        }
    }
    return -1;
}

void VTMatrix4Array::Reverse() {
    RVF_ASSERT(m_pData);
    VTArrayLoops::reverse(m_pData, m_iNumItems);
}

void VTMatrix4Array::Swap(int iIndexA, int iIndexB) {
    RVF_ASSERT((iIndexA >= 0) && (iIndexA < m_iNumItems));
    RVF_ASSERT((iIndexB >= 0) && (iIndexB < m_iNumItems));
    if (iIndexA != iIndexB) { // A matrix must not be assigned to itself.
        std::swap(m_pData[iIndexA], m_pData[iIndexB]);
    }
}

void VTMatrix4Array::SwapArrayRange(int iStartIndex, int iStopIndex) {
    RVF_ASSERT((iStartIndex >= 0) && (iStartIndex < m_iNumItems));
    if (iStopIndex < 0) {
        iStopIndex = m_iNumItems - 1;
    }
    RVF_ASSERT((iStopIndex > iStartIndex) && (iStopIndex < m_iNumItems));
    VTArrayLoops::reverse(m_pData + iStartIndex, iStopIndex - iStartIndex + 1);
}
