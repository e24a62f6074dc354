#include "OrvCore/LogManager.h"

#include <gtest/gtest.h>

namespace {

TEST(LogManager, HoldsTheCoresManager) {
    rvf::ref<rvf::LogManager> inner = new rvf::LogManager;
    {
        rvf::ref<orv::LogManager> manager = new orv::LogManager(inner.get());
        EXPECT_EQ(manager->internal_rvfLogManager(), inner.get());
        EXPECT_EQ(inner->refCount(), 2);
    }
    EXPECT_EQ(inner->refCount(), 1);
}

TEST(LogManager, MayHoldNothing) {
    orv::LogManager manager(nullptr);
    EXPECT_EQ(manager.internal_rvfLogManager(), nullptr);
}

} // namespace
