#include "OrvApp/AppLog_p.h"

#include "LibCore/rvfRef.h"
#include "Tests/Support/LogRecorder.h"

#include <gtest/gtest.h>

using orvtest::LogMessage;
using orvtest::LogRecorder;

namespace {

const rvf::CodeLocation here("Folder/Unit", "void f(int)", "f", 7);

TEST(AppLog, ErrorGoesToTheLayersLoggerWithItsPlace) {
    LogRecorder logs;
    orv::app::logError("why", here);
    EXPECT_EQ(logs.take(), (std::vector<LogMessage>{{1, "orv.comp.app", "why", "Folder/Unit", "void f(int)", "f"}}));
}

TEST(AppLog, ANumberStandsWhereTheMessageWantsIt) {
    LogRecorder logs;
    orv::app::logError("no %1 here", -17, here);
    EXPECT_EQ(logs.take(),
              (std::vector<LogMessage>{{1, "orv.comp.app", "no -17 here", "Folder/Unit", "void f(int)", "f"}}));
}

TEST(AppLog, NothingIsSaidBelowErrorLevel) {
    LogRecorder logs;
    rvf::Logger* logger = rvf::LogManager::instance()->logger("orv.comp.app");
    const int level = logger->level();
    logger->setLevel(rvf::Logger::LEVEL_NONE);
    orv::app::logError("why", here);
    orv::app::logError("why %1", 1, here);
    EXPECT_TRUE(logs.take().empty());

    logger->setLevel(rvf::Logger::LEVEL_ERROR);
    orv::app::logError("why", here);
    orv::app::logError("why %1", 1, here);
    EXPECT_EQ(logs.take().size(), 2u);
    logger->setLevel(level);
}

TEST(AppLog, WarningsAndInfoHaveTheirLevels) {
    LogRecorder logs;
    rvf::Logger* logger = rvf::LogManager::instance()->logger("orv.comp.app");
    const int level = logger->level();
    const auto logAll = [&] {
        orv::app::logWarning("plain", here);
        orv::app::logWarning("of %1", "a/b", here);
        orv::app::logWarning("no %1 of %2", 4, "a/b", here);
        orv::app::logInfo("news", here);
        return logs.take();
    };
    const std::vector<LogMessage> expected = {
        {2, "orv.comp.app", "plain", "Folder/Unit", "void f(int)", "f"},
        {2, "orv.comp.app", "of a/b", "Folder/Unit", "void f(int)", "f"},
        {2, "orv.comp.app", "no 4 of a/b", "Folder/Unit", "void f(int)", "f"},
        {3, "orv.comp.app", "news", "Folder/Unit", "void f(int)", "f"},
    };
    logger->setLevel(rvf::Logger::LEVEL_INFO);
    EXPECT_EQ(logAll(), expected);
    logger->setLevel(rvf::Logger::LEVEL_WARNING);
    EXPECT_EQ(logAll(), std::vector<LogMessage>(expected.begin(), expected.end() - 1));
    logger->setLevel(rvf::Logger::LEVEL_ERROR);
    EXPECT_TRUE(logAll().empty());
    logger->setLevel(level);
}

TEST(AppLog, LoggerIsFetchedAnewFromTheManagerInCharge) {
    LogRecorder logs;
    rvf::ref<rvf::LogManager> earlier = rvf::LogManager::instance();
    orv::app::logError("first", here);
    rvf::LogManager::setInstance(new rvf::LogManager);
    rvf::LogManager::instance()->logger("orv.comp.app")->setLevel(rvf::Logger::LEVEL_NONE);
    orv::app::logError("second", here);
    rvf::LogManager::setInstance(earlier.get());
    EXPECT_EQ(logs.take().size(), 1u);
}

} // namespace
