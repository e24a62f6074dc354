#include "OrvImportVtk/LegacyIndex.h"

#include "OrvImportCae/CaeNumber.h"

#include <vtkDataSetAttributes.h>

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <iterator>
#include <limits>
#include <string_view>
#include <utility>

namespace orv::imp::cae {
namespace {

// Of grids whose nodes are not in the file, unless that is larger.
constexpr std::int64_t MOST_UNLISTED_NODES = std::int64_t(1) << 25;

// In the order of their enumerators.
constexpr std::string_view MESH_TYPES[] = {"unstructured_grid", "polydata", "structured_grid", "structured_points",
                                           "rectilinear_grid"};
constexpr std::string_view CELL_LISTS[] = {"cells", "vertices", "lines", "polygons", "triangle_strips"};

/// An array with so many values for each point or cell.
struct Attribute {
    std::string_view keyword;
    int width;
};

constexpr Attribute ATTRIBUTES[] = {{"vectors", 3},    {"normals", 3},      {"tensors", 9},   {"tensors6", 6},
                                    {"global_ids", 1}, {"pedigree_ids", 1}, {"edge_flags", 1}};

/// Where the word is in the list; past its end when it is not there.
template <class List>
std::size_t indexIn(const List& list, std::string_view word) {
    return std::size_t(std::find(std::begin(list), std::end(list), word) - std::begin(list));
}

// Of names with blanks and the like, which are in the file as %20.
std::string decoded(const std::string& name) {
    std::string text;
    for (std::size_t i = 0; i < name.size(); ++i) {
        const char* digits = name.data() + i + 1;
        unsigned int code = 0;
        if (name[i] == '%' && i + 2 < name.size() && std::from_chars(digits, digits + 2, code, 16).ptr == digits + 2) {
            text += char(code);
            i += 2;
        } else {
            text += name[i];
        }
    }
    return text;
}

class Indexer {
public:
    Indexer(CaeFile* file, LegacyIndex* index, ug::Error* error)
        : m_index(*index), m_error(error), m_input(file, false, error) {}

