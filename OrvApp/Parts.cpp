#include "OrvApp/Parts.h"

#include "OrvApp/Parts_p.h"
#include "OrvCore/PtrRef.h"

namespace orv::app {

Parts* Parts::instance() {
    static PtrRef<Parts> singleton;
    if (!singleton) {
        singleton = new Parts;
    }
    return singleton.get();
}

Parts::Parts() : m_private(nullptr) {
    m_private.reset(new PartsPrivate);
}

Parts::~Parts() = default;

std::size_t Parts::count() const {
    return m_private->count();
}

ug::DataPart* Parts::current() const {
    return m_private->current();
}

ug::PartInfo Parts::currentInfo() const {
    return m_private->currentInfo();
}

void Parts::setCurrent(ug::DataPart* part) {
    m_private->setCurrent(part);
}

std::size_t Parts::currentIndex() const {
    return m_private->currentIndex();
}

void Parts::setCurrentIndex(std::size_t index) {
    m_private->setCurrentIndex(index);
}

ug::DataPart* Parts::get(std::size_t index) const {
    return m_private->get(index);
}

ug::DataPart* Parts::get(const Str& pattern) const {
    return m_private->get(pattern);
}

std::size_t Parts::indexOf(const ug::DataPart* part) const {
    return m_private->indexOf(part);
}

ug::PartInfo Parts::info(std::size_t index) const {
    return m_private->info(index);
}

ug::PartInfo Parts::info(ug::DataPart* part) const {
    return info(indexOf(part));
}

std::size_t Parts::geometryIndex(std::size_t index) const {
    return m_private->geometryIndex(index);
}

std::size_t Parts::geometryIndex(const ug::DataPart* part) const {
    return m_private->geometryIndex(part);
}

} // namespace orv::app
