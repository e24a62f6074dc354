#include "OrvCore/PropertySetCollection.h"

#include "LibCore/rvfAssert.h"

#include <algorithm>

namespace orv {
namespace {

PropertySet* setAt(const std::vector<PtrRef<PropertySet>>& sets, size_t index) {
    return index < sets.size() ? sets[index].get() : nullptr;
}

PropertySet* firstOf(const std::vector<PtrRef<PropertySet>>& sets, const Str& classType) {
    auto found = std::find_if(sets.begin(), sets.end(),
                              [&](const PtrRef<PropertySet>& set) { return set->classType() == classType; });
    return found != sets.end() ? found->get() : nullptr;
}

} // namespace

PropertySetCollection::PropertySetCollection() = default;

PropertySetCollection::PropertySetCollection(const PropertySetCollection& other) : RefCountedObject(other) {
    for (const PtrRef<PropertySet>& set : other.m_sets) {
        m_sets.push_back(new PropertySet(*set));
    }
}

PropertySetCollection::~PropertySetCollection() = default;

size_t PropertySetCollection::count() const {
    return m_sets.size();
}

PropertySet* PropertySetCollection::propertySet(size_t index) {
    RVF_ASSERT(index < count());
    return setAt(m_sets, index);
}

const PropertySet* PropertySetCollection::propertySet(size_t index) const {
    RVF_ASSERT(index < count());
    return setAt(m_sets, index);
}

PropertySet* PropertySetCollection::find(const Str& classType) {
    return firstOf(m_sets, classType);
}

const PropertySet* PropertySetCollection::find(const Str& classType) const {
    return firstOf(m_sets, classType);
}

void PropertySetCollection::append(PropertySet* set) {
    RVF_ASSERT(set);
    if (set) {
        m_sets.push_back(set);
    }
}

void PropertySetCollection::remove(size_t index) {
    RVF_ASSERT(index < count());
    if (index < count()) {
        m_sets.erase(m_sets.begin() + std::ptrdiff_t(index));
    }
}

} // namespace orv
