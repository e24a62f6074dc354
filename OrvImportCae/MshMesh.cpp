#include "OrvImportCae/MshMesh.h"

#include "OrvImportCae/MshElementTypes.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <unordered_set>
#include <utility>

namespace orv::imp::cae {
namespace {

constexpr std::int64_t LARGEST_TAG = std::numeric_limits<int>::max();
constexpr std::int64_t DIMENSIONS = 3;

/// The nodes of a file.
class NodeGatherer {
public:
    explicit NodeGatherer(MshInput& input) : m_input(input) {}

    bool reserve(std::int64_t count, std::int64_t bytesEach) {
        if (!m_input.checkCount("the number of nodes", count, 4, bytesEach)) {
            return false;
        }
        m_ids.reserve(std::size_t(count));
        m_coordinates.reserve(3 * std::size_t(count));
        m_count = std::size_t(count);
        return true;
    }

    /// Whether that many more belong to the count.
    bool hasRoom(std::int64_t count) {
        const std::size_t room = m_count - m_ids.size();
        return (count >= 0 && std::size_t(count) <= room) ||
               m_input.fail("expected a number of nodes up to the " + std::to_string(room) + " that are left, found " +
                            std::to_string(count));
    }

    bool isComplete() {
        return m_ids.size() == m_count ||
               m_input.fail("expected " + std::to_string(m_count) + " nodes, found " + std::to_string(m_ids.size()));
    }

    void addId(std::int64_t id) {
        m_ids.push_back(int(id));
    }

    bool addCoordinates() {
        double xyz[3];
        for (double& value : xyz) {
            if (!m_input.readReal("a coordinate", &value)) {
                return false;
            }
        }
        m_coordinates.insert(m_coordinates.end(), xyz, xyz + 3);
        return true;
    }

    bool finish(std::int64_t header, MshSections* sections) {
        sections->nodeIds = CaeIds(std::move(m_ids));
        sections->coordinates = std::move(m_coordinates);
        const std::uint32_t duplicate = sections->nodeIds.firstDuplicate();
        return duplicate == CaeIds::NONE ||
               m_input.failAt(header, "expected nodes with numbers of their own, found node " +
                                          std::to_string(sections->nodeIds.ids()[duplicate]) + " twice");
    }

private:
    MshInput& m_input;
    std::size_t m_count = 0;
    std::vector<int> m_ids;
    std::vector<double> m_coordinates;
};

// Dimension, tag and count of a node of version 2.2 that has parameters on its entity.
bool skipParametersOfNode(MshInput& input) {
    std::int64_t dimension = 0;
    std::int64_t tag = 0;
    if (!input.readIntUpTo("a dimension", DIMENSIONS, &dimension) || !input.readInt("an entity's number", &tag)) {
        return false;
    }
    return input.skipReals("a parameter", dimension == DIMENSIONS ? 0 : std::size_t(dimension));
}

bool readNodeList(MshInput& input, bool areParametric, NodeGatherer* nodes) {
    std::int64_t count = 0;
    if (!input.readTextInteger("the number of nodes", &count) || (input.isBinary() && !input.skipLine("nodes")) ||
        !nodes->reserve(count, 28)) {
        return false;
    }
    for (std::int64_t i = 0; i < count; ++i) {
        std::int64_t id = 0;
        if (!input.readIntUpTo("a node's number", LARGEST_TAG, &id) || !nodes->addCoordinates() ||
            (areParametric && !skipParametersOfNode(input))) {
            return false;
        }
        nodes->addId(id);
    }
    return true;
}

/// What begins a block of nodes or elements.
struct BlockHeader {
    MshEntity entity;
    std::int64_t kind = 0; ///< Whether nodes have parameters; the type of elements.
    std::int64_t count = 0;
};

bool readBlockHeader(MshInput& input, MshVersion version, const char* kind, BlockHeader* header) {
    std::int64_t dimension = 0;
    std::int64_t tag = 0;
    const bool isRead =
        version == MshVersion::V40
            ? input.readInt("an entity's number", &tag) && input.readIntUpTo("a dimension", DIMENSIONS, &dimension)
            : input.readIntUpTo("a dimension", DIMENSIONS, &dimension) && input.readInt("an entity's number", &tag);
    header->entity = {int(dimension), int(tag)};
    return isRead && input.readInt(kind, &header->kind) &&
           input.readSize("the number of a block's items", &header->count);
}

// The numbers of all nodes, then the coordinates; each node's number ahead of its coordinates in version 4.0.
bool readNodeBlock(MshInput& input, MshVersion version, NodeGatherer* nodes) {
    BlockHeader header;
    if (!readBlockHeader(input, version, "whether nodes have parameters", &header) || !nodes->hasRoom(header.count)) {
        return false;
    }
    const bool areTogether = version == MshVersion::V40;
    const std::size_t parameterCount = header.kind != 0 ? std::size_t(header.entity.dimension) : 0;
    std::int64_t id = 0;
    for (std::int64_t i = 0; i < header.count && !areTogether; ++i) {
        if (!input.readSizeUpTo("a node's number", LARGEST_TAG, &id)) {
            return false;
        }
        nodes->addId(id);
    }
    for (std::int64_t i = 0; i < header.count; ++i) {
        if (areTogether) {
            if (!input.readIntUpTo("a node's number", LARGEST_TAG, &id)) {
                return false;
            }
            nodes->addId(id);
        }
        if (!nodes->addCoordinates() || !input.skipReals("a parameter", parameterCount)) {
            return false;
        }
    }
    return true;
}

// What version 4.1 tells ahead of its blocks behind the counts.
bool skipTagRange(MshInput& input, MshVersion version) {
    std::int64_t tag = 0;
    return version == MshVersion::V40 ||
           (input.readSize("the smallest number", &tag) && input.readSize("the largest number", &tag));
}

bool readNodeBlocks(MshInput& input, MshVersion version, NodeGatherer* nodes) {
    std::int64_t blockCount = 0;
    std::int64_t count = 0;
    if (!input.readSize("the number of blocks", &blockCount) ||
        !input.checkCount("a number of blocks", blockCount, 4, 20) || !input.readSize("the number of nodes", &count) ||
        !nodes->reserve(count, 28) || !skipTagRange(input, version)) {
        return false;
    }
    for (std::int64_t i = 0; i < blockCount; ++i) {
        if (!readNodeBlock(input, version, nodes)) {
            return false;
        }
    }
    return nodes->isComplete();
}

/// The elements of a file.
class ElementGatherer {
public:
    ElementGatherer(const CaeFile& file, MshInput& input, MshSections* sections)
        : m_file(file), m_input(input), m_sections(*sections), m_elements(sections->elements),
          m_finder(sections->nodeIds) {}

