#include "OrvCore/InitializationOptions.h"

#include "OrvCore/InitializationOptions_p.h"
#include "Tests/Support/AssertRecorder.h"

#include <gtest/gtest.h>

using orv::InitializationOptions;
using orv::InitializationOptionsPrivate;
using orvtest::AssertRecorder;
using orvtest::FailedAssert;

namespace {

int toRvf(int action) {
    return InitializationOptionsPrivate::toRvfFailedAssertAction(InitializationOptions::FailedAssertAction(action));
}

TEST(InitializationOptions, ActionsHaveTheirNumbers) {
    EXPECT_EQ(InitializationOptions::PLATFORM_DEFAULT, 0);
    EXPECT_EQ(InitializationOptions::CONTINUE, 1);
    EXPECT_EQ(InitializationOptions::ABORT, 2);
    EXPECT_EQ(InitializationOptions::BREAK, 3);
}

TEST(InitializationOptions, KeepTheAction) {
    InitializationOptions options;
    EXPECT_EQ(options.failedAssertAction(), InitializationOptions::PLATFORM_DEFAULT);
    options.setFailedAssertAction(InitializationOptions::BREAK);
    EXPECT_EQ(options.failedAssertAction(), InitializationOptions::BREAK);
    EXPECT_EQ(InitializationOptions(InitializationOptions::CONTINUE).failedAssertAction(),
              InitializationOptions::CONTINUE);
}

TEST(InitializationOptions, EachActionHasItsNumberInTheCore) {
    AssertRecorder recorder;
    EXPECT_EQ(toRvf(0), 0);
    EXPECT_EQ(toRvf(1), 3);
    EXPECT_EQ(toRvf(2), 1);
    EXPECT_EQ(toRvf(3), 2);
    EXPECT_TRUE(recorder.take().empty());
}

TEST(InitializationOptions, EachActionMeansTheSameInTheCore) {
    EXPECT_EQ(toRvf(InitializationOptions::PLATFORM_DEFAULT), rvf::Assert::PLATFORM_DEFAULT);
    EXPECT_EQ(toRvf(InitializationOptions::CONTINUE), rvf::Assert::CONTINUE);
    EXPECT_EQ(toRvf(InitializationOptions::ABORT), rvf::Assert::ABORT);
    EXPECT_EQ(toRvf(InitializationOptions::BREAK), rvf::Assert::BREAK);
}

TEST(InitializationOptions, UnknownActionIsAFailureAndTheDefault) {
    AssertRecorder recorder;
    for (int action : {4, 99, -1}) {
        EXPECT_EQ(toRvf(action), 0);
        EXPECT_EQ(recorder.take(),
                  (std::vector<FailedAssert>{{"OrvApp/../OrvCore/InitializationOptions_p", std::nullopt,
                                              "Unhandled initialization options failed assert action"}}));
    }
}

} // namespace
