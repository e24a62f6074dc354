#include "OrvImportMed/MedMesh.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <map>

namespace orv::imp::cae {
namespace {

constexpr std::uint32_t NO_NODE = std::numeric_limits<std::uint32_t>::max();
constexpr std::size_t MOST_CONNECTED = std::numeric_limits<std::uint32_t>::max();

/// Cells that cannot become elements, but are counted.
constexpr std::pair<int, const char*> LEFT_OUT_CELLS[] = {
    {MED_SEG4, "SE4"}, {MED_OCTA12, "O12"}, {MED_POLYGON, "POG"}, {MED_POLYGON2, "PO2"}, {MED_POLYHEDRON, "POE"},
};

/// All cells of one type in a mesh, as the file has them.
struct CellBlock {
    const MedCell* cell;
    std::vector<med_int> nodes; ///< From 1, MED_FULL_INTERLACE.
    std::vector<med_int> families;
    std::vector<med_int> numbers;
    std::size_t firstNumber; ///< That of the first one where cells have no numbers of their own.

    std::size_t count() const {
        return nodes.size() / cell->nodeCount();
    }

    med_int family(std::size_t index) const {
        return families.empty() ? 0 : families[index];
    }
};

/// The parts' elements, before they have nodes of their own.
struct PartPlan {
    std::string name;
    std::vector<std::pair<const CellBlock*, std::vector<std::uint32_t>>> runs;
};

/// Those of a part.
struct Elements {
    std::vector<ug::ElementType> types;
    std::vector<std::uint32_t> connectivity;
    std::vector<int> ids;
};

/// Reads one mesh.
class MeshReader {
public:
    MeshReader(const MedFile& file, const std::string& name, std::size_t dimension)
        : m_file(file), m_name(name), m_dimension(dimension) {}

    bool read(ug::Error* error) {
        med_float time = 0;
        if (MEDmeshComputationStepInfo(m_file.id(), m_name.c_str(), 1, &m_number, &m_iteration, &time) < 0) {
            return fail(error, "it has no computation step");
        }
        m_path = "/ENS_MAA/" + m_name + "/" + medStepPath(m_number, m_iteration);
        return readNodes(error) && readCells(error) && readFamilies(error);
    }

    MedMesh describe() const {
        MedMesh mesh{m_name, nodeCount(), {}};
        for (const CellBlock& block : m_blocks) {
            mesh.cells.emplace_back(block.cell, block.count());
        }
        return mesh;
    }

    // The parts in the order of their families: no group first, then as the numbers go down, which is how programs
    // count the families of cells.
    std::vector<PartPlan> planParts() const {
        std::map<med_int, std::size_t, std::greater<>> families;
        for (const CellBlock& block : m_blocks) {
            for (std::size_t i = 0; i < block.count(); ++i) {
                if (i == 0 || block.family(i) != block.family(i - 1)) {
                    families.try_emplace(block.family(i), 0);
                }
            }
        }
        std::vector<PartPlan> plans(1);
        std::map<std::string, std::size_t> byName = {{"", 0}};
        for (auto& [family, plan] : families) {
            const auto found = m_familyNames.find(family);
            const std::string name = found == m_familyNames.end() ? "" : found->second;
            const auto [known, isNew] = byName.emplace(name, plans.size());
            plan = known->second;
            if (isNew) {
                plans.push_back({name, {}});
            }
        }
        for (const CellBlock& block : m_blocks) {
            share(block, families, &plans);
        }
        std::erase_if(plans, [](const PartPlan& plan) { return plan.runs.empty(); });
        return plans;
    }

    bool fillPart(const PartPlan& plan, ug::DataPart* part, MedPart* places, ug::Error* error) {
        Elements elements;
        for (const auto& [block, indexes] : plan.runs) {
            const std::size_t used = ug::elementTypeInfo(block->cell->elementType).nodeCount;
            if (elements.connectivity.size() + used * indexes.size() > MOST_CONNECTED) {
                return fail(error, "the elements of a part have more than 4294967295 nodes in all");
            }
            addElements(*block, indexes, used, &elements, places);
        }
        setNodes(*places, part->nodes());
        part->elements()->set(std::move(elements.types), std::move(elements.connectivity), std::move(elements.ids));
        for (const std::uint32_t node : places->nodes) {
            m_nodeInPart[node] = NO_NODE;
        }
        return true;
    }

