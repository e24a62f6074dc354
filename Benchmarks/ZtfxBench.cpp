// ZTFx files beside the bare operations that they rest on: opening beside reading the file through, loading beside
// read() and beside libzip's decryption, and writing beside libzip. HistoryBench measures single values.

#include "Benchmarks/Claims.h"
#include "OrvUnstructGrid/DataSourceMemory.h"
#include "OrvUnstructGrid/DataSourceZTFx.h"
#include "OrvUnstructGrid/DataStateSpec.h"
#include "OrvUnstructGrid/Error.h"
#include "OrvUnstructGrid/WriteSelection.h"
#include "OrvUnstructGrid/ZTFxWriter.h"

#include <zip.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <fcntl.h>
#include <malloc.h>
#include <unistd.h>

using namespace orv;
using namespace orv::ug;

namespace {

void require(bool condition, const char* what) {
    if (!condition) {
        std::printf("FAILED: %s\n", what);
        std::exit(1);
    }
}

/// Fractions with all their bits, so that nothing fits 32 bits or deflates.
class Noise {
public:
    double next() {
        m_random = m_random * 6364136223846793005u + 1442695040888963407u;
        return static_cast<double>(m_random >> 11) / 9007199254740992.0 - 0.5;
    }

    void fill(double* values, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            values[i] = next();
        }
    }

private:
    std::uint64_t m_random = 20240607;
};

/// A cube of cubes.
void fillMesh(DataPart* part, std::uint32_t edge) {
    const std::uint32_t row = edge + 1;
    std::vector<double> coordinates;
    std::vector<std::uint32_t> connectivity;
    for (std::uint32_t n = 0; n < row * row * row; ++n) {
        coordinates.insert(coordinates.end(), {0.1 * (n % row), 0.1 * (n / row % row), 0.1 * (n / row / row)});
    }
    for (std::uint32_t e = 0; e < edge * edge * edge; ++e) {
        const std::uint32_t n = e % edge + row * (e / edge % edge) + row * row * (e / edge / edge);
        for (const std::uint32_t corner : {n, n + 1, n + row + 1, n + row}) {
            connectivity.push_back(corner);
        }
        for (const std::uint32_t corner : {n, n + 1, n + row + 1, n + row}) {
            connectivity.push_back(corner + row * row);
        }
    }
    part->nodes()->set(std::move(coordinates), {});
    part->elements()->set(std::vector<ElementType>(edge * edge * edge, HEXAHEDRON), std::move(connectivity), {});
}

/// Makes the values of a result when somebody asks for them.
class NoisySource : public DataSourceLazy {
public:
    NoisySource(std::uint32_t edge, int stateCount, const std::vector<ResultInfo>& results) : DataSourceLazy(1) {
        PtrRef<DataGeometry> geometry(new DataGeometry);
        fillMesh(geometry->addPart(1), edge);
        directory()->addGeometryPartInfos({PartInfo(1, "cube")});
        for (const ResultInfo& info : results) {
            directory()->addResultInfo(info);
        }
        for (int id = 1; id <= stateCount; ++id) {
            addState(StateInfo(id, "Step " + std::to_string(id), StateInfo::TIME, id), {geometry});
            for (const ResultInfo& info : results) {
                directory()->setHasResult(id, info);
            }
        }
    }

protected:
    bool readResult(const ResultInfo& info, DataState* state, Error*) override {
        DataPartValues* values = state->results(state->geometry(0))->findOrAdd(info)->values(0);
        values->allocate(state->geometry(0)->part(0)->nodes()->nodeCount());
        m_noise.fill(values->values(), values->span().size());
        return true;
    }

private:
    Noise m_noise;
};

const ResultInfo scalar(SCALAR, 1, "Temperature", PER_NODE);
const ResultInfo stress(SYMMETRIC_TENSOR, 1, "Stress", PER_NODE);
const ResultInfo displacement(DISPLACEMENT, 1, "Displacement", PER_NODE);

