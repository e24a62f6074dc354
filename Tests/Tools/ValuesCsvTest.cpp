#include "Tools/ValuesCsv.h"

#include "OrvCore/Defines.h"
#include "Tests/Support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

using namespace orvapp;

TEST(ValuesCsv, QuotesWhatNeedsIt) {
    EXPECT_EQ(csvField(""), "");
    EXPECT_EQ(csvField("Step 1"), "Step 1");
    EXPECT_EQ(csvField("a,b"), "\"a,b\"");
    EXPECT_EQ(csvField("3/4\" bolt"), "\"3/4\"\" bolt\"");
    EXPECT_EQ(csvField("two\nlines"), "\"two\nlines\"");
    EXPECT_EQ(csvField("two\rlines"), "\"two\rlines\"");
}

TEST(ValuesCsv, WritesALineForEachItem) {
    const orvtest::ScratchFolder folder;
    const std::array<int, 2> ids = {7, 12};
    const std::array<double, 6> vectors = {0.1, -2, 1e-300, orv::UNDEFINED_DOUBLE, 1.0 / 3.0, 4};
    const std::array<int, 1> otherIds = {3};
    const std::array<double, 3> other = {orv::UNDEFINED_DOUBLE, orv::UNDEFINED_DOUBLE,
                                         std::numeric_limits<double>::quiet_NaN()};
    {
        ValuesCsv csv(folder / "out.csv", {"X", "Y", "Z"});
        csv.add("time 0.2", "STEEL, hard", ids, vectors);
        csv.add("time 0.4", "TIN", otherIds, other);
        csv.commit();
    }
    EXPECT_EQ(folder.read("out.csv"), "state,part,id,X,Y,Z\n"
                                      "time 0.2,\"STEEL, hard\",7,0.1,-2,1e-300\n"
                                      "time 0.2,\"STEEL, hard\",12,,0.3333333333333333,4\n"
                                      "time 0.4,TIN,3,,,nan\n");
}

TEST(ValuesCsv, HasNoFileWithoutCommit) {
    const orvtest::ScratchFolder folder;
    {
        ValuesCsv csv(folder / "out.csv", {"value"});
        csv.add("a", "b", std::array<int, 1>{1}, std::array<double, 1>{1.0});
    }
    EXPECT_TRUE(folder.names().empty());
}
