#include "LibIo/rvfFileSystem.h"

#include "Tests/Support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>

using rvf::FileSystem;
using rvf::String;

namespace {

using TextFunction = String (*)(const String&);

struct TextCase {
    const wchar_t* path;
    const wchar_t* result;
};

void expectTexts(TextFunction function, std::initializer_list<TextCase> cases) {
    for (const TextCase& c : cases) {
        EXPECT_EQ(std::wstring(function(c.path).c_str()), c.result) << testing::PrintToString(std::wstring(c.path));
    }
}

TEST(FileSystemPath, SeparatorsOfBothKinds) {
    for (TextFunction function : {&FileSystem::fromNativeSeparators, &FileSystem::toNativeSeparators}) {
        expectTexts(
            function,
            {{L"a\\b\\c", L"a/b/c"}, {L"\\\\host\\x", L"//host/x"}, {L"a/b", L"a/b"}, {L"", L""}, {L"\\", L"/"}});
    }
}

TEST(FileSystemPath, AddTrailingSeparator) {
    expectTexts(&FileSystem::addTrailingSeparator,
                {{L"", L""}, {L"a", L"a/"}, {L"a/", L"a/"}, {L"a\\b", L"a/b/"}, {L"a\\", L"a/"}, {L"/", L"/"}});
}

TEST(FileSystemPath, RemoveTrailingSeparator) {
    expectTexts(&FileSystem::removeTrailingSeparator, {{L"", L""},
                                                       {L"a", L"a"},
                                                       {L"a/", L"a"},
                                                       {L"a//", L"a"},
                                                       {L"a\\b\\/", L"a/b"},
                                                       {L"/", L""},
                                                       {L"///", L""},
                                                       {L"/a", L"/a"}});
}

TEST(FileSystemPath, FileName) {
    expectTexts(&FileSystem::fileName, {{L"", L""},
                                        {L"a", L"a"},
                                        {L"a/", L""},
                                        {L"//", L""},
                                        {L"/", L""},
                                        {L"/a", L"a"},
                                        {L"a/b.txt", L"b.txt"},
                                        {L"a\\b", L"b"},
                                        {L"//host", L""},
                                        {L"\\\\host", L""},
                                        {L"//host/x", L"x"},
                                        {L"//host/share/x", L"x"},
                                        {L"///x", L"x"}});
}

TEST(FileSystemPath, Extension) {
    expectTexts(&FileSystem::extension, {{L"a/b.txt", L".txt"},
                                         {L"c.tar.gz", L".gz"},
                                         {L".bashrc", L""},
                                         {L"a/.bashrc", L""},
                                         {L".a.b", L".b"},
                                         {L"a.", L"."},
                                         {L"dir.d/file", L""},
                                         {L"dir.d\\file", L""},
                                         {L"dir.d/", L""},
                                         {L"a", L""},
                                         {L".", L""},
                                         {L"..", L""},
                                         {L"a/..", L""},
                                         {L"...", L"."},
                                         {L"//host.x", L""},
                                         {L"", L""}});
}

TEST(FileSystemPath, ParentPath) {
    expectTexts(&FileSystem::parentPath, {{L"a", L"a"},
                                          {L"", L""},
                                          {L"/a", L"/"},
                                          {L"/", L"/"},
                                          {L"a/b", L"a"},
                                          {L"a\\b", L"a"},
                                          {L"a/b/", L"a/b"},
                                          {L"/a/b", L"/a"},
                                          {L"//", L"//"},
                                          {L"//host", L"//host"},
                                          {L"//host/", L"//host/"},
                                          {L"//host/share", L"//host/"},
                                          {L"//host/share/x", L"//host/share"},
                                          {L"\\\\host\\share", L"//host/"}});
}

TEST(FileSystemPath, AbsoluteOrRelative) {
    for (const wchar_t* path : {L"/", L"/a", L"//host", L"\\a"}) {
        EXPECT_TRUE(FileSystem::isAbsolutePath(path));
        EXPECT_FALSE(FileSystem::isRelativePath(path));
    }
    for (const wchar_t* path : {L"", L"a", L"./a", L"../a", L"C:/a", L"a/b"}) {
        EXPECT_FALSE(FileSystem::isAbsolutePath(path));
        EXPECT_TRUE(FileSystem::isRelativePath(path));
    }
}

TEST(FileSystemPath, MakeAbsolute) {
    expectTexts(&FileSystem::makeAbsolute, {{L"", L""}, {L"/a/../b", L"/a/../b"}, {L"\\a\\b", L"/a/b"}});
    const String current = FileSystem::currentPath();
    EXPECT_EQ(FileSystem::makeAbsolute(L"../x"), current + L"/../x");
    EXPECT_EQ(FileSystem::makeAbsolute(L"a\\."), current + L"/a/.");
}

TEST(FileSystemPath, CurrentPath) {
    const orvtest::ScratchFolder folder;
    const std::string path = std::filesystem::canonical(folder.path()).string();
    std::filesystem::create_directory(folder / "\xC3\xA5");
    {
        orvtest::ScopedWorkingFolder working(folder / "\xC3\xA5");
        EXPECT_EQ(FileSystem::currentPath(), String(path) + L"/\u00E5");
    }
    // A backslash is a separator here, though it is part of a name on the disk.
    std::filesystem::create_directory(folder / "a\\b");
    orvtest::ScopedWorkingFolder working(folder / "a\\b");
    EXPECT_EQ(FileSystem::currentPath(), String(path) + L"/a/b");
}

TEST(FileSystemPath, CurrentPathThatCannotBeTold) {
    const orvtest::ScratchFolder folder;
    {
        std::filesystem::create_directory(folder / "gone");
        orvtest::ScopedWorkingFolder working(folder / "gone");
        std::filesystem::remove(folder / "gone");
        EXPECT_TRUE(FileSystem::currentPath().isEmpty());
        EXPECT_EQ(FileSystem::makeAbsolute(L"x"), String(L"/x"));
    }
    // 1024 bytes have room for 1023 characters and the terminator.
    std::string path = std::filesystem::canonical(folder.path()).string();
    while (path.size() < 800) {
        path += "/" + std::string(199, 'x');
    }
    path += "/" + std::string(1023 - path.size() - 1, 'y');
    for (const std::string& longPath : {path, path + "y"}) {
        std::filesystem::create_directories(longPath);
        orvtest::ScopedWorkingFolder working(longPath);
        EXPECT_EQ(FileSystem::currentPath(), longPath.size() == 1023 ? String(longPath) : String());
    }
}

const char* const VARIABLES[] = {"TMPDIR", "TMP", "TEMP", "TEMPDIR"};

class TempDirectory : public testing::Test {
protected:
    TempDirectory() {
        for (const char* variable : VARIABLES) {
            const char* value = std::getenv(variable);
            m_earlier.push_back(value ? std::optional<std::string>(value) : std::nullopt);
            unsetenv(variable);
        }
    }

