#include "OrvCore/Convert.h"

#include <string>

namespace orv {

rvf::String Convert::toRvfString(const Str& text) {
    return rvf::String(text.toStdWString());
}

Str Convert::toStr(const rvf::String& text) {
    return Str(std::wstring(text.c_str(), text.size()));
}

} // namespace orv
