#include "LibUnstructGrid/VTOArrayInt.h"

#include "LibUnstructGrid/VTOArray_p.h"
#include "LibUnstructGrid/VTOArraySortedInt.h"
#include "LibUnstructGrid/VTOSort.h"

#include <algorithm>
#include <memory>
#include <numeric>

namespace {

// Two above the smallest int.
constexpr int MAX_SEED = -2147483646;

int wrap(unsigned int uiValue) {
    return static_cast<int>(uiValue);
}

void report(bool* pbFlag, bool bValue) {
    if (pbFlag) {
        *pbFlag = bValue;
    }
}

} // namespace

VTIntArray::VTIntArray(const VTIntArray& other) : VTArray() {
    *this = other;
}

VTIntArray::~VTIntArray() {
    VTIntArray::Free();
}

VTIntArray& VTIntArray::operator=(const VTIntArray& other) {
    RVF_ASSERT(!m_bSharedData);
    RVF_ASSERT(this != &other);
    VTArrayBuffer::assign(this, &m_piData, other, other.m_piData);
    return *this;
}

bool VTIntArray::operator==(const VTIntArray& other) const {
    return m_iNumItems == other.m_iNumItems && std::equal(m_piData, m_piData + m_iNumItems, other.m_piData);
}

VTIntArray VTIntArray::Make(int iItem0, int iItem1, int iItem2, int iItem3, int iItem4, int iItem5, int iItem6,
                            int iItem7) {
    VTIntArray aiItems;
    aiItems.Alloc(1, 9, true);
    aiItems.Set(0, iItem0);
    for (int iItem : {iItem1, iItem2, iItem3, iItem4, iItem5, iItem6, iItem7}) {
        if (iItem != VT_UNDEFINED_INT) {
            aiItems.AddGrow(iItem);
        }
    }
    return aiItems;
}

void VTIntArray::Alloc(int iNumItems, int iGrowBy, bool bSetNumItems) {
    RVF_ASSERT(iNumItems > 0);
    RVF_ASSERT(!m_bSharedData);
    VTArrayBuffer::alloc(this, &m_piData, iNumItems, iGrowBy, bSetNumItems);
}

void VTIntArray::Realloc(int iNewSize, int iGrowBy, bool bSetNumItems) {
    RVF_ASSERT((iNewSize > 0) || (iNewSize == -1));
    RVF_ASSERT(!m_bSharedData);
    VTArrayBuffer::realloc(this, &m_piData, iNewSize, iGrowBy, bSetNumItems);
}

void VTIntArray::Free() {
    VTArrayBuffer::free(this, &m_piData);
}

void VTIntArray::SetDataPtr(int* pData, int iNumItems) {
    RVF_ASSERT(pData);
    RVF_ASSERT(iNumItems > 0);
    VTArrayBuffer::take(this, &m_piData, pData, iNumItems);
}

void VTIntArray::SetSharedDataPtr(int* pData, int iNumItems) {
    SetDataPtr(pData, iNumItems);
    m_bSharedData = true;
}

int* VTIntArray::StealData() {
    return VTArrayBuffer::steal(this, &m_piData);
}

void VTIntArray::SetAllItems(int iValue) {
    VTArrayLoops::fill(m_piData, m_iNumAllocated, iValue);
}

void VTIntArray::SetAllItemsZero() {
    if (m_piData) {
        VTArrayLoops::fill(m_piData, m_iNumAllocated, 0);
    }
}

void VTIntArray::AssignConsecutive(int iNumItems, int iStartValue) {
    if (m_iNumAllocated < iNumItems) {
        Realloc(iNumItems, m_iGrowBy, false);
    }
    RVF_ASSERT(m_iNumAllocated >= iNumItems);
    for (int i = 0; i < iNumItems; ++i) {
        m_piData[i] = wrap(static_cast<unsigned int>(iStartValue) + static_cast<unsigned int>(i));
    }
    m_iNumItems = std::max(m_iNumItems, iNumItems);
}

