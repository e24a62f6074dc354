#include "Tests/OrvApp/SituationsFixture.h"
#include "Tests/Support/FileFaults.h"
#include "Tests/Support/OrdinaryUser.h"

#include <filesystem>

#include <sys/stat.h>

using namespace orv;
using namespace orv::app;
using orvtest::described;
using orvtest::LogMessage;

namespace {

using Names = std::vector<std::string>;

const std::string saving = "void orv::app::SituationsPrivate::saveRecovery()";

class SituationsRecoveryTest : public orvtest::SituationsTest {
protected:
    static LogMessage notSaved(const std::string& path) {
        return message(2, "Could not save recovery situation to folder: " + path, saving, "saveRecovery");
    }

    static LogMessage notFound() {
        return message(3, "No recover situation found",
                       "orv::PtrRef<orv::ug::Situation> orv::app::SituationsPrivate::loadRecovery() const",
                       "loadRecovery");
    }

    /// A recovery of state 1 on the disk, and one of state 2 captured and not saved.
    void saveOldAndCaptureNew() {
        addModelAndView();
        situations->setRecoveryFolder(recovery);
        Models::instance()->current()->modelSpec().setStateId(1);
        old = described(*situations->captureRecovery());
        situations->saveRecovery();
        ASSERT_EQ(describedFolder(recovery), old);
        Models::instance()->current()->modelSpec().setStateId(2);
        captured = described(*situations->captureRecovery());
        ASSERT_NE(captured, old);
    }

