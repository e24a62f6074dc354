#include "LibUnstructGrid/VTOArrayUbyte.h"

#include "LibUnstructGrid/VTOArray_p.h"

#include <algorithm>
#include <utility>

VTUbyteArray::VTUbyteArray(const VTUbyteArray& other) : VTArray() {
    *this = other;
}

VTUbyteArray::~VTUbyteArray() {
    VTUbyteArray::Free();
}

VTUbyteArray& VTUbyteArray::operator=(const VTUbyteArray& other) {
    RVF_ASSERT(!m_bSharedData);
    RVF_ASSERT(this != &other);
    VTArrayBuffer::assign(this, &m_pubData, other, other.m_pubData);
    return *this;
}

bool VTUbyteArray::operator==(const VTUbyteArray& other) const {
    return m_iNumItems == other.m_iNumItems && std::equal(m_pubData, m_pubData + m_iNumItems, other.m_pubData);
}

void VTUbyteArray::Alloc(int iNumItems, int iGrowBy, bool bSetNumItems) {
    RVF_ASSERT(iNumItems > 0);
    RVF_ASSERT(!m_bSharedData);
    VTArrayBuffer::alloc(this, &m_pubData, iNumItems, iGrowBy, bSetNumItems);
}

void VTUbyteArray::Realloc(int iNewSize, int iGrowBy, bool bSetNumItems) {
    RVF_ASSERT((iNewSize > 0) || (iNewSize == -1));
    RVF_ASSERT(!m_bSharedData);
    VTArrayBuffer::realloc(this, &m_pubData, iNewSize, iGrowBy, bSetNumItems);
}

void VTUbyteArray::Free() {
    VTArrayBuffer::free(this, &m_pubData);
}

void VTUbyteArray::Set(int iIndex, const unsigned char* pData, int iNumItems) {
    RVF_ASSERT((iIndex >= 0) && (iIndex <= m_iNumItems));
    if (!pData || iNumItems != 0) {
        return;
    }
    if (iIndex + iNumItems > m_iNumAllocated) {
        Realloc(iIndex + iNumItems, m_iGrowBy, false);
    }
    VTArrayLoops::copy(pData, iNumItems, m_pubData + iIndex);
    m_iNumItems = std::max(m_iNumItems, iIndex + iNumItems);
    RVF_ASSERT(m_iNumItems <= m_iNumAllocated);
}

void VTUbyteArray::SetDataPtr(unsigned char* pData, int iNumItems) {
    RVF_ASSERT(pData);
    RVF_ASSERT(iNumItems > 0);
    VTArrayBuffer::take(this, &m_pubData, pData, iNumItems);
}

void VTUbyteArray::SetSharedDataPtr(unsigned char* pData, int iNumItems) {
    SetDataPtr(pData, iNumItems);
    m_bSharedData = true;
}

unsigned char* VTUbyteArray::StealData() {
    return VTArrayBuffer::steal(this, &m_pubData);
}

void VTUbyteArray::SetAllItems(unsigned char ubValue) {
    VTArrayLoops::fill(m_pubData, m_iNumAllocated, ubValue);
}

void VTUbyteArray::SetAllItemsZero() {
    if (m_pubData) {
        VTArrayLoops::fill(m_pubData, m_iNumAllocated, static_cast<unsigned char>(0));
    }
}

void VTUbyteArray::SetRange(int iStartIndex, int iNumItems, unsigned char ubValue) {
    RVF_ASSERT(iStartIndex >= 0 && iStartIndex < m_iNumItems);
    VTArrayLoops::fill(m_pubData + iStartIndex, iNumItems < 0 ? m_iNumItems - iStartIndex : iNumItems, ubValue);
}

void VTUbyteArray::CopyData(const unsigned char* pData, int iNumItems, int iStartDstIndex) {
    if (iStartDstIndex + iNumItems > m_iNumAllocated) {
        Realloc(iStartDstIndex + iNumItems, m_iGrowBy, false);
    }
    VTArrayLoops::copy(pData, iNumItems, m_pubData + iStartDstIndex);
    m_iNumItems = std::max(m_iNumItems, iStartDstIndex + iNumItems);
}

