#include "OrvImportCae/FrdMesh.h"

#include "OrvImportCae/FrdMeshRows.h"

#include <algorithm>
#include <limits>
#include <map>
#include <set>
#include <tuple>
#include <utility>

namespace orv::imp::cae {
namespace {

using PartKey = std::pair<int, int>; // Group and material.

/// The elements in the order of the file.
struct Elements {
    std::vector<ug::ElementType> types;
    std::vector<int> ids;
    std::vector<std::uint32_t> connectivity; // The nodes' indexes in the file, in our local order.
    std::vector<std::uint32_t> keys;         // Into `partKeys`.
    std::vector<PartKey> partKeys;           // In the order of appearance.
    std::map<int, std::string> materials;    // The names of those that the elements themselves name.
};

bool readNodes(const FrdFile& file, const FrdRows& rows, std::vector<int>* ids, std::vector<double>* coordinates,
               ug::Error* error) {
    ids->reserve(std::size_t(rows.count));
    coordinates->reserve(3 * std::size_t(rows.count));
    FrdNodeRows reader(file, rows);
    FrdNodeRow row;
    while (reader.next(&row, error)) {
        ids->push_back(row.id);
        coordinates->insert(coordinates->end(), row.coordinates, row.coordinates + 3);
    }
    return !reader.hasFailed();
}

/// Finds nodes for elements, whose nodes' numbers mostly lie as far apart as their places.
class NodeFinder {
public:
    explicit NodeFinder(const FrdNodeIds& ids) : m_ids(ids) {}

    std::uint32_t find(int id) {
        const std::int64_t guess = std::int64_t(m_lastIndex) + id - m_lastId;
        const bool isIndex = guess >= 0 && guess < std::int64_t(FrdNodeIds::NONE);
        const std::uint32_t index = m_ids.find(id, isIndex ? std::uint32_t(guess) : FrdNodeIds::NONE);
        if (index != FrdNodeIds::NONE) {
            m_lastIndex = index;
            m_lastId = id;
        }
        return index;
    }

private:
    const FrdNodeIds& m_ids;
    std::uint32_t m_lastIndex = 0;
    std::int64_t m_lastId = 0;
};

/// Gathers the elements of a file.
class ElementGatherer {
public:
    ElementGatherer(const FrdFile& file, const FrdRows& rows, const FrdNodeIds& nodeIds)
        : m_file(file), m_rows(rows), m_finder(nodeIds) {}

    bool run(Elements* elements, ug::Error* error) {
        FrdElementRows reader(m_file, m_rows);
        FrdElementRow row;
        while (reader.next(&row, error)) {
            if (!row.type) {
                noteUnknown(row);
            } else if (!add(row, elements, error)) {
                return false;
            }
        }
        return !reader.hasFailed();
    }

    std::vector<std::string> warnings() const {
        std::vector<std::string> texts;
        for (const auto& [type, unknown] : m_unknown) {
            const std::string count = unknown.count == 1 ? "an element" : std::to_string(unknown.count) + " elements";
            texts.push_back(m_file.place(unknown.firstOffset) + ": " + count + " of the unknown type " +
                            std::to_string(type) + " left out" + (unknown.count == 1 ? "" : ", the first one here"));
        }
        return texts;
    }

private:
    struct Unknown {
        std::size_t count = 0;
        std::int64_t firstOffset = 0;
    };

    bool add(const FrdElementRow& row, Elements* elements, ug::Error* error) {
        const std::size_t nodeCount = row.type->nodeCount;
        if (elements->ids.empty()) {
            const std::size_t count = std::size_t(m_rows.count);
            elements->types.reserve(count);
            elements->ids.reserve(count);
            elements->keys.reserve(count);
            elements->connectivity.reserve(count * nodeCount);
        }
        for (std::size_t i = 0; i < nodeCount; ++i) {
            const int id = row.nodes[row.type->order[i]];
            const std::uint32_t index = m_finder.find(id);
            if (index == FrdNodeIds::NONE) {
                return m_file.fail(row.offset,
                                   "element " + std::to_string(row.id) + " names node " + std::to_string(id) +
                                       ", which the file does not have",
                                   error);
            }
            elements->connectivity.push_back(index);
        }
        if (elements->connectivity.size() > std::numeric_limits<std::uint32_t>::max()) {
            return m_file.fail(row.offset, "the elements have too many nodes", error);
        }
        elements->types.push_back(row.type->type);
        elements->ids.push_back(row.id);
        elements->keys.push_back(keyNumber({row.group, materialNumber(row, elements)}, elements));
        return true;
    }

