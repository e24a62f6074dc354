#pragma once

#include "OrvVisualization/EdgeLines_p.h"
#include "OrvVisualization/PictureRays_p.h"
#include "OrvVisualization/PictureScene_p.h"
#include "OrvVisualization/Shading_p.h"

#include <vector>

namespace orv::vis {

class Image;
class View;

/// What is between two neighbouring pixels.
enum class PictureBorder {
    NONE,
    COLOR, ///< The surface goes on in another colour.
    STEP   ///< Something else is seen, before or behind.
};

/// What one ray of a picture brought home.
struct PictureSample {
    const Shape* shape = nullptr; ///< Null for background.
    rvf::Color3f color;           ///< Without the line.
    double line = 0.0;            ///< How much of the line's colour is over it.
    Vec3d point;
    Vec3d normal;           ///< Towards the viewer.
    double pixelSize = 0.0; ///< At the point.
};

/// Casts the rays of a picture, one through the middle of each pixel, and more through those whose neighbours show
/// something else: another colour, or a step in depth.
class PictureCaster {
public:
    /// What lines are drawn with.
    static const rvf::Color3f lineColor;
    static constexpr double lineOpacity = 0.8;
    /// In pixels. Each of two faces draws a half, but behind a step there is only one, which draws the whole.
    static constexpr double lineWidth = 1.1;

    /// View and scene stay with the caller.
    PictureCaster(const View& view, const PictureScene& scene, const ScalarRange& range, int width, int height);

    /// @param image in RGB, of the size of the picture
    void castAll(Image* image);

private:
    using Row = std::vector<PictureSample>;

    void castRow(int y, Row* row) const;
    PictureSample cast(double x, double y, const LineStyle& lines) const;
    rvf::Color3f background(double y) const;
    PictureBorder borderAround(int x, int y) const;
    rvf::Color3f castMore(int x, int y, PictureBorder border) const;

    const View& m_view;
    const PictureScene& m_scene;
    PictureRays m_rays;
    Shading m_shading;
    Row m_above;
    Row m_row;
    Row m_below;
};

} // namespace orv::vis
