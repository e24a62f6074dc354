#include "OrvUnstructGrid/CZipArchive.h"

#include "Tests/Support/CommandOutput.h"
#include "Tests/Support/FileFaults.h"
#include "Tests/Support/FileSizeLimit.h"
#include "Tests/Support/ScratchFolder.h"

#include <gtest/gtest.h>
#include <zip.h>

#include <cstdint>
#include <filesystem>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

#include <sys/stat.h>

using orvtest::outputOf;

namespace {

using Names = std::vector<std::string>;

/// The record at the end of a zip file, all of whose numbers are 0: entries, and size and place of their list.
const std::string emptyZip = "PK\5\6" + std::string(18, '\0');

std::string noise(std::size_t count) {
    std::mt19937 random(7);
    std::string bytes(count, '\0');
    for (char& byte : bytes) {
        byte = static_cast<char>(random() >> 24);
    }
    return bytes;
}

class CZipArchiveTest : public testing::Test {
protected:
    CZipArchiveTest() {
        std::filesystem::create_directory(out);
    }

    bool add(CZipArchive& archive, const std::string& bytes, const char* name, int level = -1) {
        return archive.AddNewFile(folder.write("source", bytes).c_str(), name, level, 7, 65536);
    }

    /// An archive with one entry.
    void writeArchive(const std::string& bytes, const char* name = "entry", int level = -1) {
        CZipArchive archive;
        ASSERT_TRUE(archive.Open(path.c_str(), 4, 0));
        ASSERT_TRUE(add(archive, bytes, name, level));
        ASSERT_EQ(archive.Close(0, false), path);
    }