class TemporaryFile {
public:
    explicit TemporaryFile(const char* name)
        : m_path(std::filesystem::temp_directory_path() / (std::to_string(::getpid()) + name)) {}

    ~TemporaryFile() {
        std::error_code ignored;
        std::filesystem::remove(m_path, ignored);
    }

    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    std::string path() const {
        return m_path.string();
    }

    double megabytes() const {
        return static_cast<double>(std::filesystem::file_size(m_path)) / 1e6;
    }

private:
    std::filesystem::path m_path;
};

void write(DataSource* source, const std::string& path, const char* password = "") {
    ZTFxWriter writer;
    writer.setPassword(password);
    Error error;
    require(writer.addCase(0, "bench", source, {}, &error) && writer.write(path, nullptr, &error), "write");
}

PtrRef<DataSourceZTFx> open(const std::string& path, const char* password = "") {
    PtrRef<DataSourceZTFx> source(new DataSourceZTFx(1));
    source->setPassword(password);
    Error error;
    require(source->openCase(path, 0, &error), "open");
    return source;
}

void load(DataSourceZTFx* source, int stateId, const ResultInfo& info) {
    DataStateSpec spec;
    spec.setResultIds({info});
    require(source->loadDataState(stateId, spec, nullptr), "load");
}

/// Bytes of the file from its middle on, as many as a field has.
void readBytes(const std::string& path, std::size_t count) {
    const int descriptor = ::open(path.c_str(), O_RDONLY);
    const auto bytes = std::make_unique_for_overwrite<char[]>(count);
    const off_t middle = static_cast<off_t>(std::filesystem::file_size(path) / 2);
    require(::lseek(descriptor, middle, SEEK_SET) == middle, "seek");
    for (std::size_t done = 0; done < count;) {
        const ssize_t got = ::read(descriptor, bytes.get() + done, count - done);
        require(got > 0, "read");
        done += static_cast<std::size_t>(got);
    }
    ::close(descriptor);
}

void readThrough(const std::string& path) {
    const int descriptor = ::open(path.c_str(), O_RDONLY);
    std::vector<char> buffer(1 << 20);
    while (::read(descriptor, buffer.data(), buffer.size()) > 0) {
    }
    ::close(descriptor);
}

void readEntry(zip_t* zip, const char* name, const char* password, std::size_t count) {
    const auto bytes = std::make_unique_for_overwrite<char[]>(count);
    zip_file_t* entry = zip_fopen_encrypted(zip, name, 0, password);
    require(zip_fread(entry, bytes.get(), count) == static_cast<zip_int64_t>(count), "read by libzip");
    zip_fclose(entry);
}

