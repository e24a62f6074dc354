#include "OrvImportCae/Hdf5Objects.h"

#include "Tests/OrvImportCae/Hdf5Checked.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

using namespace orv;
using namespace orv::imp::cae;
using namespace orvtest;

namespace {

class Hdf5Groups : public Hdf5Checked {};

// A list of variable length at HDF5_MORE_AT: how many, address, item.
std::string listAttribute(std::uint64_t count, std::uint64_t item, const std::string& type = nested(1)) {
    return attribute(NAME, type, spaceBody({1}), le(count, 4) + le(HDF5_MORE_AT, 8) + le(item, 4));
}

std::string heapItem(std::uint64_t index, const std::string& bytes) {
    return le(index, 2) + le(1, 2) + zeros(4) + le(bytes.size(), 8) + bytes + zeros((8 - bytes.size() % 8) % 8);
}

std::string globalHeap(const std::string& items) {
    return "GCOL" + le(1, 4) + le(16 + items.size(), 8) + items;
}

constexpr std::uint64_t LIST_AT = HDF5_BODY_AT + 16 + 24 + 16; // Of the values of such an attribute.

/// A group of one link in a fractal heap, indexed by name and by order.
struct DenseGroup {
    std::uint64_t flags = 0;
    std::uint64_t place = 21; ///< Behind the head of the block.
    std::uint64_t size = 13;
    std::uint64_t owner = HDF5_MORE_AT; ///< Whose block it is.
    std::uint64_t offset = 0;           ///< Of the block within the heap.
    std::uint64_t count = 1;            ///< Records of the leaf.
    std::uint64_t total = 1;
    std::uint64_t ordered = 1;

    static constexpr std::uint64_t BLOCK_AT = HDF5_MORE_AT + 256;
    static constexpr std::uint64_t NAMES_AT = BLOCK_AT + 512;
    static constexpr std::uint64_t ORDER_AT = NAMES_AT + 64 + 512;

    std::string image() const {
        const std::string message =
            le(0, 1) + le(3, 1) + zeros(8) + le(HDF5_MORE_AT, 8) + le(NAMES_AT, 8) + le(ORDER_AT, 8);
        return plainImage({{LINK_INFO, message}}, grown(head(), 256) + block() + tree(NAMES_AT, 5, 4, count, total) +
                                                      tree(ORDER_AT, 6, 8, ordered, ordered));
    }

    static std::string grown(std::string bytes, std::size_t size) {
        bytes.resize(size);
        return bytes;
    }

    // Ids of seven bytes, blocks of 512 to 65536 bytes in rows of four, places of 32 bits.
    static std::string head() {
        return withSum("FRHP" + zeros(1) + le(7, 2) + le(0, 2) + le(2, 1) + le(4096, 4) + zeros(8) + le(NOWHERE, 8) +
                       zeros(8) + le(NOWHERE, 8) + le(512, 8) + zeros(56) + le(4, 2) + le(512, 8) + le(65536, 8) +
                       le(32, 2) + le(1, 2) + le(BLOCK_AT, 8) + le(0, 2));
    }

    // The sum is in the middle, and zero when it is made.
    std::string block() const {
        const std::string bytes =
            grown("FHDB" + zeros(1) + le(owner, 8) + le(offset, 4) + zeros(4) + link(0, le(HDF5_HEADER_AT, 8)), 512);
        return patched(bytes, 17, le(hdf5Sum(bytes), 4));
    }

    std::string tree(std::uint64_t at, std::uint64_t type, std::size_t keySize, std::uint64_t records,
                     std::uint64_t all) const {
        const std::string record = zeros(keySize) + le(flags, 1) + le(place, 4) + le(size, 2);
        std::string leaf = "BTLF" + zeros(1) + le(type, 1);
        for (std::uint64_t i = 0; i < std::min<std::uint64_t>(records, 2); ++i) {
            leaf += record;
        }
        return grown(withSum("BTHD" + zeros(1) + le(type, 1) + le(512, 4) + le(record.size(), 2) + zeros(2) +
                             le(100, 1) + le(40, 1) + le(at + 64, 8) + le(records, 2) + le(all, 8)),
                     64) +
               grown(withSum(leaf), 512);
    }
};

/// A change of a sample, to whose block of so many bytes the sum is made anew.
struct Resummed {
    const char* magic;  ///< The first block that begins so is changed.
    std::size_t offset; ///< Within the block.
    std::string bytes;
    std::size_t blockSize;
    std::size_t damageOffset;
    std::string text;
};

} // namespace

