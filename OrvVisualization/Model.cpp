#include "OrvVisualization/Model.h"

#include "OrvCore/Defines.h"
#include "OrvVisualization/PictureScene_p.h"

#include <cmath>

namespace orv::vis {
namespace {

/// The corners of a face, tube or sphere.
std::span<const std::uint32_t> cornersOf(const Shape& shape, std::size_t primitive) {
    switch (shape.kind) {
    case Shape::FACES: {
        const TriangleRange triangles = trianglesOf(shape, primitive);
        return shape.corners.subspan(3 * triangles.first, 3 * (triangles.end - triangles.first));
    }
    case Shape::TUBES:
        return shape.corners.subspan(2 * primitive, 2);
    case Shape::SPHERES:
        break;
    }
    return shape.corners.subspan(primitive, 1);
}

double interpolated(const Shape& shape, const RayHit& hit) {
    std::span<const std::uint32_t> corners = cornersOf(shape, hit.primitive);
    for (const std::uint32_t corner : corners) {
        const double scalar = shape.pointScalars[corner];
        if (scalar == UNDEFINED_DOUBLE || std::isnan(scalar)) {
            return UNDEFINED_DOUBLE;
        }
    }
    if (shape.kind == Shape::FACES) {
        corners = shape.corners.subspan(3 * hit.triangle, 3);
    }
    double scalar = 0.0;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        scalar += hit.weights[i] * shape.pointScalars[corners[i]];
    }
    return scalar;
}

} // namespace

Model::~Model() = default;

double scalarAt(const Shape& shape, const RayHit& hit) {
    if (!shape.pointScalars.empty()) {
        return interpolated(shape, hit);
    }
    return shape.primitiveScalars.empty() ? UNDEFINED_DOUBLE : shape.primitiveScalars[hit.primitive];
}

} // namespace orv::vis
