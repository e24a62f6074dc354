// Any bytes as a .ztf file: opened, and everything in it loaded.

#include "Fuzz/Fuzzing.h"
#include "OrvUnstructGrid/DataSourceZTF.h"
#include "OrvUnstructGrid/DataStateSpec.h"
#include "OrvUnstructGrid/Error.h"

#include <cstddef>
#include <cstdint>
#include <string>

using namespace orv;
using orvfuzz::expect;
using orvfuzz::MemoryFile;

namespace {

void loadEverything(ug::DataSourceZTF* source) {
    const ug::DataSourceDirectory& directory = *source->directory();
    for (const ug::StateInfo& state : directory.stateInfos()) {
        for (const ug::ResultType type : {ug::SCALAR, ug::VECTOR, ug::DISPLACEMENT, ug::SYMMETRIC_TENSOR}) {
            for (const ug::ResultInfo& info : directory.resultInfos(type)) {
                if (!directory.hasResult(state.id(), info)) {
                    continue;
                }
                ug::DataStateSpec spec;
                spec.setResultIds({info});
                ug::Error error;
                expect(source->loadDataState(state.id(), spec, &error) == error.isEmpty());
            }
        }
    }
}

void checkMeshes(ug::DataSourceZTF* source) {
    for (std::size_t i = 0; i < source->stateCount(); ++i) {
        const ug::DataState* state = source->state(i);
        expect(state->geometryCount() == source->directory()->geometryCountPerState());
        for (std::size_t g = 0; g < state->geometryCount(); ++g) {
            const ug::DataGeometry* geometry = state->geometry(g);
            expect(geometry->partCount() == source->directory()->partInfos(g).size());
            for (std::size_t p = 0; p < geometry->partCount(); ++p) {
                expect(geometry->part(p)->isConsistent());
            }
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const MemoryFile file({reinterpret_cast<const char*>(data), size});
    const PtrRef<ug::DataSourceZTF> source(new ug::DataSourceZTF(1));
    ug::Error error;
    const bool isOpen = source->openFile(file.name(), &error);
    expect(isOpen == error.isEmpty());
    if (isOpen) {
        checkMeshes(source.get());
        loadEverything(source.get());
    }
    return 0;
}
