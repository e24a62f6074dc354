#include "OrvImportVtk/CgnsZone.h"

#include "OrvImportVtk/CgnsArrays.h"
#include "OrvImportVtk/CgnsElements.h"

#include <algorithm>
#include <cstddef>
#include <set>
#include <string_view>
#include <utility>

namespace orv::imp::cae {
namespace {

constexpr std::size_t NAME_LENGTH = 32;
constexpr std::int64_t LARGEST_COUNT = 0x7fffffff; // VTK counts along the sides of structured grids in int.

bool isArray(const CgnsNode& node) {
    return node.label == "DataArray_t";
}

bool isFlowPointers(const std::string& name) {
    constexpr std::string_view BEGIN = "FlowSolution";
    constexpr std::string_view END = "Pointers";
    return name.starts_with(BEGIN) && name.ends_with(END);
}

class ZoneReader {
public:
    ZoneReader(const CgnsTree& tree, const CgnsBase& base, CgnsZone* zone, CgnsLeftOut* leftOut)
        : m_tree(tree), m_base(base), m_zone(*zone), m_leftOut(leftOut) {}

    bool read(const CgnsNode& node, ug::Error* error) {
        m_zone.name = node.name;
        return m_tree.readChildren(node, &m_children, error) && readKind(error) &&
               (!m_zone.hasMesh || (readShape(node, error) && readGrids(error) && readSections(error) &&
                                    readSolutions(error) && readSteps(error)));
    }

private:
    bool readKind(ug::Error* error) {
        std::string kind = "Structured";
        for (const CgnsNode& child : m_children) {
            if (child.label == "ZoneType_t") {
                if (!m_tree.readText(child, &kind, error)) {
                    return false;
                }
                break;
            }
        }
        m_zone.isStructured = kind == "Structured";
        m_zone.hasMesh = m_zone.isStructured || kind == "Unstructured";
        if (!m_zone.hasMesh) {
            (*m_leftOut)["zones of unknown types"].push_back(m_zone.name);
        }
        return true;
    }

    // Counts of nodes, cells, and nodes of the boundary; each for each dimension.
    bool readShape(const CgnsNode& node, ug::Error* error) {
        std::vector<std::int64_t> counts;
        if (!m_tree.readIntegers(node, &counts, error)) {
            return false;
        }
        const auto dimension = std::size_t(m_zone.isStructured ? m_base.cellDimension : 1);
        if (counts.size() != 3 * dimension) {
            return ug::fail(error, "has no counts of its nodes and cells");
        }
        const auto middle = counts.begin() + std::ptrdiff_t(dimension);
        m_zone.nodeCounts.assign(counts.begin(), middle);
        m_zone.cellCounts.assign(middle, middle + std::ptrdiff_t(dimension));
        for (std::size_t d = 0; d < dimension; ++d) {
            const bool isGood =
                m_zone.isStructured ? m_zone.cellCounts[d] == m_zone.nodeCounts[d] - 1 : m_zone.cellCounts[d] > 0;
            if (m_zone.nodeCounts[d] < 1 || m_zone.nodeCounts[d] > LARGEST_COUNT || !isGood) {
                return ug::fail(error, "has counts of nodes and cells that cannot be");
            }
        }
        return true;
    }

    bool readGrids(ug::Error* error) {
        for (const CgnsNode& child : m_children) {
            if (child.label == "GridCoordinates_t") {
                m_zone.grids.emplace_back();
                if (!readGrid(child, &m_zone.grids.back(), error)) {
                    return false;
                }
            }
        }
        return true;
    }

    bool readGrid(const CgnsNode& node, CgnsGrid* grid, ug::Error* error) {
        grid->name = node.name;
        std::vector<CgnsNode> nodes;
        if (!m_tree.readChildren(node, &nodes, error) || !readRind(nodes, &grid->rind, error)) {
            return false;
        }
        int axes = 0;
        for (const CgnsNode& array : nodes) {
            if (!isArray(array)) {
                continue;
            }
            ++axes;
            const std::size_t axis = std::string_view("XYZ").find(array.name.back());
            if (axis == std::string_view::npos || (array.type != "R4" && array.type != "R8")) {
                return ug::fail(error, Str("has coordinates '" + array.name + "' that are not Cartesian reals"));
            }
            if (!checkCgnsValues(array, m_zone.nodeCounts, grid->rind, error)) {
                return false;
            }
            grid->axes[axis] = array.name;
        }
        return axes >= m_base.physicalDimension || ug::fail(error, Str("'" + grid->name + "' has not all coordinates"));
    }

