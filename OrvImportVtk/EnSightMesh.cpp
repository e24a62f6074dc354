#include "OrvImportVtk/EnSightMesh.h"

#include "OrvImportVtk/EnSightFile.h"

#include <vtkCellArray.h>
#include <vtkCellData.h>
#include <vtkCellType.h>
#include <vtkDataSetAttributes.h>
#include <vtkFloatArray.h>
#include <vtkIntArray.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkStructuredGrid.h>
#include <vtkTypeInt32Array.h>
#include <vtkTypeInt64Array.h>
#include <vtkUnsignedCharArray.h>
#include <vtkUnstructuredGrid.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <limits>
#include <numeric>
#include <span>
#include <sstream>
#include <string_view>
#include <type_traits>

namespace orv::imp::cae {
namespace {

constexpr int LARGEST = std::numeric_limits<int>::max();
constexpr int SMALLEST = std::numeric_limits<int>::min();

// Of a block whose nodes the file does not list, so that its size does not limit them.
constexpr std::size_t MOST_UNLISTED_NODES = std::size_t(1) << 25;

// VTK's wedges go the other way around.
constexpr std::uint8_t WEDGE_ORDER[] = {0, 2, 1, 3, 5, 4};
constexpr std::uint8_t WEDGE_15_ORDER[] = {0, 2, 1, 3, 5, 4, 8, 7, 6, 11, 10, 9, 12, 14, 13};

struct Type {
    std::string_view name;
    int cellType;
    std::size_t nodeCount;               ///< 0 when each element tells.
    const std::uint8_t* order = nullptr; ///< The file's node of each of VTK's; null when they are the same.
};

constexpr Type TYPES[] = {
    {"point", VTK_VERTEX, 1},
    {"bar2", VTK_LINE, 2},
    {"bar3", VTK_QUADRATIC_EDGE, 3},
    {"tria3", VTK_TRIANGLE, 3},
    {"tria6", VTK_QUADRATIC_TRIANGLE, 6},
    {"quad4", VTK_QUAD, 4},
    {"quad8", VTK_QUADRATIC_QUAD, 8},
    {"tetra4", VTK_TETRA, 4},
    {"tetra10", VTK_QUADRATIC_TETRA, 10},
    {"pyramid5", VTK_PYRAMID, 5},
    {"pyramid13", VTK_QUADRATIC_PYRAMID, 13},
    {"penta6", VTK_WEDGE, 6, WEDGE_ORDER},
    {"penta15", VTK_QUADRATIC_WEDGE, 15, WEDGE_15_ORDER},
    {"hexa8", VTK_HEXAHEDRON, 8},
    {"hexa20", VTK_QUADRATIC_HEXAHEDRON, 20},
    {"nsided", VTK_POLYGON, 0},
    {"nfaced", VTK_POLYHEDRON, 0},
};

constexpr std::size_t MOST_NODES_OF_AN_ELEMENT = 20; // Of those whose type tells.
constexpr std::string_view GHOST_PREFIX = "g_";

const Type* findType(std::string_view name) {
    if (name.starts_with(GHOST_PREFIX)) {
        name.remove_prefix(GHOST_PREFIX.size());
    }
    const auto found =
        std::find_if(std::begin(TYPES), std::end(TYPES), [name](const Type& type) { return type.name == name; });
    return found == std::end(TYPES) ? nullptr : found;
}

std::size_t sumOf(std::span<const int> numbers) {
    return std::accumulate(numbers.begin(), numbers.end(), std::size_t(0),
                           [](std::size_t sum, int number) { return sum + std::size_t(number); });
}

bool hasWord(const std::string& text, std::string_view word) {
    std::istringstream stream(text);
    return std::find(std::istream_iterator<std::string>(stream), {}, word) != std::istream_iterator<std::string>();
}

bool isGhost(const EnSightSection& section) {
    return section.type.starts_with(GHOST_PREFIX);
}

vtkSmartPointer<vtkIntArray> makeIds(const char* name, const std::vector<int>& ids) {
    auto array = vtkSmartPointer<vtkIntArray>::New();
    array->SetName(name);
    array->SetNumberOfValues(vtkIdType(ids.size()));
    std::copy(ids.begin(), ids.end(), array->GetPointer(0));
    return array;
}

/// The elements of a part while they come in: those of a section, then its nodes, and then their order.
class Cells {
public:
    Cells() {
        m_cells->Use32BitStorage();
    }

