#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/Vec3d.h"

namespace orv::ug {

/// A plane that a model is cut with, to look at values inside. Owned by the model, see
/// UnstructGridModel::addCuttingPlane().
///
/// It shows its section through all parts, hidden ones too: hide a part to see what is inside. Volumes are cut in
/// polygons, shells in lines, beams in points; values are interpolated along the edges that are cut, values per element
/// stay as they are. Quadratic elements are cut by their corners. Where elements meet in the plane, the one below it,
/// away from the normal, shows the common face.
class ORV_API CuttingPlane {
public:
    /// Through the origin, its normal along z. Shown, and without a scalar.
    CuttingPlane() = default;

    /// @param normal of any length; what normal() gave comes back bit by bit
    /// @return false, and the plane stays as it was, when the normal is zero or a number is not finite
    bool setPlane(const Vec3d& point, const Vec3d& normal);
    Vec3d point() const;
    /// Of length 1.
    Vec3d normal() const;

    /// The scalar that is shown on the section, -1 when none.
    int mapScalarResultId() const;
    void setMapScalarResultId(int scalarResultId);

    bool isVisible() const;
    void setVisible(bool isVisible);

private:
    Vec3d m_point;
    Vec3d m_normal = {0, 0, 1};
    int m_mapScalarResultId = -1;
    bool m_isVisible = true;
};

} // namespace orv::ug