    bool readRind(const std::vector<CgnsNode>& nodes, CgnsRind* rind, ug::Error* error) {
        for (const CgnsNode& node : nodes) {
            if (node.label != "Rind_t") {
                continue;
            }
            std::vector<std::int64_t> layers;
            if (!m_tree.readIntegers(node, &layers, error)) {
                return false;
            }
            if (layers.size() > rind->size() || std::any_of(layers.begin(), layers.end(), [](std::int64_t layer) {
                    return layer < 0 || layer > LARGEST_COUNT;
                })) {
                return ug::fail(error, "has layers around it that cannot be");
            }
            std::copy(layers.begin(), layers.end(), rind->begin());
        }
        return true;
    }

    bool readSections(ug::Error* error) {
        for (const CgnsNode& child : m_children) {
            if (m_zone.isStructured || child.label != "Elements_t") {
                continue;
            }
            CgnsSection section;
            if (!readCgnsSection(m_tree, child, &section, error)) {
                return false;
            }
            m_zone.sections.push_back(std::move(section));
        }
        return m_zone.isStructured || checkCgnsSections(m_zone, m_leftOut, error);
    }

    bool readSolutions(ug::Error* error) {
        for (const CgnsNode& child : m_children) {
            if (child.label == "FlowSolution_t") {
                m_zone.solutions.emplace_back();
                m_zone.solutions.back().name = child.name;
                if (!readSolution(child, &m_zone.solutions.back(), error)) {
                    return false;
                }
            }
        }
        return true;
    }

    bool readSolution(const CgnsNode& node, CgnsSolution* solution, ug::Error* error) {
        std::vector<CgnsNode> nodes;
        if (!m_tree.readChildren(node, &nodes, error) || !readRind(nodes, &solution->rind, error) ||
            !readMapping(nodes, solution, error)) {
            return false;
        }
        if (!solution->mapping) {
            (*m_leftOut)["solutions neither of nodes nor of cells"].push_back(m_zone.name + "/" + solution->name);
        }
        std::vector<CgnsArray> arrays;
        for (const CgnsNode& array : nodes) {
            if (!isArray(array)) {
                continue;
            }
            if (array.type != "R4" && array.type != "R8" && array.type != "I4" && array.type != "I8") {
                return ug::fail(error, Str("has an array '" + array.name + "' of the type '" + array.type + "'"));
            }
            const CgnsCounts& counts = solution->mapping == ug::PER_ELEMENT ? m_zone.cellCounts : m_zone.nodeCounts;
            if (solution->mapping && !checkCgnsValues(array, counts, solution->rind, error)) {
                return false;
            }
            arrays.push_back({array.name, array.type});
        }
        std::vector<std::string> lost;
        if (!joinCgnsArrays(arrays, solution->mapping.value_or(ug::PER_NODE), m_base.physicalDimension,
                            &solution->arrays, &lost, error)) {
            return false;
        }
        for (const std::string& array : lost) {
            (*m_leftOut)["components Z in two dimensions"].push_back(m_zone.name + "/" + solution->name + "/" + array);
        }
        return true;
    }

    bool readMapping(const std::vector<CgnsNode>& nodes, CgnsSolution* solution, ug::Error* error) {
        solution->mapping = ug::PER_NODE;
        for (const CgnsNode& node : nodes) {
            if (node.label == "GridLocation_t") {
                std::string location;
                if (!m_tree.readText(node, &location, error)) {
                    return false;
                }
                solution->mapping = location == "Vertex"       ? std::optional(ug::PER_NODE)
                                    : location == "CellCenter" ? std::optional(ug::PER_ELEMENT)
                                                               : std::nullopt;
            }
        }
        return true;
    }

    bool readSteps(ug::Error* error) {
        const std::optional<std::size_t> firstGrid =
            m_zone.grids.empty() ? std::nullopt : std::optional<std::size_t>(0);
        m_zone.steps.assign(std::max<std::size_t>(m_base.times.size(), 1), {firstGrid, {}});
        const auto iterative = std::find_if(m_children.begin(), m_children.end(),
                                            [](const CgnsNode& child) { return child.label == "ZoneIterativeData_t"; });
        std::vector<CgnsNode> nodes;
        if (iterative != m_children.end() && !m_tree.readChildren(*iterative, &nodes, error)) {
            return false;
        }
        std::erase_if(nodes, [](const CgnsNode& node) { return !isArray(node); });
        if (!readGridPointers(nodes, error)) {
            return false;
        }
        if (std::any_of(nodes.begin(), nodes.end(), [](const CgnsNode& node) { return isFlowPointers(node.name); })) {
            return readFlowPointers(nodes, error);
        }
        for (CgnsZoneStep& step : m_zone.steps) {
            step.solutions = firstSolutions();
        }
        tellOtherSolutions();
        return true;
    }

