#include "OrvUnstructGrid/Progress.h"

#include <gtest/gtest.h>

#include <memory>

using namespace orv::ug;

namespace {

class Bar : public Progress {
public:
    explicit Bar(int* shown) : m_shown(shown) {}
    ~Bar() override {
        *m_shown = -1;
    }
    void setPercent(int percent) override {
        *m_shown = percent;
    }

private:
    int* m_shown;
};

TEST(Progress, IsToldAndEndsThroughItsBase) {
    int shown = 0;
    std::unique_ptr<Progress> progress = std::make_unique<Bar>(&shown);
    progress->setPercent(40);
    EXPECT_EQ(shown, 40);
    progress.reset();
    EXPECT_EQ(shown, -1);
}

} // namespace
