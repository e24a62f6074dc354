#include "OrvImportVtk/XmlBytes.h"

#include "OrvImportVtk/VtkMessages.h"
#include "Tests/Support/ScratchFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vtkLZ4DataCompressor.h>
#include <vtkLZMADataCompressor.h>
#include <vtkNew.h>
#include <vtkSmartPointer.h>
#include <vtkZLibDataCompressor.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <string_view>

using namespace orv;
using namespace orv::imp::cae;
using orvtest::ScratchFolder;
using testing::HasSubstr;

namespace {

const std::string VALUES = "some values that are bytes"; // 26.
const std::string FRONT = "in front of it";              // 14.

/// A number in the front of an array.
std::string number(std::uint64_t value, std::size_t size = 4, bool isSwapped = false) {
    std::string bytes(size, '\0');
    std::memcpy(bytes.data(), &value, size);
    if (isSwapped) {
        std::reverse(bytes.begin(), bytes.end());
    }
    return bytes;
}

std::string base64(const std::string& bytes) {
    constexpr std::string_view ALPHABET = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        std::uint32_t all = 0;
        for (std::size_t j = 0; j < 3; ++j) {
            all = all << 8 | (i + j < bytes.size() ? static_cast<unsigned char>(bytes[i + j]) : 0);
        }
        for (std::size_t j = 0; j < 4; ++j) {
            text += i + j <= bytes.size() ? ALPHABET[all >> (18 - 6 * j) & 63] : '=';
        }
    }
    return text;
}

std::string packed(vtkDataCompressor* compressor, const std::string& bytes) {
    std::string space(compressor->GetMaximumCompressionSpace(bytes.size()), '\0');
    space.resize(compressor->Compress(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size(),
                                      reinterpret_cast<unsigned char*>(space.data()), space.size()));
    return space;
}

class XmlBytesTest : public testing::Test {
protected:
    /// The bytes from an offset on of an array behind FRONT, or the error.
    std::string read(const std::string& array, std::size_t offset, std::size_t count) {
        const VtkMessages quiet;
        const std::string name = m_folder / "array";
        std::ofstream(name, std::ios::binary) << FRONT << array;
        CaeFile file;
        EXPECT_TRUE(file.open(name, nullptr));
        XmlBytes bytes(file, m_layout);
        ug::Error error;
        if (!bytes.open(std::int64_t(FRONT.size()), m_isBase64, &error)) {
            return error.message().toStdString();
        }
        m_size = bytes.size();
        std::string found(count, '?');
        double told = 0.0;
        const auto tell = [&](double share) { told = share; };
        if (!bytes.read(offset, count, reinterpret_cast<unsigned char*>(found.data()), tell, &error)) {
            return error.message().toStdString();
        }
        EXPECT_EQ(told, count == 0 ? 0.0 : 1.0);
        return found;
    }

    // VALUES in blocks of 10 bytes, in raw form.
    std::string packedValues(vtkDataCompressor* compressor) {
        m_layout.compressor = compressor;
        std::string sizes;
        std::string blocks;
        for (const char* block : {"some value", "s that are", " bytes"}) {
            const std::string bytes = packed(compressor, block);
            sizes += number(bytes.size(), m_layout.numberSize, m_layout.isSwapped);
            blocks += bytes;
        }
        std::string head;
        for (const std::uint64_t value : {3, 10, 6}) {
            head += number(value, m_layout.numberSize, m_layout.isSwapped);
        }
        return m_isBase64 ? base64(head + sizes) + base64(blocks) : head + sizes + blocks;
    }

    void expectAllParts(const std::string& array) {
        for (std::size_t offset = 0; offset <= VALUES.size(); ++offset) {
            for (std::size_t count = 0; count <= VALUES.size() - offset; ++count) {
                EXPECT_EQ(read(array, offset, count), VALUES.substr(offset, count));
            }
        }
        EXPECT_EQ(m_size, VALUES.size());
    }

