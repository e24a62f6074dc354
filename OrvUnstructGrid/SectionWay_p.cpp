#include "OrvUnstructGrid/SectionWay_p.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace orv::ug {
namespace {

using Weights = std::array<double, 3>;

/// A point of a triangle or line, by how far along the way it is.
struct Place {
    double along;
    Weights weights; ///< Of the triangle's corners, or the ends of the line.
};

/// What of the way is in a triangle or on a line.
struct Stretch {
    Place begin;
    Place end;
    std::array<std::uint32_t, 3> points; ///< Of the section.
    const ShownSection* section;
    std::uint32_t element;
};

Place between(const Place& a, const Place& b, double shareOfB) {
    Place place{a.along + (b.along - a.along) * shareOfB, {}};
    for (std::size_t i = 0; i < 3; ++i) {
        place.weights[i] = a.weights[i] + (b.weights[i] - a.weights[i]) * shareOfB;
    }
    return place;
}

/// The part of a stretch from there on.
void cutBegin(Stretch* stretch, double along) {
    stretch->begin = between(stretch->begin, stretch->end,
                             (along - stretch->begin.along) / (stretch->end.along - stretch->begin.along));
    stretch->begin.along = along;
}

void cutEnd(Stretch* stretch, double along) {
    stretch->end = between(stretch->begin, stretch->end,
                           (along - stretch->begin.along) / (stretch->end.along - stretch->begin.along));
    stretch->end.along = along;
}

NodeMean nodeMean(const Stretch& stretch, const Place& place) {
    NodeMean mean;
    for (std::size_t i = 0; i < 3; ++i) {
        const SectionPoint& point = stretch.section->section->points[stretch.points[i]];
        mean.add(point.abovePlace, place.weights[i] * (1.0 - point.weight));
        mean.add(point.belowPlace, place.weights[i] * point.weight);
    }
    return mean;
}

class StraightWay {
public:
    StraightWay(const Vec3d& normal, const Vec3d& from, const Vec3d& to)
        : m_from(from), m_to(to), m_length((to - from).length()), m_along((to - from) / m_length),
          m_across(normal ^ m_along) {
        const double magnitude = std::max({std::abs(from.x()), std::abs(from.y()), std::abs(from.z()), m_length});
        m_roundings = 1e-14 * magnitude + 1e-12 * m_length;
    }

    void collect(const ShownSection& section) {
        const PlaneSection& mesh = *section.section;
        for (std::size_t face = 0; face < mesh.faceElements.size(); ++face) {
            for (std::size_t t = mesh.faceOffsets[face]; t < mesh.faceOffsets[face + 1]; ++t) {
                const std::uint32_t* corners = &mesh.corners[3 * t];
                meet(section, {corners[0], corners[1], corners[2]}, mesh.faceElements[face]);
            }
        }
        for (std::size_t tube = 0; tube < mesh.tubeElements.size(); ++tube) {
            const std::uint32_t* ends = &mesh.tubeEnds[2 * tube];
            meet(section, {ends[0], ends[1], ends[1]}, mesh.tubeElements[tube]);
        }
    }

    std::vector<PathSegment> segments() {
        std::stable_sort(m_stretches.begin(), m_stretches.end(),
                         [](const Stretch& a, const Stretch& b) { return a.begin.along < b.begin.along; });
        std::vector<PathSegment> segments;
        double done = 0.0;
        for (Stretch& stretch : m_stretches) {
            if (stretch.end.along <= done + m_roundings) {
                continue;
            }
            if (stretch.begin.along > done + m_roundings) {
                segments.push_back(gap(done, stretch.begin.along));
            } else {
                cutBegin(&stretch, done);
            }
            segments.push_back(segmentOf(stretch));
            done = stretch.end.along;
        }
        if (!segments.empty() && done < m_length) {
            segments.push_back(gap(done, m_length));
        }
        return segments;
    }

private:
    /// How far a point of the section is off the line; 0 within roundings.
    double distance(const Vec3d& point) const {
        const double distance = (point - m_from) * m_across;
        return std::abs(distance) <= m_roundings ? 0.0 : distance;
    }

    void meet(const ShownSection& section, const std::array<std::uint32_t, 3>& points, std::uint32_t element) {
        std::array<Place, 3> corners;
        double distances[3];
        for (std::size_t i = 0; i < 3; ++i) {
            const double* x = &section.section->coordinates[3 * std::size_t(points[i])];
            const Vec3d point(x[0], x[1], x[2]);
            distances[i] = distance(point);
            corners[i] = {(point - m_from) * m_along, {}};
            corners[i].weights[i] = 1.0;
        }
        Stretch stretch = {{std::numeric_limits<double>::infinity(), {}},
                           {-std::numeric_limits<double>::infinity(), {}},
                           points,
                           &section,
                           element};
        auto extend = [&stretch](const Place& place) {
            if (place.along < stretch.begin.along) {
                stretch.begin = place;
            }
            if (place.along > stretch.end.along) {
                stretch.end = place;
            }
        };
        for (std::size_t i = 0; i < 3; ++i) {
            const std::size_t next = (i + 1) % 3;
            if (distances[i] == 0.0) {
                extend(corners[i]);
            } else if (distances[i] * distances[next] < 0.0) {
                extend(between(corners[i], corners[next], distances[i] / (distances[i] - distances[next])));
            }
        }
        keep(stretch);
    }

    /// What of it is not behind the end.
    void keep(Stretch stretch) {
        if (!(stretch.end.along - stretch.begin.along > m_roundings) || stretch.begin.along >= m_length - m_roundings) {
            return;
        }
        if (stretch.end.along > m_length - m_roundings) {
            cutEnd(&stretch, m_length);
        }
        m_stretches.push_back(stretch);
    }

    Vec3d pointAt(double along) const {
        return along == m_length ? m_to : m_from + m_along * along;
    }

    PathSegment gap(double begin, double end) const {
        PathSegment segment;
        segment.begin = pointAt(begin);
        segment.end = pointAt(end);
        return segment;
    }

    PathSegment segmentOf(const Stretch& stretch) const {
        PathSegment segment = gap(stretch.begin.along, stretch.end.along);
        segment.geometryIndex = stretch.section->geometryIndex;
        segment.partIndex = stretch.section->partIndex;
        segment.element = stretch.element;
        segment.atBegin = nodeMean(stretch, stretch.begin);
        segment.atEnd = nodeMean(stretch, stretch.end);
        return segment;
    }

    Vec3d m_from;
    Vec3d m_to;
    double m_length;
    Vec3d m_along;
    Vec3d m_across;
    double m_roundings;
    std::vector<Stretch> m_stretches;
};

} // namespace

std::vector<PathSegment> sectionWay(std::span<const ShownSection> sections, const Vec3d& normal, const Vec3d& from,
                                    const Vec3d& to) {
    StraightWay way(normal, from, to);
    for (const ShownSection& section : sections) {
        way.collect(section);
    }
    return way.segments();
}

} // namespace orv::ug
