#pragma once

#include "OrvVisualization/EdgeLines_p.h"
#include "OrvVisualization/PictureRays_p.h"
#include "OrvVisualization/PictureScene_p.h"
#include "OrvVisualization/Shading_p.h"

#include <array>
#include <vector>

namespace orv::vis {

class Image;
class View;

/// What is between neighbouring pixels, the most important last.
enum class PictureBorder {
    NONE,
    WEAK_COLOR, ///< Colours that differ a little.
    COLOR,
    STEP ///< Something before or behind the other.
};

/// What one ray of a picture brought home.
struct PictureSample {
    FacePoint place;    ///< Of any shape; with the normal towards the viewer. Without a shape for background.
    rvf::Color3f color; ///< Without the line.
    double line = 0.0;  ///< How much of the line's colour is over it.
    double pixelSize = 0.0;
};

/// Casts the rays of a picture, one through the middle of each pixel, and more through those whose neighbours show
/// something else: another colour, or a step in depth.
class PictureCaster {
public:
    /// What lines are drawn with.
    static const rvf::Color3f lineColor;
    static constexpr double lineOpacity = 0.8;

    /// View and scene stay with the caller.
    PictureCaster(const View& view, const PictureScene& scene, const ScalarRange& range, int width, int height);

    /// @param image in RGB, of the size of the picture
    void castAll(Image* image);

private:
    using Row = std::vector<PictureSample>;

    void castRow(int y, Row* row) const;
    PictureSample cast(const Ray& ray, double y, int raysPerSide) const;
    rvf::Color3f background(double y) const;
    std::array<const PictureSample*, 4> neighboursOf(int x, int y) const;
    PictureBorder borderAt(int x, int y) const;
    rvf::Color3f castMore(int x, int y, PictureBorder border) const;
    double outline(int x, int y, const Ray& ray, const PictureSample& behind) const;
    double outlineOf(const PictureSample& before, const Ray& ray, const PictureSample& behind) const;

    const View& m_view;
    const PictureScene& m_scene;
    PictureRays m_rays;
    Shading m_shading;
    Row m_above;
    Row m_row;
    Row m_below;
};

} // namespace orv::vis
