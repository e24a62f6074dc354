#include "OrvUnstructGrid/ProgressMeter.h"

#include "Tests/Support/RecordingProgress.h"

#include <gtest/gtest.h>

#include <limits>

using namespace orv::ug;
using orvtest::RecordingProgress;
using Percents = std::vector<int>;

namespace {

class ProgressMeterTest : public testing::Test {
protected:
    ProgressMeterTest() {
        meter.setProgress(&progress);
    }

    RecordingProgress progress;
    ProgressMeter meter;
};

TEST_F(ProgressMeterTest, TellsEachPercentOnceAndRising) {
    ProgressMeter::Work work(&meter);
    for (const double fraction : {0.1, 0.1, 0.105, 0.05, 0.2, -1.0}) {
        meter.tell(fraction);
    }
    EXPECT_EQ(progress.take(), (Percents{0, 10, 20}));
}

// What is done is told by the end of the work alone.
TEST_F(ProgressMeterTest, AHundredIsToldByTheEnd) {
    ProgressMeter::Work work(&meter);
    meter.tell(1.0);
    meter.tell(7.0);
    EXPECT_EQ(progress.take(), (Percents{0, 99}));
    work.finish();
    EXPECT_EQ(progress.take(), Percents{100});
}

TEST_F(ProgressMeterTest, NothingIsToldWithoutWorkOrToNobody) {
    meter.tell(0.5);
    EXPECT_EQ(progress.take(), Percents());
    meter.setProgress(nullptr);
    EXPECT_EQ(meter.progress(), nullptr);
    {
        ProgressMeter::Work work(&meter);
        meter.tell(0.5);
        work.finish();
    }
    const ProgressMeter::Step nobody(nullptr, 0, 1);
    EXPECT_EQ(progress.take(), Percents());
}

TEST_F(ProgressMeterTest, StepsHaveSteps) {
    ProgressMeter::Work work(&meter);
    {
        const ProgressMeter::Step outer(&meter, 0.5, 1.0);
        meter.tell(0.1); // 0.5 + 0.1 / 2
        {
            const ProgressMeter::Step inner(&meter, 0.5, 0.75);
            meter.tell(0.5); // 0.75 + 0.125 / 2 = 0.8125
        }
        meter.tell(0.9); // 0.5 + 0.9 / 2
    }
    meter.tell(0.97);
    EXPECT_EQ(progress.take(), (Percents{0, 50, 55, 75, 81, 95, 97}));
}

TEST_F(ProgressMeterTest, WorkWithinWorkIsAPartOfIt) {
    ProgressMeter::Work outer(&meter);
    {
        const ProgressMeter::Step step(&meter, 0.0, 0.5);
        ProgressMeter::Work inner(&meter);
        meter.tell(0.5);
        inner.finish();
    }
    meter.tell(0.75);
    outer.finish();
    EXPECT_EQ(progress.take(), (Percents{0, 25, 75, 100}));
}

TEST_F(ProgressMeterTest, TheNextWorkBeginsAnew) {
    for (int i = 0; i < 2; ++i) {
        ProgressMeter::Work work(&meter);
        meter.tell(0.6);
        work.finish();
        EXPECT_EQ(progress.take(), (Percents{0, 60, 100}));
    }
}

TEST_F(ProgressMeterTest, NoNumberIsNoProgress) {
    ProgressMeter::Work work(&meter);
    meter.tell(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(progress.take(), Percents{0});
}

} // namespace