    /// An archive as nobody should write one, with entries of those names that hold "bytes".
    void writeNames(const Names& names) {
        zip_t* zip = zip_open(path.c_str(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
        for (const std::string& name : names) {
            zip_file_add(zip, name.c_str(), zip_source_buffer(zip, "bytes", 5, 0), 0);
        }
        ASSERT_EQ(zip_close(zip), 0);
    }

    /// Replaces four bytes of the first record with that signature, the lowest first.
    void patch(const char* signature, std::size_t offset, std::uint32_t value) {
        std::string bytes = folder.read("a.zip");
        const std::size_t at = bytes.find(signature) + offset;
        for (int i = 0; i < 4; ++i) {
            bytes[at + i] = static_cast<char>(value >> 8 * i);
        }
        folder.write("a.zip", bytes);
    }

    bool extract(unsigned long long index, bool fullPath, const char* newName) {
        CZipArchive archive;
        return archive.Open(path.c_str(), 3, 0) && archive.ExtractFile(index, out.c_str(), fullPath, newName, 65536);
    }

    /// What is in the folder `out`, files in folders too, with its names sorted.
    Names extracted() const {
        Names names;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(out)) {
            if (!entry.is_directory()) {
                names.push_back(std::filesystem::relative(entry.path(), out));
            }
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    orvtest::ScratchFolder folder;
    const std::string path = folder / "a.zip";
    const std::string out = folder / "out";
};

static_assert(std::has_virtual_destructor_v<CZipArchive>);
static_assert(std::is_same_v<decltype(CZipArchive().Close(0, false)), CZipString>);

TEST_F(CZipArchiveTest, EntriesComeBackInTheirOrder) {
    const std::vector<std::string> contents = {"one", "", noise(300000), std::string(300000, 'x')};
    const Names names = {"situation_001", "empty", "fol/der/noise", "\xE7\x8A\xB6\xE6\x85\x8B \xC3\xA6"};
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(path.c_str(), 4, 0));
    EXPECT_EQ(archive.GetCount(), 0u);
    for (std::size_t i = 0; i < contents.size(); ++i) {
        EXPECT_TRUE(add(archive, contents[i], names[i].c_str()));
        EXPECT_EQ(archive.GetCount(), i + 1);
    }
    EXPECT_EQ(archive.Close(0, false), path);
    EXPECT_EQ(archive.GetCount(), 0u);

    ASSERT_TRUE(archive.Open(path.c_str(), 3, 0));
    ASSERT_EQ(archive.GetCount(), contents.size());
    for (std::size_t i = 0; i < contents.size(); ++i) {
        const std::string name = "out/" + std::to_string(i);
        EXPECT_TRUE(archive.ExtractFile(i, out.c_str(), false, (folder / name).c_str(), 65536));
        EXPECT_EQ(folder.read(name), contents[i]);
    }
    EXPECT_EQ(archive.Close(0, false), path);
}

TEST_F(CZipArchiveTest, AddingTakesTheContentsAtOnce) {
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(path.c_str(), 4, 0));
    ASSERT_TRUE(add(archive, "first", "a"));
    ASSERT_TRUE(add(archive, "second", "b")); // the same file, written anew
    std::filesystem::remove(folder / "source");
    ASSERT_EQ(archive.Close(0, false), path);
    ASSERT_TRUE(extract(0, false, nullptr));
    ASSERT_TRUE(extract(1, false, nullptr));
    EXPECT_EQ(folder.read("out/a"), "first");
    EXPECT_EQ(folder.read("out/b"), "second");
}

TEST_F(CZipArchiveTest, AddingRefusesWhatIsNoFile) {
    const std::string pipe = folder / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(path.c_str(), 4, 0));
    for (const std::string& file : {folder / "missing", out, pipe, std::string()}) {
        EXPECT_FALSE(archive.AddNewFile(file.c_str(), "a", -1, 7, 65536)) << file;
    }
    EXPECT_FALSE(archive.AddNewFile(nullptr, "a", -1, 7, 65536));
    EXPECT_EQ(archive.GetCount(), 0u);
    EXPECT_TRUE(add(archive, "good", "a"));
    EXPECT_EQ(archive.Close(0, false), path);
    EXPECT_TRUE(extract(0, false, nullptr));
}

TEST_F(CZipArchiveTest, AddingRefusesNamesThatNobodyCouldUse) {
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(path.c_str(), 4, 0));
    EXPECT_TRUE(add(archive, "bytes", "taken"));
    for (const char* name : {"taken", "", static_cast<const char*>(nullptr), "/a", "../a", "a/../b", "a/", "a//b",
                             "./a", "..", ".", "a\\b", "a/..", "\xFF"}) {
        EXPECT_FALSE(add(archive, "bytes", name)) << (name ? name : "null");
    }
    EXPECT_TRUE(add(archive, "bytes", "..a/b..c"));
    EXPECT_EQ(archive.GetCount(), 2u);
}

TEST_F(CZipArchiveTest, TheLevelChoosesHowToPack) {
    const std::string text(100000, 'x');
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(path.c_str(), 4, 0));
    EXPECT_TRUE(add(archive, text, "usual", -1));
    EXPECT_TRUE(add(archive, text, "stored", 0));
    EXPECT_TRUE(add(archive, text, "fast", 1));
    EXPECT_TRUE(add(archive, text, "small", 9));
    EXPECT_FALSE(add(archive, text, "too small", 10));
    EXPECT_FALSE(add(archive, text, "negative", -2));
    ASSERT_EQ(archive.Close(0, false), path);
    zip_t* zip = zip_open(path.c_str(), ZIP_RDONLY, nullptr);
    std::vector<zip_uint64_t> sizes;
    for (zip_uint64_t i = 0; i < 4; ++i) {
        zip_stat_t status;
        zip_stat_index(zip, i, 0, &status);
        EXPECT_EQ(status.comp_method, i == 1 ? ZIP_CM_STORE : ZIP_CM_DEFLATE);
        sizes.push_back(status.comp_size);
    }
    zip_discard(zip);
    EXPECT_EQ(sizes[1], text.size());
    EXPECT_LT(sizes[0], 1000u);
    EXPECT_LT(sizes[3], sizes[2]);
}

