#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/Vec3d.h"

#include <cstddef>
#include <span>
#include <vector>

namespace orv::ug {

/// The nodes of one part: coordinates and the numbers that the solver gave them.
class ORV_API DataNodes {
public:
    DataNodes() = default;

    /// @param coordinates 3 doubles for each node: x, y, z
    /// @param ids one for each node, or empty when the nodes have no numbers of their own
    /// Asserts "coordinates.size() % 3 == 0" and "ids.empty() || ids.size() * 3 == coordinates.size()"; behind a failed
    /// assertion the nodes stay as they were.
    void set(std::vector<double> coordinates, std::vector<int> ids);

    std::size_t nodeCount() const;

    /// Asserts "index < nodeCount()"; UNDEFINED_VECTOR behind a failed assertion.
    Vec3d node(std::size_t index) const;

    /// The solver's number of a node, or its index plus 1 when the nodes have no numbers.
    /// Asserts "index < nodeCount()"; -1 behind a failed assertion.
    int nodeId(std::size_t index) const;

    /// All coordinates: x, y, z of the first node, then of the next.
    std::span<const double> coordinates() const;

    /// The solver's numbers, one for each node; empty when the nodes have none.
    std::span<const int> ids() const;

    std::size_t byteCount() const;

private:
    std::vector<double> m_coordinates;
    std::vector<int> m_ids;
};

} // namespace orv::ug
