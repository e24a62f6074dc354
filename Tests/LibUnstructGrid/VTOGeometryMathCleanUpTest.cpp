#include "LibUnstructGrid/VTOGeometryMathCleanUp.h"

#include "Tests/LibUnstructGrid/VectorSupport.h"
#include "Tests/Support/AssertStopper.h"

#include <algorithm>
#include <numeric>
#include <vector>

using orvtest::AssertRecorder;
using orvtest::assertsUntil;
using orvtest::failedIn;
using orvtest::PortableRandom;

namespace {

const std::string source = "LibUnstructGrid/VTOGeometryMathCleanUp";

using Ints = std::vector<int>;

int sizeOf(const Ints& list) {
    return static_cast<int>(list.size());
}

Ints upTo(std::size_t count) {
    Ints list(count);
    std::iota(list.begin(), list.end(), 0);
    return list;
}

/// What becomes of polygons that name each node once, in order.
Ints merged(const std::vector<VTVector>& nodes) {
    Ints polygons = upTo(nodes.size());
    VTRemoveDuplicatedNodes(polygons.data(), sizeOf(polygons), nodes.data(), sizeOf(polygons));
    return polygons;
}

Ints merged(const std::vector<VTVector>& nodes, double tolerance, int first, int second, int third) {
    const int order[] = {first, second, third};
    Ints polygons = upTo(nodes.size());
    VTRemoveDuplicatedNodes(polygons.data(), sizeOf(polygons), nodes.data(), sizeOf(polygons), tolerance, order);
    return polygons;
}

// Few nodes keep the order of equal ones in the sort.
TEST(RemoveDuplicatedNodes, NamesTheFirstOfEqualNodes) {
    const VTVector a(5, 1, 2);
    const VTVector b(1, 2, 3);
    const VTVector c(5, 1, 3);
    EXPECT_EQ(merged({a, b, a, c, b, a}), (Ints{0, 1, 0, 3, 1, 0}));
    EXPECT_EQ(merged({a, b, c}), (Ints{0, 1, 2}));
    EXPECT_EQ(merged({a}), (Ints{0}));
}

TEST(RemoveDuplicatedNodes, LeavesTheNodesAndOtherEntries) {
    const std::vector<VTVector> nodes = {{1, 1, 1}, {1, 1, 1}, {2, 2, 2}};
    std::vector<VTVector> same = nodes;
    Ints polygons = {2, 1, 1, 0, 2};
    VTRemoveDuplicatedNodes(polygons.data(), 4, same.data(), 3);
    EXPECT_EQ(polygons, (Ints{2, 0, 0, 0, 2}));
    EXPECT_EQ(same, nodes);
    polygons = {1, 1};
    VTRemoveDuplicatedNodes(polygons.data(), 1, same.data(), 3);
    EXPECT_EQ(polygons, (Ints{0, 1})) << "beyond the count";
    polygons = {0, 0};
    VTRemoveDuplicatedNodes(polygons.data(), 2, same.data(), 1);
    EXPECT_EQ(polygons, (Ints{0, 0}));
}

TEST(RemoveDuplicatedNodes, EqualIsRelativePerComponent) {
    for (int axis = 0; axis < 3; ++axis) {
        VTVector inside(1, 1, 1);
        VTVector outside(1, 1, 1);
        inside[axis] += 9e-13;
        outside[axis] += 1.1e-12;
        EXPECT_EQ(merged({{1, 1, 1}, inside}), (Ints{0, 0}));
        EXPECT_EQ(merged({{1, 1, 1}, outside}), (Ints{0, 1}));
    }
    EXPECT_EQ(merged({{0, 0, 0}, {1e-59, 0, 0}}), (Ints{0, 1}));
    EXPECT_EQ(merged({{0, 0, 0}, {1e-61, 0, 0}}), (Ints{0, 0}));
}

// Each is equal to the one before it, the last not to the first.
TEST(RemoveDuplicatedNodes, RunsCreep) {
    EXPECT_EQ(merged({{1 + 1.8e-12, 0, 0}, {1, 0, 0}, {1 + 9e-13, 0, 0}}), (Ints{1, 1, 1}));
}

// By x, y and z the second comes between the others, which are equal.
TEST(RemoveDuplicatedNodes, ComparesNeighboursAlone) {
    EXPECT_EQ(merged({{1, 0, 0}, {1 + 1e-13, 5, 0}, {1 + 2e-13, 0, 0}}), (Ints{0, 1, 2}));
    EXPECT_EQ(merged({{0, 1, 0}, {0, 1 + 1e-13, 5}, {0, 1 + 2e-13, 0}}), (Ints{0, 1, 2}));
    EXPECT_EQ(merged({{0, 1, 0}, {5, 1 + 1e-13, 0}, {0, 1 + 2e-13, 0}}), (Ints{0, 1, 0})) << "x goes before y";
}

TEST(RemoveDuplicatedNodes, NodesAreTheSameExactlyWhenTheyAreEqual) {
    PortableRandom random(161);
    std::vector<VTVector> nodes;
    for (int i = 0; i < 2000; ++i) {
        const double x = random.integer(0, 9);
        const double y = random.integer(0, 9);
        nodes.push_back({x, y, static_cast<double>(random.integer(0, 9))});
    }
    const Ints polygons = merged(nodes);
    std::vector<int> representative(1000, -1);
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        ASSERT_EQ(nodes[polygons[i]], nodes[i]);
        int& known = representative[static_cast<std::size_t>(100 * nodes[i].x + 10 * nodes[i].y + nodes[i].z)];
        known = known == -1 ? polygons[i] : known;
        ASSERT_EQ(polygons[i], known);
    }
}

