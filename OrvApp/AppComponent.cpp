#include "OrvApp/AppComponent.h"

#include "LibCore/rvfAssert.h"
#include "LibCore/rvfLogManager.h"
#include "LibCore/rvfRef.h"
#include "OrvCore/CoreComponent.h"
#include "OrvCore/InitializationOptions.h"
#include "OrvCore/InitializationOptions_p.h"
#include "OrvCore/Instance.h"
#include "OrvCore/LogManager.h"

namespace orv::app {
namespace {

bool sg_AppComponentInitialized = false;

} // namespace

bool AppComponent::initialize(Instance* instance) {
    RVF_ASSERT(instance);
    if (!instance) {
        return false;
    }
    RVF_ASSERT_MSG(instance->version() == version(), "Component version mismatch");
    if (sg_AppComponentInitialized) {
        return true;
    }

    // The action comes first, so that a failure in the hand-over below is already treated as the application asked.
    rvf::Assert::setFailedAssertAction(
        InitializationOptionsPrivate::toRvfFailedAssertAction(instance->initializationOptions().failedAssertAction()));

    rvf::ref<LogManager> logManager = CoreComponent::logManager();
    rvf::ref<rvf::LogManager> rvfLogManagerInst = logManager->internal_rvfLogManager();
    RVF_ASSERT(rvfLogManagerInst.notNull());
    rvf::LogManager::setInstance(rvfLogManagerInst.get());

    sg_AppComponentInitialized = true;
    return true;
}

std::uint32_t AppComponent::version() {
    return (3u << 16) | (11u << 8) | 0u;
}

Str AppComponent::versionString() {
    return "3.11.0";
}

bool AppComponent::isInitialized() {
    return sg_AppComponentInitialized;
}

void AppComponent::setProgressInstance(ug::Progress* progress) {
    setGetProgressSingleton(true, progress);
}

ug::Progress* AppComponent::progressInstance() {
    return setGetProgressSingleton(false, nullptr);
}

ug::Progress* AppComponent::setGetProgressSingleton(bool set, ug::Progress* progress) {
    static ug::Progress* progressInstance = nullptr;
    if (set) {
        progressInstance = progress;
    }
    return progressInstance;
}

} // namespace orv::app
