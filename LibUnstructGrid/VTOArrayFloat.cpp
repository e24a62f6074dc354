#include "LibUnstructGrid/VTOArrayFloat.h"

#include "LibUnstructGrid/VTOArray_p.h"
#include "LibUnstructGrid/VTOArrayInt.h"
#include "LibUnstructGrid/VTOMath.h"
#include "LibUnstructGrid/VTOSort.h"

#include <algorithm>
#include <numeric>

namespace {

constexpr float MIN_SEED = 1e30f;
constexpr float MAX_SEED = -1e30f;

} // namespace

VTFloatArray::VTFloatArray(const VTFloatArray& other) : VTArray() {
    *this = other;
}

VTFloatArray::~VTFloatArray() {
    VTFloatArray::Free();
}

VTFloatArray& VTFloatArray::operator=(const VTFloatArray& other) {
    RVF_ASSERT(!m_bSharedData);
    RVF_ASSERT(this != &other);
    VTArrayBuffer::assign(this, &m_pfData, other, other.m_pfData);
    return *this;
}

bool VTFloatArray::operator==(const VTFloatArray& other) const {
    return m_iNumItems == other.m_iNumItems &&
           std::equal(m_pfData, m_pfData + m_iNumItems, other.m_pfData,
                      [](float fA, float fB) { return VTFeq(fA, fB, VT_FLOAT_TOLERANCE); });
}

void VTFloatArray::Alloc(int iNumItems, int iGrowBy, bool bSetNumItems) {
    RVF_ASSERT(iNumItems > 0);
    RVF_ASSERT(!m_bSharedData);
    VTArrayBuffer::alloc(this, &m_pfData, iNumItems, iGrowBy, bSetNumItems);
}

void VTFloatArray::Realloc(int iNewSize, int iGrowBy, bool bSetNumItems) {
    RVF_ASSERT((iNewSize > 0) || (iNewSize == -1));
    RVF_ASSERT(!m_bSharedData);
    VTArrayBuffer::realloc(this, &m_pfData, iNewSize, iGrowBy, bSetNumItems);
}

void VTFloatArray::Free() {
    VTArrayBuffer::free(this, &m_pfData);
}

void VTFloatArray::SetDataPtr(float* pData, int iNumItems) {
    RVF_ASSERT(pData);
    RVF_ASSERT(iNumItems > 0);
    VTArrayBuffer::take(this, &m_pfData, pData, iNumItems);
}

void VTFloatArray::SetSharedDataPtr(float* pData, int iNumItems) {
    SetDataPtr(pData, iNumItems);
    m_bSharedData = true;
}

float* VTFloatArray::StealData() {
    return VTArrayBuffer::steal(this, &m_pfData);
}

void VTFloatArray::SetAllItems(float fValue) {
    RVF_ASSERT(m_pfData);
    VTArrayLoops::fill(m_pfData, m_iNumAllocated, fValue);
}

void VTFloatArray::SetAllItemsZero() {
    if (m_pfData) {
        VTArrayLoops::fill(m_pfData, m_iNumAllocated, 0.0f);
    }
}

void VTFloatArray::CopyData(const float* pData, int iNumItems, int iStartDstIndex) {
    RVF_ASSERT(pData);
    RVF_ASSERT(iNumItems >= 0);
    RVF_ASSERT(iStartDstIndex >= 0);
    if (iNumItems >= 1 && iStartDstIndex == 0 && iNumItems == m_iNumItems) {
        RVF_ASSERT(m_pfData && pData);
        RVF_ASSERT(m_iNumAllocated >= iNumItems);
        VTArrayLoops::copyBlock(pData, iNumItems, m_pfData);
        return;
    }
    if (iStartDstIndex + iNumItems > m_iNumAllocated) {
        Realloc(iStartDstIndex + iNumItems, m_iGrowBy, false);
    }
    VTArrayLoops::copy(pData, iNumItems, m_pfData + iStartDstIndex);
    m_iNumItems = std::max(m_iNumItems, iStartDstIndex + iNumItems);
}

