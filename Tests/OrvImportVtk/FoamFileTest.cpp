#include "OrvImportVtk/FoamFile.h"
#include "Tests/Support/ScratchFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <fstream>

using namespace orv::imp::cae;
using orv::ug::Error;
using testing::ElementsAre;

namespace {

const std::string HEADER = "FoamFile { version 2.0; format ascii; class labelList; object owner; }\n";
const std::string BINARY_HEADER =
    "FoamFile { version 2.0; format binary; class labelList; arch \"LSB;label=32;scalar=64\"; object owner; }\n";

std::string binary(const std::vector<std::int32_t>& labels) {
    std::string bytes(4 * labels.size(), '\0');
    std::memcpy(bytes.data(), labels.data(), bytes.size());
    return bytes;
}

class FoamFileTest : public testing::Test {
protected:
    // A file with these contents, behind its header if it has one.
    FoamFile open(const std::string& contents) {
        std::ofstream(m_folder / "words", std::ios::binary) << contents;
        FoamFile file(m_folder.path() + "/");
        EXPECT_TRUE(file.open("words", &m_error)) << m_error.message();
        EXPECT_TRUE(!file.hasHeader() || file.readHeader(&m_error)) << m_error.message();
        return file;
    }

    // All words as kind and text, and the error.
    std::vector<std::pair<int, std::string>> words(const std::string& contents) {
        FoamFile file = open(contents);
        std::vector<std::pair<int, std::string>> all;
        for (FoamToken token; file.next(&token, &m_error) && token.kind != FoamToken::END;) {
            all.emplace_back(token.kind, token.text);
        }
        return all;
    }

    std::string errorText() const {
        return m_error.message().toStdString();
    }

    // The count and the largest of a list of labels, or the error.
    std::string labels(const std::string& contents) {
        m_error.clear();
        FoamFile file = open(contents);
        std::uint64_t count = 0;
        std::int64_t largest = 0;
        return file.readLabels(&count, &largest, &m_error) ? std::to_string(count) + " " + std::to_string(largest)
                                                           : errorText();
    }

    std::string faces(const std::string& contents) {
        m_error.clear();
        FoamFile file = open(contents);
        std::uint64_t count = 0;
        return file.skipFaces(&count, &m_error) ? std::to_string(count) : errorText();
    }

    // What stands behind a list, or the error.
    std::string behind(const char* type, const std::string& contents) {
        m_error.clear();
        FoamFile file = open(contents);
        FoamToken token;
        return file.skipList(*findFoamListType(type), &m_error) && file.next(&token, &m_error) ? token.text
                                                                                               : errorText();
    }

