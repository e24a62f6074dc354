#include "OrvImportCae/Hdf5Trees.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <vector>

namespace orv::imp::cae {
namespace {

constexpr const char* OLD_NODE = "a B-tree node";
constexpr const char* HEAD = "the head of a B-tree";
constexpr const char* NODE = "a node of a B-tree";
constexpr std::uint64_t SUM_SIZE = 4;
constexpr std::uint64_t NODE_FRAME = 4 + 1 + 1 + SUM_SIZE; // Signature, version, type and sum.

/// Goes through a B-tree of the first version.
class OldWalk {
public:
    OldWalk(Hdf5Input& input, Hdf5OldTree type, std::uint64_t keySize,
            const std::function<void(Hdf5Cursor, std::uint64_t)>& tell)
        : m_input(input), m_type(type), m_keySize(keySize), m_tell(tell),
          m_most(2 * (type == Hdf5OldTree::GROUP ? input.sizes().groupK : input.sizes().chunkK)) {}

    // A level that is not known is larger than any.
    void walk(std::uint64_t address, std::uint64_t level) {
        const std::uint64_t addressSize = m_input.sizes().address;
        const std::uint64_t headSize = 8 + 2 * addressSize;
        m_input.expectRoom(address, headSize + m_most * (m_keySize + addressSize) + m_keySize, OLD_NODE);
        const Hdf5Block head = m_input.read(address, headSize, OLD_NODE);
        Hdf5Cursor cursor = head.cursor(m_input.sizes(), OLD_NODE);
        cursor.expect("TREE");
        cursor.expectBetween("the type", cursor.number(1), std::uint64_t(m_type), std::uint64_t(m_type));
        const std::uint64_t found = cursor.number(1);
        cursor.expectBetween("the level", found, level > 255 ? 0 : level, level > 255 ? 255 : level);
        const std::uint64_t count = cursor.number(2);
        cursor.expectBetween("the number of children", count, 0, m_most);
        if (count > 0) {
            const Hdf5Block body =
                m_input.read(address + headSize, count * (m_keySize + addressSize) + m_keySize, OLD_NODE);
            walkChildren(body.cursor(m_input.sizes(), OLD_NODE), count, found);
        }
    }

private:
    void walkChildren(Hdf5Cursor cursor, std::uint64_t count, std::uint64_t level) {
        for (std::uint64_t i = 0; i < count; ++i) {
            const Hdf5Cursor key = cursor.piece(m_keySize, "a key of a B-tree");
            const std::uint64_t child = cursor.address();
            m_tell(key, level == 0 ? child : HDF5_UNDEFINED);
            if (level > 0) {
                walk(child, level - 1);
            }
        }
        m_tell(cursor.piece(m_keySize, "a key of a B-tree"), HDF5_UNDEFINED);
    }

    Hdf5Input& m_input;
    Hdf5OldTree m_type;
    std::uint64_t m_keySize;
    const std::function<void(Hdf5Cursor, std::uint64_t)>& m_tell;
    std::uint64_t m_most;
};

/// Goes through a B-tree of the second version.
class Walk {
public:
    Walk(Hdf5Input& input, Hdf5Tree type, std::uint64_t recordSize, const std::function<void(Hdf5Cursor)>& tell)
        : m_input(input), m_type(type), m_recordSize(recordSize), m_tell(tell) {}

    std::uint64_t walk(std::uint64_t address) {
        const Hdf5Sizes& sizes = m_input.sizes();
        const Hdf5Block head = m_input.readSummed(address, 22 + sizes.address + sizes.length, HEAD);
        Hdf5Cursor cursor = head.cursor(sizes, HEAD);
        cursor.expect("BTHD");
        expectType(cursor);
        m_nodeSize = cursor.number(4);
        cursor.expectBetween("the size of nodes", m_nodeSize, NODE_FRAME + m_recordSize, LARGEST_NODE);
        cursor.expectBetween("the size of records", cursor.number(2), m_recordSize, m_recordSize);
        const std::uint64_t depth = cursor.number(2);
        cursor.expectBetween("the depth", depth, 0, MOST_DEEP);
        cursor.skip(2);
        const std::uint64_t root = cursor.address();
        const std::uint64_t rootCount = cursor.number(2);
        const std::uint64_t total = cursor.length();
        makeLevels(depth, cursor);
        const std::uint64_t found = root == HDF5_UNDEFINED ? 0 : walkNode(root, rootCount, depth);
        cursor.expectBetween("the number of records", total, found, found);
        return total;
    }

private:
    static constexpr std::uint64_t MOST_DEEP = 32;
    static constexpr std::uint64_t LARGEST_NODE = 1 << 24; // HDF5 takes room for one before it looks.

