#include "LibUnstructGrid/VTOSortHash.h"

#include "LibCore/rvfAssert.h"
#include "LibUnstructGrid/VTOArrayInt.h"
#include "LibUnstructGrid/VTOSortFunctions.h"
#include "LibUnstructGrid/VTOSortUnique.h"

#include <algorithm>
#include <cstdlib>
#include <new>

namespace {

/// Bytes of a pool. Its elements are made, from zeroes, as they are handed out: memory that is not needed stays cold.
std::size_t poolSize(int iNumElements) {
    return static_cast<std::size_t>(iNumElements) * sizeof(VTHashElement);
}

/// Whether the value is among the first links of its chain. Not all of them: a long chain is cheaper to sort.
bool standsInFront(const VTHashElement* pElement, int iValue) {
    constexpr int iMaxLinks = 4;
    for (int i = 0; pElement && i < iMaxLinks; ++i, pElement = pElement->pNext) {
        if (pElement->iValue == iValue) {
            return true;
        }
    }
    return false;
}

/// Inserts the values but for most repetitions, which would only make long chains that are walked through cold memory.
/// Returns the last bucket in use.
int insertAll(VTHash& hash, const int* piValues, int iNumItems, int iTableSize) {
    int iLastBucket = 0;
    for (int i = 0; i < iNumItems; ++i) {
        const int iValue = piValues[i];
        // A remainder takes longer than all the rest.
        const int iBucket = iValue >= 0 && iValue < iTableSize ? iValue : iValue % iTableSize;
        if (iBucket < 0 || !standsInFront(hash.GetBucket(iBucket), iValue)) {
            hash.Insert(iBucket, iValue);
            iLastBucket = std::max(iLastBucket, iBucket);
        }
    }
    return iLastBucket;
}

} // namespace

VTHash::~VTHash() {
    Clean();
}

void VTHash::Init(int iMaxElements, int iHashSize) {
    Clean();
    m_iMaxElements = iMaxElements;
    m_iHashSize = iHashSize;
    if (iHashSize >= 1) {
        // Large blocks of it take no time: their zeroes are the system's clean pages.
        m_ppTable.reset(
            static_cast<VTHashElement**>(std::calloc(static_cast<std::size_t>(iHashSize), sizeof(VTHashElement*))));
        if (!m_ppTable) {
            throw std::bad_alloc();
        }
    }
    if (iMaxElements > 0) {
        const int iNumPools = (iMaxElements - 1) / m_iHashBufferSize + 1;
        m_apBuffers.SetSize(iNumPools, -1);
        for (int i = 0; i < iNumPools; ++i) {
            const bool bLast = i == iNumPools - 1;
            const int iNumElements = bLast ? (iMaxElements - 1) % m_iHashBufferSize + 1 : m_iHashBufferSize;
            m_apBuffers[i] = static_cast<VTHashElement*>(operator new[](poolSize(iNumElements)));
        }
    }
}

void VTHash::Insert(int iValue) {
    Insert(iValue % m_iHashSize, iValue);
}

void VTHash::Insert(int iHashIndex, int iValue) {
    RVF_ASSERT(m_ppTable);
    RVF_ASSERT(iHashIndex >= 0 && iHashIndex < m_iHashSize);
    if (m_iMaxElements != -1) {
        RVF_ASSERT((m_iMaxElements == -1) || (m_iNewHashIndex < m_iMaxElements));
    }
    VTHashElement* pElement = NextElement();
    if (!pElement) {
        Clean();
        return;
    }
    pElement->iValue = iValue;
    pElement->pNext = m_ppTable[iHashIndex];
    m_ppTable[iHashIndex] = pElement;
    ++m_iNewHashIndex;
}

bool VTHash::GetBucketValues(int iHashIndex, VTIntArray* paiValues) const {
    RVF_ASSERT(paiValues);
    if (!paiValues) {
        return false;
    }
    paiValues->SetNumItems(0);
    RVF_ASSERT(iHashIndex >= 0 && iHashIndex < m_iHashSize);
    for (const VTHashElement* pElement = m_ppTable[iHashIndex]; pElement; pElement = pElement->pNext) {
        paiValues->AddGrow(pElement->iValue);
    }
    return true;
}

void VTHash::Clean() {
    for (int i = 0; i < m_apBuffers.GetSize(); ++i) {
        operator delete[](m_apBuffers[i]);
    }
    m_apBuffers.SetSize(0, -1);
    m_ppTable.reset();
    m_iNewHashIndex = 0;
    m_iHashSize = 0;
    m_iMaxElements = 0;
}

/// Null when there is no memory for a new pool.
VTHashElement* VTHash::NextElement() {
    const int iBufferIdx = m_iNewHashIndex / m_iHashBufferSize;
    const int iBufferLocalIdx = m_iNewHashIndex % m_iHashBufferSize;
    RVF_ASSERT(iBufferIdx <= m_apBuffers.GetSize());
    if (iBufferIdx == m_apBuffers.GetSize() && !AddPool()) {
        return nullptr;
    }
    RVF_ASSERT(iBufferIdx < m_apBuffers.GetSize());
    RVF_ASSERT(iBufferLocalIdx < m_iHashBufferSize);
    return new (m_apBuffers[iBufferIdx] + iBufferLocalIdx) VTHashElement;
}

bool VTHash::AddPool() {
    const int iPool = m_apBuffers.Add(nullptr);
    m_apBuffers[iPool] = static_cast<VTHashElement*>(operator new[](poolSize(m_iHashBufferSize), std::nothrow));
    return m_apBuffers[iPool] != nullptr;
}

int VTFindUniqueHash(const int* piValues, int iNumItems, int iHashSize, int* piUnique) {
    if (iNumItems < 1) {
        return 0;
    }
    const int iTableSize = iHashSize > 0 && iHashSize < iNumItems ? iHashSize : iNumItems;
    VTHash hash;
    hash.Init(iNumItems, iTableSize);
    const int iLastBucket = insertAll(hash, piValues, iNumItems, iTableSize);
    const auto scratch = std::make_unique_for_overwrite<int[]>(static_cast<std::size_t>(iNumItems));
    int iNumUnique = 0;
    for (int iBucket = 0; iBucket <= iLastBucket; ++iBucket) {
        int iNumValues = 0;
        for (const VTHashElement* pElement = hash.GetBucket(iBucket); pElement; pElement = pElement->pNext) {
            scratch[static_cast<std::size_t>(iNumValues++)] = pElement->iValue;
        }
        if (iNumValues > 0) {
            VTIntInsertionSort(scratch.get(), iNumValues);
            iNumUnique += VTFindUniqueSorted(scratch.get(), iNumValues, piUnique ? piUnique + iNumUnique : nullptr);
        }
    }
    return iNumUnique;
}
