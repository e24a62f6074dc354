#include "LibCore/rvfLogDestination.h"

namespace rvf {

LogDestination::~LogDestination() = default;

} // namespace rvf