void VTIntArray::SetRange(int iStartIndex, int iNumItems, int iValue) {
    RVF_ASSERT(iStartIndex >= 0 && iStartIndex < m_iNumItems);
    VTArrayLoops::fill(m_piData + iStartIndex, iNumItems < 0 ? m_iNumItems - iStartIndex : iNumItems, iValue);
}

void VTIntArray::CopyData(const int* pData, int iNumItems, int iStartDstIndex) {
    RVF_ASSERT(pData);
    RVF_ASSERT(iNumItems >= 0);
    RVF_ASSERT(iStartDstIndex >= 0);
    if (iNumItems >= 1 && iStartDstIndex == 0 && iNumItems == m_iNumItems) {
        RVF_ASSERT(m_piData && pData);
        RVF_ASSERT(m_iNumAllocated >= iNumItems);
        VTArrayLoops::copyBlock(pData, iNumItems, m_piData);
        return;
    }
    if (iStartDstIndex + iNumItems > m_iNumAllocated) {
        Realloc(iStartDstIndex + iNumItems, m_iGrowBy, false);
    }
    VTArrayLoops::copy(pData, iNumItems, m_piData + iStartDstIndex);
    m_iNumItems = std::max(m_iNumItems, iStartDstIndex + iNumItems);
}

void VTIntArray::CopyData(const VTIntArray& aiValues, int iNumItemsToCopy, int iStartDstIndex, int iStartSrcIndex) {
    RVF_ASSERT(iNumItemsToCopy >= -1);
    RVF_ASSERT(iNumItemsToCopy <= aiValues.GetNumItems() - iStartSrcIndex);
    RVF_ASSERT(iStartDstIndex >= 0);
    RVF_ASSERT(iStartSrcIndex >= 0);
    RVF_ASSERT(iStartSrcIndex < aiValues.GetNumItems());
    if (iNumItemsToCopy == -1) {
        iNumItemsToCopy = aiValues.GetNumItems() - iStartSrcIndex;
    }
    RVF_ASSERT(iNumItemsToCopy >= 0 && iNumItemsToCopy <= aiValues.GetNumItems());
    const int* pSrcData = aiValues.m_piData + iStartSrcIndex;
    RVF_ASSERT(pSrcData);
    CopyData(pSrcData, iNumItemsToCopy, iStartDstIndex);
}

void VTIntArray::GetRange(VTIntArray* paiValues, int iStartIndex, int iNumItems) const {
    RVF_ASSERT((iStartIndex >= 0) || (iStartIndex < m_iNumItems));
    RVF_ASSERT(paiValues);
    if (iNumItems < 0) {
        iNumItems = m_iNumItems - iStartIndex;
    }
    paiValues->Alloc(iNumItems, -1, true);
    for (int i = 0; i < iNumItems; ++i) {
        paiValues->Set(i, Get(iStartIndex + i));
    }
}

void VTIntArray::Add(const VTIntArray& aiValues) {
    RVF_ASSERT((m_iNumItems + aiValues.GetNumItems()) <= m_iNumAllocated);
    VTArrayLoops::copy(aiValues.m_piData, aiValues.m_iNumItems, m_piData + m_iNumItems);
    m_iNumItems += aiValues.m_iNumItems;
}

void VTIntArray::Add(const int* piValues, int iNumItems) {
    RVF_ASSERT(piValues);
    RVF_ASSERT(iNumItems >= 0);
    RVF_ASSERT((m_iNumItems + iNumItems) <= m_iNumAllocated);
    VTArrayLoops::copy(piValues, iNumItems, m_piData + m_iNumItems);
    m_iNumItems += iNumItems;
}

void VTIntArray::AddGrow(int iValue) {
    SetAtGrow(m_iNumItems, iValue);
}

