#pragma once

#include "OrvUnstructGrid/SurfaceTopology_p.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <queue>
#include <unordered_map>
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

/// The shortest way through a graph of places in space, arcs being straight: A*, by the straight distance from the
/// target. Looks at no more places than are in the ellipsoid whose foci are start and target and that the way just fits
/// in. Of ways of the same length the one that is met first is taken, so the same graph gives the same way.
///
/// Graph::forArcs(key, visit) calls back with the key, point and piece of each arc from a place; arcs that are not
/// finite are ignored.
/// @return from the start to the target, both included; empty when there is no way
template <class Graph>
std::vector<WayStep> shortestWay(const Graph& graph, const Vec3d& start, const Vec3d& target) {
    struct Place {
        double length; ///< Of the way up to here.
        std::uint64_t previous;
        WayStep step;
        bool isDone;
    };
    struct Entry {
        double estimate; ///< Of the whole way.
        double length;
        std::uint64_t key;

        /// Whether the other one goes first: the shorter, the farther on the way, the lower key.
        bool operator<(const Entry& other) const {
            if (estimate != other.estimate) {
                return estimate > other.estimate;
            }
            return length != other.length ? length < other.length : key > other.key;
        }
    };
    std::unordered_map<std::uint64_t, Place> places;
    std::priority_queue<Entry> queue;
    places.emplace(WAY_START, Place{0.0, WAY_START, {WAY_START, start, {}}, false});
    queue.push({(target - start).length(), 0.0, WAY_START});
    while (!queue.empty() && queue.top().key != WAY_TARGET) {
        const std::uint64_t key = queue.top().key;
        queue.pop();
        Place& place = places.at(key);
        if (place.isDone) {
            continue;
        }
        place.isDone = true;
        const Vec3d from = place.step.point;
        const double lengthSoFar = place.length;
        graph.forArcs(key, [&](std::uint64_t next, const Vec3d& point, SurfacePiece piece) {
            const double length = lengthSoFar + (point - from).length();
            if (!(length < std::numeric_limits<double>::infinity())) {
                return;
            }
            const auto [found, isNew] = places.try_emplace(next, Place{length, key, {next, point, piece}, false});
            if (!isNew && (found->second.isDone || found->second.length <= length)) {
                return;
            }
            found->second = {length, key, {next, point, piece}, false};
            queue.push({length + (target - point).length(), length, next});
        });
    }
    std::vector<WayStep> way;
    if (!queue.empty()) {
        for (std::uint64_t key = WAY_TARGET; key != WAY_START; key = places.at(key).previous) {
            way.push_back(places.at(key).step);
        }
        way.push_back(places.at(WAY_START).step);
        std::reverse(way.begin(), way.end());
    }
    return way;
}

} // namespace orv::ug
