#include "OrvVisualization/PictureScene_p.h"

#include <algorithm>
#include <cmath>

namespace orv::vis {

namespace {

void add(double value, ShownScalars* scalars) {
    if (value == UNDEFINED_DOUBLE || std::isnan(value)) {
        scalars->haveUndefined = true;
    } else if (std::isfinite(value)) {
        scalars->range.minimum = std::min(scalars->range.minimum, value);
        scalars->range.maximum = std::max(scalars->range.maximum, value);
    }
}

/// @return whether the shape has scalars
bool add(const Shape& shape, ShownScalars* scalars) {
    if (!shape.pointScalars.empty()) {
        for (const std::uint32_t point : shape.corners) {
            add(shape.pointScalars[point], scalars);
        }
        return true;
    }
    for (const double value : shape.primitiveScalars) {
        add(value, scalars);
    }
    return !shape.primitiveScalars.empty();
}

} // namespace

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

ShownScalars PictureScene::scalars() const {
    ShownScalars scalars;
    for (const Model* model : m_models) {
        bool hasScalars = false;
        for (const Shape& shape : model->shapes()) {
            hasScalars = add(shape, &scalars) || hasScalars;
        }
        if (hasScalars && !scalars.exist) {
            scalars.exist = true;
            scalars.title = model->scalarTitle();
        }
    }
    return scalars;
}

std::span<const Shape* const> PictureScene::shapes() const {
    return m_shapes;
}

} // namespace orv::vis
