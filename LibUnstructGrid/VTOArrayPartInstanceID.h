#pragma once

#include "LibUnstructGrid/VTOArrayInt.h"
#include "LibUnstructGrid/VTOBaseTypesIdent.h"

/// An array of part instances: four parallel VTIntArray, one for each field. Counts, capacities and growth steps follow
/// the rules of VTIntArray, whose checks each of the four makes again.
class ORV_API VTPartInstanceIDArray {
public:
    VTPartInstanceIDArray() = default;
    VTPartInstanceIDArray(const VTPartInstanceIDArray& other) = default;

    /// Asserts "this != &other".
    VTPartInstanceIDArray& operator=(const VTPartInstanceIDArray& other);
    bool operator==(const VTPartInstanceIDArray& other) const = default;

    /// Asserts "iNumItems > 0".
    void Alloc(int iNumItems, int iGrowBy, bool bSetNumItems);
    /// Asserts "(iNewSize > 0) || (iNewSize == -1)".
    void Realloc(int iNewSize, int iGrowBy, bool bSetNumItems);
    void Free();

    int GetNumItems() const;
    /// Asserts "m_aiGeometryIDs.GetNumAllocated() == m_aiPartIDs.GetNumAllocated()".
    int GetNumAllocated() const;
    /// Asserts "iNumItems >= 0".
    void SetNumItems(int iNumItems);

    /// By value, put together from the four arrays.
    VTPartInstanceID Get(int iIndex) const;
    void Set(int iIndex, const VTPartInstanceID& id);
    void AddGrow(const VTPartInstanceID& id);

    /// The first item that VTPartInstanceID::IsEqual() accepts with these flags, or -1.
    int Find(const VTPartInstanceID& id, bool bCompareThird, bool bCompareFourth, bool bWildcards) const;

private:
    VTIntArray m_aiThirdIDs;
    VTIntArray m_aiFourthIDs;
    VTIntArray m_aiGeometryIDs;
    VTIntArray m_aiPartIDs;
};