    // `nodeCounts` has that of each element when their type does not tell; polyhedra get none.
    void add(const Type& type, bool isGhost, std::size_t count, std::span<const int> nodeCounts) {
        const vtkIdType first = m_cells->GetNumberOfCells();
        const std::size_t nodes = m_nodeCount + (type.nodeCount > 0 ? count * type.nodeCount : sumOf(nodeCounts));
        if (nodes > std::size_t(LARGEST)) {
            m_cells->ConvertTo64BitStorage();
        }
        m_cells->ResizeExact(first + vtkIdType(count), vtkIdType(nodes));
        m_cells->Visit([&](auto& lists) {
            auto* offsets = lists.GetOffsets()->GetPointer(first);
            auto end = *offsets;
            for (std::size_t e = 0; e < count; ++e) {
                end += nodeCounts.empty() ? int(type.nodeCount) : nodeCounts[e];
                offsets[e + 1] = end;
            }
        });
        std::fill_n(m_types->WritePointer(first, vtkIdType(count)), count, static_cast<unsigned char>(type.cellType));
        std::fill_n(m_ghosts->WritePointer(first, vtkIdType(count)), count,
                    isGhost ? static_cast<unsigned char>(vtkDataSetAttributes::DUPLICATECELL) : 0);
        m_hasGhosts = m_hasGhosts || isGhost;
    }

    // They are counted from 1.
    void addNodes(std::span<const int> nodes) {
        m_cells->Visit([&](auto& lists) {
            auto* points = lists.GetConnectivity()->GetPointer(vtkIdType(m_nodeCount));
            for (std::size_t i = 0; i < nodes.size(); ++i) {
                points[i] = nodes[i] - 1;
            }
        });
        m_nodeCount += nodes.size();
    }

    // Of the last elements.
    void order(const Type& type, std::size_t count) {
        if (!type.order) {
            return;
        }
        m_cells->Visit([&](auto& lists) {
            auto* points = lists.GetConnectivity()->GetPointer(vtkIdType(m_nodeCount - count * type.nodeCount));
            std::array<std::remove_pointer_t<decltype(points)>, MOST_NODES_OF_AN_ELEMENT> given;
            for (std::size_t e = 0; e < count; ++e, points += type.nodeCount) {
                std::copy_n(points, type.nodeCount, given.begin());
                for (std::size_t i = 0; i < type.nodeCount; ++i) {
                    points[i] = given[type.order[i]];
                }
            }
        });
    }

    void addIds(const std::vector<int>& ids) {
        m_ids.insert(m_ids.end(), ids.begin(), ids.end());
    }

    void moveTo(vtkUnstructuredGrid* grid) {
        grid->SetCells(m_types, m_cells, nullptr, nullptr); // Polyhedra have no faces.
        if (m_hasGhosts) {
            m_ghosts->SetName(vtkDataSetAttributes::GhostArrayName());
            grid->GetCellData()->AddArray(m_ghosts);
        }
        if (!m_ids.empty()) {
            grid->GetCellData()->SetGlobalIds(makeIds("element ids", m_ids));
        }
    }

private:
    vtkNew<vtkCellArray> m_cells;
    vtkNew<vtkUnsignedCharArray> m_types;
    vtkNew<vtkUnsignedCharArray> m_ghosts;
    bool m_hasGhosts = false;
    std::size_t m_nodeCount = 0; ///< Of all elements whose nodes have come.
    std::vector<int> m_ids;
};

class Reader {
public:
    Reader(EnSightFile* file, bool isWhole, std::vector<EnSightPart>* parts)
        : m_file(*file), m_isWhole(isWhole), m_parts(*parts) {}

    bool run() {
        if (!readHead()) {
            return false;
        }
        while (!m_keyword.empty()) {
            if (m_keyword != "part") {
                return m_file.failToFind("\"part\"", m_keyword);
            }
            if (!readPart()) {
                return false;
            }
        }
        return !m_parts.empty() || m_file.fail("expected a part, found none");
    }

private:
    enum Ids { NONE, GIVEN, IGNORED };

