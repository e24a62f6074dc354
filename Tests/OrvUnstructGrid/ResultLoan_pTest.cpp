#include "OrvUnstructGrid/ResultLoan_p.h"

#include "OrvUnstructGrid/DataSourceMemory.h"
#include "OrvUnstructGrid/Error.h"
#include "Tests/OrvUnstructGrid/CustomResults.h"

#include <gtest/gtest.h>

using namespace orv::ug;

namespace {

/// States 1 and 2 with the scalar `t`, and `x` and `y`, which rest on it.
class ResultLoanTest : public testing::Test {
protected:
    ResultLoanTest() : source(new DataSourceMemory(1)) {
        source->addGeometry();
        source->addPart(0, "part")->nodes()->set({0, 0, 0}, {});
        t = source->addResult(SCALAR, "t", PER_NODE);
        for (const int id : {1, 2}) {
            source->addState(StateInfo(id, "", StateInfo::TIME, id));
            EXPECT_TRUE(source->setValues(id, t, 0, 0, std::vector<double>{5}, nullptr));
        }
        x = orvtest::sumOf("x", {t, t});
        y = orvtest::sumOf("y", {x, t});
        source->directory()->setCustomResultInfo(x);
        source->directory()->setCustomResultInfo(y);
    }

    bool isLoaded(int stateId, const ResultInfo& info) const {
        return source->state(source->stateIndex(stateId))->hasLoaded(info);
    }

    orv::PtrRef<DataSourceMemory> source;
    ResultInfo t, x, y;
    Error error;
};

TEST_F(ResultLoanTest, WhatItBroughtGoesWithIt) {
    {
        ResultLoan loan(source.get(), source->state(0));
        EXPECT_FALSE(isLoaded(1, y));
        ASSERT_TRUE(loan.take(y, &error)) << error.message();
        EXPECT_TRUE(isLoaded(1, y));
        EXPECT_TRUE(isLoaded(1, x));
        EXPECT_FALSE(isLoaded(2, y));
    }
    EXPECT_FALSE(isLoaded(1, y));
    EXPECT_FALSE(isLoaded(1, x));
    EXPECT_TRUE(isLoaded(1, t));
}

TEST_F(ResultLoanTest, TheNextResultTakesThePlaceOfTheLast) {
    ResultLoan loan(source.get(), source->state(0));
    ASSERT_TRUE(loan.take(y, &error));
    ASSERT_TRUE(loan.take(x, &error));
    EXPECT_TRUE(isLoaded(1, x));
    EXPECT_FALSE(isLoaded(1, y));
    loan.giveBack();
    EXPECT_FALSE(isLoaded(1, x));
}

TEST_F(ResultLoanTest, WhatWasThereStays) {
    ResultLoan first(source.get(), source->state(0));
    ASSERT_TRUE(first.take(x, &error));
    {
        ResultLoan second(source.get(), source->state(0));
        ASSERT_TRUE(second.take(y, &error));
        ASSERT_TRUE(second.take(x, &error));
        EXPECT_FALSE(isLoaded(1, y));
    }
    EXPECT_TRUE(isLoaded(1, x));
}

TEST_F(ResultLoanTest, SaysWhyAResultCannotBeLoaded) {
    ResultLoan loan(source.get(), source->state(0));
    EXPECT_FALSE(loan.take(orvtest::sumOf("z", {t}), &error));
    EXPECT_EQ(error.message(), "Result 'z' is custom and not registered in the data source: add it first");
    EXPECT_FALSE(loan.take(orvtest::sumOf("z", {t}), nullptr));
}

} // namespace
