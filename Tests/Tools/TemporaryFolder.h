#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace orvtest {

/// The whole file.
std::string fileText(const std::filesystem::path& path);

/// A folder for one test, which goes with the test.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();

    std::filesystem::path path(const std::string& name) const;
    std::string write(const std::string& name, const std::string& text) const;
    /// The names of what is in the folder, sorted.
    std::vector<std::string> names() const;

private:
    std::filesystem::path m_path;
};

} // namespace orvtest
