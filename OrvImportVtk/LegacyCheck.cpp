#include "OrvImportVtk/LegacyCheck.h"

#include "OrvImportCae/CaeNumber.h"
#include "OrvImportVtk/LegacyInput.h"

#include <vtkCellType.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <limits>
#include <string_view>

namespace orv::imp::cae {
namespace {

// Of grids whose nodes are not in the file, unless that is larger.
constexpr std::int64_t MOST_UNLISTED_NODES = std::int64_t(1) << 25;

constexpr std::string_view DATA_SETS[] = {"unstructured_grid", "polydata", "structured_grid", "structured_points",
                                          "rectilinear_grid"};

/// An array with so many values for each point or cell.
struct Attribute {
    std::string_view keyword;
    std::int64_t width;
};

constexpr Attribute ATTRIBUTES[] = {{"vectors", 3},    {"normals", 3},      {"tensors", 9},   {"tensors6", 6},
                                    {"global_ids", 1}, {"pedigree_ids", 1}, {"edge_flags", 1}};

constexpr const char* COLOUR_TYPE = "unsigned_char"; // In binary files; otherwise they are reals.

constexpr std::string_view CELL_LISTS[] = {"cells", "vertices", "lines", "polygons", "triangle_strips"};

template <class List>
bool contains(const List& list, const std::string& word) {
    return std::find(std::begin(list), std::end(list), word) != std::end(list);
}

class Check {
public:
    Check(const std::string& filename, std::vector<std::string>* warnings, ug::Error* error)
        : m_filename(filename), m_warnings(*warnings), m_error(error), m_input(error) {}

    bool run() {
        if (!m_input.open(m_filename) || !readHead()) {
            return false;
        }
        for (std::string word = m_input.word(); !word.empty(); word = m_input.word()) {
            if (!readSection(word)) {
                return false;
            }
        }
        if (m_dataSet.empty()) {
            return ug::fail(m_error, "holds no mesh");
        }
        if (m_dataSet == "unstructured_grid" && !m_offsets.empty() && m_typeCount != cellCount()) {
            return m_input.fail("expected the types of " + std::to_string(cellCount()) + " cells, found " +
                                std::to_string(m_typeCount));
        }
        if (m_input.endsWithinLine()) {
            m_warnings.push_back("the file ends without a line end; if it has been cut, its last number may be wrong");
        }
        return checkGrid();
    }

private:
    bool readHead() {
        const std::string first = m_input.line();
        constexpr std::string_view BEGIN = "# vtk DataFile Version ";
        if (!first.starts_with(BEGIN)) {
            return m_input.failToFind("\"# vtk DataFile Version\" and a number", first);
        }
        m_hasOffsets = first.size() > BEGIN.size() && first[BEGIN.size()] >= '5';
        m_input.line(); // The title.
        const std::string form = m_input.word();
        m_input.setBinary(form == "binary");
        return form == "ascii" || form == "binary" || m_input.failToFind("\"ASCII\" or \"BINARY\"", form);
    }

    bool readSection(const std::string& word) {
        if (word == "dataset") {
            const std::string kind = m_input.word();
            if (!m_dataSet.empty() || !contains(DATA_SETS, kind)) {
                return m_input.failToFind("one mesh", kind);
            }
            m_dataSet = kind;
            return true;
        }
        if (word == "metadata") {
            m_input.skipParagraph();
            return true;
        }
        if (word == "field") {
            return readField();
        }
        if (word == "point_data" || word == "cell_data") {
            return m_input.readCount(word == "point_data" ? "points" : "cells", &m_itemCount);
        }
        if (word == "points") {
            return m_input.readCount("points", &m_pointCount) && skip("points", m_input.word(), m_pointCount, 3);
        }
        if (contains(CELL_LISTS, word)) {
            return readCells(word);
        }
        if (word == "cell_types") {
            return m_input.readCount("cells", &m_typeCount) && readTypes();
        }
        if (word == "dimensions") {
            return readDimension(0) && readDimension(1) && readDimension(2);
        }
        if (word == "origin" || word == "spacing" || word == "aspect_ratio") {
            return m_input.skipNumbers("the " + word, 3);
        }
        if (const std::size_t axis = std::string_view("xyz").find(word[0]);
            axis != std::string_view::npos && word.substr(1) == "_coordinates") {
            return m_input.readCount("coordinates", &m_planes[axis]) &&
                   skip("coordinates", m_input.word(), m_planes[axis], 1);
        }
        return readAttribute(word);
    }

    bool readDimension(std::size_t axis) {
        constexpr std::int64_t LARGEST = std::numeric_limits<std::int32_t>::max();
        const std::string text = m_input.word();
        return (readCaeInteger(text.data(), text.data() + text.size(), &m_dimensions[axis]) &&
                m_dimensions[axis] >= 1 && m_dimensions[axis] <= LARGEST) ||
               m_input.failToFind("three numbers of nodes", text);
    }

