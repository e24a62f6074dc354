#include "OrvImportVtk/CgnsElements.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <set>
#include <span>
#include <string_view>
#include <utility>

namespace orv::imp::cae {
namespace {

constexpr int MIXED = 20;
constexpr int POLYGONS = 22;  // NGON_n: faces
constexpr int POLYHEDRA = 23; // NFACE_n: cells of faces

// How many nodes the elements of each type have. 0 is none of its own.
constexpr int NODE_COUNTS[] = {0,  0,  1,  2,  3,  3,  6,  4,  8,  9,  4,  10, 5,  14, 6,  15, 18, 8,  20,
                               27, 0,  13, 0,  0,  4,  9,  10, 12, 16, 16, 20, 21, 29, 30, 24, 38, 40, 32,
                               56, 64, 5,  12, 15, 16, 25, 22, 34, 35, 29, 50, 55, 33, 66, 75, 44, 98, 125};

constexpr int LARGEST_TYPE = int(std::size(NODE_COUNTS)) - 1;

int nodeCountOf(std::int64_t type) {
    return type >= 0 && type <= LARGEST_TYPE ? NODE_COUNTS[type] : 0;
}

bool isOfFaces(int type) {
    return type == POLYGONS || type == POLYHEDRA;
}

const CgnsNode* find(const std::vector<CgnsNode>& nodes, std::string_view name) {
    const auto found =
        std::find_if(nodes.begin(), nodes.end(), [name](const CgnsNode& node) { return node.name == name; });
    return found == nodes.end() ? nullptr : &*found;
}

bool isList(const CgnsNode* node) {
    return node && node->sizes.size() == 1 && (node->type == "I4" || node->type == "I8");
}

bool sum(const std::vector<CgnsSection>& sections, int type, std::int64_t* elements) {
    *elements = 0;
    bool isThere = false;
    for (const CgnsSection& section : sections) {
        if (section.elementType == type) {
            isThere = true;
            *elements += section.elementCount();
        }
    }
    return isThere;
}

// Elements from 1 to `count`, each of them once.
bool areCells(std::vector<std::pair<std::int64_t, std::int64_t>> ranges, std::int64_t count) {
    std::sort(ranges.begin(), ranges.end());
    std::int64_t next = 1;
    for (const auto& [begin, end] : ranges) {
        if (begin != next) {
            return false;
        }
        next = end + 1;
    }
    return next == count + 1;
}

bool isWhole(std::span<const std::int64_t> items, std::int64_t elementCount, bool isMixed) {
    std::size_t at = 0;
    for (std::int64_t e = 0; e < elementCount; ++e) {
        const std::int64_t nodes = at >= items.size() ? 0 : isMixed ? nodeCountOf(items[at]) : items[at];
        if (nodes <= 0 || std::size_t(nodes) > items.size() - at - 1) {
            return false;
        }
        at += 1 + std::size_t(nodes);
    }
    return at == items.size();
}

bool ascends(std::span<const std::int64_t> offsets, std::int64_t last) {
    return !offsets.empty() && offsets.front() == 0 && offsets.back() == last &&
           std::is_sorted(offsets.begin(), offsets.end());
}

/// Looks at the elements of one zone.
class ElementChecker {
public:
    ElementChecker(const CgnsTree& tree, const CgnsZone& zone) : m_tree(tree), m_zone(zone) {}

    bool check(const CgnsNode& node, ug::Error* error) {
        std::vector<CgnsNode> children;
        if (!m_tree.readChildren(node, &children, error)) {
            return false;
        }
        std::size_t section = 0;
        for (const CgnsNode& child : children) {
            if (child.label != "Elements_t") {
                continue;
            }
            if (section == m_zone.sections.size()) {
                return ug::fail(error, "has been changed since it was opened");
            }
            if (!checkSection(child, m_zone.sections[section++], error)) {
                return false;
            }
        }
        return true;
    }

private:
    bool checkSection(const CgnsNode& node, const CgnsSection& section, ug::Error* error) {
        if (section.elementType != MIXED && !isOfFaces(section.elementType)) {
            return true;
        }
        std::vector<CgnsNode> nodes;
        std::vector<std::int64_t> items;
        std::vector<std::int64_t> offsets;
        if (!m_tree.readChildren(node, &nodes, error)) {
            return false;
        }
        const CgnsNode* list = find(nodes, "ElementConnectivity");
        const CgnsNode* starts = find(nodes, "ElementStartOffset");
        if (!isList(list) || !m_tree.readIntegers(*list, &items, error)) {
            return list || ug::fail(error, Str("section '" + section.name + "' has no elements"));
        }
        bool isGood = false;
        if (section.elementType != MIXED && starts) {
            if (!isList(starts) || !m_tree.readIntegers(*starts, &offsets, error)) {
                return ug::fail(error, Str("section '" + section.name + "' has no offsets of its elements"));
            }
            isGood = offsets.size() == std::size_t(section.elementCount()) + 1 &&
                     ascends(offsets, std::int64_t(items.size()));
        } else {
            isGood = isWhole(items, section.elementCount(), section.elementType == MIXED);
        }
        m_layouts.insert(isOfFaces(section.elementType) ? (starts ? 1 : 2) : 0);
        if (!isGood || m_layouts.size() > 1) {
            return ug::fail(error, Str("the elements of section '" + section.name + "' are not as many as it tells"));
        }
        return section.elementType != POLYHEDRA || haveFaces(items, offsets, error);
    }