TEST_F(CZipArchiveTest, EntriesAreAsOldAsTheirFiles) {
    const std::string source = folder.write("source", "bytes");
    ASSERT_EQ(outputOf("TZ=UTC touch -t 202001020304.06 '" + source + "'"), "");
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(path.c_str(), 4, 0));
    ASSERT_TRUE(archive.AddNewFile(source.c_str(), "a", -1, 7, 65536));
    ASSERT_EQ(archive.Close(0, false), path);
    zip_t* zip = zip_open(path.c_str(), ZIP_RDONLY, nullptr);
    zip_stat_t status;
    zip_stat_index(zip, 0, 0, &status);
    zip_discard(zip);
    EXPECT_EQ(status.mtime, 1577934246); // date -u -d '2020-01-02 03:04:06' +%s
}

TEST_F(CZipArchiveTest, BuffersMayHaveAnySize) {
    const std::string bytes = noise(100000);
    for (const unsigned long size : {0ul, 1ul, 99999ul, 100000ul, ~0ul}) {
        CZipArchive archive;
        ASSERT_TRUE(archive.Open(path.c_str(), 4, 0));
        ASSERT_TRUE(archive.AddNewFile(folder.write("source", bytes).c_str(), "a", -1, 7, size));
        ASSERT_EQ(archive.Close(0, false), path);
        ASSERT_TRUE(archive.Open(path.c_str(), 3, 0));
        ASSERT_TRUE(archive.ExtractFile(0, out.c_str(), false, nullptr, static_cast<unsigned int>(size)));
        EXPECT_EQ(folder.read("out/a"), bytes);
    }
}

TEST_F(CZipArchiveTest, OneWithoutEntriesIsAZipFile) {
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(path.c_str(), 4, 0));
    EXPECT_EQ(archive.Close(0, false), path);
    EXPECT_EQ(folder.read("a.zip"), emptyZip);
    ASSERT_TRUE(archive.Open(path.c_str(), 3, 0));
    EXPECT_EQ(archive.GetCount(), 0u);
    EXPECT_FALSE(archive.ExtractFile(0, out.c_str(), false, "a", 65536));
    // The list of an empty one ends with 1, a warning; a file that is none ends with 9.
    EXPECT_EQ(outputOf("unzip -Z1 '" + path + "' 2>&1"), "Empty zipfile.\nstatus 1");
}

TEST_F(CZipArchiveTest, UnzipReadsWhatWasWritten) {
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(path.c_str(), 4, 0));
    ASSERT_TRUE(add(archive, "", "empty"));
    ASSERT_TRUE(add(archive, "some text", "fol/der/text"));
    ASSERT_TRUE(add(archive, noise(100000), "noise"));
    ASSERT_EQ(archive.Close(0, false), path);
    EXPECT_EQ(outputOf("unzip -tqq '" + path + "'"), "");
    EXPECT_EQ(outputOf("unzip -Z1 '" + path + "'"), "empty\nfol/der/text\nnoise\n");
    EXPECT_EQ(outputOf("unzip -p '" + path + "' fol/der/text"), "some text");
    EXPECT_EQ(outputOf("unzip -p '" + path + "' noise"), noise(100000));
}

TEST_F(CZipArchiveTest, ReadsWhatZipHasWritten) {
    std::filesystem::create_directory(folder / "in");
    folder.write("in/a b", "deflated deflated deflated deflated");
    folder.write("in/\xC3\xA6", noise(1000));
    folder.write("in/c", "");
    const orvtest::ScopedWorkingFolder here(folder.path());
    // With a list of entries alone, with an entry for the folder, and as a stream, whose sizes follow the bytes.
    for (const char* command :
         {"zip -q -D -r a.zip in", "zip -q -0 -D -r a.zip in", "zip -q -D -r - in | cat > a.zip"}) {
        std::filesystem::remove(path);
        ASSERT_EQ(outputOf(command), "");
        CZipArchive archive;
        ASSERT_TRUE(archive.Open("a.zip", 3, 0));
        ASSERT_EQ(archive.GetCount(), 3u);
        for (int i = 0; i < 3; ++i) {
            EXPECT_TRUE(archive.ExtractFile(i, "out", true, nullptr, 65536));
        }
        EXPECT_EQ(outputOf("diff -r in out/in"), "");
        std::filesystem::remove_all(folder / "out/in");
    }
}

