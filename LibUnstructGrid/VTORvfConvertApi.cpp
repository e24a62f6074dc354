#include "LibUnstructGrid/VTORvfConvertApi.h"

#include "LibCore/rvfString.h"

rvf::String VTRvfConvertApi::toString(const VTString& sText) {
    return rvf::String(~sText);
}

VTString VTRvfConvertApi::toVTString(const rvf::String& text) {
    return VTString(text.c_str());
}
