#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/InitializationOptions.h"

namespace orv {

/// The core as an application sets it up: its options, and the version of the headers it was compiled with. An
/// application makes one and hands it to the components that it initialises.
class ORV_API Instance {
public:
    /// The version of these headers, 3.11.0: (major << 16) | (minor << 8) | patch.
    static constexpr unsigned int HEADER_VERSION = (3u << 16) | (11u << 8) | 0u;

    /// The default version is filled in where the application is compiled, so that a component of another version
    /// notices the mismatch.
    explicit Instance(const InitializationOptions& options = InitializationOptions(),
                      unsigned int version = HEADER_VERSION);

    unsigned int version() const;
    const InitializationOptions& initializationOptions() const;

private:
    InitializationOptions m_options;
    unsigned int m_version;
};

} // namespace orv