TEST_F(Hdf5Groups, SymbolsHaveNamesAndObjects) {
    const std::string object = symbol(8, HDF5_HEADER_AT, 0, 0);
    EXPECT_EQ(check(groupImage(HEAP, LEAF, symbolNode(1, object))), "");
    EXPECT_EQ(check(groupImage(HEAP, LEAF, symbolNode(2, object + symbol(16, NOWHERE, 2, 8)))), "");
    const auto damaged = [&](std::uint64_t count, const std::string& entries) {
        return check(groupImage(HEAP, LEAF, symbolNode(count, entries)));
    };
    EXPECT_EQ(damaged(9, object),
              damage(SYMBOLS_AT + 7, "expected the number of symbols of a symbol node to be 0 to 8, found 9"));
    EXPECT_EQ(damaged(1, symbol(24, HDF5_HEADER_AT, 0, 0)),
              damage(SYMBOLS_AT + 8, "expected a name before byte 24 of its heap, found it at byte 24"));
    EXPECT_EQ(damaged(1, symbol(16, NOWHERE, 2, 30)),
              damage(SYMBOLS_AT + 8, "expected a name before byte 24 of its heap, found it at byte 30"));
    EXPECT_EQ(damaged(1, symbol(8, HDF5_HEADER_AT, 3, 0)),
              damage(SYMBOLS_AT + 8 + 19, "expected the kind of a symbol to be 0 to 2, found 3"));
    EXPECT_EQ(damaged(1, symbol(8, SYMBOLS_AT, 0, 0)),
              damage(SYMBOLS_AT, "expected the version of an object header to be 1, found 83"));
    EXPECT_EQ(check(groupImage(HEAP, groupLeaf(LEAF_AT, 99), symbolNode(1, object))),
              damage(LEAF_AT + 40, "expected a name before byte 24 of its heap, found it at byte 99"));
    EXPECT_EQ(check(groupImage(HEAP, LEAF, patched(symbolNode(1, object), 4, "\2"))),
              damage(SYMBOLS_AT + 4, "expected the version of a symbol node to be 1, found 2"));
    EXPECT_EQ(check(groupImage(HEAP, LEAF, symbolNode(1, object).substr(0, 200))),
              damage(SYMBOLS_AT, "expected a symbol node within the file, found 328 bytes of it at byte " +
                                     std::to_string(SYMBOLS_AT)));
}

TEST_F(Hdf5Groups, LocalHeapsHaveTheirFreeBlocksOnce) {
    const auto image = [](const std::string& heap) {
        return groupImage(heap, LEAF, symbolNode(1, symbol(8, HDF5_HEADER_AT, 0, 0)));
    };
    const auto heap = [](std::uint64_t free, std::uint64_t next, std::uint64_t size) {
        return localHeap(HDF5_MORE_AT, 32, free, zeros(8) + "one" + zeros(5) + le(next, 8) + le(size, 8));
    };
    EXPECT_EQ(check(image(heap(16, 1, 16))), "");
    EXPECT_EQ(check(image(heap(24, 1, 16))),
              damage(HDF5_MORE_AT + 64, "expected 8 more bytes in the free blocks of a local heap, found 0"));
    EXPECT_EQ(
        check(image(heap(16, 1, 17))),
        damage(HDF5_MORE_AT + 63, "expected the size of the free blocks of a local heap to be 0 to 16, found 17"));
    EXPECT_EQ(check(image(heap(16, 16, 16))),
              damage(HDF5_MORE_AT + 63, "expected different free blocks of a local heap, found one twice"));
    EXPECT_EQ(check(image(patched(HEAP, 8, le(5000, 8)))),
              damage(HDF5_MORE_AT + 32, "expected a local heap within the file, found 5000 bytes of it at byte 1056"));
    EXPECT_EQ(check(image(patched(HEAP, 4, "\1"))),
              damage(1028, "expected the version of a local heap to be 0, found 1"));
    EXPECT_EQ(check(image(patched(HEAP, 0, "h"))), damage(1024, "expected \"HEAP\" of a local heap, found \"hEAP\""));
}

