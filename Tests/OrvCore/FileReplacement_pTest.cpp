#include "OrvCore/FileReplacement_p.h"

#include "Tests/Support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

#include <sys/stat.h>
#include <unistd.h>

using namespace orv;
using orvtest::ScratchFolder;

namespace {

mode_t rightsOf(const std::string& path) {
    struct stat status = {};
    ::stat(path.c_str(), &status);
    return status.st_mode & 07777;
}

void replace(const std::string& path, const std::string& content) {
    FileReplacement file;
    Str reason;
    ASSERT_TRUE(file.open(path, &reason)) << reason;
    file.write(content);
    ASSERT_TRUE(file.commit(&reason)) << reason;
}

TEST(FileReplacement, TakesThePlaceOfTheTargetAtTheEnd) {
    ScratchFolder folder;
    folder.write("a", "old");
    FileReplacement file;
    ASSERT_TRUE(file.open(folder / "a", nullptr));
    EXPECT_TRUE(file.temporaryName().starts_with(folder / "a.tmp" + std::to_string(::getpid()) + "-"));
    file.write("new");
    // More than any buffer, so that some of it has gone to the disk.
    file.write(std::string(1000000, 'x'));
    EXPECT_EQ(folder.read("a"), "old");
    ASSERT_TRUE(file.commit(nullptr));
    EXPECT_EQ(folder.read("a"), "new" + std::string(1000000, 'x'));
    EXPECT_EQ(folder.names(), std::vector<std::string>{"a"});
}

TEST(FileReplacement, GoesBackAndToTheEndAgain) {
    ScratchFolder folder;
    const std::string much(200000, 'x'); // more than the buffer holds
    FileReplacement file;
    ASSERT_TRUE(file.open(folder / "a", nullptr));
    file.write("abcdef");
    file.seek(1);
    EXPECT_EQ(file.position(), 1u);
    EXPECT_EQ(file.size(), 6u);
    file.write("B");
    file.seek(6);
    file.write(much);
    file.seek(3);
    file.write("DE");
    file.seek(200005);
    file.write("yz!"); // replaces one and appends two
    file.seek(0);
    file.write("A");
    file.seek(200000);
    file.write(much);
    EXPECT_EQ(file.size(), 400000u);
    ASSERT_TRUE(file.commit(nullptr));
    EXPECT_EQ(folder.read("a"), "ABcDEf" + much.substr(0, 199994) + much);
}

TEST(FileReplacement, LeavesNothingWithoutCommit) {
    ScratchFolder folder;
    folder.write("a", "old");
    {
        FileReplacement file;
        ASSERT_TRUE(file.open(folder / "a", nullptr));
        file.write("new");
    }
    EXPECT_EQ(folder.read("a"), "old");
    EXPECT_EQ(folder.names(), std::vector<std::string>{"a"});
}

TEST(FileReplacement, MakesAFileWithTheUsualRights) {
    ScratchFolder folder;
    const mode_t earlier = ::umask(027);
    replace(folder / "a", "");
    ::umask(earlier);
    EXPECT_EQ(rightsOf(folder / "a"), 0640u);
    EXPECT_EQ(folder.read("a"), "");
}

TEST(FileReplacement, KeepsTheRightsOfTheTarget) {
    ScratchFolder folder;
    ::chmod(folder.write("a", "old").c_str(), 0604);
    replace(folder / "a", "new");
    EXPECT_EQ(rightsOf(folder / "a"), 0604u);
}

TEST(FileReplacement, FollowsLinks) {
    ScratchFolder folder;
    folder.write("a", "old");
    std::filesystem::create_symlink("a", folder / "link");
    replace(folder / "link", "new");
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "link"));
    EXPECT_EQ(folder.read("a"), "new");
}

TEST(FileReplacement, WritesBesideNamesThatAreTaken) {
    ScratchFolder folder;
    const std::string taken = "a.tmp" + std::to_string(::getpid()) + "-0";
    folder.write(taken, "somebody's");
    replace(folder / "a", "new");
    EXPECT_EQ(folder.read("a"), "new");
    EXPECT_EQ(folder.read(taken), "somebody's");
}

TEST(FileReplacement, WritesToTheWorkingFolder) {
    ScratchFolder folder;
    const orvtest::ScopedWorkingFolder here(folder.path());
    replace("a", "new");
    EXPECT_EQ(folder.read("a"), "new");
}

TEST(FileReplacement, TellsWhatIsInTheWay) {
    ScratchFolder folder;
    const auto why = [&](const std::string& name) {
        FileReplacement file;
        Str reason;
        EXPECT_FALSE(file.open(folder / name, &reason));
        return reason;
    };
    std::filesystem::create_directory(folder / "folder");
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(why("folder"), "cannot write \"" + Str(folder / "folder") + "\": Is a directory");
    EXPECT_EQ(why("pipe"), "cannot write \"" + Str(folder / "pipe") + "\": Not a regular file");
    EXPECT_EQ(why("no/a"), "cannot write \"" + Str(folder / "no/a") + "\": No such file or directory");
    EXPECT_FALSE(FileReplacement().open(folder / "no/a", nullptr));
}

TEST(FileReplacement, TellsThatTheTargetsPlaceIsTaken) {
    ScratchFolder folder;
    FileReplacement file;
    ASSERT_TRUE(file.open(folder / "a", nullptr));
    std::filesystem::create_directory(folder / "a");
    Str reason;
    EXPECT_FALSE(file.commit(&reason));
    EXPECT_EQ(reason, "cannot write \"" + Str(folder / "a") + "\": Is a directory");
}

} // namespace
