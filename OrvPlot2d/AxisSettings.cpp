#include "OrvPlot2d/AxisSettings.h"

#include "LibCore/rvfAssert.h"

#include <cmath>

namespace orv::plt {
namespace {

void setRange(Axis& axis, const AxisRange& range) {
    RVF_ASSERT(std::isfinite(range.maximum - range.minimum));
    RVF_ASSERT(range.minimum < range.maximum);
    if (std::isfinite(range.maximum - range.minimum) && range.minimum < range.maximum) {
        axis.range = range;
    }
}

} // namespace

const Axis& AxisSettings::xAxis() const {
    return m_xAxis;
}

const Axis& AxisSettings::yAxis() const {
    return m_yAxis;
}

void AxisSettings::setXAxisTitle(const Str& title) {
    m_xAxis.title = title;
}

void AxisSettings::setYAxisTitle(const Str& title) {
    m_yAxis.title = title;
}

void AxisSettings::setXAxisLogarithmic(bool logarithmic) {
    m_xAxis.isLogarithmic = logarithmic;
}

void AxisSettings::setYAxisLogarithmic(bool logarithmic) {
    m_yAxis.isLogarithmic = logarithmic;
}

void AxisSettings::setXAxisRange(const AxisRange& range) {
    setRange(m_xAxis, range);
}

void AxisSettings::setYAxisRange(const AxisRange& range) {
    setRange(m_yAxis, range);
}

void AxisSettings::setXAxisRangeAutomatic() {
    m_xAxis.range.reset();
}

void AxisSettings::setYAxisRangeAutomatic() {
    m_yAxis.range.reset();
}

} // namespace orv::plt
