#include "LibIo/rvfFile.h"

namespace rvf {

FILE* File::fopen(const String& fileName, const String& mode) {
    return std::fopen(fileName.toUtf8().ptr(), mode.toUtf8().ptr());
}

FILE* File::shared_fopen(const String& fileName, const String& mode, FileSharedAccessMode) {
    return fopen(fileName, mode);
}

} // namespace rvf
