// Any bytes as a MED file: opened, and everything in it loaded. libmedc and HDF5 themselves tell the fuzzer nothing of
// the ways that they take.

#include "Fuzz/ReaderFuzzing.h"
#include "OrvImportMed/MedReader.h"
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

/// A file on the disk while it lives: HDF5 opens none in memory, whose names lead nowhere.
class ScratchFile {
public:
    ScratchFile(const std::uint8_t* data, std::size_t size)
        : m_name(std::filesystem::temp_directory_path() / ("orvfuzz-" + std::to_string(::getpid()) + ".med")) {
        std::ofstream(m_name, std::ios::binary)
            .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    }

    ~ScratchFile() {
        ::unlink(m_name.c_str());
    }

    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    const std::string& name() const {
        return m_name;
    }

private:
    std::string m_name;
};

} // namespace

// HDF5 loses memory over damaged headers. That is not ours to mend, and must not end each run.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libhdf5_openmpi\n";
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const ScratchFile file(data, size);
    MedReader reader;
    CaeContents contents;
    ug::Error error;
    const bool isOpen = reader.open(Str(file.name()), &contents, &error);
    expect(isOpen == error.isEmpty());
    if (isOpen) {
        orvfuzz::readEverything(reader, contents);
    }
    return 0;
}
