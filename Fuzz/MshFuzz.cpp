// Any bytes as a Gmsh file: opened, and everything in it loaded.

#include "Fuzz/Fuzzing.h"
#include "OrvImportCae/MshReader.h"
#include "OrvUnstructGrid/DataState.h"
#include "OrvUnstructGrid/Error.h"

#include <cstddef>
#include <cstdint>

using namespace orv;
using namespace orv::imp::cae;
using orvfuzz::expect;
using orvfuzz::makeMemoryFile;

namespace {

void loadEverything(MshReader& reader, const CaeContents& contents) {
    for (const CaeContents::State& described : contents.states) {
        ug::DataState state(described.info.id(), {contents.geometry});
        for (const std::size_t result : described.results) {
            ug::Error error;
            std::vector<Str> warnings;
            const ug::ResultInfo& info = contents.results.at(result);
            const bool isRead = reader.readResult(info, state.id(), info, &state, &warnings, &error);
            expect(isRead == error.isEmpty());
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    MshReader reader;
    CaeContents contents;
    ug::Error error;
    const bool isOpen = reader.openDescriptor(makeMemoryFile({reinterpret_cast<const char*>(data), size}), "fuzz.msh",
                                              &contents, &error);
    expect(isOpen == error.isEmpty());
    if (isOpen) {
        for (std::size_t i = 0; i < contents.geometry->partCount(); ++i) {
            expect(contents.geometry->part(i)->isConsistent());
        }
        expect(contents.parts.size() == contents.geometry->partCount());
        loadEverything(reader, contents);
    }
    return 0;
}
