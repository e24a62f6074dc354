#pragma once

#include "LibCore/rvfExport.h"
#include "LibUnstructGrid/VTOString.h"
#include "OrvCore/Str.h"

namespace orv::ug {

/// Carries texts between the public interface and the foundation. Character by character, nothing is decoded.
class ORV_API Convert {
public:
    Convert() = delete;

    /// The characters up to a zero inside. Never null.
    static VTString toVTString(const Str& text);
    /// The same characters. A null string gives the empty text.
    static Str toStr(const VTString& sText);
};

} // namespace orv::ug
