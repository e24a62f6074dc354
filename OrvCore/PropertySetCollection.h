#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/PropertySet.h"
#include "OrvCore/PtrRef.h"
#include "OrvCore/RefCountedObject.h"

#include <cstddef>
#include <vector>

namespace orv {

/// An ordered list of property sets: all that is kept of a view or a model. Several sets may have one class type.
class ORV_API PropertySetCollection : public RefCountedObject {
public:
    /// No sets.
    PropertySetCollection();
    /// A deep copy: its sets are copies too, so neither collection sees what becomes of the other's.
    PropertySetCollection(const PropertySetCollection& other);
    ~PropertySetCollection() override;
    PropertySetCollection& operator=(const PropertySetCollection& other) = delete;

    /// The number of sets.
    size_t count() const;

    /// The set at `index`, owned by this collection. Asserts "index < count()", and then answers null.
    PropertySet* propertySet(size_t index);
    const PropertySet* propertySet(size_t index) const;

    /// The first set of that class type, null when there is none.
    PropertySet* find(const Str& classType);
    const PropertySet* find(const Str& classType) const;

    /// Puts `set` behind the others and takes a reference on it. Asserts "set"; null is not added.
    void append(PropertySet* set);

    /// Takes the set at `index` out. Asserts "index < count()", and then does nothing.
    void remove(size_t index);

private:
    std::vector<PtrRef<PropertySet>> m_sets;
};

} // namespace orv
