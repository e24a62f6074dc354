#include "OrvApp/Selection.h"

#include "OrvApp/Selection_p.h"

namespace orv::app {

Selection::Selection() : m_private(nullptr) {
    m_private.reset(new SelectionPrivate);
}

Selection::~Selection() = default;

std::size_t Selection::count() const {
    return m_private->count();
}

bool Selection::isMultiSelectionEnabled() const {
    return m_private->isMultiSelectionEnabled();
}

void Selection::enableMultiSelection(bool enable) {
    m_private->enableMultiSelection(enable);
}

Selection::ItemType Selection::itemType() const {
    return m_private->itemType();
}

void Selection::setItemType(ItemType type) {
    m_private->setItemType(type);
}

std::size_t Selection::add(const ug::HitItem& item) {
    return m_private->add(item);
}

std::size_t Selection::addNode(std::size_t index) {
    return m_private->addNode(index);
}

std::size_t Selection::addElement(std::size_t index) {
    return m_private->addElement(index);
}

std::size_t Selection::addElementNode(std::size_t elementIndex, std::size_t localNodeIndex) {
    return m_private->addElementNode(elementIndex, localNodeIndex);
}

std::size_t Selection::addElementSurface(std::size_t elementIndex, std::size_t surfaceIndex) {
    return m_private->addElementSurface(elementIndex, surfaceIndex);
}

std::size_t Selection::addCoordinate(const Vec3d& coordinate) {
    return m_private->addCoordinate(coordinate);
}

void Selection::set(std::size_t index, const ug::HitItem& item) {
    m_private->set(index, item);
}

ug::HitItem Selection::get(std::size_t index) const {
    return m_private->get(index);
}

void Selection::remove(std::size_t index) {
    m_private->remove(index);
}

void Selection::removeAll() {
    m_private->clear();
}

int Selection::initialGeometryId(std::size_t index) const {
    return m_private->initialGeometryId(index);
}

} // namespace orv::app