TEST_F(Hdf5Groups, ExternalFilesHaveNames) {
    const auto image = [](std::uint64_t name) {
        return dataImage(
            contiguous(NOWHERE, 24), HEAP,
            {EXTERNAL_FILES, le(1, 4) + le(1, 2) + le(1, 2) + le(HDF5_MORE_AT, 8) + le(name, 8) + zeros(16)});
    };
    EXPECT_EQ(check(image(8)), "");
    EXPECT_EQ(check(image(24)),
              damage(LAYOUT_AT + 32 + 24, "expected a name before byte 24 of its heap, found it at byte 24"));
}

TEST_F(Hdf5Groups, ListsOfAttributesHaveAsManyItemsAsTheyCount) {
    const std::string heap = globalHeap(heapItem(1, "abc") + heapItem(7, "de") + le(0, 8) + le(24, 8) + zeros(8));
    const auto image = [&](std::uint64_t count, std::uint64_t item) {
        return plainImage({{ATTRIBUTE, listAttribute(count, item)}}, heap);
    };
    EXPECT_EQ(check(image(3, 1)), "");
    EXPECT_EQ(check(image(2, 7)), "");
    EXPECT_EQ(check(image(0, 9)), "");
    EXPECT_EQ(check(image(3, 9)), damage(HDF5_MORE_AT, "expected item 9 in a global heap, found none"));
    EXPECT_EQ(check(image(2, 1)),
              damage(LIST_AT + 15, "expected the bytes of a list of a value of an attribute to be 2, "
                                   "found 3"));
    EXPECT_EQ(
        check(image(0xffffffff, 1)),
        damage(LIST_AT + 15, "expected the bytes of a list of a value of an attribute to be 4294967295, found 3"));
}

TEST_F(Hdf5Groups, GlobalHeapsAreWalkedToTheirEnd) {
    const auto image = [](const std::string& heap) {
        return plainImage({{ATTRIBUTE, listAttribute(3, 1)}}, heap + zeros(16));
    };
    const std::string item = heapItem(1, "abc");
    EXPECT_EQ(check(image(globalHeap(item))), "");
    EXPECT_EQ(check(image(globalHeap(item + zeros(8)))), ""); // Too little for a head.
    EXPECT_EQ(check(image(globalHeap(item + zeros(16)))),
              damage(HDF5_MORE_AT + 16 + 24 + 15, "expected the free room of a global heap to be 16, found 0"));
    EXPECT_EQ(check(image(globalHeap(patched(item, 8, le(9, 8))))),
              damage(HDF5_MORE_AT + 32, "expected 9 more bytes in a global heap, found 8"));
    EXPECT_EQ(check(image(patched(globalHeap(item), 8, le(15, 8)))),
              damage(HDF5_MORE_AT + 15, "expected the size of a global heap to be 16 to 1080, found 15"));
    EXPECT_EQ(check(image(patched(globalHeap(item), 8, le(60, 8)))),
              damage(HDF5_MORE_AT, "expected a global heap within the file, found 60 bytes of it at byte 1024"));
    EXPECT_EQ(check(image(patched(globalHeap(item), 4, "\2"))),
              damage(HDF5_MORE_AT + 4, "expected the version of a global heap to be 1, found 2"));
}

TEST_F(Hdf5Groups, ListsAreFoundInCompoundsAndArrays) {
    const std::string heap = globalHeap(heapItem(1, "abc"));
    const std::string list = le(3, 4) + le(HDF5_MORE_AT, 8) + le(1, 4);
    const auto image = [&](const std::string& type, const std::string& values) {
        return plainImage({{ATTRIBUTE, attribute(NAME, type, spaceBody({1}), values)}}, heap);
    };
    const std::string record = compound(3, 1, 20, "a" + zeros(1) + le(4, 1) + nested(1));
    EXPECT_EQ(check(image(record, le(2, 4) + list)), "");
    EXPECT_EQ(
        check(image(record, le(3, 4) + patched(list, 0, "\2"))),
        bodyDamage(16 + 32 + 16 + 19, "expected the bytes of a list of a value of an attribute to be 2, found 3"));
    const std::string array = le(0x3a, 1) + zeros(3) + le(32, 4) + le(1, 1) + le(2, 4) + nested(1);
    EXPECT_EQ(check(image(array, list + list)), "");
    EXPECT_EQ(check(image(array, list + patched(list, 0, "\2"))),
              bodyDamage(16 + 40 + 16 + 31, "expected the bytes of a list of an item of an array to be 2, found 3"));
}

