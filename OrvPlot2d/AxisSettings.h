#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/Str.h"

#include <optional>

namespace orv::plt {

/// From where to where an axis runs, both ends included, in the units of the curves. A value.
struct AxisRange {
    double minimum = 0.0;
    double maximum = 1.0;

    bool operator==(const AxisRange&) const = default;
};

/// How one axis of a plot is meant to be. A value.
struct Axis {
    Str title;                      ///< Stands along the axis; nothing when it is empty.
    bool isLogarithmic = false;     ///< Equal ratios are equally long. Numbers up to zero cannot be shown then: gaps.
    std::optional<AxisRange> range; ///< Nothing: what the curves fill, rounded outward to readable numbers.
};

/// The two axes of an OverlayPlot. Both start without a title, linear and with an automatic range.
class ORV_API AxisSettings {
public:
    const Axis& xAxis() const;
    const Axis& yAxis() const;

    void setXAxisTitle(const Str& title);
    void setYAxisTitle(const Str& title);

    void setXAxisLogarithmic(bool logarithmic);
    void setYAxisLogarithmic(bool logarithmic);

    /// Lets an axis run over a range of the caller's; a curve is cut off where it leaves the range. A logarithmic axis
    /// keeps a range that starts at or below zero, but cannot use it, and runs as if it were automatic.
    ///
    /// Asserts "std::isfinite(range.maximum - range.minimum)" and "range.minimum < range.maximum"; the axis stays as it
    /// was behind either failed assertion.
    void setXAxisRange(const AxisRange& range);
    void setYAxisRange(const AxisRange& range);

    /// Lets an axis run over what the curves fill, also when more are added later.
    void setXAxisRangeAutomatic();
    void setYAxisRangeAutomatic();

private:
    Axis m_xAxis;
    Axis m_yAxis;
};

} // namespace orv::plt
