#pragma once

#include <cstdint>
#include <vector>

namespace orv::ug {

class DataPart;

/// What is drawn of elements, and of which element each piece is. Pieces come in the order of the elements. Whose
/// points the indexes mean is for the owner to say.
struct ElementMesh {
    std::vector<std::uint32_t> corners; ///< 3 points for each triangle.
    std::vector<std::uint8_t> edges;    ///< For each triangle: bit i is set when side i is an edge of the face.
    std::vector<std::uint32_t> faceOffsets = {0}; ///< Where each face begins among the triangles, and their count.
    std::vector<std::uint32_t> faceElements;      ///< One for each face.

    std::vector<std::uint32_t> tubeEnds; ///< 2 points for each tube.
    std::vector<std::uint32_t> tubeElements;

    std::vector<std::uint32_t> spherePoints;
    std::vector<std::uint32_t> sphereElements;
};

/// The surface of a part: the faces of volumes that are used once, all shells, beams as tubes, points as spheres. Point
/// indexes are those of the part's nodes.
struct PartSurface : ElementMesh {
    std::vector<std::uint8_t> faceSurfaces; ///< For each face which surface of its element it is.
};

/// Two faces are one when they have the same corners, whatever their order and their mid-side nodes; a corner that is
/// there twice counts once, so a collapsed quadrilateral meets a triangle. Other parts do not count. A face without
/// three different corners has no area and is left out.
///
/// Triangles keep the orientation of elementSurface(). A quadrilateral is split from its first corner to its third;
/// faces with mid-side nodes into a triangle at each corner and the rest between the mid-side nodes, and a beam at its
/// own, so that every node lies on the surface.
///
/// A part that is not consistent has no surface. Takes time and memory proportional to the elements: no sorting, no
/// hashing, nothing allocated for single faces.
PartSurface surfaceOf(const DataPart& part);

} // namespace orv::ug
