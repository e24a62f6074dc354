#pragma once

#include "OrvCore/PtrRef.h"
#include "OrvVisualization/Model.h"

#include <limits>
#include <span>
#include <vector>

namespace orv::vis {

/// What a ray of a picture met first.
struct SeenPoint {
    const Shape* shape = nullptr; ///< Null when there is nothing but background.
    RayHit hit;
};

/// From where to where numbers go; the minimum is above the maximum when there are none.
struct ScalarRange {
    double minimum = std::numeric_limits<double>::max();
    double maximum = std::numeric_limits<double>::lowest();
};

/// The scalars that are drawn.
struct ShownScalars {
    bool exist = false;         ///< Whether any shape has some, if only undefined ones.
    bool haveUndefined = false; ///< NaN counts as undefined.
    ScalarRange range;          ///< Of those that are finite.
    Str title;                  ///< Of the first model that has some.
};

/// The triangles of a face.
struct TriangleRange {
    std::size_t first;
    std::size_t end;
};

TriangleRange trianglesOf(const Shape& shape, std::size_t face);

/// A corner of a triangle, or an end of a tube.
Vec3d cornerOf(const Shape& shape, std::size_t corner);

/// All that the models of a view show, as they are now.
class PictureScene {
public:
    explicit PictureScene(std::span<const PtrRef<Model>> models);

    /// Of points at the same distance, that of the first model.
    SeenPoint meet(const Ray& ray) const;

    /// Values of points that are no corners do not count.
    ShownScalars scalars() const;

    std::span<const Shape* const> shapes() const;

private:
    std::vector<const Model*> m_models;
    std::vector<const Shape*> m_shapes;
};

} // namespace orv::vis
