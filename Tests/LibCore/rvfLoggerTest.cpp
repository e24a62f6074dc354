#include "LibCore/rvfLogger.h"

#include "Tests/Support/LogRecorder.h"

#include <gtest/gtest.h>

using orvtest::LogMessage;
using orvtest::LogRecorder;
using rvf::CodeLocation;
using rvf::Logger;

namespace {

const CodeLocation here("LibCore/rvfLoggerTest", "void test()", "test", 1);

TEST(Logger, StartsAtWarnings) {
    Logger logger("orv.comp.app");
    EXPECT_EQ(logger.name(), "orv.comp.app");
    EXPECT_EQ(logger.level(), 2);
}

TEST(Logger, LevelsHaveTheirNumbers) {
    EXPECT_EQ(Logger::LEVEL_NONE, 0);
    EXPECT_EQ(Logger::LEVEL_ERROR, 1);
    EXPECT_EQ(Logger::LEVEL_WARNING, 2);
    EXPECT_EQ(Logger::LEVEL_INFO, 3);
}

struct LevelCase {
    int level;
    bool error;
    bool warning;
    bool info;
};

class LoggerLevel : public testing::TestWithParam<LevelCase> {};

TEST_P(LoggerLevel, DecidesWhatIsEnabledAndWhatPasses) {
    const LevelCase& expected = GetParam();
    LogRecorder recorder;
    Logger logger("name");
    logger.setLevel(expected.level);
    EXPECT_EQ(logger.level(), expected.level);
    EXPECT_EQ(logger.isErrorEnabled(), expected.error);
    EXPECT_EQ(logger.isWarningEnabled(), expected.warning);
    EXPECT_EQ(logger.isInfoEnabled(), expected.info);

    logger.error("e", here);
    EXPECT_EQ(recorder.take().size(), expected.error ? 1u : 0u);
    logger.warning("w", here);
    EXPECT_EQ(recorder.take().size(), expected.warning ? 1u : 0u);
    logger.info("i", here);
    EXPECT_EQ(recorder.take().size(), expected.info ? 1u : 0u);
}

INSTANTIATE_TEST_SUITE_P(All, LoggerLevel,
                         testing::Values(LevelCase{-1, false, false, false}, LevelCase{0, false, false, false},
                                         LevelCase{1, true, false, false}, LevelCase{2, true, true, false},
                                         LevelCase{3, true, true, true}, LevelCase{4, true, true, true}));

TEST(Logger, DeliversTheWholeMessage) {
    LogRecorder recorder;
    Logger logger("orv.comp.app");
    logger.setLevel(3);
    logger.error(L"\u00E4", here);
    logger.warning("w", here);
    logger.info("i", CodeLocation("F/U", "long", "short", 7));
    EXPECT_EQ(recorder.take(), (std::vector<LogMessage>{
                                   {1, "orv.comp.app", "\xC3\xA4", "LibCore/rvfLoggerTest", "void test()", "test"},
                                   {2, "orv.comp.app", "w", "LibCore/rvfLoggerTest", "void test()", "test"},
                                   {3, "orv.comp.app", "i", "F/U", "long", "short"},
                               }));
}

} // namespace