    void addWarnings(std::vector<std::string>* warnings) const {
        for (const auto& [type, name] : LEFT_OUT_CELLS) {
            const med_data_type what = type == MED_POLYGON || type == MED_POLYGON2 ? MED_INDEX_NODE
                                       : type == MED_POLYHEDRON                    ? MED_INDEX_FACE
                                                                                   : MED_CONNECTIVITY;
            const med_int found = countOf(type, what);
            const med_int count = what == MED_CONNECTIVITY ? found : found - 1; // An index has one end more.
            if (count > 0) {
                warnings->push_back(place() + ": cells of the type " + name +
                                    " are left out: " + std::to_string(count));
            }
        }
        const auto unused = std::count(m_isUsed.begin(), m_isUsed.end(), false);
        if (unused > 0) {
            warnings->push_back(place() + ": nodes that are no corner and on no edge of an element are left out: " +
                                std::to_string(unused));
        }
    }

private:
    std::size_t nodeCount() const {
        return m_isUsed.size();
    }

    std::string place() const {
        return m_file.name() + ": mesh '" + m_name + "'";
    }

    bool fail(ug::Error* error, const std::string& what) const {
        return m_file.fail(error, "mesh '" + m_name + "'", what);
    }

    med_int countOf(int type, med_data_type what) const {
        med_bool unused[2] = {};
        const bool isNode = type == MED_NONE;
        return MEDmeshnEntity(m_file.id(), m_name.c_str(), m_number, m_iteration, isNode ? MED_NODE : MED_CELL, type,
                              what, isNode ? MED_NO_CMODE : MED_NODAL, &unused[0], &unused[1]);
    }

    bool readNodes(ug::Error* error) {
        const med_int count = countOf(MED_NONE, MED_COORDINATE);
        if (!m_file.fits(count, m_dimension * sizeof(med_float)) ||
            !m_file.hasExtent(m_path + "/NOE/COO", std::size_t(count) * m_dimension)) {
            return fail(error, "its coordinates are not " + std::to_string(m_dimension) + " for each of " +
                                   std::to_string(count) + " nodes");
        }
        std::vector<double> columns(std::size_t(count) * m_dimension);
        if (count > 0 && MEDmeshNodeCoordinateRd(m_file.id(), m_name.c_str(), m_number, m_iteration, MED_NO_INTERLACE,
                                                 columns.data()) < 0) {
            return fail(error, "its coordinates cannot be read");
        }
        m_isUsed.assign(std::size_t(count), false);
        m_nodeInPart.assign(std::size_t(count), NO_NODE);
        m_coordinates.assign(3 * std::size_t(count), 0.0);
        for (std::size_t k = 0; k < m_dimension; ++k) {
            for (std::size_t i = 0; i < std::size_t(count); ++i) {
                m_coordinates[3 * i + k] = columns[k * std::size_t(count) + i];
            }
        }
        return readNumbers(MED_NODE, MED_NONE, "/NOE", std::size_t(count), &m_nodeNumbers, error);
    }

    // The numbers that the nodes or the cells of a type have; none when they have none.
    bool readNumbers(med_entity_type entity, int type, const std::string& group, std::size_t count,
                     std::vector<med_int>* numbers, ug::Error* error) const {
        if (count == 0 || countOf(type, MED_NUMBER) <= 0) {
            return true;
        }
        if (!m_file.hasExtent(m_path + group + "/NUM", count)) {
            return fail(error,
                        "the numbers in " + group.substr(1) + " are not one for each of " + std::to_string(count));
        }
        numbers->resize(count);
        return MEDmeshEntityNumberRd(m_file.id(), m_name.c_str(), m_number, m_iteration, entity, type,
                                     numbers->data()) >= 0 ||
               fail(error, "the numbers in " + group.substr(1) + " cannot be read");
    }

