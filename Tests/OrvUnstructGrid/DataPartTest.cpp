#include "OrvUnstructGrid/DataPart.h"

#include "OrvUnstructGrid/Error.h"
#include "Tests/Support/LogRecorder.h"

#include <gtest/gtest.h>

using namespace orv::ug;
using orvtest::LogMessage;
using orvtest::LogRecorder;

namespace {

TEST(DataPart, IsEmptyAtFirst) {
    DataPart part(7);
    EXPECT_EQ(part.partId(), 7);
    EXPECT_EQ(part.nodes()->nodeCount(), 0u);
    EXPECT_EQ(part.elements()->elementCount(), 0u);
    EXPECT_TRUE(part.isConsistent());
    EXPECT_EQ(part.byteCount(), part.elements()->byteCount());
}

TEST(DataPart, IsInconsistentWhenAnElementNamesAMissingNode) {
    DataPart part(1);
    part.nodes()->set({0, 0, 0, 1, 0, 0}, {});
    part.elements()->set({BEAM}, {0, 1}, {});
    EXPECT_TRUE(part.isConsistent());
    part.elements()->set({BEAM}, {0, 2}, {});
    EXPECT_FALSE(part.isConsistent());
}

TEST(DataPart, IsInconsistentWithElementsAndNoNodes) {
    DataPart part(1);
    part.elements()->set({POINT}, {0}, {});
    EXPECT_FALSE(part.isConsistent());
}

TEST(DataPart, CountsItemsByMapping) {
    DataPart part(1);
    part.nodes()->set(std::vector<double>(3 * 5), {});
    part.elements()->set({TETRAHEDRON, BEAM}, {0, 1, 2, 3, 3, 4}, {});
    EXPECT_EQ(part.itemCount(PER_NODE), 5u);
    EXPECT_EQ(part.itemCount(PER_ELEMENT), 2u);
    EXPECT_EQ(part.itemCount(PER_ELEMENT_NODE), 6u);
    EXPECT_EQ(part.itemCount(PER_ELEMENT_SURFACE), 4u);
    EXPECT_EQ(part.itemCount(UNKNOWN_MAPPING), 0u);
    EXPECT_EQ(part.byteCount(), part.nodes()->byteCount() + part.elements()->byteCount());
}

/// A part with a triangle and a beam on 5 nodes that is left to be read.
class UnreadPartTest : public testing::Test {
protected:
    UnreadPartTest() {
        part.readLater({5, 2, 5}, [this](DataNodes* nodes, DataElements* elements, Error* problem) {
            ++reads;
            nodes->set(std::vector<double>(3 * 5), {});
            elements->set({TRIANGLE, BEAM}, {0, 1, 2, 3, 4}, {});
            return isGood || fail(problem, "a.ztfx: damaged");
        });
    }

