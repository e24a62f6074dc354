#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <vector>

namespace orv::imp::cae {

/// The numbers of a file's nodes in the order of the file. A node's place in that order is its index here.
class FrdNodeIds {
public:
    static constexpr std::uint32_t NONE = std::numeric_limits<std::uint32_t>::max();

    FrdNodeIds() = default;
    explicit FrdNodeIds(std::vector<int> ids);

    std::span<const int> ids() const;

    /// The index of the node with that number, NONE when there is none. Takes a binary search, unless the node is the
    /// one at `guess`.
    std::uint32_t find(int id, std::uint32_t guess) const;

    /// Whether a node's number is always larger than the one before.
    bool isAscending() const;

    /// The index of the first node whose number an earlier node has; NONE when all numbers differ.
    std::uint32_t firstDuplicate() const;

private:
    std::vector<int> m_ids;
    std::vector<std::uint32_t> m_order; // The indexes by ascending number; empty when that is 0, 1, 2, ...
};

/// The index of the first number that stands in `ids` before; FrdNodeIds::NONE when all differ.
std::uint32_t firstDuplicateId(std::span<const int> ids);

} // namespace orv::imp::cae
