#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/PimplPointerHolder.h"
#include "OrvCore/PtrRef.h"
#include "OrvCore/RefCountedObject.h"
#include "OrvCore/Str.h"

#include <cstddef>
#include <vector>

namespace orv::ug {
class Situation;
}

namespace orv::app {

class SituationsPrivate;

/// The situations of the process, each a saved picture of what the application is showing: a list in the order of
/// adding, and beside it one for recovery after a crash.
///
/// The list and the disk know nothing of each other: what is read from a folder or an archive comes into the list only
/// through add(), and remove() deletes no file. Bringing a situation back is the application's, with
/// ug::Situation::applyTo().
///
/// A situation folder is any folder with a "Situation.xml" directly in it. Paths are joined by "/" and otherwise taken
/// as they are.
///
/// Nothing here asserts. What goes wrong on the disk is a message of the log "orv.comp.app" where that is told below,
/// and otherwise silent. One thread at a time.
class ORV_API Situations : public RefCountedObject {
public:
    /// Made at the first call, gone at process exit.
    static Situations* instance();

    std::size_t situationsCount() const;

    /// Appends the situation and takes a reference on it. The same one may be there twice, and null too.
    void add(ug::Situation* situation);

    /// Takes a situation off the list. The index has to be below situationsCount(): it is not looked at.
    void remove(std::size_t index);

    /// Empties the list. The recovery situation stays.
    void removeAll();

    /// The situation, owned by the list. The index has to be below situationsCount(): it is not looked at.
    ug::Situation* situation(std::size_t index);
    const ug::Situation* situation(std::size_t index) const;

    /// The first position of that object, UNDEFINED_SIZE_T when it is not in the list.
    std::size_t situationIndex(const ug::Situation* situation) const;

    /// A new situation of what the current model and the current view show, with the model's file as its source. It has
    /// no name, and is not added to the list. There have to be a current model and a current view: nobody looks.
    PtrRef<ug::Situation> captureCurrent() const;

    /// Gives a situation of the list a name and a description, in memory and in a situation folder, which is written
    /// anew from its properties, source model file and user data, and these two.
    ///
    /// Beware: the folder is not compared with the situation, so any situation folder is overwritten, and what else its
    /// file held is gone. The situation has to have a property collection, and the index to be below situationsCount().
    ///
    /// | it fails because | warning | name in memory |
    /// |---|---|---|
    /// | the folder is none of a situation | `Situation folder  "FOLDER" not found. Situation name noe changed.` | as
    /// before | | it cannot be written | `Could not update situation name to folder: FOLDER` | the new one |
    ///
    /// @return false when it fails
    bool updateSituationInfo(std::size_t index, const Str& folder, const Str& name, const Str& description);

    /// @name Recovery
    /// One situation named "Recovery", which lives as long as the process, and one folder of the application's choice.
    /// When to capture, to save and to look for what an earlier run has left is up to the application.
    /// @{

    /// Remembers the folder, each backslash as "/". It need not be there yet, and nothing is done on the disk.
    void setRecoveryFolder(const Str& folder);

    /// Whether there is a "Situation.xml" in the folder; without a folder, in the root of the file system.
    bool recoverySituationExists() const;

    /// Stores in the recovery situation what the current model and the current view show, in a new property collection,
    /// and the model's file as its source. Nothing is written. There have to be a current model and a current view:
    /// nobody looks.
    /// @return the recovery situation, always the same object. What is set on it now is saved with it.
    ug::Situation* captureRecovery();

    /// Replaces the recovery in the folder by the recovery situation as it was captured last; without any, by an empty
    /// one of that name.
    ///
    /// Beware: the earlier recovery is deleted first, whatever comes of the new one, and a crash in between leaves
    /// none. Other files in the folder stay.
    ///
    /// Warnings: `Recovery folder not set.` and `Could not save recovery situation to folder: FOLDER`.
    void saveRecovery();

    /// A new situation from the folder. Null when there is none, with `No recover situation found` as info.
    PtrRef<ug::Situation> loadRecovery() const;

    /// Deletes the recovery, and its folder when nothing else is in it, in silence. The recovery situation stays as it
    /// is.
    void removeRecovery();
    /// @}

    /// @name Archives
    /// A zip file with one entry for each situation: the file that ug::SituationIo writes for one, under names from
    /// "situation_001" on. On the way in and out each becomes for a moment the file "temp_situation_001" or
    /// "temp_situation_001.sitx", and so on, in the temporary folder of rvf::FileSystem. Beware: two processes that do
    /// this at once meet in these names. A temporary folder with characters beyond ASCII in its path is not found.
    /// @{

    /// Writes an archive with the situations in their order. A situation that cannot be written is left out, with the
    /// warning `Could not add situation file to archive`, and its number too. Without a temporary folder, and when the
    /// archive cannot be made, nothing happens, in silence.
    void exportSituations(std::vector<const ug::Situation*> situations, const Str& archivePath);

    /// The situations of an archive in the order of its entries, whatever their names. They are not added to the list.
    ///
    /// Entries that are none are left out in silence, those that cannot be unpacked with the warning `Could not extract
    /// situation number N in archive file: PATH`, N counted from 0. Nothing comes back with the warnings `Could not
    /// access temp folder` and `Could not open situations archive file: PATH`.
    ///
    /// Beware: the archive stays open until the process ends.
    std::vector<PtrRef<ug::Situation>> importSituations(const Str& archivePath);
    /// @}

private:
    Situations();
    ~Situations() override;

    internal::PimplPointerHolder<SituationsPrivate> m_private;
};

} // namespace orv::app
