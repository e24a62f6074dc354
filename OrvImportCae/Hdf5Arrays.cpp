#include "OrvImportCae/Hdf5Arrays.h"

#include <algorithm>
#include <bit>
#include <string_view>

namespace orv::imp::cae {
namespace {

constexpr std::uint64_t SUM_SIZE = 4;
constexpr std::uint64_t FRAME = 4 + 1 + 1 + SUM_SIZE; // Signature, version, what elements are, and sum.
constexpr std::uint64_t MOST_PAGE_BITS = 31;

std::uint64_t log2Of(std::uint64_t power) {
    return std::uint64_t(std::bit_width(power)) - 1;
}

/// What both arrays have in common.
class Walk {
public:
    Walk(Hdf5Input& input, std::uint64_t address, bool isPacked, std::uint64_t elementSize,
         const std::function<void(Hdf5Cursor)>& tell)
        : m_input(input), m_address(address), m_isPacked(isPacked), m_elementSize(elementSize), m_tell(tell) {}

protected:
    void expectHead(Hdf5Cursor& cursor, std::string_view magic) const {
        cursor.expect(magic);
        cursor.expectBetween("the version", cursor.number(1), 0, 0);
        cursor.expectBetween("the elements", cursor.number(1), m_isPacked ? 1 : 0, m_isPacked ? 1 : 0);
    }

    // Blocks say whose they are, and some at which element they begin.
    void expectBlockHead(Hdf5Cursor& cursor, std::string_view magic, std::uint64_t offsetSize) const {
        expectHead(cursor, magic);
        cursor.expectBetween("the array", cursor.address(), m_address, m_address);
        cursor.skip(offsetSize);
    }

    void tellElements(Hdf5Cursor& cursor, std::uint64_t count) const {
        for (std::uint64_t i = 0; i < count; ++i) {
            m_tell(cursor.piece(m_elementSize, "an element of an array"));
        }
    }

    // Pages follow each other; those that have never been used hold nothing.
    void walkPages(std::uint64_t address, std::string_view used, std::uint64_t count, std::uint64_t pageCount) const {
        constexpr const char* PAGE = "a page of an array";
        for (std::uint64_t page = 0; page * pageCount < count; ++page) {
            const std::uint64_t elements = std::min(pageCount, count - page * pageCount);
            const std::uint64_t size = elements * m_elementSize + SUM_SIZE;
            m_input.expectRoom(address, size, PAGE);
            if ((static_cast<unsigned char>(used[std::size_t(page / 8)]) & 0x80U >> page % 8) != 0) {
                const Hdf5Block block = m_input.readSummed(address, size, PAGE);
                Hdf5Cursor cursor = block.cursor(m_input.sizes(), PAGE);
                tellElements(cursor, elements);
            }
            address += size;
        }
    }

    Hdf5Input& m_input;
    std::uint64_t m_address;
    bool m_isPacked;
    std::uint64_t m_elementSize;
    const std::function<void(Hdf5Cursor)>& m_tell;
};

class FixedWalk : public Walk {
public:
    using Walk::Walk;

