#include "OrvUnstructGrid/PlaneSection_p.h"

#include "OrvUnstructGrid/DataPart.h"

#include <algorithm>
#include <array>
#include <utility>

namespace orv::ug {
namespace {

constexpr std::size_t MAX_CORNERS = 8;
constexpr std::size_t MAX_EDGES = 12;
constexpr std::size_t MAX_FACES = 6;
constexpr std::uint8_t noEdge = 0xff;

/// A face as a ring: side i goes from corner i to the next, along an edge of the element.
struct FaceRing {
    std::uint8_t sideCount = 0;
    std::uint8_t corners[4] = {};
    std::uint8_t edges[4] = {};
};

/// The corners, edges and faces of one element type.
struct TypeRings {
    std::uint8_t dimension = 0;
    std::uint8_t cornerCount = 0;
    std::uint8_t edgeCount = 0;
    std::uint8_t faceCount = 0;
    std::uint8_t edges[MAX_EDGES][2] = {};
    FaceRing faces[MAX_FACES];
};

std::uint8_t findEdge(const TypeRings& type, std::uint8_t a, std::uint8_t b) {
    std::uint8_t edge = 0;
    while (std::minmax(type.edges[edge][0], type.edges[edge][1]) != std::minmax(a, b)) {
        ++edge;
    }
    return edge;
}

TypeRings makeRings(ElementType elementType) {
    const ElementTypeInfo& info = elementTypeInfo(elementType);
    TypeRings type;
    type.dimension = info.dimension;
    type.cornerCount = info.cornerCount;
    type.edgeCount = info.edgeCount;
    type.faceCount = info.surfaceCount;
    for (std::size_t e = 0; e < info.edgeCount; ++e) {
        std::copy_n(elementEdge(elementType, e).begin(), 2, type.edges[e]);
    }
    for (std::size_t f = 0; f < info.surfaceCount; ++f) {
        const std::span<const std::uint8_t> nodes = elementSurface(elementType, f);
        FaceRing& face = type.faces[f];
        face.sideCount = static_cast<std::uint8_t>(info.isQuadratic ? nodes.size() / 2 : nodes.size());
        for (std::size_t i = 0; i < face.sideCount; ++i) {
            face.corners[i] = nodes[i];
            face.edges[i] = findEdge(type, nodes[i], nodes[(i + 1) % face.sideCount]);
        }
    }
    return type;
}

const TypeRings& ringsOf(ElementType type) {
    static const std::array<TypeRings, ELEMENT_TYPE_COUNT> all = [] {
        std::array<TypeRings, ELEMENT_TYPE_COUNT> rings;
        for (std::size_t t = 0; t < rings.size(); ++t) {
            rings[t] = makeRings(static_cast<ElementType>(t));
        }
        return rings;
    }();
    return all[type];
}

/// An element that the plane goes through.
struct CutElement {
    const TypeRings& type;
    std::uint32_t index;
    std::uint32_t firstPlace;
    double distances[MAX_CORNERS]; ///< Of the corners from the plane.

    bool isAbove(std::uint8_t corner) const {
        return distances[corner] >= 0.0;
    }
};

/// Whether the two corners above the plane are joined across a face whose corners are above and below in turn: whether
/// the saddle of the bilinear function is above.
bool isJoinedAbove(const CutElement& element, const FaceRing& face) {
    const double* d = element.distances;
    const double first = d[face.corners[0]] * d[face.corners[2]];
    const double second = d[face.corners[1]] * d[face.corners[3]];
    return element.isAbove(face.corners[0]) ? first >= second : second >= first;
}

/// Sets for each edge where the face's ring goes down through the plane the edge where the line across the face ends.
void linkFace(const CutElement& element, const FaceRing& face, std::uint8_t* next) {
    const std::size_t sides = face.sideCount;
    bool goesUp[4] = {};
    bool goesDown[4] = {};
    std::size_t downCount = 0;
    for (std::size_t i = 0; i < sides; ++i) {
        const bool from = element.isAbove(face.corners[i]);
        const bool to = element.isAbove(face.corners[(i + 1) % sides]);
        goesUp[i] = !from && to;
        goesDown[i] = from && !to;
        downCount += goesDown[i];
    }
    // With two ways up, the way back up is behind the corner below, or before the one above.
    const std::size_t step = downCount == 2 && !isJoinedAbove(element, face) ? sides - 1 : 1;
    for (std::size_t i = 0; i < sides; ++i) {
        if (goesDown[i]) {
            std::size_t up = i;
            do {
                up = (up + step) % sides;
            } while (!goesUp[up]);
            next[face.edges[i]] = face.edges[up];
        }
    }
}

class Cutter {
public:
    Cutter(const DataPart& part, std::span<const double> coordinates)
        : m_nodes(part.elements()->connectivity()), m_coordinates(coordinates) {}

    void cut(const CutElement& element) {
        switch (element.type.dimension) {
        case 3:
            cutVolume(element);
            break;
        case 2:
            cutShell(element);
            break;
        case 1:
            m_section.spherePoints.push_back(append(pointOn(element, 0)));
            m_section.sphereElements.push_back(element.index);
            break;
        default:
            break;
        }
    }

