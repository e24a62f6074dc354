#pragma once

#include "OrvUnstructGrid/ZtfxArchive_p.h"
#include "OrvUnstructGrid/ZtfxArray_p.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace orv::ug {

/// The arrays of a file: what the index tells of them, and their entries.
class ZtfxArrays {
public:
    /// @param arrays with ascending ids
    ZtfxArrays(std::shared_ptr<const ZtfxArchive> archive, std::vector<ZtfxArray> arrays);

    /// Null when there is no such array.
    const ZtfxArray* find(std::uint64_t id) const;

    /// The entry of an array, which has the bytes that the array needs; false with a text otherwise.
    bool findEntry(const ZtfxArray& array, ZtfxEntry* entry, Error* error) const;

    /// The array with that id. Null with a text when there is none, when its entry is not good, or when it has another
    /// kind of values: `type`, where FLOAT64 means reals of any width, or another count of them to an item.
    const ZtfxArray* findFor(std::uint64_t id, ZtfxType type, std::uint64_t components, Error* error) const;

    const ZtfxArchive& archive() const;

    /// Fills the error with "PATH, entry 'data/ID': text". Always false.
    bool fail(std::uint64_t id, const Str& text, Error* error) const;

private:
    std::shared_ptr<const ZtfxArchive> m_archive;
    std::vector<ZtfxArray> m_arrays;
};

/// Reads the values of one array, from the first on, and checks them against the checksum in the end.
class ZtfxArrayReader {
public:
    ZtfxArrayReader(const ZtfxArrays& arrays, const ZtfxArray& array);

    bool open(Error* error);

    bool readBytes(void* out, std::size_t count, Error* error);

    /// Reads reals, which the file may hold in 32 bits.
    bool readDoubles(double* out, std::size_t count, Error* error);

    /// To be called behind the last value.
    bool finish(Error* error);

private:
    const ZtfxArrays& m_arrays;
    const ZtfxArray& m_array;
    ZtfxEntry m_entry;
    ZtfxEntryReader m_reader;
    ZtfxHasher m_hasher;
};

} // namespace orv::ug
