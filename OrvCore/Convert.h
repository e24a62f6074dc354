#pragma once

#include "LibCore/rvfExport.h"
#include "LibCore/rvfString.h"
#include "OrvCore/Str.h"

namespace orv {

/// Carries texts between the public interface and the core. Character by character, nothing is decoded.
class ORV_API Convert {
public:
    Convert() = delete;

    static rvf::String toRvfString(const Str& text);
    static Str toStr(const rvf::String& text);
};

} // namespace orv
