#include "OrvUnstructGrid/DataSourceInterface.h"

namespace orv::ug {

DataSourceInterface::~DataSourceInterface() = default;

} // namespace orv::ug
