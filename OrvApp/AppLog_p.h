#pragma once

#include "LibCore/rvfCodeLocation.h"
#include "LibCore/rvfLogManager.h"

namespace orv::app {

/// The layer's logger, by name anew each time: the log manager may have been replaced since the last message.
inline rvf::Logger* appLogger() {
    return rvf::LogManager::instance()->logger("orv.comp.app");
}

/// Logs at error level. The text is made into a message only when the level lets it pass.
inline void logError(const char* message, const rvf::CodeLocation& location) {
    if (appLogger()->isErrorEnabled()) {
        appLogger()->error(message, location);
    }
}

/// The same with a number in place of %1.
inline void logError(const char* message, int number, const rvf::CodeLocation& location) {
    if (appLogger()->isErrorEnabled()) {
        appLogger()->error(rvf::String(message).arg(number, 0, L' '), location);
    }
}

} // namespace orv::app