    bool run() {
        if (!readHead()) {
            return false;
        }
        for (std::string word = m_input.word(); !word.empty(); word = m_input.word()) {
            if (!readSection(word)) {
                return false;
            }
        }
        if (!m_hasMesh) {
            return ug::fail(m_error, "holds no mesh");
        }
        const std::int64_t cellCount = m_index.cells[LegacyIndex::CELLS].count;
        if (m_index.cellTypes.count != cellCount) {
            return m_input.fail("expected the types of " + std::to_string(cellCount) + " cells, found " +
                                std::to_string(m_index.cellTypes.count));
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
        m_index.title = m_input.line();
        const std::string form = m_input.word();
        m_index.isBinary = form == "binary";
        m_input.setBinary(m_index.isBinary);
        return m_index.isBinary || form == "ascii" || m_input.failToFind("\"ASCII\" or \"BINARY\"", form);
    }

    bool readSection(const std::string& word) {
        if (word == "dataset") {
            return readMeshType();
        }
        if (word == "metadata") {
            m_input.skipParagraph();
            return true;
        }
        if (word == "field") {
            return readField();
        }
        if (word == "point_data" || word == "cell_data") {
            m_isInData = true;
            m_mapping = word == "point_data" ? ug::PER_NODE : ug::PER_ELEMENT;
            return m_input.readCount(word == "point_data" ? "points" : "cells", &m_itemCount);
        }
        if (word == "points") {
            std::int64_t count = 0;
            return m_input.readCount("points", &count) && pass("points", m_input.word(), count, 3, &m_index.points);
        }
        if (const std::size_t list = indexIn(CELL_LISTS, word); list < LegacyIndex::LIST_COUNT) {
            return readCells(word, &m_index.cells[list]);
        }
        if (word == "cell_types") {
            std::int64_t count = 0;
            return m_input.readCount("cells", &count) && pass("cell types", "int", count, 1, &m_index.cellTypes);
        }
        if (word == "dimensions") {
            return readDimension(0) && readDimension(1) && readDimension(2);
        }
        if (word == "origin") {
            return m_input.readReals("the origin", m_index.origin);
        }
        if (word == "spacing" || word == "aspect_ratio") {
            return m_input.readReals("the " + word, m_index.spacing);
        }
        if (const std::size_t axis = std::string_view("xyz").find(word[0]);
            axis != std::string_view::npos && word.substr(1) == "_coordinates") {
            std::int64_t count = 0;
            return m_input.readCount("coordinates", &count) &&
                   pass("coordinates", m_input.word(), count, 1, &m_index.planes[axis]);
        }
        return readAttribute(word);
    }

    bool readMeshType() {
        const std::string word = m_input.word();
        const std::size_t type = indexIn(MESH_TYPES, word);
        if (m_hasMesh || type == std::size(MESH_TYPES)) {
            return m_input.failToFind("one mesh", word);
        }
        m_hasMesh = true;
        m_index.meshType = LegacyMeshType(type);
        return true;
    }

    bool readDimension(std::size_t axis) {
        constexpr std::int64_t LARGEST = std::numeric_limits<std::int32_t>::max();
        const std::string text = m_input.word();
        std::int64_t& dimension = m_index.dimensions[axis];
        return (readCaeInteger(text.data(), text.data() + text.size(), &dimension) && dimension >= 1 &&
                dimension <= LARGEST) ||
               m_input.failToFind("three numbers of nodes", text);
    }

    // Where the nodes of each cell begin, and the nodes; or the number of nodes in front of those of each.
    bool readCells(const std::string& word, LegacyCells* cells) {
        std::int64_t first = 0;
        std::int64_t second = 0;
        *cells = {};
        if (!m_input.readCount(word, &first) || !m_input.readCount("nodes of " + word, &second)) {
            return false;
        }
        cells->count = first;
        if (!m_hasOffsets) {
            return pass(word, "int", second, 1, &cells->nodes);
        }
        cells->count = std::max<std::int64_t>(first - 1, 0);
        return expect("OFFSETS", m_input.word()) &&
               pass("offsets", m_input.word(), first, 1, &cells->offsets.emplace()) &&
               expect("CONNECTIVITY", m_input.word()) && pass(word, m_input.word(), second, 1, &cells->nodes);
    }

    bool readAttribute(const std::string& word) {
        if (word == "lookup_table") {
            constexpr int COLOURS = 4;
            std::int64_t size = 0;
            LegacyValues unused;
            const std::string name = m_input.name();
            return m_input.readCount("colours", &size) && pass(name, colourType(), size, COLOURS, &unused);
        }
        const auto found = std::find_if(std::begin(ATTRIBUTES), std::end(ATTRIBUTES),
                                        [&](const Attribute& attribute) { return attribute.keyword == word; });
        const bool isSized = word == "texture_coordinates" || word == "color_scalars";
        if (found == std::end(ATTRIBUTES) && !isSized && word != "scalars") {
            return m_input.failToFind("the name of a section", word);
        }
        const std::string name = m_input.name();
        std::int64_t width = isSized || word == "scalars" ? 1 : found->width;
        if (isSized && !m_input.readCount("components", &width)) {
            return false;
        }
        const bool isColour = word == "color_scalars";
        const std::string type = isColour ? colourType() : m_input.word();
        return (word != "scalars" || readScalars(&width)) &&
               addArray(name, type, m_itemCount, width, isColour, word == "global_ids");
    }

    // What stands behind the type.
    bool readScalars(std::int64_t* width) {
        const std::string number = m_input.line();
        *width = number.empty() ? 1 : std::atoi(number.c_str());
        if (*width < 1 || *width > 4) {
            return m_input.failToFind("up to four components", number);
        }
        if (!expect("LOOKUP_TABLE", m_input.word())) {
            return false;
        }
        m_input.name();
        return true;
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
                !addArray(name, m_input.word(), count, width, false, false)) {
                return false;
            }
        }
        return true;
    }