void VTUbyteArray::CopyData(const VTUbyteArray& aubValues, int iNumItemsToCopy, int iStartDstIndex,
                            int iStartSrcIndex) {
    RVF_ASSERT(iNumItemsToCopy >= -1);
    RVF_ASSERT(iNumItemsToCopy <= aubValues.GetNumItems() - iStartSrcIndex);
    RVF_ASSERT(iStartDstIndex >= 0);
    RVF_ASSERT(iStartSrcIndex >= 0);
    RVF_ASSERT(iStartSrcIndex < aubValues.GetNumItems());
    if (iNumItemsToCopy == -1) {
        iNumItemsToCopy = aubValues.GetNumItems() - iStartSrcIndex;
    }
    RVF_ASSERT(iNumItemsToCopy >= 0 && iNumItemsToCopy <= aubValues.GetNumItems());
    const unsigned char* pSrcData = aubValues.m_pubData + iStartSrcIndex;
    RVF_ASSERT(pSrcData);
    CopyData(pSrcData, iNumItemsToCopy, iStartDstIndex);
}

void VTUbyteArray::GetRange(VTUbyteArray* paubValues, int iStartIndex, int iNumItems) const {
    RVF_ASSERT((iStartIndex >= 0) || (iStartIndex < m_iNumItems));
    RVF_ASSERT(paubValues);
    if (iNumItems < 0) {
        iNumItems = m_iNumItems - iStartIndex;
    }
    paubValues->Alloc(iNumItems, -1, true);
    for (int i = 0; i < iNumItems; ++i) {
        paubValues->Set(i, Get(iStartIndex + i));
    }
}

void VTUbyteArray::Add(const VTUbyteArray& aubValues) {
    RVF_ASSERT((m_iNumItems + aubValues.GetNumItems()) <= m_iNumAllocated);
    VTArrayLoops::copy(aubValues.m_pubData, aubValues.m_iNumItems, m_pubData + m_iNumItems);
    m_iNumItems += aubValues.m_iNumItems;
}

void VTUbyteArray::Add(const unsigned char* pubValues, int iNumItems) {
    RVF_ASSERT(pubValues);
    RVF_ASSERT(iNumItems >= 0);
    RVF_ASSERT((m_iNumItems + iNumItems) <= m_iNumAllocated);
    VTArrayLoops::copy(pubValues, iNumItems, m_pubData + m_iNumItems);
    m_iNumItems += iNumItems;
}

void VTUbyteArray::AddGrow(unsigned char ubValue) {
    SetAtGrow(m_iNumItems, ubValue);
}

void VTUbyteArray::AddGrow(const VTUbyteArray& aubValues) {
    RVF_ASSERT(!m_bSharedData);
    const int iNewNumItems = m_iNumItems + aubValues.m_iNumItems;
    if (iNewNumItems > m_iNumAllocated) {
        Realloc(iNewNumItems + GetGrowBy(), m_iGrowBy, false);
    }
    Add(aubValues);
}

void VTUbyteArray::AddGrow(const unsigned char* pubValues, int iNumItems) {
    RVF_ASSERT(!m_bSharedData);
    const int iNewNumItems = m_iNumItems + iNumItems;
    if (iNewNumItems > m_iNumAllocated) {
        Realloc(iNewNumItems + GetGrowBy(), m_iGrowBy, false);
    }
    Add(pubValues, iNumItems);
}

void VTUbyteArray::SetAtGrow(int iIndex, unsigned char ubValue) {
    RVF_ASSERT(!m_bSharedData);
    if (iIndex >= m_iNumAllocated) {
        Realloc(iIndex + GetGrowBy(), m_iGrowBy, false);
    }
    m_iNumItems = std::max(m_iNumItems, iIndex + 1);
    Set(iIndex, ubValue);
}

void VTUbyteArray::AddKeepNumItems(unsigned char ubValue) {
    RVF_ASSERT(GetNumItems() > 0);
    VTArrayLoops::closeGap(m_pubData, m_iNumItems, 0, 1);
    m_pubData[m_iNumItems - 1] = ubValue;
}

void VTUbyteArray::Insert(int iIndex, unsigned char ubValue) {
    RVF_ASSERT((iIndex >= 0) && (iIndex <= m_iNumItems));
    RVF_ASSERT(m_iNumItems <= m_iNumAllocated);
    if (iIndex == m_iNumItems) {
        AddGrow(ubValue);
        return;
    }
    if (m_iNumItems == m_iNumAllocated) {
        Realloc(m_iNumItems + GetGrowBy(), m_iGrowBy, false);
    }
    VTArrayLoops::openGap(m_pubData, m_iNumItems, iIndex, 1);
    m_pubData[iIndex] = ubValue;
    ++m_iNumItems;
}

