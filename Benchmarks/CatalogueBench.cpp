// What look-ups through the catalogues cost beside the bare calls on the data source that they stand for. The model is
// large, so that a copy of the mesh, or a second walk where one would do, shows at once; it lives in memory, so there
// is no file to read at all.

#include "OrvApp/Models.h"
#include "OrvApp/Parts.h"
#include "OrvApp/Results.h"
#include "OrvApp/States.h"
#include "OrvCore/PtrRef.h"
#include "OrvUnstructGrid/DataSourceMemory.h"
#include "OrvUnstructGrid/UnstructGridModel.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <limits>
#include <map>
#include <string>
#include <vector>

using namespace orv;
using orv::app::Models;
using orv::app::Parts;
using orv::app::Results;
using orv::app::States;

namespace {

constexpr int stateCount = 10000;
constexpr size_t geometryCount = 10;
constexpr size_t partsPerGeometry = 100;
constexpr size_t nodesPerPart = 1000;
constexpr int resultsPerType[] = {20, 15, 10, 5}; // scalars, vectors, displacements, tensors: 50

PtrRef<ug::UnstructGridModel> makeModel() {
    PtrRef<ug::DataSourceMemory> source = new ug::DataSourceMemory(1);
    for (size_t g = 0; g < geometryCount; ++g) {
        source->addGeometry();
        for (size_t p = 0; p < partsPerGeometry; ++p) {
            const std::string name = "piece " + std::to_string(g) + "." + std::to_string(p);
            source->addPart(g, name)->nodes()->set(std::vector<double>(3 * nodesPerPart), {});
        }
    }
    for (int id = 1; id <= stateCount; ++id) {
        source->addState(ug::StateInfo(id, "increment " + std::to_string(id), ug::StateInfo::TIME, id));
    }
    for (int type = ug::SCALAR; type <= ug::SYMMETRIC_TENSOR; ++type) {
        const auto resultType = static_cast<ug::ResultType>(type);
        const std::vector<double> values(nodesPerPart * ug::doublesPerItem(resultType));
        for (int i = 0; i < resultsPerType[type - 1]; ++i) {
            const std::string name = "result " + std::to_string(type) + "." + std::to_string(i);
            const ug::ResultInfo info = source->addResult(resultType, name, ug::PER_NODE);
            source->setValues(stateCount / 2, info, geometryCount - 1, 0, values, nullptr);
        }
    }
    PtrRef<ug::UnstructGridModel> model = new ug::UnstructGridModel;
    model->setDataSource(source.get());
    model->modelSpec().setStateId(stateCount / 2);
    return model;
}

/// The bare calls. Each does what the look-up of its name has to do by its definition, and as often.
struct Bare {
    explicit Bare(ug::UnstructGridModel* m) : model(m), source(m->dataSource()), directory(source->directory()) {}

    size_t indexOfState(int id) const {
        const std::vector<ug::StateInfo> infos = directory->stateInfos();
        return std::find_if(infos.begin(), infos.end(), [id](const auto& info) { return info.id() == id; }) -
               infos.begin();
    }

    ug::StateInfo findState(const Str& pattern) const {
        ug::StateInfo found;
        for (const ug::StateInfo& info : directory->stateInfos()) {
            if (info.name().matches(pattern)) {
                found = info;
            }
        }
        return found;
    }

    ug::DataPart* part(size_t index) const {
        ug::DataState* state = source->currentState(model);
        return state->geometry(index / partsPerGeometry)->part(index % partsPerGeometry);
    }

    size_t indexOfPart(const ug::DataPart* part) const {
        ug::DataState* state = source->currentState(model);
        size_t index = 0;
        for (size_t g = 0; g < state->geometryCount(); ++g) {
            const ug::DataGeometry* geometry = state->geometry(g);
            for (size_t p = 0; p < geometry->partCount(); ++p, ++index) {
                if (geometry->part(p) == part) {
                    return index;
                }
            }
        }
        return index;
    }

    size_t findPart(const Str& pattern) const {
        size_t found = 0;
        for (size_t g = 0; g < directory->geometryCountPerState(); ++g) {
            for (const ug::PartInfo& info : directory->partInfos(g)) {
                found += info.name().matches(pattern);
            }
        }
        return found;
    }

    std::vector<ug::ResultInfo> results() const {
        std::vector<ug::ResultInfo> available;
        const int stateId = source->currentState(model)->id();
        for (const auto& infos : {directory->scalarResultInfos(), directory->vectorResultInfos(),
                                  directory->symmetricTensorResultInfos(), directory->displacementResultInfos()}) {
            for (const ug::ResultInfo& info : infos) {
                if (directory->hasResult(stateId, info)) {
                    available.push_back(info);
                }
            }
        }
        return available;
    }

    ug::ResultInfo findResult(const Str& pattern) const {
        ug::ResultInfo found;
        for (const ug::ResultInfo& info : results()) {
            if (info.name().matches(pattern)) {
                found = info;
            }
        }
        return found;
    }

    ug::DataPartScalar* scalar(const ug::ResultInfo& info, const ug::DataPart* part) const {
        ug::DataState* state = source->currentState(model);
        for (size_t g = 0; g < state->geometryCount(); ++g) {
            const ug::DataGeometry* geometry = state->geometry(g);
            for (size_t p = 0; p < geometry->partCount(); ++p) {
                if (geometry->part(p) == part) {
                    ug::DataResultGroup* group = state->results(geometry);
                    return group->scalar(group->scalarIndex(info.id()))->part(p);
                }
            }
        }
        return nullptr;
    }

