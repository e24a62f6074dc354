#include "OrvApp/Models.h"

#include "LibCore/rvfAssert.h"
#include "OrvApp/Models_p.h"
#include "OrvCore/Defines.h"
#include "OrvCore/PtrRef.h"

namespace orv::app {

Models* Models::instance() {
    static PtrRef<Models> singleton;
    if (!singleton) {
        singleton = new Models;
    }
    return singleton.get();
}

Models::Models() : m_private(nullptr) {
    m_private.reset(new ModelsPrivate);
}

Models::~Models() = default;

std::size_t Models::count() const {
    return m_private->count();
}

ug::UnstructGridModel* Models::current() const {
    return m_private->current();
}

ug::SimulationInfo Models::currentInfo() const {
    return m_private->currentInfo();
}

void Models::setCurrent(ug::UnstructGridModel* model) {
    m_private->setCurrent(model);
}

std::size_t Models::currentIndex() const {
    return m_private->currentIndex();
}

void Models::setCurrentIndex(std::size_t index) {
    m_private->setCurrentIndex(index);
}

std::size_t Models::indexOf(const ug::UnstructGridModel* model) const {
    return m_private->indexOf(model);
}

ug::UnstructGridModel* Models::get(std::size_t index) const {
    return m_private->get(index);
}

std::size_t Models::add(ug::UnstructGridModel* model) {
    m_private->add(model);
    return count() - 1;
}

ug::SimulationInfo Models::info(std::size_t index) const {
    return m_private->info(index);
}

ug::SimulationInfo Models::info(const ug::UnstructGridModel* model) const {
    return info(indexOf(model));
}

ug::UnstructGridModel* Models::open(const Str& filename, ug::Error* error) {
    return open(filename, Str(), error);
}

ug::UnstructGridModel* Models::open(const Str& filename, const Str& password, ug::Error* error) {
    return m_private->open({filename}, password, error);
}

ug::UnstructGridModel* Models::open(const std::vector<Str>& filenameArr, ug::Error* error) {
    RVF_ASSERT_MSG(filenameArr.size() > 0, "At least one file must be provided.");
    return open(filenameArr, Str(), error);
}

ug::UnstructGridModel* Models::open(const std::vector<Str>& filenameArr, const Str& password, ug::Error* error) {
    return m_private->open(filenameArr, password, error);
}

bool Models::openSecondary(const Str& filename, ug::Error* error) {
    return m_private->openSecondary(filename, error);
}

bool Models::reopen(std::size_t index, const Str& filename, ug::Error* error) {
    return m_private->reopen(index, filename, error);
}

bool Models::reopen(ug::UnstructGridModel* model, const Str& filename, ug::Error* error) {
    return reopen(indexOf(model), filename, error);
}

void Models::close(std::size_t index) {
    m_private->close(index);
}

void Models::close(ug::UnstructGridModel* model) {
    const std::size_t index = indexOf(model);
    RVF_ASSERT_MSG(index != orv::UNDEFINED_SIZE_T, "Model not found : cannot remove it");
    close(index);
}

bool Models::closeCurrent() {
    if (current()) {
        close(currentIndex());
    }
    return true;
}

void Models::closeAll() {
    m_private->closeAll();
}

void Models::setProgress(ug::Progress* progress) {
    m_private->setProgress(progress);
}

} // namespace orv::app
