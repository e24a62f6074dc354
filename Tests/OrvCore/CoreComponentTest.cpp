#include "OrvCore/CoreComponent.h"

#include "OrvCore/LogManager.h"

#include <gtest/gtest.h>

using orv::CoreComponent;

namespace {

class CoreComponentTest : public testing::Test {
protected:
    ~CoreComponentTest() override {
        CoreComponent::setLogManager(nullptr);
        rvf::LogManager::setInstance(nullptr);
    }
};

TEST_F(CoreComponentTest, LogManagerIsMadeOnceOnFirstNeed) {
    orv::LogManager* manager = CoreComponent::logManager();
    ASSERT_NE(manager, nullptr);
    EXPECT_EQ(CoreComponent::logManager(), manager);
    EXPECT_EQ(manager->refCount(), 1);
}

TEST_F(CoreComponentTest, FirstLogManagerKeepsTheLevelsSetBefore) {
    rvf::LogManager::instance()->logger("orv.comp.app")->setLevel(3);
    rvf::LogManager* inCharge = CoreComponent::logManager()->internal_rvfLogManager();
    EXPECT_EQ(inCharge, rvf::LogManager::instance());
    EXPECT_EQ(inCharge->logger("orv.comp.app")->level(), 3);
}

TEST_F(CoreComponentTest, LogManagerCanBeReplaced) {
    rvf::ref<orv::LogManager> manager = new orv::LogManager(new rvf::LogManager);
    CoreComponent::setLogManager(manager.get());
    EXPECT_EQ(CoreComponent::logManager(), manager.get());
    EXPECT_EQ(manager->refCount(), 2);
    EXPECT_NE(manager->internal_rvfLogManager(), rvf::LogManager::instance());
    CoreComponent::setLogManager(nullptr);
    EXPECT_EQ(manager->refCount(), 1);
    ASSERT_NE(CoreComponent::logManager(), nullptr);
    EXPECT_NE(CoreComponent::logManager(), manager.get());
}

TEST_F(CoreComponentTest, LogManagerOutlivesTheCoreThatHeldIt) {
    rvf::ref<orv::LogManager> manager = CoreComponent::logManager();
    CoreComponent::setLogManager(nullptr);
    EXPECT_NE(manager->internal_rvfLogManager(), nullptr);
}

} // namespace
