#include "OrvApp/Plots.h"

#include "OrvApp/Plots_p.h"

namespace orv::app {

Plots* Plots::instance() {
    static PtrRef<Plots> singleton;
    if (!singleton) {
        singleton = new Plots;
    }
    return singleton.get();
}

Plots::Plots() : m_private(nullptr) {
    m_private.reset(new PlotsPrivate);
}

Plots::~Plots() = default;

std::size_t Plots::count() const {
    return instance()->m_private->count();
}

plt::OverlayPlot* Plots::get(std::size_t index) const {
    return instance()->m_private->get(index);
}

plt::OverlayPlot* Plots::add() {
    return instance()->m_private->add();
}

void Plots::add(plt::OverlayPlot* plot) {
    instance()->m_private->add(plot);
}

bool Plots::remove(std::size_t index) {
    return instance()->m_private->remove(index);
}

void Plots::removeAll() {
    instance()->m_private->removeAll();
}

std::size_t Plots::index(const plt::OverlayPlot* plot) const {
    return instance()->m_private->index(plot);
}

plt::Curve* Plots::addHistoryCurve(std::size_t plotIndex, const ug::HitItem& hitItem,
                                   const ug::UnstructGridModel* model, int scalarResultId) {
    return instance()->m_private->addHistoryCurve(plotIndex, hitItem, model, scalarResultId);
}

plt::Curve* Plots::addLengthCurve(std::size_t plotIndex, const ug::UnstructGridModel* model,
                                  std::vector<Vec3d>* pathPoints) {
    return instance()->m_private->addLengthCurve(plotIndex, model, pathPoints);
}

} // namespace orv::app
