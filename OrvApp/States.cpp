#include "OrvApp/States.h"

#include "OrvApp/States_p.h"
#include "OrvCore/PtrRef.h"

namespace orv::app {

States* States::instance() {
    static PtrRef<States> singleton;
    if (!singleton) {
        singleton = new States;
    }
    return singleton.get();
}

States::States() : m_private(nullptr) {
    m_private.reset(new StatesPrivate);
}

States::~States() = default;

std::size_t States::count() const {
    return m_private->count();
}

ug::DataState* States::current() const {
    return m_private->current();
}

ug::StateInfo States::currentInfo() const {
    return m_private->currentInfo();
}

void States::setCurrentInfo(ug::StateInfo info) {
    m_private->setCurrentInfo(info);
}

std::size_t States::currentIndex() const {
    return m_private->currentIndex();
}

void States::setCurrentIndex(std::size_t index) {
    m_private->setCurrentIndex(index);
}

std::size_t States::indexOf(ug::StateInfo info) const {
    return m_private->indexOf(info);
}

ug::StateInfo States::info(std::size_t index) const {
    return m_private->info(index);
}

ug::StateInfo States::info(const Str& pattern) const {
    return m_private->info(pattern);
}

} // namespace orv::app
