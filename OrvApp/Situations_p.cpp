#include "OrvApp/Situations_p.h"

#include "LibIo/rvfFileSystem.h"
#include "LibUnstructGrid/VTOFile.h"
#include "LibUnstructGrid/VTORvfConvertApi.h"
#include "OrvApp/AppLog_p.h"
#include "OrvApp/Models.h"
#include "OrvApp/Views.h"
#include "OrvCore/Convert.h"
#include "OrvCore/Defines.h"
#include "OrvCore/PropertySetCollection.h"
#include "OrvUnstructGrid/Convert.h"
#include "OrvUnstructGrid/CZipArchive.h"
#include "OrvUnstructGrid/SituationIo.h"
#include "OrvUnstructGrid/UnstructGridModel.h"
#include "OrvVisualization/View.h"

#include <unistd.h>

namespace orv::app {
namespace {

constexpr unsigned int BUFFER_SIZE = 65536;

Str mainFileIn(const Str& folder) {
    return folder + "/" + ug::SituationIo::MAIN_FILENAME;
}

rvf::CharArray toUtf8(const Str& text) {
    return VTRvfConvertApi::toString(ug::Convert::toVTString(text)).toUtf8();
}

void captureCurrentInto(ug::Situation* situation) {
    const ug::UnstructGridModel* model = Models::instance()->current();
    const vis::View* view = Views::instance()->current();
    situation->capture(*model, *view);
    situation->setSourceModelFile(Models::instance()->currentInfo().filename());
}

/// A folder with any other file in it stays, without its main file.
void deleteFolder(const Str& folder) {
    const Str file = mainFileIn(folder);
    if (SituationsPrivate::exists(file)) {
        rvf::FileSystem::deleteFile(Convert::toRvfString(file));
    }
    ::rmdir(toUtf8(folder).ptr());
}

Str tempFolder() {
    return Convert::toStr(rvf::FileSystem::tempDirectoryPath());
}

/// Null for one that does not open. What happens to the object then is what happens to all that are read: nobody
/// releases it. Tests/leaks.supp knows this function by name.
CZipArchive* openUnreleasedArchive(const Str& path, CZipArchive::Mode mode) {
    auto* archive = new CZipArchive;
    return archive->Open(toUtf8(path).ptr(), mode, 0) ? archive : nullptr;
}

} // namespace

SituationsPrivate::SituationsPrivate() : m_recoverySituation(new ug::Situation) {
    m_recoverySituation->setName("Recovery");
}

std::size_t SituationsPrivate::situationsCount() const {
    return m_situations.size();
}

void SituationsPrivate::add(ug::Situation* situation) {
    m_situations.push_back(situation);
}

void SituationsPrivate::remove(std::size_t index) {
    m_situations.erase(m_situations.begin() + static_cast<std::ptrdiff_t>(index));
}

void SituationsPrivate::removeAll() {
    m_situations.clear();
}

ug::Situation* SituationsPrivate::situation(std::size_t index) {
    return m_situations[index].get();
}

const ug::Situation* SituationsPrivate::situation(std::size_t index) const {
    return m_situations[index].get();
}

std::size_t SituationsPrivate::situationIndex(const ug::Situation* situation) const {
    for (std::size_t i = 0; i < m_situations.size(); ++i) {
        if (m_situations[i].get() == situation) {
            return i;
        }
    }
    return UNDEFINED_SIZE_T;
}

PtrRef<ug::Situation> SituationsPrivate::captureCurrent() const {
    PtrRef<ug::Situation> situation = new ug::Situation;
    captureCurrentInto(situation.get());
    return situation;
}

bool SituationsPrivate::renameSituation(std::size_t index, const Str& folder, const Str& name, const Str& description) {
    const rvf::CodeLocation here(RVF_SOURCE_PATH,
                                 "bool orv::app::SituationsPrivate::renameSituation(size_t, const orv::Str &, "
                                 "const orv::Str &, const orv::Str &)",
                                 "renameSituation", __LINE__);
    ug::Situation* situation = this->situation(index);
    if (!exists(mainFileIn(folder))) {
        // The two blanks and the misspelling stay: it is the text that people search their logs for.
        logWarning("Situation folder  \"%1\" not found. Situation name noe changed.", folder, here);
        return false;
    }
    situation->setName(name);
    situation->setDescription(description);

    const PtrRef<ug::Situation> scratch = new ug::Situation;
    scratch->setPropertyCollection(new PropertySetCollection(*situation->propertyCollection()));
    scratch->setName(name);
    scratch->setDescription(description);
    scratch->setSourceModelFile(situation->sourceModelFile());
    scratch->setAllUserData(situation->allUserData());
    if (!ug::SituationIo::writeFolder(scratch.get(), folder)) {
        logWarning("Could not update situation name to folder: %1", folder, here);
        return false;
    }
    return true;
}

void SituationsPrivate::setRecoveryFolder(const Str& folder) {
    m_recoveryFolder = folder;
    m_recoveryFolder.replace("\\", "/");
}

bool SituationsPrivate::recoverySituationExists() const {
    return exists(mainFileIn(m_recoveryFolder));
}

ug::Situation* SituationsPrivate::captureRecovery() {
    m_recoverySituation->setPropertyCollection(new PropertySetCollection);
    captureCurrentInto(m_recoverySituation.get());
    return m_recoverySituation.get();
}

void SituationsPrivate::saveRecovery() {
    const rvf::CodeLocation here(RVF_SOURCE_PATH, "void orv::app::SituationsPrivate::saveRecovery()", "saveRecovery",
                                 __LINE__);
    deleteRecoveryFolder();
    if (!m_recoverySituation) {
        return;
    }
    if (m_recoveryFolder.isEmpty()) {
        logWarning("Recovery folder not set.", here);
        return;
    }
    if (!ug::SituationIo::writeFolder(m_recoverySituation.get(), m_recoveryFolder)) {
        logWarning("Could not save recovery situation to folder: %1", m_recoveryFolder, here);
    }
}

PtrRef<ug::Situation> SituationsPrivate::loadRecovery() const {
    const rvf::CodeLocation here(RVF_SOURCE_PATH,
                                 "orv::PtrRef<orv::ug::Situation> orv::app::SituationsPrivate::loadRecovery() const",
                                 "loadRecovery", __LINE__);
    PtrRef<ug::Situation> situation = new ug::Situation;
    if (!ug::SituationIo::readFolder(situation.get(), m_recoveryFolder)) {
        logInfo("No recover situation found", here);
        return nullptr;
    }
    if (!situation) {
        logWarning("Could not load recover situation", here);
        return nullptr;
    }
    return situation;
}

void SituationsPrivate::removeRecovery() {
    deleteRecoveryFolder();
}

void SituationsPrivate::exportSituations(std::vector<const ug::Situation*> situations, const Str& archivePath) {
    const Str folder = tempFolder();
    if (folder.isEmpty()) {
        return;
    }
    CZipArchive* archive = openUnreleasedArchive(archivePath, CZipArchive::CREATE);
    if (!archive) {
        return;
    }
    int number = 0;
    for (const ug::Situation* situation : situations) {
        ++number;
        const Str entryName = Str("situation_%0").arg(number, 3, '0');
        const Str tempFile = folder + "/" + Str("temp_situation_%0").arg(number, 3, '0');
        // A failure shows in the next step, which finds no file.
        ug::SituationIo::writeArchiveFile(situation, tempFile);
        if (!archive->AddNewFile(toUtf8(tempFile).ptr(), toUtf8(entryName).ptr(), -1, 7, BUFFER_SIZE)) {
            logWarning("Could not add situation file to archive",
                       {RVF_SOURCE_PATH,
                        "void orv::app::SituationsPrivate::exportSituations("
                        "std::vector<const orv::ug::Situation *>, const orv::Str &)",
                        "exportSituations", __LINE__});
        }
        rvf::FileSystem::deleteFile(Convert::toRvfString(tempFile));
    }
    archive->Close(0, false);
    delete archive;
}

std::vector<PtrRef<ug::Situation>> SituationsPrivate::importSituations(const Str& archivePath) {
    const rvf::CodeLocation here(
        RVF_SOURCE_PATH,
        "std::vector<orv::PtrRef<orv::ug::Situation>> orv::app::SituationsPrivate::importSituations(const orv::Str &)",
        "importSituations", __LINE__);
    std::vector<PtrRef<ug::Situation>> situations;
    const Str folder = tempFolder();
    if (folder.isEmpty()) {
        logWarning("Could not access temp folder", here);
        return situations;
    }
    CZipArchive* archive = openUnreleasedArchive(archivePath, CZipArchive::READ);
    if (!archive) {
        logWarning("Could not open situations archive file: %1", archivePath, here);
        return situations;
    }
    const int count = static_cast<int>(archive->GetCount());
    for (int i = 0; i < count; ++i) {
        const Str tempFile = folder + "/" + Str("temp_situation_%0.sitx").arg(i + 1, 3, '0');
        if (!archive->ExtractFile(static_cast<unsigned>(i), toUtf8(folder).ptr(), false, toUtf8(tempFile).ptr(),
                                  BUFFER_SIZE)) {
            logWarning("Could not extract situation number %1 in archive file: %2", i, archivePath, here);
            continue;
        }
        PtrRef<ug::Situation> situation = new ug::Situation;
        if (ug::SituationIo::readArchiveFile(situation.get(), tempFile)) {
            situations.push_back(situation);
        }
        rvf::FileSystem::deleteFile(Convert::toRvfString(tempFile));
    }
    return situations; // The archive stays open.
}

bool SituationsPrivate::exists(const Str& path) {
    return VTCheckFileAccess(~ug::Convert::toVTString(path), VT_ACCESS_EXISTENCE);
}

void SituationsPrivate::deleteRecoveryFolder() {
    if (!m_recoveryFolder.isEmpty()) {
        deleteFolder(m_recoveryFolder);
    }
}

} // namespace orv::app
