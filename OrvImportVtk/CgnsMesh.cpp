#include "OrvImportVtk/CgnsMesh.h"

#include "OrvImportVtk/CgnsElements.h"

#include <vtkCellData.h>
#include <vtkDoubleArray.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkStructuredGrid.h>
#include <vtkUnstructuredGrid.h>

#include <algorithm>

namespace orv::imp::cae {
namespace {

// One of three numbers of each item.
void clearComponent(double* first, std::size_t itemCount) {
    for (std::size_t i = 0; i < itemCount; ++i) {
        first[3 * i] = 0.0;
    }
}

vtkSmartPointer<vtkPoints> readPoints(const CgnsTree& tree, const CgnsNode& zoneNode, const CgnsZone& zone,
                                      const CgnsGrid& grid, ug::Error* error) {
    CgnsNode node;
    if (!tree.find(zoneNode, grid.name, &node, error)) {
        return nullptr;
    }
    const std::size_t count = cgnsItemCount(zone.nodeCounts);
    auto points = vtkSmartPointer<vtkPoints>::New();
    points->SetDataTypeToDouble();
    points->SetNumberOfPoints(vtkIdType(count));
    for (std::size_t axis = 0; axis < 3; ++axis) {
        auto* values = static_cast<double*>(points->GetVoidPointer(0)) + axis;
        CgnsNode array;
        if (grid.axes[axis].empty()) {
            clearComponent(values, count);
        } else if (!tree.find(node, grid.axes[axis], &array, error) ||
                   !readCgnsValues(tree, array, zone.nodeCounts, grid.rind, 3, values, error)) {
            return nullptr;
        }
    }
    return points;
}

// A vector's components are called by its name and "X", or "_x".
bool findComponent(const CgnsTree& tree, const CgnsNode& solution, const CaeArray& array, std::size_t component,
                   CgnsNode* node, ug::Error* error) {
    return array.componentCount == 1 ? tree.find(solution, array.name, node, error)
                                     : tree.find(solution, array.name + "XYZ"[component], node, nullptr) ||
                                           tree.find(solution, array.name + "_" + "xyz"[component], node, error);
}

} // namespace

vtkSmartPointer<vtkPointSet> readCgnsMesh(const CgnsTree& tree, const CgnsNode& node, const CgnsZone& zone,
                                          std::size_t step, ug::Error* error) {
    const std::optional<std::size_t> grid = zone.steps[step].grid;
    if (!grid) {
        return vtkSmartPointer<vtkUnstructuredGrid>::New();
    }
    const vtkSmartPointer<vtkPoints> points = readPoints(tree, node, zone, zone.grids[*grid], error);
    if (!points) {
        return nullptr;
    }
    if (zone.isStructured) {
        int sizes[] = {1, 1, 1};
        std::copy(zone.nodeCounts.begin(), zone.nodeCounts.end(), sizes);
        auto mesh = vtkSmartPointer<vtkStructuredGrid>::New();
        mesh->SetDimensions(sizes);
        mesh->SetPoints(points);
        return mesh;
    }
    auto mesh = vtkSmartPointer<vtkUnstructuredGrid>::New();
    mesh->SetPoints(points);
    return readCgnsCells(tree, node, zone, mesh, error) ? mesh : nullptr;
}

bool addCgnsArray(const CgnsTree& tree, const CgnsNode& node, const CgnsZone& zone, const CgnsSolution& solution,
                  const CaeArray& array, int physicalDimension, vtkPointSet* mesh, ug::Error* error) {
    CgnsNode solutionNode;
    if (!tree.find(node, solution.name, &solutionNode, error)) {
        return false;
    }
    const bool isPerNode = solution.mapping == ug::PER_NODE;
    const CgnsCounts& counts = isPerNode ? zone.nodeCounts : zone.cellCounts;
    const std::size_t count = cgnsItemCount(counts);
    if (count == 0) { // Of a flat zone's cells.
        return true;
    }
    const auto stride = std::size_t(array.componentCount);
    vtkNew<vtkDoubleArray> values;
    values->SetName(array.name.c_str());
    values->SetNumberOfComponents(array.componentCount);
    values->SetNumberOfTuples(vtkIdType(count));
    for (std::size_t c = 0; c < stride; ++c) {
        double* first = values->GetPointer(0) + c;
        CgnsNode component;
        if (c >= std::size_t(physicalDimension)) {
            clearComponent(first, count);
        } else if (!findComponent(tree, solutionNode, array, c, &component, error) ||
                   !readCgnsValues(tree, component, counts, solution.rind, stride, first, error)) {
            return false;
        }
    }
    (isPerNode ? static_cast<vtkDataSetAttributes*>(mesh->GetPointData()) : mesh->GetCellData())->AddArray(values);
    return true;
}

} // namespace orv::imp::cae