    bool readHead() {
        std::string text;
        if (!m_file.readText("a description", &text) ||
            (text == "BEGIN TIME STEP" && !m_file.readText("a description", &text)) ||
            !m_file.readText("a description", &text) || !readIds("node id", &m_nodeIds) ||
            !readIds("element id", &m_elementIds) || !next()) {
            return false;
        }
        return m_keyword != "extents" || (skipExtents() && next());
    }

    bool readIds(const std::string& what, Ids* ids) {
        const std::string expected = "\"" + what + "\" with \"off\", \"given\", \"assign\" or \"ignore\"";
        std::string text;
        if (!m_file.readKeyword(expected, &text)) {
            return false;
        }
        *ids = hasWord(text, "given") ? GIVEN : hasWord(text, "ignore") ? IGNORED : NONE;
        const bool isKnown = *ids != NONE || hasWord(text, "off") || hasWord(text, "assign");
        return (text.starts_with(what) && isKnown) || m_file.failToFind(expected, text);
    }

    // As lines the numbers need not be separate.
    bool skipExtents() {
        std::string text;
        return m_file.form() == EnSightFile::ASCII
                   ? m_file.readText("extents", &text) && m_file.readText("extents", &text) &&
                         m_file.readText("extents", &text)
                   : m_file.skipNumbers("extents", 6);
    }

    bool next() {
        return m_file.readKeyword("a part or elements", &m_keyword);
    }

    bool readPart() {
        EnSightPart part;
        if (!m_file.readPartNumber(&part.number)) {
            return false;
        }
        const bool isKnown = std::any_of(m_parts.begin(), m_parts.end(),
                                         [&](const EnSightPart& known) { return known.number == part.number; });
        if (isKnown) {
            return m_file.fail("expected each part once, found part " + std::to_string(part.number) + " again");
        }
        if (!m_file.readText("the name of a part", &part.name) || !next()) {
            return false;
        }
        if (part.name.empty()) {
            part.name = "part " + std::to_string(part.number);
        }
        part.isBlock = m_keyword.starts_with("block");
        if (m_keyword != "coordinates" && !part.isBlock) {
            return m_file.failToFind("\"coordinates\" or \"block\"", m_keyword);
        }
        if (!(part.isBlock ? readBlock(&part) : readUnstructured(&part))) {
            return false;
        }
        m_parts.push_back(std::move(part));
        return true;
    }

    bool readUnstructured(EnSightPart* part) {
        std::size_t count = 0;
        if (!m_file.readCount("coordinates", m_nodeIds == NONE ? 3 : 4, &count)) {
            return false;
        }
        vtkNew<vtkUnstructuredGrid> grid;
        std::vector<int> ids;
        if (!readGivenIds(m_nodeIds, "node ids", count, &ids) || !readPoints(count, grid) || !next()) {
            return false;
        }
        if (!ids.empty()) {
            grid->GetPointData()->SetGlobalIds(makeIds("node ids", ids));
        }
        Cells cells;
        while (!m_keyword.empty() && m_keyword != "part") {
            if (!readSection(int(count), part, &cells)) {
                return false;
            }
        }
        cells.moveTo(grid);
        if (m_isWhole) {
            part->data = grid;
        }
        return true;
    }

    bool readGivenIds(Ids kind, const char* what, std::size_t count, std::vector<int>* ids) {
        return kind == NONE || (kind == GIVEN && m_isWhole ? m_file.readInts(what, count, SMALLEST, LARGEST, ids)
                                                           : m_file.skipNumbers(what, count));
    }

    bool readPoints(std::size_t count, vtkPointSet* grid) {
        constexpr const char* WHAT[] = {"x coordinates", "y coordinates", "z coordinates"};
        vtkNew<vtkPoints> points; // Of floats.
        if (!m_file.hasRoomFor(WHAT[0], count)) {
            return false;
        }
        points->SetNumberOfPoints(m_isWhole ? vtkIdType(count) : 0);
        float* values = static_cast<float*>(points->GetVoidPointer(0));
        for (std::size_t axis = 0; axis < 3; ++axis) {
            if (!(m_isWhole ? m_file.readFloatsTo(WHAT[axis], count, values + axis, 3)
                            : m_file.skipNumbers(WHAT[axis], count))) {
                return false;
            }
        }
        grid->SetPoints(points);
        return true;
    }

