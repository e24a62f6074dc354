#include "OrvImportCae/TecValues.h"

#include "OrvCore/Defines.h"
#include "OrvCore/Vec3d.h"
#include "OrvImportCae/TecInput.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <map>
#include <set>
#include <utility>

namespace orv::imp::cae {
namespace {

bool readList(const CaeFile& file, std::int64_t offset, const std::vector<const TecTarget*>& byPlace,
              std::uint64_t rowCount, ug::Error* error) {
    TecInput input(file, error);
    input.seek(offset);
    for (std::uint64_t row = 0; row < rowCount; ++row) {
        for (const TecTarget* target : byPlace) {
            double value = 0;
            if (!input.nextReal("a number", target ? &value : nullptr)) {
                return false;
            }
            if (target) {
                target->values[row * target->stride] = std::isnan(value) ? UNDEFINED_DOUBLE : value;
            }
        }
    }
    return true;
}

/// A cell some of whose nodes are the same.
struct Collapsed {
    std::vector<std::array<std::uint8_t, 2>> same; ///< Ends of edges.
    ug::ElementType type;
    std::vector<std::uint8_t> order; ///< Of the nodes that are left.
};

const Collapsed COLLAPSED_QUADRILATERAL = {{{2, 3}}, ug::TRIANGLE, {0, 1, 2}};

// Those with more nodes that are the same first.
const Collapsed COLLAPSED_BRICKS[] = {
    {{{2, 3}, {4, 5}, {5, 6}, {6, 7}}, ug::TETRAHEDRON, {0, 1, 2, 4}},
    {{{4, 5}, {5, 6}, {6, 7}}, ug::PYRAMID, {0, 1, 2, 3, 4}},
    {{{2, 3}, {6, 7}}, ug::WEDGE, {0, 1, 2, 4, 5, 6}},
};

using Rotation = std::array<std::uint8_t, 8>; ///< The corner that comes to where each one was.

Rotation chained(const Rotation& first, const Rotation& second) {
    Rotation both = {};
    for (std::size_t i = 0; i < both.size(); ++i) {
        both[i] = second[first[i]];
    }
    return both;
}

// All 24 of a brick, made of quarter turns around two of its axes.
std::set<Rotation> allRotations() {
    constexpr Rotation QUARTER_TURNS[] = {{1, 2, 3, 0, 5, 6, 7, 4}, {3, 2, 6, 7, 0, 1, 5, 4}};
    std::set<Rotation> all = {{0, 1, 2, 3, 4, 5, 6, 7}};
    for (std::size_t before = 0; before != all.size();) {
        before = all.size();
        for (const Rotation& rotation : std::set<Rotation>(all)) {
            for (const Rotation& turn : QUARTER_TURNS) {
                all.insert(chained(rotation, turn));
            }
        }
    }
    return all;
}

// Programs do not agree on which edges of a brick collapse. Of the ways to see it the one with the lowest corners
// comes first.
std::vector<Collapsed> allCollapsedBricks() {
    std::vector<Collapsed> all;
    for (const Collapsed& base : COLLAPSED_BRICKS) {
        std::map<std::vector<std::uint8_t>, Collapsed> turned;
        for (const Rotation& rotation : allRotations()) {
            Collapsed collapsed = base;
            for (auto& [a, b] : collapsed.same) {
                a = rotation[a];
                b = rotation[b];
            }
            for (std::uint8_t& corner : collapsed.order) {
                corner = rotation[corner];
            }
            turned.emplace(collapsed.order, collapsed);
        }
        for (const auto& [order, collapsed] : turned) {
            all.push_back(collapsed);
        }
    }
    return all;
}

bool isCollapsed(const Collapsed& collapsed, const std::uint32_t* nodes) {
    return std::all_of(collapsed.same.begin(), collapsed.same.end(),
                       [nodes](const auto& edge) { return nodes[edge[0]] == nodes[edge[1]]; });
}

bool hasCollapsedEdge(const std::uint32_t* nodes) {
    constexpr std::uint8_t EDGES[][2] = {{0, 1}, {1, 2}, {2, 3}, {3, 0}, {4, 5}, {5, 6},
                                         {6, 7}, {7, 4}, {0, 4}, {1, 5}, {2, 6}, {3, 7}};
    return std::any_of(std::begin(EDGES), std::end(EDGES),
                       [nodes](const auto& edge) { return nodes[edge[0]] == nodes[edge[1]]; });
}

// Null when the cell is what its type says.
const Collapsed* findCollapsed(ug::ElementType type, const std::uint32_t* nodes) {
    if (type == ug::QUADRILATERAL) {
        return isCollapsed(COLLAPSED_QUADRILATERAL, nodes) ? &COLLAPSED_QUADRILATERAL : nullptr;
    }
    if (type != ug::HEXAHEDRON || !hasCollapsedEdge(nodes)) {
        return nullptr;
    }
    static const std::vector<Collapsed> bricks = allCollapsedBricks();
    const auto found = std::find_if(bricks.begin(), bricks.end(),
                                    [nodes](const Collapsed& collapsed) { return isCollapsed(collapsed, nodes); });
    return found == bricks.end() ? nullptr : &*found;
}

// Whether the nodes 0, 1 and 2 run clockwise when they are seen from node 3.
bool isInsideOut(const std::uint32_t* wedge, std::span<const double> coordinates) {
    const auto place = [&](std::size_t node) {
        const double* xyz = &coordinates[3 * std::size_t(wedge[node])];
        return Vec3d(xyz[0], xyz[1], xyz[2]);
    };
    const Vec3d corner = place(0);
    return ((place(1) - corner) ^ (place(2) - corner)) * (place(3) - corner) < 0;
}

bool readUnordered(const CaeFile& file, const TecZone& zone, std::span<const double> coordinates,
                   std::vector<ug::ElementType>* types, std::vector<std::uint32_t>* connectivity, ug::Error* error) {
    TecInput input(file, error);
    input.seek(zone.cells);
    std::array<std::uint32_t, 8> nodes = {};
    for (std::uint64_t cell = 0; cell < zone.cellCount; ++cell) {
        for (std::size_t i = 0; i < zone.cellType->nodeCount; ++i) {
            if (!input.nextIndex("the number of a node", zone.nodeCount, &nodes[i])) {
                return false;
            }
        }
        if (const Collapsed* collapsed = findCollapsed(zone.cellType->elementType, nodes.data())) {
            types->push_back(collapsed->type);
            for (const std::uint8_t node : collapsed->order) {
                connectivity->push_back(nodes[node]);
            }
            std::uint32_t* element = connectivity->data() + connectivity->size() - collapsed->order.size();
            if (collapsed->type == ug::WEDGE && isInsideOut(element, coordinates)) {
                std::swap(element[1], element[2]);
                std::swap(element[4], element[5]);
            }
        } else {
            types->push_back(zone.cellType->elementType);
            connectivity->insert(connectivity->end(), nodes.begin(),
                                 nodes.begin() + std::ptrdiff_t(zone.cellType->nodeCount));
        }
    }
    return true;
}

void makeOrdered(const TecZone& zone, std::vector<ug::ElementType>* types, std::vector<std::uint32_t>* connectivity) {
    constexpr ug::ElementType TYPES[] = {ug::POINT, ug::BEAM, ug::QUADRILATERAL, ug::HEXAHEDRON};
    // The nodes of a cell by their steps along the directions in which the zone is not flat.
    constexpr std::uint8_t CORNERS[][3] = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0},
                                           {0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}};
    std::vector<std::uint64_t> counts; // Of cells, along these directions.
    std::vector<std::uint64_t> steps;  // From node to node.
    std::uint64_t step = 1;
    for (const std::uint64_t size : zone.sizes) {
        if (size > 1) {
            counts.push_back(size - 1);
            steps.push_back(step);
        }
        step *= size;
    }
    const std::size_t dimension = counts.size();
    const std::size_t corners = std::size_t(1) << dimension;
    counts.resize(3, 1);
    steps.resize(3, 0);
    types->assign(zone.cellCount, TYPES[dimension]);
    connectivity->reserve(zone.cellCount * corners);
    for (std::uint64_t k = 0; k < counts[2]; ++k) {
        for (std::uint64_t j = 0; j < counts[1]; ++j) {
            for (std::uint64_t i = 0; i < counts[0]; ++i) {
                for (std::size_t c = 0; c < corners; ++c) {
                    connectivity->push_back(std::uint32_t((i + CORNERS[c][0]) * steps[0] +
                                                          (j + CORNERS[c][1]) * steps[1] +
                                                          (k + CORNERS[c][2]) * steps[2]));
                }
            }
        }
    }
}

} // namespace

bool readTecColumns(const CaeFile& file, std::span<const TecTarget> targets, std::uint64_t count, ug::Error* error) {
    std::map<std::int64_t, std::vector<const TecTarget*>> lists;
    for (const TecTarget& target : targets) {
        std::vector<const TecTarget*>& byPlace = lists[target.column->offset];
        byPlace.resize(target.column->rowWidth);
        byPlace[target.column->place] = &target;
    }
    return std::all_of(lists.begin(), lists.end(),
                       [&](const auto& list) { return readList(file, list.first, list.second, count, error); });
}

bool readTecCells(const CaeFile& file, const TecZone& zone, std::span<const double> coordinates,
                  std::vector<ug::ElementType>* types, std::vector<std::uint32_t>* connectivity, ug::Error* error) {
    if (zone.cellType) {
        return readUnordered(file, zone, coordinates, types, connectivity, error);
    }
    makeOrdered(zone, types, connectivity);
    return true;
}

} // namespace orv::imp::cae
