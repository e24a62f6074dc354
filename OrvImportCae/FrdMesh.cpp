#include "OrvImportCae/FrdMesh.h"

#include "OrvImportCae/FrdMeshRows.h"

#include <algorithm>
#include <limits>
#include <map>
#include <numeric>
#include <set>
#include <tuple>
#include <utility>

namespace orv::imp::cae {
namespace {

using PartKey = std::pair<int, int>; // Group and material.

/// While they are gathered, `parts` are indexes into `partKeys`.
struct Elements : CaeElements {
    std::vector<PartKey> partKeys;        // In the order of appearance.
    std::map<int, std::string> materials; // The names of those that the elements themselves name.
};

bool readNodes(const CaeFile& file, const FrdRows& rows, std::vector<int>* ids, std::vector<double>* coordinates,
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

/// Gathers the elements of a file.
class ElementGatherer {
public:
    ElementGatherer(const CaeFile& file, const FrdRows& rows, const CaeIds& nodeIds)
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
            elements->parts.reserve(count);
            elements->connectivity.reserve(count * nodeCount);
        }
        for (std::size_t i = 0; i < nodeCount; ++i) {
            const int id = row.nodes[row.type->order[i]];
            const std::uint32_t index = m_finder.find(id);
            if (index == CaeIds::NONE) {
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
        elements->parts.push_back(keyNumber({row.group, materialNumber(row, elements)}, elements));
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
        if (!elements->parts.empty() && elements->partKeys[elements->parts.back()] == key) {
            return elements->parts.back();
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

    const CaeFile& m_file;
    const FrdRows& m_rows;
    CaeIdFinder m_finder;
    std::map<PartKey, std::uint32_t> m_keyNumbers;
    std::map<std::string, int> m_materialNumbers;
    std::map<std::int64_t, Unknown> m_unknown;
};

// Walks the block once more, to tell people where a number stands for the second time.
template <class Reader, class Row>
bool failForDuplicate(const CaeFile& file, const FrdRows& rows, const std::string& what, int id, ug::Error* error) {
    Reader reader(file, rows);
    Row row;
    int seen = 0;
    while (seen < 2 && reader.next(&row, nullptr)) {
        seen += row.id == id;
    }
    return file.fail(row.offset, what + " " + std::to_string(id) + " stands here for the second time", error);
}

// The parts' keys, each as an index, by ascending group and material.
std::vector<std::uint32_t> keysByNumber(const std::vector<PartKey>& partKeys) {
    std::vector<std::uint32_t> order(partKeys.size());
    std::iota(order.begin(), order.end(), 0);
    std::sort(order.begin(), order.end(),
              [&partKeys](std::uint32_t a, std::uint32_t b) { return partKeys[a] < partKeys[b]; });
    return order;
}

// Turns each element's key into the index of its part.
void numberParts(const std::vector<std::uint32_t>& keyOrder, std::vector<std::uint32_t>* keys) {
    std::vector<std::uint32_t> partOfKey(keyOrder.size());
    for (std::size_t i = 0; i < keyOrder.size(); ++i) {
        partOfKey[keyOrder[i]] = std::uint32_t(i);
    }
    for (std::uint32_t& key : *keys) {
        key = partOfKey[key];
    }
}

void nameParts(const Elements& elements, const std::vector<std::uint32_t>& keyOrder,
               const std::vector<std::pair<int, std::string>>& materials, std::vector<ug::PartInfo>* infos) {
    std::map<int, std::string> names = elements.materials;
    names.insert(materials.begin(), materials.end());
    std::set<int> groups;
    for (const PartKey& key : elements.partKeys) {
        groups.insert(key.first);
    }
    std::set<std::string> taken;
    for (std::size_t i = 0; i < keyOrder.size(); ++i) {
        const auto& [group, material] = elements.partKeys[keyOrder[i]];
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

} // namespace

bool readFrdMesh(const CaeFile& file, const FrdIndex& index, FrdMesh* mesh, std::vector<std::string>* warnings,
                 ug::Error* error) {
    std::vector<int> ids;
    std::vector<double> coordinates;
    if (!readNodes(file, index.nodes, &ids, &coordinates, error)) {
        return false;
    }
    mesh->nodeIds = CaeIds(std::move(ids));
    const std::uint32_t duplicate = mesh->nodeIds.firstDuplicate();
    if (duplicate != CaeIds::NONE) {
        return failForDuplicate<FrdNodeRows, FrdNodeRow>(file, index.nodes, "node", mesh->nodeIds.ids()[duplicate],
                                                         error);
    }
    Elements elements;
    ElementGatherer gatherer(file, index.elements, mesh->nodeIds);
    if (!gatherer.run(&elements, error)) {
        return false;
    }
    const std::uint32_t duplicateElement = firstDuplicateId(elements.ids);
    if (duplicateElement != CaeIds::NONE) {
        return failForDuplicate<FrdElementRows, FrdElementRow>(file, index.elements, "element",
                                                               elements.ids[duplicateElement], error);
    }
    for (std::string& text : gatherer.warnings()) {
        warnings->push_back(std::move(text));
    }
    if (elements.ids.empty()) {
        warnings->push_back(file.name() + " has no elements, so there are no parts");
    }
    const std::vector<std::uint32_t> keyOrder = keysByNumber(elements.partKeys);
    nameParts(elements, keyOrder, index.materials, &mesh->parts);
    numberParts(keyOrder, &elements.parts);
    mesh->geometry =
        makeCaeGeometry(mesh->nodeIds, std::move(coordinates), std::move(elements), keyOrder.size(), &mesh->places);
    return true;
}

} // namespace orv::imp::cae
