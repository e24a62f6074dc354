#include "OrvCore/PropertySet.h"

namespace orv {

PropertySet::PropertySet(const Str& classType) : m_classType(classType) {}

const Str& PropertySet::classType() const {
    return m_classType;
}

size_t PropertySet::count() const {
    return m_values.size();
}

void PropertySet::setValue(const Str& key, PropertyValue value) {
    m_values[key] = std::move(value);
}

const PropertyValue* PropertySet::value(const Str& key) const {
    auto found = m_values.find(key);
    return found != m_values.end() ? &found->second : nullptr;
}

bool PropertySet::remove(const Str& key) {
    return m_values.erase(key) > 0;
}

const std::map<Str, PropertyValue>& PropertySet::values() const {
    return m_values;
}

} // namespace orv