TEST_F(CZipArchiveTest, ZipAddsToWhatWasWritten) {
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(path.c_str(), 4, 0));
    ASSERT_EQ(archive.Close(0, false), path);
    folder.write("more", "of zip");
    ASSERT_EQ(outputOf("cd '" + folder.path() + "' && zip -q a.zip more"), "");
    ASSERT_TRUE(extract(0, false, nullptr));
    EXPECT_EQ(folder.read("out/more"), "of zip");
}

TEST_F(CZipArchiveTest, FoldersInNamesFallAway) {
    writeNames({"a/b/c", "../d", "/tmp/e", "x\\..\\f", "a/../g"});
    for (int i = 0; i < 5; ++i) {
        EXPECT_TRUE(extract(i, false, nullptr)) << i;
    }
    EXPECT_EQ(extracted(), (Names{"c", "d", "e", "f", "g"}));
    EXPECT_EQ(folder.names(), (Names{"a.zip", "out"}));
}

TEST_F(CZipArchiveTest, TheNewNameTakesThePlaceOfTheOld) {
    writeNames({"a/b/c"});
    EXPECT_TRUE(extract(0, false, "plain"));
    EXPECT_TRUE(extract(0, false, (out + "/whole").c_str()));
    EXPECT_TRUE(extract(0, false, "/nowhere/at/all/else"));
    EXPECT_TRUE(extract(0, false, ""));
    EXPECT_TRUE(extract(0, true, "kept/where/it/is"));
    EXPECT_FALSE(extract(0, true, "/nowhere/at/all"));
    EXPECT_FALSE(extract(0, false, "folder/"));
    EXPECT_EQ(extracted(), (Names{"c", "else", "kept/where/it/is", "plain", "whole"}));
}

TEST_F(CZipArchiveTest, FoldersInNamesAreKeptWhenAsked) {
    writeNames({"a/b/c", "a/b/d", "../e", "/tmp/orvtest", "a/../../f", "a\\..\\g", "a//h", "./i"});
    EXPECT_TRUE(extract(0, true, nullptr));
    EXPECT_TRUE(extract(1, true, nullptr));
    for (int i = 2; i < 8; ++i) {
        EXPECT_FALSE(extract(i, true, nullptr)) << i;
    }
    EXPECT_EQ(extracted(), (Names{"a/b/c", "a/b/d"}));
    EXPECT_EQ(folder.names(), (Names{"a.zip", "out"}));
    std::filesystem::remove_all(out + "/a");
    folder.write("out/a", "in the way");
    EXPECT_FALSE(extract(0, true, nullptr));
}

TEST_F(CZipArchiveTest, NamesThatEndInDotsLeadNowhere) {
    writeNames({"..", "a/..", ".", "a/.", "b\\.."});
    for (int i = 0; i < 5; ++i) {
        EXPECT_FALSE(extract(i, false, nullptr)) << i;
        EXPECT_FALSE(extract(i, true, nullptr)) << i;
    }
    EXPECT_EQ(extracted(), Names());
}

