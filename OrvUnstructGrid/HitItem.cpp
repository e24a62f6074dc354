#include "OrvUnstructGrid/HitItem.h"

namespace orv::ug {

int HitItem::stateId() const {
    return m_stateId;
}

void HitItem::setStateId(int stateId) {
    m_stateId = stateId;
}

std::size_t HitItem::geometryIndex() const {
    return m_geometryIndex;
}

void HitItem::setGeometryIndex(std::size_t index) {
    m_geometryIndex = index;
}

int HitItem::partId() const {
    return m_partId;
}

void HitItem::setPartId(int partId) {
    m_partId = partId;
}

HitItem::ItemType HitItem::itemType() const {
    return m_itemType;
}

void HitItem::setItemType(ItemType type) {
    m_itemType = type;
}

std::size_t HitItem::itemIndex() const {
    return m_itemIndex;
}

void HitItem::setItemIndex(std::size_t index) {
    m_itemIndex = index;
}

std::size_t HitItem::nodeIndex() const {
    return m_nodeIndex;
}

void HitItem::setNodeIndex(std::size_t index) {
    m_nodeIndex = index;
}

std::size_t HitItem::elementIndex() const {
    return m_elementIndex;
}

void HitItem::setElementIndex(std::size_t index) {
    m_elementIndex = index;
}

std::size_t HitItem::elementLocalSurfaceIndex() const {
    return m_elementLocalSurfaceIndex;
}

void HitItem::setElementLocalSurfaceIndex(std::size_t index) {
    m_elementLocalSurfaceIndex = index;
}

Vec3d HitItem::coordinate() const {
    return m_coordinate;
}

void HitItem::setCoordinate(const Vec3d& coordinate) {
    m_coordinate = coordinate;
}

} // namespace orv::ug
