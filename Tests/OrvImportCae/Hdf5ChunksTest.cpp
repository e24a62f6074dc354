#include "OrvImportCae/Hdf5Chunks.h"

#include "Tests/OrvImportCae/Hdf5Checked.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace orv;
using namespace orv::imp::cae;
using namespace orvtest;

namespace {

class Hdf5Chunks : public Hdf5Checked {};

// A leaf of a B-tree of one chunk of values of four bytes in two dimensions, and room for 64.
std::string chunkLeaf(std::uint64_t size, std::uint64_t mask, std::uint64_t place, std::uint64_t address) {
    const std::string last = zeros(8) + le(2, 8) + le(3, 8) + le(4, 8);
    std::string node = "TREE" + le(1, 1) + le(0, 1) + le(1, 2) + le(NOWHERE, 8) + le(NOWHERE, 8) + le(size, 4) +
                       le(mask, 4) + le(place, 8) + zeros(16) + le(address, 8) + last;
    node.resize(24 + 64 * 40 + 32);
    return node;
}

constexpr std::uint64_t CHUNK_AT = HDF5_MORE_AT + 24 + 64 * 40 + 32;

} // namespace

TEST_F(Hdf5Chunks, ValuesHaveTheRoomThatTheyNeed) {
    EXPECT_EQ(check(dataImage(contiguous(HDF5_MORE_AT, 24), zeros(24))), "");
    EXPECT_EQ(check(dataImage(contiguous(NOWHERE, 24))), "");
    EXPECT_EQ(check(dataImage(contiguous(HDF5_MORE_AT, 23), zeros(24))),
              damage(LAYOUT_AT + 17, "expected the bytes of values" OF_MESSAGE "24 to 18446744073709551615, found 23"));
    EXPECT_EQ(check(dataImage(contiguous(HDF5_MORE_AT, 24), zeros(23))),
              damage(1024, "expected the values of a data set within the file, found 24 bytes of it at byte 1024"));
    EXPECT_EQ(check(dataImage(compact(24))), "");
    EXPECT_EQ(check(dataImage(compact(20))),
              damage(LAYOUT_AT + 23, "expected the bytes of values" OF_MESSAGE "24 to 18446744073709551615, found 20"));
    // The second version has no sizes of what is contiguous.
    const std::string old =
        le(2, 1) + le(3, 1) + le(1, 1) + zeros(5) + le(HDF5_MORE_AT, 8) + le(2, 4) + le(3, 4) + le(4, 4);
    EXPECT_EQ(check(dataImage(old, zeros(24))), "");
    EXPECT_EQ(check(dataImage(old, zeros(23))),
              damage(1024, "expected the values of a data set within the file, found 24 bytes of it at byte 1024"));
}

TEST_F(Hdf5Chunks, FillValuesAreAsLargeAsValues) {
    const auto image = [](std::uint64_t size) {
        return dataImage(compact(24), "",
                         {FILL, le(2, 1) + le(2, 1) + zeros(1) + le(1, 1) + le(size, 4) + zeros(size)});
    };
    EXPECT_EQ(check(image(4)), "");
    EXPECT_EQ(check(image(0)), "");
    const std::uint64_t body = LAYOUT_AT + 32 + 8;
    EXPECT_EQ(check(image(2)), damage(body + 9, "expected the size of a fill value" OF_MESSAGE "4, found 2"));
    EXPECT_EQ(check(image(8)), damage(body + 15, "expected the size of a fill value" OF_MESSAGE "4, found 8"));
    EXPECT_EQ(check(dataImage(compact(24), "", {OLD_FILL, le(2, 4) + zeros(2)})),
              damage(body + 5, "expected the size of a fill value" OF_MESSAGE "4, found 2"));
}

TEST_F(Hdf5Chunks, ChunksHaveTheShapeOfValues) {
    EXPECT_EQ(check(dataImage(le(3, 1) + le(2, 1) + le(3, 1) + le(NOWHERE, 8) + le(2, 4) + le(3, 4) + le(4, 4))), "");
    EXPECT_EQ(check(dataImage(chunkedBody({2, 4}))),
              damage(LAYOUT_AT + 18, "expected the dimensions of chunks" OF_MESSAGE "2, found 1"));
    EXPECT_EQ(check(dataImage(chunkedBody({2, 3, 8}))),
              damage(LAYOUT_AT + 22, "expected the bytes of a value" OF_MESSAGE "4, found 8"));
    // HDF5 makes no packed chunks that are larger than all values.
    const Hdf5ImageMessage deflate{FILTERS, le(2, 1) + le(1, 1) + le(1, 2) + le(0, 2) + le(0, 2)};
    EXPECT_EQ(check(dataImage(chunkedBody({2, 4, 4}), "", deflate)),
              damage(LAYOUT_AT + 22, "expected the size of chunks" OF_MESSAGE "1 to 3, found 4"));
}

