#include "OrvImportCae/Hdf5Messages.h"

#include "Tests/OrvImportCae/Hdf5Checked.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>

using namespace orv;
using namespace orv::imp::cae;
using namespace orvtest;

namespace {

struct BodyCase {
    std::uint64_t type;
    std::string body;
    std::uint64_t offset;
    const char* text; ///< "" when nothing is wrong.
};

void PrintTo(const BodyCase& body, std::ostream* stream) {
    *stream << "message " << body.type << ": " << body.text;
}

class Hdf5Bodies : public Hdf5Checked, public testing::WithParamInterface<BodyCase> {};

// Reals of four bytes: sign in bit 31, exponent in 23 to 30, mantissa below.
const std::string FLOAT = le(0x11, 1) + le(0x1f20, 3) + le(4, 4) + le(0, 2) + le(32, 2) + le(23, 1) + le(8, 1) +
                          le(0, 1) + le(23, 1) + le(127, 4);

// Version 1: eight bytes of a name, place, rank, nothing, order, nothing, four sizes.
std::string oldMember(const std::string& name, std::uint64_t place, std::uint64_t rank, std::uint64_t size,
                      const std::string& type) {
    return name + zeros(8 - name.size()) + le(place, 4) + le(rank, 1) + zeros(3 + 4 + 4) + le(size, 4) + zeros(12) +
           type;
}

} // namespace

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