void VTIntArray::AddGrow(const VTIntArray& aiValues) {
    RVF_ASSERT(!m_bSharedData);
    const int iNewNumItems = m_iNumItems + aiValues.m_iNumItems;
    if (iNewNumItems > m_iNumAllocated) {
        Realloc(iNewNumItems + GetGrowBy(), m_iGrowBy, false);
    }
    Add(aiValues);
}

void VTIntArray::AddGrow(const int* piValues, int iNumItems) {
    RVF_ASSERT(!m_bSharedData);
    const int iNewNumItems = m_iNumItems + iNumItems;
    if (iNewNumItems > m_iNumAllocated) {
        Realloc(iNewNumItems + GetGrowBy(), m_iGrowBy, false);
    }
    Add(piValues, iNumItems);
}

void VTIntArray::SetAtGrow(int iIndex, int iValue) {
    RVF_ASSERT(!m_bSharedData);
    if (iIndex >= m_iNumAllocated) {
        Realloc(iIndex + GetGrowBy(), m_iGrowBy, false);
    }
    m_iNumItems = std::max(m_iNumItems, iIndex + 1);
    Set(iIndex, iValue);
}

void VTIntArray::AddKeepNumItems(int iValue) {
    RVF_ASSERT(GetNumItems() > 0);
    VTArrayLoops::closeGap(m_piData, m_iNumItems, 0, 1);
    m_piData[m_iNumItems - 1] = iValue;
}

void VTIntArray::AddUnique(int iValue, bool* pbAdded) {
    const bool bFound = Find(iValue, 0, true) != -1;
    if (!bFound) {
        Add(iValue);
    }
    report(pbAdded, !bFound);
}

void VTIntArray::AddUnique(const VTIntArray& aiValues, bool* pbAdded) {
    const int iOldNumItems = m_iNumItems;
    for (int i = 0, iNumValues = aiValues.m_iNumItems; i < iNumValues; ++i) {
        AddUnique(aiValues.Get(i), nullptr);
    }
    report(pbAdded, m_iNumItems != iOldNumItems);
}

void VTIntArray::AddUniqueGrow(int iValue, bool* pbAdded) {
    RVF_ASSERT(!m_bSharedData);
    const bool bFound = Find(iValue, 0, true) != -1;
    if (!bFound) {
        AddGrow(iValue);
    }
    report(pbAdded, !bFound);
}

void VTIntArray::AddUniqueGrow(const VTIntArray& aiValues, bool* pbAdded) {
    RVF_ASSERT(!m_bSharedData);
    const int iOldNumItems = m_iNumItems;
    for (int i = 0, iNumValues = aiValues.m_iNumItems; i < iNumValues; ++i) {
        AddUniqueGrow(aiValues.Get(i), nullptr);
    }
    report(pbAdded, m_iNumItems != iOldNumItems);
}

void VTIntArray::AddSorted(int iValue) {
    RVF_ASSERT(m_iNumItems < m_iNumAllocated);
    int iInsertionIndex = -1;
    VTBinarySearch(m_piData, iValue, 0, m_iNumItems - 1, &iInsertionIndex);
    if (iInsertionIndex >= 0) {
        Insert(iInsertionIndex, iValue);
    }
}

void VTIntArray::AddSorted(const VTIntArray& aiValues) {
    for (int i = 0, iNumValues = aiValues.m_iNumItems; i < iNumValues; ++i) {
        AddSorted(aiValues.Get(i));
    }
}

void VTIntArray::AddSortedGrow(int iValue) {
    int iInsertionIndex = -1;
    VTBinarySearch(m_piData, iValue, 0, m_iNumItems - 1, &iInsertionIndex);
    RVF_ASSERT(iInsertionIndex >= 0);
    RVF_ASSERT(iInsertionIndex <= m_iNumItems);
    Insert(iInsertionIndex, iValue);
}

void VTIntArray::AddSortedGrow(const VTIntArray& aiValues) {
    for (int i = 0, iNumValues = aiValues.m_iNumItems; i < iNumValues; ++i) {
        AddSortedGrow(aiValues.Get(i));
    }
}

