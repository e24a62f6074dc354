#pragma once

#include <csignal>

#include <sys/resource.h>

namespace orvtest {

/// The largest size that files may grow to while it lives: a disk that is full behind so many bytes of each.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) : m_handler(std::signal(SIGXFSZ, SIG_IGN)) {
        ::getrlimit(RLIMIT_FSIZE, &m_earlier);
        const rlimit limit = {bytes, m_earlier.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }

    ~FileSizeLimit() {
        ::setrlimit(RLIMIT_FSIZE, &m_earlier);
        std::signal(SIGXFSZ, m_handler);
    }

    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit m_earlier = {};
    void (*m_handler)(int);
};

} // namespace orvtest
