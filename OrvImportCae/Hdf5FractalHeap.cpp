#include "OrvImportCae/Hdf5FractalHeap.h"

#include "OrvImportCae/Hdf5Trees.h"

#include <algorithm>
#include <bit>

namespace orv::imp::cae {
namespace {

constexpr const char* HEAD = "the head of a fractal heap";
constexpr const char* DIRECT = "a direct block of a fractal heap";
constexpr const char* INDIRECT = "an indirect block of a fractal heap";
constexpr std::uint64_t IS_SUMMED = 2; // Direct blocks are.
constexpr std::uint64_t SUM_SIZE = 4;

std::uint64_t log2Of(std::uint64_t power) {
    return std::uint64_t(std::bit_width(power)) - 1;
}

} // namespace

Hdf5FractalHeap::Hdf5FractalHeap(Hdf5Input& input, std::uint64_t address) : m_input(input), m_address(address) {
    readHead();
}

void Hdf5FractalHeap::readHead() {
    const Hdf5Sizes& sizes = m_input.sizes();
    const Hdf5Block head = m_input.readSummed(m_address, 26 + 12 * sizes.length + 3 * sizes.address, HEAD);
    Hdf5Cursor cursor = head.cursor(sizes, HEAD);
    cursor.expect("FRHP");
    cursor.expectBetween("the version", cursor.number(1), 0, 0);
    m_idSize = cursor.number(2);
    cursor.expectBetween("the size of filters", cursor.number(2), 0, 0);
    m_flags = cursor.number(1);
    m_largestManaged = cursor.number(4);
    cursor.length(); // The next huge item.
    m_hugeTree = cursor.address();
    cursor.length(); // What is free, and where that is told.
    cursor.address();
    m_managedSize = cursor.length();
    cursor.skip(7 * sizes.length); // Numbers of items, and their bytes.
    m_width = cursor.number(2);
    m_firstSize = cursor.length();
    m_largestDirect = cursor.length();
    m_offsetBits = cursor.number(2);
    cursor.number(2); // The rows that a root begins with.
    m_root = cursor.address();
    m_rootRows = cursor.number(2);
    checkTable(cursor);
}

void Hdf5FractalHeap::checkTable(const Hdf5Cursor& cursor) const {
    constexpr std::uint64_t LARGEST = std::uint64_t(1) << 31;
    cursor.expectBetween("the blocks of a row", m_width, 1, 0xffff);
    cursor.expectBetween("the size of the first blocks", m_firstSize, 1, LARGEST);
    cursor.expectBetween("the size of the largest blocks", m_largestDirect, m_firstSize, LARGEST);
    for (const std::uint64_t power : {m_width, m_firstSize, m_largestDirect}) {
        if (!std::has_single_bit(power)) {
            cursor.failAtLast("expected a power of two in the head of a fractal heap, found " + std::to_string(power));
        }
    }
    const std::uint64_t leastBits = log2Of(m_firstSize) + log2Of(m_width);
    cursor.expectBetween("the bits of places", m_offsetBits, leastBits, 64);
    cursor.expectBetween("the rows of the root", m_rootRows, 0, m_offsetBits - leastBits + 1);
    cursor.expectBetween("the size of ids", m_idSize, 1 + (m_offsetBits + 7) / 8, 0xffff);
    cursor.expectBetween("the size of the largest item", m_largestManaged, 1, m_largestDirect);
}

Hdf5Cursor Hdf5FractalHeap::item(Hdf5Cursor id, const char* what) {
    enum Type : std::uint64_t { MANAGED = 0, HUGE_ITEM = 1 };
    id.expectBetween("the size", id.left(), m_idSize, m_idSize);
    const std::uint64_t type = id.number(1) >> 4;
    id.expectBetween("the kind", type, MANAGED, HUGE_ITEM); // Tiny ones are too small for what there is.
    return type == MANAGED ? managedItem(id, what) : hugeItem(id, what);
}

// Goes down from the root, block in block.
Hdf5Cursor Hdf5FractalHeap::managedItem(Hdf5Cursor& id, const char* what) {
    const std::uint64_t offset = id.number(std::size_t((m_offsetBits + 7) / 8));
    const std::uint64_t size =
        id.number(std::min(std::size_t((log2Of(m_largestDirect) + 7) / 8), hdf5SizeOfNumber(m_largestManaged)));
    id.expectBetween("the place", offset, 1, m_managedSize);
    std::uint64_t blockAddress = m_root;
    std::uint64_t blockSize = m_firstSize;
    std::uint64_t blockOffset = 0; // Of the heap.
    std::uint64_t rows = m_rootRows;
    const std::uint64_t directRows = log2Of(m_largestDirect) - log2Of(m_firstSize) + 2;
    while (rows > 0) {
        const std::uint64_t within = offset - blockOffset;
        const std::uint64_t rowBits = log2Of(m_firstSize) + log2Of(m_width);
        const std::uint64_t bit = within == 0 ? 0 : log2Of(within);
        const std::uint64_t row = bit < rowBits ? 0 : bit - rowBits + 1;
        const std::uint64_t rowBegin = row == 0 ? 0 : std::uint64_t(1) << bit;
        const std::uint64_t column = (within - rowBegin) >> log2Of(rowSize(row));
        id.expectBetween("the row", row, 0, rows - 1);
        const Hdf5Block& block = indirectBlock(blockAddress, rows, blockOffset);
        Hdf5Cursor entry = block.cursor(m_input.sizes(), INDIRECT);
        entry.skip(4 + 1 + m_input.sizes().address + (m_offsetBits + 7) / 8 +
                   (row * m_width + column) * m_input.sizes().address);
        blockAddress = entry.address();
        blockSize = rowSize(row);
        blockOffset += rowBegin + column * blockSize;
        rows = row < directRows ? 0 : log2Of(blockSize) - rowBits + 1;
    }
    const Hdf5Block& block = directBlock(blockAddress, blockSize, blockOffset);
    Hdf5Cursor cursor = block.cursor(m_input.sizes(), DIRECT);
    const std::uint64_t headSize =
        4 + 1 + m_input.sizes().address + (m_offsetBits + 7) / 8 + ((m_flags & IS_SUMMED) != 0 ? SUM_SIZE : 0);
    id.expectBetween("the place", offset - blockOffset, headSize, blockSize);
    cursor.skip(offset - blockOffset);
    return cursor.piece(size, what);
}

Hdf5Cursor Hdf5FractalHeap::hugeItem(Hdf5Cursor& id, const char* what) {
    const Hdf5Sizes& sizes = m_input.sizes();
    std::uint64_t address = 0;
    std::uint64_t size = 0;
    if (m_idSize - 1 >= sizes.address + sizes.length) {
        address = id.address();
        size = id.length();
    } else {
        readHugeItems();
        const auto found = m_hugePlaces.find(id.number(std::min<std::size_t>(std::size_t(m_idSize) - 1, 8)));
        if (found == m_hugePlaces.end()) {
            id.fail("expected a huge item of a fractal heap, found none of that id");
        }
        address = found->second.first;
        size = found->second.second;
    }
    const auto [place, isNew] = m_hugeItems.try_emplace(address);
    if (isNew) {
        place->second = m_input.read(address, size, what);
    }
    return place->second.cursor(sizes, what);
}

void Hdf5FractalHeap::readHugeItems() {
    const Hdf5Sizes& sizes = m_input.sizes();
    if (m_areHugeRead || m_hugeTree == HDF5_UNDEFINED) {
        return;
    }
    m_areHugeRead = true;
    walkHdf5Tree(m_input, m_hugeTree, Hdf5Tree::HUGE_ITEMS, sizes.address + 2 * sizes.length, [&](Hdf5Cursor record) {
        const std::uint64_t address = record.address();
        const std::uint64_t size = record.length();
        m_hugePlaces[record.length()] = {address, size};
    });
}

std::uint64_t Hdf5FractalHeap::rowSize(std::uint64_t row) const {
    return row == 0 ? m_firstSize : m_firstSize << (row - 1);
}

// The sum is that of the block with zeros in the sum's place.
const Hdf5Block& Hdf5FractalHeap::directBlock(std::uint64_t address, std::uint64_t size, std::uint64_t offset) {
    const auto [place, isNew] = m_blocks.try_emplace(address);
    if (!isNew) {
        return place->second;
    }
    place->second = m_input.read(address, size, DIRECT);
    Hdf5Block& block = place->second;
    checkBlock(block, "FHDB", offset, DIRECT);
    if ((m_flags & IS_SUMMED) != 0) {
        Hdf5Cursor cursor = block.cursor(m_input.sizes(), DIRECT);
        const std::uint64_t at = 4 + 1 + m_input.sizes().address + (m_offsetBits + 7) / 8;
        cursor.skip(at);
        const std::uint64_t sum = cursor.number(SUM_SIZE);
        std::fill_n(block.bytes.begin() + std::ptrdiff_t(at), SUM_SIZE, '\0');
        if (sum != hdf5Sum({block.bytes.data(), block.bytes.size()})) {
            m_input.fail(address, std::string("expected the bytes of ") + DIRECT + " to give the sum in it");
        }
    }
    return block;
}

const Hdf5Block& Hdf5FractalHeap::indirectBlock(std::uint64_t address, std::uint64_t rows, std::uint64_t offset) {
    const auto [place, isNew] = m_blocks.try_emplace(address);
    if (isNew) {
        const std::uint64_t addressSize = m_input.sizes().address;
        const std::uint64_t size =
            4 + 1 + addressSize + (m_offsetBits + 7) / 8 + rows * m_width * addressSize + SUM_SIZE;
        place->second = m_input.readSummed(address, size, INDIRECT);
        checkBlock(place->second, "FHIB", offset, INDIRECT);
    }
    return place->second;
}

void Hdf5FractalHeap::checkBlock(const Hdf5Block& block, std::string_view magic, std::uint64_t offset,
                                 const char* what) const {
    Hdf5Cursor cursor = block.cursor(m_input.sizes(), what);
    cursor.expect(magic);
    cursor.expectBetween("the version", cursor.number(1), 0, 0);
    cursor.expectBetween("the heap", cursor.address(), m_address, m_address);
    cursor.expectBetween("the place", cursor.number(std::size_t((m_offsetBits + 7) / 8)), offset, offset);
}

} // namespace orv::imp::cae
