#include "OrvUnstructGrid/DataState.h"

#include "LibCore/rvfAssert.h"

#include <algorithm>
#include <utility>

namespace orv::ug {

DataState::DataState(int id, std::vector<PtrRef<DataGeometry>> geometries)
    : m_id(id), m_geometries(std::move(geometries)) {
    m_groups.reserve(m_geometries.size());
    for (const PtrRef<DataGeometry>& geometry : m_geometries) {
        m_groups.push_back(std::make_unique<DataResultGroup>(geometry.get()));
    }
}

DataState::~DataState() = default;

int DataState::id() const {
    return m_id;
}

std::size_t DataState::geometryCount() const {
    return m_geometries.size();
}

DataGeometry* DataState::geometry(std::size_t index) {
    RVF_ASSERT(index < geometryCount());
    return index < geometryCount() ? m_geometries[index].get() : nullptr;
}

const DataGeometry* DataState::geometry(std::size_t index) const {
    RVF_ASSERT(index < geometryCount());
    return index < geometryCount() ? m_geometries[index].get() : nullptr;
}

bool DataState::readGeometries(Error* error) const {
    return std::all_of(m_geometries.begin(), m_geometries.end(),
                       [error](const PtrRef<DataGeometry>& geometry) { return geometry->read(error); });
}

DataResultGroup* DataState::results(const DataGeometry* geometry) {
    return const_cast<DataResultGroup*>(static_cast<const DataState*>(this)->results(geometry));
}

const DataResultGroup* DataState::results(const DataGeometry* geometry) const {
    const auto found = std::find_if(m_groups.begin(), m_groups.end(),
                                    [geometry](const auto& group) { return group->geometry() == geometry; });
    return found != m_groups.end() ? found->get() : nullptr;
}

bool DataState::hasLoaded(const ResultInfo& info) const {
    return std::all_of(m_groups.begin(), m_groups.end(), [&info](const auto& group) {
        return static_cast<const DataResultGroup&>(*group).find(info) != nullptr;
    });
}

void DataState::removeResult(const ResultInfo& info) {
    for (const std::unique_ptr<DataResultGroup>& group : m_groups) {
        group->remove(info);
    }
}

std::size_t DataState::resultByteCount() const {
    std::size_t bytes = 0;
    for (const std::unique_ptr<DataResultGroup>& group : m_groups) {
        bytes += group->byteCount();
    }
    return bytes;
}

} // namespace orv::ug
