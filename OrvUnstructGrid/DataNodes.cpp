#include "OrvUnstructGrid/DataNodes.h"

#include "LibCore/rvfAssert.h"
#include "OrvCore/Defines.h"

#include <utility>

namespace orv::ug {

void DataNodes::set(std::vector<double> coordinates, std::vector<int> ids) {
    RVF_ASSERT(coordinates.size() % 3 == 0);
    RVF_ASSERT(ids.empty() || ids.size() * 3 == coordinates.size());
    if (coordinates.size() % 3 != 0 || (!ids.empty() && ids.size() * 3 != coordinates.size())) {
        return;
    }
    m_coordinates = std::move(coordinates);
    m_ids = std::move(ids);
}

std::size_t DataNodes::nodeCount() const {
    return m_coordinates.size() / 3;
}

Vec3d DataNodes::node(std::size_t index) const {
    RVF_ASSERT(index < nodeCount());
    if (index >= nodeCount()) {
        return UNDEFINED_VECTOR;
    }
    const double* xyz = m_coordinates.data() + 3 * index;
    return Vec3d(xyz[0], xyz[1], xyz[2]);
}

int DataNodes::nodeId(std::size_t index) const {
    RVF_ASSERT(index < nodeCount());
    if (index >= nodeCount()) {
        return -1;
    }
    return m_ids.empty() ? static_cast<int>(index) + 1 : m_ids[index];
}

std::span<const double> DataNodes::coordinates() const {
    return m_coordinates;
}

std::span<const int> DataNodes::ids() const {
    return m_ids;
}

std::size_t DataNodes::byteCount() const {
    return m_coordinates.size() * sizeof(double) + m_ids.size() * sizeof(int);
}

} // namespace orv::ug