    ScratchFolder m_folder;
    XmlLayout m_layout;
    bool m_isBase64 = false;
    std::uint64_t m_size = 0;
};

TEST_F(XmlBytesTest, AnyPartOfBytesIsRead) {
    expectAllParts(number(26) + VALUES + "more");
    m_isBase64 = true;
    expectAllParts(base64(number(26) + VALUES) + "</DataArray>");
}

TEST_F(XmlBytesTest, NumbersInFrontMayBeOfBothSizesAndOrders) {
    m_layout.numberSize = 8;
    EXPECT_EQ(read(number(26, 8) + VALUES, 0, 26), VALUES);
    m_layout.isSwapped = true;
    EXPECT_EQ(read(number(26, 8, true) + VALUES, 0, 26), VALUES);
    m_layout.numberSize = 4;
    EXPECT_EQ(read(number(26, 4, true) + VALUES, 0, 26), VALUES);
}

// Larger than what is read at once in either form.
TEST_F(XmlBytesTest, ManyBytesAreReadInPieces) {
    std::string many;
    for (int i = 0; i < 30000; ++i) {
        many += std::to_string(i);
    }
    ASSERT_GT(many.size(), std::size_t(1 << 17));
    EXPECT_EQ(read(number(many.size()) + many, 1, many.size() - 1), many.substr(1));
    m_isBase64 = true;
    EXPECT_EQ(read(base64(number(many.size()) + many), 1, many.size() - 1), many.substr(1));
}

TEST_F(XmlBytesTest, AnyPartOfPackedBlocksIsRead) {
    expectAllParts(packedValues(vtkSmartPointer<vtkZLibDataCompressor>::New()) + "more");
    expectAllParts(packedValues(vtkSmartPointer<vtkLZ4DataCompressor>::New()));
    m_isBase64 = true;
    m_layout.numberSize = 8;
    expectAllParts(packedValues(vtkSmartPointer<vtkLZMADataCompressor>::New()) + "</DataArray>");
    m_layout.isSwapped = true;
    expectAllParts(packedValues(vtkSmartPointer<vtkZLibDataCompressor>::New()));
}

// The last size is zero when all blocks are alike.
TEST_F(XmlBytesTest, BlocksMayBeAlike) {
    const vtkNew<vtkZLibDataCompressor> zlib;
    const std::string block = packed(zlib, "four");
    m_layout.compressor = zlib;
    const std::string sizes = number(block.size()) + number(block.size());
    EXPECT_EQ(read(number(2) + number(4) + number(0) + sizes + block + block, 2, 6), "urfour");
    EXPECT_EQ(m_size, 8u);
    EXPECT_EQ(read(number(0) + number(4) + number(0), 0, 0), "");
    EXPECT_EQ(m_size, 0u);
}

// A megabyte of zeros is packed as well as anything can be.
TEST_F(XmlBytesTest, TheBestCompressionIsBelieved) {
    const std::string zeros(1 << 20, '\0');
    const vtkSmartPointer<vtkDataCompressor> compressors[] = {vtkSmartPointer<vtkZLibDataCompressor>::New(),
                                                              vtkSmartPointer<vtkLZ4DataCompressor>::New(),
                                                              vtkSmartPointer<vtkLZMADataCompressor>::New()};
    for (const vtkSmartPointer<vtkDataCompressor>& compressor : compressors) {
        m_layout.compressor = compressor;
        compressor->SetCompressionLevel(9);
        const std::string block = packed(compressor, zeros);
        EXPECT_EQ(read(number(1) + number(zeros.size()) + number(0) + number(block.size()) + block, 0, zeros.size()),
                  zeros)
            << compressor->GetClassName();
    }
}

