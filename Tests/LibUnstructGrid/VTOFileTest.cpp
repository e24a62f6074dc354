#include "LibUnstructGrid/VTOFile.h"

#include "LibCore/rvfString.h"
#include "LibIo/rvfFile.h"
#include "Tests/LibUnstructGrid/VTOStringSupport.h"
#include "Tests/Support/OrdinaryUser.h"
#include "Tests/Support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cstring>
#include <filesystem>

using orvtest::AssertRecorder;
using orvtest::failedIn;
using orvtest::ScratchFolder;
using orvtest::text;

namespace {

// The linker sends the library's calls of rvf::File::fopen() in this program through the function below.
std::vector<std::pair<std::wstring, std::wstring>> openedFiles;

std::vector<orvtest::FailedAssert> failed(std::initializer_list<const char*> expressions) {
    return failedIn("VTOFile", expressions);
}

} // namespace

extern "C" {
FILE* __real__ZN3rvf4File5fopenERKNS_6StringES3_(const rvf::String& fileName, const rvf::String& mode);

FILE* __wrap__ZN3rvf4File5fopenERKNS_6StringES3_(const rvf::String& fileName, const rvf::String& mode) {
    openedFiles.push_back({fileName.c_str(), mode.c_str()});
    return __real__ZN3rvf4File5fopenERKNS_6StringES3_(fileName, mode);
}
}

namespace {

class VTOFileTest : public testing::Test {
protected:
    VTOFileTest() {
        openedFiles.clear();
    }

    VTString in(const std::string& name) const {
        return VTString(rvf::String::fromUtf8((folder / name).c_str()));
    }

