#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/Str.h"

namespace orv::ug {

class Error;
class Situation;

/// Keeps situations on disk: as the main file of a folder, or as one file with any name. Both hold the same text, see
/// Docs/formats.md.
///
/// Writing goes to a temporary file that takes the target's place at the end, so after a crash either the old or the
/// new file is there, whole. Nothing logs; a failure is false and its reason in `error`, which may be null.
class ORV_API SituationIo {
public:
    /// The file that makes a folder a situation folder.
    static constexpr const char* MAIN_FILENAME = "Situation.xml";

    SituationIo() = delete;

    /// Writes the main file, and makes the folder and those above it when they are missing. Other files in the folder
    /// stay. Asserts "situation"; false behind a failed assertion. False for an empty folder too.
    static bool writeFolder(const Situation* situation, const Str& folder, Error* error = nullptr);

    /// Replaces all that the situation holds by what the folder's main file says; the property collection is then a new
    /// one, and never null. False when there is no main file, when it is damaged or of a later major format, and for an
    /// empty folder: the situation stays as it was. Asserts "situation"; false behind a failed assertion.
    static bool readFolder(Situation* situation, const Str& folder, Error* error = nullptr);

    /// As writeFolder(), into a file whose folder must exist.
    static bool writeArchiveFile(const Situation* situation, const Str& file, Error* error = nullptr);

    /// As readFolder(), from a file.
    static bool readArchiveFile(Situation* situation, const Str& file, Error* error = nullptr);
};

} // namespace orv::ug
