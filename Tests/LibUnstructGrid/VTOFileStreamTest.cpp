#include "LibUnstructGrid/VTOFile.h"

#include "LibCore/rvfString.h"
#include "Tests/LibUnstructGrid/VTOStringSupport.h"
#include "Tests/Support/OrdinaryUser.h"
#include "Tests/Support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <numeric>

using orvtest::AssertRecorder;
using orvtest::failedIn;
using orvtest::ScratchFolder;

namespace {

std::vector<orvtest::FailedAssert> failed(std::initializer_list<const char*> expressions) {
    return failedIn("VTOFile", expressions);
}

class Stream {
public:
    explicit Stream(FILE* pFile) : m_pFile(pFile) {}
    Stream(const std::string& path, const char* szMode) : Stream(std::fopen(path.c_str(), szMode)) {}
    ~Stream() {
        std::fclose(m_pFile);
    }
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;

    operator FILE*() const {
        return m_pFile;
    }

private:
    FILE* m_pFile;
};

TEST(VTOFileStream, Size) {
    const ScratchFolder folder;
    EXPECT_EQ(VTGetFileSize(Stream(folder.write("file", "abc"), "rb")), 3);
    EXPECT_EQ(VTGetFileSize(Stream(folder.write("empty", ""), "rb")), 0);
    EXPECT_EQ(VTGetFileSize(nullptr), 0);
    char szMemory[10];
    EXPECT_EQ(VTGetFileSize(Stream(fmemopen(szMemory, sizeof szMemory, "r"))), 0);
}

TEST(VTOFileStream, Position) {
    const ScratchFolder folder;
    const Stream file(folder.write("file", "abcdef"), "rb");
    long long iPosition = -1;
    EXPECT_TRUE(VTGetFilePos(file, &iPosition));
    EXPECT_EQ(iPosition, 0);
    EXPECT_TRUE(VTSetFilePos(file, 4));
    EXPECT_EQ(std::fgetc(file), 'e');
    EXPECT_TRUE(VTGetFilePos(file, &iPosition));
    EXPECT_EQ(iPosition, 5);
    EXPECT_FALSE(VTSetFilePos(file, -1));
    EXPECT_TRUE(VTSetFilePos(file, 5000000000));
    EXPECT_TRUE(VTGetFilePos(file, &iPosition));
    EXPECT_EQ(iPosition, 5000000000);
}

TEST(VTOFileStream, PositionOfNoFile) {
    long long iPosition = 7;
    EXPECT_FALSE(VTGetFilePos(nullptr, &iPosition));
    EXPECT_FALSE(VTSetFilePos(nullptr, 0));
    EXPECT_EQ(iPosition, 7);
    AssertRecorder recorder;
    EXPECT_FALSE(VTGetFilePos(nullptr, nullptr));
    EXPECT_EQ(recorder.take(), failed({"pPosition"}));
    const ScratchFolder folder;
    EXPECT_FALSE(VTGetFilePos(Stream(folder.write("file", "abc"), "rb"), nullptr));
    EXPECT_EQ(recorder.take(), failed({"pPosition"}));
}

TEST(VTOFileStream, PositionOfAPipe) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const Stream read(fdopen(ends[0], "rb"));
    const Stream write(fdopen(ends[1], "wb"));
    long long iPosition = 7;
    EXPECT_FALSE(VTGetFilePos(read, &iPosition));
    EXPECT_FALSE(VTSetFilePos(read, 0));
    EXPECT_FALSE(VTSetFilePosStart(read));
    EXPECT_FALSE(VTSetFilePosEnd(read));
    EXPECT_FALSE(VTSetFilePosFromCurrent(read, 1));
    EXPECT_EQ(iPosition, 7);
}

