#pragma once

#include "LibCore/rvfExport.h"
#include "OrvImportCae/CaeReader.h"

// What a module defines, see CaeModule.
extern "C" {
ORV_API unsigned int orvModuleVersion();
ORV_API orv::imp::cae::CaeReader* orvCreateReader(const char* name);
}