    PlaneSection take() {
        return std::move(m_section);
    }

private:
    SectionPoint pointOn(const CutElement& element, std::uint8_t edge) const {
        std::uint8_t above = element.type.edges[edge][0];
        std::uint8_t below = element.type.edges[edge][1];
        if (!element.isAbove(above)) {
            std::swap(above, below);
        }
        // Always from above to below, so that neighbours compute the same point.
        const double toPlane = element.distances[above];
        return {element.firstPlace + above, element.firstPlace + below, toPlane / (toPlane - element.distances[below])};
    }

    bool areOne(const SectionPoint& p, const SectionPoint& q) const {
        if (m_nodes[p.abovePlace] != m_nodes[q.abovePlace]) {
            return false;
        }
        return m_nodes[p.belowPlace] == m_nodes[q.belowPlace] || (p.weight == 0.0 && q.weight == 0.0);
    }

    std::uint32_t append(const SectionPoint& point) {
        const double* above = &m_coordinates[3 * std::size_t(m_nodes[point.abovePlace])];
        const double* below = &m_coordinates[3 * std::size_t(m_nodes[point.belowPlace])];
        for (std::size_t i = 0; i < 3; ++i) {
            m_section.coordinates.push_back(above[i] + (below[i] - above[i]) * point.weight);
        }
        m_section.points.push_back(point);
        return static_cast<std::uint32_t>(m_section.points.size() - 1);
    }

    void cutVolume(const CutElement& element) {
        std::array<std::uint8_t, MAX_EDGES> next;
        next.fill(noEdge);
        for (std::size_t f = 0; f < element.type.faceCount; ++f) {
            linkFace(element, element.type.faces[f], next.data());
        }
        // Each cut edge goes down in one of its two faces and up in the other, so the links are closed rings.
        for (std::uint8_t start = 0; start < element.type.edgeCount; ++start) {
            SectionPoint ring[MAX_EDGES];
            std::size_t count = 0;
            for (std::uint8_t edge = start; next[edge] != noEdge;) {
                const SectionPoint point = pointOn(element, edge);
                if (count == 0 || !areOne(point, ring[count - 1])) {
                    ring[count++] = point;
                }
                edge = std::exchange(next[edge], noEdge);
            }
            if (count > 1 && areOne(ring[0], ring[count - 1])) {
                --count;
            }
            if (count >= 3) {
                appendPolygon({ring, count}, element.index);
            }
        }
    }

    void appendPolygon(std::span<const SectionPoint> ring, std::uint32_t element) {
        const auto first = static_cast<std::uint32_t>(m_section.points.size());
        for (const SectionPoint& point : ring) {
            append(point);
        }
        const auto count = static_cast<std::uint32_t>(ring.size());
        for (std::uint32_t i = 1; i + 1 < count; ++i) {
            m_section.corners.insert(m_section.corners.end(), {first, first + i, first + i + 1});
            const unsigned int isFirst = i == 1;
            const unsigned int isLast = i + 2 == count;
            m_section.edges.push_back(static_cast<std::uint8_t>(isFirst | 0b010 | isLast << 2));
        }
        m_section.faceOffsets.push_back(static_cast<std::uint32_t>(m_section.edges.size()));
        m_section.faceElements.push_back(element);
    }

    void cutShell(const CutElement& element) {
        std::array<std::uint8_t, MAX_EDGES> next;
        next.fill(noEdge);
        linkFace(element, element.type.faces[0], next.data());
        for (std::uint8_t edge = 0; edge < element.type.edgeCount; ++edge) {
            if (next[edge] == noEdge) {
                continue;
            }
            const SectionPoint begin = pointOn(element, edge);
            const SectionPoint end = pointOn(element, next[edge]);
            if (!areOne(begin, end)) {
                m_section.tubeEnds.push_back(append(begin));
                m_section.tubeEnds.push_back(append(end));
                m_section.tubeElements.push_back(element.index);
            }
        }
    }

    std::span<const std::uint32_t> m_nodes;
    std::span<const double> m_coordinates;
    PlaneSection m_section;
};

std::vector<double> distancesOf(std::span<const double> coordinates, const Vec3d& point, const Vec3d& normal) {
    std::vector<double> distances(coordinates.size() / 3);
    for (std::size_t i = 0; i < distances.size(); ++i) {
        const double* x = &coordinates[3 * i];
        distances[i] = (Vec3d(x[0], x[1], x[2]) - point) * normal;
    }
    return distances;
}

} // namespace

PlaneSection sectionOf(const DataPart& part, std::span<const double> coordinates, const Vec3d& point,
                       const Vec3d& normal) {
    if (!part.isConsistent()) {
        return {};
    }
    const DataElements& elements = *part.elements();
    const std::vector<double> distances = distancesOf(coordinates, point, normal);
    const std::uint32_t* nodes = elements.connectivity().data();
    Cutter cutter(part, coordinates);
    for (std::size_t e = 0; e < elements.elementCount(); ++e) {
        const TypeRings& type = ringsOf(elements.types()[e]);
        CutElement element{type, static_cast<std::uint32_t>(e), elements.offsets()[e], {}};
        std::size_t aboveCount = 0;
        for (std::uint8_t i = 0; i < type.cornerCount; ++i) {
            element.distances[i] = distances[nodes[element.firstPlace + i]];
            aboveCount += element.isAbove(i);
        }
        if (aboveCount > 0 && aboveCount < type.cornerCount) {
            cutter.cut(element);
        }
    }
    return cutter.take();
}

} // namespace orv::ug
