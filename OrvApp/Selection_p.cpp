#include "OrvApp/Selection_p.h"

#include "LibCore/rvfAssert.h"
#include "OrvApp/Models.h"
#include "OrvApp/Parts.h"
#include "OrvApp/Views.h"
#include "OrvUnstructGrid/DataSource.h"
#include "OrvUnstructGrid/ElementsQuery.h"
#include "OrvUnstructGrid/UnstructGridModel.h"
#include "OrvVisualization/View.h"

namespace orv::app {
namespace {

// Whatever is to be added, these two speak of nodes: they are the texts that people search their logs for.
const vis::View* currentView() {
    const vis::View* view = Views::instance()->current();
    RVF_ASSERT_MSG(view != NULL, "Cannot add node to selection, there is no current view.");
    return view;
}

const ug::UnstructGridModel* currentModel() {
    const ug::UnstructGridModel* model = Models::instance()->current();
    RVF_ASSERT_MSG(model != NULL, "Cannot add node to selection, there is no current model.");
    return model;
}

const ug::DataSource* currentSource() {
    const ug::UnstructGridModel* model = Models::instance()->current();
    return model ? model->dataSource() : nullptr;
}

const ug::DataState* findState(const ug::DataSource* source, int stateId) {
    if (!source) {
        return nullptr;
    }
    const std::size_t stateIndex = source->stateIndex(stateId);
    RVF_ASSERT(stateIndex != orv::UNDEFINED_SIZE_T);
    const ug::DataState* state = source->state(stateIndex);
    RVF_ASSERT(state);
    return state;
}

int geometryId(const ug::DataState* state, std::size_t geometryIndex) {
    const ug::DataGeometry* geometry = state->geometry(geometryIndex);
    return geometry ? geometry->id() : -1;
}

/// What is in front of the eye on the way to the target and beyond; an undefined item when nothing is.
ug::HitItem hitTowards(const Vec3d& target, const vis::View* view, const ug::UnstructGridModel* model) {
    Vec3d eye;
    view->camera()->toLookAt(&eye, nullptr, nullptr);
    Ray ray;
    ray.setOrigin(eye);
    ray.setDirection(target - eye);
    ug::HitItem hitItem;
    model->rayIntersect(ray, &hitItem);
    return hitItem;
}

Vec3d centroid(const ug::DataPart* part, std::size_t elementIndex) {
    return ug::ElementsQuery(part->elements(), part->nodes()).elementCentroid(elementIndex);
}

} // namespace

std::size_t SelectionPrivate::count() const {
    return m_hitItems.size();
}

bool SelectionPrivate::isMultiSelectionEnabled() const {
    return m_multiSelect;
}

void SelectionPrivate::enableMultiSelection(bool enable) {
    m_multiSelect = enable;
}

Selection::ItemType SelectionPrivate::itemType() const {
    return m_itemType;
}

void SelectionPrivate::setItemType(Selection::ItemType type) {
    if (type == m_itemType) {
        return;
    }
    clear();
    m_itemType = type;
}

std::size_t SelectionPrivate::add(const ug::HitItem& hitItem) {
    if (!m_multiSelect) {
        clear();
    }
    const ug::DataSource* source = currentSource();
    RVF_ASSERT(source);
    RVF_ASSERT(hitItem.stateId() != -1);
    if (const ug::DataState* state = findState(source, hitItem.stateId())) {
        m_hitItems.push_back(hitItem);
        m_initialGeometryId.push_back(geometryId(state, hitItem.geometryIndex()));
    }
    return count();
}

std::size_t SelectionPrivate::addNode(std::size_t index) {
    const vis::View* view = currentView();
    const ug::UnstructGridModel* model = currentModel();
    const ug::DataPart* part = Parts::instance()->current();
    RVF_ASSERT_MSG(part != NULL, "Cannot add node to selection, there is no current part.");
    RVF_ASSERT_MSG(m_itemType == Selection::NODE,
                   "Cannot add node to selection because it's current type is not nodes.");
    if (!part) {
        return count();
    }
    RVF_ASSERT(index < part->nodes()->nodeCount());
    if (!view || !model) {
        return count();
    }
    return add(hitTowards(part->nodes()->node(index), view, model));
}

std::size_t SelectionPrivate::addElement(std::size_t index) {
    const vis::View* view = currentView();
    const ug::UnstructGridModel* model = currentModel();
    const ug::DataPart* part = Parts::instance()->current();
    RVF_ASSERT_MSG(part != NULL, "Cannot add element to selection, there is no current part.");
    RVF_ASSERT_MSG(m_itemType == Selection::ELEMENT,
                   "Cannot add element to selection because it's current type is not elements.");
    if (!part) {
        return count();
    }
    RVF_ASSERT(index < part->elements()->elementCount());
    if (!view || !model) {
        return count();
    }
    return add(hitTowards(centroid(part, index), view, model));
}

std::size_t SelectionPrivate::addElementNode(std::size_t elementIndex, std::size_t localNodeIndex) {
    const ug::DataPart* part = Parts::instance()->current();
    RVF_ASSERT_MSG(part != NULL, "Cannot add element node to selection, there is no current part.");
    RVF_ASSERT_MSG(m_itemType == Selection::ELEMENT_NODE,
                   "Cannot add element node to selection because it's current type is not element nodes.");
    if (!part) {
        return count();
    }
    RVF_ASSERT(elementIndex < part->elements()->elementCount());
    const ug::ElementType type = part->elements()->elementType(elementIndex);
    const std::size_t nodesPerElement = part->elements()->nodesPerElement(type);
    RVF_ASSERT(localNodeIndex < nodesPerElement);
    const std::vector<unsigned int> nodes = part->elements()->elementNodes(elementIndex);
    return localNodeIndex < nodes.size() ? addNode(nodes[localNodeIndex]) : count();
}

std::size_t SelectionPrivate::addElementSurface(std::size_t elementIndex, std::size_t surfaceIndex) {
    const vis::View* view = currentView();
    const ug::UnstructGridModel* model = currentModel();
    const ug::DataPart* part = Parts::instance()->current();
    RVF_ASSERT_MSG(part != NULL, "Cannot add element surface to selection, there is no current part.");
    RVF_ASSERT_MSG(m_itemType == Selection::ELEMENT_SURFACE,
                   "Cannot add element surface to selection because it's current type is not element surfaces.");
    if (!part) {
        return count();
    }
    RVF_ASSERT(elementIndex < part->elements()->elementCount());
    const ug::ElementType type = part->elements()->elementType(elementIndex);
    const std::size_t surfacesPerElement = part->elements()->surfacesPerElement(type);
    RVF_ASSERT(surfaceIndex < surfacesPerElement);
    if (!view || !model) {
        return count();
    }
    ug::HitItem hitItem = hitTowards(centroid(part, elementIndex), view, model);
    hitItem.setElementLocalSurfaceIndex(surfaceIndex);
    return add(hitItem);
}

std::size_t SelectionPrivate::addCoordinate(const Vec3d& coordinate) {
    const vis::View* view = currentView();
    const ug::UnstructGridModel* model = currentModel();
    const ug::DataPart* part = Parts::instance()->current();
    RVF_ASSERT_MSG(part != NULL, "Cannot add coordinate to selection, there is no current part.");
    RVF_ASSERT_MSG(m_itemType == Selection::COORDINATE,
                   "Cannot add coordinate to selection because it's current type is not coordinates.");
    if (!view || !model) {
        return count();
    }
    return add(hitTowards(coordinate, view, model));
}

void SelectionPrivate::set(std::size_t index, const ug::HitItem& item) {
    RVF_ASSERT(index < count());
    RVF_ASSERT(m_multiSelect || index == 0);
    if (index < count()) {
        m_hitItems[index] = item;
    }
    const ug::DataSource* source = currentSource();
    RVF_ASSERT(source);
    RVF_ASSERT(item.stateId() != -1);
    const ug::DataState* state = findState(source, item.stateId());
    if (state && index < count()) {
        m_initialGeometryId[index] = geometryId(state, item.geometryIndex());
    }
}

ug::HitItem SelectionPrivate::get(std::size_t index) const {
    RVF_ASSERT(index < count());
    RVF_ASSERT(m_multiSelect || index == 0);
    return index < count() ? m_hitItems[index] : ug::HitItem();
}

void SelectionPrivate::remove(std::size_t index) {
    RVF_ASSERT(index < count());
    RVF_ASSERT(m_multiSelect || index == 0);
    if (index >= count()) {
        return;
    }
    const auto offset = static_cast<std::ptrdiff_t>(index);
    m_hitItems.erase(m_hitItems.begin() + offset);
    m_initialGeometryId.erase(m_initialGeometryId.begin() + offset);
}

void SelectionPrivate::clear() {
    m_hitItems.clear();
    m_initialGeometryId.clear();
}

int SelectionPrivate::initialGeometryId(std::size_t index) const {
    RVF_ASSERT(index < m_initialGeometryId.size());
    return index < m_initialGeometryId.size() ? m_initialGeometryId[index] : -1;
}

} // namespace orv::app
