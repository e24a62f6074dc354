#pragma once

#include "LibCore/rvfExport.h"

/// Bisects the ascending items from `iStartIndex` to `iStopIndex`, both included. With duplicates the hit is whichever
/// the bisection falls on, not the first.
///
/// `*piInsertionIndex`, when wanted, gets the position of the hit, or the position at which the value can go with the
/// order preserved. An empty range gives its start, and a null list 0.
ORV_API int VTBinarySearch(const int* piData, int iValue, int iStartIndex, int iStopIndex, int* piInsertionIndex);

/// The same for numbers, which are compared exactly. Assert the list, a start of at least 0 and a range that is not
/// empty. Searching for a NaN finds nothing and inserts at the end.
ORV_API int VTBinarySearch(const float* pfData, float fValue, int iStartIndex, int iStopIndex, int* piInsertionIndex);
ORV_API int VTBinarySearch(const double* pdData, double fValue, int iStartIndex, int iStopIndex, int* piInsertionIndex);

/// The same along an index list by which the keys ascend. The answer is a position in the index list.
///
/// The insertion index cannot be relied on. It is 0, not the place of the value, whenever the bisection runs into an
/// empty range: for an empty range from the start, and also on the way when the value belongs directly before an item
/// that was the first of two left. A null list leaves it unwritten.
ORV_API int VTBinaryIndexSearch(const int* piKeys, const int* piIndices, int iValue, int iStartIndex, int iStopIndex,
                                int* piInsertionIndex);

/// Puts the value into an ascending list that has room for `iMaxEntriesInList`, and tells whether it went in. With
/// `bUnique` a value that is there already stays out. The caller counts the entries. A full list and a negative count
/// are asserted and take nothing.
ORV_API bool VTInsertIntInSortedList(int* piList, int iValue, int iNumEntriesInList, int iMaxEntriesInList,
                                     bool bUnique);

/// True when no item exceeds its successor, also for no item and for one.
ORV_API bool VTIsSorted(const int* piData, int iNumItems);

/// The same for keys taken along an index list.
ORV_API bool VTIsIndexSorted(const int* piKeys, const int* piIndices, int iNumItems);

/// Finds an edge of a closed polygon: the position of either value whose successor is the other one. The last position
/// is followed by the first. -1 when there is no such edge, or no list.
ORV_API int VTFind2Ints(int iValueA, int iValueB, const int* piPolygon, int iNumItems);

/// The position of the given occurrence of a value, counted from 1; -1 when there are fewer. Occurrence 0 and negative
/// ones are never found.
ORV_API int VTFindInt(const int* piData, int iNumItems, int iValue, int iOccurrence);
ORV_API int VTFind(const unsigned char* pubData, int iNumItems, unsigned char ubValue, int iOccurrence);