    // Named materials get numbers beyond those that the column could hold.
    int materialNumber(const FrdElementRow& row, Elements* elements) {
        constexpr int FIRST_NAMED = 100000;
        if (row.materialName[0] == '\0') {
            return row.material;
        }
        const auto [found, isNew] =
            m_materialNumbers.try_emplace(row.materialName, FIRST_NAMED + int(m_materialNumbers.size()));
        if (isNew) {
            elements->materials[found->second] = row.materialName;
        }
        return found->second;
    }

    std::uint32_t keyNumber(const PartKey& key, Elements* elements) {
        if (!elements->keys.empty() && elements->partKeys[elements->keys.back()] == key) {
            return elements->keys.back();
        }
        const auto [found, isNew] = m_keyNumbers.try_emplace(key, std::uint32_t(elements->partKeys.size()));
        if (isNew) {
            elements->partKeys.push_back(key);
        }
        return found->second;
    }

    void noteUnknown(const FrdElementRow& row) {
        Unknown& unknown = m_unknown[row.typeNumber];
        if (unknown.count++ == 0) {
            unknown.firstOffset = row.offset;
        }
    }

    const FrdFile& m_file;
    const FrdRows& m_rows;
    NodeFinder m_finder;
    std::map<PartKey, std::uint32_t> m_keyNumbers;
    std::map<std::string, int> m_materialNumbers;
    std::map<std::int64_t, Unknown> m_unknown;
};

// Walks the block once more, to tell people where a number stands for the second time.
template <class Reader, class Row>
bool failForDuplicate(const FrdFile& file, const FrdRows& rows, const std::string& what, int id, ug::Error* error) {
    Reader reader(file, rows);
    Row row;
    int seen = 0;
    while (seen < 2 && reader.next(&row, nullptr)) {
        seen += row.id == id;
    }
    return file.fail(row.offset, what + " " + std::to_string(id) + " stands here for the second time", error);
}

/// Makes the parts out of the elements.
class PartBuilder {
public:
    PartBuilder(const FrdNodeIds& nodeIds, std::vector<double> coordinates, Elements elements)
        : m_nodeIds(nodeIds), m_coordinates(std::move(coordinates)), m_elements(std::move(elements)),
          m_indexInPart(nodeIds.ids().size(), FrdNodeIds::NONE) {}

    void run(const std::vector<std::pair<int, std::string>>& materials, FrdMesh* mesh) {
        mesh->geometry = new ug::DataGeometry();
        const std::vector<std::uint32_t> keyOrder = keysByNumber();
        sortElements(keyOrder);
        for (std::size_t i = 0; i < keyOrder.size(); ++i) {
            buildPart(i, mesh->geometry->addPart(int(i) + 1));
        }
        mesh->places = FrdNodePlaces(m_nodeIds.ids().size(), m_partNodes);
        namePart(keyOrder, materials, &mesh->parts);
    }

private:
    std::vector<std::uint32_t> keysByNumber() const {
        std::vector<std::uint32_t> order(m_elements.partKeys.size());
        for (std::size_t i = 0; i < order.size(); ++i) {
            order[i] = std::uint32_t(i);
        }
        std::sort(order.begin(), order.end(),
                  [this](std::uint32_t a, std::uint32_t b) { return m_elements.partKeys[a] < m_elements.partKeys[b]; });
        return order;
    }

    // Brings the elements of each part together, in the order of the file. One part's are together already.
    void sortElements(const std::vector<std::uint32_t>& keyOrder) {
        m_partBegins.assign(keyOrder.size() + 1, 0);
        if (keyOrder.size() < 2) {
            m_partBegins.back() = m_elements.types.size();
            return;
        }
        std::vector<std::uint32_t> partOfKey(keyOrder.size());
        for (std::size_t i = 0; i < keyOrder.size(); ++i) {
            partOfKey[keyOrder[i]] = std::uint32_t(i);
        }
        for (std::uint32_t& key : m_elements.keys) {
            key = partOfKey[key];
            ++m_partBegins[key + 1];
        }
        for (std::size_t i = 1; i < m_partBegins.size(); ++i) {
            m_partBegins[i] += m_partBegins[i - 1];
        }
        std::vector<std::size_t> ends(m_partBegins.begin(), m_partBegins.end() - 1);
        m_elementOrder.resize(m_elements.types.size());
        m_nodeBegins.resize(m_elements.types.size());
        std::uint32_t nodeBegin = 0;
        for (std::size_t i = 0; i < m_elements.types.size(); ++i) {
            m_elementOrder[ends[m_elements.keys[i]]++] = std::uint32_t(i);
            m_nodeBegins[i] = nodeBegin;
            nodeBegin += ug::elementTypeInfo(m_elements.types[i]).nodeCount;
        }
    }

