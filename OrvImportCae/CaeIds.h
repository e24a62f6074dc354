#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <vector>

namespace orv::imp::cae {

/// The numbers of a file's nodes, or elements, in the order of the file. A node's place there is its index here.
class CaeIds {
public:
    static constexpr std::uint32_t NONE = std::numeric_limits<std::uint32_t>::max();

    CaeIds() = default;
    explicit CaeIds(std::vector<int> ids);

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

/// Finds one number after the other, which mostly lie as far apart as their places: those of an element's nodes, say.
class CaeIdFinder {
public:
    explicit CaeIdFinder(const CaeIds& ids) : m_ids(ids) {}

    std::uint32_t find(int id) {
        const std::int64_t guess = std::int64_t(m_lastIndex) + id - m_lastId;
        const bool isIndex = guess >= 0 && guess < std::int64_t(CaeIds::NONE);
        const std::uint32_t index = m_ids.find(id, isIndex ? std::uint32_t(guess) : CaeIds::NONE);
        if (index != CaeIds::NONE) {
            m_lastIndex = index;
            m_lastId = id;
        }
        return index;
    }

private:
    const CaeIds& m_ids;
    std::uint32_t m_lastIndex = 0;
    std::int64_t m_lastId = 0;
};

/// The index of the first number that stands in `ids` before; CaeIds::NONE when all differ.
std::uint32_t firstDuplicateId(std::span<const int> ids);

} // namespace orv::imp::cae
