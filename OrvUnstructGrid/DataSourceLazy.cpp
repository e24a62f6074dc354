#include "OrvUnstructGrid/DataSourceLazy.h"

#include "OrvUnstructGrid/CustomResultGenerator.h"
#include "OrvUnstructGrid/DataStateSpec.h"
#include "OrvUnstructGrid/Error.h"
#include "OrvUnstructGrid/ErrorTexts_p.h"
#include "OrvUnstructGrid/ResultWalk_p.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <unordered_map>

namespace orv::ug {
namespace {

/// Tells when an unregistered part of an expression has served its last purpose.
class Intermediates {
public:
    template <class IsRegistered>
    Intermediates(const std::vector<ResultInfo>& order, IsRegistered isRegistered) {
        for (const ResultInfo& info : order) {
            if (info.isCustom() && !isRegistered(info)) {
                m_usesLeft[info.id()] = 0;
            }
        }
        for (const ResultInfo& info : order) {
            for (const ResultInfo& argument : info.customResultArguments()) {
                if (int* usesLeft = find(argument)) {
                    ++*usesLeft;
                }
            }
        }
    }

    /// Notes one use. True when it was the last.
    bool use(const ResultInfo& argument) {
        int* usesLeft = find(argument);
        return usesLeft && --*usesLeft == 0;
    }

private:
    int* find(const ResultInfo& info) {
        const auto found = info.isCustom() ? m_usesLeft.find(info.id()) : m_usesLeft.end();
        return found != m_usesLeft.end() ? &found->second : nullptr;
    }

