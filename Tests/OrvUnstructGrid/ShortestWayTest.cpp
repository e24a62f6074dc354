#include "OrvUnstructGrid/ShortestWay_p.h"

#include <gmock/gmock.h>

#include <cmath>
#include <map>

using namespace orv::ug;
using orv::Vec3d;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// Places by their keys, and directed arcs whose piece has the number of the arc.
struct Graph {
    struct Arc {
        std::uint64_t from;
        std::uint64_t to;
    };

    std::map<std::uint64_t, Vec3d> points;
    std::vector<Arc> arcs;
    mutable std::vector<std::uint64_t> looked;

    template <class Visit>
    void forArcs(std::uint64_t key, const Visit& visit) const {
        looked.push_back(key);
        for (std::uint32_t i = 0; i < arcs.size(); ++i) {
            if (arcs[i].from == key) {
                visit(arcs[i].to, points.at(arcs[i].to), SurfacePiece{0, i});
            }
        }
    }

    std::vector<std::uint64_t> way() const {
        std::vector<std::uint64_t> keys;
        for (const WayStep& step : shortestWay(*this, points.at(WAY_START), points.at(WAY_TARGET))) {
            EXPECT_EQ(step.point, points.at(step.key));
            if (step.key != WAY_START) {
                EXPECT_EQ(arcs[step.piece.index].from, keys.back());
                EXPECT_EQ(arcs[step.piece.index].to, step.key);
            }
            keys.push_back(step.key);
        }
        return keys;
    }
};

TEST(ShortestWayTest, TheShortestOfAllWaysIsTaken) {
    // By 1 it is 3 + 1, by 2 and 3 the straight line with a step of 0.5 to the side: 1.5 twice and a bit.
    Graph graph;
    graph.points = {
        {WAY_START, {0, 0, 0}}, {1, {0, 3, 0}}, {2, {1, 0.5, 0}}, {3, {2, 0.5, 0}}, {WAY_TARGET, {3, 0, 0}}};
    graph.arcs = {{WAY_START, 1}, {1, WAY_TARGET}, {WAY_START, 2}, {2, 3}, {3, WAY_TARGET}, {2, 1}};
    EXPECT_THAT(graph.way(), ElementsAre(WAY_START, 2, 3, WAY_TARGET));
    // Place 1 is farther away than the whole way: nobody has looked on from there.
    EXPECT_THAT(graph.looked, ElementsAre(WAY_START, 2, 3));
}

TEST(ShortestWayTest, ALaterShorterWayToAPlaceCounts) {
    // 4 is met first by way of 1, which is nearer to the target, and then more shortly by way of 2.
    Graph graph;
    graph.points = {{WAY_START, {0, 0, 0}}, {1, {3, 2, 0}}, {2, {0, 1.9, 0}}, {4, {2, 4, 0}}, {WAY_TARGET, {2, 9, 0}}};
    graph.arcs = {{WAY_START, 1}, {1, 4}, {WAY_START, 2}, {2, 4}, {4, WAY_TARGET}};
    const double byOne = std::hypot(3, 2) + std::hypot(1, 2);
    const double byTwo = 1.9 + std::hypot(2, 2.1);
    ASSERT_LT(byTwo, byOne);
    EXPECT_THAT(graph.way(), ElementsAre(WAY_START, 2, 4, WAY_TARGET));
}

TEST(ShortestWayTest, OfEqualWaysTheFirstOneMetIsTaken) {
    Graph graph;
    graph.points = {{WAY_START, {0, 0, 0}}, {1, {1, 1, 0}}, {2, {1, -1, 0}}, {WAY_TARGET, {2, 0, 0}}};
    graph.arcs = {{WAY_START, 2}, {WAY_START, 1}, {1, WAY_TARGET}, {2, WAY_TARGET}};
    EXPECT_THAT(graph.way(), ElementsAre(WAY_START, 1, WAY_TARGET)); // The lower key goes first.
    graph.arcs = {{WAY_START, 2}, {WAY_START, WAY_TARGET}, {WAY_START, WAY_TARGET}, {2, WAY_TARGET}};
    EXPECT_EQ(shortestWay(graph, {0, 0, 0}, {2, 0, 0}).back().piece, (SurfacePiece{0, 1}));
}

TEST(ShortestWayTest, ThereMayBeNoWay) {
    Graph graph;
    graph.points = {{WAY_START, {0, 0, 0}}, {1, {1, 0, 0}}, {2, {1, 1, 0}}, {WAY_TARGET, {2, 0, 0}}};
    graph.arcs = {{WAY_START, 1}, {1, 2}, {2, 1}, {2, 2}};
    EXPECT_THAT(graph.way(), IsEmpty());
    graph.arcs.clear();
    EXPECT_THAT(graph.way(), IsEmpty());
}

TEST(ShortestWayTest, PlacesThatAreNowhereAreNotOnTheWay) {
    Graph graph;
    graph.points = {{WAY_START, {0, 0, 0}},
                    {1, {1, 0, std::nan("")}},
                    {2, {1, 5, 0}},
                    {3, {1, 0, HUGE_VAL}},
                    {WAY_TARGET, {2, 0, 0}}};
    graph.arcs = {{WAY_START, 1}, {1, WAY_TARGET}, {WAY_START, 3}, {3, WAY_TARGET}, {WAY_START, 2}, {2, WAY_TARGET}};
    EXPECT_THAT(graph.way(), ElementsAre(WAY_START, 2, WAY_TARGET));
}

TEST(ShortestWayTest, ArcsWithoutLengthDoNotGoInCircles) {
    Graph graph;
    graph.points = {{WAY_START, {0, 0, 0}}, {1, {1, 0, 0}}, {2, {1, 0, 0}}, {3, {1, 0, 0}}, {WAY_TARGET, {2, 0, 0}}};
    graph.arcs = {{WAY_START, 1}, {1, 2}, {2, 3}, {3, 1}, {3, 2}, {2, WAY_TARGET}};
    EXPECT_THAT(graph.way(), ElementsAre(WAY_START, 1, 2, WAY_TARGET));
}

} // namespace
