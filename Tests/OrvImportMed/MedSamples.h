#pragma once

#include "OrvImportCae/DataSourceCae.h"
#include "OrvUnstructGrid/DataResultGroup.h"
#include "OrvUnstructGrid/DataStateSpec.h"
#include "OrvUnstructGrid/Error.h"
#include "Tests/Support/ScratchFolder.h"
#include "Tests/Support/TestPaths.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace orvtest {

/// Tests/data/make_med.sh writes them.
inline std::string medFile(const std::string& name) {
    return testDataFolder() + "/med/" + name;
}

/// What an independent reader finds in a file of these.
inline nlohmann::json expectedOf(const std::string& file) {
    return nlohmann::json::parse(readWholeFile(medFile(file.substr(0, file.find('.')) + ".json")));
}

inline orv::PtrRef<orv::imp::cae::DataSourceCae> openMed(const std::string& path) {
    orv::PtrRef<orv::imp::cae::DataSourceCae> source(new orv::imp::cae::DataSourceCae(1));
    orv::ug::Error error;
    EXPECT_TRUE(source->openFiles({orv::Str(path)}, &error)) << error.message();
    return source;
}

/// All results of the source, kind after kind.
inline std::vector<orv::ug::ResultInfo> allResults(orv::imp::cae::DataSourceCae& source) {
    std::vector<orv::ug::ResultInfo> all;
    for (const auto type : {orv::ug::SCALAR, orv::ug::VECTOR, orv::ug::DISPLACEMENT, orv::ug::SYMMETRIC_TENSOR}) {
        for (const orv::ug::ResultInfo& info : source.directory()->resultInfos(type)) {
            all.push_back(info);
        }
    }
    return all;
}

/// The values of a result in a state, read now; null, with the error, when that fails.
inline orv::ug::DataResult* loadMed(orv::imp::cae::DataSourceCae& source, orv::ug::DataState& state,
                                    const orv::ug::ResultInfo& info, orv::ug::Error* error) {
    orv::ug::DataStateSpec spec;
    spec.setResultIds({info});
    return source.loadDataState(state.id(), spec, error) ? state.results(state.geometry(0))->find(info) : nullptr;
}

} // namespace orvtest
