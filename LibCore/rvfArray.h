#pragma once

#include "LibCore/rvfObject.h"

#include <cstddef>
#include <type_traits>
#include <vector>

namespace rvf {

/// A contiguous list of items, shared through a ref or kept on the stack as a value.
template <class T>
class Array : public Object {
    static_assert(!std::is_same_v<T, bool>, "the items of a bool list have no addresses");

public:
    /// No items.
    Array() = default;
    /// `size` items, all `T()`, that is zero for numbers.
    explicit Array(size_t size) : m_items(size) {}

    size_t size() const {
        return m_items.size();
    }

    /// Keeps the items that stay and adds `T()` behind them. Pointers to items do not survive.
    void resize(size_t size) {
        m_items.resize(size);
    }

    /// `index` has to be below size(); it is not checked.
    const T& operator[](size_t index) const {
        return m_items[index];
    }

    T& operator[](size_t index) {
        return m_items[index];
    }

    /// The first item, the others behind it. Nothing to be read or compared when there are no items.
    const T* ptr() const {
        return m_items.data();
    }

    T* ptr() {
        return m_items.data();
    }

private:
    std::vector<T> m_items;
};

} // namespace rvf
