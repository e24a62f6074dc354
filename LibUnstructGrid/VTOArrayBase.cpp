#include "LibUnstructGrid/VTOArrayBase.h"

#include <algorithm>

int VTArray::GetGrowBy() const {
    return m_iGrowBy >= 0 ? m_iGrowBy : std::clamp(m_iNumAllocated / 8, 4, 1024);
}

void VTArray::SetNumItems(int iNumItems) {
    RVF_ASSERT(iNumItems >= 0);
    RVF_ASSERT(iNumItems <= m_iNumAllocated);
    m_iNumItems = iNumItems;
}
