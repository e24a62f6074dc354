// What the history of one node over all states costs, beside loading each state's field, on a file of a million nodes
// that is made here, in the folder for temporary files, and removed at the end.

#include "OrvImportCae/DataSourceCae.h"
#include "OrvUnstructGrid/DataSourceZTFx.h"
#include "OrvUnstructGrid/DataStateSpec.h"
#include "OrvUnstructGrid/Error.h"
#include "OrvUnstructGrid/ResultsQuery.h"
#include "OrvUnstructGrid/WriteSelection.h"
#include "OrvUnstructGrid/ZTFxWriter.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <limits>
#include <string>
#include <vector>

#include <unistd.h>

using namespace orv;

namespace {

constexpr int NODE_COUNT = 1000000;
constexpr int STATE_COUNT = 20;

bool isBad = false;

void require(bool condition, const char* what) {
    if (!condition) {
        std::printf("FAILED: %s\n", what);
        isBad = true;
    }
}

/// A file in the folder for temporary files, removed at the end.
class TemporaryName {
public:
    explicit TemporaryName(const char* name)
        : m_path(std::filesystem::temp_directory_path() / (std::to_string(::getpid()) + name)) {}

    ~TemporaryName() {
        std::error_code ignored;
        std::filesystem::remove(m_path, ignored);
    }

    TemporaryName(const TemporaryName&) = delete;
    TemporaryName& operator=(const TemporaryName&) = delete;

    std::string path() const {
        return m_path.string();
    }

private:
    std::filesystem::path m_path;
};

/// A chain of beams with a temperature at each node, as the solver writes it.
class ChainFile {
public:
    ChainFile() : m_name("-history.frd"), m_file(std::fopen(m_name.path().c_str(), "wb")) {
        std::setvbuf(m_file, nullptr, _IOFBF, 1 << 20);
        std::fprintf(m_file, "    1C\n    2C%18s%12d%37s%2d\n", "", NODE_COUNT, "", 1);
        for (int node = 1; node <= NODE_COUNT; ++node) {
            std::fprintf(m_file, " -1%10d%12.5E%12.5E%12.5E\n", node, 0.1 * node, 0.0, 0.0);
        }
        std::fprintf(m_file, " -3\n    3C%18s%12d%37s%2d\n", "", NODE_COUNT - 1, "", 1);
        for (int node = 1; node < NODE_COUNT; ++node) {
            std::fprintf(m_file, " -1%10d%5d%5d%5d\n -2%10d%10d\n", node, 11, 0, 1, node, node + 1);
        }
        std::fprintf(m_file, " -3\n");
        for (int state = 1; state <= STATE_COUNT; ++state) {
            writeState(state);
        }
        std::fprintf(m_file, " 9999\n");
        std::fclose(m_file);
    }

    std::string path() const {
        return m_name.path();
    }

    static double value(int state, int node) {
        return state + 1e-3 * (node % 1000);
    }

private:
    void writeState(int state) {
        std::fprintf(m_file, "  100CL%5d%12.5E%12d%20s%2d%5d%10s%2d\n -4  NDTEMP      1    1\n", 100 + state,
                     0.01 * state, NODE_COUNT, "", 1, state, "", 1);
        std::fprintf(m_file, " -5  T           1    1    0    0\n");
        for (int node = 1; node <= NODE_COUNT; ++node) {
            std::fprintf(m_file, " -1%10d%12.5E\n", node, value(state, node));
        }
        std::fprintf(m_file, " -3\n");
    }

    TemporaryName m_name;
    std::FILE* m_file;
};

template <class Function>
double bestSeconds(int rounds, Function function) {
    using Clock = std::chrono::steady_clock;
    double best = std::numeric_limits<double>::max();
    for (int round = 0; round < rounds; ++round) {
        const Clock::time_point begin = Clock::now();
        function();
        best = std::min(best, std::chrono::duration<double>(Clock::now() - begin).count());
    }
    return best;
}

/// The node in the middle, state by state.
void queryHistory(ug::DataSource* source, const ug::ResultInfo& info) {
    ug::ResultsQuery query(source);
    const std::vector<ug::ResultsQueryItem> items = {{0, NODE_COUNT / 2 - 1}};
    std::vector<ug::ResultsQueryResult> results;
    for (std::size_t i = 0; i < source->stateCount(); ++i) {
        const int stateId = source->state(i)->id();
        require(query.scalars(info.id(), stateId, 0, &items, &results), "query");
        require(std::abs(results[0].averageSubItemScalar() - ChainFile::value(stateId, NODE_COUNT / 2)) < 1e-3,
                "the value of the node");
    }
}

void loadFields(ug::DataSourceLazy* source, const ug::ResultInfo& info) {
    ug::DataStateSpec spec;
    spec.setResultIds({info});
    for (std::size_t i = 0; i < source->stateCount(); ++i) {
        require(source->loadDataState(source->state(i)->id(), spec, nullptr), "load");
    }
}

void measure(const char* format, ug::DataSourceLazy* source) {
    // No more than one state stays in memory, so each round reads anew.
    source->setResultByteBudget(0);
    const ug::ResultInfo info = source->directory()->scalarResultInfos().at(0);
    const double fields = bestSeconds(2, [&] { loadFields(source, info); });
    source->dropResult(info);
    const double history = bestSeconds(5, [&] { queryHistory(source, info); });
    require(source->state(0)->resultByteCount() == 0, "a history that loads no field");
    std::printf("%s, %d nodes: history %.2f us a state, fields %.2f ms a state\n", format, NODE_COUNT,
                1e6 * history / STATE_COUNT, 1e3 * fields / STATE_COUNT);
    std::printf("ratio history of one node in %s to loading fields: %.4f ms/%.2f ms = 1/%.0f (limit 1/100)\n", format,
                1e3 * history, 1e3 * fields, fields / history);
}

} // namespace

int main() {
    const ChainFile file;
    const PtrRef<imp::cae::DataSourceCae> source(new imp::cae::DataSourceCae(1));
    ug::Error error;
    require(source->openFiles({Str(file.path())}, &error), "open");
    measure(".frd", source.get());

    const TemporaryName name("-history.ztfx");
    ug::ZTFxWriter writer;
    require(writer.addCase(1, "chain", source.get(), {}, &error) && writer.write(name.path(), nullptr, &error),
            "write");
    const PtrRef<ug::DataSourceZTFx> written(new ug::DataSourceZTFx(1));
    require(written->openCase(name.path(), 0, &error), "open what was written");
    measure(".ztfx", written.get());
    return isBad ? 1 : 0;
}