    void walk(std::uint64_t expectedCount) const {
        constexpr const char* HEAD = "the head of a fixed array";
        const Hdf5Sizes& sizes = m_input.sizes();
        const Hdf5Block head = m_input.readSummed(m_address, FRAME + 2 + sizes.length + sizes.address, HEAD);
        Hdf5Cursor cursor = head.cursor(sizes, HEAD);
        expectHead(cursor, "FAHD");
        cursor.expectBetween("the size of elements", cursor.number(1), m_elementSize, m_elementSize);
        const std::uint64_t pageBits = cursor.number(1);
        cursor.expectBetween("the bits of pages", pageBits, 1, MOST_PAGE_BITS);
        const std::uint64_t count = cursor.length();
        cursor.expectBetween("the number of elements", count, expectedCount, expectedCount);
        const std::uint64_t block = cursor.address();
        if (block != HDF5_UNDEFINED) {
            walkBlock(block, count, std::uint64_t(1) << pageBits);
        }
    }

private:
    void walkBlock(std::uint64_t address, std::uint64_t count, std::uint64_t pageCount) const {
        constexpr const char* BLOCK = "the block of a fixed array";
        const std::uint64_t prefix = FRAME + m_input.sizes().address;
        m_input.expectRoom(address, hdf5Product(count, m_elementSize), BLOCK);
        if (count <= pageCount) {
            const Hdf5Block block = m_input.readSummed(address, prefix + count * m_elementSize, BLOCK);
            Hdf5Cursor cursor = block.cursor(m_input.sizes(), BLOCK);
            expectBlockHead(cursor, "FADB", 0);
            tellElements(cursor, count);
            return;
        }
        const std::uint64_t pages = (count + pageCount - 1) / pageCount;
        const std::uint64_t bitmapSize = (pages + 7) / 8;
        const Hdf5Block block = m_input.readSummed(address, prefix + bitmapSize, BLOCK);
        Hdf5Cursor cursor = block.cursor(m_input.sizes(), BLOCK);
        expectBlockHead(cursor, "FADB", 0);
        walkPages(address + prefix + bitmapSize, cursor.bytes(bitmapSize), count, pageCount);
    }
};

// An index block has some elements, addresses of some data blocks, and those of super blocks, which have addresses of
// ever more and larger data blocks.
class ExtensibleWalk : public Walk {
public:
    using Walk::Walk;

    void walk() {
        const std::uint64_t indexBlock = readHead();
        if (indexBlock == HDF5_UNDEFINED) {
            return;
        }
        constexpr const char* BLOCK = "the index block of an extensible array";
        const std::uint64_t addressSize = m_input.sizes().address;
        const std::uint64_t firstSuper = 2 * log2Of(m_leastPointers);
        const std::uint64_t supers = m_superCount > firstSuper ? m_superCount - firstSuper : 0;
        const std::uint64_t pointers = 2 * (m_leastPointers - 1) + supers;
        const Hdf5Block block = m_input.readSummed(
            indexBlock, FRAME + addressSize + m_indexElements * m_elementSize + pointers * addressSize, BLOCK);
        Hdf5Cursor cursor = block.cursor(m_input.sizes(), BLOCK);
        expectBlockHead(cursor, "EAIB", 0);
        tellElements(cursor, m_indexElements);
        for (std::uint64_t super = 0; super < firstSuper; ++super) {
            for (std::uint64_t i = 0; i < blockCount(super); ++i) {
                walkBlock(cursor.address(), elementCount(super), {});
            }
        }
        for (std::uint64_t super = firstSuper; super < m_superCount; ++super) {
            walkSuperBlock(cursor.address(), super);
        }
    }

private:
    std::uint64_t readHead() {
        constexpr const char* HEAD = "the head of an extensible array";
        const Hdf5Sizes& sizes = m_input.sizes();
        const Hdf5Block head = m_input.readSummed(m_address, FRAME + 6 + 6 * sizes.length + sizes.address, HEAD);
        Hdf5Cursor cursor = head.cursor(sizes, HEAD);
        expectHead(cursor, "EAHD");
        cursor.expectBetween("the size of elements", cursor.number(1), m_elementSize, m_elementSize);
        const std::uint64_t bits = cursor.number(1);
        m_indexElements = cursor.number(1);
        m_leastElements = cursor.number(1);
        m_leastPointers = cursor.number(1);
        const std::uint64_t pageBits = cursor.number(1);
        if (!std::has_single_bit(m_leastElements) || !std::has_single_bit(m_leastPointers)) {
            cursor.failAtLast("expected powers of two in the head of an extensible array");
        }
        cursor.expectBetween("the bits of elements", bits, log2Of(m_leastElements), 64);
        cursor.expectBetween("the bits of pages", pageBits, 1, MOST_PAGE_BITS);
        m_offsetSize = (bits + 7) / 8;
        m_pageCount = std::uint64_t(1) << pageBits;
        m_superCount = 1 + bits - log2Of(m_leastElements);
        cursor.skip(6 * sizes.length); // Statistics.
        return cursor.address();
    }

