#include "OrvVisualization/PictureScene_p.h"

#include <algorithm>
#include <cmath>

namespace orv::vis {

void ScalarRange::add(double value) {
    if (std::isfinite(value) && value != UNDEFINED_DOUBLE) {
        minimum = std::min(minimum, value);
        maximum = std::max(maximum, value);
    }
}

bool ScalarRange::isEmpty() const {
    return minimum > maximum;
}

TriangleRange trianglesOf(const Shape& shape, std::size_t face) {
    return shape.faceOffsets.empty() ? TriangleRange{face, face + 1}
                                     : TriangleRange{shape.faceOffsets[face], shape.faceOffsets[face + 1]};
}

Vec3d cornerOf(const Shape& shape, std::size_t corner) {
    const double* x = &shape.coordinates[3 * std::size_t(shape.corners[corner])];
    return {x[0], x[1], x[2]};
}

PictureScene::PictureScene(std::span<const PtrRef<Model>> models) {
    for (const PtrRef<Model>& model : models) {
        if (model->scene()) {
            m_models.push_back(model.get());
            for (const Shape& shape : model->shapes()) {
                m_shapes.push_back(&shape);
            }
        }
    }
}

SeenPoint PictureScene::meet(const Ray& ray) const {
    SeenPoint seen;
    for (const Model* model : m_models) {
        RayHit hit;
        if (model->scene()->intersect(ray, &hit) && (!seen.shape || hit.distance < seen.hit.distance)) {
            seen = {&model->shapes()[hit.mesh], hit};
        }
    }
    return seen;
}

ScalarRange PictureScene::scalarRange() const {
    ScalarRange range;
    for (const Shape* shape : m_shapes) {
        if (!shape->pointScalars.empty()) {
            for (const std::uint32_t point : shape->corners) {
                range.add(shape->pointScalars[point]);
            }
        } else {
            for (const double value : shape->primitiveScalars) {
                range.add(value);
            }
        }
    }
    return range;
}

std::span<const Shape* const> PictureScene::shapes() const {
    return m_shapes;
}

} // namespace orv::vis
