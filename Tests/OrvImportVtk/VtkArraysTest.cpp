#include "OrvImportVtk/VtkArrays.h"

#include "OrvCore/Defines.h"
#include "OrvImportCae/CaeFields.h"

#include <gtest/gtest.h>

#include <vtkDoubleArray.h>
#include <vtkIntArray.h>
#include <vtkNew.h>
#include <vtkSOADataArrayTemplate.h>

#include <limits>
#include <vector>

using namespace orv;
using namespace orv::imp::cae;

namespace {

constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();

// Item i has the components 10 i, 10 i + 1 and so on.
template <class Array>
void fillRamp(Array* array, int components, vtkIdType items) {
    array->SetNumberOfComponents(components);
    array->SetNumberOfTuples(items);
    for (vtkIdType i = 0; i < items; ++i) {
        for (int c = 0; c < components; ++c) {
            array->SetComponent(i, c, double(10 * i + c));
        }
    }
}

TEST(VtkArrays, CopiesComponentsInTheOrderAskedFor) {
    vtkNew<vtkDoubleArray> array;
    fillRamp(array.Get(), 3, 2);
    std::vector<double> values(4, -1);
    const std::uint8_t order[] = {2, 0};
    copyVtkItems(array, {}, order, 2, values);
    EXPECT_EQ(values, (std::vector<double>{2, 0, 12, 10}));
}

TEST(VtkArrays, CopiesTheItemsOfASource) {
    vtkNew<vtkIntArray> array;
    fillRamp(array.Get(), 1, 4);
    std::vector<double> values(3, -1);
    const std::int64_t source[] = {3, 3, 0};
    copyVtkItems(array, source, std::array<std::uint8_t, 1>{0}, 1, values);
    EXPECT_EQ(values, (std::vector<double>{30, 30, 0}));
}

TEST(VtkArrays, LeavesTheNumbersBetweenAlone) {
    vtkNew<vtkIntArray> array;
    fillRamp(array.Get(), 1, 2);
    std::vector<double> values(6, -1);
    copyVtkItems(array, {}, std::array<std::uint8_t, 1>{0}, 3, std::span<double>(values).subspan(1));
    EXPECT_EQ(values, (std::vector<double>{-1, 0, -1, -1, 10, -1}));
}

TEST(VtkArrays, CopiesArraysThatLieComponentByComponent) {
    vtkNew<vtkSOADataArrayTemplate<float>> array;
    fillRamp(array.Get(), 3, 2);
    std::vector<double> values(6, -1);
    const std::int64_t source[] = {1, 0};
    copyVtkItems(array, source, std::array<std::uint8_t, 3>{0, 1, 2}, 3, values);
    EXPECT_EQ(values, (std::vector<double>{10, 11, 12, 0, 1, 2}));
}

TEST(VtkArrays, NaNIsUndefined) {
    vtkNew<vtkDoubleArray> array;
    fillRamp(array.Get(), 1, 2);
    array->SetValue(1, NOT_A_NUMBER);
    std::vector<double> values(2);
    copyVtkItems(array, {}, std::array<std::uint8_t, 1>{0}, 1, values);
    EXPECT_EQ(values, (std::vector<double>{0, UNDEFINED_DOUBLE}));
}

TEST(VtkArrays, FullTensorsGiveTheirUpperHalf) {
    // XX XY XZ YX YY YZ ZX ZY ZZ
    vtkNew<vtkDoubleArray> array;
    fillRamp(array.Get(), 9, 1);
    std::vector<double> values(6);
    copyVtkItems(array, {}, FULL_TENSOR_ORDER, 6, values);
    EXPECT_EQ(values, (std::vector<double>{0, 4, 8, 1, 5, 2}));
}

TEST(VtkArrays, Symmetry) {
    struct Row {
        int component;
        double change;
        bool isSymmetric;
    };
    // XY is 4 and the largest component 6.
    const Row rows[] = {{0, 1, true},     {4, 1, true},           {8, -1, true},     {1, 1e-3, false},
                        {2, 1e-3, false}, {5, 1e-3, false},       {3, 5.9e-6, true}, {3, 6.1e-6, false},
                        {7, 1, false},    {6, NOT_A_NUMBER, true}};
    for (const Row& row : rows) {
        vtkNew<vtkDoubleArray> array;
        array->SetNumberOfComponents(9);
        const double item[] = {1, 4, 5, 4, 2, 6, 5, 6, 3};
        array->InsertNextTuple(item);
        array->InsertNextTuple(item);
        array->SetComponent(1, row.component, item[row.component] + row.change);
        EXPECT_EQ(isSymmetric(array), row.isSymmetric) << row.component << " " << row.change;
    }
}

} // namespace
