#include "LibUnstructGrid/VTOArrayUbyte.h"

#include "Tests/LibUnstructGrid/VTOArrayTestSupport.h"

#include <gtest/gtest.h>

namespace {

using namespace vtarraytest;
using orvtest::AssertRecorder;
using orvtest::assertsUntil;
using orvtest::failedIn;
using Bytes = Full<VTUbyteArray>;
using Numbers = std::vector<int>;

const std::string unit = "LibUnstructGrid/VTOArrayUbyte";
const std::string start = "iStartIndex >= 0 && iStartIndex < m_iNumItems";

TEST(VTUbyteArray, AddBitFlagsSetsThemInARange) {
    Bytes array({0x01, 0x02, 0x04, 0x08});
    array.AddBitFlags(0x81, 1, 2);
    EXPECT_EQ(numbers<VTUbyteArray>(array), (Numbers{0x01, 0x83, 0x85, 0x08}));
    array.AddBitFlags(0x10, 2, -1);
    EXPECT_EQ(numbers<VTUbyteArray>(array), (Numbers{0x01, 0x83, 0x95, 0x18}));
    array.AddBitFlags(0xFF, 0, 0);
    EXPECT_EQ(array.Get(0), 0x01);
}

TEST(VTUbyteArray, RemoveBitFlagsClearsThemInARange) {
    Bytes array({0xFF, 0xFF, 0x0F, 0x01});
    array.RemoveBitFlags(0x81, 1, 2);
    EXPECT_EQ(numbers<VTUbyteArray>(array), (Numbers{0xFF, 0x7E, 0x0E, 0x01}));
    array.RemoveBitFlags(0x03, 2, -1);
    EXPECT_EQ(numbers<VTUbyteArray>(array), (Numbers{0xFF, 0x7E, 0x0C, 0x00}));
}

TEST(VTUbyteArray, GetCombinedBitMaskJoinsARange) {
    const Bytes array({0x01, 0x02, 0x84, 0x08});
    EXPECT_EQ(array.GetCombinedBitMask(1, 2), 0x86);
    EXPECT_EQ(array.GetCombinedBitMask(2, -1), 0x8C);
    EXPECT_EQ(array.GetCombinedBitMask(0, 0), 0);
    EXPECT_EQ(VTUbyteArray().GetCombinedBitMask(7, 7), 0);
    EXPECT_EQ(assertsUntil(1, [&] { array.GetCombinedBitMask(4, 1); }), failedIn(unit, {start}));
    EXPECT_EQ(assertsUntil(1, [&] { array.GetCombinedBitMask(-1, 1); }), failedIn(unit, {start}));
}

TEST(VTUbyteArray, BitFlagsOfNothing) {
    AssertRecorder recorder;
    VTUbyteArray empty;
    empty.AddBitFlags(0xFF, 7, -1);
    empty.RemoveBitFlags(0xFF, 7, -1);
    EXPECT_TRUE(recorder.take().empty());
    empty.AddBitFlags(0xFF, 0, 0); // Only a count of -1 is let through.
    EXPECT_EQ(recorder.take(), failedIn(unit, {start}));
    empty.RemoveBitFlags(0xFF, 0, 0);
    EXPECT_EQ(recorder.take(), failedIn(unit, {start}));
    Bytes array({1});
    EXPECT_EQ(assertsUntil(1, [&] { array.AddBitFlags(1, 1, -1); }), failedIn(unit, {start}));
    EXPECT_EQ(assertsUntil(1, [&] { array.RemoveBitFlags(1, -1, 1); }), failedIn(unit, {start}));
}

TEST(VTUbyteArray, SetOfSeveralCopiesNothing) {
    AssertRecorder recorder;
    const unsigned char aubValues[] = {7, 8, 9};
    Roomy<VTUbyteArray> array({1, 2, 3}, 6);
    for (int iCount : {3, 1, 0, -1}) {
        array.Set(0, aubValues, iCount);
        array.Set(3, aubValues, iCount);
        array.Set(1, nullptr, iCount);
        EXPECT_EQ(numbers<VTUbyteArray>(array), (Numbers{1, 2, 3})) << iCount;
        EXPECT_EQ(array.GetNumAllocated(), 6) << iCount;
    }
    EXPECT_TRUE(recorder.take().empty());
}

TEST(VTUbyteArray, SetOfSeveralChecksThePlace) {
    AssertRecorder recorder;
    const unsigned char aubValues[] = {7, 8, 9};
    const std::string place = "(iIndex >= 0) && (iIndex <= m_iNumItems)";
    Roomy<VTUbyteArray> array({1, 2, 3}, 6);
    array.Set(4, aubValues, 3);
    EXPECT_EQ(recorder.take(), failedIn(unit, {place}));
    array.Set(-1, aubValues, 3);
    EXPECT_EQ(recorder.take(), failedIn(unit, {place}));
    EXPECT_EQ(array.GetNumItems(), 3);
    array.Set(5, aubValues, 0); // A count of 0 goes on, and takes in the slots before the place.
    EXPECT_EQ(recorder.take(), failedIn(unit, {place}));
    EXPECT_EQ(numbers<VTUbyteArray>(array), (Numbers{1, 2, 3, 99, 99}));
    array.Set(8, aubValues, 0); // It makes room for them, too.
    EXPECT_EQ(recorder.take(), failedIn(unit, {place}));
    EXPECT_EQ(array.GetNumItems(), 8);
    EXPECT_EQ(array.GetNumAllocated(), 8);
    array.SetNumItems(9); // One more than there is room for.
    recorder.take();
    array.Set(1, aubValues, 0);
    EXPECT_EQ(recorder.take(), failedIn(unit, {"m_iNumItems <= m_iNumAllocated"}));
}

TEST(VTUbyteArray, CopyDataChecksNothing) {
    AssertRecorder recorder;
    Roomy<VTUbyteArray> array({1, 2, 3}, 6);
    array.CopyData(static_cast<const unsigned char*>(nullptr), 0, 0);
    array.CopyData(static_cast<const unsigned char*>(nullptr), -2, 2);
    EXPECT_TRUE(recorder.take().empty());
    EXPECT_EQ(numbers<VTUbyteArray>(array), (Numbers{1, 2, 3}));
}

TEST(VTUbyteArray, DeleteByValueKeepsTheOrder) {
    Bytes array({3, 1, 3, 2, 3});
    EXPECT_TRUE(array.DeleteByValue(3));
    EXPECT_EQ(numbers<VTUbyteArray>(array), (Numbers{1, 2}));
    EXPECT_FALSE(array.DeleteByValue(3));
    EXPECT_TRUE(array.DeleteByValue(Bytes({2, 9})));
    EXPECT_EQ(numbers<VTUbyteArray>(array), (Numbers{1}));
    EXPECT_FALSE(array.DeleteByValue(Bytes({2, 9})));
}

TEST(VTUbyteArray, ReverseChecksForABufferFirst) {
    AssertRecorder recorder;
    VTUbyteArray().Reverse();
    EXPECT_EQ(recorder.take(), failedIn(unit, {"m_pubData"}));
}

TEST(VTUbyteArray, AssignmentChecksOwnershipAndSelf) {
    Bytes owner({1, 2});
    Shared<VTUbyteArray> shared(&owner);
    const VTUbyteArray& same = shared;
    EXPECT_EQ(assertsUntil(2, [&] { static_cast<VTUbyteArray&>(shared) = same; }),
              failedIn(unit, {"!m_bSharedData", "this != &other"}));
}

} // namespace
