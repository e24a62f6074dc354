#include "OrvUnstructGrid/DataStateSpec.h"

#include <gtest/gtest.h>

using namespace orv::ug;

namespace {

TEST(DataStateSpec, NamesNothingAtFirst) {
    EXPECT_TRUE(DataStateSpec().resultIds().empty());
}

TEST(DataStateSpec, ReplacesWhatWasNamedBefore) {
    const ResultInfo first(SCALAR, 1, "a", PER_NODE);
    const ResultInfo second(SCALAR, 2, "b", PER_NODE);
    DataStateSpec spec;
    spec.setResultIds({first, second});
    ASSERT_EQ(spec.resultIds().size(), 2u);
    EXPECT_EQ(spec.resultIds()[1], second);
    spec.setResultIds({second});
    ASSERT_EQ(spec.resultIds().size(), 1u);
    EXPECT_EQ(spec.resultIds()[0], second);
}

} // namespace
