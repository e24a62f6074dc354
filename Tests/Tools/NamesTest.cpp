#include "Tools/Names.h"

#include <gmock/gmock.h>

using namespace orvapp;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(Names, SelectsByPattern) {
    const std::vector<std::string> names = {"STRESS", "DISP", "SDV.SDV1", "stress"};
    EXPECT_THAT(selectNames(names, "S*"), ElementsAre(0, 2));
    EXPECT_THAT(selectNames(names, "*"), ElementsAre(0, 1, 2, 3));
    EXPECT_THAT(selectNames(names, "DIS?"), ElementsAre(1));
    EXPECT_THAT(selectNames(names, "DIS"), IsEmpty());
    EXPECT_THAT(selectNames(names, ""), IsEmpty());
    EXPECT_THAT(selectNames({}, "*"), IsEmpty());
}

TEST(Names, AnExactNameWinsOverThePattern) {
    // As a pattern, S[1] matches S1 and not itself.
    EXPECT_THAT(selectNames({"S1", "S[1]"}, "S[1]"), ElementsAre(1));
    EXPECT_THAT(selectNames({"S1"}, "S[1]"), ElementsAre(0));
    EXPECT_THAT(selectNames({"A*", "AB", "A*"}, "A*"), ElementsAre(0, 2));
}

TEST(Names, FindsTheNearestName) {
    const std::vector<std::string> names = {"STRESS", "DISP", "NDTEMP", "PE"};
    EXPECT_EQ(nearestName(names, "STRES"), "STRESS");   // one letter missing
    EXPECT_EQ(nearestName(names, "STRESSS"), "STRESS"); // one too many
    EXPECT_EQ(nearestName(names, "DIPS"), "DISP");      // two swapped
    EXPECT_EQ(nearestName(names, "disp"), "DISP");      // lower case
    EXPECT_EQ(nearestName(names, "NTTENP"), "NDTEMP");  // two of six wrong
    EXPECT_EQ(nearestName(names, "FLUX"), "");
    EXPECT_EQ(nearestName(names, "NTTENQ"), ""); // three of six wrong
    EXPECT_EQ(nearestName({}, "DISP"), "");
}

TEST(Names, OffersTheNearestName) {
    EXPECT_EQ(didYouMean({"DISP"}, "disp"), R"(; did you mean "DISP"?)");
    EXPECT_EQ(didYouMean({"DISP"}, "temperature"), "");
}

TEST(Names, ListsEachNameOnceUpToALimit) {
    EXPECT_EQ(listed({}), "");
    EXPECT_EQ(listed({"A", "B", "A"}), R"("A", "B")");
    EXPECT_EQ(listed({"A", "B", "C"}, 3), R"("A", "B", "C")");
    EXPECT_EQ(listed({"A", "B", "C", "D", "D"}, 2), R"("A", "B" and 2 more)");
}
