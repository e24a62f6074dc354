// What opening and loading CalculiX files costs, on files as the solver writes them: made here, in the folder for
// temporary files, and removed at the end.

#include "OrvImportCae/CaeFile.h"
#include "OrvImportCae/DataSourceCae.h"
#include "OrvImportCae/FrdIndex.h"
#include "OrvUnstructGrid/DataResultGroup.h"
#include "OrvUnstructGrid/DataStateSpec.h"
#include "OrvUnstructGrid/Error.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include <fcntl.h>
#include <malloc.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace orv;
using namespace orv::imp::cae;

namespace {

constexpr std::size_t ID_END = 13;
constexpr std::size_t VALUE_WIDTH = 12;

// The file.

/// A block of cubes, and a field that has numbers of all sizes and signs.
class FileWriter {
public:
    FileWriter(const std::string& path, int cubesPerEdge)
        : m_file(std::fopen(path.c_str(), "wb")), m_edge(cubesPerEdge),
          m_nodeCount((m_edge + 1) * (m_edge + 1) * (m_edge + 1)) {
        std::setvbuf(m_file, nullptr, _IOFBF, 1 << 20);
        std::fprintf(m_file, "    1C\n    1UMAT    1STEEL\n");
        writeNodes();
        writeElements();
    }

    ~FileWriter() {
        std::fprintf(m_file, " 9999\n");
        std::fclose(m_file);
    }

    void writeState(int number) {
        writeBlock(number, "DISP", {"D1", "D2", "D3"}, 2);
        writeBlock(number, "STRESS", {"SXX", "SYY", "SZZ", "SXY", "SYZ", "SZX"}, 4);
    }

private:
    int nodeId(int i, int j, int k) const {
        return 1 + i + (m_edge + 1) * (j + (m_edge + 1) * k);
    }

    void writeNodes() {
        std::fprintf(m_file, "    2C%18s%12d%37s%2d\n", "", m_nodeCount, "", 1);
        for (int k = 0; k <= m_edge; ++k) {
            for (int j = 0; j <= m_edge; ++j) {
                for (int i = 0; i <= m_edge; ++i) {
                    std::fprintf(m_file, " -1%10d%12.5E%12.5E%12.5E\n", nodeId(i, j, k), 0.1 * i, 0.1 * j, 0.1 * k);
                }
            }
        }
        std::fprintf(m_file, " -3\n");
    }

    void writeElements() {
        std::fprintf(m_file, "    3C%18s%12d%37s%2d\n", "", m_edge * m_edge * m_edge, "", 1);
        int id = 0;
        for (int k = 0; k < m_edge; ++k) {
            for (int j = 0; j < m_edge; ++j) {
                for (int i = 0; i < m_edge; ++i) {
                    std::fprintf(m_file, " -1%10d%5d%5d%5d\n -2%10d%10d%10d%10d%10d%10d%10d%10d\n", ++id, 1, 0, 1,
                                 nodeId(i, j, k), nodeId(i + 1, j, k), nodeId(i + 1, j + 1, k), nodeId(i, j + 1, k),
                                 nodeId(i, j, k + 1), nodeId(i + 1, j, k + 1), nodeId(i + 1, j + 1, k + 1),
                                 nodeId(i, j + 1, k + 1));
                }
            }
        }
        std::fprintf(m_file, " -3\n");
    }

    void writeBlock(int state, const char* name, const std::vector<const char*>& components, int entity) {
        std::fprintf(m_file, "    1PSTEP%26d%12d%12d\n", state, state, 1);
        std::fprintf(m_file, "  100CL%5d%12.5E%12d%20s%2d%5d%10s%2d\n", 100 + state, 0.01 * state, m_nodeCount, "", 1,
                     state, "", 1);
        std::fprintf(m_file, " -4  %-8s%5zu    1\n", name, components.size());
        for (std::size_t i = 0; i < components.size(); ++i) {
            std::fprintf(m_file, " -5  %-8s%5d%5d%5zu%5d\n", components[i], 1, entity, i + 1, 0);
        }
        for (int node = 1; node <= m_nodeCount; ++node) {
            std::fprintf(m_file, " -1%10d", node);
            for (std::size_t i = 0; i < components.size(); ++i) {
                std::fprintf(m_file, "%12.5E", nextValue());
            }
            std::fputc('\n', m_file);
        }
        std::fprintf(m_file, " -3\n");
    }