TEST_F(CZipArchiveTest, FoldersCountAndAreNotExtracted) {
    std::filesystem::create_directory(folder / "in");
    folder.write("in/a", "bytes");
    ASSERT_EQ(outputOf("cd '" + folder.path() + "' && zip -q -r a.zip in"), "");
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(path.c_str(), 3, 0));
    EXPECT_EQ(archive.GetCount(), 2u);
    EXPECT_FALSE(archive.ExtractFile(0, out.c_str(), false, "a", 65536));
    EXPECT_FALSE(archive.ExtractFile(0, out.c_str(), true, nullptr, 65536));
    EXPECT_TRUE(archive.ExtractFile(1, out.c_str(), false, nullptr, 65536));
    EXPECT_EQ(extracted(), Names{"a"});
}

TEST_F(CZipArchiveTest, EntriesThatLieAreRefused) {
    struct Lie {
        const char* about;
        const char* text;
        int level;
        std::size_t offset; ///< In the record of the list of entries.
        std::uint32_t value;
    };
    // 400 bytes of one letter are packed to about 10, 400 of noise stay 400.
    const Lie lies[] = {
        {"more bytes than there are", "x", -1, 24, 401},
        {"fewer bytes than there are", "x", -1, 24, 399},
        {"no bytes", "x", -1, 24, 0},
        {"more bytes than can be packed", "x", -1, 24, 1000000},
        {"a checksum", "x", -1, 16, 12345},
        {"packed bytes beyond the end", "x", -1, 20, 100000},
        {"fewer packed bytes", "x", -1, 20, 4},
        {"a stored size that is not the packed one", "", 0, 24, 401},
        {"both sizes of a stored one", "", 0, 20, 399},
        {"the checksum of a stored one", "", 0, 16, 12345},
    };
    for (const Lie& lie : lies) {
        writeArchive(*lie.text ? std::string(400, 'x') : noise(400), "entry", lie.level);
        ASSERT_TRUE(extract(0, false, nullptr));
        std::filesystem::remove(out + "/entry");
        patch("PK\1\2", lie.offset, lie.value);
        EXPECT_FALSE(extract(0, false, nullptr)) << lie.about;
        EXPECT_EQ(extracted(), Names()) << lie.about;
    }
}

TEST_F(CZipArchiveTest, DamagedBytesAreRefused) {
    writeArchive(noise(1000));
    std::string bytes = folder.read("a.zip");
    bytes[500] = static_cast<char>(bytes[500] ^ 1);
    folder.write("a.zip", bytes);
    EXPECT_FALSE(extract(0, false, nullptr));
    EXPECT_EQ(extracted(), Names());
}

TEST_F(CZipArchiveTest, LargeEntriesMayNotBePackedTooWell) {
    const std::size_t large = 32 << 20;
    // Zeros are packed about 1:1000.
    writeArchive(std::string(large, '\0'));
    EXPECT_TRUE(extract(0, false, "at the limit"));
    writeArchive(std::string(large + 1, '\0'));
    EXPECT_FALSE(extract(0, false, "beyond"));
    writeArchive(std::string(large + 1, '\0'), "entry", 0);
    EXPECT_TRUE(extract(0, false, "stored"));
    // A block of noise that is there 33 times does not fit deflate's memory of 32 kB.
    std::string much;
    for (int i = 0; i < 33; ++i) {
        much += noise(1 << 20);
    }
    writeArchive(much);
    EXPECT_TRUE(extract(0, false, "noise"));
    EXPECT_EQ(extracted(), (Names{"at the limit", "noise", "stored"}));
}

TEST_F(CZipArchiveTest, LargeEntriesMayBePackedAHundredTimes) {
    // A kilobyte of noise before so many zeros, which are packed about 1:1000: 1/150 and 1/45. The noise before is too
    // far away for deflate to remember.
    for (const int zeros : {200000, 50000}) {
        std::string bytes;
        while (bytes.size() <= (32 << 20)) {
            bytes += noise(1024) + std::string(zeros, '\0');
        }
        writeArchive(bytes);
        EXPECT_EQ(extract(0, false, nullptr), zeros == 50000) << zeros;
    }
}

