#include "OrvUnstructGrid/UnstructGridModel.h"

#include "LibCore/rvfAssert.h"
#include "OrvUnstructGrid/CuttingPlane.h"
#include "OrvUnstructGrid/DataSource.h"
#include "OrvUnstructGrid/Error.h"
#include "OrvUnstructGrid/ErrorTexts_p.h"
#include "OrvUnstructGrid/HitItem.h"
#include "OrvUnstructGrid/ModelShapes_p.h"
#include "OrvUnstructGrid/Progress.h"

namespace orv::ug {

UnstructGridModel::UnstructGridModel() : m_modelSpec(this), m_shapes(std::make_unique<ModelShapes>()) {}

UnstructGridModel::~UnstructGridModel() {
    setDataSource(nullptr);
}

DataSource* UnstructGridModel::dataSource() {
    return m_dataSource.get();
}

const DataSource* UnstructGridModel::dataSource() const {
    return m_dataSource.get();
}

void UnstructGridModel::setDataSource(DataSource* source) {
    if (m_dataSource) {
        m_dataSource->detachModel(this);
    }
    m_shapes->clear();
    m_dataSource = source;
    if (source) {
        source->attachModel(this);
    }
}

ModelSpec& UnstructGridModel::modelSpec() {
    return m_modelSpec;
}

const ModelSpec& UnstructGridModel::modelSpec() const {
    return m_modelSpec;
}

int UnstructGridModel::currentStateId() const {
    return m_modelSpec.stateId();
}

std::size_t UnstructGridModel::currentFrameIndex() const {
    return 0;
}

std::size_t UnstructGridModel::cuttingPlaneCount() const {
    return m_cuttingPlanes.size();
}

CuttingPlane* UnstructGridModel::cuttingPlane(std::size_t index) const {
    RVF_ASSERT(index < cuttingPlaneCount());
    return index < cuttingPlaneCount() ? m_cuttingPlanes[index].get() : nullptr;
}

CuttingPlane* UnstructGridModel::addCuttingPlane() {
    return m_cuttingPlanes.emplace_back(std::make_unique<CuttingPlane>()).get();
}

void UnstructGridModel::removeCuttingPlane(std::size_t index) {
    RVF_ASSERT(index < cuttingPlaneCount());
    if (index < cuttingPlaneCount()) {
        m_cuttingPlanes.erase(m_cuttingPlanes.begin() + static_cast<std::ptrdiff_t>(index));
    }
}

DataState* UnstructGridModel::findCurrentState(Error* error) const {
    if (!m_dataSource) {
        fail(error, "The model has no data source: open a file into it first");
        return nullptr;
    }
    DataState* state = m_dataSource->currentState(this);
    if (!state) {
        fail(error, unknownStateText(*m_dataSource->directory(), currentStateId()));
    }
    return state;
}

bool UnstructGridModel::updateScene(Error* error) const {
    DataState* state = findCurrentState(error);
    if (!state) {
        m_shapes->clear();
        return false;
    }
    return m_shapes->updateScene({m_dataSource.get(), state, m_modelSpec, m_cuttingPlanes}, error);
}

ModelShapes* UnstructGridModel::currentShapes() const {
    return updateScene(nullptr) ? m_shapes.get() : nullptr;
}

bool UnstructGridModel::rayIntersect(const Ray& ray, HitItem* hit) const {
    HitItem item;
    const ModelShapes* current = currentShapes();
    if (!current || !current->intersect(ray, &item)) {
        return false;
    }
    if (hit) {
        item.setStateId(currentStateId());
        *hit = item;
    }
    return true;
}

bool UnstructGridModel::updateShapes(Str* reason) {
    Error error;
    const bool isDone = updateScene(&error) && updateScalars(&error);
    if (!isDone && reason) {
        *reason = error.message();
    }
    return isDone;
}

std::span<const vis::Shape> UnstructGridModel::shapes() const {
    return m_shapes->shapes();
}

const vis::RayScene* UnstructGridModel::scene() const {
    return m_shapes->scene();
}

Str UnstructGridModel::scalarTitle() const {
    return m_shapes->scalarTitle();
}

bool UnstructGridModel::refresh(Error* error, Progress* progress, unsigned int) {
    m_shapes->forgetDisplacements();
    return findCurrentState(error) && (!progress || loadShown(progress, error));
}

bool UnstructGridModel::updateScalars(Error* error) {
    DataState* state = m_dataSource->currentState(this);
    return m_shapes->updateScalars({m_dataSource.get(), state, m_modelSpec, m_cuttingPlanes}, error);
}

// Meshes and displacements first, then scalars.
bool UnstructGridModel::loadShown(Progress* progress, Error* error) {
    ProgressMeter* meter = m_dataSource->progressMeter();
    Progress* usual = meter->progress();
    meter->setProgress(progress);
    ProgressMeter::Work work(meter);
    const auto load = [&](double from, double to, auto update) {
        const ProgressMeter::Step step(meter, from, to);
        return update();
    };
    const bool isDone =
        load(0.0, 0.5, [&] { return updateScene(error); }) && load(0.5, 1.0, [&] { return updateScalars(error); });
    if (isDone) {
        work.finish();
    }
    meter->setProgress(usual);
    return isDone;
}

} // namespace orv::ug
