#include "OrvUnstructGrid/ErrorTexts_p.h"

#include "OrvUnstructGrid/DataSourceDirectory.h"
#include "Tests/OrvUnstructGrid/CustomResults.h"

#include <gtest/gtest.h>

using namespace orv::ug;
using orvtest::sumOf;

namespace {

class ErrorTextsTest : public testing::Test {
protected:
    void addStates(int count) {
        for (int id = 1; id <= count; ++id) {
            directory.addStateInfo(StateInfo(10 * id, id == 1 ? "first" : "", StateInfo::TIME, id));
        }
    }

    void setFile() {
        directory.setSimulationInfo(SimulationInfo("beam.frd"));
    }

    DataSourceDirectory directory{nullptr};
    const ResultInfo a = ResultInfo(SCALAR, 1, "a", PER_NODE);
    const ResultInfo b = ResultInfo(SCALAR, 2, "b", PER_NODE);
};

TEST_F(ErrorTextsTest, SourceIsCalledByItsFile) {
    EXPECT_EQ(sourceText(directory), "the data source");
    setFile();
    EXPECT_EQ(sourceText(directory), "'beam.frd'");
}

TEST_F(ErrorTextsTest, StateIsCalledByItsNameOrId) {
    setFile();
    addStates(2);
    EXPECT_EQ(stateText(directory, 10), "state 'first' of 'beam.frd'");
    EXPECT_EQ(stateText(directory, 20), "state 20 of 'beam.frd'");
}

TEST_F(ErrorTextsTest, UnknownStateListsWhatThereIs) {
    EXPECT_EQ(unknownStateText(directory, 5), "There is no state 5 in the data source: it has no states");
    setFile();
    addStates(8);
    EXPECT_EQ(unknownStateText(directory, 5),
              "There is no state 5 in 'beam.frd': its states are 10, 20, 30, 40, 50, 60, 70, 80");
}

TEST_F(ErrorTextsTest, LongListOfStatesIsCut) {
    addStates(9);
    EXPECT_EQ(unknownStateText(directory, 5),
              "There is no state 5 in the data source: its states are 10, 20, 30, 40, 50, 60, 70, ..., 90");
}

TEST_F(ErrorTextsTest, UnknownResult) {
    setFile();
    EXPECT_EQ(unknownResultText(directory, a), "Result 'a' is not in 'beam.frd': take one from its directory");
    EXPECT_EQ(unknownResultText(directory, sumOf("a+b", {a, b})),
              "Result 'a+b' is custom and not registered in 'beam.frd': add it first");
    EXPECT_EQ(unknownResultText(directory, ResultInfo()),
              "An invalid result was asked for: take one from the directory of 'beam.frd'");
}

TEST_F(ErrorTextsTest, UnreadableResult) {
    setFile();
    addStates(1);
    directory.addResultInfo(a);
    EXPECT_EQ(unreadableResultText(directory, 10, a, a),
              "Result 'a' has no values in state 'first' of 'beam.frd': choose a state that has it");
    EXPECT_EQ(
        unreadableResultText(directory, 10, sumOf("x", {a}), a),
        "Result 'x' rests on 'a', which has no values in state 'first' of 'beam.frd': choose a state that has it");
    EXPECT_EQ(unreadableResultText(directory, 10, sumOf("x", {b}), b),
              "Result 'x' rests on 'b', which is not in 'beam.frd': build it from results that are");
    EXPECT_EQ(unreadableResultText(directory, 10, sumOf("x", {ResultInfo()}), ResultInfo()),
              "Result 'x' rests on '', which is not in 'beam.frd': build it from results that are");
}

TEST_F(ErrorTextsTest, FailedRead) {
    setFile();
    addStates(1);
    EXPECT_EQ(failedReadText(directory, 10, a),
              "Result 'a' could not be read for state 'first' of 'beam.frd': see whether the file is intact");
}

TEST_F(ErrorTextsTest, FailedComputation) {
    setFile();
    addStates(1);
    EXPECT_EQ(
        failedComputationText(directory, 10, sumOf("x", {a, b})),
        "Result 'x' could not be computed for state 'first' of 'beam.frd': see whether types, mappings and parts of "
        "its arguments fit together, which are 'a', 'b'");
    std::vector<ResultInfo> none;
    orv::PtrRef<CustomResultGenerator> generator(new CustomResultGenerator(0));
    EXPECT_EQ(failedComputationText(directory, 10, ResultInfo(SCALAR, "7", PER_NODE, none, generator.get())),
              "Result '7' could not be computed for state 'first' of 'beam.frd': its generator gave up");
    EXPECT_EQ(failedComputationText(directory, 10, ResultInfo(SCALAR, "7", PER_NODE, none, nullptr)),
              "Result '7' could not be computed for state 'first' of 'beam.frd': it was made without a generator");
}

TEST_F(ErrorTextsTest, NamesAreNoPlaceholders) {
    directory.setSimulationInfo(SimulationInfo("%2.frd"));
    EXPECT_EQ(unknownResultText(directory, ResultInfo(SCALAR, 1, "%1", PER_NODE)),
              "Result '%1' is not in '%2.frd': take one from its directory");
}

} // namespace
