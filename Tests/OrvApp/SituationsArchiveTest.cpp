#include "OrvUnstructGrid/CZipArchive.h"
#include "Tests/OrvApp/SituationsFixture.h"
#include "Tests/Support/CommandOutput.h"
#include "Tests/Support/EnvironmentVariable.h"
#include "Tests/Support/FileFaults.h"
#include "Tests/Support/FileSizeLimit.h"
#include "Tests/Support/OrdinaryUser.h"

#include <filesystem>
#include <initializer_list>

using namespace orv;
using namespace orv::app;
using orvtest::described;
using orvtest::LogMessage;
using orvtest::outputOf;

namespace {

using Names = std::vector<std::string>;

class SituationsArchiveTest : public orvtest::SituationsTest {
protected:
    SituationsArchiveTest() {
        std::filesystem::create_directory(temp);
    }

    void TearDown() override {
        EXPECT_TRUE(std::filesystem::is_empty(temp));
        orvtest::SituationsTest::TearDown();
    }

    void exportNamed(const Names& names) {
        std::vector<PtrRef<ug::Situation>> owners;
        std::vector<const ug::Situation*> list;
        for (const std::string& name : names) {
            owners.push_back(situationNamed(name));
            list.push_back(owners.back().get());
        }
        situations->exportSituations(list, path);
    }

    /// The names of what is imported, each of which has to be whole.
    Names importedNames() {
        Names names;
        for (const PtrRef<ug::Situation>& situation : situations->importSituations(path)) {
            names.push_back(situation->name().toStdString());
            EXPECT_EQ(described(*situation), described(*situationNamed(names.back())));
        }
        return names;
    }

    /// The names of the archive's entries, one a line.
    std::string entries() const {
        return outputOf("unzip -Z1 '" + path + "'");
    }

    /// Writes the file of a situation.
    std::string writeSingle(const std::string& name, const std::string& situationName) {
        EXPECT_TRUE(ug::SituationIo::writeArchiveFile(situationNamed(situationName).get(), folder / name));
        return folder / name;
    }

    /// An archive of files in the scratch folder, made by another program.
    void zip(const std::string& files) const {
        ASSERT_EQ(outputOf("cd '" + folder.path() + "' && zip -q -D -r a.zip " + files), "");
    }

    /// Deletes the temporary files in the archive's folder and in the one for them, and tells their number.
    int deleteTempFiles() const {
        int count = 0;
        for (const std::string& in : {folder.path(), temp}) {
            for (const auto& entry : std::filesystem::directory_iterator(in)) {
                if (entry.is_regular_file() && entry.path() != path) {
                    std::filesystem::remove(entry.path());
                    ++count;
                }
            }
        }
        return count;
    }

    /// How many times this process has the archive open.
    int openCount() const {
        int count = 0;
        for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
            std::error_code gone;
            count += std::filesystem::read_symlink(entry.path(), gone) == path ? 1 : 0;
        }
        return count;
    }

    static LogMessage exportWarning() {
        return message(2, "Could not add situation file to archive",
                       "void orv::app::SituationsPrivate::exportSituations("
                       "std::vector<const orv::ug::Situation *>, const orv::Str &)",
                       "exportSituations");
    }

    static LogMessage importWarning(const std::string& text) {
        return message(2, text,
                       "std::vector<orv::PtrRef<orv::ug::Situation>> "
                       "orv::app::SituationsPrivate::importSituations(const orv::Str &)",
                       "importSituations");
    }

    LogMessage notExtracted(int index) const {
        return importWarning("Could not extract situation number " + std::to_string(index) +
                             " in archive file: " + path);
    }

    const std::string path = folder / "a.zip";
    const std::string temp = folder / "temp";
    const orvtest::EnvironmentVariable tempVariable{"TMPDIR", temp};
};