    const ScratchFolder folder;
};

TEST(VTOFileMode, NeedsAnAccessBitAndKnownBits) {
    for (unsigned int uiMode = 0; uiMode < 300; ++uiMode) {
        const bool bValid = uiMode % 8 != 0 && uiMode < 128;
        EXPECT_EQ(VTFile::IsValidAccessMode(uiMode), bValid) << uiMode;
    }
    EXPECT_FALSE(VTFile::IsValidAccessMode(0x80000001u));
}

TEST(VTOFileMode, BitsHaveTheirNumbers) {
    EXPECT_EQ(VT_FILE_READ, 1u);
    EXPECT_EQ(VT_FILE_WRITE, 2u);
    EXPECT_EQ(VT_FILE_APPEND, 4u);
    EXPECT_EQ(VT_FILE_TEXT, 8u);
    EXPECT_EQ(VT_FILE_CREATE, 16u);
    EXPECT_EQ(VT_FILE_OPEN_OR_CREATE, 32u);
    EXPECT_EQ(VT_FILE_UNICODE, 64u);
}

TEST(VTOFileMode, IsAssertedAtConstruction) {
    AssertRecorder recorder;
    VTFile file(L"a", 8);
    EXPECT_EQ(recorder.take(), failed({"IsValidAccessMode(uiMode)"}));
    VTBinaryFile binaryFile(L"a", 128, false);
    EXPECT_EQ(recorder.take(), failed({"IsValidAccessMode(uiMode)"}));
    VTFile valid(L"a", 1);
    EXPECT_TRUE(recorder.take().empty());
}

struct ModeCase {
    unsigned int mode;
    std::vector<std::wstring> opened;
};

TEST_F(VTOFileTest, OpensMissingFilesByTheTableOfModes) {
    AssertRecorder recorder;
    const ModeCase cases[] = {
        // Append first, whatever else is set.
        {4 | 1, {L"a+b"}},
        {4 | 1 | 2 | 16 | 32, {L"a+b"}},
        {4, {L"ab"}},
        {4 | 2 | 32, {L"ab"}},
        // Read and write.
        {1 | 2 | 16 | 32, {L"r+b", L"w+b"}},
        {1 | 2 | 16, {L"w+b"}},
        {1 | 2, {L"r+b"}},
        {1 | 2 | 32, {L"r+b"}},
        // Write.
        {2 | 32, {L"r+b", L"w+b"}},
        {2 | 16 | 32, {L"r+b", L"w+b"}},
        {2, {L"wb"}},
        {2 | 16, {L"wb"}},
        // Read.
        {1, {L"rb"}},
        {1 | 16 | 32, {L"rb"}},
        // Text.
        {1 | 8, {L"rt"}},
        {2 | 8, {L"wt"}},
        {4 | 8, {L"at"}},
        {2 | 8 | 32, {L"r+t", L"w+t"}},
        // Unicode, binary or text. The retry leaves the rest of the mode alone.
        {1 | 64, {L"rb,ccs=UNICODE"}},
        {1 | 8 | 64, {L"rt,ccs=UNICODE"}},
    };
    int index = 0;
    for (const ModeCase& c : cases) {
        const std::string name = "missing" + std::to_string(index++);
        openedFiles.clear();
        VTFile file(in(name), c.mode);
        const bool bOpened = file.Open();
        std::vector<std::wstring> modes;
        for (const auto& [openedName, mode] : openedFiles) {
            EXPECT_EQ(openedName, text(in(name)));
            modes.push_back(mode);
        }
        EXPECT_EQ(modes, c.opened) << c.mode;
        EXPECT_EQ(bOpened, c.opened.back()[0] != L'r') << c.mode;
        EXPECT_EQ(folder.has(name), bOpened) << c.mode;
    }
    EXPECT_TRUE(recorder.take().empty());
}

TEST_F(VTOFileTest, RetryKeepsTheRestOfAUnicodeMode) {
    // A folder can be opened for writing in neither way.
    VTFile file(VTString(rvf::String::fromUtf8(folder.path().c_str())), 2 | 32 | 64);
    EXPECT_FALSE(file.Open());
    ASSERT_EQ(openedFiles.size(), 2u);
    EXPECT_EQ(openedFiles[0].second, L"r+b,ccs=UNICODE");
    EXPECT_EQ(openedFiles[1].second, L"w+b,ccs=UNICODE");
}

TEST_F(VTOFileTest, ExistingFilesAreTruncatedOrKept) {
    const std::pair<unsigned int, bool> cases[] = {{1, true},           {2, false},         {1 | 2, true},
                                                   {1 | 2 | 16, false}, {1 | 2 | 32, true}, {1 | 2 | 16 | 32, true},
                                                   {2 | 32, true},      {2 | 16, false},    {4, true},
                                                   {4 | 1, true}};
    for (const auto& [uiMode, bKept] : cases) {
        folder.write("file", "contents");
        openedFiles.clear();
        VTFile file(in("file"), uiMode);
        EXPECT_TRUE(file.Open()) << uiMode;
        file.Close();
        EXPECT_EQ(folder.read("file"), bKept ? "contents" : "") << uiMode;
        EXPECT_EQ(openedFiles.size(), 1u) << uiMode;
    }
}

TEST_F(VTOFileTest, OpenFailsWithoutAName) {
    AssertRecorder recorder;
    VTFile unnamed(VTString(), 2);
    EXPECT_FALSE(unnamed.Open());
    VTFile empty(L"", 2);
    EXPECT_FALSE(empty.Open());
    EXPECT_TRUE(openedFiles.empty());
    EXPECT_TRUE(recorder.take().empty());
    VTFile blank(L" ", 1);
    EXPECT_FALSE(blank.Open());
    EXPECT_EQ(recorder.take(), failed({"!sFileName.IsBlank()"}));
    // The mode is looked at before the name.
    VTFile invalid(L"", 8);
    recorder.take();
    EXPECT_FALSE(invalid.Open());
    EXPECT_EQ(recorder.take(), failed({"IsValidAccessMode(m_uiMode)"}));
}

TEST_F(VTOFileTest, OpenFailsForWhatIsNoFile) {
    folder.write("file", "");
    std::filesystem::create_symlink("loop", folder / "loop");
    std::filesystem::create_symlink("nowhere", folder / "dangling");
    for (const char* szName : {"missing", "missing/below", "file/below", "loop", "dangling"}) {
        VTFile file(in(szName), 1);
        EXPECT_FALSE(file.Open()) << szName;
    }
    for (const char* szName : {"missing/below", "file/below", "loop", "."}) {
        VTFile file(in(szName), 2);
        EXPECT_FALSE(file.Open()) << szName;
    }
}

TEST_F(VTOFileTest, OpenFailsWithoutTheRights) {
    folder.write("secret", "contents");
    folder.write("kept", "contents");
    chmod(folder.path().c_str(), 0555);
    chmod((folder / "secret").c_str(), 0222);
    chmod((folder / "kept").c_str(), 0444);
    EXPECT_TRUE(orvtest::holdsForAnOrdinaryUser([this] {
        return !VTFile(in("secret"), 1).Open() && !VTFile(in("secret"), 2 | 32).Open() &&
               !VTFile(in("kept"), 2 | 32).Open() && !VTFile(in("kept"), 4).Open() && !VTFile(in("new"), 2).Open();
    }));
    chmod(folder.path().c_str(), 0755);
    chmod((folder / "secret").c_str(), 0666);
    EXPECT_EQ(folder.read("secret"), "contents");
    EXPECT_EQ(folder.read("kept"), "contents");
}

TEST_F(VTOFileTest, OpenWithAnInvalidModeIsAsserted) {
    AssertRecorder recorder;
    VTFile file(in("file"), 8);
    recorder.take();
    EXPECT_FALSE(file.Open());
    EXPECT_EQ(recorder.take(),
              failed({"IsValidAccessMode(m_uiMode)", "IsValidAccessMode(uiMode)", "!sMode.IsBlank()"}));
    ASSERT_EQ(openedFiles.size(), 1u);
    EXPECT_EQ(openedFiles[0].second, L"t");
    VTFile unknownBit(in("file"), 128 | 2);
    recorder.take();
    EXPECT_TRUE(unknownBit.Open());
    EXPECT_EQ(recorder.take(), failed({"IsValidAccessMode(m_uiMode)", "IsValidAccessMode(uiMode)"}));
}

TEST_F(VTOFileTest, OpenClosesAndOpensAnew) {
    folder.write("file", "abcdef");
    VTFile file(in("file"), 1);
    char c = 0;
    ASSERT_TRUE(file.Open());
    EXPECT_EQ(file.Read(&c, 1, 1), 1);
    ASSERT_TRUE(file.Open());
    EXPECT_EQ(file.Read(&c, 1, 1), 1);
    EXPECT_EQ(c, 'a');
    std::filesystem::remove(folder / "file");
    EXPECT_FALSE(file.Open());
    AssertRecorder recorder;
    EXPECT_EQ(file.Read(&c, 1, 1), 0);
    EXPECT_EQ(recorder.take(), failed({"m_pFile"}));
}

class ClingingFile : public VTFile {
public:
    using VTFile::VTFile;

