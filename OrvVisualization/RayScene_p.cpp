#include "OrvVisualization/RayScene_p.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace orv::vis {
namespace {

/// In units of the scene's size. Boxes and rays are rounded to floats, which are out by less than a tenth of this.
constexpr double boxMargin = 4e-6;

/// What the callback needs of the ray, in doubles; Embree hands the context through.
struct RayQuery {
    RTCIntersectContext context;
    RayTest test;
    double start;       ///< Where Embree's ray begins, in scene sizes along the double ray.
    double lengthScale; ///< Scene sizes in one length of the ray's direction.
    RayHit hit;
};

bool isUsable(const double* point) {
    return std::all_of(point, point + 3, [](double x) { return std::abs(x) < largestCoordinate; });
}

RayBox boxOf(const RayMesh& mesh, std::size_t primitive) {
    RayBox box;
    for (const std::uint32_t corner : mesh.cornersOf(primitive)) {
        const double* point = &mesh.coordinates[std::size_t(corner) * 3];
        if (!isUsable(point)) {
            return {};
        }
        box.add(point, mesh.radius);
    }
    return box;
}

bool meets(const RayTest& test, const RayMesh& mesh, std::size_t shape, RayHit* hit) {
    const std::size_t corner = shape * mesh.cornersPerShape;
    const double* a = mesh.point(corner);
    if (mesh.cornersPerShape == 3) {
        return test.meetsTriangle(a, mesh.point(corner + 1), mesh.point(corner + 2), &hit->distance, hit->weights);
    }
    const double* b = mesh.point(corner + mesh.cornersPerShape - 1);
    if (!test.meetsTube(a, b, mesh.radius, &hit->distance, &hit->weights[1])) {
        return false;
    }
    hit->weights[0] = 1.0 - hit->weights[1];
    return true;
}

Vec3d toVec3d(const double* point) {
    return {point[0], point[1], point[2]};
}

Vec3d unit(const Vec3d& v) {
    return v / v.length();
}

/// Fills in point and normal of a hit that is final.
void complete(const RayMesh& mesh, std::size_t shape, const Ray& ray, RayHit* hit) {
    const std::size_t corner = shape * mesh.cornersPerShape;
    const Vec3d a = toVec3d(mesh.point(corner));
    const Vec3d b = toVec3d(mesh.point(corner + mesh.cornersPerShape - 1));
    if (mesh.cornersPerShape == 3) {
        const Vec3d toMiddle = toVec3d(mesh.point(corner + 1)) - a;
        const Vec3d toLast = b - a;
        hit->triangle = shape;
        hit->point = a + toMiddle * hit->weights[1] + toLast * hit->weights[2];
        hit->normal = unit(toMiddle ^ toLast);
        return;
    }
    hit->point = ray.origin() + ray.direction() * hit->distance;
    hit->normal = unit(hit->point - (a + (b - a) * hit->weights[1]));
}

bool isNearer(const RayHit& hit, const RayHit& other) {
    if (hit.distance != other.distance) {
        return hit.distance < other.distance;
    }
    return hit.mesh != other.mesh ? hit.mesh < other.mesh : hit.triangle < other.triangle;
}

} // namespace

std::size_t RayMesh::primitiveCount() const {
    return faceOffsets.empty() ? corners.size() / cornersPerShape : faceOffsets.size() - 1;
}

std::size_t RayMesh::firstShape(std::size_t primitive) const {
    return faceOffsets.empty() ? primitive : faceOffsets[primitive];
}

const double* RayMesh::point(std::size_t corner) const {
    return &coordinates[std::size_t(corners[corner]) * 3];
}

std::span<const std::uint32_t> RayMesh::cornersOf(std::size_t primitive) const {
    const std::size_t first = firstShape(primitive) * cornersPerShape;
    return corners.subspan(first, firstShape(primitive + 1) * cornersPerShape - first);
}

void RayBox::add(const double* point, double radius) {
    for (std::size_t i = 0; i < 3; ++i) {
        lower[i] = std::min(lower[i], point[i] - radius);
        upper[i] = std::max(upper[i], point[i] + radius);
    }
}

void RayBox::add(const RayBox& box) {
    for (std::size_t i = 0; i < 3; ++i) {
        lower[i] = std::min(lower[i], box.lower[i]);
        upper[i] = std::max(upper[i], box.upper[i]);
    }
}

bool RayBox::isEmpty() const {
    return !(lower.x() <= upper.x());
}

RayScenePrivate::~RayScenePrivate() {
    if (m_scene) {
        rtcReleaseScene(m_scene);
    }
    if (m_device) {
        rtcReleaseDevice(m_device);
    }
}

std::size_t RayScenePrivate::add(const RayMesh& mesh) {
    m_meshes.push_back(mesh);
    return m_meshes.size() - 1;
}

bool RayScenePrivate::commit(Str* reason) {
    measure();
    m_device = rtcNewDevice("threads=1");
    m_scene = m_device ? rtcNewScene(m_device) : nullptr;
    if (!m_scene || !attach()) {
        return fail(reason);
    }
    rtcSetSceneFlags(m_scene, RTC_SCENE_FLAG_ROBUST);
    rtcCommitScene(m_scene);
    m_isReady = rtcGetDeviceError(m_device) == RTC_ERROR_NONE;
    return m_isReady || fail(reason);
}

