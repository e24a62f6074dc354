#pragma once

#include "LibCore/rvfExport.h"

/// A run of equal keys: the key, and its first and last position.
struct VTSortGroup {
    int iKey;
    int iFirst;
    int iLast;
};

/// The number of distinct values, which go to `piUnique` in ascending order. `piUnique` may be null and needs room for
/// as many entries as there may be distinct values. Insertion into a sorted list: quadratic in that number. -1 when
/// there is no memory.
ORV_API int VTFindUnique(const int* piValues, int iNumItems, int* piUnique);

/// The same in one pass over a sorted list: counts, and keeps, each value that differs from its predecessor. On an
/// unsorted list only adjacent repeats go.
ORV_API int VTFindUniqueSorted(const int* piSorted, int iNumItems, int* piUnique);

/// The same along an index list by which the keys ascend; `piUnique` gets keys, not indexes.
ORV_API int VTFindUniqueIndexSorted(const int* piKeys, const int* piIndices, int iNumItems, int* piUnique);

/// The runs of equal keys of a sorted list, in order; returns how many. The caller sizes `pGroups`: one group per item
/// at worst.
ORV_API int VTFindGroups(const int* piSorted, int iNumItems, VTSortGroup* pGroups);

/// The same along an index list. Positions are positions of the walk, not indexes of keys. A null index list walks the
/// keys themselves.
ORV_API int VTFindIndexGroups(const int* piKeys, const int* piIndices, int iNumItems, VTSortGroup* pGroups);
