#include "OrvImportCae/CaeIds.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace orv::imp::cae {
namespace {

bool isStrictlyAscending(std::span<const int> ids) {
    return std::adjacent_find(ids.begin(), ids.end(), std::greater_equal<int>()) == ids.end();
}

// By number; equal numbers stay in the order of the file.
std::vector<std::uint32_t> ascendingOrder(std::span<const int> ids) {
    std::vector<std::uint32_t> order(ids.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [ids](std::uint32_t a, std::uint32_t b) { return ids[a] < ids[b]; });
    return order;
}

std::uint32_t firstDuplicateInOrder(std::span<const int> ids, std::span<const std::uint32_t> order) {
    std::uint32_t first = CaeIds::NONE;
    for (std::size_t i = 1; i < order.size(); ++i) {
        if (ids[order[i]] == ids[order[i - 1]]) {
            first = std::min(first, order[i]);
        }
    }
    return first;
}

} // namespace

CaeIds::CaeIds(std::vector<int> ids) : m_ids(std::move(ids)) {
    if (!isStrictlyAscending(m_ids)) {
        m_order = ascendingOrder(m_ids);
    }
}

std::span<const int> CaeIds::ids() const {
    return m_ids;
}

std::uint32_t CaeIds::find(int id, std::uint32_t guess) const {
    if (guess < m_ids.size() && m_ids[guess] == id) {
        return guess;
    }
    if (isAscending()) {
        const auto found = std::lower_bound(m_ids.begin(), m_ids.end(), id);
        return found != m_ids.end() && *found == id ? std::uint32_t(found - m_ids.begin()) : NONE;
    }
    const auto found = std::lower_bound(m_order.begin(), m_order.end(), id,
                                        [this](std::uint32_t index, int wanted) { return m_ids[index] < wanted; });
    return found != m_order.end() && m_ids[*found] == id ? *found : NONE;
}

bool CaeIds::isAscending() const {
    return m_order.empty();
}

std::uint32_t CaeIds::firstDuplicate() const {
    return firstDuplicateInOrder(m_ids, m_order);
}

std::uint32_t firstDuplicateId(std::span<const int> ids) {
    return isStrictlyAscending(ids) ? CaeIds::NONE : firstDuplicateInOrder(ids, ascendingOrder(ids));
}

} // namespace orv::imp::cae
