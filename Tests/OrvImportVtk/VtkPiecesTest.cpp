#include "OrvImportVtk/VtkPieces.h"

#include <gtest/gtest.h>

#include <vtkCompositeDataSet.h>
#include <vtkInformation.h>
#include <vtkMultiBlockDataSet.h>
#include <vtkNew.h>
#include <vtkPoints.h>
#include <vtkTable.h>
#include <vtkUnstructuredGrid.h>

using namespace orv::imp::cae;

namespace {

vtkSmartPointer<vtkUnstructuredGrid> mesh(vtkIdType pointCount) {
    auto grid = vtkSmartPointer<vtkUnstructuredGrid>::New();
    vtkNew<vtkPoints> points;
    points->SetNumberOfPoints(pointCount);
    grid->SetPoints(points);
    return grid;
}

void add(vtkMultiBlockDataSet* tree, vtkDataObject* block, const char* name) {
    const unsigned int index = tree->GetNumberOfBlocks();
    tree->SetBlock(index, block);
    if (name) {
        tree->GetMetaData(index)->Set(vtkCompositeDataSet::NAME(), name);
    }
}

std::vector<std::string> namesOf(const std::vector<VtkPiece>& pieces) {
    std::vector<std::string> names;
    for (const VtkPiece& piece : pieces) {
        names.push_back(piece.name);
    }
    return names;
}

TEST(VtkPieces, AMeshIsItsOwnPiece) {
    const auto grid = mesh(1);
    const std::vector<VtkPiece> pieces = piecesOf(grid);
    ASSERT_EQ(pieces.size(), 1u);
    EXPECT_EQ(pieces[0].name, "");
    EXPECT_EQ(pieces[0].data, grid);
}

TEST(VtkPieces, LeavesBearTheNamesOnTheWay) {
    vtkNew<vtkMultiBlockDataSet> wing;
    add(wing, mesh(1), "skin");
    add(wing, mesh(1), nullptr);
    vtkNew<vtkMultiBlockDataSet> nameless;
    add(nameless, mesh(1), "rib");
    vtkNew<vtkMultiBlockDataSet> tree;
    add(tree, wing, "wing");
    add(tree, nameless, nullptr);
    add(tree, mesh(1), "tail");
    EXPECT_EQ(namesOf(piecesOf(tree)), (std::vector<std::string>{"wing/skin", "wing", "rib", "tail"}));
}

TEST(VtkPieces, WhatIsNoMeshIsLeftOut) {
    vtkNew<vtkMultiBlockDataSet> tree;
    vtkNew<vtkTable> table;
    add(tree, table, "table");
    add(tree, mesh(0), "empty");
    add(tree, nullptr, "nothing");
    EXPECT_TRUE(piecesOf(tree).empty());
    EXPECT_TRUE(piecesOf(table).empty());
    EXPECT_TRUE(piecesOf(nullptr).empty());
}

// So the numbers do not depend on what is empty in one step.
TEST(VtkPieces, SameNamesGetNumbersAlsoAfterEmptyOnes) {
    vtkNew<vtkMultiBlockDataSet> tree;
    add(tree, mesh(0), "a");
    add(tree, mesh(1), "a");
    add(tree, mesh(1), "b");
    add(tree, mesh(1), "a");
    EXPECT_EQ(namesOf(piecesOf(tree)), (std::vector<std::string>{"a (2)", "b", "a (3)"}));
}

} // namespace