    // Those in front of all data are about the file.
    bool addArray(const std::string& name, const std::string& type, std::int64_t count, std::int64_t width,
                  bool isColour, bool isGlobalIds) {
        LegacyArray array;
        if (!pass(name, type, count, width, &array.values)) {
            return false;
        }
        if (m_isInData) {
            constexpr std::int64_t MOST_COMPONENTS = std::numeric_limits<int>::max();
            const bool isText = array.values.type == LegacyType::TEXT;
            array.array = {decoded(name), m_mapping, isText ? 0 : int(std::min(width, MOST_COMPONENTS))};
            array.isColour = isColour && !m_index.isBinary;
            array.isGlobalIds = isGlobalIds;
            const bool isOfMesh = isGlobalIds || array.array.name == vtkDataSetAttributes::GhostArrayName();
            keep(std::move(array), isOfMesh ? &m_index.meshArrays : &m_index.arrays);
        }
        return true;
    }

    // Of arrays with one name the last one counts.
    static void keep(LegacyArray array, std::vector<LegacyArray>* arrays) {
        const auto same = std::find_if(arrays->begin(), arrays->end(), [&](const LegacyArray& other) {
            return other.array.name == array.array.name && other.array.mapping == array.array.mapping;
        });
        if (same == arrays->end()) {
            arrays->push_back(std::move(array));
        } else {
            *same = std::move(array);
        }
    }

    bool pass(const std::string& what, const std::string& type, std::int64_t count, std::int64_t width,
              LegacyValues* values) {
        // Both are below eight times the size of the file, so that this is the only product that may be too large.
        if (width > 0 && count > m_input.size() * 8 / width) {
            return m_input.fail("expected " + std::to_string(count) + " times " + std::to_string(width) +
                                " values of " + what + ", found a file of " + std::to_string(m_input.size()) +
                                " bytes");
        }
        return m_input.passValues(what, type, count * width, values);
    }

    bool expect(const std::string& keyword, const std::string& word) {
        const bool isThere = std::equal(keyword.begin(), keyword.end(), word.begin(), word.end(),
                                        [](char a, char b) { return internal::lower(a) == b; });
        return isThere || m_input.failToFind(keyword, word);
    }

    std::string colourType() const {
        return m_index.isBinary ? "unsigned_char" : "float";
    }

    bool checkGrid() {
        if (m_index.meshType == LegacyMeshType::UNSTRUCTURED_GRID || m_index.meshType == LegacyMeshType::POLYDATA) {
            return true;
        }
        std::int64_t count = 1;
        for (const std::int64_t dimension : m_index.dimensions) {
            count *= dimension;
            if (count > std::max(m_input.size(), MOST_UNLISTED_NODES)) {
                return m_input.fail("expected at most " + std::to_string(MOST_UNLISTED_NODES) +
                                    " nodes of a grid, found more");
            }
        }
        if (m_index.meshType == LegacyMeshType::STRUCTURED_GRID && m_index.points.count != 3 * count) {
            return m_input.fail("expected " + std::to_string(count) + " points, found " +
                                std::to_string(m_index.points.count / 3));
        }
        for (std::size_t axis = 0; axis < m_index.planes.size(); ++axis) {
            if (m_index.meshType == LegacyMeshType::RECTILINEAR_GRID &&
                m_index.planes[axis].count != m_index.dimensions[axis]) {
                return m_input.fail("expected as many coordinates as the dimensions tell, found others");
            }
        }
        return count > 0 || m_input.fail("expected a grid with nodes, found none");
    }

    LegacyIndex& m_index;
    ug::Error* m_error;
    LegacyInput m_input;
    bool m_hasMesh = false;
    bool m_hasOffsets = false;                  ///< Since version 5.
    bool m_isInData = false;                    ///< Behind POINT_DATA or CELL_DATA.
    ug::ResultMapping m_mapping = ug::PER_NODE; ///< Of the arrays that follow.
    std::int64_t m_itemCount = 0;               ///< The same.
};

// A number there may have been cut.
bool endsWithinLine(const CaeFile& file) {
    char last = 0;
    return file.read(file.size() - 1, &last, 1) == 1 && last != '\n' && last != '\r' && last != ' ';
}

} // namespace

bool indexLegacyFile(CaeFile* file, LegacyIndex* index, ug::Error* error) {
    if (!Indexer(file, index, error).run()) {
        return false;
    }
    index->endsWithinLine = !index->isBinary && endsWithinLine(*file);
    return true;
}

} // namespace orv::imp::cae
