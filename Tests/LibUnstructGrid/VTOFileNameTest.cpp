#include "LibUnstructGrid/VTOFileName.h"

#include "Tests/LibUnstructGrid/VTOStringSupport.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/time.h>

using orvtest::AssertRecorder;
using orvtest::failedIn;
using orvtest::text;

namespace {

std::vector<orvtest::FailedAssert> failed(std::initializer_list<const char*> expressions) {
    return failedIn("VTOFileName", expressions);
}

struct NameCase {
    const wchar_t* name;
    bool flag;
    const wchar_t* result;
};

TEST(VTOFileName, SeparatorIsTheSlash) {
    EXPECT_EQ(text(VTGetDirectorySeparator()), L"/");
}

TEST(VTOFileName, FilePath) {
    const NameCase cases[] = {
        {L"a/b/c.txt", true, L"a/b/"},
        {L"a/b/c.txt", false, L"a/b"},
        {L"/a", true, L"/"},
        {L"/a", false, L"/"},
        {L"a", true, L""},
        {L"a", false, L""},
        {L"", true, L""},
        {L"a/", true, L"a/"},
        {L"a/", false, L"a"},
        {L"\"/a b/c\"", true, L"/a b/"},
        {L"\"/a b/c\"", false, L"/a b"},
        {L"a\\b", true, L""},
        {L"//", false, L"/"},
        {L"\"/a", false, L""},
    };
    for (const NameCase& c : cases) {
        EXPECT_EQ(text(VTGetFilePath(c.name, c.flag)), c.result) << text(c.name) << c.flag;
        EXPECT_FALSE(VTGetFilePath(c.name, c.flag).IsNull());
    }
    EXPECT_TRUE(VTGetFilePath(VTString(), true) == VTString(L""));
}

TEST(VTOFileName, FileName) {
    const NameCase cases[] = {
        {L"a/b.c/d.tar.gz", true, L"d.tar.gz"},
        {L"a/b.c/d.tar.gz", false, L"d.tar"},
        {L"a/.profile", false, L".profile"},
        {L".profile", false, L".profile"},
        {L"a.txt", false, L"a"},
        {L"a/", true, L""},
        {L"a\\b.txt", true, L"a\\b.txt"},
        {L"a\\b.txt", false, L"a\\b"},
        // Quote characters go with a "/" only.
        {L"\"a/b.txt\"", true, L"b.txt"},
        {L"\"a/b.txt\"", false, L"b"},
        {L"\"b.txt\"", true, L"\"b.txt\""},
        {L"", true, L""},
        {L"", false, L""},
    };
    for (const NameCase& c : cases) {
        EXPECT_EQ(text(VTGetFileName(c.name, c.flag)), c.result) << text(c.name) << c.flag;
    }
    EXPECT_EQ(text(VTGetFileName(VTString(), true)), L"");
}

TEST(VTOFileName, CombinesPathAndName) {
    EXPECT_EQ(text(VTCombinePathAndFileName(L"a", L"b")), L"a/b");
    EXPECT_EQ(text(VTCombinePathAndFileName(L"a/", L"b")), L"a/b");
    EXPECT_EQ(text(VTCombinePathAndFileName(L"a\\", L"b")), L"a\\/b");
    EXPECT_EQ(text(VTCombinePathAndFileName(L"/", L"b")), L"/b");
    EXPECT_EQ(text(VTCombinePathAndFileName(L"", L"b")), L"b");
    EXPECT_EQ(text(VTCombinePathAndFileName(VTString(), L"b")), L"b");
    EXPECT_EQ(text(VTCombinePathAndFileName(L"a", L"")), L"a/");
}

TEST(VTOFileName, NativePath) {
    EXPECT_EQ(text(VTGetAsNativePath(L"C:\\a\\b/c")), L"C:/a/b/c");
    EXPECT_EQ(text(VTGetAsNativePath(L"")), L"");
}

TEST(VTOFileName, ComparesNames) {
    EXPECT_TRUE(VTCompareFileNames(L"a/b", L"a/b"));
    EXPECT_TRUE(VTCompareFileNames(L"a\\b", L"a/b"));
    EXPECT_TRUE(VTCompareFileNames(L"a/b", L"a\\b"));
    EXPECT_TRUE(VTCompareFileNames(L"  a/b\n", L"a/b\t"));
    EXPECT_FALSE(VTCompareFileNames(L"a/b", L"A/b"));
    EXPECT_FALSE(VTCompareFileNames(L"a/b", L"a/b/"));
    EXPECT_FALSE(VTCompareFileNames(L"\x01"
                                    L"a",
                                    L"a"));
    EXPECT_TRUE(VTCompareFileNames(VTString(), VTString()));
    EXPECT_FALSE(VTCompareFileNames(VTString(), L""));
}

TEST(VTOFileName, QuotesNames) {
    EXPECT_EQ(text(VTQuoteFileName(L"a b")), L"\"a b\"");
    EXPECT_EQ(text(VTQuoteFileName(L" \"a \"b\" ")), L"\"a b\"");
    // Blanks inside the quotes go too; control characters stay.
    EXPECT_EQ(text(VTQuoteFileName(L"\" a \"")), L"\"a\"");
    EXPECT_EQ(text(VTQuoteFileName(L"a\x01")), L"\"a\x01\"");
    EXPECT_EQ(text(VTQuoteFileName(L"")), L"\"\"");
    EXPECT_EQ(text(VTQuoteFileName(VTString())), L"\"\"");
}

TEST(VTOFileName, RelativeUnlessASlashIsInFront) {
    AssertRecorder recorder;
    for (const wchar_t* szName : {L"", L"a", L"a/b", L"C:/a", L"C:\\a", L"\\a", L"\\\\host\\a", L"./a", L" /a"}) {
        EXPECT_TRUE(VTIsRelativePath(szName)) << text(szName);
    }
    EXPECT_TRUE(VTIsRelativePath(VTString()));
    EXPECT_FALSE(VTIsRelativePath(L"/"));
    EXPECT_FALSE(VTIsRelativePath(L"/a"));
    EXPECT_TRUE(recorder.take().empty());
}

TEST(VTOFileName, Extension) {
    const std::pair<const wchar_t*, const wchar_t*> cases[] = {
        {L"a.txt", L".txt"}, {L"a.b/c", L""},    {L"a.b/c.d.e", L".e"}, {L"a", L""},          {L"a.", L"."},
        {L"", L""},          {L"a/.rc", L".rc"}, {L"a.b\\c", L".b\\c"}, {L"\"a/b.c\"", L".c"}};
    for (const auto& [szName, szExtension] : cases) {
        EXPECT_EQ(text(VTGetFileExtension(szName)), szExtension) << text(szName);
        EXPECT_FALSE(VTGetFileExtension(szName).IsNull());
    }
    EXPECT_TRUE(VTGetFileExtension(VTString()) == VTString(L""));
}

TEST(VTOFileName, RemovesExtensions) {
    const NameCase cases[] = {
        {L"a.txt", true, L"a"},
        {L"a.tar.gz", true, L"a.tar"},
        {L"d.d/a.b", true, L"d.d/a"},
        {L"a.", true, L"a"},
        {L"a", false, L"a"},
        {L"", false, L""},
        {L".profile", false, L".profile"},
        {L"dir.d/file", false, L"dir.d/file"},
        {L"dir.d\\file", false, L"dir.d\\file"},
        {L"a/.profile", true, L"a/"},
        // With a backslash anywhere, "/" bounds nothing.
        {L"a\\b.c/d", true, L"a\\b"},
        {L"a/b.c\\d", false, L"a/b.c\\d"},
    };
    for (const NameCase& c : cases) {
        VTString sName(c.name);
        EXPECT_EQ(VTRemoveFileExtension(&sName), c.flag) << text(c.name);
        EXPECT_EQ(text(sName), c.result);
    }
    VTString sNull;
    EXPECT_FALSE(VTRemoveFileExtension(&sNull));
}

TEST(VTOFileName, ReplacesExtensions) {
    const std::tuple<const wchar_t*, const wchar_t*, const wchar_t*> cases[] = {
        {L"a.txt", L".dat", L"a.dat"}, {L"a.txt", L"dat", L"a.dat"},  {L"a.b.txt", L"dat", L"a.b.dat"},
        {L"a", L".dat", L"a"},         {L".rc", L".dat", L".rc"},     {L"a.txt", L"", L"a.txt"},
        {L"a.txt", L" \t", L"a.txt"},  {L"d.d/a", L".dat", L"d.d/a"}, {L"a.txt", L".", L"a."}};
    for (const auto& [szName, szExtension, szResult] : cases) {
        VTString sName(szName);
        VTReplaceFileExtension(&sName, szExtension);
        EXPECT_EQ(text(sName), szResult) << text(szName) << ' ' << text(szExtension);
    }
    VTString sName(L"a.txt");
    VTReplaceFileExtension(&sName, VTString());
    EXPECT_EQ(text(sName), L"a.txt");
}

TEST(VTOFileName, SetsExtensions) {
    const std::tuple<const wchar_t*, const wchar_t*, bool, const wchar_t*> cases[] = {
        {L"a", L".dat", false, L"a.dat"},
        {L"a", L"dat", true, L"a.dat"},
        {L"d.d/a", L"dat", true, L"d.d/a.dat"},
        {L"a.txt", L".dat", true, L"a.dat"},
        {L"a.txt", L".dat", false, L"a.txt.dat"},
        {L"a.txt", L"txt", false, L"a.txt"},
        {L"a.txt", L".TXT", false, L"a.txt.TXT"},
        {L"a.txt", L" ", true, L"a.txt"},
        {L"", L"dat", false, L".dat"},
        // All extension, but nothing that could be removed.
        {L".rc", L"dat", true, L".rc"},
        {L".rc", L"dat", false, L".rc.dat"},
    };
    for (const auto& [szName, szExtension, bForce, szResult] : cases) {
        VTString sName(szName);
        VTSetFileExtension(&sName, szExtension, bForce);
        EXPECT_EQ(text(sName), szResult) << text(szName) << ' ' << text(szExtension) << bForce;
    }
}

TEST(VTOFileName, ExtensionsNeedAName) {
    AssertRecorder recorder;
    EXPECT_FALSE(VTRemoveFileExtension(nullptr));
    EXPECT_EQ(recorder.take(), failed({"psFileName"}));
    VTReplaceFileExtension(nullptr, L".dat");
    EXPECT_EQ(recorder.take(), failed({"psFileName"}));
    VTSetFileExtension(nullptr, L".dat", true);
    EXPECT_EQ(recorder.take(), failed({"psFileName"}));
}

struct TwoNamesCase {
    const wchar_t* file;
    const wchar_t* base;
    const wchar_t* result;
};

TEST(VTOFileName, RelativeName) {
    const TwoNamesCase cases[] = {
        // Either relative.
        {L"a/b", L"/a/c", L"a/b"},
        {L"/a/b", L"a/c", L"/a/b"},
        {L"C:/a/b", L"C:/a/c", L"C:/a/b"},
        {L"", L"/a/c", L""},
        // Fewer than two characters in common.
        {L"/a/b", L"/c/d", L"/a/b"},
        {L"/b", L"/c", L"/b"},
        {L"/a/b", L"/A/b", L"/a/b"},
        {L"/a/b/c", L"/a/b/d", L"c"},
        {L"/a/b/c", L"/a/b/d/e", L"../c"},
        {L"/a/b/c", L"/a/b/d/e/f", L"../../c"},
        {L"/a/b/c/d", L"/a/b/e", L"c/d"},
        {L"/a/b/c", L"/a/d/e", L"../b/c"},
        {L"/a/b/c", L"/a/d/e/f", L"../../b/c"},
        // Separators of either kind count.
        {L"/a\\b\\c", L"/a\\b\\d\\e", L"../c"},
        // Characters are compared, not folders.
        {L"/ab/x", L"/ac/y", L"../b/x"},
        {L"/abc/x", L"/abcd/y", L"../x"},
        {L"/abcd/x", L"/abc/y", L"../d/x"},
        // Only what stands before the last separator of both is compared.
        {L"/a/bc/d", L"/a/bc", L"bc/d"},
        {L"/a/bc", L"/a/bc/d", L"../bc"},
        // Nothing is left of a folder that holds the base.
        {L"/a/", L"/a/b", L"/a/"},
        {L"/a/b/", L"/a/b/c", L"/a/b/"},
    };
    for (const TwoNamesCase& c : cases) {
        EXPECT_EQ(text(VTGetRelativeFilename(c.file, c.base)), c.result) << text(c.file) << " from " << text(c.base);
    }
}

TEST(VTOFileName, AbsoluteName) {
    const TwoNamesCase cases[] = {
        {L"/a/b", L"/c/d", L"/a/b"},
        {L"/a/../b", L"/c/d", L"/a/../b"},
        {L"a/b", L"c/d", L"a/b"},
        {L"../b", L"c/d", L"../b"},
        {L"a", L"/c/d", L"/c/a"},
        {L"a/b", L"/c/d/e", L"/c/d/a/b"},
        {L"", L"/c/d", L"/c/"},
        {L"a", L"/c/d/", L"/c/d/a"},
        // The folder of a base in the root is "/".
        {L"a", L"/d", L"//a"},
        // Steps with a backslash.
        {L"..\\a", L"/c/d/e", L"/c/a"},
        {L"..\\..\\a", L"/b/c/d/e", L"/b/a"},
        {L"..\\..\\..\\..\\a", L"/b/c", L"/a"},
        {L"..\\a", L"/b\\c/e", L"/b/a"},
        {L"..\\a", L"/e", L"/a"},
        {L"..\\", L"/c/d/e", L"/c/"},
        // A step further on counts as well, and three characters in front go.
        {L"abcd..\\e", L"/x/y/z", L"/x/d..\\e"},
        {L"..a", L"/c/d", L"/c/..a"},
    };
    for (const TwoNamesCase& c : cases) {
        EXPECT_EQ(text(VTGetAbsoluteFilename(c.file, c.base)), c.result) << text(c.file) << " from " << text(c.base);
    }
}

// Ends the process after a tenth of a second of its own time; a call that comes back takes microseconds.
void callWithATimeLimit(const wchar_t* szFile) {
    const itimerval timer = {{0, 0}, {0, 100000}};
    setitimer(ITIMER_VIRTUAL, &timer, nullptr);
    VTGetAbsoluteFilename(szFile, L"/c/d");
    std::exit(0);
}

TEST(VTOFileNameDeathTest, AbsoluteNameDoesNotComeBackFromAStepWithASlash) {
    for (const wchar_t* szFile : {L"../a", L"a/../b", L"..\\../a"}) {
        EXPECT_EXIT(callWithATimeLimit(szFile), testing::KilledBySignal(SIGVTALRM), "");
    }
    EXPECT_EXIT(callWithATimeLimit(L"..\\a"), testing::ExitedWithCode(0), "");
}

struct DisplayCase {
    const wchar_t* file;
    const wchar_t* currentDir;
    int maxChars;
    const wchar_t* result;
};

TEST(VTOFileName, DisplayName) {
    AssertRecorder recorder;
    const DisplayCase cases[] = {
        {L"", L"/x", 10, L""},
        {L" \t", L"/x", 10, L""},
        // A file of the current folder, with the separator at the end or without.
        {L"/home/me/file.txt", L"/home/me", 5, L"file.txt"},
        {L"/home/me/file.txt", L"/home/me/", 100, L"/home/me/file.txt"},
        {L"C:\\me/file.txt", L"C:\\me", 5, L"file.txt"},
        // A current folder with a backslash at the end is compared with the separator of the path in place.
        {L"me\\/file.txt", L"me\\/", 100, L"me\\/file.txt"},
        {L"me\\/file.txt", L"me\\", 100, L"me\\/file.txt"},
        {L"file.txt", L"", 3, L"file.txt"},
        // Short enough.
        {L"/home/me/file.txt", L"/x", 18, L"/home/me/file.txt"},
        // Too long, but so is the file name.
        {L"/home/me/file.txt", L"/x", 8, L"file.txt"},
        {L"C:\\a\\file.txt", L"/x", 5, L"C:\\a\\file.txt"},
        {L"C:\\root\\one\\two/file.txt", L"/x", 8, L"file.txt"},
        // No backslash, or one: there are no second and third tokens.
        {L"/home/me/file.txt", L"/x", 17, L"file.txt"},
        {L"C:\\home/me/file.txt", L"/x", 15, L"file.txt"},
        // A third token that is empty.
        {L"C:\\root\\\\two\\three/file.txt", L"/x", 20, L"file.txt"},
        // Root C:\root, and no room for more: 7 + 5 + 8 = 20 characters.
        {L"C:\\root\\one\\two/file.txt", L"/x", 20, L"C:\\root\\...\\file.txt"},
        {L"C:\\root\\one\\two/file.txt", L"/x", 15, L"C:\\root\\...\\file.txt"},
        {L"C:\\root\\one\\two/file.txt", L"/x", 23, L"C:\\root\\...\\file.txt"},
        // A host takes both backslashes and two tokens: 11 + 5 + 8 = 24.
        {L"\\\\host\\data\\one/file.txt", L"/x", 22, L"\\\\host\\data\\...\\file.txt"},
        // The folder next to the file name, f, is cut with it; e is the last that can show: 20 + 1 < 22.
        {L"C:\\root\\c\\dddd\\e\\f/file.txt", L"/x", 22, L"C:\\root\\...\\e92file.txt"},
        {L"C:\\root\\c\\dddd\\e\\f/file.txt", L"/x", 21, L"C:\\root\\...\\file.txt"},
        // The empty folder between two backslashes ends the restoring.
        {L"C:\\root\\a\\\\b\\c/file.txt", L"/x", 23, L"C:\\root\\...\\b92file.txt"},
        // With e92 restored, 20 + 3 + 4 = 27 is not below 27: dddd does not fit.
        {L"C:\\root\\c\\dddd\\e\\f/file.txt", L"/x", 27, L"C:\\root\\...\\e92file.txt"},
    };
    for (const DisplayCase& c : cases) {
        EXPECT_EQ(text(VTGetFileDisplayName(c.file, c.currentDir, c.maxChars)), c.result)
            << text(c.file) << ' ' << c.maxChars;
    }
    EXPECT_TRUE(recorder.take().empty());
}

TEST(VTOFileName, DisplayNameRestoresFoldersFromTheRight) {
    AssertRecorder recorder;
    // 37 characters. Root and name take 20, which leaves room for less than 9: e has 1, e92 and dddd have 7, dddd92e92
    // and c have 10.
    EXPECT_EQ(text(VTGetFileDisplayName(L"C:\\root\\c\\dddd\\e\\long folder/file.txt", L"/x", 29)),
              L"C:\\root\\...\\dddd92e92file.txt");
    EXPECT_TRUE(recorder.take().empty());
}

TEST(VTOFileName, DisplayNameAssertsWhenAllFoldersFit) {
    AssertRecorder recorder;
    // 24 characters. The name's own folder is cut with it, and `one` is all that is left: 20 + 3 < 24.
    EXPECT_EQ(text(VTGetFileDisplayName(L"C:\\root\\one\\two/file.txt", L"/x", 24)), L"C:\\root\\...\\one92file.txt");
    EXPECT_EQ(recorder.take(), failedIn("VTOString", {"iPos >= 0"}));
    // Room for less than 11, so c fits as well.
    EXPECT_EQ(text(VTGetFileDisplayName(L"C:\\root\\c\\dddd\\e\\long folder/file.txt", L"/x", 31)),
              L"C:\\root\\...\\c92dddd92e92file.txt");
    EXPECT_EQ(recorder.take(), failedIn("VTOString", {"iPos >= 0"}));
}

TEST(VTOFileName, DisplayNameOfAHostRestoresFoldersToo) {
    AssertRecorder recorder;
    // 28 characters; root and name take 11 + 5 + 8, and 24 + 3 < 28.
    EXPECT_EQ(text(VTGetFileDisplayName(L"\\\\host\\data\\one\\two/file.txt", L"/x", 28)),
              L"\\\\host\\data\\...\\one92file.txt");
    EXPECT_EQ(recorder.take(), failedIn("VTOString", {"iPos >= 0"}));
}

TEST(VTOFileName, DisplayNameTellsANullCurrentFolderFromAnEmptyOne) {
    EXPECT_EQ(text(VTGetFileDisplayName(L"\"file.txt\"", VTString(L""), 3)), L"\"file.txt\"");
    // The path of this name is empty, which equals an empty text and not a null one.
    EXPECT_EQ(text(VTGetFileDisplayName(L"file.txt", VTString(), 100)), L"file.txt");
}

} // namespace