TEST_F(Hdf5Chunks, ChunksOfOldTreesAreWhereTheyCanBe) {
    const std::string layout = chunkedBody({2, 3, 4});
    const auto image = [&](const std::string& leaf, const Hdf5ImageMessage& packing = {0, ""}) {
        return dataImage(layout, leaf + zeros(24), packing);
    };
    const std::string whole = chunkLeaf(24, 0, 0, CHUNK_AT);
    EXPECT_EQ(check(image(whole)), "");
    EXPECT_EQ(
        check(dataImage(layout, whole + zeros(23))),
        damage(CHUNK_AT, "expected a chunk within the file, found 24 bytes of it at byte " + std::to_string(CHUNK_AT)));
    EXPECT_EQ(check(image(chunkLeaf(23, 0, 0, CHUNK_AT))),
              damage(CHUNK_AT, "expected a chunk of 24 bytes, found one of 23"));
    EXPECT_EQ(check(image(chunkLeaf(24, 0, 1, CHUNK_AT))),
              damage(HDF5_MORE_AT + 24 + 15,
                     "expected the place of a chunk within its grid of a key of a B-tree to be 0, found 1"));
    EXPECT_EQ(check(image(patched(whole, 0, "X"))), damage(1024, "expected \"TREE\" of a B-tree node, found \"XREE\""));
    EXPECT_EQ(check(image(patched(whole, 4, zeros(1)))),
              damage(1028, "expected the type of a B-tree node to be 1, found 0"));
    EXPECT_EQ(check(image(patched(whole, 6, le(65, 2)))),
              damage(1031, "expected the number of children of a B-tree node to be 0 to 64, found 65"));
    // A node above leaves that has itself below it.
    EXPECT_EQ(check(image(patched(patched(whole, 5, "\1"), 24 + 32, le(HDF5_MORE_AT, 8)))),
              damage(1029, "expected the level of a B-tree node to be 0, found 1"));
    EXPECT_EQ(check(dataImage(layout, whole.substr(0, 2000))),
              damage(1024, "expected a B-tree node within the file, found 2616 bytes of it at byte 1024"));
}

TEST_F(Hdf5Chunks, PackedChunksCanGiveWhatTheyHaveTo) {
    enum Id : std::uint64_t { DEFLATE = 1, SHUFFLE = 2, FLETCHER = 3, SZIP = 4, SCALE_OFFSET = 6 };
    const auto packed = [&](const std::vector<std::uint64_t>& ids, std::uint64_t size, std::uint64_t mask) {
        return check(dataImage(chunkedBody({2, 3, 4}), chunkLeaf(size, mask, 0, CHUNK_AT) + zeros(40), filters(ids)));
    };
    EXPECT_EQ(packed({DEFLATE}, 7, 0), "");
    EXPECT_EQ(packed({DEFLATE}, 7, 1), damage(CHUNK_AT, "expected a chunk of 24 bytes, found one of 7"));
    EXPECT_EQ(packed({DEFLATE}, 0, 0),
              damage(CHUNK_AT, "expected a packed chunk of more than 0 bytes, found one of 0"));
    // A byte gives 1032 at most: 4000000 / 1032 = 3875.97.
    const auto large = [](std::uint64_t size) {
        return plainImage({{SPACE, spaceBody({1000, 1000})},
                           {TYPE, integerBody(4)},
                           {LAYOUT, chunkedBody({1000, 1000, 4})},
                           filters({DEFLATE})},
                          chunkLeaf(size, 0, 0, CHUNK_AT) + zeros(4000));
    };
    EXPECT_EQ(check(large(3876)), "");
    EXPECT_EQ(check(large(3875)),
              damage(CHUNK_AT, "expected a packed chunk to give 4000000 bytes, found 3875 bytes of it"));
    EXPECT_EQ(packed({SHUFFLE}, 24, 0), "");
    EXPECT_EQ(packed({SHUFFLE}, 25, 0), damage(CHUNK_AT, "expected a chunk of 24 bytes, found one of 25"));
    EXPECT_EQ(packed({SHUFFLE, FLETCHER}, 28, 0), "");
    EXPECT_EQ(packed({FLETCHER}, 24, 0), damage(CHUNK_AT, "expected a chunk of 28 bytes, found one of 24"));
    EXPECT_EQ(packed({FLETCHER}, 24, 1), "");
    EXPECT_EQ(packed({DEFLATE, FLETCHER}, 5, 0), "");
    EXPECT_EQ(packed({DEFLATE, FLETCHER}, 4, 0),
              damage(CHUNK_AT, "expected a packed chunk of more than 4 bytes, found one of 4"));
    EXPECT_EQ(packed({SCALE_OFFSET}, 24, 0),
              damage(1024, "expected a filter of chunks of 24 bytes, found one for others"));
}

