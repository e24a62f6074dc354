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
