#include "LibIo/rvfFile.h"

#include "Tests/Support/ScratchFolder.h"

#include <gtest/gtest.h>

using orvtest::ScratchFolder;
using rvf::File;
using rvf::String;

namespace {

TEST(File, OpensToReadAndToWrite) {
    const ScratchFolder folder;
    const String name = String::fromUtf8((folder / "a.txt").c_str());
    FILE* written = File::fopen(name, "wb");
    ASSERT_TRUE(written);
    std::fputs("abc", written);
    std::fclose(written);
    EXPECT_EQ(folder.read("a.txt"), "abc");
    FILE* read = File::fopen(name, "rb");
    ASSERT_TRUE(read);
    EXPECT_EQ(std::fgetc(read), 'a');
    std::fclose(read);
}

TEST(File, NamesReachTheSystemAsUtf8) {
    const ScratchFolder folder;
    FILE* stream = File::fopen(String::fromUtf8(folder.path().c_str()) + L"/\u00E5\U0001F600", "w");
    ASSERT_TRUE(stream);
    std::fclose(stream);
    EXPECT_TRUE(folder.has("\xC3\xA5\xF0\x9F\x98\x80"));
}

TEST(File, FailureIsANullStream) {
    const ScratchFolder folder;
    const String path = String::fromUtf8(folder.path().c_str());
    EXPECT_EQ(File::fopen(path + "/missing", "r"), nullptr);
    EXPECT_EQ(File::fopen(path, "w"), nullptr);
    EXPECT_EQ(File::fopen("", "r"), nullptr);
    folder.write("a.txt", "abc");
    EXPECT_EQ(File::fopen(path + "/a.txt", "?"), nullptr);
    EXPECT_EQ(File::fopen(path + "/a.txt/below", "r"), nullptr);
}

TEST(File, SharedOpenIsTheSame) {
    const ScratchFolder folder;
    folder.write("a.txt", "abc");
    const String name = String::fromUtf8((folder / "a.txt").c_str());
    for (auto mode : {File::DENY_NONE, File::DENY_WRITE, File::DENY_READ, File::DENY_ALL}) {
        FILE* stream = File::shared_fopen(name, "rb", mode);
        ASSERT_TRUE(stream);
        FILE* second = File::shared_fopen(name, "r+b", mode);
        ASSERT_TRUE(second);
        std::fclose(stream);
        std::fclose(second);
    }
    EXPECT_EQ(File::shared_fopen(name + "x", "rb", File::DENY_NONE), nullptr);
}

} // namespace