void VTFloatArray::CopyData(const VTFloatArray& afValues, int iNumItemsToCopy, int iStartDstIndex, int iStartSrcIndex) {
    RVF_ASSERT(iNumItemsToCopy >= -1);
    RVF_ASSERT(iNumItemsToCopy <= afValues.GetNumItems() - iStartSrcIndex);
    RVF_ASSERT(iStartDstIndex >= 0);
    RVF_ASSERT(iStartSrcIndex >= 0);
    RVF_ASSERT(iStartSrcIndex < afValues.GetNumItems());
    if (iNumItemsToCopy == -1) {
        iNumItemsToCopy = afValues.GetNumItems() - iStartSrcIndex;
    }
    RVF_ASSERT(iNumItemsToCopy >= 0 && iNumItemsToCopy <= afValues.GetNumItems());
    const float* pSrcData = afValues.m_pfData + iStartSrcIndex;
    RVF_ASSERT(pSrcData);
    CopyData(pSrcData, iNumItemsToCopy, iStartDstIndex);
}

void VTFloatArray::Add(const VTFloatArray& afValues) {
    RVF_ASSERT((m_iNumItems + afValues.GetNumItems()) <= m_iNumAllocated);
    VTArrayLoops::copy(afValues.m_pfData, afValues.m_iNumItems, m_pfData + m_iNumItems);
    m_iNumItems += afValues.m_iNumItems;
}

void VTFloatArray::Add(const float* pfValues, int iNumItems) {
    RVF_ASSERT(pfValues);
    RVF_ASSERT(iNumItems >= 0);
    RVF_ASSERT((m_iNumItems + iNumItems) <= m_iNumAllocated);
    VTArrayLoops::copy(pfValues, iNumItems, m_pfData + m_iNumItems);
    m_iNumItems += iNumItems;
}

void VTFloatArray::AddGrow(float fValue) {
    SetAtGrow(m_iNumItems, fValue);
}

void VTFloatArray::AddGrow(const VTFloatArray& afValues) {
    RVF_ASSERT(!m_bSharedData);
    const int iNewNumItems = m_iNumItems + afValues.m_iNumItems;
    if (iNewNumItems > m_iNumAllocated) {
        Realloc(iNewNumItems + GetGrowBy(), m_iGrowBy, false);
    }
    Add(afValues);
}

void VTFloatArray::AddGrow(const float* pfValues, int iNumItems) {
    RVF_ASSERT(!m_bSharedData);
    const int iNewNumItems = m_iNumItems + iNumItems;
    if (iNewNumItems > m_iNumAllocated) {
        Realloc(iNewNumItems + GetGrowBy(), m_iGrowBy, false);
    }
    Add(pfValues, iNumItems);
}

void VTFloatArray::SetAtGrow(int iIndex, float fValue) {
    RVF_ASSERT(!m_bSharedData);
    if (iIndex >= m_iNumAllocated) {
        Realloc(iIndex + GetGrowBy(), m_iGrowBy, false);
    }
    m_iNumItems = std::max(m_iNumItems, iIndex + 1);
    Set(iIndex, fValue);
}

void VTFloatArray::AddKeepNumItems(float fValue) {
    RVF_ASSERT(GetNumItems() > 0);
    VTArrayLoops::closeGap(m_pfData, m_iNumItems, 0, 1);
    m_pfData[m_iNumItems - 1] = fValue;
}

void VTFloatArray::Insert(int iIndex, float fValue) {
    RVF_ASSERT((iIndex >= 0) && (iIndex <= m_iNumItems));
    RVF_ASSERT(m_iNumItems <= m_iNumAllocated);
    if (iIndex == m_iNumItems) {
        AddGrow(fValue);
        return;
    }
    if (m_iNumItems == m_iNumAllocated) {
        Realloc(m_iNumItems + GetGrowBy(), m_iGrowBy, false);
    }
    VTArrayLoops::openGap(m_pfData, m_iNumItems, iIndex, 1);
    m_pfData[iIndex] = fValue;
    ++m_iNumItems;
}