void VTUbyteArray::Insert(int iStartIndex, const VTUbyteArray& aubValues) {
    RVF_ASSERT((iStartIndex >= 0) && (iStartIndex <= m_iNumItems));
    if (iStartIndex == m_iNumItems) {
        AddGrow(aubValues);
        return;
    }
    const int iNumValues = aubValues.m_iNumItems;
    const int iNewNumItems = m_iNumItems + iNumValues;
    if (iNewNumItems >= m_iNumAllocated) {
        Realloc(iNewNumItems + GetGrowBy(), m_iGrowBy, false);
    }
    VTArrayLoops::openGap(m_pubData, m_iNumItems, iStartIndex, iNumValues);
    VTArrayLoops::copy(aubValues.m_pubData, iNumValues, m_pubData + iStartIndex);
    m_iNumItems = iNewNumItems;
}

void VTUbyteArray::Delete(int iStartIndex, int iNumItems) {
    RVF_ASSERT(iStartIndex >= 0);
    if (iNumItems == -1) {
        iNumItems = m_iNumItems - iStartIndex;
    }
    RVF_ASSERT(iNumItems >= 0);
    RVF_ASSERT(iStartIndex + iNumItems <= GetNumItems());
    VTArrayLoops::closeGap(m_pubData, m_iNumItems, iStartIndex, iNumItems);
    m_iNumItems -= iNumItems;
}

bool VTUbyteArray::DeleteByValue(unsigned char ubValue) {
    const int iOldNumItems = m_iNumItems;
    m_iNumItems =
        VTArrayLoops::compact(m_pubData, m_iNumItems, [ubValue](unsigned char ubItem) { return ubItem != ubValue; });
    return m_iNumItems != iOldNumItems;
}

bool VTUbyteArray::DeleteByValue(const VTUbyteArray& aubValues) {
    bool bDeleted = false;
    for (int i = 0; i < aubValues.m_iNumItems; ++i) {
        bDeleted = DeleteByValue(aubValues.Get(i)) || bDeleted;
    }
    return bDeleted;
}

void VTUbyteArray::AddBitFlags(unsigned char ubFlags, int iStartIndex, int iNumItems) {
    if (m_iNumItems == 0 && iNumItems == -1) {
        return;
    }
    RVF_ASSERT(iStartIndex >= 0 && iStartIndex < m_iNumItems);
    if (iNumItems < 0) {
        iNumItems = m_iNumItems - iStartIndex;
    }
    VTArrayLoops::change(m_pubData + iStartIndex, iNumItems,
                         [=](unsigned char ubItem) { return static_cast<unsigned char>(ubItem | ubFlags); });
}

void VTUbyteArray::RemoveBitFlags(unsigned char ubFlags, int iStartIndex, int iNumItems) {
    if (m_iNumItems == 0 && iNumItems == -1) {
        return;
    }
    RVF_ASSERT(iStartIndex >= 0 && iStartIndex < m_iNumItems);
    if (iNumItems < 0) {
        iNumItems = m_iNumItems - iStartIndex;
    }
    VTArrayLoops::change(m_pubData + iStartIndex, iNumItems,
                         [=](unsigned char ubItem) { return static_cast<unsigned char>(ubItem & ~ubFlags); });
}

unsigned char VTUbyteArray::GetCombinedBitMask(int iStartIndex, int iNumItems) const {
    if (m_iNumItems == 0) {
        return 0;
    }
    RVF_ASSERT(iStartIndex >= 0 && iStartIndex < m_iNumItems);
    if (iNumItems < 0) {
        iNumItems = m_iNumItems - iStartIndex;
    }
    unsigned char ubMask = 0;
    for (int i = iStartIndex; i < iStartIndex + iNumItems; ++i) {
        ubMask |= m_pubData[i];
    }
    return ubMask;
}

void VTUbyteArray::Reverse() {
    RVF_ASSERT(m_pubData);
    VTArrayLoops::reverse(m_pubData, m_iNumItems);
}

void VTUbyteArray::Swap(int iIndexA, int iIndexB) {
    RVF_ASSERT((iIndexA >= 0) && (iIndexA < m_iNumItems));
    RVF_ASSERT((iIndexB >= 0) && (iIndexB < m_iNumItems));
    std::swap(m_pubData[iIndexA], m_pubData[iIndexB]);
}

void VTUbyteArray::SwapArrayRange(int iStartIndex, int iStopIndex) {
    RVF_ASSERT((iStartIndex >= 0) && (iStartIndex < m_iNumItems));
    if (iStopIndex < 0) {
        iStopIndex = m_iNumItems - 1;
    }
    RVF_ASSERT((iStopIndex > iStartIndex) && (iStopIndex < m_iNumItems));
    VTArrayLoops::reverse(m_pubData + iStartIndex, iStopIndex - iStartIndex + 1);
}
