#pragma once

#include "OrvImportCae/Hdf5Input.h"

#include <cstdint>
#include <map>
#include <string_view>
#include <utility>

namespace orv::imp::cae {

/// The links or attributes of an object that has many. They are found by ids, in blocks that double in size row by row.
class Hdf5FractalHeap {
public:
    Hdf5FractalHeap(Hdf5Input& input, std::uint64_t address);

    /// Valid as long as this.
    Hdf5Cursor item(Hdf5Cursor id, const char* what);

private:
    void readHead();
    void checkTable(const Hdf5Cursor& cursor) const;
    Hdf5Cursor managedItem(Hdf5Cursor& id, const char* what);
    Hdf5Cursor hugeItem(Hdf5Cursor& id, const char* what);
    void readHugeItems();

    std::uint64_t rowSize(std::uint64_t row) const;
    const Hdf5Block& directBlock(std::uint64_t address, std::uint64_t size, std::uint64_t offset);
    const Hdf5Block& indirectBlock(std::uint64_t address, std::uint64_t rows, std::uint64_t offset);
    void checkBlock(const Hdf5Block& block, std::string_view magic, std::uint64_t offset, const char* what) const;

    Hdf5Input& m_input;
    std::uint64_t m_address;
    std::uint64_t m_idSize = 0;
    std::uint64_t m_flags = 0;
    std::uint64_t m_largestManaged = 0;
    std::uint64_t m_hugeTree = HDF5_UNDEFINED;
    std::uint64_t m_managedSize = 0;
    std::uint64_t m_width = 0;     ///< Blocks of a row.
    std::uint64_t m_firstSize = 0; ///< Of a block of the first two rows.
    std::uint64_t m_largestDirect = 0;
    std::uint64_t m_offsetBits = 0;
    std::uint64_t m_root = HDF5_UNDEFINED;
    std::uint64_t m_rootRows = 0;                ///< 0 when the root is a direct block.
    std::map<std::uint64_t, Hdf5Block> m_blocks; ///< By their addresses.
    std::map<std::uint64_t, Hdf5Block> m_hugeItems;
    std::map<std::uint64_t, std::pair<std::uint64_t, std::uint64_t>> m_hugePlaces; ///< Addresses and sizes, by id.
    bool m_areHugeRead = false;
};

} // namespace orv::imp::cae
