#pragma once

#include <optional>
#include <string>
#include <vector>

namespace orvapp {

struct PlacedSituation;

// A place is what situationsAt() takes. All of these commands throw CommandError or OutputClosed, and tell on standard
// output which situations they have found or written.

struct SituationListOptions {
    std::vector<std::string> places;
    bool json = false;
};

struct SituationRenameOptions {
    std::string folder;
    std::string name;
    std::optional<std::string> description; ///< Nothing to keep the old one.
    bool json = false;
};

struct SituationExportOptions {
    std::vector<std::string> places; ///< And behind them the archive.
    bool json = false;
};

struct SituationImportOptions {
    std::string archive;
    std::string folder;
    bool json = false;
};

struct SituationRecoverOptions {
    std::string folder;
    std::string target; ///< A folder to keep it in; empty for none.
    bool removes = false;
    bool json = false;
};

/// `orvapp situation list`: what there is.
void runSituationList(const SituationListOptions& options);

/// `orvapp situation rename`: another name and description for the situation in a folder.
void runSituationRename(const SituationRenameOptions& options);

/// `orvapp situation export`: all of them in one archive.
void runSituationExport(const SituationExportOptions& options);

/// `orvapp situation import`: the situations of an archive as folders "situation_001" and so on of a folder.
void runSituationImport(const SituationImportOptions& options);

/// `orvapp situation recover`: what an application has left for recovery, kept as a situation of its own or removed.
void runSituationRecover(const SituationRecoverOptions& options);

/// Tells of situations on standard output.
void writeSituations(const std::vector<PlacedSituation>& situations, bool json);

} // namespace orvapp
