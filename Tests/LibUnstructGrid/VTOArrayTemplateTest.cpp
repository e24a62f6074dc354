#include "LibUnstructGrid/VTOArrayTemplate.h"

#include "Tests/Support/AssertRecorder.h"
#include "Tests/Support/AssertStopper.h"

#include <gtest/gtest.h>

namespace {

using orvtest::AssertRecorder;
using orvtest::assertsUntil;
using orvtest::FailedAssert;
using orvtest::failedIn;
using PointerArray = VTOArray<int*, int*>;

const std::string unit = "LibUnstructGrid/VTOArrayTemplate";

// How often the buffer moved while elements were added one by one up to `nSize`, and the size after each move.
std::vector<int> movesWhileAdding(PointerArray& array, int nSize) {
    std::vector<int> moves;
    while (array.GetSize() < nSize) {
        int** ppBefore = array.GetSize() == 0 ? nullptr : &array.ElementAt(0);
        array.Add(nullptr);
        if (&array.ElementAt(0) != ppBefore) {
            moves.push_back(array.GetSize());
        }
    }
    return moves;
}

TEST(VTOArrayTemplate, IsEmptyAtFirst) {
    EXPECT_EQ(PointerArray().GetSize(), 0);
}

TEST(VTOArrayTemplate, SetSizeMakesNullPointers) {
    PointerArray array;
    EXPECT_TRUE(array.SetSize(3, -1));
    EXPECT_EQ(array.GetSize(), 3);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(array[i], nullptr);
    }
}

TEST(VTOArrayTemplate, ElementsReappearAsNullAfterShrinking) {
    int iValue = 0;
    PointerArray array;
    array.SetSize(3, -1);
    array[2] = &iValue;
    array.SetSize(2, -1);
    array.SetSize(3, -1);
    EXPECT_EQ(array[2], nullptr);
}

TEST(VTOArrayTemplate, KeepsElementsWhenItGrows) {
    int aiValues[20] = {};
    PointerArray array;
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(array.Add(&aiValues[i]), i);
    }
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(array[i], &aiValues[i]);
        EXPECT_EQ(std::as_const(array)[i], &aiValues[i]);
        EXPECT_EQ(array.ElementAt(i), &aiValues[i]);
    }
}

// A first buffer is exact. Then 4 places more are taken each time, which gives capacities of 1, 5, 9 to 41, until an
// eighth of the size is more than that: from 41 elements it is 5.
TEST(VTOArrayTemplate, HeuristicStepFollowsTheSize) {
    PointerArray array;
    EXPECT_EQ(movesWhileAdding(array, 50), (std::vector<int>{1, 2, 6, 10, 14, 18, 22, 26, 30, 34, 38, 42, 47}));
}

TEST(VTOArrayTemplate, HeuristicStepIsAtMost1024) {
    PointerArray array;
    array.SetSize(16000, -1);
    // 16000 / 8 = 2000 is cut to 1024.
    EXPECT_EQ(movesWhileAdding(array, 18000), (std::vector<int>{16001, 17025}));
}

// The capacity is 100, but only two elements are in use: an eighth of two is below the least step of 4.
TEST(VTOArrayTemplate, HeuristicStepDoesNotFollowTheCapacity) {
    PointerArray array;
    array.SetSize(100, -1);
    array.SetSize(2, -1);
    array.SetSize(101, -1);
    int** ppData = &array.ElementAt(0);
    array.SetSize(104, -1);
    EXPECT_EQ(&array.ElementAt(0), ppData);
    array.SetSize(105, -1);
    EXPECT_NE(&array.ElementAt(0), ppData);
}

