#include "OrvImportCae/CaeFile.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace orv::imp::cae {
namespace {

constexpr std::size_t SMALLEST_CHUNK = CaeLines::LONGEST_LINE;
constexpr std::size_t LARGEST_CHUNK = std::size_t(1) << 15; // What the caches of a processor hold easily.

bool failToOpen(const std::string& name, const std::string& reason, ug::Error* error) {
    return ug::fail(error, Str("cannot open \"" + name + "\": " + reason));
}

bool isSameTime(const timespec& a, const timespec& b) {
    return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
}

} // namespace

CaeFile::~CaeFile() {
    if (m_descriptor >= 0) {
        ::close(m_descriptor);
    }
}

bool CaeFile::open(const std::string& name, ug::Error* error) {
    // Opening a pipe waits for a writer unless told not to.
    const int descriptor = ::open(name.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) {
        return failToOpen(name, std::strerror(errno), error);
    }
    return openDescriptor(descriptor, name, error);
}

bool CaeFile::openDescriptor(int descriptor, const std::string& name, ug::Error* error) {
    m_descriptor = descriptor;
    m_name = name;
    if (::fstat(descriptor, &m_status) != 0) {
        return failToOpen(name, std::strerror(errno), error);
    }
    if (S_ISDIR(m_status.st_mode)) {
        return failToOpen(name, std::strerror(EISDIR), error);
    }
    if (!S_ISREG(m_status.st_mode)) {
        return failToOpen(name, "Not a regular file", error);
    }
    return true;
}

const std::string& CaeFile::name() const {
    return m_name;
}

std::int64_t CaeFile::size() const {
    return m_status.st_size;
}

std::size_t CaeFile::read(std::int64_t offset, char* buffer, std::size_t count) const {
    std::size_t done = 0;
    while (done < count) {
        const ssize_t got = ::pread(m_descriptor, buffer + done, count - done, offset + std::int64_t(done));
        if (got > 0) {
            done += std::size_t(got);
        } else if (got == 0 || errno != EINTR) {
            break;
        }
    }
    if (m_meter && m_tellBegin < m_tellEnd) {
        m_meter->tell(double(offset + std::int64_t(done) - m_tellBegin) / double(m_tellEnd - m_tellBegin));
    }
    return done;
}

void CaeFile::tellProgress(ug::ProgressMeter* meter, std::int64_t begin, std::int64_t end) {
    m_meter = meter;
    m_tellBegin = begin;
    m_tellEnd = end;
}

bool CaeFile::checkUnchanged(ug::Error* error) const {
    struct stat now = {};
    if (::fstat(m_descriptor, &now) == 0 && now.st_size == m_status.st_size &&
        isSameTime(now.st_mtim, m_status.st_mtim)) {
        return true;
    }
    return ug::fail(error, Str(m_name + " has changed since it was opened; open it again"));
}

void CaeFile::noteBinaryAt(std::int64_t offset) {
    m_binaryBegin = std::min(m_binaryBegin, offset);
}

std::string CaeFile::place(std::int64_t offset) const {
    if (offset >= m_binaryBegin) {
        return m_name + ", byte " + std::to_string(offset);
    }
    std::vector<char> chunk(LARGEST_CHUNK);
    std::int64_t line = 1;
    for (std::int64_t at = 0; at < offset;) {
        const std::size_t wanted = std::size_t(std::min<std::int64_t>(offset - at, LARGEST_CHUNK));
        const std::size_t got = read(at, chunk.data(), wanted);
        if (got == 0) {
            break;
        }
        line += std::count(chunk.begin(), chunk.begin() + std::ptrdiff_t(got), '\n');
        at += std::int64_t(got);
    }
    return m_name + ", line " + std::to_string(line);
}

bool CaeFile::fail(std::int64_t offset, const std::string& text, ug::Error* error) const {
    if (error) {
        error->setMessage(Str(place(offset) + ": " + text));
    }
    return false;
}

CaeLines::CaeLines(const CaeFile& file) : m_file(file) {}

void CaeLines::seek(std::int64_t offset) {
    m_offset = offset;
    m_lineOffset = offset;
    m_line = {};
    m_lineEndSize = 0;
    m_chunkSize = 0;
}

bool CaeLines::next() {
    m_lineOffset = m_offset;
    std::int64_t inBuffer = m_offset - m_bufferOffset;
    const char* begin = nullptr;
    const char* end = nullptr;
    const char* newline = nullptr;
    if (inBuffer >= 0 && inBuffer < std::int64_t(m_bufferSize)) {
        begin = m_buffer.data() + inBuffer;
        end = m_buffer.data() + m_bufferSize;
        newline = static_cast<const char*>(std::memchr(begin, '\n', std::size_t(end - begin)));
    }
    if (!newline) {
        if (!fill()) {
            return false;
        }
        begin = m_buffer.data();
        end = begin + m_bufferSize;
        newline = static_cast<const char*>(std::memchr(begin, '\n', m_bufferSize));
    }
    const char* lineEnd = newline ? newline : end;
    lineEnd = std::min(lineEnd, begin + LONGEST_LINE);
    m_lineEndSize = lineEnd == newline ? 1 : 0;
    m_offset = m_lineOffset + (lineEnd - begin) + std::int64_t(m_lineEndSize);
    if (m_lineEndSize == 1 && lineEnd > begin && lineEnd[-1] == '\r') {
        --lineEnd;
        ++m_lineEndSize;
    }
    m_line = {begin, std::size_t(lineEnd - begin)};
    return true;
}

void CaeLines::putBack() {
    m_offset = m_lineOffset;
}

std::string_view CaeLines::line() const {
    return m_line;
}

std::int64_t CaeLines::lineOffset() const {
    return m_lineOffset;
}

std::int64_t CaeLines::offset() const {
    return m_offset;
}

std::size_t CaeLines::lineEndSize() const {
    return m_lineEndSize;
}

// Reads from the line's begin on: little at first, since a header may be all that is wanted here, then ever more.
bool CaeLines::fill() {
    m_chunkSize = m_chunkSize == 0 ? SMALLEST_CHUNK : std::min(4 * m_chunkSize, LARGEST_CHUNK);
    m_buffer.resize(m_chunkSize);
    m_bufferOffset = m_offset;
    m_bufferSize = m_file.read(m_offset, m_buffer.data(), m_chunkSize);
    return m_bufferSize > 0;
}

CaeBytes::CaeBytes(const CaeFile& file) : m_file(file) {}

const char* CaeBytes::at(std::int64_t offset, std::size_t count) {
    if (std::int64_t(count) > m_file.size() - offset) {
        return nullptr;
    }
    const std::int64_t inBuffer = offset - m_bufferOffset;
    if (inBuffer >= 0 && inBuffer + std::int64_t(count) <= std::int64_t(m_bufferSize)) {
        return m_buffer.data() + inBuffer;
    }
    m_buffer.resize(std::max(count, LARGEST_CHUNK));
    m_bufferOffset = offset;
    m_bufferSize = m_file.read(offset, m_buffer.data(), m_buffer.size());
    return m_bufferSize >= count ? m_buffer.data() : nullptr;
}

std::string quotedForPeople(std::string_view line) {
    constexpr std::size_t LONGEST_QUOTE = 40;
    std::string text(line.substr(0, LONGEST_QUOTE));
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c < ' ' || c > '~'; }, '?');
    return '"' + text + (line.size() > LONGEST_QUOTE ? "...\"" : "\"");
}

} // namespace orv::imp::cae
