#include "OrvUnstructGrid/ZtfxMeshes_p.h"

#include <algorithm>
#include <array>
#include <limits>
#include <set>
#include <utility>

namespace orv::ug {
namespace {

// Meshes may share arrays in the file but not in memory. No file that was written comes near this; one that was made to
// fill the memory goes beyond it.
constexpr std::uint64_t LARGEST_MEMORY_RATIO = 256;
constexpr std::uint64_t FREE_MEMORY = std::uint64_t(1) << 28;
constexpr std::uint64_t LARGEST_FILE = std::uint64_t(1) << 54;

Str number(std::uint64_t value) {
    return Str(std::to_string(value));
}

template <class Value>
bool readAll(ZtfxArrayReader* reader, std::vector<Value>* values, Error* error) {
    return reader->readBytes(values->data(), values->size() * sizeof(Value), error);
}

bool readAll(ZtfxArrayReader* reader, std::vector<double>* values, Error* error) {
    return reader->readDoubles(values->data(), values->size(), error);
}

/// Reads the arrays of one part, each by itself at first, and fills the part when they fit together.
class PartReader {
public:
    PartReader(const ZtfxPart& part, const ZtfxArrays& arrays) : m_part(part), m_arrays(arrays) {}

    bool read(DataPart* out, Error* error) {
        if (!readValues(m_part.coordinates, ZtfxType::FLOAT64, 3, &m_coordinates, error) ||
            !readValues(m_part.nodeIds, ZtfxType::INT32, 1, &m_nodeIds, error) ||
            !readValues(m_part.elementTypes, ZtfxType::UINT8, 1, &m_types, error) ||
            !readValues(m_part.connectivity, ZtfxType::UINT32, 1, &m_connectivity, error) ||
            !readValues(m_part.elementIds, ZtfxType::INT32, 1, &m_elementIds, error) || !checkIds(error) ||
            !checkConnectivity(error)) {
            return false;
        }
        out->nodes()->set(std::move(m_coordinates), std::move(m_nodeIds));
        out->elements()->set(std::move(m_types), std::move(m_connectivity), std::move(m_elementIds));
        return out->isConsistent() ||
               m_arrays.fail(m_part.connectivity,
                             "names a node behind the last of " + number(out->nodes()->nodeCount()), error);
    }

private:
    template <class Value>
    bool readValues(std::uint64_t id, ZtfxType type, std::uint64_t components, std::vector<Value>* values,
                    Error* error) const {
        if (id == ZTFX_NO_ARRAY) {
            return true;
        }
        const ZtfxArray* array = m_arrays.findFor(id, type, components, error);
        if (!array) {
            return false;
        }
        ZtfxArrayReader reader(m_arrays, *array);
        if (!reader.open(error)) {
            return false;
        }
        values->resize(array->valueCount());
        return readAll(&reader, values, error) && reader.finish(error);
    }

    bool checkIds(Error* error) const {
        return checkCount(m_part.nodeIds, m_nodeIds.size(), m_coordinates.size() / 3, "nodes", error) &&
               checkCount(m_part.elementIds, m_elementIds.size(), m_types.size(), "elements", error);
    }

    bool checkCount(std::uint64_t id, std::size_t found, std::size_t expected, const char* what, Error* error) const {
        return id == ZTFX_NO_ARRAY || found == expected ||
               m_arrays.fail(id, "has " + number(found) + " ids for " + number(expected) + " " + what, error);
    }

    bool checkConnectivity(Error* error) const {
        std::array<std::uint64_t, 256> counts = {};
        for (const ElementType type : m_types) {
            ++counts[type];
        }
        std::uint64_t nodeTotal = 0;
        for (std::size_t type = 0; type < counts.size(); ++type) {
            if (counts[type] > 0 && type >= ELEMENT_TYPE_COUNT) {
                return m_arrays.fail(m_part.elementTypes, "holds " + number(type) + ", which is no type of elements",
                                     error);
            }
            nodeTotal += counts[type] > 0 ? counts[type] * elementTypeInfo(ElementType(type)).nodeCount : 0;
        }
        const std::uint64_t culprit = m_part.connectivity == ZTFX_NO_ARRAY ? m_part.elementTypes : m_part.connectivity;
        if (nodeTotal != m_connectivity.size()) {
            return m_arrays.fail(
                culprit, number(m_connectivity.size()) + " nodes are named, the elements need " + number(nodeTotal),
                error);
        }
        return nodeTotal <= std::numeric_limits<std::uint32_t>::max() ||
               m_arrays.fail(culprit, number(nodeTotal) + " nodes of elements are too many for one part", error);
    }

    const ZtfxPart& m_part;
    const ZtfxArrays& m_arrays;
    std::vector<double> m_coordinates;
    std::vector<int> m_nodeIds;
    std::vector<ElementType> m_types;
    std::vector<std::uint32_t> m_connectivity;
    std::vector<int> m_elementIds;
};

std::uint64_t bytesInMemory(const ZtfxPart& part, const ZtfxArrays& arrays) {
    std::uint64_t bytes = 0;
    for (const std::uint64_t id :
         {part.coordinates, part.nodeIds, part.elementTypes, part.connectivity, part.elementIds}) {
        const ZtfxArray* array = arrays.find(id);
        bytes += array ? array->memoryByteCount() : 0;
    }
    return bytes;
}

} // namespace

bool ZtfxMeshes::read(const ZtfxCase& contents, const ZtfxArrays& arrays, Error* error) {
    std::set<std::pair<std::size_t, std::size_t>> places;
    for (const ZtfxState& state : contents.states) {
        for (std::size_t g = 0; g < state.meshes.size(); ++g) {
            places.insert({g, state.meshes[g]});
        }
    }
    for (const auto& [geometry, mesh] : places) {
        m_meshes.push_back({geometry, mesh, new DataGeometry});
    }
    if (!checkSize(contents, arrays, error)) {
        return false;
    }
    for (const Placed& placed : m_meshes) {
        const std::vector<PartInfo>& infos = contents.geometries[placed.geometry];
        for (std::size_t p = 0; p < infos.size(); ++p) {
            PartReader reader(contents.meshes[placed.mesh][p], arrays);
            if (!reader.read(placed.object->addPart(infos[p].id()), error)) {
                return false;
            }
        }
    }
    return true;
}

DataGeometry* ZtfxMeshes::find(std::size_t geometry, std::size_t mesh) const {
    return std::lower_bound(m_meshes.begin(), m_meshes.end(), std::pair(geometry, mesh),
                            [](const Placed& placed, const auto& wanted) {
                                return std::pair(placed.geometry, placed.mesh) < wanted;
                            })
        ->object.get();
}

// Beside the meshes the directory's table of which result is in which state, of one bit each.
bool ZtfxMeshes::checkSize(const ZtfxCase& contents, const ZtfxArrays& arrays, Error* error) const {
    const std::uint64_t fileSize = std::min(arrays.archive().fileSize(), LARGEST_FILE);
    const std::uint64_t limit = FREE_MEMORY + LARGEST_MEMORY_RATIO * fileSize;
    std::uint64_t bytes = contents.results.size() * contents.states.size() / 8;
    bool fits = bytes <= limit;
    for (const Placed& placed : m_meshes) {
        for (const ZtfxPart& part : contents.meshes[placed.mesh]) {
            bytes += fits ? bytesInMemory(part, arrays) : 0;
            fits = bytes <= limit;
        }
    }
    return fits || arrays.archive().fail("its meshes need more memory than a file of its size ever should", error);
}

} // namespace orv::ug
