#pragma once

#include "OrvCore/Str.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace orv {

/// A file that is written under a temporary name in the folder of its target, and takes the target's place at the end.
/// Without commit() nothing of it stays.
class FileReplacement {
public:
    FileReplacement() = default;
    ~FileReplacement();

    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;

    /// Makes the temporary file, with the rights of the target when there is one. A link is followed. Refuses a target
    /// that is not a regular file. Once per object.
    /// @param reason told when it fails, with the name; may be null
    bool open(const Str& filename, Str* reason);

    /// The name that the bytes go to.
    const std::string& temporaryName() const;

    /// Writes at position(), through a buffer. After a failure, which commit() tells, nothing more is written.
    void write(std::string_view bytes);
    bool hasFailed() const;

    /// Where the next bytes go: behind the last ones, unless seek() says otherwise.
    std::uint64_t position() const;
    std::uint64_t size() const;
    /// @param position up to size(); bytes that are there already are replaced
    void seek(std::uint64_t position);

    /// Brings all bytes to the disk and renames the file, so that after a crash of the machine either the old or the
    /// new content is there.
    /// @param reason told when it fails, with the name; may be null
    bool commit(Str* reason);

private:
    void flush();

    Str m_name;
    std::string m_target;
    std::string m_temporary;
    std::string m_buffer;
    std::uint64_t m_bufferPosition = 0;
    std::uint64_t m_position = 0; ///< In the buffer or just behind it.
    std::uint64_t m_size = 0;
    int m_descriptor = -1;
    int m_errorNumber = 0;
};

} // namespace orv