TEST(VTOFileStream, StartEndAndOn) {
    const ScratchFolder folder;
    const Stream file(folder.write("file", "abcdef"), "rb");
    EXPECT_TRUE(VTSetFilePosEnd(file));
    EXPECT_EQ(std::ftell(file), 6);
    EXPECT_TRUE(VTSetFilePosFromCurrent(file, -4));
    EXPECT_EQ(std::fgetc(file), 'c');
    EXPECT_TRUE(VTSetFilePosFromCurrent(file, 2));
    EXPECT_EQ(std::fgetc(file), 'f');
    EXPECT_TRUE(VTSetFilePosStart(file));
    EXPECT_EQ(std::fgetc(file), 'a');
    EXPECT_FALSE(VTSetFilePosFromCurrent(file, -2));
    EXPECT_FALSE(VTSetFilePosStart(nullptr));
    EXPECT_FALSE(VTSetFilePosEnd(nullptr));
    EXPECT_FALSE(VTSetFilePosFromCurrent(nullptr, 0));
}

TEST(VTOFileStream, LargeFilesAreAssertedAndGoneTo) {
    const char* szLimit = "iFileSize >= 0 && iFileSize < 2147483647";
    const ScratchFolder folder;
    const Stream file(folder.write("file", "x"), "rb");
    AssertRecorder recorder;
    ASSERT_EQ(truncate((folder / "file").c_str(), 2147483646), 0);
    EXPECT_TRUE(VTSetFilePosEnd(file));
    EXPECT_TRUE(recorder.take().empty());
    ASSERT_EQ(truncate((folder / "file").c_str(), 2147483647), 0);
    EXPECT_TRUE(VTSetFilePosEnd(file));
    EXPECT_EQ(recorder.take(), failed({szLimit}));
    EXPECT_EQ(std::ftell(file), 2147483647);
    EXPECT_TRUE(VTSetFilePosFromCurrent(file, -7));
    EXPECT_EQ(recorder.take(), failed({szLimit}));
    EXPECT_EQ(std::ftell(file), 2147483640);
    EXPECT_TRUE(VTSetFilePosStart(file));
    EXPECT_EQ(recorder.take(), failed({szLimit}));
    EXPECT_EQ(std::ftell(file), 0);
}

std::string swapped(std::string bytes, unsigned int iItemSize, unsigned int iNumItems) {
    VTByteSwap(reinterpret_cast<unsigned char*>(bytes.data()), iItemSize, iNumItems);
    return bytes;
}

TEST(VTOFileStream, ByteSwapTurnsEachItemRound) {
    EXPECT_EQ(swapped("abcdefgh", 4, 2), "dcbahgfe");
    EXPECT_EQ(swapped("abcdefgh", 4, 1), "dcbaefgh");
    EXPECT_EQ(swapped("abcdefgh", 2, 4), "badcfehg");
    EXPECT_EQ(swapped("abcdefgh", 3, 2), "cbafedgh");
    EXPECT_EQ(swapped("abcdefgh", 8, 1), "hgfedcba");
    EXPECT_EQ(swapped("abcdefgh", 1, 8), "abcdefgh");
    EXPECT_EQ(swapped("abcdefgh", 0, 8), "abcdefgh");
    EXPECT_EQ(swapped("abcdefgh", 4, 0), "abcdefgh");
    std::string bytes(33, '\0');
    std::iota(bytes.begin(), bytes.end(), '0');
    EXPECT_EQ(swapped(bytes, 33, 1), bytes);
    EXPECT_EQ(swapped(bytes, 32, 1), std::string(bytes.rbegin() + 1, bytes.rend()) + bytes.back());
}

TEST(VTOFileStream, CheckBinaryKnowsTheBytesOfText) {
    const ScratchFolder folder;
    for (int byte = 0; byte < 256; ++byte) {
        const bool bText = byte == 9 || byte == 10 || byte == 13 || (byte >= 32 && byte < 255);
        const Stream file(folder.write("file", "text" + std::string(1, static_cast<char>(byte)) + "text"), "rb");
        EXPECT_EQ(VTCheckBinary(file), !bText) << byte;
    }
}

TEST(VTOFileStream, CheckBinaryLooksAt1024Bytes) {
    const ScratchFolder folder;
    for (char byte : {'\0', '\xFF'}) {
        EXPECT_TRUE(VTCheckBinary(Stream(folder.write("file", std::string(1023, 'x') + byte), "rb")));
        EXPECT_FALSE(VTCheckBinary(Stream(folder.write("file", std::string(1024, 'x') + byte), "rb")));
    }
    EXPECT_FALSE(VTCheckBinary(Stream(folder.write("file", ""), "rb")));
    EXPECT_FALSE(VTCheckBinary(nullptr));
}

