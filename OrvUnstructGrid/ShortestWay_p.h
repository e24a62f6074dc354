#pragma once

#include "OrvUnstructGrid/SurfaceTopology_p.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <queue>
#include <unordered_map>
#include <utility>
#include <vector>

namespace orv::ug {

/// What a way starts from and leads to; all other places have keys of the graph's own.
constexpr std::uint64_t WAY_START = std::numeric_limits<std::uint64_t>::max();
constexpr std::uint64_t WAY_TARGET = WAY_START - 1;

/// A place on a way.
struct WayStep {
    std::uint64_t key;
    Vec3d point;
    SurfacePiece piece; ///< In which it is reached from the place before.
};

/// The search for the shortest way through a graph of places in space, arcs being straight.
template <class Graph>
class WaySearch {
public:
    WaySearch(const Graph& graph, const Vec3d& start, const Vec3d& target) : m_graph(graph), m_target(target) {
        enter({WAY_START, start, {}}, WAY_START, 0.0);
    }

    /// From the start to the target, both included; empty when there is no way.
    std::vector<WayStep> run() {
        while (!m_queue.empty() && m_queue.top().key != WAY_TARGET) {
            const std::uint64_t key = m_queue.top().key;
            m_queue.pop();
            if (!std::exchange(m_places.at(key).isDone, true)) {
                lookOn(m_places.at(key));
            }
        }
        return m_queue.empty() ? std::vector<WayStep>() : trace();
    }

private:
    struct Place {
        WayStep step;
        std::uint64_t previous;
        double length; ///< Of the way up to here.
        bool isDone;
    };

    struct Entry {
        double estimate; ///< Of the whole way.
        double length;   ///< Up to here.
        std::uint64_t key;

        /// Whether the other one goes first: the shorter, the farther on the way, the lower key.
        bool operator<(const Entry& other) const {
            if (estimate != other.estimate) {
                return estimate > other.estimate;
            }
            return length != other.length ? length < other.length : key > other.key;
        }
    };

    void lookOn(const Place& from) {
        m_graph.forArcs(from.step.key, [&](std::uint64_t key, const Vec3d& point, SurfacePiece piece) {
            const double length = from.length + (point - from.step.point).length();
            if (length < std::numeric_limits<double>::infinity()) {
                enter({key, point, piece}, from.step.key, length);
            }
        });
    }

    void enter(const WayStep& step, std::uint64_t previous, double length) {
        const Place place = {step, previous, length, false};
        const auto [found, isNew] = m_places.try_emplace(step.key, place);
        if (!isNew) {
            if (found->second.isDone || found->second.length <= length) {
                return;
            }
            found->second = place;
        }
        m_queue.push({length + (m_target - step.point).length(), length, step.key});
    }

    std::vector<WayStep> trace() const {
        std::vector<WayStep> way = {m_places.at(WAY_TARGET).step};
        while (way.back().key != WAY_START) {
            way.push_back(m_places.at(m_places.at(way.back().key).previous).step);
        }
        std::reverse(way.begin(), way.end());
        return way;
    }

    const Graph& m_graph;
    Vec3d m_target;
    std::unordered_map<std::uint64_t, Place> m_places;
    std::priority_queue<Entry> m_queue;
};

/// The shortest way by A*, with the straight distance from the target. Looks at no more places than are in the
/// ellipsoid whose foci are start and target and that the way just fits in. Of ways of the same length the one that is
/// met first is taken, so the same graph gives the same way.
///
/// Graph::forArcs(key, visit) calls back with the key, point and piece of each arc from a place; arcs that are not
/// finite are ignored.
/// @return from the start to the target, both included; empty when there is no way
template <class Graph>
std::vector<WayStep> shortestWay(const Graph& graph, const Vec3d& start, const Vec3d& target) {
    return WaySearch<Graph>(graph, start, target).run();
}

} // namespace orv::ug
