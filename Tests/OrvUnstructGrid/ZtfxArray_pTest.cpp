#include "OrvUnstructGrid/ZtfxArray_p.h"

#include "Tests/OrvUnstructGrid/ZtfxFiles.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace orv::ug;
using orv::UNDEFINED_DOUBLE;
using orvtest::fromBits;

namespace {

TEST(ZtfxArray, TypesHaveNamesAndSizes) {
    struct Case {
        ZtfxType type;
        const char* name;
        std::size_t size;
    };
    for (const Case& c :
         {Case{ZtfxType::FLOAT64, "float64", 8}, Case{ZtfxType::FLOAT32, "float32", 4},
          Case{ZtfxType::INT32, "int32", 4}, Case{ZtfxType::UINT32, "uint32", 4}, Case{ZtfxType::UINT8, "uint8", 1}}) {
        EXPECT_EQ(ztfxTypeName(c.type), c.name);
        EXPECT_EQ(ztfxTypeOf(c.name), c.type);
        EXPECT_EQ(ztfxTypeSize(c.type), c.size);
    }
    EXPECT_EQ(ztfxTypeOf("float"), std::nullopt);
    EXPECT_EQ(ztfxTypeOf(""), std::nullopt);
}

TEST(ZtfxArray, CountsItsBytesInTheFileAndInMemory) {
    ZtfxArray array;
    array.items = 10;
    array.components = 3;
    EXPECT_EQ(array.valueCount(), 30u);
    EXPECT_EQ(array.byteCount(), 240u);
    EXPECT_EQ(array.memoryByteCount(), 240u);
    array.type = ZtfxType::FLOAT32;
    EXPECT_EQ(array.byteCount(), 120u);
    EXPECT_EQ(array.memoryByteCount(), 240u);
    array.type = ZtfxType::UINT8;
    EXPECT_FALSE(array.isReal());
    EXPECT_EQ(array.byteCount(), 30u);
    EXPECT_EQ(array.memoryByteCount(), 30u);
    EXPECT_EQ(ztfxEntryName(17), "data/17");
}

// The hash of nothing is the one that the algorithm's description gives.
TEST(ZtfxArray, ChecksumsAreXxh3Of128Bits) {
    ZtfxHasher hasher;
    EXPECT_EQ(hasher.checksum().text(), "99aa06d3014798d86001c324468d497f");
    hasher.update("ab", 2);
    hasher.update("c", 1);
    ZtfxHasher atOnce;
    atOnce.update("abc", 3);
    EXPECT_EQ(hasher.checksum(), atOnce.checksum());
    EXPECT_EQ(atOnce.checksum().text(), "06b05ab6733a618578af5f94892f3950");
}

TEST(ZtfxArray, ChecksumsComeBackFromTheirTexts) {
    const ZtfxChecksum checksum = {0x0123456789abcdef, 0x00000000000000f1};
    EXPECT_EQ(checksum.text(), "0123456789abcdef00000000000000f1");
    EXPECT_EQ(ZtfxChecksum::fromText(checksum.text()), checksum);
    for (const char* text :
         {"", "0123456789abcdef00000000000000f", "0123456789abcdef00000000000000f12",
          "0123456789abcdex00000000000000f1", "0123456789abcdef-0000000000000f1", "0x23456789abcdef00000000000000f1"}) {
        EXPECT_EQ(ZtfxChecksum::fromText(text), std::nullopt) << text;
    }
}

TEST(ZtfxArray, FindsOutWhat32BitsHold) {
    const double largest = std::numeric_limits<float>::max();
    for (const double value : {0.0, -0.0, 1.5, -largest, UNDEFINED_DOUBLE, std::numeric_limits<double>::infinity(),
                               static_cast<double>(std::numeric_limits<float>::denorm_min()),
                               fromBits(0x7ff8000000000000), fromBits(0xfff8000020000000)}) {
        SCOPED_TRACE(value);
        EXPECT_TRUE(fitsFloat32({&value, 1}));
        float narrow = 0;
        double wide = 0;
        narrowToFloat32(&value, 1, &narrow);
        widenFloat32(&narrow, 1, &wide);
        EXPECT_TRUE(orvtest::haveSameBits({&value, 1}, {&wide, 1}));
    }
    // The last two: a payload that is too long, and a signalling one, which any conversion makes quiet.
    for (const double value : {0.1, largest, 1e300, -UNDEFINED_DOUBLE, std::numeric_limits<double>::min(),
                               fromBits(0x7ff8000000000001), fromBits(0x7ff4000000000000)}) {
        EXPECT_FALSE(fitsFloat32({&value, 1})) << value;
    }
}

TEST(ZtfxArray, OneValueDecidesForAll) {
    std::vector<double> values(2000, 0.5);
    EXPECT_TRUE(fitsFloat32(values));
    EXPECT_TRUE(fitsFloat32({}));
    for (const std::size_t place : {0, 511, 512, 1999}) {
        values[place] = 0.1;
        EXPECT_FALSE(fitsFloat32(values));
        values[place] = 0.5;
    }
}

} // namespace
