#pragma once

#include "LibCore/rvfCodeLocation.h"
#include "LibCore/rvfExport.h"
#include "LibCore/rvfString.h"

namespace rvf {

/// Where log messages end up. LogManager::setDestination() puts one in charge.
class ORV_API LogDestination {
public:
    virtual ~LogDestination();

    /// Gets every message that its logger's level lets through.
    /// @param level       1 error, 2 warning, 3 info, as Logger::Level
    /// @param loggerName  such as "orv.comp.app"
    virtual void write(int level, const String& loggerName, const String& message, const CodeLocation& location) = 0;
};

} // namespace rvf
