#include "Tests/Tools/TemporaryFolder.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>

#include <unistd.h>

namespace orvtest {

std::string fileText(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

TemporaryFolder::TemporaryFolder() {
    std::string name = std::filesystem::temp_directory_path() / "orvappXXXXXX";
    if (!mkdtemp(name.data())) {
        std::abort();
    }
    m_path = name;
}

TemporaryFolder::~TemporaryFolder() {
    std::filesystem::remove_all(m_path);
}

std::filesystem::path TemporaryFolder::path(const std::string& name) const {
    return m_path / name;
}

std::string TemporaryFolder::write(const std::string& name, const std::string& text) const {
    std::ofstream(path(name), std::ios::binary) << text;
    return path(name);
}

std::vector<std::string> TemporaryFolder::names() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(m_path)) {
        names.push_back(entry.path().filename());
    }
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace orvtest
