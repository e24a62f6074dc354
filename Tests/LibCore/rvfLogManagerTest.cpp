#include "LibCore/rvfLogManager.h"

#include "LibCore/rvfLogDestination.h"
#include "LibCore/rvfRef.h"
#include "Tests/Support/LogRecorder.h"

#include <gtest/gtest.h>

#include <cstdlib>

using orvtest::LogRecorder;
using rvf::CodeLocation;
using rvf::Logger;
using rvf::LogManager;

namespace {

class LogManagerTest : public testing::Test {
protected:
    ~LogManagerTest() override {
        LogManager::setInstance(nullptr);
        LogManager::setDestination(nullptr);
    }
};

TEST_F(LogManagerTest, InstanceIsMadeOnceOnFirstNeed) {
    LogManager* manager = LogManager::instance();
    ASSERT_NE(manager, nullptr);
    EXPECT_EQ(LogManager::instance(), manager);
    EXPECT_EQ(manager->refCount(), 1);
}

TEST_F(LogManagerTest, InstanceTakesAReferenceAndGivesItBack) {
    rvf::ref<LogManager> manager = new LogManager;
    LogManager::setInstance(manager.get());
    EXPECT_EQ(LogManager::instance(), manager.get());
    EXPECT_EQ(manager->refCount(), 2);
    LogManager::setInstance(nullptr);
    EXPECT_EQ(manager->refCount(), 1);
}

TEST_F(LogManagerTest, NullInstanceStartsAfresh) {
    rvf::ref<LogManager> earlier = LogManager::instance();
    LogManager::setInstance(nullptr);
    ASSERT_NE(LogManager::instance(), nullptr);
    EXPECT_NE(LogManager::instance(), earlier.get());
}

TEST_F(LogManagerTest, LoggerIsMadeOncePerName) {
    rvf::ref<LogManager> manager = new LogManager;
    Logger* first = manager->logger("first");
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->name(), "first");
    EXPECT_NE(manager->logger("second"), first);
    EXPECT_NE(manager->logger("First"), first);
    for (int i = 0; i < 100; ++i) {
        manager->logger(rvf::String("logger %1").arg(i));
    }
    EXPECT_EQ(manager->logger("first"), first);
}

TEST_F(LogManagerTest, LoggerKeepsItsLevel) {
    rvf::ref<LogManager> manager = new LogManager;
    manager->logger("name")->setLevel(1);
    EXPECT_EQ(manager->logger("name")->level(), 1);
    EXPECT_EQ(manager->logger("other")->level(), 2);
}

TEST_F(LogManagerTest, DestinationServesAllManagers) {
    LogRecorder recorder;
    CodeLocation here("F/U", "f()", "f", 1);
    rvf::ref<LogManager> other = new LogManager;
    LogManager::instance()->logger("a")->warning("1", here);
    other->logger("b")->error("2", here);
    EXPECT_EQ(recorder.take(),
              (std::vector<orvtest::LogMessage>{{2, "a", "1", "F/U", "f()", "f"}, {1, "b", "2", "F/U", "f()", "f"}}));
}

TEST_F(LogManagerTest, DefaultDestinationWritesALineToStandardError) {
    Logger* logger = LogManager::instance()->logger("orv.comp.app");
    logger->setLevel(3);
    CodeLocation here("OrvApp/Models_p", "bool f(int)", "f", 212);
    testing::internal::CaptureStderr();
    logger->error(L"\u00E4 lost", here);
    logger->warning("odd", here);
    logger->info("fine", here);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "error [orv.comp.app] \xC3\xA4 lost (OrvApp/Models_p:212)\n"
                                                      "warning [orv.comp.app] odd (OrvApp/Models_p:212)\n"
                                                      "info [orv.comp.app] fine (OrvApp/Models_p:212)\n");
}

TEST_F(LogManagerTest, NullDestinationBringsTheDefaultBack) {
    rvf::LogDestination* standard = LogManager::destination();
    ASSERT_NE(standard, nullptr);
    LogRecorder recorder;
    EXPECT_NE(LogManager::destination(), standard);
    LogManager::setDestination(nullptr);
    EXPECT_EQ(LogManager::destination(), standard);
    testing::internal::CaptureStderr();
    LogManager::instance()->logger("a")->error("text", CodeLocation("F/U", "f()", "f", 1));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "error [a] text (F/U:1)\n");
    EXPECT_TRUE(recorder.take().empty());
}

TEST_F(LogManagerTest, RecordersNest) {
    CodeLocation here("F/U", "f()", "f", 1);
    LogRecorder outer;
    {
        LogRecorder inner;
        LogManager::instance()->logger("a")->error("inside", here);
        EXPECT_EQ(inner.take().size(), 1u);
    }
    LogManager::instance()->logger("a")->error("outside", here);
    EXPECT_EQ(outer.take().at(0).message, "outside");
}

void logLastWords() {
    LogManager::instance()->logger("a")->error("last words", CodeLocation("F/U", "f()", "f", 1));
}

TEST(LogManagerDeathTest, LogsWhileTheProcessEnds) {
    // A process of its own, in which nobody has logged before the handler is registered.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            std::atexit(logLastWords);
            LogManager::instance()->logger("a")->error("first words", CodeLocation("F/U", "f()", "f", 1));
            std::exit(0);
        },
        testing::ExitedWithCode(0), "first words.*\nerror \\[a\\] last words");
}

} // namespace
