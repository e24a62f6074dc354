#pragma once

#include "LibCore/rvfExport.h"
#include "OrvImportCae/CaeFile.h"
#include "OrvUnstructGrid/Error.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace orv::imp::cae {

/// A place in a file and what lies there, in a buffer that goes along: what readers of words and numbers stand on.
class ORV_API CaeInput {
public:
    CaeInput(const CaeInput&) = delete;
    CaeInput& operator=(const CaeInput&) = delete;

    void seek(std::int64_t offset);
    std::int64_t offset() const;

protected:
    /// @param error where failures go; may be null
    CaeInput(const CaeFile& file, ug::Error* error);
    ~CaeInput() = default;

    /// Makes the buffer hold so many bytes from here on, up to BUFFER_SIZE, or all that there are. False when these are
    /// fewer.
    bool fill(std::size_t count);

    /// Fills the error for a place. Always false.
    bool failAt(std::int64_t offset, const std::string& text) const;

    static constexpr std::size_t BUFFER_SIZE = std::size_t(1) << 16;

    const CaeFile& m_file;
    ug::Error* m_error;
    const char* m_at; ///< Here; in the buffer.
    const char* m_end;
    std::int64_t m_lastOffset = 0; ///< Of the last word or number.

private:
    std::vector<char> m_buffer;
    std::int64_t m_bufferOffset = 0;
};

} // namespace orv::imp::cae
