#include "OrvApp/Views.h"

#include "LibCore/rvfAssert.h"
#include "OrvApp/Views_p.h"
#include "OrvApp/ViewSelections_p.h"

namespace orv::app {

Views* Views::instance() {
    static PtrRef<Views> singleton;
    if (!singleton) {
        singleton = new Views;
        static ViewSelections selections;
    }
    return singleton.get();
}

Views::Views() : m_private(nullptr) {
    m_private.reset(new ViewsPrivate);
}

Views::~Views() = default;

std::size_t Views::count() const {
    return m_private->count();
}

vis::View* Views::current() const {
    return m_private->current();
}

ViewInfo Views::currentViewInfo() const {
    return m_private->currentInfo();
}

void Views::setCurrent(vis::View* view) {
    m_private->setCurrent(view);
}

std::size_t Views::currentIndex() const {
    return m_private->currentIndex();
}

void Views::setCurrentIndex(std::size_t index) {
    m_private->setCurrentIndex(index);
}

std::size_t Views::indexOf(const vis::View* view) const {
    return m_private->indexOf(view);
}

vis::View* Views::get(std::size_t index) const {
    return m_private->get(index);
}

PtrRef<vis::View> Views::add() {
    return m_private->add();
}

ViewInfo Views::viewInfo(std::size_t index) const {
    return m_private->info(index);
}

ViewInfo Views::viewInfo(vis::View* view) const {
    return viewInfo(indexOf(view));
}

bool Views::remove(std::size_t index) {
    return m_private->remove(index);
}

bool Views::remove(vis::View* view) {
    const std::size_t index = indexOf(view);
    RVF_ASSERT_MSG(index != orv::UNDEFINED_SIZE_T, "View not found : cannot remove it");
    return remove(index);
}

bool Views::removeCurrent() {
    if (!current()) {
        return true;
    }
    return remove(currentIndex());
}

Selection* Views::currentViewSelection() const {
    return m_private->currentViewSelection();
}

Selection* Views::viewSelection(std::size_t index) const {
    return m_private->selection(index);
}

Selection* Views::viewSelection(vis::View* view) const {
    return viewSelection(indexOf(view));
}

} // namespace orv::app
