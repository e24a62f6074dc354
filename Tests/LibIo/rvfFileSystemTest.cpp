#include "LibIo/rvfFileSystem.h"

#include "LibCore/rvfMath.h"
#include "Tests/Support/OrdinaryUser.h"
#include "Tests/Support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>

using orvtest::ScopedWorkingFolder;
using orvtest::ScratchFolder;
using rvf::FileSystem;
using rvf::String;

namespace {

String wide(const std::string& path) {
    return String::fromUtf8(path.c_str());
}

using Names = std::vector<std::wstring>;

Names sorted(const std::vector<String>& list) {
    Names names;
    for (const String& name : list) {
        names.push_back(name.c_str());
    }
    std::sort(names.begin(), names.end());
    return names;
}

class FileSystemTest : public testing::Test {
protected:
    String in(const std::string& name) const {
        return wide(folder / name);
    }

    void makeDirectory(const std::string& name) const {
        std::filesystem::create_directories(folder / name);
    }

    void makeLink(const std::string& target, const std::string& name) const {
        std::filesystem::create_symlink(target, folder / name);
    }

    // A link to nowhere, one to itself, a path through a file: all fail for root too.
    void makeBrokenPaths() const {
        folder.write("file", "abc");
        makeLink("nowhere", "dangling");
        makeLink("loop", "loop");
    }

