#include "LibUnstructGrid/VTOArrayString.h"

#include "LibUnstructGrid/VTOArray_p.h"
#include "LibUnstructGrid/VTOArrayInt.h"
#include "LibUnstructGrid/VTOSort.h"

#include <algorithm>
#include <climits>
#include <numeric>

namespace {

constexpr wchar_t QUOTE = L'"';

} // namespace

VTStringArray::VTStringArray(const VTStringArray& other) : VTArray() {
    *this = other;
}

VTStringArray::~VTStringArray() {
    VTStringArray::Free();
}

VTStringArray& VTStringArray::operator=(const VTStringArray& other) {
    RVF_ASSERT(this != &other);
    RVF_ASSERT(!m_bSharedData);
    VTArrayBuffer::assign(this, &m_psData, other, other.m_psData);
    return *this;
}

bool VTStringArray::operator==(const VTStringArray& other) const {
    if (m_iNumItems != other.m_iNumItems) {
        return false;
    }
    for (int i = 0; i < m_iNumItems; ++i) {
        if (m_psData[i] != other.m_psData[i]) {
            return false;
        }
    }
    return true;
}

void VTStringArray::Alloc(int iNumItems, int iGrowBy, bool bSetNumItems) {
    RVF_ASSERT(iNumItems > 0);
    RVF_ASSERT(!m_bSharedData);
    VTArrayBuffer::alloc(this, &m_psData, iNumItems, iGrowBy, bSetNumItems);
}

void VTStringArray::Realloc(int iNewSize, int iGrowBy, bool bSetNumItems) {
    RVF_ASSERT((iNewSize > 0) || (iNewSize == -1));
    RVF_ASSERT(!m_bSharedData);
    VTArrayBuffer::realloc(this, &m_psData, iNewSize, iGrowBy, bSetNumItems);
}

void VTStringArray::Free() {
    VTArrayBuffer::free(this, &m_psData);
}

void VTStringArray::SetDataPtr(VTString* pData, int iNumItems) {
    RVF_ASSERT(pData);
    RVF_ASSERT(iNumItems > 0);
    VTArrayBuffer::take(this, &m_psData, pData, iNumItems);
}

void VTStringArray::SetSharedDataPtr(VTString* pData, int iNumItems) {
    SetDataPtr(pData, iNumItems);
    m_bSharedData = true;
}

VTString* VTStringArray::StealData() {
    return VTArrayBuffer::steal(this, &m_psData);
}

void VTStringArray::SetAllItems(const VTString& sValue) {
    VTArrayLoops::fill(m_psData, m_iNumAllocated, sValue);
}

void VTStringArray::CopyData(const VTString* pData, int iNumItems, int iStartDstIndex) {
    RVF_ASSERT(pData);
    RVF_ASSERT(iNumItems >= 0);
    RVF_ASSERT(iStartDstIndex >= 0);
    if (iStartDstIndex + iNumItems > m_iNumAllocated) {
        Realloc(iStartDstIndex + iNumItems, m_iGrowBy, false);
    }
    VTArrayLoops::copy(pData, iNumItems, m_psData + iStartDstIndex);
    m_iNumItems = std::max(m_iNumItems, iStartDstIndex + iNumItems);
}

void VTStringArray::CopyData(const VTStringArray& asValues, int iNumItemsToCopy, int iStartDstIndex,
                             int iStartSrcIndex) {
    RVF_ASSERT(iNumItemsToCopy >= -1);
    RVF_ASSERT(iNumItemsToCopy <= asValues.GetNumItems() - iStartSrcIndex);
    RVF_ASSERT(iStartDstIndex >= 0);
    RVF_ASSERT(iStartSrcIndex >= 0);
    RVF_ASSERT(iStartSrcIndex < asValues.GetNumItems());
    if (iNumItemsToCopy == -1) {
        iNumItemsToCopy = asValues.GetNumItems() - iStartSrcIndex;
    }
    RVF_ASSERT(iNumItemsToCopy >= 0 && iNumItemsToCopy <= asValues.GetNumItems());
    const VTString* pSrcData = asValues.m_psData + iStartSrcIndex;
    RVF_ASSERT(pSrcData);
    CopyData(pSrcData, iNumItemsToCopy, iStartDstIndex);
}

void VTStringArray::Add(const VTStringArray& asValues) {
    RVF_ASSERT((m_iNumItems + asValues.GetNumItems()) <= m_iNumAllocated);
    VTArrayLoops::copy(asValues.m_psData, asValues.m_iNumItems, m_psData + m_iNumItems);
    m_iNumItems += asValues.m_iNumItems;
}

