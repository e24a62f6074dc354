#pragma once

#include "OrvCore/Str.h"

namespace orv::imp::cae {

/// One kind of file that can be opened. A value.
struct ReaderInfo {
    Str description; ///< For people, such as "CalculiX results".
    Str extensions;  ///< Small letters, without dots; more than one is separated by blanks.
};

} // namespace orv::imp::cae
