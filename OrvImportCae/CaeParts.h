#pragma once

#include "OrvCore/PtrRef.h"
#include "OrvImportCae/CaeIds.h"
#include "OrvUnstructGrid/DataGeometry.h"
#include "OrvUnstructGrid/ElementType.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace orv::imp::cae {

/// Where in the parts the nodes of the file went.
class CaeNodePlaces {
public:
    struct Place {
        std::uint32_t part = 0;
        std::uint32_t node = 0; ///< The node's index in that part.
    };

    CaeNodePlaces() = default;
    /// @param partNodes for each part the nodes of the file, by index, that are its own, in its order
    CaeNodePlaces(std::size_t nodeCount, const std::vector<std::vector<std::uint32_t>>& partNodes);

    /// True when there is one part and it has all nodes in the order of the file. There are no places to look up then.
    bool isIdentity() const;

    /// The places of one node: none when no element uses it, several when elements of several parts do.
    std::span<const Place> of(std::size_t node) const {
        return {m_places.data() + m_begins[node], m_places.data() + m_begins[node + 1]};
    }

private:
    std::vector<std::uint32_t> m_begins;
    std::vector<Place> m_places;
};

/// The elements of a file, in its order.
struct CaeElements {
    std::vector<ug::ElementType> types;
    std::vector<int> ids;
    std::vector<std::uint32_t> connectivity; ///< The nodes' indexes in the file, in our local order.
    std::vector<std::uint32_t> parts;        ///< For each element the index of its part.
};

/// Makes a geometry with the parts 1, 2, 3, ... out of elements: a part has its elements in the order of the file, and
/// the nodes that these use, by ascending number. Nodes that no element uses are left out.
/// @param coordinates x, y, z for each of the nodes
/// @param partCount all parts of elements are below; one without elements is empty
/// @param nodePlaces gets where the nodes went
PtrRef<ug::DataGeometry> makeCaeGeometry(const CaeIds& nodeIds, std::vector<double> coordinates, CaeElements elements,
                                         std::size_t partCount, CaeNodePlaces* nodePlaces);

} // namespace orv::imp::cae
