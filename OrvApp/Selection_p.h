#pragma once

#include "OrvApp/Selection.h"

#include <cstddef>
#include <vector>

namespace orv::app {

/// What stands behind Selection.
class SelectionPrivate {
public:
    virtual ~SelectionPrivate() = default;

    std::size_t count() const;
    bool isMultiSelectionEnabled() const;
    void enableMultiSelection(bool enable);
    Selection::ItemType itemType() const;
    void setItemType(Selection::ItemType type);
    std::size_t add(const ug::HitItem& hitItem);
    std::size_t addNode(std::size_t index);
    std::size_t addElement(std::size_t index);
    std::size_t addElementNode(std::size_t elementIndex, std::size_t localNodeIndex);
    std::size_t addElementSurface(std::size_t elementIndex, std::size_t surfaceIndex);
    std::size_t addCoordinate(const Vec3d& coordinate);
    void set(std::size_t index, const ug::HitItem& item);
    ug::HitItem get(std::size_t index) const;
    void remove(std::size_t index);
    void clear();
    int initialGeometryId(std::size_t index) const;

private:
    std::vector<ug::HitItem> m_hitItems;
    std::vector<int> m_initialGeometryId; ///< Of the hit items, entry for entry.
    Selection::ItemType m_itemType = Selection::UNDEFINED;
    bool m_multiSelect = false;
};

} // namespace orv::app
