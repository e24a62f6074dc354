// Rays at the surface of a block of 200 * 50 * 50 hexahedra, 50,000 triangles: what UnstructGridModel::rayIntersect()
// takes on top of Embree's own triangles in single precision, and how it compares with VTK's static cell locator.

#include "OrvUnstructGrid/DataSourceMemory.h"
#include "OrvUnstructGrid/HitItem.h"
#include "OrvUnstructGrid/PartSurface_p.h"
#include "OrvUnstructGrid/UnstructGridModel.h"

#include "Benchmarks/Claims.h"

#include <embree3/rtcore.h>
#include <vtkCellArray.h>
#include <vtkNew.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>
#include <vtkStaticCellLocator.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <vector>

using namespace orv::ug;
using orv::Ray;
using orv::Vec3d;

namespace {

constexpr std::uint32_t cubes[] = {200, 50, 50};
constexpr std::size_t rayCount = 10000;

std::uint32_t nodeAt(std::uint32_t x, std::uint32_t y, std::uint32_t z) {
    return (z * (cubes[1] + 1) + y) * (cubes[0] + 1) + x;
}

/// A block that is bent, so that no coordinates are equal.
void fill(DataPart* part) {
    std::vector<double> coordinates;
    std::vector<std::uint32_t> nodes;
    for (std::uint32_t z = 0; z <= cubes[2]; ++z) {
        for (std::uint32_t y = 0; y <= cubes[1]; ++y) {
            for (std::uint32_t x = 0; x <= cubes[0]; ++x) {
                const double bend = 10 * std::sin(0.03 * x);
                coordinates.insert(coordinates.end(), {double(x), y + bend, z + 0.5 * bend});
                if (x < cubes[0] && y < cubes[1] && z < cubes[2]) {
                    nodes.insert(nodes.end(), {nodeAt(x, y, z), nodeAt(x + 1, y, z), nodeAt(x + 1, y + 1, z),
                                               nodeAt(x, y + 1, z), nodeAt(x, y, z + 1), nodeAt(x + 1, y, z + 1),
                                               nodeAt(x + 1, y + 1, z + 1), nodeAt(x, y + 1, z + 1)});
                }
            }
        }
    }
    std::vector<ElementType> types(nodes.size() / 8, HEXAHEDRON);
    part->nodes()->set(std::move(coordinates), {});
    part->elements()->set(std::move(types), std::move(nodes), {});
}

/// A model, and an empty part whose hiding makes it build its scene anew.
class Ours {
public:
    Ours() : m_source(new DataSourceMemory(1)), m_model(new UnstructGridModel) {
        m_source->addGeometry();
        fill(m_source->addPart(0, "block"));
        m_source->addPart(0, "nothing");
        m_source->addState(StateInfo(1, "", StateInfo::TIME, 0));
        m_model->setDataSource(m_source.get());
        m_model->modelSpec().setStateId(1);
        m_surface = surfaceOf(part());
    }

    const DataPart& part() const {
        return *m_source->state(0)->geometry(0)->part(0);
    }

    const PartSurface& surface() const {
        return m_surface;
    }

    void change() {
        m_model->modelSpec().setPartVisible(0, 2, !m_model->modelSpec().isPartVisible(0, 2));
    }

    std::size_t pick(std::span<const Ray> rays) {
        std::size_t hits = 0;
        for (const Ray& ray : rays) {
            HitItem hit;
            hits += m_model->rayIntersect(ray, &hit);
        }
        return hits;
    }

private:
    orv::PtrRef<DataSourceMemory> m_source;
    orv::PtrRef<UnstructGridModel> m_model;
    PartSurface m_surface;
};

/// The same triangles in Embree, in single precision.
class BareEmbree {
public:
    BareEmbree(const DataPart& part, const PartSurface& surface)
        : m_points(part.nodes()->coordinates()), m_corners(surface.corners) {}

    ~BareEmbree() {
        release();
    }

    void release() {
        if (m_device) {
            rtcReleaseScene(m_scene);
            rtcReleaseDevice(m_device);
            m_device = nullptr;
        }
    }

    void setUp() {
        m_device = rtcNewDevice("threads=1");
        m_scene = rtcNewScene(m_device);
        RTCGeometry geometry = rtcNewGeometry(m_device, RTC_GEOMETRY_TYPE_TRIANGLE);
        auto* points = static_cast<float*>(
            rtcSetNewGeometryBuffer(geometry, RTC_BUFFER_TYPE_VERTEX, 0, RTC_FORMAT_FLOAT3, 12, m_points.size() / 3));
        std::copy(m_points.begin(), m_points.end(), points);
        auto* corners = static_cast<std::uint32_t*>(
            rtcSetNewGeometryBuffer(geometry, RTC_BUFFER_TYPE_INDEX, 0, RTC_FORMAT_UINT3, 12, m_corners.size() / 3));
        std::copy(m_corners.begin(), m_corners.end(), corners);
        rtcCommitGeometry(geometry);
        rtcAttachGeometry(m_scene, geometry);
        rtcReleaseGeometry(geometry);
        rtcSetSceneFlags(m_scene, RTC_SCENE_FLAG_ROBUST);
        rtcCommitScene(m_scene);
    }

