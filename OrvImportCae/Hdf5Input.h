#pragma once

#include "OrvImportCae/CaeFile.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orv::imp::cae {

/// What is wrong with a file. Thrown by all that goes through one, and caught by checkHdf5File().
struct Hdf5Damage {
    std::uint64_t position = 0; ///< Byte of the file.
    std::string text;
};

/// An address that points nowhere, whatever the size of addresses in the file.
constexpr std::uint64_t HDF5_UNDEFINED = ~std::uint64_t(0);

/// What the superblock tells of numbers and of nodes.
struct Hdf5Sizes {
    std::size_t address = 8;   ///< Bytes of one.
    std::size_t length = 8;    ///< Bytes of one.
    std::uint64_t leafK = 4;   ///< Half of the symbols that a node has room for.
    std::uint64_t groupK = 16; ///< Half of the children that a B-tree node of groups has room for.
    std::uint64_t chunkK = 32; ///< The same of chunks.
};

/// Reads numbers and texts of a piece of a file, one after the other. Whatever runs over its end is a Hdf5Damage.
class Hdf5Cursor {
public:
    /// `what` tells people what the piece is: "an attribute".
    Hdf5Cursor(std::string_view bytes, std::uint64_t position, const Hdf5Sizes& sizes, const char* what);

    std::uint64_t number(std::size_t size);
    std::uint64_t address();
    std::uint64_t length();

    /// Those up to a zero, which is passed over.
    std::string_view text();
    std::string_view bytes(std::uint64_t size);
    void skip(std::uint64_t size);

    /// The next bytes as a piece of their own.
    Hdf5Cursor piece(std::uint64_t size, const char* what);

    /// Passes over a signature.
    void expect(std::string_view magic);

    /// Fails at the last byte that was read unless `found` is one of `least` to `most`.
    void expectBetween(const char* what, std::uint64_t found, std::uint64_t least, std::uint64_t most) const;

    std::uint64_t position() const; ///< Of the next byte.
    std::uint64_t left() const;
    const Hdf5Sizes& sizes() const;

    [[noreturn]] void fail(const std::string& text) const;

    /// The same at the last byte that was read.
    [[noreturn]] void failAtLast(const std::string& text) const;

private:
    std::string_view m_bytes;
    std::size_t m_at = 0;
    std::uint64_t m_position;
    const Hdf5Sizes* m_sizes;
    const char* m_what;
};

/// A piece of a file in memory. Cursors into it stay good when it moves.
struct Hdf5Block {
    std::vector<char> bytes;
    std::uint64_t position = 0;

    Hdf5Cursor cursor(const Hdf5Sizes& sizes, const char* what) const;
};

/// An HDF5 file. Addresses count from where its superblock is.
class Hdf5Input {
public:
    bool open(const std::string& filename, ug::Error* error);

    const std::string& name() const;
    std::uint64_t fileSize() const;

    void setBase(std::uint64_t base);
    void setSizes(const Hdf5Sizes& sizes);
    const Hdf5Sizes& sizes() const;

    /// A block of metadata. All of them together cannot be more than the file, so many that overlap are a Hdf5Damage.
    Hdf5Block read(std::uint64_t address, std::uint64_t size, const char* what);

    /// The same of a block with a sum in its last four bytes, which are taken off.
    Hdf5Block readSummed(std::uint64_t address, std::uint64_t size, const char* what);

    /// The first bytes of a block that may be the last of the file: at most so many.
    Hdf5Block readSome(std::uint64_t address, std::uint64_t most, const char* what);

    /// Fails unless there is all of it in the file.
    void expectRoom(std::uint64_t address, std::uint64_t size, const char* what) const;

    [[noreturn]] void fail(std::uint64_t address, const std::string& text) const;

private:
    CaeFile m_file;
    CaeBytes m_bytes{m_file};
    std::uint64_t m_base = 0;
    std::uint64_t m_done = 0;
    Hdf5Sizes m_sizes;
};

/// Bob Jenkins' lookup3, by which HDF5 sums its blocks.
std::uint32_t hdf5Sum(std::string_view bytes);

/// The product, or the largest number there is.
std::uint64_t hdf5Product(std::uint64_t a, std::uint64_t b);

} // namespace orv::imp::cae
