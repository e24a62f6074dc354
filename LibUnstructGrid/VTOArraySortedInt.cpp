#include "LibUnstructGrid/VTOArraySortedInt.h"

#include "LibUnstructGrid/VTOArray_p.h"
#include "LibUnstructGrid/VTOArrayInt.h"
#include "LibUnstructGrid/VTOSort.h"

#include <numeric>

VTSortedIntArray::VTSortedIntArray(const VTIntArray* paiArray) : m_paiArray(paiArray) {}

VTSortedIntArray::VTSortedIntArray(const int* piData, int iNumItems)
    : m_paiArray(nullptr), m_paiOwnArray(std::make_unique<VTIntArray>()) {
    // Lent, not given: the destructor takes the buffer back, and nothing in between writes it.
    m_paiOwnArray->SetDataPtr(const_cast<int*>(piData), iNumItems);
    m_paiArray = m_paiOwnArray.get();
}

VTSortedIntArray::~VTSortedIntArray() {
    if (m_paiOwnArray) {
        m_paiOwnArray->StealData();
    }
}

void VTSortedIntArray::IndexSort() {
    RVF_ASSERT(m_paiArray);
    m_piSortedIndices.reset(VTArrayLoops::allocate<int>(m_paiArray->GetNumAllocated()));
    if (!m_piSortedIndices) {
        return;
    }
    const int* piKeys = m_paiArray->GetDataPtr();
    const int iNumItems = m_paiArray->GetNumItems();
    if (VTIsSorted(piKeys, iNumItems)) {
        std::iota(m_piSortedIndices.get(), m_piSortedIndices.get() + iNumItems, 0);
    } else {
        VTIntIndexQSort(piKeys, m_piSortedIndices.get(), iNumItems);
    }
}

int VTSortedIntArray::IndexBinSearch(int iValue) {
    RVF_ASSERT(m_paiArray);
    if (!m_piSortedIndices) {
        IndexSort();
    }
    if (!m_piSortedIndices) {
        return -1;
    }
    const int iPosition = VTBinaryIndexSearch(m_paiArray->GetDataPtr(), m_piSortedIndices.get(), iValue, 0,
                                              m_paiArray->GetNumItems() - 1, nullptr);
    return iPosition == -1 ? -1 : m_piSortedIndices[iPosition];
}