TEST_F(XmlBytesTest, SizesThatTheFileCannotHaveAreRefused) {
    EXPECT_EQ(read("", 0, 1), "byte 14: expected the size of the array, found none");
    EXPECT_EQ(read("abc", 0, 1), "byte 14: expected the size of the array, found none");
    EXPECT_EQ(read(number(27) + VALUES, 0, 1), "byte 14: expected 27 bytes, found the end of the file before");
    EXPECT_EQ(read(number(4294967295) + VALUES, 0, 1),
              "byte 14: expected 4294967295 bytes, found the end of the file before");
    m_isBase64 = true;
    EXPECT_EQ(read("AAA", 0, 1), "byte 14: expected the size of the array, found none");
    EXPECT_EQ(read("AAA<AAAA", 0, 1), "byte 14: expected the size of the array, found none");
    EXPECT_THAT(read(base64(number(27) + VALUES), 0, 1), HasSubstr("the end of the file before"));
    m_layout.numberSize = 8;
    EXPECT_THAT(read(base64(number(~std::uint64_t(0), 8) + VALUES), 0, 1),
                HasSubstr("expected 18446744073709551615 bytes, found the end of the file before"));
}

TEST_F(XmlBytesTest, TextThatIsNotInBase64IsRefused) {
    m_isBase64 = true;
    std::string text = base64(number(26) + VALUES);
    text[20] = '<';
    EXPECT_EQ(read(text, 0, 26), "byte 14: expected 26 bytes, found damaged ones");
}

TEST_F(XmlBytesTest, SizesOfBlocksThatCannotBeAreRefused) {
    const vtkNew<vtkZLibDataCompressor> zlib;
    m_layout.compressor = zlib;
    const std::string block = packed(zlib, "four");
    const auto array = [&](std::uint64_t count, std::uint64_t size, std::uint64_t last, std::uint64_t packedSize) {
        return number(count) + number(size) + number(last) + number(packedSize) + block;
    };
    ASSERT_EQ(read(array(1, 4, 0, block.size()), 0, 4), "four");
    EXPECT_EQ(read(number(1) + number(4), 0, 4), "byte 14: expected the sizes of packed blocks, found none");
    EXPECT_EQ(read(array(1, 0, 0, block.size()), 0, 4),
              "byte 14: expected blocks of some bytes, found 0 and at last 0");
    EXPECT_EQ(read(array(1, 4, 5, block.size()), 0, 4),
              "byte 14: expected blocks of some bytes, found 4 and at last 5");
    EXPECT_EQ(read(array(4294967295, 4, 0, block.size()), 0, 4),
              "byte 14: expected 4294967295 sizes of packed blocks, found the end of the file before");
    const std::string all = std::to_string(block.size());
    EXPECT_EQ(read(array(1, 4, 0, block.size() + 1), 0, 4),
              "byte 14: expected a block of 4 bytes, found " + std::to_string(block.size() + 1) +
                  " packed ones of the " + all + " up to the end of the file");
    // zlib packs 1032 bytes into one at most.
    const std::size_t most = 1032 * block.size();
    EXPECT_THAT(read(array(1, most + 1, 0, block.size()), 0, 4),
                HasSubstr("expected a block of " + std::to_string(most + 1) + " bytes, found " + all + " packed ones"));
    EXPECT_THAT(read(array(1, most, 0, block.size()), 0, 4), HasSubstr("found a damaged one"));
    EXPECT_THAT(read(array(1, 4, 0, 0), 0, 4), HasSubstr("found 0 packed ones"));
}

TEST_F(XmlBytesTest, BlocksOfOtherSizesThanToldAreRefused) {
    const vtkNew<vtkZLibDataCompressor> zlib;
    m_layout.compressor = zlib;
    std::string block = packed(zlib, "four");
    for (const std::uint64_t size : {3, 5}) {
        EXPECT_EQ(read(number(1) + number(size) + number(0) + number(block.size()) + block, 0, 3),
                  "byte 14: expected a block of " + std::to_string(size) + " bytes, found a damaged one");
    }
    block[4] ^= 1;
    EXPECT_THAT(read(number(1) + number(4) + number(0) + number(block.size()) + block, 0, 4),
                HasSubstr("found a damaged one"));
}

} // namespace
