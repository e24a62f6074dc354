#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <functional>
#include <limits>
#include <map>
#include <string>
#include <vector>

namespace orvbench {

/// Our work beside a rival's in the same run. Each side is prepared outside the clock, which is that of the processor,
/// and the fastest of its repetitions counts: other work on the machine has disturbed it least.
class Claims {
public:
    struct Side {
        std::function<void()> prepare;
        std::function<void()> run;
    };

    /// The shorter the work, the more repetitions it takes until one of them runs undisturbed.
    explicit Claims(int repetitions = 3) : m_repetitions(repetitions) {}

    /// `limit` is the largest share of the rival's time that ours may take.
    void add(const std::string& name, double limit, const Side& ours, const Side& rival) {
        m_claims.push_back({name, limit});
        registerSide(name + " ours", ours);
        registerSide(name + " rival", rival);
    }

    /// Runs what the command line asks for and prints the ratios. To be returned from main().
    int run(int argc, char** argv) {
        benchmark::Initialize(&argc, argv);
        Reporter reporter;
        benchmark::RunSpecifiedBenchmarks(&reporter);
        for (const Claim& claim : m_claims) {
            const auto ours = reporter.times.find(claim.name + " ours");
            const auto rival = reporter.times.find(claim.name + " rival");
            if (ours != reporter.times.end() && rival != reporter.times.end()) {
                std::printf("ratio %s: ours/rival = %.3g (limit %.2f)\n", claim.name.c_str(),
                            ours->second / rival->second, claim.limit);
            }
        }
        return 0;
    }

private:
    struct Claim {
        std::string name;
        double limit;
    };

    struct Reporter : benchmark::ConsoleReporter {
        void ReportRuns(const std::vector<Run>& runs) override {
            ConsoleReporter::ReportRuns(runs);
            for (const Run& run : runs) {
                if (run.run_type == Run::RT_Iteration) {
                    double& time =
                        times.try_emplace(run.run_name.function_name, run.GetAdjustedRealTime()).first->second;
                    time = std::min(time, run.GetAdjustedRealTime());
                }
            }
        }

        std::map<std::string, double> times;
    };

    void registerSide(const std::string& name, const Side& side) const {
        benchmark::RegisterBenchmark(name.c_str(),
                                     [side](benchmark::State& state) {
                                         for (auto _ : state) {
                                             side.prepare();
                                             const std::clock_t start = std::clock();
                                             side.run();
                                             state.SetIterationTime(static_cast<double>(std::clock() - start) /
                                                                    CLOCKS_PER_SEC);
                                         }
                                     })
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond)
            ->Iterations(1)
            ->Repetitions(m_repetitions);
    }

    int m_repetitions;
    std::vector<Claim> m_claims;
};

} // namespace orvbench