    ~TempDirectory() override {
        for (size_t i = 0; i < m_earlier.size(); ++i) {
            if (m_earlier[i]) {
                setenv(VARIABLES[i], m_earlier[i]->c_str(), 1);
            } else {
                unsetenv(VARIABLES[i]);
            }
        }
    }

private:
    std::vector<std::optional<std::string>> m_earlier;
};

TEST_F(TempDirectory, IsTmpByDefault) {
    EXPECT_EQ(FileSystem::tempDirectoryPath(), String(L"/tmp"));
}

TEST_F(TempDirectory, TakesTheFirstVariableThatIsSet) {
    // From the last to the first: each one wins over those set before it.
    for (int i = 3; i >= 0; --i) {
        const std::string value = "/somewhere/" + std::to_string(i) + "/";
        setenv(VARIABLES[i], value.c_str(), 1);
        EXPECT_EQ(FileSystem::tempDirectoryPath(), String(value));
    }
}

TEST_F(TempDirectory, EmptyVariableWins) {
    setenv("TMPDIR", "", 1);
    setenv("TMP", "/somewhere", 1);
    EXPECT_TRUE(FileSystem::tempDirectoryPath().isEmpty());
}

TEST_F(TempDirectory, ValueStaysAsItIs) {
    setenv("TEMP", "no\\where", 1);
    EXPECT_EQ(FileSystem::tempDirectoryPath(), String(L"no\\where"));
    // Byte by byte, not as UTF-8.
    setenv("TEMP", "/\xC3\xA5", 1);
    EXPECT_EQ(FileSystem::tempDirectoryPath(), String(L"/\u00C3\u00A5"));
}

} // namespace