TEST_F(CZipArchiveTest, EncryptedEntriesAreRefused) {
    folder.write("a", "bytes");
    ASSERT_EQ(outputOf("cd '" + folder.path() + "' && zip -q -P secret a.zip a"), "");
    EXPECT_FALSE(extract(0, false, nullptr));
    EXPECT_EQ(extracted(), Names());
}

TEST_F(CZipArchiveTest, UnknownPackingIsRefused) {
    writeArchive(noise(100));
    std::string bytes = folder.read("a.zip");
    bytes[bytes.find("PK\1\2") + 10] = 97; // the method
    folder.write("a.zip", bytes);
    EXPECT_FALSE(extract(0, false, nullptr));
}

TEST_F(CZipArchiveTest, ExtractingReplacesAFile) {
    writeArchive("new");
    folder.write("out/entry", "old and longer");
    ASSERT_TRUE(extract(0, false, nullptr));
    EXPECT_EQ(folder.read("out/entry"), "new");
}

TEST_F(CZipArchiveTest, ExtractingDoesNotFollowALink) {
    writeArchive("new");
    folder.write("precious", "old");
    std::filesystem::create_symlink(folder / "precious", out + "/entry");
    ASSERT_TRUE(extract(0, false, nullptr));
    EXPECT_EQ(folder.read("precious"), "old");
    EXPECT_EQ(folder.read("out/entry"), "new");
    EXPECT_FALSE(std::filesystem::is_symlink(out + "/entry"));
}

TEST_F(CZipArchiveTest, ExtractingNeedsAPlace) {
    writeArchive("bytes");
    std::filesystem::create_directory(out + "/entry");
    EXPECT_FALSE(extract(0, false, nullptr));
    EXPECT_TRUE(std::filesystem::is_directory(out + "/entry"));
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(path.c_str(), 3, 0));
    EXPECT_FALSE(archive.ExtractFile(0, (folder / "missing").c_str(), false, "a", 65536));
    EXPECT_FALSE(archive.ExtractFile(0, path.c_str(), false, "a", 65536));
}

TEST_F(CZipArchiveTest, WithoutAFolderTheWorkingOneIsMeant) {
    writeArchive("bytes");
    const orvtest::ScopedWorkingFolder here(out);
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(path.c_str(), 3, 0));
    EXPECT_TRUE(archive.ExtractFile(0, "", false, "a", 65536));
    EXPECT_TRUE(archive.ExtractFile(0, nullptr, true, "b/c", 65536));
    EXPECT_EQ(extracted(), (Names{"a", "b/c"}));
}

TEST_F(CZipArchiveTest, AFullDiskLeavesNoPartOfAnEntry) {
    writeArchive(noise(100000));
    {
        const orvtest::FileSizeLimit full(70000);
        EXPECT_FALSE(extract(0, false, nullptr));
    }
    EXPECT_EQ(extracted(), Names());
    for (int change = 2;; ++change) { // the first is to delete what was there
        const orvtest::FileFaults faults(orvtest::FileFault::FAIL, change);
        const bool isExtracted = extract(0, false, nullptr);
        if (!faults.hasStruck()) {
            EXPECT_TRUE(isExtracted);
            // To open, and to write 100000 bytes in pieces of 65536.
            EXPECT_EQ(change, 5);
            break;
        }
        EXPECT_FALSE(isExtracted);
        EXPECT_EQ(extracted(), Names());
    }
}

TEST_F(CZipArchiveTest, IndexesHaveToBeBelowTheCount) {
    writeArchive("bytes");
    EXPECT_FALSE(extract(1, false, "a"));
    EXPECT_FALSE(extract(~0ull, false, "a"));
}

