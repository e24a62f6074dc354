#include "OrvPlot2d/OverlayPlot.h"

#include "LibCore/rvfAssert.h"
#include "OrvVisualization/Font.h"

namespace orv::plt {

OverlayPlot::OverlayPlot(vis::Font* font) : m_font(font) {}

OverlayPlot::~OverlayPlot() = default;

vis::Font* OverlayPlot::font() const {
    return m_font.get();
}

const Str& OverlayPlot::title() const {
    return m_title;
}

void OverlayPlot::setTitle(const Str& title) {
    m_title = title;
}

AxisSettings* OverlayPlot::axisSettings() {
    return &m_axisSettings;
}

const AxisSettings* OverlayPlot::axisSettings() const {
    return &m_axisSettings;
}

Curve* OverlayPlot::addCurve(const Str& name, const std::vector<double>& x, const std::vector<double>& y) {
    m_curves.push_back(std::make_unique<Curve>(name, x, y));
    return m_curves.back().get();
}

std::size_t OverlayPlot::curveCount() const {
    return m_curves.size();
}

Curve* OverlayPlot::curve(std::size_t index) const {
    RVF_ASSERT(index < curveCount());
    return index < curveCount() ? m_curves[index].get() : nullptr;
}

} // namespace orv::plt
