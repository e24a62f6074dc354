#pragma once

#include "OrvCore/Str.h"
#include "OrvUnstructGrid/SimulationInfo.h"

namespace orv::ug {

/// The record of one case in a ZTFx file. A value.
struct ZTFxCaseInfo {
    int id = -1;
    Str name;
    SimulationInfo simulation; ///< As the source that was written called it.
};

} // namespace orv::ug
