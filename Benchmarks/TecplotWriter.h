#pragma once

#include <fstream>
#include <string>

#include <vtkCellArray.h>
#include <vtkDataArray.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkUnstructuredGrid.h>

namespace orvbench {

/// Writes a grid of hexahedra as a Tecplot file in text: a zone in which each variable is a block.
inline std::string writeTecplot(const std::string& path, vtkUnstructuredGrid* grid) {
    constexpr int DIGITS = 9;
    std::ofstream file(path);
    file.precision(DIGITS);
    file << "TITLE = \"block\"\nVARIABLES = \"X\" \"Y\" \"Z\"";
    for (int a = 0; a < grid->GetPointData()->GetNumberOfArrays(); ++a) {
        file << " \"" << grid->GetPointData()->GetArrayName(a) << '"';
    }
    file << "\nZONE T=\"all\", N=" << grid->GetNumberOfPoints() << ", E=" << grid->GetNumberOfCells()
         << ", F=FEBLOCK, ET=BRICK\n";
    const auto put = [&file](vtkDataArray* array, int component) {
        for (vtkIdType i = 0; i < array->GetNumberOfTuples(); ++i) {
            file << array->GetComponent(i, component) << (i % 5 == 4 ? '\n' : ' ');
        }
        file << '\n';
    };
    for (int axis = 0; axis < 3; ++axis) {
        put(grid->GetPoints()->GetData(), axis);
    }
    for (int a = 0; a < grid->GetPointData()->GetNumberOfArrays(); ++a) {
        put(grid->GetPointData()->GetArray(a), 0);
    }
    for (vtkIdType cell = 0; cell < grid->GetNumberOfCells(); ++cell) {
        vtkIdType count = 0;
        const vtkIdType* points = nullptr;
        grid->GetCells()->GetCellAtId(cell, count, points);
        for (vtkIdType i = 0; i < count; ++i) {
            file << points[i] + 1 << (i + 1 == count ? '\n' : ' ');
        }
    }
    return path;
}

} // namespace orvbench
