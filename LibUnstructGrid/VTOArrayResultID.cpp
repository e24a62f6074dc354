#include "LibUnstructGrid/VTOArrayResultID.h"

#include "LibUnstructGrid/VTOSort.h"

#include <memory>

bool VTResultIDArray::operator==(const VTResultIDArray& other) const {
    return m_aiResultIDs == other.m_aiResultIDs && m_aiSectionIDs == other.m_aiSectionIDs;
}

void VTResultIDArray::Alloc(int iNumItems, int iGrowBy, bool bSetNumItems) {
    m_aiResultIDs.Alloc(iNumItems, iGrowBy, bSetNumItems);
    m_aiSectionIDs.Alloc(iNumItems, iGrowBy, bSetNumItems);
}

void VTResultIDArray::Realloc(int iNewSize, int iGrowBy, bool bSetNumItems) {
    m_aiResultIDs.Realloc(iNewSize, iGrowBy, bSetNumItems);
    m_aiSectionIDs.Realloc(iNewSize, iGrowBy, bSetNumItems);
}

void VTResultIDArray::Free() {
    m_aiResultIDs.Free();
    m_aiSectionIDs.Free();
}

int VTResultIDArray::GetNumItems() const {
    RVF_ASSERT(m_aiResultIDs.GetNumItems() == m_aiSectionIDs.GetNumItems());
    return m_aiResultIDs.GetNumItems();
}

int VTResultIDArray::GetNumAllocated() const {
    RVF_ASSERT(m_aiResultIDs.GetNumAllocated() == m_aiSectionIDs.GetNumAllocated());
    return m_aiResultIDs.GetNumAllocated();
}

void VTResultIDArray::SetNumItems(int iNumItems) {
    m_aiResultIDs.SetNumItems(iNumItems);
    m_aiSectionIDs.SetNumItems(iNumItems);
}

VTResultID VTResultIDArray::Get(int iIndex) const {
    RVF_ASSERT(iIndex >= 0);
    RVF_ASSERT(iIndex < GetNumItems());
    return VTResultID(m_aiResultIDs.Get(iIndex), m_aiSectionIDs.Get(iIndex));
}

void VTResultIDArray::Set(int iIndex, const VTResultID& id) {
    RVF_ASSERT(iIndex >= 0);
    RVF_ASSERT(iIndex < GetNumItems());
    m_aiResultIDs.Set(iIndex, id.iID);
    m_aiSectionIDs.Set(iIndex, id.iSectionID);
}

const VTIntArray& VTResultIDArray::GetResultIDs() const {
    return m_aiResultIDs;
}

const VTIntArray& VTResultIDArray::GetSectionIDs() const {
    return m_aiSectionIDs;
}

void VTResultIDArray::Add(const VTResultID& id) {
    RVF_ASSERT(GetNumItems() < GetNumAllocated());
    m_aiResultIDs.Add(id.iID);
    m_aiSectionIDs.Add(id.iSectionID);
}

void VTResultIDArray::AddGrow(const VTResultID& id) {
    m_aiResultIDs.AddGrow(id.iID);
    m_aiSectionIDs.AddGrow(id.iSectionID);
}

void VTResultIDArray::AddUnique(const VTResultID& id, bool* pbAdded) {
    const bool bFound = Find(id, 0) != -1;
    if (!bFound) {
        Add(id);
    }
    if (pbAdded) {
        *pbAdded = !bFound;
    }
}

void VTResultIDArray::AddUnique(const VTResultIDArray& aIDs, bool* pbAdded) {
    for (int i = 0, iNumIDs = aIDs.GetNumItems(); i < iNumIDs; ++i) {
        bool bAdded = false;
        AddUnique(aIDs.Get(i), &bAdded);
        if (bAdded && pbAdded) {
            *pbAdded = true;
        }
    }
}

void VTResultIDArray::AddUniqueGrow(const VTResultID& id, bool* pbAdded) {
    const bool bFound = Find(id, 0) != -1;
    if (!bFound) {
        AddGrow(id);
    }
    if (pbAdded) {
        *pbAdded = !bFound;
    }
}

void VTResultIDArray::AddUniqueGrow(const VTResultIDArray& aIDs, bool* pbAdded) {
    for (int i = 0, iNumIDs = aIDs.GetNumItems(); i < iNumIDs; ++i) {
        bool bAdded = false;
        AddUniqueGrow(aIDs.Get(i), &bAdded);
        if (bAdded && pbAdded) {
            *pbAdded = true;
        }
    }
}

void VTResultIDArray::Delete(int iStartIndex, int iNumItems) {
    RVF_ASSERT(iStartIndex >= 0);
    if (iNumItems == -1) {
        iNumItems = GetNumItems() - iStartIndex;
    }
    RVF_ASSERT(iNumItems >= 0);
    RVF_ASSERT(iStartIndex + iNumItems <= GetNumItems());
    m_aiResultIDs.Delete(iStartIndex, iNumItems);
    m_aiSectionIDs.Delete(iStartIndex, iNumItems);
}

void VTResultIDArray::DeleteNoResults() {
    for (int i = GetNumItems() - 1; i >= 0; --i) {
        if (m_aiResultIDs.Get(i) < 0) {
            Delete(i, 1);
        }
    }
}

int VTResultIDArray::Find(const VTResultID& id, int iStartIndex) const {
    for (int i = iStartIndex, iNumItems = GetNumItems(); i < iNumItems; ++i) {
        if (Get(i) == id) {
            return i;
        }
    }
    return -1;
}

void VTResultIDArray::Sort(bool bCheckIfSorted) {
    const int iNumItems = GetNumItems();
    if (iNumItems == 0 || (bCheckIfSorted && IsSorted())) {
        return;
    }
    SortByResultID();
    // The result ids stay as they are from here on; each run of equal ones gets its sections in order.
    for (int iFirst = 0, iNext = 0; iFirst < iNumItems; iFirst = iNext) {
        while (iNext < iNumItems && m_aiResultIDs.Get(iNext) == m_aiResultIDs.Get(iFirst)) {
            ++iNext;
        }
        VTIntQSort(m_aiSectionIDs.GetDataPtr(iFirst), iNext - iFirst);
    }
}

void VTResultIDArray::SortByResultID() {
    const VTResultIDArray aUnsorted(*this);
    const int iNumItems = GetNumItems();
    const std::unique_ptr<const int[]> piSortedIndices(m_aiResultIDs.GetSortedIndex(true));
    for (int i = 0; i < iNumItems; ++i) {
        const int iIndex = piSortedIndices[static_cast<std::size_t>(i)];
        RVF_ASSERT((iIndex >= 0) && (iIndex < iNumItems));
        Set(i, aUnsorted.Get(iIndex));
    }
}

bool VTResultIDArray::IsSorted() const {
    for (int i = 1, iNumItems = GetNumItems(); i < iNumItems; ++i) {
        const VTResultID prev = Get(i - 1);
        const VTResultID current = Get(i);
        if (prev.iID > current.iID) {
            return false;
        }
        if (prev.iID < current.iID) {
            continue;
        }
        RVF_ASSERT(prev.iID == current.iID);
        if (prev.iSectionID > current.iSectionID) {
            return false;
        }
    }
    return true;
}
