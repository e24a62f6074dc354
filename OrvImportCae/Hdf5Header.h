#pragma once

#include "OrvImportCae/Hdf5Input.h"

#include <cstdint>
#include <vector>

namespace orv::imp::cae {

/// What messages in the headers of objects are, by their numbers in files.
enum Hdf5MessageType : std::uint64_t {
    HDF5_SPACE = 1,
    HDF5_LINK_INFO = 2,
    HDF5_TYPE = 3,
    HDF5_OLD_FILL = 4,
    HDF5_FILL = 5,
    HDF5_LINK = 6,
    HDF5_EXTERNAL_FILES = 7,
    HDF5_LAYOUT = 8,
    HDF5_GROUP_INFO = 10,
    HDF5_FILTERS = 11,
    HDF5_ATTRIBUTE = 12,
    HDF5_COMMENT = 13,
    HDF5_OLD_TIME = 14,
    HDF5_SHARED_TABLE = 15,
    HDF5_CONTINUATION = 16,
    HDF5_SYMBOLS = 17,
    HDF5_TIME = 18,
    HDF5_TREE_SIZES = 19,
    HDF5_DRIVER = 20,
    HDF5_ATTRIBUTE_INFO = 21,
    HDF5_REFERENCES = 22,
    HDF5_FREE_SPACE = 23,
    HDF5_CACHE_IMAGE = 24,
};

struct Hdf5Message {
    std::uint64_t type = 0;
    bool isShared = false; ///< The body tells where the message is.
    Hdf5Cursor body;
};

/// The header of an object in memory, with all its blocks.
struct Hdf5Header {
    std::vector<Hdf5Block> blocks;
    std::vector<Hdf5Message> messages; ///< Into the blocks.

    /// The first of a type; null when there is none.
    const Hdf5Message* find(std::uint64_t type) const;
};

Hdf5Header readHdf5Header(Hdf5Input& input, std::uint64_t address);

} // namespace orv::imp::cae
