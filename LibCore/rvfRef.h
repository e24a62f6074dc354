#pragma once

#include <type_traits>
#include <utility>

namespace rvf {

/// Holds one reference on a reference-counted object, such as an Object, or nothing.
///
/// Any `T` with `addRef()` and `release()` will do. `T` may be incomplete where the holder is declared, and has to be
/// complete where it is made, assigned or destroyed. A holder that is const does not make its object const.
template <class T>
class ref {
    using SafeBool = T* ref::*;

public:
    /// Takes a reference on `object`, which may be null.
    ref(T* object = nullptr) : m_object(object) {
        if (m_object) {
            m_object->addRef();
        }
    }

    ref(const ref& other) : ref(other.m_object) {}

    /// A holder of a derived class gives one of its base.
    template <class Derived>
    requires std::is_convertible_v<Derived*, T*> ref(const ref<Derived>& other) : ref(other.get()) {}

    ref(ref&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}

    /// Gives the reference back. An exception out of release() ends the process.
    ~ref() noexcept {
        if (m_object) {
            m_object->release();
        }
        m_object = nullptr;
    }

    /// The new object is taken before the old one is let go, so assigning what is already held is safe.
    ref& operator=(T* object) {
        ref(object).swap(*this);
        return *this;
    }

    ref& operator=(const ref& other) {
        ref(other).swap(*this);
        return *this;
    }

    ref& operator=(ref&& other) noexcept {
        ref(std::move(other)).swap(*this);
        return *this;
    }

    /// Exchanges the two objects; no count changes.
    void swap(ref& other) noexcept {
        std::swap(m_object, other.m_object);
    }

    T* get() const {
        return m_object;
    }

    /// The same as get().
    T* p() const {
        return m_object;
    }

    T* operator->() const {
        return m_object;
    }

    T& operator*() const {
        return *m_object;
    }

    bool isNull() const {
        return !m_object;
    }

    bool notNull() const {
        return m_object;
    }

    /// True in a condition when something is held. A member pointer, unlike a bool, takes part in no arithmetic.
    operator SafeBool() const {
        return m_object ? &ref::m_object : nullptr;
    }

private:
    T* m_object;
};

/// Holders are equal when they hold the same object, or nothing both.
template <class A, class B>
bool operator==(const ref<A>& a, const ref<B>& b) {
    return a.get() == b.get();
}

template <class A, class B>
bool operator==(const ref<A>& a, B* b) {
    return a.get() == b;
}

} // namespace rvf
