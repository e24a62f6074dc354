#include "OrvImportCae/Hdf5Superblock.h"

#include "OrvImportCae/Hdf5Header.h"
#include "OrvImportCae/Hdf5Messages.h"

#include <algorithm>

namespace orv::imp::cae {
namespace {

constexpr const char* SUPERBLOCK = "a superblock";
constexpr std::string_view MAGIC = "\211HDF\r\n\032\n";
constexpr std::uint64_t SECOND_PLACE = 512; // Something else may be in front; places then double.
constexpr std::uint64_t MOST_K = 0xffff;

/// What a superblock tells besides sizes.
struct Superblock {
    std::uint64_t base = 0;
    std::uint64_t extension = HDF5_UNDEFINED;
    std::uint64_t end = 0;
    std::uint64_t root = HDF5_UNDEFINED;
};

std::optional<std::uint64_t> findSuperblock(Hdf5Input& input) {
    for (std::uint64_t at = 0; at < input.fileSize(); at = at == 0 ? SECOND_PLACE : 2 * at) {
        const Hdf5Block found = input.readSome(at, MAGIC.size(), SUPERBLOCK);
        if (std::equal(MAGIC.begin(), MAGIC.end(), found.bytes.begin(), found.bytes.end())) {
            return at;
        }
    }
    return std::nullopt;
}

void readSizes(Hdf5Cursor& cursor, Hdf5Sizes* sizes) {
    for (std::size_t* size : {&sizes->address, &sizes->length}) {
        *size = std::size_t(cursor.number(1));
        cursor.expectBetween("the bytes of addresses and lengths", *size, 2, 8);
        if (*size != 2 && *size != 4 && *size != 8) {
            cursor.failAtLast("expected addresses and lengths of 2, 4 or 8 bytes, found " + std::to_string(*size));
        }
    }
}

Superblock readOld(Hdf5Input& input, Hdf5Cursor& cursor, std::uint64_t version) {
    Hdf5Sizes sizes;
    cursor.expectBetween("the version of free space", cursor.number(1), 0, 0);
    cursor.expectBetween("the version of the outermost group", cursor.number(1), 0, 0);
    cursor.skip(1);
    cursor.expectBetween("the version of shared headers", cursor.number(1), 0, 0);
    readSizes(cursor, &sizes);
    cursor.skip(1);
    sizes.leafK = cursor.number(2);
    cursor.expectBetween("the room of symbol nodes", sizes.leafK, 1, MOST_K);
    sizes.groupK = cursor.number(2);
    cursor.expectBetween("the room of B-trees of groups", sizes.groupK, 1, MOST_K);
    cursor.skip(4);
    if (version == 1) {
        sizes.chunkK = cursor.number(2);
        cursor.expectBetween("the room of B-trees of chunks", sizes.chunkK, 1, MOST_K);
        cursor.skip(2);
    }
    input.setSizes(sizes);
    Superblock found;
    found.base = cursor.address();
    cursor.address(); // Of free space, which is never told.
    found.end = cursor.address();
    if (cursor.address() != HDF5_UNDEFINED) {
        cursor.failAtLast("expected a file of its own, found one of several that belong together");
    }
    cursor.length(); // The name of the outermost group.
    found.root = cursor.address();
    const std::uint64_t kind = cursor.number(4);
    cursor.expectBetween("the kind of the outermost group", kind, 0, 2);
    cursor.skip(4 + 16);
    return found;
}

Superblock readNew(Hdf5Input& input, Hdf5Cursor& cursor) {
    Hdf5Sizes sizes;
    readSizes(cursor, &sizes);
    input.setSizes(sizes);
    input.readSummed(0, MAGIC.size() + 4 + 4 * sizes.address + 4, SUPERBLOCK);
    cursor.skip(1);
    Superblock found;
    found.base = cursor.address();
    found.extension = cursor.address();
    found.end = cursor.address();
    found.root = cursor.address();
    return found;
}

// Things that few files tell, among them other sizes of nodes.
void readExtension(Hdf5Input& input, std::uint64_t address) {
    const Hdf5Header header = readHdf5Header(input, address);
    Hdf5Sizes sizes = input.sizes();
    for (const Hdf5Message& message : header.messages) {
        Hdf5Cursor body = message.body;
        if (message.type != HDF5_TREE_SIZES) {
            checkHdf5Message(message.type, body);
            continue;
        }
        body.skip(1);
        for (std::uint64_t* k : {&sizes.chunkK, &sizes.groupK, &sizes.leafK}) {
            *k = body.number(2);
            body.expectBetween("the room of B-trees", *k, 1, MOST_K);
        }
    }
    input.setSizes(sizes);
}

} // namespace

std::optional<std::uint64_t> readHdf5Superblock(Hdf5Input& input) {
    constexpr std::uint64_t LONGEST = 128; // Of all versions, with addresses of eight bytes.
    constexpr std::uint64_t LATEST_VERSION = 3;
    const std::optional<std::uint64_t> at = findSuperblock(input);
    if (!at) {
        return std::nullopt;
    }
    input.setBase(*at);
    const Hdf5Block block = input.readSome(0, LONGEST, SUPERBLOCK);
    Hdf5Cursor cursor = block.cursor(input.sizes(), SUPERBLOCK); // Goes by the sizes that it finds itself.
    cursor.expect(MAGIC);
    const std::uint64_t version = cursor.number(1);
    cursor.expectBetween("the version", version, 0, LATEST_VERSION);
    const Superblock found = version < 2 ? readOld(input, cursor, version) : readNew(input, cursor);
    // Whatever has been put in front of the file since has moved its end.
    cursor.expectBetween("the end", found.end, found.base, HDF5_UNDEFINED);
    const std::uint64_t end = found.end - found.base;
    if (end > input.fileSize() - *at) {
        input.fail(0, "expected " + std::to_string(end) + " bytes, found " + std::to_string(input.fileSize() - *at) +
                          ": the file ends too early");
    }
    if (found.extension != HDF5_UNDEFINED) {
        readExtension(input, found.extension);
    }
    return found.root;
}

} // namespace orv::imp::cae