    bool readSection(int nodeCount, EnSightPart* part, Cells* cells) {
        const Type* type = findType(m_keyword);
        if (!type) {
            return m_file.failToFind("a type of elements, or \"part\"", m_keyword);
        }
        const std::size_t ownIds = m_elementIds == NONE ? 0 : 1;
        EnSightSection section{m_keyword, 0};
        std::vector<int> ids;
        if (!m_file.readCount(m_keyword, std::max<std::size_t>(type->nodeCount, 1) + ownIds, &section.elementCount) ||
            !readGivenIds(m_elementIds, "element ids", section.elementCount, &ids) ||
            !readElements(*type, section, nodeCount, cells)) {
            return false;
        }
        cells->addIds(ids);
        part->sections.push_back(std::move(section));
        return next();
    }

    bool readElements(const Type& type, const EnSightSection& section, int nodeCount, Cells* cells) {
        if (type.cellType == VTK_POLYHEDRON) {
            return readPolyhedra(type, section, cells);
        }
        std::vector<int> counts;
        std::size_t sum = section.elementCount * type.nodeCount;
        if (type.nodeCount == 0) {
            if (!m_file.readInts("numbers of nodes", section.elementCount, 1, LARGEST, &counts)) {
                return false;
            }
            sum = sumOf(counts);
        }
        if (!m_isWhole) {
            return m_file.skipNumbers(section.type, sum);
        }
        if (!m_file.hasRoomFor(section.type, sum)) {
            return false;
        }
        cells->add(type, isGhost(section), section.elementCount, counts);
        if (!m_file.readIntPieces(section.type, sum, 1, nodeCount,
                                  [cells](std::span<const int> nodes) { cells->addNodes(nodes); })) {
            return false;
        }
        cells->order(type, section.elementCount);
        return true;
    }

    bool readPolyhedra(const Type& type, const EnSightSection& section, Cells* cells) {
        std::vector<int> faces;
        std::vector<int> nodes;
        if (!m_file.readInts("numbers of faces", section.elementCount, 1, LARGEST, &faces) ||
            !m_file.readInts("numbers of nodes", sumOf(faces), 1, LARGEST, &nodes) ||
            !m_file.skipNumbers(section.type, sumOf(nodes))) {
            return false;
        }
        if (m_isWhole) {
            cells->add(type, isGhost(section), section.elementCount, {});
        }
        return true;
    }

    /// "block [rectilinear | uniform] [iblanked] [with_ghost] [range]"
    bool readBlock(EnSightPart* part) {
        const bool isUniform = hasWord(m_keyword, "uniform");
        const bool isRectilinear = hasWord(m_keyword, "rectilinear");
        const bool isBlanked = hasWord(m_keyword, "iblanked");
        std::array<int, 3> size;
        std::size_t count = 0;
        if (!readSize(hasWord(m_keyword, "range"), &size, &count)) {
            return false;
        }
        vtkNew<vtkStructuredGrid> grid;
        if (!(isUniform || isRectilinear ? readAxes(isUniform, size, count, grid) : readPoints(count, grid))) {
            return false;
        }
        if (isBlanked && !(m_isWhole ? m_file.readInts("iblanks", count, SMALLEST, LARGEST, &m_ints)
                                     : m_file.skipNumbers("iblanks", count))) {
            return false;
        }
        if (m_isWhole) {
            grid->SetDimensions(size.data());
            for (std::size_t i = 0; isBlanked && i < count; ++i) {
                if (m_ints[i] == 0) {
                    grid->BlankPoint(vtkIdType(i));
                }
            }
            part->data = grid;
        }
        return next() && readBlockLists(size, count, grid);
    }

    bool readSize(bool hasRange, std::array<int, 3>* size, std::size_t* count) {
        if (!m_file.readInts("nodes in i, j and k", 3, 1, LARGEST, &m_ints)) {
            return false;
        }
        std::copy(m_ints.begin(), m_ints.end(), size->begin());
        if (hasRange) {
            if (!m_file.readInts("a range of i, j and k", 6, 1, LARGEST, &m_ints)) {
                return false;
            }
            for (std::size_t axis = 0; axis < 3; ++axis) {
                const int first = m_ints[2 * axis];
                const int last = m_ints[2 * axis + 1];
                if (first > last || last > (*size)[axis]) {
                    return m_file.fail("expected ranges within the block, found " + std::to_string(first) + " to " +
                                       std::to_string(last) + " of " + std::to_string((*size)[axis]));
                }
                (*size)[axis] = last - first + 1;
            }
        }
        *count = 1;
        for (const int nodes : *size) {
            *count *= std::size_t(nodes);
            if (*count > std::size_t(LARGEST)) {
                return m_file.fail("expected a block of at most 2147483647 nodes, found more");
            }
        }
        return true;
    }

