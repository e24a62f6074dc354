#include "OrvApp/Plots_p.h"

#include "LibCore/rvfAssert.h"
#include "OrvApp/AppComponent.h"
#include "OrvApp/AppLog_p.h"
#include "OrvApp/Selection.h"
#include "OrvApp/Views.h"
#include "OrvUnstructGrid/CuttingPlane.h"
#include "OrvUnstructGrid/DataSource.h"
#include "OrvUnstructGrid/HitItem.h"
#include "OrvUnstructGrid/Progress.h"
#include "OrvUnstructGrid/ResultsQuery.h"
#include "OrvUnstructGrid/SurfacePathQuery.h"
#include "OrvUnstructGrid/UnstructGridModel.h"
#include "OrvVisualization/Font.h"

#include <algorithm>

namespace orv::app {
namespace {

using PointType = ug::SurfacePathQuery::PointType;

rvf::CodeLocation inAddHistoryCurve(int line) {
    return {RVF_SOURCE_PATH,
            "orv::plt::Curve *orv::app::PlotsPrivate::addHistoryCurve(size_t, const orv::ug::HitItem &, "
            "const orv::ug::UnstructGridModel *, int)",
            "addHistoryCurve", line};
}

rvf::CodeLocation inAddLengthCurve(int line) {
    return {RVF_SOURCE_PATH,
            "orv::plt::Curve *orv::app::PlotsPrivate::addLengthCurve(size_t, const orv::ug::UnstructGridModel *, "
            "std::vector<orv::Vec3d> *)",
            "addLengthCurve", line};
}

/// Queries may load values, which changes a model in a way that its callers do not see.
ug::UnstructGridModel* changeable(const ug::UnstructGridModel* model) {
    return const_cast<ug::UnstructGridModel*>(model);
}

ug::ResultInfo findScalar(const ug::UnstructGridModel* model, int resultId) {
    const ug::DataSource* source = model->dataSource();
    return source ? source->directory()->findScalarResultInfo(resultId) : ug::ResultInfo();
}

std::vector<ug::ResultsQueryItem> historyItems(const ug::HitItem& hitItem, ug::ResultMapping mapping) {
    std::size_t index = UNDEFINED_SIZE_T;
    switch (mapping) {
    case ug::PER_NODE:
        index = hitItem.nodeIndex();
        break;
    case ug::PER_ELEMENT:
    case ug::PER_ELEMENT_NODE:
    case ug::PER_ELEMENT_SURFACE:
        index = hitItem.elementIndex();
        break;
    case ug::UNKNOWN_MAPPING:
        break;
    }
    if (index == UNDEFINED_SIZE_T) {
        return {};
    }
    return {ug::ResultsQueryItem(hitItem.itemIndex(), index)};
}

std::vector<ug::StateInfo> statesOf(const ug::StateGroupInfo& group, const ug::DataSourceDirectory* directory) {
    std::vector<ug::StateInfo> states;
    for (std::size_t i = 0; i < group.stateCount(); ++i) {
        states.push_back(directory->findStateInfo(group.stateId(i)));
    }
    return states;
}

std::vector<ug::StateInfo> historyStates(const ug::UnstructGridModel* model) {
    const ug::DataSourceDirectory* directory = model->dataSource()->directory();
    std::vector<ug::StateInfo> states = directory->stateInfos();
    const std::vector<ug::StateGroupInfo> groups = directory->stateGroupInfos();
    if (groups.empty()) {
        return states;
    }
    int currentStateId = model->currentStateId();
    if (currentStateId < 0 && !states.empty()) {
        currentStateId = states[0].id();
    }
    RVF_ASSERT(currentStateId >= 0);
    const auto group = std::find_if(groups.begin(), groups.end(),
                                    [=](const ug::StateGroupInfo& g) { return g.hasStateId(currentStateId); });
    return group == groups.end() ? std::vector<ug::StateInfo>() : statesOf(*group, directory);
}

const char* historyAxisTitle(const ug::StateInfo& firstState) {
    switch (firstState.referenceType()) {
    case ug::StateInfo::TIME:
        return "Time";
    case ug::StateInfo::FREQUENCY:
        return "Frequency";
    case ug::StateInfo::LOAD_CASE:
        return "LoadCase";
    }
    return "State";
}

double historyPosition(const ug::StateInfo& state, const std::vector<double>& earlier) {
    if (state.referenceValue() != UNDEFINED_DOUBLE) {
        return state.referenceValue();
    }
    return earlier.empty() ? 0.0 : earlier.back() + 1.0;
}

PointType pathPointType(Selection::ItemType itemType) {
    switch (itemType) {
    case Selection::ELEMENT:
        return ug::SurfacePathQuery::ELEMENT;
    case Selection::COORDINATE:
        return ug::SurfacePathQuery::COORDINATE;
    default:
        return ug::SurfacePathQuery::NODE;
    }
}

bool haveOneItemType(const Selection* selection) {
    const ug::HitItem first = selection->get(0);
    for (std::size_t i = 1; i < selection->count(); ++i) {
        if (selection->get(i).itemType() != first.itemType()) {
            return false;
        }
    }
    return true;
}

bool haveOneItemIndex(const Selection* selection) {
    const ug::HitItem first = selection->get(0);
    for (std::size_t i = 1; i < selection->count(); ++i) {
        if (selection->get(i).itemIndex() != first.itemIndex()) {
            return false;
        }
    }
    return true;
}

int shownScalarId(const ug::HitItem& item, const ug::UnstructGridModel* model) {
    if (item.itemType() != ug::HitItem::CUTTING_PLANE) {
        return model->modelSpec().effectiveFringesResultId(item.geometryIndex(), item.partId());
    }
    const ug::CuttingPlane* plane = model->cuttingPlane(item.itemIndex());
    return plane ? plane->mapScalarResultId() : -1;
}

std::vector<ug::HitItem> itemsOf(const Selection* selection) {
    std::vector<ug::HitItem> items;
    for (std::size_t i = 0; i < selection->count(); ++i) {
        items.push_back(selection->get(i));
    }
    return items;
}

void setPercent(ug::Progress* progress, int percent) {
    if (progress) {
        progress->setPercent(percent);
    }
}

} // namespace

std::size_t PlotsPrivate::count() const {
    return m_plots.size();
}

plt::OverlayPlot* PlotsPrivate::get(std::size_t index) const {
    RVF_ASSERT(index < count());
    return index < count() ? m_plots[index].get() : nullptr;
}

plt::OverlayPlot* PlotsPrivate::add() {
    const PtrRef<vis::Font> font = vis::Font::createNormalFont();
    PtrRef<plt::OverlayPlot> plot = new plt::OverlayPlot(font.get());
    m_plots.push_back(plot);
    return plot.get();
}

void PlotsPrivate::add(plt::OverlayPlot* plot) {
    m_plots.push_back(plot);
}

bool PlotsPrivate::remove(std::size_t index) {
    RVF_ASSERT(index < count());
    if (index < count()) {
        m_plots.erase(m_plots.begin() + static_cast<std::ptrdiff_t>(index));
    }
    return true;
}

void PlotsPrivate::removeAll() {
    m_plots.clear();
}

std::size_t PlotsPrivate::index(const plt::OverlayPlot* plot) const {
    const auto place = std::find(m_plots.begin(), m_plots.end(), plot);
    return place == m_plots.end() ? UNDEFINED_SIZE_T : static_cast<std::size_t>(place - m_plots.begin());
}

plt::Curve* PlotsPrivate::addHistoryCurve(std::size_t plotIndex, const ug::HitItem& hitItem,
                                          const ug::UnstructGridModel* model, int scalarResultId) {
    plt::OverlayPlot* plot = get(plotIndex);
    RVF_ASSERT(plot);
    if (hitItem.nodeIndex() == UNDEFINED_SIZE_T && hitItem.elementIndex() == UNDEFINED_SIZE_T) {
        logError("Hit item is undefined, cannot add scalar evolution curve to plot", inAddHistoryCurve(__LINE__));
        return nullptr;
    }
    if (scalarResultId == -1) {
        logError("Scalar id is undefined (equal to -1), cannot add scalar evolution curve to plot",
                 inAddHistoryCurve(__LINE__));
        return nullptr;
    }
    const ug::ResultInfo info = findScalar(model, scalarResultId);
    if (info.id() == -1) {
        logError("Scalar with id %1 not found in results, cannot add scalar evolution curve to plot", scalarResultId,
                 inAddHistoryCurve(__LINE__));
        return nullptr;
    }
    if (info.resultMapping() == ug::UNKNOWN_MAPPING) {
        logError("Scalar with id %1 has unknown mapping, cannot add scalar evolution curve to plot", scalarResultId,
                 inAddHistoryCurve(__LINE__));
        return nullptr;
    }

    const std::vector<ug::ResultsQueryItem> items = historyItems(hitItem, info.resultMapping());
    ug::ResultsQuery query(changeable(model)->dataSource());
    const std::vector<ug::StateInfo> states = historyStates(model);
    std::vector<double> x;
    std::vector<double> y;
    for (const ug::StateInfo& state : states) {
        std::vector<ug::ResultsQueryResult> results;
        if (query.scalars(scalarResultId, state.id(), hitItem.geometryIndex(), &items, &results) && !results.empty()) {
            x.push_back(historyPosition(state, x));
            y.push_back(results[0].averageSubItemScalar());
        }
    }
    if (x.empty() || !plot) {
        return nullptr;
    }
    plot->axisSettings()->setXAxisTitle(historyAxisTitle(states[0]));
    plot->axisSettings()->setYAxisTitle(info.name());
    return plot->addCurve(info.name(), x, y);
}

plt::Curve* PlotsPrivate::addLengthCurve(std::size_t plotIndex, const ug::UnstructGridModel* model,
                                         std::vector<Vec3d>* pathPoints) {
    RVF_ASSERT(plotIndex < count());
    const Selection* selection = Views::instance()->currentViewSelection();
    if (!selection || selection->count() == 0) {
        logError("No items are selected. Cannot add length curve.", inAddLengthCurve(__LINE__));
        return nullptr;
    }
    if (!haveOneItemType(selection)) {
        logError("All selected items must be on the same item type (cutting plane or part). Cannot add length curve.",
                 inAddLengthCurve(__LINE__));
        return nullptr;
    }
    const ug::HitItem first = selection->get(0);
    const bool isOnCuttingPlane = first.itemType() == ug::HitItem::CUTTING_PLANE;
    if (isOnCuttingPlane && !haveOneItemIndex(selection)) {
        logError("All selected items must be on the same cutting plane. Cannot add length curve.",
                 inAddLengthCurve(__LINE__));
        return nullptr;
    }
    const PointType pointType =
        isOnCuttingPlane ? ug::SurfacePathQuery::COORDINATE : pathPointType(selection->itemType());
    const int scalarId = shownScalarId(first, model);
    if (scalarId == -1) {
        logError("Could not determine scalar to plot. Cannot add length curve.", inAddLengthCurve(__LINE__));
        return nullptr;
    }

    plt::OverlayPlot* plot = get(plotIndex);
    RVF_ASSERT(plot);
    if (!plot) {
        return nullptr;
    }
    plot->setTitle(Str("Plot %1").arg(static_cast<int>(count()), 0, ' '));
    plot->axisSettings()->setYAxisTitle(findScalar(model, scalarId).name());
    plot->axisSettings()->setXAxisTitle("Length");

    ug::Progress* progress = AppComponent::progressInstance();
    setPercent(progress, 20);
    ug::SurfacePathQuery query(changeable(model), model->currentFrameIndex(), pointType, itemsOf(selection));
    std::vector<Vec3d> path;
    query.generatePath(&path);
    if (path.empty()) {
        logError("Could not create path on surface along the given selected items. Cannot add length curve.",
                 inAddLengthCurve(__LINE__));
        return nullptr;
    }
    setPercent(progress, 50);
    std::vector<double> x;
    std::vector<double> y;
    query.getScalarResultValues(scalarId, &x, &y);
    setPercent(progress, 100);
    if (pathPoints) {
        *pathPoints = path;
    }
    return plot->addCurve("Scalar vs. Length", x, y);
}

} // namespace orv::app