void VTFloatArray::Insert(int iStartIndex, const VTFloatArray& afValues) {
    RVF_ASSERT((iStartIndex >= 0) && (iStartIndex <= m_iNumItems));
    if (iStartIndex == m_iNumItems) {
        AddGrow(afValues);
        return;
    }
    const int iNumValues = afValues.m_iNumItems;
    const int iNewNumItems = m_iNumItems + iNumValues;
    if (iNewNumItems >= m_iNumAllocated) {
        Realloc(iNewNumItems + GetGrowBy(), m_iGrowBy, false);
    }
    VTArrayLoops::openGap(m_pfData, m_iNumItems, iStartIndex, iNumValues);
    VTArrayLoops::copy(afValues.m_pfData, iNumValues, m_pfData + iStartIndex);
    m_iNumItems = iNewNumItems;
}

void VTFloatArray::Delete(int iStartIndex, int iNumItems) {
    RVF_ASSERT(iStartIndex >= 0);
    if (iNumItems == -1) {
        iNumItems = m_iNumItems - iStartIndex;
    }
    RVF_ASSERT(iNumItems >= 0);
    RVF_ASSERT(iStartIndex + iNumItems <= GetNumItems());
    VTArrayLoops::closeGap(m_pfData, m_iNumItems, iStartIndex, iNumItems);
    m_iNumItems -= iNumItems;
}

void VTFloatArray::Sort(bool bCheckIfSorted) {
    if (m_iNumItems == 0 || (bCheckIfSorted && IsSorted())) {
        return;
    }
    VTQSort(m_pfData, m_iNumItems);
}

bool VTFloatArray::IsSorted() const {
    return VTArrayLoops::isSorted(m_pfData, m_iNumItems);
}

int* VTFloatArray::GetSortedIndex(bool bCheckIfSorted) const {
    RVF_ASSERT(m_pfData);
    int* piSortedIndices = VTArrayLoops::allocate<int>(m_iNumAllocated);
    if (!piSortedIndices) {
        return nullptr;
    }
    if (bCheckIfSorted && IsSorted()) {
        std::iota(piSortedIndices, piSortedIndices + m_iNumItems, 0);
    } else {
        VTIndexQSort(m_pfData, piSortedIndices, m_iNumItems);
    }
    return piSortedIndices;
}

void VTFloatArray::GetSortedIndex(VTIntArray* paiSortedIndices, bool bCheckIfSorted) const {
    RVF_ASSERT(m_pfData);
    RVF_ASSERT(paiSortedIndices);
    if (m_iNumItems == 0) {
        paiSortedIndices->Free();
        return;
    }
    if (paiSortedIndices->GetNumAllocated() < m_iNumItems) {
        paiSortedIndices->Alloc(m_iNumItems, -1, true);
    }
    paiSortedIndices->SetNumItems(m_iNumItems);
    if (bCheckIfSorted && IsSorted()) {
        paiSortedIndices->AssignConsecutive(m_iNumItems, 0);
    } else {
        VTIndexQSort(m_pfData, paiSortedIndices->GetDataPtr(), m_iNumItems);
    }
}

int VTFloatArray::Find(float fValue) const {
    for (int i = 0; i < m_iNumItems; ++i) {
        if (VTFeq(m_pfData[i], fValue, VT_FLOAT_TOLERANCE)) {
            return i;
        }
    }
    return -1;
}

int VTFloatArray::BinSearch(float fValue, bool bExact, int iStartIndex, int iStopIndex, int* piInsertionIndex) const {
    int iFoundIdx = -1;
    int iInsertionIdx = 0;
    if (m_iNumItems > 0) {
        if (iStopIndex == -1) {
            iStopIndex = m_iNumItems - 1;
        }
        RVF_ASSERT(m_pfData);
        RVF_ASSERT(iStartIndex >= 0 && iStartIndex < m_iNumItems);
        RVF_ASSERT(iStopIndex >= 0 && iStopIndex < m_iNumItems);
        RVF_ASSERT(iStopIndex >= iStartIndex);
        iFoundIdx = VTBinarySearch(m_pfData, fValue, iStartIndex, iStopIndex, &iInsertionIdx);
        if (iFoundIdx == -1 && !bExact) {
            const int iLastIdx = std::min(iInsertionIdx + 1, m_iNumItems - 1);
            for (int i = std::max(iInsertionIdx - 1, 0); i <= iLastIdx; ++i) {
                if (VTFeq(m_pfData[i], fValue, VT_FLOAT_TOLERANCE)) {
                    iFoundIdx = i;
                    iInsertionIdx = i;
                    break;
                }
            }
        }
        RVF_ASSERT(iInsertionIdx >= 0 && iInsertionIdx <= m_iNumItems);
    }
    if (piInsertionIndex) {
        *piInsertionIndex = iInsertionIdx;
    }
    return iFoundIdx;
}