/// What somebody does who has the arrays and libzip, and wants a file as safe.
void writeByLibzip(const std::vector<std::span<const double>>& arrays, const std::string& path) {
    zip_t* zip = zip_open(path.c_str(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
    for (std::size_t i = 0; i < arrays.size(); ++i) {
        zip_source_t* source = zip_source_buffer(zip, arrays[i].data(), arrays[i].size_bytes(), 0);
        const zip_int64_t index = zip_file_add(zip, std::to_string(i).c_str(), source, 0);
        zip_set_file_compression(zip, static_cast<zip_uint64_t>(index), ZIP_CM_STORE, 0);
    }
    require(zip_close(zip) == 0, "write by libzip");
}

void claimOpening(orvbench::Claims* claims, const TemporaryFile& file, const std::string& what) {
    claims->add("open a file of 1 GB, " + what + ", beside reading it through", 0.02,
                {[] {}, [&file] { open(file.path()); }}, {[] {}, [&file] { readThrough(file.path()); }});
}

void claimLoading(orvbench::Claims* claims, const TemporaryFile& plain, const TemporaryFile& encrypted) {
    const auto source = std::make_shared<PtrRef<DataSourceZTFx>>();
    const std::size_t nodes = open(plain.path())->state(0)->geometry(0)->part(0)->nodes()->nodeCount();
    for (const ResultInfo& info : {scalar, displacement}) {
        const std::size_t bytes = nodes * doublesPerItem(info.type()) * sizeof(double);
        const std::string name = info.name().toStdString() + " of " + std::to_string(bytes / 1000000) + " MB";
        // The mesh has come with an earlier field. The rival finds the processor's caches in the same state.
        const auto prepare = [source, &plain] {
            *source = open(plain.path());
            load(source->get(), 1, scalar);
        };
        claims->add("load " + name + " beside read()", 1 / 0.7,
                    {prepare, [source, info] { load(source->get(), 2, info); }},
                    {prepare, [&plain, bytes] { readBytes(plain.path(), bytes); }});
        // Entries 1 to 3 are the mesh, and each state has two fields.
        const char* entry = info == scalar ? "data/6" : "data/7";
        const auto zip = std::make_shared<zip_t*>(zip_open(encrypted.path().c_str(), ZIP_RDONLY, nullptr));
        claims->add("load " + name + ", encrypted, beside libzip", 1 / 0.9,
                    {[source, &encrypted] {
                         *source = open(encrypted.path(), "secret");
                         load(source->get(), 1, scalar);
                     },
                     [source, info] { load(source->get(), 2, info); }},
                    {[] {}, [zip, entry, bytes] { readEntry(*zip, entry, "secret", bytes); }});
    }
}

void claimWriting(orvbench::Claims* claims, const TemporaryFile& file) {
    const PtrRef<DataSourceMemory> source(new DataSourceMemory(1));
    source->addGeometry();
    fillMesh(source->addPart(0, "cube"), 100);
    const std::size_t nodes = 101 * 101 * 101;
    const ResultInfo info = source->addResult(DISPLACEMENT, "Displacement", PER_NODE);
    Noise noise;
    std::vector<double> values(3 * nodes);
    std::vector<std::span<const double>> arrays;
    for (int id = 1; id <= 10; ++id) {
        source->addState(StateInfo(id, "", StateInfo::TIME, id));
        noise.fill(values.data(), values.size());
        require(source->setValues(id, info, 0, 0, values, nullptr), "set values");
        DataState* state = source->state(source->stateIndex(id));
        arrays.push_back(state->results(state->geometry(0))->find(info)->values(0)->span());
    }
    const DataPart* part = source->state(0)->geometry(0)->part(0);
    arrays.push_back(part->nodes()->coordinates());
    const auto connectivity = part->elements()->connectivity();
    arrays.emplace_back(reinterpret_cast<const double*>(connectivity.data()), connectivity.size() / 2);
    claims->add("write 290 MB, stored, beside libzip", 1 / 0.9,
                {[] {}, [source, &file] { write(source.get(), file.path()); }},
                {[] {}, [arrays, &file] { writeByLibzip(arrays, file.path()); }});
}

} // namespace

int main(int argc, char** argv) {
    // Memory that is freed is used again at once: what the system takes for new pages depends on who comes first.
    ::mallopt(M_MMAP_THRESHOLD, 1 << 30);
    ::mallopt(M_TRIM_THRESHOLD, 1 << 30);
    const TemporaryFile states("-states.ztfx"), nodes("-nodes.ztfx"), plain("-plain.ztfx"),
        encrypted("-encrypted.ztfx"), written("-written.ztfx");
    write(PtrRef(new NoisySource(39, 200, {scalar, displacement, stress})).get(), states.path());
    write(PtrRef(new NoisySource(99, 13, {scalar, displacement, stress})).get(), nodes.path());
    std::printf("big files: %.0f MB and %.0f MB\n", states.megabytes(), nodes.megabytes());
    {
        const PtrRef<NoisySource> source(new NoisySource(100, 3, {scalar, displacement}));
        write(source.get(), plain.path());
        write(source.get(), encrypted.path(), "secret");
    }
    orvbench::Claims claims(15);
    claimOpening(&claims, states, "600 fields on 64 thousand nodes");
    claimOpening(&claims, nodes, "39 fields on a million nodes");
    claimLoading(&claims, plain, encrypted);
    claimWriting(&claims, written);
    return claims.run(argc, argv);
}