    ~ClingingFile() override {
        if (m_pFirst) {
            std::fclose(m_pFirst);
        }
    }

    void Close() override {
        m_pFirst = m_pFile;
    }

private:
    FILE* m_pFirst = nullptr;
};

TEST_F(VTOFileTest, OpenCallsTheOverrideOfClose) {
    folder.write("file", "abc");
    AssertRecorder recorder;
    ClingingFile file(in("file"), 1);
    EXPECT_TRUE(file.Open());
    EXPECT_TRUE(recorder.take().empty());
    EXPECT_TRUE(file.Open());
    EXPECT_EQ(recorder.take(), failed({"m_pFile == __null"}));
}

TEST_F(VTOFileTest, ClosesAtTheEndAndTwice) {
    {
        VTFile file(in("file"), 2);
        ASSERT_TRUE(file.Open());
        EXPECT_EQ(file.Write("abc", 1, 3), 3);
    }
    EXPECT_EQ(folder.read("file"), "abc");
    VTFile file(in("file"), 2);
    file.Close();
    ASSERT_TRUE(file.Open());
    EXPECT_EQ(file.Write("xy", 1, 2), 2);
    file.Close();
    EXPECT_EQ(folder.read("file"), "xy");
    file.Close();
}

TEST_F(VTOFileTest, CountsWholeItems) {
    folder.write("file", "abcdefghij");
    VTFile file(in("file"), 1);
    ASSERT_TRUE(file.Open());
    char szBuffer[20] = {};
    EXPECT_EQ(file.Read(szBuffer, 2, 2), 2);
    EXPECT_STREQ(szBuffer, "abcd");
    EXPECT_EQ(file.Read(szBuffer, 4, 3), 1);
    EXPECT_TRUE(file.GetEof());
    EXPECT_EQ(file.Read(szBuffer, 4, 3), 0);
    // Not open for writing.
    EXPECT_EQ(file.Write("x", 1, 1), 0);
}

TEST_F(VTOFileTest, TransfersAssertTheirArguments) {
    folder.write("file", "abc");
    VTFile file(in("file"), 1 | 2);
    VTBinaryFile binaryFile(in("file"), 1 | 2, true);
    for (VTFile* pFile : {&file, static_cast<VTFile*>(&binaryFile)}) {
        ASSERT_TRUE(pFile->Open());
        AssertRecorder recorder;
        char c = 0;
        EXPECT_EQ(pFile->Read(nullptr, 1, 1), 0);
        EXPECT_EQ(recorder.take(), failed({"pBuf"}));
        EXPECT_EQ(pFile->Read(&c, 1, 0), 0);
        EXPECT_EQ(recorder.take(), failed({"iNum > 0"}));
        EXPECT_EQ(pFile->Read(&c, 0, 1), 0);
        EXPECT_EQ(recorder.take(), failed({"iSize > 0"}));
        EXPECT_EQ(pFile->Write(nullptr, 1, 1), 0);
        EXPECT_EQ(recorder.take(), failed({"pBuf"}));
        EXPECT_EQ(pFile->Write(&c, 1, -1), 0);
        EXPECT_EQ(recorder.take(), failed({"iNum > 0"}));
        EXPECT_EQ(pFile->Write(&c, -1, 1), 0);
        EXPECT_EQ(recorder.take(), failed({"iSize > 0"}));
        pFile->Close();
        EXPECT_EQ(pFile->Read(&c, 1, 1), 0);
        EXPECT_EQ(recorder.take(), failed({"m_pFile"}));
        EXPECT_EQ(pFile->Write(&c, 1, 1), 0);
        EXPECT_EQ(recorder.take(), failed({"m_pFile"}));
        EXPECT_EQ(pFile->Read(nullptr, 0, 0), 0);
        EXPECT_EQ(recorder.take(), failed({"pBuf", "iNum > 0", "iSize > 0", "m_pFile"}));
        EXPECT_EQ(pFile->Write(nullptr, 0, 0), 0);
        EXPECT_EQ(recorder.take(), failed({"pBuf", "iNum > 0", "iSize > 0", "m_pFile"}));
    }
    EXPECT_EQ(folder.read("file"), "abc");
}

TEST_F(VTOFileTest, Flushes) {
    VTFile file(in("file"), 2);
    ASSERT_TRUE(file.Open());
    file.Write("abc", 1, 3);
    EXPECT_EQ(folder.read("file"), "");
    EXPECT_TRUE(file.Flush());
    EXPECT_EQ(folder.read("file"), "abc");
    VTFile full(L"/dev/full", 2);
    ASSERT_TRUE(full.Open());
    full.Write("abc", 1, 3);
    EXPECT_FALSE(full.Flush());
}

TEST_F(VTOFileTest, Seeks) {
    folder.write("file", "abcdef");
    VTFile file(in("file"), 1);
    ASSERT_TRUE(file.Open());
    char c = 0;
    EXPECT_TRUE(file.SeekFromCurrent(3));
    EXPECT_EQ(file.Read(&c, 1, 1), 1);
    EXPECT_EQ(c, 'd');
    EXPECT_TRUE(file.SeekFromCurrent(-2));
    EXPECT_EQ(file.Read(&c, 1, 1), 1);
    EXPECT_EQ(c, 'c');
    EXPECT_FALSE(file.SeekFromCurrent(-100));
    EXPECT_TRUE(file.SeekToEnd());
    EXPECT_FALSE(file.GetEof());
    EXPECT_EQ(file.Read(&c, 1, 1), 0);
    EXPECT_TRUE(file.GetEof());
    EXPECT_TRUE(file.SeekToBegin());
    EXPECT_FALSE(file.GetEof());
    EXPECT_EQ(file.Read(&c, 1, 1), 1);
    EXPECT_EQ(c, 'a');
}

TEST_F(VTOFileTest, OperationsAssertAnOpenFile) {
    AssertRecorder recorder;
    VTFile file(in("file"), 1);
    EXPECT_TRUE(file.Flush());
    EXPECT_EQ(recorder.take(), failed({"m_pFile"}));
    EXPECT_FALSE(file.SeekToBegin());
    EXPECT_EQ(recorder.take(), failed({"m_pFile"}));
    EXPECT_FALSE(file.SeekToEnd());
    EXPECT_EQ(recorder.take(), failed({"m_pFile"}));
    EXPECT_FALSE(file.SeekFromCurrent(1));
    EXPECT_EQ(recorder.take(), failed({"m_pFile"}));
    EXPECT_TRUE(file.GetEof());
    EXPECT_EQ(recorder.take(), failed({"m_pFile"}));
}

TEST_F(VTOFileTest, BinaryFileSwapsWhatItReads) {
    folder.write("file", "abcdefgh");
    VTBinaryFile file(in("file"), 1, true);
    EXPECT_TRUE(file.GetSwap());
    ASSERT_TRUE(file.Open());
    char szBuffer[9] = {};
    EXPECT_EQ(file.Read(szBuffer, 4, 2), 2);
    EXPECT_STREQ(szBuffer, "dcbahgfe");
    file.SeekToBegin();
    file.SetSwap(false);
    EXPECT_FALSE(file.GetSwap());
    EXPECT_EQ(file.Read(szBuffer, 4, 2), 2);
    EXPECT_STREQ(szBuffer, "abcdefgh");
}

class FileOfOtherOrder : public VTBinaryFile {
public:
    using VTBinaryFile::VTBinaryFile;