void VTStringArray::Add(const VTString* psValues, int iNumItems) {
    RVF_ASSERT(psValues);
    RVF_ASSERT(iNumItems >= 0);
    RVF_ASSERT((m_iNumItems + iNumItems) <= m_iNumAllocated);
    VTArrayLoops::copy(psValues, iNumItems, m_psData + m_iNumItems);
    m_iNumItems += iNumItems;
}

void VTStringArray::AddGrow(const VTString& sValue) {
    SetAtGrow(m_iNumItems, sValue);
}

void VTStringArray::AddGrow(const VTStringArray& asValues) {
    RVF_ASSERT(!m_bSharedData);
    const int iNewNumItems = m_iNumItems + asValues.m_iNumItems;
    if (iNewNumItems > m_iNumAllocated) {
        Realloc(iNewNumItems + GetGrowBy(), m_iGrowBy, false);
    }
    Add(asValues);
}

void VTStringArray::AddGrow(const VTString* psValues, int iNumItems) {
    RVF_ASSERT(!m_bSharedData);
    const int iNewNumItems = m_iNumItems + iNumItems;
    if (iNewNumItems > m_iNumAllocated) {
        Realloc(iNewNumItems + GetGrowBy(), m_iGrowBy, false);
    }
    Add(psValues, iNumItems);
}

void VTStringArray::SetAtGrow(int iIndex, const VTString& sValue) {
    RVF_ASSERT(!m_bSharedData);
    const VTString sCopy(sValue); // It may be an item of this array.
    if (iIndex >= m_iNumAllocated) {
        Realloc(iIndex + GetGrowBy(), m_iGrowBy, false);
    }
    m_iNumItems = std::max(m_iNumItems, iIndex + 1);
    Set(iIndex, sCopy);
}

void VTStringArray::AddKeepNumItems(const VTString& sValue) {
    RVF_ASSERT(GetNumItems() > 0);
    const VTString sCopy(sValue); // It may be an item of this array.
    VTArrayLoops::copy(m_psData + 1, m_iNumItems - 1, m_psData);
    m_psData[m_iNumItems - 1] = sCopy;
}

void VTStringArray::Insert(int iIndex, const VTString& sValue) {
    RVF_ASSERT((iIndex >= 0) && (iIndex <= m_iNumItems));
    RVF_ASSERT(m_iNumItems <= m_iNumAllocated);
    if (iIndex == m_iNumItems) {
        AddGrow(sValue);
        return;
    }
    const VTString sCopy(sValue); // It may be an item of this array.
    if (m_iNumItems == m_iNumAllocated) {
        Realloc(m_iNumItems + GetGrowBy(), m_iGrowBy, false);
    }
    VTArrayLoops::openGap(m_psData, m_iNumItems, iIndex, 1);
    m_psData[iIndex] = sCopy;
    ++m_iNumItems;
}

void VTStringArray::Insert(int iStartIndex, const VTStringArray& asValues) {
    RVF_ASSERT((iStartIndex >= 0) && (iStartIndex <= m_iNumItems));
    if (iStartIndex == m_iNumItems) {
        AddGrow(asValues);
        return;
    }
    const int iNumValues = asValues.m_iNumItems;
    const int iNewNumItems = m_iNumItems + iNumValues;
    if (iNewNumItems >= m_iNumAllocated) {
        Realloc(iNewNumItems + GetGrowBy(), m_iGrowBy, false);
    }
    VTArrayLoops::openGap(m_psData, m_iNumItems, iStartIndex, iNumValues);
    VTArrayLoops::copy(asValues.m_psData, iNumValues, m_psData + iStartIndex);
    m_iNumItems = iNewNumItems;
}

int VTStringArray::Delete(int iStartIndex, int iNumItems) {
    RVF_ASSERT(iStartIndex >= 0);
    if (iNumItems == -1) {
        iNumItems = m_iNumItems - iStartIndex;
    }
    RVF_ASSERT(iNumItems >= 0);
    RVF_ASSERT(iStartIndex + iNumItems <= GetNumItems());
    // Copies: what stands behind the new end keeps its text.
    const int iNext = iStartIndex + iNumItems;
    VTArrayLoops::copy(m_psData + iNext, m_iNumItems - iNext, m_psData + iStartIndex);
    m_iNumItems -= iNumItems;
    return iNumItems;
}