    bool reserve(std::int64_t count) {
        // Blocks tell once what their elements have in common.
        if (!m_input.checkCount("the number of elements", count, 2, 8)) {
            return false;
        }
        m_elements.types.reserve(std::size_t(count));
        m_elements.ids.reserve(std::size_t(count));
        m_elements.parts.reserve(std::size_t(count));
        m_left = count;
        return true;
    }

    bool hasRoom(std::int64_t count) {
        return (count >= 0 && count <= m_left) ||
               m_input.fail("expected a number of elements up to the " + std::to_string(m_left) +
                            " that are left, found " + std::to_string(count));
    }

    std::int64_t left() const {
        return m_left;
    }

    bool isComplete() {
        return m_left == 0 || m_input.fail("expected " + std::to_string(m_left) + " more elements, found none");
    }

    const MshElementType* findType(std::int64_t number) {
        const MshElementType* type = findMshElementType(number);
        if (!type) {
            m_input.fail("expected the type of an element, found " + std::to_string(number));
        }
        return type;
    }

    /// Reads the nodes of an element and takes it in, unless its type is passed over.
    bool add(std::int64_t id, const MshElementType& type, const MshOwner& owner, bool haveSizeTags) {
        const std::int64_t offset = m_input.lastOffset();
        --m_left;
        int nodes[MSH_MOST_NODES];
        for (std::size_t i = 0; i < type.nodeCount; ++i) {
            std::int64_t node = 0;
            if (!(haveSizeTags ? m_input.readSizeUpTo("a node's number", LARGEST_TAG, &node)
                               : m_input.readIntUpTo("a node's number", LARGEST_TAG, &node))) {
                return false;
            }
            nodes[i] = int(node);
        }
        if (!type.isKnown) {
            Unknown& unknown = m_unknown[type.number];
            unknown.firstOffset = unknown.count++ == 0 ? offset : unknown.firstOffset;
            return true;
        }
        const std::size_t nodeCount = ug::elementTypeInfo(type.type).nodeCount;
        if (m_elements.ids.empty()) {
            m_elements.connectivity.reserve(m_elements.ids.capacity() * nodeCount);
        }
        for (std::size_t i = 0; i < nodeCount; ++i) {
            const int node = nodes[type.order[i]];
            const std::uint32_t index = m_finder.find(node);
            if (index == CaeIds::NONE) {
                return m_input.failAt(offset, "element " + std::to_string(id) + " names node " + std::to_string(node) +
                                                  ", which the file does not have");
            }
            m_elements.connectivity.push_back(index);
        }
        if (m_elements.connectivity.size() > std::numeric_limits<std::uint32_t>::max()) {
            return m_input.failAt(offset, "the elements have too many nodes");
        }
        m_elements.types.push_back(type.type);
        m_elements.ids.push_back(int(id));
        m_elements.parts.push_back(ownerNumber(owner));
        return true;
    }