TEST_F(SituationsArchiveTest, EntriesAreNumberedInTheOrderOfTheList) {
    exportNamed({"c", "a", "b"});
    EXPECT_EQ(entries(), "situation_001\nsituation_002\nsituation_003\n");
    EXPECT_EQ(importedNames(), (Names{"c", "a", "b"}));
    EXPECT_EQ(situations->situationsCount(), 0u);
}

TEST_F(SituationsArchiveTest, AnEntryIsTheFileOfASituation) {
    exportNamed({"a", "b"});
    writeSingle("single", "b");
    EXPECT_EQ(outputOf("unzip -p '" + path + "' situation_002"), folder.read("single"));
    EXPECT_EQ(outputOf("unzip -tqq '" + path + "'"), "");
    EXPECT_NE(outputOf("unzip -Z '" + path + "' situation_001").find(" def"), std::string::npos);
}

TEST_F(SituationsArchiveTest, ImportedOnesAreNew) {
    exportNamed({"a"});
    const std::vector<PtrRef<ug::Situation>> first = situations->importSituations(path);
    const std::vector<PtrRef<ug::Situation>> second = situations->importSituations(path);
    ASSERT_EQ(first.size(), 1u);
    ASSERT_EQ(second.size(), 1u);
    EXPECT_NE(first[0].get(), second[0].get());
    EXPECT_EQ(first[0]->refCount(), 1);
}

TEST_F(SituationsArchiveTest, AThousandSituationsComeBack) {
    const std::string scripts[] = {
        "\u00e6\u00f8\u00e5", "\u7ffc\u306e\u72b6\u614b", "\u043a\u0440\u044b\u043b\u043e", "\u062c\u0646\u0627\u062d",
        "\U0001f6e9",         "a / \"b\" <c> & 'd' \\ %1"};
    Names names;
    for (int i = 0; i < 1000; ++i) {
        names.push_back(scripts[i % 6] + std::to_string(i));
    }
    // In memory where there is such a place: disks take their time to sync a thousand files.
    tempVariable.set(orvtest::quickFolder());
    const orvtest::ScratchFolder quick;
    tempVariable.set(quick.path());
    exportNamed(names);
    EXPECT_TRUE(entries().starts_with("situation_001\n"));
    EXPECT_TRUE(entries().ends_with("\nsituation_999\nsituation_1000\n"));
    EXPECT_EQ(importedNames(), names);
}

TEST_F(SituationsArchiveTest, NoSituationsMakeAnArchiveToo) {
    exportNamed({});
    EXPECT_EQ(std::filesystem::file_size(path), 22u); // a zip file's end, and nothing else
    EXPECT_EQ(importedNames(), Names());
}

TEST_F(SituationsArchiveTest, ExportReplacesAnArchive) {
    exportNamed({"a", "b"});
    exportNamed({"c"});
    EXPECT_EQ(entries(), "situation_001\n");
    EXPECT_EQ(importedNames(), Names{"c"});
}

TEST_F(SituationsArchiveTest, PathsMayBeInAnyScript) {
    const PtrRef<ug::Situation> situation = situationNamed("a");
    const std::string other = folder / "\u7ffc \u00e6 %1.zip";
    situations->exportSituations({situation.get()}, other);
    EXPECT_TRUE(std::filesystem::exists(other));
    EXPECT_EQ(situations->importSituations(other).size(), 1u);
}

TEST_F(SituationsArchiveTest, WithoutATempFolderNothingIsDone) {
    tempVariable.set("");
    exportNamed({"a"});
    EXPECT_FALSE(folder.has("a.zip"));
    tempVariable.set(temp);
    exportNamed({"a"});
    tempVariable.set("");
    EXPECT_EQ(importedNames(), Names());
    EXPECT_EQ(logs.take(), std::vector<LogMessage>{importWarning("Could not access temp folder")});
    EXPECT_EQ(openCount(), 0);
    logger()->setLevel(rvf::Logger::LEVEL_ERROR);
    EXPECT_EQ(importedNames(), Names());
}