    // Planes of nodes along each axis, or the first one and the distance to the next.
    bool readAxes(bool isUniform, const std::array<int, 3>& size, std::size_t count, vtkPointSet* grid) {
        std::array<std::vector<double>, 3> planes;
        if (isUniform) {
            if (!m_file.readFloats("origin and distances", 6, &m_floats)) {
                return false;
            }
        }
        if (count > MOST_UNLISTED_NODES) {
            return m_file.fail("expected a block of at most " + std::to_string(MOST_UNLISTED_NODES) +
                               " nodes that are not listed, found " + std::to_string(count));
        }
        for (std::size_t axis = 0; axis < 3; ++axis) {
            if (isUniform) {
                for (int i = 0; i < size[axis]; ++i) {
                    planes[axis].push_back(double(m_floats[axis]) + i * double(m_floats[3 + axis]));
                }
            } else if (m_file.readFloats("planes of nodes", std::size_t(size[axis]), &m_floats)) {
                planes[axis].assign(m_floats.begin(), m_floats.end());
            } else {
                return false;
            }
        }
        if (!m_isWhole) {
            return true;
        }
        vtkNew<vtkPoints> points;
        points->SetDataTypeToDouble();
        points->Allocate(vtkIdType(count));
        for (const double z : planes[2]) {
            for (const double y : planes[1]) {
                for (const double x : planes[0]) {
                    points->InsertNextPoint(x, y, z);
                }
            }
        }
        grid->SetPoints(points);
        return true;
    }

    bool readBlockLists(const std::array<int, 3>& size, std::size_t count, vtkStructuredGrid* grid) {
        std::size_t cellCount = 1;
        for (const int nodes : size) {
            cellCount *= std::size_t(std::max(nodes - 1, 1));
        }
        while (m_keyword == "ghost_flags" || m_keyword == "node_ids" || m_keyword == "element_ids") {
            if (!m_file.readInts(m_keyword, m_keyword == "node_ids" ? count : cellCount, SMALLEST, LARGEST, &m_ints)) {
                return false;
            }
            if (m_isWhole && m_keyword == "ghost_flags") {
                vtkUnsignedCharArray* ghosts = grid->AllocateCellGhostArray();
                for (std::size_t c = 0; c < cellCount; ++c) {
                    ghosts->SetValue(vtkIdType(c), m_ints[c] ? vtkDataSetAttributes::DUPLICATECELL : 0);
                }
            } else if (m_isWhole && m_keyword == "node_ids" && m_nodeIds == GIVEN) {
                grid->GetPointData()->SetGlobalIds(makeIds("node ids", m_ints));
            } else if (m_isWhole && m_keyword == "element_ids" && m_elementIds == GIVEN) {
                grid->GetCellData()->SetGlobalIds(makeIds("element ids", m_ints));
            }
            if (!next()) {
                return false;
            }
        }
        return true;
    }

    EnSightFile& m_file;
    bool m_isWhole;
    std::vector<EnSightPart>& m_parts;
    Ids m_nodeIds = NONE;
    Ids m_elementIds = NONE;
    std::string m_keyword; ///< The next one, which has been read.
    std::vector<float> m_floats;
    std::vector<int> m_ints;
};

} // namespace

bool readEnSightMesh(EnSightFile* file, bool isWhole, std::vector<EnSightPart>* parts) {
    return Reader(file, isWhole, parts).run();
}

bool takeEnSightElements(const std::vector<EnSightPart>& from, std::vector<EnSightPart>* parts) {
    for (EnSightPart& part : *parts) {
        const auto found = std::find_if(from.begin(), from.end(),
                                        [&](const EnSightPart& other) { return other.number == part.number; });
        if (found == from.end() || !part.sections.empty() || part.isBlock) {
            continue;
        }
        if (found->data->GetNumberOfPoints() != part.data->GetNumberOfPoints()) {
            return false;
        }
        found->data->SetPoints(part.data->GetPoints());
        part.data = found->data;
        part.sections = found->sections;
    }
    return true;
}

} // namespace orv::imp::cae
