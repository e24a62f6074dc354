#pragma once

#include <cstddef>
#include <cstdlib>
#include <string>
#include <string_view>

#include <sys/mman.h>
#include <unistd.h>

// What fuzz targets have in common.

namespace orvfuzz {

/// Ends the process, which is what the fuzzer takes for a finding.
inline void expect(bool condition) {
    if (!condition) {
        std::abort();
    }
}

/// The descriptor of a file in memory, for whoever gets it to close.
inline int makeMemoryFile(std::string_view bytes) {
    const int descriptor = ::memfd_create("fuzz", MFD_CLOEXEC);
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        expect(written > 0);
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return descriptor;
}

/// A file in memory that has a name.
class MemoryFile {
public:
    explicit MemoryFile(std::string_view bytes) : m_descriptor(makeMemoryFile(bytes)) {}

    ~MemoryFile() {
        ::close(m_descriptor);
    }

    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    std::string name() const {
        return "/proc/self/fd/" + std::to_string(m_descriptor);
    }

private:
    int m_descriptor;
};

} // namespace orvfuzz
