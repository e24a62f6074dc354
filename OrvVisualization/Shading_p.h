#pragma once

#include "OrvVisualization/ColorMap.h"
#include "OrvVisualization/PictureScene_p.h"

namespace orv::vis {

/// Which colour a point of a surface has.
///
/// The light comes over the viewer's left shoulder, so that the three sides of a box that can be seen at once differ.
/// Both sides of a surface are lit alike. Inside a face the normal goes evenly from corner to corner, so that the
/// triangles which a face is split into do not show, and changes at the edges of elements, which do.
class Shading {
public:
    /// What a surface has without light from the shoulder.
    static constexpr double ambient = 0.6;
    /// Where the light is: this far up and to the left for one towards the viewer.
    static constexpr double lightUp = 0.35;
    static constexpr double lightLeft = 0.25;

    /// @param colors stays with the caller
    /// @param range what the colours of the map stand for
    Shading(const ColorMap& colors, const ScalarRange& range);

    /// Switches the light on.
    void setLight(const Vec3d& forward, const Vec3d& up, const Vec3d& right);

    /// @param direction of the ray that met the point
    rvf::Color3f colorOf(const SeenPoint& seen, const Vec3d& direction) const;

private:
    rvf::Color3f surfaceColor(const Shape& shape, const RayHit& hit) const;
    double brightness(const SeenPoint& seen, const Vec3d& direction) const;

    const ColorMap& m_colors;
    ScalarRange m_range;
    bool m_isLit = false;
    Vec3d m_toLight;
};

} // namespace orv::vis
