#include "OrvUnstructGrid/Progress.h"

namespace orv::ug {

Progress::~Progress() = default;

} // namespace orv::ug
