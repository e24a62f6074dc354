#include "OrvApp/AppComponent.h"

#include "LibCore/rvfLogManager.h"
#include "LibCore/rvfRef.h"
#include "OrvApp/Models.h"
#include "OrvApp/Parts.h"
#include "OrvApp/Results.h"
#include "OrvApp/States.h"
#include "OrvCore/CoreComponent.h"
#include "OrvCore/InitializationOptions.h"
#include "OrvCore/Instance.h"
#include "OrvCore/LogManager.h"
#include "OrvUnstructGrid/Progress.h"
#include "Tests/Support/AssertRecorder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>

using orv::Instance;
using orv::app::AppComponent;
using orvtest::AssertRecorder;
using orvtest::FailedAssert;
using Options = orv::InitializationOptions;

namespace {

/// There is no way back from initialize(), so each test that calls it runs in a process of its own.
template <class Body>
void inOwnProcess(Body body) {
    EXPECT_EXIT(
        {
            body();
            std::exit(testing::Test::HasFailure() ? 1 : 0);
        },
        testing::ExitedWithCode(0), "");
}

const FailedAssert versionMismatch = {"OrvApp/AppComponent", "instance->version() == version()",
                                      "Component version mismatch"};

class Bar : public orv::ug::Progress {
public:
    void setPercent(int) override {}
};

TEST(AppComponent, HasAVersion) {
    EXPECT_EQ(AppComponent::version(), 199424u); // (3 << 16) | (11 << 8) = 196608 + 2816
    EXPECT_EQ(AppComponent::versionString(), "3.11.0");
    EXPECT_EQ(Instance().version(), AppComponent::version());
}

TEST(AppComponent, RefusesANullInstance) {
    AssertRecorder asserts;
    rvf::LogManager* manager = rvf::LogManager::instance();
    EXPECT_FALSE(AppComponent::initialize(nullptr));
    EXPECT_EQ(asserts.take(), (std::vector<FailedAssert>{{"OrvApp/AppComponent", "instance", std::nullopt}}));
    EXPECT_FALSE(AppComponent::isInitialized());
    EXPECT_EQ(rvf::LogManager::instance(), manager);
    EXPECT_EQ(rvf::Assert::failedAssertAction(), rvf::Assert::CONTINUE);
}

TEST(AppComponentDeathTest, TakesOverTheInstancesActionAndTheCoresLogManager) {
    inOwnProcess([] {
        rvf::ref<rvf::LogManager> manager = new rvf::LogManager;
        orv::CoreComponent::setLogManager(new orv::LogManager(manager.get()));
        Instance instance(Options::BREAK);

        EXPECT_FALSE(AppComponent::isInitialized());
        EXPECT_TRUE(AppComponent::initialize(&instance));
        EXPECT_TRUE(AppComponent::isInitialized());
        EXPECT_EQ(rvf::Assert::failedAssertAction(), rvf::Assert::BREAK);
        EXPECT_EQ(rvf::LogManager::instance(), manager.get());
    });
}

TEST(AppComponentDeathTest, MapsTheFourActions) {
    const std::pair<int, int> actions[] = {{0, 0}, {1, 3}, {2, 1}, {3, 2}};
    for (auto [option, action] : actions) {
        inOwnProcess([option = option, action = action] {
            Instance instance(static_cast<Options::FailedAssertAction>(option));
            AppComponent::initialize(&instance);
            EXPECT_EQ(rvf::Assert::failedAssertAction(), action);
        });
    }
}

TEST(AppComponentDeathTest, AnUnknownActionIsAssertedAndSetsTheDefault) {
    inOwnProcess([] {
        AssertRecorder asserts;
        Instance instance(static_cast<Options::FailedAssertAction>(4));
        EXPECT_TRUE(AppComponent::initialize(&instance));
        EXPECT_EQ(asserts.take(),
                  (std::vector<FailedAssert>{{"OrvApp/../OrvCore/InitializationOptions_p", std::nullopt,
                                              "Unhandled initialization options failed assert action"}}));
        EXPECT_EQ(rvf::Assert::failedAssertAction(), 0);
    });
}

TEST(AppComponentDeathTest, SecondCallChangesNothing) {
    inOwnProcess([] {
        Instance first(Options::CONTINUE);
        Instance second(Options::ABORT);
        EXPECT_TRUE(AppComponent::initialize(&first));
        rvf::LogManager* manager = rvf::LogManager::instance();
        orv::CoreComponent::setLogManager(new orv::LogManager(new rvf::LogManager));

        EXPECT_TRUE(AppComponent::initialize(&second));
        EXPECT_EQ(rvf::Assert::failedAssertAction(), rvf::Assert::CONTINUE);
        EXPECT_EQ(rvf::LogManager::instance(), manager);
    });
}

TEST(AppComponentDeathTest, VersionIsCheckedOnEveryCallAndStopsNothing) {
    inOwnProcess([] {
        AssertRecorder asserts;
        Instance older(Options::CONTINUE, AppComponent::version() - 1);
        EXPECT_TRUE(AppComponent::initialize(&older));
        EXPECT_EQ(asserts.take(), std::vector<FailedAssert>{versionMismatch});
        EXPECT_TRUE(AppComponent::isInitialized());

        EXPECT_TRUE(AppComponent::initialize(&older));
        EXPECT_EQ(asserts.take(), std::vector<FailedAssert>{versionMismatch});
    });
}

TEST(AppComponentDeathTest, ANullInstanceIsRefusedAfterInitialisationToo) {
    inOwnProcess([] {
        AssertRecorder asserts;
        Instance instance(Options::CONTINUE);
        AppComponent::initialize(&instance);
        EXPECT_FALSE(AppComponent::initialize(nullptr));
        EXPECT_EQ(asserts.take(), (std::vector<FailedAssert>{{"OrvApp/AppComponent", "instance", std::nullopt}}));
        EXPECT_TRUE(AppComponent::isInitialized());
    });
}

TEST(AppComponentDeathTest, AMissingLogManagerIsAssertedAndStopsNothing) {
    inOwnProcess([] {
        AssertRecorder asserts;
        rvf::ref<rvf::LogManager> earlier = rvf::LogManager::instance();
        orv::CoreComponent::setLogManager(new orv::LogManager(nullptr));
        Instance instance(Options::CONTINUE);
        EXPECT_TRUE(AppComponent::initialize(&instance));
        EXPECT_EQ(asserts.take(),
                  (std::vector<FailedAssert>{{"OrvApp/AppComponent", "rvfLogManagerInst.notNull()", std::nullopt}}));
        EXPECT_TRUE(AppComponent::isInitialized());
        // Null was handed over, so the next instance is a new one.
        EXPECT_NE(rvf::LogManager::instance(), earlier.get());
    });
}

TEST(AppComponentDeathTest, TheActionIsInForceBeforeTheLogManagerIsLookedAt) {
    EXPECT_EXIT(
        {
            rvf::Assert::setFailedAssertAction(rvf::Assert::CONTINUE);
            orv::CoreComponent::setLogManager(new orv::LogManager(nullptr));
            Instance instance(Options::BREAK);
            AppComponent::initialize(&instance);
        },
        testing::KilledBySignal(SIGTRAP), "rvfLogManagerInst.notNull\\(\\)");
}

TEST(AppComponent, ProgressIsNullUntilSetAndNotOwned) {
    EXPECT_EQ(AppComponent::progressInstance(), nullptr);
    {
        Bar bar;
        AppComponent::setProgressInstance(&bar);
        EXPECT_EQ(AppComponent::progressInstance(), &bar);
    } // The bar is gone, and nothing looks at it any more.
    AppComponent::setProgressInstance(nullptr);
    EXPECT_EQ(AppComponent::progressInstance(), nullptr);
}

TEST(AppComponent, ProgressSingletonStoresOnlyWhenTold) {
    Bar bar;
    EXPECT_EQ(AppComponent::setGetProgressSingleton(false, &bar), nullptr);
    EXPECT_EQ(AppComponent::setGetProgressSingleton(true, &bar), &bar);
    EXPECT_EQ(AppComponent::setGetProgressSingleton(false, nullptr), &bar);
    EXPECT_EQ(AppComponent::setGetProgressSingleton(true, nullptr), nullptr);
}

TEST(AppComponentDeathTest, CataloguesAreTheSameObjectsBeforeAndAfterInitialisation) {
    inOwnProcess([] {
        auto* models = orv::app::Models::instance();
        auto* states = orv::app::States::instance();
        auto* parts = orv::app::Parts::instance();
        auto* results = orv::app::Results::instance();
        EXPECT_EQ(models->count(), 0u);
        EXPECT_EQ(models->refCount(), 1);

        Instance instance;
        AppComponent::initialize(&instance);
        EXPECT_EQ(orv::app::Models::instance(), models);
        EXPECT_EQ(orv::app::States::instance(), states);
        EXPECT_EQ(orv::app::Parts::instance(), parts);
        EXPECT_EQ(orv::app::Results::instance(), results);
    });
}

} // namespace
