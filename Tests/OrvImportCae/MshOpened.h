#pragma once

#include "OrvImportCae/DataSourceCae.h"
#include "OrvUnstructGrid/DataResultGroup.h"
#include "OrvUnstructGrid/DataState.h"
#include "OrvUnstructGrid/DataStateSpec.h"
#include "OrvUnstructGrid/Error.h"
#include "Tests/OrvImportCae/FrdSamples.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace orvtest {

/// A file that is open, and what its loads give.
struct MshOpened {
    orv::PtrRef<orv::imp::cae::DataSourceCae> source{new orv::imp::cae::DataSourceCae(1)};

    explicit MshOpened(const std::string& path) {
        orv::ug::Error error;
        EXPECT_TRUE(source->openFiles({path}, &error)) << error.message();
    }

    const orv::ug::DataGeometry* geometry() const {
        return source->state(0)->geometry(0);
    }

    const orv::ug::DataPart* part(std::size_t index) const {
        return geometry()->part(index);
    }

    std::vector<std::string> partNames() const {
        std::vector<std::string> names;
        for (const orv::ug::PartInfo& info : source->directory()->partInfos(0)) {
            names.push_back(info.name().toStdString());
        }
        return names;
    }

    std::vector<std::string> stateNames() const {
        std::vector<std::string> names;
        for (const orv::ug::StateInfo& info : source->directory()->stateInfos()) {
            names.push_back(info.name().toStdString());
        }
        return names;
    }

    std::vector<std::string> warnings() const {
        std::vector<std::string> texts;
        for (const orv::Str& warning : source->directory()->warnings()) {
            const std::string text = warning.toStdString();
            texts.push_back(text.substr(text.rfind('/') + 1));
        }
        return texts;
    }

    orv::ug::ResultInfo info(orv::ug::ResultType type, const std::string& name) const {
        for (const orv::ug::ResultInfo& candidate : source->directory()->resultInfos(type)) {
            if (candidate.name() == orv::Str(name)) {
                return candidate;
            }
        }
        return orv::ug::ResultInfo();
    }

    /// The values of a result in the state with that id on one part; nothing, and a text, when the load fails.
    std::vector<double> load(orv::ug::ResultType type, const std::string& name, int stateId = 1, std::size_t part = 0,
                             std::string* message = nullptr) {
        orv::ug::DataStateSpec spec;
        spec.setResultIds({info(type, name)});
        orv::ug::Error error;
        const bool isLoaded = source->loadDataState(stateId, spec, &error);
        const std::string text = error.message().toStdString();
        EXPECT_EQ(isLoaded, text.empty());
        EXPECT_TRUE(isLoaded || message) << text;
        if (message) {
            *message = text.substr(text.rfind('/') + 1);
        }
        orv::ug::DataState* state = source->state(source->stateIndex(stateId));
        const orv::ug::DataResult* result = state->results(state->geometry(0))->find(info(type, name));
        if (!isLoaded || !result) {
            return {};
        }
        const std::span<const double> span = result->values(part)->span();
        return std::vector<double>(span.begin(), span.end());
    }
};

} // namespace orvtest