TEST_F(SituationsArchiveTest, ATempFolderThatIsNotThereFailsForEachSituation) {
    exportNamed({"a", "b"});
    // Its name is read byte by byte, which makes another name of one that is not in ASCII.
    for (const std::string& name : {folder / "missing", folder / "\u7ffc"}) {
        std::filesystem::create_directory(folder / "\u7ffc");
        tempVariable.set(name);
        EXPECT_EQ(importedNames(), Names());
        EXPECT_EQ(logs.take(), (std::vector<LogMessage>{notExtracted(0), notExtracted(1)}));
    }
    exportNamed({"a", "b"});
    EXPECT_EQ(logs.take(), (std::vector<LogMessage>{exportWarning(), exportWarning()}));
    EXPECT_EQ(entries(), "Empty zipfile.\nstatus 1");
}

TEST_F(SituationsArchiveTest, AnArchiveThatCannotBeMadeIsSilent) {
    const PtrRef<ug::Situation> situation = situationNamed("a");
    situations->exportSituations({situation.get()}, folder / "missing/a.zip");
    situations->exportSituations({situation.get()}, temp);
    situations->exportSituations({situation.get()}, "");
    EXPECT_EQ(folder.names(), Names{"temp"});
}

TEST_F(SituationsArchiveTest, AnArchiveThatCannotBeOpenedIsAWarning) {
    exportNamed({"a"});
    const std::string whole = folder.read("a.zip");
    folder.write("short.zip", whole.substr(0, whole.size() / 2));
    folder.write("text.zip", "no archive");
    folder.write("nothing.zip", "");
    for (const std::string& bad : {folder / "missing.zip", folder / "short.zip", folder / "text.zip",
                                   folder / "nothing.zip", temp, std::string()}) {
        EXPECT_TRUE(situations->importSituations(bad).empty());
        EXPECT_EQ(logs.take(),
                  std::vector<LogMessage>{importWarning("Could not open situations archive file: " + bad)});
    }
    logger()->setLevel(rvf::Logger::LEVEL_ERROR);
    EXPECT_TRUE(situations->importSituations(folder / "missing.zip").empty());
}

TEST_F(SituationsArchiveTest, ASituationThatCannotBeWrittenLeavesAGap) {
    std::filesystem::create_directories(temp + "/temp_situation_002");
    exportNamed({"a", "b", "c"});
    EXPECT_EQ(logs.take(), std::vector<LogMessage>{exportWarning()});
    EXPECT_EQ(entries(), "situation_001\nsituation_003\n");
    EXPECT_EQ(importedNames(), (Names{"a", "c"}));
    logger()->setLevel(rvf::Logger::LEVEL_ERROR);
    exportNamed({"a", "b", "c"});
    std::filesystem::remove(temp + "/temp_situation_002");
}

TEST_F(SituationsArchiveTest, EachSideHasItsOwnTempNames) {
    // Export does not meet the names of import, nor the other way round; numbers go by the position in the archive.
    std::filesystem::create_directories(temp + "/temp_situation_001.sitx");
    std::filesystem::create_directories(temp + "/temp_situation_002.sitx");
    exportNamed({"a", "b", "c"});
    EXPECT_EQ(logs.take(), std::vector<LogMessage>());
    EXPECT_EQ(importedNames(), Names{"c"});
    EXPECT_EQ(logs.take(), (std::vector<LogMessage>{notExtracted(0), notExtracted(1)}));
    std::filesystem::remove(temp + "/temp_situation_001.sitx");
    std::filesystem::remove(temp + "/temp_situation_002.sitx");
    std::filesystem::create_directories(temp + "/temp_situation_001");
    EXPECT_EQ(importedNames(), (Names{"a", "b", "c"}));
    std::filesystem::remove(temp + "/temp_situation_001");
}

TEST_F(SituationsArchiveTest, TempFilesOfOthersAreOverwrittenAndGone) {
    folder.write("temp/temp_situation_001", "left by a crash");
    folder.write("temp/temp_situation_001.sitx", "left by a crash");
    exportNamed({"a"});
    EXPECT_EQ(importedNames(), Names{"a"});
}

