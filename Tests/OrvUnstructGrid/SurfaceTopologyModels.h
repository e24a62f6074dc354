#pragma once

#include "OrvUnstructGrid/DataPart.h"
#include "OrvUnstructGrid/SurfaceTopology_p.h"
#include "Tests/OrvUnstructGrid/PathModels.h"

#include <memory>
#include <vector>

namespace orvtest {

/// Parts with their surfaces, as a topology wants them.
class TopologyParts {
public:
    explicit TopologyParts(const std::vector<Mesh>& meshes) {
        for (const Mesh& mesh : meshes) {
            auto kept = std::make_unique<Kept>();
            kept->part.nodes()->set(mesh.coordinates(), {});
            kept->part.elements()->set(mesh.types, mesh.connectivity, {});
            kept->surface = orv::ug::surfaceOf(kept->part);
            kept->pieces = std::make_unique<orv::ug::NodePieces>(kept->surface, mesh.nodes.size());
            m_kept.push_back(std::move(kept));
        }
    }

    std::vector<orv::ug::TopologyPart> parts() const {
        std::vector<orv::ug::TopologyPart> parts;
        for (std::size_t i = 0; i < m_kept.size(); ++i) {
            const Kept& kept = *m_kept[i];
            parts.push_back({0, i, &kept.part, &kept.surface, kept.pieces.get(), kept.part.nodes()->coordinates()});
        }
        return parts;
    }

private:
    struct Kept {
        orv::ug::DataPart part{1};
        orv::ug::PartSurface surface;
        std::unique_ptr<orv::ug::NodePieces> pieces;
    };

    std::vector<std::unique_ptr<Kept>> m_kept;
};

inline Mesh movedBy(const Mesh& mesh, const orv::Vec3d& offset) {
    return mesh.mapped([&offset](const orv::Vec3d& p) { return p + offset; });
}

} // namespace orvtest