TEST_F(CZipArchiveTest, OpeningRefusesWhatCannotBeRead) {
    writeArchive(noise(1000));
    const std::string whole = folder.read("a.zip");
    folder.write("short.zip", whole.substr(0, whole.size() - 30));
    folder.write("text.zip", "no archive");
    folder.write("nothing.zip", "");
    ASSERT_EQ(::mkfifo((folder / "pipe.zip").c_str(), 0600), 0);
    for (const char* name : {"short.zip", "text.zip", "nothing.zip", "pipe.zip", "missing.zip", "out"}) {
        CZipArchive archive;
        EXPECT_FALSE(archive.Open((folder / name).c_str(), 3, 0)) << name;
        EXPECT_EQ(archive.GetCount(), 0u);
        EXPECT_FALSE(archive.ExtractFile(0, out.c_str(), false, "a", 65536));
        EXPECT_EQ(archive.Close(0, false), "");
        EXPECT_TRUE(archive.Open(path.c_str(), 3, 0));
    }
}

TEST_F(CZipArchiveTest, OpeningKnowsTwoModesAndOneVolume) {
    writeArchive("bytes");
    for (const int mode : {-1, 0, 1, 2, 5}) {
        EXPECT_FALSE(CZipArchive().Open(path.c_str(), mode, 0)) << mode;
    }
    for (const int mode : {3, 4}) {
        EXPECT_FALSE(CZipArchive().Open(path.c_str(), mode, 1));
        EXPECT_FALSE(CZipArchive().Open("", mode, 0));
        EXPECT_FALSE(CZipArchive().Open(nullptr, mode, 0));
    }
    EXPECT_EQ(CZipArchive::READ, 3);
    EXPECT_EQ(CZipArchive::CREATE, 4);
}

TEST_F(CZipArchiveTest, AnOpenOneStaysOpen) {
    writeArchive("bytes");
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(path.c_str(), 3, 0));
    EXPECT_FALSE(archive.Open(path.c_str(), 3, 0));
    EXPECT_FALSE(archive.Open((folder / "other.zip").c_str(), 4, 0));
    EXPECT_EQ(archive.GetCount(), 1u);
    EXPECT_EQ(archive.Close(0, false), path);
    EXPECT_EQ(archive.Close(0, false), "");
    ASSERT_TRUE(archive.Open((folder / "other.zip").c_str(), 4, 0));
    EXPECT_FALSE(archive.Open(path.c_str(), 3, 0));
    EXPECT_TRUE(add(archive, "bytes", "a"));
    EXPECT_EQ(archive.Close(0, false), folder / "other.zip");
}

TEST_F(CZipArchiveTest, ReadingAndWritingDoNotMix) {
    writeArchive("bytes");
    CZipArchive archive;
    EXPECT_FALSE(add(archive, "bytes", "a"));
    ASSERT_TRUE(archive.Open(path.c_str(), 3, 0));
    EXPECT_FALSE(add(archive, "bytes", "a"));
    archive.Close(0, false);
    ASSERT_TRUE(archive.Open(path.c_str(), 4, 0));
    ASSERT_TRUE(add(archive, "bytes", "a"));
    EXPECT_FALSE(archive.ExtractFile(0, out.c_str(), false, "a", 65536));
}

TEST_F(CZipArchiveTest, CreatingNeedsAPlace) {
    EXPECT_FALSE(CZipArchive().Open((folder / "missing/a.zip").c_str(), 4, 0));
    EXPECT_FALSE(CZipArchive().Open(out.c_str(), 4, 0));
    EXPECT_FALSE(CZipArchive().Open((folder / "out/").c_str(), 4, 0));
    EXPECT_FALSE(CZipArchive().Open("/proc/a.zip", 4, 0));
    EXPECT_EQ(folder.names(), Names{"out"});
}

TEST_F(CZipArchiveTest, ClosingMakesTheFile) {
    folder.write("a.zip", "old");
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(path.c_str(), 4, 0));
    ASSERT_TRUE(add(archive, "bytes", "a"));
    EXPECT_EQ(folder.read("a.zip"), "old");
    EXPECT_EQ(folder.names(), (Names{"a.zip", "out", "source"}));
    ASSERT_EQ(archive.Close(0, false), path);
    EXPECT_EQ(folder.names(), (Names{"a.zip", "out", "source"}));
    EXPECT_TRUE(extract(0, false, nullptr));
}

