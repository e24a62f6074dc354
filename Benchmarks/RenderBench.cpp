// A picture of 1920 x 1080 pixels of a block of a million hexahedra, surface ready: how long it takes, and how that
// compares with rays through the middles of its pixels, and nothing else, in Embree's own triangles in single
// precision.

#include "OrvUnstructGrid/DataSourceMemory.h"
#include "OrvUnstructGrid/UnstructGridModel.h"
#include "OrvVisualization/Image.h"
#include "OrvVisualization/View.h"

#include "Benchmarks/Claims.h"

#include <embree3/rtcore.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <span>
#include <string>
#include <vector>

using namespace orv::ug;
using orv::PtrRef;
using orv::Ray;
using orv::Vec3d;
using orv::vis::Image;
using orv::vis::View;

namespace {

constexpr int width = 1920;
constexpr int height = 1080;
constexpr double limitSeconds = 2.0;
/// Ours has the doubles, the colours and the lines, and up to 16 rays for some pixels.
constexpr double limitRatio = 6.0;

constexpr std::uint32_t cubesPerEdge = 100;
constexpr std::uint32_t nodesPerEdge = cubesPerEdge + 1;

void fill(DataPart* part) {
    constexpr std::uint32_t up = nodesPerEdge * nodesPerEdge;
    std::vector<double> coordinates;
    std::vector<std::uint32_t> nodes;
    for (std::uint32_t i = 0; i < up * nodesPerEdge; ++i) {
        const std::uint32_t x = i % nodesPerEdge;
        const std::uint32_t y = i / nodesPerEdge % nodesPerEdge;
        const std::uint32_t z = i / up;
        coordinates.insert(coordinates.end(), {double(x), double(y), double(z)});
        if (x < cubesPerEdge && y < cubesPerEdge && z < cubesPerEdge) {
            nodes.insert(nodes.end(), {i, i + 1, i + nodesPerEdge + 1, i + nodesPerEdge, i + up, i + up + 1,
                                       i + up + nodesPerEdge + 1, i + up + nodesPerEdge});
        }
    }
    std::vector<ElementType> types(nodes.size() / 8, HEXAHEDRON);
    part->nodes()->set(std::move(coordinates), {});
    part->elements()->set(std::move(types), std::move(nodes), {});
}

std::vector<double> waves(const DataPart& part) {
    std::vector<double> values;
    for (std::size_t i = 0; i < part.nodes()->nodeCount(); ++i) {
        const Vec3d node = part.nodes()->node(i);
        values.push_back(std::sin(0.05 * node.x()) * std::cos(0.07 * node.y()) + 0.01 * node.z());
    }
    return values;
}

/// A view from the corner of the block, which fills the picture.
class Ours {
public:
    Ours() : m_source(new DataSourceMemory(1)), m_model(new UnstructGridModel), m_view(new View) {
        m_source->addGeometry();
        DataPart* part = m_source->addPart(0, "block");
        fill(part);
        const ResultInfo scalar = m_source->addResult(SCALAR, "Temperature", PER_NODE);
        m_source->addState(StateInfo(1, "", StateInfo::TIME, 0));
        m_source->setValues(1, scalar, 0, 0, waves(*part), nullptr);
        m_model->setDataSource(m_source.get());
        m_model->modelSpec().setStateId(1);
        m_model->modelSpec().setFringesResultId(scalar.id());
        m_view->addModel(m_model.get());
        m_view->camera()->setStandardView(orv::vis::StandardView::ISOMETRIC, {});
        m_view->fit(width, height);
    }

    void showEdges(bool areShown) {
        m_view->setEdgesShown(areShown);
    }

    bool render() {
        return m_view->render(width, height, &m_image, nullptr);
    }

    const orv::vis::Shape& shape() const {
        return m_model->shapes()[0];
    }

    std::vector<Ray> rays() const {
        std::vector<Ray> rays;
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                rays.push_back(m_view->camera()->rayThrough(x + 0.5, y + 0.5, width, height));
            }
        }
        return rays;
    }

