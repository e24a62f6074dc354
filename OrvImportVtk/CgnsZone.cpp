#include "OrvImportVtk/CgnsZone.h"

#include "OrvImportVtk/CgnsArrays.h"
#include "OrvImportVtk/CgnsElements.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <set>
#include <string_view>
#include <utility>

namespace orv::imp::cae {
namespace {

constexpr std::size_t NAME_LENGTH = 32;
constexpr std::int64_t LARGEST_COUNT = 0x7fffffff; // VTK counts along the sides of structured zones in int.

bool isArray(const CgnsNode& node) {
    return node.label == "DataArray_t";
}

bool isFlowPointers(const std::string& name) {
    constexpr std::string_view BEGIN = "FlowSolution";
    constexpr std::string_view END = "Pointers";
    return name.starts_with(BEGIN) && name.ends_with(END);
}

/// The layers around what belongs to a zone.
using Rind = std::array<std::int64_t, 6>;

class ZoneReader {
public:
    ZoneReader(const CgnsTree& tree, const CgnsBase& base, const CgnsZoneRules& rules, CgnsZone* zone,
               CgnsLeftOut* leftOut)
        : m_tree(tree), m_base(base), m_rules(rules), m_zone(*zone), m_leftOut(leftOut) {}

    bool read(const CgnsNode& node, ug::Error* error) {
        m_zone.name = node.name;
        return m_tree.readChildren(node, &m_children, error) && readKind(error) && checkFamilies(error) &&
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

    // VTK forgets zones with names that begin a path and do not end it, and looks for them later.
    bool checkFamilies(ug::Error* error) {
        for (const CgnsNode& child : m_children) {
            if (child.label == "FamilyName_t" && !checkFamily(child, error)) {
                return false;
            }
            std::vector<CgnsNode> conditions;
            if (child.label == "ZoneBC_t" && !m_tree.readChildren(child, &conditions, error)) {
                return false;
            }
            for (const CgnsNode& condition : conditions) {
                std::vector<CgnsNode> parts;
                if (condition.label == "BC_t" && !m_tree.readChildren(condition, &parts, error)) {
                    return false;
                }
                if (!std::all_of(parts.begin(), parts.end(), [&](const CgnsNode& part) {
                        return part.label != "FamilyName_t" || checkFamily(part, error);
                    })) {
                    return false;
                }
            }
        }
        return true;
    }

    bool checkFamily(const CgnsNode& node, ug::Error* error) {
        std::string name;
        return m_tree.readText(node, &name, error) &&
               (!name.starts_with('/') || name.find('/', 1) != std::string::npos ||
                ug::fail(error, Str("'" + name + "' is no family")));
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
                m_grids.push_back(child.name);
                if (!readGrid(child, error)) {
                    return false;
                }
            }
        }
        return true;
    }

    bool readGrid(const CgnsNode& grid, ug::Error* error) {
        std::vector<CgnsNode> nodes;
        Rind rind = {};
        if (!m_tree.readChildren(grid, &nodes, error) || !readRind(nodes, &rind, error)) {
            return false;
        }
        int axes = 0;
        for (const CgnsNode& node : nodes) {
            if (!isArray(node)) {
                continue;
            }
            ++axes;
            if (std::string_view("XYZ").find(node.name.back()) == std::string_view::npos ||
                (node.type != "R4" && node.type != "R8")) {
                return ug::fail(error, Str("has coordinates '" + node.name + "', which VTK does not know"));
            }
            if (!checkSizes(node, m_zone.nodeCounts, rind, error)) {
                return false;
            }
        }
        return axes >= m_base.physicalDimension || ug::fail(error, Str("'" + grid.name + "' has not all coordinates"));
    }

