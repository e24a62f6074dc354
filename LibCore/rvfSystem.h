#pragma once

#include "LibCore/rvfExport.h"

#include <cstddef>

namespace rvf {

/// C library calls that keep inside the buffers they are given.
class ORV_API System {
public:
    /// Copies `count` bytes, but never more than the destination's `destinationSize`: what does not fit is left out, in
    /// silence. The two must not overlap. Pointers may be null when there is nothing to copy.
    static void memcpy(void* destination, size_t destinationSize, const void* source, size_t count);

    /// Formats into `buffer` of `size` characters, the closing zero included, which is always written when there is
    /// room for it. The number of characters written without the zero; negative when the text does not fit or cannot be
    /// formatted, and then the buffer holds a text of unspecified length. Follows the process's locale.
    static int swprintf(wchar_t* buffer, size_t size, const wchar_t* format, ...);
};

} // namespace rvf
