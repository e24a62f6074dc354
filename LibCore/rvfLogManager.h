#pragma once

#include "LibCore/rvfExport.h"
#include "LibCore/rvfLogger.h"
#include "LibCore/rvfObject.h"

#include <map>
#include <memory>
#include <string>

namespace rvf {

class LogDestination;

/// Keeps the loggers by name. One manager is in charge of the process; where the messages go is a separate,
/// process-wide choice.
class ORV_API LogManager : public Object {
public:
    LogManager();
    ~LogManager() override;
    LogManager(const LogManager&) = delete;
    LogManager& operator=(const LogManager&) = delete;

    /// The manager in charge, never null: a first one is made when it is needed.
    static LogManager* instance();

    /// Puts `manager` in charge and takes a reference on it; the earlier one loses its reference, and with the last one
    /// its loggers. Null makes the next instance() start afresh.
    static void setInstance(LogManager* manager);

    /// The logger of that name, made at the first call. The pointer stays good as long as this manager lives.
    Logger* logger(const String& name);

    /// Sends the messages of all loggers of all managers to `destination`, which stays the caller's and has to live
    /// until it is replaced. Null brings back the default, which writes a line per message to standard error:
    /// `error [orv.comp.app] Text of the message (OrvApp/Models_p:212)`.
    static void setDestination(LogDestination* destination);

    /// Where messages go now, never null.
    static LogDestination* destination();

private:
    std::map<std::wstring, std::unique_ptr<Logger>> m_loggers;
};

} // namespace rvf
