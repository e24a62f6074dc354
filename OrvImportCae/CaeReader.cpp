#include "OrvImportCae/CaeReader.h"

namespace orv::imp::cae {

CaeReader::~CaeReader() = default;

} // namespace orv::imp::cae
