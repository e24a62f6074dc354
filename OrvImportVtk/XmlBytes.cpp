#include "OrvImportVtk/XmlBytes.h"

#include "OrvImportVtk/Base64.h"

#include <vtkByteSwap.h>
#include <vtkDataCompressor.h>

#include <algorithm>
#include <cstring>

namespace orv::imp::cae {
namespace {

/// How many times as large as its packed bytes a block can be at most.
struct Compression {
    const char* className;
    std::uint64_t most;
};

constexpr Compression COMPRESSIONS[] = {
    {"vtkZLibDataCompressor", 1032}, // 258 bytes by two codes of one bit each.
    {"vtkLZ4DataCompressor", 255},   // A byte tells up to 255 more of a match.
};

// LZMA: 14 decisions for 273 bytes, which cost at least 0.022 bits each.
constexpr std::uint64_t MOST_COMPRESSION = 8192;

std::uint64_t mostCompressionOf(vtkDataCompressor* compressor) {
    for (const Compression& compression : COMPRESSIONS) {
        if (compressor->IsA(compression.className)) {
            return compression.most;
        }
    }
    return MOST_COMPRESSION;
}

} // namespace

XmlBytes::XmlBytes(const CaeFile& file, const XmlLayout& layout) : m_file(file), m_source(file), m_layout(layout) {}

bool XmlBytes::open(std::int64_t begin, bool isBase64, ug::Error* error) {
    m_headBegin = begin;
    m_begin = begin;
    m_isBase64 = isBase64;
    return m_layout.compressor ? openPacked(error) : openPlain(error);
}

std::uint64_t XmlBytes::size() const {
    return m_size;
}

std::size_t XmlBytes::pieceSize() const {
    constexpr std::size_t PIECE = 3 << 13; // Its text has 32768 characters, which is what CaeBytes reads at once.
    return m_blockSize > 0 ? m_blockSize : PIECE;
}

bool XmlBytes::read(std::uint64_t offset, std::size_t count, unsigned char* bytes, const Tell& tell, ug::Error* error) {
    return m_layout.compressor ? readPacked(offset, count, bytes, tell, error)
                               : readPlain(offset, count, bytes, tell, error);
}

bool XmlBytes::openPlain(ug::Error* error) {
    const unsigned char* head = at(0, m_layout.numberSize);
    if (!head) {
        return fail("expected the size of the array, found none", error);
    }
    m_size = numberOf(head, 0);
    return m_size <= room() - m_layout.numberSize ||
           fail("expected " + std::to_string(m_size) + " bytes, found the end of the file before", error);
}

bool XmlBytes::openPacked(ug::Error* error) {
    constexpr std::size_t FIXED = 3;
    const unsigned char* head = at(0, FIXED * m_layout.numberSize);
    if (!head) {
        return fail("expected the sizes of packed blocks, found none", error);
    }
    const std::uint64_t blockCount = numberOf(head, 0);
    const std::uint64_t size = numberOf(head, 1);
    const std::uint64_t lastSize = numberOf(head, 2);
    if (blockCount == 0) {
        return true;
    }
    if (size == 0 || lastSize > size) {
        return fail("expected blocks of some bytes, found " + std::to_string(size) + " and at last " +
                        std::to_string(lastSize),
                    error);
    }
    m_blockSize = size;
    m_lastBlockSize = lastSize == 0 ? size : lastSize;
    const bool areThere = blockCount <= room() / m_layout.numberSize;
    const unsigned char* sizes = areThere ? at(FIXED * m_layout.numberSize, blockCount * m_layout.numberSize) : nullptr;
    if (!sizes) {
        return fail("expected " + std::to_string(blockCount) +
                        " sizes of packed blocks, found the end of the file before",
                    error);
    }
    const std::size_t headSize = (FIXED + blockCount) * m_layout.numberSize;
    m_begin += std::int64_t(m_isBase64 ? base64Length(headSize) : headSize);
    return listBlocks(sizes, blockCount, error);
}

bool XmlBytes::listBlocks(const unsigned char* packedSizes, std::size_t blockCount, ug::Error* error) {
    const std::uint64_t most = mostCompressionOf(m_layout.compressor);
    std::uint64_t left = room();
    m_blockEnds.resize(blockCount);
    for (std::size_t i = 0; i < blockCount; ++i) {
        const std::uint64_t packed = numberOf(packedSizes, i);
        if (packed > left || blockSize(i) > packed * most) {
            return fail("expected a block of " + std::to_string(blockSize(i)) + " bytes, found " +
                            std::to_string(packed) + " packed ones of the " + std::to_string(left) +
                            " up to the end of the file",
                        error);
        }
        left -= packed;
        m_blockEnds[i] = packed + (i == 0 ? 0 : m_blockEnds[i - 1]);
    }
    m_size = std::uint64_t(m_blockSize) * (blockCount - 1) + m_lastBlockSize;
    return true;
}

bool XmlBytes::readPlain(std::uint64_t offset, std::size_t count, unsigned char* bytes, const Tell& tell,
                         ug::Error* error) {
    for (std::size_t done = 0; done < count;) {
        const std::size_t part = std::min(pieceSize(), count - done);
        if (!copy(m_layout.numberSize + offset + done, part, bytes + done)) {
            return fail("expected " + std::to_string(m_size) + " bytes, found damaged ones", error);
        }
        done += part;
        tell(double(done) / double(count));
    }
    return true;
}

bool XmlBytes::copy(std::uint64_t offset, std::size_t count, unsigned char* bytes) {
    if (!m_isBase64) {
        return m_file.read(m_begin + std::int64_t(offset), reinterpret_cast<char*>(bytes), count) == count;
    }
    const unsigned char* values = at(offset, count);
    if (values) {
        std::memcpy(bytes, values, count);
    }
    return values;
}

bool XmlBytes::readPacked(std::uint64_t offset, std::size_t count, unsigned char* bytes, const Tell& tell,
                          ug::Error* error) {
    for (std::size_t done = 0; done < count;) {
        const std::size_t block = (offset + done) / m_blockSize;
        const std::size_t within = (offset + done) % m_blockSize;
        const std::size_t part = std::min(blockSize(block) - within, count - done);
        const bool isWhole = part == blockSize(block);
        if (!isWhole) {
            m_block.resize(m_blockSize);
        }
        if (!unpack(block, isWhole ? bytes + done : m_block.data(), error)) {
            return false;
        }
        if (!isWhole) {
            std::memcpy(bytes + done, m_block.data() + within, part);
        }
        done += part;
        tell(double(done) / double(count));
    }
    return true;
}

bool XmlBytes::unpack(std::size_t block, unsigned char* bytes, ug::Error* error) {
    const std::uint64_t begin = block == 0 ? 0 : m_blockEnds[block - 1];
    const std::size_t packedSize = m_blockEnds[block] - begin;
    const unsigned char* packed = at(begin, packedSize);
    return (packed &&
            m_layout.compressor->Uncompress(packed, packedSize, bytes, blockSize(block)) == blockSize(block)) ||
           fail("expected a block of " + std::to_string(blockSize(block)) + " bytes, found a damaged one", error);
}

// Null when there are fewer.
const unsigned char* XmlBytes::at(std::uint64_t offset, std::size_t count) {
    if (count > room() || offset > room() - count) {
        return nullptr;
    }
    if (!m_isBase64) {
        return reinterpret_cast<const unsigned char*>(m_source.at(m_begin + std::int64_t(offset), count));
    }
    const std::size_t before = offset % 3; // Bytes that the first four characters stand for, too.
    const char* text = m_source.at(m_begin + std::int64_t(offset / 3 * 4), base64Length(before + count));
    m_decoded.resize(std::max(m_decoded.size(), before + count));
    return text && decodeBase64(text, before + count, m_decoded.data()) ? m_decoded.data() + before : nullptr;
}

// What there is from the begin on, if all the rest of the file belonged to it.
std::uint64_t XmlBytes::room() const {
    const auto left = std::uint64_t(std::max<std::int64_t>(m_file.size() - m_begin, 0));
    return m_isBase64 ? left / 4 * 3 : left;
}

std::uint64_t XmlBytes::numberOf(const unsigned char* numbers, std::size_t index) const {
    const unsigned char* number = numbers + index * m_layout.numberSize;
    const auto read = [&](auto value) {
        std::memcpy(&value, number, sizeof value);
        if (m_layout.isSwapped) {
            vtkByteSwap::SwapVoidRange(&value, 1, sizeof value);
        }
        return std::uint64_t(value);
    };
    return m_layout.numberSize == sizeof(std::uint32_t) ? read(std::uint32_t()) : read(std::uint64_t());
}

std::size_t XmlBytes::blockSize(std::size_t block) const {
    return block + 1 == m_blockEnds.size() ? m_lastBlockSize : m_blockSize;
}

bool XmlBytes::fail(const std::string& text, ug::Error* error) const {
    return ug::fail(error, Str("byte " + std::to_string(m_headBegin) + ": " + text));
}

} // namespace orv::imp::cae
