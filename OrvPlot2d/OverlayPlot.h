#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/PtrRef.h"
#include "OrvCore/RefCountedObject.h"
#include "OrvCore/Str.h"
#include "OrvPlot2d/AxisSettings.h"
#include "OrvPlot2d/Curve.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace orv::vis {
class Font;
}

namespace orv::plt {

/// Curves that lie over each other in one pair of axes, under a title. Make it with `new` and hold it in a PtrRef.
class ORV_API OverlayPlot : public RefCountedObject {
public:
    /// Without a title and curves; with axes as a new AxisSettings has them.
    /// @param font for all texts of the plot, which takes a reference on it; may be null, but a picture needs one
    explicit OverlayPlot(vis::Font* font);
    ~OverlayPlot() override;

    OverlayPlot(const OverlayPlot&) = delete;
    OverlayPlot& operator=(const OverlayPlot&) = delete;

    /// The one that the plot was made with.
    vis::Font* font() const;

    const Str& title() const;
    void setTitle(const Str& title);

    /// The plot's own, the same object on each call; never null.
    AxisSettings* axisSettings();
    const AxisSettings* axisSettings() const;

    /// Lays a curve over those that are there. Asserts as the Curve that it makes: "x.size() == y.size()".
    /// @return owned by the plot, and valid as long as it; never null
    Curve* addCurve(const Str& name, const std::vector<double>& x, const std::vector<double>& y);

    std::size_t curveCount() const;

    /// In the order of adding. Asserts "index < curveCount()"; null behind the failed assertion.
    Curve* curve(std::size_t index) const;

private:
    PtrRef<vis::Font> m_font;
    Str m_title;
    AxisSettings m_axisSettings;
    std::vector<std::unique_ptr<Curve>> m_curves;
};

} // namespace orv::plt
