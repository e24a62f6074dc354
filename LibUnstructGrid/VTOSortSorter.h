#pragma once

#include "LibCore/rvfExport.h"

#include <concepts>
#include <type_traits>

class VTString;
class VTVector;
struct VTIntCoord2D;

namespace vt::internal {

/// Keys that are compared component by component carry an order of their components.
template <typename T>
concept ComponentKey = std::same_as<T, VTVector> || std::same_as<T, VTIntCoord2D>;

struct NoSortOrder {};

/// What a sorter of such keys has besides.
class ORV_API ComponentSortOrder {
public:
    /// The order of components for VTVector keys; the first number alone for VTIntCoord2D keys: 0 sorts by y where the
    /// x are equal and by x otherwise, any other number sorts by y first.
    void SetSortOrder(int iFirst, int iSecond, int iThird) {
        m_aiSortOrder[0] = iFirst;
        m_aiSortOrder[1] = iSecond;
        m_aiSortOrder[2] = iThird;
    }

protected:
    int m_aiSortOrder[3] = {0, 1, 2};
};

template <typename T>
using SortOrderOf = std::conditional_t<ComponentKey<T>, ComponentSortOrder, NoSortOrder>;

} // namespace vt::internal

/// Sorts a caller's buffer in place, or a list of indexes by keys that do not move.
///
/// The order is given by the two virtual comparisons alone; a subclass changes it by overriding them. No sort is
/// stable, the index sort no more than the others, but all are deterministic: how equal keys end up follows from the
/// steps told at each stage. Nothing is allocated, but each partition copies its pivot.
///
/// Exists for int, float, double, long long, VTString, VTVector and VTIntCoord2D. One sorter serves one thread.
template <typename T>
class ORV_API VTSorterTemplate : public vt::internal::SortOrderOf<T> {
public:
    VTSorterTemplate() {
        Ground();
    }

    virtual ~VTSorterTemplate() = default;

    VTSorterTemplate(const VTSorterTemplate&) = delete;
    VTSorterTemplate& operator=(const VTSorterTemplate&) = delete;

    virtual bool CompGT(const T& a, const T& b) const;
    virtual bool CompLT(const T& a, const T& b) const;
    bool CompEQ(const T& a, const T& b) const;

    /// Assert a buffer and at least one item.
    void QSort(T* pData, int iNumItems);
    void InsertionSort(T* pData, int iNumItems);
    void BubbleSort(T* pData, int iNumItems);

    /// Reorders the indexes that stand in `piIndices`, which the caller has filled. Asserts both buffers and at least
    /// one item.
    void QSortIdx(const T* pKeys, int* piIndices, int iNumItems);

    /// VTBinarySearch() by CompEQ() and CompLT().
    int BinarySearch(const T* pData, const T& value, int iStartIndex, int iStopIndex,
                     int* piInsertionIndex) requires std::floating_point<T>;

protected:
    void Ground();
    /// Both bounds belong to the range. Ranges of 33 items or more are partitioned, the left part is sorted first;
    /// shorter ones go through an insertion sort. The recursion is as deep as the keys make it.
    void QuickSortRecursive(int iLeft, int iRight);

    /// Hoare's scheme around the middle item; the scan from the right goes first, and items equal to the pivot are
    /// exchanged. Returns the last position of the left part.
    int Partition(int iLeft, int iRight);

    /// Asserts the buffer of a value sort, or keys and indexes of an index sort.
    void InsertionSortSubArray(int iLeft, int iRight);
    void InsertionSortIdxSubArray(int iLeft, int iRight);

    /// Either kind of sort, by whether there is an index list. Ends after a pass without an exchange.
    void BubbleSortSubArray(int iLeft, int iRight);
    void ExchangeVal(int iPosA, int iPosB);
    void ExchangeIdx(int iPosA, int iPosB);

    T* m_pData;
    const T* m_pKeys;
    int* m_piIndices;
};

template <>
bool VTSorterTemplate<VTVector>::CompGT(const VTVector& a, const VTVector& b) const;
template <>
bool VTSorterTemplate<VTVector>::CompLT(const VTVector& a, const VTVector& b) const;
template <>
bool VTSorterTemplate<VTIntCoord2D>::CompGT(const VTIntCoord2D& a, const VTIntCoord2D& b) const;
template <>
bool VTSorterTemplate<VTIntCoord2D>::CompLT(const VTIntCoord2D& a, const VTIntCoord2D& b) const;

extern template class VTSorterTemplate<int>;
extern template class VTSorterTemplate<float>;
extern template class VTSorterTemplate<double>;
extern template class VTSorterTemplate<long long>;
extern template class VTSorterTemplate<VTString>;
extern template class VTSorterTemplate<VTVector>;
extern template class VTSorterTemplate<VTIntCoord2D>;
