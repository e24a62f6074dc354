// Any bytes as a Gmsh file: opened, and everything in it loaded.

#include "Fuzz/ReaderFuzzing.h"
#include "OrvImportCae/MshReader.h"
#include "OrvUnstructGrid/Error.h"

#include <cstddef>
#include <cstdint>

using namespace orv;
using namespace orv::imp::cae;
using orvfuzz::expect;
using orvfuzz::makeMemoryFile;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    MshReader reader;
    CaeContents contents;
    ug::Error error;
    const bool isOpen = reader.openDescriptor(makeMemoryFile({reinterpret_cast<const char*>(data), size}), "fuzz.msh",
                                              &contents, &error);
    expect(isOpen == error.isEmpty());
    if (isOpen) {
        orvfuzz::readEverything(reader, contents);
    }
    return 0;
}
