#include "LibCore/rvfAssert.h"

#include "Tests/Support/AssertRecorder.h"

#include <gtest/gtest.h>

using orvtest::AssertRecorder;
using orvtest::FailedAssert;

namespace {

const std::string here = "LibCore/rvfAssertTest";

TEST(Assert, ReportsTheTestAsWrittenAndGoesOn) {
    AssertRecorder recorder;
    int index = 3;
    RVF_ASSERT(index < 3);
    EXPECT_EQ(recorder.take(), (std::vector<FailedAssert>{{here, "index < 3", std::nullopt}}));
}

TEST(Assert, ReportsNothingWhenTheTestHolds) {
    AssertRecorder recorder;
    RVF_ASSERT(1 < 2);
    RVF_ASSERT_MSG(1 < 2, "unused");
    EXPECT_TRUE(recorder.take().empty());
}

TEST(Assert, PassesTheMessage) {
    AssertRecorder recorder;
    RVF_ASSERT_MSG(false, "why");
    EXPECT_EQ(recorder.take(), (std::vector<FailedAssert>{{here, "false", "why"}}));
}

TEST(Assert, PlainFailureHasNoExpression) {
    AssertRecorder recorder;
    RVF_FAIL_MSG("unhandled");
    EXPECT_EQ(recorder.take(), (std::vector<FailedAssert>{{here, std::nullopt, "unhandled"}}));
}

TEST(Assert, TextsTellWhatTheCompilerSaw) {
    AssertRecorder recorder;
    const int* model = nullptr;
    RVF_ASSERT(model != NULL);
    EXPECT_EQ(recorder.take(), (std::vector<FailedAssert>{{here, "model != __null", std::nullopt}}));
}

TEST(Assert, TestWithACommaIsOneTest) {
    AssertRecorder recorder;
    RVF_ASSERT(std::pair<int, int>(1, 2).first == 2);
    EXPECT_EQ(recorder.take().at(0).expression, "std::pair<int, int>(1, 2).first == 2");
}

TEST(Assert, HandlerAnswersZero) {
    AssertRecorder recorder;
    EXPECT_EQ(rvf::Assert::handleFailedAssert("Folder/Unit", 7, "expression", "message"), 0);
    EXPECT_EQ(recorder.take(), (std::vector<FailedAssert>{{"Folder/Unit", "expression", "message"}}));
}

TEST(Assert, ActionIsPlatformDefaultUntilSet) {
    EXPECT_EQ(rvf::Assert::failedAssertAction(), rvf::Assert::PLATFORM_DEFAULT);
}

TEST(Assert, ActionsHaveTheirNumbers) {
    EXPECT_EQ(rvf::Assert::PLATFORM_DEFAULT, 0);
    EXPECT_EQ(rvf::Assert::ABORT, 1);
    EXPECT_EQ(rvf::Assert::BREAK, 2);
    EXPECT_EQ(rvf::Assert::CONTINUE, 3);
}

TEST(AssertDeathTest, PlatformDefaultAndAbortEndTheProcess) {
    for (auto action : {rvf::Assert::PLATFORM_DEFAULT, rvf::Assert::ABORT}) {
        EXPECT_EXIT(
            {
                rvf::Assert::setFailedAssertAction(action);
                RVF_ASSERT_MSG(2 < 1, "why");
            },
            testing::KilledBySignal(SIGABRT), "LibCore/rvfAssertTest:[0-9]+: assertion failed: 2 < 1: why");
    }
}

TEST(AssertDeathTest, AProcessThatAbortsReportsInSpiteOfAnObserver) {
    EXPECT_EXIT(
        {
            rvf::Assert::setFailedAssertObserver([](const char*, int, const char*, const char*) {});
            rvf::Assert::setFailedAssertAction(rvf::Assert::ABORT);
            RVF_ASSERT(2 < 1);
        },
        testing::KilledBySignal(SIGABRT), "assertion failed: 2 < 1");
}

TEST(AssertDeathTest, BreakRaisesTheTrap) {
    EXPECT_EXIT(
        {
            rvf::Assert::setFailedAssertAction(rvf::Assert::BREAK);
            RVF_ASSERT(2 < 1);
        },
        testing::KilledBySignal(SIGTRAP), "assertion failed: 2 < 1");
}

TEST(AssertDeathTest, ContinueReportsOnStandardErrorWithoutAnObserver) {
    EXPECT_EXIT(
        {
            rvf::Assert::setFailedAssertAction(rvf::Assert::CONTINUE);
            RVF_ASSERT(2 < 1);
            std::exit(0);
        },
        testing::ExitedWithCode(0), "assertion failed: 2 < 1");
}

} // namespace
