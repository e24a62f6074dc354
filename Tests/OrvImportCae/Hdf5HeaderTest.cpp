#include "OrvImportCae/Hdf5Header.h"

#include "Tests/OrvImportCae/Hdf5Checked.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace orv;
using namespace orv::imp::cae;
using namespace orvtest;

namespace {

class Hdf5Headers : public Hdf5Checked {};

} // namespace

TEST_F(Hdf5Headers, SuperblocksAreCheckedFieldByField) {
    const std::string whole = plainImage({});
    const struct {
        std::size_t at;
        std::string bytes;
        std::string expected;
    } cases[] = {
        {8, le(4, 1), damage(8, "expected the version of a superblock to be 0 to 3, found 4")},
        {9, le(1, 1), damage(9, "expected the version of free space of a superblock to be 0, found 1")},
        {10, le(7, 1), damage(10, "expected the version of the outermost group of a superblock to be 0, found 7")},
        {12, le(1, 1), damage(12, "expected the version of shared headers of a superblock to be 0, found 1")},
        {13, le(3, 1), damage(13, "expected addresses and lengths of 2, 4 or 8 bytes, found 3")},
        {14, le(16, 1),
         damage(14, "expected the bytes of addresses and lengths of a superblock to be 2 to 8, found 16")},
        {16, le(0, 2), damage(17, "expected the room of symbol nodes of a superblock to be 1 to 65535, found 0")},
        {18, le(0, 2), damage(19, "expected the room of B-trees of groups of a superblock to be 1 to 65535, found 0")},
        {24, le(1025, 8),
         damage(95, "expected the end of a superblock to be 1025 to 18446744073709551615, found 1024")},
        {40, le(1025, 8), damage(0, "expected 1025 bytes, found 1024: the file ends too early")},
        {40, le(5, 8) + le(3, 8), damage(55, "expected a file of its own, found one of several that belong together")},
        {64, le(5000, 8), damage(1024, "expected an object header within the file, found 1 bytes of it at byte 5000")},
        {64, le(NOWHERE, 8), damage(1024, "expected an object header within the file, found it nowhere")},
        {72, le(3, 4), damage(75, "expected the kind of the outermost group of a superblock to be 0 to 2, found 3")},
    };
    for (const auto& superblock : cases) {
        EXPECT_EQ(check(patched(whole, superblock.at, superblock.bytes)), superblock.expected);
    }
    EXPECT_EQ(check(whole.substr(0, 90)), damage(76, "expected 20 more bytes in a superblock, found 14"));
    EXPECT_EQ(check(patched(summedImage({}), 11, "\1")),
              damage(0, "expected the bytes of a superblock to give the sum behind them"));
    EXPECT_EQ(check(zeros(512) + patched(whole, 64, le(5000, 8))),
              damage(1536, "expected an object header within the file, found 1 bytes of it at byte 5000"));
}

// Sizes of nodes of files of later versions are in an object of its own.
TEST_F(Hdf5Headers, TheExtensionOfASuperblockIsRead) {
    const auto image = [](const Hdf5ImageMessage& message) {
        return summedImage({}, summedHeader({message}), HDF5_MORE_AT);
    };
    const std::uint64_t body = HDF5_MORE_AT + 12;
    EXPECT_EQ(check(image({TREE_SIZES, le(0, 1) + le(32, 2) + le(16, 2) + le(4, 2)})), "");
    EXPECT_EQ(check(image({TREE_SIZES, le(0, 1) + le(32, 2) + le(0, 2) + le(4, 2)})),
              damage(body + 4, "expected the room of B-trees of a message of an object header to be 1 to 65535, "
                               "found 0"));
    EXPECT_EQ(check(image({CACHE_IMAGE, zeros(17)})), damage(body, "expected no image of HDF5's cache, found one"));
    EXPECT_EQ(check(image({SHARED_TABLE, zeros(10)})),
              damage(body, "expected no messages that are shared in a heap, found a table of them"));
}

TEST_F(Hdf5Headers, HeadersGoNoFurtherThanTheirBlocks) {
    const std::string whole = plainImage({{COMMENT, "text"}});
    EXPECT_EQ(check(whole), "");
    EXPECT_EQ(check(patched(whole, 96, "\2")), damage(96, "expected the version of an object header to be 1, found 2"));
    EXPECT_EQ(check(patched(whole, 104, le(5000, 4))),
              damage(96, "expected an object header within the file, found 5016 bytes of it at byte 96"));
    EXPECT_EQ(check(patched(whole, 104, le(4, 4))), damage(116, "expected 1 more bytes in an object header, found 0"));
    EXPECT_EQ(check(patched(whole, 114, le(16, 2))),
              damage(120, "expected 16 more bytes in an object header, found 8"));
    EXPECT_EQ(check(patched(whole, 104, le(20, 4))), ""); // Four bytes of nothing.
}

