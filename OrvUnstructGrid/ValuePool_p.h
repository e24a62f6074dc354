#pragma once

#include <cstddef>
#include <memory>
#include <vector>

namespace orv::ug {

/// Memory for values, kept for the next values of the same size when values are dropped.
///
/// A large block that comes fresh from the system costs several times what is computed into it: each of its pages is
/// fetched and cleared at the first touch. Values come and go in few sizes, as one mesh has them in all states, so what
/// one state drops is what the next one asks for.
class ValuePool {
public:
    /// Smaller blocks are not kept, as the allocator is quick with them: 128 KiB.
    static constexpr std::size_t smallestCount = 16 * 1024;
    /// What is kept at most: 256 MiB. The longest kept goes first.
    static constexpr std::size_t byteLimit = std::size_t(256) << 20;

    ValuePool();
    ValuePool(const ValuePool&) = delete;
    ValuePool& operator=(const ValuePool&) = delete;

    /// The pool of the process. It is never destroyed, because values may outlive any static object.
    static ValuePool& instance();

    /// `count` doubles that hold anything.
    double* take(std::size_t count);

    /// Takes back what take() gave for that count.
    void giveBack(double* values, std::size_t count) noexcept;

    std::size_t byteCount() const;

private:
    struct Block {
        std::unique_ptr<double[]> values;
        std::size_t count;
    };

    std::vector<Block> m_blocks; ///< The longest kept first. Never grows beyond what the constructor made room for.
    std::size_t m_byteCount = 0;
};

} // namespace orv::ug