TEST(VTOArrayTemplate, GrowthStepIsKeptUntilSetAgain) {
    PointerArray array;
    array.SetSize(1, 10);
    EXPECT_EQ(movesWhileAdding(array, 30), (std::vector<int>{2, 12, 22}));
    array.SetSize(30, 2);
    // The capacity is 31 by now.
    EXPECT_EQ(movesWhileAdding(array, 35), (std::vector<int>{32, 34}));
    // A step of 0 is the heuristic one, from a capacity of 35.
    array.SetSize(35, 0);
    EXPECT_EQ(movesWhileAdding(array, 41), (std::vector<int>{36, 40}));
}

TEST(VTOArrayTemplate, SizeZeroReleasesTheBuffer) {
    PointerArray array;
    array.SetSize(100, -1);
    EXPECT_TRUE(array.SetSize(0, -1));
    EXPECT_EQ(array.GetSize(), 0);
    // The next buffer is exact again, so that the element behind it moves it.
    array.SetSize(1, -1);
    EXPECT_EQ(movesWhileAdding(array, 2), (std::vector<int>{2}));
}

TEST(VTOArrayTemplate, SetAtGrowFillsUpWithNullPointers) {
    int iValue = 0;
    PointerArray array;
    EXPECT_TRUE(array.SetAtGrow(2, &iValue));
    EXPECT_EQ(array.GetSize(), 3);
    EXPECT_EQ(array[0], nullptr);
    EXPECT_EQ(array[1], nullptr);
    EXPECT_EQ(array[2], &iValue);
    EXPECT_TRUE(array.SetAtGrow(0, &iValue));
    EXPECT_EQ(array.GetSize(), 3);
    EXPECT_EQ(array[0], &iValue);
}

TEST(VTOArrayTemplate, DoesNotDeleteWhatPointersPointAt) {
    int* piValue = new int(7);
    {
        PointerArray array;
        array.Add(piValue);
    }
    EXPECT_EQ(*piValue, 7);
    delete piValue;
}

struct Counted {
    static int iAlive;
    Counted() {
        ++iAlive;
    }
    Counted(const Counted&) {
        ++iAlive;
    }
    Counted& operator=(const Counted&) = default;
    ~Counted() {
        --iAlive;
    }
};
int Counted::iAlive = 0;

TEST(VTOArrayTemplate, ConstructsAndDestructsElements) {
    {
        VTOArray<Counted, const Counted&> array;
        array.SetSize(5, -1);
        EXPECT_EQ(Counted::iAlive, 5);
        array.SetSize(9, -1); // Moves, by bytes: no element is made twice.
        EXPECT_EQ(Counted::iAlive, 9);
        array.SetSize(3, -1);
        EXPECT_EQ(Counted::iAlive, 3);
        array.SetSize(0, -1);
        EXPECT_EQ(Counted::iAlive, 0);
        array.SetSize(4, -1);
    }
    EXPECT_EQ(Counted::iAlive, 0);
}

TEST(VTOArrayTemplate, ChecksTheIndex) {
    PointerArray array;
    array.SetSize(4, -1);
    array.SetSize(2, -1); // Places 2 and 3 are still there to be read.
    AssertRecorder recorder;
    const FailedAssert expected{unit, "nIndex >= 0 && nIndex < m_nSize", std::nullopt};
    array.ElementAt(2);
    EXPECT_EQ(recorder.take(), std::vector<FailedAssert>{expected});
    array[2];
    EXPECT_EQ(recorder.take(), std::vector<FailedAssert>{expected});
    std::as_const(array)[2];
    EXPECT_EQ(recorder.take(), std::vector<FailedAssert>{expected});
    array[1];
    EXPECT_TRUE(recorder.take().empty());
}

TEST(VTOArrayTemplate, ChecksSizeAndPlace) {
    PointerArray array;
    EXPECT_EQ(assertsUntil(1, [&] { array.SetSize(-1, -1); }), failedIn(unit, {"nNewSize >= 0"}));
    EXPECT_EQ(assertsUntil(1, [&] { array.SetAtGrow(-1, nullptr); }), failedIn(unit, {"nIndex >= 0"}));
}

} // namespace