    int reads = 0;
    bool isGood = true;
    DataPart part{1};
    Error error;
    LogRecorder logs;
};

TEST_F(UnreadPartTest, CountsAllItemsButSurfacesWithoutBeingRead) {
    EXPECT_EQ(part.itemCount(PER_NODE), 5u);
    EXPECT_EQ(part.itemCount(PER_ELEMENT), 2u);
    EXPECT_EQ(part.itemCount(PER_ELEMENT_NODE), 5u);
    EXPECT_EQ(part.itemCount(UNKNOWN_MAPPING), 0u);
    EXPECT_EQ(part.byteCount(), DataPart(1).byteCount());
    EXPECT_EQ(reads, 0);
    // A triangle is one, a beam has none.
    EXPECT_EQ(part.itemCount(PER_ELEMENT_SURFACE), 1u);
    EXPECT_EQ(reads, 1);
}

TEST_F(UnreadPartTest, IsReadOnceByWhateverNeedsIt) {
    EXPECT_EQ(part.nodes()->nodeCount(), 5u);
    EXPECT_EQ(part.elements()->elementCount(), 2u);
    EXPECT_TRUE(part.isConsistent());
    EXPECT_TRUE(part.read(&error));
    EXPECT_EQ(part.itemCount(PER_NODE), 5u);
    EXPECT_GT(part.byteCount(), 15 * sizeof(double));
    EXPECT_EQ(reads, 1);

    const DataPart& unchanging = part;
    EXPECT_EQ(unchanging.nodes(), part.nodes());
    EXPECT_EQ(unchanging.elements(), part.elements());
}

// Its objects stay.
TEST_F(UnreadPartTest, IsReadAgainBehindBeingGivenBack) {
    EXPECT_EQ(part.bytesToGiveBack(), 0u);
    const DataNodes* nodes = part.nodes();
    EXPECT_EQ(part.bytesToGiveBack(), part.byteCount());
    part.giveBack();
    EXPECT_EQ(part.byteCount(), DataPart(1).byteCount());
    EXPECT_EQ(part.bytesToGiveBack(), 0u);
    EXPECT_EQ(reads, 1);
    EXPECT_EQ(part.nodes(), nodes);
    EXPECT_EQ(nodes->nodeCount(), 5u);
    EXPECT_EQ(part.elements()->elementCount(), 2u);
    EXPECT_EQ(reads, 2);
}

TEST_F(UnreadPartTest, WhatWasNotReadCannotBeGivenBack) {
    part.giveBack();
    EXPECT_EQ(part.nodes()->nodeCount(), 5u);
    EXPECT_EQ(reads, 1);
    DataPart filled(1);
    filled.nodes()->set({0, 0, 0}, {});
    EXPECT_EQ(filled.bytesToGiveBack(), 0u);
    filled.giveBack();
    EXPECT_EQ(filled.nodes()->nodeCount(), 1u);
}

TEST_F(UnreadPartTest, OneThatCannotBeReadAgainSaysWhy) {
    ASSERT_TRUE(part.read(&error));
    part.giveBack();
    isGood = false;
    EXPECT_FALSE(part.read(&error));
    EXPECT_EQ(error.message(), "a.ztfx: damaged");
    EXPECT_EQ(part.itemCount(PER_NODE), 0u);
}

TEST_F(UnreadPartTest, ConstantAccessReadsToo) {
    const DataPart& unchanging = part;
    EXPECT_EQ(unchanging.elements()->elementCount(), 2u);
    EXPECT_EQ(reads, 1);
}

TEST_F(UnreadPartTest, ConstantAccessToNodesReadsToo) {
    const DataPart& unchanging = part;
    EXPECT_EQ(unchanging.nodes()->nodeCount(), 5u);
    EXPECT_EQ(reads, 1);
}

TEST_F(UnreadPartTest, ConsistencyIsThatOfWhatIsRead) {
    DataPart bad(1);
    bad.readLater({1, 1, 1}, [](DataNodes* nodes, DataElements* elements, Error*) {
        nodes->set({0, 0, 0}, {});
        elements->set({POINT}, {1}, {});
        return true;
    });
    EXPECT_FALSE(bad.isConsistent());
}

// Nothing is known of it beforehand.
TEST_F(UnreadPartTest, CountsThatAreNotKnownAreThoseOfWhatIsRead) {
    int readsOfIt = 0;
    DataPart unknown(1);
    unknown.readLater([&readsOfIt](DataNodes* nodes, DataElements* elements, Error*) {
        ++readsOfIt;
        nodes->set(std::vector<double>(3 * 3), {});
        elements->set({TRIANGLE}, {0, 1, 2}, {});
        return true;
    });
    EXPECT_EQ(unknown.itemCount(UNKNOWN_MAPPING), 0u);
    EXPECT_EQ(readsOfIt, 0);
    EXPECT_EQ(unknown.itemCount(PER_NODE), 3u);
    EXPECT_EQ(unknown.itemCount(PER_ELEMENT), 1u);
    EXPECT_EQ(unknown.itemCount(PER_ELEMENT_NODE), 3u);
    EXPECT_EQ(readsOfIt, 1);
    unknown.giveBack();
    EXPECT_EQ(unknown.itemCount(PER_NODE), 3u);
    EXPECT_EQ(unknown.itemCount(PER_ELEMENT), 1u);
    EXPECT_EQ(unknown.itemCount(PER_ELEMENT_NODE), 3u);
    EXPECT_EQ(readsOfIt, 1);
}

TEST_F(UnreadPartTest, OneThatCannotBeReadIsEmptyAndSaysWhyAtEachCall) {
    isGood = false;
    for (int i = 0; i < 2; ++i) {
        error.clear();
        EXPECT_FALSE(part.read(&error));
        EXPECT_EQ(error.message(), "a.ztfx: damaged");
    }
    EXPECT_FALSE(part.read(nullptr));
    EXPECT_EQ(part.nodes()->nodeCount(), 0u);
    EXPECT_EQ(part.elements()->elementCount(), 0u);
    for (const ResultMapping mapping : {PER_NODE, PER_ELEMENT, PER_ELEMENT_NODE, PER_ELEMENT_SURFACE}) {
        EXPECT_EQ(part.itemCount(mapping), 0u);
    }
    EXPECT_TRUE(part.isConsistent());
    EXPECT_EQ(reads, 1);
    EXPECT_TRUE(logs.take().empty());
}

TEST_F(UnreadPartTest, TheReasonGoesToTheLogWhereNobodyWaitsForIt) {
    isGood = false;
    EXPECT_EQ(part.elements()->elementCount(), 0u);
    EXPECT_EQ(part.nodes()->nodeCount(), 0u);
    EXPECT_EQ(logs.take(), (std::vector<LogMessage>{{1, "orv.comp.ug", "a.ztfx: damaged", "OrvUnstructGrid/DataPart",
                                                     "void orv::ug::DataPart::bringIn() const", "bringIn"}}));
    EXPECT_FALSE(part.read(&error));
    EXPECT_EQ(error.message(), "a.ztfx: damaged");
}

} // namespace