    bool readCells(ug::Error* error) {
        std::size_t firstNumber = 1;
        for (const MedCell& cell : medCells()) {
            const med_int count = countOf(cell.type, MED_CONNECTIVITY);
            if (count == 0) {
                continue;
            }
            m_blocks.push_back({&cell, {}, {}, {}, firstNumber});
            if (!readBlock(count, &m_blocks.back(), error)) {
                return false;
            }
            firstNumber += std::size_t(count);
        }
        return true;
    }

    bool readBlock(med_int count, CellBlock* block, ug::Error* error) {
        const MedCell& cell = *block->cell;
        const std::string group = std::string("/MAI/") + cell.name;
        if (!m_file.fits(count, cell.nodeCount() * sizeof(med_int)) ||
            !m_file.hasExtent(m_path + group + "/NOD", std::size_t(count) * cell.nodeCount())) {
            return fail(error, "the nodes of its cells " + std::string(cell.name) + " are not " +
                                   std::to_string(cell.nodeCount()) + " for each of " + std::to_string(count));
        }
        std::vector<med_int> columns(std::size_t(count) * cell.nodeCount());
        if (MEDmeshElementConnectivityRd(m_file.id(), m_name.c_str(), m_number, m_iteration, MED_CELL, cell.type,
                                         MED_NODAL, MED_NO_INTERLACE, columns.data()) < 0) {
            return fail(error, "the nodes of its cells " + std::string(cell.name) + " cannot be read");
        }
        block->nodes.resize(columns.size());
        for (std::size_t i = 0; i < std::size_t(count); ++i) {
            for (std::size_t k = 0; k < cell.nodeCount(); ++k) {
                block->nodes[i * cell.nodeCount() + k] = columns[k * std::size_t(count) + i];
            }
        }
        return checkNodes(*block, error) && readFamilyNumbers(group, block, error) &&
               readNumbers(MED_CELL, cell.type, group, std::size_t(count), &block->numbers, error);
    }

    bool checkNodes(const CellBlock& block, ug::Error* error) {
        for (std::size_t i = 0; i < block.nodes.size(); ++i) {
            const med_int node = block.nodes[i];
            if (node < 1 || std::size_t(node) > nodeCount()) {
                return fail(error, "cell " + std::to_string(i / block.cell->nodeCount() + 1) + " of the type " +
                                       block.cell->name + " has the node " + std::to_string(node) + ", expected 1 to " +
                                       std::to_string(nodeCount()));
            }
        }
        return true;
    }

    bool readFamilyNumbers(const std::string& group, CellBlock* block, ug::Error* error) const {
        if (countOf(block->cell->type, MED_FAMILY_NUMBER) <= 0) {
            return true;
        }
        if (!m_file.hasExtent(m_path + group + "/FAM", block->count())) {
            return fail(error, "the families in " + group.substr(1) + " are not one for each of " +
                                   std::to_string(block->count()) + " cells");
        }
        block->families.resize(block->count());
        return MEDmeshEntityFamilyNumberRd(m_file.id(), m_name.c_str(), m_number, m_iteration, MED_CELL,
                                           block->cell->type, block->families.data()) >= 0 ||
               fail(error, "the families in " + group.substr(1) + " cannot be read");
    }

    bool readFamilies(ug::Error* error) {
        const med_int count = MEDnFamily(m_file.id(), m_name.c_str());
        const std::size_t mostNames = count > 0 ? mostGroupNames() : 0;
        for (int i = 1; i <= count; ++i) {
            if (!readFamily(i, mostNames, error)) {
                return false;
            }
        }
        return true;
    }