    void SetSwap(bool bSwap) override {
        VTBinaryFile::SetSwap(!bSwap);
    }

    bool GetSwap() const override {
        return !VTBinaryFile::GetSwap();
    }
};

TEST_F(VTOFileTest, SwapFlagCanBeOverridden) {
    folder.write("file", "abcd");
    FileOfOtherOrder derived(in("file"), 1, true);
    VTBinaryFile& file = derived;
    EXPECT_FALSE(file.GetSwap());
    file.SetSwap(true);
    EXPECT_TRUE(file.GetSwap());
    ASSERT_TRUE(file.Open());
    char szBuffer[5] = {};
    EXPECT_EQ(file.Read(szBuffer, 4, 1), 1);
    EXPECT_STREQ(szBuffer, "abcd");
}

TEST_F(VTOFileTest, BinaryFileSwapsTheItemsThatCame) {
    folder.write("file", "abcdefghij");
    VTBinaryFile file(in("file"), 1, true);
    ASSERT_TRUE(file.Open());
    // Two whole items and a rest; the end of the file is no error.
    char szBuffer[21] = {};
    EXPECT_EQ(file.Read(szBuffer, 4, 5), 2);
    EXPECT_EQ(std::string(szBuffer, 8), "dcbahgfe");
}

// Gives its stream for the tests that need a broken one.
class OpenBinaryFile : public VTBinaryFile {
public:
    OpenBinaryFile(FILE* pFile, bool bSwap) : VTBinaryFile(L"none", 1 | 2, bSwap) {
        m_pFile = pFile;
    }
};

ssize_t twoItemsThenAnError(void* pCookie, char* pBuffer, size_t) {
    int* piCalls = static_cast<int*>(pCookie);
    if ((*piCalls)++ > 0) {
        return -1;
    }
    std::memcpy(pBuffer, "abcdefgh", 8);
    return 8;
}

TEST_F(VTOFileTest, BinaryFileDoesNotSwapAfterAnError) {
    int iCalls = 0;
    OpenBinaryFile file(fopencookie(&iCalls, "rb", {twoItemsThenAnError, nullptr, nullptr, nullptr}), true);
    char szBuffer[17] = {};
    EXPECT_EQ(file.Read(szBuffer, 4, 4), 2);
    EXPECT_STREQ(szBuffer, "abcdefgh");
}

TEST_F(VTOFileTest, BinaryFileSwapsAllThatWasAskedDespiteAnEarlierError) {
    folder.write("file", "abcd");
    VTBinaryFile file(in("file"), 1, true);
    ASSERT_TRUE(file.Open());
    EXPECT_FALSE(file.WriteVal(1)); // sets the error of the stream
    char szBuffer[5] = {};
    EXPECT_EQ(file.Read(szBuffer, 4, 1), 1);
    EXPECT_STREQ(szBuffer, "dcba");
}

TEST_F(VTOFileTest, BinaryFileDoesNotSwapWhatItWrites) {
    VTBinaryFile file(in("file"), 2, true);
    ASSERT_TRUE(file.Open());
    EXPECT_EQ(file.Write("abcd", 4, 1), 1);
    file.Close();
    EXPECT_EQ(folder.read("file"), "abcd");
}

TEST_F(VTOFileTest, ValuesGoBothWays) {
    for (bool bSwap : {false, true}) {
        VTBinaryFile file(in("file"), 1 | 2 | 16, bSwap);
        ASSERT_TRUE(file.Open());
        EXPECT_TRUE(file.WriteVal(0x01020304));
        EXPECT_TRUE(file.WriteVal(-1.5f));
        EXPECT_TRUE(file.SeekToBegin());
        int iValue = 0;
        float fValue = 0;
        EXPECT_TRUE(file.ReadVal(&iValue));
        EXPECT_TRUE(file.ReadVal(&fValue));
        EXPECT_EQ(iValue, 0x01020304);
        EXPECT_EQ(fValue, -1.5f);
        EXPECT_FALSE(file.ReadVal(&iValue));
        EXPECT_FALSE(file.ReadVal(&fValue));
        EXPECT_EQ(iValue, 0x01020304);
    }
}

TEST_F(VTOFileTest, SwappedValuesAreTurnedRound) {
    auto bytesWritten = [this](bool bSwap) {
        VTBinaryFile file(in("file"), 2, bSwap);
        EXPECT_TRUE(file.Open());
        EXPECT_TRUE(file.WriteVal(0x01020304));
        EXPECT_TRUE(file.WriteVal(1.0f));
        file.Close();
        return folder.read("file");
    };
    const std::string plain = bytesWritten(false);
    const std::string swapped = bytesWritten(true);
    ASSERT_EQ(plain.size(), 8u);
    EXPECT_EQ(swapped, std::string(plain.rbegin() + 4, plain.rend()) + std::string(plain.rbegin(), plain.rbegin() + 4));
    EXPECT_TRUE(plain.substr(0, 4) == "\x01\x02\x03\x04" || plain.substr(0, 4) == "\x04\x03\x02\x01");
}

TEST_F(VTOFileTest, ValuesAssertTheirArguments) {
    AssertRecorder recorder;
    VTBinaryFile file(in("file"), 1 | 2 | 16, true);
    int iValue = 0;
    float fValue = 0;
    EXPECT_FALSE(file.ReadVal(&iValue));
    EXPECT_EQ(recorder.take(), failed({"m_pFile"}));
    EXPECT_FALSE(file.ReadVal(&fValue));
    EXPECT_EQ(recorder.take(), failed({"m_pFile"}));
    EXPECT_FALSE(file.WriteVal(1));
    EXPECT_EQ(recorder.take(), failed({"m_pFile"}));
    EXPECT_FALSE(file.WriteVal(1.0f));
    EXPECT_EQ(recorder.take(), failed({"m_pFile"}));
    EXPECT_FALSE(file.ReadVal(static_cast<int*>(nullptr)));
    EXPECT_EQ(recorder.take(), failed({"piVal", "m_pFile"}));
    EXPECT_FALSE(file.ReadVal(static_cast<float*>(nullptr)));
    EXPECT_EQ(recorder.take(), failed({"pfVal", "m_pFile"}));
}

} // namespace
