#pragma once

#include "OrvUnstructGrid/DataPart.h"
#include "OrvUnstructGrid/PlaneSection_p.h"

#include <span>
#include <vector>

namespace orv::ug {

/// The values of a scalar result on one part.
struct PartScalars {
    ResultMapping mapping = UNKNOWN_MAPPING; ///< Unknown when there are none.
    std::span<const double> values;          ///< As many as the part has items of that mapping.
};

/// The scalars of the points or of the pieces (faces, tubes or spheres) of a shape; at most one of the two is not
/// empty.
struct ShapeScalars {
    std::vector<double> ofPoints;
    std::vector<double> ofPieces;
};

/// The average of those that are defined; undefined when none is.
double averageOfDefined(std::span<const double> values);

/// Calls back with each element's position in `ofElements` and where its items PER_ELEMENT_SURFACE begin. Looks at all
/// elements up to the last one.
/// @param ofElements ascending
template <class Visit>
void forFirstSurfaces(const DataPart& part, std::span<const std::uint32_t> ofElements, Visit visit) {
    const std::span<const ElementType> types = part.elements()->types();
    std::size_t first = 0;
    std::uint32_t element = 0;
    for (std::size_t i = 0; i < ofElements.size(); ++i) {
        for (; element < ofElements[i]; ++element) {
            first += elementTypeInfo(types[element]).surfaceCount;
        }
        visit(i, first);
    }
}

// How values come on what is drawn, for mappings other than PER_NODE, whose values on a surface are used as they are.
// Values that are undefined do not count in an average and make what is interpolated from them undefined.

/// On faces of the surface. PER_ELEMENT_NODE: averaged at each node of the part. PER_ELEMENT: of the element.
/// PER_ELEMENT_SURFACE: of the surface.
ShapeScalars scalarsOfFaces(const PartScalars& scalars, const DataPart& part, const PartSurface& surface);

/// On tubes or spheres of the surface. As scalarsOfFaces(), but PER_ELEMENT_SURFACE has none there.
/// @param elements of which each tube or sphere is
ShapeScalars scalarsOfLines(const PartScalars& scalars, const DataPart& part, std::span<const std::uint32_t> elements);

/// On faces, tubes or spheres of a section. PER_NODE and PER_ELEMENT_NODE: interpolated between the ends of the edge
/// that is cut. PER_ELEMENT: of the element. PER_ELEMENT_SURFACE: averaged over the element's surfaces.
/// @param elements of which each face, tube or sphere is
ShapeScalars scalarsOfSection(const PartScalars& scalars, const DataPart& part, const PlaneSection& section,
                              std::span<const std::uint32_t> elements);

} // namespace orv::ug
