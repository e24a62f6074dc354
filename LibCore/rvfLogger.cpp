#include "LibCore/rvfLogger.h"

#include "LibCore/rvfLogDestination.h"
#include "LibCore/rvfLogManager.h"

namespace rvf {

Logger::Logger(const String& name) : m_name(name), m_level(LEVEL_WARNING) {}

const String& Logger::name() const {
    return m_name;
}

int Logger::level() const {
    return m_level;
}

void Logger::setLevel(int level) {
    m_level = level;
}

bool Logger::isErrorEnabled() const {
    return m_level >= LEVEL_ERROR;
}

bool Logger::isWarningEnabled() const {
    return m_level >= LEVEL_WARNING;
}

bool Logger::isInfoEnabled() const {
    return m_level >= LEVEL_INFO;
}

void Logger::error(const String& message, const CodeLocation& location) {
    deliver(LEVEL_ERROR, message, location);
}

void Logger::warning(const String& message, const CodeLocation& location) {
    deliver(LEVEL_WARNING, message, location);
}

void Logger::info(const String& message, const CodeLocation& location) {
    deliver(LEVEL_INFO, message, location);
}

void Logger::deliver(Level level, const String& message, const CodeLocation& location) const {
    if (m_level >= level) {
        LogManager::destination()->write(level, m_name, message, location);
    }
}

} // namespace rvf