void RayScenePrivate::measure() {
    RayBox all;
    for (const RayMesh& mesh : m_meshes) {
        for (std::size_t i = 0; i < mesh.primitiveCount(); ++i) {
            all.add(boxOf(mesh, i));
        }
    }
    if (!all.isEmpty()) {
        m_center = all.lower + (all.upper - all.lower) * 0.5;
        const double size = (all.upper - all.lower).length() * 0.5;
        m_size = size > 0.0 ? size : 1.0;
    }
}

bool RayScenePrivate::attach() {
    m_geometries.reserve(m_meshes.size()); // Embree keeps pointers to the entries.
    for (const RayMesh& mesh : m_meshes) {
        RTCGeometry geometry = rtcNewGeometry(m_device, RTC_GEOMETRY_TYPE_USER);
        if (!geometry) {
            return false;
        }
        m_geometries.push_back({this, &mesh, m_geometries.size()});
        rtcSetGeometryUserPrimitiveCount(geometry, static_cast<unsigned int>(mesh.primitiveCount()));
        rtcSetGeometryUserData(geometry, &m_geometries.back());
        rtcSetGeometryBoundsFunction(geometry, bounds, nullptr);
        rtcSetGeometryIntersectFunction(geometry, intersectPrimitive);
        rtcCommitGeometry(geometry);
        rtcAttachGeometry(m_scene, geometry);
        rtcReleaseGeometry(geometry);
    }
    return true;
}

bool RayScenePrivate::fail(Str* reason) const {
    if (reason) {
        *reason = "There is not enough memory to make the surface ready for rays";
    }
    return false;
}

void RayScenePrivate::bounds(const RTCBoundsFunctionArguments* arguments) {
    const auto& geometry = *static_cast<const Geometry*>(arguments->geometryUserPtr);
    const RayScenePrivate& scene = *geometry.scene;
    const RayBox box = boxOf(*geometry.mesh, arguments->primID);
    RTCBounds& out = *arguments->bounds_o;
    if (box.isEmpty()) {
        constexpr float infinity = std::numeric_limits<float>::infinity();
        out = {infinity, infinity, infinity, 0.0F, -infinity, -infinity, -infinity, 0.0F};
        return;
    }
    const Vec3d margin(boxMargin, boxMargin, boxMargin);
    const Vec3d lower = (box.lower - scene.m_center) / scene.m_size - margin;
    const Vec3d upper = (box.upper - scene.m_center) / scene.m_size + margin;
    out = {float(lower.x()), float(lower.y()), float(lower.z()), 0.0F,
           float(upper.x()), float(upper.y()), float(upper.z()), 0.0F};
}

void RayScenePrivate::intersectPrimitive(const RTCIntersectFunctionNArguments* arguments) {
    const auto& geometry = *static_cast<const Geometry*>(arguments->geometryUserPtr);
    const RayMesh& mesh = *geometry.mesh;
    auto& query = *reinterpret_cast<RayQuery*>(arguments->context);
    const std::size_t primitive = arguments->primID;
    RayHit hit;
    hit.mesh = geometry.number;
    hit.primitive = primitive;
    const std::size_t end = mesh.firstShape(primitive + 1);
    for (std::size_t shape = mesh.firstShape(primitive); shape < end; ++shape) {
        hit.triangle = shape;
        if (!meets(query.test, mesh, shape, &hit) || !isNearer(hit, query.hit)) {
            continue;
        }
        query.hit = hit;
        RTCRayN* ray = RTCRayHitN_RayN(arguments->rayhit, 1);
        RTCRayN_tfar(ray, 1, 0) = float(hit.distance * query.lengthScale - query.start + boxMargin);
    }
}

bool RayScenePrivate::intersect(const Ray& ray, RayHit* hit) const {
    const double length = ray.direction().length();
    if (!m_isReady || !(length > 0.0) || !std::isfinite(length)) {
        return false;
    }
    // In floats a ray from far away would go astray, so it begins where it enters the sphere about the scene.
    const Vec3d direction = ray.direction() / length;
    const Vec3d origin = (ray.origin() - m_center) / m_size;
    const double nearest = -(origin * direction);
    const Vec3d side = origin + direction * nearest;
    const double radicand = 1.01 - side * side;
    if (!(radicand >= 0.0) || nearest + std::sqrt(radicand) < 0.0) {
        return false;
    }
    const double start = std::max(nearest - std::sqrt(radicand), 0.0);
    const Vec3d entry = origin + direction * start;

    RayQuery query{{}, RayTest(ray), start, length / m_size, {}};
    query.hit.distance = std::numeric_limits<double>::infinity();
    rtcInitIntersectContext(&query.context);
    RTCRayHit rayHit = {};
    rayHit.ray = {float(entry.x()),
                  float(entry.y()),
                  float(entry.z()),
                  0.0F,
                  float(direction.x()),
                  float(direction.y()),
                  float(direction.z()),
                  0.0F,
                  4.0F,
                  ~0U,
                  0U,
                  0U};
    rayHit.hit.geomID = RTC_INVALID_GEOMETRY_ID;
    rtcIntersect1(m_scene, &query.context, &rayHit);
    if (query.hit.mesh == UNDEFINED_SIZE_T) {
        return false;
    }
    const std::size_t shape = query.hit.triangle;
    query.hit.triangle = UNDEFINED_SIZE_T;
    complete(m_meshes[query.hit.mesh], shape, ray, &query.hit);
    *hit = query.hit;
    return true;
}

} // namespace orv::vis