    bool readGridPointers(const std::vector<CgnsNode>& nodes, ug::Error* error) {
        std::vector<std::string> names(m_zone.steps.size());
        for (const CgnsNode& node : nodes) {
            if (node.name == "GridCoordinatesPointers" && !readPointers(node, &names, error)) {
                return false;
            }
        }
        for (std::size_t s = 0; s < names.size(); ++s) {
            std::optional<std::size_t>& grid = m_zone.steps[s].grid;
            const auto named = std::find_if(m_zone.grids.begin(), m_zone.grids.end(),
                                            [&](const CgnsGrid& known) { return known.name == names[s]; });
            if (names[s] == "Null") {
                grid.reset();
            } else if (named != m_zone.grids.end()) {
                grid = std::size_t(named - m_zone.grids.begin());
            } else if (!names[s].empty() || !grid) {
                return ug::fail(error,
                                Str("has no coordinates '" + (names[s].empty() ? "GridCoordinates" : names[s]) + "'"));
            }
        }
        return true;
    }

    bool readFlowPointers(const std::vector<CgnsNode>& nodes, ug::Error* error) {
        std::vector<bool> isTold(m_zone.steps.size());
        for (const CgnsNode& node : nodes) {
            std::vector<std::string> names;
            if (!isFlowPointers(node.name)) {
                continue;
            }
            if (!readPointers(node, &names, error)) {
                return false;
            }
            for (std::size_t s = 0; s < names.size(); ++s) {
                isTold[s] = isTold[s] || !(names[s].empty() || names[s] == "Null");
                if (!addSolution(names[s], &m_zone.steps[s], error)) {
                    return false;
                }
            }
        }
        for (std::size_t s = 0; s < isTold.size(); ++s) {
            if (isTold[s] && m_zone.steps[s].solutions.empty()) {
                m_zone.steps[s].solutions = firstSolutions();
            }
        }
        return true;
    }

    // The name of something else is an error; one that nothing has tells nothing.
    bool addSolution(const std::string& name, CgnsZoneStep* step, ug::Error* error) {
        for (std::size_t s = 0; s < m_zone.solutions.size(); ++s) {
            if (m_zone.solutions[s].name == name) {
                step->solutions.push_back(s);
                return true;
            }
        }
        const bool isOther = name.find('/') != std::string::npos ||
                             std::any_of(m_children.begin(), m_children.end(),
                                         [&](const CgnsNode& child) { return child.name == name; });
        return !isOther || ug::fail(error, Str("has solutions at '" + name + "', which is none"));
    }

    // Names of 32 characters, one for each step.
    bool readPointers(const CgnsNode& node, std::vector<std::string>* names, ug::Error* error) {
        std::string text;
        if (!m_tree.readText(node, &text, error)) {
            return false;
        }
        if (text.size() < NAME_LENGTH * m_zone.steps.size()) {
            return ug::fail(error, Str("'" + node.name + "' has no name for each time"));
        }
        names->clear();
        for (std::size_t s = 0; s < m_zone.steps.size(); ++s) {
            std::string name = text.substr(NAME_LENGTH * s, NAME_LENGTH).c_str();
            name.erase(name.find_last_not_of(" \t\n\v\f\r") + 1); // npos + 1 is 0.
            names->push_back(std::move(name));
        }
        return true;
    }

    // Where nothing tells which solutions belong to a time it is the first one of nodes and the first one of cells.
    std::vector<std::size_t> firstSolutions() const {
        std::set<std::optional<ug::ResultMapping>> mappings;
        std::vector<std::size_t> solutions;
        for (std::size_t s = 0; s < m_zone.solutions.size(); ++s) {
            if (mappings.insert(m_zone.solutions[s].mapping).second) {
                solutions.push_back(s);
            }
        }
        return solutions;
    }

    void tellOtherSolutions() {
        const std::vector<std::size_t> first = firstSolutions();
        for (std::size_t s = 0; s < m_zone.solutions.size(); ++s) {
            if (m_zone.solutions[s].mapping && std::find(first.begin(), first.end(), s) == first.end()) {
                (*m_leftOut)["solutions at no time"].push_back(m_zone.name + "/" + m_zone.solutions[s].name);
            }
        }
    }

    const CgnsTree& m_tree;
    const CgnsBase& m_base;
    CgnsZone& m_zone;
    CgnsLeftOut* m_leftOut;
    std::vector<CgnsNode> m_children;
};

} // namespace

bool readCgnsZone(const CgnsTree& tree, const CgnsNode& node, const CgnsBase& base, CgnsZone* zone,
                  CgnsLeftOut* leftOut, ug::Error* error) {
    ug::Error reason;
    return ZoneReader(tree, base, zone, leftOut).read(node, &reason) ||
           ug::fail(error, Str("zone '" + node.name + "': ") + reason.message());
}

} // namespace orv::imp::cae
