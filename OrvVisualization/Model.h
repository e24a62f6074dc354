#pragma once

#include "LibCore/rvfColor3.h"
#include "LibCore/rvfExport.h"
#include "OrvCore/RefCountedObject.h"
#include "OrvCore/Str.h"
#include "OrvVisualization/RayScene.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace orv::vis {

/// Things of one kind that are drawn and picked together. The arrays belong to the model.
struct Shape {
    enum Kind { FACES, TUBES, SPHERES };

    Kind kind = FACES;
    std::span<const double> coordinates;        ///< x, y, z of each point.
    std::span<const std::uint32_t> corners;     ///< Points: 3 for each triangle, 2 for each tube, 1 for each sphere.
    std::span<const std::uint32_t> faceOffsets; ///< Where each face begins among the triangles, and their count.
    /// For each triangle which of its sides is an edge of an element: bit i is the side from corner i to the next.
    std::span<const std::uint8_t> edges;
    double radius = 0.0; ///< Of tubes and spheres.

    /// One for each point, or empty; UNDEFINED_DOUBLE where there is none. Goes before `primitiveScalars`.
    std::span<const double> pointScalars;
    /// One for each face, tube or sphere, or empty.
    std::span<const double> primitiveScalars;
    rvf::Color3f color; ///< Where there are no scalars.
};

/// The number whose colour is seen where a ray has met a shape: of points it is interpolated, and undefined on the
/// whole of a face, tube or sphere when one of its corners is. UNDEFINED_DOUBLE for a shape without scalars.
/// @param hit on this shape
ORV_API double scalarAt(const Shape& shape, const RayHit& hit);

/// What a View shows.
class ORV_API Model : public RefCountedObject {
public:
    ~Model() override;

    /// Brings shapes() and scene() up to date with whatever the model is made from. Cheap when nothing has changed.
    /// @param reason told when it fails; may be null
    virtual bool updateShapes(Str* reason) = 0;

    /// As the last updateShapes() left them; the next one may change them.
    virtual std::span<const Shape> shapes() const = 0;

    /// All shapes, ready for rays: the mesh of a RayHit is the index of the shape. Null before updateShapes().
    virtual const RayScene* scene() const = 0;

    /// What the scalars are, for the legend; empty when there are none.
    virtual Str scalarTitle() const = 0;
};

} // namespace orv::vis
