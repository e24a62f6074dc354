#include "OrvUnstructGrid/PartSurface_p.h"

#include "OrvUnstructGrid/DataPart.h"

#include <algorithm>
#include <array>
#include <limits>
#include <span>

namespace orv::ug {
namespace {

constexpr std::uint32_t none = std::numeric_limits<std::uint32_t>::max();

/// The different corners of a face in ascending order, `none` behind them.
using FaceKey = std::array<std::uint32_t, 4>;

struct Face {
    FaceKey key;
    std::uint32_t next; ///< In the chain.
    std::uint32_t element;
    std::uint8_t surface;
    bool isShared;
};

/// The corners of the surfaces of one element type, laid out for the loop over all elements.
struct TypeSurfaces {
    std::uint8_t dimension = 0;
    std::uint8_t count = 0;
    std::uint8_t cornerCounts[6] = {};
    std::uint8_t corners[6][4] = {};
};

/// How a face of 3, 4, 6 or 8 nodes falls into triangles, by positions in elementSurface().
struct Split {
    std::uint8_t cornerCount;
    std::uint8_t triangleCount;
    std::uint8_t triangles[6][3];
    std::uint8_t edges[6];
};

constexpr Split SPLIT_3 = {3, 1, {{0, 1, 2}}, {0b111}};
constexpr Split SPLIT_4 = {4, 2, {{0, 1, 2}, {0, 2, 3}}, {0b011, 0b110}};
constexpr Split SPLIT_6 = {3, 4, {{5, 0, 3}, {3, 1, 4}, {4, 2, 5}, {3, 4, 5}}, {0b011, 0b011, 0b011, 0}};
constexpr Split SPLIT_8 = {
    4, 6, {{7, 0, 4}, {4, 1, 5}, {5, 2, 6}, {6, 3, 7}, {4, 5, 6}, {4, 6, 7}}, {0b011, 0b011, 0b011, 0b011, 0, 0}};

const Split& splitOf(std::size_t nodeCount) {
    switch (nodeCount) {
    case 3:
        return SPLIT_3;
    case 4:
        return SPLIT_4;
    case 6:
        return SPLIT_6;
    default:
        return SPLIT_8;
    }
}

std::array<TypeSurfaces, ELEMENT_TYPE_COUNT> makeTypeSurfaces() {
    std::array<TypeSurfaces, ELEMENT_TYPE_COUNT> all;
    for (std::size_t t = 0; t < all.size(); ++t) {
        const auto type = static_cast<ElementType>(t);
        const ElementTypeInfo& info = elementTypeInfo(type);
        all[t].dimension = info.dimension;
        all[t].count = info.surfaceCount;
        for (std::size_t s = 0; s < info.surfaceCount; ++s) {
            const std::span<const std::uint8_t> nodes = elementSurface(type, s);
            all[t].cornerCounts[s] = splitOf(nodes.size()).cornerCount;
            std::copy_n(nodes.begin(), all[t].cornerCounts[s], all[t].corners[s]);
        }
    }
    return all;
}

void sortKey(FaceKey& key) {
    auto order = [&key](std::size_t i, std::size_t j) {
        const std::uint32_t low = std::min(key[i], key[j]);
        key[j] = std::max(key[i], key[j]);
        key[i] = low;
    };
    order(0, 1);
    order(2, 3);
    order(0, 2);
    order(1, 3);
    order(1, 2);
}

FaceKey keyOf(const std::uint32_t* nodes, const std::uint8_t* corners, std::size_t cornerCount) {
    FaceKey key = {nodes[corners[0]], nodes[corners[1]], nodes[corners[2]],
                   cornerCount == 4 ? nodes[corners[3]] : none};
    sortKey(key);
    if (key[0] == key[1] || key[1] == key[2] || key[2] == key[3]) {
        std::fill(std::unique(key.begin(), key.end()), key.end(), none);
    }
    return key;
}

/// What `==` calls a function for.
bool isSame(const FaceKey& a, const FaceKey& b) {
    return a[0] == b[0] && a[1] == b[1] && a[2] == b[2] && a[3] == b[3];
}

/// All faces of a part; those of volumes are chained, one chain for each node, where equal ones find each other.
class FaceTable {
public:
    FaceTable(std::size_t nodeCount, std::size_t faceCount) : m_chains(nodeCount, none) {
        m_faces.reserve(faceCount); // An address range: only what is used is ever touched.
    }

    void addVolumeFace(const FaceKey& key, std::uint32_t element, std::uint8_t surface) {
        std::uint32_t* chain = &m_chains[chainOf(key)];
        for (std::uint32_t i = *chain; i != none; i = m_faces[i].next) {
            Face& face = m_faces[i];
            if (isSame(face.key, key)) {
                face.isShared = true;
                return;
            }
        }
        m_faces.push_back({key, *chain, element, surface, false});
        *chain = static_cast<std::uint32_t>(m_faces.size() - 1);
    }

    void addShell(std::uint32_t element) {
        m_faces.push_back({{}, none, element, 0, false});
    }

    std::span<const Face> faces() const {
        return m_faces;
    }

private:
    /// By the sum of the lowest three corners: neighbours are near in memory, and the faces about a node that a great
    /// many elements share are spread.
    std::size_t chainOf(const FaceKey& key) const {
        const std::size_t sum = std::size_t(key[0]) + key[1] + key[2];
        const std::size_t once = sum < m_chains.size() ? sum : sum - m_chains.size();
        return once < m_chains.size() ? once : once - m_chains.size();
    }