void VTIntArray::AddSortedUnique(int iValue, bool* pbAdded) {
    RVF_ASSERT(m_iNumItems < m_iNumAllocated);
    int iInsertionIndex = -1;
    const bool bFound = VTBinarySearch(m_piData, iValue, 0, m_iNumItems - 1, &iInsertionIndex) != -1;
    if (!bFound) {
        RVF_ASSERT(iInsertionIndex >= 0);
        RVF_ASSERT(iInsertionIndex <= m_iNumItems);
        Insert(iInsertionIndex, iValue);
    }
    report(pbAdded, !bFound);
}

void VTIntArray::AddSortedUnique(const VTIntArray& aiValues, bool* pbAdded) {
    const int iOldNumItems = m_iNumItems;
    for (int i = 0, iNumValues = aiValues.m_iNumItems; i < iNumValues; ++i) {
        AddSortedUnique(aiValues.Get(i), nullptr);
    }
    report(pbAdded, m_iNumItems != iOldNumItems);
}

void VTIntArray::AddSortedUniqueGrow(int iValue, bool* pbAdded, int* piIndex) {
    RVF_ASSERT(!m_bSharedData);
    int iInsertionIndex = -1;
    const bool bFound = VTBinarySearch(m_piData, iValue, 0, m_iNumItems - 1, &iInsertionIndex) != -1;
    if (!bFound) {
        RVF_ASSERT(iInsertionIndex >= 0);
        RVF_ASSERT(iInsertionIndex <= m_iNumItems);
        Insert(iInsertionIndex, iValue);
        if (piIndex) {
            *piIndex = iInsertionIndex;
        }
    }
    report(pbAdded, !bFound);
}

void VTIntArray::AddSortedUniqueGrow(const VTIntArray& aiValues, bool* pbAdded) {
    const int iOldNumItems = m_iNumItems;
    for (int i = 0, iNumValues = aiValues.m_iNumItems; i < iNumValues; ++i) {
        AddSortedUniqueGrow(aiValues.Get(i), nullptr, nullptr);
    }
    report(pbAdded, m_iNumItems != iOldNumItems);
}

void VTIntArray::Insert(int iIndex, int iValue) {
    RVF_ASSERT((iIndex >= 0) && (iIndex <= m_iNumItems));
    RVF_ASSERT(m_iNumItems <= m_iNumAllocated);
    if (iIndex == m_iNumItems) {
        AddGrow(iValue);
        return;
    }
    if (m_iNumItems == m_iNumAllocated) {
        Realloc(m_iNumItems + GetGrowBy(), m_iGrowBy, false);
    }
    VTArrayLoops::openGap(m_piData, m_iNumItems, iIndex, 1);
    m_piData[iIndex] = iValue;
    ++m_iNumItems;
}

void VTIntArray::Insert(int iStartIndex, const VTIntArray& aiValues) {
    RVF_ASSERT((iStartIndex >= 0) && (iStartIndex <= m_iNumItems));
    if (iStartIndex == m_iNumItems) {
        AddGrow(aiValues);
        return;
    }
    const int iNumValues = aiValues.m_iNumItems;
    const int iNewNumItems = m_iNumItems + iNumValues;
    if (iNewNumItems >= m_iNumAllocated) {
        Realloc(iNewNumItems + GetGrowBy(), m_iGrowBy, false);
    }
    VTArrayLoops::openGap(m_piData, m_iNumItems, iStartIndex, iNumValues);
    VTArrayLoops::copy(aiValues.m_piData, iNumValues, m_piData + iStartIndex);
    m_iNumItems = iNewNumItems;
}

