#pragma once

#include "OrvCore/PtrRef.h"
#include "OrvCore/Vec3d.h"
#include "OrvPlot2d/OverlayPlot.h"

#include <cstddef>
#include <vector>

namespace orv::ug {
class HitItem;
class UnstructGridModel;
} // namespace orv::ug

namespace orv::app {

/// What stands behind Plots.
class PlotsPrivate {
public:
    std::size_t count() const;
    plt::OverlayPlot* get(std::size_t index) const;
    plt::OverlayPlot* add();
    void add(plt::OverlayPlot* plot);
    bool remove(std::size_t index);
    void removeAll();
    std::size_t index(const plt::OverlayPlot* plot) const;
    plt::Curve* addHistoryCurve(std::size_t plotIndex, const ug::HitItem& hitItem, const ug::UnstructGridModel* model,
                                int scalarResultId);
    plt::Curve* addLengthCurve(std::size_t plotIndex, const ug::UnstructGridModel* model,
                               std::vector<Vec3d>* pathPoints);

private:
    std::vector<PtrRef<plt::OverlayPlot>> m_plots;
};

} // namespace orv::app
