#include "OrvCore/Instance.h"

#include <gtest/gtest.h>

using orv::InitializationOptions;
using orv::Instance;

namespace {

TEST(Instance, HasTheDefaultsOfItsHeaders) {
    Instance instance;
    EXPECT_EQ(instance.version(), 199424u); // 3 * 65536 + 11 * 256
    EXPECT_EQ(instance.initializationOptions().failedAssertAction(), InitializationOptions::PLATFORM_DEFAULT);
}

TEST(Instance, KeepsWhatItIsGiven) {
    InitializationOptions options;
    options.setFailedAssertAction(InitializationOptions::CONTINUE);
    Instance instance(options, 7);
    EXPECT_EQ(instance.version(), 7u);
    EXPECT_EQ(instance.initializationOptions().failedAssertAction(), InitializationOptions::CONTINUE);
    options.setFailedAssertAction(InitializationOptions::ABORT);
    EXPECT_EQ(instance.initializationOptions().failedAssertAction(), InitializationOptions::CONTINUE);
}

} // namespace
