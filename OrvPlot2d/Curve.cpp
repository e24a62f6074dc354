#include "OrvPlot2d/Curve.h"

#include "LibCore/rvfAssert.h"
#include "OrvCore/Defines.h"

#include <algorithm>
#include <cmath>

namespace orv::plt {
namespace {

bool canBeDrawn(double value) {
    return std::isfinite(value) && value != UNDEFINED_DOUBLE;
}

} // namespace

Curve::Curve(const Str& name, const std::vector<double>& x, const std::vector<double>& y)
    : m_name(name), m_x(x), m_y(y) {
    RVF_ASSERT(x.size() == y.size());
    const std::size_t count = std::min(x.size(), y.size());
    m_x.resize(count);
    m_y.resize(count);
}

const Str& Curve::name() const {
    return m_name;
}

void Curve::setName(const Str& name) {
    m_name = name;
}

std::size_t Curve::pointCount() const {
    return m_x.size();
}

const std::vector<double>& Curve::x() const {
    return m_x;
}

const std::vector<double>& Curve::y() const {
    return m_y;
}

bool Curve::isGap(std::size_t index) const {
    RVF_ASSERT(index < pointCount());
    return index >= pointCount() || !canBeDrawn(m_x[index]) || !canBeDrawn(m_y[index]);
}

} // namespace orv::plt