TEST(RemoveDuplicatedNodes, WithinATolerance) {
    // 3, 4, 12: 13 apart.
    const std::vector<VTVector> nodes = {{1, 1, 1}, {4, 5, 13}};
    EXPECT_EQ(merged(nodes, 13, 0, 1, 2), (Ints{0, 1}));
    EXPECT_EQ(merged(nodes, 13 + 1e-12, 0, 1, 2), (Ints{0, 0}));
    EXPECT_EQ(merged({{1, 1, 1}, {1, 1, 1}}, 0, 0, 1, 2), (Ints{0, 1})) << "not even the same place is nearer than 0";
    EXPECT_EQ(merged({{1, 1, 1}, {1, 1, 1}}, 1e-100, 0, 1, 2), (Ints{0, 0}));
    EXPECT_EQ(merged({{3, 0, 0}, {1, 0, 0}, {2, 0, 0}}, 1.5, 0, 1, 2), (Ints{1, 1, 1})) << "runs creep";
}

// The first and the last are 0.9 apart. By x the second comes between them; by y, or by z, it does not.
TEST(RemoveDuplicatedNodes, InAGivenOrder) {
    const std::vector<VTVector> nodes = {{0, 0, 0}, {0.5, 9, 9}, {0.9, 0.1, 0}};
    EXPECT_EQ(merged(nodes, 1, 0, 1, 2), (Ints{0, 1, 2}));
    EXPECT_EQ(merged(nodes, 1, 1, 0, 2), (Ints{0, 1, 0}));
    EXPECT_EQ(merged(nodes, 1, 2, 0, 1), (Ints{0, 1, 0}));
}

TEST(RemoveDuplicatedNodes, NothingToDo) {
    AssertRecorder recorder;
    const VTVector nodes[] = {{1, 1, 1}, {1, 1, 1}};
    const int order[] = {0, 1, 2};
    int polygons[] = {1};
    VTRemoveDuplicatedNodes(polygons, 0, nodes, 2);
    VTRemoveDuplicatedNodes(polygons, 1, nodes, 0);
    VTRemoveDuplicatedNodes(polygons, 0, nodes, 2, 1, order);
    VTRemoveDuplicatedNodes(polygons, 1, nodes, 0, 1, order);
    EXPECT_EQ(polygons[0], 1);
    EXPECT_TRUE(recorder.take().empty());
}

TEST(RemoveDuplicatedNodes, AssertsListsAndCounts) {
    AssertRecorder recorder;
    const std::string lists = "piPolygons && pNodes";
    const std::string counts = "iNumConnects >= 0 && iNumNodes >= 0";
    const VTVector nodes[] = {{1, 1, 1}, {1, 1, 1}};
    const int order[] = {0, 1, 2};
    int polygons[] = {1};
    VTRemoveDuplicatedNodes(nullptr, 0, nodes, 2);
    EXPECT_EQ(recorder.take(), failedIn(source, {lists}));
    VTRemoveDuplicatedNodes(polygons, 1, nullptr, 0);
    EXPECT_EQ(recorder.take(), failedIn(source, {lists}));
    VTRemoveDuplicatedNodes(polygons, -1, nodes, 2);
    EXPECT_EQ(recorder.take(), failedIn(source, {counts}));
    VTRemoveDuplicatedNodes(polygons, 1, nodes, -1);
    EXPECT_EQ(recorder.take(), failedIn(source, {counts}));
    VTRemoveDuplicatedNodes(nullptr, -1, nullptr, -1, 1, order);
    EXPECT_EQ(recorder.take(), failedIn(source, {lists, counts}));
    EXPECT_EQ(polygons[0], 1);
}

struct Collapse {
    Ints polygon;
    Ints withRepeats;    ///< What is left without the flag; empty for a return of 0.
    Ints withoutRepeats; ///< With the flag.
};