    // Mostly ordinary sizes, a tenth of noise around 1e-16.
    double nextValue() {
        m_random = m_random * 6364136223846793005u + 1442695040888963407u;
        const double mantissa = double(m_random >> 11) / 9007199254740992.0 - 0.5;
        const int choice = int((m_random >> 3) % 10);
        return choice == 0 ? mantissa * 1e-16 : mantissa * std::pow(10.0, choice - 5);
    }

    std::FILE* m_file;
    int m_edge;
    int m_nodeCount;
    std::uint64_t m_random = 20240607;
};

/// A file that lives as long as this.
class TemporaryFile {
public:
    TemporaryFile(const char* name, int cubesPerEdge, int stateCount)
        : m_path(std::filesystem::temp_directory_path() / (std::to_string(::getpid()) + name)) {
        FileWriter writer(m_path, cubesPerEdge);
        for (int state = 1; state <= stateCount; ++state) {
            writer.writeState(state);
        }
    }

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
        return double(std::filesystem::file_size(m_path)) / 1e6;
    }

private:
    std::filesystem::path m_path;
};

// Timing.

double seconds() {
    using Clock = std::chrono::steady_clock;
    return std::chrono::duration<double>(Clock::now().time_since_epoch()).count();
}

/// The best time of each of several functions that take turns, so that what disturbs one disturbs all.
template <class... Functions>
std::vector<double> bestTimes(int rounds, Functions... functions) {
    std::vector<double> best(sizeof...(functions), std::numeric_limits<double>::max());
    for (int round = 0; round < rounds; ++round) {
        std::size_t i = 0;
        const auto run = [&](auto& function) {
            const double begin = seconds();
            function();
            best[i] = std::min(best[i], seconds() - begin);
            ++i;
        };
        (run(functions), ...);
    }
    return best;
}

bool isBad = false;

void require(bool condition, const char* what) {
    if (!condition) {
        std::printf("FAILED: %s\n", what);
        isBad = true;
    }
}

// The index.

std::unique_ptr<FrdIndex> readIndex(const std::string& path) {
    CaeFile file;
    auto index = std::make_unique<FrdIndex>();
    ug::Error error;
    require(file.open(path, &error) && readFrdIndex(file, index.get(), &error), "read the index");
    return index;
}

/// Looks at each block's header and end, and does nothing else.
void walkOffsets(const std::string& path, const std::vector<std::int64_t>& offsets) {
    const int descriptor = ::open(path.c_str(), O_RDONLY);
    char page[4096];
    for (const std::int64_t offset : offsets) {
        require(::pread(descriptor, page, sizeof page, offset) > 0, "read a page");
    }
    ::close(descriptor);
}

void measureIndex(const TemporaryFile& file) {
    const auto index = readIndex(file.path());
    std::vector<std::int64_t> offsets;
    for (const FrdRows* rows : {&index->nodes, &index->elements}) {
        offsets.insert(offsets.end(), {rows->header, rows->end});
    }
    for (const FrdResultBlock& block : index->blocks) {
        offsets.insert(offsets.end(), {block.rows.header, block.rows.end});
    }
    const std::vector<double> times = bestTimes(
        20, [&] { readIndex(file.path()); }, [&] { walkOffsets(file.path(), offsets); });
    std::printf("index of %.0f MB, %zu blocks: %.3f ms; bare walk over the same offsets: %.3f ms\n", file.megabytes(),
                index->blocks.size(), 1e3 * times[0], 1e3 * times[1]);
    std::printf("ratio index of a %.0f MB file to 20 ms: %.3f ms/20 ms = %.3f (limit 1.00)\n", file.megabytes(),
                1e3 * times[0], times[0] / 0.02);
}

// Loading a result.

/// What somebody writes who knows the format and has the file in memory: nothing but the numbers.
class MappedFile {
public:
    explicit MappedFile(const std::string& path) : m_size(std::filesystem::file_size(path)) {
        const int descriptor = ::open(path.c_str(), O_RDONLY);
        m_bytes =
            static_cast<const char*>(::mmap(nullptr, m_size, PROT_READ, MAP_PRIVATE | MAP_POPULATE, descriptor, 0));
        ::close(descriptor);
    }

