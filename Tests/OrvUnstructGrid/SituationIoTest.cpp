#include "OrvUnstructGrid/SituationIo.h"

#include "OrvCore/Defines.h"
#include "OrvUnstructGrid/Error.h"
#include "OrvUnstructGrid/Situation.h"
#include "Tests/OrvUnstructGrid/Situations.h"
#include "Tests/Support/AssertRecorder.h"
#include "Tests/Support/FileFaults.h"
#include "Tests/Support/FileSizeLimit.h"
#include "Tests/Support/OrdinaryUser.h"
#include "Tests/Support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <limits>

#include <sys/stat.h>

using namespace orv;
using namespace orv::ug;
using orvtest::described;
using orvtest::ScratchFolder;

namespace {

/// A situation with something of each kind in it.
PtrRef<Situation> fullSituation() {
    const PtrRef<Situation> situation(new Situation);
    situation->setName("Flügel \\ 翼 \"крыло\" <&>");
    situation->setDescription("First line\nsecond\tline\r\n \x01 end ");
    situation->setSourceModelFile("C:\\data\\wing.frd");
    const PtrRef<PropertySetCollection> collection(new PropertySetCollection);
    const PtrRef<PropertySet> camera(new PropertySet("camera"));
    camera->setValue("integer", std::numeric_limits<int>::min());
    camera->setValue("tenth", 0.1);
    camera->setValue("undefined", UNDEFINED_DOUBLE);
    camera->setValue("minus zero", -0.0);
    camera->setValue("least", std::numeric_limits<double>::denorm_min());
    camera->setValue("yes", true);
    camera->setValue("no", false);
    camera->setValue("text", Str("\u007f\u2028\uffff"));
    camera->setValue("vector", Vec3d(1.0 / 3.0, -1e300, 5e-324));
    camera->setValue("numbers", std::vector<double>{1, 2.5, UNDEFINED_DOUBLE});
    camera->setValue("none", std::vector<double>{});
    camera->setValue("", Str());
    collection->append(camera.get());
    collection->append(PtrRef<PropertySet>(new PropertySet("")).get());
    collection->append(camera.get());
    situation->setPropertyCollection(collection.get());
    situation->setAllUserData({{"", ""}, {"ключ", "значение"}, {"lines", "a\nb"}});
    return situation;
}

TEST(SituationIo, BringsBackAllThatWasWritten) {
    const ScratchFolder folder;
    const PtrRef<Situation> situation = fullSituation();
    Error error;
    ASSERT_TRUE(SituationIo::writeFolder(situation.get(), folder / "a/b", &error)) << error.message();
    const PtrRef<Situation> read(new Situation);
    ASSERT_TRUE(SituationIo::readFolder(read.get(), folder / "a/b", &error)) << error.message();
    EXPECT_EQ(described(*read), described(*situation));
}

TEST(SituationIo, HasTheSameTextInAFileOfItsOwn) {
    const ScratchFolder folder;
    const PtrRef<Situation> situation = fullSituation();
    ASSERT_TRUE(SituationIo::writeFolder(situation.get(), folder.path()));
    ASSERT_TRUE(SituationIo::writeArchiveFile(situation.get(), folder / "single"));
    EXPECT_EQ(folder.read("single"), folder.read("Situation.xml"));
    const PtrRef<Situation> read(new Situation);
    ASSERT_TRUE(SituationIo::readArchiveFile(read.get(), folder / "single"));
    EXPECT_EQ(described(*read), described(*situation));
}

TEST(SituationIo, NamesItsMainFile) {
    EXPECT_STREQ(SituationIo::MAIN_FILENAME, "Situation.xml");
}

TEST(SituationIo, WritesOneFileIntoTheFolder) {
    const ScratchFolder folder;
    folder.write("foreign", "kept");
    folder.write("Situation.xml", "replaced");
    ASSERT_TRUE(SituationIo::writeFolder(fullSituation().get(), folder.path()));
    EXPECT_EQ(folder.names(), (std::vector<std::string>{"Situation.xml", "foreign"}));
    EXPECT_EQ(folder.read("foreign"), "kept");
}

TEST(SituationIo, TakesFoldersAsPeopleNameThem) {
    const ScratchFolder folder;
    const orvtest::ScopedWorkingFolder here(folder.path());
    const PtrRef<Situation> situation = fullSituation();
    for (const char* name : {"relative", "with/", "a//b", "./c/../d", "Übung 1/翼", "back\\slash", "."}) {
        Error error;
        EXPECT_TRUE(SituationIo::writeFolder(situation.get(), name, &error)) << error.message();
        const PtrRef<Situation> read(new Situation);
        EXPECT_TRUE(SituationIo::readFolder(read.get(), name, &error)) << error.message();
        EXPECT_EQ(described(*read), described(*situation));
    }
    EXPECT_TRUE(folder.has("back\\slash/Situation.xml"));
}

// Names of letters from all over Unicode.
TEST(SituationIo, BringsBackAThousandSituations) {
    const ScratchFolder folder;
    const PtrRef<Situation> situation = fullSituation();
    const auto nameOf = [](wchar_t i) { return Str(std::wstring{L'a', wchar_t(0xA1 + i * 40), wchar_t(0x10000 + i)}); };
    const auto pathOf = [&](wchar_t i) { return Str(folder.path()) + "/" + nameOf(i); };
    for (wchar_t i = 0; i < 1000; ++i) {
        situation->setName(nameOf(i));
        const bool isFolder = i % 2 == 0;
        ASSERT_TRUE(isFolder ? SituationIo::writeFolder(situation.get(), pathOf(i))
                             : SituationIo::writeArchiveFile(situation.get(), pathOf(i)));
    }
    for (wchar_t i = 0; i < 1000; ++i) {
        situation->setName(nameOf(i));
        const bool isFolder = i % 2 == 0;
        const PtrRef<Situation> read(new Situation);
        ASSERT_TRUE(isFolder ? SituationIo::readFolder(read.get(), pathOf(i))
                             : SituationIo::readArchiveFile(read.get(), pathOf(i)));
        ASSERT_EQ(described(*read), described(*situation));
    }
}

TEST(SituationIo, FollowsALinkToTheFolder) {
    const ScratchFolder folder;
    std::filesystem::create_directory(folder / "real");
    std::filesystem::create_symlink("real", folder / "link");
    ASSERT_TRUE(SituationIo::writeFolder(fullSituation().get(), folder / "link"));
    EXPECT_TRUE(folder.has("real/Situation.xml"));
}

TEST(SituationIo, RefusesAnEmptyFolderName) {
    const PtrRef<Situation> situation = fullSituation();
    const std::string before = described(*situation);
    Error error;
    EXPECT_FALSE(SituationIo::writeFolder(situation.get(), "", &error));
    EXPECT_EQ(error.message(), "no folder is named: a situation needs one");
    error.clear();
    EXPECT_FALSE(SituationIo::readFolder(situation.get(), "", &error));
    EXPECT_EQ(error.message(), "no folder is named: a situation needs one");
    EXPECT_EQ(described(*situation), before);
}

TEST(SituationIo, NeedsASituation) {
    const ScratchFolder folder;
    const std::string path = folder.path();
    ASSERT_TRUE(SituationIo::writeFolder(fullSituation().get(), path));
    orvtest::AssertRecorder recorder;
    EXPECT_FALSE(SituationIo::writeFolder(nullptr, path + "/new"));
    EXPECT_FALSE(SituationIo::readFolder(nullptr, path));
    EXPECT_FALSE(SituationIo::writeArchiveFile(nullptr, path + "/a"));
    EXPECT_FALSE(SituationIo::readArchiveFile(nullptr, path + "/Situation.xml"));
    const orvtest::FailedAssert failed = {"OrvUnstructGrid/SituationIo", "situation", std::nullopt};
    EXPECT_EQ(recorder.take(), std::vector<orvtest::FailedAssert>(4, failed));
    EXPECT_EQ(folder.names(), std::vector<std::string>{"Situation.xml"});
}

// And leaves the situation as it was.
std::string whyNotRead(const std::string& path) {
    const PtrRef<Situation> situation = fullSituation();
    const std::string before = described(*situation);
    Error error;
    EXPECT_FALSE(SituationIo::readArchiveFile(situation.get(), path, &error));
    EXPECT_FALSE(SituationIo::readArchiveFile(situation.get(), path));
    EXPECT_EQ(described(*situation), before);
    return error.message().toStdString();
}

TEST(SituationIo, TellsWhyItDoesNotRead) {
    const ScratchFolder folder;
    const auto cannotOpen = [&](const std::string& name) { return "cannot open \"" + folder / name + "\": "; };
    std::filesystem::create_directory(folder / "folder");
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    folder.write("empty", "");
    folder.write("text", "text");
    std::filesystem::resize_file(folder.write("huge", ""), std::uintmax_t(1) << 40);
    EXPECT_EQ(whyNotRead(folder / "missing"), cannotOpen("missing") + "No such file or directory");
    EXPECT_EQ(whyNotRead(folder / "text/a"), cannotOpen("text/a") + "Not a directory");
    EXPECT_EQ(whyNotRead(folder / "folder"), cannotOpen("folder") + "Is a directory");
    EXPECT_EQ(whyNotRead(folder / "pipe"), cannotOpen("pipe") + "Not a regular file");
    EXPECT_EQ(whyNotRead("/dev/zero"), "cannot open \"/dev/zero\": Not a regular file");
    EXPECT_EQ(whyNotRead(folder / "empty"), folder / "empty, byte 0: not well-formed XML: No document element found");
    EXPECT_EQ(whyNotRead(folder / "text"), folder / "text, byte 3: not well-formed XML: No document element found");
    EXPECT_EQ(whyNotRead(folder / "huge"), folder / "huge: more than 33554432 bytes, which no situation has");
    Error error;
    EXPECT_FALSE(SituationIo::readFolder(PtrRef<Situation>(new Situation).get(), folder / "folder", &error));
    EXPECT_EQ(error.message(), cannotOpen("folder/Situation.xml") + "No such file or directory");
}

TEST(SituationIo, TellsThatAFileMustNotBeRead) {
    const ScratchFolder folder;
    std::filesystem::permissions(folder.path(), std::filesystem::perms(0755));
    std::filesystem::permissions(folder.write("secret", "x"), std::filesystem::perms(0));
    EXPECT_TRUE(orvtest::holdsForAnOrdinaryUser(
        [&] { return whyNotRead(folder / "secret") == "cannot open \"" + folder / "secret\": Permission denied"; }));
}

std::string whyNotWritten(const std::string& folder, const PtrRef<Situation>& situation = fullSituation()) {
    Error error;
    EXPECT_FALSE(SituationIo::writeFolder(situation.get(), folder, &error));
    EXPECT_FALSE(SituationIo::writeFolder(situation.get(), folder));
    return error.message().toStdString();
}

TEST(SituationIo, TellsWhyItDoesNotWrite) {
    const ScratchFolder folder;
    folder.write("file", "old");
    std::filesystem::create_directories(folder / "taken/Situation.xml");
    EXPECT_EQ(whyNotWritten(folder / "file"), "cannot make the folder \"" + folder / "file\": Not a directory");
    EXPECT_EQ(whyNotWritten(folder / "file/a"), "cannot make the folder \"" + folder / "file/a\": Not a directory");
    EXPECT_EQ(whyNotWritten(folder / "taken"), "cannot write \"" + folder / "taken/Situation.xml\": Is a directory");
    EXPECT_EQ(folder.read("file"), "old");
    Error error;
    EXPECT_FALSE(SituationIo::writeArchiveFile(fullSituation().get(), "/dev/full", &error));
    EXPECT_EQ(error.message(), "cannot write \"/dev/full\": Not a regular file");
    EXPECT_FALSE(SituationIo::writeArchiveFile(fullSituation().get(), folder / "no/a", &error));
    EXPECT_EQ(error.message(), "cannot write \"" + folder / "no/a\": No such file or directory");
}

TEST(SituationIo, MakesNoFolderForWhatCannotBeWritten) {
    const ScratchFolder folder;
    const PtrRef<Situation> situation(new Situation);
    situation->setUnknownXml("<situation a='" + std::string(33554432, 'x') + "'/>");
    EXPECT_EQ(whyNotWritten(folder / "new", situation),
              folder / "new/Situation.xml: more than 33554432 bytes, which no situation has");
    EXPECT_FALSE(folder.has("new"));
}

TEST(SituationIo, TellsThatAFolderMustNotBeMade) {
    const ScratchFolder folder;
    std::filesystem::create_directory(folder / "a");
    std::filesystem::permissions(folder.path(), std::filesystem::perms(0555));
    EXPECT_TRUE(orvtest::holdsForAnOrdinaryUser([&] {
        return whyNotWritten(folder / "b") == "cannot make the folder \"" + folder / "b\": Permission denied" &&
               whyNotWritten(folder / "a") == "cannot write \"" + folder / "a/Situation.xml\": Permission denied";
    }));
    std::filesystem::permissions(folder.path(), std::filesystem::perms(0755));
}

class SituationIoFaults : public testing::Test {
protected:
    SituationIoFaults() {
        old->setName("old");
        SituationIo::writeFolder(old.get(), folder.path());
        oldText = folder.read("Situation.xml");
        SituationIo::writeArchiveFile(fresh.get(), folder / "new");
        newText = folder.read("new");
        std::filesystem::remove(folder / "new");
    }