TEST_F(SituationsArchiveTest, OneTempFileExistsAtATime) {
    exportNamed({"a", "b"});
    int keptCount = 0;
    bool isKilled = true;
    for (int change = 1; isKilled; ++change) {
        isKilled = orvtest::isKilledAt(change, [&] { importedNames(); });
        const int count = deleteTempFiles();
        EXPECT_LE(count, 1) << change;
        keptCount += count;
    }
    // Each of the two files is killed when it has been opened, that is before it is written and before it is deleted.
    EXPECT_EQ(keptCount, 4);
}

TEST_F(SituationsArchiveTest, ABadEntryIsLeftOut) {
    writeSingle("a", "first");
    folder.write("b", std::string(1000, 'x'));
    writeSingle("c", "third");
    zip("-0 a b c");
    // No situation: in silence.
    EXPECT_EQ(importedNames(), (Names{"first", "third"}));
    EXPECT_EQ(logs.take(), std::vector<LogMessage>());
    // Not what its checksum says: with a warning, and the number counted from 0.
    std::string archive = folder.read("a.zip");
    archive[archive.find("xxxx")] = 'y';
    folder.write("a.zip", archive);
    EXPECT_EQ(importedNames(), (Names{"first", "third"}));
    EXPECT_EQ(logs.take(), std::vector<LogMessage>{notExtracted(1)});
    logger()->setLevel(rvf::Logger::LEVEL_ERROR);
    EXPECT_EQ(importedNames(), (Names{"first", "third"}));
}

TEST_F(SituationsArchiveTest, WhatIsNotExtractedIsNotDeleted) {
    writeSingle("a", "first");
    zip("-P secret a");
    folder.write("temp/temp_situation_001.sitx", "somebody's");
    EXPECT_EQ(importedNames(), Names());
    EXPECT_EQ(logs.take(), std::vector<LogMessage>{notExtracted(0)});
    EXPECT_EQ(folder.read("temp/temp_situation_001.sitx"), "somebody's");
    EXPECT_EQ(deleteTempFiles(), 2); // and "a" beside the archive
}

TEST_F(SituationsArchiveTest, EntriesMayHaveAnyNames) {
    std::filesystem::create_directories(folder / "z/\u7ffc");
    writeSingle("z/\u7ffc/b.xml", "first");
    writeSingle("y", "second");
    writeSingle("situation_001", "third");
    zip("z y situation_001");
    EXPECT_EQ(importedNames(), (Names{"first", "second", "third"}));
}

TEST_F(SituationsArchiveTest, NothingLeavesTheTempFolder) {
    std::filesystem::create_directories(folder / "in/deep");
    writeSingle("up", "first");
    ASSERT_EQ(outputOf("cd '" + folder.path() + "/in/deep' && zip -q ../../a.zip ../../up"), "");
    const Names before = folder.names();
    EXPECT_EQ(importedNames(), Names{"first"});
    EXPECT_EQ(folder.names(), before);
}

TEST_F(SituationsArchiveTest, AnImportKeepsTheArchiveOpen) {
    exportNamed({"a"});
    EXPECT_EQ(openCount(), 0);
    importedNames();
    EXPECT_EQ(openCount(), 1);
    importedNames();
    EXPECT_EQ(openCount(), 2);
}

TEST_F(SituationsArchiveTest, AFullDiskIsToldForEachSituation) {
    {
        const orvtest::FileSizeLimit full(100);
        exportNamed({"a", "b"});
    }
    EXPECT_EQ(logs.take(), (std::vector<LogMessage>{exportWarning(), exportWarning()}));
    EXPECT_EQ(entries(), "Empty zipfile.\nstatus 1");
    exportNamed({"a", "b"});
    {
        const orvtest::FileSizeLimit full(100);
        EXPECT_EQ(importedNames(), Names());
    }
    EXPECT_EQ(logs.take(), (std::vector<LogMessage>{notExtracted(0), notExtracted(1)}));
}