    ~MappedFile() {
        ::munmap(const_cast<char*>(m_bytes), m_size);
    }

    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;

    const char* at(std::int64_t offset) const {
        return m_bytes + offset;
    }

private:
    std::size_t m_size;
    const char* m_bytes;
};

constexpr double POWERS[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                             1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

/// The number of six digits times ten to a power: right to the last bit where that power is exact, else strtod's
/// affair.
inline double scale(const char* text, int mantissa) {
    const int exponent = (text[10] - '0') * 10 + (text[11] - '0');
    const int power = (text[9] == '-' ? -exponent : exponent) - 5;
    if (power < -22 || power > 22) {
        double size = 0.0;
        std::from_chars(text + 1, text + VALUE_WIDTH, size);
        return text[0] == '-' ? -size : size;
    }
    const double size = power < 0 ? mantissa / POWERS[-power] : mantissa * POWERS[power];
    return text[0] == '-' ? -size : size;
}

/// "-1.23456E+07" digit by digit.
inline double convertByDigits(const char* text) {
    const auto digit = [text](int i) { return text[i] - '0'; };
    return scale(text,
                 digit(1) * 100000 + digit(3) * 10000 + digit(4) * 1000 + digit(5) * 100 + digit(6) * 10 + digit(7));
}

/// The same with all digits in one word.
inline double convertByWord(const char* text) {
    std::uint64_t word;
    std::memcpy(&word, text, sizeof word);
    word = ((word & 0xFFFFFFFFFF000000) | ((word & 0xFF00) << 8) | 0x3030) - 0x3030303030303030;
    word = word * 10 + (word >> 8);
    word =
        ((word & 0x000000FF000000FF) * 0x000F424000000064 + ((word >> 16) & 0x000000FF000000FF) * 0x0000271000000001) >>
        32;
    return scale(text, int(std::uint32_t(word)));
}

template <double (*Convert)(const char*)>
std::unique_ptr<double[]> parseMapped(const MappedFile& file, const FrdRows& rows, std::size_t columnCount) {
    auto values = std::make_unique_for_overwrite<double[]>(std::size_t(rows.count) * columnCount);
    double* out = values.get();
    const char* row = file.at(rows.begin);
    for (std::int64_t i = 0; i < rows.count; ++i, row += rows.rowSize) {
        for (std::size_t c = 0; c < columnCount; ++c) {
            *out++ = Convert(row + ID_END + c * VALUE_WIDTH);
        }
    }
    return values;
}

/// What somebody writes who has the standard library.
std::vector<double> parseLines(const std::string& path, const FrdRows& rows, std::size_t columnCount) {
    std::vector<double> values;
    values.reserve(std::size_t(rows.count) * columnCount);
    std::ifstream file(path);
    file.seekg(rows.begin);
    std::string line;
    while (std::getline(file, line) && line.compare(0, 3, " -1") == 0) {
        for (std::size_t c = 0; c < columnCount; ++c) {
            values.push_back(std::strtod(line.substr(ID_END + c * VALUE_WIDTH, VALUE_WIDTH).c_str(), nullptr));
        }
    }
    return values;
}

void measureLoad(const TemporaryFile& file, const FrdIndex& index, ug::ResultType type) {
    const PtrRef<DataSourceCae> source(new DataSourceCae(1));
    ug::Error error;
    require(source->openFiles({Str(file.path())}, &error), "open");
    const ug::ResultInfo info = source->directory()->resultInfos(type).at(0);
    const std::string name = info.name().toStdString();
    // The second state, so that nothing is the first of its file.
    const auto block = std::find_if(index.blocks.begin(), index.blocks.end(), [&](const FrdResultBlock& candidate) {
        return candidate.stateNumber == 2 && index.layouts[candidate.layout].name == name;
    });
    const FrdRows& rows = block->rows;
    const std::size_t columnCount = ug::doublesPerItem(type);
    const MappedFile mapped(file.path());
    ug::DataStateSpec spec;
    spec.setResultIds({info});

    const auto ours = [&] {
        source->dropResult(info);
        require(source->loadDataState(2, spec, &error), "load");
    };
    const auto byDigits = [&] { parseMapped<convertByDigits>(mapped, rows, columnCount); };
    const auto byWord = [&] { parseMapped<convertByWord>(mapped, rows, columnCount); };
    const std::vector<double> quick = bestTimes(30, ours, byDigits, byWord);
    const std::vector<double> slow = bestTimes(3, [&] { parseLines(file.path(), rows, columnCount); });

    const std::vector<double> expected = parseLines(file.path(), rows, columnCount);
    ug::DataState* state = source->state(source->stateIndex(2));
    const std::span<const double> loaded = state->results(state->geometry(0))->find(info)->values(0)->span();
    require(loaded.size() == expected.size() && std::memcmp(loaded.data(), expected.data(), loaded.size_bytes()) == 0,
            "values equal to strtod's, bit by bit");

    const double gigabytes = double(rows.end - rows.begin) / 1e9;
    std::printf(
        "load of %s, %.1f MB: %.2f GB/s; mapped, digit by digit: %.2f GB/s; mapped, all digits in one word: %.2f "
        "GB/s; getline and strtod: %.2f GB/s\n",
        name.c_str(), 1e3 * gigabytes, gigabytes / quick[0], gigabytes / quick[1], gigabytes / quick[2],
        gigabytes / slow[0]);
    const double best = std::min(quick[1], quick[2]);
    std::printf("ratio load of %s to the best mapped parse: %.2f/%.2f GB/s = %.2f (limit 0.80)\n", name.c_str(),
                gigabytes / quick[0], gigabytes / best, best / quick[0]);
    std::printf("ratio load of %s to getline and strtod: %.2f/%.2f GB/s = %.2f (limit 6.00)\n", name.c_str(),
                gigabytes / quick[0], gigabytes / slow[0], slow[0] / quick[0]);
}

// Memory.

std::size_t peakBytes() {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        if (word == "VmHWM:") {
            std::size_t kilobytes = 0;
            status >> kilobytes;
            return kilobytes * 1024;
        }
    }
    return 0;
}