const Collapse collapses[] = {
    {{}, {}, {}},
    {{5}, {}, {}},
    {{5, 5}, {}, {}},
    {{5, 6}, {5, 6}, {5, 6}},
    {{5, 5, 5}, {}, {}},
    {{1, 1, 2, 3, 1}, {1, 1, 2, 3, 1}, {1, 2, 3}},
    {{1, 2, 3}, {1, 2, 3}, {1, 2, 3}},
    {{1, 2, 2, 3}, {1, 2, 2, 3}, {1, 2, 3}},
    {{1, 2, 3, 3}, {1, 2, 3, 3}, {1, 2, 3}},
    {{1, 2, 2, 2}, {1, 2, 2, 2}, {1, 2}},
    {{1, 1, 1, 2}, {1, 1, 1, 2}, {1, 2}},
    {{1, 2, 1, 1}, {1, 2, 1, 1}, {1, 2}},
    {{1, 1, 2, 2, 3, 3, 1, 1}, {1, 1, 2, 2, 3, 3, 1, 1}, {1, 2, 3}},
    {{1, 2, 1, 2}, {1, 2, 1, 2}, {1, 2, 1, 2}}, // only neighbours count
};

TEST(CleanCollapsedPolygon, DropsRepeatsAndCollapsed) {
    for (const Collapse& row : collapses) {
        for (const bool remove : {true, false}) {
            const Ints& expected = remove ? row.withoutRepeats : row.withRepeats;
            Ints polygon = row.polygon;
            polygon.push_back(88); // so that there always is a buffer
            Ints result(polygon.size(), 77);
            const int count = VTCleanCollapsedPolygon(polygon.data(), sizeOf(row.polygon), remove, result.data());
            EXPECT_EQ(count, sizeOf(expected)) << testing::PrintToString(row.polygon);
            if (count == 0) {
                EXPECT_EQ(result, Ints(polygon.size(), 77)) << "nothing is written";
            }
            result.resize(static_cast<std::size_t>(count));
            EXPECT_EQ(result, expected) << testing::PrintToString(row.polygon);
        }
    }
}

TEST(CleanCollapsedPolygon, WorksWithinOneArray) {
    for (const Collapse& row : collapses) {
        for (const int ahead : {0, 1, 3}) {
            for (const bool remove : {true, false}) {
                const Ints& expected = remove ? row.withoutRepeats : row.withRepeats;
                Ints list(static_cast<std::size_t>(ahead), 77);
                list.insert(list.end(), row.polygon.begin(), row.polygon.end());
                list.push_back(88);
                const int count =
                    VTCleanCollapsedPolygon(list.data() + ahead, sizeOf(row.polygon), remove, list.data());
                EXPECT_EQ(list.back(), 88);
                list.resize(static_cast<std::size_t>(count));
                EXPECT_EQ(list, expected) << testing::PrintToString(row.polygon);
            }
        }
    }
}

TEST(CleanCollapsedPolygon, AssertsListsAndCount) {
    AssertRecorder recorder;
    int list[] = {1, 2};
    EXPECT_EQ(VTCleanCollapsedPolygon(nullptr, 0, true, list), 0);
    EXPECT_EQ(recorder.take(), failedIn(source, {"piConn && piRetConn"}));
    EXPECT_EQ(VTCleanCollapsedPolygon(list, 1, true, nullptr), 0);
    EXPECT_EQ(recorder.take(), failedIn(source, {"piConn && piRetConn"}));
    EXPECT_EQ(VTCleanCollapsedPolygon(list, -1, false, list), 0);
    EXPECT_EQ(recorder.take(), failedIn(source, {"iNumConn >= 0"}));
    EXPECT_EQ(VTCleanCollapsedPolygon(nullptr, -1, false, nullptr), 0);
    EXPECT_EQ(recorder.take(), failedIn(source, {"piConn && piRetConn", "iNumConn >= 0"}));
}

struct Mesh {
    Ints connectivity;
    std::vector<unsigned char> vertexCounts;

    bool operator==(const Mesh&) const = default;
};

/// Cleans a mesh in place and cuts both lists to their new counts.
bool clean(Mesh* mesh, bool removeRepeats) {
    int numConnects = 77;
    int numPolygons = 77;
    const bool changed = VTCleanCollapsedPolygons(
        mesh->connectivity.data(), sizeOf(mesh->connectivity), mesh->vertexCounts.data(),
        static_cast<int>(mesh->vertexCounts.size()), removeRepeats, &numConnects, &numPolygons);
    mesh->connectivity.resize(static_cast<std::size_t>(numConnects));
    mesh->vertexCounts.resize(static_cast<std::size_t>(numPolygons));
    return changed;
}

