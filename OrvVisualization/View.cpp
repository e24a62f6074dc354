#include "OrvVisualization/View.h"

#include "LibCore/rvfAssert.h"

#include <algorithm>

namespace orv::vis {
namespace {

constexpr int maxAntialiasing = 8;

} // namespace

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

const rvf::Color3f& View::backgroundTop() const {
    return m_backgroundTop;
}

const rvf::Color3f& View::backgroundBottom() const {
    return m_backgroundBottom;
}

void View::setBackground(const rvf::Color3f& color) {
    setBackground(color, color);
}

void View::setBackground(const rvf::Color3f& top, const rvf::Color3f& bottom) {
    m_backgroundTop = top;
    m_backgroundBottom = bottom;
}

const ColorMap& View::colorMap() const {
    return m_colorMap;
}

void View::setColorMap(const ColorMap& colorMap) {
    m_colorMap = colorMap;
}

bool View::areEdgesShown() const {
    return m_areEdgesShown;
}

void View::setEdgesShown(bool areShown) {
    m_areEdgesShown = areShown;
}

bool View::isLegendShown() const {
    return m_isLegendShown;
}

void View::setLegendShown(bool isShown) {
    m_isLegendShown = isShown;
}

bool View::isLit() const {
    return m_isLit;
}

void View::setLit(bool isLit) {
    m_isLit = isLit;
}

int View::antialiasing() const {
    return m_antialiasing;
}

bool View::setAntialiasing(int raysPerSide) {
    if (raysPerSide < 1 || raysPerSide > maxAntialiasing) {
        return false;
    }
    m_antialiasing = raysPerSide;
    return true;
}

} // namespace orv::vis
