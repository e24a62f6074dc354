#include "OrvUnstructGrid/WritePlan_p.h"

#include "OrvUnstructGrid/DataSourceMemory.h"
#include "OrvUnstructGrid/Error.h"
#include "OrvUnstructGrid/WriteSelection.h"
#include "Tests/OrvUnstructGrid/CustomResults.h"

#include <gtest/gtest.h>

using namespace orv::ug;
using Indexes = std::vector<std::vector<std::size_t>>;

namespace {

/// States 3, 1 and 2; parts 1, 2 and 3 in geometry 0 and part 1 in geometry 1; vector `u`, scalars `p` and `t`.
class WritePlanTest : public testing::Test {
protected:
    WritePlanTest() : source(new DataSourceMemory(1)) {
        source->setName("beam");
        source->addGeometry();
        source->addGeometry();
        for (const std::size_t geometry : {0, 0, 0, 1}) {
            source->addPart(geometry, "part");
        }
        for (const int id : {3, 1, 2}) {
            source->addState(StateInfo(id, "state", StateInfo::TIME, id));
        }
        u = source->addResult(VECTOR, "u", PER_NODE);
        p = source->addResult(SCALAR, "p", PER_NODE);
        t = source->addResult(SCALAR, "t", PER_NODE);
    }

    bool plan(const WriteSelection& selection) {
        error.clear();
        return makeWritePlan(selection, *source->directory(), &made, &error);
    }

    std::vector<int> stateIds() const {
        std::vector<int> ids;
        for (const StateInfo& info : made.states) {
            ids.push_back(info.id());
        }
        return ids;
    }

    std::string names() const {
        std::string text;
        for (const ResultInfo& info : made.results) {
            text += info.name().toStdString() + " ";
        }
        return text;
    }

    orv::PtrRef<DataSourceMemory> source;
    ResultInfo u, p, t;
    WritePlan made;
    Error error;
};

TEST_F(WritePlanTest, AnEmptySelectionIsEverything) {
    source->directory()->setCustomResultInfo(orvtest::sumOf("sum", {p, t}));
    ASSERT_TRUE(plan({}));
    EXPECT_EQ(stateIds(), (std::vector<int>{3, 1, 2}));
    EXPECT_EQ(names(), "p t sum u ");
    EXPECT_EQ(made.parts, (Indexes{{0, 1, 2}, {0}}));
}

TEST_F(WritePlanTest, TakesWhatIsNamedInTheDirectorysOrder) {
    WriteSelection selection;
    selection.stateIds = {2, 3, 2};
    selection.results = {u, t, u};
    selection.partIds = {3, 2};
    ASSERT_TRUE(plan(selection));
    EXPECT_EQ(stateIds(), (std::vector<int>{3, 2}));
    EXPECT_EQ(names(), "t u ");
    EXPECT_EQ(made.parts, (Indexes{{1, 2}, {}}));
}

TEST_F(WritePlanTest, ResultsGoByTheirNamesInTheDirectory) {
    ResultInfo renamed = p;
    renamed.setName("pressure");
    WriteSelection selection;
    selection.results = {renamed};
    ASSERT_TRUE(plan(selection));
    EXPECT_EQ(names(), "p ");
}

TEST_F(WritePlanTest, ToleratesNothingUnknown) {
    WriteSelection selection;
    selection.stateIds = {3, 4};
    EXPECT_FALSE(plan(selection));
    EXPECT_EQ(error.message(), "There is no state 4 in 'beam': its states are 3, 1, 2");
    EXPECT_FALSE(makeWritePlan(selection, *source->directory(), &made, nullptr));
    selection = WriteSelection();
    selection.results = {orvtest::sumOf("sum", {p, t})};
    EXPECT_FALSE(plan(selection));
    EXPECT_EQ(error.message(), "Result 'sum' is custom and not registered in 'beam': add it first");
    selection.results = {ResultInfo(SCALAR, 9, "far", PER_NODE)};
    EXPECT_FALSE(plan(selection));
    EXPECT_EQ(error.message(), "Result 'far' is not in 'beam': take one from its directory");
    selection = WriteSelection();
    selection.partIds = {1, 7, 8};
    EXPECT_FALSE(plan(selection));
    EXPECT_EQ(error.message(), "There is no part 7 in 'beam'");
}

} // namespace
