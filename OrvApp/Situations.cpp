#include "OrvApp/Situations.h"

#include "OrvApp/Situations_p.h"

#include <utility>

namespace orv::app {

Situations* Situations::instance() {
    static PtrRef<Situations> singleton;
    if (!singleton) {
        singleton = new Situations;
    }
    return singleton.get();
}

Situations::Situations() : m_private(nullptr) {
    m_private.reset(new SituationsPrivate);
}

Situations::~Situations() = default;

std::size_t Situations::situationsCount() const {
    return m_private->situationsCount();
}

void Situations::add(ug::Situation* situation) {
    m_private->add(situation);
}

void Situations::remove(std::size_t index) {
    m_private->remove(index);
}

void Situations::removeAll() {
    m_private->removeAll();
}

ug::Situation* Situations::situation(std::size_t index) {
    return m_private->situation(index);
}

const ug::Situation* Situations::situation(std::size_t index) const {
    return m_private->situation(index);
}

std::size_t Situations::situationIndex(const ug::Situation* situation) const {
    return m_private->situationIndex(situation);
}

PtrRef<ug::Situation> Situations::captureCurrent() const {
    return m_private->captureCurrent();
}

bool Situations::updateSituationInfo(std::size_t index, const Str& folder, const Str& name, const Str& description) {
    return m_private->renameSituation(index, folder, name, description);
}

void Situations::setRecoveryFolder(const Str& folder) {
    m_private->setRecoveryFolder(folder);
}

bool Situations::recoverySituationExists() const {
    return m_private->recoverySituationExists();
}

ug::Situation* Situations::captureRecovery() {
    return m_private->captureRecovery();
}

void Situations::saveRecovery() {
    m_private->saveRecovery();
}

PtrRef<ug::Situation> Situations::loadRecovery() const {
    return m_private->loadRecovery();
}

void Situations::removeRecovery() {
    m_private->removeRecovery();
}

void Situations::exportSituations(std::vector<const ug::Situation*> situations, const Str& archivePath) {
    m_private->exportSituations(std::move(situations), archivePath);
}

std::vector<PtrRef<ug::Situation>> Situations::importSituations(const Str& archivePath) {
    return m_private->importSituations(archivePath);
}

} // namespace orv::app