    std::vector<std::uint32_t> m_chains;
    std::vector<Face> m_faces;
};

bool isRingSide(std::span<const std::uint32_t> ring, std::uint32_t a, std::uint32_t b) {
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const std::uint32_t from = ring[i];
        const std::uint32_t to = ring[(i + 1) % ring.size()];
        if ((from == a && to == b) || (from == b && to == a)) {
            return true;
        }
    }
    return false;
}

/// Where corners fall together, sides that were inside the face can become its edges.
void markEdgesAnew(std::span<const std::uint32_t> nodes, std::size_t cornerCount, std::size_t firstTriangle,
                   ElementMesh* mesh) {
    std::vector<std::uint32_t> ring;
    for (std::size_t i = 0; i < cornerCount; ++i) {
        for (std::size_t node = i; node < nodes.size(); node += cornerCount) {
            ring.push_back(nodes[node]);
        }
    }
    for (std::size_t t = firstTriangle; t < mesh->edges.size(); ++t) {
        const std::uint32_t* corners = &mesh->corners[3 * t];
        mesh->edges[t] = 0;
        for (unsigned int i = 0; i < 3; ++i) {
            mesh->edges[t] |= static_cast<std::uint8_t>(isRingSide(ring, corners[i], corners[(i + 1) % 3]) << i);
        }
    }
}

/// @param nodes of the face, as elementSurface() orders them
/// @return false when nothing of it has an area
bool appendTriangles(std::span<const std::uint32_t> nodes, ElementMesh* mesh) {
    const Split& split = splitOf(nodes.size());
    const std::size_t firstTriangle = mesh->edges.size();
    for (std::size_t t = 0; t < split.triangleCount; ++t) {
        const std::uint32_t a = nodes[split.triangles[t][0]];
        const std::uint32_t b = nodes[split.triangles[t][1]];
        const std::uint32_t c = nodes[split.triangles[t][2]];
        if (a != b && b != c && c != a) {
            mesh->corners.insert(mesh->corners.end(), {a, b, c});
            mesh->edges.push_back(split.edges[t]);
        }
    }
    const std::size_t kept = mesh->edges.size() - firstTriangle;
    if (kept > 0 && kept < split.triangleCount) {
        markEdgesAnew(nodes, split.cornerCount, firstTriangle, mesh);
    }
    return kept > 0;
}

void appendFaces(const DataElements& elements, std::span<const Face> faces, PartSurface* surface) {
    for (const Face& face : faces) {
        if (face.isShared) {
            continue;
        }
        const std::uint32_t* nodes = &elements.connectivity()[elements.offsets()[face.element]];
        const std::span<const std::uint8_t> local = elementSurface(elements.types()[face.element], face.surface);
        std::uint32_t faceNodes[8];
        std::transform(local.begin(), local.end(), faceNodes, [nodes](std::uint8_t i) { return nodes[i]; });
        if (appendTriangles({faceNodes, local.size()}, surface)) {
            surface->faceOffsets.push_back(static_cast<std::uint32_t>(surface->edges.size()));
            surface->faceElements.push_back(face.element);
            surface->faceSurfaces.push_back(face.surface);
        }
    }
}

void appendBeam(std::span<const std::uint32_t> nodes, std::uint32_t element, ElementMesh* mesh) {
    auto append = [&](std::uint32_t from, std::uint32_t to) {
        mesh->tubeEnds.insert(mesh->tubeEnds.end(), {from, to});
        mesh->tubeElements.push_back(element);
    };
    if (nodes.size() == 3) {
        append(nodes[0], nodes[2]);
        append(nodes[2], nodes[1]);
    } else {
        append(nodes[0], nodes[1]);
    }
}

FaceTable collectFaces(const DataPart& part) {
    static const std::array<TypeSurfaces, ELEMENT_TYPE_COUNT> typeSurfaces = makeTypeSurfaces();
    const DataElements& elements = *part.elements();
    FaceTable table(part.nodes()->nodeCount(), elements.surfaceCount());
    const ElementType* types = elements.types().data();
    const std::uint32_t* nodes = elements.connectivity().data();
    for (std::size_t e = 0; e < elements.elementCount(); ++e) {
        const TypeSurfaces& surfaces = typeSurfaces[types[e]];
        const std::uint32_t* elementNodes = nodes + elements.offsets()[e];
        const auto element = static_cast<std::uint32_t>(e);
        if (surfaces.dimension == 2) {
            table.addShell(element);
        } else {
            for (std::uint8_t s = 0; s < surfaces.count; ++s) {
                const FaceKey key = keyOf(elementNodes, surfaces.corners[s], surfaces.cornerCounts[s]);
                if (key[2] != none) {
                    table.addVolumeFace(key, element, s);
                }
            }
        }
    }
    return table;
}

void appendBeamsAndPoints(const DataElements& elements, ElementMesh* mesh) {
    for (std::size_t e = 0; e < elements.elementCount(); ++e) {
        const auto element = static_cast<std::uint32_t>(e);
        const std::uint8_t dimension = elementTypeInfo(elements.types()[e]).dimension;
        if (dimension == 1) {
            appendBeam(elements.nodeIndexes(e), element, mesh);
        } else if (dimension == 0) {
            mesh->spherePoints.push_back(elements.nodeIndexes(e)[0]);
            mesh->sphereElements.push_back(element);
        }
    }
}

} // namespace

PartSurface surfaceOf(const DataPart& part) {
    PartSurface surface;
    if (part.isConsistent()) {
        appendFaces(*part.elements(), collectFaces(part).faces(), &surface);
        appendBeamsAndPoints(*part.elements(), &surface);
    }
    return surface;
}

} // namespace orv::ug
