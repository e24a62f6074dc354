#pragma once

#include "LibCore/rvfAssert.h"
#include "LibCore/rvfExport.h"
#include "LibUnstructGrid/VTOArrayTemplate.h"

#include <cstdlib>
#include <memory>

class VTIntArray;

/// A link of a VTHash chain.
struct VTHashElement {
    int iValue = 0;
    VTHashElement* pNext = nullptr;
};

/// The element pools of a VTHash, each an array of elements. It does not own them.
class VTHasElementPtrArray : public VTOArray<VTHashElement*, VTHashElement*> {};

/// A chained hash of ints that collects values without an allocation for each, and hands out its buckets.
///
/// Elements come from pools of 10000. With a known maximum all pools are made by Init() and none later; without one
/// they come on demand. Elements never move and none can be removed. There is no test for duplicates: an equal value is
/// stored again. The number of buckets is fixed by Init(), chains just grow.
class ORV_API VTHash {
public:
    /// Without buckets, until Init().
    VTHash() = default;
    ~VTHash();

    VTHash(const VTHash&) = delete;
    VTHash& operator=(const VTHash&) = delete;

    /// Empties the hash and gives it `iHashSize` buckets and room for `iMaxElements` elements; -1 for as many as come.
    /// A maximum of 0 makes room on demand too, and every Insert() then fails its check before it inserts. Below 1
    /// bucket there is no table, and nothing may be inserted.
    void Init(int iMaxElements, int iHashSize);

    /// Puts the value into the bucket of its remainder by the number of buckets. For values of at least 0: a negative
    /// one has a negative remainder and no bucket.
    void Insert(int iValue);

    /// Puts the value first into a bucket of the caller's choice. Asserts the table, the bucket and, where there is
    /// one, the maximum; goes on after each. When there is no memory for a new pool the hash drops all it holds.
    void Insert(int iHashIndex, int iValue);

    /// The chain of a bucket, last inserted first; null when it is empty. Asserts the bucket.
    VTHashElement* GetBucket(int iHashIndex) const {
        RVF_ASSERT(iHashIndex >= 0 && iHashIndex < m_iHashSize);
        return m_ppTable[iHashIndex];
    }

    /// Replaces the content of the array by the values of a bucket, last inserted first. False without an array, which
    /// is asserted. Asserts the bucket.
    bool GetBucketValues(int iHashIndex, VTIntArray* paiValues) const;

    /// Back to a hash without buckets and elements.
    void Clean();

private:
    VTHashElement* NextElement();
    bool AddPool();

    static constexpr int m_iHashBufferSize = 10000; ///< Elements per pool.

    struct FreeDeleter {
        void operator()(VTHashElement** ppTable) const {
            std::free(ppTable);
        }
    };

    std::unique_ptr<VTHashElement*[], FreeDeleter> m_ppTable;
    VTHasElementPtrArray m_apBuffers;
    int m_iNewHashIndex = 0;
    int m_iHashSize = 0;
    int m_iMaxElements = 0;
};

/// The number of distinct values, which go to `piUnique` unless that is null. For values of at least 0.
///
/// They come bucket by bucket, ascending within each bucket. So they ascend overall only when all are below the number
/// of buckets, which is `iHashSize` when that lies between 0 and the number of values, and that number otherwise: 5, 5
/// and 7 in three buckets come out as 7 and 5.
///
/// Memory for the case that all values are distinct is taken at once, but repetitions leave most of it untouched. Where
/// few values far apart repeat often, about as many buckets as there are distinct values stay in the caches, and are
/// several times faster than one for each value.
ORV_API int VTFindUniqueHash(const int* piValues, int iNumItems, int iHashSize, int* piUnique);
