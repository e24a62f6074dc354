#include "LibUnstructGrid/VTOSortUnique.h"

#include "LibUnstructGrid/VTOSortSearch.h"

#include <algorithm>
#include <cstdlib>
#include <memory>

namespace {

template <typename KeyAt>
int findUnique(int iNumItems, int* piUnique, KeyAt keyAt) {
    int iNumUnique = 0;
    for (int i = 0; i < iNumItems; ++i) {
        if (i == 0 || keyAt(i) != keyAt(i - 1)) {
            if (piUnique) {
                piUnique[iNumUnique] = keyAt(i);
            }
            ++iNumUnique;
        }
    }
    return iNumUnique;
}

struct FreeDeleter {
    void operator()(int* piList) const {
        std::free(piList);
    }
};

using IntList = std::unique_ptr<int, FreeDeleter>;

/// False, with the list as it was, when there is no memory.
bool resize(IntList& list, int iNumItems) {
    void* pMemory = std::realloc(list.get(), sizeof(int) * static_cast<std::size_t>(iNumItems));
    if (!pMemory) {
        return false;
    }
    static_cast<void>(list.release());
    list.reset(static_cast<int*>(pMemory));
    return true;
}

} // namespace

int VTFindUnique(const int* piValues, int iNumItems, int* piUnique) {
    constexpr int iGrowBy = 200;
    IntList list;
    int iMaxEntries = iGrowBy;
    if (!resize(list, iMaxEntries)) {
        return -1;
    }
    int iNumUnique = 0;
    for (int i = 0; i < iNumItems; ++i) {
        if (iNumUnique == iMaxEntries) {
            iMaxEntries += iGrowBy;
            if (!resize(list, iMaxEntries)) {
                return -1;
            }
        }
        if (VTInsertIntInSortedList(list.get(), piValues[i], iNumUnique, iMaxEntries, true)) {
            ++iNumUnique;
        }
    }
    if (piUnique) {
        std::copy_n(list.get(), iNumUnique, piUnique);
    }
    return iNumUnique;
}

int VTFindUniqueSorted(const int* piSorted, int iNumItems, int* piUnique) {
    return findUnique(iNumItems, piUnique, [=](int i) { return piSorted[i]; });
}

int VTFindUniqueIndexSorted(const int* piKeys, const int* piIndices, int iNumItems, int* piUnique) {
    return findUnique(iNumItems, piUnique, [=](int i) { return piKeys[piIndices[i]]; });
}

int VTFindGroups(const int* piSorted, int iNumItems, VTSortGroup* pGroups) {
    return VTFindIndexGroups(piSorted, nullptr, iNumItems, pGroups);
}

int VTFindIndexGroups(const int* piKeys, const int* piIndices, int iNumItems, VTSortGroup* pGroups) {
    int iNumGroups = 0;
    for (int i = 0; i < iNumItems; ++i) {
        const int iKey = piIndices ? piKeys[piIndices[i]] : piKeys[i];
        if (iNumGroups == 0 || pGroups[iNumGroups - 1].iKey != iKey) {
            pGroups[iNumGroups++] = {iKey, i, i};
        } else {
            pGroups[iNumGroups - 1].iLast = i;
        }
    }
    return iNumGroups;
}
