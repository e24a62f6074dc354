#include "LibCore/rvfLogManager.h"

#include "LibCore/rvfLogDestination.h"
#include "LibCore/rvfRef.h"

#include <cstdio>

namespace rvf {
namespace {

const char* levelName(int level) {
    switch (level) {
    case Logger::LEVEL_ERROR:
        return "error";
    case Logger::LEVEL_WARNING:
        return "warning";
    default:
        return "info";
    }
}

class StandardError : public LogDestination {
public:
    void write(int level, const String& loggerName, const String& message, const CodeLocation& location) override {
        std::fprintf(stderr, "%s [%s] %s (%s:%d)\n", levelName(level), loggerName.toUtf8().ptr(),
                     message.toUtf8().ptr(), location.file(), location.line());
    }
};

LogDestination* chosenDestination = nullptr;

// This holder and the default destination are never destroyed: whoever logs while the process ends still finds them.
ref<LogManager>& managerInCharge() {
    static ref<LogManager>& manager = *new ref<LogManager>;
    return manager;
}

} // namespace

LogManager::LogManager() = default;

LogManager::~LogManager() = default;

LogManager* LogManager::instance() {
    ref<LogManager>& manager = managerInCharge();
    if (manager.isNull()) {
        manager = new LogManager;
    }
    return manager.get();
}

void LogManager::setInstance(LogManager* manager) {
    managerInCharge() = manager;
}

Logger* LogManager::logger(const String& name) {
    std::unique_ptr<Logger>& logger = m_loggers[name.c_str()];
    if (!logger) {
        logger = std::make_unique<Logger>(name);
    }
    return logger.get();
}

void LogManager::setDestination(LogDestination* destination) {
    chosenDestination = destination;
}

LogDestination* LogManager::destination() {
    static StandardError& standardError = *new StandardError;
    return chosenDestination ? chosenDestination : &standardError;
}

} // namespace rvf