void VTIntArray::Delete(int iStartIndex, int iNumItems) {
    RVF_ASSERT(iStartIndex >= 0);
    if (iNumItems == -1) {
        iNumItems = m_iNumItems - iStartIndex;
    }
    RVF_ASSERT(iNumItems >= 0);
    RVF_ASSERT(iStartIndex + iNumItems <= GetNumItems());
    VTArrayLoops::closeGap(m_piData, m_iNumItems, iStartIndex, iNumItems);
    m_iNumItems -= iNumItems;
}

bool VTIntArray::DeleteByValue(int iValue) {
    const int iOldNumItems = m_iNumItems;
    m_iNumItems = VTArrayLoops::compact(m_piData, m_iNumItems, [iValue](int iItem) { return iItem != iValue; });
    return m_iNumItems != iOldNumItems;
}

bool VTIntArray::DeleteByValue(const VTIntArray& aiValues) {
    bool bDeleted = false;
    for (int i = 0; i < aiValues.m_iNumItems; ++i) {
        bDeleted = DeleteByValue(aiValues.Get(i)) || bDeleted;
    }
    return bDeleted;
}

void VTIntArray::RemoveDuplicates(bool bAlreadySorted) {
    if (m_iNumItems == 0) {
        return;
    }
    if (!bAlreadySorted) {
        Sort(true);
    }
    VTIntArray aiUnique;
    aiUnique.Alloc(m_iNumItems, -1, false);
    aiUnique.Add(m_piData[0]);
    for (int i = 1; i < m_iNumItems; ++i) {
        if (m_piData[i] != m_piData[i - 1]) {
            aiUnique.Add(m_piData[i]);
        }
    }
    if (aiUnique.m_iNumItems < m_iNumItems) {
        *this = aiUnique;
    }
}

void VTIntArray::Sort(bool bCheckIfSorted) {
    if (m_iNumItems == 0 || (bCheckIfSorted && IsSorted())) {
        return;
    }
    VTIntQSort(m_piData, m_iNumItems);
}

bool VTIntArray::IsSorted() const {
    return VTIsSorted(m_piData, m_iNumItems);
}

int* VTIntArray::GetSortedIndex(bool bCheckIfSorted) const {
    RVF_ASSERT(m_piData);
    int* piSortedIndices = VTArrayLoops::allocate<int>(m_iNumItems);
    if (!piSortedIndices) {
        return nullptr;
    }
    if (bCheckIfSorted && IsSorted()) {
        std::iota(piSortedIndices, piSortedIndices + m_iNumItems, 0);
    } else {
        VTIntIndexQSort(m_piData, piSortedIndices, m_iNumItems);
    }
    return piSortedIndices;
}

void VTIntArray::GetUniqueItems(VTIntArray* paiUniqueItems) const {
    RVF_ASSERT(paiUniqueItems);
    paiUniqueItems->Alloc(m_iNumItems, -1, false);
    for (int i = 0; i < m_iNumItems; ++i) {
        paiUniqueItems->AddSortedUnique(m_piData[i], nullptr);
    }
    paiUniqueItems->Realloc(paiUniqueItems->GetNumItems(), -1, false);
}

int VTIntArray::Find(int iValue, int iStartIndex, bool bForward) const {
    if (!m_piData || m_iNumItems == 0) {
        return -1;
    }
    if (iStartIndex == -1) {
        iStartIndex = m_iNumItems - 1;
    }
    if (bForward) {
        for (int i = iStartIndex; i < m_iNumItems; ++i) {
            if (m_piData[i] == iValue) {
                return i;
            }
        }
    } else {
        for (int i = iStartIndex; i >= 0; --i) {
            if (m_piData[i] == iValue) {
                return i;
            }
        }
    }
    return -1;
}

