// Opens result files and loads everything in them: one line for each file. For script/corpus.

#include "Tests/OrvImportCae/LoadEverything.h"

#include "OrvImportCae/DataSourceCae.h"

#include <cstdio>

using namespace orv;

namespace {

bool loadFile(const char* filename) {
    const PtrRef<imp::cae::DataSourceCae> source(new imp::cae::DataSourceCae(1));
    ug::Error error;
    if (!source->openFiles({filename}, &error)) {
        std::printf("FAILED %s\n", error.message().toStdString().c_str());
        return false;
    }
    const auto tell = [](const ug::StateInfo& state, const ug::ResultInfo& info, const ug::Error& reason) {
        std::printf("FAILED %s in %s: %s\n", info.name().toStdString().c_str(), state.name().toStdString().c_str(),
                    reason.message().toStdString().c_str());
    };
    const orvtest::Everything sum = orvtest::loadEverything(*source, tell);
    for (const Str& warning : source->directory()->warnings()) {
        std::printf("WARNING %s\n", warning.toStdString().c_str());
    }
    std::printf("%s %s: %zu parts, %zu states, %zu loads, %zu values\n", sum.failures == 0 ? "OPENED" : "FAILED",
                filename, source->directory()->partInfos(0).size(), sum.states, sum.loads, sum.values);
    return sum.failures == 0;
}

} // namespace

int main(int argc, char** argv) {
    bool areGood = true;
    for (int i = 1; i < argc; ++i) {
        areGood &= loadFile(argv[i]);
    }
    return areGood ? 0 : 1;
}
