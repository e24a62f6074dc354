#pragma once

#include <csignal>

#include <sys/wait.h>
#include <unistd.h>

namespace orvtest {

enum class FileFault {
    KILL, ///< The process is killed.
    FAIL  ///< The call fails: no space left on the device.
};

/// While it lives, one change of the disk by this process does not happen: the `change`-th, counted from 1. Of a write
/// that is killed half the bytes arrive. Changes are the opening of files for writing, writing, syncing, renaming and
/// deleting of files, and the making and removing of folders; not what C streams do.
///
/// Tests that use this list Support/FileFaults.cpp among their files: it stands between the program and the C library.
class FileFaults {
public:
    FileFaults(FileFault fault, int change);
    ~FileFaults();

    FileFaults(const FileFaults&) = delete;
    FileFaults& operator=(const FileFaults&) = delete;

    /// Whether there were as many changes.
    bool hasStruck() const;
};

/// Runs `work` in a child that is killed at its `change`-th change of the disk. False when it came to its end before
/// that, so that a test may go on from one change to the next until then.
template <class Work>
bool isKilledAt(int change, Work work) {
    const pid_t child = ::fork();
    if (child == 0) {
        const FileFaults faults(FileFault::KILL, change);
        work();
        ::_exit(0);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
}

} // namespace orvtest
