#include "OrvCore/FileReplacement_p.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orv {
namespace {

constexpr std::size_t BUFFER_SIZE = std::size_t(1) << 16;

std::string behindLinks(const std::string& name) {
    char resolved[PATH_MAX];
    return ::realpath(name.c_str(), resolved) ? std::string(resolved) : name;
}

std::string folderOf(const std::string& name) {
    const std::size_t slash = name.rfind('/');
    return slash == std::string::npos ? "." : name.substr(0, slash + 1);
}

// So that the new name survives a crash too. Not every file system can do that, and none needs it to be asked twice.
void syncFolder(const std::string& folder) {
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor >= 0) {
        ::fsync(descriptor);
        ::close(descriptor);
    }
}

bool failToWrite(const Str& name, const char* problem, Str* reason) {
    if (reason) {
        *reason = "cannot write \"" + name + "\": " + problem;
    }
    return false;
}

} // namespace

FileReplacement::~FileReplacement() {
    if (m_descriptor >= 0) {
        ::close(m_descriptor);
        ::unlink(m_temporary.c_str());
    }
}

bool FileReplacement::open(const Str& filename, Str* reason) {
    m_name = filename;
    m_target = behindLinks(filename.toStdString());
    struct stat status = {};
    const bool isThere = ::stat(m_target.c_str(), &status) == 0;
    if (isThere && !S_ISREG(status.st_mode)) {
        return failToWrite(m_name, S_ISDIR(status.st_mode) ? "Is a directory" : "Not a regular file", reason);
    }
    for (int i = 0; m_descriptor < 0; ++i) {
        m_temporary = m_target + ".tmp" + std::to_string(::getpid()) + "-" + std::to_string(i);
        m_descriptor = ::open(m_temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (m_descriptor < 0 && errno != EEXIST) {
            return failToWrite(m_name, std::strerror(errno), reason);
        }
    }
    if (isThere && ::fchmod(m_descriptor, status.st_mode & 07777) != 0) {
        m_errorNumber = errno;
    }
    return true;
}

const std::string& FileReplacement::temporaryName() const {
    return m_temporary;
}

void FileReplacement::write(std::string_view bytes) {
    const std::size_t at = m_position - m_bufferPosition;
    m_buffer.replace(at, std::min(bytes.size(), m_buffer.size() - at), bytes);
    m_position += bytes.size();
    m_size = std::max(m_size, m_position);
    if (m_buffer.size() >= BUFFER_SIZE) {
        flush();
    }
}

bool FileReplacement::hasFailed() const {
    return m_errorNumber != 0;
}

std::uint64_t FileReplacement::position() const {
    return m_position;
}

std::uint64_t FileReplacement::size() const {
    return m_size;
}

void FileReplacement::seek(std::uint64_t position) {
    m_position = position;
    if (position < m_bufferPosition || position > m_bufferPosition + m_buffer.size()) {
        flush();
    }
}

bool FileReplacement::commit(Str* reason) {
    flush();
    if (!hasFailed() && ::fsync(m_descriptor) != 0) {
        m_errorNumber = errno;
    }
    if (!hasFailed() && ::rename(m_temporary.c_str(), m_target.c_str()) != 0) {
        m_errorNumber = errno;
    }
    if (hasFailed()) {
        return failToWrite(m_name, std::strerror(m_errorNumber), reason);
    }
    ::close(m_descriptor);
    m_descriptor = -1;
    syncFolder(folderOf(m_target));
    return true;
}

void FileReplacement::flush() {
    for (std::size_t done = 0; done < m_buffer.size() && !hasFailed();) {
        const ssize_t written =
            ::pwrite(m_descriptor, m_buffer.data() + done, m_buffer.size() - done, off_t(m_bufferPosition + done));
        if (written > 0) {
            done += std::size_t(written);
        } else if (written == 0 || errno != EINTR) {
            m_errorNumber = written == 0 ? ENOSPC : errno;
        }
    }
    m_buffer.clear();
    m_bufferPosition = m_position;
}

} // namespace orv