    void finish(std::int64_t header) {
        for (const auto& [type, unknown] : m_unknown) {
            const std::string count = unknown.count == 1 ? "an element" : std::to_string(unknown.count) + " elements";
            m_sections.warnings.push_back(m_file.place(unknown.firstOffset) + ": " + count + " of the type " +
                                          std::to_string(type) + " left out" +
                                          (unknown.count == 1 ? "" : ", the first one here"));
        }
        if (firstDuplicateId(m_elements.ids) != CaeIds::NONE) {
            dropDuplicates(header);
        }
    }

private:
    struct Unknown {
        std::size_t count = 0;
        std::int64_t firstOffset = 0;
    };

    std::uint32_t ownerNumber(const MshOwner& owner) {
        std::vector<MshOwner>& owners = m_sections.owners;
        if (!m_elements.parts.empty() && owners[m_elements.parts.back()] == owner) {
            return m_elements.parts.back();
        }
        const auto [found, isNew] = m_ownerNumbers.try_emplace(owner, std::uint32_t(owners.size()));
        if (isNew) {
            owners.push_back(owner);
        }
        return found->second;
    }

    // Version 2 repeats an element for each of its physical groups.
    void dropDuplicates(std::int64_t header) {
        std::unordered_set<int> seen;
        CaeElements kept;
        std::size_t nodeBegin = 0;
        for (std::size_t i = 0; i < m_elements.ids.size(); ++i) {
            const std::size_t nodeCount = ug::elementTypeInfo(m_elements.types[i]).nodeCount;
            if (seen.insert(m_elements.ids[i]).second) {
                kept.types.push_back(m_elements.types[i]);
                kept.ids.push_back(m_elements.ids[i]);
                kept.parts.push_back(m_elements.parts[i]);
                const auto nodes = m_elements.connectivity.begin() + std::ptrdiff_t(nodeBegin);
                kept.connectivity.insert(kept.connectivity.end(), nodes, nodes + std::ptrdiff_t(nodeCount));
            }
            nodeBegin += nodeCount;
        }
        const std::size_t count = m_elements.ids.size() - kept.ids.size();
        m_sections.warnings.push_back(m_file.place(header) + ": " + std::to_string(count) +
                                      (count == 1 ? " element that repeats" : " elements that repeat") +
                                      " the number of an earlier one left out");
        m_elements = std::move(kept);
    }

