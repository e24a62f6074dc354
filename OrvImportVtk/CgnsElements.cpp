#include "OrvImportVtk/CgnsElements.h"

#include "OrvImportVtk/CgnsCells.h"

#include <vtkCellArray.h>
#include <vtkCellType.h>
#include <vtkNew.h>
#include <vtkTypeInt32Array.h>
#include <vtkUnsignedCharArray.h>
#include <vtkUnstructuredGrid.h>

#include <algorithm>
#include <limits>
#include <memory>
#include <span>
#include <string_view>
#include <utility>

namespace orv::imp::cae {
namespace {

constexpr std::int64_t MOST = std::numeric_limits<std::int32_t>::max(); // Cells are kept in lists of such numbers.

bool isOfFaces(int type) {
    return type == CGNS_POLYGONS || type == CGNS_POLYHEDRA;
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

// The sections of the cells, by their first ones.
std::vector<const CgnsSection*> cellSections(const CgnsZone& zone) {
    std::vector<const CgnsSection*> sections;
    for (const CgnsSection& section : zone.sections) {
        if (isOfFaces(section.elementType) || section.begin <= zone.cellCounts[0]) {
            sections.push_back(&section);
        }
    }
    std::stable_sort(sections.begin(), sections.end(),
                     [](const CgnsSection* a, const CgnsSection* b) { return a->begin < b->begin; });
    return sections;
}

bool ascends(std::span<const std::int64_t> offsets, std::size_t last) {
    return !offsets.empty() && offsets.front() == 0 && offsets.back() == std::int64_t(last) &&
           std::is_sorted(offsets.begin(), offsets.end());
}

/// The cells of a zone, one section after the other.
class Cells {
public:
    Cells(const CgnsTree& tree, const CgnsZone& zone, std::size_t mostPoints)
        : m_tree(tree), m_nodeCount(zone.nodeCounts[0]) {
        m_types->SetNumberOfValues(vtkIdType(zone.cellCounts[0]));
        m_offsets->SetNumberOfValues(vtkIdType(zone.cellCounts[0]) + 1);
        m_points->SetNumberOfValues(vtkIdType(mostPoints));
        m_type = m_types->GetPointer(0);
        m_offset = m_offsets->GetPointer(0);
    }

    bool add(const CgnsNode& zone, const CgnsSection& section, ug::Error* error) {
        CgnsNode node;
        CgnsNode list;
        if (!m_tree.find(zone, section.name, &node, error) || !m_tree.find(node, "ElementConnectivity", &list, error)) {
            return false;
        }
        if (!isList(&list) || list.itemCount() != section.itemCount) {
            return ug::fail(error, "has been changed since it was opened");
        }
        return list.type == "I4" ? addItems<std::int32_t>(node, list, section, error)
                                 : addItems<std::int64_t>(node, list, section, error);
    }

    void addPolyhedra(std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            addCell(VTK_POLYHEDRON, 0);
        }
    }

    void moveTo(vtkUnstructuredGrid* grid) {
        *m_offset = std::int32_t(m_pointCount);
        m_points->SetNumberOfValues(vtkIdType(m_pointCount)); // Which are no more than there is room for.
        vtkNew<vtkCellArray> cells;
        cells->SetData(m_offsets.Get(), m_points.Get());
        grid->SetCells(m_types, cells, nullptr, nullptr); // Polyhedra have no faces.
    }

private:
    template <class Number>
    bool addItems(const CgnsNode& node, const CgnsNode& list, const CgnsSection& section, ug::Error* error) {
        const auto numbers = std::make_unique_for_overwrite<Number[]>(std::size_t(section.itemCount));
        if (!m_tree.readItems(list, numbers.get(), error)) {
            return false;
        }
        const std::span<const Number> items(numbers.get(), std::size_t(section.itemCount));
        std::vector<std::int64_t> offsets;
        if (section.elementType == CGNS_POLYGONS && !readOffsets(node, &offsets, error)) {
            return ug::fail(error, Str("section '" + section.name + "' has no offsets of its elements"));
        }
        const auto count = std::size_t(section.elementCount());
        const bool isWhole = section.elementType == CGNS_MIXED ? addMixed(items, count)
                             : !offsets.empty()                ? addPolygons(items, offsets, count)
                             : section.elementType == CGNS_POLYGONS
                                 ? addCountedPolygons(items, count)
                                 : addCells(items, *findCgnsCell(section.elementType), count);
        return isWhole ||
               ug::fail(error, Str("the elements of section '" + section.name + "' are not as many as it tells"));
    }

    // None where the elements themselves tell how many nodes they have.
    bool readOffsets(const CgnsNode& section, std::vector<std::int64_t>* offsets, ug::Error* error) const {
        std::vector<CgnsNode> children;
        if (!m_tree.readChildren(section, &children, error)) {
            return false;
        }
        const CgnsNode* starts = find(children, "ElementStartOffset");
        return !starts || (isList(starts) && m_tree.readIntegers(*starts, offsets, error));
    }

    // As many items as they need have to be there.
    template <class Number>
    bool addCells(std::span<const Number> items, const CgnsCell& cell, std::size_t count) {
        std::int32_t* points = m_points->GetPointer(0) + m_pointCount;
        for (std::size_t i = 0; i < count; ++i) {
            addCell(cell.cellType, cell.pointCount);
        }
        if (!cell.order) {
            copyPoints(items.first(count * cell.nodeCount), points);
            return true;
        }
        for (std::size_t i = 0; i < count; ++i) {
            for (std::size_t p = 0; p < cell.pointCount; ++p) {
                *points++ = pointOf(items[i * cell.nodeCount + cell.order[p]]);
            }
        }
        return true;
    }

    // Each after its type. They may be written with their offsets, which tell the same.
    template <class Number>
    bool addMixed(std::span<const Number> items, std::size_t count) {
        std::size_t at = 0;
        for (std::size_t i = 0; i < count; ++i) {
            const CgnsCell* cell = at < items.size() ? findCgnsCell(items[at]) : nullptr;
            if (!cell || cell->nodeCount > items.size() - at - 1) {
                return false;
            }
            addCells(items.subspan(at + 1), *cell, 1);
            at += 1 + cell->nodeCount;
        }
        return at == items.size();
    }

    template <class Number>
    bool addPolygons(std::span<const Number> items, std::span<const std::int64_t> offsets, std::size_t count) {
        if (offsets.size() != count + 1 || !ascends(offsets, items.size())) {
            return false;
        }
        for (std::size_t i = 0; i < count; ++i) {
            addPolygon(items.subspan(std::size_t(offsets[i]), std::size_t(offsets[i + 1] - offsets[i])));
        }
        return true;
    }

    // Before version 4 each came after how many nodes it has.
    template <class Number>
    bool addCountedPolygons(std::span<const Number> items, std::size_t count) {
        std::size_t at = 0;
        for (std::size_t i = 0; i < count; ++i) {
            const std::int64_t nodes = at < items.size() ? items[at] : 0;
            if (nodes <= 0 || std::size_t(nodes) > items.size() - at - 1) {
                return false;
            }
            addPolygon(items.subspan(at + 1, std::size_t(nodes)));
            at += 1 + std::size_t(nodes);
        }
        return at == items.size();
    }

    template <class Number>
    void addPolygon(std::span<const Number> nodes) {
        std::int32_t* points = m_points->GetPointer(0) + m_pointCount;
        addCell(VTK_POLYGON, nodes.size());
        copyPoints(nodes, points);
    }

    // The points of the cell follow those of the one before it.
    void addCell(int cellType, std::size_t pointCount) {
        *m_type++ = static_cast<unsigned char>(cellType);
        *m_offset++ = std::int32_t(m_pointCount);
        m_pointCount += pointCount;
    }

    template <class Number>
    void copyPoints(std::span<const Number> nodes, std::int32_t* points) const {
        std::transform(nodes.begin(), nodes.end(), points, [this](Number node) { return pointOf(node); });
    }

    template <class Number>
    std::int32_t pointOf(Number node) const {
        return node >= 1 && node <= m_nodeCount ? std::int32_t(node - 1) : -1;
    }

    const CgnsTree& m_tree;
    const std::int64_t m_nodeCount;
    vtkNew<vtkUnsignedCharArray> m_types;
    vtkNew<vtkTypeInt32Array> m_offsets;
    vtkNew<vtkTypeInt32Array> m_points;
    unsigned char* m_type;  ///< Of the next cell.
    std::int32_t* m_offset; ///< Of the next cell.
    std::size_t m_pointCount = 0;
};

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
    const CgnsCell* cell = findCgnsCell(kind[0]);
    const bool hasOwnCounts = kind[0] == CGNS_MIXED || isOfFaces(section->elementType);
    if ((!cell && !hasOwnCounts) || section->begin < 1 || section->end < section->begin || section->end > MOST ||
        section->itemCount > MOST ||
        (hasOwnCounts ? section->elementCount() > section->itemCount
                      : section->elementCount() * cell->nodeCount != section->itemCount)) {
        return ug::fail(error, Str("the elements of section '" + node.name + "' are not as many as it tells"));
    }
    return true;
}

bool checkCgnsSections(const CgnsZone& zone, CgnsLeftOut* leftOut, ug::Error* error) {
    std::int64_t polygons = 0;
    std::int64_t polyhedra = 0;
    const bool hasPolygons = sum(zone.sections, CGNS_POLYGONS, &polygons);
    const bool hasPolyhedra = sum(zone.sections, CGNS_POLYHEDRA, &polyhedra);
    if (hasPolygons || hasPolyhedra) {
        const bool hasOthers = std::any_of(zone.sections.begin(), zone.sections.end(),
                                           [](const CgnsSection& section) { return !isOfFaces(section.elementType); });
        return (hasPolygons && !hasOthers && zone.cellCounts[0] == (hasPolyhedra ? polyhedra : polygons)) ||
               ug::fail(error, "has polygons and other elements, or not as many as it tells");
    }
    std::vector<std::pair<std::int64_t, std::int64_t>> ranges;
    for (const CgnsSection& section : zone.sections) {
        if (section.begin <= zone.cellCounts[0]) {
            ranges.emplace_back(section.begin, section.end);
        } else {
            (*leftOut)["sections of elements behind the cells of their zones"].push_back(zone.name + "/" +
                                                                                         section.name);
        }
    }
    return areCells(std::move(ranges), zone.cellCounts[0]) ||
           ug::fail(error, "does not number its cells from 1 on, without gaps");
}

bool readCgnsCells(const CgnsTree& tree, const CgnsNode& node, const CgnsZone& zone, vtkUnstructuredGrid* grid,
                   ug::Error* error) {
    std::int64_t polyhedra = 0;
    if (sum(zone.sections, CGNS_POLYHEDRA, &polyhedra)) {
        Cells cells(tree, zone, 0);
        cells.addPolyhedra(std::size_t(polyhedra));
        cells.moveTo(grid);
        return true;
    }
    const std::vector<const CgnsSection*> sections = cellSections(zone);
    std::int64_t mostPoints = 0;
    for (const CgnsSection* section : sections) {
        mostPoints += section->itemCount;
    }
    if (mostPoints > MOST) {
        return ug::fail(error, "has more than 2147483647 nodes of elements");
    }
    Cells cells(tree, zone, std::size_t(mostPoints));
    for (const CgnsSection* section : sections) {
        if (!cells.add(node, *section, error)) {
            return false;
        }
    }
    cells.moveTo(grid);
    return true;
}

} // namespace orv::imp::cae
