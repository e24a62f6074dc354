#pragma once

#include "LibCore/rvfExport.h"

namespace orv {

/// What an application chooses when it starts. A value.
class ORV_API InitializationOptions {
public:
    /// What becomes of the process after a failed assertion, which tells of a mistake in the calling program.
    enum FailedAssertAction : int {
        PLATFORM_DEFAULT = 0, ///< What assert() does on this platform: the process aborts.
        CONTINUE = 1,         ///< Goes on with the next statement.
        ABORT = 2,            ///< The process aborts.
        BREAK = 3             ///< Stops in an attached debugger.
    };

    /// PLATFORM_DEFAULT.
    InitializationOptions();
    /// Not explicit: an Instance can be made from the action alone.
    InitializationOptions(FailedAssertAction action);

    FailedAssertAction failedAssertAction() const;
    void setFailedAssertAction(FailedAssertAction action);

private:
    FailedAssertAction m_failedAssertAction;
};

} // namespace orv
