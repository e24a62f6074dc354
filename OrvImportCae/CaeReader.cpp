#include "OrvImportCae/CaeReader.h"

namespace orv::imp::cae {

CaeReader::~CaeReader() = default;

bool CaeReader::readScalars(const ug::ResultInfo&, int, const ug::ScalarPlace&, std::span<double>) {
    return false;
}

} // namespace orv::imp::cae
