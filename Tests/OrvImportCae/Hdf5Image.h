#pragma once

#include "OrvImportCae/Hdf5Input.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

// Small HDF5 files, put together byte by byte as the format is described.

namespace orvtest {

constexpr std::uint64_t NOWHERE = ~std::uint64_t(0);

/// A number with its smallest byte first.
inline std::string le(std::uint64_t number, std::size_t size) {
    std::string bytes;
    for (std::size_t i = 0; i < size; ++i) {
        bytes += char(number >> 8 * i & 0xff);
    }
    return bytes;
}

inline std::string zeros(std::size_t size) {
    return std::string(size, '\0');
}

struct Hdf5ImageMessage {
    std::uint64_t type;
    std::string body;
    std::uint64_t flags = 0;
};

constexpr std::uint64_t HDF5_HEADER_AT = 96; ///< Of the outermost group in plain images, behind the superblock.
constexpr std::uint64_t HDF5_BODY_AT = 120;  ///< Of the first message in it.
constexpr std::uint64_t HDF5_MORE_AT = 1024; ///< Of what is put behind.

/// Version 1 of an object header.
inline std::string plainHeader(const std::vector<Hdf5ImageMessage>& messages) {
    std::string all;
    for (const Hdf5ImageMessage& message : messages) {
        const std::string body = message.body + zeros((8 - message.body.size() % 8) % 8);
        all += le(message.type, 2) + le(body.size(), 2) + le(message.flags, 1) + zeros(3) + body;
    }
    return le(1, 1) + zeros(1) + le(messages.size(), 2) + le(1, 4) + le(all.size(), 4) + zeros(4) + all;
}

/// A file of version 0, whose outermost group has these messages. `more` begins at HDF5_MORE_AT.
inline std::string plainImage(const std::vector<Hdf5ImageMessage>& messages, const std::string& more = "") {
    std::string rest = plainHeader(messages);
    rest.resize(HDF5_MORE_AT - HDF5_HEADER_AT);
    rest += more;
    return "\211HDF\r\n\032\n" + le(0, 5) + le(8, 1) + le(8, 1) + zeros(1) + le(4, 2) + le(16, 2) + zeros(4) +
           le(0, 8) + le(NOWHERE, 8) + le(HDF5_HEADER_AT + rest.size(), 8) + le(NOWHERE, 8) + le(0, 8) +
           le(HDF5_HEADER_AT, 8) + zeros(4 + 4 + 16) + rest;
}

inline std::string withSum(const std::string& bytes) {
    return bytes + le(orv::imp::cae::hdf5Sum(bytes), 4);
}

/// Version 2 of an object header, with a size of two bytes.
inline std::string summedHeader(const std::vector<Hdf5ImageMessage>& messages) {
    std::string all;
    for (const Hdf5ImageMessage& message : messages) {
        all += le(message.type, 1) + le(message.body.size(), 2) + le(message.flags, 1) + message.body;
    }
    return withSum("OHDR" + le(2, 1) + le(1, 1) + le(all.size(), 2) + all);
}

constexpr std::uint64_t HDF5_SUMMED_HEADER_AT = 48;
constexpr std::uint64_t HDF5_SUMMED_BODY_AT = 60; ///< Of the first message.

/// A file of version 2. `more` begins at HDF5_MORE_AT.
inline std::string summedImage(const std::vector<Hdf5ImageMessage>& messages, const std::string& more = "",
                               std::uint64_t extension = NOWHERE) {
    std::string rest = summedHeader(messages);
    rest.resize(HDF5_MORE_AT - HDF5_SUMMED_HEADER_AT);
    rest += more;
    return withSum("\211HDF\r\n\032\n" + le(2, 1) + le(8, 1) + le(8, 1) + zeros(1) + le(0, 8) + le(extension, 8) +
                   le(HDF5_SUMMED_HEADER_AT + rest.size(), 8) + le(HDF5_SUMMED_HEADER_AT, 8)) +
           rest;
}

/// Bodies of messages that fit together.
/// @{

/// Version 1 of a dataspace.
inline std::string spaceBody(const std::vector<std::uint64_t>& sizes) {
    std::string body = le(1, 1) + le(sizes.size(), 1) + zeros(6);
    for (const std::uint64_t size : sizes) {
        body += le(size, 8);
    }
    return body;
}

/// Whole numbers of so many bytes.
inline std::string integerBody(std::uint64_t size) {
    return le(0x10, 1) + zeros(3) + le(size, 4) + le(0, 2) + le(8 * size, 2);
}

/// Version 3 of a layout in chunks whose B-tree is at HDF5_MORE_AT.
inline std::string chunkedBody(const std::vector<std::uint64_t>& chunk) {
    std::string body = le(3, 1) + le(2, 1) + le(chunk.size(), 1) + le(HDF5_MORE_AT, 8);
    for (const std::uint64_t size : chunk) {
        body += le(size, 4);
    }
    return body;
}

/// @}

/// What messages are, by their numbers.
enum Hdf5ImageType : std::uint64_t {
    SPACE = 1,
    LINK_INFO = 2,
    TYPE = 3,
    OLD_FILL = 4,
    FILL = 5,
    LINK = 6,
    EXTERNAL_FILES = 7,
    LAYOUT = 8,
    GROUP_INFO = 10,
    FILTERS = 11,
    ATTRIBUTE = 12,
    COMMENT = 13,
    OLD_TIME = 14,
    SHARED_TABLE = 15,
    CONTINUATION = 16,
    SYMBOLS = 17,
    TIME = 18,
    TREE_SIZES = 19,
    DRIVER = 20,
    ATTRIBUTE_INFO = 21,
    REFERENCES = 22,
    FREE_SPACE = 23,
    CACHE_IMAGE = 24,
};

inline std::string patched(std::string bytes, std::size_t at, const std::string& with) {
    return bytes.replace(at, with.size(), with);
}

/// Version 3 has places of as few bytes as the size needs, older ones of four.
inline std::string compound(std::uint64_t version, std::uint64_t count, std::uint64_t size,
                            const std::string& members) {
    return le(version << 4 | 6, 1) + le(count, 3) + le(size, 4) + members;
}

/// Lists of lists of bytes.
inline std::string nested(int depth) {
    std::string types;
    for (int i = 0; i < depth; ++i) {
        types += le(0x39, 1) + zeros(3) + le(16, 4);
    }
    return types + integerBody(1);
}

/// Version 1: each part fills eights of bytes.
inline std::string attribute(const std::string& name, const std::string& type, const std::string& space,
                             const std::string& values) {
    const auto padded = [](const std::string& part) { return part + zeros((8 - part.size() % 8) % 8); };
    return le(1, 2) + le(name.size(), 2) + le(type.size(), 2) + le(space.size(), 2) + padded(name) + padded(type) +
           padded(space) + values;
}

inline std::string newAttribute(std::uint64_t version, std::uint64_t flags, const std::string& type,
                                const std::string& values) {
    return le(version, 1) + le(flags, 1) + le(2, 2) + le(type.size(), 2) + le(8, 2) + (version == 3 ? zeros(1) : "") +
           "a" + zeros(1) + type + spaceBody({}) + values;
}

inline const std::string NAME = "name" + zeros(1);

inline std::string link(std::uint64_t kind, const std::string& target) {
    return le(1, 1) + le(8, 1) + le(kind, 1) + le(1, 1) + "a" + target;
}

inline std::string target(const std::string& bytes) {
    return le(bytes.size(), 2) + bytes;
}

/// A data set of two times three whole numbers of four bytes, and one more message behind its layout.
inline std::string dataImage(const std::string& layout, const std::string& more = "",
                             const Hdf5ImageMessage& other = {0, ""}) {
    return plainImage({{SPACE, spaceBody({2, 3})}, {TYPE, integerBody(4)}, {LAYOUT, layout}, other}, more);
}

constexpr std::uint64_t LAYOUT_AT = HDF5_BODY_AT + 24 + 8 + 16 + 8; ///< Of its body.

inline std::string contiguous(std::uint64_t address, std::uint64_t size) {
    return le(3, 1) + le(1, 1) + le(address, 8) + le(size, 8);
}

inline std::string compact(std::uint64_t size) {
    return le(3, 1) + le(0, 1) + le(size, 2) + zeros(size);
}

inline Hdf5ImageMessage filters(const std::vector<std::uint64_t>& ids) {
    std::string body = le(2, 1) + le(ids.size(), 1);
    for (const std::uint64_t id : ids) {
        body += le(id, 2) + le(0, 2) + le(0, 2);
    }
    return {FILTERS, body};
}

/// A heap with its texts behind it, at the address where it is put.
inline std::string localHeap(std::uint64_t at, std::uint64_t size, std::uint64_t free, const std::string& data) {
    return "HEAP" + zeros(4) + le(size, 8) + le(free, 8) + le(at + 32, 8) + data;
}

constexpr std::uint64_t LOCAL_HEAP_SIZE = 32 + 32; // Of the one in the images of groups.

/// A B-tree of one leaf with room for 32, whose child is behind it.
inline std::string groupLeaf(std::uint64_t at, std::uint64_t lastName) {
    std::string node =
        "TREE" + zeros(2) + le(1, 2) + le(NOWHERE, 8) + le(NOWHERE, 8) + le(0, 8) + le(at + 544, 8) + le(lastName, 8);
    node.resize(24 + 32 * 16 + 8);
    return node;
}

inline std::string symbolNode(std::uint64_t count, const std::string& entries) {
    std::string node = "SNOD" + le(1, 2) + le(count, 2) + entries;
    node.resize(8 + 8 * 40);
    return node;
}

inline std::string symbol(std::uint64_t name, std::uint64_t address, std::uint64_t kind, std::uint64_t value) {
    return le(name, 8) + le(address, 8) + le(kind, 4) + zeros(4) + le(value, 4) + zeros(12);
}

constexpr std::uint64_t LEAF_AT = HDF5_MORE_AT + LOCAL_HEAP_SIZE;

constexpr std::uint64_t SYMBOLS_AT = LEAF_AT + 544;

inline std::string groupImage(const std::string& heap, const std::string& leaf, const std::string& symbols) {
    return plainImage({{SYMBOLS, le(LEAF_AT, 8) + le(HDF5_MORE_AT, 8)}}, heap + leaf + symbols);
}

/// Names at 8 and 16, and behind them what has no end.
inline const std::string HEAP =
    localHeap(HDF5_MORE_AT, 32, 1, zeros(8) + "one" + zeros(5) + "another" + zeros(1) + "no zero!");

inline const std::string LEAF = groupLeaf(LEAF_AT, 16);

} // namespace orvtest
