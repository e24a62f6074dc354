#pragma once

#include "OrvCore/PtrRef.h"
#include "OrvUnstructGrid/DataGeometry.h"
#include "OrvUnstructGrid/ZtfxArrays_p.h"
#include "OrvUnstructGrid/ZtfxIndex_p.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace orv::ug {

/// The meshes that the states of a case use.
///
/// A mesh in the place of another geometry is another object, as what is loaded on a geometry of a state is found by
/// that object. In the same place all states share it.
class ZtfxMeshes {
public:
    /// Makes them all, with parts whose arrays are read when they are needed, be it after this object's end. False with
    /// a text when the index says of an array what its entry or the others deny, or when the meshes need more memory
    /// than the size of the file makes likely.
    bool open(const ZtfxCase& contents, const std::shared_ptr<const ZtfxArrays>& arrays, Error* error);

    /// The one in the place of a geometry, by its index in ZtfxCase::meshes, which a state must use there.
    DataGeometry* find(std::size_t geometry, std::size_t mesh) const;

private:
    struct Placed {
        std::size_t geometry;
        std::size_t mesh;
        PtrRef<DataGeometry> object;
    };

    static bool addParts(const Placed& placed, const ZtfxCase& contents,
                         const std::shared_ptr<const ZtfxArrays>& arrays, Error* error);
    bool checkSize(const ZtfxCase& contents, const ZtfxArrays& arrays, Error* error) const;

    std::vector<Placed> m_meshes; ///< Sorted by geometry and mesh.
};

} // namespace orv::ug
