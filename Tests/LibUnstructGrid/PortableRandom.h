#pragma once

#include <cstdint>
#include <random>

namespace orvtest {

/// The same numbers with every standard library: std::mt19937 is settled by the language, its distributions are not.
class PortableRandom {
public:
    explicit PortableRandom(std::uint32_t seed) : m_engine(seed) {}

    /// From `low` to `high`, both included.
    int integer(int low, int high) {
        const auto span = static_cast<std::uint64_t>(static_cast<std::int64_t>(high) - low) + 1;
        return static_cast<int>(low + static_cast<std::int64_t>(m_engine() % span));
    }

    /// From `low` to below `high`, on a grid of 2^32 steps.
    double real(double low, double high) {
        return low + (high - low) * (static_cast<double>(m_engine()) / 4294967296.0);
    }

private:
    std::mt19937 m_engine;
};

} // namespace orvtest
