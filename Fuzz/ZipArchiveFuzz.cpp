// Any bytes as a zip file: opened, and every entry extracted, with its own name and with another.

#include "Fuzz/Fuzzing.h"
#include "OrvUnstructGrid/CZipArchive.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>

#include <unistd.h>

using orvfuzz::expect;
using orvfuzz::MemoryFile;

namespace {

/// A folder to extract to, between two others that stay as they are. Gone at the end of the process.
class Target {
public:
    Target() : m_outer("/tmp/ziparchivefuzz-" + std::to_string(::getpid())), m_inner(m_outer / "folder" / "below") {
        std::filesystem::create_directories(m_inner);
    }

    ~Target() {
        std::filesystem::remove_all(m_outer);
    }

    Target(const Target&) = delete;
    Target& operator=(const Target&) = delete;

    const std::filesystem::path& path() const {
        return m_inner;
    }

    bool isAsMade() const {
        return std::filesystem::is_empty(m_inner) && countIn(m_outer) == 1 && countIn(m_outer / "folder") == 1;
    }

    void empty() const {
        for (const auto& entry : std::filesystem::directory_iterator(m_inner)) {
            std::filesystem::remove_all(entry.path());
        }
    }

private:
    static std::size_t countIn(const std::filesystem::path& folder) {
        std::size_t count = 0;
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            static_cast<void>(entry);
            ++count;
        }
        return count;
    }

    std::filesystem::path m_outer;
    std::filesystem::path m_inner;
};

void extract(CZipArchive* archive, unsigned long long index, bool fullPath, const char* name) {
    static const Target target;
    const bool isExtracted = archive->ExtractFile(index, target.path().c_str(), fullPath, name, 65536);
    if (!fullPath) {
        expect(isExtracted != target.isAsMade());
    }
    target.empty();
    expect(target.isAsMade());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const MemoryFile file({reinterpret_cast<const char*>(data), size});
    CZipArchive archive;
    if (archive.Open(file.name().c_str(), CZipArchive::READ, 0)) {
        const unsigned long long count = archive.GetCount();
        for (unsigned long long i = 0; i < count && i < 10; ++i) {
            extract(&archive, i, false, "plain");
            extract(&archive, i, false, nullptr);
            extract(&archive, i, true, nullptr);
        }
        expect(!archive.ExtractFile(count, nullptr, false, "beyond", 65536));
        expect(!archive.Close(0, false).empty());
    }
    return 0;
}