    void buildPart(std::size_t partIndex, ug::DataPart* part) {
        std::vector<ug::ElementType> types;
        std::vector<int> ids;
        std::vector<std::uint32_t> connectivity;
        takeElements(partIndex, &types, &ids, &connectivity);
        std::vector<std::uint32_t> nodes = usedNodes(connectivity);
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            m_indexInPart[nodes[i]] = std::uint32_t(i);
        }
        for (std::uint32_t& node : connectivity) {
            node = m_indexInPart[node];
        }
        for (const std::uint32_t node : nodes) {
            m_indexInPart[node] = FrdNodeIds::NONE;
        }
        part->elements()->set(std::move(types), std::move(connectivity), std::move(ids));
        setNodes(nodes, part->nodes());
        m_partNodes.push_back(std::move(nodes));
    }

    void takeElements(std::size_t partIndex, std::vector<ug::ElementType>* types, std::vector<int>* ids,
                      std::vector<std::uint32_t>* connectivity) {
        if (m_elementOrder.empty()) {
            *types = std::move(m_elements.types);
            *ids = std::move(m_elements.ids);
            *connectivity = std::move(m_elements.connectivity);
            return;
        }
        const std::size_t begin = m_partBegins[partIndex];
        const std::size_t end = m_partBegins[partIndex + 1];
        types->reserve(end - begin);
        ids->reserve(end - begin);
        std::size_t nodeCount = 0;
        for (std::size_t i = begin; i < end; ++i) {
            types->push_back(m_elements.types[m_elementOrder[i]]);
            ids->push_back(m_elements.ids[m_elementOrder[i]]);
            nodeCount += ug::elementTypeInfo(types->back()).nodeCount;
        }
        connectivity->reserve(nodeCount);
        for (std::size_t i = begin; i < end; ++i) {
            const auto nodes = m_elements.connectivity.begin() + m_nodeBegins[m_elementOrder[i]];
            connectivity->insert(connectivity->end(), nodes,
                                 nodes + ug::elementTypeInfo((*types)[i - begin]).nodeCount);
        }
    }

    // By ascending number. Uses m_indexInPart as the mark of nodes seen, and leaves it so.
    std::vector<std::uint32_t> usedNodes(const std::vector<std::uint32_t>& connectivity) {
        std::vector<std::uint32_t> nodes;
        for (const std::uint32_t node : connectivity) {
            if (m_indexInPart[node] == FrdNodeIds::NONE) {
                m_indexInPart[node] = 0;
                nodes.push_back(node);
            }
        }
        const std::span<const int> ids = m_nodeIds.ids();
        if (m_nodeIds.isAscending() && nodes.size() > ids.size() / 8) {
            // Most nodes: going through all of them is quicker than sorting.
            nodes.clear();
            for (std::size_t i = 0; i < ids.size(); ++i) {
                if (m_indexInPart[i] != FrdNodeIds::NONE) {
                    nodes.push_back(std::uint32_t(i));
                }
            }
            return nodes;
        }
        std::sort(nodes.begin(), nodes.end(), [ids](std::uint32_t a, std::uint32_t b) { return ids[a] < ids[b]; });
        return nodes;
    }