    // Of nodes so far above the leaves.
    struct Level {
        std::uint64_t most = 0;      ///< Records of one.
        std::uint64_t mostBelow = 0; ///< With all nodes below it.
        std::uint64_t pointerSize = 0;
    };

    void expectType(Hdf5Cursor& cursor) {
        cursor.expectBetween("the version", cursor.number(1), 0, 0);
        cursor.expectBetween("the type", cursor.number(1), std::uint64_t(m_type), std::uint64_t(m_type));
    }

    void makeLevels(std::uint64_t depth, const Hdf5Cursor& cursor) {
        const std::uint64_t leafMost = (m_nodeSize - NODE_FRAME) / m_recordSize;
        m_levels.push_back({leafMost, leafMost, 0});
        for (std::uint64_t d = 1; d <= depth; ++d) {
            Level level;
            level.pointerSize = m_input.sizes().address + hdf5SizeOfNumber(leafMost) +
                                (d > 1 ? hdf5SizeOfNumber(m_levels[d - 1].mostBelow) : 0);
            cursor.expectBetween("the size of nodes", m_nodeSize, NODE_FRAME + m_recordSize + 2 * level.pointerSize,
                                 LARGEST_NODE);
            level.most = (m_nodeSize - NODE_FRAME - level.pointerSize) / (m_recordSize + level.pointerSize);
            level.mostBelow = hdf5Product(level.most + 1, m_levels[d - 1].mostBelow);
            level.mostBelow += std::min(level.most, std::numeric_limits<std::uint64_t>::max() - level.mostBelow);
            m_levels.push_back(level);
        }
    }

    // Returns the number of records in it and below.
    std::uint64_t walkNode(std::uint64_t address, std::uint64_t count, std::uint64_t depth) {
        const Level& level = m_levels[depth];
        m_input.expectRoom(address, m_nodeSize, NODE);
        if (count > level.most) {
            m_input.fail(address, "expected at most " + std::to_string(level.most) +
                                      " records in a node of a B-tree, found " + std::to_string(count));
        }
        const std::uint64_t pointers = depth > 0 ? (count + 1) * level.pointerSize : 0;
        const Hdf5Block block = m_input.readSummed(address, NODE_FRAME + count * m_recordSize + pointers, NODE);
        Hdf5Cursor cursor = block.cursor(m_input.sizes(), NODE);
        cursor.expect(depth > 0 ? "BTIN" : "BTLF");
        expectType(cursor);
        for (std::uint64_t i = 0; i < count; ++i) {
            m_tell(cursor.piece(m_recordSize, "a record of a B-tree"));
        }
        std::uint64_t total = count;
        for (std::uint64_t i = 0; depth > 0 && i <= count; ++i) {
            total += walkChild(cursor, depth);
        }
        return total;
    }

    std::uint64_t walkChild(Hdf5Cursor& cursor, std::uint64_t depth) {
        const std::uint64_t address = cursor.address();
        const std::uint64_t count = cursor.number(hdf5SizeOfNumber(m_levels[0].most));
        const std::uint64_t total = depth > 1 ? cursor.number(hdf5SizeOfNumber(m_levels[depth - 1].mostBelow)) : count;
        const std::uint64_t found = walkNode(address, count, depth - 1);
        cursor.expectBetween("the number of records", total, found, found);
        return found;
    }

    Hdf5Input& m_input;
    Hdf5Tree m_type;
    std::uint64_t m_recordSize;
    const std::function<void(Hdf5Cursor)>& m_tell;
    std::uint64_t m_nodeSize = 0;
    std::vector<Level> m_levels;
};

} // namespace

void walkHdf5OldTree(Hdf5Input& input, std::uint64_t address, Hdf5OldTree type, std::uint64_t keySize,
                     const std::function<void(Hdf5Cursor key, std::uint64_t child)>& tell) {
    OldWalk(input, type, keySize, tell).walk(address, HDF5_UNDEFINED);
}

std::uint64_t walkHdf5Tree(Hdf5Input& input, std::uint64_t address, Hdf5Tree type, std::uint64_t recordSize,
                           const std::function<void(Hdf5Cursor record)>& tell) {
    return Walk(input, type, recordSize, tell).walk(address);
}

std::size_t hdf5SizeOfNumber(std::uint64_t largest) {
    return (std::size_t(std::bit_width(largest | 1)) - 1) / 8 + 1;
}

} // namespace orv::imp::cae