    std::unordered_map<int, int> m_usesLeft;
};

bool isWithin(const DataState& state, const ResultInfo& info, const ScalarPlace& place, std::size_t count) {
    if (place.geometryIndex >= state.geometryCount() ||
        place.partIndex >= state.geometry(place.geometryIndex)->partCount()) {
        return false;
    }
    const DataPart* part = state.geometry(place.geometryIndex)->part(place.partIndex);
    const std::size_t itemCount = part->itemCount(info.resultMapping());
    return place.firstItem <= itemCount && count <= itemCount - place.firstItem;
}

} // namespace

DataSourceLazy::DataSourceLazy(int id) : DataSource(id) {}

DataSourceLazy::~DataSourceLazy() = default;

bool DataSourceLazy::loadDataState(int stateId, const DataStateSpec& spec, Error* error) {
    DataState* loaded = state(stateIndex(stateId));
    if (!loaded) {
        return fail(error, unknownStateText(*directory(), stateId));
    }
    ProgressMeter::Work work(progressMeter());
    std::vector<ResultInfo> order;
    if (!planLoad(spec, *loaded, &order, error) || !readAndCarryOut(order, loaded, error)) {
        return false;
    }
    work.finish();
    noteUse(*loaded);
    noteUnusedMeshes();
    dropBeyondBudget(stateId);
    return true;
}

bool DataSourceLazy::copyScalars(int stateId, const ResultInfo& info, const ScalarPlace& place,
                                 std::span<double> values, Error* error) {
    DataState* wanted = state(stateIndex(stateId));
    if (!wanted) {
        return fail(error, unknownStateText(*directory(), stateId));
    }
    if (!isKnown(info)) {
        return fail(error, unknownResultText(*directory(), info));
    }
    if (info.type() != SCALAR) {
        return fail(error, "Result '" + info.name() + "' is no scalar: only scalars can be had one by one");
    }
    if (!isWithin(*wanted, info, place, values.size())) {
        return wanted->readGeometries(error) &&
               fail(error, "Result '" + info.name() + "' has no such item in " + stateText(*directory(), stateId));
    }
    const bool isInFile = !info.isCustom() && directory()->hasResult(stateId, info);
    if (!wanted->hasLoaded(info) && isInFile && readScalars(info, *wanted, place, values)) {
        return true;
    }
    DataStateSpec spec;
    spec.setResultIds({info});
    if (!loadDataState(stateId, spec, error)) {
        return false;
    }
    const DataResult* result = wanted->results(wanted->geometry(place.geometryIndex))->find(info);
    std::copy_n(result->values(place.partIndex)->values() + place.firstItem, values.size(), values.begin());
    return true;
}

void DataSourceLazy::dropResult(const ResultInfo& info) {
    DataSource::dropResult(info);
    m_droppableBytes = 0;
    for (StateUse& use : m_uses) {
        use.bytes = countDroppableBytes(*state(stateIndex(use.stateId)));
        m_droppableBytes += use.bytes;
    }
}

void DataSourceLazy::setResultByteBudget(std::size_t bytes) {
    m_budget = bytes;
}

std::size_t DataSourceLazy::resultByteBudget() const {
    return m_budget;
}

bool DataSourceLazy::readScalars(const ResultInfo&, const DataState&, const ScalarPlace&, std::span<double>) {
    return false;
}

void DataSourceLazy::beginLoad(const std::vector<ResultInfo>&, const DataState&) {}

void DataSourceLazy::endLoad(const DataState&) {}

bool DataSourceLazy::canReadAgain() const {
    return true;
}

void DataSourceLazy::dropValues(DataState* state) {
    for (std::size_t g = 0; g < state->geometryCount(); ++g) {
        DataResultGroup* group = state->results(state->geometry(g));
        for (const DataResult* result : group->all()) {
            if (canBeHadAgain(*result)) {
                group->remove(result->type(), result->resultId());
            }
        }
    }
    forgetUse(state->id());
}

void DataSourceLazy::giveBackMeshes(DataState* state) {
    for (std::size_t g = 0; g < state->geometryCount(); ++g) {
        if (isOfOneState(state->geometry(g))) {
            state->geometry(g)->giveBack();
        }
    }
}

void DataSourceLazy::completeParts(const ResultInfo& info, DataState* state) {
    for (std::size_t g = 0; g < state->geometryCount(); ++g) {
        const DataGeometry* geometry = state->geometry(g);
        DataResult* result = state->results(geometry)->findOrAdd(info);
        for (std::size_t p = 0; p < geometry->partCount(); ++p) {
            const std::size_t itemCount = geometry->part(p)->itemCount(info.resultMapping());
            DataPartValues* values = result->values(p);
            if (values->itemCount() != itemCount) {
                values->allocate(itemCount);
                values->fillUndefined();
            }
        }
    }
}

// Everything that is missing, what it rests on first.
bool DataSourceLazy::planLoad(const DataStateSpec& spec, const DataState& state, std::vector<ResultInfo>* order,
                              Error* error) const {
    ResultWalk walk;
    for (const ResultInfo& needed : spec.resultIds()) {
        if (!isKnown(needed)) {
            return fail(error, unknownResultText(*directory(), needed));
        }
        auto isComputed = [&state](const ResultInfo& info) { return info.isCustom() && !state.hasLoaded(info); };
        auto plan = [&](const ResultInfo& info) {
            if (state.hasLoaded(info)) {
                return true;
            }
            if (!info.isCustom() && !directory()->hasResult(state.id(), info)) {
                return fail(error, unreadableResultText(*directory(), state.id(), needed, info));
            }
            order->push_back(info);
            return true;
        };
        if (!walk.walk(needed, isComputed, plan)) {
            return false;
        }
    }
    return true;
}

bool DataSourceLazy::readAndCarryOut(const std::vector<ResultInfo>& order, DataState* state, Error* error) {
    std::vector<ResultInfo> ofFile;
    std::copy_if(order.begin(), order.end(), std::back_inserter(ofFile),
                 [](const ResultInfo& info) { return !info.isCustom(); });
    beginLoad(ofFile, *state);
    const bool isDone = readGeometries(order.size(), state, error) && carryOut(order, state, error);
    endLoad(*state);
    return isDone;
}

// The meshes count as one result.
bool DataSourceLazy::readGeometries(std::size_t resultCount, DataState* state, Error* error) {
    const ProgressMeter::Step step(progressMeter(), 0.0, 1.0 / double(resultCount + 1));
    return state->readGeometries(error);
}

bool DataSourceLazy::carryOut(const std::vector<ResultInfo>& order, DataState* state, Error* error) {
    Intermediates intermediates(order, [this](const ResultInfo& info) { return isKnown(info); });
    std::vector<ResultInfo> brought;
    for (std::size_t i = 0; i < order.size(); ++i) {
        const ResultInfo& info = order[i];
        const double stepCount = double(order.size() + 1);
        const ProgressMeter::Step step(progressMeter(), double(i + 1) / stepCount, double(i + 2) / stepCount);
        // A file's result under two names is planned twice.
        if (state->hasLoaded(info)) {
            continue;
        }
        brought.push_back(info);
        if (!loadOne(info, state, error)) {
            for (const ResultInfo& result : brought) {
                state->removeResult(result);
            }
            return false;
        }
        for (const ResultInfo& argument : info.customResultArguments()) {
            if (intermediates.use(argument)) {
                state->removeResult(argument);
            }
        }
    }
    return true;
}

bool DataSourceLazy::loadOne(const ResultInfo& info, DataState* state, Error* error) {
    Error reason;
    if (info.isCustom() && !CustomResultGenerator::compute(this, info, state)) {
        return fail(error, failedComputationText(*directory(), state->id(), info));
    }
    if (!info.isCustom() && !readResult(info, state, &reason)) {
        return fail(error, reason.isEmpty() ? failedReadText(*directory(), state->id(), info) : reason.message());
    }
    completeParts(info, state);
    return true;
}

bool DataSourceLazy::isKnown(const ResultInfo& info) const {
    return info.isValid() && directory()->findResultInfo(info.type(), info.id()) == info;
}

bool DataSourceLazy::canBeHadAgain(const DataResult& result) const {
    return canReadAgain() || directory()->findResultInfo(result.type(), result.resultId()).isCustom();
}

std::size_t DataSourceLazy::countDroppableBytes(const DataState& state) const {
    std::size_t bytes = 0;
    for (std::size_t g = 0; g < state.geometryCount(); ++g) {
        for (const DataResult* result : state.results(state.geometry(g))->all()) {
            bytes += canBeHadAgain(*result) ? result->byteCount() : 0;
        }
        bytes += isOfOneState(state.geometry(g)) ? state.geometry(g)->bytesToGiveBack() : 0;
    }
    return bytes;
}

void DataSourceLazy::noteUse(const DataState& state) {
    forgetUse(state.id());
    m_uses.push_back({state.id(), countDroppableBytes(state)});
    m_droppableBytes += m_uses.back().bytes;
}

// Meshes that somebody had read without a load: to compare them, say. Their states count as the longest unused.
void DataSourceLazy::noteUnusedMeshes() {
    if (!hasGeometryOfOneState()) {
        return;
    }
    std::set<int> usedIds;
    for (const StateUse& use : m_uses) {
        usedIds.insert(use.stateId);
    }
    std::vector<StateUse> unused;
    for (std::size_t s = 0; s < stateCount(); ++s) {
        const StateUse use{state(s)->id(), usedIds.contains(state(s)->id()) ? 0 : countDroppableBytes(*state(s))};
        if (use.bytes > 0) {
            unused.push_back(use);
            m_droppableBytes += use.bytes;
        }
    }
    m_uses.insert(m_uses.begin(), unused.begin(), unused.end());
}

void DataSourceLazy::forgetUse(int stateId) {
    const auto use =
        std::find_if(m_uses.begin(), m_uses.end(), [stateId](const StateUse& u) { return u.stateId == stateId; });
    if (use != m_uses.end()) {
        m_droppableBytes -= use->bytes;
        m_uses.erase(use);
    }
}

void DataSourceLazy::dropBeyondBudget(int loadedStateId) {
    std::size_t oldest = 0;
    while (m_droppableBytes > m_budget && oldest < m_uses.size()) {
        const int stateId = m_uses[oldest].stateId;
        if (stateId == loadedStateId || isCurrentForAModel(stateId)) {
            ++oldest;
        } else {
            dropValues(state(stateIndex(stateId)));
            giveBackMeshes(state(stateIndex(stateId)));
        }
    }
}

} // namespace orv::ug
