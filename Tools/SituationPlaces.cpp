#include "Tools/SituationPlaces.h"

#include "Tools/CommandError.h"
#include "Tools/Names.h"
#include "Tools/Output.h"
#include "Tools/QuietLog.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <system_error>

#include <sys/stat.h>

namespace orvapp {

namespace {

namespace fs = std::filesystem;

/// The catalogue moves situations through files with the same names in every process: so this one has a temporary
/// folder of its own for a while.
class OwnTempFolder {
public:
    OwnTempFolder() : m_earlier(fs::temp_directory_path(m_problem).string()) {
        m_path = m_earlier + "/orvapp-XXXXXX";
        if (m_problem || !::mkdtemp(m_path.data())) {
            throw CommandError("cannot make a temporary folder in \"" + m_earlier + '"');
        }
        ::setenv("TMPDIR", m_path.c_str(), 1);
    }

    ~OwnTempFolder() {
        ::setenv("TMPDIR", m_earlier.c_str(), 1);
        fs::remove_all(m_path, m_problem);
    }

    OwnTempFolder(const OwnTempFolder&) = delete;
    OwnTempFolder& operator=(const OwnTempFolder&) = delete;

private:
    std::error_code m_problem;
    std::string m_earlier;
    std::string m_path;
};

bool isFolder(const std::string& place) {
    std::error_code ignored;
    return fs::is_directory(place, ignored);
}

bool isThere(const std::string& place) {
    std::error_code ignored;
    return fs::exists(place, ignored);
}

bool isArchive(const std::string& place) {
    std::ifstream stream(place, std::ios::binary);
    return stream.get() == 'P' && stream.get() == 'K';
}

/// Another one for each file that takes the place of another; 0 for none.
ino_t fileNumber(const std::string& path) {
    struct stat status = {};
    return ::stat(path.c_str(), &status) == 0 ? status.st_ino : 0;
}

PlacedSituation readOne(const std::string& place) {
    const orv::PtrRef<orv::ug::Situation> situation(new orv::ug::Situation);
    orv::ug::Error error;
    const bool isRead = isFolder(place) ? orv::ug::SituationIo::readFolder(situation.get(), place, &error)
                                        : orv::ug::SituationIo::readArchiveFile(situation.get(), place, &error);
    if (!isRead) {
        throw CommandError(error.message().toStdString());
    }
    return {place, situation};
}

unsigned long long entryCount(const std::string& path) {
    CZipArchive archive;
    return archive.Open(path.c_str(), CZipArchive::READ, 0) ? archive.GetCount() : 0;
}

std::vector<PlacedSituation> readArchive(const std::string& path) {
    const OwnTempFolder temp;
    const QuietLog log;
    const auto situations = orv::app::Situations::instance()->importSituations(path);
    const unsigned long long count = entryCount(path);
    if (count == 0 && log.count() > 0) {
        throw CommandError(path + ": cannot be read as an archive of situations");
    }
    if (situations.size() < count) {
        writeMessage("warning: " + path + ": " + std::to_string(count - situations.size()) + " of " +
                     std::to_string(count) + " entries cannot be read as situations");
    }
    std::vector<PlacedSituation> placed;
    for (const orv::PtrRef<orv::ug::Situation>& situation : situations) {
        placed.push_back({path + '|' + std::to_string(placed.size() + 1), situation});
    }
    return placed;
}

/// The one behind the bar.
PlacedSituation pickFromArchive(const std::string& place, std::size_t bar) {
    const std::vector<PlacedSituation> all = readArchive(place.substr(0, bar));
    const int number = orv::Str(place.substr(bar + 1)).toInt(0);
    if (number < 1 || std::size_t(number) > all.size()) {
        throw CommandError(place + ": the archive has the situations 1 to " + std::to_string(all.size()));
    }
    return all[std::size_t(number) - 1];
}

} // namespace

std::vector<PlacedSituation> situationsAt(const std::string& place) {
    const std::size_t bar = place.rfind('|');
    if (bar != std::string::npos && !isThere(place) && isArchive(place.substr(0, bar))) {
        return {pickFromArchive(place, bar)};
    }
    if (!isFolder(place) && isArchive(place)) {
        return readArchive(place);
    }
    return {readOne(place)};
}

std::vector<PlacedSituation> situationsAt(const std::vector<std::string>& places) {
    std::vector<PlacedSituation> all;
    for (const std::string& place : places) {
        const std::vector<PlacedSituation> here = situationsAt(place);
        all.insert(all.end(), here.begin(), here.end());
    }
    return all;
}

PlacedSituation situationAt(const std::string& place) {
    const std::vector<PlacedSituation> situations = situationsAt(place);
    if (situations.size() != 1) {
        std::vector<std::string> names;
        for (const PlacedSituation& placed : situations) {
            names.push_back(placed.place);
        }
        throw CommandError(place + ": there " + (names.empty() ? "are no situations" : "are several situations") +
                           (names.empty() ? "" : ", name one of them: " + listed(names)));
    }
    return situations.front();
}

bool holdsSituation(const std::string& folder) {
    return isThere(folder + '/' + orv::ug::SituationIo::MAIN_FILENAME);
}

void writeSituation(const orv::ug::Situation& situation, const std::string& folder) {
    if (holdsSituation(folder)) {
        throw CommandError(folder + ": there is a situation in it already");
    }
    orv::ug::Error error;
    if (!orv::ug::SituationIo::writeFolder(&situation, folder, &error)) {
        throw CommandError(error.message().toStdString());
    }
}

void writeArchive(const std::vector<PlacedSituation>& situations, const std::string& path) {
    // Exporting keeps it to itself when nothing can be written there.
    if (!CZipArchive().Open(path.c_str(), CZipArchive::CREATE, 0)) {
        throw CommandError("cannot write \"" + path + '"');
    }
    std::vector<const orv::ug::Situation*> list;
    for (const PlacedSituation& placed : situations) {
        list.push_back(placed.situation.get());
    }
    const OwnTempFolder temp;
    const QuietLog log;
    const ino_t earlier = fileNumber(path);
    orv::app::Situations::instance()->exportSituations(list, path);
    if (log.count() > 0 || fileNumber(path) == earlier || entryCount(path) != list.size()) {
        throw CommandError("cannot write all of \"" + path + '"');
    }
}

} // namespace orvapp
