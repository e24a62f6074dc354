// Modules are real shared objects, built beside this program: see Modules/.

#include "OrvImportCae/CaeModule.h"

#include "OrvImportCae/CaeReader.h"
#include "OrvImportCae/CaeReaders.h"
#include "Tests/Support/ScratchFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

using namespace orv;
using namespace orv::imp::cae;
using orvtest::ScratchFolder;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

constexpr CaeModule GOOD = {"Good", "ORV_WITH_GOOD", "libgood1", "libgood-dev"};
constexpr CaeModule OLD = {"Old", "ORV_WITH_OLD", "libold1", "libold-dev"};
constexpr CaeModule STRAY = {"Stray", "ORV_WITH_STRAY", "libstray1", "libstray-dev"};
constexpr CaeModule MISSING = {"Missing", "ORV_WITH_MISSING", "libmissing1", "libmissing-dev"};

const std::string ownFolder = std::filesystem::canonical("/proc/self/exe").parent_path().string();

/// The variable while it lives; unset without a value.
class ModulePath {
public:
    explicit ModulePath(const std::string& value) {
        setenv("ORV_MODULE_PATH", value.c_str(), 1);
    }
    ~ModulePath() {
        unsetenv("ORV_MODULE_PATH");
    }
};

std::string whyNot(const CaeModule& module, const char* reader = "Refusing") {
    ug::Error error;
    EXPECT_EQ(createReaderOfModule(module, reader, &error), nullptr);
    return error.message().toStdString();
}

TEST(CaeModule, MakesReaders) {
    ug::Error error;
    const std::unique_ptr<CaeReader> reader = createReaderOfModule(GOOD, "Refusing", &error);
    ASSERT_NE(reader, nullptr) << error.message();
    CaeContents contents;
    EXPECT_FALSE(reader->open("a.good", &contents, &error));
    EXPECT_EQ(error.message(), Str("refused: a.good"));
    EXPECT_NE(createReaderOfModule(GOOD, "Refusing", nullptr), nullptr); // Open already.
}

TEST(CaeModule, ReadersOfModulesStandInTheTableLikeOthers) {
    const CaeReaderEntry entry = {"Refusing", "Refused files", "good", "nothing", nullptr, &GOOD};
    EXPECT_NE(createCaeReader(entry, "a.good", nullptr), nullptr);
    const CaeReaderEntry missing = {"Refusing", "Refused files", "good", "nothing", nullptr, &MISSING};
    ug::Error error;
    EXPECT_EQ(createCaeReader(missing, "a.good", &error), nullptr);
    EXPECT_THAT(error.message().toStdString(),
                StartsWith("cannot open \"a.good\": its reader is in libOrvImportMissing.so"));
}

TEST(CaeModule, LooksInTheLibrarysFolderAndBeforeInThoseOfTheVariable) {
    EXPECT_THAT(caeModuleFolders(), ElementsAre(ownFolder));
    const ModulePath path("/first::/second:");
    EXPECT_THAT(caeModuleFolders(), ElementsAre("/first", "/second", ownFolder));
}

TEST(CaeModule, TakesTheFirstFileOfItsName) {
    EXPECT_EQ(findCaeModule(GOOD), ownFolder + "/libOrvImportGood.so");
    EXPECT_EQ(findCaeModule(MISSING), "");
    const ScratchFolder first;
    const ScratchFolder second;
    std::filesystem::create_directory(first / "libOrvImportGood.so"); // No file.
    std::ofstream(second / "libOrvImportGood.so") << "no library";
    const ModulePath path(first.path() + ":" + second.path());
    EXPECT_EQ(findCaeModule(GOOD), second / "libOrvImportGood.so");
}

TEST(CaeModule, AMissingOneIsToldWithWhatToBuild) {
    EXPECT_EQ(whyNot(MISSING), "its reader is in libOrvImportMissing.so, which is not in " + ownFolder +
                                   "; build OrvApp with -DORV_WITH_MISSING=ON, which takes the package libmissing-dev");
    const ModulePath path("/first:/second");
    EXPECT_THAT(whyNot(MISSING), HasSubstr("which is not in /first and /second and " + ownFolder + ";"));
}

TEST(CaeModule, OneThatCannotBeLoadedIsToldWithWhatToInstall) {
    const ScratchFolder folder;
    std::ofstream(folder / "libOrvImportGood.so") << "no library";
    const ModulePath path(folder.path());
    EXPECT_THAT(whyNot(GOOD), StartsWith("its reader is in " + (folder / "libOrvImportGood.so") +
                                         ", which cannot be loaded; install the package libgood1 ("));
}

TEST(CaeModule, OneOfAnotherVersionIsRefused) {
    EXPECT_EQ(whyNot(OLD), "its reader is in " + ownFolder +
                               "/libOrvImportOld.so, which is of version 3.10.7 and not of this library's, 3.11.0");
    EXPECT_EQ(whyNot(STRAY),
              "its reader is in " + ownFolder + "/libOrvImportStray.so, which is no module of this library");
}

TEST(CaeModule, AReaderThatItDoesNotHaveIsTold) {
    EXPECT_EQ(whyNot(GOOD, "Other"), ownFolder + "/libOrvImportGood.so has no reader for Other");
}

} // namespace