bool VTFloatArray::LocateValueInSortedArray(float fValue, int* piIdxBefore, int* piIdxAfter, float* pfT) const {
    int iIdxBefore = -1;
    int iIdxAfter = -1;
    float fT = 0;
    const bool bFound = Bracket(fValue, &iIdxBefore, &iIdxAfter, &fT);
    if (piIdxBefore) {
        *piIdxBefore = iIdxBefore;
    }
    if (piIdxAfter) {
        *piIdxAfter = iIdxAfter;
    }
    if (pfT) {
        *pfT = fT;
    }
    return bFound;
}

bool VTFloatArray::Bracket(float fValue, int* piIdxBefore, int* piIdxAfter, float* pfT) const {
    if (m_iNumItems == 0 || fValue < m_pfData[0] || fValue > m_pfData[m_iNumItems - 1]) {
        return false;
    }
    if (fValue == m_pfData[0]) {
        *piIdxBefore = *piIdxAfter = 0;
        return true;
    }
    if (fValue == m_pfData[m_iNumItems - 1]) {
        *piIdxBefore = *piIdxAfter = m_iNumItems - 1;
        return true;
    }
    RVF_ASSERT(fValue > m_pfData[0]);
    RVF_ASSERT(fValue < m_pfData[m_iNumItems - 1]);
    RVF_ASSERT(m_iNumItems >= 2);
    int iInsertionIdx = -1;
    const int iFoundIdx = BinSearch(fValue, true, 0, -1, &iInsertionIdx);
    if (iFoundIdx >= 0) {
        *piIdxBefore = *piIdxAfter = iFoundIdx;
        return true;
    }
    RVF_ASSERT(iFoundIdx == -1);
    // Only a NaN, among the items or as the value, leads to either end.
    if (iInsertionIdx == 0) {
        RVF_ASSERT(iFoundIdx == 0);
        RVF_ASSERT(fValue == m_pfData[0]);
        *piIdxBefore = *piIdxAfter = 0;
    } else if (iInsertionIdx < m_iNumItems) {
        *piIdxBefore = iInsertionIdx - 1;
        *piIdxAfter = iInsertionIdx;
    } else {
        RVF_ASSERT(iFoundIdx == m_iNumItems - 1);
        RVF_ASSERT(fValue == m_pfData[m_iNumItems - 1]);
        *piIdxBefore = *piIdxAfter = m_iNumItems - 1;
    }
    *pfT = GetFraction(fValue, *piIdxBefore, *piIdxAfter);
    return true;
}

float VTFloatArray::GetFraction(float fValue, int iIdxBefore, int iIdxAfter) const {
    RVF_ASSERT(iIdxBefore >= 0 && iIdxBefore < m_iNumItems);
    RVF_ASSERT(iIdxAfter >= 0 && iIdxAfter < m_iNumItems);
    RVF_ASSERT(iIdxAfter >= iIdxBefore);
    const float fValueBefore = m_pfData[iIdxBefore];
    const float fValueAfter = m_pfData[iIdxAfter];
    RVF_ASSERT(fValueAfter >= fValueBefore);
    RVF_ASSERT(fValue >= fValueBefore);
    RVF_ASSERT(fValue <= fValueAfter);
    const float fDelta = fValueAfter - fValueBefore;
    const float fT = fDelta > 0 ? (fValue - fValueBefore) / fDelta : 0;
    RVF_ASSERT(fT >= 0 && fT <= 1);
    return fT;
}

