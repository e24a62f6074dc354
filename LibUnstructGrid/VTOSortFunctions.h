#pragma once

#include "LibCore/rvfExport.h"

class VTString;
class VTVector;
struct VTIntCoord2D;

// All sorts are ascending. A buffer must hold as many items as the count says.

ORV_API void VTIntBubbleSort(int* piArray, int iNumItems);
ORV_API void VTIntInsertionSort(int* piArray, int iNumItems);
ORV_API void VTFloatBubbleSort(float* pfArray, int iNumItems);
ORV_API void VTFloatInsertionSort(float* pfArray, int iNumItems);

/// Quick sort. For float and double a NaN compares as neither above nor below, so its place, and the order around it,
/// is whatever the exchanges leave.
ORV_API void VTIntQSort(int* piKeys, int iNumItems);
ORV_API void VTInt64QSort(long long* piKeys, int iNumItems);
ORV_API void VTQSort(float* pfKeys, int iNumItems);
ORV_API void VTQSort(double* pdKeys, int iNumItems);
ORV_API void VTStringQSort(VTString* psKeys, int iNumItems);

/// The quick sort of VTIntQSort() on the inclusive range. Its pivot is the median of the first, the middle and the last
/// item, where all other sorts take the middle one.
///
/// The items before the range must be in place already, none above any of the range: where the range is short, an
/// item moves down past `iLeft` as long as larger ones precede it.
ORV_API void VTIntQuickSortRecursive(int* piKeys, int iLeft, int iRight);

/// Index sorts fill `piIndices` with 0 to count - 1 and reorder it so that the keys ascend along it. The keys stay. Not
/// stable: the order among equal keys follows from the partitions, the same in every run.
ORV_API void VTIntIndexQSort(const int* piKeys, int* piIndices, int iNumItems);
ORV_API void VTIndexQSort(const float* pfKeys, int* piIndices, int iNumItems);
ORV_API void VTIndexQSort(const double* pdKeys, int* piIndices, int iNumItems);
ORV_API void VTStringIndexQSort(const VTString* psKeys, int* piIndices, int iNumItems);

/// By the component piSortOrder[0], then [1], then [2], all compared exactly.
ORV_API void VTVectorIndexQSort(const VTVector* pKeys, int* piIndices, int iNumItems, const int* piSortOrder);

/// By x and then y with the flag, by y and then x without.
ORV_API void VTIntCoord2DIndexQSort(const VTIntCoord2D* pKeys, int* piIndices, int iNumItems, bool bXFirst);
