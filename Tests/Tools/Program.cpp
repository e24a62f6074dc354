#include "Tests/Tools/Program.h"

#include "Tests/Support/TestPaths.h"

#include <cstdlib>

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

namespace orvtest {

namespace {

struct Channel {
    int readEnd;
    int writeEnd;
};

Channel pipeChannel() {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) {
        std::abort();
    }
    return {ends[0], ends[1]};
}

Channel terminalChannel() {
    int master = -1;
    int slave = -1;
    if (openpty(&master, &slave, nullptr, nullptr, nullptr) != 0) {
        std::abort();
    }
    fcntl(master, F_SETFD, FD_CLOEXEC);
    fcntl(slave, F_SETFD, FD_CLOEXEC);
    return {master, slave};
}

[[noreturn]] void becomeOrvapp(const std::vector<std::string>& arguments) {
    std::vector<char*> argv = {const_cast<char*>("orvapp")};
    for (const std::string& argument : arguments) {
        argv.push_back(const_cast<char*>(argument.c_str()));
    }
    argv.push_back(nullptr);
    execv(ORVAPP, argv.data());
    _exit(127);
}

/// Reads what there is; false at the end, which a terminal tells by an error.
bool readSome(int descriptor, std::string* text) {
    char buffer[4096];
    const ssize_t count = read(descriptor, buffer, sizeof buffer);
    if (count > 0) {
        text->append(buffer, std::size_t(count));
    }
    return count > 0;
}

/// Both at once: a program that waits for the one to be read must not make us wait at the other.
void readBoth(int output, int messages, Outcome* outcome) {
    pollfd ends[2] = {{output, POLLIN, 0}, {messages, POLLIN, 0}};
    std::string* texts[2] = {&outcome->output, &outcome->messages};
    while (ends[0].fd >= 0 || ends[1].fd >= 0) {
        poll(ends, 2, -1);
        for (int i = 0; i < 2; ++i) {
            if (ends[i].fd >= 0 && ends[i].revents && !readSome(ends[i].fd, texts[i])) {
                ends[i].fd = -1;
            }
        }
    }
}

Outcome runWith(const Channel& messages, const std::vector<std::string>& arguments,
                const std::function<void()>& prepare) {
    const Channel output = pipeChannel();
    const pid_t child = fork();
    if (child == 0) {
        dup2(output.writeEnd, STDOUT_FILENO);
        dup2(messages.writeEnd, STDERR_FILENO);
        if (prepare) {
            prepare();
        }
        becomeOrvapp(arguments);
    }
    close(output.writeEnd);
    close(messages.writeEnd);
    Outcome outcome;
    readBoth(output.readEnd, messages.readEnd, &outcome);
    close(output.readEnd);
    close(messages.readEnd);
    int status = 0;
    waitpid(child, &status, 0);
    outcome.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return outcome;
}

} // namespace

Outcome runOrvapp(const std::vector<std::string>& arguments, const std::function<void()>& prepare) {
    return runWith(pipeChannel(), arguments, prepare);
}

Outcome runOrvappOnTerminal(const std::vector<std::string>& arguments) {
    return runWith(terminalChannel(), arguments, {});
}

std::string bracketFile() {
    return exampleDataFolder() + "/bracket.frd";
}

} // namespace orvtest
