#include "LibCore/rvfCharArray.h"

#include <utility>

namespace rvf {

CharArray::CharArray(std::string text) : m_bytes(std::move(text)) {}

const char* CharArray::ptr() const {
    return m_bytes.c_str();
}

size_t CharArray::size() const {
    return m_bytes.size();
}

} // namespace rvf
