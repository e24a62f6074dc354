#pragma once

#include "LibCore/rvfExport.h"

#include <cstddef>
#include <string>

namespace rvf {

/// The bytes of a UTF-8 text with a zero behind them: what String::toUtf8() gives for the C library.
class ORV_API CharArray {
public:
    /// The empty text.
    CharArray() = default;
    /// `text` has to be UTF-8 already.
    explicit CharArray(std::string text);

    /// Never null; ends with a zero. Lives as long as this object and until it is assigned to.
    const char* ptr() const;

    /// The number of bytes, the closing zero left out. A text with zeros inside is longer than `ptr()` shows.
    size_t size() const;

private:
    std::string m_bytes;
};

} // namespace rvf
