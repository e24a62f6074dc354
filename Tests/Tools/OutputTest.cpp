#include "Tools/Output.h"

#include "Tests/Support/ScratchFolder.h"
#include "Tools/CommandError.h"

#include <gmock/gmock.h>

#include <csignal>
#include <filesystem>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace orvapp;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

std::string failure(const std::string& path) {
    try {
        OutputFile file(path);
        file.write("text");
        file.commit();
    } catch (const CommandError& error) {
        return error.what();
    }
    return "none";
}

void writeFile(const std::string& path, const std::string& text) {
    OutputFile file(path);
    file.write(text);
    file.commit();
}

} // namespace

TEST(Output, AFileAppearsWithCommit) {
    const orvtest::ScratchFolder folder;
    {
        OutputFile file(folder / "out.csv");
        file.write("one ");
        file.write("two");
        EXPECT_FALSE(std::filesystem::exists(folder / "out.csv"));
        file.commit();
    }
    EXPECT_THAT(folder.names(), ElementsAre("out.csv"));
    EXPECT_EQ(folder.read("out.csv"), "one two");
}

TEST(Output, WithoutCommitNothingIsLeft) {
    const orvtest::ScratchFolder folder;
    folder.write("out.csv", "earlier");
    {
        OutputFile file(folder / "out.csv");
        file.write(std::string(1 << 20, 'x'));
    }
    EXPECT_THAT(folder.names(), ElementsAre("out.csv"));
    EXPECT_EQ(folder.read("out.csv"), "earlier");
}

TEST(Output, WritesMoreThanItsBuffer) {
    const orvtest::ScratchFolder folder;
    const std::string line(1000, 'x');
    {
        OutputFile file(folder / "out.csv");
        for (int i = 0; i < 1000; ++i) {
            file.write(line);
        }
        file.commit();
    }
    EXPECT_EQ(folder.read("out.csv"), std::string(1000000, 'x'));
}

TEST(Output, TakesThePermissionsOfTheEarlierFileOrTheUsualOnes) {
    const orvtest::ScratchFolder folder;
    const mode_t mask = umask(022);
    folder.write("earlier", "");
    chmod((folder / "earlier").c_str(), 0640);
    writeFile(folder / "earlier", "");
    writeFile(folder / "new", "");
    umask(mask);

    using std::filesystem::perms;
    EXPECT_EQ(std::filesystem::status(folder / "earlier").permissions(), perms(0640));
    EXPECT_EQ(std::filesystem::status(folder / "new").permissions(), perms(0644));
}

TEST(Output, ASymbolicLinkStaysALink) {
    const orvtest::ScratchFolder folder;
    folder.write("target", "earlier");
    std::filesystem::create_symlink(folder / "target", folder / "link");
    writeFile(folder / "link", "later");
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "link"));
    EXPECT_EQ(folder.read("target"), "later");
}

TEST(Output, ADeviceIsWrittenAndNotReplaced) {
    writeFile("/dev/null", "text");
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
    EXPECT_EQ(failure("/dev/full"), "cannot write \"/dev/full\": No space left on device");
}

TEST(Output, SaysWhyAFileCannotBeWritten) {
    const orvtest::ScratchFolder folder;
    const std::string missing = folder / "missing/out.csv";
    EXPECT_EQ(failure(missing), "cannot write \"" + missing + "\": No such file or directory");
    const std::string directory = folder.path();
    EXPECT_EQ(failure(directory), "cannot write \"" + directory + "\": Is a directory");
    EXPECT_EQ(failure(""), "cannot write \"\": No such file or directory");
    EXPECT_THAT(folder.names(), IsEmpty());
}

TEST(Output, AWriteProtectedFileIsLeftAlone) {
    const orvtest::ScratchFolder folder;
    std::filesystem::permissions(folder.path(), std::filesystem::perms::all);
    const std::string path = folder.write("out.csv", "earlier");
    chmod(path.c_str(), 0444);
    const pid_t child = fork();
    if (child == 0) {
        // Nothing is protected from root.
        const bool isProtected = geteuid() != 0 || setuid(65534) == 0;
        _exit(isProtected && failure(path) == "cannot write \"" + path + "\": Permission denied" ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    EXPECT_EQ(orvtest::readWholeFile(path), "earlier");
}

TEST(Output, AReaderThatGoesAwayIsNoError) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    close(ends[0]);
    const auto earlier = std::signal(SIGPIPE, SIG_IGN);
    EXPECT_THROW(writeAll(ends[1], "text", "the pipe"), OutputClosed);
    std::signal(SIGPIPE, earlier);
    close(ends[1]);
}

TEST(Output, AnInterruptionRemovesTheTemporaryFile) {
    const orvtest::ScratchFolder folder;
    for (const int signalNumber : {SIGINT, SIGTERM, SIGHUP}) {
        const pid_t child = fork();
        if (child == 0) {
            OutputFile file(folder / "out.csv");
            file.write("text");
            if (folder.names().size() == 1) {
                raise(signalNumber);
            }
            _exit(0);
        }
        int status = 0;
        waitpid(child, &status, 0);
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == signalNumber);
        EXPECT_THAT(folder.names(), IsEmpty());
    }
}

TEST(Output, AnIgnoredInterruptionStaysIgnored) {
    const orvtest::ScratchFolder folder;
    const pid_t child = fork();
    if (child == 0) {
        std::signal(SIGHUP, SIG_IGN);
        OutputFile file(folder / "out.csv");
        raise(SIGHUP);
        file.commit();
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    EXPECT_THAT(folder.names(), SizeIs(1));
}
