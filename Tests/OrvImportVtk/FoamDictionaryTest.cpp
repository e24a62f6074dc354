#include "OrvImportVtk/FoamDictionary.h"
#include "Tests/Support/ScratchFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

using namespace orv::imp::cae;
using orv::ug::Error;

namespace {

class FoamDictionaryTest : public testing::Test {
protected:
    void write(const std::string& name, const std::string& contents) {
        std::ofstream(m_folder / name, std::ios::binary) << contents;
    }

    // Reads a file; the error, or empty.
    std::string read(const std::string& contents, const std::string& format = "ascii") {
        write("U", "FoamFile { format " + format + "; class volVectorField; object U; }\n" + contents);
        FoamFile file(m_folder.path() + "/");
        m_entries.clear();
        Error error;
        const bool isRead = file.open("U", &error) && file.readHeader(&error) &&
                            readFoamDictionary(&file, m_folder.path() + "/", &m_entries, &error);
        EXPECT_EQ(isRead, error.isEmpty());
        return error.message().toStdString();
    }

    // The kind of an entry, by its keys from outside.
    int kind(const std::vector<std::string>& keys) const {
        const FoamEntries* entries = &m_entries;
        const FoamEntry* entry = nullptr;
        for (const std::string& key : keys) {
            entry = findFoamEntry(*entries, key);
            if (!entry) {
                return -1;
            }
            entries = &entry->entries;
        }
        return entry->kind;
    }

