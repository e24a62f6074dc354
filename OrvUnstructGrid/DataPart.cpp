#include "OrvUnstructGrid/DataPart.h"

#include <algorithm>

namespace orv::ug {

DataPart::DataPart(int partId) : m_partId(partId) {}

int DataPart::partId() const {
    return m_partId;
}

DataNodes* DataPart::nodes() {
    return &m_nodes;
}

const DataNodes* DataPart::nodes() const {
    return &m_nodes;
}

DataElements* DataPart::elements() {
    return &m_elements;
}

const DataElements* DataPart::elements() const {
    return &m_elements;
}

bool DataPart::isConsistent() const {
    std::uint32_t largest = 0;
    for (std::uint32_t node : m_elements.connectivity()) {
        largest = std::max(largest, node);
    }
    return m_elements.connectivity().empty() || largest < m_nodes.nodeCount();
}

std::size_t DataPart::itemCount(ResultMapping mapping) const {
    switch (mapping) {
    case PER_NODE:
        return m_nodes.nodeCount();
    case PER_ELEMENT:
        return m_elements.elementCount();
    case PER_ELEMENT_NODE:
        return m_elements.connectivity().size();
    case PER_ELEMENT_SURFACE:
        return m_elements.surfaceCount();
    case UNKNOWN_MAPPING:
        break;
    }
    return 0;
}

std::size_t DataPart::byteCount() const {
    return m_nodes.byteCount() + m_elements.byteCount();
}

} // namespace orv::ug
