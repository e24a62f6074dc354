#include "OrvImportCae/CaeFile.h"

#include "Tests/OrvImportCae/FrdSamples.h"
#include "Tests/Support/OrdinaryUser.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace orv;
using namespace orv::imp::cae;
using orvtest::ScratchFolder;

namespace {

std::string whyNotOpened(const ScratchFolder& folder, const std::string& path) {
    CaeFile file;
    ug::Error error;
    EXPECT_FALSE(file.open(path, &error));
    return without(folder, error.message());
}

TEST(CaeFile, RefusesWithTheSystemsReason) {
    ScratchFolder folder;
    EXPECT_EQ(whyNotOpened(folder, folder.path() + "/a.frd"), "cannot open \"a.frd\": No such file or directory");
    ASSERT_EQ(::mkdir((folder.path() + "/b.frd").c_str(), 0700), 0);
    EXPECT_EQ(whyNotOpened(folder, folder.path() + "/b.frd"), "cannot open \"b.frd\": Is a directory");
    // Nobody writes into this pipe: a reader that waited would wait forever.
    ASSERT_EQ(::mkfifo((folder.path() + "/c.frd").c_str(), 0600), 0);
    EXPECT_EQ(whyNotOpened(folder, folder.path() + "/c.frd"), "cannot open \"c.frd\": Not a regular file");
}

TEST(CaeFile, RefusesWhatMayNotBeRead) {
    ScratchFolder folder;
    ASSERT_EQ(::chmod(folder.path().c_str(), 0755), 0);
    const std::string path = folder.write("a.frd", "x");
    ASSERT_EQ(::chmod(path.c_str(), 0), 0);
    EXPECT_TRUE(orvtest::holdsForAnOrdinaryUser(
        [&] { return whyNotOpened(folder, path) == "cannot open \"a.frd\": Permission denied"; }));
}

TEST(CaeFile, ReadsAtPlaces) {
    ScratchFolder folder;
    CaeFile file;
    ASSERT_TRUE(file.open(folder.write("a.frd", "0123456789"), nullptr));
    EXPECT_EQ(file.size(), 10);
    char buffer[5] = "....";
    EXPECT_EQ(file.read(3, buffer, 4), 4u);
    EXPECT_STREQ(buffer, "3456");
    EXPECT_EQ(file.read(8, buffer, 4), 2u);
    EXPECT_EQ(file.read(10, buffer, 4), 0u);
}

TEST(CaeFile, NoticesChanges) {
    ScratchFolder folder;
    const std::string path = folder.write("a.frd", "0123456789");
    CaeFile file;
    ASSERT_TRUE(file.open(path, nullptr));
    ug::Error error;
    EXPECT_TRUE(file.checkUnchanged(&error));
    folder.write("a.frd", "0123");
    EXPECT_FALSE(file.checkUnchanged(&error));
    EXPECT_EQ(without(folder, error.message()), "a.frd has changed since it was opened; open it again");
}

TEST(CaeFile, NoticesANewTimeOnly) {
    ScratchFolder folder;
    const std::string path = folder.write("a.frd", "0123456789");
    CaeFile file;
    ASSERT_TRUE(file.open(path, nullptr));
    const timespec times[2] = {{1000, 0}, {1000, 0}};
    ASSERT_EQ(::utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
    EXPECT_FALSE(file.checkUnchanged(nullptr));
}

TEST(CaeFile, TellsPlacesAsLinesAndBehindBinaryDataAsBytes) {
    ScratchFolder folder;
    CaeFile file;
    ASSERT_TRUE(file.open(folder.write("a.frd", "one\ntwo\nthree\n"), nullptr));
    EXPECT_EQ(without(folder, file.place(0)), "a.frd, line 1");
    EXPECT_EQ(without(folder, file.place(3)), "a.frd, line 1");
    EXPECT_EQ(without(folder, file.place(4)), "a.frd, line 2");
    EXPECT_EQ(without(folder, file.place(14)), "a.frd, line 4");
    file.noteBinaryAt(8);
    file.noteBinaryAt(12);
    EXPECT_EQ(without(folder, file.place(4)), "a.frd, line 2");
    EXPECT_EQ(without(folder, file.place(8)), "a.frd, byte 8");
    ug::Error error;
    EXPECT_FALSE(file.fail(9, "why", &error));
    EXPECT_EQ(without(folder, error.message()), "a.frd, byte 9: why");
    EXPECT_FALSE(file.fail(9, "why", nullptr));
}

struct Line {
    std::string text;
    std::int64_t offset;
    std::size_t endSize;

    bool operator==(const Line&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Line& line) {
    return out << '"' << line.text.substr(0, 20) << "\" at " << line.offset << " end " << line.endSize;
}

std::vector<Line> walk(CaeLines& lines) {
    std::vector<Line> all;
    while (lines.next()) {
        all.push_back({std::string(lines.line()), lines.lineOffset(), lines.lineEndSize()});
    }
    return all;
}

TEST(CaeLines, WalksLinesOfAllKinds) {
    ScratchFolder folder;
    CaeFile file;
    ASSERT_TRUE(file.open(folder.write("a.frd", "one\n\ntwo\r\n\r\nend"), nullptr));
    CaeLines lines(file);
    EXPECT_EQ(walk(lines), (std::vector<Line>{{"one", 0, 1}, {"", 4, 1}, {"two", 5, 2}, {"", 10, 2}, {"end", 12, 0}}));
    lines.seek(5);
    EXPECT_EQ(lines.offset(), 5);
    EXPECT_TRUE(lines.next());
    EXPECT_EQ(lines.line(), "two");
    EXPECT_EQ(lines.offset(), 10);
    lines.putBack();
    EXPECT_EQ(lines.offset(), 5);
    EXPECT_TRUE(lines.next());
    EXPECT_EQ(lines.line(), "two");
}

TEST(CaeLines, WalksLinesAcrossPieces) {
    // Lengths from 0 to 199 and on, more than all piece sizes together.
    std::string content;
    std::vector<Line> expected;
    for (int i = 0; content.size() < 1000000; ++i) {
        const std::string text(std::size_t(i * 7 % 200), char('a' + i % 26));
        expected.push_back({text, std::int64_t(content.size()), 1});
        content += text + "\n";
    }
    ScratchFolder folder;
    CaeFile file;
    ASSERT_TRUE(file.open(folder.write("a.frd", content), nullptr));
    CaeLines lines(file);
    EXPECT_EQ(walk(lines), expected);
}

TEST(CaeLines, DividesLinesThatAreTooLong) {
    const std::size_t longest = CaeLines::LONGEST_LINE;
    ScratchFolder folder;
    CaeFile file;
    ASSERT_TRUE(file.open(folder.write("a.frd", std::string(longest, 'a') + "b\nc\n"), nullptr));
    CaeLines lines(file);
    EXPECT_EQ(walk(lines), (std::vector<Line>{{std::string(longest, 'a'), 0, 0},
                                              {"b", std::int64_t(longest), 1},
                                              {"c", std::int64_t(longest) + 2, 1}}));
}

TEST(CaeBytes, HandsOutPiecesOfAnySize) {
    std::string content;
    for (int i = 0; i < 1000000; ++i) {
        content += char(i * 31 % 251);
    }
    ScratchFolder folder;
    CaeFile file;
    ASSERT_TRUE(file.open(folder.write("a.frd", content), nullptr));
    CaeBytes bytes(file);
    const auto expectPiece = [&](std::int64_t offset, std::size_t count) {
        const char* piece = bytes.at(offset, count);
        ASSERT_NE(piece, nullptr) << offset;
        EXPECT_EQ(std::string(piece, count), content.substr(std::size_t(offset), count)) << offset;
    };
    expectPiece(0, 28);
    expectPiece(28, 28);
    expectPiece(262100, 100);
    expectPiece(5, 10);
    expectPiece(1000, 900000);
    expectPiece(999999, 1);
    EXPECT_EQ(bytes.at(999999, 2), nullptr);
    EXPECT_EQ(bytes.at(0, 1000001), nullptr);
    EXPECT_EQ(bytes.at(1000001, 1), nullptr);
}

TEST(CaeBytes, HasNothingWhereTheFileGotShorter) {
    ScratchFolder folder;
    const std::string path = folder.write("a.frd", std::string(1000, 'x'));
    CaeFile file;
    ASSERT_TRUE(file.open(path, nullptr));
    ASSERT_EQ(::truncate(path.c_str(), 500), 0);
    CaeBytes bytes(file);
    EXPECT_NE(bytes.at(400, 100), nullptr);
    EXPECT_EQ(bytes.at(400, 101), nullptr);
}

TEST(CaeFile, QuotesLinesForPeople) {
    EXPECT_EQ(quotedForPeople(""), "\"\"");
    EXPECT_EQ(quotedForPeople(" -1 a\tb\xFF"), "\" -1 a?b?\"");
    EXPECT_EQ(quotedForPeople(std::string(40, 'x')), '"' + std::string(40, 'x') + '"');
    EXPECT_EQ(quotedForPeople(std::string(41, 'x')), '"' + std::string(40, 'x') + "...\"");
}

} // namespace