void VTStringArray::RemoveDuplicates(bool bAlreadySorted) {
    if (m_iNumItems <= 1) {
        return;
    }
    if (!bAlreadySorted) {
        Sort(true);
    }
    VTStringArray asUnique;
    asUnique.Alloc(m_iNumAllocated, -1, false);
    asUnique.Add(m_psData[0]);
    for (int i = 1; i < m_iNumItems; ++i) {
        if (m_psData[i] != m_psData[i - 1]) {
            asUnique.Add(m_psData[i]);
        }
    }
    if (asUnique.m_iNumItems < m_iNumItems) {
        *this = asUnique;
    }
}

VTString VTStringArray::GetAsString(const VTString& sSeparator) const {
    VTString sText(L"");
    int iLength = m_iNumItems > 0 ? (m_iNumItems - 1) * sSeparator.Length() : 0;
    for (int i = 0; i < m_iNumItems; ++i) {
        iLength += std::as_const(m_psData[i]).Length();
    }
    sText.SetBufferLength(iLength + 1);
    AppendTo(&sText, sSeparator);
    return sText;
}

VTString VTStringArray::Concatenate(const VTString& sSeparator) const {
    VTString sText(L"");
    AppendTo(&sText, sSeparator);
    return sText;
}

void VTStringArray::AppendTo(VTString* psText, const VTString& sSeparator) const {
    for (int i = 0; i < m_iNumItems; ++i) {
        if (i > 0) {
            *psText += sSeparator;
        }
        *psText += m_psData[i];
    }
}

VTString VTStringArray::ConcatenateFixedWidth(const VTIntArray& aiWidths, const VTString& sSeparator, wchar_t cPad,
                                              bool bAtEnd, bool bTruncate) const {
    VTString sText(L"");
    for (int i = 0; i < m_iNumItems; ++i) {
        VTString sColumn(m_psData[i]);
        if (i < aiWidths.GetNumItems() && aiWidths.Get(i) > 0) {
            sColumn.Pad(aiWidths.Get(i), cPad, bAtEnd, bTruncate);
        }
        sText += sColumn;
        if (i < m_iNumItems - 1) {
            sText += sSeparator;
        }
    }
    return sText;
}

void VTStringArray::SetFromString(VTString sString, const VTString& sSeparator, bool bTrim, bool bAddBlank) {
    bool bMore = false;
    VTString sToken = sString.GetFirstToken(sSeparator, &bMore);
    while (!sToken.IsBlank() || bMore) {
        AddToken(sToken, bTrim, bAddBlank);
        sToken = sString.GetNextToken(sSeparator, &bMore);
    }
}

void VTStringArray::SetFromQuotedString(VTString sString, wchar_t cSeparator, bool bTrim, bool bAddBlank) {
    bool bMore = false;
    VTString sToken = sString.GetFirstToken(cSeparator, QUOTE, QUOTE, &bMore);
    while (!sToken.IsBlank() || bMore) {
        VTString sUnquoted(sToken);
        sUnquoted.Unquote(QUOTE, false);
        AddToken(sUnquoted, bTrim, bAddBlank);
        sToken = sString.GetNextToken(cSeparator, QUOTE, QUOTE, &bMore);
    }
}

void VTStringArray::AddToken(VTString sToken, bool bTrim, bool bAddBlank) {
    if (bTrim) {
        sToken.Trim(false);
    }
    if (bAddBlank || !sToken.IsBlank()) {
        AddGrow(sToken);
    }
}

int VTStringArray::Find(const VTString& sValue, int iStartIndex, bool bCaseSensitive) const {
    for (int i = iStartIndex; i < m_iNumItems; ++i) {
        if (bCaseSensitive ? m_psData[i] == sValue : m_psData[i].CompareNoCase(sValue) == 0) {
            return i;
        }
    }
    return -1;
}

int VTStringArray::FindSubstring(const VTString& sValue, int iStartIndex, bool bCaseSensitive, int* piCharIndex) const {
    if (piCharIndex) {
        *piCharIndex = -1;
    }
    for (int i = iStartIndex; i < m_iNumItems; ++i) {
        if (m_psData[i].IsNull()) {
            rvf::Assert::handleFailedAssert(RVF_SOURCE_PATH, __LINE__, "m_psData[i] != NULL", nullptr);
        }
        const int iCharIndex = m_psData[i].Find(sValue, 0, true, bCaseSensitive);
        if (iCharIndex != -1) {
            if (piCharIndex) {
                *piCharIndex = iCharIndex;
            }
            return i;
        }
    }
    return -1;
}

