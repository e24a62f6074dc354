#pragma once

#include <filesystem>
#include <set>
#include <string>
#include <vector>

namespace orvtest::ladder {

/// A folder of the ladder. Its files may include their own folder and those with a lower number.
struct Floor {
    int number;
    std::string folder;
    std::vector<std::string> thirdParty; ///< How the names of its third-party headers may begin.
};

/// The house plan.
const std::vector<Floor>& houseFloors();

/// One source file: its path from the repository root, with slashes, and its text.
struct SourceFile {
    std::string path;
    std::string text;
};

/// An #include line.
struct Include {
    int line;
    bool quoted;
    std::string name;

    bool operator==(const Include&) const = default;
};

/// All .h and .cpp files of the floors and of the folders beside the ladder, sorted by path.
std::vector<SourceFile> readSources(const std::filesystem::path& root, const std::vector<Floor>& floors);

std::vector<Include> includesOf(const SourceFile& file);

/// The paths of the headers that a folder's CMakeLists.txt installs: the public ones.
std::set<std::string> publicHeaders(const std::string& folder, const std::string& cmakeText);

/// Those of all floors.
std::set<std::string> readPublicHeaders(const std::filesystem::path& root, const std::vector<Floor>& floors);

/// What a check finds, one line of text for each offence, beginning with the file and, where it has one, the line.
using Offences = std::vector<std::string>;

/// Includes that go up or sideways.
Offences wrongArrows(const std::vector<SourceFile>& files, const std::vector<Floor>& floors);

/// Headers in angle brackets that are neither the language's, POSIX's nor granted to the floor.
Offences foreignHeaders(const std::vector<SourceFile>& files, const std::vector<Floor>& floors);

/// Quoted includes on the floors that do not name a file of a floor from the repository root.
Offences unrootedIncludes(const std::vector<SourceFile>& files, const std::vector<Floor>& floors);

/// Public headers that include a header that is not installed, and public headers that are private by their names
/// (*_p.h).
Offences leakedPrivateHeaders(const std::vector<SourceFile>& files, const std::set<std::string>& publicHeaders);

/// Public headers that the umbrella header of their folder, Folder/Folder.h, does not bring in, directly or through
/// headers of the same folder.
Offences headersOutsideUmbrella(const std::vector<SourceFile>& files, const std::set<std::string>& publicHeaders);

Offences longFiles(const std::vector<SourceFile>& files);

/// Lines with bytes above 127, outside Tests.
Offences nonAsciiLines(const std::vector<SourceFile>& files);

} // namespace orvtest::ladder