    std::size_t pick(std::span<const Ray> rays) const {
        std::size_t hits = 0;
        for (const Ray& ray : rays) {
            RTCRayHit rayHit = {};
            rayHit.ray.org_x = float(ray.origin().x());
            rayHit.ray.org_y = float(ray.origin().y());
            rayHit.ray.org_z = float(ray.origin().z());
            rayHit.ray.dir_x = float(ray.direction().x());
            rayHit.ray.dir_y = float(ray.direction().y());
            rayHit.ray.dir_z = float(ray.direction().z());
            rayHit.ray.tfar = 4.0F;
            rayHit.ray.mask = ~0U;
            rayHit.hit.geomID = RTC_INVALID_GEOMETRY_ID;
            RTCIntersectContext context;
            rtcInitIntersectContext(&context);
            rtcIntersect1(m_scene, &context, &rayHit);
            hits += rayHit.hit.geomID != RTC_INVALID_GEOMETRY_ID;
        }
        return hits;
    }

private:
    std::span<const double> m_points;
    std::span<const std::uint32_t> m_corners;
    RTCDevice m_device = nullptr;
    RTCScene m_scene = nullptr;
};

/// The same triangles in VTK.
class CellLocator {
public:
    CellLocator(const DataPart& part, const PartSurface& surface) {
        vtkNew<vtkPoints> points;
        points->SetDataTypeToDouble();
        const std::span<const double> coordinates = part.nodes()->coordinates();
        for (std::size_t i = 0; i < coordinates.size(); i += 3) {
            points->InsertNextPoint(&coordinates[i]);
        }
        vtkNew<vtkCellArray> triangles;
        for (std::size_t c = 0; c < surface.corners.size(); c += 3) {
            const vtkIdType ids[] = {surface.corners[c], surface.corners[c + 1], surface.corners[c + 2]};
            triangles->InsertNextCell(3, ids);
        }
        m_surface->SetPoints(points);
        m_surface->SetPolys(triangles);
        m_locator->SetDataSet(m_surface);
        m_locator->BuildLocator();
    }

    std::size_t pick(std::span<const Ray> rays) {
        std::size_t hits = 0;
        for (const Ray& ray : rays) {
            const Vec3d end = ray.origin() + ray.direction() * 4;
            const double from[] = {ray.origin().x(), ray.origin().y(), ray.origin().z()};
            const double to[] = {end.x(), end.y(), end.z()};
            double t = 0;
            double point[3];
            double weights[3];
            int subId = 0;
            vtkIdType cell = 0;
            hits += m_locator->IntersectWithLine(from, to, 1e-9, t, point, weights, subId, cell) != 0;
        }
        return hits;
    }

private:
    vtkNew<vtkPolyData> m_surface;
    vtkNew<vtkStaticCellLocator> m_locator;
};

/// From all around, at points of the surface.
std::vector<Ray> makeRays(const DataPart& part, const PartSurface& surface) {
    std::mt19937 engine(6);
    auto random = [&engine] { return engine() / 4294967296.0; };
    std::vector<Ray> rays(rayCount);
    for (Ray& ray : rays) {
        const std::size_t triangle = 3 * (engine() % (surface.corners.size() / 3));
        Vec3d target;
        for (std::size_t i = 0; i < 3; ++i) {
            target += part.nodes()->node(surface.corners[triangle + i]) / 3.0;
        }
        const double polar = std::acos(2 * random() - 1);
        const double angle = 6.283185307179586 * random();
        const Vec3d direction(std::sin(polar) * std::cos(angle), std::sin(polar) * std::sin(angle), std::cos(polar));
        ray.setOrigin(Vec3d(cubes[0], cubes[1], cubes[2]) * 0.5 + direction * (2.0 * cubes[0]));
        ray.setDirection(target - ray.origin());
    }
    return rays;
}

} // namespace

int main(int argc, char** argv) {
    Ours ours;
    BareEmbree embree(ours.part(), ours.surface());
    CellLocator locator(ours.part(), ours.surface());
    const std::vector<Ray> rays = makeRays(ours.part(), ours.surface());
    const std::span<const Ray> one = std::span(rays).first(1);
    embree.setUp();
    // All rays meet their targets; in single precision a few pass by an edge.
    if (ours.pick(rays) != rayCount || embree.pick(rays) < rayCount * 99 / 100 || locator.pick(rays) != rayCount) {
        std::fprintf(stderr, "The rivals hit something else\n");
        return EXIT_FAILURE;
    }
    orvbench::Claims claims(9);
    claims.add("pick set-up(50k triangles) and a pick, bare Embree", 1.5,
               {[&] { ours.change(); }, [&] { benchmark::DoNotOptimize(ours.pick(one)); }},
               {[&] { embree.release(); },
                [&] {
                    embree.setUp();
                    benchmark::DoNotOptimize(embree.pick(one));
                }});
    claims.add("pick set-up and 10k picks, bare Embree", 1.5,
               {[&] { ours.change(); }, [&] { benchmark::DoNotOptimize(ours.pick(rays)); }},
               {[&] { embree.release(); },
                [&] {
                    embree.setUp();
                    benchmark::DoNotOptimize(embree.pick(rays));
                }});
    claims.add("10k picks, VTK's static cell locator", 0.2, {[] {}, [&] { benchmark::DoNotOptimize(ours.pick(rays)); }},
               {[] {}, [&] { benchmark::DoNotOptimize(locator.pick(rays)); }});
    return claims.run(argc, argv);
}