int VTIntArray::BinSearch(int iValue, int iStartIndex, int iStopIndex, int* piInsertionIndex) const {
    if (m_iNumItems == 0) {
        if (piInsertionIndex) {
            *piInsertionIndex = 0;
        }
        return -1;
    }
    if (iStopIndex == -1) {
        iStopIndex = m_iNumItems - 1;
    }
    RVF_ASSERT(iStartIndex >= 0 && iStartIndex < m_iNumItems);
    RVF_ASSERT(iStopIndex >= 0 && iStopIndex < m_iNumItems);
    RVF_ASSERT(iStopIndex >= iStartIndex);
    return VTBinarySearch(m_piData, iValue, iStartIndex, iStopIndex, piInsertionIndex);
}

bool VTIntArray::FindMinMax(int* piMin, int* piMax, int iStartIndex, int iNumItems, bool bIgnoreUndefined) const {
    if (m_iNumItems == 0) {
        return false;
    }
    RVF_ASSERT(iStartIndex >= 0 && iStartIndex < m_iNumItems);
    if (iNumItems < 0 || iNumItems > m_iNumItems - iStartIndex) {
        iNumItems = m_iNumItems - iStartIndex;
    }
    if (iNumItems < 1) {
        return false;
    }
    // An int above the largest but one is an undefined one.
    const int* piData = m_piData + iStartIndex;
    const auto [iMin, iMax] =
        bIgnoreUndefined ? VTArrayLoops::minMaxUpTo(piData, iNumItems, VT_UNDEFINED_INT - 1, VT_UNDEFINED_INT, MAX_SEED)
                         : VTArrayLoops::minMax(piData, iNumItems);
    if (iMin > iMax) {
        return false;
    }
    if (piMin) {
        *piMin = iMin;
    }
    if (piMax) {
        *piMax = iMax;
    }
    return true;
}

int VTIntArray::FindUnusedValue(int iStartValue, bool bIsSorted) const {
    if (!m_piData || m_iNumItems == 0) {
        return iStartValue;
    }
    std::unique_ptr<const int[]> piSortedIndices;
    int iPosition = -1;
    if (bIsSorted) {
        iPosition = VTBinarySearch(m_piData, iStartValue, 0, m_iNumItems - 1, nullptr);
    } else {
        piSortedIndices.reset(GetSortedIndex(true));
        RVF_ASSERT(piSortedIndices);
        iPosition = VTBinaryIndexSearch(m_piData, piSortedIndices.get(), iStartValue, 0, m_iNumItems - 1, nullptr);
    }
    if (iPosition == -1) {
        return iStartValue;
    }
    unsigned int uiCandidate = static_cast<unsigned int>(iStartValue) + 1;
    for (int i = iPosition + 1; i < m_iNumItems; ++i) {
        const int iItem = m_piData[piSortedIndices ? piSortedIndices[i] : i];
        if (iItem > wrap(uiCandidate) || iItem == VT_UNDEFINED_INT) {
            break;
        }
        uiCandidate = static_cast<unsigned int>(iItem) + 1;
    }
    return wrap(uiCandidate);
}

void VTIntArray::Offset(int iOffset, bool bIgnoreUndefined) {
    if (iOffset == 0) {
        return;
    }
    const unsigned int uiOffset = static_cast<unsigned int>(iOffset);
    VTArrayLoops::change(m_piData, m_iNumItems, [=](int iItem) {
        const bool bKeep = bIgnoreUndefined && iItem == VT_UNDEFINED_INT;
        return bKeep ? iItem : wrap(static_cast<unsigned int>(iItem) + uiOffset);
    });
}

int VTIntArray::Sum(int iStartIndex, int iNumItems, bool bCheckUndefined) const {
    if (m_iNumItems == 0) {
        return 0;
    }
    RVF_ASSERT(iStartIndex >= 0 && iStartIndex < m_iNumItems);
    if (iNumItems < 0) {
        iNumItems = m_iNumItems - iStartIndex;
    }
    unsigned int uiSum = 0;
    for (int i = iStartIndex; i < iStartIndex + iNumItems; ++i) {
        if (bCheckUndefined && m_piData[i] == VT_UNDEFINED_INT) {
            return VT_UNDEFINED_INT;
        }
        uiSum += static_cast<unsigned int>(m_piData[i]);
    }
    return wrap(uiSum);
}