    orvtest::ScratchFolder m_folder;
    Error m_error;
};

TEST_F(FoamFileTest, WordsAreOfTheirKinds) {
    EXPECT_THAT(words("U (1 -2) // not this\n 1.5e-3/* nor\n this */\"a \\\"b\" $x #include div(phi,U);a{}"),
                ElementsAre(testing::Pair(FoamToken::WORD, "U"), testing::Pair(FoamToken::PUNCTUATION, "("),
                            testing::Pair(FoamToken::LABEL, "1"), testing::Pair(FoamToken::LABEL, "-2"),
                            testing::Pair(FoamToken::PUNCTUATION, ")"), testing::Pair(FoamToken::SCALAR, "1.5e-3"),
                            testing::Pair(FoamToken::STRING, "a \"b"), testing::Pair(FoamToken::IDENTIFIER, "x"),
                            testing::Pair(FoamToken::DIRECTIVE, "include"),
                            testing::Pair(FoamToken::WORD, "div(phi,U)"), testing::Pair(FoamToken::PUNCTUATION, ";"),
                            testing::Pair(FoamToken::WORD, "a"), testing::Pair(FoamToken::PUNCTUATION, "{"),
                            testing::Pair(FoamToken::PUNCTUATION, "}")));
    EXPECT_TRUE(m_error.isEmpty());
}

TEST_F(FoamFileTest, WordsWithoutEndAreRefused) {
    words("\"no end\n");
    EXPECT_EQ(errorText(), "words, line 1: a text in quotes has no end");
    m_error.clear();
    words("a\n$;");
    EXPECT_EQ(errorText(), "words, line 2: expected a name behind $");
    m_error.clear();
    EXPECT_EQ(words(std::string(1023, 'a')).size(), 1u);
    EXPECT_TRUE(m_error.isEmpty());
    words(std::string(1024, 'a'));
    EXPECT_EQ(errorText(), "words, line 1: a word has more than 1023 characters");
    m_error.clear();
    EXPECT_EQ(words("a /* no end").size(), 1u);
    EXPECT_TRUE(m_error.isEmpty());
}

TEST_F(FoamFileTest, HeadersTellWhatIsInAFile) {
    const FoamFile file = open("/* banner */ FoamFile { version 2.0; format binary; class volScalarField; location "
                               "\"0\"; object p; }");
    EXPECT_EQ(file.className(), "volScalarField");
    EXPECT_EQ(file.objectName(), "p");
    EXPECT_TRUE(file.isBinary());
    EXPECT_FALSE(open(HEADER).isBinary());
}

TEST_F(FoamFileTest, HeadersThatAreNotWholeAreRefused) {
    const std::pair<std::string, std::string> table[] = {
        {"Foamfile { }", "expected the dictionary FoamFile that begins OpenFOAM's files"},
        {"", "expected the dictionary FoamFile that begins OpenFOAM's files"},
        {"FoamFile { class a; object b; }", "expected class, object and format (ascii or binary) in the dictionary "
                                            "FoamFile"},
        {"FoamFile { class a; object b; format text; }",
         "expected class, object and format (ascii or binary) in the dictionary FoamFile"},
        {"FoamFile { class a; format ascii; }",
         "expected class, object and format (ascii or binary) in the dictionary FoamFile"},
        {"FoamFile { class a; object b; format ascii;",
         "expected class, object and format (ascii or binary) in the dictionary FoamFile"},
        {"FoamFile { class; object b; format ascii; }", "expected one value of class in the dictionary FoamFile"},
        {"FoamFile { class (a); object b; format ascii; }", "expected one value of class in the dictionary FoamFile"},
        {"FoamFile { class a b; object b; format ascii; }", "expected ';'"},
    };
    for (const auto& [contents, text] : table) {
        std::ofstream(m_folder / "words") << contents;
        FoamFile file(m_folder.path() + "/");
        Error error;
        ASSERT_TRUE(file.open("words", &error));
        EXPECT_FALSE(file.readHeader(&error)) << contents;
        EXPECT_EQ(error.message(), orv::Str("words, line 1: " + text)) << contents;
    }
}

TEST_F(FoamFileTest, LabelsAreCounted) {
    EXPECT_EQ(labels(HEADER + "4(0 2 1 // one\n 1)"), "4 2");
    EXPECT_EQ(labels(HEADER + "6{3}"), "6 3");
    EXPECT_EQ(labels(HEADER + "0()"), "0 -1");
    EXPECT_EQ(labels(HEADER + "2(-1 -1)"), "2 -1"); // As very old meshes have them.
    EXPECT_EQ(labels(BINARY_HEADER + "3(" + binary({7, 0, 40}) + ")"), "3 40");
    EXPECT_EQ(labels(BINARY_HEADER + "0"), "0 -1");
}

TEST_F(FoamFileTest, LabelsOfEightBytesAreRead) {
    std::string header = BINARY_HEADER;
    header.replace(header.find("label=32"), 8, "label=64");
    EXPECT_EQ(labels(header + "2(" + binary({1, 0, 5, 1}) + ")"), "2 4294967301"); // 2^32 + 5
}

TEST_F(FoamFileTest, LabelsThatAreNotThereAreRefused) {
    EXPECT_EQ(labels(HEADER + "4(0 2 1)      "), "words, line 2: expected a whole number");
    EXPECT_EQ(labels(HEADER + "2(0 2 1)"), "words, line 2: expected ')'");
    EXPECT_EQ(labels(HEADER + "2(0 x)"), "words, line 2: expected a whole number");
    EXPECT_EQ(labels(HEADER + "(0 1)"), "words, line 2: expected a whole number");
    EXPECT_EQ(labels(HEADER + "-2(0 2)"), "words, line 2: a list of -2 items has no room in the file");
    EXPECT_EQ(labels(HEADER + "1000(0 2)"), "words, line 2: a list of 1000 items has no room in the file");
    EXPECT_EQ(labels(HEADER + "1(2147483648)"), "words, line 2: a number is too large");
    EXPECT_EQ(labels(HEADER + "1000001{0}"), "words, line 2: a list repeats its value 1000001 times");
    EXPECT_EQ(labels(BINARY_HEADER + "3(" + binary({7, 0}) + ")"),
              "words, line 2: a list of 3 items has no room in the file");
    EXPECT_EQ(labels(BINARY_HEADER + "1(" + binary({7, 0}) + ")"), "words, line 2: expected ')'");
}

TEST_F(FoamFileTest, FacesAreCounted) {
    EXPECT_EQ(faces(HEADER + "2(3(0 1 2)\n4(0 1 2 3))"), "2");
    EXPECT_EQ(faces(BINARY_HEADER + "2(3(" + binary({0, 1, 2}) + ")4(" + binary({0, 1, 2, 3}) + "))"), "2");
    std::string compact = BINARY_HEADER;
    compact.replace(compact.find("labelList"), 9, "faceCompactList");
    EXPECT_EQ(faces(compact + "3(" + binary({0, 3, 7}) + ")\n7(" + binary({0, 1, 2, 0, 1, 2, 3}) + ")"), "2");
    EXPECT_EQ(faces(compact + "3(" + binary({0, 9, 7}) + ")\n7(" + binary({0, 1, 2, 0, 1, 2, 3}) + ")"),
              "words, line 2: the faces do not begin one behind the other");
    EXPECT_EQ(faces(compact + "3(" + binary({1, 3, 7}) + ")\n7(" + binary({0, 1, 2, 0, 1, 2, 3}) + ")"),
              "words, line 2: the faces do not begin one behind the other");
    EXPECT_EQ(faces(compact + "3(" + binary({0, 3, 8}) + ")\n7(" + binary({0, 1, 2, 0, 1, 2, 3}) + ")"),
              "words, line 3: the faces do not have the points that they count");
}

TEST_F(FoamFileTest, FacesThatAreNotThereAreRefused) {
    EXPECT_EQ(faces(HEADER + "2(3(0 1 2))"), "words, line 2: expected a whole number");
    EXPECT_EQ(faces(HEADER + "1(300(0 1 2))"), "words, line 2: a list of 300 items has no room in the file");
    EXPECT_EQ(faces(HEADER + "1((0 1 2))"), "words, line 2: expected a whole number");
    EXPECT_EQ(faces(HEADER + "1(3(0 1 22"), "words, line 2: expected ')'");
    EXPECT_EQ(faces(HEADER + "1(3(0 1 2)"), "words, line 2: expected ')'");
}

TEST_F(FoamFileTest, ListsArePassedOver) {
    EXPECT_EQ(behind("List<scalar>", HEADER + "3(1 2e5\n-3.5);"), ";");
    EXPECT_EQ(behind("List<scalar>", HEADER + "(1 2);"), ";");
    EXPECT_EQ(behind("List<scalar>", HEADER + "0();"), ";");
    EXPECT_EQ(behind("List<scalar>", HEADER + "3{1.5};"), ";");
    EXPECT_EQ(behind("List<vector>", HEADER + "2((1 2 3) (4 5 6));"), ";");
    EXPECT_EQ(behind("List<vector>", HEADER + "2{(1 2 3)};"), ";");
    EXPECT_EQ(behind("List<sphericalTensor>", HEADER + "2((1)(2));"), ";");
    EXPECT_EQ(behind("List<label>", BINARY_HEADER + "2(" + binary({1, 2}) + ");"), ";");
    EXPECT_EQ(behind("List<vector>", BINARY_HEADER + "1(" + std::string(24, ')') + ");"), ";");
    EXPECT_EQ(behind("List<bool>", BINARY_HEADER + "3(abc);"), ";");
    EXPECT_EQ(behind("List<scalar>", BINARY_HEADER + "0;"), ";");
}

TEST_F(FoamFileTest, ListsThatAreNotThereAreRefused) {
    EXPECT_EQ(behind("List<scalar>", HEADER + "300(1 2);"),
              "words, line 2: a list of 300 items has no room in the file");
    EXPECT_EQ(behind("List<scalar>", HEADER + "-3(1 2);"), "words, line 2: a list of -3 items has no room in the file");
    EXPECT_EQ(behind("List<scalar>", HEADER + "2(1 nan);"), "words, line 2: expected numbers");
    EXPECT_EQ(behind("List<scalar>", HEADER + "2(1 (2));"), "words, line 2: expected numbers");
    EXPECT_EQ(behind("List<scalar>", HEADER + "2(1 22"), "words, line 2: expected numbers");
    EXPECT_EQ(behind("List<vector>", HEADER + "1(((1 2 3)));"), "words, line 2: expected numbers");
    EXPECT_EQ(behind("List<vector>", HEADER + "2[1]"), "words, line 2: expected '('");
    EXPECT_EQ(behind("List<vector>", HEADER + "x"), "words, line 2: expected the count of a list");
    EXPECT_EQ(behind("List<vector>", HEADER + "1000001{(1 2 3)}"),
              "words, line 2: a list repeats its value 1000001 times");
    EXPECT_EQ(behind("List<vector>", BINARY_HEADER + "2(" + std::string(24, 'x') + ");"),
              "words, line 2: a list of 2 items has no room in the file");
}

TEST_F(FoamFileTest, BeginningsTellWhetherListsHaveRoom) {
    const auto check = [&](const std::string& contents) {
        std::ofstream(m_folder / "long", std::ios::binary) << contents;
        FoamFile file(m_folder.path() + "/");
        m_error.clear();
        return file.openBeginning("long", &m_error) && file.readHeader(&m_error) &&
                       file.checkList(*findFoamListType("List<vector>"), &m_error)
                   ? std::string()
                   : errorText();
    };
    const std::string items(100'000, 'x'); // Nobody looks at them.
    EXPECT_EQ(check(HEADER + "16000(" + items), "");
    EXPECT_EQ(check(HEADER + "17000(" + items), "long, line 2: a list of 17000 items has no room in the file");
    EXPECT_EQ(check(BINARY_HEADER + "4000(" + items), "");
    EXPECT_EQ(check(BINARY_HEADER + "5000(" + items), "long, line 2: a list of 5000 items has no room in the file");
    EXPECT_EQ(check(HEADER + "1000001{(1 2 3)}"), "long, line 2: a list repeats its value 1000001 times");
}

TEST_F(FoamFileTest, CodeIsPassedOver) {
    FoamFile file = open("#{ if (a) { b; } # c \n // #} \n #};");
    FoamToken token;
    ASSERT_TRUE(file.next(&token, &m_error));
    EXPECT_EQ(token.text, "{");
    EXPECT_TRUE(file.skipCode(&m_error));
    ASSERT_TRUE(file.next(&token, &m_error));
    EXPECT_TRUE(token.is(';'));
    FoamFile endless = open("#{ a");
    ASSERT_TRUE(endless.next(&token, &m_error));
    EXPECT_FALSE(endless.skipCode(&m_error));
    EXPECT_EQ(errorText(), "words, line 1: code has no end");
}

TEST_F(FoamFileTest, PackedFilesAreFoundByTheirNameWithoutEnding) {
    // printf 'word' | gzip -n
    const unsigned char packed[] = {0x1f, 0x8b, 8,    0,    0,    0,    0,    0,    0, 3, 0x2b, 0xcf,
                                    0x2f, 0x4a, 0x01, 0x00, 0x11, 0x75, 0xf1, 0xc3, 4, 0, 0,    0};
    std::string bytes(reinterpret_cast<const char*>(packed), sizeof(packed));
    const auto write = [&] { std::ofstream(m_folder / "a.gz", std::ios::binary) << bytes; };
    const auto read = [&](auto opening) {
        FoamFile file(m_folder.path() + "/");
        FoamToken token;
        m_error.clear();
        return (file.*opening)("a", &m_error) && file.next(&token, &m_error) ? token.text : errorText();
    };
    write();
    EXPECT_EQ(read(&FoamFile::open), "word");
    bytes.resize(bytes.size() - 6);
    write();
    EXPECT_EQ(read(&FoamFile::open), "a.gz cannot be unpacked: its gzip data are damaged or end too early");
    EXPECT_EQ(read(&FoamFile::openBeginning), "word"); // A header needs no more.
}

TEST_F(FoamFileTest, MissingFilesAreTold) {
    FoamFile file("/no/such/folder/");
    EXPECT_FALSE(file.open("points", &m_error));
    EXPECT_EQ(errorText(), "points cannot be opened");
    m_error.clear();
    FoamFile noFile("/");
    EXPECT_FALSE(noFile.open("tmp", &m_error)); // A folder.
    EXPECT_EQ(errorText(), "tmp cannot be opened");
}

} // namespace
