#pragma once

#include "OrvCore/PtrRef.h"
#include "OrvCore/Str.h"
#include "OrvUnstructGrid/Situation.h"

#include <cstddef>
#include <vector>

namespace orv::app {

/// What stands behind Situations.
class SituationsPrivate {
public:
    SituationsPrivate();

    std::size_t situationsCount() const;
    void add(ug::Situation* situation);
    void remove(std::size_t index);
    void removeAll();
    ug::Situation* situation(std::size_t index);
    const ug::Situation* situation(std::size_t index) const;
    std::size_t situationIndex(const ug::Situation* situation) const;
    PtrRef<ug::Situation> captureCurrent() const;
    bool renameSituation(std::size_t index, const Str& folder, const Str& name, const Str& description);

    void setRecoveryFolder(const Str& folder);
    bool recoverySituationExists() const;
    ug::Situation* captureRecovery();
    void saveRecovery();
    PtrRef<ug::Situation> loadRecovery() const;
    void removeRecovery();

    void exportSituations(std::vector<const ug::Situation*> situations, const Str& archivePath);
    std::vector<PtrRef<ug::Situation>> importSituations(const Str& archivePath);

    /// Whether something is at that path, readable or not.
    static bool exists(const Str& path);

private:
    void deleteRecoveryFolder();

    PtrRef<ug::Situation> m_recoverySituation;
    Str m_recoveryFolder; ///< With forward slashes.
    std::vector<PtrRef<ug::Situation>> m_situations;
};

} // namespace orv::app
