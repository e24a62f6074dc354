#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/Str.h"

#include <cstddef>
#include <vector>

namespace orv::plt {

/// A line through points, in the order in which they come: x may go back and forth.
///
/// A plot owns its curves, see OverlayPlot::addCurve(). Its points do not change.
class ORV_API Curve {
public:
    /// Point i is (x[i], y[i]). Asserts "x.size() == y.size()"; behind the failed assertion what the longer list has
    /// more is left out.
    Curve(const Str& name, const std::vector<double>& x, const std::vector<double>& y);

    /// For the legend; need not be the only curve of that name.
    const Str& name() const;
    void setName(const Str& name);

    std::size_t pointCount() const;

    /// pointCount() numbers each, as they were given, undefined ones included.
    const std::vector<double>& x() const;
    const std::vector<double>& y() const;

    /// Whether the line is interrupted at a point: one of its numbers is UNDEFINED_DOUBLE, infinite or not a number.
    /// Asserts "index < pointCount()"; true behind the failed assertion.
    bool isGap(std::size_t index) const;

private:
    Str m_name;
    std::vector<double> m_x;
    std::vector<double> m_y;
};

} // namespace orv::plt
