#include "OrvUnstructGrid/ValuePool_p.h"

#include <algorithm>
#include <utility>

namespace orv::ug {

ValuePool::ValuePool() {
    m_blocks.reserve(byteLimit / (smallestCount * sizeof(double)) + 1);
}

ValuePool& ValuePool::instance() {
    static ValuePool* const pool = new ValuePool;
    return *pool;
}

double* ValuePool::take(std::size_t count) {
    // The latest first: the processor's caches may still know it.
    const auto found =
        std::find_if(m_blocks.rbegin(), m_blocks.rend(), [count](const Block& block) { return block.count == count; });
    if (found == m_blocks.rend()) {
        return std::make_unique_for_overwrite<double[]>(count).release();
    }
    double* values = found->values.release();
    m_blocks.erase(std::next(found).base());
    m_byteCount -= count * sizeof(double);
    return values;
}

void ValuePool::giveBack(double* values, std::size_t count) noexcept {
    std::unique_ptr<double[]> holder(values);
    if (count < smallestCount) {
        return;
    }
    m_blocks.push_back({std::move(holder), count});
    m_byteCount += count * sizeof(double);
    while (m_byteCount > byteLimit) {
        m_byteCount -= m_blocks.front().count * sizeof(double);
        m_blocks.erase(m_blocks.begin());
    }
}

std::size_t ValuePool::byteCount() const {
    return m_byteCount;
}

} // namespace orv::ug
