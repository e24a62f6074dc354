#include "OrvUnstructGrid/DataSource.h"

#include "OrvUnstructGrid/UnstructGridModel.h"

#include <algorithm>
#include <utility>

namespace orv::ug {

DataSource::DataSource(int id) : m_id(id), m_directory(this) {}

DataSource::~DataSource() = default;

int DataSource::id() const {
    return m_id;
}

DataSourceDirectory* DataSource::directory() {
    return &m_directory;
}

const DataSourceDirectory* DataSource::directory() const {
    return &m_directory;
}

DataState* DataSource::currentState(const UnstructGridModel* model) {
    return model ? state(stateIndex(model->currentStateId())) : nullptr;
}

std::size_t DataSource::stateCount() const {
    return m_states.size();
}

DataState* DataSource::state(std::size_t index) {
    return index < m_states.size() ? m_states[index].get() : nullptr;
}

const DataState* DataSource::state(std::size_t index) const {
    return index < m_states.size() ? m_states[index].get() : nullptr;
}

std::size_t DataSource::stateIndex(int stateId) const {
    return m_directory.stateIndex(stateId);
}

void DataSource::dropResult(const ResultInfo& info) {
    for (const std::unique_ptr<DataState>& state : m_states) {
        state->removeResult(info);
    }
}

void DataSource::setProgress(Progress* progress) {
    m_progressMeter.setProgress(progress);
}

ProgressMeter* DataSource::progressMeter() {
    return &m_progressMeter;
}

void DataSource::attachModel(const UnstructGridModel* model) {
    m_models.push_back(model);
}

void DataSource::detachModel(const UnstructGridModel* model) {
    std::erase(m_models, model);
}

DataState* DataSource::addState(const StateInfo& info, std::vector<PtrRef<DataGeometry>> geometries) {
    m_directory.addStateInfo(info);
    if (m_directory.stateCount() == m_states.size()) {
        return nullptr;
    }
    for (const PtrRef<DataGeometry>& geometry : geometries) {
        ++m_stateCounts[geometry.get()];
    }
    return m_states.emplace_back(std::make_unique<DataState>(info.id(), std::move(geometries))).get();
}

bool DataSource::isCurrentForAModel(int stateId) const {
    return std::any_of(m_models.begin(), m_models.end(),
                       [stateId](const UnstructGridModel* model) { return model->currentStateId() == stateId; });
}

bool DataSource::isOfOneState(const DataGeometry* geometry) const {
    return m_stateCounts.at(geometry) == 1;
}

bool DataSource::hasGeometryOfOneState() const {
    return std::any_of(m_stateCounts.begin(), m_stateCounts.end(), [](const auto& count) { return count.second == 1; });
}

} // namespace orv::ug
