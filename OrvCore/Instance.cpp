#include "OrvCore/Instance.h"

namespace orv {

Instance::Instance(const InitializationOptions& options, unsigned int version)
    : m_options(options), m_version(version) {}

unsigned int Instance::version() const {
    return m_version;
}

const InitializationOptions& Instance::initializationOptions() const {
    return m_options;
}

} // namespace orv
