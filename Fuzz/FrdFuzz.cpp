// Any bytes as a CalculiX file: opened, and everything in it loaded.

#include "Fuzz/Fuzzing.h"
#include "OrvImportCae/FrdReader.h"
#include "OrvUnstructGrid/DataResultGroup.h"
#include "OrvUnstructGrid/DataState.h"
#include "OrvUnstructGrid/Error.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

using namespace orv;
using namespace orv::imp::cae;
using orvfuzz::expect;
using orvfuzz::makeMemoryFile;

namespace {

/// Single values, where they can be read, are those of the whole result.
void readSingles(FrdReader& reader, const ug::ResultInfo& info, ug::DataState& state) {
    const ug::DataResult* result = state.results(state.geometry(0))->find(info);
    for (std::size_t p = 0; p < result->partCount(); ++p) {
        const std::span<const double> all = result->values(p)->span();
        for (std::size_t i = 0; i < all.size(); ++i) {
            double value = 0.0;
            if (reader.readScalars(info, state.id(), {0, p, i}, {&value, 1})) {
                expect(std::memcmp(&value, &all[i], sizeof value) == 0);
            }
        }
    }
}

void loadEverything(FrdReader& reader, const CaeContents& contents) {
    for (const CaeContents::State& described : contents.states) {
        ug::DataState state(described.info.id(), {contents.geometry});
        for (const std::size_t result : described.results) {
            ug::Error error;
            std::vector<Str> warnings;
            const ug::ResultInfo& info = contents.results.at(result);
            const bool isRead = reader.readResult(info, state.id(), info, &state, &warnings, &error);
            expect(isRead == error.isEmpty());
            if (isRead && info.type() == ug::SCALAR) {
                readSingles(reader, info, state);
            }
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FrdReader reader;
    CaeContents contents;
    ug::Error error;
    const bool isOpen = reader.openDescriptor(makeMemoryFile({reinterpret_cast<const char*>(data), size}), "fuzz.frd",
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
