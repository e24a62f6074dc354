#include "OrvVisualization/View.h"

#include "LibCore/rvfAssert.h"
#include "OrvVisualization/CameraFit_p.h"
#include "OrvVisualization/Image.h"
#include "OrvVisualization/Legend_p.h"
#include "OrvVisualization/PictureCaster_p.h"

#include <algorithm>
#include <new>
#include <utility>

namespace orv::vis {
namespace {

constexpr int maxAntialiasing = 8;

bool fail(Str* reason, const Str& text) {
    if (reason) {
        *reason = text;
    }
    return false;
}

/// Of a picture's width; a legend that wants more of it is drawn over the models.
constexpr double mostLegendShare = 0.35;

ScalarRange rangeOf(const ColorMap& colors, const ShownScalars& scalars) {
    return colors.hasFixedRange() ? ScalarRange{colors.minimum(), colors.maximum()} : scalars.range;
}

LegendContent legendOf(const ColorMap& colors, const ShownScalars& scalars) {
    const ScalarRange range = rangeOf(colors, scalars);
    return {scalars.title, range.minimum, range.maximum, scalars.haveUndefined};
}

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

bool View::fit(int width, int height) {
    if (!Image::isValidSize(width, height)) {
        return false;
    }
    updateShapes(nullptr);
    const PictureScene scene(m_models);
    const ShownScalars scalars = scene.scalars();
    double leftRoom = 0.0;
    if (m_isLegendShown && scalars.exist) {
        const double legend = legendWidth(m_colorMap, legendOf(m_colorMap, scalars), width, height);
        leftRoom = std::min(legend / width, mostLegendShare);
    }
    return fitCamera(scene.shapes(), double(width) / height, leftRoom, &m_camera);
}

bool View::scalarRange(double* minimum, double* maximum, Str* reason) const {
    if (!updateShapes(reason)) {
        return false;
    }
    const ScalarRange range = PictureScene(m_models).scalars().range;
    if (range.minimum > range.maximum) {
        return fail(reason, "No values are shown");
    }
    *minimum = range.minimum;
    *maximum = range.maximum;
    return true;
}

bool View::render(int width, int height, Image* image, Str* reason) const {
    RVF_ASSERT(image);
    if (!image) {
        return false;
    }
    if (!Image::isValidSize(width, height)) {
        return fail(reason, Str("A picture cannot be %0x%1 pixels: from 1 to %2 on each side, and %3 in all")
                                .arg(width)
                                .arg(height)
                                .arg(Image::MAXIMUM_SIDE)
                                .arg(static_cast<int>(Image::MAXIMUM_PIXELS)));
    }
    if (!updateShapes(reason)) {
        return false;
    }
    try {
        const PictureScene scene(m_models);
        const ShownScalars scalars = scene.scalars();
        const ScalarRange range = rangeOf(m_colorMap, scalars);
        Image picture(width, height);
        PictureCaster(*this, scene, range, width, height).castAll(&picture);
        if (m_isLegendShown && scalars.exist) {
            drawLegend(m_colorMap, legendOf(m_colorMap, scalars), &picture);
        }
        *image = std::move(picture);
    } catch (const std::bad_alloc&) {
        return fail(reason, "There is not enough memory for a picture of this size");
    }
    return true;
}

/// Each of them, also behind one that fails, so that what is told is the first failure.
bool View::updateShapes(Str* reason) const {
    bool isUpToDate = true;
    for (const PtrRef<Model>& model : m_models) {
        Str why;
        if (!model->updateShapes(&why) && isUpToDate) {
            isUpToDate = fail(reason, why);
        }
    }
    return isUpToDate;
}

} // namespace orv::vis
