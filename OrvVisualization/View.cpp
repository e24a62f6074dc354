#include "OrvVisualization/View.h"

#include "LibCore/rvfAssert.h"

#include <algorithm>

namespace orv::vis {

View::View() = default;

View::~View() = default;

Camera* View::camera() {
    return &m_camera;
}

const Camera* View::camera() const {
    return &m_camera;
}

void View::addModel(Model* model) {
    RVF_ASSERT(model);
    if (model && std::find(m_models.begin(), m_models.end(), model) == m_models.end()) {
        m_models.push_back(model);
    }
}

void View::removeModel(const Model* model) {
    std::erase(m_models, model);
}

std::size_t View::modelCount() const {
    return m_models.size();
}

Model* View::model(std::size_t index) const {
    RVF_ASSERT(index < modelCount());
    return index < modelCount() ? m_models[index].get() : nullptr;
}

} // namespace orv::vis
