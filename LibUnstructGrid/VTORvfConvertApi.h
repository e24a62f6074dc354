#pragma once

#include "LibCore/rvfExport.h"
#include "LibUnstructGrid/VTOString.h"

namespace rvf {
class String;
}

/// Carries values between the `VT` family and the core's `rvf` family. Every function makes a new value.
class ORV_API VTRvfConvertApi {
public:
    /// The same characters. A null string gives the empty text.
    static rvf::String toString(const VTString& sText);
    /// The same characters, up to a zero inside. Never null.
    static VTString toVTString(const rvf::String& text);
};
