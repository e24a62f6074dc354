#include "OrvUnstructGrid/ResultWalk_p.h"

#include "Tests/OrvUnstructGrid/CustomResults.h"

#include <gtest/gtest.h>

using namespace orv::ug;
using orvtest::doubled;
using orvtest::sumOf;

namespace {

const ResultInfo a(SCALAR, 1, "a", PER_NODE);
const ResultInfo b(SCALAR, 2, "b", PER_NODE);
const ResultInfo c(SCALAR, 3, "c", PER_NODE);

bool isCustom(const ResultInfo& info) {
    return info.isCustom();
}

std::string namesVisited(ResultWalk* walk, const ResultInfo& root) {
    std::string names;
    walk->walk(root, isCustom, [&](const ResultInfo& info) {
        names += info.name().toStdString() + " ";
        return true;
    });
    return names;
}

std::string namesVisited(const ResultInfo& root) {
    ResultWalk walk;
    return namesVisited(&walk, root);
}

TEST(ResultWalk, VisitsArgumentsInOrderBeforeWhatTheyMake) {
    const ResultInfo left = sumOf("a+b", {a, b});
    const ResultInfo right = sumOf("c+a", {c, a});
    EXPECT_EQ(namesVisited(sumOf("all", {left, right})), "a b a+b c c+a all ");
}

TEST(ResultWalk, VisitsALoneResult) {
    EXPECT_EQ(namesVisited(a), "a ");
}

TEST(ResultWalk, StaysOutOfWhatIsNotInner) {
    const ResultInfo left = sumOf("a+b", {a, b});
    std::string names;
    ResultWalk().walk(
        sumOf("all", {left, c}), [&](const ResultInfo& info) { return !(info == left); },
        [&](const ResultInfo& info) {
            names += info.name().toStdString() + " ";
            return true;
        });
    EXPECT_EQ(names, "a+b c all ");
}

TEST(ResultWalk, EndsWhenAVisitSaysSo) {
    int visits = 0;
    EXPECT_FALSE(ResultWalk().walk(sumOf("all", {a, b, c}), isCustom, [&](const ResultInfo& info) {
        ++visits;
        return !(info == b);
    }));
    EXPECT_EQ(visits, 2);
}

TEST(ResultWalk, VisitsEachOnceAlsoInLaterWalks) {
    const ResultInfo sum = sumOf("a+b", {a, b});
    ResultWalk walk;
    EXPECT_EQ(namesVisited(&walk, sumOf("x", {sum, sum, a})), "a b a+b x ");
    EXPECT_EQ(namesVisited(&walk, sumOf("y", {sum, c})), "c y ");
}

TEST(ResultWalk, TellsStrangersOfTheSameIdByTheirName) {
    const ResultInfo stranger(SCALAR, 1, "stranger", PER_NODE);
    EXPECT_EQ(namesVisited(sumOf("x", {a, stranger, a})), "a stranger x ");
}

TEST(ResultWalk, TakesARenamedCustomResultForTheSame) {
    const ResultInfo sum = sumOf("a+b", {a, b});
    ResultInfo renamed = sum;
    renamed.setName("Sum");
    EXPECT_EQ(namesVisited(sumOf("x", {sum, renamed})), "a b a+b x ");
}

// Walked path by path these would be 2 to the power of 60 visits.
TEST(ResultWalk, DoesNotMultiplySharedArguments) {
    int visits = 0;
    ResultWalk().walk(doubled(a, 60), isCustom, [&](const ResultInfo&) { return ++visits > 0; });
    EXPECT_EQ(visits, 61);
}

TEST(ResultWalk, NeedsNoStackForDepth) {
    int visits = 0;
    ResultWalk().walk(doubled(a, 100000), isCustom, [&](const ResultInfo&) { return ++visits > 0; });
    EXPECT_EQ(visits, 100001);
}

} // namespace
