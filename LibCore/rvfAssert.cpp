#include "LibCore/rvfAssert.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace rvf {
namespace {

Assert::FailedAction currentAction = Assert::PLATFORM_DEFAULT;
Assert::FailedAssertObserver currentObserver = nullptr;

void report(const char* file, int line, const char* expression, const char* message) {
    std::fprintf(stderr, "%s:%d: assertion failed", file, line);
    if (expression) {
        std::fprintf(stderr, ": %s", expression);
    }
    if (message) {
        std::fprintf(stderr, ": %s", message);
    }
    std::fputc('\n', stderr);
}

bool endsProcess(Assert::FailedAction action) {
    return action != Assert::BREAK && action != Assert::CONTINUE;
}

} // namespace

int Assert::handleFailedAssert(const char* file, int line, const char* expression, const char* message) {
    if (currentObserver) {
        currentObserver(file, line, expression, message);
    }
    if (!currentObserver || endsProcess(currentAction)) {
        report(file, line, expression, message);
    }
    if (endsProcess(currentAction)) {
        std::abort();
    }
    if (currentAction == BREAK) {
        std::raise(SIGTRAP);
    }
    return 0;
}

void Assert::setFailedAssertAction(FailedAction action) {
    currentAction = action;
}

Assert::FailedAction Assert::failedAssertAction() {
    return currentAction;
}

void Assert::setFailedAssertObserver(FailedAssertObserver observer) {
    currentObserver = observer;
}

} // namespace rvf
