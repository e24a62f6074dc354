#include "LibUnstructGrid/VTOGeometryMath.h"

#include "LibUnstructGrid/VTOLinAlgebra.h"
#include "Tests/LibUnstructGrid/NewWatch.h"

#include <gtest/gtest.h>

#include <new>
#include <vector>

using orvtest::allocations;
using orvtest::NewWatch;

namespace {

TEST(GeometryMathMemory, RaysAllocateNothing) {
    const VTVector triangle[] = {{0, 0, 3}, {4, 0, 3}, {0, 4, 3}};
    const VTVector origin(1, 1, 0);
    VTVector point;
    double t = 0;
    int hits = 0;
    EXPECT_TRUE(allocations([&] {
                    hits += VTPlaneRayIntersect(VT_ZAXIS_VEC, triangle[0], origin, VT_ZAXIS_VEC, &point, &t);
                    hits += VTRayTriangleIntersect(triangle, VT_ZAXIS_VEC, origin, VT_ZAXIS_VEC, &point, &t);
                    hits += VTRayCylinderIntersect({0, 0, 5}, {0, 0, 9}, 2, origin, VT_ZAXIS_VEC, &point, &t);
                }).empty());
    EXPECT_EQ(hits, 3);
}

TEST(GeometryMathMemory, CleaningPolygonsAllocatesNothing) {
    int connectivity[] = {1, 2, 2, 3, 4, 4, 4};
    unsigned char counts[] = {4, 3};
    int numConnects = 0;
    int numPolygons = 0;
    EXPECT_TRUE(allocations([&] {
                    VTCleanCollapsedPolygons(connectivity, 7, counts, 2, true, &numConnects, &numPolygons);
                }).empty());
    EXPECT_EQ(numConnects, 3);
}

TEST(GeometryMathMemory, RemovingDuplicatesTakesTwoIntsPerNode) {
    const std::vector<VTVector> nodes(100, VT_UNIT_VEC);
    int polygons[] = {5, 50};
    EXPECT_EQ(allocations([&] { VTRemoveDuplicatedNodes(polygons, 2, nodes.data(), 100); }),
              std::vector<std::size_t>(2, 100 * sizeof(int)));
    EXPECT_EQ(polygons[0], polygons[1]);
    EXPECT_TRUE(allocations([&] {
                    VTRemoveDuplicatedNodes(polygons, 0, nodes.data(), 100);
                    VTRemoveDuplicatedNodes(polygons, 2, nodes.data(), 0);
                }).empty())
        << "nothing to do";
}

TEST(GeometryMathMemory, WithoutMemoryThePolygonsStay) {
    const std::vector<VTVector> nodes(100, VT_UNIT_VEC);
    const int order[] = {0, 1, 2};
    int polygons[] = {5, 50};
    for (const int failing : {1, 2}) {
        {
            const NewWatch watch(failing);
            EXPECT_THROW(VTRemoveDuplicatedNodes(polygons, 2, nodes.data(), 100), std::bad_alloc);
        }
        const NewWatch watch(failing);
        EXPECT_THROW(VTRemoveDuplicatedNodes(polygons, 2, nodes.data(), 100, 1, order), std::bad_alloc);
    }
    EXPECT_EQ(polygons[0], 5);
    EXPECT_EQ(polygons[1], 50);
}

} // namespace
