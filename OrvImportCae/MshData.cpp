#include "OrvImportCae/MshData.h"

#include "OrvCore/Defines.h"
#include "OrvImportCae/MshElementTypes.h"
#include "OrvImportCae/MshInput.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <span>
#include <string>

namespace orv::imp::cae {
namespace {

constexpr std::int64_t LARGEST_TAG = std::numeric_limits<int>::max();

using Components = std::array<double, MSH_TENSOR_COMPONENTS>;

/// For each of XX, YY, ZZ, XY, YZ, ZX the component in the rows of a tensor, and its counterpart.
constexpr std::size_t TENSOR_ORDER[6] = {0, 4, 8, 1, 5, 2};
constexpr std::size_t TENSOR_COUNTERPARTS[6] = {0, 4, 8, 3, 7, 6};

// To the digits that text files have.
bool isSymmetric(const Components& values) {
    double size = 0.0;
    for (const double value : values) {
        size = std::max(size, std::abs(value));
    }
    for (std::size_t i = 3; i < 6; ++i) {
        const double a = values[TENSOR_ORDER[i]];
        const double b = values[TENSOR_COUNTERPARTS[i]];
        const bool areSame = std::abs(a - b) <= 1e-5 * size || (std::isnan(a) && std::isnan(b)) || a == b;
        if (!areSame) {
            return false;
        }
    }
    return true;
}

/// Reads the items of one section.
class ValueReader {
public:
    ValueReader(const CaeFile& file, bool isBinary, const MshDataSection& section, ug::Error* error)
        : m_input(file, error), m_section(section), m_componentCount(std::size_t(section.componentCount)) {
        m_input.setBinary(isBinary);
        m_input.seek(section.begin);
    }

    bool readValues(const MshParts& mesh, ug::ResultType type, const std::vector<double*>& parts, MshLeftOut* leftOut) {
        m_mesh = &mesh;
        m_doubles = ug::doublesPerItem(type);
        m_parts = &parts;
        m_leftOut = leftOut;
        const bool isRead = m_section.mapping == ug::PER_NODE      ? readNodes()
                            : m_section.mapping == ug::PER_ELEMENT ? readElements()
                                                                   : readElementNodes();
        return isRead && m_input.expectWord(std::string("$End") + mshSectionName(m_section.mapping));
    }

    bool startsSymmetric() {
        constexpr std::int64_t TRIED = 100;
        Components values;
        std::int64_t tag = 0;
        for (std::int64_t i = 0; i < std::min(TRIED, m_section.itemCount); ++i) {
            std::int64_t itemCount = 1;
            if (!readTag(&tag) || (m_section.mapping == ug::PER_ELEMENT_NODE && !readNodeCount(&itemCount))) {
                return true; // Loading tells why.
            }
            for (std::int64_t k = 0; k < itemCount; ++k) {
                if (!readItem(values.data())) {
                    return true;
                }
                if (!isSymmetric(values)) {
                    return false;
                }
            }
        }
        return true;
    }

private:
    bool readTag(std::int64_t* tag) {
        return m_input.readIntUpTo(m_section.mapping == ug::PER_NODE ? "a node's number" : "an element's number",
                                   LARGEST_TAG, tag);
    }

    bool readNodeCount(std::int64_t* count) {
        return m_input.readIntUpTo("a number of nodes", std::int64_t(MSH_MOST_NODES), count);
    }

    bool readItem(double* values) {
        for (std::size_t i = 0; i < m_componentCount; ++i) {
            if (!m_input.readReal("a value", &values[i])) {
                return false;
            }
        }
        return true;
    }

    // Turns the components into an item of ours, where they stand.
    void convert(Components* values) {
        if (m_componentCount != MSH_TENSOR_COMPONENTS) {
            return;
        }
        if (isSymmetric(*values)) {
            const Components rows = *values;
            for (std::size_t i = 0; i < m_doubles; ++i) {
                (*values)[i] = rows[TENSOR_ORDER[i]];
            }
        } else {
            ++m_leftOut->asymmetricCount;
            values->fill(UNDEFINED_DOUBLE);
        }
    }

    void store(const Components& values, std::size_t part, std::size_t item) {
        std::copy_n(values.data(), m_doubles, (*m_parts)[part] + item * m_doubles);
    }

    void noteLeftOut(std::int64_t tag, std::int64_t offset) {
        if (m_leftOut->count++ == 0) {
            m_leftOut->firstTag = tag;
            m_leftOut->firstOffset = offset;
        }
    }

