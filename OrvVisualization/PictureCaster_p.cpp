#include "OrvVisualization/PictureCaster_p.h"

#include "OrvVisualization/Image.h"
#include "OrvVisualization/View.h"

#include <algorithm>
#include <cmath>

namespace orv::vis {
namespace {

/// Channels that differ by less are one colour to the eye.
constexpr float evenColor = 0.04F;

/// In pixels, how far a neighbour is out of the plane where the surface goes on.
constexpr double evenDepth = 1.0;

rvf::Color3f mix(const rvf::Color3f& from, const rvf::Color3f& to, double share) {
    const auto s = static_cast<float>(share);
    return {from.r() + (to.r() - from.r()) * s, from.g() + (to.g() - from.g()) * s, from.b() + (to.b() - from.b()) * s};
}

rvf::Color3f withLine(const PictureSample& sample) {
    return mix(sample.color, PictureCaster::lineColor, sample.line * PictureCaster::lineOpacity);
}

float difference(const rvf::Color3f& a, const rvf::Color3f& b) {
    return std::max({std::abs(a.r() - b.r()), std::abs(a.g() - b.g()), std::abs(a.b() - b.b())});
}

/// Whether one of two neighbours is before the surface that the other one is on. Where two surfaces join, each is
/// before or behind the other alike.
bool isStep(const PictureSample& a, const PictureSample& b) {
    const Vec3d between = b.point - a.point;
    const double beforeA = between * a.normal;
    const double beforeB = -(between * b.normal);
    return beforeA * beforeB < 0.0 &&
           std::max(std::abs(beforeA), std::abs(beforeB)) > evenDepth * std::max(a.pixelSize, b.pixelSize);
}

PictureBorder borderBetween(const PictureSample& a, const PictureSample& b) {
    if (!a.shape && !b.shape) {
        return PictureBorder::NONE;
    }
    if (!a.shape || !b.shape || isStep(a, b)) {
        return PictureBorder::STEP;
    }
    return difference(a.color, b.color) < evenColor ? PictureBorder::NONE : PictureBorder::COLOR;
}

} // namespace

const rvf::Color3f PictureCaster::lineColor = {0.05F, 0.05F, 0.07F};

PictureCaster::PictureCaster(const View& view, const PictureScene& scene, const ScalarRange& range, int width,
                             int height)
    : m_view(view), m_scene(scene), m_rays(*view.camera(), width, height), m_shading(view.colorMap(), range) {
    if (view.isLit()) {
        m_shading.setLight(m_rays.forward(), m_rays.up(), m_rays.right());
    }
}

void PictureCaster::castAll(Image* image) {
    castRow(0, &m_below);
    for (int y = 0; y < m_rays.height(); ++y) {
        m_above.swap(m_row);
        m_row.swap(m_below);
        castRow(y + 1, &m_below);
        std::uint8_t* bytes = image->row(y);
        for (int x = 0; x < m_rays.width(); ++x, bytes += 3) {
            const PictureBorder border = borderAround(x, y);
            const rvf::Color3f color = border == PictureBorder::NONE ? withLine(m_row[x]) : castMore(x, y, border);
            bytes[0] = color.rByte();
            bytes[1] = color.gByte();
            bytes[2] = color.bByte();
        }
    }
}

/// An empty row below the last.
void PictureCaster::castRow(int y, Row* row) const {
    row->clear();
    for (int x = 0; y < m_rays.height() && x < m_rays.width(); ++x) {
        row->push_back(cast(x + 0.5, y + 0.5, {lineWidth / 2, 1}));
    }
}

PictureSample PictureCaster::cast(double x, double y, const LineStyle& lines) const {
    const Ray ray = m_rays.through(x, y);
    const SeenPoint seen = m_scene.meet(ray);
    PictureSample sample;
    sample.shape = seen.shape;
    if (!seen.shape) {
        sample.color = background(y);
        return sample;
    }
    sample.color = m_shading.colorOf(seen, ray.direction());
    sample.point = seen.hit.point;
    sample.normal = seen.hit.normal * ray.direction() <= 0.0 ? seen.hit.normal : -seen.hit.normal;
    sample.pixelSize = m_rays.pixelSize(seen.hit.point);
    if (m_view.areEdgesShown()) {
        const PixelSteps steps = m_rays.stepsOn(seen.hit.point, seen.hit.normal, ray.direction());
        sample.line = lineCoverage(seen, steps, lines);
    }
    return sample;
}

rvf::Color3f PictureCaster::background(double y) const {
    return mix(m_view.backgroundTop(), m_view.backgroundBottom(), y / m_rays.height());
}

PictureBorder PictureCaster::borderAround(int x, int y) const {
    PictureBorder border = PictureBorder::NONE;
    auto compare = [&](const Row& row, int other) { border = std::max(border, borderBetween(m_row[x], row[other])); };
    if (m_view.antialiasing() == 1) {
        return border;
    }
    if (x > 0) {
        compare(m_row, x - 1);
    }
    if (x + 1 < m_rays.width()) {
        compare(m_row, x + 1);
    }
    if (y > 0) {
        compare(m_above, x);
    }
    if (y + 1 < m_rays.height()) {
        compare(m_below, x);
    }
    return border;
}

/// Rays that are all in rows and columns of their own, so that a steep border has as many shades as there are rays.
rvf::Color3f PictureCaster::castMore(int x, int y, PictureBorder border) const {
    const int n = m_view.antialiasing();
    const double rays = n * n;
    const LineStyle lines = {border == PictureBorder::STEP ? lineWidth : lineWidth / 2, n};
    float sums[3] = {};
    for (int j = 0; j < n; ++j) {
        for (int i = 0; i < n; ++i) {
            const PictureSample sample = cast(x + (i * n + j + 0.5) / rays, y + (j * n + i + 0.5) / rays, lines);
            const rvf::Color3f color = withLine(sample);
            for (int k = 0; k < 3; ++k) {
                sums[k] += color.ptr()[k];
            }
        }
    }
    const auto share = static_cast<float>(1.0 / rays);
    return {sums[0] * share, sums[1] * share, sums[2] * share};
}

} // namespace orv::vis
