// Any bytes as a file of a format that comes through VTK's module: opened, and everything in it loaded. Which format
// and file it is, and which folder of Tests/data has what else belongs to it, CMakeLists.txt tells.

#include "Fuzz/ReaderFuzzing.h"
#include "OrvImportVtk/VtkReader.h"
#include "OrvUnstructGrid/Error.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>

#include <unistd.h>

using namespace orv;
using namespace orv::imp::cae;
using orvfuzz::expect;

namespace {

/// Goes with the process.
class Folder {
public:
    Folder() : m_path("/dev/shm/vtkfuzz-" + std::to_string(::getpid()) + "/") {
        std::filesystem::create_directories(m_path);
        if (*ORV_FUZZ_COMPANIONS != '\0') {
            std::filesystem::copy(ORV_FUZZ_COMPANIONS, m_path, std::filesystem::copy_options::recursive);
        }
    }

    ~Folder() {
        std::filesystem::remove_all(m_path);
    }

    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    std::string file(const char* name) const {
        return m_path + name;
    }

private:
    std::string m_path;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Folder folder;
    std::ofstream(folder.file(ORV_FUZZ_FILE), std::ios::binary)
        .write(reinterpret_cast<const char*>(data), std::streamsize(size));
    VtkReader reader(createVtkSource(ORV_FUZZ_FORMAT));
    CaeContents contents;
    ug::Error error;
    const bool isOpen = reader.open(folder.file(ORV_FUZZ_OPENED), &contents, &error);
    expect(isOpen == error.isEmpty());
    if (isOpen) {
        orvfuzz::readEverything(reader, contents);
    }
    return 0;
}
