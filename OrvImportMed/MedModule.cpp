#include "OrvCore/Instance.h"
#include "OrvImportCae/CaeModuleEntry.h"
#include "OrvImportMed/MedReader.h"

#include <string_view>

unsigned int orvModuleVersion() {
    return orv::Instance::HEADER_VERSION;
}

orv::imp::cae::CaeReader* orvCreateReader(const char* name) {
    return std::string_view(name) == "MED" ? new orv::imp::cae::MedReader : nullptr;
}
