#include "LibUnstructGrid/VTOArrayPartInstanceID.h"

VTPartInstanceIDArray& VTPartInstanceIDArray::operator=(const VTPartInstanceIDArray& other) {
    RVF_ASSERT(this != &other);
    m_aiThirdIDs = other.m_aiThirdIDs;
    m_aiFourthIDs = other.m_aiFourthIDs;
    m_aiGeometryIDs = other.m_aiGeometryIDs;
    m_aiPartIDs = other.m_aiPartIDs;
    return *this;
}

void VTPartInstanceIDArray::Alloc(int iNumItems, int iGrowBy, bool bSetNumItems) {
    RVF_ASSERT(iNumItems > 0);
    m_aiThirdIDs.Alloc(iNumItems, iGrowBy, bSetNumItems);
    m_aiFourthIDs.Alloc(iNumItems, iGrowBy, bSetNumItems);
    m_aiGeometryIDs.Alloc(iNumItems, iGrowBy, bSetNumItems);
    m_aiPartIDs.Alloc(iNumItems, iGrowBy, bSetNumItems);
}

void VTPartInstanceIDArray::Realloc(int iNewSize, int iGrowBy, bool bSetNumItems) {
    RVF_ASSERT((iNewSize > 0) || (iNewSize == -1));
    m_aiThirdIDs.Realloc(iNewSize, iGrowBy, bSetNumItems);
    m_aiFourthIDs.Realloc(iNewSize, iGrowBy, bSetNumItems);
    m_aiGeometryIDs.Realloc(iNewSize, iGrowBy, bSetNumItems);
    m_aiPartIDs.Realloc(iNewSize, iGrowBy, bSetNumItems);
}

void VTPartInstanceIDArray::Free() {
    m_aiThirdIDs.Free();
    m_aiFourthIDs.Free();
    m_aiGeometryIDs.Free();
    m_aiPartIDs.Free();
}

int VTPartInstanceIDArray::GetNumItems() const {
    return m_aiGeometryIDs.GetNumItems();
}

int VTPartInstanceIDArray::GetNumAllocated() const {
    RVF_ASSERT(m_aiGeometryIDs.GetNumAllocated() == m_aiPartIDs.GetNumAllocated());
    return m_aiGeometryIDs.GetNumAllocated();
}

void VTPartInstanceIDArray::SetNumItems(int iNumItems) {
    RVF_ASSERT(iNumItems >= 0);
    m_aiThirdIDs.SetNumItems(iNumItems);
    m_aiFourthIDs.SetNumItems(iNumItems);
    m_aiGeometryIDs.SetNumItems(iNumItems);
    m_aiPartIDs.SetNumItems(iNumItems);
}

VTPartInstanceID VTPartInstanceIDArray::Get(int iIndex) const {
    return VTPartInstanceID(m_aiThirdIDs.Get(iIndex), m_aiFourthIDs.Get(iIndex), m_aiGeometryIDs.Get(iIndex),
                            m_aiPartIDs.Get(iIndex));
}

void VTPartInstanceIDArray::Set(int iIndex, const VTPartInstanceID& id) {
    m_aiThirdIDs.Set(iIndex, id.iThirdID);
    m_aiFourthIDs.Set(iIndex, id.iFourthID);
    m_aiGeometryIDs.Set(iIndex, id.partID.iGeometryID);
    m_aiPartIDs.Set(iIndex, id.partID.iPartID);
}

void VTPartInstanceIDArray::AddGrow(const VTPartInstanceID& id) {
    m_aiThirdIDs.AddGrow(id.iThirdID);
    m_aiFourthIDs.AddGrow(id.iFourthID);
    m_aiGeometryIDs.AddGrow(id.partID.iGeometryID);
    m_aiPartIDs.AddGrow(id.partID.iPartID);
}

int VTPartInstanceIDArray::Find(const VTPartInstanceID& id, bool bCompareThird, bool bCompareFourth,
                                bool bWildcards) const {
    for (int i = 0, iNumItems = GetNumItems(); i < iNumItems; ++i) {
        if (Get(i).IsEqual(id, bCompareThird, bCompareFourth, bWildcards)) {
            return i;
        }
    }
    return -1;
}
