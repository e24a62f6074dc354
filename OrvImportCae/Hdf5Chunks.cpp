#include "OrvImportCae/Hdf5Chunks.h"

#include "OrvImportCae/Hdf5Arrays.h"
#include "OrvImportCae/Hdf5Check.h"
#include "OrvImportCae/Hdf5Trees.h"

#include <algorithm>

namespace orv::imp::cae {
namespace {

constexpr std::uint64_t FLETCHER_SIZE = 4;

// Among the values of filters that store as many bits as numbers need: how many numbers there are, of how many bytes.
constexpr std::size_t SCALED_COUNT_AT = 2;
constexpr std::size_t SCALED_SIZE_AT = 4;

bool isShrinking(const Hdf5Filter& filter) {
    return filter.id != Hdf5Filter::SHUFFLE && filter.id != Hdf5Filter::FLETCHER;
}

/// Goes through the chunks of a data set.
class Chunks {
public:
    Chunks(Hdf5Input& input, const Hdf5Layout& layout, const Hdf5Space& space, const std::vector<Hdf5Filter>& filters)
        : m_input(input), m_layout(layout), m_space(space), m_filters(filters) {
        for (const std::uint64_t size : layout.chunk) {
            m_bytes *= size; // Less than four gigabytes, as reading the layout has told.
        }
    }

    void check() const {
        for (const Hdf5Filter& filter : m_filters) {
            checkFilter(filter);
        }
        switch (m_layout.index) {
        case Hdf5Layout::OLD_TREE:
            checkOldTree();
            break;
        case Hdf5Layout::SINGLE:
            checkChunk(m_layout.address, m_layout.packedSize == HDF5_UNDEFINED ? m_bytes : m_layout.packedSize,
                       m_layout.packedMask);
            break;
        case Hdf5Layout::IMPLICIT:
            m_input.expectRoom(m_layout.address, hdf5Product(mostChunks(), m_bytes), "all chunks of a data set");
            break;
        case Hdf5Layout::FIXED_ARRAY:
            walkHdf5FixedArray(m_input, m_layout.address, isPacked(), elementSize(), mostChunks(),
                               [&](Hdf5Cursor element) { checkElement(element); });
            break;
        case Hdf5Layout::EXTENSIBLE_ARRAY:
            walkHdf5ExtensibleArray(m_input, m_layout.address, isPacked(), elementSize(),
                                    [&](Hdf5Cursor element) { checkElement(element); });
            break;
        default:
            walkHdf5Tree(m_input, m_layout.address, isPacked() ? Hdf5Tree::PACKED_CHUNKS : Hdf5Tree::CHUNKS,
                         elementSize() + 8 * m_space.sizes.size(), [&](Hdf5Cursor record) { checkElement(record); });
            break;
        }
    }

private:
    // Some tell how much memory is to be taken, and fill it.
    void checkFilter(const Hdf5Filter& filter) const {
        if ((filter.id == Hdf5Filter::NBIT || filter.id == Hdf5Filter::SCALE_OFFSET) &&
            (filter.values.size() <= SCALED_SIZE_AT ||
             hdf5Product(filter.values[SCALED_COUNT_AT], filter.values[SCALED_SIZE_AT]) != m_bytes)) {
            m_input.fail(m_layout.address,
                         "expected a filter of chunks of " + std::to_string(m_bytes) + " bytes, found one for others");
        }
    }

    bool isPacked() const {
        return !m_filters.empty();
    }

    // An address, and for those that are packed their size, with one more byte than it needs, and a mask.
    std::uint64_t elementSize() const {
        return m_input.sizes().address + (isPacked() ? sizeOfPackedSize() + 4 : 0);
    }

    std::size_t sizeOfPackedSize() const {
        return std::min<std::size_t>(1 + hdf5SizeOfNumber(m_bytes), 8);
    }

    std::uint64_t mostChunks() const {
        std::uint64_t count = 1;
        for (std::size_t d = 0; d < m_space.most.size(); ++d) {
            const std::uint64_t most = m_space.most[d];
            count = hdf5Product(count, most / m_layout.chunk[d] + (most % m_layout.chunk[d] > 0 ? 1 : 0));
        }
        return count;
    }

    void checkOldTree() const {
        const std::uint64_t keySize = 4 + 4 + 8 * m_layout.chunk.size();
        walkHdf5OldTree(m_input, m_layout.address, Hdf5OldTree::CHUNKS, keySize,
                        [&](Hdf5Cursor key, std::uint64_t child) {
                            if (child != HDF5_UNDEFINED) {
                                checkKey(key, child);
                            }
                        });
    }

    void checkKey(Hdf5Cursor& key, std::uint64_t address) const {
        const std::uint64_t size = key.number(4);
        const std::uint64_t mask = key.number(4);
        for (const std::uint64_t length : m_layout.chunk) {
            const std::uint64_t offset = key.number(8);
            key.expectBetween("the place of a chunk within its grid", offset % length, 0, 0);
        }
        checkChunk(address, size, mask);
    }

