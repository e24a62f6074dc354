// Any bytes as a Tecplot file: opened, and everything in it loaded.

#include "Fuzz/ReaderFuzzing.h"
#include "OrvImportCae/TecReader.h"
#include "OrvUnstructGrid/Error.h"

#include <cstddef>
#include <cstdint>

using namespace orv;
using namespace orv::imp::cae;
using orvfuzz::expect;
using orvfuzz::makeMemoryFile;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    TecReader reader;
    CaeContents contents;
    ug::Error error;
    const bool isOpen = reader.openDescriptor(makeMemoryFile({reinterpret_cast<const char*>(data), size}), "fuzz.tec",
                                              &contents, &error);
    expect(isOpen == error.isEmpty());
    if (isOpen) {
        orvfuzz::readEverything(reader, contents);
    }
    return 0;
}