TEST(CleanCollapsedPolygons, CompactsBothLists) {
    const Mesh mesh = {{4, 4, 4, 1, 2, 2, 3, 5, 6, 7, 8, 8, 9, 9, 9, 9, 1, 2}, {3, 4, 3, 2, 4, 2}};
    Mesh without = mesh;
    EXPECT_TRUE(clean(&without, true));
    EXPECT_EQ(without, (Mesh{{1, 2, 3, 5, 6, 7, 1, 2}, {3, 3, 2}}));
    Mesh with = mesh;
    EXPECT_TRUE(clean(&with, false));
    EXPECT_EQ(with, (Mesh{{1, 2, 2, 3, 5, 6, 7, 1, 2}, {4, 3, 2}}));
}

TEST(CleanCollapsedPolygons, TellsWhetherACountHasChanged) {
    const Mesh clean1 = {{1, 2, 3, 3, 2, 4}, {3, 3}};
    for (const bool remove : {true, false}) {
        Mesh mesh = clean1;
        EXPECT_FALSE(clean(&mesh, remove));
        EXPECT_EQ(mesh, clean1);
    }
    Mesh repeats = {{1, 2, 2, 3}, {4}};
    EXPECT_FALSE(clean(&repeats, false));
    EXPECT_TRUE(clean(&repeats, true)) << "fewer vertices of as many polygons";
    EXPECT_EQ(repeats, (Mesh{{1, 2, 3}, {3}}));
    Mesh empty = {{1, 2, 3}, {0, 3, 0}};
    EXPECT_TRUE(clean(&empty, true)) << "fewer polygons of as many vertices";
    EXPECT_EQ(empty, (Mesh{{1, 2, 3}, {3}}));
    Mesh nothing = {{5}, {1}};
    EXPECT_TRUE(clean(&nothing, false));
    EXPECT_EQ(nothing, Mesh());
    // The count of connects is taken on trust.
    int list[] = {1, 2, 3};
    unsigned char count = 3;
    int numConnects = 77;
    int numPolygons = 77;
    EXPECT_TRUE(VTCleanCollapsedPolygons(list, 4, &count, 1, true, &numConnects, &numPolygons));
    EXPECT_EQ(numConnects, 3);
    EXPECT_EQ(numPolygons, 1);
}

TEST(CleanCollapsedPolygons, PolygonsMayHave255Vertices) {
    AssertRecorder recorder;
    Mesh mesh = {upTo(510), {255, 255}};
    mesh.connectivity[1] = 0;
    EXPECT_TRUE(clean(&mesh, true));
    EXPECT_EQ(mesh.vertexCounts, (std::vector<unsigned char>{254, 255}));
    EXPECT_EQ(mesh.connectivity.back(), 509);
    EXPECT_TRUE(recorder.take().empty());
}

TEST(CleanCollapsedPolygons, AssertsListsAndCounts) {
    const std::string lists = "piConn && pubNumPolyVerts";
    const std::string results = "piNumRetConnects && piNumRetPolygons";
    const std::string counts = "iNumConnects >= 0 && iNumPolygons >= 0";
    int list[] = {1, 2};
    unsigned char count = 2;
    int numConnects = 77;
    int numPolygons = 77;
    {
        AssertRecorder recorder;
        EXPECT_FALSE(VTCleanCollapsedPolygons(nullptr, 0, &count, 0, true, &numConnects, &numPolygons));
        EXPECT_EQ(recorder.take(), failedIn(source, {lists}));
        EXPECT_FALSE(VTCleanCollapsedPolygons(list, 0, nullptr, 0, true, &numConnects, &numPolygons));
        EXPECT_EQ(recorder.take(), failedIn(source, {lists}));
        EXPECT_TRUE(VTCleanCollapsedPolygons(list, -1, &count, 0, true, &numConnects, &numPolygons));
        EXPECT_EQ(recorder.take(), failedIn(source, {counts}));
        EXPECT_TRUE(VTCleanCollapsedPolygons(list, 0, &count, -1, true, &numConnects, &numPolygons));
        EXPECT_EQ(recorder.take(), failedIn(source, {counts}));
        EXPECT_EQ(numConnects, 0);
        EXPECT_EQ(numPolygons, 0);
    }
    EXPECT_EQ(assertsUntil(3, [&] { VTCleanCollapsedPolygons(nullptr, -1, nullptr, 0, true, nullptr, nullptr); }),
              failedIn(source, {lists, results, counts}));
    EXPECT_EQ(assertsUntil(1, [&] { VTCleanCollapsedPolygons(list, 0, &count, 0, true, nullptr, &numPolygons); }),
              failedIn(source, {results}));
    EXPECT_EQ(assertsUntil(1, [&] { VTCleanCollapsedPolygons(list, 0, &count, 0, true, &numConnects, nullptr); }),
              failedIn(source, {results}));
}

} // namespace
