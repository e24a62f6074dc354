#include "OrvImportCae/Hdf5Check.h"

#include "Tests/OrvImportCae/Hdf5Image.h"
#include "Tests/Support/ScratchFolder.h"
#include "Tests/Support/TestPaths.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <utility>

using namespace orv;
using namespace orv::imp::cae;
using namespace orvtest;

namespace {

/// Body and message types.
enum Type : std::uint64_t {
    SPACE = 1,
    LINK_INFO = 2,
    TYPE = 3,
    OLD_FILL = 4,
    FILL = 5,
    LINK = 6,
    EXTERNAL_FILES = 7,
    LAYOUT = 8,
    GROUP_INFO = 10,
    FILTERS = 11,
    ATTRIBUTE = 12,
    COMMENT = 13,
    OLD_TIME = 14,
    SHARED_TABLE = 15,
    CONTINUATION = 16,
    SYMBOLS = 17,
    TIME = 18,
    TREE_SIZES = 19,
    DRIVER = 20,
    ATTRIBUTE_INFO = 21,
    REFERENCES = 22,
    FREE_SPACE = 23,
    CACHE_IMAGE = 24,
};

class Hdf5Check : public testing::Test {
protected:
    // The error's text, or empty.
    std::string check(const std::string& bytes) {
        ug::Error error;
        return checkHdf5File(m_folder.write("a.h5", bytes), &error) ? "" : error.message().toStdString();
    }

    std::string checkBody(std::uint64_t type, const std::string& body) {
        return check(plainImage({{type, body}}));
    }

    ScratchFolder m_folder;
};

std::string damage(std::uint64_t position, const std::string& text) {
    return "is damaged at byte " + std::to_string(position) + ": " + text;
}

// In a body, counted from its begin.
std::string bodyDamage(std::uint64_t offset, const std::string& text) {
    return damage(HDF5_BODY_AT + offset, text);
}

std::string patched(std::string bytes, std::size_t at, const std::string& with) {
    return bytes.replace(at, with.size(), with);
}

struct BodyCase {
    std::uint64_t type;
    std::string body;
    std::uint64_t offset;
    const char* text; ///< "" when nothing is wrong.
};

void PrintTo(const BodyCase& body, std::ostream* stream) {
    *stream << "message " << body.type << ": " << body.text;
}

class Hdf5Bodies : public Hdf5Check, public testing::WithParamInterface<BodyCase> {};

} // namespace

// From the description of lookup3 by its author.
TEST(Hdf5Sum, IsLookup3) {
    EXPECT_EQ(hdf5Sum("Four score and seven years ago"), 0x17770551u);
    EXPECT_EQ(hdf5Sum(""), 0xdeadbeefu);
}

TEST_F(Hdf5Check, GoodFilesPass) {
    std::size_t count = 0;
    for (const char* folder : {"cgns", "exodus", "hdf5", "med", "together", "vtk", "vtkhdf"}) {
        for (const auto& entry : std::filesystem::directory_iterator(testDataFolder() + "/" + folder)) {
            ug::Error error;
            EXPECT_TRUE(entry.is_directory() || checkHdf5File(entry.path().string(), &error))
                << entry.path() << ' ' << error.message().toStdString();
            count += !entry.is_directory() && readWholeFile(entry.path().string()).find("HDF\r\n\032\n") == 1;
        }
    }
    EXPECT_GE(count, 27u); // Those that begin so: behind.h5 does not.
}

TEST_F(Hdf5Check, WhatIsNoHdf5IsNotItsBusiness) {
    ug::Error error;
    EXPECT_EQ(check(""), "");
    EXPECT_EQ(check("\211HDF"), "");
    EXPECT_EQ(check(std::string(3000, 'x')), "");
    EXPECT_TRUE(checkHdf5File(m_folder / "missing.h5", &error));
    EXPECT_TRUE(checkHdf5File(m_folder.path(), &error));
    EXPECT_TRUE(error.isEmpty());
}

TEST_F(Hdf5Check, SmallestFilesPass) {
    EXPECT_EQ(check(plainImage({})), "");
    EXPECT_EQ(check(summedImage({})), "");
    EXPECT_EQ(check(zeros(512) + plainImage({})), "");
    EXPECT_EQ(check(zeros(2048) + summedImage({})), "");
}

