// Any bytes as a MED file: opened, and everything in it loaded. libmedc and HDF5 themselves tell the fuzzer nothing of
// the ways that they take.

#include "Fuzz/ReaderFuzzing.h"
#include "OrvImportMed/MedReader.h"
#include "OrvUnstructGrid/Error.h"

#include <cstddef>
#include <cstdint>

using namespace orv;
using namespace orv::imp::cae;
using orvfuzz::expect;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const orvfuzz::MemoryFile file({reinterpret_cast<const char*>(data), size});
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
