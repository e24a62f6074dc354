#include "OrvUnstructGrid/DataElements.h"

#include "LibCore/rvfAssert.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

namespace orv::ug {
namespace {

/// How many elements of each type there are, with room for numbers that are no type.
using TypeCounts = std::array<std::size_t, std::numeric_limits<std::uint8_t>::max() + 1>;

TypeCounts countTypes(std::span<const ElementType> types) {
    TypeCounts counts = {};
    for (ElementType type : types) {
        ++counts[type];
    }
    return counts;
}

bool areAllKnown(const TypeCounts& counts) {
    return std::all_of(counts.begin() + ELEMENT_TYPE_COUNT, counts.end(), [](std::size_t count) { return count == 0; });
}

std::size_t totalOf(const TypeCounts& counts, std::uint8_t ElementTypeInfo::*perElement) {
    std::size_t total = 0;
    for (std::size_t t = 0; t < ELEMENT_TYPE_COUNT; ++t) {
        total += counts[t] * (elementTypeInfo(static_cast<ElementType>(t)).*perElement);
    }
    return total;
}

std::vector<std::uint32_t> offsetsOf(std::span<const ElementType> types) {
    std::vector<std::uint32_t> offsets;
    offsets.reserve(types.size() + 1);
    offsets.push_back(0);
    for (ElementType type : types) {
        offsets.push_back(offsets.back() + elementTypeInfo(type).nodeCount);
    }
    return offsets;
}

} // namespace

DataElements::DataElements() : m_offsets(1, 0) {}

void DataElements::set(std::vector<ElementType> types, std::vector<std::uint32_t> connectivity, std::vector<int> ids) {
    const std::size_t limit = std::numeric_limits<std::uint32_t>::max();
    const TypeCounts counts = countTypes(types);
    const std::size_t nodeTotal = totalOf(counts, &ElementTypeInfo::nodeCount);
    const bool connectivityMatchesTypes = areAllKnown(counts) && connectivity.size() == nodeTotal;
    const bool idsMatchTypes = ids.empty() || ids.size() == types.size();
    RVF_ASSERT(nodeTotal <= limit);
    RVF_ASSERT(connectivityMatchesTypes);
    RVF_ASSERT(ids.empty() || ids.size() == types.size());
    if (nodeTotal > limit || !connectivityMatchesTypes || !idsMatchTypes) {
        return;
    }
    m_offsets = offsetsOf(types);
    m_surfaceCount = totalOf(counts, &ElementTypeInfo::surfaceCount);
    m_types = std::move(types);
    m_connectivity = std::move(connectivity);
    m_ids = std::move(ids);
}

std::size_t DataElements::elementCount() const {
    return m_types.size();
}

ElementType DataElements::elementType(std::size_t elementIndex) const {
    RVF_ASSERT(elementIndex < elementCount());
    return elementIndex < elementCount() ? m_types[elementIndex] : POINT;
}

std::size_t DataElements::nodesPerElement(ElementType type) const {
    return elementTypeInfo(type).nodeCount;
}

std::size_t DataElements::surfacesPerElement(ElementType type) const {
    return elementTypeInfo(type).surfaceCount;
}

std::vector<unsigned int> DataElements::elementNodes(std::size_t elementIndex) const {
    const std::span<const std::uint32_t> nodes = nodeIndexes(elementIndex);
    return std::vector<unsigned int>(nodes.begin(), nodes.end());
}

std::span<const std::uint32_t> DataElements::nodeIndexes(std::size_t elementIndex) const {
    RVF_ASSERT(elementIndex < elementCount());
    if (elementIndex >= elementCount()) {
        return {};
    }
    const std::uint32_t begin = m_offsets[elementIndex];
    return {m_connectivity.data() + begin, m_offsets[elementIndex + 1] - begin};
}

int DataElements::elementId(std::size_t elementIndex) const {
    RVF_ASSERT(elementIndex < elementCount());
    if (elementIndex >= elementCount()) {
        return -1;
    }
    return m_ids.empty() ? static_cast<int>(elementIndex) + 1 : m_ids[elementIndex];
}

std::span<const int> DataElements::ids() const {
    return m_ids;
}

std::span<const ElementType> DataElements::types() const {
    return m_types;
}

std::span<const std::uint32_t> DataElements::connectivity() const {
    return m_connectivity;
}

std::span<const std::uint32_t> DataElements::offsets() const {
    return m_offsets;
}

std::size_t DataElements::surfaceCount() const {
    return m_surfaceCount;
}

std::size_t DataElements::byteCount() const {
    return m_types.size() * sizeof(ElementType) + m_connectivity.size() * sizeof(std::uint32_t) +
           m_offsets.size() * sizeof(std::uint32_t) + m_ids.size() * sizeof(int);
}

} // namespace orv::ug
