#pragma once

#include "LibCore/rvfExport.h"
#include "LibCore/rvfString.h"

#include <cstdio>

namespace rvf {

/// Opens C streams by wide names, which reach the system as UTF-8. Failure is told by a null stream and `errno`.
class ORV_API File {
public:
    /// What others may do with the file while it is open, where the system supports that.
    enum FileSharedAccessMode { DENY_NONE = 0, DENY_WRITE = 1, DENY_READ = 2, DENY_ALL = 3 };

    /// The C library's `fopen`; `mode` is passed as it stands. The caller closes the stream. Null on failure.
    static FILE* fopen(const String& fileName, const String& mode);

    /// The same. `shareMode` means nothing on POSIX systems.
    static FILE* shared_fopen(const String& fileName, const String& mode, FileSharedAccessMode shareMode);
};

} // namespace rvf
