#pragma once

#include "OrvImportCae/Hdf5Input.h"
#include "OrvImportCae/Hdf5Types.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace orv::imp::cae {

/// How many values there are.
struct Hdf5Space {
    std::vector<std::uint64_t> sizes; ///< The slowest index first.
    std::vector<std::uint64_t> most;  ///< What these may become; HDF5_UNDEFINED when there is no limit.
    std::uint64_t count = 1;
};

/// Where values are that are not in chunks, or how they are cut into chunks.
struct Hdf5Layout {
    enum Class : std::uint64_t { COMPACT, CONTIGUOUS, CHUNKED, VIRTUAL };
    enum Index : std::uint64_t {
        OLD_TREE = 0,
        SINGLE = 1,
        IMPLICIT = 2,
        FIXED_ARRAY = 3,
        EXTENSIBLE_ARRAY = 4,
        TREE = 5
    };

    std::uint64_t version = 0;
    std::uint64_t kind = COMPACT;
    std::uint64_t address = HDF5_UNDEFINED; ///< Of values, of the index of chunks, or of a list in the global heap.
    std::uint64_t size = 0;                 ///< Bytes of values that are not in chunks; HDF5_UNDEFINED when not told.
    std::uint64_t item = 0;                 ///< Of the list in the global heap.
    std::vector<std::uint64_t> chunk;       ///< Along each index, and the bytes of a value.
    std::uint64_t index = OLD_TREE;
    bool hasPlainEdges = false;                ///< Chunks at the ends that are not whole go through no filters.
    std::uint64_t packedSize = HDF5_UNDEFINED; ///< Of a single chunk that went through filters.
    std::uint64_t packedMask = 0;              ///< Its filters that were left out.
};

/// What chunks go through on their way into the file.
struct Hdf5Filter {
    enum Id : std::uint64_t { DEFLATE = 1, SHUFFLE = 2, FLETCHER = 3, SZIP = 4, NBIT = 5, SCALE_OFFSET = 6 };

    std::uint64_t id = 0;
    std::vector<std::uint32_t> values;
};

struct Hdf5Link {
    enum Class : std::uint64_t { HARD = 0, SOFT = 1, EXTERNAL = 64 };

    std::uint64_t kind = HARD;
    std::string name;
    std::uint64_t address = HDF5_UNDEFINED; ///< Of the object, for hard ones.
    std::string file;                       ///< For external ones.
};

/// Where the links or attributes of an object are when they are not in its header.
struct Hdf5Dense {
    std::uint64_t heap = HDF5_UNDEFINED;
    std::uint64_t names = HDF5_UNDEFINED;
    std::uint64_t order = HDF5_UNDEFINED;
};

struct Hdf5Attribute {
    Hdf5Type type;
    Hdf5Space space;
    Hdf5Cursor values;
};

/// Gives what a message says that is kept elsewhere.
using Hdf5SharedType = std::function<Hdf5Type(Hdf5Cursor& message)>;

/// @{
/// Each reads the body of a message.
Hdf5Space readHdf5Space(Hdf5Cursor& message);
Hdf5Layout readHdf5Layout(Hdf5Cursor& message);
std::vector<Hdf5Filter> readHdf5Filters(Hdf5Cursor& message);
Hdf5Link readHdf5Link(Hdf5Cursor& message);
Hdf5Dense readHdf5LinkInfo(Hdf5Cursor& message);
Hdf5Dense readHdf5AttributeInfo(Hdf5Cursor& message);
Hdf5Attribute readHdf5Attribute(Hdf5Cursor& message, const Hdf5SharedType& shared);
/// The bytes of the value that is there for those that are missing. 0 when there is none.
std::uint64_t readHdf5Fill(Hdf5Cursor& message);
std::uint64_t readHdf5OldFill(Hdf5Cursor& message);
/// The address of the header that a shared message is in.
std::uint64_t readHdf5Shared(Hdf5Cursor& message);
/// @}

/// Looks at those messages that nothing else depends on.
void checkHdf5Message(std::uint64_t type, Hdf5Cursor& message);

} // namespace orv::imp::cae