    const ScratchFolder folder;
    const PtrRef<Situation> old{new Situation};
    const PtrRef<Situation> fresh = fullSituation();
    std::string oldText;
    std::string newText;
};

TEST_F(SituationIoFaults, AFullDiskLeavesTheOldFile) {
    for (const std::size_t limit : {std::size_t(0), std::size_t(1), newText.size() - 1}) {
        Error error;
        {
            const orvtest::FileSizeLimit full(limit);
            EXPECT_FALSE(SituationIo::writeFolder(fresh.get(), folder.path(), &error));
        }
        EXPECT_EQ(error.message(), "cannot write \"" + folder / "Situation.xml\": File too large");
        EXPECT_EQ(folder.names(), std::vector<std::string>{"Situation.xml"});
        EXPECT_EQ(folder.read("Situation.xml"), oldText);
    }
}

TEST_F(SituationIoFaults, AnyCallThatFailsLeavesTheOldFileOrTheNewOne) {
    bool hasStruck = true;
    for (int change = 1; hasStruck; ++change) {
        SituationIo::writeFolder(old.get(), folder.path());
        orvtest::FileFaults faults(orvtest::FileFault::FAIL, change);
        Error error;
        const bool isWritten = SituationIo::writeFolder(fresh.get(), folder.path(), &error);
        hasStruck = faults.hasStruck();
        EXPECT_EQ(isWritten, error.isEmpty());
        EXPECT_EQ(folder.read("Situation.xml"), isWritten ? newText : oldText) << change;
        EXPECT_TRUE(isWritten || hasStruck);
    }
}

TEST_F(SituationIoFaults, AKilledProcessLeavesTheOldFileOrTheNewOne) {
    int kills = 0;
    while (orvtest::isKilledAt(kills + 1, [&] { SituationIo::writeFolder(fresh.get(), folder.path()); })) {
        ++kills;
        const std::string text = folder.read("Situation.xml");
        EXPECT_TRUE(text == oldText || text == newText) << kills;
        SituationIo::writeFolder(old.get(), folder.path());
    }
    EXPECT_GE(kills, 4); // opening, writing, syncing and renaming
    EXPECT_EQ(folder.read("Situation.xml"), newText);
}

TEST_F(SituationIoFaults, AKilledProcessMakesNoFolderThatLooksLikeASituation) {
    for (int change = 1;; ++change) {
        const std::string target = folder / "a/b";
        const bool isKilled = orvtest::isKilledAt(change, [&] { SituationIo::writeFolder(fresh.get(), target); });
        const bool isThere = folder.has("a/b/Situation.xml");
        EXPECT_TRUE(!isThere || folder.read("a/b/Situation.xml") == newText);
        if (!isKilled) {
            EXPECT_TRUE(isThere);
            return;
        }
        std::filesystem::remove_all(folder / "a");
    }
}

} // namespace