// What HDF5 takes memory for, and reads to the end of, is at their begin.
TEST_F(Hdf5Chunks, HeadsOfPackedChunksFit) {
    const auto image = [](std::uint64_t size, const std::string& chunk, const Hdf5ImageMessage& packing) {
        return dataImage(chunkedBody({2, 3, 4}), chunkLeaf(size, 0, 0, CHUNK_AT) + chunk + zeros(60), packing);
    };
    const Hdf5ImageMessage szip = filters({4});
    EXPECT_EQ(check(image(9, le(24, 4), szip)), "");
    EXPECT_EQ(check(image(9, le(29, 4), szip)),
              damage(CHUNK_AT + 3, "expected the bytes of the head of a packed chunk to be 24 to 28, found 29"));
    EXPECT_EQ(check(image(3, le(24, 4), szip)),
              damage(CHUNK_AT + 3, "expected the size of the head of a packed chunk to be 4 to 18446744073709551615, "
                                   "found 3"));
    // Six numbers of four bytes; reals (0) with two digits, or whole numbers (2) with all bits.
    const auto scaled = [](std::uint64_t kind, std::uint64_t digits) {
        return Hdf5ImageMessage{FILTERS, le(2, 1) + le(1, 1) + le(6, 2) + le(0, 2) + le(5, 2) + le(kind, 4) +
                                             le(digits, 4) + le(6, 4) + le(1, 4) + le(4, 4)};
    };
    EXPECT_EQ(check(image(21 + 4, le(5, 4), scaled(0, 2))), ""); // Six times five bits are four bytes.
    EXPECT_EQ(check(image(21 + 3, le(5, 4), scaled(0, 2))),
              damage(CHUNK_AT + 3, "expected the packed bytes of the head of a packed chunk to be 4 to "
                                   "18446744073709551615, found 3"));
    EXPECT_EQ(check(image(60, le(33, 4), scaled(0, 2))),
              damage(CHUNK_AT + 3, "expected the bits of the head of a packed chunk to be 0 to 32, found 33"));
    EXPECT_EQ(check(image(24, le(33, 4), scaled(2, 32))), "");
}

TEST_F(Hdf5Chunks, ChunksOfNewLayoutsHaveRoom) {
    const auto layout = [](std::uint64_t flags, std::uint64_t index, const std::string& more, std::uint64_t address) {
        return le(4, 1) + le(2, 1) + le(flags, 1) + le(3, 1) + le(1, 1) + le(2, 1) + le(2, 1) + le(4, 1) +
               le(index, 1) + more + le(address, 8);
    };
    // Three indexes in chunks of two make two of them, of 16 bytes.
    EXPECT_EQ(check(dataImage(layout(0, 2, "", HDF5_MORE_AT), zeros(32))), "");
    EXPECT_EQ(check(dataImage(layout(0, 2, "", HDF5_MORE_AT), zeros(31))),
              damage(1024, "expected all chunks of a data set within the file, found 32 bytes of it at byte 1024"));
    EXPECT_EQ(check(dataImage(layout(0, 1, "", HDF5_MORE_AT), zeros(16))), "");
    EXPECT_EQ(check(dataImage(layout(0, 1, "", HDF5_MORE_AT), zeros(15))),
              damage(1024, "expected a chunk within the file, found 16 bytes of it at byte 1024"));
    const std::string packed = layout(2, 1, le(9, 8) + le(0, 4), HDF5_MORE_AT);
    EXPECT_EQ(check(dataImage(packed, zeros(9), filters({1}))), "");
    EXPECT_EQ(check(dataImage(packed, zeros(8), filters({1}))),
              damage(1024, "expected a chunk within the file, found 9 bytes of it at byte 1024"));
    // Chunks at the ends that are not whole may be without their sums.
    EXPECT_EQ(check(dataImage(layout(3, 1, le(16, 8) + le(0, 4), HDF5_MORE_AT), zeros(16), filters({3}))), "");
    EXPECT_EQ(check(dataImage(layout(2, 1, le(16, 8) + le(0, 4), HDF5_MORE_AT), zeros(16), filters({3}))),
              damage(1024, "expected a chunk of 20 bytes, found one of 16"));
}

// Both pages of the array are used, the first from byte 23 of its block on.
TEST_F(Hdf5Chunks, PagesOfArraysAreSummed) {
    const std::string whole = readWholeFile(testDataFolder() + "/hdf5/many.h5");
    const std::size_t at = whole.find("FADB") + 4 + 1 + 1 + 8 + 1 + 4;
    EXPECT_EQ(check(patched(whole, at + 5, "x")),
              damage(at, "expected the bytes of a page of an array to give the sum behind them"));
    const std::size_t second = at + 1024 * 8 + 4;
    EXPECT_EQ(check(patched(whole, second + 5, "x")),
              damage(second, "expected the bytes of a page of an array to give the sum behind them"));
}
