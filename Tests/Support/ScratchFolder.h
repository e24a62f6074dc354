#pragma once

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace orvtest {

inline std::string readWholeFile(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// An empty folder that goes away, with all in it, at the end.
class ScratchFolder {
public:
    ScratchFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "orvtest-XXXXXX").string();
        m_path = mkdtemp(name.data());
    }

    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }

    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const std::string& path() const {
        return m_path;
    }

    /// A path in the folder.
    std::string operator/(const std::string& name) const {
        return m_path + "/" + name;
    }

    /// Writes a file and gives its path.
    std::string write(const std::string& name, const std::string& contents) const {
        std::ofstream(*this / name, std::ios::binary) << contents;
        return *this / name;
    }

    std::string read(const std::string& name) const {
        return readWholeFile(*this / name);
    }

    bool has(const std::string& name) const {
        return std::filesystem::exists(std::filesystem::symlink_status(*this / name));
    }

    /// The names of what is in the folder, sorted.
    std::vector<std::string> names() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(m_path)) {
            names.push_back(entry.path().filename());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

private:
    std::string m_path;
};

/// The working folder while it lives.
class ScopedWorkingFolder {
public:
    explicit ScopedWorkingFolder(const std::string& path) : m_earlier(std::filesystem::current_path()) {
        std::filesystem::current_path(path);
    }

    ~ScopedWorkingFolder() {
        std::error_code ignored;
        std::filesystem::current_path(m_earlier, ignored);
    }

    ScopedWorkingFolder(const ScopedWorkingFolder&) = delete;
    ScopedWorkingFolder& operator=(const ScopedWorkingFolder&) = delete;

private:
    std::filesystem::path m_earlier;
};

} // namespace orvtest