TEST_F(Hdf5Check, SuperblocksAreCheckedFieldByField) {
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
TEST_F(Hdf5Check, TheExtensionOfASuperblockIsRead) {
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

TEST_F(Hdf5Check, HeadersGoNoFurtherThanTheirBlocks) {
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

TEST_F(Hdf5Check, SummedHeadersAreSummed) {
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

TEST_F(Hdf5Check, ContinuationsAreFollowedOnce) {
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

TEST_P(Hdf5Bodies, AreCheckedFieldByField) {
    const BodyCase& body = GetParam();
    EXPECT_EQ(checkBody(body.type, body.body), *body.text == '\0' ? "" : bodyDamage(body.offset, body.text));
}

INSTANTIATE_TEST_SUITE_P(
    Spaces, Hdf5Bodies,
    testing::Values(
        BodyCase{SPACE, spaceBody({3, 4}), 0, ""}, BodyCase{SPACE, spaceBody({}), 0, ""},
        BodyCase{SPACE, patched(spaceBody({3}), 0, "\3"), 0,
                 "expected the version of a dataspace of a message of an object header to be 1 to 2, found 3"},
        BodyCase{SPACE, patched(spaceBody({3}), 1, "\41"), 1,
                 "expected the dimensions of a dataspace of a message of an object header to be 0 to 32, found 33"},
        BodyCase{SPACE, patched(spaceBody({3}), 1, "\3"), 16,
                 "expected 8 more bytes in a message of an object header, found 0"},
        // With the most that it may become.
        BodyCase{SPACE, patched(spaceBody({3, 3}), 1, "\1\1"), 0, ""},
        BodyCase{SPACE, patched(spaceBody({3, NOWHERE}), 1, "\1\1"), 0, ""},
        BodyCase{SPACE, patched(spaceBody({3, 2}), 1, "\1\1"), 23,
                 "expected a size of a dataspace of a message of an object header to be 0 to 2, found 3"},
        BodyCase{SPACE, spaceBody({std::uint64_t(1) << 40, std::uint64_t(1) << 40}), 23,
                 "expected the values of a dataspace of a message of an object header to be 0 to 4611686018427387904, "
                 "found 18446744073709551615"},
        // Version 2: no values at all, or one.
        BodyCase{SPACE, le(2, 1) + zeros(2) + le(2, 1), 0, ""}, BodyCase{SPACE, le(2, 1) + zeros(3), 0, ""},
        BodyCase{SPACE, le(2, 1) + zeros(2) + le(3, 1), 3,
                 "expected the class of a dataspace of a message of an object header to be 0 to 2, found 3"},
        BodyCase{SPACE, le(2, 1) + le(1, 1) + zeros(1) + le(0, 1) + le(3, 8), 3,
                 "expected the class of a dataspace of a message of an object header to be 1, found 0"}));

namespace {

// Reals of four bytes: sign in bit 31, exponent in 23 to 30, mantissa below.
const std::string FLOAT = le(0x11, 1) + le(0x1f20, 3) + le(4, 4) + le(0, 2) + le(32, 2) + le(23, 1) + le(8, 1) +
                          le(0, 1) + le(23, 1) + le(127, 4);

// Version 1: eight bytes of a name, place, rank, nothing, order, nothing, four sizes.
std::string oldMember(const std::string& name, std::uint64_t place, std::uint64_t rank, std::uint64_t size,
                      const std::string& type) {
    return name + zeros(8 - name.size()) + le(place, 4) + le(rank, 1) + zeros(3 + 4 + 4) + le(size, 4) + zeros(12) +
           type;
}

std::string compound(std::uint64_t version, std::uint64_t count, std::uint64_t size, const std::string& members) {
    return le(version << 4 | 6, 1) + le(count, 3) + le(size, 4) + members;
}

std::string nested(int depth) {
    std::string types;
    for (int i = 0; i < depth; ++i) {
        types += le(0x39, 1) + zeros(3) + le(16, 4);
    }
    return types + integerBody(1);
}

// What most texts have in their middle.
#define OF_MESSAGE " of a message of an object header to be "

} // namespace

INSTANTIATE_TEST_SUITE_P(
    Types, Hdf5Bodies,
    testing::Values(
        BodyCase{TYPE, integerBody(4), 0, ""},
        BodyCase{TYPE, patched(integerBody(4), 0, "\x40"), 0,
                 "expected the version of a type" OF_MESSAGE "1 to 3, found 4"},
        BodyCase{TYPE, patched(integerBody(4), 0, "\x1b"), 0,
                 "expected the class of a type" OF_MESSAGE "0 to 10, found 11"},
        BodyCase{TYPE, integerBody(0), 7, "expected the size of a type" OF_MESSAGE "1 to 4294967295, found 0"},
        BodyCase{TYPE, integerBody(33), 7, "expected the size of a number" OF_MESSAGE "1 to 32, found 33"},
        BodyCase{TYPE, patched(integerBody(4), 10, le(0, 2)), 11,
                 "expected the bits of a number" OF_MESSAGE "1 to 32, found 0"},
        BodyCase{TYPE, patched(integerBody(4), 8, le(1, 2)), 11,
                 "expected the last bit of a number" OF_MESSAGE "1 to 32, found 33"},
        BodyCase{TYPE, patched(integerBody(4), 0, "\x14"), 0, ""}, // Bits.
        BodyCase{TYPE, FLOAT, 0, ""},
        BodyCase{TYPE, patched(FLOAT, 1, "\x30"), 11, "expected the kind of mantissa" OF_MESSAGE "0 to 2, found 3"},
        BodyCase{TYPE, patched(FLOAT, 2, "\x20"), 11, "expected the bit of a sign" OF_MESSAGE "0 to 31, found 32"},
        BodyCase{TYPE, patched(FLOAT, 13, "\12"), 13,
                 "expected the last bit of an exponent" OF_MESSAGE "1 to 32, found 33"},
        BodyCase{TYPE, patched(FLOAT, 15, "\41"), 15,
                 "expected the last bit of a mantissa" OF_MESSAGE "1 to 32, found 33"},
        BodyCase{TYPE, le(0x12, 1) + zeros(3) + le(4, 4) + le(32, 2), 0, ""},
        BodyCase{TYPE, le(0x12, 1) + zeros(3) + le(4, 4) + le(33, 2), 9,
                 "expected the bits of a time" OF_MESSAGE "1 to 32, found 33"},
        BodyCase{TYPE, le(0x13, 1) + zeros(3) + le(7, 4), 0, ""},            // Texts.
        BodyCase{TYPE, le(0x15, 1) + le(8, 3) + le(7, 4) + zeros(8), 0, ""}, // With a tag.
        BodyCase{TYPE, le(0x15, 1) + le(9, 3) + le(7, 4) + zeros(8), 8,
                 "expected 9 more bytes in a message of an object header, found 8"},
        BodyCase{TYPE, le(0x17, 1) + le(1, 3) + le(12, 4), 0, ""},
        BodyCase{TYPE, le(0x17, 1) + le(2, 3) + le(12, 4), 7,
                 "expected the kind of a reference" OF_MESSAGE "0 to 1, found 2"}));

INSTANTIATE_TEST_SUITE_P(
    MadeUpTypes, Hdf5Bodies,
    testing::Values(
        BodyCase{TYPE, compound(1, 1, 12, oldMember("a", 0, 1, 3, integerBody(4))), 0, ""},
        BodyCase{TYPE, compound(1, 1, 12, oldMember("a", 0, 1, 4, integerBody(4))), 59,
                 "expected the size of a member" OF_MESSAGE "1 to 12, found 16"},
        BodyCase{TYPE, compound(1, 1, 12, oldMember("a", 0, 5, 3, integerBody(4))), 20,
                 "expected the dimensions of a member" OF_MESSAGE "0 to 4, found 5"},
        BodyCase{TYPE, compound(3, 2, 8, "a" + le(0, 2) + integerBody(4) + "b" + zeros(1) + le(4, 1) + integerBody(4)),
                 0, ""},
        BodyCase{TYPE, compound(3, 2, 8, "a" + le(0, 2) + integerBody(4) + "b" + zeros(1) + le(3, 1) + integerBody(4)),
                 37, "expected the place of a member" OF_MESSAGE "4 to 8, found 3"},
        BodyCase{TYPE, compound(3, 1, 8, "a" + zeros(1) + le(5, 1) + integerBody(4)), 22,
                 "expected the place of a member" OF_MESSAGE "0 to 4, found 5"},
        BodyCase{TYPE, compound(3, 0, 8, ""), 7, "expected the number of members" OF_MESSAGE "1 to 65535, found 0"},
        BodyCase{TYPE, compound(3, 1, 8, std::string(8, 'a')), 8,
                 "expected a zero behind a text in a message of an object header, found none"},
        // Places take as many bytes as the size needs.
        BodyCase{TYPE, compound(3, 1, 255, "a" + zeros(1) + le(251, 1) + integerBody(4)), 0, ""},
        BodyCase{TYPE, compound(3, 1, 256, "a" + zeros(1) + le(252, 2) + integerBody(4)), 0, ""},
        BodyCase{TYPE, compound(3, 1, 65536, "a" + zeros(1) + le(65532, 3) + integerBody(4)), 0, ""},
        // Names of older versions fill eight bytes.
        BodyCase{TYPE, compound(2, 1, 8, "a" + zeros(7) + le(0, 4) + integerBody(4)), 0, ""},
        BodyCase{TYPE,
                 le(0x38, 1) + le(2, 3) + le(1, 4) + integerBody(1) + "a" + zeros(1) + "b" + zeros(1) + le(0x100, 2), 0,
                 ""},
        BodyCase{TYPE, le(0x38, 1) + le(2, 3) + le(2, 4) + integerBody(1) + zeros(12), 19,
                 "expected the size of an enumeration" OF_MESSAGE "1, found 2"},
        BodyCase{TYPE, le(0x38, 1) + le(3, 3) + le(1, 4) + integerBody(1) + "a" + zeros(1) + "b" + zeros(1), 24,
                 "expected a zero behind a text in a message of an object header, found none"},
        BodyCase{TYPE, nested(3), 0, ""},
        BodyCase{TYPE, patched(nested(1), 4, "\17"), 7, "expected the size of a list" OF_MESSAGE "16, found 15"},
        BodyCase{TYPE, patched(nested(1), 1, "\2"), 7, "expected the kind of a list" OF_MESSAGE "0 to 1, found 2"},
        BodyCase{TYPE, nested(65), 520, "expected the depth of types" OF_MESSAGE "0 to 64, found 65"},
        BodyCase{TYPE, le(0x3a, 1) + zeros(3) + le(12, 4) + le(1, 1) + le(3, 4) + integerBody(4), 0, ""},
        BodyCase{TYPE, le(0x3a, 1) + zeros(3) + le(13, 4) + le(1, 1) + le(3, 4) + integerBody(4), 24,
                 "expected the size of an array" OF_MESSAGE "12, found 13"},
        BodyCase{TYPE, le(0x3a, 1) + zeros(3) + le(12, 4) + le(33, 1), 8,
                 "expected the dimensions of an array" OF_MESSAGE "1 to 32, found 33"},
        BodyCase{TYPE, le(0x2a, 1) + zeros(3) + le(12, 4) + le(1, 4) + le(3, 4) + zeros(4) + integerBody(4), 0, ""},
        BodyCase{TYPE, le(0x1a, 1) + zeros(3) + le(12, 4) + le(1, 4) + le(3, 4) + zeros(4) + integerBody(4), 7,
                 "expected the version of an array" OF_MESSAGE "2 to 3, found 1"}));

INSTANTIATE_TEST_SUITE_P(
    OtherMessages, Hdf5Bodies,
    testing::Values(
        BodyCase{FILL, le(2, 1) + le(2, 1) + le(0, 1) + le(1, 1) + le(4, 4) + zeros(4), 0, ""},
        BodyCase{FILL, le(4, 1) + zeros(7), 0, "expected the version of a fill value" OF_MESSAGE "1 to 3, found 4"},
        BodyCase{FILL, le(2, 1) + le(4, 1) + zeros(6), 1,
                 "expected the time of taking room" OF_MESSAGE "0 to 3, found 4"},
        BodyCase{FILL, le(2, 1) + le(2, 1) + le(3, 1) + zeros(5), 2,
                 "expected the time of filling" OF_MESSAGE "0 to 2, found 3"},
        BodyCase{FILL, le(2, 1) + le(2, 1) + le(0, 1) + le(1, 1) + le(9, 4) + zeros(8), 8,
                 "expected 9 more bytes in a message of an object header, found 8"},
        BodyCase{FILL, le(2, 1) + le(2, 1) + le(0, 1) + le(1, 1) + le(0xffffffff, 4), 0, ""},
        BodyCase{FILL, le(3, 1) + le(0x2a, 1) + le(2, 4) + zeros(2), 0, ""},
        BodyCase{FILL, le(3, 1) + le(0x2a, 1) + le(3, 4) + zeros(2), 6,
                 "expected 3 more bytes in a message of an object header, found 2"},
        BodyCase{FILL, le(3, 1) + le(0x0e, 1), 1, "expected the time of filling" OF_MESSAGE "0 to 2, found 3"},
        BodyCase{OLD_FILL, le(4, 4) + zeros(4), 0, ""},
        BodyCase{OLD_FILL, le(5, 4) + zeros(4), 4, "expected 5 more bytes in a message of an object header, found 4"},
        BodyCase{GROUP_INFO, le(0, 1) + le(3, 1) + zeros(8), 0, ""},
        BodyCase{GROUP_INFO, le(1, 1) + zeros(7), 0, "expected the version" OF_MESSAGE "0, found 1"},
        BodyCase{GROUP_INFO, le(0, 1) + le(3, 1) + zeros(6), 2,
                 "expected 8 more bytes in a message of an object header, found 6"},
        BodyCase{COMMENT, "a text", 0, ""},
        BodyCase{COMMENT, "no zero.", 0, "expected a zero behind a text in a message of an object header, found none"},
        BodyCase{OLD_TIME, "20261122010000", 0, ""},
        BodyCase{OLD_TIME, "20261122", 0, "expected 14 more bytes in a message of an object header, found 8"},
        BodyCase{TIME, zeros(8), 0, ""}, BodyCase{DRIVER, zeros(9) + le(5, 2) + zeros(5), 0, ""},
        BodyCase{DRIVER, zeros(9) + le(6, 2) + zeros(5), 11,
                 "expected 6 more bytes in a message of an object header, found 5"},
        BodyCase{REFERENCES, zeros(5), 0, ""}, BodyCase{FREE_SPACE, zeros(10), 0, ""},
        BodyCase{FREE_SPACE, le(0, 1) + le(1, 1) + zeros(8 + 48), 0, ""},
        BodyCase{FREE_SPACE, le(0, 1) + le(1, 1) + zeros(8 + 38), 10,
                 "expected 48 more bytes in a message of an object header, found 38"},
        BodyCase{FREE_SPACE, le(1, 1) + le(0, 1) + le(1, 1) + zeros(26 + 96), 0, ""},
        BodyCase{FREE_SPACE, le(1, 1) + le(0, 1) + le(1, 1) + zeros(91), 29,
                 "expected 96 more bytes in a message of an object header, found 67"},
        BodyCase{200, "whatever", 0, ""}));

INSTANTIATE_TEST_SUITE_P(
    Layouts, Hdf5Bodies,
    testing::Values(
        BodyCase{LAYOUT, le(3, 1) + le(0, 1) + le(4, 2) + zeros(4), 0, ""},
        BodyCase{LAYOUT, le(3, 1) + le(0, 1) + le(5, 2) + zeros(4), 4,
                 "expected 5 more bytes in a message of an object header, found 4"},
        BodyCase{LAYOUT, le(0, 8), 0, "expected the version of a layout" OF_MESSAGE "1 to 4, found 0"},
        BodyCase{LAYOUT, le(3, 1) + le(3, 7), 1, "expected the class of a layout" OF_MESSAGE "0 to 2, found 3"},
        BodyCase{LAYOUT, chunkedBody({2, 4}), 0, ""},
        BodyCase{LAYOUT, chunkedBody({2}), 2, "expected the dimensions of a layout" OF_MESSAGE "2 to 33, found 1"},
        BodyCase{LAYOUT, chunkedBody({0, 4}), 18,
                 "expected the bytes of a chunk" OF_MESSAGE "1 to 4294967295, found 0"},
        BodyCase{LAYOUT, chunkedBody({0x40000000, 4}), 18,
                 "expected the bytes of a chunk" OF_MESSAGE "1 to 4294967295, found 4294967296"},
        // Version 2: dimensions, class, nothing, address, sizes, and for compact ones the size of what follows.
        BodyCase{LAYOUT, le(2, 1) + le(1, 1) + le(1, 1) + zeros(5) + zeros(8) + zeros(4), 0, ""},
        BodyCase{LAYOUT, le(2, 1) + le(34, 1) + zeros(6), 1,
                 "expected the dimensions of a layout" OF_MESSAGE "1 to 33, found 34"},
        BodyCase{LAYOUT, le(2, 1) + le(1, 1) + le(3, 1) + zeros(5), 2,
                 "expected the class of a layout" OF_MESSAGE "0 to 2, found 3"},
        BodyCase{LAYOUT, le(2, 1) + le(1, 1) + le(0, 1) + zeros(5) + zeros(4) + le(4, 4) + zeros(8), 0, ""},
        BodyCase{LAYOUT, le(2, 1) + le(1, 1) + le(0, 1) + zeros(5) + zeros(4) + le(9, 4) + zeros(8), 16,
                 "expected 9 more bytes in a message of an object header, found 8"},
        BodyCase{LAYOUT, le(1, 1) + le(2, 1) + le(2, 1) + zeros(5) + zeros(8) + le(1, 4) + le(0, 4), 23,
                 "expected the bytes of a chunk" OF_MESSAGE "1 to 4294967295, found 0"},
        // Version 4: flags, dimensions, bytes of a size, sizes, index, what it is made by, address.
        BodyCase{LAYOUT,
                 le(4, 1) + le(2, 1) + zeros(1) + le(2, 1) + le(1, 1) + le(3, 1) + le(4, 1) + le(3, 1) + le(10, 1) +
                     le(NOWHERE, 8),
                 0, ""},
        BodyCase{LAYOUT, le(4, 1) + le(2, 1) + le(4, 1) + zeros(5), 2,
                 "expected the flags of chunks" OF_MESSAGE "0 to 3, found 4"},
        BodyCase{LAYOUT, le(4, 1) + le(2, 1) + zeros(1) + le(34, 1) + zeros(4), 3,
                 "expected the dimensions of a layout" OF_MESSAGE "2 to 33, found 34"},
        BodyCase{LAYOUT, le(4, 1) + le(2, 1) + zeros(1) + le(2, 1) + le(9, 1) + zeros(3), 4,
                 "expected the bytes of a chunk's sizes" OF_MESSAGE "1 to 8, found 9"},
        BodyCase{LAYOUT,
                 le(4, 1) + le(2, 1) + zeros(1) + le(2, 1) + le(8, 1) + le(std::uint64_t(1) << 40, 8) + le(1, 8) +
                     zeros(3),
                 20, "expected the bytes of a chunk" OF_MESSAGE "1 to 4294967295, found 1099511627776"},
        BodyCase{LAYOUT, le(4, 1) + le(2, 1) + zeros(1) + le(2, 1) + le(1, 1) + le(3, 1) + le(4, 1) + le(6, 1), 7,
                 "expected the index of chunks" OF_MESSAGE "1 to 5, found 6"}));

INSTANTIATE_TEST_SUITE_P(
    Filters, Hdf5Bodies,
    testing::Values(
        // Version 1 has names of eights of bytes and even numbers of values.
        BodyCase{FILTERS,
                 le(1, 1) + le(1, 1) + zeros(6) + le(1, 2) + le(8, 2) + le(1, 2) + le(1, 2) + "deflate" + zeros(1) +
                     le(9, 4) + zeros(4),
                 0, ""},
        BodyCase{FILTERS, le(1, 1) + le(1, 1) + zeros(6) + le(1, 2) + le(8, 2) + le(1, 2) + le(0, 2) + "deflates", 16,
                 "expected a zero behind a text in the name of a filter, found none"},
        BodyCase{FILTERS, le(3, 8), 0, "expected the version of filters" OF_MESSAGE "1 to 2, found 3"},
        BodyCase{FILTERS, le(2, 1) + le(33, 1) + zeros(6), 1,
                 "expected the number of filters" OF_MESSAGE "0 to 32, found 33"},
        BodyCase{FILTERS, le(2, 1) + le(1, 1) + le(1, 2) + le(1, 2) + le(1, 2) + le(9, 4) + zeros(4), 0, ""},
        BodyCase{FILTERS, le(2, 1) + le(1, 1) + le(1, 2) + le(1, 2) + le(3, 2) + le(9, 4) + le(9, 4), 16,
                 "expected 4 more bytes in a message of an object header, found 0"},
        BodyCase{FILTERS, le(2, 1) + le(1, 1) + le(32000, 2) + le(4, 2) + le(1, 2) + le(0, 2) + "lzf" + zeros(3), 0,
                 ""}));

namespace {

// Version 1: each part fills eights of bytes.
std::string attribute(const std::string& name, const std::string& type, const std::string& space,
                      const std::string& values) {
    const auto padded = [](const std::string& part) { return part + zeros((8 - part.size() % 8) % 8); };
    return le(1, 2) + le(name.size(), 2) + le(type.size(), 2) + le(space.size(), 2) + padded(name) + padded(type) +
           padded(space) + values;
}

std::string newAttribute(std::uint64_t version, std::uint64_t flags, const std::string& type,
                         const std::string& values) {
    return le(version, 1) + le(flags, 1) + le(2, 2) + le(type.size(), 2) + le(8, 2) + (version == 3 ? zeros(1) : "") +
           "a" + zeros(1) + type + spaceBody({}) + values;
}

const std::string NAME = "name" + zeros(1);

} // namespace

// An attribute's type begins at byte 16, its dataspace of one dimension at 32, its values at 48.
INSTANTIATE_TEST_SUITE_P(
    Attributes, Hdf5Bodies,
    testing::Values(
        BodyCase{ATTRIBUTE, attribute(NAME, integerBody(4), spaceBody({2}), zeros(8)), 0, ""},
        BodyCase{ATTRIBUTE, attribute(NAME, integerBody(4), spaceBody({3}), zeros(8)), 48,
                 "expected 12 more bytes in a message of an object header, found 8"},
        BodyCase{ATTRIBUTE, attribute(NAME, integerBody(4), spaceBody({std::uint64_t(1) << 62}), zeros(8)), 48,
                 "expected 18446744073709551615 more bytes in a message of an object header, found 8"},
        BodyCase{ATTRIBUTE, attribute("name", integerBody(4), spaceBody({2}), zeros(8)), 8,
                 "expected a zero behind a text in the name of an attribute, found none"},
        BodyCase{ATTRIBUTE, attribute(NAME + NAME, integerBody(4), spaceBody({2}), zeros(8)), 12,
                 "expected the bytes behind the end of the name of an attribute to be 0, found 5"},
        BodyCase{ATTRIBUTE, attribute(NAME, integerBody(4).substr(0, 10), spaceBody({2}), zeros(8)), 26,
                 "expected 2 more bytes in the type of an attribute, found 0"},
        BodyCase{ATTRIBUTE, attribute(NAME, integerBody(4), spaceBody({2}).substr(0, 8), zeros(16)), 40,
                 "expected 8 more bytes in the dataspace of an attribute, found 0"},
        BodyCase{ATTRIBUTE, patched(attribute(NAME, integerBody(4), spaceBody({2}), zeros(8)), 2, le(500, 2)), 8,
                 "expected 500 more bytes in a message of an object header, found 48"},
        BodyCase{ATTRIBUTE, le(4, 8), 0, "expected the version of an attribute" OF_MESSAGE "1 to 3, found 4"},
        BodyCase{ATTRIBUTE, newAttribute(2, 0, integerBody(4), zeros(6)), 0, ""},
        BodyCase{ATTRIBUTE, newAttribute(3, 0, integerBody(4), zeros(5)), 0, ""},
        BodyCase{ATTRIBUTE, newAttribute(2, 2, integerBody(4), zeros(6)), 1,
                 "expected the flags of an attribute" OF_MESSAGE "0 to 1, found 2"},
        BodyCase{ATTRIBUTE, newAttribute(3, 2, integerBody(4), zeros(5)), 1,
                 "expected an attribute with a dataspace of its own, found it shared"}));

namespace {

std::string link(std::uint64_t kind, const std::string& target) {
    return le(1, 1) + le(8, 1) + le(kind, 1) + le(1, 1) + "a" + target;
}

std::string target(const std::string& bytes) {
    return le(bytes.size(), 2) + bytes;
}

} // namespace

INSTANTIATE_TEST_SUITE_P(
    Links, Hdf5Bodies,
    testing::Values(
        BodyCase{LINK, link(0, le(HDF5_HEADER_AT, 8)), 0, ""}, BodyCase{LINK, link(1, target("/b")), 0, ""},
        BodyCase{LINK, link(1, le(20, 2) + "/b"), 7,
                 "expected 20 more bytes in a message of an object header, found 9"},
        BodyCase{LINK, link(2, target("/b")), 4, "expected the class of a link" OF_MESSAGE "64 to 255, found 2"},
        BodyCase{LINK, link(64, target(zeros(1) + "b.h5" + zeros(1) + "/" + zeros(1))), 0, ""},
        BodyCase{LINK, link(64, target(zeros(1) + "b.h5" + zeros(1) + "/")), 13,
                 "expected a zero behind a text in the target of a link, found none"},
        BodyCase{LINK, link(64, target("\1b.h5" + zeros(1) + "/" + zeros(1))), 7,
                 "expected the version and flags of the target of a link to be 0, found 1"},
        BodyCase{LINK, link(99, target("anything")), 0, ""},
        BodyCase{LINK, patched(link(0, zeros(8)), 0, "\2"), 0,
                 "expected the version of a link" OF_MESSAGE "1, found 2"},
        BodyCase{LINK, le(1, 1) + zeros(1) + le(200, 1) + "a" + zeros(12), 3,
                 "expected 200 more bytes in a message of an object header, found 13"},
        // Order, letters, and a name's size of eight bytes.
        BodyCase{LINK, le(1, 1) + le(0x1f, 1) + zeros(1) + zeros(8) + zeros(1) + le(1, 8) + "a" + le(HDF5_HEADER_AT, 8),
                 0, ""},
        BodyCase{LINK_INFO, zeros(2) + le(NOWHERE, 8) + le(NOWHERE, 8), 0, ""},
        BodyCase{LINK_INFO, le(0, 1) + le(3, 1) + zeros(8) + le(NOWHERE, 8) + le(NOWHERE, 8) + le(NOWHERE, 8), 0, ""},
        BodyCase{LINK_INFO, le(1, 8), 0, "expected the version" OF_MESSAGE "0, found 1"},
        BodyCase{LINK_INFO, le(0, 1) + le(4, 1) + zeros(16), 1, "expected the flags" OF_MESSAGE "0 to 3, found 4"},
        BodyCase{ATTRIBUTE_INFO, le(0, 1) + le(3, 1) + zeros(2) + le(NOWHERE, 8) + le(NOWHERE, 8) + le(NOWHERE, 8), 0,
                 ""},
        BodyCase{ATTRIBUTE_INFO, le(0, 1) + le(3, 1) + zeros(2) + le(NOWHERE, 8) + le(NOWHERE, 4), 12,
                 "expected 8 more bytes in a message of an object header, found 4"},
        BodyCase{EXTERNAL_FILES, le(2, 8), 0, "expected the version of external files" OF_MESSAGE "1, found 2"},
        BodyCase{EXTERNAL_FILES, le(1, 4) + le(1, 2) + le(2, 2), 7,
                 "expected the number of external files" OF_MESSAGE "0 to 1, found 2"}));

TEST_F(Hdf5Check, SharedTypesAreLookedUp) {
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

namespace {

// The messages of a data set, in whose layout the damage is told. It begins at byte 184.
std::string dataImage(const std::string& layout, const std::string& more = "",
                      const Hdf5ImageMessage& other = {0, ""}) {
    return plainImage({{SPACE, spaceBody({2, 3})}, {TYPE, integerBody(4)}, {LAYOUT, layout}, other}, more);
}

constexpr std::uint64_t LAYOUT_AT = HDF5_BODY_AT + 24 + 8 + 16 + 8;

std::string contiguous(std::uint64_t address, std::uint64_t size) {
    return le(3, 1) + le(1, 1) + le(address, 8) + le(size, 8);
}

std::string compact(std::uint64_t size) {
    return le(3, 1) + le(0, 1) + le(size, 2) + zeros(size);
}

} // namespace

TEST_F(Hdf5Check, ValuesHaveTheRoomThatTheyNeed) {
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

TEST_F(Hdf5Check, FillValuesAreAsLargeAsValues) {
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

TEST_F(Hdf5Check, ChunksHaveTheShapeOfValues) {
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

namespace {

// A leaf of a B-tree of one chunk of values of four bytes in two dimensions, and room for 64.
std::string chunkLeaf(std::uint64_t size, std::uint64_t mask, std::uint64_t place, std::uint64_t address) {
    const std::string last = zeros(8) + le(2, 8) + le(3, 8) + le(4, 8);
    std::string node = "TREE" + le(1, 1) + le(0, 1) + le(1, 2) + le(NOWHERE, 8) + le(NOWHERE, 8) + le(size, 4) +
                       le(mask, 4) + le(place, 8) + zeros(16) + le(address, 8) + last;
    node.resize(24 + 64 * 40 + 32);
    return node;
}

constexpr std::uint64_t CHUNK_AT = HDF5_MORE_AT + 24 + 64 * 40 + 32;

Hdf5ImageMessage filters(const std::vector<std::uint64_t>& ids) {
    std::string body = le(2, 1) + le(ids.size(), 1);
    for (const std::uint64_t id : ids) {
        body += le(id, 2) + le(0, 2) + le(0, 2);
    }
    return {FILTERS, body};
}

} // namespace

TEST_F(Hdf5Check, ChunksOfOldTreesAreWhereTheyCanBe) {
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

TEST_F(Hdf5Check, PackedChunksCanGiveWhatTheyHaveTo) {
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
TEST_F(Hdf5Check, HeadsOfPackedChunksFit) {
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

namespace {

// A heap with its texts behind it, at the address where it is put.
std::string localHeap(std::uint64_t at, std::uint64_t size, std::uint64_t free, const std::string& data) {
    return "HEAP" + zeros(4) + le(size, 8) + le(free, 8) + le(at + 32, 8) + data;
}

constexpr std::uint64_t LOCAL_HEAP_SIZE = 32 + 32; // Of the one in the images of groups.

// A B-tree of one leaf with room for 32, whose child is behind it.
std::string groupLeaf(std::uint64_t at, std::uint64_t lastName) {
    std::string node =
        "TREE" + zeros(2) + le(1, 2) + le(NOWHERE, 8) + le(NOWHERE, 8) + le(0, 8) + le(at + 544, 8) + le(lastName, 8);
    node.resize(24 + 32 * 16 + 8);
    return node;
}

std::string symbolNode(std::uint64_t count, const std::string& entries) {
    std::string node = "SNOD" + le(1, 2) + le(count, 2) + entries;
    node.resize(8 + 8 * 40);
    return node;
}

std::string symbol(std::uint64_t name, std::uint64_t address, std::uint64_t kind, std::uint64_t value) {
    return le(name, 8) + le(address, 8) + le(kind, 4) + zeros(4) + le(value, 4) + zeros(12);
}

constexpr std::uint64_t LEAF_AT = HDF5_MORE_AT + LOCAL_HEAP_SIZE;
constexpr std::uint64_t SYMBOLS_AT = LEAF_AT + 544;

std::string groupImage(const std::string& heap, const std::string& leaf, const std::string& symbols) {
    return plainImage({{SYMBOLS, le(LEAF_AT, 8) + le(HDF5_MORE_AT, 8)}}, heap + leaf + symbols);
}

// Names at 8 and 16, and a free block at 24 that is not told.
const std::string HEAP =
    localHeap(HDF5_MORE_AT, 32, 1, zeros(8) + "one" + zeros(5) + "another" + zeros(1) + "no zero!");
const std::string LEAF = groupLeaf(LEAF_AT, 16);

} // namespace

TEST_F(Hdf5Check, SymbolsHaveNamesAndObjects) {
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

TEST_F(Hdf5Check, LocalHeapsHaveTheirFreeBlocksOnce) {
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

TEST_F(Hdf5Check, ExternalFilesHaveNames) {
    const auto image = [](std::uint64_t name) {
        return dataImage(
            contiguous(NOWHERE, 24), HEAP,
            {EXTERNAL_FILES, le(1, 4) + le(1, 2) + le(1, 2) + le(HDF5_MORE_AT, 8) + le(name, 8) + zeros(16)});
    };
    EXPECT_EQ(check(image(8)), "");
    EXPECT_EQ(check(image(24)),
              damage(LAYOUT_AT + 32 + 24, "expected a name before byte 24 of its heap, found it at byte 24"));
}

namespace {

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

} // namespace

TEST_F(Hdf5Check, ListsOfAttributesHaveAsManyItemsAsTheyCount) {
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

TEST_F(Hdf5Check, GlobalHeapsAreWalkedToTheirEnd) {
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

TEST_F(Hdf5Check, ListsAreFoundInCompoundsAndArrays) {
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
TEST_F(Hdf5Check, ListsAreNoMoreThanTheFile) {
    std::string lists;
    for (int i = 0; i < 40; ++i) {
        lists += le(64, 4) + le(HDF5_MORE_AT, 8) + le(1, 4);
    }
    const std::string heap = globalHeap(heapItem(1, zeros(64))); // The file has 1024 + 96 bytes, 17.5 times as many.
    EXPECT_EQ(check(plainImage({{ATTRIBUTE, attribute(NAME, nested(1), spaceBody({40}), lists)}}, heap)),
              damage(LIST_AT + 17 * 16 + 15,
                     "expected the bytes of all lists of a value of an attribute to be 0 to 1120, found 1152"));
}

namespace {

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

// Heads of B-trees have 38 bytes, of fractal heaps 146, of fixed arrays 28, of extensible ones 72.
TEST_F(Hdf5Check, SummedBlocksAreCheckedFieldByField) {
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
TEST_F(Hdf5Check, SumsAreOfWholeBlocks) {
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

TEST_F(Hdf5Check, DeepGroupsNeedNoStack) {
    constexpr std::uint64_t DEPTH = 50000;
    std::string more;
    for (std::uint64_t i = 0; i < DEPTH; ++i) {
        const std::uint64_t next = i + 1 < DEPTH ? HDF5_MORE_AT + (i + 1) * 40 : HDF5_HEADER_AT;
        more += plainHeader({{LINK, link(0, le(next, 8))}});
    }
    EXPECT_EQ(more.size(), DEPTH * 40);
    EXPECT_EQ(check(plainImage({{LINK, link(0, le(HDF5_MORE_AT, 8))}}, more)), "");
}

// Four nodes, each of which has the next one below it 32 times: a million ways.
TEST_F(Hdf5Check, BlocksThatOverlapAreNotReadForEver) {
    std::string nodes;
    for (std::uint64_t level = 0; level < 4; ++level) {
        const std::uint64_t below = level > 0 ? LEAF_AT + (level - 1) * 544 : LEAF_AT + 4 * 544;
        std::string node = "TREE" + le(0, 1) + le(level, 1) + le(32, 2) + le(NOWHERE, 8) + le(NOWHERE, 8);
        for (int i = 0; i < 32; ++i) {
            node += le(8, 8) + le(below, 8);
        }
        nodes += node + le(16, 8);
    }
    const std::string message = le(LEAF_AT + 3 * 544, 8) + le(HDF5_MORE_AT, 8);
    const std::string symbols = symbolNode(1, symbol(8, HDF5_HEADER_AT, 0, 0));
    EXPECT_THAT(check(plainImage({{SYMBOLS, message}}, HEAP + nodes + symbols)),
                testing::HasSubstr("expected blocks that do not overlap, found "));
}

namespace {

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

} // namespace

TEST_F(Hdf5Check, LinksInFractalHeapsAreFound) {
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

TEST_F(Hdf5Check, ChunksOfNewLayoutsHaveRoom) {
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
TEST_F(Hdf5Check, PagesOfArraysAreSummed) {
    const std::string whole = readWholeFile(testDataFolder() + "/hdf5/many.h5");
    const std::size_t at = whole.find("FADB") + 4 + 1 + 1 + 8 + 1 + 4;
    EXPECT_EQ(check(patched(whole, at + 5, "x")),
              damage(at, "expected the bytes of a page of an array to give the sum behind them"));
    const std::size_t second = at + 1024 * 8 + 4;
    EXPECT_EQ(check(patched(whole, second + 5, "x")),
              damage(second, "expected the bytes of a page of an array to give the sum behind them"));
}

// A list in the global heap tells where the values of a virtual data set are. The sum is behind it.
TEST_F(Hdf5Check, ListsOfVirtualValuesAreSummed) {
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

TEST_F(Hdf5Check, LinkedFilesAreChecked) {
    const std::string there = zeros(1) + "b.h5" + zeros(1) + "/" + zeros(1);
    const std::string image = plainImage({{LINK, link(64, target(there))}});
    EXPECT_EQ(check(image), ""); // There is no such file.
    m_folder.write("b.h5", image);
    EXPECT_EQ(check(image), "");
    m_folder.write("b.h5", patched(plainImage({}), 8, le(4, 1)));
    EXPECT_EQ(check(image),
              "links to \"" + m_folder / "b.h5" +
                  "\", which is damaged at byte 8: expected the version of a superblock to be 0 to 3, found 4");
    // From where the program runs.
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::create_directory(m_folder / "inner");
    std::filesystem::current_path(m_folder.path());
    ug::Error error;
    EXPECT_FALSE(checkHdf5File(m_folder.write("inner/a.h5", image), &error));
    EXPECT_EQ(error.message().toStdString().substr(0, 16), "links to \"b.h5\",");
    std::filesystem::current_path(before);
    // Whatever way to it is told, it may be in the same folder.
    const std::string elsewhere = zeros(1) + "/missing/b.h5" + zeros(1) + "/" + zeros(1);
    EXPECT_NE(check(plainImage({{LINK, link(64, target(elsewhere))}})), "");
}

// No byte of a file matters so much that a wrong one is not survived; the check ends, with or without finding it.
TEST_F(Hdf5Check, AnyByteMayBeWrong) {
    for (const char* name : {"plain.h5", "many_old.h5", "latest.h5"}) {
        const std::string whole = readWholeFile(testDataFolder() + "/hdf5/" + name);
        for (std::size_t at = 0; at < whole.size(); at += 371) {
            check(patched(whole, at, "\xff"));
            check(patched(whole, at, zeros(8).substr(0, std::min<std::size_t>(8, whole.size() - at))));
        }
    }
}
