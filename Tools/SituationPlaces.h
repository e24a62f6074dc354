#pragma once

#include "OrvApp/OrvApp.h"

#include <string>
#include <vector>

namespace orvapp {

/// A situation, and where it is kept.
struct PlacedSituation {
    std::string place; ///< A folder, a file, or an archive with a bar and the number behind it: "all.zip|2".
    orv::PtrRef<orv::ug::Situation> situation;
};

/// The situations at a place, which may also be an archive as a whole. What an archive has besides is told on standard
/// error. Throws CommandError with the reason when there is none.
std::vector<PlacedSituation> situationsAt(const std::string& place);

/// The same of all places, in their order.
std::vector<PlacedSituation> situationsAt(const std::vector<std::string>& places);

/// The one at a place. Throws CommandError when there are several.
PlacedSituation situationAt(const std::string& place);

/// Whether a folder holds a situation.
bool holdsSituation(const std::string& folder);

/// Writes a situation to a folder, which is made when it is missing. Throws CommandError, also when there is one in it.
void writeSituation(const orv::ug::Situation& situation, const std::string& folder);

/// Writes an archive, in place of a file of that name. Throws CommandError when not all of it can be written; what was
/// there may then be gone.
void writeArchive(const std::vector<PlacedSituation>& situations, const std::string& path);

} // namespace orvapp
