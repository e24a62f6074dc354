#include "OrvImportVtk/CgnsCells.h"
#include "OrvImportVtk/VtkCells.h"

#include <gtest/gtest.h>
#include <vtk_cgns.h>
#include <vtkCellType.h>

// clang-format off
#include VTK_CGNS(cgnslib.h)
// clang-format on

#include <set>

using namespace orv::imp::cae;

namespace {

TEST(CgnsCells, HaveAsManyNodesAsTheLibrarySays) {
    for (int type = 0; type < NofValidElementTypes; ++type) {
        int nodes = 0;
        cg_npe(CGNS_ENUMT(ElementType_t)(type), &nodes);
        const CgnsCell* cell = findCgnsCell(type);
        EXPECT_EQ(cell ? cell->nodeCount : 0, nodes) << cg_ElementTypeName(CGNS_ENUMT(ElementType_t)(type));
    }
}

TEST(CgnsCells, OtherTypesAreNone) {
    for (const std::int64_t type :
         {std::int64_t(-1), std::int64_t(CGNS_MIXED), std::int64_t(CGNS_POLYGONS), std::int64_t(CGNS_POLYHEDRA),
          std::int64_t(NofValidElementTypes), std::int64_t(1) << 32}) {
        EXPECT_EQ(findCgnsCell(type), nullptr) << type;
    }
    EXPECT_EQ(CGNS_MIXED, CGNS_ENUMV(MIXED));
    EXPECT_EQ(CGNS_POLYGONS, CGNS_ENUMV(NGON_n));
    EXPECT_EQ(CGNS_POLYHEDRA, CGNS_ENUMV(NFACE_n));
}

// What has a name in VTK that an element is made of has as many points there, each of them another node.
TEST(CgnsCells, MakeCellsOfVtk) {
    for (int type = 0; type < NofValidElementTypes; ++type) {
        const CgnsCell* cell = findCgnsCell(type);
        const VtkCell* known = cell ? findVtkCell(cell->cellType) : nullptr;
        if (!known) {
            continue;
        }
        EXPECT_EQ(cell->pointCount, known->pointCount) << type;
        EXPECT_TRUE(cell->order || cell->pointCount == cell->nodeCount) << type;
        std::set<int> nodes;
        for (int point = 0; point < cell->pointCount; ++point) {
            nodes.insert(cell->order ? cell->order[point] : point);
        }
        EXPECT_EQ(nodes.size(), cell->pointCount) << type;
        EXPECT_LT(*nodes.rbegin(), cell->nodeCount) << type;
    }
    EXPECT_EQ(findCgnsCell(CGNS_ENUMV(HEXA_64))->cellType, VTK_LAGRANGE_HEXAHEDRON);
    EXPECT_EQ(findCgnsCell(CGNS_ENUMV(HEXA_125))->cellType, VTK_EMPTY_CELL);
}

} // namespace
