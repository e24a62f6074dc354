#include "OrvApp/Situations.h"

#include "Tests/OrvApp/SituationsFixture.h"
#include "Tests/Support/EnvironmentVariable.h"
#include "Tests/Support/FileFaults.h"
#include "Tests/Support/OrdinaryUser.h"

#include <filesystem>

using namespace orv;
using namespace orv::app;
using orvtest::described;
using orvtest::LogMessage;

namespace {

class SituationsTest : public orvtest::SituationsTest {
protected:
    static LogMessage warning(const std::string& text) {
        return message(2, text,
                       "bool orv::app::SituationsPrivate::renameSituation(size_t, const orv::Str &, "
                       "const orv::Str &, const orv::Str &)",
                       "renameSituation");
    }

    static LogMessage notFound(const std::string& folderPath) {
        return warning("Situation folder  \"" + folderPath + "\" not found. Situation name noe changed.");
    }

    static LogMessage notWritten(const std::string& folderPath) {
        return warning("Could not update situation name to folder: " + folderPath);
    }

    /// Lists a situation and writes it to the scratch folder.
    ug::Situation* addWritten(const std::string& name) {
        situations->add(situationNamed(name).get());
        ug::Situation* situation = situations->situation(situations->situationsCount() - 1);
        EXPECT_TRUE(ug::SituationIo::writeFolder(situation, folder.path()));
        return situation;
    }
};

TEST_F(SituationsTest, InstanceIsOneObject) {
    EXPECT_EQ(Situations::instance(), situations);
    EXPECT_EQ(situations->refCount(), 1);
}

TEST_F(SituationsTest, AddAppendsAReference) {
    const PtrRef<ug::Situation> first = situationNamed("first");
    const PtrRef<ug::Situation> second = situationNamed("second");
    EXPECT_EQ(situations->situationsCount(), 0u);
    situations->add(first.get());
    situations->add(second.get());
    EXPECT_EQ(situations->situationsCount(), 2u);
    EXPECT_EQ(situations->situation(0), first.get());
    EXPECT_EQ(situations->situation(1), second.get());
    EXPECT_EQ(static_cast<const Situations*>(situations)->situation(1), second.get());
    EXPECT_EQ(first->refCount(), 2);
}

TEST_F(SituationsTest, AddTakesAnything) {
    const PtrRef<ug::Situation> situation = situationNamed("twice");
    situations->add(situation.get());
    situations->add(nullptr);
    situations->add(situation.get());
    EXPECT_EQ(situations->situationsCount(), 3u);
    EXPECT_EQ(situations->situation(1), nullptr);
    EXPECT_EQ(situation->refCount(), 3);
    EXPECT_EQ(situations->situationIndex(situation.get()), 0u);
    EXPECT_EQ(situations->situationIndex(nullptr), 1u);
}

TEST_F(SituationsTest, RemoveErasesAPosition) {
    const PtrRef<ug::Situation> removed = situationNamed("b");
    situations->add(situationNamed("a").get());
    situations->add(removed.get());
    situations->add(situationNamed("c").get());
    situations->remove(1);
    ASSERT_EQ(situations->situationsCount(), 2u);
    EXPECT_EQ(situations->situation(0)->name(), "a");
    EXPECT_EQ(situations->situation(1)->name(), "c");
    EXPECT_EQ(removed->refCount(), 1);
}

TEST_F(SituationsTest, RemoveDeletesNothingOnTheDisk) {
    ug::Situation* situation = addWritten("kept");
    const std::string text = described(*situation);
    situations->remove(0);
    EXPECT_EQ(describedFolder(folder.path()), text);
}

TEST_F(SituationsTest, RemoveAllLeavesTheRecoverySituation) {
    addModelAndView();
    ug::Situation* recovery = situations->captureRecovery();
    const std::string text = described(*recovery);
    const PtrRef<ug::Situation> situation = situationNamed("listed");
    situations->add(situation.get());
    situations->removeAll();
    EXPECT_EQ(situations->situationsCount(), 0u);
    EXPECT_EQ(situation->refCount(), 1);
    EXPECT_EQ(described(*recovery), text);
    EXPECT_EQ(situations->captureRecovery(), recovery);
}

TEST_F(SituationsTest, IndexIsThatOfTheObject) {
    const PtrRef<ug::Situation> stranger = situationNamed("a");
    situations->add(situationNamed("a").get());
    situations->add(situationNamed("b").get());
    EXPECT_EQ(situations->situationIndex(situations->situation(1)), 1u);
    EXPECT_EQ(situations->situationIndex(stranger.get()), UNDEFINED_SIZE_T);
    EXPECT_EQ(situations->situationIndex(nullptr), UNDEFINED_SIZE_T);
}

TEST_F(SituationsTest, CaptureIsOfTheCurrentModelAndView) {
    addModelAndView(1);
    addModelAndView(3);
    const std::string third = describedCapture();
    EXPECT_EQ(described(*situations->captureCurrent()), third);
    Models::instance()->setCurrentIndex(0);
    Views::instance()->setCurrentIndex(0);
    const std::string first = describedCapture();
    EXPECT_NE(first, third);
    const PtrRef<ug::Situation> situation = situations->captureCurrent();
    EXPECT_EQ(described(*situation), first);
    EXPECT_EQ(situation->sourceModelFile(), "memory.model");
    EXPECT_EQ(situation->name(), "");
    EXPECT_EQ(situation->description(), "");
    EXPECT_TRUE(situation->allUserData().empty());
}

TEST_F(SituationsTest, TheSourceIsWhatModelsTellsOfTheCurrentOne) {
    // Which asserts that there is a data source; the capture itself does without.
    Models::instance()->add(orvtest::modelOn(nullptr, -1).get());
    Views::instance()->add();
    const std::vector<orvtest::FailedAssert> expected = {orvtest::failed("OrvApp/Models_p", "source")};
    EXPECT_EQ(asserts.takeUntil(1, [&] { situations->captureCurrent(); }), expected);
    EXPECT_EQ(asserts.takeUntil(1, [&] { situations->captureRecovery(); }), expected);
}

TEST_F(SituationsTest, CaptureMakesAnObjectEachTimeAndListsNone) {
    addModelAndView();
    const PtrRef<ug::Situation> first = situations->captureCurrent();
    const PtrRef<ug::Situation> second = situations->captureCurrent();
    EXPECT_NE(first.get(), second.get());
    EXPECT_EQ(first->refCount(), 1);
    EXPECT_EQ(situations->situationsCount(), 0u);
}

TEST_F(SituationsTest, ANewNameGoesToMemoryAndToTheFolder) {
    addWritten("other");
    ug::Situation* situation = addWritten("old");
    folder.write("notes.txt", "somebody's");
    PropertySetCollection* collection = situation->propertyCollection();
    const PtrRef<ug::Situation> expected = situationNamed("old");
    expected->setName("neu \u7ffc");
    expected->setDescription("why");
    EXPECT_TRUE(situations->updateSituationInfo(1, folder.path(), "neu \u7ffc", "why"));
    EXPECT_EQ(described(*situation), described(*expected));
    EXPECT_EQ(describedFolder(folder.path()), described(*expected));
    EXPECT_EQ(situation->propertyCollection(), collection);
    EXPECT_EQ(collection->refCount(), 1);
    EXPECT_EQ(situations->situation(0)->name(), "other");
    EXPECT_EQ(folder.names(), (std::vector<std::string>{"Situation.xml", "notes.txt"}));
}

TEST_F(SituationsTest, AnyFolderOfASituationIsOverwritten) {
    addWritten("another");
    situations->removeAll();
    situations->add(situationNamed("mine").get());
    situations->situation(0)->setUnknownXml("what a later version has written");
    EXPECT_TRUE(situations->updateSituationInfo(0, folder.path() + "/", "new", "why"));
    const PtrRef<ug::Situation> expected = situationNamed("mine");
    expected->setName("new");
    expected->setDescription("why");
    EXPECT_EQ(describedFolder(folder.path()), described(*expected));
    // Also one whose file is none of a situation.
    folder.write("Situation.xml", "nonsense");
    EXPECT_TRUE(situations->updateSituationInfo(0, folder.path(), "new", "why"));
    EXPECT_EQ(describedFolder(folder.path()), described(*expected));
}

TEST_F(SituationsTest, AFolderWithoutASituationKeepsTheOldName) {
    situations->add(situationNamed("old").get());
    const std::string text = described(*situations->situation(0));
    std::filesystem::create_directory(folder / "%1 \u7ffc");
    for (const std::string& path : {folder.path(), folder / "missing", folder / "%1 \u7ffc", std::string("a\\b")}) {
        EXPECT_FALSE(situations->updateSituationInfo(0, path, "new", "why"));
        EXPECT_EQ(logs.take(), std::vector<LogMessage>{notFound(path)});
    }
    EXPECT_EQ(described(*situations->situation(0)), text);
    EXPECT_EQ(folder.names(), std::vector<std::string>{"%1 \u7ffc"});
}

TEST_F(SituationsTest, AFolderThatCannotBeWrittenGivesTheNewNameToMemoryAlone) {
    situations->add(situationNamed("old").get());
    // Something of the file's name is there, which is all that is asked, and no file can take its place.
    std::filesystem::create_directory(folder / "Situation.xml");
    EXPECT_FALSE(situations->updateSituationInfo(0, folder.path(), "new", "why"));
    EXPECT_EQ(logs.take(), std::vector<LogMessage>{notWritten(folder.path())});
    EXPECT_EQ(situations->situation(0)->name(), "new");
    EXPECT_EQ(situations->situation(0)->description(), "why");
    EXPECT_TRUE(std::filesystem::is_directory(folder / "Situation.xml"));
}

TEST_F(SituationsTest, WarningsHaveTheirLevel) {
    situations->add(situationNamed("old").get());
    logger()->setLevel(rvf::Logger::LEVEL_ERROR);
    EXPECT_FALSE(situations->updateSituationInfo(0, folder.path(), "new", "why"));
    std::filesystem::create_directory(folder / "Situation.xml");
    EXPECT_FALSE(situations->updateSituationInfo(0, folder.path(), "new", "why"));
    EXPECT_TRUE(logs.take().empty());
    logger()->setLevel(rvf::Logger::LEVEL_WARNING);
    EXPECT_FALSE(situations->updateSituationInfo(0, folder.path(), "new", "why"));
    EXPECT_EQ(logs.take().size(), 1u);
}

TEST_F(SituationsTest, AFullDiskLeavesTheOldFile) {
    addWritten("old");
    const std::string old = describedFolder(folder.path());
    bool isStruck = true;
    int change = 1;
    for (; isStruck; ++change) {
        const orvtest::FileFaults faults(orvtest::FileFault::FAIL, change);
        const bool isUpdated = situations->updateSituationInfo(0, folder.path(), "new", "why");
        isStruck = faults.hasStruck();
        EXPECT_EQ(situations->situation(0)->name(), "new");
        EXPECT_EQ(describedFolder(folder.path()) == old, !isUpdated) << change;
        EXPECT_EQ(logs.take(),
                  isUpdated ? std::vector<LogMessage>() : std::vector<LogMessage>{notWritten(folder.path())});
        EXPECT_EQ(folder.names(), std::vector<std::string>{"Situation.xml"});
    }
    EXPECT_GE(change - 1, 6); // to open, write, sync, rename and sync, and the one without a fault
}

TEST_F(SituationsTest, AFolderThatMayOnlyBeReadKeepsItsFile) {
    addWritten("old");
    const std::string old = describedFolder(folder.path());
    std::filesystem::permissions(folder.path(), std::filesystem::perms(0555));
    EXPECT_TRUE(orvtest::holdsForAnOrdinaryUser([&] {
        return !situations->updateSituationInfo(0, folder.path(), "new", "why") &&
               situations->situation(0)->name() == "new" &&
               logs.take() == std::vector<LogMessage>{notWritten(folder.path())};
    }));
    std::filesystem::permissions(folder.path(), std::filesystem::perms(0755));
    EXPECT_EQ(describedFolder(folder.path()), old);
}

TEST_F(SituationsTest, AKilledProcessLeavesTheOldFileOrTheNewOne) {
    addWritten("old");
    const std::string old = describedFolder(folder.path());
    int oldCount = 0;
    bool isKilled = true;
    for (int change = 1; isKilled; ++change) {
        isKilled =
            orvtest::isKilledAt(change, [&] { situations->updateSituationInfo(0, folder.path(), "new", "why"); });
        const std::string left = describedFolder(folder.path());
        EXPECT_NE(left, "none");
        oldCount += left == old ? 1 : 0;
    }
    EXPECT_GE(oldCount, 4);
    EXPECT_NE(describedFolder(folder.path()), old);
}

TEST_F(SituationsTest, AThousandFoldersComeThroughARenaming) {
    const std::string scripts[] = {
        "\u00e6\u00f8\u00e5", "\u7ffc\u306e\u72b6\u614b", "\u043a\u0440\u044b\u043b\u043e", "\u062c\u0646\u0627\u062d",
        "\U0001f6e9",         "a / \"b\" <c> & 'd' \\ %1"};
    const orvtest::EnvironmentVariable inMemory("TMPDIR", orvtest::quickFolder());
    const orvtest::ScratchFolder quick;
    for (int i = 0; i < 1000; ++i) {
        const std::string name = scripts[i % 6] + std::to_string(i);
        const std::string path = quick / std::to_string(i);
        situations->add(situationNamed("").get());
        ASSERT_TRUE(ug::SituationIo::writeFolder(situations->situation(i), path));
        ASSERT_TRUE(situations->updateSituationInfo(i, path, name, scripts[(i + 1) % 6]));
        const PtrRef<ug::Situation> read(new ug::Situation);
        ASSERT_TRUE(ug::SituationIo::readFolder(read.get(), path));
        ASSERT_EQ(described(*read), described(*situations->situation(i)));
        ASSERT_EQ(read->name(), Str(name));
    }
}

TEST_F(SituationsTest, ExistingIsBeingThereInAnyWay) {
    EXPECT_TRUE(SituationsPrivate::exists(folder.path()));
    EXPECT_TRUE(SituationsPrivate::exists(folder.write("\u7ffc", "")));
    EXPECT_FALSE(SituationsPrivate::exists(folder / "missing"));
    EXPECT_FALSE(SituationsPrivate::exists(""));
}

} // namespace
