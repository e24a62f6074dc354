#include "OrvImportCae/CaeReader.h"

#include <gtest/gtest.h>

using namespace orv;
using namespace orv::imp::cae;

namespace {

TEST(CaeReaders, AStateIsCalledByTheFewestDigitsOfItsTime) {
    const ug::StateInfo state = timeState(2, 0.1);
    EXPECT_EQ(state.id(), 2);
    EXPECT_EQ(state.name(), Str("Time 0.1"));
    EXPECT_EQ(state.referenceType(), ug::StateInfo::TIME);
    EXPECT_EQ(state.referenceValue(), 0.1);
    EXPECT_EQ(timeState(1, 3.0).name(), Str("Time 3"));
    EXPECT_EQ(timeState(1, 1e-7).name(), Str("Time 1e-07"));
}

TEST(CaeReaders, StatesAreGroupedByTheTypesOfTheirReferenceValues) {
    const ug::StateInfo time1(1, "a", ug::StateInfo::TIME, 0.5);
    const ug::StateInfo mode(2, "b", ug::StateInfo::FREQUENCY, 12.0);
    const ug::StateInfo time2(3, "c", ug::StateInfo::TIME, 1.0);
    EXPECT_TRUE(groupStates({time1, time2}).empty());
    const std::vector<ug::StateGroupInfo> groups = groupStates({time1, mode, time2});
    ASSERT_EQ(groups.size(), 2u);
    ASSERT_EQ(groups[0].stateCount(), 2u);
    EXPECT_EQ(groups[0].stateId(0), 1);
    EXPECT_EQ(groups[0].stateId(1), 3);
    ASSERT_EQ(groups[1].stateCount(), 1u);
    EXPECT_EQ(groups[1].stateId(0), 2);
}

} // namespace