/// In a process of its own, whose peak nothing else has raised.
int openAndTellMemory(const char* path) {
    const std::size_t before = peakBytes();
    const PtrRef<DataSourceCae> source(new DataSourceCae(1));
    ug::Error error;
    require(source->openFiles({Str(path)}, &error), "open");
    const std::size_t peak = peakBytes() - before;
    const std::size_t mesh = source->state(0)->geometry(0)->byteCount();
    const std::size_t index = readIndex(path)->blocks.size() * sizeof(FrdResultBlock);
    std::printf("opened %s: peak %.1f MB; mesh arrays %.1f MB, index %.3f MB\n", path, double(peak) / 1e6,
                double(mesh) / 1e6, double(index) / 1e6);
    std::printf("ratio peak memory of opening to mesh and index: %.1f/%.1f MB = %.2f (limit 2.00)\n",
                double(peak) / 1e6, double(mesh + index) / 1e6, double(peak) / double(mesh + index));
    return isBad ? 1 : 0;
}

void measureMemory(const char* program, const TemporaryFile& file) {
    std::fflush(stdout);
    const std::string path = file.path();
    const pid_t child = ::fork();
    if (child == 0) {
        ::execl("/proc/self/exe", program, "--open", path.c_str(), static_cast<char*>(nullptr));
        ::_exit(127);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    require(status == 0, "measure memory");
}

} // namespace

int main(int argc, char** argv) {
    if (argc == 3 && std::strcmp(argv[1], "--open") == 0) {
        return openAndTellMemory(argv[2]);
    }
    // Memory that is freed is used again at once: what the system takes for new pages depends on who comes first.
    ::mallopt(M_MMAP_THRESHOLD, 1 << 30);
    ::mallopt(M_TRIM_THRESHOLD, 1 << 30);
    {
        const TemporaryFile file("-results.frd", 40, 34);
        measureIndex(file);
        const auto index = readIndex(file.path());
        measureLoad(file, *index, ug::DISPLACEMENT);
        measureLoad(file, *index, ug::SYMMETRIC_TENSOR);
    }
    const TemporaryFile file("-mesh.frd", 80, 1);
    measureMemory(argv[0], file);
    return isBad ? 1 : 0;
}