    void setNodes(const std::vector<std::uint32_t>& nodes, ug::DataNodes* dataNodes) {
        std::vector<int> ids(nodes.size());
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            ids[i] = m_nodeIds.ids()[nodes[i]];
        }
        const bool hasAll = nodes.size() == m_nodeIds.ids().size() && m_nodeIds.isAscending();
        if (hasAll && m_partBegins.size() == 2) {
            dataNodes->set(std::move(m_coordinates), std::move(ids));
            return;
        }
        std::vector<double> coordinates(3 * nodes.size());
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            std::copy_n(&m_coordinates[3 * std::size_t(nodes[i])], 3, &coordinates[3 * i]);
        }
        dataNodes->set(std::move(coordinates), std::move(ids));
    }

    void namePart(const std::vector<std::uint32_t>& keyOrder, const std::vector<std::pair<int, std::string>>& materials,
                  std::vector<ug::PartInfo>* infos) const {
        std::map<int, std::string> names = m_elements.materials;
        names.insert(materials.begin(), materials.end());
        std::set<int> groups;
        for (const PartKey& key : m_elements.partKeys) {
            groups.insert(key.first);
        }
        std::set<std::string> taken;
        for (std::size_t i = 0; i < keyOrder.size(); ++i) {
            const auto& [group, material] = m_elements.partKeys[keyOrder[i]];
            const auto found = names.find(material);
            const bool hasName = found != names.end() && !found->second.empty();
            const std::string number = std::to_string(material);
            std::string name = hasName ? found->second : "Material " + number;
            if (groups.size() > 1) {
                name = "Group " + std::to_string(group) + ", material " + (hasName ? found->second : number);
            }
            if (!taken.insert(name).second) {
                name += " (material " + number + ")";
                taken.insert(name);
            }
            infos->emplace_back(int(i) + 1, Str(name));
        }
    }

    const FrdNodeIds& m_nodeIds;
    std::vector<double> m_coordinates;
    Elements m_elements;
    std::vector<std::uint32_t> m_indexInPart;
    std::vector<std::size_t> m_partBegins;     // Into m_elementOrder.
    std::vector<std::uint32_t> m_elementOrder; // By part; empty when there is but one.
    std::vector<std::uint32_t> m_nodeBegins;   // Where each element's nodes begin in the connectivity.
    std::vector<std::vector<std::uint32_t>> m_partNodes;
};

} // namespace

FrdNodePlaces::FrdNodePlaces(std::size_t nodeCount, const std::vector<std::vector<std::uint32_t>>& partNodes) {
    const bool hasAll = partNodes.size() == 1 && partNodes[0].size() == nodeCount;
    if (hasAll && std::is_sorted(partNodes[0].begin(), partNodes[0].end())) {
        return;
    }
    m_begins.assign(nodeCount + 2, 0);
    // Counted two places ahead, so that filling leaves each begin where it belongs.
    for (const std::vector<std::uint32_t>& nodes : partNodes) {
        for (const std::uint32_t node : nodes) {
            ++m_begins[std::size_t(node) + 2];
        }
    }
    for (std::size_t i = 1; i < m_begins.size(); ++i) {
        m_begins[i] += m_begins[i - 1];
    }
    m_places.resize(m_begins.back());
    for (std::size_t part = 0; part < partNodes.size(); ++part) {
        for (std::size_t i = 0; i < partNodes[part].size(); ++i) {
            m_places[m_begins[std::size_t(partNodes[part][i]) + 1]++] = {std::uint32_t(part), std::uint32_t(i)};
        }
    }
}

bool FrdNodePlaces::isIdentity() const {
    return m_begins.empty();
}

bool readFrdMesh(const FrdFile& file, const FrdIndex& index, FrdMesh* mesh, std::vector<std::string>* warnings,
                 ug::Error* error) {
    std::vector<int> ids;
    std::vector<double> coordinates;
    if (!readNodes(file, index.nodes, &ids, &coordinates, error)) {
        return false;
    }
    mesh->nodeIds = FrdNodeIds(std::move(ids));
    const std::uint32_t duplicate = mesh->nodeIds.firstDuplicate();
    if (duplicate != FrdNodeIds::NONE) {
        return failForDuplicate<FrdNodeRows, FrdNodeRow>(file, index.nodes, "node", mesh->nodeIds.ids()[duplicate],
                                                         error);
    }
    Elements elements;
    ElementGatherer gatherer(file, index.elements, mesh->nodeIds);
    if (!gatherer.run(&elements, error)) {
        return false;
    }
    const std::uint32_t duplicateElement = firstDuplicateId(elements.ids);
    if (duplicateElement != FrdNodeIds::NONE) {
        return failForDuplicate<FrdElementRows, FrdElementRow>(file, index.elements, "element",
                                                               elements.ids[duplicateElement], error);
    }
    for (std::string& text : gatherer.warnings()) {
        warnings->push_back(std::move(text));
    }
    if (elements.ids.empty()) {
        warnings->push_back(file.name() + " has no elements, so there are no parts");
    }
    PartBuilder(mesh->nodeIds, std::move(coordinates), std::move(elements)).run(index.materials, mesh);
    return true;
}

} // namespace orv::imp::cae