    void checkElement(Hdf5Cursor& element) const {
        const std::uint64_t address = element.address();
        if (address != HDF5_UNDEFINED) {
            const std::uint64_t size = isPacked() ? element.number(sizeOfPackedSize()) : m_bytes;
            checkChunk(address, size, isPacked() ? element.number(4) : 0);
        }
    }

    // HDF5 takes what comes out of the filters for a whole chunk, however many bytes it is.
    void checkChunk(std::uint64_t address, std::uint64_t size, std::uint64_t mask) const {
        m_input.expectRoom(address, size, "a chunk");
        std::uint64_t plain = m_bytes; // What there is when no filter makes it less.
        std::uint64_t shrinking = 0;
        bool isDeflated = false;
        std::uint64_t sums = 0; // Behind the outermost other filter.
        const Hdf5Filter* outermost = nullptr;
        for (std::size_t f = 0; f < m_filters.size(); ++f) {
            if ((mask >> f & 1) == 0) {
                const bool isSum = m_filters[f].id == Hdf5Filter::FLETCHER;
                plain += isSum ? FLETCHER_SIZE : 0;
                shrinking += isShrinking(m_filters[f]) ? 1 : 0;
                isDeflated = isDeflated || m_filters[f].id == Hdf5Filter::DEFLATE;
                sums = isSum ? sums + FLETCHER_SIZE : 0;
                outermost = isSum ? outermost : &m_filters[f];
            }
        }
        if (shrinking == 0 && size != plain && !(m_layout.hasPlainEdges && size == m_bytes)) {
            m_input.fail(address, "expected a chunk of " + std::to_string(plain) + " bytes, found one of " +
                                      std::to_string(size));
        }
        if (shrinking > 0 && size <= sums) {
            m_input.fail(address, "expected a packed chunk of more than " + std::to_string(sums) +
                                      " bytes, found one of " + std::to_string(size));
        }
        if (shrinking == 1 && outermost) {
            checkHead(*outermost, address, size - sums);
        }
        if (shrinking == 1 && isDeflated && hdf5Product(size, DENSEST_PACKING) < m_bytes) {
            m_input.fail(address, "expected a packed chunk to give " + std::to_string(m_bytes) + " bytes, found " +
                                      std::to_string(size) + " bytes of it");
        }
    }

    // Packed chunks of some filters begin with how much comes out of them, or is to be read of them.
    void checkHead(const Hdf5Filter& filter, std::uint64_t address, std::uint64_t size) const {
        constexpr const char* HEAD = "the head of a packed chunk";
        constexpr std::uint64_t SZIP_HEAD = 4;
        constexpr std::uint64_t SCALED_HEAD = 21;
        const std::uint64_t headSize = filter.id == Hdf5Filter::SZIP                               ? SZIP_HEAD
                                       : filter.id == Hdf5Filter::SCALE_OFFSET && isScaled(filter) ? SCALED_HEAD
                                                                                                   : 0;
        if (headSize == 0) {
            return;
        }
        const Hdf5Block head = m_input.read(address, headSize, HEAD);
        Hdf5Cursor cursor = head.cursor(m_input.sizes(), HEAD);
        const std::uint64_t number = cursor.number(4);
        cursor.expectBetween("the size", size, headSize, HDF5_UNDEFINED);
        if (filter.id == Hdf5Filter::SZIP) {
            cursor.expectBetween("the bytes", number, m_bytes, m_bytes + FLETCHER_SIZE * m_filters.size());
        } else {
            const std::uint64_t itemSize = filter.values[SCALED_SIZE_AT];
            cursor.expectBetween("the bits", number, 0, 8 * itemSize);
            const std::uint64_t bytes = (m_bytes / itemSize * number + 7) / 8;
            cursor.expectBetween("the packed bytes", size - headSize, bytes, HDF5_UNDEFINED);
        }
    }

    // Whole numbers that are to keep all their bits are left as they are.
    static bool isScaled(const Hdf5Filter& filter) {
        constexpr std::uint64_t WHOLE_NUMBERS = 2;
        return filter.values[0] != WHOLE_NUMBERS || filter.values[1] != 8 * filter.values[SCALED_SIZE_AT];
    }

    Hdf5Input& m_input;
    const Hdf5Layout& m_layout;
    const Hdf5Space& m_space;
    const std::vector<Hdf5Filter>& m_filters;
    std::uint64_t m_bytes = 1; ///< Of a chunk.
};

} // namespace

void checkHdf5Chunks(Hdf5Input& input, const Hdf5Layout& layout, const Hdf5Space& space,
                     const std::vector<Hdf5Filter>& filters) {
    if (layout.address != HDF5_UNDEFINED) {
        Chunks(input, layout, space, filters).check();
    }
}

} // namespace orv::imp::cae
