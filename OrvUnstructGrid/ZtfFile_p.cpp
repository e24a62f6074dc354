#include "OrvUnstructGrid/ZtfFile_p.h"

#include "OrvUnstructGrid/Convert.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace orv::ug {
namespace {

constexpr std::size_t CHUNK_SIZE = std::size_t(1) << 16;

bool isSameTime(const timespec& a, const timespec& b) {
    return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
}

bool failToOpen(const Str& name, const Str& reason, Error* error) {
    return fail(error, "cannot open \"" + name + "\": " + reason);
}

// Blanks of all kinds, and the comma.
bool isSeparator(char c) {
    return c == ' ' || c == ',' || (c >= '\t' && c <= '\r');
}

} // namespace

ZtfFile::ZtfFile(const Str& filename) : VTFile(Convert::toVTString(filename), VT_FILE_READ), m_name(filename) {}

bool ZtfFile::openText(Error* error) {
    // Asked before the file is opened: opening a pipe would wait for a writer.
    if (::stat(m_name.toStdString().c_str(), &m_status) != 0) {
        return failToOpen(m_name, std::strerror(errno), error);
    }
    if (!S_ISREG(m_status.st_mode)) {
        return failToOpen(m_name, S_ISDIR(m_status.st_mode) ? "Is a directory" : "Not a regular file", error);
    }
    if (!Open()) {
        return failToOpen(m_name, std::strerror(errno), error);
    }
    if (VTCheckBinary(m_pFile)) {
        return failToOpen(m_name, "not a text file, but .ztf files are", error);
    }
    return true;
}

bool ZtfFile::checkUnchanged(Error* error) const {
    struct stat now = {};
    if (m_pFile && ::fstat(::fileno(m_pFile), &now) == 0 && now.st_size == m_status.st_size &&
        isSameTime(now.st_mtim, m_status.st_mtim)) {
        return true;
    }
    return ug::fail(error, m_name + " has changed since it was opened; open it again");
}

const Str& ZtfFile::name() const {
    return m_name;
}

long long ZtfFile::size() const {
    return m_status.st_size;
}

std::size_t ZtfFile::readAt(long long offset, char* buffer, std::size_t count) {
    return VTSetFilePos(m_pFile, offset) ? std::size_t(Read(buffer, 1, int(count))) : 0;
}

ZtfLines::ZtfLines(ZtfFile& file, Error* error) : m_file(file), m_error(error), m_buffer(CHUNK_SIZE), m_end{0, 1} {}

void ZtfLines::seek(const ZtfPlace& place) {
    m_end = place;
}

bool ZtfLines::next() {
    while (readLine()) {
        clean();
        if (wordCount() > 0) {
            return true;
        }
    }
    return false;
}

bool ZtfLines::hasFailed() const {
    return m_hasFailed;
}

const std::string& ZtfLines::text() const {
    return m_text;
}

std::size_t ZtfLines::wordCount() const {
    std::size_t count = 0;
    char previous = ' ';
    for (const char c : m_text) {
        count += previous == ' ' && c != ' ';
        previous = c;
    }
    return count;
}

const ZtfPlace& ZtfLines::place() const {
    return m_place;
}

const ZtfPlace& ZtfLines::end() const {
    return m_end;
}

long long ZtfLines::bytesLeft() const {
    return std::max(0ll, m_file.size() - m_end.offset);
}

bool ZtfLines::fail(const Str& text) {
    m_hasFailed = true;
    return ug::fail(m_error, m_file.name() + ", line " + std::to_string(m_place.line) + ": " + text);
}

// False at the end of the file; its last line may lack a line feed.
bool ZtfLines::readLine() {
    m_text.clear();
    m_place = m_end;
    bool isWhole = false;
    while (!isWhole && fillUnlessFilled()) {
        const char* begin = m_buffer.data() + (m_end.offset - m_bufferOffset);
        const char* bufferEnd = m_buffer.data() + m_bufferSize;
        const void* lineFeed = std::memchr(begin, '\n', std::size_t(bufferEnd - begin));
        const char* end = lineFeed ? static_cast<const char*>(lineFeed) : bufferEnd;
        m_text.append(begin, end);
        isWhole = lineFeed;
        m_end.offset += (end - begin) + isWhole;
        if (m_text.size() > LONGEST_LINE) {
            return fail("a line with more than " + std::to_string(LONGEST_LINE) + " bytes; is this a .ztf file?");
        }
    }
    m_end.line += isWhole;
    if (m_text.find('\0') != std::string::npos) {
        return fail("a zero byte, which no text has; the file is damaged");
    }
    return isWhole || !m_text.empty();
}

void ZtfLines::clean() {
    if (m_place.line == 1 && m_text.starts_with("\xEF\xBB\xBF")) {
        m_text.erase(0, 3);
    }
    bool isQuoted = false;
    for (std::size_t i = 0; i < m_text.size(); ++i) {
        if (m_text[i] == '"') {
            isQuoted = !isQuoted;
        } else if (!isQuoted && m_text[i] == '#') {
            m_text.resize(i);
        } else if (!isQuoted && isSeparator(m_text[i])) {
            m_text[i] = ' ';
        }
    }
}

// So that the buffer holds the byte at the end of what has been read. False at the end of the file.
bool ZtfLines::fillUnlessFilled() {
    if (m_end.offset < m_bufferOffset || m_end.offset >= m_bufferOffset + (long long)m_bufferSize) {
        m_bufferOffset = m_end.offset;
        m_bufferSize = m_file.readAt(m_end.offset, m_buffer.data(), m_buffer.size());
    }
    return m_bufferSize > 0;
}

} // namespace orv::ug