TEST_F(SituationsArchiveTest, FoldersThatMayOnlyBeReadAreToldOfOrLeftAlone) {
    exportNamed({"a", "b"});
    const std::string archive = folder.read("a.zip");
    const std::string own = folder / "own";
    std::filesystem::create_directory(own);
    std::filesystem::permissions(own, std::filesystem::perms(0777));
    std::filesystem::permissions(folder.path(), std::filesystem::perms(0555));
    std::filesystem::permissions(temp, std::filesystem::perms(0555));
    // The folder of the archive: in silence.
    EXPECT_TRUE(orvtest::holdsForAnOrdinaryUser([&] {
        exportNamed({"c"});
        return logs.take().empty();
    }));
    EXPECT_EQ(folder.read("a.zip"), archive);
    // The temporary folder: with a warning for each.
    EXPECT_TRUE(orvtest::holdsForAnOrdinaryUser([&] {
        const PtrRef<ug::Situation> situation = situationNamed("c");
        situations->exportSituations({situation.get()}, own + "/a.zip");
        return logs.take() == std::vector<LogMessage>{exportWarning()};
    }));
    EXPECT_EQ(std::filesystem::file_size(own + "/a.zip"), 22u);
    EXPECT_TRUE(orvtest::holdsForAnOrdinaryUser([&] {
        return importedNames().empty() && logs.take() == std::vector<LogMessage>{notExtracted(0), notExtracted(1)};
    }));
    std::filesystem::permissions(folder.path(), std::filesystem::perms(0755));
    std::filesystem::permissions(temp, std::filesystem::perms(0755));
}

TEST_F(SituationsArchiveTest, AFaultAtAnyChangeOfAnExportLosesNothingElse) {
    bool isStruck = true;
    for (int change = 1; isStruck; ++change) {
        folder.write("a.zip", "old");
        {
            const orvtest::FileFaults faults(orvtest::FileFault::FAIL, change);
            exportNamed({"a", "b"});
            isStruck = faults.hasStruck();
        }
        // Nothing but the one temporary file whose deletion has failed, if it was that.
        EXPECT_LE(deleteTempFiles(), 1) << change;
        const std::size_t warnings = logs.take().size();
        if (folder.read("a.zip") != "old") {
            EXPECT_EQ(importedNames().size() + warnings, 2u) << change;
            EXPECT_LE(warnings, 1u);
        }
    }
    EXPECT_EQ(importedNames(), (Names{"a", "b"}));
}

TEST_F(SituationsArchiveTest, AFaultAtAnyChangeOfAnImportLeavesOneSituationOutAtMost) {
    exportNamed({"a", "b"});
    bool isStruck = true;
    for (int change = 1; isStruck; ++change) {
        Names names;
        {
            const orvtest::FileFaults faults(orvtest::FileFault::FAIL, change);
            names = importedNames();
            isStruck = faults.hasStruck();
        }
        EXPECT_EQ(names.size() + logs.take().size(), 2u) << change;
        EXPECT_GE(names.size(), 1u);
        EXPECT_LE(deleteTempFiles(), 1) << change;
    }
}

TEST_F(SituationsArchiveTest, AKilledExportLeavesTheOldArchiveOrTheNewOne) {
    bool isKilled = true;
    int oldCount = 0;
    for (int change = 1; isKilled; ++change) {
        folder.write("a.zip", "old");
        isKilled = orvtest::isKilledAt(change, [&] { exportNamed({"a", "b"}); });
        if (folder.read("a.zip") == "old") {
            ++oldCount;
        } else {
            EXPECT_EQ(importedNames(), (Names{"a", "b"})) << change;
        }
        EXPECT_LE(deleteTempFiles(), 1) << change;
    }
    EXPECT_GE(oldCount, 15); // five changes for each temporary file and five for the archive
    EXPECT_EQ(importedNames(), (Names{"a", "b"}));
}

} // namespace
