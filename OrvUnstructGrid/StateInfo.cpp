#include "OrvUnstructGrid/StateInfo.h"

namespace orv::ug {

StateInfo::StateInfo(int id, const Str& name, ReferenceType referenceType, double referenceValue)
    : m_id(id), m_name(name), m_referenceType(referenceType), m_referenceValue(referenceValue) {}

int StateInfo::id() const {
    return m_id;
}

Str StateInfo::name() const {
    return m_name;
}

StateInfo::ReferenceType StateInfo::referenceType() const {
    return m_referenceType;
}

double StateInfo::referenceValue() const {
    return m_referenceValue;
}

} // namespace orv::ug