// Lists do not share what they hold, or a few of them could hold more than any file.
TEST_F(Hdf5Groups, ListsAreNoMoreThanTheFile) {
    std::string lists;
    for (int i = 0; i < 40; ++i) {
        lists += le(64, 4) + le(HDF5_MORE_AT, 8) + le(1, 4);
    }
    const std::string heap = globalHeap(heapItem(1, zeros(64))); // The file has 1024 + 96 bytes, 17.5 times as many.
    EXPECT_EQ(check(plainImage({{ATTRIBUTE, attribute(NAME, nested(1), spaceBody({40}), lists)}}, heap)),
              damage(LIST_AT + 17 * 16 + 15,
                     "expected the bytes of all lists of a value of an attribute to be 0 to 1120, found 1152"));
}

// A list in the global heap tells where the values of a virtual data set are. The sum is behind it.
TEST_F(Hdf5Groups, ListsOfVirtualValuesAreSummed) {
    const std::string list = withSum(zeros(1) + le(0, 8));
    const auto image = [](const std::string& item) {
        return dataImage(le(4, 1) + le(3, 1) + le(HDF5_MORE_AT, 8) + le(1, 4), globalHeap(heapItem(1, item)));
    };
    EXPECT_EQ(check(image(list)), "");
    EXPECT_THAT(check(image(patched(list, 1, "\1"))),
                testing::HasSubstr("expected the sum of an item of a global heap to be "));
    EXPECT_THAT(check(image("short")),
                testing::HasSubstr("expected the bytes of an item of a global heap to be 13 to "));
}

TEST_F(Hdf5Groups, LinksInFractalHeapsAreFound) {
    EXPECT_EQ(check(DenseGroup().image()), "");
    EXPECT_EQ(check(DenseGroup{.count = 2, .total = 2}.image()),
              damage(DenseGroup::ORDER_AT, "expected 2 links, found 1"));
    EXPECT_EQ(
        check(DenseGroup{.count = 2}.image()),
        damage(DenseGroup::NAMES_AT + 33, "expected the number of records of the head of a B-tree to be 2, found 1"));
    // A node of 512 bytes has ten of its own and eleven of each record.
    EXPECT_EQ(check(DenseGroup{.count = 46}.image()),
              damage(DenseGroup::NAMES_AT + 64, "expected at most 45 records in a node of a B-tree, found 46"));
    EXPECT_EQ(
        check(DenseGroup{.owner = 5}.image()),
        damage(DenseGroup::BLOCK_AT + 12, "expected the heap of a direct block of a fractal heap to be 1024, found 5"));
    EXPECT_EQ(
        check(DenseGroup{.offset = 512}.image()),
        damage(DenseGroup::BLOCK_AT + 16, "expected the place of a direct block of a fractal heap to be 0, found 512"));
    const std::uint64_t id = DenseGroup::NAMES_AT + 64 + 6 + 4; // Of seven bytes.
    EXPECT_EQ(check(DenseGroup{.flags = 0x20}.image()),
              damage(id, "expected the kind of the id of a link to be 0 to 1, found 2"));
    EXPECT_EQ(check(DenseGroup{.flags = 0x10}.image()),
              damage(id + 7, "expected a huge item of a fractal heap, found none of that id"));
    EXPECT_EQ(check(DenseGroup{.place = 20}.image()),
              damage(id + 6, "expected the place of the id of a link to be 21 to 512, found 20"));
    EXPECT_EQ(check(DenseGroup{.place = 513}.image()),
              damage(id + 6, "expected the place of the id of a link to be 1 to 512, found 513"));
    EXPECT_EQ(
        check(DenseGroup{.place = 500}.image()),
        damage(DenseGroup::BLOCK_AT + 500, "expected 13 more bytes in a direct block of a fractal heap, found 12"));
    EXPECT_EQ(check(DenseGroup{.size = 5}.image()),
              damage(DenseGroup::BLOCK_AT + 26, "expected 8 more bytes in a link, found 0"));
}

