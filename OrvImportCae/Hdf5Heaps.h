#pragma once

#include "OrvImportCae/Hdf5Input.h"

#include <cstdint>
#include <map>
#include <unordered_map>

namespace orv::imp::cae {

/// The texts of a group of the first kind, or of a list of external files.
class Hdf5LocalHeap {
public:
    Hdf5LocalHeap(Hdf5Input& input, std::uint64_t address);

    /// Fails unless a text begins there and ends within the heap. `user` is where that is told.
    void expectText(std::uint64_t offset, const Hdf5Cursor& user) const;

private:
    void checkFreeList(const Hdf5Block& data, std::uint64_t first, const Hdf5Sizes& sizes) const;

    std::uint64_t m_textEnd = 0; ///< Behind the last zero.
};

/// The heaps of all values whose sizes differ. Each is read once.
class Hdf5GlobalHeaps {
public:
    explicit Hdf5GlobalHeaps(Hdf5Input& input);

    /// Valid as long as this.
    Hdf5Cursor item(std::uint64_t address, std::uint64_t index);

private:
    struct Heap {
        Hdf5Block block;
        std::unordered_map<std::uint64_t, Hdf5Cursor> items;
    };

    void readItems(Heap* heap) const;

    Hdf5Input& m_input;
    std::map<std::uint64_t, Heap> m_heaps; ///< By their addresses.
};

} // namespace orv::imp::cae
