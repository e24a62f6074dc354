#pragma once

#include "LibCore/rvfExport.h"
#include "OrvUnstructGrid/ElementType.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace orv::ug {

/// The elements of one part: types and, in two flat arrays, the nodes of each.
class ORV_API DataElements {
public:
    DataElements();

    /// @param types one for each element
    /// @param connectivity the node indexes in the part, element after element, as many for each as its type has
    /// @param ids the solver's numbers, one for each element, or empty
    /// Asserts "nodeTotal <= limit" (offsets are 32 bits wide), "connectivityMatchesTypes" (as an unknown type never
    /// does) and "ids.empty() || ids.size() == types.size()"; behind a failed assertion the elements stay as they were.
    /// That each node index is below the part's node count is the caller's promise, which DataPart checks.
    void set(std::vector<ElementType> types, std::vector<std::uint32_t> connectivity, std::vector<int> ids);

    std::size_t elementCount() const;

    /// Asserts "elementIndex < elementCount()"; POINT behind a failed assertion.
    ElementType elementType(std::size_t elementIndex) const;
    std::size_t nodesPerElement(ElementType type) const;
    std::size_t surfacesPerElement(ElementType type) const;

    /// The node indexes of one element in the part, in the order that ElementType tells; a copy.
    /// Asserts "elementIndex < elementCount()"; empty behind a failed assertion.
    std::vector<unsigned int> elementNodes(std::size_t elementIndex) const;

    /// The same without a copy, for loops over many elements.
    std::span<const std::uint32_t> nodeIndexes(std::size_t elementIndex) const;

    /// The solver's number of an element, or its index plus 1 when the elements have no numbers.
    /// Asserts "elementIndex < elementCount()"; -1 behind a failed assertion.
    int elementId(std::size_t elementIndex) const;

    /// The solver's numbers, one for each element; empty when the elements have none.
    std::span<const int> ids() const;

    std::span<const ElementType> types() const;
    /// All node indexes, element after element.
    std::span<const std::uint32_t> connectivity() const;
    /// Where each element begins in connectivity(), and the total as one more entry: elementCount() + 1 values.
    std::span<const std::uint32_t> offsets() const;

    /// The surfaces of all elements together: the items of a result PER_ELEMENT_SURFACE.
    std::size_t surfaceCount() const;

    std::size_t byteCount() const;

private:
    std::vector<ElementType> m_types;
    std::vector<std::uint32_t> m_connectivity;
    std::vector<std::uint32_t> m_offsets;
    std::vector<int> m_ids;
    std::size_t m_surfaceCount = 0;
};

} // namespace orv::ug