    ug::UnstructGridModel* model;
    ug::DataSource* source;
    ug::DataSourceDirectory* directory;
};

struct Claim {
    std::string name;
    std::function<void()> ours;
    std::function<void()> rival;
};

std::vector<Claim> makeClaims(ug::UnstructGridModel* model) {
    using benchmark::DoNotOptimize;
    static const Bare bare(model);
    static const ug::StateInfo lastState = bare.directory->stateInfos().back();
    static ug::DataPart* const lastPart = bare.part(geometryCount * partsPerGeometry - 1);
    static ug::DataPart* const loadedPart = bare.part((geometryCount - 1) * partsPerGeometry);
    static const ug::ResultInfo lastScalar = bare.directory->scalarResultInfos().back();
    Parts::instance()->setCurrent(loadedPart);

    const std::string state = "increment 10000", part = "piece 9.99", result = "result 2.14";
    return {
        {"States::count", [] { DoNotOptimize(States::instance()->count()); },
         [] { DoNotOptimize(bare.directory->stateInfos().size()); }},
        {"States::indexOf", [] { DoNotOptimize(States::instance()->indexOf(lastState)); },
         [] { DoNotOptimize(bare.indexOfState(lastState.id())); }},
        {"States::info(index)", [] { DoNotOptimize(States::instance()->info(stateCount - 1)); },
         [] { DoNotOptimize(bare.directory->stateInfos()[stateCount - 1]); }},
        {"States::info(pattern)", [=] { DoNotOptimize(States::instance()->info(state)); },
         [=] { DoNotOptimize(bare.findState(state)); }},
        {"Parts::indexOf", [] { DoNotOptimize(Parts::instance()->indexOf(lastPart)); },
         [] { DoNotOptimize(bare.indexOfPart(lastPart)); }},
        {"Parts::info(part)", [] { DoNotOptimize(Parts::instance()->info(lastPart)); },
         [] {
             DoNotOptimize(bare.indexOfPart(lastPart)); // the index
             DoNotOptimize(bare.indexOfPart(lastPart)); // the geometry
             DoNotOptimize(bare.directory->findPartInfo(geometryCount - 1, lastPart->partId()));
         }},
        {"Parts::get(pattern)", [=] { DoNotOptimize(Parts::instance()->get(part)); },
         [=] { DoNotOptimize(bare.findPart(part)); }},
        {"Results::count", [] { DoNotOptimize(Results::instance()->count()); },
         [] { DoNotOptimize(bare.results().size()); }},
        {"Results::indexOf", [] { DoNotOptimize(Results::instance()->indexOf(lastScalar)); },
         [] { DoNotOptimize(std::ranges::find(bare.results(), lastScalar)); }},
        {"Results::resultInfo(index)", [] { DoNotOptimize(Results::instance()->resultInfo(49)); },
         [] {
             DoNotOptimize(bare.results().size()); // the check
             DoNotOptimize(bare.results()[49]);
         }},
        {"Results::resultInfo(name)", [=] { DoNotOptimize(Results::instance()->resultInfo(result)); },
         [=] { DoNotOptimize(bare.findResult(result)); }},
        {"Results::currentDataPartScalar(loaded)",
         [] { DoNotOptimize(Results::instance()->currentDataPartScalar(lastScalar)); },
         [] {
             DoNotOptimize(bare.scalar(lastScalar, loadedPart)); // the part and its geometry
             DoNotOptimize(bare.scalar(lastScalar, loadedPart)); // once more for the result
         }},
    };
}

/// Keeps the fastest of the repetitions, which other work on the machine has disturbed least.
class FastestReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Iteration) {
                double& time =
                    m_times.try_emplace(run.run_name.function_name, std::numeric_limits<double>::max()).first->second;
                time = std::min(time, run.GetAdjustedCPUTime());
            }
        }
    }

    /// Nothing for a claim that was filtered away.
    void printRatio(const std::string& claim) const {
        const auto ours = m_times.find(claim + " ours");
        const auto rival = m_times.find(claim + " bare calls");
        if (ours != m_times.end() && rival != m_times.end()) {
            std::printf("ratio %s: ours/bare calls = %.2f (limit 1.50)\n", claim.c_str(), ours->second / rival->second);
        }
    }

private:
    std::map<std::string, double> m_times;
};

void registerRun(const std::string& name, const std::function<void()>& run) {
    benchmark::RegisterBenchmark(name.c_str(),
                                 [run](benchmark::State& state) {
                                     for (auto _ : state) {
                                         run();
                                     }
                                 })
        ->Repetitions(5)
        ->MinTime(0.05)
        ->ReportAggregatesOnly(false);
}

} // namespace

int main(int argc, char** argv) {
    // Interleaved, so that other work on the machine disturbs both sides alike.
    std::vector<char*> arguments(argv, argv + argc);
    std::string interleaved = "--benchmark_enable_random_interleaving=true";
    arguments.push_back(interleaved.data());
    argc = static_cast<int>(arguments.size());
    benchmark::Initialize(&argc, arguments.data());
    PtrRef<ug::UnstructGridModel> model = makeModel();
    Models::instance()->add(model.get());
    const std::vector<Claim> claims = makeClaims(model.get());
    for (const Claim& claim : claims) {
        registerRun(claim.name + " ours", claim.ours);
        registerRun(claim.name + " bare calls", claim.rival);
    }
    FastestReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    for (const Claim& claim : claims) {
        reporter.printRatio(claim.name);
    }
    return 0;
}
