#pragma once

#include "LibCore/rvfCodeLocation.h"
#include "LibCore/rvfLogManager.h"
#include "OrvCore/Convert.h"

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

/// Logs at warning level.
inline void logWarning(const char* message, const rvf::CodeLocation& location) {
    if (appLogger()->isWarningEnabled()) {
        appLogger()->warning(message, location);
    }
}

/// The same with a path in place of %1.
inline void logWarning(const char* message, const Str& path, const rvf::CodeLocation& location) {
    if (appLogger()->isWarningEnabled()) {
        appLogger()->warning(rvf::String(message).arg(Convert::toRvfString(path), 0, L' '), location);
    }
}

/// The same with a number in place of %1 and a path in place of %2.
inline void logWarning(const char* message, int number, const Str& path, const rvf::CodeLocation& location) {
    if (appLogger()->isWarningEnabled()) {
        const rvf::String text = rvf::String(message).arg(number, 0, L' ');
        appLogger()->warning(text.arg(Convert::toRvfString(path), 0, L' '), location);
    }
}

/// Logs at info level.
inline void logInfo(const char* message, const rvf::CodeLocation& location) {
    if (appLogger()->isInfoEnabled()) {
        appLogger()->info(message, location);
    }
}

} // namespace orv::app