    /// Reads all items, and stores those whose tags are known: `place` gets the index of the id and the values.
    template <class Place>
    bool readItems(const CaeIds& ids, Place place) {
        CaeIdFinder finder(ids);
        Components values;
        std::int64_t tag = 0;
        for (std::int64_t i = 0; i < m_section.itemCount; ++i) {
            if (!readTag(&tag)) {
                return false;
            }
            const std::int64_t offset = m_input.lastOffset();
            if (!readItem(values.data())) {
                return false;
            }
            const std::uint32_t index = finder.find(int(tag));
            if (index == CaeIds::NONE) {
                noteLeftOut(tag, offset);
                continue;
            }
            convert(&values);
            place(index, values);
        }
        return true;
    }

    bool readNodes() {
        if (m_mesh->nodePlaces.isIdentity()) {
            return readItems(m_mesh->nodeIds,
                             [this](std::uint32_t node, const Components& values) { store(values, 0, node); });
        }
        return readItems(m_mesh->nodeIds, [this](std::uint32_t node, const Components& values) {
            for (const CaeNodePlaces::Place& place : m_mesh->nodePlaces.of(node)) {
                store(values, place.part, place.node);
            }
        });
    }

    bool readElements() {
        return readItems(m_mesh->elementIds, [this](std::uint32_t element, const Components& values) {
            const MshParts::Place& place = m_mesh->elementPlaces[element];
            store(values, place.part, place.element);
        });
    }

    bool readElementNodes() {
        CaeIdFinder finder(m_mesh->elementIds);
        std::array<Components, MSH_MOST_NODES> nodes;
        std::int64_t tag = 0;
        std::int64_t nodeCount = 0;
        for (std::int64_t i = 0; i < m_section.itemCount; ++i) {
            if (!readTag(&tag)) {
                return false;
            }
            const std::int64_t offset = m_input.lastOffset();
            if (!readNodeCount(&nodeCount)) {
                return false;
            }
            for (std::int64_t k = 0; k < nodeCount; ++k) {
                if (!readItem(nodes[std::size_t(k)].data())) {
                    return false;
                }
            }
            const std::uint32_t element = finder.find(int(tag));
            if (element == CaeIds::NONE) {
                noteLeftOut(tag, offset);
            } else if (!storeElement(element, {nodes.data(), std::size_t(nodeCount)})) {
                return m_input.failAt(offset, "expected values for the nodes of element " + std::to_string(tag) +
                                                  ", found those for " + std::to_string(nodeCount));
            }
        }
        return true;
    }

    bool storeElement(std::uint32_t element, std::span<Components> nodes) {
        const MshParts::Place& place = m_mesh->elementPlaces[element];
        const ug::DataElements* elements = m_mesh->geometry->part(place.part)->elements();
        const ug::ElementType type = elements->types()[place.element];
        const ug::ElementTypeInfo& info = ug::elementTypeInfo(type);
        if (nodes.size() < info.nodeCount && nodes.size() != info.cornerCount) {
            return false;
        }
        const std::uint8_t* order = mshNodeOrder(type);
        for (std::size_t i = 0; i < std::min<std::size_t>(info.nodeCount, nodes.size()); ++i) {
            Components& values = nodes[order[i]];
            convert(&values);
            store(values, place.part, elements->offsets()[place.element] + i);
        }
        return true;
    }

    MshInput m_input;
    const MshDataSection& m_section;
    std::size_t m_componentCount;
    std::size_t m_doubles = 0;
    const MshParts* m_mesh = nullptr;
    const std::vector<double*>* m_parts = nullptr;
    MshLeftOut* m_leftOut = nullptr;
};

} // namespace

bool startsWithSymmetricTensors(const CaeFile& file, bool isBinary, const MshDataSection& section) {
    return ValueReader(file, isBinary, section, nullptr).startsSymmetric();
}

bool readMshValues(const CaeFile& file, bool isBinary, const MshDataSection& section, const MshParts& mesh,
                   ug::ResultType type, const std::vector<double*>& parts, MshLeftOut* leftOut, ug::Error* error) {
    return ValueReader(file, isBinary, section, error).readValues(mesh, type, parts, leftOut);
}

bool readMshValueOfRow(const CaeFile& file, bool isBinary, const MshDataSection& section, std::size_t row, int tag,
                       double* value) {
    constexpr std::size_t ROW_SIZE = sizeof(std::int32_t) + sizeof(double);
    if (!isBinary || section.componentCount != 1) {
        return false;
    }
    std::array<char, ROW_SIZE> bytes;
    std::int32_t tagThere = 0;
    if (file.read(section.begin + std::int64_t(row * ROW_SIZE), bytes.data(), ROW_SIZE) != ROW_SIZE) {
        return false;
    }
    std::memcpy(&tagThere, bytes.data(), sizeof tagThere);
    std::memcpy(value, bytes.data() + sizeof tagThere, sizeof *value);
    return tagThere == tag;
}

} // namespace orv::imp::cae
