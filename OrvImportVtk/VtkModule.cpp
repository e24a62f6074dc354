#include "OrvCore/Instance.h"
#include "OrvImportCae/CaeModuleEntry.h"
#include "OrvImportVtk/VtkReader.h"

unsigned int orvModuleVersion() {
    return orv::Instance::HEADER_VERSION;
}

orv::imp::cae::CaeReader* orvCreateReader(const char* name) {
    std::unique_ptr<orv::imp::cae::VtkSource> source = orv::imp::cae::createVtkSource(name);
    return source ? new orv::imp::cae::VtkReader(std::move(source)) : nullptr;
}
