#pragma once

#include "LibCore/rvfExport.h"
#include "OrvUnstructGrid/Error.h"
#include "OrvUnstructGrid/ProgressMeter.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include <sys/stat.h>

namespace orv::imp::cae {

/// A file that is read in pieces at given places and held open between reads.
///
/// It is never mapped into memory: a file that another program makes shorter must end in an error, not in a signal.
class ORV_API CaeFile {
public:
    CaeFile() = default;
    ~CaeFile();

    CaeFile(const CaeFile&) = delete;
    CaeFile& operator=(const CaeFile&) = delete;

    /// Refuses what is not a regular file, with the system's reason. Once per object.
    bool open(const std::string& name, ug::Error* error);

    /// The same for an open descriptor, which is closed in the end in any case. `name` serves for texts only.
    bool openDescriptor(int descriptor, const std::string& name, ug::Error* error);

    const std::string& name() const;
    /// The bytes that the file had when it was opened.
    std::int64_t size() const;

    /// Reads up to `count` bytes. Returns how many there were: fewer at the end of the file or when the disk fails.
    std::size_t read(std::int64_t offset, char* buffer, std::size_t count) const;

    /// From the next read on, tells how far reads have come between two places. `meter` may be null.
    void tellProgress(ug::ProgressMeter* meter, std::int64_t begin, std::int64_t end);

    /// False, with a text, when size or time of the file are no longer those of the opening.
    bool checkUnchanged(ug::Error* error) const;

    /// From this byte on the file holds binary blocks, so that places behind it are told as bytes and not as lines.
    /// The first call counts.
    void noteBinaryAt(std::int64_t offset);

    /// "NAME, line 12" or "NAME, byte 3400": the place of a byte, counted from 1 and from 0. Reads the file up to
    /// there, which is why only texts for people ask for it.
    std::string place(std::int64_t offset) const;

    /// Fills the error with "PLACE: text". Always false.
    bool fail(std::int64_t offset, const std::string& text, ug::Error* error) const;

private:
    int m_descriptor = -1;
    std::string m_name;
    struct stat m_status = {};
    ug::ProgressMeter* m_meter = nullptr;
    std::int64_t m_tellBegin = 0;
    std::int64_t m_tellEnd = 0;
    std::int64_t m_binaryBegin = std::numeric_limits<std::int64_t>::max();
};

/// Walks the lines of a file from any place on.
class ORV_API CaeLines {
public:
    explicit CaeLines(const CaeFile& file);

    /// The next line begins at this byte.
    void seek(std::int64_t offset);

    /// Goes to the next line; false at the end of the file.
    bool next();

    /// Steps back, so that next() gives the same line again.
    void putBack();

    /// The line without its end. Valid until the next move. Of a line that is longer than LONGEST_LINE the first
    /// characters; the others follow as a line of their own, and nothing that is expected anywhere looks like that.
    std::string_view line() const;
    /// Where the line begins.
    std::int64_t lineOffset() const;
    /// Where the next line begins.
    std::int64_t offset() const;
    /// The bytes that end the line: 1, 2 with a carriage return, 0 when the file ends instead.
    std::size_t lineEndSize() const;

    static constexpr std::size_t LONGEST_LINE = 4096;

private:
    bool fill();

    const CaeFile& m_file;
    std::vector<char> m_buffer;
    std::int64_t m_bufferOffset = 0;
    std::size_t m_bufferSize = 0;
    std::size_t m_chunkSize = 0;
    std::int64_t m_lineOffset = 0;
    std::int64_t m_offset = 0;
    std::string_view m_line;
    std::size_t m_lineEndSize = 0;
};

/// Hands out pieces of a file, reading ahead.
class ORV_API CaeBytes {
public:
    explicit CaeBytes(const CaeFile& file);

    /// The `count` bytes at a place; null when the file has fewer or they cannot be read. Valid until the next call.
    const char* at(std::int64_t offset, std::size_t count);

private:
    const CaeFile& m_file;
    std::vector<char> m_buffer;
    std::int64_t m_bufferOffset = 0;
    std::size_t m_bufferSize = 0;
};

/// A line for use in a text: in quotes, at most 40 characters, unprintable ones as "?".
ORV_API std::string quotedForPeople(std::string_view line);

} // namespace orv::imp::cae
