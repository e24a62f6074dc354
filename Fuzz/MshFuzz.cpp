// Any bytes as a Gmsh file: opened, and everything in it loaded.

#include "OrvImportCae/MshReader.h"
#include "OrvUnstructGrid/DataState.h"
#include "OrvUnstructGrid/Error.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include <sys/mman.h>
#include <unistd.h>

using namespace orv;
using namespace orv::imp::cae;

namespace {

/// A file in memory. The descriptor is the reader's to close.
int makeFile(const std::uint8_t* data, std::size_t size) {
    const int descriptor = ::memfd_create("fuzz", MFD_CLOEXEC);
    for (std::size_t done = 0; done < size;) {
        const ssize_t written = ::write(descriptor, data + done, size - done);
        if (written <= 0) {
            std::abort();
        }
        done += std::size_t(written);
    }
    return descriptor;
}

void expect(bool condition) {
    if (!condition) {
        std::abort();
    }
}

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
    const bool isOpen = reader.openDescriptor(makeFile(data, size), "fuzz.msh", &contents, &error);
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
