#include "OrvUnstructGrid/DataResultGroup.h"

#include "OrvCore/Defines.h"
#include "OrvUnstructGrid/DataGeometry.h"

#include <gtest/gtest.h>

using namespace orv::ug;
using orv::UNDEFINED_SIZE_T;

namespace {

class DataResultGroupTest : public testing::Test {
protected:
    DataResultGroupTest() : geometry(new DataGeometry), group(geometry.get()) {
        geometry->addPart(1);
        geometry->addPart(2);
    }

    orv::PtrRef<DataGeometry> geometry;
    DataResultGroup group;
    const DataResultGroup& unchanging = group;
    const ResultInfo scalar = ResultInfo(SCALAR, 7, "s", PER_NODE);
    const ResultInfo vector = ResultInfo(VECTOR, 7, "v", PER_ELEMENT);
    const ResultInfo displacement = ResultInfo(DISPLACEMENT, 7, "d", PER_NODE);
    const ResultInfo tensor = ResultInfo(SYMMETRIC_TENSOR, 7, "t", PER_ELEMENT);
};

TEST_F(DataResultGroupTest, IsEmptyAtFirst) {
    EXPECT_EQ(group.geometry(), geometry.get());
    EXPECT_EQ(group.scalarCount() + group.vectorCount() + group.displacementCount() + group.symmetricTensorCount(), 0u);
    EXPECT_EQ(group.find(scalar), nullptr);
    EXPECT_TRUE(group.all().empty());
    EXPECT_EQ(group.byteCount(), 0u);
}

TEST_F(DataResultGroupTest, UndefinedIndexGivesNull) {
    for (std::size_t index : {std::size_t(0), UNDEFINED_SIZE_T}) {
        EXPECT_EQ(group.scalar(index), nullptr);
        EXPECT_EQ(group.vector(index), nullptr);
        EXPECT_EQ(group.displacement(index), nullptr);
        EXPECT_EQ(group.symmetricTensor(index), nullptr);
        EXPECT_EQ(unchanging.scalar(index), nullptr);
        EXPECT_EQ(unchanging.vector(index), nullptr);
        EXPECT_EQ(unchanging.displacement(index), nullptr);
        EXPECT_EQ(unchanging.symmetricTensor(index), nullptr);
    }
}

TEST_F(DataResultGroupTest, MissingResultHasNoPosition) {
    group.findOrAdd(scalar);
    EXPECT_EQ(group.scalarIndex(8), UNDEFINED_SIZE_T);
    EXPECT_EQ(group.vectorIndex(7), UNDEFINED_SIZE_T);
    EXPECT_EQ(group.displacementIndex(7), UNDEFINED_SIZE_T);
    EXPECT_EQ(group.symmetricTensorIndex(7), UNDEFINED_SIZE_T);
}

TEST_F(DataResultGroupTest, MakesAResultOfEachTypeWithTheGeometrysParts) {
    for (const ResultInfo& info : {scalar, vector, displacement, tensor}) {
        DataResult* made = group.findOrAdd(info);
        ASSERT_NE(made, nullptr);
        EXPECT_EQ(made->type(), info.type());
        EXPECT_EQ(made->resultId(), 7);
        EXPECT_EQ(made->resultMapping(), info.resultMapping());
        EXPECT_EQ(made->partCount(), 2u);
        EXPECT_EQ(made->values(0)->itemCount(), 0u);
        EXPECT_EQ(group.findOrAdd(info), made);
        EXPECT_EQ(group.find(info), made);
        EXPECT_EQ(unchanging.find(info), made);
    }
    EXPECT_EQ(group.scalar(group.scalarIndex(7)), group.find(scalar));
    EXPECT_EQ(group.vector(group.vectorIndex(7)), group.find(vector));
    EXPECT_EQ(group.displacement(group.displacementIndex(7)), group.find(displacement));
    EXPECT_EQ(group.symmetricTensor(group.symmetricTensorIndex(7)), group.find(tensor));
    EXPECT_EQ(unchanging.scalar(0), group.find(scalar));
    EXPECT_EQ(unchanging.vector(0), group.find(vector));
    EXPECT_EQ(unchanging.displacement(0), group.find(displacement));
    EXPECT_EQ(unchanging.symmetricTensor(0), group.find(tensor));
    EXPECT_EQ(group.scalarCount(), 1u);
    EXPECT_EQ(group.vectorCount(), 1u);
    EXPECT_EQ(group.displacementCount(), 1u);
    EXPECT_EQ(group.symmetricTensorCount(), 1u);
}

TEST_F(DataResultGroupTest, NoTypeGivesNull) {
    EXPECT_EQ(group.findOrAdd(ResultInfo()), nullptr);
    EXPECT_EQ(group.find(ResultInfo()), nullptr);
    group.remove(ResultInfo());
}

TEST_F(DataResultGroupTest, PositionsFollowTheOrderOfLoadingAndMoveUp) {
    const ResultInfo other(SCALAR, 3, "other", PER_NODE);
    group.findOrAdd(scalar);
    group.findOrAdd(other);
    EXPECT_EQ(group.scalarIndex(7), 0u);
    EXPECT_EQ(group.scalarIndex(3), 1u);
    group.remove(scalar);
    EXPECT_EQ(group.scalarIndex(3), 0u);
    EXPECT_EQ(group.find(scalar), nullptr);
}

TEST_F(DataResultGroupTest, RemovesTheNamedResultOnly) {
    for (const ResultInfo& gone : {scalar, vector, displacement, tensor}) {
        for (const ResultInfo& info : {scalar, vector, displacement, tensor}) {
            group.findOrAdd(info);
        }
        group.remove(gone);
        EXPECT_EQ(group.find(gone), nullptr);
        EXPECT_EQ(group.all().size(), 3u);
        group.remove(gone.type(), gone.id());
        EXPECT_EQ(group.all().size(), 3u);
    }
}

TEST_F(DataResultGroupTest, ListsKindAfterKindAndCountsBytes) {
    group.findOrAdd(tensor)->values(0)->allocate(2);
    group.findOrAdd(displacement)->values(1)->allocate(1);
    group.findOrAdd(vector);
    group.findOrAdd(scalar)->values(0)->allocate(4);
    const std::vector<const DataResult*> all = group.all();
    ASSERT_EQ(all.size(), 4u);
    EXPECT_EQ(all[0]->type(), SCALAR);
    EXPECT_EQ(all[1]->type(), VECTOR);
    EXPECT_EQ(all[2]->type(), DISPLACEMENT);
    EXPECT_EQ(all[3]->type(), SYMMETRIC_TENSOR);
    EXPECT_EQ(group.byteCount(), (12 + 3 + 4) * sizeof(double));
}

} // namespace
