#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/Str.h"

#include <cstdint>

namespace orv {
class Instance;
}

namespace orv::ug {
class Progress;
}

namespace orv::app {

/// Binds the application layer to the core's instance.
///
/// The catalogues work before initialize() too, then with the core's default failed-assert action and with the log
/// manager that the process has by itself. There is no way back to "not initialized".
class ORV_API AppComponent {
public:
    AppComponent() = delete;

    /// Sets the failed-assert action that the instance's options ask for, and logs through the core's log manager from
    /// then on.
    ///
    /// Asserts "instance", and on every call, also a repeated one, "instance->version() == version()". A version
    /// mismatch that the assertion handler lets pass does not stop the initialisation.
    ///
    /// A second call changes neither the action nor the log manager, whatever its instance says.
    ///
    /// @return false, with nothing changed, for a null instance; otherwise true, also when initialised before
    static bool initialize(Instance* instance);

    /// The version as one number, (major << 16) | (minor << 8) | patch: 199424.
    static std::uint32_t version();
    /// "3.11.0"
    static Str versionString();

    /// True once initialize() has succeeded. For the application alone: nothing in this layer asks.
    static bool isInitialized();

    /// Stores the object that long operations report to; null clears it. The caller keeps it alive: no reference is
    /// taken and nothing is deleted here.
    static void setProgressInstance(ug::Progress* progress);
    /// Null until set.
    static ug::Progress* progressInstance();
    /// Stores `progress` when `set` is true; returns what is stored in any case.
    static ug::Progress* setGetProgressSingleton(bool set, ug::Progress* progress);
};

} // namespace orv::app
