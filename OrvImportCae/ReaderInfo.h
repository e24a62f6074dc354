#pragma once

#include "OrvCore/Str.h"

namespace orv::imp::cae {

/// One kind of file that can be opened. A value.
struct ReaderInfo {
    Str description; ///< For people, such as "CalculiX results".
    Str extensions;  ///< Small letters, without dots; more than one is separated by blanks.
};

/// The same with all that there is to tell. A value.
struct FormatInfo {
    Str name;        ///< Of the format, or of the program that writes it.
    Str description; ///< As in ReaderInfo.
    Str extensions;  ///< As in ReaderInfo.
    Str contents;    ///< What of such a file becomes parts, states and results.
    Str module;      ///< The name of the module's file; empty when the library itself reads the format.
    bool isThere;    ///< False when the module's file is missing.
};

} // namespace orv::imp::cae