    bool readRind(const std::vector<CgnsNode>& nodes, Rind* rind, ug::Error* error) {
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

    bool checkSizes(const CgnsNode& array, const std::vector<std::int64_t>& counts, const Rind& rind,
                    ug::Error* error) {
        bool isLarge = array.sizes.size() == counts.size();
        for (std::size_t d = 0; isLarge && d < counts.size(); ++d) {
            isLarge = array.sizes[d] >= rind[2 * d] + counts[d];
        }
        return isLarge || ug::fail(error, Str("has an array '" + array.name + "' of another size"));
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
        Rind rind = {};
        if (!m_tree.readChildren(node, &nodes, error) || !readRind(nodes, &rind, error) ||
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
            const auto& counts = solution->mapping == ug::PER_ELEMENT ? m_zone.cellCounts : m_zone.nodeCounts;
            if (solution->mapping && !checkSizes(array, counts, rind, error)) {
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
        m_zone.steps.resize(std::max<std::size_t>(m_base.times.size(), 1));
        for (CgnsZoneStep& step : m_zone.steps) {
            step.grid = m_grids.empty() ? "GridCoordinates" : m_grids[0];
        }
        const auto iterative = std::find_if(m_children.begin(), m_children.end(),
                                            [](const CgnsNode& child) { return child.label == "ZoneIterativeData_t"; });
        const bool hasPointers = iterative != m_children.end();
        std::vector<CgnsNode> nodes;
        if (hasPointers && !m_tree.readChildren(*iterative, &nodes, error)) {
            return false;
        }
        if (m_rules.haveGridPointers && !readGridPointers(nodes, error)) {
            return false;
        }
        for (const CgnsZoneStep& step : m_zone.steps) {
            if (step.hasGrid && std::find(m_grids.begin(), m_grids.end(), step.grid) == m_grids.end()) {
                return ug::fail(error, Str("has no coordinates '" + step.grid + "'"));
            }
        }
        if (m_rules.haveFlowPointers && hasPointers) {
            return readFlowPointers(nodes, error);
        }
        for (CgnsZoneStep& step : m_zone.steps) {
            step.solutions = firstSolutions();
        }
        tellOtherSolutions();
        return true;
    }

    bool readGridPointers(const std::vector<CgnsNode>& nodes, ug::Error* error) {
        for (const CgnsNode& node : nodes) {
            if (!isArray(node) || node.name != "GridCoordinatesPointers") {
                continue;
            }
            std::vector<std::string> names;
            if (!readPointers(node, &names, error)) {
                return false;
            }
            for (std::size_t s = 0; s < names.size(); ++s) {
                m_zone.steps[s].hasGrid = names[s] != "Null";
                m_zone.steps[s].grid = names[s].empty() ? m_zone.steps[s].grid : names[s];
            }
            break;
        }
        return true;
    }

    bool readFlowPointers(const std::vector<CgnsNode>& nodes, ug::Error* error) {
        std::vector<bool> isTold(m_zone.steps.size());
        for (const CgnsNode& node : nodes) {
            if (!isArray(node) || !isFlowPointers(node.name)) {
                continue;
            }
            std::vector<std::string> names;
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

    // A name that VTK would find something else by is an error; of one that nothing has it knows nothing.
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
        for (std::size_t s = 0; s < m_zone.steps.size(); ++s) {
            std::string name = text.substr(NAME_LENGTH * s, NAME_LENGTH).c_str();
            name.erase(name.find_last_not_of(" \t\n\v\f\r") + 1); // npos + 1 is 0.
            names->push_back(std::move(name));
        }
        return true;
    }

    // Where nothing tells which solutions belong to a time VTK takes the first one of nodes and the first one of cells.
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
    const CgnsZoneRules& m_rules;
    CgnsZone& m_zone;
    CgnsLeftOut* m_leftOut;
    std::vector<CgnsNode> m_children;
    std::vector<std::string> m_grids;
};

} // namespace

bool readCgnsZoneRules(const CgnsTree& tree, const CgnsNode& firstZone, CgnsZoneRules* rules, ug::Error* error) {
    std::vector<CgnsNode> children;
    if (!tree.readChildren(firstZone, &children, error)) {
        return false;
    }
    for (const CgnsNode& child : children) {
        std::vector<CgnsNode> nodes;
        if (child.label == "ZoneIterativeData_t" && !tree.readChildren(child, &nodes, error)) {
            return false;
        }
        for (const CgnsNode& node : nodes) {
            rules->haveGridPointers |= isArray(node) && node.name == "GridCoordinatesPointers";
            rules->haveFlowPointers |= isArray(node) && node.name == "FlowSolutionPointers";
        }
    }
    return true;
}

bool readCgnsZone(const CgnsTree& tree, const CgnsNode& node, const CgnsBase& base, const CgnsZoneRules& rules,
                  CgnsZone* zone, CgnsLeftOut* leftOut, ug::Error* error) {
    ug::Error reason;
    return ZoneReader(tree, base, rules, zone, leftOut).read(node, &reason) ||
           ug::fail(error, Str("zone '" + node.name + "': ") + reason.message());
}

} // namespace orv::imp::cae
