#include "OrvImportVtk/ExodusCells.h"

#include <gtest/gtest.h>
#include <vtkCellType.h>

using orv::imp::cae::ExodusCells;
using orv::imp::cae::findExodusCells;

namespace {

TEST(ExodusCells, GoByNameAndNodes) {
    struct Row {
        const char* type;
        std::size_t nodeCount;
        int cellType;
        std::size_t pointCount;
    };
    const Row rows[] = {
        {"SPHERE", 1, VTK_VERTEX, 1},
        {"CIRCLE", 1, VTK_VERTEX, 1},
        {"BAR2", 2, VTK_LINE, 2},
        {"beam", 3, VTK_QUADRATIC_EDGE, 3},
        {"TRUSS", 2, VTK_LINE, 2},
        {"EDGE", 2, VTK_LINE, 2},
        {"ROD", 2, VTK_LINE, 2},
        {"STRAIGHT2", 2, VTK_LINE, 2},
        {"TRI3", 3, VTK_TRIANGLE, 3},
        {"Tri", 6, VTK_QUADRATIC_TRIANGLE, 6},
        {"TRIANGLE", 7, VTK_QUADRATIC_TRIANGLE, 6},
        {"QUAD", 4, VTK_QUAD, 4},
        {"QUAD9", 9, VTK_QUADRATIC_QUAD, 8},
        {"SHELL", 3, VTK_TRIANGLE, 3},
        {"SHELL4", 4, VTK_QUAD, 4},
        {"SHELL9", 9, VTK_QUADRATIC_QUAD, 8},
        {"TETRA", 4, VTK_TETRA, 4},
        {"TETRA8", 8, VTK_TETRA, 4},
        {"TET11", 11, VTK_QUADRATIC_TETRA, 10},
        {"PYRAMID", 5, VTK_PYRAMID, 5},
        {"PYRAMID14", 14, VTK_QUADRATIC_PYRAMID, 13},
        {"WEDGE", 6, VTK_WEDGE, 6},
        {"WEDGE18", 18, VTK_QUADRATIC_WEDGE, 15},
        {"HEXAHEDRON", 8, VTK_HEXAHEDRON, 8},
        {"HEX21", 21, VTK_QUADRATIC_HEXAHEDRON, 20},
        {"SUPER", 7, VTK_POLY_VERTEX, 0},
        {"NSIDED", 0, VTK_POLYGON, 0},
    };
    for (const Row& row : rows) {
        ExodusCells cells;
        ASSERT_TRUE(findExodusCells(row.type, row.nodeCount, &cells)) << row.type << row.nodeCount;
        EXPECT_EQ(cells.cellType, row.cellType) << row.type << row.nodeCount;
        EXPECT_EQ(cells.pointCount, row.pointCount) << row.type << row.nodeCount;
    }
}

// Exodus numbers upright edges before those of the top, VTK after them.
TEST(ExodusCells, HaveTheirNodesInTheOrderOfVtk) {
    ExodusCells cells;
    ASSERT_TRUE(findExodusCells("HEX27", 27, &cells));
    EXPECT_EQ(cells.order[11], 11);
    EXPECT_EQ(cells.order[12], 16);
    EXPECT_EQ(cells.order[19], 15);
    ASSERT_TRUE(findExodusCells("WEDGE15", 15, &cells));
    EXPECT_EQ(cells.order[8], 8);
    EXPECT_EQ(cells.order[9], 12);
    EXPECT_EQ(cells.order[14], 11);
    ASSERT_TRUE(findExodusCells("TETRA10", 10, &cells));
    EXPECT_EQ(cells.order, nullptr);
}

TEST(ExodusCells, AreNotGuessed) {
    ExodusCells cells;
    EXPECT_FALSE(findExodusCells("HEX", 10, &cells));
    EXPECT_FALSE(findExodusCells("HEX", 0, &cells));
    EXPECT_FALSE(findExodusCells("SUPER", 0, &cells));
    EXPECT_FALSE(findExodusCells("NSIDED", 4, &cells));
    EXPECT_FALSE(findExodusCells("NFACED", 0, &cells));
    EXPECT_FALSE(findExodusCells("", 8, &cells));
}

} // namespace
