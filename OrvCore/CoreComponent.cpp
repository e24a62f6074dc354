#include "OrvCore/CoreComponent.h"

#include "LibCore/rvfLogManager.h"
#include "LibCore/rvfRef.h"
#include "OrvCore/LogManager.h"

namespace orv {
namespace {

rvf::ref<LogManager>& ownLogManager() {
    static rvf::ref<LogManager> manager;
    return manager;
}

} // namespace

LogManager* CoreComponent::logManager() {
    rvf::ref<LogManager>& manager = ownLogManager();
    if (manager.isNull()) {
        manager = new LogManager(rvf::LogManager::instance());
    }
    return manager.get();
}

void CoreComponent::setLogManager(LogManager* manager) {
    ownLogManager() = manager;
}

} // namespace orv
