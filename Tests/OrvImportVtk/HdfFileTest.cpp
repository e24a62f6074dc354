#include "OrvImportVtk/HdfFile.h"

#include "Tests/OrvImportVtk/VtkSamples.h"

#include <gtest/gtest.h>

using namespace orv;
using namespace orv::imp::cae;

namespace {

std::string sample(const std::string& name) {
    return orvtest::readWholeFile(orvtest::testDataFolder() + "/vtkhdf/" + name);
}

// The text of the error on opening; empty when there is none.
std::string whyNot(const std::string& bytes) {
    const orvtest::ScratchFolder folder;
    HdfFile file;
    ug::Error error;
    const bool isOpen = file.open(folder.write("a.vtkhdf", bytes), &error);
    EXPECT_EQ(isOpen, error.isEmpty());
    return error.message().toStdString();
}

// Reals of 32 bits: class and version, flags, the bit of the sign, size, offset, precision, exponent, mantissa, bias.
constexpr char REAL[] = "\x11\x20\x1f\0\4\0\0\0\0\0\x20\0\x17\x08\0\x17\x7f";

} // namespace

// HDF5 1.10 reads and writes beyond its buffers when it converts numbers of such types.
TEST(HdfFile, RefusesTypesWhoseBitsLieOutsideTheirItems) {
    const std::string whole = sample("pieces.vtkhdf");
    const std::size_t at = whole.find(std::string(REAL, sizeof REAL - 1));
    ASSERT_NE(at, std::string::npos);
    const struct {
        std::size_t offset;
        char value;
        std::size_t damageOffset;
        const char* text;
    } cases[] = {
        {2, 32, 11, "the bit of a sign of a message of an object header to be 0 to 31, found 32"},
        {8, 1, 11, "the last bit of a number of a message of an object header to be 1 to 32, found 33"},
        {10, 33, 11, "the bits of a number of a message of an object header to be 1 to 32, found 33"},
        {12, 25, 13, "the last bit of an exponent of a message of an object header to be 1 to 32, found 33"},
        {15, 33, 15, "the last bit of a mantissa of a message of an object header to be 1 to 32, found 33"},
    };
    for (const auto& change : cases) {
        std::string damaged = whole;
        damaged[at + change.offset] = change.value;
        EXPECT_EQ(whyNot(damaged),
                  "is damaged at byte " + std::to_string(at + change.damageOffset) + ": expected " + change.text);
    }
}

// What HDF5 1.10 has once been seen not to survive.
TEST(HdfFile, RefusesWhatHdf5DoesNotSurvive) {
    std::string attribute = sample("image.vtkhdf");
    EXPECT_EQ(whyNot(attribute), "");
    attribute[1871] = '\x81'; // In the size of a dataspace.
    EXPECT_EQ(whyNot(attribute),
              "is damaged at byte 1896: expected 33048 more bytes in a message of an object header, found 40");
    std::string bits = sample("image.vtkhdf");
    bits[4087] = '\xfa'; // Bits of a mantissa, which begin at 0.
    EXPECT_EQ(whyNot(bits),
              "is damaged at byte 4087: expected the last bit of a mantissa of the type of an attribute to "
              "be 1 to 64, found 250");
    std::string heap = sample("pieces.vtkhdf");
    const std::size_t at = heap.find("HEAP");
    ASSERT_NE(at, std::string::npos);
    heap[at + 13] = '\x7f'; // Of a size of eight bytes from byte 8 on.
    EXPECT_EQ(whyNot(heap).find("is damaged at byte "), 0u);
    EXPECT_NE(whyNot(heap).find("expected a local heap within the file, found 1396"), std::string::npos); // 127 * 2^40.
}
