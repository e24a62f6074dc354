#include "OrvUnstructGrid/ModelSpec.h"

#include "LibCore/rvfAssert.h"
#include "OrvUnstructGrid/DataSource.h"
#include "OrvUnstructGrid/UnstructGridModel.h"

#include <algorithm>
#include <cmath>

namespace orv::ug {
namespace {

int firstResultId(const DataSourceDirectory& directory, ResultType type, int stateId) {
    const std::vector<ResultInfo> infos = directory.resultInfos(type);
    const auto found = std::find_if(infos.begin(), infos.end(),
                                    [&](const ResultInfo& info) { return directory.hasResult(stateId, info); });
    return found != infos.end() ? found->id() : -1;
}

} // namespace

ModelSpec::ModelSpec(const UnstructGridModel* model) : m_model(model) {}

void ModelSpec::clear() {
    m_stateId = -1;
    m_fringesResultId = -1;
    m_vectorResultId = -1;
    m_displacementResultId = -1;
    m_isDisplaced = false;
    m_displacementScale = 1.0;
    m_partFringesResultIds.clear();
    m_hiddenParts.clear();
}

void ModelSpec::setStateId(int stateId) {
    m_stateId = stateId;
}

int ModelSpec::stateId() const {
    return m_stateId;
}

void ModelSpec::setDefaultResults() {
    const DataSource* source = m_model->dataSource();
    auto choose = [&](ResultType type) { return source ? firstResultId(*source->directory(), type, m_stateId) : -1; };
    m_fringesResultId = choose(SCALAR);
    m_vectorResultId = choose(VECTOR);
    m_displacementResultId = choose(DISPLACEMENT);
}

void ModelSpec::setFringesResultId(int scalarResultId) {
    m_fringesResultId = scalarResultId;
}

int ModelSpec::fringesResultId() const {
    return m_fringesResultId;
}

void ModelSpec::setPartFringesResultId(std::size_t geometryIndex, int partId, int scalarResultId) {
    m_partFringesResultIds[{geometryIndex, partId}] = scalarResultId;
}

int ModelSpec::effectiveFringesResultId(std::size_t geometryIndex, int partId) const {
    const auto found = m_partFringesResultIds.find({geometryIndex, partId});
    return found != m_partFringesResultIds.end() ? found->second : m_fringesResultId;
}

const std::map<std::pair<std::size_t, int>, int>& ModelSpec::partFringesResultIds() const {
    return m_partFringesResultIds;
}

void ModelSpec::setVectorResultId(int vectorResultId) {
    m_vectorResultId = vectorResultId;
}

int ModelSpec::vectorResultId() const {
    return m_vectorResultId;
}

void ModelSpec::setDisplacementResultId(int displacementResultId) {
    m_displacementResultId = displacementResultId;
}

int ModelSpec::displacementResultId() const {
    return m_displacementResultId;
}

void ModelSpec::setDisplaced(bool isDisplaced) {
    m_isDisplaced = isDisplaced;
}

bool ModelSpec::isDisplaced() const {
    return m_isDisplaced;
}

void ModelSpec::setDisplacementScale(double scale) {
    RVF_ASSERT(std::isfinite(scale));
    if (std::isfinite(scale)) {
        m_displacementScale = scale;
    }
}

double ModelSpec::displacementScale() const {
    return m_displacementScale;
}

void ModelSpec::setPartVisible(std::size_t geometryIndex, int partId, bool isVisible) {
    if (isVisible) {
        m_hiddenParts.erase({geometryIndex, partId});
    } else {
        m_hiddenParts.insert({geometryIndex, partId});
    }
}

bool ModelSpec::isPartVisible(std::size_t geometryIndex, int partId) const {
    return m_hiddenParts.count({geometryIndex, partId}) == 0;
}

const std::set<std::pair<std::size_t, int>>& ModelSpec::hiddenParts() const {
    return m_hiddenParts;
}

} // namespace orv::ug
