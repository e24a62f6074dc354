#pragma once

#include "OrvImportCae/Hdf5Input.h"

#include <cstdint>
#include <vector>

namespace orv::imp::cae {

/// What items are, by their numbers in files.
enum Hdf5Kind : std::uint64_t {
    HDF5_INTEGER = 0,
    HDF5_FLOAT = 1,
    HDF5_INSTANT = 2,
    HDF5_STRING = 3,
    HDF5_BITS = 4,
    HDF5_OPAQUE = 5,
    HDF5_COMPOUND = 6,
    HDF5_REFERENCE = 7,
    HDF5_ENUM = 8,
    HDF5_VARIABLE = 9, ///< As many items as each value has, in the global heap.
    HDF5_ARRAY = 10,
};

/// What values are made of.
struct Hdf5Type {
    std::uint64_t kind = HDF5_INTEGER;
    std::uint64_t size = 0;             ///< Bytes of a value.
    std::vector<Hdf5Type> parts;        ///< The members of compounds; the one that others are made of.
    std::vector<std::uint64_t> offsets; ///< Of members.

    /// Whether some of it is in the global heap.
    bool isVariable() const;
};

/// Reads the message that describes a type. Bits lie within their items, members and items within what they make up.
Hdf5Type readHdf5Type(Hdf5Cursor& message);

} // namespace orv::imp::cae
