#pragma once

#include "LibUnstructGrid/VTOArrayBase.h"
#include "LibUnstructGrid/VTOString.h"

class VTIntArray;

/// An array of texts, with joining, splitting and searching.
///
/// The rules of size, growth and borrowed buffers are those of VTIntArray. Its slots are objects: a new slot holds a
/// null string, and a slot behind the items keeps its text until something is written to it.
class ORV_API VTStringArray : public VTArray {
public:
    VTStringArray() = default;
    VTStringArray(const VTStringArray& other);
    ~VTStringArray() override;

    /// Takes over texts, the slots behind the items, capacity and growth step; frees this array when the other has no
    /// buffer. Asserts "this != &other", "!m_bSharedData".
    VTStringArray& operator=(const VTStringArray& other);

    /// Text by text with VTString::operator!=, for which a null string is not an empty one.
    bool operator==(const VTStringArray& other) const;

    void Alloc(int iNumItems, int iGrowBy, bool bSetNumItems) override;
    void Realloc(int iNewSize, int iGrowBy, bool bSetNumItems) override;
    void Free() override;

    /// Asserts "iIndex >= 0", "iIndex < m_iNumItems".
    VTString& Get(int iIndex) {
        RVF_ASSERT(iIndex >= 0);
        RVF_ASSERT(iIndex < m_iNumItems);
        return m_psData[iIndex];
    }

    /// Asserts "iIndex >= 0", "iIndex < m_iNumItems".
    const VTString& Get(int iIndex) const {
        RVF_ASSERT(iIndex >= 0);
        RVF_ASSERT(iIndex < m_iNumItems);
        return m_psData[iIndex];
    }

    /// Like Get().
    VTString& operator[](int iIndex) {
        return Get(iIndex);
    }

    /// Like Get().
    const VTString& operator[](int iIndex) const {
        return Get(iIndex);
    }

    /// Asserts "iIndex >= 0", "iIndex < m_iNumItems".
    void Set(int iIndex, const VTString& sValue) {
        RVF_ASSERT(iIndex >= 0);
        RVF_ASSERT(iIndex < m_iNumItems);
        m_psData[iIndex] = sValue;
    }

    /// The buffer, or null.
    VTString* GetDataPtr() {
        return m_psData;
    }

    /// The buffer, or null.
    const VTString* GetDataPtr() const {
        return m_psData;
    }

    /// The place of an item. Asserts "iIndex >= 0 && iIndex < m_iNumItems".
    VTString* GetDataPtr(int iIndex) {
        RVF_ASSERT(iIndex >= 0 && iIndex < m_iNumItems);
        return m_psData + iIndex;
    }

    /// The place of an item. Asserts "iIndex >= 0 && iIndex < m_iNumItems".
    const VTString* GetDataPtr(int iIndex) const {
        RVF_ASSERT(iIndex >= 0 && iIndex < m_iNumItems);
        return m_psData + iIndex;
    }

    /// Takes over a buffer that was made with `new VTString[]` and is full of items. Asserts "pData", "iNumItems > 0".
    void SetDataPtr(VTString* pData, int iNumItems);
    /// Borrows a buffer full of items. Asserts "pData", "iNumItems > 0".
    void SetSharedDataPtr(VTString* pData, int iNumItems);
    /// As in VTIntArray: what was borrowed goes on counting as borrowed until Free().
    VTString* StealData();

    /// Writes every slot of the buffer, not just the items.
    void SetAllItems(const VTString& sValue);

    /// As in VTIntArray, but text by text in every case. Asserts "pData", "iNumItems >= 0", "iStartDstIndex >= 0".
    void CopyData(const VTString* pData, int iNumItems, int iStartDstIndex = 0);
    /// As in VTIntArray; a count of -1 means up to the last item of the source. Asserts "iNumItemsToCopy >= -1",
    /// "iNumItemsToCopy <= asValues.GetNumItems() - iStartSrcIndex", "iStartDstIndex >= 0", "iStartSrcIndex >= 0",
    /// "iStartSrcIndex < asValues.GetNumItems()", then
    /// "iNumItemsToCopy >= 0 && iNumItemsToCopy <= asValues.GetNumItems()" and "pSrcData".
    void CopyData(const VTStringArray& asValues, int iNumItemsToCopy = -1, int iStartDstIndex = 0,
                  int iStartSrcIndex = 0);

    /// Asserts "m_iNumItems < m_iNumAllocated". Never grows.
    void Add(const VTString& sValue) {
        RVF_ASSERT(m_iNumItems < m_iNumAllocated);
        m_psData[m_iNumItems++] = sValue;
    }

