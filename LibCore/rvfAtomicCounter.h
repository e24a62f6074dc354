#pragma once

#include <atomic>

namespace rvf {

/// A count that several threads may change at once.
///
/// A copy is a count of its own that starts from the value of the moment.
class AtomicCounter {
public:
    explicit AtomicCounter(int value) : m_value(value) {}

    AtomicCounter(const AtomicCounter& other) : m_value(int(other)) {}

    AtomicCounter& operator=(const AtomicCounter& other) {
        m_value = int(other);
        return *this;
    }

    /// Adds one and gives the value that this very step produced.
    int operator++() {
        return ++m_value;
    }

    /// Takes one away and gives the value that this very step produced, so exactly one thread sees it become zero.
    int operator--() {
        return --m_value;
    }

    operator int() const {
        return m_value;
    }

private:
    std::atomic<int> m_value;
};

} // namespace rvf
