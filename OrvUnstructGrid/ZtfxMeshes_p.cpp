#include "OrvUnstructGrid/ZtfxMeshes_p.h"

#include <algorithm>
#include <array>
#include <limits>
#include <new>
#include <set>
#include <span>
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

/// The arrays of one part: looked at by what the index says of them when the file is opened, read when they are needed.
class PartArrays {
public:
    PartArrays(const ZtfxPart& part, std::shared_ptr<const ZtfxArrays> arrays)
        : m_part(part), m_arrays(std::move(arrays)) {}

    /// False with a text when they do not fit together, whatever their bytes are.
    bool check(Error* error) const {
        return checkArray(m_part.coordinates, ZtfxType::FLOAT64, 3, error) &&
               checkArray(m_part.nodeIds, ZtfxType::INT32, 1, error) &&
               checkArray(m_part.elementTypes, ZtfxType::UINT8, 1, error) &&
               checkArray(m_part.connectivity, ZtfxType::UINT32, 1, error) &&
               checkArray(m_part.elementIds, ZtfxType::INT32, 1, error) &&
               checkIds(m_part.nodeIds, m_part.coordinates, "nodes", error) &&
               checkIds(m_part.elementIds, m_part.elementTypes, "elements", error);
    }

    DataPart::Counts counts() const {
        return {itemsOf(m_part.coordinates), itemsOf(m_part.elementTypes), itemsOf(m_part.connectivity)};
    }

    bool read(DataNodes* nodes, DataElements* elements, Error* error) const {
        try {
            return readNodes(nodes, error) && readElements(elements, nodes->nodeCount(), error);
        } catch (const std::bad_alloc&) {
            return m_arrays->archive().fail("there is not enough memory for its meshes", error);
        }
    }

private:
    std::size_t itemsOf(std::uint64_t id) const {
        const ZtfxArray* array = m_arrays->find(id);
        return array ? array->items : 0;
    }

    bool checkArray(std::uint64_t id, ZtfxType type, std::uint64_t components, Error* error) const {
        return id == ZTFX_NO_ARRAY || m_arrays->findFor(id, type, components, error);
    }

    bool checkIds(std::uint64_t ids, std::uint64_t numbered, const char* what, Error* error) const {
        return ids == ZTFX_NO_ARRAY || itemsOf(ids) == itemsOf(numbered) ||
               m_arrays->fail(ids, "has " + number(itemsOf(ids)) + " ids for " + number(itemsOf(numbered)) + " " + what,
                              error);
    }

    bool readNodes(DataNodes* nodes, Error* error) const {
        std::vector<double> coordinates;
        std::vector<int> ids;
        if (!readValues(m_part.coordinates, &coordinates, error) || !readValues(m_part.nodeIds, &ids, error)) {
            return false;
        }
        nodes->set(std::move(coordinates), std::move(ids));
        return true;
    }

    bool readElements(DataElements* elements, std::size_t nodeCount, Error* error) const {
        std::vector<ElementType> types;
        std::vector<std::uint32_t> connectivity;
        std::vector<int> ids;
        if (!readValues(m_part.elementTypes, &types, error) || !readValues(m_part.connectivity, &connectivity, error) ||
            !readValues(m_part.elementIds, &ids, error) || !checkTypes(types, connectivity.size(), error) ||
            !checkConnectivity(connectivity, nodeCount, error)) {
            return false;
        }
        elements->set(std::move(types), std::move(connectivity), std::move(ids));
        return true;
    }

    template <class Value>
    bool readValues(std::uint64_t id, std::vector<Value>* values, Error* error) const {
        const ZtfxArray* array = m_arrays->find(id);
        if (!array) {
            return true;
        }
        ZtfxArrayReader reader(*m_arrays, *array);
        if (!reader.open(error)) {
            return false;
        }
        values->resize(array->valueCount());
        return readAll(&reader, values, error) && reader.finish(error);
    }

    template <class Value>
    static bool readAll(ZtfxArrayReader* reader, std::vector<Value>* values, Error* error) {
        return reader->readBytes(values->data(), values->size() * sizeof(Value), error);
    }

    static bool readAll(ZtfxArrayReader* reader, std::vector<double>* values, Error* error) {
        return reader->readDoubles(values->data(), values->size(), error);
    }

    bool checkTypes(std::span<const ElementType> types, std::size_t connectivitySize, Error* error) const {
        std::array<std::uint64_t, 256> counts = {};
        for (const ElementType type : types) {
            ++counts[type];
        }
        std::uint64_t nodeTotal = 0;
        for (std::size_t type = 0; type < counts.size(); ++type) {
            if (counts[type] > 0 && type >= ELEMENT_TYPE_COUNT) {
                return m_arrays->fail(m_part.elementTypes, "holds " + number(type) + ", which is no type of elements",
                                      error);
            }
            nodeTotal += counts[type] > 0 ? counts[type] * elementTypeInfo(ElementType(type)).nodeCount : 0;
        }
        const std::uint64_t culprit = m_part.connectivity == ZTFX_NO_ARRAY ? m_part.elementTypes : m_part.connectivity;
        if (nodeTotal != connectivitySize) {
            return m_arrays->fail(
                culprit, number(connectivitySize) + " nodes are named, the elements need " + number(nodeTotal), error);
        }
        return nodeTotal <= std::numeric_limits<std::uint32_t>::max() ||
               m_arrays->fail(culprit, number(nodeTotal) + " nodes of elements are too many for one part", error);
    }

    bool checkConnectivity(std::span<const std::uint32_t> connectivity, std::size_t nodeCount, Error* error) const {
        const bool isGood = connectivity.empty() || std::ranges::max(connectivity) < nodeCount;
        return isGood ||
               m_arrays->fail(m_part.connectivity, "names a node behind the last of " + number(nodeCount), error);
    }

    ZtfxPart m_part;
    std::shared_ptr<const ZtfxArrays> m_arrays;
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

bool ZtfxMeshes::open(const ZtfxCase& contents, const std::shared_ptr<const ZtfxArrays>& arrays, Error* error) {
    std::set<std::pair<std::size_t, std::size_t>> places;
    for (const ZtfxState& state : contents.states) {
        for (std::size_t g = 0; g < state.meshes.size(); ++g) {
            places.insert({g, state.meshes[g]});
        }
    }
    for (const auto& [geometry, mesh] : places) {
        m_meshes.push_back({geometry, mesh, new DataGeometry});
    }
    return checkSize(contents, *arrays, error) &&
           std::all_of(m_meshes.begin(), m_meshes.end(),
                       [&](const Placed& placed) { return addParts(placed, contents, arrays, error); });
}

DataGeometry* ZtfxMeshes::find(std::size_t geometry, std::size_t mesh) const {
    return std::lower_bound(m_meshes.begin(), m_meshes.end(), std::pair(geometry, mesh),
                            [](const Placed& placed, const auto& wanted) {
                                return std::pair(placed.geometry, placed.mesh) < wanted;
                            })
        ->object.get();
}

bool ZtfxMeshes::addParts(const Placed& placed, const ZtfxCase& contents,
                          const std::shared_ptr<const ZtfxArrays>& arrays, Error* error) {
    const std::vector<PartInfo>& infos = contents.geometries[placed.geometry];
    for (std::size_t p = 0; p < infos.size(); ++p) {
        const PartArrays part(contents.meshes[placed.mesh][p], arrays);
        if (!part.check(error)) {
            return false;
        }
        placed.object->addPart(infos[p].id())
            ->readLater(part.counts(), [part](DataNodes* nodes, DataElements* elements, Error* problem) {
                return part.read(nodes, elements, problem);
            });
    }
    return true;
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
