#include "OrvUnstructGrid/SurfaceJoints_p.h"

#include "OrvCore/Vec3d.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace orv::ug {
namespace {

/// By the diagonal of the box about all parts.
constexpr double nearness = 1e-6;
constexpr std::uint32_t none = std::numeric_limits<std::uint32_t>::max();

struct Box {
    Vec3d lower = {std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity(),
                   std::numeric_limits<double>::infinity()};
    Vec3d upper = -lower;

    void add(const Vec3d& point) {
        add({point, point});
    }

    void add(const Box& other) {
        for (std::size_t i = 0; i < 3; ++i) {
            lower[i] = std::min(lower[i], other.lower[i]);
            upper[i] = std::max(upper[i], other.upper[i]);
        }
    }

    void grow(double margin) {
        lower -= Vec3d(margin, margin, margin);
        upper += Vec3d(margin, margin, margin);
    }

    bool contains(const Vec3d& point) const {
        return meets({point, point});
    }

    bool meets(const Box& other) const {
        bool doesMeet = true;
        for (std::size_t i = 0; i < 3; ++i) {
            doesMeet = doesMeet && lower[i] <= other.upper[i] && other.lower[i] <= upper[i];
        }
        return doesMeet;
    }
};

/// Calls back with each finite node of the surface and where it is.
template <class Visit>
void forSurfaceNodes(const TopologyPart& part, Visit visit) {
    const std::size_t count = part.coordinates.size() / 3;
    for (std::size_t node = 0; node < count; ++node) {
        const double* x = &part.coordinates[3 * node];
        const Vec3d point(x[0], x[1], x[2]);
        if (!part.pieces->at(node).empty() && std::isfinite(point * point)) {
            visit(static_cast<std::uint32_t>(node), point);
        }
    }
}

/// Of a part without such nodes it is empty, and meets nothing.
Box boxOf(const TopologyPart& part) {
    Box box;
    forSurfaceNodes(part, [&box](std::uint32_t, const Vec3d& point) { box.add(point); });
    return box;
}

/// Finds what is near a point among the places that have been added: by cells much larger than what is near, so that
/// mostly one of them is looked at.
class PlaceGrid {
public:
    PlaceGrid(const Vec3d& origin, double radius) : m_origin(origin), m_radius(radius), m_cell(32 * radius) {}

    void add(const Vec3d& place) {
        const auto [entry, isNew] = m_firstOfCell.try_emplace(keyOf(place), none);
        m_places.push_back({place, entry->second});
        entry->second = static_cast<std::uint32_t>(m_places.size() - 1);
    }

    /// The first added one that is near and accepted; `none` when there is none.
    template <class IsAccepted>
    std::uint32_t find(const Vec3d& point, IsAccepted isAccepted) const {
        std::uint32_t found = none;
        std::uint64_t lastKey = std::numeric_limits<std::uint64_t>::max();
        for (unsigned int corner = 0; corner < 8; ++corner) {
            const std::uint64_t key =
                keyOf(point + Vec3d(corner & 1 ? m_radius : -m_radius, corner & 2 ? m_radius : -m_radius,
                                    corner & 4 ? m_radius : -m_radius));
            if (key != std::exchange(lastKey, key)) {
                found = std::min(found, findInCell(key, point, isAccepted));
            }
        }
        return found;
    }

private:
    struct Place {
        Vec3d point;
        std::uint32_t next; ///< In its cell.
    };

    /// The grid is at most 1/32e-6 cells long, and a rim.
    std::uint64_t keyOf(const Vec3d& point) const {
        std::uint64_t key = 0;
        for (std::size_t i = 0; i < 3; ++i) {
            const double cell = std::floor((point[i] - m_origin[i]) / m_cell) + 1;
            key = key << 21 | static_cast<std::uint64_t>(cell);
        }
        return key;
    }

    template <class IsAccepted>
    std::uint32_t findInCell(std::uint64_t key, const Vec3d& point, IsAccepted isAccepted) const {
        std::uint32_t found = none;
        const auto cell = m_firstOfCell.find(key);
        for (std::uint32_t i = cell == m_firstOfCell.end() ? none : cell->second; i != none; i = m_places[i].next) {
            if ((m_places[i].point - point).length() <= m_radius && isAccepted(i)) {
                found = std::min(found, i);
            }
        }
        return found;
    }

    Vec3d m_origin;
    double m_radius;
    double m_cell;
    std::unordered_map<std::uint64_t, std::uint32_t> m_firstOfCell;
    std::vector<Place> m_places;
};

/// Nodes of the parts that have been looked at, by the places where they are.
class Gatherer {
public:
    Gatherer(const Vec3d& origin, double radius) : m_grid(origin, radius) {}

    /// @param part not less than the last one's
    void add(std::size_t part, Vertex vertex, const Vec3d& point) {
        const std::uint32_t found =
            m_grid.find(point, [&](std::uint32_t i) { return m_gatherings[i].lastPart != part; });
        if (found == none) {
            m_grid.add(point);
            m_gatherings.push_back({{vertex}, part});
        } else {
            m_gatherings[found].members.push_back(vertex);
            m_gatherings[found].lastPart = part;
        }
    }

    SurfaceJoints joints() const {
        SurfaceJoints joints;
        for (const Gathering& gathering : m_gatherings) {
            if (gathering.members.size() > 1) {
                const auto joint = static_cast<std::uint32_t>(joints.offsets.size() - 1);
                for (const Vertex member : gathering.members) {
                    joints.joints.emplace(member, joint);
                    joints.members.push_back(member);
                }
                joints.offsets.push_back(static_cast<std::uint32_t>(joints.members.size()));
            }
        }
        return joints;
    }

private:
    struct Gathering {
        std::vector<Vertex> members;
        std::size_t lastPart;
    };

    PlaceGrid m_grid;
    std::vector<Gathering> m_gatherings; ///< By the order of the grid's places.
};

/// The boxes of all other parts that meet that one's.
std::vector<Box> neighboursOf(std::size_t part, const std::vector<Box>& boxes) {
    std::vector<Box> neighbours;
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        if (i != part && boxes[i].meets(boxes[part])) {
            neighbours.push_back(boxes[i]);
        }
    }
    return neighbours;
}

} // namespace

SurfaceJoints joinParts(std::span<const TopologyPart> parts, std::span<const Vertex> firstVertices) {
    if (parts.size() < 2) {
        return {};
    }
    std::vector<Box> boxes;
    Box whole;
    for (const TopologyPart& part : parts) {
        boxes.push_back(boxOf(part));
        whole.add(boxes.back());
    }
    const double radius = nearness * (whole.upper - whole.lower).length();
    if (!(radius > 0.0) || !std::isfinite(radius)) {
        return {};
    }
    for (Box& box : boxes) {
        box.grow(radius);
    }
    Gatherer gatherer(whole.lower, radius);
    for (std::size_t p = 0; p < parts.size(); ++p) {
        const std::vector<Box> neighbours = neighboursOf(p, boxes);
        forSurfaceNodes(parts[p], [&](std::uint32_t node, const Vec3d& point) {
            auto contains = [&point](const Box& box) { return box.contains(point); };
            if (std::any_of(neighbours.begin(), neighbours.end(), contains)) {
                gatherer.add(p, firstVertices[p] + node, point);
            }
        });
    }
    return gatherer.joints();
}

} // namespace orv::ug