    static std::uint64_t blockCount(std::uint64_t super) {
        return std::uint64_t(1) << super / 2;
    }

    std::uint64_t elementCount(std::uint64_t super) const {
        return hdf5Product(std::uint64_t(1) << (super + 1) / 2, m_leastElements);
    }

    void walkSuperBlock(std::uint64_t address, std::uint64_t super) const {
        constexpr const char* BLOCK = "a super block of an extensible array";
        if (address == HDF5_UNDEFINED) {
            return;
        }
        const std::uint64_t elements = elementCount(super);
        const std::uint64_t pages = elements > m_pageCount ? elements / m_pageCount : 0;
        const std::uint64_t bitmapSize = (pages + 7) / 8;
        const std::uint64_t addressSize = m_input.sizes().address;
        m_input.expectRoom(address, hdf5Product(blockCount(super), bitmapSize + addressSize), BLOCK);
        const Hdf5Block block = m_input.readSummed(
            address, FRAME + addressSize + m_offsetSize + blockCount(super) * (bitmapSize + addressSize), BLOCK);
        Hdf5Cursor cursor = block.cursor(m_input.sizes(), BLOCK);
        expectBlockHead(cursor, "EASB", m_offsetSize);
        const std::string_view used = cursor.bytes(blockCount(super) * bitmapSize);
        for (std::uint64_t i = 0; i < blockCount(super); ++i) {
            walkBlock(cursor.address(), elements, used.substr(std::size_t(i * bitmapSize), std::size_t(bitmapSize)));
        }
    }

    // `used` has a bit for each page, when there are pages.
    void walkBlock(std::uint64_t address, std::uint64_t count, std::string_view used) const {
        constexpr const char* BLOCK = "a data block of an extensible array";
        if (address == HDF5_UNDEFINED) {
            return;
        }
        const std::uint64_t prefix = FRAME + m_input.sizes().address + m_offsetSize;
        const bool isPaged = count > m_pageCount;
        m_input.expectRoom(address, hdf5Product(count, m_elementSize), BLOCK);
        if (isPaged && used.empty()) {
            m_input.fail(address, "expected a data block of an extensible array to have no pages, found some");
        }
        const Hdf5Block block = m_input.readSummed(address, prefix + (isPaged ? 0 : count * m_elementSize), BLOCK);
        Hdf5Cursor cursor = block.cursor(m_input.sizes(), BLOCK);
        expectBlockHead(cursor, "EADB", m_offsetSize);
        if (isPaged) {
            walkPages(address + prefix, used, count, m_pageCount);
        } else {
            tellElements(cursor, count);
        }
    }

    std::uint64_t m_indexElements = 0;
    std::uint64_t m_leastElements = 0; ///< Of a data block.
    std::uint64_t m_leastPointers = 0; ///< Of a super block.
    std::uint64_t m_pageCount = 0;     ///< Elements of a page.
    std::uint64_t m_superCount = 0;
    std::uint64_t m_offsetSize = 0;
};

} // namespace

void walkHdf5FixedArray(Hdf5Input& input, std::uint64_t address, bool isPacked, std::uint64_t elementSize,
                        std::uint64_t count, const std::function<void(Hdf5Cursor element)>& tell) {
    FixedWalk(input, address, isPacked, elementSize, tell).walk(count);
}

void walkHdf5ExtensibleArray(Hdf5Input& input, std::uint64_t address, bool isPacked, std::uint64_t elementSize,
                             const std::function<void(Hdf5Cursor element)>& tell) {
    ExtensibleWalk(input, address, isPacked, elementSize, tell).walk();
}

} // namespace orv::imp::cae
