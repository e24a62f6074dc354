#pragma once

#include "LibCore/rvfExport.h"
#include "OrvUnstructGrid/HitItem.h"

#include <cstddef>
#include <vector>

namespace orv::ug {

class UnstructGridModel;
struct PathSegment;

/// A path over what a model shows, through picked points, and a scalar along it:
///
/// @code
/// orv::ug::SurfacePathQuery query(model, model->currentFrameIndex(), orv::ug::SurfacePathQuery::COORDINATE, items);
/// std::vector<orv::Vec3d> path;
/// std::vector<double> x;
/// std::vector<double> y;
/// if (query.generatePath(&path) && query.getScalarResultValues(scalarId, &x, &y)) {
///     plot->addCurve("Scalar vs. Length", x, y);
/// }
/// @endcode
///
/// The path lies on the current state as it is shown, displaced or not, in the model's units. Which state an item was
/// picked in does not count: nodes and elements are looked up in the current one.
///
/// **On parts** each leg, from one item to the next, is the cut of the surface with the plane through its two points
/// that holds the mean of the two surface normals, and of the ways along that cut the shortest, so around a closed body
/// the shorter direction. It enters each triangle at most once and has a point at every triangle side it crosses. It
/// goes from one visible part to another where these have nodes at the same place, to within 1e-6 of the diagonal of
/// the box about all visible parts; volume faces that touch over all their corners are inside, and no path runs
/// between them.
///
/// - A normal at an edge is the mean of the triangles there, at a node weighted by their angles.
/// - A shell has no inside: where normals point away from each other and one of them is a shell's, the second one is
///   tried both ways and the shorter path is taken. At a node shells are turned like the volumes there, or else like
///   the first of them.
/// - Where the mean vanishes or points along the leg, as from the top of a plate to its bottom, the difference of the
///   normals takes its place, and where that does too, the shortest path of those in the planes along x, y and z.
///
/// Where the cut does not lead from one point to the other, because of a hole, a gap or a free edge, the leg is the
/// shortest way along the sides of triangles (diagonals of quadrilaterals among them) and along beams. So is a leg that
/// begins or ends on a beam.
///
/// **On a cutting plane** each leg is straight, with a point at each side of the section's triangles. It goes on over
/// gaps, where there are no values. Coordinates that are off the plane are moved straight into it. Where sections
/// overlap the first one along the leg is taken. A section of shells has lines only, and the leg is in a gap but where
/// it runs along them.
///
/// Triangles with a node that is not finite are not there. Legs without length add nothing. The path of the same items
/// in reverse order is the same path reversed.
class ORV_API SurfacePathQuery {
public:
    /// What an item on a part stands for. On a cutting plane an item always is its coordinate.
    enum PointType {
        /// Its node. A node inside of a volume is on no path.
        NODE = 0,
        /// The centre of its element: of a volume, of the face HitItem::elementLocalSurfaceIndex(), or when that is not
        /// on the surface, of the face that is nearest to the coordinate. Centre is the average of all nodes of the
        /// face, shell or beam, moved to its nearest point where that is not plane.
        ELEMENT = 1,
        /// Its coordinate, moved to the nearest point of its element's faces or beam, as it is off these when the shape
        /// has been displaced since.
        COORDINATE = 2
    };

    /// @param model not owned; it must live as long as the query
    /// @param frameIndex UnstructGridModel::currentFrameIndex(). States have one frame: there is no path in another.
    /// @param items in the order of the path, two or more; on visible parts, or all on one visible cutting plane
    SurfacePathQuery(UnstructGridModel* model, std::size_t frameIndex, PointType pointType, std::vector<HitItem> items);
    ~SurfacePathQuery();

    SurfacePathQuery(const SurfacePathQuery&) = delete;
    SurfacePathQuery& operator=(const SurfacePathQuery&) = delete;

    /// The corners of the path, from the first item to the last. No two successive ones are equal.
    ///
    /// The first path after the shape has changed finds out what touches what, in a time that grows with the surface;
    /// another one over the same surface costs as much as the triangles it crosses or, along sides, as those it looks
    /// at. A section is searched through each time.
    ///
    /// @param path replaced; empty when there is no path
    /// @return false with an empty path when one item is not to be found on what is shown, when there is no way between
    ///         two successive ones, when items are on parts and planes or on several planes, when there are less than
    ///         two, when the path has no length, and when there is nothing to be shown; also when `path` is null
    bool generatePath(std::vector<Vec3d>* path);

    /// A scalar along the path, which is generated when generatePath() has not been called. Asks for the result in the
    /// state that the path was generated in, and loads it when it is not there.
    ///
    /// Values per node are interpolated along the sides of triangles. What is given per element is constant in each
    /// element, per element and node interpolated in it, per element and surface constant on each face; these give a
    /// step between elements, two entries with the same length. In sections values per element and surface are averaged
    /// over the element. A path along a side takes one of the elements there, always the same. What is interpolated
    /// from an undefined value, and what lies in a gap, is UNDEFINED_DOUBLE.
    ///
    /// @param x the running length from the first item: not falling, the first is 0
    /// @param y one value for each length. A gap has an undefined one at its beginning and its end.
    /// @return false, with both empty, when there is no path, no such result or none in that state, when it cannot be
    ///         loaded, when the geometry has been replaced since the path was generated, or when no value on the path
    ///         is defined; also when `x` or `y` is null
    bool getScalarResultValues(int scalarResultId, std::vector<double>* x, std::vector<double>* y);

private:
    void generate();

    UnstructGridModel* m_model;
    std::size_t m_frameIndex;
    PointType m_pointType;
    std::vector<HitItem> m_items;
    std::vector<PathSegment> m_segments; ///< Empty before the path is generated, and when there is none.
    int m_stateId = -1;                  ///< In which it was.
    std::vector<int> m_geometryIds;      ///< Of that state.
};

} // namespace orv::ug