int VTStringArray::FindSubstringBestMatch(const VTString& sValue, int* piNumMatches) const {
    int iIdxBestMatch = -1;
    int iBestCharIdx = INT_MAX;
    int iNumMatches = 0;
    int iCharIdx = -1;
    for (int i = FindSubstring(sValue, 0, false, &iCharIdx); i != -1;
         i = FindSubstring(sValue, i + 1, false, &iCharIdx)) {
        RVF_ASSERT(iCharIdx >= 0);
        if (iCharIdx < iBestCharIdx) {
            iIdxBestMatch = i;
            iBestCharIdx = iCharIdx;
            iNumMatches = 1;
        } else if (iCharIdx == iBestCharIdx) {
            RVF_ASSERT(iNumMatches > 0 && iIdxBestMatch >= 0);
            ++iNumMatches;
        }
    }
    RVF_ASSERT((iIdxBestMatch == -1 && iNumMatches == 0) || (iIdxBestMatch >= 0 && iNumMatches > 0));
    if (piNumMatches) {
        *piNumMatches = iNumMatches;
    }
    return iIdxBestMatch;
}

int VTStringArray::BinSearch(const VTString& sValue, int iCharCount, int iStartIndex, int iStopIndex) const {
    if (m_iNumItems == 0) {
        return -1;
    }
    if (iStopIndex == -1) {
        iStopIndex = m_iNumItems - 1;
    }
    RVF_ASSERT(iCharCount >= -1);
    RVF_ASSERT(m_psData);
    RVF_ASSERT(iStartIndex >= 0 && iStartIndex < m_iNumItems);
    RVF_ASSERT(iStopIndex >= 0 && iStopIndex < m_iNumItems);
    RVF_ASSERT(iStopIndex >= iStartIndex);
    int iLow = iStartIndex;
    int iHigh = iStopIndex;
    while (iLow <= iHigh) {
        const int iMiddle = (iLow + iHigh) / 2;
        const int iOrder = sValue.Compare(m_psData[iMiddle], iCharCount);
        if (iOrder == 0) {
            return iMiddle;
        }
        if (iOrder < 0) {
            iHigh = iMiddle - 1;
        } else {
            iLow = iMiddle + 1;
        }
    }
    return -1;
}

int VTStringArray::BinSearchAllMatches(const VTString& sValue, int iCharCount, int iStartIndex, int iStopIndex,
                                       int* piNumMatches) const {
    if (piNumMatches) {
        *piNumMatches = 0;
    }
    const int iHit = BinSearch(sValue, iCharCount, iStartIndex, iStopIndex);
    if (iHit == -1) {
        return -1;
    }
    if (iStopIndex == -1) {
        iStopIndex = m_iNumItems - 1;
    }
    int iFirstHit = iHit;
    while (iFirstHit > iStartIndex && sValue.Compare(m_psData[iFirstHit - 1], iCharCount) == 0) {
        --iFirstHit;
    }
    int iLastHit = iHit;
    while (iLastHit < iStopIndex && sValue.Compare(m_psData[iLastHit + 1], iCharCount) == 0) {
        ++iLastHit;
    }
    RVF_ASSERT(iFirstHit >= iStartIndex);
    RVF_ASSERT(iLastHit <= iStopIndex);
    RVF_ASSERT(iFirstHit <= iLastHit);
    if (piNumMatches) {
        *piNumMatches = iLastHit - iFirstHit + 1;
    }
    return iFirstHit;
}

void VTStringArray::Sort(bool bCheckIfSorted) {
    if (m_iNumItems == 0 || (bCheckIfSorted && IsSorted())) {
        return;
    }
    VTStringQSort(m_psData, m_iNumItems);
}

bool VTStringArray::IsSorted() const {
    RVF_ASSERT(m_psData);
    return VTArrayLoops::isSorted(m_psData, m_iNumItems);
}

int* VTStringArray::GetSortedIndex(bool bCheckIfSorted) const {
    RVF_ASSERT(m_psData);
    int* piSortedIndices = VTArrayLoops::allocate<int>(m_iNumAllocated);
    if (!piSortedIndices) {
        return nullptr;
    }
    if (bCheckIfSorted && IsSorted()) {
        std::iota(piSortedIndices, piSortedIndices + m_iNumItems, 0);
    } else {
        VTStringIndexQSort(m_psData, piSortedIndices, m_iNumItems);
    }
    return piSortedIndices;
}
