#include "OrvImportVtk/VtkVectorArray.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace orv::imp::cae;
using testing::ElementsAre;

namespace {

TEST(VtkVectorArrays, WhatIsWrittenIsInTheListThatIsTaken) {
    const auto places = VtkPlaces::make(3, 6);
    EXPECT_EQ(places->GetNumberOfTuples(), 2);
    places->SetTuple3(1, 4.0, 5.0, 6.0);
    const double* numbers = places->GetPointer(0);
    const std::vector<double> taken = places->take();
    EXPECT_THAT(taken, ElementsAre(0.0, 0.0, 0.0, 4.0, 5.0, 6.0));
    EXPECT_EQ(taken.data(), numbers); // No copy.
    EXPECT_EQ(places->GetNumberOfValues(), 0);
    EXPECT_TRUE(places->take().empty());
}

TEST(VtkVectorArrays, AnArrayThatVtkHasMadeSmallerIsCopied) {
    const auto indexes = VtkIndexes::make(1, 3);
    for (int i = 0; i < 3; ++i) {
        indexes->SetValue(i, i + 7);
    }
    indexes->SetNumberOfValues(2);
    EXPECT_THAT(indexes->take(), ElementsAre(7, 8));
    EXPECT_EQ(indexes->GetNumberOfValues(), 0);
}

} // namespace
