#include "OrvUnstructGrid/Convert.h"

namespace orv::ug {

VTString Convert::toVTString(const Str& text) {
    return VTString(text.c_str());
}

Str Convert::toStr(const VTString& sText) {
    return Str(~sText);
}

} // namespace orv::ug
