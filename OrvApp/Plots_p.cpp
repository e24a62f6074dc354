#include "OrvApp/Plots_p.h"

#include "LibCore/rvfAssert.h"
#include "OrvApp/AppLog_p.h"
#include "OrvUnstructGrid/DataSource.h"
#include "OrvUnstructGrid/HitItem.h"
#include "OrvUnstructGrid/ResultsQuery.h"
#include "OrvUnstructGrid/UnstructGridModel.h"
#include "OrvVisualization/Font.h"

#include <algorithm>

namespace orv::app {
namespace {

rvf::CodeLocation inAddHistoryCurve(int line) {
    return {RVF_SOURCE_PATH,
            "orv::plt::Curve *orv::app::PlotsPrivate::addHistoryCurve(size_t, const orv::ug::HitItem &, "
            "const orv::ug::UnstructGridModel *, int)",
            "addHistoryCurve", line};
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

} // namespace orv::app
