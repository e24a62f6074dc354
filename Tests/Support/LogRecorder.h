#pragma once

#include "LibCore/rvfLogDestination.h"
#include "LibCore/rvfLogManager.h"

#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace orvtest {

/// One log message, its texts in UTF-8.
struct LogMessage {
    int level;
    std::string logger;
    std::string message;
    std::string file;
    std::string function;
    std::string shortFunction;

    bool operator==(const LogMessage&) const = default;
};

inline std::ostream& operator<<(std::ostream& out, const LogMessage& message) {
    return out << message.level << " [" << message.logger << "] \"" << message.message << "\" (" << message.file
               << ", \"" << message.function << "\", " << message.shortFunction << ')';
}

/// Collects what is logged while it lives, and brings back the earlier destination.
class LogRecorder : private rvf::LogDestination {
public:
    LogRecorder() : m_earlier(rvf::LogManager::destination()) {
        rvf::LogManager::setDestination(this);
    }

    ~LogRecorder() override {
        rvf::LogManager::setDestination(m_earlier);
    }

    LogRecorder(const LogRecorder&) = delete;
    LogRecorder& operator=(const LogRecorder&) = delete;

    /// What was logged since construction or the last take(), in order.
    std::vector<LogMessage> take() {
        return std::exchange(m_messages, {});
    }

private:
    void write(int level, const rvf::String& loggerName, const rvf::String& message,
               const rvf::CodeLocation& location) override {
        m_messages.push_back({level, loggerName.toUtf8().ptr(), message.toUtf8().ptr(), location.file(),
                              location.function(), location.shortFunction()});
    }

    rvf::LogDestination* m_earlier;
    std::vector<LogMessage> m_messages;
};

} // namespace orvtest
