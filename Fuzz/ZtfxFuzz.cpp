// Any bytes as a ZTFx file, or, where they are no zip container, as the index of one whose arrays are good: opened, and
// everything in it loaded.

#include "Fuzz/Fuzzing.h"
#include "OrvUnstructGrid/DataSourceMemory.h"
#include "OrvUnstructGrid/DataSourceZTFx.h"
#include "OrvUnstructGrid/DataStateSpec.h"
#include "OrvUnstructGrid/Error.h"
#include "OrvUnstructGrid/WriteSelection.h"
#include "OrvUnstructGrid/ZTFxWriter.h"
#include "Tests/Support/MemoryModels.h"

#include <zip.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <unistd.h>

using namespace orv;
using orvfuzz::expect;
using orvfuzz::MemoryFile;

namespace {

struct Entry {
    std::string name;
    std::string bytes;
};

/// A good file's entries without its index, which is the last.
std::vector<Entry> goodArrays() {
    const orvtest::MemoryModel model;
    const std::string path = "/tmp/ztfxfuzz-" + std::to_string(::getpid());
    ug::ZTFxWriter writer;
    expect(writer.addCase(3, "wing", model.source.get(), {}, nullptr) && writer.write(path, nullptr, nullptr));
    zip_t* zip = zip_open(path.c_str(), ZIP_RDONLY, nullptr);
    std::vector<Entry> entries;
    for (zip_int64_t i = 0; i < zip_get_num_entries(zip, 0) - 1; ++i) {
        zip_stat_t status;
        zip_stat_index(zip, zip_uint64_t(i), 0, &status);
        Entry entry = {status.name, std::string(status.size, '\0')};
        zip_file_t* file = zip_fopen_index(zip, zip_uint64_t(i), 0);
        zip_fread(file, entry.bytes.data(), entry.bytes.size());
        zip_fclose(file);
        entries.push_back(entry);
    }
    zip_discard(zip);
    ::unlink(path.c_str());
    return entries;
}

void add(zip_t* zip, const std::string& name, std::string_view bytes) {
    zip_source_t* source = zip_source_buffer(zip, bytes.data(), bytes.size(), 0);
    const zip_int64_t index = zip_file_add(zip, name.c_str(), source, 0);
    zip_set_file_compression(zip, zip_uint64_t(index), ZIP_CM_STORE, 0);
}

std::string containerWith(std::string_view index) {
    static const std::vector<Entry> arrays = goodArrays();
    zip_source_t* target = zip_source_buffer_create(nullptr, 0, 0, nullptr);
    zip_source_keep(target);
    zip_t* zip = zip_open_from_source(target, ZIP_TRUNCATE, nullptr);
    for (const Entry& entry : arrays) {
        add(zip, entry.name, entry.bytes);
    }
    add(zip, "index.xml", index);
    expect(zip_close(zip) == 0);
    zip_stat_t status;
    zip_source_stat(target, &status);
    std::string bytes(status.size, '\0');
    zip_source_open(target);
    zip_source_read(target, bytes.data(), bytes.size());
    zip_source_close(target);
    zip_source_free(target);
    return bytes;
}

void loadEverything(ug::DataSourceZTFx* source) {
    const ug::DataSourceDirectory& directory = *source->directory();
    for (const ug::StateInfo& state : directory.stateInfos()) {
        for (const ug::ResultType type : {ug::SCALAR, ug::VECTOR, ug::DISPLACEMENT, ug::SYMMETRIC_TENSOR}) {
            for (const ug::ResultInfo& info : directory.resultInfos(type)) {
                if (!directory.hasResult(state.id(), info)) {
                    continue;
                }
                double value = 0;
                ug::Error error;
                const bool isCopied = source->copyScalars(state.id(), info, {0, 0, 0}, {&value, 1}, &error);
                expect(isCopied == error.isEmpty());
                error.clear();
                ug::DataStateSpec spec;
                spec.setResultIds({info});
                expect(source->loadDataState(state.id(), spec, &error) == error.isEmpty());
            }
        }
    }
}

void checkMeshes(ug::DataSourceZTFx* source) {
    for (std::size_t s = 0; s < source->stateCount(); ++s) {
        const ug::DataState* state = source->state(s);
        expect(state->geometryCount() == source->directory()->geometryCountPerState());
        ug::Error error;
        expect(state->readGeometries(&error) == error.isEmpty());
        for (std::size_t g = 0; g < state->geometryCount(); ++g) {
            expect(state->geometry(g)->partCount() == source->directory()->partInfos(g).size());
            for (std::size_t p = 0; p < state->geometry(g)->partCount(); ++p) {
                expect(state->geometry(g)->part(p)->isConsistent());
            }
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const MemoryFile file(input.starts_with("PK") ? std::string(input) : containerWith(input));
    const PtrRef<ug::DataSourceZTFx> source(new ug::DataSourceZTFx(1));
    source->setPassword("secret");
    ug::Error error;
    const bool isOpen = source->openCase(file.name(), 0, &error);
    expect(isOpen == error.isEmpty());
    if (isOpen) {
        checkMeshes(source.get());
        loadEverything(source.get());
    } else {
        expect(source->stateCount() == 0);
    }
    return 0;
}