    const CaeFile& m_file;
    MshInput& m_input;
    MshSections& m_sections;
    CaeElements& m_elements;
    CaeIdFinder m_finder;
    std::int64_t m_left = 0;
    std::map<MshOwner, std::uint32_t> m_ownerNumbers;
    std::map<std::int64_t, Unknown> m_unknown;
};

constexpr std::int64_t MOST_ELEMENT_TAGS = 1 << 20;

// The first tag is the physical group, the second one the entity; partitions follow.
bool readElementTags(MshInput& input, std::int64_t count, const MshElementType& type, MshOwner* owner) {
    *owner = MshOwner();
    owner->entity.dimension = ug::elementTypeInfo(type.type).dimension;
    owner->hasEntity = count >= 2;
    for (std::int64_t i = 0; i < count; ++i) {
        std::int64_t tag = 0;
        if (!input.readInt("a tag", &tag)) {
            return false;
        }
        if (i == 0) {
            owner->physical = int(std::abs(std::clamp(tag, -LARGEST_TAG, LARGEST_TAG)));
        } else if (i == 1) {
            owner->entity.tag = int(std::clamp(tag, -LARGEST_TAG, LARGEST_TAG));
        }
    }
    return true;
}

bool readTextElement(MshInput& input, ElementGatherer* elements) {
    std::int64_t id = 0;
    std::int64_t number = 0;
    std::int64_t tagCount = 0;
    if (!input.readIntUpTo("an element's number", LARGEST_TAG, &id) ||
        !input.readInt("the type of an element", &number)) {
        return false;
    }
    const MshElementType* type = elements->findType(number);
    MshOwner owner;
    return type && input.readIntUpTo("the number of tags", MOST_ELEMENT_TAGS, &tagCount) &&
           readElementTags(input, tagCount, *type, &owner) && elements->add(id, *type, owner, false);
}

// Type and number of tags stand once, ahead of the elements that have them in common.
bool readBinaryElements(MshInput& input, ElementGatherer* elements) {
    std::int64_t number = 0;
    std::int64_t count = 0;
    std::int64_t tagCount = 0;
    if (!input.readInt("the type of an element", &number)) {
        return false;
    }
    const MshElementType* type = elements->findType(number);
    if (!type || !input.readInt("a number of elements", &count) || !elements->hasRoom(count) ||
        !input.readIntUpTo("the number of tags", MOST_ELEMENT_TAGS, &tagCount)) {
        return false;
    }
    if (count == 0) {
        return input.fail("expected a number of elements above 0, found 0");
    }
    for (std::int64_t i = 0; i < count; ++i) {
        std::int64_t id = 0;
        MshOwner owner;
        if (!input.readIntUpTo("an element's number", LARGEST_TAG, &id) ||
            !readElementTags(input, tagCount, *type, &owner) || !elements->add(id, *type, owner, false)) {
            return false;
        }
    }
    return true;
}

bool readElementList(MshInput& input, ElementGatherer* elements) {
    std::int64_t count = 0;
    if (!input.readTextInteger("the number of elements", &count) || (input.isBinary() && !input.skipLine("elements")) ||
        !elements->reserve(count)) {
        return false;
    }
    while (elements->left() > 0) {
        if (!(input.isBinary() ? readBinaryElements(input, elements) : readTextElement(input, elements))) {
            return false;
        }
    }
    return true;
}

bool readElementBlock(MshInput& input, MshVersion version, ElementGatherer* elements) {
    BlockHeader header;
    if (!readBlockHeader(input, version, "the type of elements", &header) || !elements->hasRoom(header.count)) {
        return false;
    }
    const MshElementType* type = elements->findType(header.kind);
    if (!type) {
        return false;
    }
    const bool haveSizeTags = version == MshVersion::V41;
    const MshOwner owner{header.entity, 0, true};
    for (std::int64_t i = 0; i < header.count; ++i) {
        std::int64_t id = 0;
        if (!(haveSizeTags ? input.readSizeUpTo("an element's number", LARGEST_TAG, &id)
                           : input.readIntUpTo("an element's number", LARGEST_TAG, &id)) ||
            !elements->add(id, *type, owner, haveSizeTags)) {
            return false;
        }
    }
    return true;
}

bool readElementBlocks(MshInput& input, MshVersion version, ElementGatherer* elements) {
    std::int64_t blockCount = 0;
    std::int64_t count = 0;
    if (!input.readSize("the number of blocks", &blockCount) ||
        !input.checkCount("a number of blocks", blockCount, 4, 20) ||
        !input.readSize("the number of elements", &count) || !elements->reserve(count) ||
        !skipTagRange(input, version)) {
        return false;
    }
    for (std::int64_t i = 0; i < blockCount; ++i) {
        if (!readElementBlock(input, version, elements)) {
            return false;
        }
    }
    return elements->isComplete();
}

// A count, and as many ints; `first` gets the first one.
bool readInts(MshInput& input, const char* what, int* first) {
    std::int64_t count = 0;
    if (!input.readSize("a count of tags", &count) || !input.checkCount("a count of tags", count, 1, 4)) {
        return false;
    }
    for (std::int64_t i = 0; i < count; ++i) {
        std::int64_t tag = 0;
        if (!input.readInt(what, &tag)) {
            return false;
        }
        if (i == 0) {
            *first = int(std::abs(std::clamp(tag, -LARGEST_TAG, LARGEST_TAG)));
        }
    }
    return true;
}

bool readParent(MshInput& input, MshEntityFacts* facts) {
    std::int64_t dimension = 0;
    std::int64_t tag = 0;
    int ignored = 0;
    if (!input.readInt("a parent's dimension", &dimension) || !input.readInt("a parent's number", &tag)) {
        return false;
    }
    facts->hasParent = dimension >= 0 && dimension <= DIMENSIONS;
    facts->parent = {int(dimension), int(tag)};
    return readInts(input, "a partition", &ignored);
}

bool readEntity(MshInput& input, MshVersion version, bool isPartitioned, int dimension, MshSections* sections) {
    std::int64_t tag = 0;
    int ignored = 0;
    MshEntityFacts facts;
    if (!input.readInt("an entity's number", &tag) || (isPartitioned && !readParent(input, &facts))) {
        return false;
    }
    const bool isPlace = dimension == 0 && version == MshVersion::V41;
    if (!input.skipReals("a coordinate", isPlace ? 3 : 6) || !readInts(input, "a physical group", &facts.physical) ||
        (dimension > 0 && !readInts(input, "a bounding entity", &ignored))) {
        return false;
    }
    sections->entities[{dimension, int(tag)}] = facts;
    return true;
}

bool skipGhostEntities(MshInput& input) {
    std::int64_t partitionCount = 0;
    std::int64_t count = 0;
    if (!input.readSize("the number of partitions", &partitionCount) ||
        !input.readSize("the number of ghost entities", &count) ||
        !input.checkCount("a number of ghost entities", count, 2, 8)) {
        return false;
    }
    for (std::int64_t i = 0; i < 2 * count; ++i) {
        std::int64_t tag = 0;
        if (!input.readInt("a ghost entity", &tag)) {
            return false;
        }
    }
    return true;
}

} // namespace

bool readMshPhysicalNames(MshInput& input, MshSections* sections) {
    std::int64_t count = 0;
    if (!input.readTextInteger("the number of physical names", &count)) {
        return false;
    }
    for (std::int64_t i = 0; i < count; ++i) {
        std::int64_t dimension = 0;
        std::int64_t tag = 0;
        std::string name;
        if (!input.readTextInteger("a dimension", &dimension) || !input.readTextInteger("a physical group", &tag) ||
            !input.readQuoted("a physical name", &name)) {
            return false;
        }
        const bool isUsable = dimension >= 0 && dimension <= DIMENSIONS && tag >= -LARGEST_TAG && tag <= LARGEST_TAG;
        if (isUsable) {
            sections->physicalNames[{int(dimension), int(std::abs(tag))}] = name;
        }
    }
    return true;
}

bool readMshEntities(MshInput& input, MshVersion version, bool arePartitioned, MshSections* sections) {
    if (arePartitioned && !skipGhostEntities(input)) {
        return false;
    }
    std::int64_t counts[DIMENSIONS + 1] = {};
    for (std::int64_t& count : counts) {
        if (!input.readSize("a number of entities", &count) ||
            !input.checkCount("a number of entities", count, 5, 36)) {
            return false;
        }
    }
    for (int dimension = 0; dimension <= DIMENSIONS; ++dimension) {
        for (std::int64_t i = 0; i < counts[dimension]; ++i) {
            if (!readEntity(input, version, arePartitioned, dimension, sections)) {
                return false;
            }
        }
    }
    return true;
}

bool readMshNodes(MshInput& input, MshVersion version, bool areParametric, MshSections* sections) {
    const std::int64_t header = input.lastOffset();
    NodeGatherer nodes(input);
    const bool isRead = version == MshVersion::V22 ? readNodeList(input, areParametric, &nodes)
                                                   : readNodeBlocks(input, version, &nodes);
    return isRead && nodes.finish(header, sections);
}

bool readMshElements(const CaeFile& file, MshInput& input, MshVersion version, MshSections* sections) {
    const std::int64_t header = input.lastOffset();
    ElementGatherer elements(file, input, sections);
    const bool isRead =
        version == MshVersion::V22 ? readElementList(input, &elements) : readElementBlocks(input, version, &elements);
    if (isRead) {
        elements.finish(header);
    }
    return isRead;
}

} // namespace orv::imp::cae
