#include "OrvImportCae/CaeReaders.h"

#include "OrvImportCae/CaeReader.h"
#include "Tests/OrvImportCae/FrdSamples.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

using namespace orv;
using namespace orv::imp::cae;
using orvtest::SUPPORTED_FORMATS;

namespace {

TEST(CaeReaders, TellsTheExtensionOfAName) {
    EXPECT_EQ(fileExtension("a.frd"), "frd");
    EXPECT_EQ(fileExtension("a.b.FRD"), "frd");
    EXPECT_EQ(fileExtension("/x/y.z/a.Frd"), "frd");
    EXPECT_EQ(fileExtension("/x.frd/a"), "");
    EXPECT_EQ(fileExtension("a"), "");
    EXPECT_EQ(fileExtension("a."), "");
    EXPECT_EQ(fileExtension(""), "");
    EXPECT_EQ(fileExtension(".frd"), "frd");
}

TEST(CaeReaders, FindsReadersByExtension) {
    for (const char* name : {"a.frd", "a.FRD", "/x.y/b.Frd"}) {
        ug::Error error;
        const CaeReaderEntry* entry = findCaeReader(name, &error);
        ASSERT_NE(entry, nullptr) << name;
        EXPECT_STREQ(entry->name, "CalculiX");
        EXPECT_TRUE(error.isEmpty());
        EXPECT_NE(createCaeReader(*entry, name, &error), nullptr);
    }
}

// Only programs that write such files have a number of files and one of the file behind the extension.
TEST(CaeReaders, FindsTheReaderOfSpreadFiles) {
    for (const char* name : {"a.e.4.0", "/x.y/a.b.EX2.128.007", "a.g.1.0"}) {
        const CaeReaderEntry* entry = findCaeReader(name, nullptr);
        ASSERT_NE(entry, nullptr) << name;
        EXPECT_STREQ(entry->name, "Exodus II");
    }
    for (const char* name : {"a.e.4", "a.e.4.x", "a.e.x.4", "a.e.4.4.4", "a.vtu.4.0", "4.0", "a.e..0", "/a.e.4/0"}) {
        EXPECT_EQ(findCaeReader(name, nullptr), nullptr) << name;
    }
    ug::Error error;
    findCaeReader("a.vtu.4.0", &error);
    EXPECT_EQ(error.message(),
              Str("cannot open \"a.vtu.4.0\": no reader for the extension \"0\"; " + SUPPORTED_FORMATS));
}

TEST(CaeReaders, TellWhatThereIsWhenThereIsNone) {
    const auto why = [](const char* name) {
        ug::Error error;
        EXPECT_EQ(findCaeReader(name, &error), nullptr);
        return error.message().toStdString();
    };
    EXPECT_EQ(why("dir.d/result"),
              "cannot open \"dir.d/result\": its name has no extension that tells its format; " + SUPPORTED_FORMATS);
    EXPECT_EQ(why("a.odb"), "cannot open \"a.odb\": no reader for the extension \"odb\"; " + SUPPORTED_FORMATS);
    EXPECT_EQ(why("a.FDR"),
              "cannot open \"a.FDR\": no reader for the extension \"fdr\", did you mean \"frd\"? " + SUPPORTED_FORMATS);
    for (const char* slip : {"a.fr", "a.rd", "a.frdd", "a.xfrd", "a.frx", "a.fxrd", "a.rfd"}) {
        EXPECT_NE(why(slip).find("did you mean \"frd\"?"), std::string::npos) << slip;
    }
    for (const char* other : {"a.f", "a.fgh", "a.xyz", "a.drf", "a.", "a.frdfrd"}) {
        EXPECT_EQ(why(other).find("did you mean"), std::string::npos) << other;
    }
    EXPECT_EQ(why(("a." + std::string(1000000, 'f')).c_str()).find("did you mean"), std::string::npos);
    EXPECT_EQ(findCaeReader("a.odb", nullptr), nullptr);
}

TEST(CaeReaders, KnowsEachExtensionOnceAndInSmallLetters) {
    ASSERT_FALSE(caeReaders().empty());
    for (const CaeReaderEntry& entry : caeReaders()) {
        std::istringstream words(entry.extensions);
        for (std::string extension; words >> extension;) {
            EXPECT_EQ(fileExtension("a." + extension), extension);
            EXPECT_EQ(findCaeReader(Str("a." + extension), nullptr), &entry);
        }
        // The native formats are not the importer's.
        EXPECT_EQ(std::string(entry.extensions).find("ztf"), std::string::npos);
    }
}

} // namespace
