#include "OrvUnstructGrid/SurfaceJoints_p.h"

#include "OrvCore/Vec3d.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace orv::ug {
namespace {

/// By the diagonal of the box about all parts.
constexpr double nearness = 1e-6;
/// By the same: of the cells that tell where parts are, and of those that places are looked up in.
constexpr double coarseCell = 1.0 / 128;
constexpr double fineCell = 32 * nearness;

constexpr std::uint32_t none = std::numeric_limits<std::uint32_t>::max();
constexpr std::uint32_t several = none - 1;

struct Box {
    Vec3d lower = {std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity(),
                   std::numeric_limits<double>::infinity()};
    Vec3d upper = -lower;

    void add(const Vec3d& point) {
        for (std::size_t i = 0; i < 3; ++i) {
            lower[i] = std::min(lower[i], point[i]);
            upper[i] = std::max(upper[i], point[i]);
        }
    }
};

/// Calls back with the part, the number and the place of each finite node of all surfaces.
template <class Visit>
void forSurfaceNodes(std::span<const TopologyPart> parts, Visit visit) {
    for (std::uint32_t p = 0; p < parts.size(); ++p) {
        const std::size_t count = parts[p].coordinates.size() / 3;
        for (std::uint32_t node = 0; node < count; ++node) {
            const double* x = &parts[p].coordinates[3 * std::size_t(node)];
            const Vec3d point(x[0], x[1], x[2]);
            if (!parts[p].pieces->at(node).empty() && std::isfinite(point * point)) {
                visit(p, node, point);
            }
        }
    }
}

/// Cubes that fill a box, and a rim of them around it.
class CellGrid {
public:
    CellGrid(const Box& box, double size) : m_lower(box.lower), m_size(size) {
        for (std::size_t i = 0; i < 3; ++i) {
            m_counts[i] = static_cast<std::uint64_t>((box.upper[i] - box.lower[i]) / size) + 3;
        }
    }

    std::uint64_t count() const {
        return m_counts[0] * m_counts[1] * m_counts[2];
    }

    std::uint64_t cellOf(const Vec3d& point) const {
        return indexOf(at(point, 0), at(point, 1), at(point, 2));
    }

    /// Calls back with the cells that are not farther away than that; mostly it is one.
    template <class Visit>
    void forCellsNear(const Vec3d& point, double distance, Visit visit) const {
        const Vec3d reach(distance, distance, distance);
        const Vec3d low = point - reach;
        const Vec3d high = point + reach;
        for (std::uint64_t x = at(low, 0); x <= at(high, 0); ++x) {
            for (std::uint64_t y = at(low, 1); y <= at(high, 1); ++y) {
                for (std::uint64_t z = at(low, 2); z <= at(high, 2); ++z) {
                    visit(indexOf(x, y, z));
                }
            }
        }
    }

private:
    std::uint64_t at(const Vec3d& point, std::size_t i) const {
        return static_cast<std::uint64_t>((point[i] - m_lower[i]) / m_size + 1.0);
    }

    std::uint64_t indexOf(std::uint64_t x, std::uint64_t y, std::uint64_t z) const {
        return (x * m_counts[1] + y) * m_counts[2] + z;
    }

    Vec3d m_lower;
    double m_size;
    std::array<std::uint64_t, 3> m_counts;
};

/// Which cells have nodes of several parts in or near them. All others need no closer look.
class SharedCells {
public:
    explicit SharedCells(const CellGrid& grid) : m_grid(grid), m_parts(grid.count(), none) {}

    void add(std::uint32_t part, const Vec3d& point, double radius) {
        m_grid.forCellsNear(point, radius, [&](std::uint64_t cell) {
            std::uint32_t& owner = m_parts[cell];
            owner = owner == none || owner == part ? part : several;
        });
    }

    bool has(const Vec3d& point) const {
        return m_parts[m_grid.cellOf(point)] == several;
    }

private:
    CellGrid m_grid;
    std::vector<std::uint32_t> m_parts;
};

/// Nodes that have been looked at, by the places where they are.
class Gatherer {
public:
    Gatherer(const CellGrid& grid, double radius) : m_grid(grid), m_radius(radius) {}

    /// @param part not less than the last one's
    void add(std::uint32_t part, Vertex vertex, const Vec3d& point) {
        const std::uint32_t found = find(part, point);
        if (found != none) {
            m_places[found].members.push_back(vertex);
            m_places[found].lastPart = part;
        } else {
            const auto [first, isNew] = m_firstOfCell.try_emplace(m_grid.cellOf(point), none);
            m_places.push_back({point, first->second, part, {vertex}});
            first->second = static_cast<std::uint32_t>(m_places.size() - 1);
        }
    }

    SurfaceJoints joints() const {
        SurfaceJoints joints;
        for (const Place& place : m_places) {
            if (place.members.size() > 1) {
                const auto joint = static_cast<std::uint32_t>(joints.offsets.size() - 1);
                for (const Vertex member : place.members) {
                    joints.joints.emplace(member, joint);
                    joints.members.push_back(member);
                }
                joints.offsets.push_back(static_cast<std::uint32_t>(joints.members.size()));
            }
        }
        return joints;
    }

private:
    struct Place {
        Vec3d point;
        std::uint32_t next; ///< In its cell.
        std::uint32_t lastPart;
        std::vector<Vertex> members;
    };

    /// The first place near the point that has no node of the part.
    std::uint32_t find(std::uint32_t part, const Vec3d& point) const {
        std::uint32_t found = none;
        m_grid.forCellsNear(point, m_radius, [&](std::uint64_t cell) {
            const auto first = m_firstOfCell.find(cell);
            for (std::uint32_t i = first == m_firstOfCell.end() ? none : first->second; i != none;
                 i = m_places[i].next) {
                if (m_places[i].lastPart != part && (m_places[i].point - point).length() <= m_radius) {
                    found = std::min(found, i);
                }
            }
        });
        return found;
    }

    CellGrid m_grid;
    double m_radius;
    std::unordered_map<std::uint64_t, std::uint32_t> m_firstOfCell;
    std::vector<Place> m_places;
};

} // namespace

SurfaceJoints joinParts(std::span<const TopologyPart> parts, std::span<const Vertex> firstVertices) {
    if (parts.size() < 2) {
        return {};
    }
    Box box;
    forSurfaceNodes(parts, [&](std::uint32_t, std::uint32_t, const Vec3d& point) { box.add(point); });
    const double diagonal = (box.upper - box.lower).length();
    if (!(diagonal > 0.0) || !std::isfinite(diagonal)) {
        return {};
    }
    const double radius = nearness * diagonal;
    SharedCells shared(CellGrid(box, coarseCell * diagonal));
    forSurfaceNodes(parts,
                    [&](std::uint32_t part, std::uint32_t, const Vec3d& point) { shared.add(part, point, radius); });
    Gatherer gatherer(CellGrid(box, fineCell * diagonal), radius);
    forSurfaceNodes(parts, [&](std::uint32_t part, std::uint32_t node, const Vec3d& point) {
        if (shared.has(point)) {
            gatherer.add(part, firstVertices[part] + node, point);
        }
    });
    return gatherer.joints();
}

} // namespace orv::ug