float VTIntArray::ComputeAverage(int iStartIndex, int iNumItems) const {
    if (m_iNumItems == 0) {
        return 0;
    }
    if (iNumItems < 0) {
        iNumItems = m_iNumItems - iStartIndex;
    }
    if (iNumItems == 0) {
        return 0;
    }
    RVF_ASSERT(iStartIndex >= 0 && iStartIndex < m_iNumItems);
    return static_cast<float>(Sum(iStartIndex, iNumItems, false)) / static_cast<float>(iNumItems);
}

void VTIntArray::Reverse() {
    RVF_ASSERT(m_piData);
    VTArrayLoops::reverse(m_piData, m_iNumItems);
}

void VTIntArray::Swap(int iIndexA, int iIndexB) {
    RVF_ASSERT((iIndexA >= 0) && (iIndexA < m_iNumItems));
    RVF_ASSERT((iIndexB >= 0) && (iIndexB < m_iNumItems));
    std::swap(m_piData[iIndexA], m_piData[iIndexB]);
}

void VTIntArray::SwapArrayRange(int iStartIndex, int iStopIndex) {
    RVF_ASSERT((iStartIndex >= 0) && (iStartIndex < m_iNumItems));
    if (iStopIndex < 0) {
        iStopIndex = m_iNumItems - 1;
    }
    RVF_ASSERT((iStopIndex > iStartIndex) && (iStopIndex < m_iNumItems));
    VTArrayLoops::reverse(m_piData + iStartIndex, iStopIndex - iStartIndex + 1);
}

bool VTIntArray::CompactIndices(int iMaxIndex, VTIntArray* paiMapping, int* piNewMaxIndex) {
    RVF_ASSERT(paiMapping);
    RVF_ASSERT(piNewMaxIndex);
    if (m_iNumItems == 0) {
        return false;
    }
    RVF_ASSERT(m_piData);
    if (iMaxIndex == -1 && !FindMinMax(nullptr, &iMaxIndex, 0, -1, true)) {
        return false;
    }
    RVF_ASSERT(iMaxIndex >= 0);
    paiMapping->Alloc(iMaxIndex + 1, -1, true);
    paiMapping->SetAllItems(-1);
    for (int i = 0; i < m_iNumItems; ++i) {
        const int iIndex = m_piData[i];
        RVF_ASSERT(iIndex >= 0 && iIndex <= iMaxIndex);
        paiMapping->Set(iIndex, 1);
    }
    int iNumUsed = 0;
    for (int i = 0; i <= iMaxIndex; ++i) {
        if (paiMapping->Get(i) == 1) {
            paiMapping->Set(i, iNumUsed++);
        }
    }
    for (int i = 0; i < m_iNumItems; ++i) {
        const int iIndex = m_piData[i];
        RVF_ASSERT(iIndex >= 0 && iIndex <= iMaxIndex);
        RVF_ASSERT(paiMapping->Get(iIndex) >= 0);
        m_piData[i] = paiMapping->Get(iIndex);
    }
    *piNewMaxIndex = iNumUsed - 1;
    return true;
}

void VTIntArray::Union(const VTIntArray& other) {
    if (other.m_iNumItems > 0) {
        AddUniqueGrow(other, nullptr);
    }
}

void VTIntArray::Subtract(const VTIntArray& other) {
    if (other.m_iNumItems > 0) {
        DeleteByValue(other);
    }
}

void VTIntArray::Intersect(const VTIntArray& other) {
    if (other.m_iNumItems == 0) {
        Free();
        return;
    }
    VTSortedIntArray aiSorted(&other);
    aiSorted.IndexSort();
    m_iNumItems =
        VTArrayLoops::compact(m_piData, m_iNumItems, [&](int iItem) { return aiSorted.IndexBinSearch(iItem) != -1; });
}