    const ScratchFolder folder;
    const std::vector<std::string> broken = {"missing", "dangling", "loop", "file/below", std::string(300, 'x')};
};

TEST_F(FileSystemTest, PathExists) {
    makeBrokenPaths();
    EXPECT_TRUE(FileSystem::pathExists(in("file")));
    EXPECT_TRUE(FileSystem::pathExists(wide(folder.path())));
    makeLink("file", "link");
    EXPECT_TRUE(FileSystem::pathExists(in("link")));
    for (const std::string& name : broken) {
        EXPECT_FALSE(FileSystem::pathExists(in(name))) << name;
    }
    EXPECT_FALSE(FileSystem::pathExists(""));
}

TEST_F(FileSystemTest, PathThatCannotBeReadDoesNotExist) {
    folder.write("secret", "abc");
    chmod(folder.path().c_str(), 0755);
    chmod((folder / "secret").c_str(), 0);
    EXPECT_TRUE(orvtest::holdsForAnOrdinaryUser(
        [this] { return !FileSystem::pathExists(in("secret")) && FileSystem::fileExists(in("secret")); }));
    chmod((folder / "secret").c_str(), 0444);
    EXPECT_TRUE(orvtest::holdsForAnOrdinaryUser([this] { return FileSystem::pathExists(in("secret")); }));
}

TEST_F(FileSystemTest, FilesAndDirectoriesExist) {
    makeBrokenPaths();
    makeDirectory("dir");
    makeLink("file", "fileLink");
    makeLink("dir", "dirLink");
    for (const char* name : {"file", "fileLink"}) {
        EXPECT_TRUE(FileSystem::fileExists(in(name))) << name;
        EXPECT_FALSE(FileSystem::directoryExists(in(name))) << name;
    }
    for (const char* name : {"dir", "dirLink", "dir/", "."}) {
        EXPECT_FALSE(FileSystem::fileExists(in(name))) << name;
        EXPECT_TRUE(FileSystem::directoryExists(in(name))) << name;
    }
    for (const std::string& name : broken) {
        EXPECT_FALSE(FileSystem::fileExists(in(name))) << name;
        EXPECT_FALSE(FileSystem::directoryExists(in(name))) << name;
    }
    EXPECT_TRUE(FileSystem::fileExists("/dev/null"));
}

TEST_F(FileSystemTest, SocketsHaveTheBitOfADirectory) {
    const ScopedWorkingFolder working(folder.path());
    const sockaddr_un address = {AF_UNIX, "socket"};
    const int handle = socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_EQ(bind(handle, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    EXPECT_FALSE(FileSystem::fileExists(in("socket")));
    EXPECT_TRUE(FileSystem::directoryExists(in("socket")));
    close(handle);
}

TEST_F(FileSystemTest, BackslashesReachTheSystemAsTheyAre) {
    makeDirectory("a");
    folder.write("a\\b", "abc");
    EXPECT_TRUE(FileSystem::pathExists(in("a\\b")));
    EXPECT_TRUE(FileSystem::fileExists(in("a\\b")));
    EXPECT_EQ(FileSystem::fileSize(in("a\\b")), 3u);
    EXPECT_TRUE(FileSystem::createDirectory(in("a\\c")));
    EXPECT_TRUE(folder.has("a\\c"));
    EXPECT_FALSE(folder.has("a/c"));
    EXPECT_TRUE(FileSystem::deleteDirectory(in("a\\c")));
    EXPECT_TRUE(FileSystem::deleteFile(in("a\\b")));
}

TEST_F(FileSystemTest, NamesReachTheSystemAsUtf8) {
    folder.write("\xC3\xA5", "abc");
    EXPECT_TRUE(FileSystem::fileExists(wide(folder.path()) + L"/\u00E5"));
    EXPECT_EQ(FileSystem::fileSize(wide(folder.path()) + L"/\u00E5"), 3u);
}

TEST_F(FileSystemTest, CreateDirectory) {
    makeBrokenPaths();
    EXPECT_TRUE(FileSystem::createDirectory(in("new")));
    EXPECT_TRUE(std::filesystem::is_directory(folder / "new"));
    EXPECT_FALSE(FileSystem::createDirectory(in("new")));
    EXPECT_FALSE(FileSystem::createDirectory(in("a/b")));
    EXPECT_FALSE(FileSystem::createDirectory(in("file")));
    EXPECT_FALSE(FileSystem::createDirectory(in("file/below")));
    EXPECT_FALSE(FileSystem::createDirectory(""));
}

TEST_F(FileSystemTest, NewDirectoriesObeyTheMask) {
    const std::pair<mode_t, mode_t> cases[] = {{0, 0775}, {022, 0755}, {077, 0700}};
    for (const auto& [mask, mode] : cases) {
        const std::string name = "mask" + std::to_string(mask);
        const mode_t earlier = umask(mask);
        EXPECT_TRUE(FileSystem::createDirectory(in(name)));
        umask(earlier);
        struct stat result;
        ASSERT_EQ(stat((folder / name).c_str(), &result), 0);
        EXPECT_EQ(result.st_mode & 0777u, mode);
    }
}

TEST_F(FileSystemTest, CreateDirectoryTree) {
    makeBrokenPaths();
    EXPECT_TRUE(FileSystem::createDirectoryTree(in("a/b/c")));
    EXPECT_TRUE(std::filesystem::is_directory(folder / "a/b/c"));
    EXPECT_TRUE(FileSystem::createDirectoryTree(in("a/b/c")));
    EXPECT_TRUE(FileSystem::createDirectoryTree(in("d/e/")));
    EXPECT_TRUE(std::filesystem::is_directory(folder / "d/e"));
    EXPECT_TRUE(FileSystem::createDirectoryTree(in("f\\g")));
    EXPECT_TRUE(std::filesystem::is_directory(folder / "f/g"));
    // A file of that name will do, one on the way will not.
    EXPECT_TRUE(FileSystem::createDirectoryTree(in("file")));
    EXPECT_FALSE(FileSystem::createDirectoryTree(in("file/below")));
    EXPECT_FALSE(FileSystem::createDirectoryTree(in("file/below/further")));
    EXPECT_FALSE(FileSystem::createDirectoryTree(in("loop/below")));
    EXPECT_FALSE(FileSystem::createDirectoryTree(""));
    // The parent can be made, the name is too long.
    EXPECT_FALSE(FileSystem::createDirectoryTree(in("parent/" + std::string(300, 'x'))));
    EXPECT_TRUE(folder.has("parent"));
}

TEST_F(FileSystemTest, CreateDirectoryTreeFromTheWorkingFolder) {
    ScopedWorkingFolder working(folder.path());
    EXPECT_TRUE(FileSystem::createDirectoryTree("x/y"));
    EXPECT_TRUE(std::filesystem::is_directory(folder / "x/y"));
    // A dangling link counts as existing.
    makeLink("nowhere/at/all", "dangling");
    EXPECT_TRUE(FileSystem::createDirectoryTree("dangling"));
}

TEST_F(FileSystemTest, CreateDirectoryTreeEndsWhereThereIsNoParent) {
    makeDirectory("gone");
    ScopedWorkingFolder working(folder / "gone");
    std::filesystem::remove(folder / "gone");
    EXPECT_FALSE(FileSystem::createDirectoryTree("x"));
    EXPECT_FALSE(FileSystem::createDirectoryTree("x/y"));
}

TEST_F(FileSystemTest, CopyFile) {
    std::string contents(100000, 'x');
    contents[5] = '\0';
    contents[6] = '\xFF';
    folder.write("from", contents);
    EXPECT_TRUE(FileSystem::copyFile(in("from"), in("to")));
    EXPECT_EQ(folder.read("to"), contents);
    folder.write("from", "short");
    EXPECT_TRUE(FileSystem::copyFile(in("from"), in("to")));
    EXPECT_EQ(folder.read("to"), "short");
    EXPECT_EQ(folder.read("from"), "short");
}

TEST_F(FileSystemTest, CopyOfAnEmptyFileIsFalse) {
    folder.write("from", "");
    folder.write("to", "old");
    EXPECT_FALSE(FileSystem::copyFile(in("from"), in("to")));
    EXPECT_TRUE(folder.has("to"));
    EXPECT_EQ(folder.read("to"), "");
}

TEST_F(FileSystemTest, CopyWithoutSourceOrDestination) {
    makeBrokenPaths();
    folder.write("to", "old");
    for (const std::string& name : broken) {
        EXPECT_FALSE(FileSystem::copyFile(in(name), in("to"))) << name;
        EXPECT_FALSE(FileSystem::copyFile(in(name), in("new"))) << name;
    }
    EXPECT_EQ(folder.read("to"), "old");
    EXPECT_FALSE(folder.has("new"));
    EXPECT_FALSE(FileSystem::copyFile(in("file"), in("missing/to")));
    EXPECT_FALSE(FileSystem::copyFile(in("file"), wide(folder.path())));
    // A directory opens for reading and then gives nothing.
    EXPECT_FALSE(FileSystem::copyFile(wide(folder.path()), in("to")));
    EXPECT_EQ(folder.read("to"), "");
    // A full disk.
    EXPECT_FALSE(FileSystem::copyFile(in("file"), "/dev/full"));
}

TEST_F(FileSystemTest, DeleteFile) {
    makeBrokenPaths();
    makeDirectory("dir");
    makeLink("file", "link");
    EXPECT_TRUE(FileSystem::deleteFile(in("link")));
    EXPECT_TRUE(folder.has("file"));
    EXPECT_TRUE(FileSystem::deleteFile(in("dangling")));
    EXPECT_TRUE(FileSystem::deleteFile(in("file")));
    EXPECT_FALSE(folder.has("file"));
    EXPECT_FALSE(FileSystem::deleteFile(in("file")));
    EXPECT_FALSE(FileSystem::deleteFile(in("dir")));
    EXPECT_TRUE(folder.has("dir"));
}

TEST_F(FileSystemTest, DeleteDirectory) {
    makeDirectory("full/empty");
    folder.write("file", "abc");
    makeLink("full", "link");
    EXPECT_FALSE(FileSystem::deleteDirectory(in("full")));
    EXPECT_FALSE(FileSystem::deleteDirectory(in("link")));
    EXPECT_TRUE(FileSystem::deleteDirectory(in("full/empty")));
    EXPECT_TRUE(FileSystem::deleteDirectory(in("full")));
    EXPECT_FALSE(FileSystem::deleteDirectory(in("full")));
    EXPECT_FALSE(FileSystem::deleteDirectory(in("file")));
}

TEST_F(FileSystemTest, DeleteAllFilesInDirectory) {
    makeDirectory("dir/sub");
    makeDirectory("other");
    folder.write("dir/a", "");
    folder.write("dir/b", "");
    folder.write("dir/sub/c", "");
    folder.write("other/d", "");
    makeLink("../other", "dir/link");
    EXPECT_TRUE(FileSystem::deleteAllFilesInDirectory(in("dir")));
    EXPECT_FALSE(folder.has("dir/a"));
    EXPECT_FALSE(folder.has("dir/b"));
    EXPECT_FALSE(folder.has("dir/link"));
    EXPECT_TRUE(folder.has("dir/sub/c"));
    EXPECT_TRUE(folder.has("other/d"));
    EXPECT_TRUE(FileSystem::deleteAllFilesInDirectory(in("dir/")));
    EXPECT_FALSE(FileSystem::deleteAllFilesInDirectory(in("missing")));
    EXPECT_FALSE(FileSystem::deleteAllFilesInDirectory(in("other/d")));
}

TEST_F(FileSystemTest, DeletingGoesOnAfterAFailure) {
    // The name's two bytes are read as two characters, and so do not lead back to the file.
    folder.write("\xC3\xA5", "");
    for (char name = 'a'; name <= 'z'; ++name) {
        folder.write(std::string(1, name), "");
    }
    EXPECT_FALSE(FileSystem::deleteAllFilesInDirectory(wide(folder.path())));
    EXPECT_TRUE(folder.has("\xC3\xA5"));
    for (char name = 'a'; name <= 'z'; ++name) {
        EXPECT_FALSE(folder.has(std::string(1, name)));
    }
}

TEST_F(FileSystemTest, RightsAreNeededForChanges) {
    makeDirectory("locked/dir");
    folder.write("locked/file", "abc");
    folder.write("secret", "abc");
    folder.write("kept", "old");
    for (const auto& [name, mode] : {std::pair("", 0777), {"locked", 0555}, {"secret", 0}, {"kept", 0444}}) {
        chmod((folder / name).c_str(), static_cast<mode_t>(mode));
    }
    EXPECT_TRUE(orvtest::holdsForAnOrdinaryUser([this] {
        return !FileSystem::createDirectory(in("locked/new")) && !FileSystem::createDirectoryTree(in("locked/a/b")) &&
               !FileSystem::deleteFile(in("locked/file")) && !FileSystem::deleteDirectory(in("locked/dir")) &&
               !FileSystem::deleteAllFilesInDirectory(in("locked")) && !FileSystem::copyFile(in("secret"), in("new")) &&
               !FileSystem::copyFile(in("locked/file"), in("kept"));
    }));
    chmod((folder / "locked").c_str(), 0755);
    EXPECT_FALSE(folder.has("new"));
    EXPECT_TRUE(folder.has("locked/file"));
    EXPECT_EQ(folder.read("kept"), "old");
}

TEST_F(FileSystemTest, SizeOfASecretCanBeTold) {
    folder.write("secret", "abc");
    chmod(folder.path().c_str(), 0755);
    chmod((folder / "secret").c_str(), 0);
    EXPECT_TRUE(orvtest::holdsForAnOrdinaryUser([this] {
        return FileSystem::fileSize(in("secret")) == 3 && FileSystem::fileContentsCrc(in("secret"), 0) == 0;
    }));
}

TEST_F(FileSystemTest, DeleteDirectoryRecursive) {
    makeDirectory("top/a/b");
    makeDirectory("top/c");
    makeDirectory("other");
    folder.write("other/kept", "abc");
    folder.write("top/file", "");
    folder.write("top/a/b/file", "");
    makeLink("../other", "top/link");
    makeLink("nowhere", "top/c/dangling");
    EXPECT_TRUE(FileSystem::deleteDirectoryRecursive(in("top")));
    EXPECT_FALSE(folder.has("top"));
    EXPECT_EQ(folder.read("other/kept"), "abc");
    EXPECT_FALSE(FileSystem::deleteDirectoryRecursive(in("top")));
    EXPECT_FALSE(FileSystem::deleteDirectoryRecursive(in("other/kept")));
    EXPECT_EQ(folder.read("other/kept"), "abc");
}

TEST_F(FileSystemTest, DeleteDirectoryRecursiveOfALinkEmptiesItsDirectory) {
    makeDirectory("other");
    folder.write("other/file", "");
    makeLink("other", "link");
    EXPECT_FALSE(FileSystem::deleteDirectoryRecursive(in("link")));
    EXPECT_TRUE(folder.has("link"));
    EXPECT_TRUE(folder.has("other"));
    EXPECT_FALSE(folder.has("other/file"));
}

TEST_F(FileSystemTest, DeleteDirectoryRecursiveGoesOnAfterAFailure) {
    makeDirectory("top/a");
    makeDirectory("top/b");
    makeDirectory("top/c");
    folder.write("top/b/\xC3\xA5", "");
    folder.write("top/a/file", "");
    folder.write("top/c/file", "");
    EXPECT_FALSE(FileSystem::deleteDirectoryRecursive(in("top")));
    EXPECT_FALSE(folder.has("top/a"));
    EXPECT_TRUE(folder.has("top/b/\xC3\xA5"));
    EXPECT_FALSE(folder.has("top/c"));
}

TEST_F(FileSystemTest, GetDirectoryContents) {
    makeBrokenPaths();
    makeDirectory("dir");
    makeDirectory(".hidden");
    folder.write(".rc", "");
    makeLink("dir", "link");
    std::vector<String> files = {L"earlier file"};
    std::vector<String> directories = {L"earlier directory"};
    EXPECT_TRUE(FileSystem::getDirectoryContents(wide(folder.path()), &files, &directories));
    EXPECT_EQ(sorted(files), (Names{L".rc", L"dangling", L"earlier file", L"file", L"link", L"loop"}));
    EXPECT_EQ(sorted(directories), (Names{L".hidden", L"dir", L"earlier directory"}));
}

TEST_F(FileSystemTest, GetDirectoryContentsInTheSystemsOrder) {
    for (const char* name : {"c", "a", "b", "e", "d"}) {
        folder.write(name, "");
    }
    std::vector<std::string> expected;
    for (const auto& entry : std::filesystem::directory_iterator(folder.path())) {
        expected.push_back(entry.path().filename());
    }
    std::vector<std::string> found;
    for (const String& name : FileSystem::getAllFilesInDirectory(wide(folder.path()))) {
        found.push_back(name.toUtf8().ptr());
    }
    EXPECT_EQ(found, expected);
}

TEST_F(FileSystemTest, GetDirectoryContentsNeedsNoLists) {
    makeBrokenPaths();
    makeDirectory("dir");
    std::vector<String> list;
    EXPECT_TRUE(FileSystem::getDirectoryContents(wide(folder.path()), nullptr, nullptr));
    EXPECT_TRUE(FileSystem::getDirectoryContents(wide(folder.path()), nullptr, &list));
    EXPECT_EQ(sorted(list), (Names{L"dir"}));
    EXPECT_FALSE(FileSystem::getDirectoryContents(in("missing"), nullptr, nullptr));
    EXPECT_FALSE(FileSystem::getDirectoryContents(in("file"), &list, &list));
    EXPECT_FALSE(FileSystem::getDirectoryContents("", &list, &list));
    EXPECT_EQ(sorted(list), (Names{L"dir"}));
}

TEST_F(FileSystemTest, DirectoryThatCannotBeRead) {
    makeDirectory("secret");
    chmod(folder.path().c_str(), 0755);
    chmod((folder / "secret").c_str(), 0);
    EXPECT_TRUE(orvtest::holdsForAnOrdinaryUser(
        [this] { return !FileSystem::getDirectoryContents(in("secret"), nullptr, nullptr); }));
}

TEST_F(FileSystemTest, NamesAreReadByteByByte) {
    folder.write("\xC3\xA5", "");
    const std::vector<String> files = FileSystem::getAllFilesInDirectory(wide(folder.path()));
    EXPECT_EQ(sorted(files), (Names{L"\u00C3\u00A5"}));
    EXPECT_FALSE(FileSystem::fileExists(wide(folder.path()) + L"/" + files.at(0)));
    EXPECT_EQ(sorted(FileSystem::findFilesInDirectory(wide(folder.path()), "")), (Names{L"\u00C3\u00A5"}));
}

TEST_F(FileSystemTest, GetAllFilesInDirectory) {
    makeBrokenPaths();
    makeDirectory("dir");
    EXPECT_EQ(sorted(FileSystem::getAllFilesInDirectory(wide(folder.path()))), (Names{L"dangling", L"file", L"loop"}));
    EXPECT_TRUE(FileSystem::getAllFilesInDirectory(in("dir")).empty());
    EXPECT_TRUE(FileSystem::getAllFilesInDirectory(in("missing")).empty());
    EXPECT_TRUE(FileSystem::getAllFilesInDirectory(in("file")).empty());
}

TEST_F(FileSystemTest, FindFilesInDirectory) {
    makeDirectory("a.txt");
    for (const char* name : {"b.txt", "c.txt", ".d.txt", "e.dat", "B.TXT", "\xC3\xA5.txt"}) {
        folder.write(name, "");
    }
    makeLink("a.txt", "link.txt");
    const String path = wide(folder.path());
    auto find = [&path](const String& pattern) { return sorted(FileSystem::findFilesInDirectory(path, pattern)); };
    EXPECT_EQ(find("*.txt"), (Names{L".d.txt", L"b.txt", L"c.txt", L"link.txt", L"\u00C3\u00A5.txt"}));
    EXPECT_EQ(find("?.dat"), (Names{L"e.dat"}));
    EXPECT_EQ(find("[bc]*"), (Names{L"b.txt", L"c.txt"}));
    EXPECT_EQ(find(L"\u00E5*"), (Names{L"\u00C3\u00A5.txt"}));
    // A backslash takes the meaning of what follows away.
    EXPECT_EQ(find("\\b.txt"), (Names{L"b.txt"}));
    EXPECT_EQ(find("\\*.txt"), Names());
    EXPECT_EQ(find("b"), Names());
    EXPECT_EQ(find("").size(), 7u);
    EXPECT_TRUE(FileSystem::findFilesInDirectory(in("missing"), "*").empty());
    EXPECT_TRUE(FileSystem::findFilesInDirectory(in("e.dat"), "").empty());
}

TEST_F(FileSystemTest, FileSize) {
    makeBrokenPaths();
    EXPECT_EQ(FileSystem::fileSize(in("file")), 3u);
    folder.write("empty", "");
    EXPECT_EQ(FileSystem::fileSize(in("empty")), 0u);
    for (const std::string& name : broken) {
        EXPECT_EQ(FileSystem::fileSize(in(name)), 0u) << name;
    }
    // Beyond 32 bits, without using the space.
    folder.write("large", "x");
    ASSERT_EQ(truncate((folder / "large").c_str(), 5000000000), 0);
    EXPECT_EQ(FileSystem::fileSize(in("large")), 5000000000u);
}

TEST_F(FileSystemTest, FileContentsCrc) {
    folder.write("digits", "123456789");
    EXPECT_EQ(FileSystem::fileContentsCrc(in("digits"), 0), 0xCBF43926u);
    EXPECT_EQ(FileSystem::fileContentsCrc(in("digits"), 9), 0xCBF43926u);
    EXPECT_EQ(FileSystem::fileContentsCrc(in("digits"), 1000), 0xCBF43926u);
    EXPECT_EQ(FileSystem::fileContentsCrc(in("digits"), 4), rvf::Math::crc("1234", 4));
}

TEST_F(FileSystemTest, FileContentsCrcOfNothing) {
    makeBrokenPaths();
    folder.write("empty", "");
    EXPECT_EQ(FileSystem::fileContentsCrc(in("empty"), 0), 0u);
    for (const std::string& name : broken) {
        EXPECT_EQ(FileSystem::fileContentsCrc(in(name), 0), 0u) << name;
    }
    // A directory has a size, and cannot be read.
    EXPECT_EQ(FileSystem::fileContentsCrc(wide(folder.path()), 0), 0u);
    EXPECT_EQ(FileSystem::fileContentsCrc("/proc", 5), 0u);
}

} // namespace