    bool haveFaces(std::span<const std::int64_t> items, std::span<const std::int64_t> offsets, ug::Error* error) {
        std::size_t count = 0; // How many faces are left of a cell, in lists that count them.
        for (const std::int64_t item : items) {
            if (offsets.empty() && count == 0) {
                count = std::size_t(item);
                continue;
            }
            count -= offsets.empty();
            const std::int64_t face = item < 0 ? -item : item;
            if (!std::any_of(m_zone.sections.begin(), m_zone.sections.end(), [face](const CgnsSection& section) {
                    return section.elementType == POLYGONS && face >= section.begin && face <= section.end;
                })) {
                return ug::fail(error, Str("has a cell of the face " + std::to_string(face) + ", which it has not"));
            }
        }
        return true;
    }

    const CgnsTree& m_tree;
    const CgnsZone& m_zone;
    std::set<int> m_layouts;
};

bool needsCheck(const CgnsZone& zone) {
    return std::any_of(zone.sections.begin(), zone.sections.end(), [](const CgnsSection& section) {
        return section.elementType == MIXED || isOfFaces(section.elementType);
    });
}

bool needsCheck(const CgnsBase& base) {
    return std::any_of(base.zones.begin(), base.zones.end(), [](const CgnsZone& zone) { return needsCheck(zone); });
}

} // namespace

bool readCgnsSection(const CgnsTree& tree, const CgnsNode& node, CgnsSection* section, ug::Error* error) {
    section->name = node.name;
    std::vector<std::int64_t> kind;
    std::vector<std::int64_t> range;
    std::vector<CgnsNode> children;
    if (node.type != "I4" || !tree.readIntegers(node, &kind, error) || !tree.readChildren(node, &children, error)) {
        return ug::fail(error, Str("section '" + node.name + "' does not tell of what elements it is"));
    }
    const CgnsNode* rangeNode = find(children, "ElementRange");
    const CgnsNode* list = find(children, "ElementConnectivity");
    if (kind.size() != 2 || !isList(rangeNode) || !isList(list) || !tree.readIntegers(*rangeNode, &range, error) ||
        range.size() != 2) {
        return ug::fail(error, Str("section '" + node.name + "' does not tell its elements and their range"));
    }
    section->elementType = int(kind[0]);
    section->begin = range[0];
    section->end = range[1];
    section->itemCount = list->sizes[0];
    const int nodeCount = nodeCountOf(section->elementType);
    const bool hasOwnCounts = section->elementType == MIXED || isOfFaces(section->elementType);
    constexpr std::int64_t MOST = std::numeric_limits<std::int32_t>::max(); // VTK counts in int here.
    if ((nodeCount == 0 && !hasOwnCounts) || section->begin < 1 || section->end < section->begin ||
        section->end > MOST || section->itemCount > MOST ||
        (hasOwnCounts ? section->elementCount() > section->itemCount
                      : section->elementCount() * nodeCount != section->itemCount)) {
        return ug::fail(error, Str("the elements of section '" + node.name + "' are not as many as it tells"));
    }
    return true;
}

bool checkCgnsSections(const CgnsZone& zone, CgnsLeftOut* leftOut, ug::Error* error) {
    std::int64_t polygons = 0;
    std::int64_t polyhedra = 0;
    const bool hasPolygons = sum(zone.sections, POLYGONS, &polygons);
    const bool hasPolyhedra = sum(zone.sections, POLYHEDRA, &polyhedra);
    if (hasPolygons || hasPolyhedra) {
        const bool hasOthers = std::any_of(zone.sections.begin(), zone.sections.end(),
                                           [](const CgnsSection& section) { return !isOfFaces(section.elementType); });
        return (hasPolygons && !hasOthers && zone.cellCounts[0] == (hasPolyhedra ? polyhedra : polygons)) ||
               ug::fail(error, "has polygons and other elements, or not as many as it tells, which VTK does not read");
    }
    std::vector<std::pair<std::int64_t, std::int64_t>> ranges;
    std::int64_t items = 0;
    for (const CgnsSection& section : zone.sections) {
        if (section.begin <= zone.cellCounts[0]) {
            ranges.emplace_back(section.begin, section.end);
            items += section.itemCount + section.elementCount();
        } else {
            (*leftOut)["sections of elements behind the cells of their zones"].push_back(zone.name + "/" +
                                                                                         section.name);
        }
    }
    return (areCells(std::move(ranges), zone.cellCounts[0]) && items <= std::numeric_limits<std::int32_t>::max()) ||
           ug::fail(error, "does not number its cells from 1 on, without gaps, which VTK needs");
}

bool checkCgnsElements(const std::string& filename, const std::vector<CgnsBase>& bases, ug::Error* error) {
    if (std::none_of(bases.begin(), bases.end(), [](const CgnsBase& base) { return needsCheck(base); })) {
        return true;
    }
    CgnsTree tree;
    std::vector<CgnsNode> nodes;
    if (!tree.open(filename, error) || !tree.readRoot(&nodes, error)) {
        return false;
    }
    std::erase_if(nodes, [](const CgnsNode& node) { return node.label != "CGNSBase_t"; });
    for (std::size_t b = 0; b < std::min(nodes.size(), bases.size()); ++b) {
        if (!needsCheck(bases[b])) {
            continue;
        }
        std::vector<CgnsNode> zones;
        if (!tree.readChildren(nodes[b], &zones, error)) {
            return false;
        }
        std::erase_if(zones, [](const CgnsNode& node) { return node.label != "Zone_t"; });
        for (std::size_t z = 0; z < std::min(zones.size(), bases[b].zones.size()); ++z) {
            ug::Error reason;
            const CgnsZone& zone = bases[b].zones[z];
            if (needsCheck(zone) && !ElementChecker(tree, zone).check(zones[z], &reason)) {
                return ug::fail(error, Str("zone '" + zone.name + "': ") + reason.message());
            }
        }
    }
    return true;
}

} // namespace orv::imp::cae
