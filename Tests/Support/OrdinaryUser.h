#pragma once

#include <sys/wait.h>
#include <unistd.h>

namespace orvtest {

/// Whether `test` holds for a process without the rights of root, to whom every file is open. Runs it in a child; what
/// it changes in memory is lost.
template <class Test>
bool holdsForAnOrdinaryUser(Test test) {
    constexpr uid_t nobody = 65534;
    const pid_t child = fork();
    if (child == 0) {
        const bool isOrdinary = geteuid() != 0 || (setgid(nobody) == 0 && setuid(nobody) == 0);
        _exit(isOrdinary && test() ? 0 : 1);
    }
    int status = 0;
    return waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace orvtest