    bool readAttribute(const std::string& word) {
        std::int64_t width = 0;
        if (word == "lookup_table") {
            const std::string name = m_input.name();
            constexpr std::int64_t COLOURS = 4;
            std::int64_t size = 0;
            return m_input.readCount("colours", &size) && skip(name, COLOUR_TYPE, size, COLOURS);
        }
        const auto found = std::find_if(std::begin(ATTRIBUTES), std::end(ATTRIBUTES),
                                        [&](const Attribute& attribute) { return attribute.keyword == word; });
        const bool isSized = word == "texture_coordinates" || word == "color_scalars";
        if (found == std::end(ATTRIBUTES) && !isSized && word != "scalars") {
            return m_input.failToFind("the name of a section", word);
        }
        const std::string name = m_input.name();
        if (isSized && !m_input.readCount("components", &width)) {
            return false;
        }
        if (word == "color_scalars") {
            return skip(name, COLOUR_TYPE, m_itemCount, width);
        }
        const std::string type = m_input.word();
        if (word != "scalars") {
            return skip(name, type, m_itemCount, isSized ? width : found->width);
        }
        const std::string number = m_input.line();
        width = number.empty() ? 1 : std::atoi(number.c_str());
        if (width < 1 || width > 4) {
            return m_input.failToFind("up to four components", number);
        }
        if (const std::string table = m_input.word(); table != "lookup_table") {
            return m_input.failToFind("LOOKUP_TABLE", table);
        }
        m_input.name();
        return skip(name, type, m_itemCount, width);
    }

    bool readField() {
        std::int64_t arrayCount = 0;
        m_input.name();
        if (!m_input.readCount("arrays", &arrayCount)) {
            return false;
        }
        for (std::int64_t i = 0; i < arrayCount; ++i) {
            std::string name = m_input.name();
            for (; name == "METADATA"; name = m_input.name()) {
                m_input.skipParagraph();
            }
            std::int64_t width = 0;
            std::int64_t count = 0;
            if (name == "NULL_ARRAY") {
                continue;
            }
            if (name.empty()) {
                return m_input.failToFind(std::to_string(arrayCount) + " arrays", name);
            }
            if (!m_input.readCount("components", &width) || !m_input.readCount("items", &count) ||
                !skip(name, m_input.word(), count, width)) {
                return false;
            }
        }
        return true;
    }

    bool skip(const std::string& what, const std::string& type, std::int64_t count, std::int64_t width) {
        // Both are below eight times the size of the file, so that this is the only product that may be too large.
        if (width > 0 && count > m_input.size() * 8 / width) {
            return m_input.fail("expected " + std::to_string(count) + " times " + std::to_string(width) +
                                " values of " + what + ", found a file of " + std::to_string(m_input.size()) +
                                " bytes");
        }
        return m_input.skipValues(what, type, count * width);
    }

    bool readCells(const std::string& word) {
        std::int64_t first = 0;
        std::int64_t second = 0;
        if (!m_input.readCount(word, &first) || !m_input.readCount("nodes of " + word, &second)) {
            return false;
        }
        const bool isRead = m_hasOffsets ? readOffsets(word, first, second) : readRuns(word, first, second);
        return isRead && (word == "cells" || checkPoints(word));
    }

    // Where the nodes of each cell begin, and the nodes.
    bool readOffsets(const std::string& word, std::int64_t offsetCount, std::int64_t nodeCount) {
        if (const std::string key = m_input.word(); key != "offsets") {
            return m_input.failToFind("OFFSETS", key);
        }
        if (!m_input.readIntegers("offsets", m_input.word(), offsetCount, &m_offsets)) {
            return false;
        }
        const bool isAscending = std::is_sorted(m_offsets.begin(), m_offsets.end());
        if (!isAscending || (m_offsets.empty() ? nodeCount != 0 : m_offsets[0] != 0 || m_offsets.back() != nodeCount)) {
            return m_input.fail("expected offsets from 0 to " + std::to_string(nodeCount) + " of " + word +
                                ", found others");
        }
        if (const std::string key = m_input.word(); key != "connectivity") {
            return m_input.failToFind("CONNECTIVITY", key);
        }
        return m_input.readIntegers(word, m_input.word(), nodeCount, &m_nodes);
    }