TEST_F(Hdf5Headers, SummedHeadersAreSummed) {
    const std::string whole = summedImage({{COMMENT, zeros(8)}});
    EXPECT_EQ(check(whole), "");
    const std::string sum = "expected the bytes of an object header to give the sum behind them";
    EXPECT_EQ(check(patched(whole, 61, "a")), damage(48, sum));
    EXPECT_EQ(check(patched(whole, 52, "\3")), damage(52, "expected the version of an object header to be 2, found 3"));
    EXPECT_EQ(check(patched(whole, 53, "\x41")),
              damage(53, "expected the flags of an object header to be 0 to 63, found 65"));
    EXPECT_EQ(check(patched(whole, 54, le(5000, 2))),
              damage(48, "expected an object header within the file, found 5000 bytes of it at byte 48"));
}

TEST_F(Hdf5Headers, ContinuationsAreFollowedOnce) {
    const std::string more = le(COMMENT, 2) + le(8, 2) + zeros(4) + "text" + zeros(4);
    const auto image = [&](std::uint64_t address, std::uint64_t size, const std::string& block) {
        return plainImage({{CONTINUATION, le(address, 8) + le(size, 8)}}, block);
    };
    EXPECT_EQ(check(image(HDF5_MORE_AT, 16, more)), "");
    EXPECT_EQ(check(image(HDF5_MORE_AT, 17, more)),
              damage(1024, "expected the continuation of an object header within the file, found 17 bytes of it at "
                           "byte 1024"));
    EXPECT_EQ(check(image(HDF5_MORE_AT, 5, more)), damage(1029, "expected 3 more bytes in an object header, found 0"));
    const std::string twice = "expected blocks of an object header to be different, found this one twice";
    EXPECT_EQ(check(image(HDF5_HEADER_AT, 16, more)), damage(96, twice));
    const std::string loop = le(CONTINUATION, 2) + le(16, 2) + zeros(4) + le(HDF5_MORE_AT, 8) + le(24, 8);
    EXPECT_EQ(check(image(HDF5_MORE_AT, 24, loop)), damage(1024, twice));

    const std::string summed = withSum("OCHK" + le(COMMENT, 1) + le(5, 2) + zeros(1) + "text" + zeros(1));
    const auto summedContinuation = [&](const std::string& block) {
        return summedImage({{CONTINUATION, le(HDF5_MORE_AT, 8) + le(block.size(), 8)}}, block);
    };
    EXPECT_EQ(check(summedContinuation(summed)), "");
    EXPECT_EQ(check(summedContinuation(patched(summed, 9, "a"))),
              damage(1024, "expected the bytes of the continuation of an object header to give the sum behind them"));
    EXPECT_EQ(check(summedContinuation(withSum("OCHX" + zeros(4)))),
              damage(1024, "expected \"OCHK\" of an object header, found \"OCHX\""));
}

TEST_F(Hdf5Headers, SharedTypesAreLookedUp) {
    constexpr std::uint64_t IS_SHARED = 2;
    const auto image = [](const std::string& body, const Hdf5ImageMessage& there) {
        return plainImage({{TYPE, body, IS_SHARED}}, plainHeader({there}));
    };
    const Hdf5ImageMessage type{TYPE, integerBody(4)};
    const std::string place = le(HDF5_MORE_AT, 8);
    EXPECT_EQ(check(image(le(1, 8) + zeros(8) + place, type)), "");
    EXPECT_EQ(check(image(le(2, 2) + place, type)), "");
    EXPECT_EQ(check(image(le(3, 1) + le(2, 1) + place, type)), "");
    EXPECT_EQ(check(image(le(3, 1) + le(1, 1) + place, type)),
              bodyDamage(1, "expected a shared message to be in an object header, found it in a heap"));
    EXPECT_EQ(check(image(le(4, 8) + zeros(8), type)),
              bodyDamage(0, "expected the version of a shared message" OF_MESSAGE "1 to 3, found 4"));
    const std::string none = "expected a type in the header of an object at byte 1024, found none";
    EXPECT_EQ(check(image(le(2, 2) + place, {COMMENT, "text"})), bodyDamage(0, none));
    EXPECT_EQ(check(image(le(2, 2) + place, {TYPE, le(2, 2) + place, IS_SHARED})), bodyDamage(0, none));
    EXPECT_EQ(check(plainImage({{SPACE, le(2, 2) + place, IS_SHARED}})),
              bodyDamage(0, "expected only types to be shared, found a shared message of the type 1"));
    // An attribute of version 2 says in its flags that its type is shared.
    const std::string committed = newAttribute(2, 1, le(2, 2) + place, zeros(4));
    EXPECT_EQ(check(plainImage({{ATTRIBUTE, committed}}, plainHeader({type}))), "");
    EXPECT_EQ(check(plainImage({{ATTRIBUTE, committed}}, plainHeader({{TYPE, integerBody(32)}}))),
              bodyDamage(28, "expected 32 more bytes in a message of an object header, found 4"));
}
