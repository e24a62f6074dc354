#include "OrvUnstructGrid/SurfaceWalk_p.h"

#include "OrvUnstructGrid/ShortestWay_p.h"
#include "OrvUnstructGrid/WaySegments_p.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace orv::ug {
namespace {

/// A direction that is closer to the leg's own gives no plane.
constexpr double leastSine = 1e-6;

/// Through both ends of a leg.
class LegPlane {
public:
    LegPlane(const Vec3d& origin, const Vec3d& along, const Vec3d& normal) : m_origin(origin), m_normal(normal) {
        const double magnitude =
            std::max({std::abs(origin.x()), std::abs(origin.y()), std::abs(origin.z()), along.length()});
        m_roundings = 1e-14 * magnitude + 1e-12 * along.length();
    }

    /// 0 within roundings.
    double distance(const Vec3d& point) const {
        const double distance = (point - m_origin) * m_normal;
        return std::abs(distance) <= m_roundings ? 0.0 : distance;
    }

private:
    Vec3d m_origin;
    Vec3d m_normal;
    double m_roundings;
};

/// Places are the sides of triangles that the plane cuts, where it cuts them. Their keys are both vertices, the lower
/// one first.
class CutGraph {
public:
    CutGraph(const SurfaceTopology& topology, const LegPlane& plane, const SurfacePoint& from, const SurfacePoint& to)
        : m_topology(topology), m_plane(plane), m_from(from), m_to(to) {}

    template <class Visit>
    void forArcs(std::uint64_t key, const Visit& visit) const {
        if (key == WAY_START) {
            for (const SurfacePiece piece : m_from.pieces) {
                forArcsIn(piece, key, visit);
            }
        } else {
            const auto second = static_cast<Vertex>(key);
            m_topology.forPiecesAt(static_cast<Vertex>(key >> 32), [&](SurfacePiece piece) {
                if (m_topology.corners(piece).has(second)) {
                    forArcsIn(piece, key, visit);
                }
            });
        }
    }

    CornerMean meanAt(std::uint64_t key) const {
        const auto first = static_cast<Vertex>(key >> 32);
        const auto second = static_cast<Vertex>(key);
        const double distance = m_plane.distance(m_topology.point(first));
        return {first, second, distance / (distance - m_plane.distance(m_topology.point(second)))};
    }

private:
    template <class Visit>
    void forArcsIn(SurfacePiece piece, std::uint64_t from, const Visit& visit) const {
        if (!m_topology.isTriangle(piece)) {
            return;
        }
        const PieceCorners corners = m_topology.corners(piece);
        bool isAbove[3];
        for (std::size_t i = 0; i < 3; ++i) {
            const Vec3d corner = m_topology.point(corners[i]);
            if (!isSomewhere(corner)) {
                return;
            }
            isAbove[i] = m_plane.distance(corner) >= 0.0;
        }
        if (isOn(m_to, piece)) {
            visit(WAY_TARGET, m_to.point, piece);
        }
        for (std::size_t i = 0; i < 3; ++i) {
            const std::size_t next = (i + 1) % 3;
            if (isAbove[i] != isAbove[next]) {
                const std::uint64_t key = keyOf(corners[i], corners[next]);
                if (key != from) {
                    visit(key, pointAt(key), piece);
                }
            }
        }
    }

    static std::uint64_t keyOf(Vertex a, Vertex b) {
        return std::uint64_t(std::min(a, b)) << 32 | std::max(a, b);
    }

    Vec3d pointAt(std::uint64_t key) const {
        const CornerMean mean = meanAt(key);
        const Vec3d first = m_topology.point(mean.first);
        const Vec3d second = m_topology.point(mean.second);
        // At a corner exactly, so that all sides that are cut there are cut in one point.
        return mean.weightOfSecond == 1.0 ? second : first + (second - first) * mean.weightOfSecond;
    }

    const SurfaceTopology& m_topology;
    const LegPlane& m_plane;
    const SurfacePoint& m_from;
    const SurfacePoint& m_to;
};

/// The unit normal of the plane that holds two directions; zero when these are no two.
Vec3d planeNormal(const Vec3d& along, const Vec3d& direction) {
    const Vec3d normal = (along / along.length()) ^ direction;
    const double sine = normal.length();
    return sine > leastSine ? normal / sine : Vec3d();
}

/// Of all planes that the leg may be in.
std::vector<Vec3d> planeNormals(const Vec3d& along, const SurfacePoint& from, const SurfacePoint& to) {
    const Vec3d ofSum = planeNormal(along, from.normal + to.normal);
    const Vec3d ofDifference = planeNormal(along, from.normal - to.normal);
    const Vec3d none;
    const bool isEitherWay = (from.isOnShell || to.isOnShell) && from.normal * to.normal < 0.0;
    std::vector<Vec3d> normals;
    if (ofSum != none) {
        normals.push_back(ofSum);
    }
    if (ofDifference != none && (isEitherWay || ofSum == none)) {
        normals.push_back(ofDifference);
    }
    if (normals.empty()) {
        for (const Vec3d& axis : {Vec3d(1, 0, 0), Vec3d(0, 1, 0), Vec3d(0, 0, 1)}) {
            normals.push_back(planeNormal(along, axis));
        }
        std::erase(normals, none);
    }
    return normals;
}

std::vector<PathSegment> walkAlong(const SurfaceTopology& topology, const SurfacePoint& from, const SurfacePoint& to,
                                   const Vec3d& normal) {
    const LegPlane plane(from.point, to.point - from.point, normal);
    const CutGraph graph(topology, plane, from, to);
    return waySegments(topology, graph, shortestWay(graph, from.point, to.point));
}

double lengthOf(const std::vector<PathSegment>& segments) {
    double length = 0.0;
    for (const PathSegment& segment : segments) {
        length += segment.length();
    }
    return length;
}

} // namespace

std::vector<PathSegment> surfaceWalk(const SurfaceTopology& topology, const SurfacePoint& from,
                                     const SurfacePoint& to) {
    const Vec3d along = to.point - from.point;
    if (from.normal == Vec3d() || to.normal == Vec3d() || !(along.length() > 0.0)) {
        return {};
    }
    std::vector<PathSegment> shortest;
    double least = std::numeric_limits<double>::infinity();
    for (const Vec3d& normal : planeNormals(along, from, to)) {
        std::vector<PathSegment> walk = walkAlong(topology, from, to, normal);
        if (walk.empty()) {
            // A free edge that runs in the plane is cut from one side only.
            walk = walkAlong(topology, from, to, -normal);
        }
        const double length = lengthOf(walk);
        if (!walk.empty() && length < least) {
            least = length;
            shortest = std::move(walk);
        }
    }
    return shortest;
}

} // namespace orv::ug
