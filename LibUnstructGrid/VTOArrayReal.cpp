#include "LibUnstructGrid/VTOArrayReal.h"

#include "LibUnstructGrid/VTOArray_p.h"
#include "LibUnstructGrid/VTOArrayInt.h"
#include "LibUnstructGrid/VTOMath.h"
#include "LibUnstructGrid/VTOSort.h"

#include <algorithm>
#include <numeric>

namespace {

// The floats, widened: 1.0000000150474662e30.
constexpr double MIN_SEED = 1e30f;
constexpr double MAX_SEED = -1e30f;

} // namespace

VTRealArray::VTRealArray(const VTRealArray& other) : VTArray() {
    *this = other;
}

VTRealArray::~VTRealArray() {
    VTRealArray::Free();
}

VTRealArray& VTRealArray::operator=(const VTRealArray& other) {
    RVF_ASSERT(!m_bSharedData);
    RVF_ASSERT(this != &other);
    VTArrayBuffer::assign(this, &m_pfData, other, other.m_pfData);
    return *this;
}

bool VTRealArray::operator==(const VTRealArray& other) const {
    return m_iNumItems == other.m_iNumItems &&
           std::equal(m_pfData, m_pfData + m_iNumItems, other.m_pfData,
                      [](double fA, double fB) { return VTFeq(fA, fB, VT_DOUBLE_TOLERANCE); });
}

void VTRealArray::Alloc(int iNumItems, int iGrowBy, bool bSetNumItems) {
    RVF_ASSERT(iNumItems > 0);
    RVF_ASSERT(!m_bSharedData);
    VTArrayBuffer::alloc(this, &m_pfData, iNumItems, iGrowBy, bSetNumItems);
}

void VTRealArray::Realloc(int iNewSize, int iGrowBy, bool bSetNumItems) {
    RVF_ASSERT((iNewSize > 0) || (iNewSize == -1));
    RVF_ASSERT(!m_bSharedData);
    VTArrayBuffer::realloc(this, &m_pfData, iNewSize, iGrowBy, bSetNumItems);
}

void VTRealArray::Free() {
    VTArrayBuffer::free(this, &m_pfData);
}

void VTRealArray::SetDataPtr(double* pData, int iNumItems) {
    RVF_ASSERT(pData);
    RVF_ASSERT(iNumItems > 0);
    VTArrayBuffer::take(this, &m_pfData, pData, iNumItems);
}

void VTRealArray::SetSharedDataPtr(double* pData, int iNumItems) {
    SetDataPtr(pData, iNumItems);
    m_bSharedData = true;
}

double* VTRealArray::StealData() {
    return VTArrayBuffer::steal(this, &m_pfData);
}

void VTRealArray::SetAllItems(double fValue) {
    RVF_ASSERT(m_pfData);
    VTArrayLoops::fill(m_pfData, m_iNumAllocated, fValue);
}

void VTRealArray::SetAllItemsZero() {
    if (m_pfData) {
        VTArrayLoops::fill(m_pfData, m_iNumAllocated, 0.0);
    }
}

