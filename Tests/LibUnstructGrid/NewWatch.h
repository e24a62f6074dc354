#pragma once

#include <cstddef>
#include <vector>

namespace orvtest {

/// Watches the operators new and delete of single objects, and of the standard containers, while it lives, and can run
/// out of memory. One at a time. The linker leads the calls here.
class NewWatch {
public:
    /// The call of new of that number, counted from 1, throws std::bad_alloc; 0 for none.
    explicit NewWatch(int failingNew = 0);
    ~NewWatch();

    NewWatch(const NewWatch&) = delete;
    NewWatch& operator=(const NewWatch&) = delete;

    /// The sizes asked for, in order, also the one that failed; of more than a hundred the first hundred.
    const std::vector<std::size_t>& sizes() const {
        return m_sizes;
    }

    int numDeletes() const {
        return m_deletes;
    }

    /// Ends the watch and gives the sizes away.
    std::vector<std::size_t> stop();

    /// For the operators.
    void countNew(std::size_t size);
    void countDelete() {
        ++m_deletes;
    }

private:
    std::vector<std::size_t> m_sizes;
    int m_deletes = 0;
    int m_failingNew;
};

/// Sizes of what is allocated in `call`, in order.
template <typename Call>
std::vector<std::size_t> allocations(Call call) {
    NewWatch watch;
    call();
    return watch.stop();
}

} // namespace orvtest
