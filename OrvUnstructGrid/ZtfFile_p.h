#pragma once

#include "LibUnstructGrid/VTOFile.h"
#include "OrvCore/Str.h"
#include "OrvUnstructGrid/Error.h"

#include <cstddef>
#include <string>
#include <vector>

#include <sys/stat.h>

namespace orv::ug {

/// A text file that is held open and read from any place on.
class ZtfFile : public VTFile {
public:
    explicit ZtfFile(const Str& filename);

    /// Refuses what is not a regular text file, with the system's reason.
    bool openText(Error* error);

    /// False, with a text, when size or time of the file are no longer those of the opening.
    bool checkUnchanged(Error* error) const;

    const Str& name() const;
    long long size() const;

    /// Returns how many bytes there were: fewer at the end of the file or when the disk fails.
    std::size_t readAt(long long offset, char* buffer, std::size_t count);

private:
    Str m_name;
    struct stat m_status = {};
};

/// Where a line begins.
struct ZtfPlace {
    long long offset = 0;
    long long line = 0; ///< The number of the line, from 1.
};

/// Walks the lines that say something: without comments, which begin with "#" outside quotes, and without blank lines.
/// Outside quotes commas and all kinds of blanks become plain blanks.
class ZtfLines {
public:
    /// A longer line is taken for damage.
    static constexpr std::size_t LONGEST_LINE = std::size_t(1) << 24;

    /// @param error filled by fail(); may be null
    ZtfLines(ZtfFile& file, Error* error);

    /// The line there is the next one. From the beginning until called.
    void seek(const ZtfPlace& place);

    /// False at the end of the file, and with a text when the line cannot be one of a text file.
    bool next();
    bool hasFailed() const;

    const std::string& text() const;
    std::size_t wordCount() const;
    /// Where the line begins.
    const ZtfPlace& place() const;
    /// Where the line behind it begins.
    const ZtfPlace& end() const;
    /// The bytes behind the line.
    long long bytesLeft() const;

    /// Fills the error with "NAME, line 12: text", for the line that next() came to, or at which the file ended.
    /// Always false.
    bool fail(const Str& text);

private:
    bool readLine();
    void clean();
    bool fillUnlessFilled();

    ZtfFile& m_file;
    Error* m_error;
    std::vector<char> m_buffer;
    long long m_bufferOffset = 0;
    std::size_t m_bufferSize = 0;
    std::string m_text;
    ZtfPlace m_place;
    ZtfPlace m_end;
    bool m_hasFailed = false;
};

} // namespace orv::ug