TEST_F(CZipArchiveTest, WhatIsGivenUpOrNotClosedIsNotWritten) {
    folder.write("a.zip", "old");
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(path.c_str(), 4, 0));
    ASSERT_TRUE(add(archive, "bytes", "a"));
    EXPECT_EQ(archive.Close(1, false), "");
    {
        CZipArchive another;
        ASSERT_TRUE(another.Open(path.c_str(), 4, 0));
        ASSERT_TRUE(add(another, "bytes", "a"));
    }
    EXPECT_EQ(folder.read("a.zip"), "old");
    EXPECT_EQ(folder.names(), (Names{"a.zip", "out", "source"}));
}

TEST_F(CZipArchiveTest, AFullDiskLeavesTheOldFile) {
    for (const int entryCount : {0, 3}) {
        bool isStruck = true;
        int change = 1;
        for (; isStruck; ++change) {
            folder.write("a.zip", "old");
            CZipArchive archive;
            ASSERT_TRUE(archive.Open(path.c_str(), 4, 0));
            for (int i = 0; i < entryCount; ++i) {
                ASSERT_TRUE(add(archive, noise(100000), std::to_string(i).c_str()));
            }
            const Names before = folder.names();
            const orvtest::FileFaults faults(orvtest::FileFault::FAIL, change);
            const CZipString closed = archive.Close(0, false);
            isStruck = faults.hasStruck();
            EXPECT_EQ(folder.names(), before);
            // Behind the renaming only the folder is synced, whose failure does not count.
            EXPECT_EQ(closed, folder.read("a.zip") == "old" ? "" : path) << change;
        }
        // To open, write, sync, rename and sync again, and the one that did not strike.
        EXPECT_GE(change - 1, 6);
        EXPECT_TRUE(CZipArchive().Open(path.c_str(), 3, 0));
    }
}

TEST_F(CZipArchiveTest, AKilledProcessLeavesTheOldFileOrTheNewOne) {
    folder.write("source", noise(200000));
    int oldCount = 0;
    bool isKilled = true;
    for (int change = 1; isKilled; ++change) {
        folder.write("a.zip", "old");
        isKilled = orvtest::isKilledAt(change, [&] {
            CZipArchive archive;
            archive.Open(path.c_str(), 4, 0);
            archive.AddNewFile((folder / "source").c_str(), "a", -1, 7, 65536);
            archive.Close(0, false);
        });
        if (folder.read("a.zip") == "old") {
            ++oldCount;
            continue;
        }
        ASSERT_TRUE(extract(0, false, nullptr)) << change;
        EXPECT_TRUE(folder.read("out/a") == noise(200000)) << change;
    }
    EXPECT_FALSE(folder.read("a.zip") == "old");
    EXPECT_GE(oldCount, 7); // the trial at opening, and to open, write some times, sync and rename
}

TEST_F(CZipArchiveTest, ThousandsOfEntries) {
    const std::string source = folder.write("source", "bytes");
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(path.c_str(), 4, 0));
    for (int i = 0; i < 3000; ++i) {
        ASSERT_TRUE(archive.AddNewFile(source.c_str(), std::to_string(i).c_str(), -1, 7, 65536));
    }
    ASSERT_EQ(archive.Close(0, false), path);
    ASSERT_TRUE(archive.Open(path.c_str(), 3, 0));
    ASSERT_EQ(archive.GetCount(), 3000u);
    ASSERT_TRUE(archive.ExtractFile(2999, out.c_str(), false, nullptr, 65536));
    EXPECT_EQ(folder.read("out/2999"), "bytes");
}

} // namespace
