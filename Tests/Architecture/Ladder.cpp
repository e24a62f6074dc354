#include "Tests/Architecture/Ladder.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <sstream>

namespace orvtest::ladder {
namespace {

constexpr int maximumLines = 800;

std::string folderOf(const std::string& path) {
    return path.substr(0, path.find('/'));
}

const Floor* floorOf(const std::string& path, const std::vector<Floor>& floors) {
    auto floor = std::find_if(floors.begin(), floors.end(), [&](const Floor& f) { return f.folder == folderOf(path); });
    return floor == floors.end() ? nullptr : &*floor;
}

std::string umbrellaOf(const std::string& path) {
    return folderOf(path) + "/" + folderOf(path) + ".h";
}

/// All headers of the language have names like these; a third-party header has a folder, an extension or capitals.
bool isLanguageHeader(const std::string& name) {
    return std::all_of(name.begin(), name.end(),
                       [](char c) { return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_'; });
}

bool isPosixHeader(const std::string& name) {
    static const std::set<std::string> names = {"dirent.h", "dlfcn.h", "fcntl.h", "fnmatch.h", "unistd.h"};
    return names.contains(name) || name.starts_with("sys/");
}

bool isGranted(const std::string& name, const Floor& floor) {
    return std::any_of(floor.thirdParty.begin(), floor.thirdParty.end(),
                       [&](const std::string& start) { return name.starts_with(start); });
}

std::string readText(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

std::string at(const SourceFile& file, const Include& include) {
    return file.path + ":" + std::to_string(include.line) + " includes " + include.name;
}

/// Calls check(file, its floor, include) for each include of each file that stands on a floor.
template <class Check>
void forEachInclude(const std::vector<SourceFile>& files, const std::vector<Floor>& floors, Check check) {
    for (const SourceFile& file : files) {
        if (const Floor* floor = floorOf(file.path, floors)) {
            for (const Include& include : includesOf(file)) {
                check(file, *floor, include);
            }
        }
    }
}

} // namespace

const std::vector<Floor>& houseFloors() {
    static const std::vector<Floor> floors = {
        {1, "LibCore", {}},
        {2, "LibIo", {}},
        {3, "LibUnstructGrid", {}},
        {4, "OrvCore", {}},
        {5, "OrvVisualization", {"embree", "png.h", "ft2build.h", "freetype/"}},
        {6, "OrvUnstructGrid", {"zip.h", "pugixml.hpp", "xxhash.h", "xxh_x86dispatch.h"}},
        {7, "OrvImportCae", {}},
        {7, "OrvPlot2d", {"cairo"}},
        {8, "OrvApp", {}},
        {8, "OrvImportMed", {"med.h"}},
        {8, "OrvImportVtk", {"vtk", "SMP/", "pugixml.hpp"}},
        {9, "Tools", {"CLI/", "nlohmann/"}},
        {9, "Python", {"pybind11/"}},
        {9, "Examples", {}},
    };
    return floors;
}

std::vector<SourceFile> readSources(const std::filesystem::path& root, const std::vector<Floor>& floors) {
    std::vector<std::string> folders = {"Tests", "Benchmarks", "Fuzz"};
    for (const Floor& floor : floors) {
        folders.push_back(floor.folder);
    }
    std::vector<SourceFile> files;
    for (const std::string& folder : folders) {
        if (!std::filesystem::is_directory(root / folder)) {
            continue;
        }
        for (const auto& entry : std::filesystem::recursive_directory_iterator(root / folder)) {
            if (entry.path().extension() == ".h" || entry.path().extension() == ".cpp") {
                files.push_back({entry.path().lexically_relative(root).generic_string(), readText(entry.path())});
            }
        }
    }
    std::sort(files.begin(), files.end(), [](const auto& a, const auto& b) { return a.path < b.path; });
    return files;
}

std::vector<Include> includesOf(const SourceFile& file) {
    std::vector<Include> includes;
    std::istringstream lines(file.text);
    std::string line;
    for (int number = 1; std::getline(lines, line); ++number) {
        std::istringstream words(line);
        char hash = 0;
        std::string directive;
        if (!(words >> hash) || hash != '#') {
            continue;
        }
        std::getline(words >> std::ws, directive);
        if (!directive.starts_with("include")) {
            continue;
        }
        const std::size_t begin = directive.find_first_of("\"<");
        const std::size_t end = directive.find_first_of("\">", begin + 1);
        if (begin != std::string::npos && end != std::string::npos) {
            includes.push_back({number, directive[begin] == '"', directive.substr(begin + 1, end - begin - 1)});
        }
    }
    return includes;
}

std::set<std::string> publicHeaders(const std::string& folder, const std::string& cmakeText) {
    std::set<std::string> headers;
    std::istringstream words(cmakeText);
    bool inList = false;
    for (std::string word; words >> word;) {
        const std::string name = word.substr(0, word.find(')'));
        if (name == "HEADERS") {
            inList = true;
        } else if (inList && name.ends_with(".h")) {
            headers.insert(folder + "/" + name);
        } else {
            inList = false;
        }
    }
    return headers;
}

std::set<std::string> readPublicHeaders(const std::filesystem::path& root, const std::vector<Floor>& floors) {
    std::set<std::string> headers;
    for (const Floor& floor : floors) {
        headers.merge(publicHeaders(floor.folder, readText(root / floor.folder / "CMakeLists.txt")));
    }
    return headers;
}

Offences wrongArrows(const std::vector<SourceFile>& files, const std::vector<Floor>& floors) {
    Offences offences;
    forEachInclude(files, floors, [&](const SourceFile& file, const Floor& from, const Include& include) {
        const Floor* to = floorOf(include.name, floors);
        if (include.name.find('/') == std::string::npos || !to || to->folder == from.folder) {
            return;
        }
        if (to->number >= from.number) {
            offences.push_back(at(file, include) + ", which goes from floor " + std::to_string(from.number) +
                               " to floor " + std::to_string(to->number));
        }
    });
    return offences;
}

Offences foreignHeaders(const std::vector<SourceFile>& files, const std::vector<Floor>& floors) {
    Offences offences;
    forEachInclude(files, floors, [&](const SourceFile& file, const Floor& floor, const Include& include) {
        if (!include.quoted && !isLanguageHeader(include.name) && !isPosixHeader(include.name) &&
            !isGranted(include.name, floor)) {
            offences.push_back(at(file, include) + ", which " + floor.folder + " may not use");
        }
    });
    return offences;
}

Offences unrootedIncludes(const std::vector<SourceFile>& files, const std::vector<Floor>& floors) {
    std::set<std::string> paths;
    for (const SourceFile& file : files) {
        paths.insert(file.path);
    }
    Offences offences;
    forEachInclude(files, floors, [&](const SourceFile& file, const Floor&, const Include& include) {
        if (include.quoted && (!floorOf(include.name, floors) || !paths.contains(include.name))) {
            offences.push_back(at(file, include) + ", which is no file of a floor");
        }
    });
    return offences;
}

Offences leakedPrivateHeaders(const std::vector<SourceFile>& files, const std::set<std::string>& publicHeaders) {
    Offences offences;
    for (const SourceFile& file : files) {
        if (!publicHeaders.contains(file.path)) {
            continue;
        }
        if (file.path.ends_with("_p.h")) {
            offences.push_back(file.path + " is installed, but private by its name");
        }
        for (const Include& include : includesOf(file)) {
            if (include.quoted && !publicHeaders.contains(include.name)) {
                offences.push_back(at(file, include) + ", which is not installed");
            }
        }
    }
    return offences;
}

Offences headersOutsideUmbrella(const std::vector<SourceFile>& files, const std::set<std::string>& publicHeaders) {
    std::map<std::string, const SourceFile*> byPath;
    for (const SourceFile& file : files) {
        byPath[file.path] = &file;
    }
    // Follows the includes from each umbrella through the headers of its folder.
    std::set<std::string> reached;
    std::vector<std::string> toVisit;
    for (const std::string& header : publicHeaders) {
        toVisit.push_back(umbrellaOf(header));
    }
    while (!toVisit.empty()) {
        const std::string path = toVisit.back();
        toVisit.pop_back();
        if (!byPath.contains(path) || !reached.insert(path).second) {
            continue;
        }
        for (const Include& include : includesOf(*byPath[path])) {
            if (folderOf(include.name) == folderOf(path)) {
                toVisit.push_back(include.name);
            }
        }
    }
    Offences offences;
    for (const std::string& header : publicHeaders) {
        if (!reached.contains(header)) {
            offences.push_back(header + " is not brought in by " + umbrellaOf(header));
        }
    }
    return offences;
}

Offences longFiles(const std::vector<SourceFile>& files) {
    Offences offences;
    for (const SourceFile& file : files) {
        const auto lines = std::count(file.text.begin(), file.text.end(), '\n');
        if (lines > maximumLines) {
            offences.push_back(file.path + " has " + std::to_string(lines) + " lines");
        }
    }
    return offences;
}

Offences nonAsciiLines(const std::vector<SourceFile>& files) {
    Offences offences;
    for (const SourceFile& file : files) {
        if (folderOf(file.path) == "Tests") {
            continue;
        }
        std::istringstream lines(file.text);
        std::string line;
        for (int number = 1; std::getline(lines, line); ++number) {
            if (std::any_of(line.begin(), line.end(), [](unsigned char c) { return c > 127; })) {
                offences.push_back(file.path + ":" + std::to_string(number) + " is not ASCII");
            }
        }
    }
    return offences;
}

} // namespace orvtest::ladder