    orvtest::ScratchFolder m_folder;
    FoamEntries m_entries;
};

TEST_F(FoamDictionaryTest, EntriesAreOfTheirKinds) {
    ASSERT_EQ(read("dimensions [0 1 -1 0 0 0 0];\n"
                   "internalField nonuniform List<vector> 2((1 2 3) (4 5 6));\n"
                   "boundaryField\n{\n"
                   "  lid { type fixedValue; value uniform (1 0 0); table ((0 (1 2)) (1 (2 3))); mode; }\n"
                   "  \".*\" { type noSlip; code #{ a; }; #}; list 5{0}; names 2(a b); set (x { y 1; } z { }); }\n"
                   "  empty { value nonuniform 0(); word uniform; }\n"
                   "}\n"),
              "");
    EXPECT_EQ(kind({"internalField"}), FoamEntry::OTHER);
    EXPECT_EQ(kind({"boundaryField"}), FoamEntry::DICTIONARY);
    EXPECT_EQ(kind({"boundaryField", "lid", "value"}), FoamEntry::UNIFORM);
    EXPECT_EQ(kind({"boundaryField", "lid", "type"}), FoamEntry::OTHER);
    EXPECT_EQ(kind({"boundaryField", "lid", "mode"}), FoamEntry::NOTHING);
    EXPECT_EQ(kind({"boundaryField", ".*"}), FoamEntry::DICTIONARY);
    EXPECT_EQ(kind({"boundaryField", ".*", "names"}), FoamEntry::OTHER);
    EXPECT_EQ(kind({"boundaryField", "empty", "value"}), FoamEntry::OTHER);
    EXPECT_EQ(kind({"boundaryField", "empty", "word"}), FoamEntry::OTHER);
    EXPECT_EQ(kind({"boundaryField", "x"}), -1);
}

TEST_F(FoamDictionaryTest, BinaryListsMayHoldAnything) {
    ASSERT_EQ(read("internalField nonuniform List<scalar> 2(}{;)(\"$#\n/*abcde); empty nonuniform 0; p 1;", "binary"),
              "");
    EXPECT_EQ(kind({"p"}), FoamEntry::OTHER);
}

TEST_F(FoamDictionaryTest, ListsOfDictionariesAreDictionaries) {
    ASSERT_EQ(read("2\n(\nlid { type wall; nFaces 3; }\nwall { type wall; }\n)\n"), "");
    ASSERT_EQ(m_entries.size(), 2u);
    EXPECT_EQ(findFoamEntry(m_entries[0].entries, "nFaces")->value.label, 3);
    ASSERT_EQ(read("(lid { type wall; })"), "");
    EXPECT_EQ(m_entries.size(), 1u);
    ASSERT_EQ(read("0()"), "");
    EXPECT_TRUE(m_entries.empty());
}

TEST_F(FoamDictionaryTest, RepeatedKeysAreReplacedAndDictionariesJoined) {
    ASSERT_EQ(read("a 1; a uniform 2; b { c 1; } b { d 1; c uniform 3; }"), "");
    EXPECT_EQ(m_entries.size(), 2u);
    EXPECT_EQ(kind({"a"}), FoamEntry::UNIFORM);
    EXPECT_EQ(kind({"b", "c"}), FoamEntry::UNIFORM);
    EXPECT_EQ(kind({"b", "d"}), FoamEntry::OTHER);
}

TEST_F(FoamDictionaryTest, NamesStandForWhatIsInFront) {
    ASSERT_EQ(read("a uniform 1; base { type x; value $a; } b { value $a; c { d $a; } $base; } e $base;"), "");
    EXPECT_EQ(kind({"base", "value"}), FoamEntry::UNIFORM);
    EXPECT_EQ(kind({"b", "c", "d"}), FoamEntry::UNIFORM);
    EXPECT_EQ(kind({"b", "type"}), FoamEntry::OTHER);
    EXPECT_EQ(kind({"e", "type"}), FoamEntry::OTHER);
}

TEST_F(FoamDictionaryTest, FilesBesideAreIncluded) {
    write("initial", "// without a header\n value uniform (1 2 3);");
    ASSERT_EQ(read("#include \"initial\"\n internalField $value; #includeIfPresent \"none\"\n a 1;"), "");
    EXPECT_EQ(kind({"value"}), FoamEntry::UNIFORM);
    EXPECT_EQ(kind({"internalField"}), FoamEntry::UNIFORM);
    EXPECT_EQ(read("a 1;\n#include \"none\"\n"), "none cannot be opened");
    EXPECT_EQ(read("#include \"/etc/passwd\"\n"), "U, line 2: cannot include \"/etc/passwd\"");
    EXPECT_EQ(read("#include \"$HOME/a\"\n"), "U, line 2: cannot include \"$HOME/a\"");
    write("initial", "#include \"initial\"\n");
    EXPECT_EQ(read("#include \"initial\"\n"), "initial, line 1: cannot include \"initial\"");
    write("initial", "a 1; }\n");
    EXPECT_EQ(read("#include \"initial\"\n"), "initial, line 1: expected a key or the end of a dictionary");
}

TEST_F(FoamDictionaryTest, WhatVtkIsNotUpToIsRefused) {
    const std::pair<const char*, const char*> table[] = {
        {"a; a 1;", "a has no value where it stands first"},
        {"a { } a 1;", "expected '{' as a is a dictionary"},
        {"a 1", "a has no end"},
        {"a { b 1; ", "expected a key or the end of a dictionary"},
        {"a 1; }", "expected a key or the end of a dictionary"},
        {"a { b 1 }", "b has no end"},
        {"a $a;", "$a is not known in front of it"},
        {"a { $a; }", "$a is no dictionary in front of it"},
        {"a 1; $a;", "$a is no dictionary in front of it"},
        {"#calc 1;", "#calc is not understood"},
        {"a #eval 1;", "#eval is not understood"},
        {"#inputMode merge", "#inputMode is not understood"},
        {"a 1000001{0};", "expected a key"},
        {"a {0};", "expected a key"},
        {"a 5{0 1};", "expected '}'"},
        {"a uniform (1 2 3 4 5 6 7 8 9 10);", "expected up to nine numbers"},
        {"a uniform (1 b);", "expected up to nine numbers"},
        {"a uniform $b;", "expected a value behind uniform"},
        {"a nonuniform vector;", "expected the type of a list behind nonuniform"},
        {"a nonuniform 0;", "expected '('"},
        {"a nonuniform List<scalar> 99(1 2);", "a list of 99 items has no room in the file"},
        {"a List<scalar> 99(1 2);", "a list of 99 items has no room in the file"},
        {"a [0 1 2;", "expected ']'"},
        {"a (1 2;", "expected items of a list, and ')'"},
        {"a ($b);", "expected items of a list, and ')'"},
        {"a (b { c; c 1; });", "c has no value where it stands first"},
        {"a (1 { c; c 1; });", "c has no value where it stands first"},
    };
    for (const auto& [contents, text] : table) {
        EXPECT_EQ(read(contents), std::string("U, line 2: ") + text) << contents;
    }
}

TEST_F(FoamDictionaryTest, DeepBracketsAreRefused) {
    const std::string round = std::string(100'000, '(');
    EXPECT_EQ(read("a " + round), "U, line 2: brackets are nested too deeply");
    std::string curly;
    for (int i = 0; i < 10'000; ++i) {
        curly += "a{";
    }
    EXPECT_EQ(read(curly), "U, line 2: brackets are nested too deeply");
    EXPECT_EQ(read("a ((((((((((1))))))))));"), "");
}

TEST(FoamPattern, ExpressionsThatVtkWouldPrintAreNone) {
    for (const char* good : {"lid", ".*", "(left|right)", "wall[0-9]+", "outlet.?", "a[^bc]d", "procBoundary0to1"}) {
        EXPECT_TRUE(isFoamPattern(good)) << good;
    }
    for (const char* bad : {"", "*", "a**", "(a", "a)", "()", "(a)*", "[a", "[]", "[z-a]", "[^]", "a\\", "|*", "((a)",
                            "(a|)*", "(((((((((a)))))))))"}) {
        EXPECT_FALSE(isFoamPattern(bad)) << bad;
    }
}

TEST(FoamPattern, PatchesAreFoundByNameAndThenByTheLastExpression) {
    const FoamEntries entries = {{"lid"}, {".*"}, {"w.*"}, {"(lid|in)"}, {"wall"}};
    const auto found = [&](const char* patch) {
        const FoamEntry* entry = findFoamPatch(entries, patch);
        return entry ? entry->key : std::string("none");
    };
    EXPECT_EQ(found("lid"), "lid");
    EXPECT_EQ(found("wall"), "wall");
    EXPECT_EQ(found("window"), "w.*");
    EXPECT_EQ(found("in"), "(lid|in)");
    EXPECT_EQ(found("outlet"), ".*");
    EXPECT_EQ(findFoamPatch({{"(in|out)"}}, "inlet"), nullptr); // The whole name has to fit.
}

} // namespace