    const std::string recovery = folder / "recovery";
    std::string old;
    std::string captured;
};

TEST_F(SituationsRecoveryTest, TheFolderIsStoredWithForwardSlashes) {
    const std::string backslashed = folder.path() + "\\a\\b";
    const std::string mixed = folder.path() + "/c\\d/e\\";
    situations->setRecoveryFolder(backslashed);
    EXPECT_EQ(folder.names(), Names());
    situations->saveRecovery();
    EXPECT_TRUE(folder.has("a/b/Situation.xml"));
    situations->setRecoveryFolder(mixed);
    situations->saveRecovery();
    EXPECT_TRUE(folder.has("c/d/e/Situation.xml"));
    EXPECT_EQ(folder.names(), (Names{"a", "c"}));
}

TEST_F(SituationsRecoveryTest, ExistsWhenTheFileIsThere) {
    situations->setRecoveryFolder(recovery);
    EXPECT_FALSE(situations->recoverySituationExists());
    std::filesystem::create_directory(recovery);
    EXPECT_FALSE(situations->recoverySituationExists());
    folder.write("recovery/Situation.xml", "nonsense");
    EXPECT_TRUE(situations->recoverySituationExists());
    situations->setRecoveryFolder("");
    EXPECT_EQ(situations->recoverySituationExists(), std::filesystem::exists("/Situation.xml"));
}

TEST_F(SituationsRecoveryTest, CaptureRefreshesOneObject) {
    addModelAndView();
    ug::Situation* situation = situations->captureRecovery();
    ASSERT_NE(situation, nullptr);
    const PtrRef<ug::Situation> expected(new ug::Situation);
    expected->capture(*Models::instance()->current(), *Views::instance()->current());
    expected->setName("Recovery");
    EXPECT_EQ(described(*situation), described(*expected));
    EXPECT_EQ(situation->sourceModelFile(), "memory.model");
    EXPECT_EQ(situation->refCount(), 1);
    Models::instance()->current()->modelSpec().setStateId(2);
    EXPECT_EQ(situations->captureRecovery(), situation);
    EXPECT_NE(described(*situation), described(*expected));
    EXPECT_EQ(situations->situationsCount(), 0u);
}

TEST_F(SituationsRecoveryTest, CaptureStartsWithANewCollection) {
    addModelAndView();
    ug::Situation* situation = situations->captureRecovery();
    const std::string plain = described(*situation);
    const PtrRef<PropertySetCollection> first = situation->propertyCollection();
    first->append(PtrRef<PropertySet>(new PropertySet("the application's own")).get());
    situations->captureRecovery();
    EXPECT_NE(situation->propertyCollection(), first.get());
    EXPECT_EQ(described(*situation), plain);
    EXPECT_NE(first->find("the application's own"), nullptr);
}

TEST_F(SituationsRecoveryTest, CaptureWritesNothing) {
    addModelAndView();
    situations->setRecoveryFolder(recovery);
    situations->captureRecovery();
    EXPECT_EQ(folder.names(), Names());
}

TEST_F(SituationsRecoveryTest, SavingWritesWhatWasCapturedAndSetOnIt) {
    addModelAndView();
    situations->setRecoveryFolder(recovery);
    ug::Situation* situation = situations->captureRecovery();
    situation->setAllUserData({{"open dialog", "colours"}});
    const std::string text = described(*situation);
    Models::instance()->current()->modelSpec().setStateId(3);
    situations->saveRecovery();
    EXPECT_EQ(describedFolder(recovery), text);
    EXPECT_EQ(described(*situation), text);
    situation->setAllUserData({});
}

TEST_F(SituationsRecoveryTest, SavingWithoutACaptureWritesAnEmptyOne) {
    SituationsPrivate fresh;
    fresh.setRecoveryFolder(recovery);
    fresh.saveRecovery();
    const PtrRef<ug::Situation> expected(new ug::Situation);
    expected->setName("Recovery");
    expected->setPropertyCollection(new PropertySetCollection); // as reading makes one
    EXPECT_EQ(describedFolder(recovery), described(*expected));
    EXPECT_EQ(fresh.situationsCount(), 0u);
}

TEST_F(SituationsRecoveryTest, SavingWithoutAFolderIsAWarning) {
    situations->saveRecovery();
    EXPECT_EQ(logs.take(), std::vector<LogMessage>{message(2, "Recovery folder not set.", saving, "saveRecovery")});
    logger()->setLevel(rvf::Logger::LEVEL_ERROR);
    situations->saveRecovery();
}

TEST_F(SituationsRecoveryTest, SavingReplacesTheFolder) {
    saveOldAndCaptureNew();
    const auto node = [&] {
        // Kept open, so that a new folder cannot get the number of the old one.
        struct stat status = {};
        ::stat(recovery.c_str(), &status);
        return status.st_ino;
    };
    const std::filesystem::directory_iterator open(recovery);
    const auto before = node();
    situations->saveRecovery();
    EXPECT_EQ(describedFolder(recovery), captured);
    EXPECT_NE(node(), before);
    EXPECT_EQ(folder.names(), Names{"recovery"});
}

TEST_F(SituationsRecoveryTest, SavingLeavesWhatElseIsInTheFolder) {
    saveOldAndCaptureNew();
    folder.write("recovery/notes.txt", "somebody's");
    situations->saveRecovery();
    EXPECT_EQ(describedFolder(recovery), captured);
    EXPECT_EQ(folder.read("recovery/notes.txt"), "somebody's");
}

TEST_F(SituationsRecoveryTest, SavingDeletesBeforeItFindsThatItCannotWrite) {
    saveOldAndCaptureNew();
    // The folder is needed for the new file, and has just been removed.
    const orvtest::FileFaults faults(orvtest::FileFault::FAIL, 3);
    situations->saveRecovery();
    EXPECT_TRUE(faults.hasStruck());
    EXPECT_EQ(logs.take(), std::vector<LogMessage>{notSaved(recovery)});
    EXPECT_EQ(folder.names(), Names());
}

TEST_F(SituationsRecoveryTest, SavingBelowAFileIsAWarning) {
    situations->setRecoveryFolder(folder.write("file", "bytes") + "/recovery");
    situations->saveRecovery();
    EXPECT_EQ(logs.take(), std::vector<LogMessage>{notSaved(folder / "file/recovery")});
    situations->setRecoveryFolder(folder / "file");
    situations->saveRecovery();
    EXPECT_EQ(logs.take(), std::vector<LogMessage>{notSaved(folder / "file")});
    EXPECT_EQ(folder.read("file"), "bytes");
    logger()->setLevel(rvf::Logger::LEVEL_ERROR);
    situations->saveRecovery();
}

TEST_F(SituationsRecoveryTest, WhatMayOnlyBeReadIsNeitherDeletedNorWritten) {
    saveOldAndCaptureNew();
    std::filesystem::permissions(folder.path(), std::filesystem::perms(0755));
    std::filesystem::permissions(recovery, std::filesystem::perms(0555));
    EXPECT_TRUE(orvtest::holdsForAnOrdinaryUser([&] {
        situations->saveRecovery();
        const bool isTold = logs.take() == std::vector<LogMessage>{notSaved(recovery)};
        situations->removeRecovery();
        return isTold && logs.take().empty();
    }));
    std::filesystem::permissions(recovery, std::filesystem::perms(0755));
    EXPECT_EQ(describedFolder(recovery), old);
}

TEST_F(SituationsRecoveryTest, AFaultAtAnyChangeIsToldAndMendedByTheNextSaving) {
    saveOldAndCaptureNew();
    // 1 to delete the file, 2 the folder, 3 to make the folder, 4 to open, 5 to write, 6 to sync, 7 to rename the new
    // file, 8 to sync its folder, and one more without a fault. A file or folder that stays is replaced or used.
    const bool isSaved[] = {true, true, false, false, false, false, false, true, true};
    for (int change = 1; change <= 9; ++change) {
        saveOldAndCaptureNew();
        {
            const orvtest::FileFaults faults(orvtest::FileFault::FAIL, change);
            situations->saveRecovery();
            EXPECT_EQ(faults.hasStruck(), change < 9);
        }
        EXPECT_EQ(describedFolder(recovery), isSaved[change - 1] ? captured : "none") << change;
        EXPECT_EQ(logs.take(),
                  isSaved[change - 1] ? std::vector<LogMessage>() : std::vector<LogMessage>{notSaved(recovery)});
        if (folder.has("recovery") && !isSaved[change - 1]) {
            EXPECT_TRUE(std::filesystem::is_empty(recovery));
        }
        situations->saveRecovery();
        EXPECT_EQ(describedFolder(recovery), captured);
    }
}

TEST_F(SituationsRecoveryTest, AKilledProcessLeavesTheOldOneNoneOrTheNewOne) {
    // Killed before the file is deleted; then before the folder is deleted and made, and the file opened, written,
    // synced and renamed; then before the folder is synced, and not at all.
    const std::string* const left[] = {&old,    nullptr, nullptr,   nullptr,  nullptr,
                                       nullptr, nullptr, &captured, &captured};
    for (const bool hasMore : {false, true}) {
        for (int change = 1; change <= 9; ++change) {
            std::filesystem::remove_all(recovery);
            saveOldAndCaptureNew();
            if (hasMore) {
                folder.write("recovery/notes.txt", "somebody's");
            }
            // A folder that stays is not made anew, so all later changes come one earlier.
            const int index = change - 1 + (hasMore && change > 2 ? 1 : 0);
            const bool isKilled = orvtest::isKilledAt(change, [&] { situations->saveRecovery(); });
            EXPECT_EQ(isKilled, index < 8) << change;
            EXPECT_EQ(describedFolder(recovery), index > 8 ? captured : left[index] ? *left[index] : "none") << change;
            EXPECT_EQ(folder.has("recovery/notes.txt"), hasMore);
            situations->saveRecovery();
            EXPECT_EQ(describedFolder(recovery), captured);
        }
    }
}

TEST_F(SituationsRecoveryTest, LoadingGivesANewObject) {
    saveOldAndCaptureNew();
    const PtrRef<ug::Situation> first = situations->loadRecovery();
    const PtrRef<ug::Situation> second = situations->loadRecovery();
    ASSERT_TRUE(first && second);
    EXPECT_NE(first.get(), second.get());
    EXPECT_EQ(first->refCount(), 1);
    EXPECT_EQ(described(*first), old);
    EXPECT_EQ(situations->situationsCount(), 0u);
    ug::Situation* recoverySituation = situations->captureRecovery();
    EXPECT_NE(first.get(), recoverySituation);
    EXPECT_EQ(described(*recoverySituation), captured);
}

TEST_F(SituationsRecoveryTest, LoadingWhatIsNotThereIsInfo) {
    EXPECT_FALSE(situations->loadRecovery());
    EXPECT_EQ(logs.take(), std::vector<LogMessage>{notFound()});
    situations->setRecoveryFolder(recovery);
    EXPECT_FALSE(situations->loadRecovery());
    EXPECT_EQ(logs.take(), std::vector<LogMessage>{notFound()});
    logger()->setLevel(rvf::Logger::LEVEL_WARNING);
    EXPECT_FALSE(situations->loadRecovery());
    EXPECT_EQ(logs.take(), std::vector<LogMessage>());
    EXPECT_EQ(folder.names(), Names());
}

TEST_F(SituationsRecoveryTest, LoadingWhatIsDamagedIsInfo) {
    saveOldAndCaptureNew();
    const std::string text = folder.read("recovery/Situation.xml");
    for (const std::string& damaged : {std::string(), std::string("nonsense"), text.substr(0, text.size() / 2)}) {
        folder.write("recovery/Situation.xml", damaged);
        EXPECT_FALSE(situations->loadRecovery());
        EXPECT_EQ(logs.take(), std::vector<LogMessage>{notFound()});
        EXPECT_EQ(folder.read("recovery/Situation.xml"), damaged);
    }
    std::filesystem::remove(folder / "recovery/Situation.xml");
    std::filesystem::create_directory(folder / "recovery/Situation.xml");
    EXPECT_FALSE(situations->loadRecovery());
    EXPECT_EQ(logs.take(), std::vector<LogMessage>{notFound()});
}

TEST_F(SituationsRecoveryTest, RemovingDeletesTheFolderAndKeepsTheObject) {
    saveOldAndCaptureNew();
    situations->removeRecovery();
    EXPECT_EQ(folder.names(), Names());
    EXPECT_FALSE(situations->recoverySituationExists());
    situations->removeRecovery();
    situations->saveRecovery();
    EXPECT_EQ(describedFolder(recovery), captured);
}

TEST_F(SituationsRecoveryTest, RemovingWithoutAFolderDoesNothing) {
    saveOldAndCaptureNew();
    situations->setRecoveryFolder("");
    const orvtest::FileFaults faults(orvtest::FileFault::FAIL, 1);
    situations->removeRecovery();
    EXPECT_FALSE(faults.hasStruck());
    EXPECT_EQ(describedFolder(recovery), old);
}

TEST_F(SituationsRecoveryTest, RemovingLeavesAFolderWithMoreInIt) {
    saveOldAndCaptureNew();
    std::filesystem::create_directory(recovery + "/more");
    situations->removeRecovery();
    EXPECT_FALSE(folder.has("recovery/Situation.xml"));
    EXPECT_TRUE(folder.has("recovery/more"));
    // Nor is anything but a file deleted.
    std::filesystem::create_directory(recovery + "/Situation.xml");
    situations->removeRecovery();
    EXPECT_TRUE(folder.has("recovery/Situation.xml"));
}

} // namespace
