#pragma once

#include "OrvImportCae/Hdf5Input.h"

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

} // namespace orvtest
