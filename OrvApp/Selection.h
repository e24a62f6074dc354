#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/PimplPointerHolder.h"
#include "OrvCore/RefCountedObject.h"
#include "OrvCore/Vec3d.h"
#include "OrvUnstructGrid/HitItem.h"

#include <cstddef>

namespace orv::app {

class SelectionPrivate;

/// What has been picked in one view, in the order of adding. Views makes one for each view.
///
/// Whatever the way in, what is kept is a ug::HitItem. The operations that name a node, an element or a point do not
/// note the name: they shoot a ray from the eye of the current view's camera at it, and keep what that ray hits first
/// in the current model as it is shown. That need not be what was named. They work with the current view, model and
/// part, also when this is the selection of another view.
///
/// The item type says which of these operations is meant to be used. By default a selection holds one item, and adding
/// replaces it. It is emptied by a change of the item type, and by nothing else that was not asked for: items stay when
/// the state, the model or the part changes.
///
/// All failures are assertions, and behind them an operation goes on: an item of the wrong type is added nevertheless.
/// Where there is nothing to go on with, because no view, model or part is current, it adds nothing and keeps what is
/// there. An index is a position in the list. One thread at a time.
class ORV_API Selection : public RefCountedObject {
public:
    enum ItemType {
        UNDEFINED = 0,       ///< Of a new selection; only add() is meant to be used.
        ELEMENT = 1,         ///< For addElement().
        NODE = 2,            ///< For addNode().
        ELEMENT_NODE = 3,    ///< For addElementNode().
        ELEMENT_SURFACE = 4, ///< For addElementSurface().
        COORDINATE = 5       ///< For addCoordinate().
    };

    /// Empty, UNDEFINED, for one item.
    Selection();
    ~Selection() override;

    std::size_t count() const;

    bool isMultiSelectionEnabled() const;
    /// Nothing is removed when several are held and it is switched off; but only position 0 may be addressed then.
    void enableMultiSelection(bool enable);

    ItemType itemType() const;
    /// Empties the selection, unless that is its type already.
    void setItemType(ItemType type);

    /// Adds an item, whatever the item type; the same one may be added again. Without multi-selection the selection is
    /// emptied first, before anything is checked, so a failure leaves it empty.
    ///
    /// The item must be of a state that the current model has. Asserts "source" (the current model's data source),
    /// "hitItem.stateId() != -1", "stateIndex != orv::UNDEFINED_SIZE_T" and "state"; without a source nothing behind
    /// the second is checked, and without a state nothing is added.
    /// @return the new count, not an index
    std::size_t add(const ug::HitItem& item);

    /// Adds what a ray at a node of the current part hits.
    ///
    /// Asserts, in this order, that there are a current view, model and part, that the item type is NODE, and
    /// "index < part->nodes()->nodeCount()". When the ray hits nothing: as add() of an undefined item.
    /// @return the new count, not an index
    std::size_t addNode(std::size_t index);

    /// Adds what a ray at the centroid of an element of the current part hits. Asserts as addNode(), for ELEMENT and
    /// "index < part->elements()->elementCount()".
    std::size_t addElement(std::size_t index);

    /// Adds a node by its place in an element: as addNode() of that node, which asserts that the item type is NODE. So
    /// with the right type, ELEMENT_NODE, that assertion always fails; the node is added when the program goes on.
    ///
    /// Asserts, before all that, that there is a current part, that the item type is ELEMENT_NODE,
    /// "elementIndex < part->elements()->elementCount()" and "localNodeIndex < nodesPerElement"; nothing is added
    /// behind the latter.
    std::size_t addElementNode(std::size_t elementIndex, std::size_t localNodeIndex);

    /// Adds what a ray at the centroid of an element hits, not at that of the surface, and notes the surface in it:
    /// also when it is another element that was hit. Asserts as addElement(), for ELEMENT_SURFACE, and "surfaceIndex <
    /// surfacesPerElement".
    std::size_t addElementSurface(std::size_t elementIndex, std::size_t surfaceIndex);

    /// Adds what a ray at a point, or beyond it, hits. Asserts as addNode(), for COORDINATE and without an index; a
    /// part is asked for, but the ray may hit any.
    std::size_t addCoordinate(const Vec3d& coordinate);

    /// Replaces an item. Asserts "index < count()", "m_multiSelect || index == 0" and then as add(), with "item" for
    /// "hitItem". The item stands even when its state is not found; the geometry id then stays that of the earlier one.
    void set(std::size_t index, const ug::HitItem& item);

    /// A copy. Asserts "index < count()" and "m_multiSelect || index == 0"; an undefined item when there is none.
    ug::HitItem get(std::size_t index) const;

    /// Later items move up by one. Asserts "index < count()" and "m_multiSelect || index == 0".
    void remove(std::size_t index);

    /// The item type and multi-selection stay.
    void removeAll();

    /// The id of the geometry that an item was on when it was added or set; -1 when its state had no such geometry.
    /// Asserts "index < m_initialGeometryId.size()"; -1 behind the failed assertion.
    int initialGeometryId(std::size_t index) const;

private:
    internal::PimplPointerHolder<SelectionPrivate> m_private;
};

} // namespace orv::app