    bool readFamily(int index, std::size_t mostNames, ug::Error* error) {
        const med_int groupCount = MEDnFamilyGroup(m_file.id(), m_name.c_str(), index);
        if (!m_file.fits(groupCount, MED_LNAME_SIZE) || std::size_t(groupCount) > mostNames) {
            return fail(error, "family " + std::to_string(index) + " says that it has " + std::to_string(groupCount) +
                                   " groups, expected at most " + std::to_string(mostNames));
        }
        MedText name(MED_NAME_SIZE);
        MedText groups(MED_LNAME_SIZE, std::max(std::size_t(groupCount), mostNames));
        med_int number = 0;
        if (MEDfamilyInfo(m_file.id(), m_name.c_str(), index, name, &number, groups) < 0) {
            return fail(error, "family " + std::to_string(index) + " cannot be read");
        }
        std::string joined;
        for (std::size_t i = 0; i < std::size_t(groupCount); ++i) {
            joined += (i == 0 ? "" : ", ") + groups.text(i);
        }
        m_familyNames[number] = joined;
        return true;
    }

    // The most groups that any family has names for, which libmedc may write all. Which family it means by a number is
    // its own affair.
    std::size_t mostGroupNames() const {
        std::size_t most = 0;
        for (const char* kind : {"/ELEME", "/NOEUD"}) {
            const std::string root = "/FAS/" + m_name + kind;
            for (const std::string& family : m_file.names(root)) {
                most = std::max(most, m_file.extent(root + "/" + family + "/GRO/NOM").value_or(0));
            }
        }
        return most;
    }

    static void share(const CellBlock& block, const std::map<med_int, std::size_t, std::greater<>>& families,
                      std::vector<PartPlan>* plans) {
        PartPlan* plan = nullptr;
        for (std::size_t i = 0; i < block.count(); ++i) {
            if (i == 0 || block.family(i) != block.family(i - 1)) {
                plan = &(*plans)[families.at(block.family(i))];
                if (plan->runs.empty() || plan->runs.back().first != &block) {
                    plan->runs.push_back({&block, {}});
                }
            }
            plan->runs.back().second.push_back(std::uint32_t(i));
        }
    }

    void addElements(const CellBlock& block, const std::vector<std::uint32_t>& indexes, std::size_t used,
                     Elements* elements, MedPart* places) {
        const MedCell& cell = *block.cell;
        std::size_t end = elements->connectivity.size();
        elements->connectivity.resize(end + used * indexes.size());
        elements->types.insert(elements->types.end(), indexes.size(), cell.elementType);
        for (const std::uint32_t index : indexes) {
            const med_int* nodes = block.nodes.data() + index * cell.nodeCount();
            const std::uint8_t* order = medNodeOrder(cell, m_coordinates.data(), nodes);
            for (std::size_t i = 0; i < used; ++i) {
                elements->connectivity[end++] = nodeInPart(std::uint32_t(nodes[order[i]] - 1), places);
            }
            elements->ids.push_back(block.numbers.empty() ? int(block.firstNumber + index) : block.numbers[index]);
            addToRun(cell, order, index, &places->runs);
        }
    }

    static void addToRun(const MedCell& cell, const std::uint8_t* order, std::uint32_t element,
                         std::vector<MedRun>* runs) {
        if (runs->empty() || runs->back().cell != &cell || runs->back().order != order) {
            runs->push_back({&cell, order, {}});
        }
        runs->back().elements.push_back(element);
    }

    std::uint32_t nodeInPart(std::uint32_t node, MedPart* places) {
        if (m_nodeInPart[node] == NO_NODE) {
            m_nodeInPart[node] = std::uint32_t(places->nodes.size());
            m_isUsed[node] = true;
            places->nodes.push_back(node);
        }
        return m_nodeInPart[node];
    }

    void setNodes(const MedPart& places, ug::DataNodes* nodes) const {
        std::vector<double> coordinates(places.nodes.size() * 3);
        std::vector<int> ids(places.nodes.size());
        for (std::size_t i = 0; i < places.nodes.size(); ++i) {
            const std::size_t node = places.nodes[i];
            std::copy_n(&m_coordinates[3 * node], 3, &coordinates[3 * i]);
            ids[i] = m_nodeNumbers.empty() ? int(node + 1) : m_nodeNumbers[node];
        }
        nodes->set(std::move(coordinates), std::move(ids));
    }

