#include "Tools/ItemIds.h"

#include "OrvUnstructGrid/DataPart.h"

namespace orvapp {

namespace {

std::vector<int> nodeIds(const orv::ug::DataNodes& nodes) {
    std::vector<int> ids(nodes.nodeCount());
    for (std::size_t i = 0; i < ids.size(); ++i) {
        ids[i] = nodes.nodeId(i);
    }
    return ids;
}

/// @param itemsOf the items on an element of a type
template <class ItemsOf>
std::vector<int> elementIds(const orv::ug::DataElements& elements, ItemsOf itemsOf) {
    std::vector<int> ids;
    ids.reserve(elements.elementCount());
    for (std::size_t i = 0; i < elements.elementCount(); ++i) {
        ids.insert(ids.end(), itemsOf(elements.elementType(i)), elements.elementId(i));
    }
    return ids;
}

} // namespace

std::vector<int> itemIds(const orv::ug::DataPart& part, orv::ug::ResultMapping mapping) {
    const orv::ug::DataElements& elements = *part.elements();
    switch (mapping) {
    case orv::ug::PER_NODE:
        return nodeIds(*part.nodes());
    case orv::ug::PER_ELEMENT:
        return elementIds(elements, [](orv::ug::ElementType) { return std::size_t(1); });
    case orv::ug::PER_ELEMENT_NODE:
        return elementIds(elements, [&](orv::ug::ElementType type) { return elements.nodesPerElement(type); });
    case orv::ug::PER_ELEMENT_SURFACE:
        return elementIds(elements, [&](orv::ug::ElementType type) { return elements.surfacesPerElement(type); });
    case orv::ug::UNKNOWN_MAPPING:
        break;
    }
    return {};
}

} // namespace orvapp
