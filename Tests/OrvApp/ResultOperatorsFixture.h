#pragma once

#include "OrvApp/MathFunctionCallBack.h"
#include "OrvApp/ResultOperators.h"
#include "OrvUnstructGrid/CustomResultGenerator.h"
#include "Tests/OrvApp/CatalogueTest.h"
#include "Tests/Support/MemoryModels.h"

#include <vector>

namespace orvtest {

/// Half of each number.
class Halving : public orv::app::MathFunctionCallBack {
public:
    Halving() : MathFunctionCallBack("half") {}

    double evaluate(double value) override {
        return value / 2;
    }
};

/// Starts with a model at its state 2 as the current one.
class ResultOperatorsTest : public CatalogueTest {
protected:
    ResultOperatorsTest() {
        orv::app::Models::instance()->add(modelOn(model.source.get(), 2).get());
    }

    bool compute(const orv::ug::ResultInfo& info) {
        return orv::ug::CustomResultGenerator::compute(model.source.get(), info, state);
    }

    orv::ug::DataResult* loaded(const orv::ug::ResultInfo& info, std::size_t geometry) {
        return state->results(state->geometry(geometry))->find(info);
    }

    MemoryModel model;
    orv::ug::DataState* state = model.state(2);
    Halving halving;

    const orv::ug::ResultInfo T = model.temperature;
    const orv::ug::ResultInfo P = model.pressure;
    const orv::ug::ResultInfo V = model.velocity;
    const orv::ug::ResultInfo D = model.displacement;
    const orv::ug::ResultInfo S = model.stress;
};

} // namespace orvtest