private:
    PtrRef<DataSourceMemory> m_source;
    PtrRef<UnstructGridModel> m_model;
    PtrRef<View> m_view;
    Image m_image;
};

class BareEmbree {
public:
    explicit BareEmbree(const orv::vis::Shape& shape)
        : m_device(rtcNewDevice("threads=1")), m_scene(rtcNewScene(m_device)) {
        RTCGeometry geometry = rtcNewGeometry(m_device, RTC_GEOMETRY_TYPE_TRIANGLE);
        auto* points = static_cast<float*>(rtcSetNewGeometryBuffer(
            geometry, RTC_BUFFER_TYPE_VERTEX, 0, RTC_FORMAT_FLOAT3, 12, shape.coordinates.size() / 3));
        std::copy(shape.coordinates.begin(), shape.coordinates.end(), points);
        auto* corners = static_cast<std::uint32_t*>(rtcSetNewGeometryBuffer(
            geometry, RTC_BUFFER_TYPE_INDEX, 0, RTC_FORMAT_UINT3, 12, shape.corners.size() / 3));
        std::copy(shape.corners.begin(), shape.corners.end(), corners);
        rtcCommitGeometry(geometry);
        rtcAttachGeometry(m_scene, geometry);
        rtcReleaseGeometry(geometry);
        rtcSetSceneFlags(m_scene, RTC_SCENE_FLAG_ROBUST);
        rtcCommitScene(m_scene);
    }

    ~BareEmbree() {
        rtcReleaseScene(m_scene);
        rtcReleaseDevice(m_device);
    }

    BareEmbree(const BareEmbree&) = delete;
    BareEmbree& operator=(const BareEmbree&) = delete;

    std::size_t cast(std::span<const Ray> rays) const {
        std::size_t hits = 0;
        for (const Ray& ray : rays) {
            RTCRayHit rayHit = {};
            rayHit.ray.org_x = float(ray.origin().x());
            rayHit.ray.org_y = float(ray.origin().y());
            rayHit.ray.org_z = float(ray.origin().z());
            rayHit.ray.dir_x = float(ray.direction().x());
            rayHit.ray.dir_y = float(ray.direction().y());
            rayHit.ray.dir_z = float(ray.direction().z());
            rayHit.ray.tfar = 1e30F;
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
    RTCDevice m_device;
    RTCScene m_scene;
};

/// The fastest of several runs, in seconds of the processor.
double secondsOf(const std::function<void()>& run) {
    double least = 1e300;
    for (int i = 0; i < 3; ++i) {
        const std::clock_t start = std::clock();
        run();
        least = std::min(least, double(std::clock() - start) / CLOCKS_PER_SEC);
    }
    return least;
}

} // namespace

int main(int argc, char** argv) {
    Ours ours;
    const BareEmbree embree(ours.shape());
    const std::vector<Ray> rays = ours.rays();
    if (!ours.render() || embree.cast(rays) < rays.size() / 4) {
        std::fprintf(stderr, "The block is not in the picture\n");
        return EXIT_FAILURE;
    }
    orvbench::Claims claims;
    for (const bool areEdgesShown : {true, false}) {
        const std::string name =
            std::string("1920x1080 picture of 1M hexahedra ") + (areEdgesShown ? "with" : "without") + " edges";
        claims.add(name + ", bare Embree's primary rays", limitRatio,
                   {[&ours, areEdgesShown] { ours.showEdges(areEdgesShown); }, [&ours] { ours.render(); }},
                   {[] {}, [&] { benchmark::DoNotOptimize(embree.cast(rays)); }});
    }
    const int result = claims.run(argc, argv);
    for (const bool areEdgesShown : {true, false}) {
        ours.showEdges(areEdgesShown);
        const double seconds = secondsOf([&ours] { ours.render(); });
        std::printf("ratio picture %s edges to 2 seconds: %.2f/%.2f s = %.2f (limit 1.00)\n",
                    areEdgesShown ? "with" : "without", seconds, limitSeconds, seconds / limitSeconds);
    }
    return result;
}
