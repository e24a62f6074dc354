#include "LibUnstructGrid/VTOSortHash.h"

#include "LibCore/rvfAssert.h"
#include "LibUnstructGrid/VTOArrayInt.h"
#include "LibUnstructGrid/VTOSortFunctions.h"
#include "LibUnstructGrid/VTOSortUnique.h"

#include <new>

namespace {

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
void insertAll(VTHash& hash, const int* piValues, int iNumItems, int iTableSize) {
    for (int i = 0; i < iNumItems; ++i) {
        const int iBucket = piValues[i] % iTableSize;
        if (iBucket < 0 || !standsInFront(hash.GetBucket(iBucket), piValues[i])) {
            hash.Insert(iBucket, piValues[i]);
        }
    }
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
        m_ppTable = std::make_unique<VTHashElement*[]>(static_cast<std::size_t>(iHashSize));
    }
    if (iMaxElements > 0) {
        const int iNumPools = (iMaxElements - 1) / m_iHashBufferSize + 1;
        m_apBuffers.SetSize(iNumPools, -1);
        for (int i = 0; i < iNumPools; ++i) {
            const bool bLast = i == iNumPools - 1;
            const int iNumElements = bLast ? (iMaxElements - 1) % m_iHashBufferSize + 1 : m_iHashBufferSize;
            m_apBuffers[i] = new VTHashElement[static_cast<std::size_t>(iNumElements)];
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

VTHashElement* VTHash::GetBucket(int iHashIndex) const {
    RVF_ASSERT(iHashIndex >= 0 && iHashIndex < m_iHashSize);
    return m_ppTable[iHashIndex];
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
        delete[] m_apBuffers[i];
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
    return m_apBuffers[iBufferIdx] + iBufferLocalIdx;
}

bool VTHash::AddPool() {
    std::unique_ptr<VTHashElement[]> pool(new (std::nothrow)
                                              VTHashElement[static_cast<std::size_t>(m_iHashBufferSize)]);
    if (!pool) {
        return false;
    }
    m_apBuffers.Add(pool.get());
    static_cast<void>(pool.release());
    return true;
}

int VTFindUniqueHash(const int* piValues, int iNumItems, int iHashSize, int* piUnique) {
    if (iNumItems < 1) {
        return 0;
    }
    const int iTableSize = iHashSize > 0 && iHashSize < iNumItems ? iHashSize : iNumItems;
    VTHash hash;
    hash.Init(iNumItems, iTableSize);
    insertAll(hash, piValues, iNumItems, iTableSize);
    const auto scratch = std::make_unique_for_overwrite<int[]>(static_cast<std::size_t>(iNumItems));
    int iNumUnique = 0;
    for (int iBucket = 0; iBucket < iTableSize; ++iBucket) {
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
