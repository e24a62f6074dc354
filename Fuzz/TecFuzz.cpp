// Any bytes as a Tecplot file: opened, and everything in it loaded.

#include "Fuzz/Fuzzing.h"
#include "OrvImportCae/TecReader.h"
#include "OrvUnstructGrid/DataState.h"
#include "OrvUnstructGrid/Error.h"

#include <cstddef>
#include <cstdint>

using namespace orv;
using namespace orv::imp::cae;
using orvfuzz::expect;
using orvfuzz::makeMemoryFile;

namespace {

void loadEverything(TecReader& reader, const CaeContents& contents) {
    for (const CaeContents::State& described : contents.states) {
        const PtrRef<ug::DataGeometry>& geometry = described.geometry ? described.geometry : contents.geometry;
        for (std::size_t i = 0; i < geometry->partCount(); ++i) {
            ug::Error error;
            expect(geometry->part(i)->read(&error) == error.isEmpty());
            expect(geometry->part(i)->isConsistent());
        }
        ug::DataState state(described.info.id(), {geometry});
        for (const std::size_t result : described.results) {
            ug::Error error;
            std::vector<Str> warnings;
            const ug::ResultInfo& info = contents.results.at(result);
            expect(reader.readResult(info, state.id(), info, &state, &warnings, &error) == error.isEmpty());
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    TecReader reader;
    CaeContents contents;
    ug::Error error;
    const bool isOpen = reader.openDescriptor(makeMemoryFile({reinterpret_cast<const char*>(data), size}), "fuzz.tec",
                                              &contents, &error);
    expect(isOpen == error.isEmpty());
    if (isOpen) {
        loadEverything(reader, contents);
    }
    return 0;
}
