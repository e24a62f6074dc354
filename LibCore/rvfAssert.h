#pragma once

#include "LibCore/rvfExport.h"
#include "LibCore/rvfSourcePath.h"

namespace rvf {

/// Where a failed precondition goes.
///
/// An assertion tells of a mistake in the calling program, never of bad data. Assertions are always compiled in. When
/// the chosen action lets the handler return, execution goes on with the statement behind the assertion.
class ORV_API Assert {
public:
    /// What becomes of the process after a failed assertion has been told.
    enum FailedAction : int {
        PLATFORM_DEFAULT = 0, ///< What assert() does on this platform: the process aborts.
        ABORT = 1,            ///< The process aborts.
        BREAK = 2,            ///< SIGTRAP, which stops in an attached debugger; goes on when the debugger says so.
        CONTINUE = 3          ///< Goes on with the next statement.
    };

    /// Called with the source path ("Folder/Unit"), the line, the text of the test (null for a plain failure) and a
    /// further message (or null), before the action is taken. The texts live as long as the call.
    using FailedAssertObserver = void (*)(const char* file, int line, const char* expression, const char* message);

    /// Tells the observer, or standard error when there is none, and takes the action. Always 0.
    static int handleFailedAssert(const char* file, int line, const char* expression, const char* message);

    static void setFailedAssertAction(FailedAction action);
    static FailedAction failedAssertAction();

    /// Replaces the report on standard error by `observer`; null brings the report back. A process that aborts reports
    /// on standard error in any case.
    static void setFailedAssertObserver(FailedAssertObserver observer);
};

} // namespace rvf

// The second level lets macros in a test expand first: the text tells what the compiler saw.
#define RVF_INTERNAL_ASSERT(message, ...)                                                        \
    do {                                                                                         \
        if (!(__VA_ARGS__)) [[unlikely]] {                                                       \
            ::rvf::Assert::handleFailedAssert(RVF_SOURCE_PATH, __LINE__, #__VA_ARGS__, message); \
        }                                                                                        \
    } while (false)

/// Checks a precondition. The report tells the test as it is written.
#define RVF_ASSERT(...) RVF_INTERNAL_ASSERT(nullptr, __VA_ARGS__)

/// The same with a message, a `const char*`, that is only evaluated when the test fails.
#define RVF_ASSERT_MSG(test, message) RVF_INTERNAL_ASSERT(message, test)

/// A failure without a test.
#define RVF_FAIL_MSG(message) ::rvf::Assert::handleFailedAssert(RVF_SOURCE_PATH, __LINE__, nullptr, message)
