#include "LibCore/rvfSystem.h"

#include <algorithm>
#include <cstdarg>
#include <cstring>
#include <cwchar>

namespace rvf {

void System::memcpy(void* destination, size_t destinationSize, const void* source, size_t count) {
    size_t fitting = std::min(destinationSize, count);
    if (fitting > 0) {
        std::memcpy(destination, source, fitting);
    }
}

int System::swprintf(wchar_t* buffer, size_t size, const wchar_t* format, ...) {
    if (size == 0) {
        return -1;
    }
    buffer[0] = L'\0';
    va_list arguments;
    va_start(arguments, format);
    int written = std::vswprintf(buffer, size, format, arguments);
    va_end(arguments);
    buffer[size - 1] = L'\0'; // The C library does not promise it for a text that is too long.
    return written;
}

} // namespace rvf
