#pragma once

#include "LibCore/rvfExport.h"

namespace orv {

class LogManager;

/// What the core holds for the whole process. All static.
class ORV_API CoreComponent {
public:
    CoreComponent() = delete;

    /// The core's log manager, never null. The first one is made when it is needed, around the rvf::LogManager that is
    /// in charge at that time, so levels that were set before stay.
    static LogManager* logManager();

    /// Replaces the core's log manager and takes a reference on it. Null makes the next logManager() start afresh.
    /// Components that have been initialised keep the one they took then.
    static void setLogManager(LogManager* manager);
};

} // namespace orv