    // The number of nodes in front of those of each cell.
    bool readRuns(const std::string& word, std::int64_t count, std::int64_t size) {
        std::vector<std::int64_t> numbers;
        if (!m_input.readIntegers(word, "int", size, &numbers)) {
            return false;
        }
        m_offsets = {0};
        m_nodes.clear();
        std::size_t at = 0;
        for (std::int64_t i = 0; i < count; ++i) {
            if (at >= numbers.size() || numbers[at] < 0 || numbers[at] >= std::int64_t(numbers.size() - at)) {
                return m_input.fail("expected " + std::to_string(count) + " cells in " + std::to_string(size) +
                                    " numbers of " + word + ", found " + std::to_string(i));
            }
            const auto begin = numbers.begin() + std::ptrdiff_t(at) + 1;
            m_nodes.insert(m_nodes.end(), begin, begin + numbers[at]);
            at += std::size_t(numbers[at]) + 1;
            m_offsets.push_back(std::int64_t(m_nodes.size()));
        }
        return at == numbers.size() || m_input.fail("expected " + std::to_string(size) + " numbers of " + word +
                                                    ", found cells in " + std::to_string(at) + " of them");
    }

    bool checkPoints(const std::string& word) {
        const auto [lowest, highest] = std::minmax_element(m_nodes.begin(), m_nodes.end());
        return m_nodes.empty() || (*lowest >= 0 && *highest < m_pointCount) ||
               m_input.fail("expected points below " + std::to_string(m_pointCount) + " in " + word + ", found " +
                            std::to_string(*lowest < 0 ? *lowest : *highest));
    }

    bool readTypes() {
        std::vector<std::int64_t> types;
        if (!m_input.readIntegers("cell types", "int", m_typeCount, &types)) {
            return false;
        }
        for (std::size_t cell = 0; cell < types.size() && std::int64_t(cell) < cellCount(); ++cell) {
            if (types[cell] < 0 || types[cell] >= VTK_NUMBER_OF_CELL_TYPES) {
                return m_input.fail("expected types of cells, found " + std::to_string(types[cell]));
            }
            if (!(types[cell] == VTK_POLYHEDRON ? isPolyhedron(cell) : isWithinPoints(cell))) {
                return m_input.fail("expected cells of points below " + std::to_string(m_pointCount) +
                                    ", found another one: " + std::to_string(cell));
            }
        }
        return true;
    }

    bool isWithinPoints(std::size_t cell) const {
        return std::all_of(m_nodes.begin() + m_offsets[cell], m_nodes.begin() + m_offsets[cell + 1],
                           [this](std::int64_t node) { return node >= 0 && node < m_pointCount; });
    }

    // The number of faces, and of each the number of its points and these.
    bool isPolyhedron(std::size_t cell) const {
        std::int64_t at = m_offsets[cell];
        const std::int64_t end = m_offsets[cell + 1];
        if (at == end) {
            return false;
        }
        const std::int64_t faceCount = m_nodes[std::size_t(at++)];
        for (std::int64_t face = 0; face < faceCount; ++face) {
            if (at >= end || m_nodes[std::size_t(at)] < 0 || m_nodes[std::size_t(at)] >= end - at) {
                return false;
            }
            const std::int64_t last = at + m_nodes[std::size_t(at)];
            while (at++ < last) {
                if (m_nodes[std::size_t(at)] < 0 || m_nodes[std::size_t(at)] >= m_pointCount) {
                    return false;
                }
            }
        }
        return faceCount >= 0 && at == end;
    }

    std::int64_t cellCount() const {
        return m_offsets.empty() ? 0 : std::int64_t(m_offsets.size()) - 1;
    }

    bool checkGrid() {
        if (m_dataSet == "unstructured_grid" || m_dataSet == "polydata") {
            return true;
        }
        std::int64_t count = 1;
        for (const std::int64_t dimension : m_dimensions) {
            count *= dimension;
            if (count > std::max(m_input.size(), MOST_UNLISTED_NODES)) {
                return m_input.fail("expected at most " + std::to_string(MOST_UNLISTED_NODES) +
                                    " nodes of a grid, found more");
            }
        }
        if (m_dataSet == "structured_grid" && m_pointCount != count) {
            return m_input.fail("expected " + std::to_string(count) + " points, found " + std::to_string(m_pointCount));
        }
        if (m_dataSet == "rectilinear_grid" && m_planes != m_dimensions) {
            return m_input.fail("expected as many coordinates as the dimensions tell, found others");
        }
        return count > 0 || m_input.fail("expected a grid with nodes, found none");
    }

    std::string m_filename;
    std::vector<std::string>& m_warnings;
    ug::Error* m_error;
    LegacyInput m_input;
    bool m_hasOffsets = false; ///< Since version 5.
    std::string m_dataSet;
    std::int64_t m_pointCount = 0;
    std::int64_t m_typeCount = 0;
    std::int64_t m_itemCount = 0; ///< Of the points or cells that arrays are for.
    std::array<std::int64_t, 3> m_dimensions = {};
    std::array<std::int64_t, 3> m_planes = {};
    std::vector<std::int64_t> m_offsets; ///< Of the last list of cells.
    std::vector<std::int64_t> m_nodes;
};

} // namespace

bool checkLegacyFile(const std::string& filename, std::vector<std::string>* warnings, ug::Error* error) {
    return Check(filename, warnings, error).run();
}

} // namespace orv::imp::cae
