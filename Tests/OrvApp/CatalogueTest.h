#pragma once

#include "OrvApp/Models.h"
#include "OrvApp/Parts.h"
#include "OrvApp/Plots.h"
#include "OrvApp/Views.h"
#include "OrvCore/Defines.h"
#include "OrvCore/PtrRef.h"
#include "OrvUnstructGrid/DataSourceMemory.h"
#include "OrvUnstructGrid/UnstructGridModel.h"
#include "Tests/Support/AssertRecorder.h"
#include "Tests/Support/LogRecorder.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

namespace orvtest {

/// Starts and ends each test with empty catalogues, and fails it for assertions and messages that it did not look at.
class CatalogueTest : public testing::Test {
protected:
    CatalogueTest() {
        empty();
    }

    ~CatalogueTest() override {
        empty();
    }

    void TearDown() override {
        EXPECT_EQ(asserts.take(), std::vector<FailedAssert>());
        EXPECT_EQ(logs.take(), std::vector<LogMessage>());
    }

    AssertRecorder asserts;
    LogRecorder logs;

private:
    static void empty() {
        orv::app::Models::instance()->closeAll();
        orv::app::Parts::instance()->setCurrentIndex(orv::UNDEFINED_SIZE_T);
        orv::app::Views* views = orv::app::Views::instance();
        while (views->count() > 0) {
            views->setCurrentIndex(0);
            views->removeCurrent();
        }
        orv::app::Plots::instance()->removeAll();
    }
};

inline FailedAssert failed(const std::string& file, const std::string& expression,
                           std::optional<std::string> message = std::nullopt) {
    return {file, expression, std::move(message)};
}

/// A source with one geometry for each list of part names, and states with the ids and names given. Each part has two
/// nodes and no elements.
inline orv::PtrRef<orv::ug::DataSourceMemory> memorySource(const std::vector<std::vector<std::string>>& partNames,
                                                           const std::vector<std::pair<int, std::string>>& states) {
    orv::PtrRef<orv::ug::DataSourceMemory> source = new orv::ug::DataSourceMemory(1);
    for (size_t g = 0; g < partNames.size(); ++g) {
        source->addGeometry();
        for (const std::string& name : partNames[g]) {
            source->addPart(g, name)->nodes()->set({0, 0, 0, 1, 0, 0}, {});
        }
    }
    for (const auto& [id, name] : states) {
        source->addState(orv::ug::StateInfo(id, name, orv::ug::StateInfo::TIME, id));
    }
    return source;
}

/// A model on a source, at the state of that id; -1 for none.
inline orv::PtrRef<orv::ug::UnstructGridModel> modelOn(orv::ug::DataSource* source, int stateId) {
    orv::PtrRef<orv::ug::UnstructGridModel> model = new orv::ug::UnstructGridModel;
    model->setDataSource(source);
    model->modelSpec().setStateId(stateId);
    return model;
}

} // namespace orvtest
