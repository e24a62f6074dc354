#include "Tools/PasswordFile.h"

#include "Tests/Support/ScratchFolder.h"
#include "Tools/CommandError.h"

#include <gmock/gmock.h>

using orvapp::CommandError;
using orvapp::readPassword;
using testing::HasSubstr;
using testing::Not;
using testing::ThrowsMessage;

TEST(PasswordFile, NoFileIsNoPassword) {
    EXPECT_EQ(readPassword(""), "");
}

TEST(PasswordFile, TheFirstLineIsThePassword) {
    const orvtest::ScratchFolder folder;
    const struct {
        const char* content;
        const char* password;
    } rows[] = {
        {"open sesame\n", "open sesame"},   {"open sesame", "open sesame"},
        {"open sesame\r\n", "open sesame"}, {"one\ntwo\n", "one"},
        {" blanks \n", " blanks "},         {"\xC3\xA4\n", "\xC3\xA4"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(readPassword(folder.write("secret", row.content)), row.password);
    }
}

TEST(PasswordFile, ALongLineIsTakenUpToItsLimit) {
    const orvtest::ScratchFolder folder;
    const std::string longest(1000, 'x');
    EXPECT_EQ(readPassword(folder.write("secret", longest + "\nmore")), longest);
    EXPECT_THROW(readPassword(folder.write("secret", longest + "x")), CommandError);
}

TEST(PasswordFile, AnEmptyFirstLineIsRefused) {
    const orvtest::ScratchFolder folder;
    for (const char* content : {"", "\n", "\r\n", "\nsecond\n"}) {
        const std::string path = folder.write("secret", content);
        EXPECT_THAT([&] { readPassword(path); },
                    ThrowsMessage<CommandError>("the first line of the password file \"" + path +
                                                "\" has to be the password, of up to 1000 bytes"));
    }
}

TEST(PasswordFile, AMissingFileIsTold) {
    EXPECT_THAT(
        [] { readPassword("/no/such/file"); },
        ThrowsMessage<CommandError>("cannot open the password file \"/no/such/file\": No such file or directory"));
}

// A folder opens, but cannot be read.
TEST(PasswordFile, AFolderHasNoPassword) {
    const orvtest::ScratchFolder folder;
    EXPECT_THROW(readPassword(folder.path()), CommandError);
}
