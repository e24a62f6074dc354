#include "Tests/Support/FileFaults.h"

#include <cerrno>
#include <cstdarg>
#include <cstdio>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>

namespace {

orvtest::FileFault fault = orvtest::FileFault::FAIL;
int changesToGo = 0; ///< 0 when no fault is to come.
bool struck = false;

/// Whether this change is the one. Does not come back when it is and kills.
bool strikes() {
    if (changesToGo == 0 || --changesToGo > 0) {
        return false;
    }
    struck = true;
    if (fault == orvtest::FileFault::KILL) {
        ::kill(::getpid(), SIGKILL);
    }
    errno = ENOSPC;
    return true;
}

template <class Function>
Function* behind(Function* /*ours*/, const char* name) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

/// Half of a write that is about to be killed.
template <class Write>
void tear(Write write) {
    if (changesToGo == 1 && fault == orvtest::FileFault::KILL) {
        write();
    }
}

} // namespace

namespace orvtest {

FileFaults::FileFaults(FileFault kind, int change) {
    fault = kind;
    struck = false;
    changesToGo = change;
}

FileFaults::~FileFaults() {
    changesToGo = 0;
}

bool FileFaults::hasStruck() const {
    return struck;
}

} // namespace orvtest

extern "C" {

int open(const char* path, int flags, ...) {
    static const auto real = behind(&open, "open");
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = flags & O_CREAT ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return (flags & O_ACCMODE) != O_RDONLY && strikes() ? -1 : real(path, flags, mode);
}

ssize_t write(int descriptor, const void* bytes, size_t size) {
    static const auto real = behind(&write, "write");
    if (descriptor <= STDERR_FILENO) {
        return real(descriptor, bytes, size);
    }
    tear([&] { return real(descriptor, bytes, size / 2); });
    return strikes() ? -1 : real(descriptor, bytes, size);
}

ssize_t pwrite(int descriptor, const void* bytes, size_t size, off_t offset) {
    static const auto real = behind(&pwrite, "pwrite");
    tear([&] { return real(descriptor, bytes, size / 2, offset); });
    return strikes() ? -1 : real(descriptor, bytes, size, offset);
}

int fsync(int descriptor) {
    static const auto real = behind(&fsync, "fsync");
    return strikes() ? -1 : real(descriptor);
}

int rename(const char* from, const char* to) noexcept {
    static const auto real = behind(&rename, "rename");
    return strikes() ? -1 : real(from, to);
}

int unlink(const char* path) noexcept {
    static const auto real = behind(&unlink, "unlink");
    return strikes() ? -1 : real(path);
}

int mkdir(const char* path, mode_t mode) noexcept {
    static const auto real = behind(&mkdir, "mkdir");
    return strikes() ? -1 : real(path, mode);
}

int rmdir(const char* path) noexcept {
    static const auto real = behind(&rmdir, "rmdir");
    return strikes() ? -1 : real(path);
}
}
