#include "OrvCore/InitializationOptions.h"

namespace orv {

InitializationOptions::InitializationOptions() : InitializationOptions(PLATFORM_DEFAULT) {}

InitializationOptions::InitializationOptions(FailedAssertAction action) : m_failedAssertAction(action) {}

InitializationOptions::FailedAssertAction InitializationOptions::failedAssertAction() const {
    return m_failedAssertAction;
}

void InitializationOptions::setFailedAssertAction(FailedAssertAction action) {
    m_failedAssertAction = action;
}

} // namespace orv
