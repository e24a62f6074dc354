// What opening and loading Gmsh files costs, on a text file of about 100 MB: made here, in the folder for temporary
// files, and removed at the end.

#include "OrvImportCae/DataSourceCae.h"
#include "OrvUnstructGrid/DataResultGroup.h"
#include "OrvUnstructGrid/DataState.h"
#include "OrvUnstructGrid/DataStateSpec.h"
#include "OrvUnstructGrid/Error.h"

#include "Benchmarks/Claims.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <unistd.h>

using namespace orv;

namespace {

constexpr int CUBES = 85; // Along each edge of the block.

int nodeId(int i, int j, int k) {
    return 1 + i + (CUBES + 1) * (j + (CUBES + 1) * k);
}

void writeMesh(std::FILE* file) {
    const int nodeCount = nodeId(CUBES, CUBES, CUBES);
    std::fprintf(file, "$MeshFormat\n2.2 0 8\n$EndMeshFormat\n$Nodes\n%d\n", nodeCount);
    for (int k = 0; k <= CUBES; ++k) {
        for (int j = 0; j <= CUBES; ++j) {
            for (int i = 0; i <= CUBES; ++i) {
                std::fprintf(file, "%d %.16g %.16g %.16g\n", nodeId(i, j, k), i / 7.0, j / 7.0, k / 7.0);
            }
        }
    }
    std::fprintf(file, "$EndNodes\n$Elements\n%d\n", CUBES * CUBES * CUBES);
    int id = 0;
    for (int k = 0; k < CUBES; ++k) {
        for (int j = 0; j < CUBES; ++j) {
            for (int i = 0; i < CUBES; ++i) {
                std::fprintf(file, "%d 5 2 1 1 %d %d %d %d %d %d %d %d\n", ++id, nodeId(i, j, k), nodeId(i + 1, j, k),
                             nodeId(i + 1, j + 1, k), nodeId(i, j + 1, k), nodeId(i, j, k + 1), nodeId(i + 1, j, k + 1),
                             nodeId(i + 1, j + 1, k + 1), nodeId(i, j + 1, k + 1));
            }
        }
    }
    std::fprintf(file, "$EndElements\n");
}

void writeValues(std::FILE* file) {
    const int nodeCount = nodeId(CUBES, CUBES, CUBES);
    std::fprintf(file, "$NodeData\n1\n\"Displacement\"\n1\n0\n3\n0\n3\n%d\n", nodeCount);
    for (int i = 1; i <= nodeCount; ++i) {
        std::fprintf(file, "%d %.16g %.16g %.16g\n", i, std::sin(i), 1e-3 * std::cos(i), 1e-6 * std::tan(i));
    }
    std::fprintf(file, "$EndNodeData\n");
}

/// A file that lives as long as this.
class TemporaryFile {
public:
    TemporaryFile() : m_path(std::filesystem::temp_directory_path() / (std::to_string(::getpid()) + "-results.msh")) {
        std::FILE* file = std::fopen(m_path.c_str(), "wb");
        std::setvbuf(file, nullptr, _IOFBF, 1 << 20);
        writeMesh(file);
        writeValues(file);
        std::fclose(file);
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

private:
    std::filesystem::path m_path;
};

void require(bool condition, const char* what) {
    if (!condition) {
        std::fprintf(stderr, "cannot %s\n", what);
        std::exit(1);
    }
}

/// The sum of the loaded values, so that both sides can be compared.
double openAndLoad(const std::string& path) {
    const PtrRef<imp::cae::DataSourceCae> source(new imp::cae::DataSourceCae(1));
    ug::Error error;
    require(source->openFiles({Str(path)}, &error), "open");
    const ug::ResultInfo info = source->directory()->resultInfos(ug::DISPLACEMENT).at(0);
    ug::DataStateSpec spec;
    spec.setResultIds({info});
    require(source->loadDataState(1, spec, &error), "load");
    ug::DataState* state = source->state(0);
    double sum = 0.0;
    for (const double value : state->results(state->geometry(0))->find(info)->values(0)->span()) {
        sum += value;
    }
    return sum;
}

/// What somebody writes who has the standard library: the numbers of each line, and no parts or checks.
double readLines(const std::string& path) {
    std::ifstream file(path);
    std::vector<double> coordinates;
    std::vector<double> values;
    std::vector<long> elements;
    enum { NOTHING, NODES, ELEMENTS, VALUES } section = NOTHING;
    for (std::string line; std::getline(file, line);) {
        if (line[0] == '$') {
            section = line == "$Nodes"      ? NODES
                      : line == "$Elements" ? ELEMENTS
                      : line == "$NodeData" ? VALUES
                                            : NOTHING;
            for (int skipped = section == NOTHING ? 0 : section == VALUES ? 8 : 1; skipped > 0; --skipped) {
                std::getline(file, line);
            }
            continue;
        }
        char* at = line.data();
        if (section == ELEMENTS) {
            for (int i = 0; i < 13; ++i) {
                elements.push_back(std::strtol(at, &at, 10));
            }
            continue;
        }
        std::strtol(at, &at, 10);
        std::vector<double>& numbers = section == NODES ? coordinates : values;
        for (int i = 0; i < 3 && section != NOTHING; ++i) {
            numbers.push_back(std::strtod(at, &at));
        }
    }
    double sum = 0.0;
    for (const double value : values) {
        sum += value;
    }
    return sum;
}

} // namespace

int main(int argc, char** argv) {
    const TemporaryFile file;
    const std::string path = file.path();
    require(openAndLoad(path) == readLines(path), "find the rival's values");
    std::printf("%.0f MB\n", double(std::filesystem::file_size(path)) / 1e6);
    orvbench::Claims claims;
    claims.add("open a Gmsh file and load a result, to getline and strtod", 0.5,
               {[] {}, [&path] { benchmark::DoNotOptimize(openAndLoad(path)); }},
               {[] {}, [&path] { benchmark::DoNotOptimize(readLines(path)); }});
    return claims.run(argc, argv);
}
