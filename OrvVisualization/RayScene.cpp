#include "OrvVisualization/RayScene.h"

#include "OrvVisualization/RayScene_p.h"

namespace orv::vis {

RayScene::RayScene() : m_private(new RayScenePrivate) {}

RayScene::~RayScene() = default;

std::size_t RayScene::addFaces(std::span<const double> coordinates, std::span<const std::uint32_t> corners,
                               std::span<const std::uint32_t> faceOffsets) {
    return m_private->add({coordinates, corners, faceOffsets, 3, 0.0});
}

std::size_t RayScene::addTubes(std::span<const double> coordinates, std::span<const std::uint32_t> ends,
                               double radius) {
    return m_private->add({coordinates, ends, {}, 2, radius});
}

std::size_t RayScene::addSpheres(std::span<const double> coordinates, std::span<const std::uint32_t> points,
                                 double radius) {
    return m_private->add({coordinates, points, {}, 1, radius});
}

bool RayScene::commit(Str* reason) {
    return m_private->commit(reason);
}

bool RayScene::intersect(const Ray& ray, RayHit* hit) const {
    return m_private->intersect(ray, hit);
}

} // namespace orv::vis
