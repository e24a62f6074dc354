#pragma once

#include "OrvImportCae/CaeFile.h"
#include "OrvUnstructGrid/Error.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

class vtkDataCompressor;

namespace orv::imp::cae {

/// How a VTK XML file has all its arrays that are not texts.
struct XmlLayout {
    bool isSwapped = false;                  ///< Numbers have their bytes in the other order than this machine's.
    std::size_t numberSize = 4;              ///< Bytes of the numbers in front of an array: 4 or 8.
    vtkDataCompressor* compressor = nullptr; ///< Of the blocks that arrays are cut into; null when they are not packed.
};

/// The bytes of one array, be they in the file as they are or in base64, packed or not. In front of them stands how
/// many there are, or how large the blocks are, packed and unpacked. None of these numbers is believed: never is more
/// memory taken than what the rest of the file can be unpacked to.
class XmlBytes {
public:
    /// Told what share has been read so far.
    using Tell = std::function<void(double)>;

    XmlBytes(const CaeFile& file, const XmlLayout& layout);

    /// Reads what stands in front of the array, at that byte of the file. Once per object. Texts of errors begin with
    /// "byte 3400: ".
    bool open(std::int64_t begin, bool isBase64, ug::Error* error);

    /// How many there are, unpacked.
    std::uint64_t size() const;

    /// How many are best read at once, from a multiple of it on.
    std::size_t pieceSize() const;

    /// They must all be within size().
    bool read(std::uint64_t offset, std::size_t count, unsigned char* bytes, const Tell& tell, ug::Error* error);

private:
    bool openPlain(ug::Error* error);
    bool openPacked(ug::Error* error);
    bool listBlocks(const unsigned char* packedSizes, std::size_t blockCount, ug::Error* error);
    bool readPlain(std::uint64_t offset, std::size_t count, unsigned char* bytes, const Tell& tell, ug::Error* error);
    bool readPacked(std::uint64_t offset, std::size_t count, unsigned char* bytes, const Tell& tell, ug::Error* error);
    bool copy(std::uint64_t offset, std::size_t count, unsigned char* bytes);
    bool unpack(std::size_t block, unsigned char* bytes, ug::Error* error);

    const unsigned char* at(std::uint64_t offset, std::size_t count);
    std::uint64_t room() const;
    std::uint64_t numberOf(const unsigned char* numbers, std::size_t index) const;
    std::size_t blockSize(std::size_t block) const;
    bool fail(const std::string& text, ug::Error* error) const;

    const CaeFile& m_file;
    CaeBytes m_source;
    XmlLayout m_layout;
    bool m_isBase64 = false;
    std::int64_t m_headBegin = 0; ///< Byte of the file.
    std::int64_t m_begin = 0;     ///< Where what at() gives begins: bytes, or a text in base64.
    std::uint64_t m_size = 0;

    std::vector<std::uint64_t> m_blockEnds; ///< Of the packed blocks.
    std::size_t m_blockSize = 0;            ///< Unpacked, of all blocks but the last one.
    std::size_t m_lastBlockSize = 0;

    std::vector<unsigned char> m_decoded;
    std::vector<unsigned char> m_block; ///< One of which only a part is wanted.
};

} // namespace orv::imp::cae
