#pragma once

#include "LibCore/rvfAssert.h"
#include "OrvCore/InitializationOptions.h"

namespace orv {

/// How the options become settings of the core.
class InitializationOptionsPrivate {
public:
    /// The core's name for an action: the two enumerations number the same four actions differently. A number outside
    /// the enumeration is a failure, "Unhandled initialization options failed assert action", and gives
    /// rvf::Assert::PLATFORM_DEFAULT.
    static rvf::Assert::FailedAction toRvfFailedAssertAction(InitializationOptions::FailedAssertAction action);
};

} // namespace orv