TEST(VTOFileStream, CheckBinaryRewindsBeforeAndAfter) {
    const ScratchFolder folder;
    const Stream file(folder.write("file", std::string(1, '\0') + "text"), "rb");
    std::fseek(file, 3, SEEK_SET);
    EXPECT_TRUE(VTCheckBinary(file));
    EXPECT_EQ(std::ftell(file), 0);
}

bool checkSwap(int iValue, int iMin, int iMax) {
    FILE* pFile = std::tmpfile();
    std::fwrite(&iValue, sizeof iValue, 1, pFile);
    std::fputs("more", pFile);
    const bool bSwap = VTCheckSwap(pFile, iMin, iMax);
    EXPECT_EQ(std::ftell(pFile), 0);
    std::fclose(pFile);
    return bSwap;
}

TEST(VTOFileStream, CheckSwapPrefersTheSwappedValue) {
    // 16777216 is 1 in the other byte order.
    EXPECT_FALSE(checkSwap(1, 1, 100));
    EXPECT_TRUE(checkSwap(16777216, 1, 100));
    EXPECT_FALSE(checkSwap(5, 1, 4));
    EXPECT_FALSE(checkSwap(5, 6, 10));
    // The limits count.
    EXPECT_TRUE(checkSwap(16777216, 1, 1));
    EXPECT_TRUE(checkSwap(16777216, -5, 1));
    EXPECT_FALSE(checkSwap(16777216, 2, 100));
    // Both ways: 0 is itself, and 0x01000001 too.
    EXPECT_TRUE(checkSwap(0, 0, 10));
    EXPECT_TRUE(checkSwap(0x01000001, 0, 0x01000001));
    EXPECT_TRUE(checkSwap(1, 0, 20000000));
    EXPECT_TRUE(checkSwap(-1, -1, 0));
}

TEST(VTOFileStream, CheckSwapOfAShortFile) {
    const ScratchFolder folder;
    EXPECT_FALSE(VTCheckSwap(Stream(folder.write("file", std::string(3, '\0')), "rb"), 0, 10));
    EXPECT_FALSE(VTCheckSwap(Stream(folder.write("file", ""), "rb"), 0, 10));
    EXPECT_FALSE(VTCheckSwap(nullptr, 0, 10));
}

class VTOFileAccess : public testing::Test {
protected:
    std::wstring in(const std::string& name) const {
        return rvf::String::fromUtf8((folder / name).c_str()).c_str();
    }

    // Opens the folder to everybody and keeps `name` from all but root.
    void makeSecret(const char* szName, mode_t mode) const {
        chmod(folder.path().c_str(), 0777);
        chmod((folder / szName).c_str(), mode);
    }

    const ScratchFolder folder;
};

const VTFileAccessType ALL_TYPES[] = {VT_ACCESS_READ, VT_ACCESS_WRITE, VT_ACCESS_READ_WRITE, VT_ACCESS_EXISTENCE};

TEST_F(VTOFileAccess, TypesHaveTheirNumbers) {
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(ALL_TYPES[i], i);
    }
}

TEST_F(VTOFileAccess, AsksTheSystem) {
    folder.write("file", "");
    std::filesystem::create_symlink("nowhere", folder / "dangling");
    for (VTFileAccessType type : ALL_TYPES) {
        EXPECT_TRUE(VTFileAccess(in("file").c_str(), type)) << type;
        EXPECT_TRUE(VTFileAccess(in(".").c_str(), type)) << type;
        for (const char* szName : {"missing", "dangling", "file/below"}) {
            EXPECT_FALSE(VTFileAccess(in(szName).c_str(), type)) << szName << type;
        }
        EXPECT_FALSE(VTFileAccess(L"", type)) << type;
    }
}

TEST_F(VTOFileAccess, NamesReachTheSystemAsUtf8) {
    folder.write("\xC3\xA5", "");
    EXPECT_TRUE(VTFileAccess((in("") + L"\u00E5").c_str(), VT_ACCESS_EXISTENCE));
}