// Heads of B-trees have 38 bytes, of fractal heaps 146, of fixed arrays 28, of extensible ones 72.
TEST_F(Hdf5Groups, SummedBlocksAreCheckedFieldByField) {
    const std::string whole = readWholeFile(testDataFolder() + "/hdf5/many.h5");
    const Resummed cases[] = {
        {"BTHD", 4, le(1, 1), 38, 4, "expected the version of the head of a B-tree to be 0, found 1"},
        {"BTHD", 5, le(11, 1), 38, 5, "expected the type of the head of a B-tree to be 8, found 11"},
        {"BTHD", 6, le(26, 4), 38, 9,
         "expected the size of nodes of the head of a B-tree to be 27 to 16777216, found 26"},
        {"BTHD", 10, le(12, 2), 38, 11, "expected the size of records of the head of a B-tree to be 17, found 12"},
        {"BTHD", 12, le(33, 2), 38, 13, "expected the depth of the head of a B-tree to be 0 to 32, found 33"},
        {"FRHP", 4, le(1, 1), 146, 4, "expected the version of the head of a fractal heap to be 0, found 1"},
        {"FRHP", 7, le(9, 2), 146, 8, "expected the size of filters of the head of a fractal heap to be 0, found 9"},
        {"FRHP", 5, le(3, 2), 146, 141,
         "expected the size of ids of the head of a fractal heap to be 5 to 65535, found 3"},
        {"FRHP", 110, le(3, 2), 146, 141, "expected a power of two in the head of a fractal heap, found 3"},
        {"FRHP", 112, le(0, 8), 146, 141,
         "expected the size of the first blocks of the head of a fractal heap to be 1 to 2147483648, found 0"},
        {"FRHP", 120, le(1, 8), 146, 141,
         "expected the size of the largest blocks of the head of a fractal heap to be 512 to 2147483648, found 1"},
        {"FRHP", 140, le(99, 2), 146, 141,
         "expected the rows of the root of the head of a fractal heap to be 0 to 22, found 99"},
        {"FAHD", 5, le(1, 1), 28, 5, "expected the elements of the head of a fixed array to be 0, found 1"},
        {"FAHD", 6, le(9, 1), 28, 6, "expected the size of elements of the head of a fixed array to be 8, found 9"},
        {"FAHD", 7, le(32, 1), 28, 7,
         "expected the bits of pages of the head of a fixed array to be 1 to 31, found 32"},
        {"FAHD", 8, le(1101, 8), 28, 15,
         "expected the number of elements of the head of a fixed array to be 1100, found 1101"},
        {"EAHD", 6, le(9, 1), 72, 6,
         "expected the size of elements of the head of an extensible array to be 8, found 9"},
        {"EAHD", 7, le(65, 1), 72, 11,
         "expected the bits of elements of the head of an extensible array to be 4 to 64, found 65"},
        {"EAHD", 9, le(3, 1), 72, 11, "expected powers of two in the head of an extensible array"},
        {"EAHD", 11, le(0, 1), 72, 11,
         "expected the bits of pages of the head of an extensible array to be 1 to 31, found 0"},
    };
    for (const Resummed& change : cases) {
        const std::size_t at = whole.find(change.magic);
        ASSERT_NE(at, std::string::npos) << change.magic;
        const std::string damaged = patched(whole, at + change.offset, change.bytes);
        const std::string block = damaged.substr(at, change.blockSize - 4);
        EXPECT_EQ(check(patched(damaged, at, withSum(block))), damage(at + change.damageOffset, change.text));
        EXPECT_NE(check(damaged), "");
    }
}

// Each bit of what is summed tells.
TEST_F(Hdf5Groups, SumsAreOfWholeBlocks) {
    const std::string whole = readWholeFile(testDataFolder() + "/hdf5/many.h5");
    for (const char* magic :
         {"OHDR", "BTHD", "BTLF", "BTIN", "FRHP", "FHDB", "FHIB", "FAHD", "FADB", "EAHD", "EAIB", "EASB", "EADB"}) {
        const std::size_t at = whole.find(magic);
        ASSERT_NE(at, std::string::npos) << magic;
        for (const std::size_t offset : {0, 4, 5, 11}) {
            std::string damaged = whole;
            damaged[at + offset] = char(damaged[at + offset] ^ 0x40);
            EXPECT_THAT(check(damaged), testing::StartsWith("is damaged at byte ")) << magic << ' ' << offset;
        }
    }
}