    /// Asserts "(m_iNumItems + asValues.GetNumItems()) <= m_iNumAllocated". Never grows.
    void Add(const VTStringArray& asValues);
    /// Asserts "psValues", "iNumItems >= 0", "(m_iNumItems + iNumItems) <= m_iNumAllocated". Never grows.
    void Add(const VTString* psValues, int iNumItems);
    /// Asserts "!m_bSharedData".
    void AddGrow(const VTString& sValue);
    /// Asserts "!m_bSharedData".
    void AddGrow(const VTStringArray& asValues);
    /// The values must not be in this array. Asserts "!m_bSharedData" and what Add() asserts.
    void AddGrow(const VTString* psValues, int iNumItems);
    /// Slots skipped over become items and keep the texts they have. Asserts "!m_bSharedData".
    void SetAtGrow(int iIndex, const VTString& sValue);
    /// Drops the first item and writes the value last. Asserts "GetNumItems() > 0".
    void AddKeepNumItems(const VTString& sValue);

    /// Grows when full. Asserts "(iIndex >= 0) && (iIndex <= m_iNumItems)", "m_iNumItems <= m_iNumAllocated".
    void Insert(int iIndex, const VTString& sValue);
    /// Inserts another array, which must not be this one. Asserts
    /// "(iStartIndex >= 0) && (iStartIndex <= m_iNumItems)".
    void Insert(int iStartIndex, const VTStringArray& asValues);
    /// -1 means up to the last item. The capacity stays, and the slots behind the new end keep their texts. Asserts
    /// "iStartIndex >= 0", "iNumItems >= 0", "iStartIndex + iNumItems <= GetNumItems()".
    /// @return how many items went.
    int Delete(int iStartIndex, int iNumItems);
    /// Leaves one of each text, with case. The array is sorted first; the order of first appearance is lost. With the
    /// flag it is taken as it is, and only adjacent repeats go.
    void RemoveDuplicates(bool bAlreadySorted);

    /// All texts with the separator between them; the empty text without items. Reserves the room first.
    VTString GetAsString(const VTString& sSeparator) const;
    /// The same without reserving the room.
    VTString Concatenate(const VTString& sSeparator) const;
    /// The same with each text brought to its width by VTString::Pad(). A text without a width of its own, or with one
    /// of 0 or less, stays as it is. With `bTruncate` a longer text is cut, but to one character more than its width.
    VTString ConcatenateFixedWidth(const VTIntArray& aiWidths, const VTString& sSeparator, wchar_t cPad, bool bAtEnd,
                                   bool bTruncate) const;

    /// Splits a text at the separators and adds the pieces to this array, which keeps what it has. `bTrim` takes white
    /// space off each piece; blank pieces are added only with `bAddBlank`, and never one behind the last separator.
    void SetFromString(VTString sString, const VTString& sSeparator, bool bTrim, bool bAddBlank);
    /// The same with pieces in double quotes, which come off: a separator within them does not split.
    void SetFromQuotedString(VTString sString, wchar_t cSeparator, bool bTrim, bool bAddBlank);

    /// The first item from the start index on that is the text, or -1.
    int Find(const VTString& sValue, int iStartIndex = 0, bool bCaseSensitive = true) const;
    /// The first item from the start index on that contains the text, or -1. `piCharIndex`, which may be null, takes
    /// the place in the item, or -1. Asserts "m_psData[i] != NULL" for each null string it meets.
    int FindSubstring(const VTString& sValue, int iStartIndex = 0, bool bCaseSensitive = true,
                      int* piCharIndex = nullptr) const;
    /// The item in which the text, without case, comes earliest, or -1; of several the first. `piNumMatches`, which may
    /// be null, takes how many items have it at that place.
    int FindSubstringBestMatch(const VTString& sValue, int* piNumMatches = nullptr) const;

    /// Searches sorted items from the start to the stop index, of which -1 means the last item. With a count of
    /// characters other than -1 only that many are compared. Of equal items any one may be found. -1 for none. Asserts
    /// "iCharCount >= -1", "m_psData", "iStartIndex >= 0 && iStartIndex < m_iNumItems",
    /// "iStopIndex >= 0 && iStopIndex < m_iNumItems", "iStopIndex >= iStartIndex" unless there are no items.
    int BinSearch(const VTString& sValue, int iCharCount = -1, int iStartIndex = 0, int iStopIndex = -1) const;
    /// The first of the equal items that BinSearch() finds one of; `piNumMatches`, which may be null, takes how many
    /// there are in the range.
    int BinSearchAllMatches(const VTString& sValue, int iCharCount = -1, int iStartIndex = 0, int iStopIndex = -1,
                            int* piNumMatches = nullptr) const;

    /// By character code. With the flag, checks first whether there is anything to do.
    void Sort(bool bCheckIfSorted);
    /// No item comes behind its successor. Asserts "m_psData", also for an array without a buffer.
    bool IsSorted() const;
    /// The indexes of the items in ascending order, for the caller to free with delete[]. The list has a place for each
    /// slot of this array, and only as many entries as there are items are written. Null without a buffer. Asserts
    /// "m_psData".
    int* GetSortedIndex(bool bCheckIfSorted) const;

protected:
    VTString* m_psData = nullptr;

private:
    void AddToken(VTString sToken, bool bTrim, bool bAddBlank);
    void AppendTo(VTString* psText, const VTString& sSeparator) const;
};
