#include "Tools/Output.h"

#include "Tools/CommandError.h"
#include "Tools/DisplayText.h"

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <system_error>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orvapp {

namespace {

constexpr std::size_t BUFFER_SIZE = 1 << 16;

std::string reason(int errorNumber) {
    return std::generic_category().message(errorNumber);
}

/// What the signal handler removes: a plain array, since a handler may touch little else.
char temporaryFile[PATH_MAX];
volatile std::sig_atomic_t hasTemporaryFile = 0;

extern "C" void removeTemporaryFileAndEnd(int signalNumber) {
    if (hasTemporaryFile) {
        unlink(temporaryFile);
    }
    std::signal(signalNumber, SIG_DFL);
    std::raise(signalNumber);
}

void removeOnSignal(const std::string& path) {
    if (path.size() >= sizeof temporaryFile) {
        return;
    }
    std::memcpy(temporaryFile, path.c_str(), path.size() + 1);
    hasTemporaryFile = 1;
    for (const int signalNumber : {SIGINT, SIGTERM, SIGHUP}) {
        if (std::signal(signalNumber, removeTemporaryFileAndEnd) == SIG_IGN) {
            std::signal(signalNumber, SIG_IGN); // nohup has asked for it
        }
    }
}

/// Where a path leads to when it is a symbolic link, so that the link survives the renaming.
std::string resolved(const std::string& path) {
    const std::unique_ptr<char, void (*)(void*)> real(realpath(path.c_str(), nullptr), std::free);
    return real ? real.get() : path;
}

/// The permissions that a file gets which is created in the usual way.
mode_t usualMode() {
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

} // namespace

void writeAll(int descriptor, std::string_view text, const std::string& name) {
    while (!text.empty()) {
        const ssize_t written = ::write(descriptor, text.data(), text.size());
        if (written >= 0) {
            text.remove_prefix(std::size_t(written));
        } else if (errno == EPIPE) {
            throw OutputClosed();
        } else if (errno != EINTR) {
            throw CommandError("cannot write " + name + ": " + reason(errno));
        }
    }
}

void writeStandardOutput(std::string_view text) {
    writeAll(STDOUT_FILENO, text, "standard output");
}

void writeStandardError(std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = ::write(STDERR_FILENO, text.data(), text.size());
        if (written < 0 && errno != EINTR) {
            return;
        }
        text.remove_prefix(written < 0 ? 0 : std::size_t(written));
    }
}

void writeMessage(std::string_view text) {
    writeStandardError("orvapp: " + printable(text) + '\n');
}

OutputFile::OutputFile(const std::string& path) : m_name(path == "-" ? "standard output" : '"' + path + '"') {
    m_buffer.reserve(BUFFER_SIZE);
    if (path == "-") {
        m_descriptor = STDOUT_FILENO;
        return;
    }
    struct stat status;
    if (stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode)) {
        m_descriptor = ::open(path.c_str(), O_WRONLY | O_CLOEXEC);
    } else {
        m_target = resolved(path);
        openTemporaryFile();
    }
    if (m_descriptor < 0) {
        failed();
    }
}

OutputFile::~OutputFile() {
    if (m_descriptor > STDERR_FILENO) {
        ::close(m_descriptor);
    }
    if (!m_temporary.empty()) {
        unlink(m_temporary.c_str());
        hasTemporaryFile = 0;
    }
}

void OutputFile::openTemporaryFile() {
    if (access(m_target.c_str(), F_OK) == 0 && access(m_target.c_str(), W_OK) != 0) {
        return; // a rename would replace a file that is protected from writing
    }
    std::string name = m_target + ".XXXXXX";
    m_descriptor = mkostemp(name.data(), O_CLOEXEC);
    if (m_descriptor < 0) {
        return;
    }
    m_temporary = name;
    removeOnSignal(m_temporary);
    struct stat earlier;
    fchmod(m_descriptor, stat(m_target.c_str(), &earlier) == 0 ? earlier.st_mode & 07777 : usualMode());
}

void OutputFile::write(std::string_view text) {
    m_buffer += text;
    if (m_buffer.size() >= BUFFER_SIZE) {
        flush();
    }
}

void OutputFile::commit() {
    flush();
    close();
    if (!m_temporary.empty()) {
        if (std::rename(m_temporary.c_str(), m_target.c_str()) != 0) {
            failed();
        }
        m_temporary.clear();
        hasTemporaryFile = 0;
    }
}

void OutputFile::flush() {
    writeAll(m_descriptor, m_buffer, m_name);
    m_buffer.clear();
}

void OutputFile::close() {
    const int descriptor = m_descriptor;
    if (descriptor > STDERR_FILENO) {
        m_descriptor = -1;
        if (::close(descriptor) != 0) {
            failed();
        }
    }
}

void OutputFile::failed() const {
    throw CommandError("cannot write " + m_name + ": " + reason(errno));
}

} // namespace orvapp