void VTRealArray::CopyData(const double* pData, int iNumItems, int iStartDstIndex) {
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

void VTRealArray::CopyData(const VTRealArray& afValues, int iNumItemsToCopy, int iStartDstIndex, int iStartSrcIndex) {
    RVF_ASSERT(iNumItemsToCopy >= -1);
    RVF_ASSERT(iNumItemsToCopy <= afValues.GetNumItems() - iStartSrcIndex);
    RVF_ASSERT(iStartDstIndex >= 0);
    RVF_ASSERT(iStartSrcIndex >= 0);
    RVF_ASSERT(iStartSrcIndex < afValues.GetNumItems());
    if (iNumItemsToCopy == -1) {
        iNumItemsToCopy = afValues.GetNumItems() - iStartSrcIndex;
    }
    RVF_ASSERT(iNumItemsToCopy >= 0 && iNumItemsToCopy <= afValues.GetNumItems());
    const double* pSrcData = afValues.m_pfData + iStartSrcIndex;
    RVF_ASSERT(pSrcData);
    CopyData(pSrcData, iNumItemsToCopy, iStartDstIndex);
}

void VTRealArray::CopyData(const float* pData, int iNumItems, int iStartDstIndex) {
    RVF_ASSERT(pData);
    RVF_ASSERT(iNumItems >= 0);
    RVF_ASSERT(iStartDstIndex >= 0);
    if (iStartDstIndex + iNumItems > m_iNumAllocated) {
        Realloc(iStartDstIndex + iNumItems, m_iGrowBy, false);
    }
    VTArrayLoops::copy(pData, iNumItems, m_pfData + iStartDstIndex);
    m_iNumItems = std::max(m_iNumItems, iStartDstIndex + iNumItems);
}

void VTRealArray::Add(const VTRealArray& afValues) {
    RVF_ASSERT((m_iNumItems + afValues.GetNumItems()) <= m_iNumAllocated);
    VTArrayLoops::copy(afValues.m_pfData, afValues.m_iNumItems, m_pfData + m_iNumItems);
    m_iNumItems += afValues.m_iNumItems;
}

void VTRealArray::Add(const double* pfValues, int iNumItems) {
    RVF_ASSERT(pfValues);
    RVF_ASSERT(iNumItems >= 0);
    RVF_ASSERT((m_iNumItems + iNumItems) <= m_iNumAllocated);
    VTArrayLoops::copy(pfValues, iNumItems, m_pfData + m_iNumItems);
    m_iNumItems += iNumItems;
}

void VTRealArray::AddGrow(double fValue) {
    SetAtGrow(m_iNumItems, fValue);
}

void VTRealArray::AddGrow(const VTRealArray& afValues) {
    RVF_ASSERT(!m_bSharedData);
    const int iNewNumItems = m_iNumItems + afValues.m_iNumItems;
    if (iNewNumItems > m_iNumAllocated) {
        Realloc(iNewNumItems + GetGrowBy(), m_iGrowBy, false);
    }
    Add(afValues);
}

void VTRealArray::AddGrow(const double* pfValues, int iNumItems) {
    RVF_ASSERT(!m_bSharedData);
    const int iNewNumItems = m_iNumItems + iNumItems;
    if (iNewNumItems > m_iNumAllocated) {
        Realloc(iNewNumItems + GetGrowBy(), m_iGrowBy, false);
    }
    Add(pfValues, iNumItems);
}

void VTRealArray::SetAtGrow(int iIndex, double fValue) {
    RVF_ASSERT(!m_bSharedData);
    if (iIndex >= m_iNumAllocated) {
        Realloc(iIndex + GetGrowBy(), m_iGrowBy, false);
    }
    m_iNumItems = std::max(m_iNumItems, iIndex + 1);
    Set(iIndex, fValue);
}

void VTRealArray::AddKeepNumItems(double fValue) {
    RVF_ASSERT(GetNumItems() > 0);
    VTArrayLoops::closeGap(m_pfData, m_iNumItems, 0, 1);
    m_pfData[m_iNumItems - 1] = fValue;
}

void VTRealArray::Insert(int iIndex, double fValue) {
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

void VTRealArray::Insert(int iStartIndex, const VTRealArray& afValues) {
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

void VTRealArray::Delete(int iStartIndex, int iNumItems) {
    RVF_ASSERT(iStartIndex >= 0);
    if (iNumItems == -1) {
        iNumItems = m_iNumItems - iStartIndex;
    }
    RVF_ASSERT(iNumItems >= 0);
    RVF_ASSERT(iStartIndex + iNumItems <= GetNumItems());
    VTArrayLoops::closeGap(m_pfData, m_iNumItems, iStartIndex, iNumItems);
    m_iNumItems -= iNumItems;
}

void VTRealArray::Sort(bool bCheckIfSorted) {
    if (m_iNumItems == 0 || (bCheckIfSorted && IsSorted())) {
        return;
    }
    VTQSort(m_pfData, m_iNumItems);
}

bool VTRealArray::IsSorted() const {
    return VTArrayLoops::isSorted(m_pfData, m_iNumItems);
}

int* VTRealArray::GetSortedIndex(bool bCheckIfSorted) const {
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

void VTRealArray::GetSortedIndex(VTIntArray* paiSortedIndices, bool bCheckIfSorted) const {
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

int VTRealArray::Find(double fValue) const {
    for (int i = 0; i < m_iNumItems; ++i) {
        if (VTFeq(m_pfData[i], fValue, VT_DOUBLE_TOLERANCE)) {
            return i;
        }
    }
    return -1;
}

int VTRealArray::BinSearch(double fValue, bool bExact, int iStartIndex, int iStopIndex, int* piInsertionIndex) const {
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
                if (VTFeq(m_pfData[i], fValue, VT_DOUBLE_TOLERANCE)) {
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

bool VTRealArray::LocateValueInSortedArray(double fValue, int* piIdxBefore, int* piIdxAfter, double* pfT) const {
    int iIdxBefore = -1;
    int iIdxAfter = -1;
    double fT = 0;
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

bool VTRealArray::Bracket(double fValue, int* piIdxBefore, int* piIdxAfter, double* pfT) const {
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

double VTRealArray::GetFraction(double fValue, int iIdxBefore, int iIdxAfter) const {
    RVF_ASSERT(iIdxBefore >= 0 && iIdxBefore < m_iNumItems);
    RVF_ASSERT(iIdxAfter >= 0 && iIdxAfter < m_iNumItems);
    RVF_ASSERT(iIdxAfter >= iIdxBefore);
    const double fValueBefore = m_pfData[iIdxBefore];
    const double fValueAfter = m_pfData[iIdxAfter];
    RVF_ASSERT(fValueAfter >= fValueBefore);
    RVF_ASSERT(fValue >= fValueBefore);
    RVF_ASSERT(fValue <= fValueAfter);
    const double fDelta = fValueAfter - fValueBefore;
    const double fT = fDelta > 0 ? (fValue - fValueBefore) / fDelta : 0;
    RVF_ASSERT(fT >= 0 && fT <= 1);
    return fT;
}

bool VTRealArray::FindMinMax(double* pfMin, double* pfMax, int iStartIndex, int iNumItems,
                             bool bIgnoreUndefined) const {
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
    const double* pfData = m_pfData + iStartIndex;
    const auto [fMin, fMax] =
        bIgnoreUndefined ? VTArrayLoops::minMaxUpTo(pfData, iNumItems, VT_UNDEFINED_DOUBLE_LIMIT, MIN_SEED, MAX_SEED)
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

VTRealMinMax VTRealArray::GetMinMax() const {
    VTRealMinMax minMax;
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

void VTRealArray::Offset(double fOffset, bool bIgnoreUndefined) {
    if (fOffset == 0) {
        return;
    }
    const auto changed = [=](double fItem) { return fItem + fOffset; };
    if (bIgnoreUndefined) {
        VTArrayLoops::changeBelow(m_pfData, m_iNumItems, VT_UNDEFINED_DOUBLE_LIMIT, changed);
    } else {
        VTArrayLoops::change(m_pfData, m_iNumItems, changed);
    }
}

void VTRealArray::Scale(double fScale, bool bIgnoreUndefined) {
    if (fScale == 1) {
        return;
    }
    const auto changed = [=](double fItem) { return fItem * fScale; };
    if (bIgnoreUndefined) {
        VTArrayLoops::changeBelow(m_pfData, m_iNumItems, VT_UNDEFINED_DOUBLE_LIMIT, changed);
    } else {
        VTArrayLoops::change(m_pfData, m_iNumItems, changed);
    }
}

void VTRealArray::ScaleAndOffset(double fScale, double fOffset, bool bIgnoreUndefined) {
    if (fScale == 1 && fOffset == 0) {
        return;
    }
    const auto changed = [=](double fItem) { return fScale * fItem + fOffset; };
    if (bIgnoreUndefined) {
        VTArrayLoops::changeBelow(m_pfData, m_iNumItems, VT_UNDEFINED_DOUBLE_LIMIT, changed);
    } else {
        VTArrayLoops::change(m_pfData, m_iNumItems, changed);
    }
}

double VTRealArray::Sum(int iStartIndex, int iNumItems, bool bCheckUndefined) const {
    if (m_iNumItems == 0) {
        return 0;
    }
    RVF_ASSERT(iStartIndex >= 0 && iStartIndex < m_iNumItems);
    if (iNumItems < 0) {
        iNumItems = m_iNumItems - iStartIndex;
    }
    double fSum = 0;
    for (int i = iStartIndex; i < iStartIndex + iNumItems; ++i) {
        if (bCheckUndefined && VTIsUndefined(m_pfData[i])) {
            return VT_UNDEFINED_DOUBLE;
        }
        fSum += m_pfData[i];
    }
    return fSum;
}

double VTRealArray::ComputeAverage(int iStartIndex, int iNumItems) const {
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
    return Sum(iStartIndex, iNumItems, false) / static_cast<double>(iNumItems);
}

void VTRealArray::Reverse() {
    RVF_ASSERT(m_pfData);
    VTArrayLoops::reverse(m_pfData, m_iNumItems);
}

void VTRealArray::Interpolate(const VTRealArray& afValues0, const VTRealArray& afValues1, double fT,
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
        const double fValue0 = afValues0.m_pfData[i];
        const double fValue1 = afValues1.m_pfData[i];
        const bool bUndefined = fValue0 > VT_UNDEFINED_DOUBLE_LIMIT || fValue1 > VT_UNDEFINED_DOUBLE_LIMIT;
        m_pfData[i] = bIgnoreUndefined && bUndefined ? VT_UNDEFINED_DOUBLE : fValue0 + (fValue1 - fValue0) * fT;
    }
}