bool VTFloatArray::FindMinMax(float* pfMin, float* pfMax, int iStartIndex, int iNumItems, bool bIgnoreUndefined) const {
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
    const float* pfData = m_pfData + iStartIndex;
    const auto [fMin, fMax] =
        bIgnoreUndefined ? VTArrayLoops::minMaxUpTo(pfData, iNumItems, VT_UNDEFINED_FLOAT_LIMIT, MIN_SEED, MAX_SEED)
                         : VTArrayLoops::minMax(pfData, iNumItems);
    if (bIgnoreUndefined && fMin > fMax) {
        return false;
    }
    if (pfMin) {
        *pfMin = fMin;
    }
    if (pfMax) {
        *pfMax = fMax;
    }
    return true;
}

VTFloatMinMax VTFloatArray::GetMinMax() const {
    VTFloatMinMax minMax;
    for (int i = 0; i < m_iNumItems; ++i) {
        if (m_pfData[i] < minMax.range.min) {
            minMax.SetMin(m_pfData[i], i);
        }
        if (m_pfData[i] > minMax.range.max) {
            minMax.SetMax(m_pfData[i], i);
        }
    }
    return minMax;
}

void VTFloatArray::Offset(float fOffset, bool bIgnoreUndefined) {
    if (fOffset == 0) {
        return;
    }
    const auto changed = [=](float fItem) { return fItem + fOffset; };
    if (bIgnoreUndefined) {
        VTArrayLoops::changeBelow(m_pfData, m_iNumItems, VT_UNDEFINED_FLOAT_LIMIT, changed);
    } else {
        VTArrayLoops::change(m_pfData, m_iNumItems, changed);
    }
}

void VTFloatArray::Scale(float fScale, bool bIgnoreUndefined) {
    if (fScale == 1) {
        return;
    }
    const auto changed = [=](float fItem) { return fItem * fScale; };
    if (bIgnoreUndefined) {
        VTArrayLoops::changeBelow(m_pfData, m_iNumItems, VT_UNDEFINED_FLOAT_LIMIT, changed);
    } else {
        VTArrayLoops::change(m_pfData, m_iNumItems, changed);
    }
}

void VTFloatArray::ScaleAndOffset(float fScale, float fOffset, bool bIgnoreUndefined) {
    if (fScale == 1 && fOffset == 0) {
        return;
    }
    const auto changed = [=](float fItem) { return fScale * fItem + fOffset; };
    if (bIgnoreUndefined) {
        VTArrayLoops::changeBelow(m_pfData, m_iNumItems, VT_UNDEFINED_FLOAT_LIMIT, changed);
    } else {
        VTArrayLoops::change(m_pfData, m_iNumItems, changed);
    }
}

float VTFloatArray::Sum(int iStartIndex, int iNumItems, bool bCheckUndefined) const {
    if (m_iNumItems == 0) {
        return 0;
    }
    RVF_ASSERT(iStartIndex >= 0 && iStartIndex < m_iNumItems);
    if (iNumItems < 0) {
        iNumItems = m_iNumItems - iStartIndex;
    }
    float fSum = 0;
    for (int i = iStartIndex; i < iStartIndex + iNumItems; ++i) {
        if (bCheckUndefined && VTIsUndefined(m_pfData[i])) {
            return VT_UNDEFINED_FLOAT;
        }
        fSum += m_pfData[i];
    }
    return fSum;
}

float VTFloatArray::ComputeAverage(int iStartIndex, int iNumItems) const {
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
    return Sum(iStartIndex, iNumItems, false) / static_cast<float>(iNumItems);
}

void VTFloatArray::Reverse() {
    RVF_ASSERT(m_pfData);
    VTArrayLoops::reverse(m_pfData, m_iNumItems);
}

void VTFloatArray::Interpolate(const VTFloatArray& afValues0, const VTFloatArray& afValues1, float fT,
                               bool bIgnoreUndefined, bool bResize) {
    RVF_ASSERT(afValues0.GetNumItems() == afValues1.GetNumItems());
    const int iNumItems = afValues0.GetNumItems();
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
        const float fValue0 = afValues0.m_pfData[i];
        const float fValue1 = afValues1.m_pfData[i];
        const bool bUndefined = fValue0 > VT_UNDEFINED_FLOAT_LIMIT || fValue1 > VT_UNDEFINED_FLOAT_LIMIT;
        m_pfData[i] = bIgnoreUndefined && bUndefined ? VT_UNDEFINED_FLOAT : fValue0 + (fValue1 - fValue0) * fT;
    }
}
