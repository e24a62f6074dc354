#include "OrvUnstructGrid/PartInfo.h"

namespace orv::ug {

PartInfo::PartInfo(int id, const Str& name) : m_id(id), m_name(name) {}

int PartInfo::id() const {
    return m_id;
}

Str PartInfo::name() const {
    return m_name;
}

} // namespace orv::ug