    const MedFile& m_file;
    std::string m_name;
    std::size_t m_dimension;
    med_int m_number = MED_NO_DT;
    med_int m_iteration = MED_NO_IT;
    std::string m_path;
    std::vector<double> m_coordinates; ///< x, y and z of each node.
    std::vector<med_int> m_nodeNumbers;
    std::vector<CellBlock> m_blocks;
    std::map<med_int, std::string> m_familyNames; ///< The groups of each.
    std::vector<std::uint32_t> m_nodeInPart;      ///< While a part is filled.
    std::vector<bool> m_isUsed;
};

struct MeshHead {
    std::string name;
    std::size_t dimension = 0;
    std::string obstacle; ///< Why it cannot be read.
};

MeshHead readHead(const MedFile& file, int index) {
    MeshHead head{"number " + std::to_string(index), 0, "what it is cannot be read"};
    const med_int axisCount = MEDmeshnAxis(file.id(), index);
    if (axisCount < 0 || axisCount > 3) {
        return head;
    }
    MedText name(MED_NAME_SIZE);
    MedText description(MED_COMMENT_SIZE);
    MedText timeUnit(MED_SNAME_SIZE);
    MedText axisNames(MED_SNAME_SIZE, 3);
    MedText axisUnits(MED_SNAME_SIZE, 3);
    med_int spaceDimension = 0;
    med_int meshDimension = 0;
    med_int stepCount = 0;
    MedChoice<med_mesh_type> type;
    MedChoice<med_sorting_type> sorting;
    MedChoice<med_axis_type> axes;
    if (MEDmeshInfo(file.id(), index, name, &spaceDimension, &meshDimension, type, description, timeUnit, sorting,
                    &stepCount, axes, axisNames, axisUnits) < 0) {
        return head;
    }
    head = {name.text(), std::size_t(spaceDimension), ""};
    if (spaceDimension < 1 || spaceDimension > 3) {
        head.obstacle = "it has " + std::to_string(spaceDimension) + " axes, expected 1 to 3";
    } else if (type != MED_UNSTRUCTURED_MESH) {
        head.obstacle = "it is a structured mesh";
    } else if (axes != MED_CARTESIAN) {
        head.obstacle = "its axes are not Cartesian";
    } else if (stepCount < 1) {
        head.obstacle = "it has no computation step";
    }
    return head;
}

} // namespace

std::size_t MedMesh::cellCount(int type) const {
    const auto found =
        std::find_if(cells.begin(), cells.end(), [type](const auto& c) { return c.first->type == type; });
    return found == cells.end() ? 0 : found->second;
}

bool readMedMeshes(const MedFile& file, MedMeshes* meshes, ug::DataGeometry* geometry,
                   std::vector<std::string>* warnings, ug::Error* error) {
    const med_int count = MEDnMesh(file.id());
    for (int i = 1; i <= count; ++i) {
        const MeshHead head = readHead(file, i);
        if (!head.obstacle.empty()) {
            warnings->push_back(file.name() + ": mesh '" + head.name + "' is left out: " + head.obstacle);
            continue;
        }
        MeshReader reader(file, head.name, head.dimension);
        if (!reader.read(error)) {
            return false;
        }
        for (const PartPlan& plan : reader.planParts()) {
            MedPart places{meshes->meshes.size(), {}, {}};
            const int id = int(meshes->infos.size()) + 1;
            if (!reader.fillPart(plan, geometry->addPart(id), &places, error)) {
                return false;
            }
            const std::string prefix = count > 1 ? head.name + ": " : "";
            meshes->infos.emplace_back(id, Str(plan.name.empty() ? head.name : prefix + plan.name));
            meshes->parts.push_back(std::move(places));
        }
        reader.addWarnings(warnings);
        meshes->meshes.push_back(reader.describe());
    }
    if (meshes->infos.empty()) {
        return file.fail(error, "meshes",
                         "expected one that is unstructured and has cells" +
                             (warnings->empty() ? std::string() : " (" + warnings->front() + ")"));
    }
    return true;
}

} // namespace orv::imp::cae
