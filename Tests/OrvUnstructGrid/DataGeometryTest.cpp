#include "OrvUnstructGrid/DataGeometry.h"

#include "OrvCore/PtrRef.h"
#include "OrvUnstructGrid/Error.h"
#include "Tests/Support/AssertRecorder.h"

#include <gtest/gtest.h>

using namespace orv::ug;
using orvtest::AssertRecorder;
using orvtest::FailedAssert;

namespace {

TEST(DataGeometry, IdsTellGeometriesApart) {
    orv::PtrRef<DataGeometry> first(new DataGeometry);
    orv::PtrRef<DataGeometry> second(new DataGeometry);
    EXPECT_NE(first->id(), second->id());
    const int gone = second->id();
    second = new DataGeometry;
    EXPECT_NE(second->id(), gone);
}

TEST(DataGeometry, OwnsItsPartsInOrder) {
    orv::PtrRef<DataGeometry> geometry(new DataGeometry);
    EXPECT_EQ(geometry->partCount(), 0u);
    DataPart* first = geometry->addPart(5);
    DataPart* second = geometry->addPart(3);
    ASSERT_EQ(geometry->partCount(), 2u);
    EXPECT_EQ(geometry->part(0), first);
    EXPECT_EQ(geometry->part(1), second);
    EXPECT_EQ(second->partId(), 3);
    const DataGeometry* unchanging = geometry.get();
    EXPECT_EQ(unchanging->part(1), second);
}

// The ids of what is shared go on from those that are there, in both.
TEST(DataGeometry, SharesThePartsOfAnother) {
    orv::PtrRef<DataGeometry> other(new DataGeometry);
    other->addPart(1)->nodes()->set({0, 0, 0}, {});
    int reads = 0;
    other->addPart(2)->readLater([&reads](DataNodes* nodes, DataElements*, Error*) {
        ++reads;
        nodes->set({0, 0, 0, 1, 1, 1}, {});
        return true;
    });
    orv::PtrRef<DataGeometry> whole(new DataGeometry);
    whole->addPart(1);
    whole->addPartsOf(*other);
    ASSERT_EQ(whole->partCount(), 3u);
    EXPECT_EQ(whole->part(1), other->part(0));
    EXPECT_EQ(whole->part(2), other->part(1));
    EXPECT_EQ(whole->part(1)->partId(), 2);
    EXPECT_EQ(whole->part(2)->partId(), 3);
    EXPECT_TRUE(whole->read(nullptr));
    EXPECT_EQ(other->part(1)->nodes()->nodeCount(), 2u);
    EXPECT_EQ(reads, 1);
    other = nullptr;
    EXPECT_EQ(whole->part(2)->nodes()->nodeCount(), 2u);
}

TEST(DataGeometry, CountsTheBytesOfItsParts) {
    orv::PtrRef<DataGeometry> geometry(new DataGeometry);
    geometry->addPart(1)->nodes()->set({0, 0, 0}, {});
    geometry->addPart(2)->nodes()->set({0, 0, 0, 1, 1, 1}, {});
    EXPECT_EQ(geometry->byteCount(), geometry->part(0)->byteCount() + geometry->part(1)->byteCount());
    EXPECT_GE(geometry->byteCount(), 9 * sizeof(double));
}

TEST(DataGeometry, ReadsThePartsThatAreUnread) {
    orv::PtrRef<DataGeometry> geometry(new DataGeometry);
    geometry->addPart(1);
    std::string reads;
    const auto read = [&reads](const char* name, bool isGood) {
        return [&reads, name, isGood](DataNodes*, DataElements*, Error* problem) {
            reads += name;
            return isGood || fail(problem, name);
        };
    };
    geometry->addPart(2)->readLater({}, read("a", true));
    Error error;
    EXPECT_TRUE(geometry->read(&error));
    EXPECT_TRUE(geometry->read(&error));
    EXPECT_EQ(reads, "a");
    geometry->addPart(3)->readLater({}, read("b", false));
    geometry->addPart(4)->readLater({}, read("c", false));
    EXPECT_FALSE(geometry->read(&error));
    EXPECT_EQ(error.message(), "b");
}

// A file may bring all parts at once.
TEST(DataGeometry, WhoeverReadsAPartMayAskForAll) {
    orv::PtrRef<DataGeometry> geometry(new DataGeometry);
    std::string reads;
    for (const char* name : {"a", "b", "c"}) {
        geometry->addPart(1)->readLater([&, name](DataNodes* nodes, DataElements*, Error*) {
            reads += name;
            nodes->set({0, 0, 0}, {});
            return geometry->read(nullptr);
        });
    }
    EXPECT_EQ(geometry->part(1)->nodes()->nodeCount(), 1u);
    EXPECT_EQ(reads, "bac");
    EXPECT_EQ(geometry->part(0)->nodes()->nodeCount(), 1u);
    EXPECT_TRUE(geometry->read(nullptr));
    EXPECT_EQ(reads, "bac");
}

TEST(DataGeometry, GivesBackWhatIsItsOwnUnlessItIsKept) {
    const auto read = [](DataNodes* nodes, DataElements*, Error*) {
        nodes->set({0, 0, 0}, {});
        return true;
    };
    orv::PtrRef<DataGeometry> geometry(new DataGeometry);
    geometry->addPart(1)->readLater(read);
    orv::PtrRef<DataGeometry> whole(new DataGeometry);
    whole->addPartsOf(*geometry);
    whole->addPart(2)->readLater(read);
    EXPECT_EQ(whole->bytesToGiveBack(), 0u);
    ASSERT_TRUE(whole->read(nullptr));
    const std::size_t bytes = whole->part(1)->byteCount();
    EXPECT_EQ(whole->bytesToGiveBack(), bytes);
    EXPECT_EQ(geometry->bytesToGiveBack(), 0u);
    {
        const std::shared_ptr<const void> keep = whole->keep();
        EXPECT_EQ(whole->bytesToGiveBack(), 0u);
        whole->giveBack();
        EXPECT_EQ(whole->part(1)->byteCount(), bytes);
    }
    whole->giveBack();
    EXPECT_LT(whole->part(1)->byteCount(), bytes);
    EXPECT_EQ(whole->part(0)->byteCount(), bytes);
    whole = nullptr;
    EXPECT_EQ(geometry->bytesToGiveBack(), bytes);
}

TEST(DataGeometry, PartBeyondTheEndIsNull) {
    AssertRecorder recorder;
    orv::PtrRef<DataGeometry> geometry(new DataGeometry);
    const DataGeometry* unchanging = geometry.get();
    const std::vector<FailedAssert> failed = {{"OrvUnstructGrid/DataGeometry", "index < partCount()", {}}};
    EXPECT_EQ(geometry->part(0), nullptr);
    EXPECT_EQ(recorder.take(), failed);
    EXPECT_EQ(unchanging->part(0), nullptr);
    EXPECT_EQ(recorder.take(), failed);
}

} // namespace
