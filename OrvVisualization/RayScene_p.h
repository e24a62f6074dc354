#pragma once

#include "OrvVisualization/RayPrimitives_p.h"
#include "OrvVisualization/RayScene.h"

#include <embree3/rtcore.h>

#include <array>
#include <string>
#include <vector>

namespace orv::vis {

/// A point with a coordinate that is not below this is not drawn, and nor is what has it for a corner.
inline constexpr double largestCoordinate = 1e100;

/// The faces, tubes or spheres that came in one call: points at `corners`, so many for each.
struct RayMesh {
    std::span<const double> coordinates;
    std::span<const std::uint32_t> corners;
    std::span<const std::uint32_t> faceOffsets; ///< Empty when a primitive is a single triangle, tube or sphere.
    std::size_t cornersPerShape = 3;            ///< 3 triangle, 2 tube, 1 sphere.
    double radius = 0.0;

    std::size_t primitiveCount() const;
    std::size_t firstShape(std::size_t primitive) const;
    const double* point(std::size_t corner) const;
    /// All corners of a primitive.
    std::span<const std::uint32_t> cornersOf(std::size_t primitive) const;
};

/// Where an axis-aligned box begins and ends.
struct RayBox {
    Vec3d lower = {1e300, 1e300, 1e300};
    Vec3d upper = {-1e300, -1e300, -1e300};

    void add(const double* point, double radius);
    void add(const RayBox& box);
    /// Nothing has been added.
    bool isEmpty() const;
};

/// The scene in Embree's terms. Embree sees it moved to the origin and scaled to the size of 1, in floats; boxes are
/// widened by more than the rounding of boxes and rays there.
class RayScenePrivate {
public:
    RayScenePrivate() = default;
    ~RayScenePrivate();

    std::size_t add(const RayMesh& mesh);
    bool commit(Str* reason);
    bool intersect(const Ray& ray, RayHit* hit) const;

private:
    struct Geometry {
        const RayScenePrivate* scene;
        const RayMesh* mesh;
        std::size_t number;
    };

    static void bounds(const RTCBoundsFunctionArguments* arguments);
    static void intersectPrimitive(const RTCIntersectFunctionNArguments* arguments);

    void measure();
    bool attach();
    bool fail(Str* reason) const;

    std::vector<RayMesh> m_meshes;
    std::vector<Geometry> m_geometries;
    RTCDevice m_device = nullptr;
    RTCScene m_scene = nullptr;
    bool m_isReady = false;
    Vec3d m_center;
    double m_size = 1.0; ///< Half the diagonal of all boxes.
};

} // namespace orv::vis
