#pragma once

#include "OrvImportCae/Hdf5Input.h"

#include <cstdint>
#include <functional>

namespace orv::imp::cae {

/// What a B-tree of the first version is of.
enum class Hdf5OldTree : std::uint64_t { GROUP = 0, CHUNKS = 1 };

/// Goes through all nodes of a B-tree of the first version. Tells each key, and each child that is no node, with the
/// key before it; the last key of a node has no child, which is HDF5_UNDEFINED then.
void walkHdf5OldTree(Hdf5Input& input, std::uint64_t address, Hdf5OldTree type, std::uint64_t keySize,
                     const std::function<void(Hdf5Cursor key, std::uint64_t child)>& tell);

/// What a B-tree of the second version is of.
enum class Hdf5Tree : std::uint64_t {
    HUGE_ITEMS = 1,
    LINK_NAMES = 5,
    LINK_ORDER = 6,
    ATTRIBUTE_NAMES = 8,
    ATTRIBUTE_ORDER = 9,
    CHUNKS = 10,
    PACKED_CHUNKS = 11,
};

/// Goes through all nodes of a B-tree of the second version and tells each record. Returns how many there are.
std::uint64_t walkHdf5Tree(Hdf5Input& input, std::uint64_t address, Hdf5Tree type, std::uint64_t recordSize,
                           const std::function<void(Hdf5Cursor record)>& tell);

/// Bytes that the numbers up to one take.
std::size_t hdf5SizeOfNumber(std::uint64_t largest);

} // namespace orv::imp::cae
