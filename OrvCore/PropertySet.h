#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/RefCountedObject.h"
#include "OrvCore/Str.h"
#include "OrvCore/Vec3d.h"

#include <cstddef>
#include <map>
#include <utility>
#include <variant>
#include <vector>

namespace orv {

/// What a property may be.
using PropertyValue = std::variant<int, double, bool, Str, Vec3d, std::vector<double>>;

/// The properties of one thing, such as a camera, by key. The class type tells what kind of thing that is.
class ORV_API PropertySet : public RefCountedObject {
public:
    explicit PropertySet(const Str& classType);

    const Str& classType() const;

    /// The number of properties.
    size_t count() const;

    /// Adds the property, or replaces its value, whose kind may change.
    void setValue(const Str& key, PropertyValue value);

    /// The value, or null when there is none of that key. Good until the set is changed.
    const PropertyValue* value(const Str& key) const;

    /// The value when there is one and it is of exactly the kind of `defaultValue`: an int is no double.
    template <class T>
    T valueOr(const Str& key, T defaultValue) const {
        const T* found = std::get_if<T>(value(key));
        return found ? *found : std::move(defaultValue);
    }

    /// False when there is no property of that key.
    bool remove(const Str& key);

    /// All properties in the order of their keys.
    const std::map<Str, PropertyValue>& values() const;

private:
    Str m_classType;
    std::map<Str, PropertyValue> m_values;
};

} // namespace orv