TEST_F(VTOFileAccess, OtherTypesAreRefused) {
    folder.write("file", "");
    for (int iType : {-1, 4, 6}) {
        EXPECT_FALSE(VTFileAccess(in("file").c_str(), static_cast<VTFileAccessType>(iType))) << iType;
        EXPECT_FALSE(VTCheckFileAccess(in("file").c_str(), static_cast<VTFileAccessType>(iType))) << iType;
        EXPECT_FALSE(VTCheckFileAccess(in("missing").c_str(), static_cast<VTFileAccessType>(iType))) << iType;
    }
}

TEST_F(VTOFileAccess, RightsDecideByType) {
    folder.write("file", "");
    // Rights, and what each type answers then: read, write, both, existence.
    const std::pair<mode_t, std::vector<bool>> cases[] = {{0000, {false, false, false, true}},
                                                          {0444, {true, false, false, true}},
                                                          {0222, {false, true, false, true}},
                                                          {0666, {true, true, true, true}}};
    for (const auto& [mode, answers] : cases) {
        makeSecret("file", mode);
        for (VTFileAccessType type : ALL_TYPES) {
            EXPECT_TRUE(orvtest::holdsForAnOrdinaryUser([&, expected = answers[static_cast<size_t>(type)]] {
                return VTFileAccess(in("file").c_str(), type) == expected &&
                       VTCheckFileAccess(in("file").c_str(), type) == expected;
            })) << mode
                << ' ' << type;
        }
    }
}

TEST_F(VTOFileAccess, NamesAreAsserted) {
    AssertRecorder recorder;
    EXPECT_FALSE(VTFileAccess(nullptr, VT_ACCESS_READ));
    EXPECT_EQ(recorder.take(), failed({"szFileName"}));
    EXPECT_FALSE(VTCheckFileAccess(nullptr, VT_ACCESS_READ));
    EXPECT_EQ(recorder.take(), failed({"szFileName"}));
}

TEST_F(VTOFileAccess, ChecksExistingFilesAsTheyAre) {
    folder.write("file", "");
    for (VTFileAccessType type : ALL_TYPES) {
        EXPECT_TRUE(VTCheckFileAccess(in("file").c_str(), type)) << type;
    }
}

TEST_F(VTOFileAccess, MissingFilesMayBeWrittenWhereTheirFolderMay) {
    for (VTFileAccessType type : ALL_TYPES) {
        EXPECT_EQ(VTCheckFileAccess(in("missing").c_str(), type), type == VT_ACCESS_WRITE) << type;
        EXPECT_FALSE(VTCheckFileAccess(in("missing/below").c_str(), type)) << type;
    }
    folder.write("file", "");
    EXPECT_FALSE(VTCheckFileAccess(in("file/below").c_str(), VT_ACCESS_WRITE));
    std::filesystem::create_directory(folder / "secret");
    makeSecret("secret", 0555);
    EXPECT_TRUE(orvtest::holdsForAnOrdinaryUser(
        [this] { return !VTCheckFileAccess(in("secret/new").c_str(), VT_ACCESS_WRITE); }));
}

TEST_F(VTOFileAccess, NamesWithoutAFolderStandForTheWorkingFolder) {
    std::filesystem::create_directory(folder / "secret");
    makeSecret("secret", 0555);
    {
        orvtest::ScopedWorkingFolder working(folder.path());
        EXPECT_TRUE(VTCheckFileAccess(L"new", VT_ACCESS_WRITE));
    }
    orvtest::ScopedWorkingFolder working(folder / "secret");
    EXPECT_TRUE(orvtest::holdsForAnOrdinaryUser([] { return !VTCheckFileAccess(L"new", VT_ACCESS_WRITE); }));
}

TEST_F(VTOFileAccess, NetworkFoldersOnlyHaveToExist) {
    orvtest::ScopedWorkingFolder working(folder.path());
    EXPECT_FALSE(VTCheckFileAccess(L"\\\\host\\share/new", VT_ACCESS_WRITE));
    std::filesystem::create_directory("\\\\host\\share");
    makeSecret("\\\\host\\share", 0555);
    EXPECT_TRUE(
        orvtest::holdsForAnOrdinaryUser([] { return VTCheckFileAccess(L"\\\\host\\share/new", VT_ACCESS_WRITE); }));
}

} // namespace
