#include "OrvApp/Views_p.h"

#include "LibCore/rvfAssert.h"

namespace orv::app {

std::size_t ViewsPrivate::count() const {
    return m_views.size();
}

vis::View* ViewsPrivate::current() const {
    if (m_views.empty()) {
        return nullptr;
    }
    return get(m_currentIndex);
}

ViewInfo ViewsPrivate::currentInfo() const {
    if (m_views.empty()) {
        return ViewInfo();
    }
    RVF_ASSERT(m_currentIndex != orv::UNDEFINED_SIZE_T);
    return info(m_currentIndex);
}

void ViewsPrivate::setCurrent(vis::View* view) {
    const std::size_t index = indexOf(view);
    RVF_ASSERT_MSG(index != orv::UNDEFINED_SIZE_T, "View not found : cannot set it as current.");
    setCurrentIndex(index);
}

std::size_t ViewsPrivate::currentIndex() const {
    return m_currentIndex;
}

void ViewsPrivate::setCurrentIndex(std::size_t index) {
    RVF_ASSERT(index < count());
    m_currentIndex = index;
}

std::size_t ViewsPrivate::indexOf(const vis::View* view) const {
    for (std::size_t i = 0; i < m_views.size(); ++i) {
        if (m_views[i].second.get() == view) {
            return i;
        }
    }
    return UNDEFINED_SIZE_T;
}

vis::View* ViewsPrivate::get(std::size_t index) const {
    RVF_ASSERT(index < count());
    return index < count() ? m_views[index].second.get() : nullptr;
}

PtrRef<vis::View> ViewsPrivate::add() {
    PtrRef<vis::View> view = new vis::View;
    m_views.emplace_back(ViewInfo(), view);
    m_selections.push_back(new Selection);
    setCurrentIndex(count() - 1);
    return view;
}

ViewInfo ViewsPrivate::info(std::size_t index) const {
    RVF_ASSERT(index < count());
    return index < count() ? m_views[index].first : ViewInfo();
}

bool ViewsPrivate::remove(std::size_t index) {
    RVF_ASSERT(index < count());
    if (index >= count()) {
        return true;
    }
    const auto offset = static_cast<std::ptrdiff_t>(index);
    m_views.erase(m_views.begin() + offset);
    m_selections.erase(m_selections.begin() + offset);
    if (m_views.empty()) {
        RVF_ASSERT(m_currentIndex == 0);
        m_currentIndex = UNDEFINED_SIZE_T;
    } else if (m_currentIndex >= count()) {
        m_currentIndex = count() - 1;
    }
    return true;
}

Selection* ViewsPrivate::currentViewSelection() const {
    if (m_views.empty()) {
        return nullptr;
    }
    RVF_ASSERT(m_currentIndex != orv::UNDEFINED_SIZE_T);
    return m_currentIndex < count() ? m_selections[m_currentIndex].get() : nullptr;
}

Selection* ViewsPrivate::selection(std::size_t index) const {
    RVF_ASSERT(index < count());
    return index < count() ? m_selections[index].get() : nullptr;
}

} // namespace orv::app
