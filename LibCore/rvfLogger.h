#pragma once

#include "LibCore/rvfCodeLocation.h"
#include "LibCore/rvfExport.h"
#include "LibCore/rvfString.h"

namespace rvf {

/// A named source of log messages with a level. LogManager::logger() makes and owns them.
///
/// A message passes when the logger's level is at least the message's own. Ask isErrorEnabled() and its like before
/// you build an expensive text.
class ORV_API Logger {
public:
    enum Level {
        LEVEL_NONE = 0,    ///< As a logger's level: nothing passes.
        LEVEL_ERROR = 1,   ///< Something that was asked for has failed.
        LEVEL_WARNING = 2, ///< Something odd; the level of a new logger.
        LEVEL_INFO = 3     ///< For the curious.
    };

    /// A logger at LEVEL_WARNING.
    explicit Logger(const String& name);
    Logger(const Logger&) = delete;
    Logger& operator=(const Logger&) = delete;

    const String& name() const;

    int level() const;
    /// Any number: 0 or less silences the logger, 3 or more lets everything pass.
    void setLevel(int level);

    bool isErrorEnabled() const;
    bool isWarningEnabled() const;
    bool isInfoEnabled() const;

    /// Hands the message to the destination of LogManager when this logger's level allows, nothing otherwise.
    void error(const String& message, const CodeLocation& location);
    /// @copydoc error
    void warning(const String& message, const CodeLocation& location);
    /// @copydoc error
    void info(const String& message, const CodeLocation& location);

private:
    void deliver(Level level, const String& message, const CodeLocation& location) const;

    String m_name;
    int m_level;
};

} // namespace rvf
