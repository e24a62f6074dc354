#include "OrvImportVtk/LegacyInput.h"

#include "Tests/Support/ScratchFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>
#include <fstream>

using namespace orv;
using namespace orv::imp::cae;
using testing::ElementsAre;

namespace {

class LegacyInputs : public testing::Test {
protected:
    LegacyInput open(const std::string& bytes, bool isBinary) {
        const std::string path = m_folder.path() + "/a.vtk";
        std::ofstream(path, std::ios::binary) << bytes;
        m_file = std::make_unique<CaeFile>();
        EXPECT_TRUE(m_file->open(path, nullptr));
        return LegacyInput(m_file.get(), isBinary, &m_error);
    }

    /// What values of a type are, which are all that there is in a file.
    std::vector<double> read(const std::string& type, const std::string& bytes, std::int64_t count, bool isBinary) {
        LegacyInput input = open(isBinary ? "\n" + bytes : bytes, isBinary);
        LegacyValues values;
        std::vector<double> numbers(std::size_t(count), 0.0);
        EXPECT_TRUE(input.passValues("numbers", type, count, &values)) << type;
        EXPECT_TRUE(input.read(values, numbers.data())) << type;
        return numbers;
    }

    orvtest::ScratchFolder m_folder;
    std::unique_ptr<CaeFile> m_file;
    ug::Error m_error;
};

TEST_F(LegacyInputs, NumbersOfAllTypesBeginWithTheirLargestByte) {
    const struct {
        const char* type;
        std::vector<int> bytes;
        double number;
    } cases[] = {
        {"char", {0xfe}, -2.0},
        {"signed_char", {0xfe}, -2.0},
        {"unsigned_char", {0xfe}, 254.0},
        {"short", {0xff, 0xfe}, -2.0},
        {"unsigned_short", {0xff, 0xfe}, 65534.0},
        {"int", {0xff, 0xff, 0xff, 0xfe}, -2.0},
        {"vtkidtype", {0, 0, 1, 2}, 258.0},
        {"unsigned_int", {0xff, 0xff, 0xff, 0xfe}, 4294967294.0},
        {"long", {0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xfe}, -2.0},
        {"long_long", {0, 0, 0, 0, 0, 0, 1, 2}, 258.0},
        {"vtktypeint64", {0, 0, 0, 1, 0, 0, 0, 0}, 4294967296.0},
        {"unsigned_long", {0x80, 0, 0, 0, 0, 0, 0, 0}, 9223372036854775808.0},
        {"vtktypeuint64", {0, 0, 0, 0, 0, 0, 1, 2}, 258.0},
        {"float", {0x3f, 0xc0, 0, 0}, 1.5},
        {"double", {0xbf, 0xf8, 0, 0, 0, 0, 0, 0}, -1.5},
    };
    for (const auto& [type, bytes, number] : cases) {
        EXPECT_THAT(read(type, std::string(bytes.begin(), bytes.end()), 1, true), ElementsAre(number)) << type;
    }
    EXPECT_THAT(read("bit", "\xa5\x80", 9, true), ElementsAre(1, 0, 1, 0, 0, 1, 0, 1, 1));
    EXPECT_THAT(read("float", "1.5 -2\n3e2", 3, false), ElementsAre(1.5, -2, 300));
}

// The buffer ends within a word at each of these sizes once.
TEST_F(LegacyInputs, WordsGoOnBehindTheBuffer) {
    for (std::size_t blanks = 65530; blanks < 65540; ++blanks) {
        LegacyInput input = open("1" + std::string(blanks, ' ') + "12345 678", false);
        LegacyValues values;
        std::vector<std::int32_t> numbers(3);
        ASSERT_TRUE(input.passValues("numbers", "int", 3, &values)) << blanks;
        ASSERT_TRUE(input.read(values, numbers.data())) << blanks;
        EXPECT_THAT(numbers, ElementsAre(1, 12345, 678)) << blanks;
    }
}

TEST_F(LegacyInputs, LongBlocksAreReadInPieces) {
    std::string bytes(3 * 65536 + 1, '\1');
    bytes.back() = '\2';
    const std::vector<double> numbers = read("char", bytes, std::int64_t(bytes.size()), true);
    EXPECT_EQ(numbers[65536], 1.0);
    EXPECT_EQ(numbers.back(), 2.0);
}

TEST_F(LegacyInputs, NumbersThatDoNotFitAreRefused) {
    const struct {
        std::string bytes;
        bool isBinary;
    } cases[] = {{std::string("\n\0\0\0\1\0\0\0\0", 9), true}, {"4294967296", false}, {"-4294967296", false}};
    for (const auto& [bytes, isBinary] : cases) {
        LegacyInput input = open(bytes, isBinary);
        LegacyValues values;
        std::int32_t number = 0;
        ASSERT_TRUE(input.passValues("cells", "long", 1, &values));
        EXPECT_FALSE(input.read(values, &number));
        EXPECT_THAT(m_error.message().toStdString(),
                    testing::EndsWith("expected numbers of cells, found one that is out of bounds"));
    }
}

TEST_F(LegacyInputs, FloatsStayFloats) {
    LegacyInput input = open(std::string("\n\x3f\xc0\0\0", 5), true);
    LegacyValues values;
    float number = 0.0f;
    ASSERT_TRUE(input.passValues("numbers", "float", 1, &values));
    ASSERT_TRUE(input.read(values, &number));
    EXPECT_EQ(number, 1.5f);
}

// The first two bits of a binary one tell the size of its length: 1 byte, 2, 4 or 8.
TEST_F(LegacyInputs, TextsArePassedOver) {
    LegacyValues values;
    const std::string longText(300, 'x');
    LegacyInput binary = open("\n\xc2"
                              "ab" +
                                  std::string("\x81\x2c", 2) + longText + "END",
                              true);
    ASSERT_TRUE(binary.passValues("texts", "string", 2, &values));
    EXPECT_EQ(binary.name(), "END");
    LegacyInput cut = open("\n\xc2"
                           "a",
                           true);
    EXPECT_FALSE(cut.passValues("texts", "string", 1, &values));
    EXPECT_EQ(m_error.message(), Str("line 1: expected 1 values of texts, found the end of the file"));
    LegacyInput ascii = open("\na b\n\nEND", false);
    ASSERT_TRUE(ascii.passValues("texts", "utf8_string", 2, &values));
    EXPECT_EQ(ascii.name(), "END");
}

TEST_F(LegacyInputs, LinesLoseTheirEnds) {
    LegacyInput input = open("one\n  two words \r\nthree", false);
    EXPECT_EQ(input.word(), "one");
    EXPECT_EQ(input.line(), "");
    EXPECT_EQ(input.line(), "two words");
    EXPECT_EQ(input.line(), "three");
    EXPECT_EQ(input.line(), "");
}

} // namespace
