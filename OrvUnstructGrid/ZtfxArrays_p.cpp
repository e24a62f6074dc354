#include "OrvUnstructGrid/ZtfxArrays_p.h"

#include <algorithm>
#include <array>
#include <utility>

namespace orv::ug {
namespace {

// What is hashed or widened while the processor's caches still hold it.
constexpr std::size_t CHUNK_BYTES = std::size_t(1) << 18;
constexpr std::size_t FLOAT_CHUNK = std::size_t(1) << 12;

} // namespace

ZtfxArrays::ZtfxArrays(std::shared_ptr<const ZtfxArchive> archive, std::vector<ZtfxArray> arrays)
    : m_archive(std::move(archive)), m_arrays(std::move(arrays)) {}

const ZtfxArray* ZtfxArrays::find(std::uint64_t id) const {
    const auto found = std::lower_bound(m_arrays.begin(), m_arrays.end(), id,
                                        [](const ZtfxArray& array, std::uint64_t wanted) { return array.id < wanted; });
    return found != m_arrays.end() && found->id == id ? &*found : nullptr;
}

bool ZtfxArrays::findEntry(const ZtfxArray& array, ZtfxEntry* entry, Error* error) const {
    if (!m_archive->findEntry(ztfxEntryName(array.id), entry, error)) {
        return false;
    }
    return entry->size == array.byteCount() || fail(array.id,
                                                    "has " + std::to_string(entry->size) + " bytes, expected " +
                                                        std::to_string(array.byteCount()) + " by the index",
                                                    error);
}

const ZtfxArray* ZtfxArrays::findFor(std::uint64_t id, ZtfxType type, std::uint64_t components, Error* error) const {
    const ZtfxArray* array = find(id);
    ZtfxEntry entry;
    if (!array) {
        fail(id, "not among the arrays of the index", error);
        return nullptr;
    }
    if (!(array->type == type || (array->isReal() && type == ZtfxType::FLOAT64)) || array->components != components) {
        fail(id,
             "holds " + std::string(ztfxTypeName(array->type)) + " values, " + std::to_string(array->components) +
                 " to an item, expected " + std::string(ztfxTypeName(type)) + ", " + std::to_string(components) +
                 " to an item",
             error);
        return nullptr;
    }
    return findEntry(*array, &entry, error) ? array : nullptr;
}

const ZtfxArchive& ZtfxArrays::archive() const {
    return *m_archive;
}

bool ZtfxArrays::fail(std::uint64_t id, const Str& text, Error* error) const {
    ZtfxEntry entry;
    entry.name = ztfxEntryName(id);
    return m_archive->fail(entry, text, error);
}

ZtfxArrayReader::ZtfxArrayReader(const ZtfxArrays& arrays, const ZtfxArray& array)
    : m_arrays(arrays), m_array(array), m_reader(arrays.archive(), m_entry) {}

bool ZtfxArrayReader::open(Error* error) {
    return m_arrays.findEntry(m_array, &m_entry, error) && m_reader.open(error);
}

bool ZtfxArrayReader::readBytes(void* out, std::size_t count, Error* error) {
    char* bytes = static_cast<char*>(out);
    while (count > 0) {
        const std::size_t chunk = std::min(count, CHUNK_BYTES);
        if (!m_reader.read(bytes, chunk, error)) {
            return false;
        }
        m_hasher.update(bytes, chunk);
        bytes += chunk;
        count -= chunk;
    }
    return true;
}

bool ZtfxArrayReader::readDoubles(double* out, std::size_t count, Error* error) {
    if (m_array.type == ZtfxType::FLOAT64) {
        return readBytes(out, count * sizeof(double), error);
    }
    std::array<float, FLOAT_CHUNK> floats;
    while (count > 0) {
        const std::size_t chunk = std::min(count, floats.size());
        if (!readBytes(floats.data(), chunk * sizeof(float), error)) {
            return false;
        }
        widenFloat32(floats.data(), chunk, out);
        out += chunk;
        count -= chunk;
    }
    return true;
}

bool ZtfxArrayReader::finish(Error* error) {
    if (!m_reader.finish(error)) {
        return false;
    }
    return m_hasher.checksum() == m_array.checksum ||
           m_arrays.fail(m_array.id, "damaged: the bytes do not give the checksum of the index", error);
}

} // namespace orv::ug
