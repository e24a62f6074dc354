#include "OrvUnstructGrid/ResultsQueryItem.h"

namespace orv::ug {

ResultsQueryItem::ResultsQueryItem(std::size_t itemIndex, std::size_t index) : m_itemIndex(itemIndex), m_index(index) {}

std::size_t ResultsQueryItem::itemIndex() const {
    return m_itemIndex;
}

std::size_t ResultsQueryItem::index() const {
    return m_index;
}

} // namespace orv::ug
