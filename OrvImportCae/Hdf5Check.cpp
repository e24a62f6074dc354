#include "OrvImportCae/Hdf5Check.h"

#include "OrvImportCae/Hdf5Objects.h"
#include "OrvImportCae/Hdf5Superblock.h"

#include <filesystem>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include <sys/stat.h>

namespace orv::imp::cae {
namespace {

namespace fs = std::filesystem;

/// Goes from file to file.
class Walk {
public:
    void checkAll(const std::string& filename) {
        visit(filename);
        while (!m_pending.empty()) {
            m_name = m_pending.back();
            m_pending.pop_back();
            check();
        }
    }

    /// The one that is being looked at.
    const fs::path& name() const {
        return m_name;
    }

private:
    void check() {
        Hdf5Input input;
        if (!input.open(m_name.string(), nullptr)) {
            return;
        }
        const std::optional<std::uint64_t> root = readHdf5Superblock(input);
        if (!root) {
            return;
        }
        Hdf5Objects objects(input);
        objects.check(*root);
        for (const std::string& file : objects.files()) {
            visit(m_name.parent_path() / file); // Which is the same when that tells the whole way.
            visit(m_name.parent_path() / fs::path(file).filename());
            visit(file);
        }
    }

    void visit(const fs::path& file) {
        struct stat status = {};
        if (::stat(file.c_str(), &status) == 0 && m_seen.emplace(status.st_dev, status.st_ino).second) {
            m_pending.push_back(file);
        }
    }

    fs::path m_name;
    std::vector<fs::path> m_pending;
    std::set<std::pair<dev_t, ino_t>> m_seen;
};

} // namespace

bool checkHdf5File(const std::string& filename, ug::Error* error) {
    Walk walk;
    try {
        walk.checkAll(filename);
        return true;
    } catch (const Hdf5Damage& damage) {
        const std::string what = "is damaged at byte " + std::to_string(damage.position) + ": " + damage.text;
        return ug::fail(
            error, Str(walk.name() == filename ? what : "links to \"" + walk.name().string() + "\", which " + what));
    }
}

} // namespace orv::imp::cae
