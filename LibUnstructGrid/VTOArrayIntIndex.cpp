#include "LibUnstructGrid/VTOArrayIntIndex.h"

#include "LibUnstructGrid/VTOArray_p.h"
#include "LibUnstructGrid/VTOSort.h"

#include <algorithm>

VTIntIndexArray::VTIntIndexArray(const VTIntIndexArray& other) : VTIntArray() {
    *this = other;
}

VTIntIndexArray::~VTIntIndexArray() {
    VTIntIndexArray::Free();
}

VTIntIndexArray& VTIntIndexArray::operator=(const VTIntIndexArray& other) {
    RVF_ASSERT(!m_bSharedData);
    RVF_ASSERT(this != &other);
    const int iCapacity = other.GetNumAllocated();
    if (iCapacity < 1) {
        Free();
        return *this;
    }
    Alloc(iCapacity, -1, true);
    VTArrayLoops::copyBlock(other.m_piData, iCapacity, m_piData);
    if (other.m_piIndices) {
        m_piIndices = VTArrayLoops::allocate<int>(iCapacity);
        m_iNumIndices = std::min(other.m_iNumIndices, iCapacity);
        VTArrayLoops::copyBlock(other.m_piIndices, m_iNumIndices, m_piIndices);
    }
    return *this;
}

void VTIntIndexArray::Alloc(int iNumItems, int iGrowBy, bool bSetNumItems) {
    DeleteIndices();
    VTIntArray::Alloc(iNumItems, iGrowBy, bSetNumItems);
}

void VTIntIndexArray::Realloc(int iNewSize, int iGrowBy, bool bSetNumItems) {
    DeleteIndices();
    VTIntArray::Realloc(iNewSize, iGrowBy, bSetNumItems);
}

void VTIntIndexArray::Free() {
    DeleteIndices();
    VTIntArray::Free();
}

bool VTIntIndexArray::IndexSort() {
    DeleteIndices();
    m_piIndices = GetSortedIndex(true);
    m_iNumIndices = m_piIndices ? m_iNumItems : 0;
    return m_piIndices != nullptr;
}

int VTIntIndexArray::IndexBinSearch(int iValue) {
    if (!m_piIndices) {
        IndexSort();
    }
    return Search(iValue);
}

int VTIntIndexArray::IndexBinSearch(int iValue) const {
    RVF_ASSERT(m_piIndices);
    return Search(iValue);
}

void VTIntIndexArray::DeleteIndices() {
    delete[] m_piIndices;
    m_piIndices = nullptr;
    m_iNumIndices = 0;
}

// The count may have grown past a stale index, and does so in every copy that has spare slots.
int VTIntIndexArray::Search(int iValue) const {
    if (!m_piIndices) {
        return -1;
    }
    const int iLast = std::min(m_iNumItems, m_iNumIndices) - 1;
    const int iPosition = VTBinaryIndexSearch(m_piData, m_piIndices, iValue, 0, iLast, nullptr);
    return iPosition == -1 ? -1 : m_piIndices[iPosition];
}
