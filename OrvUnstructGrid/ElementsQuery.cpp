#include "OrvUnstructGrid/ElementsQuery.h"

#include "LibCore/rvfAssert.h"
#include "OrvCore/Defines.h"
#include "OrvUnstructGrid/DataElements.h"
#include "OrvUnstructGrid/DataNodes.h"

namespace orv::ug {

ElementsQuery::ElementsQuery(const DataElements* elements, const DataNodes* nodes)
    : m_elements(elements), m_nodes(nodes) {}

ElementsQuery::~ElementsQuery() = default;

Vec3d ElementsQuery::elementCentroid(std::size_t elementIndex) const {
    RVF_ASSERT(elementIndex < m_elements->elementCount());
    if (elementIndex >= m_elements->elementCount()) {
        return UNDEFINED_VECTOR;
    }
    const std::span<const std::uint32_t> nodes = m_elements->nodeIndexes(elementIndex);
    Vec3d sum;
    for (const std::uint32_t node : nodes) {
        sum += m_nodes->node(node);
    }
    return sum / static_cast<double>(nodes.size());
}

} // namespace orv::ug
