#pragma once

#include "OrvUnstructGrid/SurfaceTopology_p.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace orvtest {

struct CutTriangle {
    orv::ug::SurfacePiece piece;
    std::array<orv::Vec3d, 3> corners;

    /// Of length 1.
    orv::Vec3d normal() const {
        const orv::Vec3d cross = (corners[1] - corners[0]) ^ (corners[2] - corners[0]);
        return cross / cross.length();
    }
};

/// All triangles of all parts.
inline std::vector<CutTriangle> trianglesOf(const orv::ug::SurfaceTopology& topology) {
    std::vector<CutTriangle> triangles;
    for (std::uint32_t part = 0; part < topology.parts().size(); ++part) {
        for (std::uint32_t i = 0; i < topology.parts()[part].surface->edges.size(); ++i) {
            const orv::ug::PieceCorners corners = topology.corners({part, i});
            triangles.push_back(
                {{part, i}, {topology.point(corners[0]), topology.point(corners[1]), topology.point(corners[2])}});
        }
    }
    return triangles;
}

/// The lengths of the two ways round from one point of a cut to another.
struct CutArcs {
    double first = 0;
    double second = 0;
};

/// Cuts all triangles with the plane through two points that holds a direction. On a convex body the cut is one line
/// round, and its parts on either side of the line between both points are the two ways from one to the other; but
/// where both are in one face, the line itself is one of them.
inline CutArcs arcsOf(const std::vector<CutTriangle>& triangles, const orv::Vec3d& from, const orv::Vec3d& to,
                      const orv::Vec3d& direction) {
    const orv::Vec3d along = to - from;
    const orv::Vec3d cross = along ^ direction;
    const orv::Vec3d normal = cross / cross.length();
    const orv::Vec3d toLeft = normal ^ (along / along.length());
    double left = 0;
    double right = 0;
    double straight = 0;
    double beyond = 0;
    for (const CutTriangle& triangle : triangles) {
        std::vector<orv::Vec3d> ends;
        for (std::size_t i = 0; i < 3; ++i) {
            const orv::Vec3d& a = triangle.corners[i];
            const orv::Vec3d& b = triangle.corners[(i + 1) % 3];
            const double atA = (a - from) * normal;
            const double atB = (b - from) * normal;
            if ((atA < 0) != (atB < 0)) {
                ends.push_back(a + (b - a) * (atA / (atA - atB)));
            }
        }
        if (ends.size() != 2) {
            continue;
        }
        const double length = (ends[1] - ends[0]).length();
        const double high = std::max((ends[0] - from) * toLeft, (ends[1] - from) * toLeft);
        const double low = std::min((ends[0] - from) * toLeft, (ends[1] - from) * toLeft);
        if (high < 1e-9 && low > -1e-9) {
            const double square = along * along;
            const double begin = std::clamp((ends[0] - from) * along / square, 0.0, 1.0);
            const double end = std::clamp((ends[1] - from) * along / square, 0.0, 1.0);
            const double inside = std::abs(end - begin) * along.length();
            straight += inside;
            beyond += length - inside;
        } else {
            const double leftShare = low >= 0 ? 1.0 : high <= 0 ? 0.0 : high / (high - low);
            left += leftShare * length;
            right += (1 - leftShare) * length;
        }
    }
    return straight > 1e-9 ? CutArcs{straight, left + right + beyond} : CutArcs{left + beyond, right};
}

} // namespace orvtest
