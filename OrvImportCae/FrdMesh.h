#pragma once

#include "OrvCore/PtrRef.h"
#include "OrvImportCae/FrdFile.h"
#include "OrvImportCae/FrdIndex.h"
#include "OrvImportCae/FrdNodeIds.h"
#include "OrvUnstructGrid/DataGeometry.h"
#include "OrvUnstructGrid/PartInfo.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace orv::imp::cae {

/// Where in the parts the nodes of the file went.
class FrdNodePlaces {
public:
    struct Place {
        std::uint32_t part = 0;
        std::uint32_t node = 0; ///< The node's index in that part.
    };

    FrdNodePlaces() = default;
    /// @param partNodes for each part the nodes of the file, by index, that are its own, in its order
    FrdNodePlaces(std::size_t nodeCount, const std::vector<std::vector<std::uint32_t>>& partNodes);

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

/// The mesh of a file as our data model has it, with the way back to the order of the file.
struct FrdMesh {
    FrdNodeIds nodeIds;
    PtrRef<ug::DataGeometry> geometry;
    std::vector<ug::PartInfo> parts;
    FrdNodePlaces places;
};

/// Reads the blocks of nodes and elements. Elements of the same group and material make a part, in ascending order of
/// these numbers; a part's nodes are those that its elements use, by ascending number. Elements of an unknown type are
/// left out and counted in a warning.
bool readFrdMesh(const FrdFile& file, const FrdIndex& index, FrdMesh* mesh, std::vector<std::string>* warnings,
                 ug::Error* error);

} // namespace orv::imp::cae
